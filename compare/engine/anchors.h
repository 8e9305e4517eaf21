// Places that surely belong together: runs of lines that occur once on each side.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/engine/bit_vector_lcs.h"

namespace zorvane {

/// Finds a chain of anchors: runs of `length` lines that are unique in the original and in the
/// modified part and equal, and of those the longest sequence that ascends on both sides. Linear
/// time apart from the chaining, which is n log n.
class AnchorFinder {
  public:
    /// Pairs of first lines, ascending on both sides; empty when there is none. Runs of several
    /// lines may overlap. Neither
    /// part is empty. Borrowed until the next call.
    std::span<const MatchedPlaces> Find(std::span<const std::uint32_t> original,
                                        std::span<const std::uint32_t> modified,
                                        std::int32_t length);

    /// What is found when it stops is not whole. Borrowed.
    void Watch(RunWatcher* watcher) { stop_ = StopCheck(watcher); }

  private:
    struct Slot {
        std::uint64_t hash = 0;
        std::int32_t original = kFree;
        std::int32_t modified = kAbsent;
    };
    static constexpr std::int32_t kFree = -3;
    static constexpr std::int32_t kRepeated = -2;
    static constexpr std::int32_t kAbsent = -1;

    // How often a line stands on each side, and where it last stood in the modified.
    struct Use {
        std::int32_t originals = 0;
        std::int32_t modifieds = 0;
        std::int32_t modified = 0;
    };

    Slot& SlotOf(std::uint64_t hash);
    void CollectOriginal(std::span<const std::uint32_t> original, std::int32_t length);
    void CollectModified(std::span<const std::uint32_t> modified, std::int32_t length);
    void CollectPairs(std::span<const std::uint32_t> original,
                      std::span<const std::uint32_t> modified, std::int32_t length);
    void CollectSingles(std::span<const std::uint32_t> original,
                        std::span<const std::uint32_t> modified);
    void Chain();

    std::vector<Slot> slots_;
    std::size_t mask_ = 0;
    std::vector<Use> uses_;
    std::vector<MatchedPlaces> pairs_;
    std::vector<std::int32_t> tails_;  // for each length of a chain, the pair that ends it lowest
    std::vector<std::int32_t> previous_;  // for each pair, the one before it in its chain
    std::vector<MatchedPlaces> chain_;
    StopCheck stop_{nullptr};
};

}  // namespace zorvane
