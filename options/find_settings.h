// What a Find Text In Files viewer keeps between runs: its settings and three lists of what was
// searched. How a search is made is not kept: each new viewer starts at the engine's defaults.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "common/platform/ini_profile.h"

namespace zorvane {

/// Field names are keys of the viewer's section. Places and widths are twips.
struct FindSettings {
    std::int32_t WindowState = 0;
    std::int32_t Left = 0;
    std::int32_t Top = 200;
    std::int32_t Width = 6500;
    std::int32_t Height = 6500;
    /// Share of the height above the primary divider. A stored 12345, and any other value outside
    /// 0 to 1, stands for none.
    double dDividerPrimaryRatioLast = 0.85;
    double dDividerSecondaryRatio = 0.5;  ///< likewise
    std::array<std::int32_t, 5> fgFilesColWidth = {600, 5700, 700, 700, 8100};
    std::array<std::int32_t, 2> fgErrorMessagesColWidth = {600, 14000};
    bool cbDontStreamResults = false;
    bool cbBeepWhenDone = false;
    bool bShowDocument = false;  ///< a hit in its whole document, not in the lines around it
    std::string txtDefaultReportCSV;
    std::string FontName = "Courier New";
    double FontSize = 8;
    bool FontBold = false;
    bool FontItalic = false;
    friend bool operator==(const FindSettings&, const FindSettings&) = default;
};

/// Those of a fresh file; reports lie in the folder "Reports" in `data_folder`.
FindSettings DefaultFindSettings(const std::string& data_folder);
/// A missing key keeps the value that `settings` has.
void ReadFindSettings(IniProfile& file, const std::string& section, FindSettings& settings);
void SaveFindSettings(IniProfile& file, const std::string& section, const FindSettings& settings);

/// The newest item is last. Of items that differ in case only the later one stays; an empty one is
/// ignored. The list has no limit of its own.
void AddUniqueItemToCollection(std::vector<std::string>& collection, const std::string& item);

/// The sections of the three lists, which all viewers share.
constexpr const char* kSearchForHistory = "SearchFor";
constexpr const char* kFileExtHistory = "FileExt";
constexpr const char* kSearchPathHistory = "SearchPath";

/// The last 20 items, the newest under the key section + "20", older ones under lower numbers. Keys
/// below the oldest stay as they are.
void WriteCollectionToIniFile(IniProfile& file, const std::string& section,
                              const std::vector<std::string>& collection);
/// In the order of the keys 1 to 20. "+-!#" cannot be stored: it reads as a missing key.
void ReadIniFileIntoCollection(IniProfile& file, const std::string& section,
                               std::vector<std::string>& collection);

}  // namespace zorvane
