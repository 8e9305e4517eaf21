// Kinds of numbers as types, so that a paragraph number is never taken for a position in a text.
#pragma once

#include <compare>
#include <cstdint>

namespace zorvane {

/// One kind of 32-bit number. Numbers of one kind are ordered and move by plain counts; numbers of
/// two kinds do not mix.
template <class Kind>
struct Number {
    std::int32_t value = 0;

    constexpr Number() noexcept = default;
    constexpr explicit Number(std::int32_t number) : value(number) {}

    friend constexpr auto operator<=>(Number, Number) = default;
    friend constexpr Number operator+(Number number, std::int32_t count) {
        return Number{number.value + count};
    }
    friend constexpr Number operator-(Number number, std::int32_t count) {
        return Number{number.value - count};
    }
    friend constexpr std::int32_t operator-(Number last, Number first) {
        return last.value - first.value;
    }
    constexpr Number& operator++() {
        ++value;
        return *this;
    }
    constexpr Number& operator--() {
        --value;
        return *this;
    }
};

/// 1-based; 0 is the place before the first paragraph. Paragraph k is line k of the engine.
using ParagraphNumber = Number<struct ParagraphKind>;
/// From the first to the last, both in it.
struct ParagraphRange {
    ParagraphNumber first;
    ParagraphNumber last;

    constexpr ParagraphRange() noexcept = default;
    constexpr ParagraphRange(ParagraphNumber from, ParagraphNumber to) : first(from), last(to) {}
    constexpr ParagraphRange(std::int32_t from, std::int32_t to) : first(from), last(to) {}
    friend bool operator==(const ParagraphRange&, const ParagraphRange&) = default;
};
/// 1-based; 0 is the place before the first section (a word with its separator).
using SectionNumber = Number<struct SectionKind>;
/// 1-based number of a character in a run of changed sections.
using CharacterNumber = Number<struct CharacterKind>;
/// 0-based index of a difference record.
using RecordIndex = Number<struct RecordKind>;
/// 0-based index of a UTF-16 code unit in an editor's text.
using CharPos = Number<struct CharPosKind>;
/// A twentieth of a point.
using Twips = Number<struct TwipsKind>;
inline constexpr std::int32_t kTwipsPerPoint = 20;

}  // namespace zorvane
