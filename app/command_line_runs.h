// A compare that the slash form of the command line, or an automation client, asks for.
#pragma once

#include <functional>

#include "app/command_line_request.h"

namespace zorvane {

class clsCompareFileOptions;
class frmCompareFiles;
class frmMainMDI;
class Viewer;
struct ProcessState;

enum class Silence {
    Silent,  ///< the viewer of the run asks nothing and shows no dialog
    Open     ///< a run for a client that leaves its viewer on the screen
};

struct CommandLineRun {
    CommandLineRequest& request;  ///< `bExitWhenDone` may be set
    Silence silence = Silence::Silent;
    std::function<void(Viewer&)> started;  ///< told the viewer before it works; may be empty
};

/// Whether failures are shown: under `/V`, and on a terminal without a window, where silence would
/// leave its user wondering.
bool ShowsFailures(const ProcessState& process, const CommandLineRequest& request);

/// The run that the request asks for. False when there is no viewer to make it with, which has been
/// told.
bool RunCommandLine(ProcessState& process, frmMainMDI& frame, const CommandLineRun& run);

/// Makes a viewer, gives it the request's options (whether their switches were given or not),
/// compares, writes the report and tells the outcome through `LogMessage`. May set `bExitWhenDone`.
bool RunCommandLineFileCompare(ProcessState& process, frmMainMDI& frame, const CommandLineRun& run);

/// The same for two folders, with the table of records for a report. Also false when the two cannot
/// be compared or the report not written.
bool RunCommandLineFolderCompare(ProcessState& process, frmMainMDI& frame,
                                 const CommandLineRun& run);

/// Every switch that bears on a compare of two files, given or not.
void SetOptions(const CommandLineRequest& request, clsCompareFileOptions& options);

/// The actions of `/AA` on the viewer's PDF settings, in list order. An unknown code has no effect.
void ApplyAdvancedActions(const CommandLineRequest& request, frmCompareFiles& viewer);

}  // namespace zorvane
