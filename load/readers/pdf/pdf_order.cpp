#include "load/readers/pdf/pdf_order.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <unicode/ubidi.h>
#include <unicode/unorm2.h>

namespace zorvane {
namespace {

struct AccentRow {
    char32_t drawn;
    char32_t combining;
};
constexpr std::array<AccentRow, 13> kAccents = {{{U'`', 0x300},
                                                 {0xB4, 0x301},
                                                 {U'^', 0x302},
                                                 {0x2C6, 0x302},
                                                 {U'~', 0x303},
                                                 {0x2DC, 0x303},
                                                 {0xAF, 0x304},
                                                 {0x2D8, 0x306},
                                                 {0x2D9, 0x307},
                                                 {0xA8, 0x308},
                                                 {0x2DA, 0x30A},
                                                 {0x2C7, 0x30C},
                                                 {0xB8, 0x327}}};

char32_t CombiningOf(char32_t letter) {
    if (letter >= 0x300 && letter <= 0x36F)
        return letter;
    const auto* const row =
        std::find_if(kAccents.begin(), kAccents.end(),
                     [&](const AccentRow& each) { return each.drawn == letter; });
    return row == kAccents.end() ? 0 : row->combining;
}

bool IsArabicForm(char32_t letter) {
    return (letter >= 0xFB50 && letter <= 0xFDFB) || (letter >= 0xFE70 && letter <= 0xFEFC);
}

// A form that joins letters stands for up to a few of them.
std::u16string PlainArabic(char32_t letter) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const forms = unorm2_getNFKCInstance(&status);
    const auto unit = static_cast<char16_t>(letter);
    std::array<char16_t, 32> plain{};
    const std::int32_t length = unorm2_normalize(forms, &unit, 1, plain.data(),
                                                 static_cast<std::int32_t>(plain.size()), &status);
    if (U_FAILURE(status) != 0 || length <= 0)
        return {unit};
    return {plain.data(), static_cast<std::size_t>(length)};
}

std::vector<PdfLetter> WithPlainArabic(const std::vector<PdfLetter>& letters) {
    std::vector<PdfLetter> plain;
    plain.reserve(letters.size());
    for (PdfLetter letter : letters) {
        if (!IsArabicForm(letter.letter)) {
            plain.push_back(letter);
            continue;
        }
        for (const char16_t unit : PlainArabic(letter.letter)) {
            letter.letter = unit;
            plain.push_back(letter);
        }
    }
    return plain;
}

}  // namespace

char32_t Composed(char32_t base, char32_t accent) {
    const char32_t combining = CombiningOf(accent);
    if (combining == 0)
        return 0;
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const forms = unorm2_getNFCInstance(&status);
    if (U_FAILURE(status) != 0)
        return 0;
    // Fonts put an accent over an i without its dot.
    const char32_t plain = base == 0x131 ? U'i' : base == 0x237 ? U'j' : base;
    const UChar32 composed =
        unorm2_composePair(forms, static_cast<UChar32>(plain), static_cast<UChar32>(combining));
    return composed < 0 ? 0 : static_cast<char32_t>(composed);
}

bool IsAccent(char32_t letter) {
    return CombiningOf(letter) != 0;
}

bool IsRightToLeft(char32_t letter) {
    return (letter >= 0x590 && letter <= 0x8FF) || (letter >= 0xFB1D && letter <= 0xFDFF) ||
           (letter >= 0xFE70 && letter <= 0xFEFC);
}

bool ReorderVisualLine(std::vector<PdfLetter>& letters) {
    const auto count = std::count_if(letters.begin(), letters.end(), [](const PdfLetter& letter) {
        return IsRightToLeft(letter.letter);
    });
    if (count == 0)
        return false;
    const auto latin = std::count_if(letters.begin(), letters.end(), [](const PdfLetter& letter) {
        return (letter.letter | 0x20) >= 'a' && (letter.letter | 0x20) <= 'z';
    });
    const bool right_to_left = count >= latin;
    std::u16string units;
    for (const PdfLetter& letter : letters)
        units += letter.letter < 0x10000 ? static_cast<char16_t>(letter.letter) : u'\uFFFC';
    const std::unique_ptr<UBiDi, decltype(&ubidi_close)> bidi(ubidi_open(), &ubidi_close);
    UErrorCode status = U_ZERO_ERROR;
    ubidi_setInverse(bidi.get(), 1);
    ubidi_setPara(bidi.get(), units.data(), static_cast<std::int32_t>(units.size()),
                  right_to_left ? 1 : 0, nullptr, &status);
    std::vector<std::int32_t> sources(letters.size());
    ubidi_getVisualMap(bidi.get(), sources.data(), &status);
    if (U_FAILURE(status) != 0)
        return right_to_left;
    std::vector<PdfLetter> logical;
    logical.reserve(letters.size());
    for (const std::int32_t source : sources)
        logical.push_back(letters[static_cast<std::size_t>(source)]);
    letters = WithPlainArabic(logical);
    return right_to_left;
}

}  // namespace zorvane
