#include "app/automation.h"

#include <utility>

#include "app/command_line_parser.h"
#include "app/command_line_runs.h"
#include "app/run_modes.h"
#include "common/log_message.h"
#include "common/process_state.h"

namespace zorvane {

clsZorvane::clsZorvane(ProcessState& process, CommandLineRequest& request, frmMainMDI& frame,
                       Event event)
    : process_(process), request_(request), frame_(frame), event_(std::move(event)) {
    process_.gbAutomationHosted = true;
    StartServices(process_);
}

std::int32_t clsZorvane::Refuse(const std::string& line) {
    if (line.empty()) {
        event_("Command line is empty", -2);
        return -2;
    }
    const std::string message = "Missing required command line argument(s)";
    event_(message, -3);
    LogMessage(process_, message);
    return -3;
}

std::int32_t clsZorvane::DoCommandLine(std::string& line) {
    // A client has no command line of its own to fall back on, so an empty line stays empty.
    if (!ParseCommandLine(process_, line, "", request_))
        return Refuse(line);
    if (request_.bExitWhenDone)
        process_.gbCommandLineRunning = true;
    frame_.SetState(WindowState::Minimised);
    RunCommandLineFileCompare(process_, frame_, request_);
    if (!request_.bExitWhenDone) {
        process_.gbCommandLineRunning = false;
        frame_.SetState(WindowState::Normal);
        if (request_.lWindowState != -1)
            frame_.SetState(static_cast<WindowState>(request_.lWindowState));
    }
    return 0;
}

std::int32_t clsZorvane::NumDifferencesFound() const {
    return process_.glDifferencesFound;
}

}  // namespace zorvane
