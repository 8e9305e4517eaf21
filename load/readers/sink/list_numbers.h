// Numbers as lists show them: 1, a, A, i, I.
#pragma once

#include <cstdint>
#include <string>

namespace zorvane {

enum class NumberStyle : std::uint8_t {
    None,
    Decimal,
    LeadingZero,
    LowerLetter,
    UpperLetter,
    LowerRoman,
    UpperRoman
};

/// What letters (below 1) or Roman numerals (beyond 3999) cannot tell is told in decimal.
/// `repeat_letters`: aa, bb, cc behind z, else aa, ab, ac.
std::string NumberText(std::int32_t number, NumberStyle style, bool repeat_letters = false);

/// Disc, circle and square, by the level of nesting from 0.
std::string_view BulletText(std::size_t level);

}  // namespace zorvane
