// What stands in place of two empty editors: where the documents come from.
#pragma once

#include <functional>
#include <vector>

#include <QWidget>

#include "common/base/side.h"
#include "common/ui/buttons.h"
#include "common/ui/command_table.h"
#include "common/ui/drop_area.h"

class QVBoxLayout;

namespace zorvane {

class StartPage : public QWidget {
  public:
    StartPage(CommandSet& commands, UiText text, QWidget* parent);

    /// The file that stands for a side so far; empty: none.
    void SetChosen(Side side, const QString& path);
    /// The last ones first.
    void SetRecent(Side side, const QStringList& paths);

    std::function<void(Side, const QStringList&)> files_dropped;
    std::function<void(Side, const QString&)> text_given;
    std::function<void(Side, const QString&)> recent_chosen;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* MakeSide(CommandSet& commands, Side side);
    QWidget* MakeFoot(CommandSet& commands);
    void ShowReady();

    UiText text_;
    QWidget* middle_;
    PerSide<DropArea*> areas_{};
    PerSide<QVBoxLayout*> recent_{};
    PerSide<QLabel*> recent_heads_{};
    PerSide<QString> chosen_{};
    QLabel* hint_;
    Button* compare_;
};

}  // namespace zorvane
