// The state of a Compare Files viewer that is no compare option: report defaults, fonts,
// converters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "common/platform/ini_profile.h"
#include "options/compare_files_view.h"

namespace zorvane {

/// Field names are settings keys. Some live in the section `frmMain`, shared by all viewers; the
/// others in the viewer's own.
struct CompareFilesSettings {
    std::int32_t lLastSelectedFileFilterIndex = 1;
    bool bWarnedAboutSwitchingPDFConversionMethods = false;
    bool bWarnedAboutLargeWordDocAlready = false;
    bool bWarnedAboutPPTAlready = false;
    bool bWarnedAboutHTMLAlready = false;
    bool bWarnedAboutXLSWordWrapAlready = false;
    bool mnuWordWrap = true;
    std::int32_t TextSynchType =
        1;  ///< of the scroll link: 0 none, 1 vertical, 2 horizontal, 3 both
    std::int32_t WindowState = 2;
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Width = 12000;
    std::int32_t Height = 9000;
    bool rbReloadOnRefresh = true;
    std::string txtRightMargin = "0.5";
    std::string txtLeftMargin = "0.5";
    std::string txtBottomMargin = "0.5";
    std::string txtTopMargin = "0.5";
    std::string msgReportFileDOC_MD;
    std::string msgReportFileTXT_MD;
    std::string msgReportFileCSV_MD;
    std::string msgReportFileHTM_MD;
    std::string msgReportTitleHTM_MD = "Zorvane";
    std::string txtReportMasterTitleHTML;
    std::string txtReportSourceTitleHTML;
    std::int32_t mlReportDefaultFileType_MD = 4;
    std::int32_t mlReportDefaultStyle_MD = 1;
    bool bReportHTMLShowHighDetailSummary = false;
    bool bReportDOC_ShowAllInOneDifferenceViewer = true;
    bool bReportDOC_Additions = true;
    bool bReportDOC_ShowDeletions = true;
    bool bReportDOC_ShowChanges = true;
    bool bReportDOC_Tracked = false;  ///< the document with tracked changes instead of all these
    double dRatioTopEditor = 12345;   ///< this value: never saved
    double dFontSize = 10;            ///< points
    std::string sFontName = "Courier";
    bool bBCLMergeParagraph = true;
    bool bBCLDetectHeader = false;
    bool bConnectHyphens = false;
    bool bRemoveHiddenText = true;
    bool bDoQuickTextExtraction = false;
    bool bBCLShrinkFonts = false;
    bool bBCLAdjustFontNames = false;
    bool bBCLExtractHyperlinks = false;
    std::string sBCLPasswordUser;
    std::string sBCLPasswordOwner;
    /// Whether the two passwords above are saved. Not those that came by switches, unless the user
    /// ticks it; itself it is never saved.
    bool keeps_pdf_passwords = true;
    bool bBCLUsingPageRange = false;
    bool bBCLLockPageRange = true;
    std::int32_t lBCLPageFrom = 1;
    std::int32_t lBCLPageTo = 1;
    std::int32_t lBCLPageFromModified = 1;
    std::int32_t lBCLPageToModified = 1;
    std::int32_t lBCLDocumentType = 1;
    std::int32_t lBCLConversionMethod = 3;
    std::int32_t lDupMaxDeltaX = 0;
    bool bConvertAllSlides = true;
    std::int32_t lFromSlideOriginal = 1;
    std::int32_t lFromSlideModified = 1;
    std::int32_t lToSlideOriginal = 2;
    std::int32_t lToSlideModified = 2;
    bool bShowSlideAndShapeNumber = false;
    bool bIncludeNotes = false;
    bool bIncludeNotesOnly = false;
    CompareFilesView view;  ///< in a section of its own
    friend bool operator==(const CompareFilesSettings&, const CompareFilesSettings&) = default;
};

/// Settings with the defaults of a fresh file; report files lie in `data_folder`.
CompareFilesSettings DefaultCompareFilesSettings(const std::string& data_folder);
/// A missing key keeps the value that `settings` has.
void ReadCompareFilesSettings(IniProfile& file, const std::string& section,
                              CompareFilesSettings& settings);
/// A viewer that stands in for a dialog leaves the place that the true one has; and no place is
/// saved while the window is not of its normal size.
enum class WindowPlace { Save, Leave };
void SaveCompareFilesSettings(IniProfile& file, const std::string& section,
                              const CompareFilesSettings& settings,
                              WindowPlace place = WindowPlace::Save);

/// One setting by its key, from the text that a settings file would hold. Fails, in a user's words,
/// for a number that is none.
bool HasSetting(std::string_view key);
Status SetSettingByName(CompareFilesSettings& settings, std::string_view key,
                        const std::string& text);

/// Sets what one code of the `/AA` switch stands for; false for an unknown code.
bool ApplyAdvancedAction(std::int32_t code, CompareFilesSettings& settings);

}  // namespace zorvane
