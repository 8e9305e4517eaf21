// How a start goes on: with a window or without one, here or in the program that has the windows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/command_line_request.h"

namespace zorvane {

class SpecialFolders;

enum class StartAction {
    ShowFrame,  ///< an interactive session
    Nothing,    ///< help was asked for
    Refuse,     ///< the arguments are told to be wrong
    Run         ///< a command-line run
};

struct StartDecision {
    StartAction action = StartAction::Nothing;
    bool show_messages = false;  ///< switches the message boxes on
    friend bool operator==(const StartDecision&, const StartDecision&) = default;
};

/// Of a line in the slash form, `line` as it was given, and what the parser made of it.
StartDecision WhatToDo(std::string_view line, const CommandLineRequest& request, bool parsed);

/// What there is to show a window with.
struct StartFacts {
    bool display = false;
    std::string window_program;  ///< empty: not installed
};
StartFacts FindStartFacts(SpecialFolders& folders);

enum class StartPlace {
    Here,
    Window,        ///< the program with the windows takes over, with the same arguments
    NoDisplay,     ///< a window is wanted and cannot be shown
    NotInstalled,  ///< likewise
};

/// A session needs a window; a run that leaves its viewer open takes one where it can.
StartPlace WhereToStart(const StartDecision& decision, const CommandLineRequest& request,
                        const StartFacts& facts);
/// `arguments` of the other form: two existing paths and nothing else open a window where they can.
StartPlace WhereToStart(const std::vector<std::string>& arguments, const StartFacts& facts);

/// For the user, when a window is wanted and there is none.
std::string WhyNoWindow(StartPlace place);

}  // namespace zorvane
