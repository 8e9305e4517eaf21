#include "load/readers/sink/symbol_fonts.h"

#include <algorithm>
#include <array>
#include <utility>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr char16_t kDot = u'\u2022';

using SymbolTable = std::pair<char16_t, char16_t>;

constexpr std::array kPictures = {
    SymbolTable{0x4A, u'\u263A'}, SymbolTable{0x6C, u'\u25CF'}, SymbolTable{0x6D, u'\u274D'},
    SymbolTable{0x6E, u'\u25A0'}, SymbolTable{0x6F, u'\u25A1'}, SymbolTable{0x71, u'\u2751'},
    SymbolTable{0x72, u'\u2752'}, SymbolTable{0x73, u'\u2B27'}, SymbolTable{0x74, u'\u29EB'},
    SymbolTable{0x75, u'\u25C6'}, SymbolTable{0x76, u'\u2756'}, SymbolTable{0x77, u'\u2B25'},
    SymbolTable{0x9E, u'\u00B7'}, SymbolTable{0x9F, u'\u2022'}, SymbolTable{0xA1, u'\u25CB'},
    SymbolTable{0xA7, u'\u25AA'}, SymbolTable{0xA8, u'\u25FB'}, SymbolTable{0xAB, u'\u2605'},
    SymbolTable{0xD8, u'\u27A2'}, SymbolTable{0xDF, u'\u2190'}, SymbolTable{0xE0, u'\u2192'},
    SymbolTable{0xE1, u'\u2191'}, SymbolTable{0xE2, u'\u2193'}, SymbolTable{0xE8, u'\u2794'},
    SymbolTable{0xF0, u'\u21E8'}, SymbolTable{0xFB, u'\u2717'}, SymbolTable{0xFC, u'\u2713'},
    SymbolTable{0xFD, u'\u2612'}, SymbolTable{0xFE, u'\u2611'}};

constexpr std::array kMathematics = {
    SymbolTable{0xA3, u'\u2264'}, SymbolTable{0xA5, u'\u221E'}, SymbolTable{0xA7, u'\u2663'},
    SymbolTable{0xA8, u'\u2666'}, SymbolTable{0xA9, u'\u2665'}, SymbolTable{0xAA, u'\u2660'},
    SymbolTable{0xAB, u'\u2194'}, SymbolTable{0xAC, u'\u2190'}, SymbolTable{0xAD, u'\u2191'},
    SymbolTable{0xAE, u'\u2192'}, SymbolTable{0xAF, u'\u2193'}, SymbolTable{0xB0, u'\u00B0'},
    SymbolTable{0xB1, u'\u00B1'}, SymbolTable{0xB3, u'\u2265'}, SymbolTable{0xB4, u'\u00D7'},
    SymbolTable{0xB5, u'\u221D'}, SymbolTable{0xB6, u'\u2202'}, SymbolTable{0xB7, u'\u2022'},
    SymbolTable{0xB8, u'\u00F7'}, SymbolTable{0xB9, u'\u2260'}, SymbolTable{0xBA, u'\u2261'},
    SymbolTable{0xBB, u'\u2248'}, SymbolTable{0xBC, u'\u2026'}, SymbolTable{0xC5, u'\u2295'},
    SymbolTable{0xC7, u'\u2229'}, SymbolTable{0xC8, u'\u222A'}, SymbolTable{0xCC, u'\u2282'},
    SymbolTable{0xCE, u'\u2208'}, SymbolTable{0xD2, u'\u00AE'}, SymbolTable{0xD3, u'\u00A9'},
    SymbolTable{0xD4, u'\u2122'}, SymbolTable{0xD5, u'\u220F'}, SymbolTable{0xD6, u'\u221A'},
    SymbolTable{0xD7, u'\u22C5'}, SymbolTable{0xDB, u'\u21D4'}, SymbolTable{0xDE, u'\u21D2'},
    SymbolTable{0xE2, u'\u00AE'}, SymbolTable{0xE3, u'\u00A9'}, SymbolTable{0xE4, u'\u2122'},
    SymbolTable{0xE5, u'\u2211'}, SymbolTable{0xF2, u'\u222B'}};

// Greek letters by their codes from 0x41 and from 0x61, in that font's own order.
constexpr std::u16string_view kGreekCapitals =
    u"\u0391\u0392\u03A7\u2206\u0395\u03A6\u0393\u0397\u0399"
    u"\u03D1\u039A\u039B\u039C\u039D\u039F\u03A0\u0398\u03A1"
    u"\u03A3\u03A4\u03A5\u03C2\u2126\u039E\u03A8\u0396";
constexpr std::u16string_view kGreekSmall =
    u"\u03B1\u03B2\u03C7\u03B4\u03B5\u03C6\u03B3\u03B7\u03B9\u03D5"
    u"\u03BA\u03BB\u03BC\u03BD\u03BF\u03C0\u03B8\u03C1\u03C3\u03C4"
    u"\u03C5\u03D6\u03C9\u03BE\u03C8\u03B6";

template <std::size_t Size>
char16_t Find(const std::array<SymbolTable, Size>& table, char16_t code) {
    const auto* found = std::find_if(table.begin(), table.end(),
                                     [code](const SymbolTable& row) { return row.first == code; });
    return found == table.end() ? char16_t{0} : found->second;
}

char16_t Mathematical(char16_t code) {
    if (code >= 0x41 && code < 0x41 + kGreekCapitals.size())
        return kGreekCapitals[static_cast<std::size_t>(code - 0x41)];
    if (code >= 0x61 && code < 0x61 + kGreekSmall.size())
        return kGreekSmall[static_cast<std::size_t>(code - 0x61)];
    return Find(kMathematics, code);
}

// Such fonts lie at U+F000 and are written with that or without.
char16_t Shown(char16_t unit, std::string_view font) {
    const bool private_use = unit >= 0xF020 && unit <= 0xF0FF;
    if (!private_use && unit > 0xFF)
        return unit;
    const auto code = static_cast<char16_t>(unit & 0xFF);
    return font == "Symbol" ? Mathematical(code) : Find(kPictures, code);
}

bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte == '\t' || (byte >= 0x20 && byte < 0x7F);
    });
}

}  // namespace

bool IsSymbolFont(std::string_view font) {
    return font == "Wingdings" || font == "Symbol";
}

std::string SymbolText(std::string_view utf8, std::string_view font) {
    std::u16string text = ToUtf16(utf8);
    for (char16_t& unit : text) {
        const char16_t shown = Shown(unit, font);
        unit = shown == 0 ? unit : shown;
    }
    return ToUtf8(text);
}

std::string SymbolBullet(std::string_view utf8, std::string_view font) {
    std::u16string text = ToUtf16(utf8);
    const bool symbols = IsSymbolFont(font);
    for (char16_t& unit : text) {
        const bool private_use = unit >= 0xE000 && unit <= 0xF8FF;
        const char16_t shown = symbols ? Shown(unit, font) : unit;
        unit = shown == 0 || (!symbols && private_use) ? kDot : shown;
    }
    return ToUtf8(text);
}

std::string_view CleanText(std::string_view text, std::string& scratch) {
    if (IsPlain(text))
        return text;
    scratch.clear();
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\n' || character == '\r')
            scratch += ' ';
        else if (byte >= 0x20 || character == '\t')
            scratch += character;
    }
    if (!IsValidUtf8(scratch))
        scratch = ToUtf8(ToUtf16(scratch));
    return scratch;
}

}  // namespace zorvane
