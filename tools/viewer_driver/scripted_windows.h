// Windows without a display: they remember what they are told and answer what a script laid down.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/frame_window.h"
#include "compare/view/find_replace.h"
#include "compare/viewer_window.h"

namespace zorvane {

/// What a script lays down for the questions to come, one entry for each: "yes", "no", a path, a
/// number; "stop", "close" and "close-frame" do that while the question stands, and answer no.
struct Answers {
    std::deque<std::string> waiting;
    std::function<void(const std::string& act)> act;
    std::function<void()> during_a_run;  ///< of a run on the viewer's own thread

    /// The next one; "no" when none is left.
    std::string Next();
    bool NextIsYes() { return Next() == "yes"; }
};

class ScriptedWindow : public SilentWindow {
  public:
    explicit ScriptedWindow(Answers& answers) : answers_(answers) {}

    bool AskYesNo(const std::string& text, const std::string& title) override;
    void ShowMessage(const std::string& text, const std::string& title) override;
    std::string BrowseFor(Side side) override;
    bool ShowNotice(const std::string& text, const std::string& title) override;
    void PumpEvents() override {
        if (answers_.during_a_run)
            answers_.during_a_run();
    }
    void ShowStatus(StatusPanel panel, const std::string& text) override { status[panel] = text; }
    void SetAbortVisible(bool visible) override { abort_visible = visible; }
    void ShowPleaseWait(bool shown) override { please_wait = shown; }
    void SetHourglass(bool on) override { hourglasses += on ? 1 : -1; }
    void EnableFilterButtons(bool enabled) override { filter_buttons = enabled; }
    void EnableFilter(ViewFilter shown, bool enabled) override { filters[shown] = enabled; }
    void ShowView(View shown) override { view = shown; }
    void ShowFilter(ViewFilter shown) override;
    void SetDifferenceList(const DifferenceList& shown) override { list = &shown; }
    void SelectInDifferenceList(std::int32_t index) override { list_index = index; }
    void EnableNavigation(const NavigationButtons& buttons) override { navigation = buttons; }
    void FocusEditor(ShownEditor editor) override { focus = editor; }
    bool ConfirmClose() override;
    void CloseDialogs() override { find = nullptr; }
    std::int32_t AskDifferenceNumber(std::int32_t current, std::int32_t count) override;
    void ShowFindReplace(frmCompareFilesFindReplace& shown) override { find = &shown; }
    /// "0", "1", ...: the button; "yes" is the first one, anything else the safe one.
    std::int32_t Choose(const WindowQuestion& question) override;
    std::string PickFile(FileQuestion& question) override;
    std::unique_ptr<PagePainter> PickPrinter(PrintQuestion& question) override;

    /// What the file dialog and the printer dialog give next; empty: the user cancels them.
    std::string picked_file;
    std::int32_t picked_type = 1;
    std::string printed_file;
    bool print_selection = false;

    std::map<StatusPanel, std::string> status;
    std::map<ViewFilter, bool> filters;
    std::vector<std::string> questions;
    std::vector<std::string> messages;
    NavigationButtons navigation;
    View view = View::SideBySide;
    ViewFilter filter = ViewFilter::All;
    ShownEditor focus = ShownEditor::Original;
    const DifferenceList* list = nullptr;
    frmCompareFilesFindReplace* find = nullptr;
    std::int32_t list_index = -1;
    bool abort_visible = false;
    bool please_wait = false;
    int hourglasses = 0;
    bool filter_buttons = true;
    bool asks_before_close = false;
    /// The user pressed a filter's button: the window tells the viewer, as true ones do.
    std::function<void(ViewFilter)> on_filter;

  private:
    Answers& answers_;
};

class ScriptedFrame : public SilentFrame {
  public:
    void ViewersChanged() override { ++changes; }
    void ShowMessage(const std::string& message) override { messages.push_back(message); }
    void EndProgram() override { ended = true; }

    std::vector<std::string> messages;
    int changes = 0;
    bool ended = false;
};

}  // namespace zorvane
