// Letters and digits of ASCII, whatever the locale.
#pragma once

namespace zorvane {

constexpr bool IsAsciiUpper(char character) {
    return character >= 'A' && character <= 'Z';
}
constexpr bool IsAsciiLetter(char character) {
    return IsAsciiUpper(character) || (character >= 'a' && character <= 'z');
}
constexpr bool IsAsciiDigit(char character) {
    return character >= '0' && character <= '9';
}
/// All other bytes stay.
constexpr char AsciiLower(char character) {
    return IsAsciiUpper(character) ? static_cast<char>(character - 'A' + 'a') : character;
}

/// 0 to 15; -1 for what is no hexadecimal digit.
constexpr int HexDigit(char character) {
    if (IsAsciiDigit(character))
        return character - '0';
    const char lower = AsciiLower(character);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace zorvane
