#include "app/run_modes.h"

#include <algorithm>

#include "app/command_line_parser.h"
#include "app/command_line_runs.h"
#include "app/exit_status.h"
#include "app/settings_location.h"
#include "app/start.h"
#include "common/log_message.h"
#include "common/path_tokens.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

RunOutcome RunLine(ProcessState& process, CommandLineRequest& request, frmMainMDI& frame) {
    process.gbCommandLineRunning = true;
    frame.Load();
    frame.Window().SetState(WindowState::Minimised);
    const bool ran = RunCommandLine(process, frame, {request, Silence::Silent, {}});
    RunOutcome outcome{RunMode::CommandLine, ran ? 0 : kTrouble};
    if (ran && request.bExitWhenDone && request.bExitCodeIsCount)
        outcome.exit_code = ExitCodeOf(process.glDifferencesFound);
    if (!request.bExitWhenDone) {
        process.gbCommandLineRunning = false;
        frame.ShowAfterRun(request.lWindowState);
        outcome.mode = RunMode::Interactive;
    }
    return outcome;
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
    const bool parsed = ParseCommandLine(process, line, raw_line, request);
    const StartDecision decision = WhatToDo(raw_line, request, parsed);
    request.bShowMessages = request.bShowMessages || decision.show_messages;
    process.telling.manner.sLogFile = request.sLogFile;
    process.telling.manner.bShowMessages = ShowsFailures(process, request);
    process.bHistoryOff = request.bClearHistory;
    switch (decision.action) {
        case StartAction::Run:
            return RunLine(process, request, frame);
        case StartAction::ShowFrame:
            frame.Load();
            return {RunMode::Interactive, 0};
        case StartAction::Refuse:
            LogMessage(process, "Missing required command line argument(s)");
            break;
        case StartAction::Nothing:
            break;
    }
    return {RunMode::Nothing, 0};
}

}  // namespace zorvane
