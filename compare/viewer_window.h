// What a Compare Files viewer asks of its window: verbs, never widgets. A command-line run hands
// over one that shows nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "compare/file_window.h"
#include "load/document_loader.h"

namespace zorvane {

/// The panels of the status bar that a run writes to.
enum class StatusPanel : std::int32_t { Detail = 2, Main = 3, Time = 5 };

/// The numbers are the tags of the view button.
enum class View : std::int32_t { SideBySide = 1, AllInOne = 2 };

enum class ViewFilter { All, Additions, Deletions, Changes };

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
    virtual void EnableFilter(ViewFilter filter, bool enabled) = 0;
    virtual void ShowView(View view) = 0;
    virtual void ShowFilter(ViewFilter filter) = 0;
    virtual void SetDifferenceList(const std::vector<std::string>& lines) = 0;
    virtual void SelectInDifferenceList(std::int32_t index) = 0;  ///< 0-based
    virtual void EnableNavigation(const NavigationButtons& buttons) = 0;
    virtual void FlashFrame() = 0;
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
    void EnableFilter(ViewFilter, bool) override {}
    void ShowView(View) override {}
    void ShowFilter(ViewFilter) override {}
    void SetDifferenceList(const std::vector<std::string>&) override {}
    void SelectInDifferenceList(std::int32_t) override {}
    void EnableNavigation(const NavigationButtons&) override {}
    void FlashFrame() override {}
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
