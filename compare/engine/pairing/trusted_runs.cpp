#include "compare/engine/pairing/trusted_runs.h"

#include <algorithm>

#include "compare/engine/pairing/unique_lines.h"

namespace zorvane {
namespace {

constexpr std::int32_t kWindow = 12;      // lines looked ahead on each side for the next equal ones
constexpr std::int32_t kWideWindow = 64;  // once more, before the walk gives up
constexpr std::int64_t kEnoughUnits = 24;  // of equal text, so that a lone "}" does not count
constexpr std::int32_t kEnoughLines = 8;   // or as many equal lines, however short

class Walk {
  public:
    Walk(const CompareSide& first, const CompareSide& second)
        : first_(first), second_(second), end_first_(first.Count()), end_second_(second.Count()) {}

    std::vector<EqualRun> Run() {
        TakeBack();
        StopCheck stop(first_.Watcher());
        while (at_first_ < end_first_ && at_second_ < end_second_ && stop.KeepGoing(kWindow)) {
            TakeRun();
            if (!Resync(kWindow) && !Resync(kWideWindow))
                break;
        }
        return std::move(runs_);
    }

    EqualRun Back() const { return {end_first_, end_second_, first_.Count() - end_first_}; }
    std::int32_t AtFirst() const { return at_first_; }
    std::int32_t AtSecond() const { return at_second_; }

  private:
    bool Equal(std::int32_t first, std::int32_t second) const {
        return first_.Key(first) == second_.Key(second);
    }

    void TakeRun() {
        EqualRun run{at_first_, at_second_, 0};
        while (at_first_ < end_first_ && at_second_ < end_second_ && Equal(at_first_, at_second_)) {
            ++at_first_;
            ++at_second_;
            ++run.length;
        }
        if (run.length > 0)
            runs_.push_back(run);
    }

    // The common end, as far as the common front leaves it.
    void TakeBack() {
        std::int32_t front = 0;
        while (front < std::min(end_first_, end_second_) && Equal(front, front))
            ++front;
        while (end_first_ > front && end_second_ > front &&
               Equal(end_first_ - 1, end_second_ - 1)) {
            --end_first_;
            --end_second_;
        }
    }

    // Enough equal text from here on, or equal to the end of both.
    bool Holds(std::int32_t first, std::int32_t second) const {
        std::int64_t units = 0;
        std::int32_t lines = 0;
        while (first < end_first_ && second < end_second_ && Equal(first, second)) {
            units += static_cast<std::int64_t>(first_.Key(first).size());
            if (units >= kEnoughUnits || ++lines >= kEnoughLines)
                return true;
            ++first;
            ++second;
        }
        return false;
    }

    // Nearest first, and of places equally near the one that skips alike on both sides.
    bool Resync(std::int32_t window) {
        for (std::int32_t distance = 1; distance <= 2 * window; ++distance) {
            for (std::int32_t skew = distance % 2; skew <= distance; skew += 2) {
                const std::int32_t more = (distance + skew) / 2;
                const std::int32_t less = distance - more;
                if (more > window)
                    break;
                if (Skip(less, more) || (skew > 0 && Skip(more, less)))
                    return true;
            }
        }
        return false;
    }

    bool Skip(std::int32_t first, std::int32_t second) {
        if (at_first_ + first >= end_first_ || at_second_ + second >= end_second_ ||
            !Holds(at_first_ + first, at_second_ + second))
            return false;
        at_first_ += first;
        at_second_ += second;
        return true;
    }

    const CompareSide& first_;
    const CompareSide& second_;
    std::int32_t at_first_ = 0;
    std::int32_t at_second_ = 0;
    std::int32_t end_first_;
    std::int32_t end_second_;
    std::vector<EqualRun> runs_;
};

// Weights of the runs, and of the gaps in front of each and behind the last.
struct Weights {
    std::vector<std::int64_t> runs;
    std::vector<std::int64_t> first_gaps;
    std::vector<std::int64_t> second_gaps;
};

Weights Weigh(const std::vector<EqualRun>& runs, const CompareSide& first,
              const CompareSide& second) {
    Weights weights;
    std::int32_t at_first = 0;
    std::int32_t at_second = 0;
    for (const EqualRun& run : runs) {
        weights.first_gaps.push_back(first.Units(at_first, run.first));
        weights.second_gaps.push_back(second.Units(at_second, run.second));
        weights.runs.push_back(first.Units(run.first, run.first + run.length));
        at_first = run.first + run.length;
        at_second = run.second + run.length;
    }
    weights.first_gaps.push_back(first.Units(at_first, first.Count()));
    weights.second_gaps.push_back(second.Units(at_second, second.Count()));
    return weights;
}

// For each gap the most that could be paired out of it and the gaps on one side of it, less what
// would be given up for that.
std::vector<std::int64_t> ReachFromFront(const std::vector<std::int64_t>& gaps,
                                         const std::vector<std::int64_t>& runs) {
    std::vector<std::int64_t> reach(gaps.size());
    reach[0] = gaps[0];
    for (std::size_t k = 1; k < gaps.size(); ++k)
        reach[k] = gaps[k] + std::max<std::int64_t>(0, reach[k - 1] - runs[k - 1]);
    return reach;
}
std::vector<std::int64_t> ReachFromBack(const std::vector<std::int64_t>& gaps,
                                        const std::vector<std::int64_t>& runs) {
    std::vector<std::int64_t> reach(gaps.size());
    reach.back() = gaps.back();
    for (std::size_t k = gaps.size() - 1; k > 0; --k)
        reach[k - 1] = gaps[k - 1] + std::max<std::int64_t>(0, reach[k] - runs[k - 1]);
    return reach;
}

std::vector<EqualRun> KeepTrusted(const std::vector<EqualRun>& runs, const CompareSide& first,
                                  const CompareSide& second) {
    const Weights weights = Weigh(runs, first, second);
    const auto front_first = ReachFromFront(weights.first_gaps, weights.runs);
    const auto front_second = ReachFromFront(weights.second_gaps, weights.runs);
    const auto back_first = ReachFromBack(weights.first_gaps, weights.runs);
    const auto back_second = ReachFromBack(weights.second_gaps, weights.runs);
    std::vector<EqualRun> trusted;
    for (std::size_t k = 0; k < runs.size(); ++k) {
        if (weights.runs[k] >= std::min(front_first[k], back_second[k + 1]) +
                                   std::min(front_second[k], back_first[k + 1]))
            trusted.push_back(runs[k]);
    }
    return trusted;
}

}  // namespace

std::vector<EqualRun> FindTrustedRuns(const CompareSide& first, const CompareSide& second,
                                      RunWatcher* watcher) {
    Walk walk(first, second);
    std::vector<EqualRun> runs = walk.Run();
    const EqualRun back = walk.Back();
    if (walk.AtFirst() < back.first && walk.AtSecond() < back.second) {
        if (!KeepGoing(watcher))
            return {};
        const PlaceRange range{walk.AtFirst(), back.first, walk.AtSecond(), back.second};
        const std::vector<EqualRun> more = RunsAtUniqueLines(first, second, range);
        runs.insert(runs.end(), more.begin(), more.end());
    }
    if (back.length > 0)
        runs.push_back(back);
    return KeepTrusted(runs, first, second);
}

}  // namespace zorvane
