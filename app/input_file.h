// What every command of the Unix command line does first: its settings file and its inputs.
#pragma once

#include <string>

#include "common/base/result.h"

namespace zorvane {

struct ProcessState;

/// The section of a settings file that a run without windows reads.
inline constexpr const char* kFirstViewer = "1_CompareFile";

/// Makes the process one that has no windows, tells each fault once and in a user's words, and
/// starts from a settings file, which is only read. An empty name is none.
Status BeginCommand(ProcessState& process, const std::string& settings_file);

/// The name of a file that can be read more than once: `given` itself, or for "-" and for a pipe a
/// temporary file with what came from there, named after what that holds.
Result<std::string> InputFile(ProcessState& process, const std::string& given);

}  // namespace zorvane
