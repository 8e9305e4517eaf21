#include "folders/like_texts.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <xxhash.h>

#include "common/base/ascii.h"
#include "common/base/text_bytes.h"

namespace zorvane {
namespace {

// A piece that more texts hold (a licence, a brace) tells nothing of which belong together.
constexpr std::size_t kMostHolders = 16;

std::string_view WithoutBlanks(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t begin = line.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return {};
    return line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin);
}

// Of scripts without blanks between words each character is one.
bool IsWordAlone(char byte) {
    return static_cast<unsigned char>(byte) >= 0xE3;  // U+3000 and all behind it
}

bool IsInWord(char byte) {
    return static_cast<unsigned char>(byte) >= 0x80 || IsAsciiLetter(byte) || IsAsciiDigit(byte);
}

// The first word of `text`, which then begins behind it; empty: there was none.
std::string_view TakeWord(std::string_view& text) {
    const auto first = std::find_if(text.begin(), text.end(), IsInWord);
    const bool alone = first != text.end() && IsWordAlone(*first);
    const auto last = alone ? std::find_if_not(first + 1, text.end(), IsContinuation)
                            : std::find_if(first, text.end(), [](char byte) {
                                  return !IsInWord(byte) || IsWordAlone(byte);
                              });
    const std::string_view word(first, last);
    text.remove_prefix(static_cast<std::size_t>(last - text.begin()));
    return word;
}

using Holders = std::unordered_map<std::uint64_t, std::vector<std::size_t>>;

Holders HoldersOf(const std::vector<TextWeights>& texts) {
    Holders holders;
    for (std::size_t text = 0; text < texts.size(); ++text) {
        for (const TextWeights::Piece& piece : texts[text].Pieces()) {
            std::vector<std::size_t>& of_piece = holders[piece.hash];
            if (of_piece.size() <= kMostHolders)
                of_piece.push_back(text);
        }
    }
    return holders;
}

// Texts of the other side that share a piece which few have; each once.
std::vector<std::size_t> PartnersOf(const TextWeights& text, const Holders& holders) {
    std::vector<std::size_t> partners;
    for (const TextWeights::Piece& piece : text.Pieces()) {
        const auto found = holders.find(piece.hash);
        if (found != holders.end() && found->second.size() <= kMostHolders)
            partners.insert(partners.end(), found->second.begin(), found->second.end());
    }
    std::sort(partners.begin(), partners.end());
    partners.erase(std::unique(partners.begin(), partners.end()), partners.end());
    return partners;
}

}  // namespace

TextWeights::TextWeights(std::string_view text, TextPieces pieces) {
    if (pieces == TextPieces::Lines)
        AddLines(text);
    else
        AddWords(text);
    Join();
}

void TextWeights::Add(std::uint64_t hash, std::size_t weight) {
    pieces_.push_back({hash, static_cast<std::uint32_t>(weight)});
    weight_ += static_cast<std::int64_t>(weight);
}

void TextWeights::AddLines(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = WithoutBlanks(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (!line.empty())
            Add(XXH3_64bits(line.data(), line.size()), line.size());
    }
}

void TextWeights::AddWords(std::string_view text) {
    std::string_view word = TakeWord(text);
    while (!word.empty()) {
        const std::string_view next = TakeWord(text);
        const std::uint64_t seed = XXH3_64bits(next.data(), next.size());
        Add(XXH3_64bits_withSeed(word.data(), word.size(), seed), word.size());
        word = next;
    }
}

void TextWeights::Join() {
    std::sort(pieces_.begin(), pieces_.end(),
              [](const Piece& one, const Piece& two) { return one.hash < two.hash; });
    std::size_t kept = 0;
    for (std::size_t at = 1; at < pieces_.size(); ++at) {
        if (pieces_[at].hash == pieces_[kept].hash)
            pieces_[kept].weight += pieces_[at].weight;
        else
            pieces_[++kept] = pieces_[at];
    }
    pieces_.resize(pieces_.empty() ? 0 : kept + 1);
}

std::int32_t PercentShared(const TextWeights& one, const TextWeights& two) {
    std::int64_t shared = 0;
    auto other = two.Pieces().begin();
    for (const TextWeights::Piece& piece : one.Pieces()) {
        while (other != two.Pieces().end() && other->hash < piece.hash)
            ++other;
        if (other != two.Pieces().end() && other->hash == piece.hash)
            shared += std::min(piece.weight, other->weight);
    }
    const std::int64_t most = std::max(one.Weight(), two.Weight());
    return most == 0 ? 0 : static_cast<std::int32_t>(100 * shared / most);
}

std::vector<LikePair> PairLikeTexts(const std::vector<TextWeights>& first,
                                    const std::vector<TextWeights>& second, std::int32_t least) {
    const Holders of_first = HoldersOf(first);
    std::vector<LikePair> pairs;
    for (std::size_t text = 0; text < second.size(); ++text) {
        for (const std::size_t partner : PartnersOf(second[text], of_first)) {
            const std::int32_t percent = PercentShared(first[partner], second[text]);
            if (percent >= least)
                pairs.push_back({partner, text, percent});
        }
    }
    std::sort(pairs.begin(), pairs.end(), [](const LikePair& one, const LikePair& two) {
        return std::tuple(-one.percent, one.first, one.second) <
               std::tuple(-two.percent, two.first, two.second);
    });
    std::vector<bool> taken_first(first.size());
    std::vector<bool> taken_second(second.size());
    std::vector<LikePair> best;
    for (const LikePair& pair : pairs) {
        if (taken_first[pair.first] || taken_second[pair.second])
            continue;
        taken_first[pair.first] = taken_second[pair.second] = true;
        best.push_back(pair);
    }
    return best;
}

}  // namespace zorvane
