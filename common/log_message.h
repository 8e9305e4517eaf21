// The one road of every failure text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/process_state.h"

namespace zorvane {

/// Appends `sMessage` as a line to `sLogFile` when that is not empty, under the mutex
/// "Halvern_Global_Mutex", the file opened and closed each time; under `bShow` prints it to
/// standard error (a message box once there is a window). Never fails.
void LogMessage(ProcessState& process, std::string_view sMessage, const std::string& sLogFile,
                bool bShow);
/// To the log file and in the way that the command line asked for.
void LogMessage(ProcessState& process, std::string_view sMessage);

/// Keeps messages back while it lives, until it is known how the step ends. They are dropped unless
/// they are released. Holds do not nest.
class MessageHold {
  public:
    explicit MessageHold(ProcessState& process);
    ~MessageHold();
    MessageHold(const MessageHold&) = delete;
    MessageHold& operator=(const MessageHold&) = delete;

    bool Empty() const { return held_.empty(); }
    /// Ends the hold and says what was held.
    void Release();
    /// Ends the hold and forgets what was held.
    void Drop();

  private:
    ProcessState& process_;
    std::vector<HeldMessage> held_;
};

/// How a user knows a file: its name, or what it stands for ("standard input").
std::string ShownName(const ProcessState& process, const std::string& file);

}  // namespace zorvane
