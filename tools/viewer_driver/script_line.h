// One line of a script: a command and its words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

struct ScriptLine {
    std::string command;  ///< empty: a blank line or a comment
    std::vector<std::string> words;
    std::string rest;  ///< everything behind the command, as it stands
};

/// Words are parted by blanks; in double quotes they may hold blanks, and \n, \t, \" and \\ stand
/// for a line end, a tab, a quote and a backslash. Nothing for a quote without its end.
std::optional<ScriptLine> ReadScriptLine(std::string_view line);

}  // namespace zorvane
