// The Compare Files viewer's early result: the paragraphs of a long compare, shown until the result
// comes.
#include <utility>

#include "compare/compare_files_viewer.h"

namespace zorvane {

// What was there is kept, in case the run is stopped.
void frmCompareFiles::ShowEarly(EarlyOutcome early) {
    EarlyOutcome before;
    before.view = early.view;
    const auto swap = [](ShownDocument& entry, ResultText& shown, ResultText& kept) {
        kept = {entry.editor.TakeRich(), entry.document.TakeParagraphs()};
        entry.editor.SetRich(std::move(shown.text));
        entry.document.SetParagraphs(std::move(shown.paragraphs));
    };
    if (early.view == View::AllInOne) {
        swap(editors_.rtbAIODiff, early.all_in_one, before.all_in_one);
    } else {
        swap(editors_.rtbOriginalDiffFinal, early.side_by_side.original,
             before.side_by_side.original);
        swap(editors_.rtbModifiedDiffFinal, early.side_by_side.modified,
             before.side_by_side.modified);
    }
    before.comparison = std::exchange(early_comparison_, std::move(early.comparison));
    UpdateNavigationalDropDownListBox();
    before_early_ = std::move(before);
}

// The view that a run was to build holds nothing, or marks of an older result.
void frmCompareFiles::ShowAgain(std::optional<View> left) {
    if (!left)
        return;
    view_ = *left;
    window_.ShowView(view_);
}

void frmCompareFiles::PutBackEarly() {
    if (before_early_)
        ShowEarly(std::move(*std::exchange(before_early_, std::nullopt)));
    before_early_.reset();
}

}  // namespace zorvane
