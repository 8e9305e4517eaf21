// Commands of somebody who reads and edits: differences, selections, typing, find and replace.
#include <algorithm>

#include "common/base/text_encoding.h"
#include "compare/compare_selected_text.h"
#include "tools/viewer_driver/driver.h"

namespace zorvane {
namespace {

void SetSearch(frmCompareFilesFindReplace& find, const Words& words, std::size_t rules) {
    const auto has = [&](const char* rule) {
        return std::find(words.begin() + static_cast<std::ptrdiff_t>(rules), words.end(), rule) !=
               words.end();
    };
    find.Text1 = words[0];
    find.Check1 = has("word");
    find.Check2 = has("case");
}

}  // namespace

// ---- differences ----

Status Driver::Next(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        viewer.value()->ShowDifferenceNext();
    return viewer.status();
}

Status Driver::Previous(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        viewer.value()->ShowDifferencePrevious();
    return viewer.status();
}

Status Driver::First(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        viewer.value()->ShowDifferenceFirst();
    return viewer.status();
}

Status Driver::Last(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        viewer.value()->ShowDifferenceLast();
    return viewer.status();
}

/// goto N: the dialog.
Status Driver::GoTo(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    answers_.waiting.push_front(words[0]);
    const std::size_t waiting = answers_.waiting.size();
    viewer.value()->tbShowDifferenceUnknown();
    if (answers_.waiting.size() == waiting)
        answers_.waiting.pop_front();  // nobody asked
    return Status::Ok();
}

/// pick N: a line of the list, from 1.
Status Driver::Pick(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        viewer.value()->SelectListItem(std::stoi(words[0]) - 1);
    return viewer.status();
}

// ---- the text ----

/// select EDITOR FROM TO; TO may be "end".
Status Driver::Select(const Words& words) {
    const Result<RichDocument*> editor = EditorOf(words[0]);
    if (!editor.ok())
        return editor.status();
    editor_ = words[0];
    const std::int32_t from = std::stoi(words[1]);
    const std::int32_t to = words[2] == "end" ? editor.value()->Length() : std::stoi(words[2]);
    editor.value()->Select({CharPos{from}, to - from});
    return Status::Ok();
}

/// type TEXT: letter by letter, in the place of what is selected.
Status Driver::Type(const Words& words) {
    const Result<RichDocument*> editor = EditorOf(editor_);
    if (!editor.ok())
        return editor.status();
    if (!Viewer().value()->IsEnabled(ViewerCommand::Edit))
        return Failure{"nothing can be typed now"};
    for (const char16_t letter : ToUtf16(words[0]))
        editor.value()->Type(letter == u'\n' ? std::u16string(u"\r\n") : std::u16string(1, letter));
    return Status::Ok();
}

/// Removes what is selected.
Status Driver::Delete(const Words&) {
    const Result<RichDocument*> editor = EditorOf(editor_);
    if (!editor.ok())
        return editor.status();
    if (!Viewer().value()->IsEnabled(ViewerCommand::Edit))
        return Failure{"nothing can be removed now"};
    editor.value()->DeleteForward(TextUnit::Character);
    return Status::Ok();
}

Status Driver::Undo(const Words&) {
    const Result<RichDocument*> editor = EditorOf(editor_);
    if (!editor.ok())
        return editor.status();
    own_["undone"] = editor.value()->Undo() ? "yes" : "no";
    return Status::Ok();
}

Status Driver::Redo(const Words&) {
    const Result<RichDocument*> editor = EditorOf(editor_);
    if (!editor.ok())
        return editor.status();
    own_["redone"] = editor.value()->Redo() ? "yes" : "no";
    return Status::Ok();
}

/// caret EDITOR: the first panel tells of it.
Status Driver::Caret(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    ShownEditor editor = ShownEditor::Original;
    if (!ShownEditorNamed(words[0], editor))
        return Failure{"there is no such editor"};
    viewer.value()->Tools().RefreshStatusBarItems(editor);
    return Status::Ok();
}

/// find TEXT [case] [word], in the editor of the last selection.
Status Driver::Find(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    ShownEditor editor = ShownEditor::Original;
    if (!viewer.ok() || !ShownEditorNamed(editor_, editor))
        return Failure{"there is nothing to search"};
    frmCompareFilesFindReplace& find = viewer.value()->Tools().FindReplace();
    if (!find.IsOpen())
        viewer.value()->Tools().ShowFindReplace(editor);
    SetSearch(find, words, 1);
    return FindNext({});
}

Status Driver::FindNext(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    frmCompareFilesFindReplace& find = viewer.value()->Tools().FindReplace();
    own_["found"] = find.IsOpen() && find.Command1_Click() ? "yes" : "no";
    return Status::Ok();
}

/// replace TEXT WITH [case] [word]: what is selected, and goes on to the next.
Status Driver::Replace(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    frmCompareFilesFindReplace& find = viewer.value()->Tools().FindReplace();
    SetSearch(find, words, 2);
    find.Text2 = words[1];
    own_["found"] = find.IsOpen() && find.Command2_Click() ? "yes" : "no";
    return Status::Ok();
}

/// replace-all TEXT WITH [case] [word], in the editor of the last selection.
Status Driver::ReplaceAll(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    ShownEditor editor = ShownEditor::Original;
    if (!viewer.ok() || !ShownEditorNamed(editor_, editor))
        return Failure{"there is nothing to search"};
    viewer.value()->Tools().ShowFindReplace(editor);
    frmCompareFilesFindReplace& find = viewer.value()->Tools().FindReplace();
    SetSearch(find, words, 2);
    find.Text2 = words[1];
    own_["replaced"] = std::to_string(find.ReplaceAll());
    return Status::Ok();
}

Status Driver::CompareSelected(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    CompareSelectedText(*viewer.value(), [this] {
        frmCompareFiles* made = session_->Frame().CreateNewCompareFilesForm();
        if (made != nullptr)
            made->RunInBackground(true);
        return made;
    });
    return Status::Ok();
}

/// next-line [up]: the carets of all texts.
Status Driver::Line(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    viewer.value()->Tools().ChangeCurrentLine(!words.empty() && words[0] == "up",
                                              viewer.value()->CurrentView());
    return Status::Ok();
}

}  // namespace zorvane
