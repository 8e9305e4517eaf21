// Which of many texts are alike, found by the lines that they share.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace zorvane {

/// A text by its lines: what each weighs, without keeping the text.
class LineWeights {
  public:
    /// Ends of lines and blanks around them do not count.
    explicit LineWeights(std::string_view text);

    struct Line {
        std::uint64_t hash = 0;
        std::uint32_t weight = 0;  ///< bytes, of all lines with this hash
    };
    const std::vector<Line>& Lines() const { return lines_; }  ///< ascending by hash
    std::int64_t Weight() const { return weight_; }

  private:
    std::vector<Line> lines_;
    std::int64_t weight_ = 0;
};

/// How much of the heavier one is in the other, 0 to 100.
std::int32_t PercentShared(const LineWeights& one, const LineWeights& two);

struct LikePair {
    std::size_t first = 0;
    std::size_t second = 0;
    std::int32_t percent = 0;
};
/// Pairs of at least `least` percent, the best first, each text in one pair at most. Only lines
/// that few texts hold lead from one to another, so that the work grows with the texts and not with
/// their pairs.
std::vector<LikePair> PairLikeTexts(const std::vector<LineWeights>& first,
                                    const std::vector<LineWeights>& second, std::int32_t least);

}  // namespace zorvane
