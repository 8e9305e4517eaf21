#include "app/start.h"

#include "app/compare_command.h"
#include "common/base/text_encoding.h"
#include "common/platform/exec_program.h"
#include "common/platform/services.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

constexpr std::size_t kClearHistoryAlone = 15;  // a line shorter than this holds nothing else
constexpr const char* kWindowProgram = "/zorvane-window";

StartPlace WindowWhereItCan(const StartFacts& facts) {
    return facts.display && !facts.window_program.empty() ? StartPlace::Window : StartPlace::Here;
}

}  // namespace

StartDecision WhatToDo(std::string_view line, const CommandLineRequest& request, bool parsed) {
    if (parsed)
        return {StartAction::Run};
    const std::string_view trimmed = Trim(line);
    if (request.bClearHistory && trimmed.size() < kClearHistoryAlone)
        return {StartAction::ShowFrame};
    if (line.find("/?") != std::string_view::npos)
        return {StartAction::Nothing};
    if (trimmed.empty())
        return {StartAction::ShowFrame, true};
    return {StartAction::Refuse};
}

StartFacts FindStartFacts(SpecialFolders& folders) {
    StartFacts facts;
    for (const char* variable : {"WAYLAND_DISPLAY", "DISPLAY"})
        facts.display = facts.display || !Environment(variable).value_or("").empty();
    const std::string own = folders.ProgramFolder();
    if (own.empty())
        return facts;
    for (const std::string& folder : {own, own + "/../libexec"}) {
        if (facts.window_program.empty() && IsProgram(folder + kWindowProgram))
            facts.window_program = folder + kWindowProgram;
    }
    return facts;
}

StartPlace WhereToStart(const StartDecision& decision, const CommandLineRequest& request,
                        const StartFacts& facts) {
    if (decision.action == StartAction::Run && !request.bExitWhenDone)
        return WindowWhereItCan(facts);
    if (decision.action != StartAction::ShowFrame)
        return StartPlace::Here;
    if (!facts.display)
        return StartPlace::NoDisplay;
    return facts.window_program.empty() ? StartPlace::NotInstalled : StartPlace::Window;
}

StartPlace WhereToStart(const std::vector<std::string>& arguments, const StartFacts& facts) {
    const bool two_paths = arguments.size() == 2 && MeansCompare(arguments) && arguments[1] != "-";
    return two_paths || MeansDocument(arguments) ? WindowWhereItCan(facts) : StartPlace::Here;
}

std::string WhyNoWindow(StartPlace place) {
    const std::string instead =
        "\"zorvane compare ORIGINAL MODIFIED\" works without a window, see \"zorvane --help\"";
    switch (place) {
        case StartPlace::NoDisplay:
            return "there is no display to open a window on (neither WAYLAND_DISPLAY nor DISPLAY "
                   "is "
                   "set); " +
                   instead;
        case StartPlace::NotInstalled:
            return "the windows are not installed: the package zorvane-window brings them; " +
                   instead;
        case StartPlace::Here:
        case StartPlace::Window:
            break;
    }
    return {};
}

}  // namespace zorvane
