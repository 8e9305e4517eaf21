// Carries out `zorvane compare --pairs`.
#pragma once

namespace zorvane {

struct CompareCommand;
struct Platform;

/// The worst exit status of all pairs; 2 also where the list or the results cannot be read or
/// written, which has been told on standard error.
int RunPairs(Platform& platform, const CompareCommand& command);

}  // namespace zorvane
