#include "compare/print/pdf_fonts.h"

#include <algorithm>
#include <array>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "common/base/number.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

// In thousandths of the font's size, from the blank on; what the encoding leaves out is 0. From the
// metrics that are published with the fonts.
constexpr std::size_t kFirst = 32;
using Widths = std::array<std::int16_t, 256 - kFirst>;
// clang-format off
constexpr Widths kHelvetica = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722,
    722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667, 611, 722,
    667, 944, 667, 667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278, 556,
    556, 222, 222, 500, 222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,
    500, 334, 260, 334, 584, 0, 556, 0, 222, 556, 333, 1000, 556, 556, 333, 1000, 667, 333,
    1000, 0, 611, 0, 0, 222, 222, 333, 333, 350, 556, 1000, 333, 1000, 500, 333, 944, 0, 500,
    667, 278, 333, 556, 556, 556, 556, 260, 556, 333, 737, 370, 556, 584, 333, 737, 333, 400,
    584, 333, 333, 333, 556, 537, 278, 333, 333, 365, 556, 834, 834, 834, 611, 667, 667, 667,
    667, 667, 667, 1000, 722, 667, 667, 667, 667, 278, 278, 278, 278, 722, 722, 778, 778, 778,
    778, 778, 584, 778, 722, 722, 722, 722, 667, 667, 611, 556, 556, 556, 556, 556, 556, 889,
    500, 556, 556, 556, 556, 278, 278, 278, 278, 556, 556, 556, 556, 556, 556, 556, 584, 611,
    556, 556, 556, 556, 500, 556, 500};
constexpr Widths kHelveticaBold = {
    278, 333, 474, 556, 556, 889, 722, 238, 333, 333, 389, 584, 278, 333, 278, 278, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 556, 333, 333, 584, 584, 584, 611, 975, 722, 722, 722,
    722, 667, 611, 778, 722, 278, 556, 722, 611, 833, 722, 778, 667, 778, 722, 667, 611, 722,
    667, 944, 667, 667, 611, 333, 278, 333, 584, 556, 333, 556, 611, 556, 611, 556, 333, 611,
    611, 278, 278, 556, 278, 889, 611, 611, 611, 611, 389, 556, 333, 611, 556, 778, 556, 556,
    500, 389, 280, 389, 584, 0, 556, 0, 278, 556, 500, 1000, 556, 556, 333, 1000, 667, 333,
    1000, 0, 611, 0, 0, 278, 278, 500, 500, 350, 556, 1000, 333, 1000, 556, 333, 944, 0, 500,
    667, 278, 333, 556, 556, 556, 556, 280, 556, 333, 737, 370, 556, 584, 333, 737, 333, 400,
    584, 333, 333, 333, 611, 556, 278, 333, 333, 365, 556, 834, 834, 834, 611, 722, 722, 722,
    722, 722, 722, 1000, 722, 667, 667, 667, 667, 278, 278, 278, 278, 722, 722, 778, 778, 778,
    778, 778, 584, 778, 722, 722, 722, 722, 667, 667, 611, 556, 556, 556, 556, 556, 556, 889,
    556, 556, 556, 556, 556, 278, 278, 278, 278, 611, 611, 611, 611, 611, 611, 611, 584, 611,
    611, 611, 611, 611, 556, 611, 556};
constexpr Widths kTimes = {
    250, 333, 408, 500, 500, 833, 778, 180, 333, 333, 500, 564, 250, 333, 250, 278, 500, 500,
    500, 500, 500, 500, 500, 500, 500, 500, 278, 278, 564, 564, 564, 444, 921, 722, 667, 667,
    722, 611, 556, 722, 722, 333, 389, 722, 611, 889, 722, 722, 556, 722, 667, 556, 611, 722,
    722, 944, 722, 722, 611, 333, 278, 333, 469, 500, 333, 444, 500, 444, 500, 444, 333, 500,
    500, 278, 278, 500, 278, 778, 500, 500, 500, 500, 333, 389, 278, 500, 500, 722, 500, 500,
    444, 480, 200, 480, 541, 0, 500, 0, 333, 500, 444, 1000, 500, 500, 333, 1000, 556, 333, 889,
    0, 611, 0, 0, 333, 333, 444, 444, 350, 500, 1000, 333, 980, 389, 333, 722, 0, 444, 722, 250,
    333, 500, 500, 500, 500, 200, 500, 333, 760, 276, 500, 564, 333, 760, 333, 400, 564, 300,
    300, 333, 500, 453, 250, 333, 300, 310, 500, 750, 750, 750, 444, 722, 722, 722, 722, 722,
    722, 889, 667, 611, 611, 611, 611, 333, 333, 333, 333, 722, 722, 722, 722, 722, 722, 722,
    564, 722, 722, 722, 722, 722, 722, 556, 500, 444, 444, 444, 444, 444, 444, 667, 444, 444,
    444, 444, 444, 278, 278, 278, 278, 500, 500, 500, 500, 500, 500, 500, 564, 500, 500, 500,
    500, 500, 500, 500, 500};
constexpr Widths kTimesBold = {
    250, 333, 555, 500, 500, 1000, 833, 278, 333, 333, 500, 570, 250, 333, 250, 278, 500, 500,
    500, 500, 500, 500, 500, 500, 500, 500, 333, 333, 570, 570, 570, 500, 930, 722, 667, 722,
    722, 667, 611, 778, 778, 389, 500, 778, 667, 944, 722, 778, 611, 778, 722, 556, 667, 722,
    722, 1000, 722, 722, 667, 333, 278, 333, 581, 500, 333, 500, 556, 444, 556, 444, 333, 500,
    556, 278, 333, 556, 278, 833, 556, 500, 556, 556, 444, 389, 333, 556, 500, 722, 500, 500,
    444, 394, 220, 394, 520, 0, 500, 0, 333, 500, 500, 1000, 500, 500, 333, 1000, 556, 333,
    1000, 0, 667, 0, 0, 333, 333, 500, 500, 350, 500, 1000, 333, 1000, 389, 333, 722, 0, 444,
    722, 250, 333, 500, 500, 500, 500, 220, 500, 333, 747, 300, 500, 570, 333, 747, 333, 400,
    570, 300, 300, 333, 556, 540, 250, 333, 300, 330, 500, 750, 750, 750, 500, 722, 722, 722,
    722, 722, 722, 1000, 722, 667, 667, 667, 667, 389, 389, 389, 389, 722, 722, 778, 778, 778,
    778, 778, 570, 778, 722, 722, 722, 722, 722, 611, 556, 500, 500, 500, 500, 500, 500, 722,
    444, 444, 444, 444, 444, 278, 278, 278, 278, 500, 556, 500, 500, 500, 500, 500, 570, 500,
    556, 556, 556, 556, 500, 556, 500};
constexpr Widths kTimesItalic = {
    250, 333, 420, 500, 500, 833, 778, 214, 333, 333, 500, 675, 250, 333, 250, 278, 500, 500,
    500, 500, 500, 500, 500, 500, 500, 500, 333, 333, 675, 675, 675, 500, 920, 611, 611, 667,
    722, 611, 611, 722, 722, 333, 444, 667, 556, 833, 667, 722, 611, 722, 611, 500, 556, 722,
    611, 833, 611, 556, 556, 389, 278, 389, 422, 500, 333, 500, 500, 444, 500, 444, 278, 500,
    500, 278, 278, 444, 278, 722, 500, 500, 500, 500, 389, 389, 278, 500, 444, 667, 444, 444,
    389, 400, 275, 400, 541, 0, 500, 0, 333, 500, 556, 889, 500, 500, 333, 1000, 500, 333, 944,
    0, 556, 0, 0, 333, 333, 556, 556, 350, 500, 889, 333, 980, 389, 333, 667, 0, 389, 556, 250,
    389, 500, 500, 500, 500, 275, 500, 333, 760, 276, 500, 675, 333, 760, 333, 400, 675, 300,
    300, 333, 500, 523, 250, 333, 300, 310, 500, 750, 750, 750, 500, 611, 611, 611, 611, 611,
    611, 889, 667, 611, 611, 611, 611, 333, 333, 333, 333, 722, 667, 722, 722, 722, 722, 722,
    675, 722, 722, 722, 722, 722, 556, 611, 500, 500, 500, 500, 500, 500, 500, 667, 444, 444,
    444, 444, 444, 278, 278, 278, 278, 500, 500, 500, 500, 500, 500, 500, 675, 500, 500, 500,
    500, 500, 444, 500, 444};
constexpr Widths kTimesBoldItalic = {
    250, 389, 555, 500, 500, 833, 778, 278, 333, 333, 500, 570, 250, 333, 250, 278, 500, 500,
    500, 500, 500, 500, 500, 500, 500, 500, 333, 333, 570, 570, 570, 500, 832, 667, 667, 667,
    722, 667, 667, 722, 778, 389, 500, 667, 611, 889, 722, 722, 611, 722, 667, 556, 611, 722,
    667, 889, 667, 611, 611, 333, 278, 333, 570, 500, 333, 500, 500, 444, 500, 444, 333, 500,
    556, 278, 278, 500, 278, 778, 556, 500, 500, 500, 389, 389, 278, 556, 444, 667, 500, 444,
    389, 348, 220, 348, 570, 0, 500, 0, 333, 500, 500, 1000, 500, 500, 333, 1000, 556, 333, 944,
    0, 611, 0, 0, 333, 333, 500, 500, 350, 500, 1000, 333, 1000, 389, 333, 722, 0, 389, 611,
    250, 389, 500, 500, 500, 500, 220, 500, 333, 747, 266, 500, 606, 333, 747, 333, 400, 570,
    300, 300, 333, 576, 500, 250, 333, 300, 300, 500, 750, 750, 750, 500, 667, 667, 667, 667,
    667, 667, 944, 667, 667, 667, 667, 667, 389, 389, 389, 389, 722, 722, 722, 722, 722, 722,
    722, 570, 722, 722, 722, 722, 722, 611, 611, 500, 500, 500, 500, 500, 500, 500, 722, 444,
    444, 444, 444, 444, 278, 278, 278, 278, 500, 556, 500, 500, 500, 500, 500, 570, 500, 556,
    556, 556, 556, 444, 500, 444};
// clang-format on

struct PdfFont {
    std::string_view name;
    const Widths* widths;  // nullptr: all letters are as wide
};
constexpr double kFixedWidth = 600;

// Each family: upright, bold, italic, both.
constexpr std::array<PdfFont, kPdfFontCount> kFonts = {{
    {"Helvetica", &kHelvetica},
    {"Helvetica-Bold", &kHelveticaBold},
    {"Helvetica-Oblique", &kHelvetica},
    {"Helvetica-BoldOblique", &kHelveticaBold},
    {"Times-Roman", &kTimes},
    {"Times-Bold", &kTimesBold},
    {"Times-Italic", &kTimesItalic},
    {"Times-BoldItalic", &kTimesBoldItalic},
    {"Courier", nullptr},
    {"Courier-Bold", nullptr},
    {"Courier-Oblique", nullptr},
    {"Courier-BoldOblique", nullptr},
}};
enum Family : std::size_t { kSans = 0, kSerif = 1, kFixed = 2 };

// What stands at 0x80 to 0x9F; 0: nothing does.
constexpr std::array<char16_t, 32> kUpper = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

Family FamilyOf(std::string_view name) {
    const std::string upper = ToUpper(name);
    const auto holds = [&upper](std::initializer_list<std::string_view> words) {
        return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
            return upper.find(word) != std::string::npos;
        });
    };
    if (holds({"COURIER", "MONO", "CONSOL", "FIXED", "TYPEWRITER", "TERMINAL"}))
        return kFixed;
    if (holds({"SANS"}))
        return kSans;
    return holds({"TIMES", "SERIF", "ROMAN", "GEORGIA", "GARAMOND", "CAMBRIA", "BOOK", "PALATINO"})
               ? kSerif
               : kSans;
}

std::uint8_t ByteOf(char32_t character) {
    if ((character >= 0x20 && character < 0x7F) || (character >= 0xA0 && character <= 0xFF))
        return static_cast<std::uint8_t>(character);
    const auto found =
        character == 0 ? kUpper.end() : std::find(kUpper.begin(), kUpper.end(), character);
    return found == kUpper.end() ? std::uint8_t{0}
                                 : static_cast<std::uint8_t>(0x80 + (found - kUpper.begin()));
}

char PlainOf(char32_t character) {
    if ((character >= 0x2000 && character <= 0x200A) || character == 0x202F ||
        character == 0x205F || character == u'\t')
        return ' ';
    return character == 0x2010 || character == 0x2011 || character == 0x2212 ? '-' : '\0';
}

// Controls, joiners, direction marks.
bool HasNoShape(UChar32 character) {
    const auto kind = u_charType(character);
    return kind == U_CONTROL_CHAR || kind == U_FORMAT_CHAR;
}

}  // namespace

std::size_t PdfFontFor(const PrintFont& font) {
    return 4 * FamilyOf(font.name.view()) + (font.italic ? 2U : 0U) + (font.bold ? 1U : 0U);
}

std::string_view PdfFontName(std::size_t number) {
    return kFonts[number].name;
}

FontHeight PdfFontHeight(double points) {
    return {0.92 * points * kTwipsPerPoint, 0.24 * points * kTwipsPerPoint};
}

std::string PdfEncoder::Encode(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t character = text[at];
        if (U16_IS_LEAD(text[at]) && at + 1 < text.size() && U16_IS_TRAIL(text[at + 1]))
            character = 0x10000U + ((character & 0x3FFU) << 10U) + (text[++at] & 0x3FFU);
        if (const std::uint8_t byte = ByteOf(character); byte != 0)
            bytes += static_cast<char>(byte);
        else if (const char plain = PlainOf(character); plain != 0)
            bytes += plain;
        else if (!HasNoShape(static_cast<UChar32>(character))) {
            bytes += '?';
            AddUnknown(character);
        }
    }
    return bytes;
}

void PdfEncoder::AddUnknown(char32_t character) {
    constexpr std::size_t kMostShown = 20;
    ++count_;
    if (character > 0xFFFF || unknown_.size() >= kMostShown ||
        unknown_.find(static_cast<char16_t>(character)) != std::u16string::npos)
        return;
    unknown_ += static_cast<char16_t>(character);
}

double PdfWidth(std::string_view bytes, std::size_t number, double points) {
    constexpr double kTwips = 20.0 / 1000;
    const Widths* widths = kFonts[number].widths;
    double units = 0;
    if (widths == nullptr)
        units = kFixedWidth * static_cast<double>(bytes.size());
    else
        for (const char byte : bytes)
            units +=
                (*widths)[std::max<std::size_t>(static_cast<std::uint8_t>(byte), kFirst) - kFirst];
    return units * points * kTwips;
}

}  // namespace zorvane
