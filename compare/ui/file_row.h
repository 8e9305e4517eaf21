// The row that names both files, each above its own column.
#pragma once

#include <functional>

#include <QFrame>

#include "common/base/side.h"
#include "common/ui/command_table.h"
#include "common/ui/file_box.h"

namespace zorvane {

class FileRow : public QFrame {
  public:
    FileRow(CommandSet& commands, const UiText& text, QWidget* parent);

    FileBox& Box(Side side) { return *boxes_[side]; }
    /// The share of the original side.
    void SetRatio(double ratio);
    QSize sizeHint() const override;

    std::function<void(Side, const QString&)> path_chosen;
    std::function<void(Side, const QStringList&)> files_dropped;
    /// The person drags what lies between the sides.
    std::function<void(double ratio)> ratio_wanted;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    void Arrange();
    QWidget* MakeHalf(CommandSet& commands, const UiText& text, Side side);

    PerSide<FileBox*> boxes_{};
    PerSide<QWidget*> halves_{};
    QWidget* swap_;
    double ratio_ = 0.5;
};

}  // namespace zorvane
