// How a Compare Files window shows its documents, beyond the settings that scripts and old files
// know. Kept in a section of its own, the viewer's name and "View", as "1_CompareFileView".
#pragma once

#include <cstdint>
#include <string>

#include "common/platform/ini_profile.h"

namespace zorvane {

enum class PaneLayout : std::int32_t { EditorsAndResult = 1, Result = 2, Editors = 3 };

/// Field names are keys. Lengths are pixels of a screen of 96 to the inch.
struct CompareFilesView {
    // How the result reads.
    bool KeepParagraphsOpposite = true;  ///< with room where one side has nothing
    bool AllInOne = false;               ///< the view that a new window shows
    std::int32_t ZoomPercent = 100;      ///< 25 to 500
    std::int32_t LineLength = 760;       ///< at most, in the all-in-one view; 200 to 4000
    // Stretches without a difference.
    bool FoldUnchanged = false;
    std::int32_t FoldFromParagraphs = 4;  ///< shorter ones stay open; at least 1
    std::int32_t FoldKeepParagraphs = 1;  ///< left open at each end; at least 0
    bool FoldKeepHeadings = true;         ///< the heading above a difference stays open
    // What counts as a difference beside the options of the compare.
    bool CountNumbering = true;
    bool CountFormatting = true;
    bool CountMoves = true;
    // The window's parts.
    PaneLayout Layout = PaneLayout::EditorsAndResult;
    double RatioColumns = 0.5;  ///< width of the original side; 0.1 to 0.9
    bool OptionsUnfolded = false;
    std::int32_t OptionsTab = 0;
    bool PanelOpen = false;
    std::int32_t PanelWidth = 304;  ///< 120 to 2000
    friend bool operator==(const CompareFilesView&, const CompareFilesView&) = default;
};

/// A missing key keeps what `view` has, and so does 0 or less where that is no size; any other
/// value outside its range becomes its nearest end.
void ReadCompareFilesView(IniProfile& file, const std::string& viewer, CompareFilesView& view);
void SaveCompareFilesView(IniProfile& file, const std::string& viewer,
                          const CompareFilesView& view);

}  // namespace zorvane
