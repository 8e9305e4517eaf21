// Which of many texts are alike, found by the lines or the words that they share.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace zorvane {

enum class TextPieces : std::uint8_t {
    Lines,  ///< ends of lines and blanks around them do not count
    Words   ///< each with the one behind it, so that their order counts
};

/// A text by its pieces: what each weighs, without keeping the text.
class TextWeights {
  public:
    explicit TextWeights(std::string_view text, TextPieces pieces = TextPieces::Lines);

    struct Piece {
        std::uint64_t hash = 0;
        std::uint32_t weight = 0;  ///< bytes, of all pieces with this hash
    };
    const std::vector<Piece>& Pieces() const { return pieces_; }  ///< ascending by hash
    std::int64_t Weight() const { return weight_; }

  private:
    void AddLines(std::string_view text);
    void AddWords(std::string_view text);
    void Add(std::uint64_t hash, std::size_t weight);
    void Join();

    std::vector<Piece> pieces_;
    std::int64_t weight_ = 0;
};

/// How much of the heavier one is in the other, 0 to 100.
std::int32_t PercentShared(const TextWeights& one, const TextWeights& two);

struct LikePair {
    std::size_t first = 0;
    std::size_t second = 0;
    std::int32_t percent = 0;
};
/// Pairs of at least `least` percent, the best first, each text in one pair at most. Only pieces
/// that few texts hold lead from one to another, so that the work grows with the texts and not with
/// their pairs.
std::vector<LikePair> PairLikeTexts(const std::vector<TextWeights>& first,
                                    const std::vector<TextWeights>& second, std::int32_t least);

}  // namespace zorvane
