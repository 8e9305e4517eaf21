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
    QSize sizeHint() const override;

    std::function<void(Side, const QString&)> path_chosen;
    std::function<void(Side, const QStringList&)> files_dropped;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* MakeHalf(CommandSet& commands, const UiText& text, Side side);

    PerSide<FileBox*> boxes_{};
    PerSide<QWidget*> halves_{};
    QWidget* swap_;
};

}  // namespace zorvane
