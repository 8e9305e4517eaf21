// Equal runs that hold whatever else is paired: they cut a compare into stretches.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/engine/compare_options.h"
#include "compare/engine/pairing/compare_side.h"
#include "compare/engine/pairing/equal_run.h"

namespace zorvane {

/// Pairs the equal ends of both sides, then walks side by side: where lines differ it looks for the
/// nearest place at which enough text is equal again. Where it finds none, what remains is numbered
/// and cut at lines that stand once on each side, the heaviest chain of them. Of the runs so found
/// those are given back, ascending, across which nothing heavier could be paired; every other line
/// is left to a closer look. Nothing is hashed that the walk has matched. Empty when stopped.
std::vector<EqualRun> FindTrustedRuns(const CompareSide& first, const CompareSide& second,
                                      RunWatcher* watcher);

}  // namespace zorvane
