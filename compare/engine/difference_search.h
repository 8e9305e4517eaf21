// Which lines of two numbered sequences stay and which are changed.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/engine/anchors.h"
#include "compare/engine/bit_vector_lcs.h"
#include "compare/engine/middle_snake.h"

namespace zorvane {

/// For each place of a side, 1 when its line is changed (deleted or added) and 0 when it has a
/// partner on the other side. Partners stand in the same order on both sides.
struct ChangedPlaces {
    std::vector<std::uint8_t> original;
    std::vector<std::uint8_t> modified;
};

/// Compares two sequences of dense numbers. The same input gives the same result on every run.
///
/// Small parts are solved exactly. A large part is first tried exactly with few edits; then it is
/// cut at anchors (lines, then runs of lines, that occur once on each side); what has no anchors is
/// halved by linear-space search with a work limit. What is given up for near-linear time: where a
/// part is large, has many differences and hardly any line that occurs once (long repeated,
/// periodic or shuffled stretches of few distinct lines), the result is a correct list of
/// differences but may not be the shortest.
class DifferenceSearch {
  public:
    void Run(std::span<const std::uint32_t> original, std::span<const std::uint32_t> modified,
             std::uint32_t number_count);
    const ChangedPlaces& Changed() const { return changed_; }

    /// What is found when it stops is not whole. Borrowed.
    void Watch(RunWatcher* watcher) {
        stop_ = StopCheck(watcher);
        anchors_.Watch(watcher);
    }
    /// For who goes through what was found.
    bool KeepGoing(std::int64_t work) { return stop_.KeepGoing(work); }

  private:
    using Places = std::span<const std::int32_t>;
    // Part of both sequences that is still to be compared: the places in it, and their numbers.
    struct Part {
        std::vector<std::int32_t> original;
        std::vector<std::int32_t> modified;
        std::int32_t depth = 0;
    };
    struct View {
        Places original;
        Places modified;
        std::int32_t depth = 0;
        std::size_t Size() const { return original.size() + modified.size(); }
    };

    std::uint32_t OriginalAt(View view, std::size_t at) const {
        return original_[static_cast<std::size_t>(view.original[at])];
    }
    std::uint32_t ModifiedAt(View view, std::size_t at) const {
        return modified_[static_cast<std::size_t>(view.modified[at])];
    }
    void Match(std::int32_t original, std::int32_t modified);
    View Trim(View view);
    /// Drops what has no equal on the other side; true when anything went.
    bool Compact(View view, Part& part);
    void Gather(View view);
    void Solve(View view);
    void SolveLarge(View view);
    void SolveSmall(View view);
    bool SplitByFewEdits(View view);
    bool SplitByAnchors(View view);
    void SplitByBest(View whole);
    std::int32_t EditLimit() const;
    void SolveHalves(View view, SplitPlace place);

    std::span<const std::uint32_t> original_;
    std::span<const std::uint32_t> modified_;
    std::uint32_t number_count_ = 0;
    std::int64_t budget_ = 0;
    ChangedPlaces changed_;
    std::vector<std::uint32_t> gathered_original_;
    std::vector<std::uint32_t> gathered_modified_;
    std::vector<std::uint8_t>
        seen_;  // for each number, which sides of a part hold it; 0 between uses
    std::vector<std::int32_t> all_original_;
    std::vector<std::int32_t> all_modified_;
    BitVectorLcs bit_vector_;
    MiddleSnake middle_snake_;
    AnchorFinder anchors_;
    StopCheck stop_{nullptr};
};

}  // namespace zorvane
