#include "load/readers/pdf/pdf_font_style.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

bool HasWord(std::string_view name, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
        return name.find(word) != std::string_view::npos;
    });
}

bool IsWord(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

// "CMBX12": the family in capitals, then the size in points.
struct TexRow {
    std::string_view family;
    PdfFontStyle style;
};
constexpr std::array<TexRow, 22> kTexFamilies = {{{"CMBX", {true, false}},
                                                  {"CMB", {true, false}},
                                                  {"CMSSBX", {true, false}},
                                                  {"CMSSDC", {true, false}},
                                                  {"CMMIB", {true, true}},
                                                  {"CMBSY", {true, false}},
                                                  {"CMBXTI", {true, true}},
                                                  {"CMBXSL", {true, true}},
                                                  {"CMTI", {false, true}},
                                                  {"CMSL", {false, true}},
                                                  {"CMITT", {false, true}},
                                                  {"CMSLTT", {false, true}},
                                                  {"CMSSI", {false, true}},
                                                  {"CMMI", {false, true}},
                                                  // The same family in other encodings: by style.
                                                  {"BX", {true, false}},
                                                  {"RB", {true, false}},
                                                  {"XC", {true, false}},
                                                  {"BI", {true, true}},
                                                  {"BL", {true, true}},
                                                  {"TI", {false, true}},
                                                  {"SL", {false, true}},
                                                  {"IT", {false, true}}}};

// Names of the other encodings: "SFBX1200", "ecti1000".
constexpr std::array<std::string_view, 5> kEncodings = {"SF", "EC", "TC", "LA", "CM"};

PdfFontStyle StyleOfTexName(std::string_view name) {
    const auto digit = std::find_if(name.begin(), name.end(), IsAsciiDigit<char>);
    if (digit == name.end() || digit == name.begin() ||
        !std::all_of(digit, name.end(), IsAsciiDigit<char>))
        return {};
    std::string_view family = name.substr(0, static_cast<std::size_t>(digit - name.begin()));
    const bool upper = std::all_of(family.begin(), family.end(), IsAsciiUpper<char>);
    if (!upper || family.size() < 3)
        return {};
    if (!family.starts_with("CM")) {
        if (std::find(kEncodings.begin(), kEncodings.end(), family.substr(0, 2)) ==
            kEncodings.end())
            return {};
        family.remove_prefix(2);
    }
    const auto* const row = std::find_if(kTexFamilies.begin(), kTexFamilies.end(),
                                         [&](const TexRow& each) { return each.family == family; });
    return row == kTexFamilies.end() ? PdfFontStyle{} : row->style;
}

}  // namespace

PdfFontStyle StyleOfFontName(std::string_view name) {
    PdfFontStyle style = StyleOfTexName(name);
    style.bold = style.bold || HasWord(name, {"Bold", "bold", "BOLD", "Black", "Heavy", "Demi"});
    style.italic = style.italic || HasWord(name, {"Italic", "italic", "ITALIC", "Oblique",
                                                  "oblique", "Slanted", "Inclined"});
    const std::size_t hyphen = name.rfind('-');
    if (hyphen == std::string_view::npos)
        return style;
    const std::string_view end = name.substr(hyphen + 1);
    style.bold = style.bold || IsWord(end, {"Medi", "Bd", "B", "BI", "BdIt", "MediItal", "BoldIt"});
    style.italic = style.italic || IsWord(end, {"It", "I", "BI", "BdIt", "Ital", "ReguItal", "Obli",
                                                "Slant", "MediItal", "MediumIt", "LightIt",
                                                "BoldIt", "BookObli", "DemiObli", "ReguObli"});
    return style;
}

}  // namespace zorvane
