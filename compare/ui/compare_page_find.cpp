// Find and replace in the text of a page that has the focus.
#include "common/base/text_encoding.h"
#include "common/ui/qt_text.h"
#include "compare/document/memory_editor.h"
#include "compare/ui/compare_files_page.h"

namespace zorvane {

RichTextView* CompareFilesPage::FocusedView() const {
    if (last_focus_ != nullptr && last_focus_->isVisible())
        return last_focus_;
    RichTextView* original = &editors_->View(Side::Original);
    if (original->isVisible())
        return original;
    return pane_->AllInOne() ? &pane_->MergedView() : &pane_->View(Side::Original);
}

bool CompareFilesPage::IsEditor(const RichTextView* view) const {
    return view == &editors_->View(Side::Original) || view == &editors_->View(Side::Modified);
}

void CompareFilesPage::OpenFind(bool replace) {
    finding_in_ = FocusedView();
    frmCompareFilesFindReplace& find = viewer_->Tools().FindReplace();
    find.Open(finding_in_->Document());
    ShowFindReplace(find);
    find_->Show(finding_in_->IsReadOnly(), replace);
}

void CompareFilesPage::FindAgain(bool forward) {
    frmCompareFilesFindReplace& find = viewer_->Tools().FindReplace();
    if (find.Text1.empty()) {
        OpenFind(false);
        return;
    }
    if (!find.IsOpen() || finding_in_ != FocusedView()) {
        finding_in_ = FocusedView();
        find.Open(finding_in_->Document());
    }
    if (forward ? find.Command1_Click() : find.FindPrevious())
        finding_in_->EnsureCaretVisible();
    if (find_ != nullptr && find_->isVisible())
        MarkHits();
}

// All hits in sight, and the selected one in a colour of its own, while the dialog is open.
void CompareFilesPage::MarkHits() {
    if (finding_in_ == nullptr || viewer_ == nullptr)
        return;
    const frmCompareFilesFindReplace& find = viewer_->Tools().FindReplace();
    if (!find.IsOpen() || find.Text1.empty()) {
        finding_in_->SetFinder({}, {CharPos{0}, -1});
        return;
    }
    const SearchRules rules{NormalizeBreaks(FromQt16(ToQt(find.Text1))), find.Check1, find.Check2};
    finding_in_->SetFinder(
        [rules](std::u16string_view block) {
            MemoryEditor words;
            words.SetText(block);
            return TextSearch(rules).All(words);
        },
        finding_in_->Document().Selection());
    finding_in_->EnsureCaretVisible();
}

}  // namespace zorvane
