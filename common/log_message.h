// The one road of every failure text.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

struct ProcessState;

/// Appends `sMessage` as a line to `sLogFile` when that is not empty, under the mutex
/// "Halvern_Global_Mutex", the file opened and closed each time; under `bShow` prints it to
/// standard error (a message box once there is a window). Never fails.
void LogMessage(ProcessState& process, std::string_view sMessage, const std::string& sLogFile,
                bool bShow);
/// To the log file and in the way that the command line asked for.
void LogMessage(ProcessState& process, std::string_view sMessage);

}  // namespace zorvane
