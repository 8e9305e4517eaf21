// Another program beside this one, and what it answers.
#pragma once

#include <string>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

struct ProgramAnswer {
    int status = 0;      ///< 128 and the signal's number for one that a signal ended
    std::string output;  ///< without the line end behind it
};

/// Runs `words[0]`, looked for in PATH, with the rest as its arguments, and waits. Its standard
/// error is that of this process.
Result<ProgramAnswer> RunProgram(const std::vector<std::string>& words);

}  // namespace zorvane
