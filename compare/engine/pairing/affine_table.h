// Alignment in which each changed stretch costs something, whatever its length.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace zorvane {

/// Two places that belong together, 0-based.
struct AlignedPair {
    std::int32_t first = 0;
    std::int32_t second = 0;
    friend bool operator==(const AlignedPair&, const AlignedPair&) = default;
};

/// The alignment with the highest total: what each pair brings, less the cost of each stretch
/// without pairs (Gotoh's table with three states: paired, deleting, adding; in a stretch the
/// deletions come first). Time and memory are the product of both lengths.
class AffineTable {
  public:
    /// `gain(i, j)`: what the pair brings, negative when it may not be. `open(i, j)` and
    /// `close(i, j)`: what a stretch costs that begins, or ends, in front of these places.
    /// The pairs ascend.
    template <class Gain, class Open, class Close>
    std::vector<AlignedPair> Run(std::int32_t first_count, std::int32_t second_count, Gain gain,
                                 Open open, Close close) {
        const auto width = static_cast<std::size_t>(second_count) + 1;
        steps_.assign(width * (static_cast<std::size_t>(first_count) + 1), 0);
        above_.assign(width, Scores{});
        row_.assign(width, Scores{});
        for (std::int32_t i = 0; i <= first_count; ++i) {
            std::uint8_t* steps = steps_.data() + static_cast<std::size_t>(i) * width;
            for (std::int32_t j = 0; j <= second_count; ++j)
                row_[static_cast<std::size_t>(j)] = Cell(i, j, gain, open, close, steps[j]);
            std::swap(above_, row_);
        }
        const Scores last = above_[width - 1];  // the rows were swapped
        return Trace(first_count, second_count, last, close(first_count, second_count));
    }

  private:
    static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::min() / 4;
    static constexpr unsigned kPaired = 0;
    static constexpr unsigned kDeleting = 1;
    static constexpr unsigned kAdding = 2;
    struct Scores {
        std::int64_t paired = kNever;
        std::int64_t deleting = kNever;
        std::int64_t adding = kNever;
    };
    // Which state a cell's three scores came from: two bits each.
    static constexpr int kDeletingShift = 2;
    static constexpr int kAddingShift = 4;

    template <class Gain, class Open, class Close>
    Scores Cell(std::int32_t i, std::int32_t j, Gain& gain, Open& open, Close& close,
                std::uint8_t& steps) const {
        Scores scores;
        unsigned from = 0;
        if (i == 0 && j == 0)
            scores.paired = 0;
        if (i > 0 && j > 0)
            from |= Pair(i, j, gain, close, scores);
        if (i > 0) {
            const Scores& before = above_[static_cast<std::size_t>(j)];
            const std::int64_t opened = before.paired - open(i - 1, j);
            scores.deleting = std::max(opened, before.deleting);
            from |= (before.deleting >= opened ? kDeleting : kPaired) << kDeletingShift;
        }
        if (j > 0)
            from |= Add(j, open(i, j - 1), scores) << kAddingShift;
        steps = static_cast<std::uint8_t>(from);
        return scores;
    }

    /// Sets what the cell brings as a pair; returns the state in front.
    template <class Gain, class Close>
    unsigned Pair(std::int32_t i, std::int32_t j, Gain& gain, Close& close, Scores& scores) const {
        const std::int64_t brings = gain(i - 1, j - 1);
        if (brings < 0)
            return kPaired;
        const Scores& before = above_[static_cast<std::size_t>(j - 1)];
        const std::int64_t ended = std::max(before.deleting, before.adding) - close(i - 1, j - 1);
        const unsigned state = before.adding > before.deleting ? kAdding : kDeleting;
        scores.paired = std::max(before.paired, ended) + brings;
        return ended > before.paired ? state : kPaired;
    }

    /// Sets what the cell brings as an addition; returns the state in front.
    unsigned Add(std::int32_t j, std::int64_t opening, Scores& scores) const {
        const Scores& before = row_[static_cast<std::size_t>(j - 1)];
        scores.adding = std::max({before.paired - opening, before.deleting, before.adding});
        if (scores.adding == before.adding)
            return kAdding;
        return scores.adding == before.deleting ? kDeleting : kPaired;
    }

    std::vector<AlignedPair> Trace(std::int32_t i, std::int32_t j, const Scores& last,
                                   std::int64_t closing) const {
        const std::size_t width = static_cast<std::size_t>(j) + 1;
        unsigned state = kPaired;
        if (std::max(last.deleting, last.adding) - closing > last.paired)
            state = last.adding > last.deleting ? kAdding : kDeleting;
        std::vector<AlignedPair> pairs;
        while (i > 0 || j > 0) {
            const unsigned steps =
                steps_[static_cast<std::size_t>(i) * width + static_cast<std::size_t>(j)];
            if (state == kPaired) {
                state = steps & 3U;
                pairs.push_back({--i, --j});
            } else if (state == kDeleting) {
                state = (steps >> kDeletingShift) & 3U;
                --i;
            } else {
                state = (steps >> kAddingShift) & 3U;
                --j;
            }
        }
        std::reverse(pairs.begin(), pairs.end());
        return pairs;
    }

    std::vector<std::uint8_t> steps_;
    std::vector<Scores> above_;
    std::vector<Scores> row_;
};

}  // namespace zorvane
