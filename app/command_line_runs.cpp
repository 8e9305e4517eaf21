#include "app/command_line_runs.h"

#include <string>

#include "app/main_frame.h"
#include "common/log_message.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"
#include "compare/compare_files_viewer.h"
#include "reports/report_driver.h"

namespace zorvane {
namespace {

struct StringField {
    std::string CommandLineRequest::*from;
    clsVarString clsCompareFileOptions::*to;
};
constexpr StringField kStrings[] = {
    {&CommandLineRequest::sMaster, &clsCompareFileOptions::sFileOriginal},
    {&CommandLineRequest::sSource, &clsCompareFileOptions::sFileModified},
    {&CommandLineRequest::sExcelSheetMaster, &clsCompareFileOptions::sExcelSheetNumberMaster},
    {&CommandLineRequest::sExcelSheetSource, &clsCompareFileOptions::sExcelSheetNumberSource},
    {&CommandLineRequest::sIgnoreRegEx, &clsCompareFileOptions::sIgnoreRegularExpression},
    {&CommandLineRequest::sXlsPasswordOpenMaster, &clsCompareFileOptions::sExcelPasswordOriginal},
    {&CommandLineRequest::sXlsPasswordOpenSource, &clsCompareFileOptions::sExcelPasswordModified},
    {&CommandLineRequest::sXlsPasswordWriteMaster,
     &clsCompareFileOptions::sExcelPasswordOriginal_TW},
    {&CommandLineRequest::sXlsPasswordWriteSource,
     &clsCompareFileOptions::sExcelPasswordModified_TW},
    {&CommandLineRequest::sDocPasswordOpenMaster, &clsCompareFileOptions::sDOCPassword_TO_Original},
    {&CommandLineRequest::sDocPasswordWriteMaster,
     &clsCompareFileOptions::sDOCPassword_TOTW_Original},
    {&CommandLineRequest::sDocPasswordTemplateOpenMaster,
     &clsCompareFileOptions::sDOCPasswordTemplate_TO_Original},
    {&CommandLineRequest::sDocPasswordTemplateWriteMaster,
     &clsCompareFileOptions::sDOCPasswordTemplate_TOTW_Original},
    {&CommandLineRequest::sDocPasswordOpenSource, &clsCompareFileOptions::sDOCPassword_TO_Modified},
    {&CommandLineRequest::sDocPasswordWriteSource,
     &clsCompareFileOptions::sDOCPassword_TOTW_Modified},
    {&CommandLineRequest::sDocPasswordTemplateOpenSource,
     &clsCompareFileOptions::sDOCPasswordTemplate_TO_Modified},
    {&CommandLineRequest::sDocPasswordTemplateWriteSource,
     &clsCompareFileOptions::sDOCPasswordTemplate_TOTW_Modified},
};

struct BooleanField {
    bool CommandLineRequest::*from;
    clsVarBoolean clsCompareFileOptions::*to;
};
constexpr BooleanField kBooleans[] = {
    {&CommandLineRequest::bRemoveBlankLines, &clsCompareFileOptions::bRemoveBlankLines},
    {&CommandLineRequest::bRemoveFormatting, &clsCompareFileOptions::bRemoveFormatting},
    {&CommandLineRequest::bIgnoreCase, &clsCompareFileOptions::bIgnoreCase},
    {&CommandLineRequest::bIgnoreWhitespace, &clsCompareFileOptions::bIgnoreWhitespace},
    {&CommandLineRequest::bBeepWhenDone, &clsCompareFileOptions::bBeepWhenDone},
    {&CommandLineRequest::bCompareFaster, &clsCompareFileOptions::bCompareFaster},
    {&CommandLineRequest::bExcelCompareFormulas, &clsCompareFileOptions::bExcelCompareFormulas},
    {&CommandLineRequest::bExcelIncludeValues, &clsCompareFileOptions::bExcelIncludeValues},
    {&CommandLineRequest::bHTMLCompareSource, &clsCompareFileOptions::bHTMLCompareSource},
};

// A range that was given is used; without one the option keeps the range it had, unused.
struct RangeField {
    std::string CommandLineRequest::*from;
    clsVarBoolean clsCompareFileOptions::*use;
    clsVarString clsCompareFileOptions::*range;
};
constexpr RangeField kRanges[] = {
    {&CommandLineRequest::sRowsMaster, &clsCompareFileOptions::bExcelUseRowsMaster,
     &clsCompareFileOptions::sExcelRowsMaster},
    {&CommandLineRequest::sColsMaster, &clsCompareFileOptions::bExcelUseColsMaster,
     &clsCompareFileOptions::sExcelColsMaster},
    {&CommandLineRequest::sRowsSource, &clsCompareFileOptions::bExcelUseRowsSource,
     &clsCompareFileOptions::sExcelRowsSource},
    {&CommandLineRequest::sColsSource, &clsCompareFileOptions::bExcelUseColsSource,
     &clsCompareFileOptions::sExcelColsSource},
};

void LogLoadFailure(ProcessState& process, RunTelling& telling, const CommandLineRequest& request) {
    LogMessage(telling, process.Translate("Failed to compare. File I/O issue. Original File:") +
                            " " + request.sMaster + " " + process.Translate("Modified File:") +
                            " " + request.sSource);
}

void LogOutcome(ProcessState& process, const CommandLineRequest& request, frmCompareFiles& viewer) {
    const auto tell = [&](const std::string& words) {
        LogMessage(viewer.Telling(), words, request.sLogFile, request.bShowMessages);
    };
    tell(process.Translate("Successfully Compared") + " " + request.sMaster + " " +
         process.Translate("to") + " " + request.sSource);
    const std::int32_t sum = viewer.mlChanges() + viewer.mlAdditions() + viewer.mlDeletions();
    tell(process.Translate("There were ") + std::to_string(sum) +
         process.Translate(" Differences.  ") + std::to_string(viewer.mlChanges()) +
         process.Translate(" Change(s), ") + std::to_string(viewer.mlAdditions()) +
         process.Translate(" Addition(s)  and ") + std::to_string(viewer.mlDeletions()) +
         process.Translate(" Deletion(s)"));
}

// Under /K a run without differences writes no report and exits, even without /X.
bool WantsReport(CommandLineRequest& request, std::int32_t differences) {
    if (request.sReportFile.empty())
        return false;
    if (differences != 0 || !request.bSkipIfSame)
        return true;
    request.bExitWhenDone = true;
    return false;
}

// Only a window that stays, and the word-processor report, show editors.
BuildViews ViewsFor(const CommandLineRequest& request) {
    const bool document = !request.sReportFile.empty() &&
                          static_cast<ReportType>(request.lReportType) == ReportType::Document;
    return document || !request.bExitWhenDone ? BuildViews::Yes : BuildViews::No;
}

void WriteReport(ProcessState& process, const CommandLineRequest& request,
                 frmCompareFiles& viewer) {
    VestrelX& engine = viewer.VXMacroDiff();
    engine.putMasterTitle(request.sMasterLabel.empty() ? request.sMaster : request.sMasterLabel);
    engine.putSourceTitle(request.sSourceLabel.empty() ? request.sSource : request.sSourceLabel);
    engine.putFileDates({ReportDateOf(request.sMaster), ReportDateOf(request.sSource)});
    engine.putHighDetailSummary(viewer.Settings().bReportHTMLShowHighDetailSummary);
    std::string file = request.sReportFile;
    const ReportResult result = viewer.CreateReport(
        file, static_cast<ReportType>(request.lReportType), request.lViewFormat);
    if (result != ReportResult::Ok || !request.bOpenReport)
        return;
    viewer.ShutDownAppsIfRequired(file);
    IgnoreFailure(OpenReport(*process.platform.shell, static_cast<ReportType>(request.lReportType),
                             file, TableOpens::InTheTextEditor),
                  "the report is written, and whoever runs a script has no desktop");
}

}  // namespace

void SetOptions(const CommandLineRequest& request, clsCompareFileOptions& options) {
    for (const StringField& field : kStrings)
        (options.*field.to).SetData(request.*field.from);
    for (const BooleanField& field : kBooleans)
        (options.*field.to).SetData(request.*field.from);
    for (const RangeField& field : kRanges) {
        const std::string& range = request.*field.from;
        (options.*field.use).SetData(!range.empty());
        if (!range.empty())
            (options.*field.range).SetData(range);
    }
    options.bIgnoreEmptyLines.SetData(false);
}

void ApplyAdvancedActions(const CommandLineRequest& request, frmCompareFiles& viewer) {
    for (const std::int32_t code : request.colAdvancedActions)
        ApplyAdvancedAction(code, viewer.Settings());  // an unknown code has no effect
}

bool ShowsFailures(const ProcessState& process, const CommandLineRequest& request) {
    return request.bShowMessages || (!process.messages.HasWindow() && IsTerminal(Stream::Error));
}

bool RunCommandLine(ProcessState& process, frmMainMDI& frame, const CommandLineRun& run) {
    if (!run.request.bCompareFolders)
        return RunCommandLineFileCompare(process, frame, run);
    return RunCommandLineFolderCompare(process, frame, run);
}

bool RunCommandLineFileCompare(ProcessState& process, frmMainMDI& frame,
                               const CommandLineRun& run) {
    CommandLineRequest& request = run.request;
    frmCompareFiles* made = frame.CreateNewCompareFilesForm(request);
    if (made == nullptr)
        return false;
    frmCompareFiles& viewer = *made;
    viewer.BeginCommandLine(request, run.silence == Silence::Silent);
    viewer.Telling().manner.bShowMessages = ShowsFailures(process, request);
    if (run.started)
        run.started(viewer);
    SetOptions(request, viewer.Options());
    viewer.Settings().sBCLPasswordUser = request.sPdfUserPassword;
    viewer.Settings().sBCLPasswordOwner = request.sPdfOwnerPassword;
    viewer.Settings().keeps_pdf_passwords = false;
    ApplyAdvancedActions(request, viewer);
    bool failed = false;
    viewer.RefreshDisplayCommandLine(request.lViewFormat, ViewsFor(request), failed);
    if (failed) {
        LogLoadFailure(process, viewer.Telling(), request);
    } else {
        process.glDifferencesFound = viewer.VXMacroDiff().getDifferenceCount();
        if (WantsReport(request, process.glDifferencesFound))
            WriteReport(process, request, viewer);
        LogOutcome(process, request, viewer);
    }
    if (request.bExitWhenDone)
        process.glDifferencesFound = viewer.VXMacroDiff().getDifferenceCount();
    else
        viewer.EndCommandLine();
    return true;
}

}  // namespace zorvane
