// Runs of equal lines that grow from lines which stand once on each side.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/engine/pairing/compare_side.h"
#include "compare/engine/pairing/equal_run.h"

namespace zorvane {

/// Of the lines that stand exactly once on each side of the range, the heaviest chain that ascends
/// on both (weight: text), each grown up and down over equal neighbours. Ascending, without
/// overlap. What large gaps are left is matched by a shortest list of differences. n log n time
/// (Hunt and Szymanski's chain with weights instead of counts).
std::vector<EqualRun> RunsAtUniqueLines(const CompareSide& first, const CompareSide& second,
                                        const PlaceRange& range);

}  // namespace zorvane
