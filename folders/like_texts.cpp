#include "folders/like_texts.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <xxhash.h>

namespace zorvane {
namespace {

// A line that more texts hold (a licence, a brace) tells nothing of which belong together.
constexpr std::size_t kMostHolders = 16;

std::string_view WithoutBlanks(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t begin = line.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return {};
    return line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin);
}

using Holders = std::unordered_map<std::uint64_t, std::vector<std::size_t>>;

Holders HoldersOf(const std::vector<LineWeights>& texts) {
    Holders holders;
    for (std::size_t text = 0; text < texts.size(); ++text) {
        for (const LineWeights::Line& line : texts[text].Lines()) {
            std::vector<std::size_t>& of_line = holders[line.hash];
            if (of_line.size() <= kMostHolders)
                of_line.push_back(text);
        }
    }
    return holders;
}

}  // namespace

LineWeights::LineWeights(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = WithoutBlanks(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (line.empty())
            continue;
        lines_.push_back(
            {XXH3_64bits(line.data(), line.size()), static_cast<std::uint32_t>(line.size())});
        weight_ += static_cast<std::int64_t>(line.size());
    }
    std::sort(lines_.begin(), lines_.end(),
              [](const Line& one, const Line& two) { return one.hash < two.hash; });
    std::size_t kept = 0;
    for (std::size_t at = 1; at < lines_.size(); ++at) {
        if (lines_[at].hash == lines_[kept].hash)
            lines_[kept].weight += lines_[at].weight;
        else
            lines_[++kept] = lines_[at];
    }
    lines_.resize(lines_.empty() ? 0 : kept + 1);
}

std::int32_t PercentShared(const LineWeights& one, const LineWeights& two) {
    std::int64_t shared = 0;
    auto other = two.Lines().begin();
    for (const LineWeights::Line& line : one.Lines()) {
        while (other != two.Lines().end() && other->hash < line.hash)
            ++other;
        if (other != two.Lines().end() && other->hash == line.hash)
            shared += std::min(line.weight, other->weight);
    }
    const std::int64_t most = std::max(one.Weight(), two.Weight());
    return most == 0 ? 0 : static_cast<std::int32_t>(100 * shared / most);
}

std::vector<LikePair> PairLikeTexts(const std::vector<LineWeights>& first,
                                    const std::vector<LineWeights>& second, std::int32_t least) {
    const Holders of_first = HoldersOf(first);
    std::vector<LikePair> pairs;
    for (std::size_t text = 0; text < second.size(); ++text) {
        std::vector<std::size_t> partners;
        for (const LineWeights::Line& line : second[text].Lines()) {
            const auto found = of_first.find(line.hash);
            if (found != of_first.end() && found->second.size() <= kMostHolders)
                partners.insert(partners.end(), found->second.begin(), found->second.end());
        }
        std::sort(partners.begin(), partners.end());
        partners.erase(std::unique(partners.begin(), partners.end()), partners.end());
        for (const std::size_t partner : partners) {
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
