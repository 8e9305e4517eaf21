#include "load/readers/pdf/pdf_labels.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

constexpr std::u32string_view kBullets =
    U"\u2022\u25AA\u25AB\u25CF\u25CB\u25A0\u25A1\u2023\u2043\u25E6\u25B6\u25BA\u27A2\u27A4\u2713"
    U"\u2714\u2756\u25C6\u25C7\u2751\u2752";
constexpr std::u32string_view kDashes = U"-\u2013\u2014\u2212*o\u00B7";

/// A word without the signs around it; `style` tells these.
struct Bare {
    std::u32string_view word;
    std::uint32_t style = 0;  // 0: none
};

Bare Stripped(std::u32string_view word) {
    constexpr std::uint32_t kDot = 1;
    constexpr std::uint32_t kParenthesis = 2;
    constexpr std::uint32_t kParentheses = 3;
    constexpr std::uint32_t kBrackets = 4;
    if (word.size() < 2)
        return {word, 0};
    const char32_t first = word.front();
    const char32_t last = word.back();
    if (first == U'(' && last == U')')
        return {word.substr(1, word.size() - 2), kParentheses};
    if (first == U'[' && last == U']')
        return {word.substr(1, word.size() - 2), kBrackets};
    if (last == U')')
        return {word.substr(0, word.size() - 1), kParenthesis};
    if (last == U'.')
        return {word.substr(0, word.size() - 1), kDot};
    return {word, 0};
}

std::int32_t RomanDigit(char32_t letter) {
    switch (letter | 0x20) {
        case U'i':
            return 1;
        case U'v':
            return 5;
        case U'x':
            return 10;
        case U'l':
            return 50;
        default:
            return 0;
    }
}

// 0 for what is no Roman number; the sum alone tells members of a series apart.
std::int32_t RomanValue(std::u32string_view word) {
    std::int32_t value = 0;
    for (std::size_t index = 0; index < word.size(); ++index) {
        const std::int32_t digit = RomanDigit(word[index]);
        if (digit == 0)
            return 0;
        const bool before = index + 1 < word.size() && RomanDigit(word[index + 1]) > digit;
        value += before ? -digit : digit;
    }
    return value;
}

// "1", "12", "1.2.3"; empty for anything else. No list has a member 1000.
std::vector<std::int32_t> ValuesOf(std::u32string_view word) {
    std::vector<std::int32_t> values;
    std::size_t digits = 0;
    for (const char32_t letter : word) {
        constexpr std::size_t kMostDigits = 3;
        if (letter == U'.' && digits > 0) {
            digits = 0;
            continue;
        }
        if (!IsAsciiDigit(letter) || ++digits > kMostDigits)
            return {};
        if (digits == 1)
            values.push_back(0);
        values.back() = values.back() * 10 + static_cast<std::int32_t>(letter - U'0');
    }
    return digits == 0 ? std::vector<std::int32_t>() : values;
}

std::vector<PdfLabel> LabelOfSign(char32_t sign) {
    const auto code = static_cast<std::uint32_t>(sign);
    if (kBullets.find(sign) != std::u32string_view::npos)
        return {{PdfLabelKind::Bullet, code, {}}};
    if (kDashes.find(sign) != std::u32string_view::npos)
        return {{PdfLabelKind::Dash, code, {}}};
    return {};
}

std::vector<PdfLabel> LabelsOfLetters(const Bare& bare) {
    constexpr std::uint32_t kUpper = 8;
    const bool lower = std::all_of(bare.word.begin(), bare.word.end(), IsAsciiLower<char32_t>);
    const bool upper = std::all_of(bare.word.begin(), bare.word.end(), IsAsciiUpper<char32_t>);
    if (bare.style == 0 || bare.word.empty() || !(lower || upper))
        return {};
    const std::uint32_t style = bare.style + (upper ? kUpper : 0);
    std::vector<PdfLabel> labels;
    if (bare.word.size() == 1)
        labels.push_back({PdfLabelKind::Letter,
                          style,
                          {static_cast<std::int32_t>((bare.word[0] | 0x20) - U'a' + 1)}});
    if (const std::int32_t value = RomanValue(bare.word); value > 0)
        labels.push_back({PdfLabelKind::Roman, style, {value}});
    return labels;
}

}  // namespace

std::vector<PdfLabel> LabelsOf(std::u32string_view word) {
    if (word.empty() || word.size() > kLongestLabel)
        return {};
    if (word.size() == 1) {
        if (std::vector<PdfLabel> labels = LabelOfSign(word[0]); !labels.empty())
            return labels;
    }
    const Bare bare = Stripped(word);
    std::vector<std::int32_t> values = ValuesOf(bare.word);
    if (values.empty())
        return LabelsOfLetters(bare);
    const bool decimal = values.size() > 1;
    if (!decimal && bare.style == 0)
        return {};
    return {
        {decimal ? PdfLabelKind::Decimal : PdfLabelKind::Number, bare.style, std::move(values)}};
}

std::uint32_t LabelLength(std::u32string_view text) {
    const std::size_t end = text.find_first_of(U" \t");
    if (end == std::u32string_view::npos || LabelsOf(text.substr(0, end)).empty())
        return 0;
    return static_cast<std::uint32_t>(end);
}

bool BeginsList(const PdfLabel& label) {
    return label.values.empty() || label.values.back() == 1;
}

// A decimal goes on at its own level, one level below, or at one above: 1.2.3 before 1.2.4, 1.2.3.1
// or 1.3.
bool Follows(const PdfLabel& label, const PdfLabel& next) {
    if (label.kind != next.kind || label.style != next.style)
        return false;
    const std::vector<std::int32_t>& a = label.values;
    const std::vector<std::int32_t>& b = next.values;
    if (a.empty())
        return true;
    if (b.size() > a.size())
        return b.size() == a.size() + 1 && b.back() == 1 &&
               std::equal(a.begin(), a.end(), b.begin());
    const std::size_t level = b.size() - 1;
    return std::equal(b.begin(), b.end() - 1, a.begin()) && b[level] == a[level] + 1;
}

}  // namespace zorvane
