#include "load/readers/sink/list_numbers.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace zorvane {
namespace {

std::string Letters(std::int32_t number, bool repeat) {
    constexpr std::int32_t kLetters = 26;
    constexpr std::int32_t kMostRepeated = 20;
    if (repeat && number <= kLetters * kMostRepeated)
        return std::string(static_cast<std::size_t>((number - 1) / kLetters + 1),
                           static_cast<char>('a' + (number - 1) % kLetters));
    std::string text;
    for (; number > 0; number = (number - 1) / kLetters)
        text.insert(text.begin(), static_cast<char>('a' + (number - 1) % kLetters));
    return text;
}

std::string Roman(std::int32_t number) {
    constexpr std::array<std::pair<std::int32_t, std::string_view>, 13> kNumerals = {{{1000, "m"},
                                                                                      {900, "cm"},
                                                                                      {500, "d"},
                                                                                      {400, "cd"},
                                                                                      {100, "c"},
                                                                                      {90, "xc"},
                                                                                      {50, "l"},
                                                                                      {40, "xl"},
                                                                                      {10, "x"},
                                                                                      {9, "ix"},
                                                                                      {5, "v"},
                                                                                      {4, "iv"},
                                                                                      {1, "i"}}};
    std::string text;
    for (const auto& [value, numeral] : kNumerals) {
        for (; number >= value; number -= value)
            text += numeral;
    }
    return text;
}

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char letter) { return static_cast<char>(letter - 'a' + 'A'); });
    return text;
}

}  // namespace

std::string NumberText(std::int32_t number, NumberStyle style, bool repeat_letters) {
    constexpr std::int32_t kLastRoman = 3999;
    const bool letters = number >= 1;
    const bool roman = number >= 1 && number <= kLastRoman;
    if (style == NumberStyle::None)
        return {};
    if (style == NumberStyle::LowerLetter && letters)
        return Letters(number, repeat_letters);
    if (style == NumberStyle::UpperLetter && letters)
        return Upper(Letters(number, repeat_letters));
    if (style == NumberStyle::LowerRoman && roman)
        return Roman(number);
    if (style == NumberStyle::UpperRoman && roman)
        return Upper(Roman(number));
    if (style == NumberStyle::LeadingZero && number >= 0 && number <= 9)
        return "0" + std::to_string(number);
    return std::to_string(number);
}

std::string_view BulletText(std::size_t level) {
    constexpr std::array<std::string_view, 3> kBullets = {"\u2022", "\u25E6", "\u25AA"};
    return kBullets[std::min(level, kBullets.size() - 1)];
}

}  // namespace zorvane
