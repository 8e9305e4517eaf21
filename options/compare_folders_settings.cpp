#include "options/compare_folders_settings.h"

#include "options/setting_rows.h"

namespace zorvane {
namespace {

using Settings = CompareFoldersSettings;

constexpr SettingRow<Settings> kPlace[] = {
    {"WindowState", &Settings::WindowState},
    {"Left", &Settings::Left},
    {"Top", &Settings::Top},
    {"Width", &Settings::Width},
};
constexpr SettingRow<Settings> kRows[] = {
    {"Height", &Settings::Height},
    {"mlCol1Width_CD", &Settings::mlCol1Width_CD},
    {"mlCol2Width_CD", &Settings::mlCol2Width_CD},
    {"mlCol3Width_CD", &Settings::mlCol3Width_CD},
    {"mlCol4Width_CD", &Settings::mlCol4Width_CD},
    {"mlCol5Width_CD", &Settings::mlCol5Width_CD},
    {"ShowLegend", &Settings::ShowLegend},
    {"TellRenamed", &Settings::TellRenamed},
    {"txtDefaultReportTXT", &Settings::txtDefaultReportTXT},
    {"txtDefaultReportCSV", &Settings::txtDefaultReportCSV},
    {"txtDefaultReportHTM", &Settings::txtDefaultReportHTM},
    {"bNeverShowWhenCreateChecked", &Settings::bNeverShowWhenCreateChecked},
    {"FontName", &Settings::FontName},
    {"FontSize", &Settings::FontSize},
    {"FontBold", &Settings::FontBold},
    {"FontItalic", &Settings::FontItalic},
};

}  // namespace

CompareFoldersSettings DefaultCompareFoldersSettings(const std::string& data_folder,
                                                     bool japanese) {
    CompareFoldersSettings settings;
    const std::string report = data_folder + "\\Reports\\ZorvaneReport";
    settings.txtDefaultReportTXT = report + ".TXT";
    settings.txtDefaultReportCSV = report + ".CSV";
    settings.txtDefaultReportHTM = report + ".HTM";
    if (japanese)
        settings.FontName = "MS UI Gothic";
    return settings;
}

void ReadCompareFoldersSettings(IniProfile& file, const std::string& section, ReadPlace place,
                                CompareFoldersSettings& settings) {
    if (place == ReadPlace::Yes)
        ReadSettings<Settings>(file, section, kPlace, settings);
    const double usual_size = settings.FontSize;
    ReadSettings<Settings>(file, section, kRows, settings);
    settings.FontSize = ShownFontSize(settings.FontSize, usual_size);
}

void SaveCompareFoldersSettings(IniProfile& file, const std::string& section,
                                const CompareFoldersSettings& settings) {
    SaveSettings<Settings>(file, section, kPlace, settings);
    SaveSettings<Settings>(file, section, kRows, settings);
}

}  // namespace zorvane
