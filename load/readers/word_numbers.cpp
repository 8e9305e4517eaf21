#include "load/readers/word_numbers.h"

#include <algorithm>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

struct RomanRow {
    std::int32_t value;
    std::string_view digits;
};
constexpr RomanRow kRoman[] = {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"},
                               {90, "xc"},  {50, "l"},   {40, "xl"}, {10, "x"},   {9, "ix"},
                               {5, "v"},    {4, "iv"},   {1, "i"}};

std::string Ordinal(std::int32_t number) {
    const std::int32_t tens = number / 10 % 10;
    const std::int32_t ones = number % 10;
    std::string_view end = "th";
    if (tens != 1 && ones >= 1 && ones <= 3)
        end = ones == 1 ? "st" : ones == 2 ? "nd" : "rd";
    return std::to_string(number) + std::string(end);
}

// The Greek letters and signs of the Symbol font by its 8-bit codes, from 0x41 and from 0x61.
constexpr std::u16string_view kSymbolCapitals = u"ΑΒΧ∆ΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ";
constexpr std::u16string_view kSymbolSmall = u"αβχδεφγηιϕκλµνοπθρστυϖωξψζ";

struct SymbolRow {
    std::uint32_t code;
    char16_t character;
};
constexpr SymbolRow kSymbolSigns[] = {
    {0xA3, u'≤'}, {0xA5, u'∞'}, {0xA7, u'♣'}, {0xA8, u'♦'}, {0xA9, u'♥'}, {0xAA, u'♠'},
    {0xAB, u'↔'}, {0xAC, u'←'}, {0xAD, u'↑'}, {0xAE, u'→'}, {0xAF, u'↓'}, {0xB0, u'°'},
    {0xB1, u'±'}, {0xB3, u'≥'}, {0xB4, u'×'}, {0xB5, u'∝'}, {0xB6, u'∂'}, {0xB7, u'•'},
    {0xB8, u'÷'}, {0xB9, u'≠'}, {0xBA, u'≡'}, {0xBB, u'≈'}, {0xBC, u'…'}, {0xC5, u'⊕'},
    {0xC7, u'∩'}, {0xC8, u'∪'}, {0xCC, u'⊂'}, {0xCE, u'∈'}, {0xD2, u'®'}, {0xD3, u'©'},
    {0xD4, u'™'}, {0xD5, u'∏'}, {0xD6, u'√'}, {0xD7, u'⋅'}, {0xDB, u'⇔'}, {0xDE, u'⇒'},
    {0xE2, u'®'}, {0xE3, u'©'}, {0xE4, u'™'}, {0xE5, u'∑'}, {0xF2, u'∫'}};
constexpr SymbolRow kWingdings[] = {{0x4A, u'☺'}, {0x6C, u'●'}, {0x6E, u'■'}, {0x6F, u'□'},
                                    {0x71, u'❑'}, {0x72, u'❒'}, {0x75, u'◆'}, {0x76, u'❖'},
                                    {0x9F, u'•'}, {0xA7, u'▪'}, {0xA8, u'◻'}, {0xD8, u'➢'},
                                    {0xE0, u'→'}, {0xE8, u'➔'}, {0xF0, u'⇨'}, {0xFB, u'✗'},
                                    {0xFC, u'✓'}, {0xFD, u'☒'}, {0xFE, u'☑'}};

template <std::size_t Count>
char16_t Find(const SymbolRow (&rows)[Count], std::uint32_t code) {
    for (const SymbolRow& row : rows) {
        if (row.code == code)
            return row.character;
    }
    return 0;
}

char16_t FromSymbolFont(std::uint32_t code) {
    if (code >= 0x41 && code < 0x41 + kSymbolCapitals.size())
        return kSymbolCapitals[code - 0x41];
    if (code >= 0x61 && code < 0x61 + kSymbolSmall.size())
        return kSymbolSmall[code - 0x61];
    if (const char16_t sign = Find(kSymbolSigns, code))
        return sign;
    return code < 0x7F ? static_cast<char16_t>(code) : u'\0';
}

}  // namespace

std::string RomanNumber(std::int32_t number) {
    if (number < 1 || number > 3999)
        return std::to_string(number);
    std::string text;
    for (const RomanRow& row : kRoman) {
        for (; number >= row.value; number -= row.value)
            text += row.digits;
    }
    return text;
}

std::string LetterNumber(std::int32_t number, bool spread) {
    constexpr std::int32_t kLetters = 26;
    constexpr std::int32_t kMost = kLetters * 40;  // beyond, the row of letters helps nobody
    if (number < 1 || (number > kMost && !spread))
        return std::to_string(number);
    const auto letter = [](std::int32_t index) { return static_cast<char>('a' + index); };
    if (!spread) {
        return std::string(static_cast<std::size_t>((number - 1) / kLetters + 1),
                           letter((number - 1) % kLetters));
    }
    std::string text;
    for (; number > 0; number = (number - 1) / kLetters)
        text.insert(text.begin(), letter((number - 1) % kLetters));
    return text;
}

std::string Capitals(std::string text) {
    for (char& character : text) {
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
    }
    return text;
}

std::string FormatListNumber(std::int32_t number, std::string_view form) {
    if (form == "none" || form == "bullet")
        return {};
    if (form == "lowerRoman")
        return RomanNumber(number);
    if (form == "upperRoman")
        return Capitals(RomanNumber(number));
    if (form == "lowerLetter")
        return LetterNumber(number);
    if (form == "upperLetter")
        return Capitals(LetterNumber(number));
    if (form == "ordinal")
        return Ordinal(number);
    if (form == "decimalZero" && number >= 0 && number < 10)
        return "0" + std::to_string(number);
    return std::to_string(number);
}

std::string SymbolCharacter(std::uint32_t code, std::string_view font) {
    const std::uint32_t eight_bit = code >= 0xF000 && code <= 0xF0FF ? code - 0xF000 : code;
    if (eight_bit <= 0xFF) {
        char16_t known = 0;
        if (font.starts_with("Wingdings"))
            known = Find(kWingdings, eight_bit);
        else if (font == "Symbol" || code >= 0xF000)
            known = FromSymbolFont(eight_bit);
        if (known != 0)
            return ToUtf8(std::u16string_view(&known, 1));
    }
    const auto unit = static_cast<char16_t>(std::min<std::uint32_t>(code, 0xFFFD));
    return unit < 0x20 ? std::string() : ToUtf8(std::u16string_view(&unit, 1));
}

}  // namespace zorvane
