// What a font's name says of its style.
#pragma once

#include <string_view>

namespace zorvane {

struct PdfFontStyle {
    bool bold = false;
    bool italic = false;
    friend bool operator==(const PdfFontStyle&, const PdfFontStyle&) = default;
};

/// By words in the name, by the short forms behind its hyphen, and by the names of TeX's fonts,
/// which hold neither. `name` is without the prefix of a subset.
PdfFontStyle StyleOfFontName(std::string_view name);

}  // namespace zorvane
