// One line of a file as a programmer would write it as a literal.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

/// `abc` becomes `"abc"`; a control character stands outside of the quotes, by its name or number;
/// a double quote inside is doubled. UTF-8 in and out.
std::string StringToCode(std::string_view sText);

/// A stretch of a literal, in bytes.
struct CodePlace {
    std::int32_t at = -1;  ///< -1: nobody knows
    std::int32_t length = 0;
};
/// Where `item`, which begins at the byte `begin` of `line`, stands in the literal of that line.
CodePlace PlaceInCode(std::string_view line, std::size_t begin, std::string_view item);

}  // namespace zorvane
