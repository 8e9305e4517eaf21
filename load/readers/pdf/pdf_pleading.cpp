#include "load/readers/pdf/pdf_pleading.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

constexpr float kOneLine = 3;       // points
constexpr float kMarginWidth = 16;  // points; numbers of one and of three digits

struct Number {
    std::size_t word = 0;
    int value = 0;
    float x1 = 0;
    float baseline = 0;
};

std::optional<int> ValueOf(const std::vector<PdfCharacter>& characters, const PdfWord& word) {
    constexpr std::uint32_t kMostDigits = 3;
    if (word.count > kMostDigits)
        return std::nullopt;
    int value = 0;
    for (std::uint32_t index = 0; index < word.count; ++index) {
        const char32_t letter = characters[word.first + index].letter;
        if (!IsAsciiDigit(letter))
            return std::nullopt;
        value = value * 10 + static_cast<int>(letter - U'0');
    }
    return value;
}

// The left edge of the words that are no numbers: all of them but a stray few lie right of it.
float TextEdge(const std::vector<PdfCharacter>& characters, const std::vector<PdfWord>& words) {
    std::vector<float> edges;
    for (const PdfWord& word : words) {
        if (!ValueOf(characters, word))
            edges.push_back(word.x0);
    }
    if (edges.empty())
        return 0;
    constexpr std::size_t kStrayShare = 200;
    const auto place = edges.begin() + static_cast<std::ptrdiff_t>(edges.size() / kStrayShare);
    std::nth_element(edges.begin(), place, edges.end());
    return *place;
}

// One number a line, and all below one another; a line's text may begin with a number too.
void KeepMargin(std::vector<Number>& numbers) {
    std::vector<Number> margin;
    for (const Number& number : numbers) {
        if (margin.empty() || number.baseline - margin.back().baseline > kOneLine)
            margin.push_back(number);
        else if (number.x1 < margin.back().x1)
            margin.back() = number;
    }
    numbers = std::move(margin);
    if (numbers.empty())
        return;
    std::vector<float> ends;
    ends.reserve(numbers.size());
    for (const Number& number : numbers)
        ends.push_back(number.x1);
    const auto middle = ends.begin() + static_cast<std::ptrdiff_t>(ends.size() / 2);
    std::nth_element(ends.begin(), middle, ends.end());
    std::erase_if(numbers, [&](const Number& number) {
        return std::fabs(number.x1 - *middle) > kMarginWidth;
    });
}

}  // namespace

void DropLineNumbers(const std::vector<PdfCharacter>& characters, std::vector<PdfWord>& words) {
    const float edge = TextEdge(characters, words);
    std::vector<Number> numbers;
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::optional<int> value = ValueOf(characters, words[index]);
        if (value && words[index].x1 <= edge)
            numbers.push_back({index, *value, words[index].x1, words[index].baseline});
    }
    std::ranges::stable_sort(numbers, {}, &Number::baseline);
    KeepMargin(numbers);
    // Numbers of notes at the margin do not go on one by one.
    std::size_t follow = 0;
    for (std::size_t index = 1; index < numbers.size(); ++index)
        follow += static_cast<std::size_t>(numbers[index].value == numbers[index - 1].value + 1);
    constexpr std::size_t kFewest = 4;
    if (follow < kFewest || follow * 2 < numbers.size())
        return;
    for (const Number& number : numbers)
        words[number.word].count = 0;
    std::erase_if(words, [](const PdfWord& word) { return word.count == 0; });
}

}  // namespace zorvane
