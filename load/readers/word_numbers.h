// Numbers of lists in the forms that word processors count in.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

/// `number` in roman numerals, lower case; beyond 1 to 3999 in digits.
std::string RomanNumber(std::int32_t number);
/// 1 is a, 26 is z, 27 is aa, 28 is bb, as word processors count; `spread` counts aa, ab instead.
std::string LetterNumber(std::int32_t number, bool spread = false);
/// In upper case, ASCII only.
std::string Capitals(std::string text);
/// By the names of WordprocessingML: decimal, lowerRoman, upperLetter, decimalZero, ordinal, ...;
/// an unknown one counts in digits; "none" and "bullet" give nothing.
std::string FormatListNumber(std::int32_t number, std::string_view form);
/// The visible character for one of a symbol font's private-use area (U+F020 to U+F0FF) or its
/// 8-bit code; the code point itself where nothing is known. UTF-8.
std::string SymbolCharacter(std::uint32_t code, std::string_view font);

}  // namespace zorvane
