// The bar of a Compare Folders window: run, filters by kind with their counts, report, options.
#pragma once

#include <array>
#include <functional>

#include "common/ui/bars.h"
#include "common/ui/command_table.h"
#include "folders/ui/folder_order.h"

class QMenu;

namespace zorvane {

class FoldersBar : public ToolBar {
    Q_OBJECT
  public:
    FoldersBar(CommandSet& commands, const UiText& text, QWidget* parent);

    void ShowCounts(const FolderOrder& order);
    /// Abort stands where Compare stood.
    void SetRunning(bool running);
    SegmentedGroup& Filters() { return *filters_; }
    /// Stands in for them where room is short.
    Button& KindsButton() { return *kinds_; }
    QMenu* MakeKindsMenu();
    std::function<void(QMenu&)> dress;  ///< in the look of the window
    /// What of them takes the focus.
    QWidget* FilterFocus() const;
    Button& Run() { return *run_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    Button* run_;
    Button* abort_;
    SegmentedGroup* filters_;
    Button* kinds_;
    CommandSet& commands_;
    UiText text_;
    std::array<std::int32_t, kFolderFilters> counts_{};
    Button* options_;
};

}  // namespace zorvane
