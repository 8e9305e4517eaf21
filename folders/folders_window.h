// What a Compare Folders viewer asks of its window: verbs, never widgets. A command-line run hands
// over one that shows nothing.
#pragma once

#include <cstdint>
#include <string>

#include "common/base/side.h"

namespace zorvane {

/// The panels of the status bar that a viewer writes to.
enum class FoldersPanel : std::int32_t { Counts = 2, Main = 3, Time = 5 };

class CompareFoldersWindow {
  public:
    virtual ~CompareFoldersWindow() = default;

    // ---- what it shows of the viewer, which it asks for the rest ----
    virtual void ShowStatus(FoldersPanel panel, const std::string& text) = 0;
    /// A run began, ended or was stopped: `CanAbort`, `CanReport`.
    virtual void RunChanged() = 0;
    /// A report is being written beside the window, or no longer: `WritesReport`.
    virtual void WritingChanged() = 0;
    /// The grid is empty, its widths and font are those of the settings.
    virtual void RowsCleared() = 0;
    /// Rows were added behind those that it knows.
    virtual void RowsAdded() = 0;
    /// A copy or a delete changed how these rows look.
    virtual void RowsChanged(std::int32_t first, std::int32_t count) = 0;
    virtual void ErrorsChanged() = 0;
    /// Boxes, their dependencies, recent lists, texts, the legend.
    virtual void OptionsChanged() = 0;
    virtual void RefreshCaption() = 0;
    virtual void SetHourglass(bool on) = 0;
    virtual void FocusFolder(Side side) = 0;
    /// A run has ended: draws attention where the program is minimised.
    virtual void FlashFrame() = 0;
    virtual void Activate() = 0;

    // ---- what it asks of the user ----
    virtual void ShowMessage(const std::string& text, const std::string& title) = 0;
    virtual bool AskYesNo(const std::string& text, const std::string& title) = 0;
    /// A notice with one way on; true when it is never to be shown again.
    virtual bool ShowNotice(const std::string& text, const std::string& title) = 0;
    /// Empty when the user gives none.
    virtual std::string BrowseForFolder(const std::string& start) = 0;
    virtual std::string PickReportFile(const std::string& title, const std::string& start) = 0;

    // ---- other viewers ----
    /// Puts the two files into a Compare Files viewer, the first or a new one, and compares.
    virtual void CompareFiles(const PerSide<std::string>& files, bool new_window) = 0;

    // ---- the end ----
    virtual bool ConfirmClose() = 0;
    virtual void CloseDialogs() = 0;
};

/// Shows nothing, never asks, answers no.
class SilentFoldersWindow : public CompareFoldersWindow {
  public:
    void ShowStatus(FoldersPanel, const std::string&) override {}
    void RunChanged() override {}
    void WritingChanged() override {}
    void RowsCleared() override {}
    void RowsAdded() override {}
    void RowsChanged(std::int32_t, std::int32_t) override {}
    void ErrorsChanged() override {}
    void OptionsChanged() override {}
    void RefreshCaption() override {}
    void SetHourglass(bool) override {}
    void FocusFolder(Side) override {}
    void FlashFrame() override {}
    void Activate() override {}
    void ShowMessage(const std::string&, const std::string&) override {}
    bool AskYesNo(const std::string&, const std::string&) override { return false; }
    bool ShowNotice(const std::string&, const std::string&) override { return false; }
    std::string BrowseForFolder(const std::string&) override { return {}; }
    std::string PickReportFile(const std::string&, const std::string&) override { return {}; }
    void CompareFiles(const PerSide<std::string>&, bool) override {}
    bool ConfirmClose() override { return true; }
    void CloseDialogs() override {}
};

}  // namespace zorvane
