// Carries out `zorvane text`.
#pragma once

#include <string>

#include "app/load_options.h"

namespace zorvane {

struct Platform;

struct TextCommand {
    std::string file;  ///< "-" is standard input
    bool rtf = false;
    std::string output;  ///< empty: standard output
    LoadOptions load;
};

/// 0, or 2 after trouble, which has been told on standard error.
int RunTextCommand(Platform& platform, const TextCommand& command);

}  // namespace zorvane
