// How many differences of each kind two texts have, counted or left out. A kind that is left out is
// in no record, so it is found where both texts were taken for equal.
#pragma once

#include <cstdint>
#include <string_view>

#include "compare/engine/compare_options.h"
#include "compare/engine/comparison.h"

namespace zorvane {

/// Words that differ in case, runs of blanks that differ, paragraphs with another number in front,
/// paragraphs with other formats, stretches that moved.
struct KindCounts {
    std::int32_t letter_case = 0;
    std::int32_t blanks = 0;
    std::int32_t numbering = 0;
    std::int32_t formatting = 0;
    std::int32_t moves = 0;
    friend bool operator==(const KindCounts&, const KindCounts&) = default;
};

/// In the time that both texts take to be read once; what is equal to the letter costs a glance.
KindCounts CountKinds(const Comparison& comparison);

/// The length of the number in front of a paragraph with the blanks behind it: "1.", "2.1 ",
/// "(a) ", "iv) ", "§ 3 "; 0: none.
std::size_t NumberLength(std::u16string_view paragraph);
/// The same numbers take no part in a compare.
void LeaveNumberingOut(CompareOptions& options);

}  // namespace zorvane
