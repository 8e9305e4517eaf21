// Finds a code unit in long UTF-16 texts, four units at a step; the library's search looks at one.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zorvane {

/// Place of the first unit that is `one` or `other`, from `from` on; npos without one.
inline std::size_t FindEitherUnit(std::u16string_view text, char16_t one, char16_t other,
                                  std::size_t from) {
    constexpr std::uint64_t kEach = 0x0001'0001'0001'0001U;
    constexpr std::uint64_t kHigh = 0x8000'8000'8000'8000U;
    // Sets the highest bit of units that are zero (and of none below the first that is).
    const auto zeros = [](std::uint64_t word) { return (word - kEach) & ~word & kHigh; };
    const std::uint64_t ones = one * kEach;
    const std::uint64_t others = other * kEach;
    std::size_t at = from;
    for (; at + 4 <= text.size(); at += 4) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        const std::uint64_t found = zeros(word ^ ones) | zeros(word ^ others);
        if (found == 0)
            continue;
        if constexpr (std::endian::native == std::endian::little)
            return at + static_cast<std::size_t>(std::countr_zero(found)) / 16;
        break;
    }
    for (; at < text.size(); ++at) {
        if (text[at] == one || text[at] == other)
            return at;
    }
    return std::u16string_view::npos;
}

inline std::size_t FindUnit(std::u16string_view text, char16_t unit, std::size_t from = 0) {
    return FindEitherUnit(text, unit, unit, from);
}

/// Place of the first CR LF from `from` on; npos without one.
inline std::size_t FindBreak(std::u16string_view text, std::size_t from = 0) {
    std::size_t at = FindUnit(text, u'\r', from);
    while (at != std::u16string_view::npos && (at + 1 == text.size() || text[at + 1] != u'\n'))
        at = FindUnit(text, u'\r', at + 1);
    return at;
}

/// Nothing but blanks of width 1; true for an empty text.
inline bool OnlyBlanks(std::u16string_view text) {
    return text.find_first_not_of(u' ') == std::u16string_view::npos;
}

inline bool HasLineFeed(std::u16string_view text) {
    return text.find(u'\n') != std::u16string_view::npos;
}

}  // namespace zorvane
