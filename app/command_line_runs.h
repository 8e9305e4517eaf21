// A compare that the slash form of the command line, or an automation client, asks for.
#pragma once

#include "app/command_line_request.h"

namespace zorvane {

class frmCompareFiles;
class frmMainMDI;
struct ProcessState;

/// Makes a viewer, gives it the request's options (whether their switches were given or not),
/// compares, writes the report and tells the outcome through `LogMessage`. May set `bExitWhenDone`.
void RunCommandLineFileCompare(ProcessState& process, frmMainMDI& frame,
                               CommandLineRequest& request);

/// The actions of `/AA` on the viewer's PDF settings, in list order. An unknown code has no effect.
void ApplyAdvancedActions(const CommandLineRequest& request, frmCompareFiles& viewer);

}  // namespace zorvane
