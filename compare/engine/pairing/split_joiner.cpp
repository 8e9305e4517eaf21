#include "compare/engine/pairing/split_joiner.h"

#include <algorithm>
#include <optional>

namespace zorvane {
namespace {

constexpr std::int64_t kLeastGain = 1400;  // thousandths of weight
// Of what is taken in. On 277 real revisions 550 loses a third of the joined records; 30 % more or
// less change 0.1 % of the marked words.
constexpr std::int64_t kLeastGainPart = 200;
constexpr std::int64_t kLeastWeight = 2000;  // of what is taken in
constexpr std::int64_t kWrappedPart = 300;   // of what single lines lose
constexpr std::int32_t kMostWrappedLines = 60;
constexpr std::int64_t kLongestWrappedLine = 120;

class SplitJoiner {
  public:
    SplitJoiner(const StretchText& text, PairScorer& scorer, std::vector<PairedBlock>& blocks)
        : text_(text), scorer_(scorer), blocks_(blocks) {}

    void Run() {
        for (std::size_t at = 0; at < blocks_.size(); ++at) {
            if (blocks_[at].equal)
                continue;
            kept_ = -1;
            while (Grow(at)) {
            }
        }
    }

  private:
    std::int64_t KeptOf(const PlaceRange& range) {
        return scorer_.Kept(text_.First(range.first_begin, range.first_end),
                            text_.Second(range.second_begin, range.second_end));
    }

    // The free places around a block.
    PlaceRange Room(std::size_t at) const {
        PlaceRange room{0, text_.FirstCount(), 0, text_.SecondCount()};
        if (at > 0) {
            room.first_begin = blocks_[at - 1].range.first_end;
            room.second_begin = blocks_[at - 1].range.second_end;
        }
        if (at + 1 < blocks_.size()) {
            room.first_end = blocks_[at + 1].range.first_begin;
            room.second_end = blocks_[at + 1].range.second_begin;
        }
        return room;
    }

    template <class Weight>
    static std::optional<std::int32_t> NextBehind(std::int32_t from, std::int32_t end,
                                                  Weight weight) {
        for (std::int32_t at = from; at < end; ++at) {
            if (weight(at) > 0)
                return at;
        }
        return std::nullopt;
    }
    template <class Weight>
    static std::optional<std::int32_t> NextInFront(std::int32_t from, std::int32_t begin,
                                                   Weight weight) {
        for (std::int32_t at = from - 1; at >= begin; --at) {
            if (weight(at) > 0)
                return at;
        }
        return std::nullopt;
    }

    struct Step {
        PlaceRange range;
        std::int64_t weight = 0;  // of what it takes in
    };

    std::vector<Step> Steps(std::size_t at) const {
        const PlaceRange& own = blocks_[at].range;
        const PlaceRange room = Room(at);
        const auto first = [this](std::int32_t i) { return text_.First(i, i + 1).weight; };
        const auto second = [this](std::int32_t i) { return text_.Second(i, i + 1).weight; };
        std::vector<Step> steps;
        if (const auto found = NextBehind(own.first_end, room.first_end, first)) {
            steps.push_back({own, first(*found)});
            steps.back().range.first_end = *found + 1;
        }
        if (const auto found = NextBehind(own.second_end, room.second_end, second)) {
            steps.push_back({own, second(*found)});
            steps.back().range.second_end = *found + 1;
        }
        if (const auto found = NextInFront(own.first_begin, room.first_begin, first)) {
            steps.push_back({own, first(*found)});
            steps.back().range.first_begin = *found;
        }
        if (const auto found = NextInFront(own.second_begin, room.second_begin, second)) {
            steps.push_back({own, second(*found)});
            steps.back().range.second_begin = *found;
        }
        return steps;
    }

    bool Grow(std::size_t at) {
        PlaceRange best_range;
        std::int64_t best_gain = 0;
        for (const Step& step : Steps(at)) {
            if (step.weight < kLeastWeight)
                continue;
            if (kept_ < 0)
                kept_ = KeptOf(blocks_[at].range);
            const std::int64_t gain = KeptOf(step.range) - kept_;
            if (gain < kLeastGain || gain * 1000 < step.weight * kLeastGainPart)
                continue;
            if (gain > best_gain) {
                best_gain = gain;
                best_range = step.range;
            }
        }
        if (best_gain == 0)
            return false;
        blocks_[at].range = best_range;
        kept_ += best_gain;
        return true;
    }

    const StretchText& text_;
    PairScorer& scorer_;
    std::vector<PairedBlock>& blocks_;
    std::int64_t kept_ = -1;  // by the block at hand; -1: not yet known
};

// A run of blocks that are not equal and what stands between them.
class LineJoiner {
  public:
    LineJoiner(const GapContext& context, std::vector<PairedBlock>& blocks)
        : context_(context), text_(context.text), blocks_(blocks) {}

    std::vector<PairedBlock> Run() {
        std::size_t at = 0;
        PlaceRange region{0, 0, 0, 0};
        while (true) {
            const std::size_t begin = at;
            while (at < blocks_.size() && !blocks_[at].equal)
                ++at;
            const bool last = at == blocks_.size();
            region.first_end = last ? text_.FirstCount() : blocks_[at].range.first_begin;
            region.second_end = last ? text_.SecondCount() : blocks_[at].range.second_begin;
            Take(region, begin, at);
            if (last)
                return std::move(joined_);
            joined_.push_back(blocks_[at]);
            region.first_begin = blocks_[at].range.first_end;
            region.second_begin = blocks_[at].range.second_end;
            ++at;
        }
    }

  private:
    void Take(const PlaceRange& region, std::size_t begin, std::size_t end) {
        if (begin < end && IsWrapped(region) && SavesEnough(region, begin, end)) {
            joined_.push_back({region, false});
            return;
        }
        joined_.insert(joined_.end(), blocks_.begin() + static_cast<std::ptrdiff_t>(begin),
                       blocks_.begin() + static_cast<std::ptrdiff_t>(end));
    }

    bool IsWrapped(const PlaceRange& region) const {
        const std::int32_t most = std::max(region.FirstCount(), region.SecondCount());
        if (most < 2 || most > kMostWrappedLines || region.FirstCount() == 0 ||
            region.SecondCount() == 0)
            return false;
        std::u16string buffer;
        const auto is_line = [&](const CompareSide& side, std::int32_t place, std::int64_t weight) {
            return weight > 0 && static_cast<std::int64_t>(side.KeyText(place, buffer).size()) <=
                                     kLongestWrappedLine;
        };
        for (std::int32_t i = region.first_begin; i < region.first_end; ++i) {
            if (!is_line(context_.first, text_.Range().first_begin + i,
                         text_.First(i, i + 1).weight))
                return false;
        }
        for (std::int32_t i = region.second_begin; i < region.second_end; ++i) {
            if (!is_line(context_.second, text_.Range().second_begin + i,
                         text_.Second(i, i + 1).weight))
                return false;
        }
        return true;
    }

    std::int64_t KeptOf(const PlaceRange& range) {
        return context_.scorer.Kept(text_.First(range.first_begin, range.first_end),
                                    text_.Second(range.second_begin, range.second_end));
    }

    bool SavesEnough(const PlaceRange& region, std::size_t begin, std::size_t end) {
        std::int64_t kept = 0;
        for (std::size_t at = begin; at < end; ++at)
            kept += KeptOf(blocks_[at].range);
        const std::int64_t all = text_.First(region.first_begin, region.first_end).weight +
                                 text_.Second(region.second_begin, region.second_end).weight;
        const std::int64_t lost = all - 2 * kept;
        const std::int64_t saved = 2 * (KeptOf(region) - kept);
        return saved >= 2 * kLeastGain && saved * 1000 >= lost * kWrappedPart;
    }

    const GapContext& context_;
    const StretchText& text_;
    std::vector<PairedBlock>& blocks_;
    std::vector<PairedBlock> joined_;
};

}  // namespace

void JoinSplits(const StretchText& text, PairScorer& scorer, std::vector<PairedBlock>& blocks) {
    SplitJoiner(text, scorer, blocks).Run();
}

void JoinWrappedLines(const GapContext& context, std::vector<PairedBlock>& blocks) {
    blocks = LineJoiner(context, blocks).Run();
}

}  // namespace zorvane
