// The partners of what the best chain left over: equal ends, small tables, lone pairs.
#pragma once

#include <vector>

#include "compare/engine/pairing/likeness.h"
#include "compare/engine/pairing/stretch_pairs.h"

namespace zorvane {

/// All borrowed.
struct GapContext {
    const CompareSide& first;
    const CompareSide& second;
    const StretchText& text;
    PairScorer& scorer;
};

/// Pairs between the blocks, given back with them in order: equal paragraphs inward from both ends
/// of each gap, then a table in which a stretch without partners costs something, so that a lone
/// light equal line never splits a changed block. Large rests of equal count are tried place by
/// place. Blocks in numbers of the stretch.
std::vector<PairedBlock> FillGaps(const GapContext& context,
                                  const std::vector<PairedBlock>& blocks);

}  // namespace zorvane
