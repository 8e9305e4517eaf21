// While files are dragged over a window: which half takes them, and as what.
#pragma once

#include <functional>

#include <QStringList>
#include <QWidget>

#include "common/base/side.h"

namespace zorvane {

class DropShade : public QWidget {
  public:
    /// Covers its parent from the first dragged file to the drop or the way out.
    DropShade(const PerSide<QString>& names, QWidget* parent);

    /// Call it when a drag of files comes in anywhere.
    void Begin();

    std::function<void(Side, const QStringList&)> dropped;

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    Side SideAt(double x) const { return x < width() / 2.0 ? Side::Original : Side::Modified; }

    PerSide<QString> names_;
    Side side_ = Side::Original;
};

}  // namespace zorvane
