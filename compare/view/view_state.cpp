#include "compare/view/view_state.h"

namespace zorvane {

ResultArrangement ArrangementOf(View view, ViewFilter filter) {
    ResultArrangement made;
    if (view == View::AllInOne)
        made = {{ShownEditor::AllInOneDiff}, ShownEditor::AllInOneDiff};
    else
        made.shown = {ShownEditor::OriginalDiffFinal, ShownEditor::ModifiedDiffFinal};
    const auto in_front = [&](ShownEditor summary) {
        made.shown.push_back(summary);
        made.focus = summary;
    };
    switch (filter) {
        case ViewFilter::All:
            break;
        case ViewFilter::Additions:
            in_front(ShownEditor::Additions);
            break;
        case ViewFilter::Deletions:
            in_front(ShownEditor::Deletions);
            break;
        case ViewFilter::Changes:
            in_front(ShownEditor::Changes);
            break;
    }
    return made;
}

const char* ViewButtonCaption(View view) {
    return view == View::SideBySide ? "View All In One" : "View Side By Side";
}

const char* FilterWords(ViewFilter filter) {
    switch (filter) {
        case ViewFilter::All:
            break;
        case ViewFilter::Additions:
            return "Number of additions";
        case ViewFilter::Deletions:
            return "Number of deletions";
        case ViewFilter::Changes:
            return "Number of changes";
    }
    return "";
}

}  // namespace zorvane
