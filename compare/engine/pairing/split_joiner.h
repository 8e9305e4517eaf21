// Paragraphs that were split or joined, and hard-wrapped lines that flowed into each other.
#pragma once

#include <vector>

#include "compare/engine/pairing/gap_filler.h"
#include "compare/engine/pairing/stretch_pairs.h"

namespace zorvane {

/// Takes the nearest paragraphs without a partner into a changed pair, blank ones between passed
/// over, as long as their joined texts keep enough more. Before blank paragraphs are paired: the
/// blank between two halves belongs to neither neighbour. Blocks in numbers of the stretch.
void JoinSplits(const StretchText& text, PairScorer& scorer, std::vector<PairedBlock>& blocks);

/// Short lines between equal ones, without a blank one among them, become one block where their
/// joined text loses much less than the single lines do.
void JoinWrappedLines(const GapContext& context, std::vector<PairedBlock>& blocks);

}  // namespace zorvane
