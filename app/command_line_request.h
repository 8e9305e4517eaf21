// The record of a parsed command line. No code, so that any layer may read it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zorvane {

/// "Master" is the Original, "Source" the Modified side.
struct CommandLineRequest {
    std::string sMaster;
    std::string sSource;
    bool bCompareFolders = false;
    bool bIncludeSubfolders = false;
    std::string sFileFilter;
    std::string sLogFile;
    std::string sReportFile;
    std::int32_t lReportType = 1;  ///< 1 HTML, 2 text, 3 comma-delimited, 4 word-processor document
    std::int32_t lViewFormat = 2;  ///< 1 all in one, any other number side by side
    bool bIgnoreCase = false;
    bool bIgnoreWhitespace = false;
    bool bCompareFaster = false;
    bool bBeepWhenDone = false;
    bool bExitWhenDone = false;
    bool bOpenReport = false;
    bool bSkipIfSame = false;
    bool bLegacyE = false;
    bool bRemoveBlankLines = false;
    bool bRemoveFormatting = false;
    bool bExcelCompareFormulas = false;
    bool bExcelIncludeValues = false;
    bool bHTMLCompareSource = false;
    std::string sExcelSheetMaster = "1";
    std::string sExcelSheetSource = "1";
    bool bClearHistory = false;
    bool bShowMessages = false;
    std::string sRowsMaster;
    std::string sColsMaster;
    std::string sRowsSource;
    std::string sColsSource;
    std::string sXlsPasswordOpenMaster;
    std::string sXlsPasswordWriteMaster;
    std::string sXlsPasswordOpenSource;
    std::string sXlsPasswordWriteSource;
    std::string sMasterLabel;
    std::string sSourceLabel;
    std::string sReportTitle;
    std::string sPdfUserPassword;
    std::string sPdfOwnerPassword;
    std::string sDocPasswordOpenMaster;
    std::string sDocPasswordWriteMaster;
    std::string sDocPasswordTemplateOpenMaster;
    std::string sDocPasswordTemplateWriteMaster;
    std::string sDocPasswordOpenSource;
    std::string sDocPasswordWriteSource;
    std::string sDocPasswordTemplateOpenSource;
    std::string sDocPasswordTemplateWriteSource;
    bool bExitCodeIsCount = false;
    std::int32_t lWindowState = -1;
    std::string sIgnoreRegEx;
    std::vector<std::int32_t> colAdvancedActions;
    std::string sSettingsOverride;
};

}  // namespace zorvane
