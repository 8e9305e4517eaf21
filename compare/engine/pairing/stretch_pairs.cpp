#include "compare/engine/pairing/stretch_pairs.h"

#include <algorithm>

#include "compare/engine/pairing/candidates.h"
#include "compare/engine/pairing/gap_filler.h"
#include "compare/engine/pairing/likeness.h"
#include "compare/engine/pairing/split_joiner.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLargeStretch = 200'000;  // paragraphs from which on fewer partners are kept

// On 277 real revisions one partner in place of four found 7 pairs of 2,131 fewer.
std::int32_t PartnersKept(const StretchText& text, const CompareOptions& options) {
    if (options.faster)
        return 1;
    return text.FirstCount() + text.SecondCount() > kLargeStretch ? 2 : 4;
}

// Whether both sides have paragraphs between two neighbours of the chain.
bool PartBoth(const Candidate& front, const Candidate& back) {
    return back.first - front.first > 1 && back.second - front.second > 1;
}

// Equal lines in a row that weigh next to nothing (a brace, a row of dashes) and stand between
// paragraphs that changed on both sides would cut one change in two: they are no anchor. Whoever
// fills the gap may still pair them.
std::vector<Candidate> WithoutLightIslands(const std::vector<Candidate>& chain,
                                           const StretchText& text) {
    constexpr std::int64_t kLightScore = 1500;  // what it costs to open another stretch
    const Candidate before{-1, -1};
    const Candidate behind{text.FirstCount(), text.SecondCount()};
    std::vector<Candidate> kept;
    std::size_t begin = 0;
    while (begin < chain.size()) {
        std::size_t end = begin;
        std::int64_t score = 0;
        bool equal = true;
        do {
            score += chain[end].score;
            equal = equal && chain[end].equal;
            ++end;
        } while (end < chain.size() && chain[end].first == chain[end - 1].first + 1 &&
                 chain[end].second == chain[end - 1].second + 1);
        const bool island = PartBoth(begin == 0 ? before : chain[begin - 1], chain[begin]) &&
                            PartBoth(chain[end - 1], end == chain.size() ? behind : chain[end]);
        if (!island || !equal || score >= kLightScore)
            kept.insert(kept.end(), chain.begin() + static_cast<std::ptrdiff_t>(begin),
                        chain.begin() + static_cast<std::ptrdiff_t>(end));
        begin = end;
    }
    return kept;
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
    const std::vector<Candidate> chain = WithoutLightIslands(
        BestChain(FindCandidates(text, scorer, {PartnersKept(text, options)}), text.SecondCount()),
        text);
    if (!KeepGoing(text.Watcher()))
        return {};
    std::vector<PairedBlock> blocks;
    blocks.reserve(chain.size());
    for (const Candidate& pair : chain)
        blocks.push_back({{pair.first, pair.first + 1, pair.second, pair.second + 1}, pair.equal});
    if (!options.faster)
        JoinSplits(text, scorer, blocks);
    if (!KeepGoing(text.Watcher()))
        return {};
    blocks = FillGaps({first, second, text, scorer}, blocks);
    if (!options.faster)
        JoinWrappedLines({first, second, text, scorer}, blocks);
    return InPlaces(blocks, text.Range());
}

}  // namespace zorvane
