#include "compare/engine/middle_snake.h"

#include <algorithm>
#include <limits>

namespace zorvane {

// Diagonal d holds the points with original - modified = d. The forward search starts on diagonal
// 0, the backward search on diagonal `delta`; each is kept in an array around its own start.
struct MiddleSnake::Search {
    std::span<const std::uint32_t> original;
    std::span<const std::uint32_t> modified;
    std::int32_t* forward;   // indexed by d, from -(limit + 1) to limit + 1
    std::int32_t* backward;  // indexed by d - delta
    std::int32_t n;
    std::int32_t m;
    std::int32_t delta;
    std::int64_t& work;

    // Marks of a diagonal that left the grid: any way over another diagonal is better.
    static constexpr std::int32_t kNone = std::numeric_limits<std::int32_t>::min() / 2;
    static constexpr std::int32_t kFar = std::numeric_limits<std::int32_t>::max() / 2;

    bool InGrid(std::int32_t x, std::int32_t d) const {
        return x >= 0 && x <= n && x - d >= 0 && x - d <= m;
    }
    bool Equal(std::int32_t x, std::int32_t d) const {
        return original[static_cast<std::size_t>(x)] == modified[static_cast<std::size_t>(x - d)];
    }

    // One more edit from the front. A result when the searches meet.
    std::optional<SplitPlace> StepForward(std::int32_t edits) {
        const std::int32_t reached = edits - 1;  // edits made from the back so far
        for (std::int32_t d = -edits; d <= edits; d += 2) {
            const bool insertion = d == -edits || (d != edits && forward[d - 1] < forward[d + 1]);
            const std::int32_t begin = insertion ? forward[d + 1] : forward[d - 1] + 1;
            if (!InGrid(begin, d)) {
                forward[d] = kNone;
                continue;
            }
            std::int32_t x = begin;
            while (x < n && x - d < m && Equal(x, d))
                ++x;
            work += x - begin + 1;
            forward[d] = x;
            const std::int32_t other = d - delta;
            if ((delta & 1) != 0 && other >= -reached && other <= reached && x >= backward[other])
                return SplitPlace{x, x - d};
        }
        return std::nullopt;
    }

    std::optional<SplitPlace> StepBackward(std::int32_t edits) {
        for (std::int32_t k = -edits; k <= edits; k += 2) {
            const std::int32_t d = k + delta;
            const bool insertion = k == edits || (k != -edits && backward[k - 1] < backward[k + 1]);
            const std::int32_t begin = insertion ? backward[k - 1] : backward[k + 1] - 1;
            if (!InGrid(begin, d)) {
                backward[k] = kFar;
                continue;
            }
            std::int32_t x = begin;
            while (x > 0 && x - d > 0 && Equal(x - 1, d))
                --x;
            work += begin - x + 1;
            backward[k] = x;
            if ((delta & 1) == 0 && d >= -edits && d <= edits && forward[d] >= x)
                return SplitPlace{x, x - d};
        }
        return std::nullopt;
    }

    // The point that a search brought furthest from its own end.
    SplitPlace Best(std::int32_t edits) const {
        SplitPlace best{0, 0};
        std::int32_t best_sum = -1;
        for (std::int32_t d = -edits; d <= edits; d += 2) {
            const std::int32_t x = forward[d];
            if (x != kNone && 2 * x - d > best_sum) {
                best_sum = 2 * x - d;
                best = {x, x - d};
            }
        }
        for (std::int32_t k = -edits; k <= edits; k += 2) {
            const std::int32_t d = k + delta;
            const std::int32_t x = backward[k];
            if (x != kFar && n + m - (2 * x - d) > best_sum) {
                best_sum = n + m - (2 * x - d);
                best = {x, x - d};
            }
        }
        return best;
    }
};

std::optional<SplitPlace> MiddleSnake::Find(std::span<const std::uint32_t> original,
                                            std::span<const std::uint32_t> modified,
                                            std::int32_t limit,
                                            WhenTooExpensive when_too_expensive) {
    const auto n = static_cast<std::int32_t>(original.size());
    const auto m = static_cast<std::int32_t>(modified.size());
    const std::int32_t most = std::min(limit, (n + m + 1) / 2 + 1);
    const auto size = static_cast<std::size_t>(most) * 2 + 5;
    if (forward_.size() < size) {
        forward_.resize(size);
        backward_.resize(size);
    }
    std::int32_t* const forward = forward_.data() + most + 2;
    std::int32_t* const backward = backward_.data() + most + 2;
    Search search{original, modified, forward, backward, n, m, n - m, work_};
    forward[1] = 0;
    backward[-1] = n;
    for (std::int32_t edits = 0; edits <= most; ++edits) {
        if (const auto met = search.StepForward(edits))
            return met;
        if (const auto met = search.StepBackward(edits))
            return met;
    }
    if (when_too_expensive == WhenTooExpensive::GiveUp)
        return std::nullopt;
    return search.Best(most);
}

}  // namespace zorvane
