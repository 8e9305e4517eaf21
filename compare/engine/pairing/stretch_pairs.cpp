#include "compare/engine/pairing/stretch_pairs.h"

#include <algorithm>

#include "compare/engine/pairing/candidates.h"
#include "compare/engine/pairing/gap_filler.h"
#include "compare/engine/pairing/likeness.h"
#include "compare/engine/pairing/split_joiner.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLargeStretch = 200'000;  // paragraphs from which on fewer partners are kept

std::int32_t PartnersKept(const StretchText& text, const CompareOptions& options) {
    if (options.faster)
        return 1;
    return text.FirstCount() + text.SecondCount() > kLargeStretch ? 2 : 4;
}

// Equal neighbours become one block, and all get the places of the whole sides.
std::vector<PairedBlock> InPlaces(const std::vector<PairedBlock>& blocks, const PlaceRange& range) {
    std::vector<PairedBlock> placed;
    placed.reserve(blocks.size());
    for (PairedBlock block : blocks) {
        block.range.first_begin += range.first_begin;
        block.range.first_end += range.first_begin;
        block.range.second_begin += range.second_begin;
        block.range.second_end += range.second_begin;
        const bool follows = !placed.empty() && placed.back().equal && block.equal &&
                             placed.back().range.first_end == block.range.first_begin &&
                             placed.back().range.second_end == block.range.second_begin;
        if (!follows) {
            placed.push_back(block);
            continue;
        }
        placed.back().range.first_end = block.range.first_end;
        placed.back().range.second_end = block.range.second_end;
    }
    return placed;
}

}  // namespace

std::vector<PairedBlock> PairStretch(const CompareSide& first, const CompareSide& second,
                                     const StretchText& text, const CompareOptions& options) {
    PairScorer scorer(text);
    const std::vector<Candidate> chain =
        BestChain(FindCandidates(text, scorer, {PartnersKept(text, options)}), text.SecondCount());
    std::vector<PairedBlock> blocks;
    blocks.reserve(chain.size());
    for (const Candidate& pair : chain)
        blocks.push_back({{pair.first, pair.first + 1, pair.second, pair.second + 1}, pair.equal});
    if (!options.faster)
        JoinSplits(text, scorer, blocks);
    blocks = FillGaps({first, second, text, scorer}, blocks);
    if (!options.faster)
        JoinWrappedLines({first, second, text, scorer}, blocks);
    return InPlaces(blocks, text.Range());
}

}  // namespace zorvane
