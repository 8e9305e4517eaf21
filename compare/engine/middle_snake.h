// The point in which to halve a comparison: linear-space divide and conquer with a work limit.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zorvane {

/// Places in the two sequences; what lies before them is compared apart from what lies behind.
struct SplitPlace {
    std::int32_t original = 0;
    std::int32_t modified = 0;
};

enum class WhenTooExpensive {
    GiveUp,   ///< no result
    TakeBest  ///< the point that one of the two searches brought furthest
};

/// Source: E. Myers, "An O(ND) difference algorithm and its variations" (1986), the linear-space
/// form.
class MiddleSnake {
  public:
    /// A point on a shortest edit path, found by searching from both ends at once. Looks at most
    /// `limit` edits deep from each end. Both sequences are not empty and share no first and no
    /// last element.
    std::optional<SplitPlace> Find(std::span<const std::uint32_t> original,
                                   std::span<const std::uint32_t> modified, std::int32_t limit,
                                   WhenTooExpensive when_too_expensive);
    /// Elements looked at since this object was made; for a budget over many calls.
    std::int64_t Work() const { return work_; }

  private:
    struct Search;
    std::vector<std::int32_t> forward_;  // furthest place in the original for each diagonal
    std::vector<std::int32_t> backward_;
    std::int64_t work_ = 0;
};

}  // namespace zorvane
