// The one road of every failure text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "common/process_state.h"
#include "common/run_telling.h"

namespace zorvane {

/// Appends `sMessage` as a line to `sLogFile` when that is not empty; under `bShow` also shows it.
/// Never fails; safe from any thread.
void LogMessage(RunTelling& telling, std::string_view sMessage, const std::string& sLogFile,
                bool bShow);
/// To the log file and in the way that the run was asked for.
void LogMessage(RunTelling& telling, std::string_view sMessage);
/// What belongs to no run.
void LogMessage(ProcessState& process, std::string_view sMessage);

/// Keeps messages back while it lives, until it is known how the step ends. They are dropped unless
/// they are released. Holds do not nest.
class MessageHold {
  public:
    explicit MessageHold(RunTelling& telling);
    ~MessageHold();
    MessageHold(const MessageHold&) = delete;
    MessageHold& operator=(const MessageHold&) = delete;

    bool Empty() const;
    /// Ends the hold and says what was held.
    void Release();
    /// Ends the hold and forgets what was held.
    void Drop();

  private:
    std::vector<RunMessage> End();

    RunTelling& telling_;
    std::vector<RunMessage> held_;
};

/// How a user knows a file: its name, or what it stands for ("standard input").
std::string ShownName(const RunTelling& telling, const std::string& file);

}  // namespace zorvane
