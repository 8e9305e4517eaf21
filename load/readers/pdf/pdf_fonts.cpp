#include "load/readers/pdf/pdf_fonts.h"

#include <algorithm>
#include <iterator>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

struct FamilyRow {
    std::string_view name;  // without style and foundry
    std::string_view family;
};
// Names that do not part into words by themselves.
constexpr FamilyRow kFamilies[] = {{"TimesNewRoman", "Times New Roman"},
                                   {"TimesNewRomanPS", "Times New Roman"},
                                   {"CourierNew", "Courier New"},
                                   {"CourierNewPS", "Courier New"},
                                   {"Arial", "Arial"},
                                   {"ArialNarrow", "Arial Narrow"},
                                   {"DejaVuSans", "DejaVu Sans"},
                                   {"DejaVuSansMono", "DejaVu Sans Mono"},
                                   {"DejaVuSerif", "DejaVu Serif"},
                                   {"ZapfDingbats", "Zapf Dingbats"}};

constexpr std::string_view kStyles[] = {"BoldItalic", "BoldOblique", "SemiBold",  "Semibold",
                                        "DemiBold",   "ExtraBold",   "Bold",      "Italic",
                                        "Oblique",    "Regular",     "Roman",     "Medium",
                                        "Black",      "Light",       "Condensed", "Book"};

bool CutEnd(std::string_view& name, std::string_view end) {
    if (name.size() <= end.size() || !name.ends_with(end))
        return false;
    name.remove_suffix(end.size());
    return true;
}

// "LiberationSerif" is "Liberation Serif"; "MSGothic" and "CMR10" stay whole.
std::string Spaced(std::string_view name) {
    std::string words;
    for (std::size_t index = 0; index < name.size(); ++index) {
        if (index > 0 && IsAsciiUpper(name[index]) && IsAsciiLower(name[index - 1]))
            words += ' ';
        words += name[index];
    }
    return words;
}

}  // namespace

std::string FamilyOfFont(std::string_view name) {
    const std::string_view whole = name;
    const std::size_t style = name.find_first_of("-,");
    if (style != std::string_view::npos && style > 0)
        name = name.substr(0, style);
    for (const std::string_view foundry : {"MT", "PS"})
        CutEnd(name, foundry);
    const auto known = [&] {
        return std::find_if(std::begin(kFamilies), std::end(kFamilies),
                            [&](const FamilyRow& row) { return row.name == name; });
    };
    if (known() == std::end(kFamilies)) {
        for (const std::string_view end : kStyles)
            CutEnd(name, end);
    }
    while (name.ends_with(' '))
        name.remove_suffix(1);
    if (name.empty())
        return std::string(whole);
    const auto* const row = known();
    return row != std::end(kFamilies) ? std::string(row->family) : Spaced(name);
}

}  // namespace zorvane
