// A Compare Files viewer over fakes, with a window that records what it is told.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "common/process_state.h"
#include "compare/compare_files_viewer.h"
#include "tests/support/fakes.h"
#include "tests/support/file_answers.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane {

class RecordingWindow : public SilentWindow {
  public:
    void ShowStatus(StatusPanel panel, const std::string& text) override {
        status[panel] = text;
        if (panel == StatusPanel::Main)
            main_texts.push_back(text);
    }
    bool AskYesNo(const std::string& text, const std::string&) override {
        questions.push_back(text);
        return answer;
    }
    void ShowMessage(const std::string& text, const std::string&) override {
        messages.push_back(text);
    }
    void PumpEvents() override {
        ++pumps;
        if (on_pump)
            on_pump();
    }
    void SetAbortVisible(bool visible) override { abort_visible = visible; }
    void SetHourglass(bool on) override { hourglasses += on ? 1 : -1; }
    void ShowPleaseWait(bool shown) override { please_wait = shown; }
    void EnableFilterButtons(bool enabled) override { filter_buttons = enabled; }
    /// What tells that a run goes on.
    std::string Busy() const {
        return std::string(hourglasses > 0 ? "hourglass " : "") + (please_wait ? "wait " : "") +
               (abort_visible ? "abort " : "") + (filter_buttons ? "" : "no filters ") +
               (editable ? "" : "no edits");
    }
    void SetEditable(bool on) override { editable = on; }
    void EnableFilter(ViewFilter filter, bool enabled) override { filters[filter] = enabled; }
    void EnableNavigation(const NavigationButtons& buttons) override { navigation = buttons; }
    void ShowView(View shown) override { view = shown; }
    void ShowFilter(ViewFilter filter) override {
        if (on_filter)
            on_filter(filter);
    }
    void FocusEditor(ShownEditor editor) override { focus = editor; }
    void RevealSelection(ShownEditor editor) override { revealed.push_back(editor); }
    void CheckScrollLock(bool vertical, bool horizontal) override {
        scroll_locks = {vertical, horizontal};
    }
    void CheckAlignParagraphs(bool on) override { aligned = on; }
    std::int32_t AskDifferenceNumber(std::int32_t, std::int32_t) override {
        ++numbers_asked;
        return number;
    }
    void ShowFindReplace(frmCompareFilesFindReplace& shown) override { find = &shown; }
    std::int32_t Choose(const WindowQuestion& question) override { return files.Choose(question); }
    std::string PickFile(FileQuestion& question) override { return files.PickFile(question); }
    std::unique_ptr<PagePainter> PickPrinter(PrintQuestion& question) override {
        return files.PickPrinter(question);
    }

    FileAnswers files;

    std::map<StatusPanel, std::string> status;
    std::vector<std::string> main_texts;
    std::vector<std::string> questions;
    std::vector<std::string> messages;
    std::map<ViewFilter, bool> filters;
    NavigationButtons navigation;
    View view = View::SideBySide;
    ShownEditor focus = ShownEditor::Changes;
    std::vector<ShownEditor> revealed;
    std::pair<bool, bool> scroll_locks;
    bool aligned = true;
    std::int32_t number = -1;
    int numbers_asked = 0;
    frmCompareFilesFindReplace* find = nullptr;
    std::function<void(ViewFilter)> on_filter;
    bool answer = false;
    bool abort_visible = false;
    int hourglasses = 0;
    bool please_wait = false;
    bool filter_buttons = true;
    bool editable = true;
    int pumps = 0;
    std::function<void()> on_pump;
};

class ViewerTest : public ::testing::Test {
  protected:
    ViewerTest() : process(fakes.platform), viewer(process, request, window) {
        process.gsDataFolder = fakes.folder.Path();
        viewer.Telling().manner.bSilent = true;
        viewer.Telling().manner.sLogFile = fakes.folder.Path("log");
        viewer.Setup("1_CompareFile", true);
    }

    /// Both texts loaded from files and compared in one view.
    bool Compare(const std::string& original, const std::string& modified, View view,
                 const std::string& extension = "txt", BuildViews views = BuildViews::Yes) {
        viewer.Options().sFileOriginal.SetData(fakes.folder.Write("o." + extension, original));
        viewer.Options().sFileModified.SetData(fakes.folder.Write("m." + extension, modified));
        bool failed = false;
        viewer.RefreshDisplayCommandLine(view == View::AllInOne ? 1 : 2, views, failed);
        return !failed;
    }
    std::string AllInOne() { return Notation(viewer.Editors().rtbAIODiff.editor.Rich()); }
    std::string Left() { return Notation(viewer.Editors().rtbOriginalDiffFinal.editor.Rich()); }
    std::string Right() { return Notation(viewer.Editors().rtbModifiedDiffFinal.editor.Rich()); }
    std::string Log() { return fakes.folder.Read("log"); }

    FakePlatform fakes;
    ProcessState process;
    CommandLineRequest request;
    RecordingWindow window;
    frmCompareFiles viewer;
};

}  // namespace zorvane
