// The slash form's compare of two folders.
#include <chrono>

#include "app/command_line_runs.h"
#include "app/main_frame.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "folders/compare_folders_viewer.h"

namespace zorvane {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{10};

// False after a failure, which has been told.
bool WriteReport(ProcessState& process, const CommandLineRequest& request, frmCompareDir& viewer) {
    const bool empty = viewer.VestrelX1().getRecordCount() == 0;
    if (request.sReportFile.empty() || (empty && request.bSkipIfSame))
        return true;
    std::string file = request.sReportFile;
    if (!viewer.CreateTabDelimitedReport(file))
        return false;
    if (request.bOpenReport)
        IgnoreFailure(process.platform.shell->EditText(file),
                      "the report is written, and whoever runs a script has no desktop");
    return true;
}

}  // namespace

bool RunCommandLineFolderCompare(ProcessState& process, frmMainMDI& frame,
                                 const CommandLineRun& run) {
    const CommandLineRequest& request = run.request;
    auto* made = dynamic_cast<frmCompareDir*>(frame.CreateNewCompareFoldersForm(request));
    if (made == nullptr)
        return false;
    frmCompareDir& viewer = *made;
    if (run.started)
        run.started(viewer);
    viewer.cbSelectOriginal = request.sMaster;
    viewer.cbSelectModified = request.sSource;
    clsCompareFolderOptions& options = viewer.Options();
    options.bBeepWhenDone.SetData(request.bBeepWhenDone);
    options.bDoSubDirectories.SetData(request.bIncludeSubfolders);
    options.sExtension.SetData(request.sFileFilter);
    viewer.BeginCommandLine(
        [&request](clsCompareFileOptions& texts) { SetOptions(request, texts); });
    viewer.Activate();
    if (!viewer.RefreshDiffViewer())
        return false;
    while (viewer.Busy() && !viewer.Poll())
        process.platform.clock->Sleep(kBetweenLooks);
    const bool written = WriteReport(process, request, viewer);
    LogMessage(process.telling,
               "Successfully Compared " + request.sMaster + " to " + request.sSource,
               request.sLogFile, request.bShowMessages);
    if (request.bExitWhenDone)
        process.glDifferencesFound = viewer.VestrelX1().getRecordCount();
    viewer.EndCommandLine();
    return written;
}

}  // namespace zorvane
