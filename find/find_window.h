// What a Find Text In Files viewer asks of its window: verbs, never widgets.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/base/side.h"
#include "find/find_rows.h"
#include "options/find_settings.h"

namespace zorvane {

enum class FindPanel : std::int32_t { Hits = 2, Main = 3, Time = 5 };
enum class FindGrid { Files, ErrorMessages, FileWithHit };

/// What stands in the window's entries.
struct FindEntries {
    std::string cbSearchFor;
    std::string cbFileExt;
    std::string cbDirectory;
    bool cbSupportOfficeDocs = false;
    bool cbCaseSensitive = false;
    bool cbLookInSubfolders = false;
    bool cbWholeWordOnly = false;
    bool cbRegularExpression = false;
    friend bool operator==(const FindEntries&, const FindEntries&) = default;
};

/// The items of the three combo boxes, newest first.
struct FindHistories {
    std::vector<std::string> cbSearchFor;
    std::vector<std::string> cbFileExt;
    std::vector<std::string> cbDirectory;
};

class FindTextWindow {
  public:
    virtual ~FindTextWindow() = default;
    virtual FindEntries Entries() = 0;
    virtual void SetEntries(const FindEntries& entries) = 0;
    virtual void SetHistories(const FindHistories& histories) = 0;
    virtual void ShowStatus(FindPanel panel, const std::string& text) = 0;
    virtual void SetCaption(const std::string& caption) = 0;
    virtual void EnableAbort(bool enabled) = 0;
    /// A report is being written beside the window, or no longer: `WritesReport`.
    virtual void WritingChanged() = 0;
    virtual void SetHourglass(bool on) = 0;
    /// Rows of a grid came or went, or all of it is another: its model is asked anew.
    virtual void GridChanged(FindGrid grid) = 0;
    virtual void SizeRows(FindGrid grid) = 0;
    /// Font, widths of columns and boxes are those of the settings.
    virtual void SettingsChanged() = 0;
    /// Lays all out anew from the viewer's ratios.
    virtual void Form_Resize() = 0;
    virtual void ShowMessage(const std::string& text) = 0;
    /// The hit that is shown is another one; its lines come with `GridChanged`, or a text in their
    /// place.
    virtual void ShownHitChanged() = 0;
    /// In the place of the lines around a hit.
    virtual void ShowInContextGrid(const std::string& text) = 0;
    /// What stands there is wrong.
    virtual void FocusEntry(FindError wrong) = 0;
    /// Empty when the user gives none.
    virtual std::string PickFile(const std::string& title, const std::string& start) = 0;
    virtual std::string PickReportFile(const std::string& title, const std::string& start) = 0;
    virtual std::string BrowseForFolder(const std::string& start) = 0;
    /// In the first Compare Files viewer.
    virtual void CompareFiles(const PerSide<std::string>& files) = 0;
    virtual void Activate() = 0;
    virtual void CloseDialogs() = 0;
};

}  // namespace zorvane
