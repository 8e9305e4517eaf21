#include "app/run_modes.h"

#include <algorithm>

#include "app/command_line_parser.h"
#include "app/command_line_runs.h"
#include "app/settings_location.h"
#include "common/base/text_encoding.h"
#include "common/log_message.h"
#include "common/path_tokens.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr std::size_t kClearHistoryAlone = 15;  // a line shorter than this holds nothing else

RunOutcome RefusedLine(ProcessState& process, const std::string& line,
                       CommandLineRequest& request) {
    const std::string_view trimmed = Trim(line);
    if (request.bClearHistory && trimmed.size() < kClearHistoryAlone)
        return {RunMode::Interactive, 0};
    if (line.find("/?") != std::string::npos)
        return {RunMode::Nothing, 0};
    if (trimmed.empty()) {
        request.bShowMessages = true;
        process.telling.manner.bShowMessages = true;
        return {RunMode::Interactive, 0};
    }
    LogMessage(process, "Missing required command line argument(s)");
    return {RunMode::Nothing, 0};
}

}  // namespace

int ExitCodeOf(std::int32_t differences) {
    return std::clamp(differences, 0, 255);
}

void StartServices(ProcessState& process) {
    LocateSettingsFile(process);
    process.gsAppDataFolder =
        sExpandPathTokens(*process.platform.folders, "%appdata%\\Tarnwick, Inc\\Zorvane\\");
    InstallUserData(process);
    InitializeTranslator(process);
    SetupHelpFiles(process);
}

RunOutcome Main(ProcessState& process, const std::string& raw_line, CommandLineRequest& request,
                frmMainMDI& frame) {
    StartServices(process);
    process.gbCommandLineRunning = false;
    std::string line = raw_line;
    if (!ParseCommandLine(process, line, raw_line, request))
        return RefusedLine(process, raw_line, request);

    process.gbCommandLineRunning = true;
    frame.SetState(WindowState::Minimised);
    RunCommandLineFileCompare(process, frame, request);
    RunOutcome outcome{RunMode::CommandLine, 0};
    if (request.bExitWhenDone && request.bExitCodeIsCount)
        outcome.exit_code = ExitCodeOf(process.glDifferencesFound);
    if (!request.bExitWhenDone) {
        process.gbCommandLineRunning = false;
        frame.SetState(WindowState::Normal);
        if (request.lWindowState != -1)
            frame.SetState(static_cast<WindowState>(request.lWindowState));
        outcome.mode = RunMode::Interactive;
    }
    return outcome;
}

}  // namespace zorvane
