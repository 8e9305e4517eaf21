// What a Compare Files viewer asks of its window: verbs, never widgets. A command-line run hands
// over one that shows nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "compare/file_watch.h"
#include "compare/file_window.h"
#include "compare/view/view_state.h"
#include "load/document_loader.h"

namespace zorvane {

class DifferenceList;
class frmCompareFilesFindReplace;

/// The panels of the status bar that a viewer writes to.
enum class StatusPanel : std::int32_t { Caret = 1, Detail = 2, Main = 3, Time = 5 };

/// Which of the navigation buttons can be pressed.
struct NavigationButtons {
    bool first = false;
    bool previous = false;
    bool next = false;
    bool last = false;
    bool go_to = false;
    friend bool operator==(const NavigationButtons&, const NavigationButtons&) = default;
};

class CompareFilesWindow : public LoadQuestions, public FileWindow {
  public:
    virtual void ShowStatus(StatusPanel panel, const std::string& text) = 0;
    virtual void SetAbortVisible(
        bool visible) = 0;  ///< the abort button; the view button is its opposite
    virtual void ShowPleaseWait(bool shown) = 0;
    virtual void EnableFilterButtons(bool enabled) = 0;  ///< the whole group
    /// Whether the user may edit the two texts.
    virtual void SetEditable(bool editable) = 0;
    virtual void EnableFilter(ViewFilter filter, bool enabled) = 0;
    virtual void ShowView(View view) = 0;
    virtual void ShowFilter(ViewFilter filter) = 0;
    /// The model belongs to the viewer and outlives the window; called again whenever it changed.
    virtual void SetDifferenceList(const DifferenceList& list) = 0;
    virtual void SelectInDifferenceList(std::int32_t index) = 0;  ///< 0-based
    virtual void EnableNavigation(const NavigationButtons& buttons) = 0;
    virtual void FlashFrame() = 0;
    /// Shows the viewer and gives it the focus.
    virtual void Activate() = 0;
    /// Asks what the window itself has open, behind the viewer's question about edits; false when
    /// the user wants to stay.
    virtual bool ConfirmClose() = 0;
    /// The viewer goes: find and replace, and whatever else of it is open.
    virtual void CloseDialogs() = 0;
    virtual void FocusEditor(ShownEditor editor) = 0;
    /// Scrolls so far that the selection is in sight.
    virtual void RevealSelection(ShownEditor editor) = 0;
    virtual void CheckScrollLock(bool vertical, bool horizontal) = 0;
    virtual void CheckAlignParagraphs(bool on) = 0;
    /// Asks for the number of a difference; -1 when the user cancels.
    virtual std::int32_t AskDifferenceNumber(std::int32_t current, std::int32_t count) = 0;
    /// A side could not be read; what it showed stays. False: it is told as messages are.
    virtual bool ShowUnreadable(Side, const std::vector<std::string>&) { return false; }
    /// A file that is shown was changed by somebody else or is gone. False: the user is asked.
    virtual bool ShowFileNews(const FileNotice&) { return false; }
    /// Shows the find window over its state, which belongs to the viewer.
    virtual void ShowFindReplace(frmCompareFilesFindReplace& find) = 0;
};

/// Shows nothing, never asks, answers no.
class SilentWindow : public CompareFilesWindow {
  public:
    bool AskYesNo(const std::string&, const std::string&) override { return false; }
    void ShowMessage(const std::string&, const std::string&) override {}
    std::string BrowseFor(Side) override { return {}; }
    void PumpEvents() override {}
    void SetHourglass(bool) override {}
    bool ShowNotice(const std::string&, const std::string&) override { return false; }
    void ShowStatus(StatusPanel, const std::string&) override {}
    void SetAbortVisible(bool) override {}
    void ShowPleaseWait(bool) override {}
    void EnableFilterButtons(bool) override {}
    void SetEditable(bool) override {}
    void EnableFilter(ViewFilter, bool) override {}
    void ShowView(View) override {}
    void ShowFilter(ViewFilter) override {}
    void SetDifferenceList(const DifferenceList&) override {}
    void SelectInDifferenceList(std::int32_t) override {}
    void EnableNavigation(const NavigationButtons&) override {}
    void FlashFrame() override {}
    void Activate() override {}
    bool ConfirmClose() override { return true; }
    void CloseDialogs() override {}
    void FocusEditor(ShownEditor) override {}
    void RevealSelection(ShownEditor) override {}
    void CheckScrollLock(bool, bool) override {}
    void CheckAlignParagraphs(bool) override {}
    std::int32_t AskDifferenceNumber(std::int32_t, std::int32_t) override { return -1; }
    void ShowFindReplace(frmCompareFilesFindReplace&) override {}
    std::int32_t Choose(const WindowQuestion& question) override { return question.safe; }
    std::string PickFile(FileQuestion&) override { return {}; }
    std::unique_ptr<PagePainter> PickPrinter(PrintQuestion&) override { return nullptr; }
    std::string DefaultPrinter() override { return {}; }
    void SetDefaultPrinter(const std::string&) override {}
    void RefreshMargins() override {}
    void RefreshFileList(Side) override {}
    void RefreshCaption() override {}
};

}  // namespace zorvane
