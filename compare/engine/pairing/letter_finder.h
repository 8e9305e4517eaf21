// Which letters of a changed section changed.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "compare/engine/difference_search.h"
#include "compare/engine/pairing/affine_table.h"

namespace zorvane {

/// UTF-16 units.
struct UnitRange {
    std::int32_t begin = 0;
    std::int32_t end = 0;
    std::int32_t Length() const { return end - begin; }
    std::u16string_view In(std::u16string_view text) const {
        return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(Length()));
    }
    friend bool operator==(const UnitRange&, const UnitRange&) = default;
};

struct FoundLetters {
    UnitRange first;
    UnitRange second;
    friend bool operator==(const FoundLetters&, const FoundLetters&) = default;
};

struct LetterSwitches {
    bool ignore_case = false;
    bool ignore_whitespace = false;
};

/// Aligns letter by letter; all letters weigh the same, a chunk costs three of them. What a reader
/// takes for one letter is never cut: surrogate pairs, a letter with its combining marks, a break.
class LetterFinder {
  public:
    /// Appends what differs, ascending, in units of the two texts.
    void Find(std::u16string_view first, std::u16string_view second, const LetterSwitches& switches,
              std::vector<FoundLetters>& found);

    /// What is found when it stops is not whole. Borrowed.
    void Watch(RunWatcher* watcher) {
        stop_ = StopCheck(watcher);
        search_.Watch(watcher);
    }

  private:
    struct Letters {
        std::vector<std::uint32_t> ids;
        std::vector<std::int32_t> begins;  // one more than there are letters
    };
    void Cut(std::u16string_view text, bool ignore_case, Letters& letters);
    std::vector<AlignedPair> Align();
    /// The `lefts` and `rights` letters behind the first `front`, whose pairs count from there.
    std::vector<AlignedPair> AlignByTable(std::size_t front, std::int32_t lefts,
                                          std::int32_t rights);
    std::vector<AlignedPair> AlignBySearch(std::size_t front, std::int32_t lefts,
                                           std::int32_t rights);
    bool Same(std::size_t i, std::size_t j) const;

    std::u16string_view first_text_;
    std::u16string_view second_text_;
    Letters first_;
    Letters second_;
    AffineTable table_;
    DifferenceSearch search_;
    StopCheck stop_{nullptr};
};

}  // namespace zorvane
