// How much of what did not change a page shows around its differences.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "compare/engine/comparison.h"
#include "compare/engine/engine_report.h"

namespace zorvane {

/// A stretch of `count` unchanged paragraphs: the first and the last `context` are shown where a
/// difference stands beside them, what is between them is folded if it is enough.
struct UnchangedPlan {
    bool fold = true;              ///< not: all is shown open
    std::size_t context = 3;       ///< shown beside a difference
    std::size_t least_folded = 4;  ///< fewer are not worth a fold
    /// A folded stretch of more text than this is left out of the page.
    std::int64_t most_kept = std::numeric_limits<std::int64_t>::max();
};

/// What a page may hold of unchanged text, in characters and over both columns, before paragraphs
/// are left out: a browser opens it at once.
inline constexpr std::int64_t kMostUnchangedText = 4 << 20;

/// `columns` is 2 where each paragraph is shown twice. Short stretches are kept first, since they
/// stand between differences that are near each other.
UnchangedPlan PlanUnchanged(const Comparison& comparison, UnchangedText wanted, int columns,
                            std::int64_t most = kMostUnchangedText);

}  // namespace zorvane
