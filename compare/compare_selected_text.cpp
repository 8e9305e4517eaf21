#include "compare/compare_selected_text.h"

#include <string>

namespace zorvane {

void CompareSelectedText(frmCompareFiles& viewer,
                         const std::function<frmCompareFiles*()>& new_viewer) {
    frmCompareFiles* other = new_viewer();
    if (other == nullptr)
        return;
    ViewerEditors& from = viewer.Editors();
    ViewerEditors& to = other->Editors();
    to.rtbOriginal.editor.SetRich(from.rtbOriginal.editor.SelectedRich());
    to.rtbModified.editor.SetRich(from.rtbModified.editor.SelectedRich());
    for (const Side side : kBothSides)
        other->TextChanged(side);
    const std::string own_section = other->Options().sSectionName;
    other->Options() = viewer.Options();
    other->Options().sSectionName = own_section;
    other->RefreshDisplay(false, true);
}

}  // namespace zorvane
