#include "options/compare_files_settings.h"

#include <algorithm>
#include <variant>

#include "common/base/text_encoding.h"
#include "common/string_utilities.h"
#include "options/setting_rows.h"

namespace zorvane {
namespace {

using Settings = CompareFilesSettings;

using Member = SettingRow<Settings>::Member;

enum class Scope { Own, Shared };
enum class Use {
    Plain,
    State,     // of the window
    Place,     // of the window, while its state is normal
    Password,  // saved where the user keeps passwords
    OnlySaved  // another key counts when it is read
};

struct KeyRow {
    const char* key;
    Scope scope;
    Member member;
    Use use = Use::Plain;
    SettingRow<Settings> Row() const { return {key, member}; }
};
// In the order in which they are saved.
constexpr KeyRow kRows[] = {
    {"lLastSelectedFileFilterIndex", Scope::Own, &Settings::lLastSelectedFileFilterIndex},
    {"bWarnedAboutSwitchingPDFConversionMethods", Scope::Own,
     &Settings::bWarnedAboutSwitchingPDFConversionMethods},
    {"bWarnedAboutLargeWordDocAlready", Scope::Own, &Settings::bWarnedAboutLargeWordDocAlready},
    {"bWarnedAboutPPTAlready", Scope::Own, &Settings::bWarnedAboutPPTAlready},
    {"bWarnedAboutHTMLAlready", Scope::Own, &Settings::bWarnedAboutHTMLAlready},
    {"bWarnedAboutXLSWordWrapAlready", Scope::Own, &Settings::bWarnedAboutXLSWordWrapAlready},
    {"mnuWordWrap", Scope::Own, &Settings::mnuWordWrap},
    {"TextSynchType", Scope::Own, &Settings::TextSynchType},
    {"WindowState", Scope::Own, &Settings::WindowState, Use::State},
    {"Left", Scope::Own, &Settings::Left, Use::Place},
    {"Top", Scope::Own, &Settings::Top, Use::Place},
    {"Width", Scope::Own, &Settings::Width, Use::Place},
    {"Height", Scope::Own, &Settings::Height, Use::Place},
    {"rbReloadOnRefresh", Scope::Own, &Settings::rbReloadOnRefresh, Use::OnlySaved},
    {"txtRightMargin", Scope::Own, &Settings::txtRightMargin},
    {"txtLeftMargin", Scope::Own, &Settings::txtLeftMargin},
    {"txtBottomMargin", Scope::Own, &Settings::txtBottomMargin},
    {"txtTopMargin", Scope::Own, &Settings::txtTopMargin},
    {"msgReportFileDOC_MD", Scope::Own, &Settings::msgReportFileDOC_MD},
    {"msgReportFileTXT_MD", Scope::Own, &Settings::msgReportFileTXT_MD},
    {"msgReportFileCSV_MD", Scope::Own, &Settings::msgReportFileCSV_MD},
    {"msgReportFileHTM_MD", Scope::Own, &Settings::msgReportFileHTM_MD},
    {"msgReportTitleHTM_MD", Scope::Own, &Settings::msgReportTitleHTM_MD},
    {"txtReportMasterTitleHTML", Scope::Own, &Settings::txtReportMasterTitleHTML},
    {"txtReportSourceTitleHTML", Scope::Own, &Settings::txtReportSourceTitleHTML},
    {"mlReportDefaultFileType_MD", Scope::Own, &Settings::mlReportDefaultFileType_MD},
    {"mlReportDefaultStyle_MD", Scope::Own, &Settings::mlReportDefaultStyle_MD},
    {"bReportHTMLShowHighDetailSummary", Scope::Own, &Settings::bReportHTMLShowHighDetailSummary},
    {"bReportDOC_ShowAllInOneDifferenceViewer", Scope::Own,
     &Settings::bReportDOC_ShowAllInOneDifferenceViewer},
    {"bReportDOC_Additions", Scope::Own, &Settings::bReportDOC_Additions},
    {"bReportDOC_ShowDeletions", Scope::Own, &Settings::bReportDOC_ShowDeletions},
    {"bReportDOC_ShowChanges", Scope::Own, &Settings::bReportDOC_ShowChanges},
    {"bReportDOC_Tracked", Scope::Own, &Settings::bReportDOC_Tracked},
    {"dRatioTopEditor", Scope::Own, &Settings::dRatioTopEditor},
    {"dFontSize", Scope::Own, &Settings::dFontSize},
    {"sFontName", Scope::Own, &Settings::sFontName},
    {"bBCLMergeParagraph", Scope::Own, &Settings::bBCLMergeParagraph},
    {"bBCLDetectHeader", Scope::Shared, &Settings::bBCLDetectHeader},
    {"bConnectHyphens", Scope::Shared, &Settings::bConnectHyphens},
    {"bRemoveHiddenText", Scope::Shared, &Settings::bRemoveHiddenText},
    {"bDoQuickTextExtraction", Scope::Own, &Settings::bDoQuickTextExtraction},
    {"bBCLShrinkFonts", Scope::Own, &Settings::bBCLShrinkFonts},
    {"bBCLAdjustFontNames", Scope::Own, &Settings::bBCLAdjustFontNames},
    {"bBCLExtractHyperlinks", Scope::Own, &Settings::bBCLExtractHyperlinks},
    {"sBCLPasswordUser", Scope::Own, &Settings::sBCLPasswordUser, Use::Password},
    {"sBCLPasswordOwner", Scope::Own, &Settings::sBCLPasswordOwner, Use::Password},
    {"bBCLUsingPageRange", Scope::Own, &Settings::bBCLUsingPageRange},
    {"bBCLLockPageRange", Scope::Own, &Settings::bBCLLockPageRange},
    {"lBCLPageFrom", Scope::Own, &Settings::lBCLPageFrom},
    {"lBCLPageTo", Scope::Own, &Settings::lBCLPageTo},
    {"lBCLPageFromModified", Scope::Own, &Settings::lBCLPageFromModified},
    {"lBCLPageToModified", Scope::Own, &Settings::lBCLPageToModified},
    {"lBCLDocumentType", Scope::Shared, &Settings::lBCLDocumentType},
    {"lBCLConversionMethod", Scope::Shared, &Settings::lBCLConversionMethod},
    {"lDupMaxDeltaX", Scope::Own, &Settings::lDupMaxDeltaX},
    {"bConvertAllSlides", Scope::Own, &Settings::bConvertAllSlides},
    {"lFromSlideOriginal", Scope::Own, &Settings::lFromSlideOriginal},
    {"lFromSlideModified", Scope::Own, &Settings::lFromSlideModified},
    {"lToSlideOriginal", Scope::Own, &Settings::lToSlideOriginal},
    {"lToSlideModified", Scope::Own, &Settings::lToSlideModified},
    {"bShowSlideAndShapeNumber", Scope::Own, &Settings::bShowSlideAndShapeNumber},
    {"bIncludeNotes", Scope::Own, &Settings::bIncludeNotes},
    {"bIncludeNotesOnly", Scope::Own, &Settings::bIncludeNotesOnly},
};

constexpr const char* kSharedSection = "frmMain";

std::string SectionOf(const KeyRow& row, const std::string& own) {
    return row.scope == Scope::Shared ? kSharedSection : own;
}

struct ActionRow {
    std::int32_t code;
    std::variant<bool Settings::*, std::int32_t Settings::*> member;
    std::int32_t value;
};
constexpr ActionRow kActions[] = {
    {1, &Settings::lBCLDocumentType, 1},       {2, &Settings::lBCLDocumentType, 2},
    {3, &Settings::lBCLDocumentType, 3},       {5, &Settings::lBCLConversionMethod, 1},
    {8, &Settings::lBCLConversionMethod, 3},   {9, &Settings::lBCLConversionMethod, 0},
    {6, &Settings::bBCLDetectHeader, 1},       {7, &Settings::bBCLDetectHeader, 0},
    {10, &Settings::bRemoveHiddenText, 1},     {11, &Settings::bRemoveHiddenText, 0},
    {12, &Settings::bConnectHyphens, 1},       {13, &Settings::bConnectHyphens, 0},
    {22, &Settings::bBCLMergeParagraph, 1},    {23, &Settings::bBCLMergeParagraph, 0},
    {24, &Settings::bBCLShrinkFonts, 1},       {25, &Settings::bBCLShrinkFonts, 0},
    {26, &Settings::bBCLAdjustFontNames, 1},   {27, &Settings::bBCLAdjustFontNames, 0},
    {28, &Settings::bBCLExtractHyperlinks, 1}, {29, &Settings::bBCLExtractHyperlinks, 0},
};

}  // namespace

CompareFilesSettings DefaultCompareFilesSettings(const std::string& data_folder) {
    CompareFilesSettings settings;
    settings.msgReportFileDOC_MD = data_folder + "\\ZorvaneReport.DOC";
    settings.msgReportFileTXT_MD = data_folder + "\\ZorvaneReport.TXT";
    settings.msgReportFileCSV_MD = data_folder + "\\ZorvaneReport.CSV";
    settings.msgReportFileHTM_MD = data_folder + "\\ZorvaneReport.HTM";
    return settings;
}

void ReadCompareFilesSettings(IniProfile& file, const std::string& section,
                              CompareFilesSettings& settings) {
    const CompareFilesSettings defaults = settings;
    for (const KeyRow& row : kRows) {
        if (row.use != Use::OnlySaved)
            ReadSetting(file, SectionOf(row, section), row.Row(), settings);
    }
    // A stored type outside the four is ignored.
    if (settings.mlReportDefaultFileType_MD < 1 || settings.mlReportDefaultFileType_MD > 4)
        settings.mlReportDefaultFileType_MD = defaults.mlReportDefaultFileType_MD;
    // A file from elsewhere may hold what no window can show.
    settings.dFontSize = ShownFontSize(settings.dFontSize, defaults.dFontSize);
    if (settings.dRatioTopEditor <= 0 || settings.dRatioTopEditor >= 1)
        settings.dRatioTopEditor = CompareFilesSettings().dRatioTopEditor;
    for (const auto size : {&Settings::Width, &Settings::Height})
        settings.*size = settings.*size > 0 ? settings.*size : defaults.*size;
    ReadCompareFilesView(file, section, settings.view);
}

void SaveCompareFilesSettings(IniProfile& file, const std::string& section,
                              const CompareFilesSettings& settings, WindowPlace place) {
    constexpr std::int32_t kNormal = 0;
    const bool saves_state = place == WindowPlace::Save;
    const bool saves_place = saves_state && settings.WindowState == kNormal;
    for (const KeyRow& row : kRows) {
        if ((row.use == Use::State && !saves_state) || (row.use == Use::Place && !saves_place) ||
            (row.use == Use::Password && !settings.keeps_pdf_passwords))
            continue;
        SaveSetting(file, SectionOf(row, section), row.Row(), settings);
    }
    SaveCompareFilesView(file, section, settings.view);
}

bool HasSetting(std::string_view key) {
    for (const KeyRow& row : kRows) {
        if (row.key == key)
            return true;
    }
    return false;
}

Status SetSettingByName(CompareFilesSettings& settings, std::string_view key,
                        const std::string& text) {
    for (const KeyRow& row : kRows) {
        if (row.key != key)
            continue;
        constexpr double kNoNumber = -1e300;
        const bool number = std::holds_alternative<std::int32_t Settings::*>(row.member) ||
                            std::holds_alternative<double Settings::*>(row.member);
        if (number && dSafeCDbl(text, kNoNumber) == kNoNumber)
            return Failure{std::string(key) + "=" + text + ": not a number"};
        if (const auto* flag = std::get_if<bool Settings::*>(&row.member)) {
            // Stricter than a stored value, of which all but FALSE is true.
            const std::string upper = ToUpper(text);
            const bool on = upper == "TRUE" || upper == "YES" || upper == "1";
            if (!on && upper != "FALSE" && upper != "NO" && upper != "0")
                return Failure{std::string(key) + "=" + text + ": write true or false"};
            settings.*(*flag) = on;
            return Status::Ok();
        }
        std::visit([&](auto member) { SetFromSettingText(text, settings.*member); }, row.member);
        return Status::Ok();
    }
    return Failure{std::string(key) + ": there is no setting of this name"};
}

bool ApplyAdvancedAction(std::int32_t code, CompareFilesSettings& settings) {
    for (const ActionRow& row : kActions) {
        if (row.code != code)
            continue;
        if (const auto* flag = std::get_if<bool Settings::*>(&row.member))
            settings.*(*flag) = row.value != 0;
        else
            settings.*std::get<std::int32_t Settings::*>(row.member) = row.value;
        return true;
    }
    return false;
}

}  // namespace zorvane
