// How alike two paragraphs of a stretch are.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "compare/engine/difference_search.h"
#include "compare/engine/pairing/affine_table.h"
#include "compare/engine/pairing/stretch_text.h"

namespace zorvane {

/// What a pair keeps (thousandths of weight), and its likeness: 0 to 1000.
struct PairScore {
    std::int64_t kept = 0;
    std::int32_t likeness = 0;
};

// Found on 277 real revisions of prose (README.md tells how); docs/PERFORMANCE.md has the figures.

/// Pairs from 200 to 300 read as rewritten partners, those below as scraps. Moved by 30 % it
/// changes woven paragraphs from 33 to 20 and marked words by 0.5 %.
inline constexpr std::int32_t kLeastLikeness = 200;
/// One paragraph against one: headings and dates that were renewed. 30 % more or less shows
/// nowhere.
inline constexpr std::int32_t kLoneLikeness = 150;
/// Letter pairs of very short paragraphs; 600 pairs some headings that are not alike.
inline constexpr std::int32_t kLettersAlike = 750;

/// Scores pairs of one stretch. Keeps its tables between calls.
class PairScorer {
  public:
    explicit PairScorer(const StretchText& text);

    /// Likeness is 2 kept / (both weights); `kept` is the heaviest common subsequence of runs. Of
    /// long paragraphs that are not very alike only those words count that a reader would be shown
    /// as unchanged, so that scattered small words prove nothing. Below `least` the score may be
    /// any lower one.
    PairScore Score(const Sequence& first, const Sequence& second, std::int32_t least);
    PairScore Score(std::int32_t first, std::int32_t second) {
        return Score(text_.First(first, first + 1), text_.Second(second, second + 1),
                     kLeastLikeness);
    }
    /// Heaviest common subsequence alone.
    std::int64_t Kept(const Sequence& first, const Sequence& second);

  private:
    std::int64_t CommonBag(const Sequence& first, const Sequence& second);
    std::int64_t KeptByTable(std::span<const std::uint32_t> first,
                             std::span<const std::uint32_t> second);
    std::int64_t KeptBySearch(std::span<const std::uint32_t> first,
                              std::span<const std::uint32_t> second);
    std::int64_t KeptByReader(const Sequence& first, const Sequence& second);

    const StretchText& text_;
    std::vector<std::int32_t> bag_;  // for each run, how often it is left; 0 between calls
    std::vector<std::int64_t> row_;
    AffineTable table_;
    DifferenceSearch search_;
    StopCheck stop_;
};

/// Letter pairs that two texts share: twice the common ones of all (Dice), 0 to 1000. In lower
/// case, blanks left out.
std::int32_t LetterPairLikeness(std::u16string_view first, std::u16string_view second);

}  // namespace zorvane
