// The entry of the slash form: finds the settings, reads the line, and lives as it says.
#pragma once

#include <string>

#include "app/command_line_request.h"
#include "app/main_frame.h"

namespace zorvane {

struct ProcessState;

/// How a start ended, for whoever ends the process.
enum class RunMode {
    Interactive,  ///< the frame is open and lives on; without windows there is nothing to show
    CommandLine,  ///< a run was made, and the process ends
    Nothing       ///< help was opened, or the arguments were refused
};

struct RunOutcome {
    RunMode mode = RunMode::Nothing;
    int exit_code = 0;
};

/// `line` is the raw command line without the program's name.
RunOutcome Main(ProcessState& process, const std::string& line, CommandLineRequest& request,
                frmMainMDI& frame);

/// Settings, user data, language and help paths: what comes before the command line is read. Also
/// the start of an automation client.
void StartServices(ProcessState& process);

/// An exit code above 255 is 255.
int ExitCodeOf(std::int32_t differences);

}  // namespace zorvane
