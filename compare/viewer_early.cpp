// The Compare Files viewer's early result: what a long compare has found so far, shown until the
// result comes.
#include <utility>

#include "compare/compare_files_viewer.h"

namespace zorvane {

// The editors with marks keep what they held: the window shows the texts as they were compared.
void frmCompareFiles::ShowEarly(EarlyOutcome early) {
    // Who shows the one before lets go when the list is told again.
    const std::optional<EarlyOutcome> before = std::exchange(early_, std::move(early));
    UpdateNavigationalDropDownListBox();
}

// The view that a run was to build holds nothing, or marks of an older result.
void frmCompareFiles::ShowAgain(std::optional<View> left) {
    if (!left)
        return;
    view_ = *left;
    window_.ShowView(view_);
}

void frmCompareFiles::PutBackEarly() {
    if (const std::optional<EarlyOutcome> before = std::exchange(early_, std::nullopt))
        UpdateNavigationalDropDownListBox();
}

}  // namespace zorvane
