// Letters and digits of ASCII, whatever the locale.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

template <class Character>
constexpr bool IsAsciiUpper(Character character) {
    return character >= Character{'A'} && character <= Character{'Z'};
}
template <class Character>
constexpr bool IsAsciiLower(Character character) {
    return character >= Character{'a'} && character <= Character{'z'};
}
template <class Character>
constexpr bool IsAsciiLetter(Character character) {
    return IsAsciiUpper(character) || IsAsciiLower(character);
}
template <class Character>
constexpr bool IsAsciiDigit(Character character) {
    return character >= Character{'0'} && character <= Character{'9'};
}
/// All other bytes stay.
constexpr char AsciiLower(char character) {
    return IsAsciiUpper(character) ? static_cast<char>(character - 'A' + 'a') : character;
}

inline std::string AsciiUpper(std::string_view text) {
    std::string upper(text);
    for (char& character : upper) {
        if (IsAsciiLower(character))
            character = static_cast<char>(character - 'a' + 'A');
    }
    return upper;
}

/// 0 to 15; -1 for what is no hexadecimal digit.
constexpr int HexDigit(char character) {
    if (IsAsciiDigit(character))
        return character - '0';
    const char lower = AsciiLower(character);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace zorvane
