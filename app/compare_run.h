// Carries out `zorvane compare`.
#pragma once

#include "app/compare_command.h"

namespace zorvane {

struct Platform;

/// 0 no differences, 1 differences, 2 trouble, which has been told on standard error. Reads no
/// window's settings section and writes no settings.
int RunCompareCommand(Platform& platform, const CompareCommand& command);

}  // namespace zorvane
