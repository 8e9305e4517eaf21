// Characters of two UTF-16 units.
#pragma once

#include <string>

namespace zorvane {

constexpr bool IsHighSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xD800;
}
constexpr bool IsLowSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xDC00;
}
constexpr bool IsSurrogate(char32_t unit) {
    return (unit & 0xFFFFF800) == 0xD800;
}
/// The character of a pair.
constexpr char32_t OfSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}
/// `code` is at most 0x10FFFF.
inline void AppendCodePoint(char32_t code, std::u16string& out) {
    if (code >= 0x10000) {
        out.push_back(static_cast<char16_t>(0xD7C0 + (code >> 10)));
        code = 0xDC00 + (code & 0x3FF);
    }
    out.push_back(static_cast<char16_t>(code));
}

}  // namespace zorvane
