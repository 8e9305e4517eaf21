// The options of `zorvane compare`: of the whole line, and of one pair of a list.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/compare_command.h"
#include "common/base/result.h"

namespace CLI {
class App;
}

namespace zorvane {

/// What the line holds before it is checked.
struct RawCompareOptions {
    std::vector<std::string> reports;
    std::string report_type;
    std::string json;
    std::vector<std::string> sets;
    std::string also;
    std::int32_t bracket = 0;
    bool no_pager = false;
};

/// Puts all options on the command.
void AddCompareArguments(CLI::App& app, CompareCommand& command, RawCompareOptions& raw);
/// Checks what was read, in a user's words.
Status FinishCompareCommand(const CLI::App& app, const RawCompareOptions& raw,
                            CompareCommand& command);

/// One option of a pair: its long name without "--", and its value as it would stand behind "=".
struct PairOption {
    std::string name;
    std::string value;
};
/// Adds them to what `command` holds already: the options of the line, which they override. Only
/// what tells how one pair is compared and reported is taken.
Status TakePairOptions(const std::vector<PairOption>& options, CompareCommand& command);
/// Adds reports, each of the type that its extension names.
Status TakeReports(const std::vector<std::string>& files, CompareCommand& command);

}  // namespace zorvane
