#include "options/find_settings.h"

#include "common/base/text_encoding.h"
#include "options/setting_rows.h"

namespace zorvane {
namespace {

using Settings = FindSettings;

constexpr SettingRow<Settings> kRows[] = {
    {"WindowState", &Settings::WindowState},
    {"Left", &Settings::Left},
    {"Top", &Settings::Top},
    {"Width", &Settings::Width},
    {"Height", &Settings::Height},
    {"dDividerPrimaryRatioLast", &Settings::dDividerPrimaryRatioLast},
    {"dDividerSecondaryRatio", &Settings::dDividerSecondaryRatio},
    {"cbDontStreamResults", &Settings::cbDontStreamResults},
    {"cbBeepWhenDone", &Settings::cbBeepWhenDone},
    {"bShowDocument", &Settings::bShowDocument},
    {"txtDefaultReportCSV", &Settings::txtDefaultReportCSV},
    {"FontName", &Settings::FontName},
    {"FontSize", &Settings::FontSize},
    {"FontBold", &Settings::FontBold},
    {"FontItalic", &Settings::FontItalic},
};

constexpr std::int32_t kMostItems = 20;
constexpr std::string_view kMissing = "+-!#";

// Calls `row` with the key and the width of each column of both grids.
template <typename AnySettings, typename Row>
void ForEachWidth(AnySettings& settings, const Row& row) {
    const auto grid = [&](const std::string& name, auto& widths) {
        for (std::size_t column = 0; column < widths.size(); ++column)
            row(name + ".ColWidth(" + std::to_string(column) + ")", widths[column]);
    };
    grid("fgFiles", settings.fgFilesColWidth);
    grid("fgErrorMessages", settings.fgErrorMessagesColWidth);
}

}  // namespace

FindSettings DefaultFindSettings(const std::string& data_folder) {
    FindSettings settings;
    settings.txtDefaultReportCSV = data_folder + "\\Reports\\FindTextReport.CSV";
    return settings;
}

void ReadFindSettings(IniProfile& file, const std::string& section, FindSettings& settings) {
    const FindSettings before = settings;
    ReadSettings<Settings>(file, section, kRows, settings);
    settings.FontSize = ShownFontSize(settings.FontSize, before.FontSize);
    for (const auto ratio :
         {&Settings::dDividerPrimaryRatioLast, &Settings::dDividerSecondaryRatio}) {
        // 12345 stands for no value; the others would hide a part for good.
        if (settings.*ratio <= 0 || settings.*ratio >= 1)
            settings.*ratio = before.*ratio;
    }
    ForEachWidth(settings, [&](const std::string& key, std::int32_t& width) {
        ReadSetting(file, section, key, width);
    });
}

void SaveFindSettings(IniProfile& file, const std::string& section, const FindSettings& settings) {
    SaveSettings<Settings>(file, section, kRows, settings);
    ForEachWidth(settings, [&](const std::string& key, std::int32_t width) {
        SaveSetting(file, section, key, width);
    });
}

void AddUniqueItemToCollection(std::vector<std::string>& collection, const std::string& item) {
    if (item.empty())
        return;
    const std::string upper = ToUpper(item);
    std::erase_if(collection, [&](const std::string& old) { return ToUpper(old) == upper; });
    collection.push_back(item);
}

void WriteCollectionToIniFile(IniProfile& file, const std::string& section,
                              const std::vector<std::string>& collection) {
    std::int32_t number = kMostItems;
    for (auto item = collection.rbegin(); item != collection.rend() && number >= 1; ++item)
        file.Write(section, section + std::to_string(number--), *item);
}

void ReadIniFileIntoCollection(IniProfile& file, const std::string& section,
                               std::vector<std::string>& collection) {
    collection.clear();
    for (std::int32_t number = 1; number <= kMostItems; ++number) {
        const std::string item = file.Read(section, section + std::to_string(number), kMissing);
        if (item != kMissing)
            AddUniqueItemToCollection(collection, item);
    }
}

}  // namespace zorvane
