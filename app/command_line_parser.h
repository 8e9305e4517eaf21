// The slash form of the command line: "/" starts a token, the character behind it names the switch.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/command_line_request.h"

namespace zorvane {

struct ProcessState;
class SpecialFolders;

/// What a line asks for at once, in the order of its switches.
struct LineEffects {
    std::vector<std::string> log_files;       ///< of `/L`: each gets the header
    std::vector<std::string> settings_files;  ///< of `/+`
    bool help = false;                        ///< `/?`: nothing behind it was read
    std::vector<std::string> failures;        ///< for `LogMessage`
};

/// The arguments with blanks between, as the slash form is read.
std::string JoinedLine(const std::vector<std::string>& arguments);

/// Fills `request` (all fields from their defaults) and says whether a run may start. An empty
/// `line` is replaced by `process_line`, the process's own raw line, which is also what the
/// positional form of two absolute paths is read from. `line` is changed by the first pass. Looks
/// at files and changes nothing.
bool ReadCommandLine(SpecialFolders& folders, std::string& line, const std::string& process_line,
                     CommandLineRequest& request, LineEffects& effects);

/// The same with its effects: `/L` writes the head of its log, `/+` replaces the settings file,
/// `/?` opens the page on the command line, failures are told as the line itself asks.
bool ParseCommandLine(ProcessState& process, std::string& line, const std::string& process_line,
                      CommandLineRequest& request);

/// The first pass: switches of several letters, matched in upper case, are taken out of the line.
/// False when a number among them is none, which makes the line unusable.
bool ExtractLongSwitches(std::string& line, CommandLineRequest& request);

/// Finds the last `name`, gives the text up to the next "/" as its value, and cuts that text out of
/// the line wherever it occurs.
bool TakeLongSwitch(std::string& line, std::string_view name, std::string& value);

/// The value of the token with that number (from 1), and its letter. An empty token leaves the
/// letter.
std::string GetSwitchToken(std::int32_t index, std::string_view line, char delimiter,
                           std::string& letter);
/// Number of delimiters plus 1.
std::int16_t CountSwitchTokens(std::string_view line, char delimiter);

}  // namespace zorvane
