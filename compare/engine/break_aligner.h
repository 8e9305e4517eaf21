// Section records whose ends never stand inside a paragraph break.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "compare/engine/difference_record.h"

namespace zorvane {

/// One side of a section run: its text, and the places behind its sections (`FindSectionEnds`).
struct SectionSide {
    std::u16string_view text;
    const std::vector<std::int32_t>& ends;
};

/// The two halves of a break are sections of their own and all look alike to the engine (an empty
/// line), so a record may begin or end between them. What people read knows only whole breaks: such
/// a record slides on by one section where that is the same difference, else it takes the half it
/// cuts off with it.
std::vector<DifferenceRecord> AlignToBreaks(const std::vector<DifferenceRecord>& records,
                                            SectionSide original, SectionSide modified);

}  // namespace zorvane
