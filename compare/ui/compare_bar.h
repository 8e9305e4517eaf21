// The toolbar of a Compare Files window.
#pragma once

#include "common/ui/bars.h"
#include "common/ui/combo_boxes.h"
#include "common/ui/command_table.h"
#include "compare/ui/fold_plan.h"

namespace zorvane {

class CompareBar : public ToolBar {
  public:
    /// The commands are borrowed.
    CompareBar(CommandSet& commands, UiText text, QWidget* parent);

    DifferenceBox& List() { return *list_; }
    /// "2 of 17"; without a current difference the count alone.
    void SetPlace(int current, int count);
    void SetAbortVisible(bool visible);
    void SetViewCaption(const QString& caption);
    /// A number of `PaneLayout`.
    void SetLayout(int layout) { layouts_->SetCurrent(layout); }
    void SetStale(bool stale) { compare_->SetDot(stale); }
    /// What gives way where the window is narrow, and more of it until the rest fits in `width`:
    /// captions are longer in some languages.
    void FitTo(const FoldPlan& plan, int width);

  private:
    bool Fits(int width);

    UiText text_;
    Button* compare_;
    IconButton* first_;
    IconButton* last_;
    DifferenceBox* list_;
    QLabel* place_;
    Button* view_;
    Button* abort_;
    SegmentedGroup* layouts_ = nullptr;
    IconButton* find_;
    IconButton* report_;
    IconButton* print_;
    Button* options_;
};

}  // namespace zorvane
