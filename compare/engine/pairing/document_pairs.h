// Two whole documents paired: the blocks that belong together, what changed in each, the moves.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "compare/engine/compare_options.h"
#include "compare/engine/in_sight.h"
#include "compare/engine/pairing/compare_side.h"
#include "compare/engine/pairing/section_finder.h"
#include "compare/engine/pairing/stretch_pairs.h"

namespace zorvane {

/// A block, or a move, and its sections: positions in the texts of its lines joined by CR LF.
struct FoundBlock {
    PlaceRange range;
    bool equal = false;
    std::uint32_t first_section = 0;
    std::uint32_t section_count = 0;
};

struct DocumentPairs {
    std::vector<FoundBlock> blocks;  ///< ascending; what stands between has no partner
    std::vector<FoundBlock> moves;   ///< ascending by the first side
    std::vector<FoundSection> sections;
    std::vector<FoundLetters> letters;
    bool stopped = false;
};

/// Hears of all blocks before any of them is looked into, and each time all in sight are; moves are
/// not there yet.
struct BlocksFound {
    std::function<void(const DocumentPairs&)> tell;
    std::function<ParagraphsInSight()> in_sight;  ///< may be empty: nothing is
    bool by_second = false;                       ///< whose lines `in_sight` tells of
};

/// `sections`: how to look into a block; the filter of paragraphs is in the sides already. What is
/// found is the same with `found` and without, but for the order of the sections.
DocumentPairs PairDocuments(const CompareSide& first, const CompareSide& second,
                            const CompareOptions& options, const SectionSwitches& sections,
                            const BlocksFound& found = {});

/// The text of some places: all lines from the first to the last of them.
/// Borrowed where the text lies as it is; `buffer` holds it where it had to be decoded.
std::u16string_view TextOfPlaces(const CompareSide& side, std::int32_t begin, std::int32_t end,
                                 std::u16string& buffer);

}  // namespace zorvane
