// The state of a Compare Folders viewer that is no compare option.
#pragma once

#include <cstdint>
#include <string>

#include "common/platform/ini_profile.h"

namespace zorvane {

/// Field names are keys of the viewer's section. Places and widths are twips.
struct CompareFoldersSettings {
    std::int32_t WindowState = 0;
    std::int32_t Left = 0;
    std::int32_t Top = 200;
    std::int32_t Width = 6500;
    std::int32_t Height = 6500;
    std::int32_t mlCol1Width_CD = 7500;
    std::int32_t mlCol2Width_CD = 7500;
    std::int32_t mlCol3Width_CD = 1380;
    std::int32_t mlCol4Width_CD = 900;
    std::int32_t mlCol5Width_CD = 900;
    bool ShowLegend = true;
    bool TellRenamed = true;  ///< what was renamed or moved, behind a run
    std::string txtDefaultReportTXT;
    std::string txtDefaultReportCSV;
    std::string txtDefaultReportHTM;
    bool bNeverShowWhenCreateChecked = false;
    std::string FontName = "Tahoma";
    double FontSize = 10;
    bool FontBold = false;
    bool FontItalic = false;
    friend bool operator==(const CompareFoldersSettings&, const CompareFoldersSettings&) = default;
};

/// Those of a fresh file; reports lie in the folder "Reports" in `data_folder`. `japanese` is a
/// user who sees another language than English on a Japanese system.
CompareFoldersSettings DefaultCompareFoldersSettings(const std::string& data_folder, bool japanese);

/// A viewer whose place somebody else decides reads all but its state, left, top and width.
enum class ReadPlace { Yes, No };
void ReadCompareFoldersSettings(IniProfile& file, const std::string& section, ReadPlace place,
                                CompareFoldersSettings& settings);
void SaveCompareFoldersSettings(IniProfile& file, const std::string& section,
                                const CompareFoldersSettings& settings);

}  // namespace zorvane
