#include "compare/view/viewer_tools.h"

#include <utility>

namespace zorvane {

ViewerTools::ViewerTools(ViewerEditors& editors, CompareFilesWindow& window,
                         TranslateText translate, std::function<bool()> is_busy)
    : editors_(editors),
      window_(window),
      translate_(std::move(translate)),
      scrolls_([this, is_busy = std::move(is_busy)] { return moving_ > 0 || is_busy(); }),
      find_([this](const char* text) {
          window_.ShowMessage(translate_(text), translate_("Find And Replace"));
      }) {
    scrolls_.SetRows(&editor_rows_, &result_rows_);
}

ViewerTools::Moving::~Moving() {
    if (--tools_.moving_ == 0)
        tools_.scrolls_.TakeBase();
}

// ---- scrolling ----

void ViewerTools::TakeRows(const Comparison& comparison) {
    editor_rows_.Assign(comparison);
    result_rows_ = editor_rows_;
}

void ViewerTools::SetSynchType(std::int32_t type) {
    scrolls_.SetSynchType(type);
    window_.CheckScrollLock(scrolls_.LocksVertical(), scrolls_.LocksHorizontal());
}

void ViewerTools::mnuScrollLockVertical_Click() {
    SetSynchType((scrolls_.LocksVertical() ? 0 : 1) + (scrolls_.LocksHorizontal() ? 2 : 0));
}

void ViewerTools::mnuScrollLockHorizontal_Click() {
    SetSynchType((scrolls_.LocksVertical() ? 1 : 0) + (scrolls_.LocksHorizontal() ? 0 : 2));
}

void ViewerTools::AlignParagraphs(bool on) {
    scrolls_.SetAligned(on);
    window_.CheckAlignParagraphs(on);
}

// ---- the text ----

Editor& ViewerTools::EditorOf(ShownEditor editor) {
    switch (editor) {
        case ShownEditor::Original:
            return editors_.rtbOriginal.editor;
        case ShownEditor::Modified:
            break;
        case ShownEditor::OriginalDiffFinal:
            return editors_.rtbOriginalDiffFinal.editor;
        case ShownEditor::ModifiedDiffFinal:
            return editors_.rtbModifiedDiffFinal.editor;
        case ShownEditor::AllInOneDiff:
            return editors_.rtbAIODiff.editor;
        case ShownEditor::Additions:
            return editors_.rtbAdditions;
        case ShownEditor::Deletions:
            return editors_.rtbDeletions;
        case ShownEditor::Changes:
            return editors_.rtbChanges;
    }
    return editors_.rtbModified.editor;
}

void ViewerTools::ShowFindReplace(ShownEditor editor) {
    find_.Open(EditorOf(editor));
    window_.ShowFindReplace(find_);
}

void ViewerTools::RefreshStatusBarItems(ShownEditor editor) {
    const Editor& text = EditorOf(editor);
    const CharPos caret = text.Selection().first;
    const std::int32_t line = text.LineOfChar(caret);
    window_.ShowStatus(StatusPanel::Caret, translate_("Row") + ": " + std::to_string(line + 1) +
                                               "   " + translate_("Column") + ": " +
                                               std::to_string(caret - text.FirstCharOfLine(line)));
}

void ViewerTools::ChangeCurrentLine(bool bUp, View view) {
    const auto scroll = [&](DocumentEditor& entry, ShownEditor editor) {
        entry.document.ScrollRTB(bUp);
        window_.RevealSelection(editor);
    };
    const Moving moving(*this);
    scroll(editors_.rtbOriginal, ShownEditor::Original);
    scroll(editors_.rtbModified, ShownEditor::Modified);
    if (view == View::AllInOne) {
        scroll(editors_.rtbAIODiff, ShownEditor::AllInOneDiff);
        return;
    }
    scroll(editors_.rtbOriginalDiffFinal, ShownEditor::OriginalDiffFinal);
    scroll(editors_.rtbModifiedDiffFinal, ShownEditor::ModifiedDiffFinal);
}

}  // namespace zorvane
