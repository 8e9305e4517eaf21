// Heaviest increasing chains, and prefix maxima under insertions, the one structure they need.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "compare/engine/pairing/compare_side.h"
#include "compare/engine/pairing/equal_run.h"

namespace zorvane {

/// Fenwick's tree, with maxima in the place of sums.
class PrefixMaxima {
  public:
    struct Best {
        std::int64_t score = 0;
        std::int32_t index = -1;  ///< of who reached it; -1: nobody
    };

    explicit PrefixMaxima(std::int32_t places) : tree_(static_cast<std::size_t>(places) + 1) {}

    /// The best of the places in front of `place`; of equals the one that came first.
    Best Below(std::int32_t place) const {
        Best best;
        for (auto at = static_cast<std::size_t>(place); at > 0; at &= at - 1) {
            if (tree_[at].score > best.score)
                best = tree_[at];
        }
        return best;
    }
    void Raise(std::int32_t place, const Best& best) {
        for (std::size_t at = static_cast<std::size_t>(place) + 1; at < tree_.size();
             at += at & (~at + 1)) {
            if (best.score > tree_[at].score)
                tree_[at] = best;
        }
    }

  private:
    std::vector<Best> tree_;
};

/// Of runs by ascending first place (of one place: by falling second) the heaviest chain that
/// ascends on both sides.
std::vector<EqualRun> HeaviestChain(const std::vector<EqualRun>& runs, const CompareSide& first,
                                    const PlaceRange& range);

}  // namespace zorvane
