// Which paragraphs of a stretch might be partners, and the chain of them with the best total.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/engine/pairing/likeness.h"
#include "compare/engine/pairing/stretch_text.h"

namespace zorvane {

/// Numbers within the stretch.
struct Candidate {
    std::int32_t first = 0;
    std::int32_t second = 0;
    bool equal = false;
    std::int64_t kept = 0;
    std::int64_t score = 0;
};

struct CandidateSwitches {
    std::int32_t most = 4;  ///< partners kept for each paragraph and direction
};

/// Partners by shared rare runs (an inverted index, in both directions), the best few of each
/// paragraph, and equal paragraphs. Paragraphs without weight are left out: a blank one proves
/// nothing. By the first number ascending, then by the second falling.
std::vector<Candidate> FindCandidates(const StretchText& text, PairScorer& scorer,
                                      const CandidateSwitches& switches);

/// The heaviest chain that ascends on both sides, where one directly behind its predecessor counts
/// a little more. O(n log n).
std::vector<Candidate> BestChain(const std::vector<Candidate>& candidates,
                                 std::int32_t second_count);

/// What a pair brings to the total.
std::int64_t TotalScore(std::int64_t kept, std::int32_t likeness, bool equal);

}  // namespace zorvane
