// What changed inside a pair of paragraphs, or of groups: words, and letters inside them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/engine/difference_search.h"
#include "compare/engine/pairing/affine_table.h"
#include "compare/engine/pairing/letter_finder.h"
#include "compare/engine/pairing/section_tokens.h"

namespace zorvane {

/// A difference inside a stretch of text: UTF-16 units of each side. Empty on one side at most.
struct FoundSection {
    UnitRange first;
    UnitRange second;
    std::uint32_t first_letter = 0;  ///< in the list of letters that belongs to the sections
    std::uint32_t letter_count = 0;
};

struct SectionSwitches {
    TokenSwitches tokens;
    bool by_character = false;
    bool larger = false;            ///< a chunk costs twice as much
    RunWatcher* watcher = nullptr;  ///< what was found when it stopped is not whole
};

/// Fewest marked words and fewest chunks weighed against each other: keeping a word brings what it
/// weighs, a chunk costs two to three of them (affine alignment). So an equal island of one or two
/// small words is marked with its surroundings, and a block that can slide begins where a sentence,
/// clause or word begins. Above 250,000 cells: a shortest list of differences, less its light
/// islands. Words are equal whatever separator follows them; another separator is a difference of
/// its own. Ranges never begin or end between the halves of a break, and differ in their texts.
class SectionFinder {
  public:
    explicit SectionFinder(const SectionSwitches& switches)
        : switches_(switches), stop_(switches.watcher) {
        search_.Watch(switches.watcher);
        letters_.Watch(switches.watcher);
    }

    /// Appends what differs, ascending. `weights` as `TokenizedText::Weigh` takes them.
    void Find(std::u16string_view first, std::u16string_view second, const StretchText* weights,
              std::vector<FoundSection>& sections, std::vector<FoundLetters>& letters);

  private:
    std::int32_t ChunkCost() const;
    bool SharesAny(std::int32_t front, std::int32_t first_end, std::int32_t second_end) const;
    std::vector<AlignedPair> Align(const StretchText* weights);
    std::vector<AlignedPair> AlignByTable(std::int32_t front, std::int32_t first_end,
                                          std::int32_t second_end);
    std::vector<AlignedPair> AlignBySearch(std::int32_t front, std::int32_t first_end,
                                           std::int32_t second_end);
    bool Same(std::int32_t i, std::int32_t j) const { return SameToken(first_, i, second_, j); }
    bool SeparatorsDiffer(std::int32_t i, std::int32_t j) const;
    bool OnlyNothing(std::int32_t first_begin, std::int32_t first_end, std::int32_t second_begin,
                     std::int32_t second_end) const;
    void Emit(UnitRange first, UnitRange second, std::vector<FoundSection>& sections,
              std::vector<FoundLetters>& letters);

    SectionSwitches switches_;
    StopCheck stop_;
    TokenizedText first_;
    TokenizedText second_;
    AffineTable table_;
    DifferenceSearch search_;
    LetterFinder letters_;
};

}  // namespace zorvane
