// The fonts that every PDF reader has, and how wide their letters are.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "compare/print/page_painter.h"

namespace zorvane {

/// The number of a built-in font, 0 to `kPdfFontCount` - 1.
std::size_t PdfFontFor(const PrintFont& font);
inline constexpr std::size_t kPdfFontCount = 12;
std::string_view PdfFontName(std::size_t number);
FontHeight PdfFontHeight(double points);

/// Text in the one encoding that all of them have: hyphens and blanks of other widths become plain
/// ones, marks without a shape go, and what there is no letter for becomes "?", and is counted.
class PdfEncoder {
  public:
    std::string Encode(std::u16string_view text);
    std::int32_t UnknownCount() const { return count_; }
    /// The first few different ones.
    const std::u16string& Unknown() const { return unknown_; }

  private:
    void AddUnknown(char32_t character);

    std::int32_t count_ = 0;
    std::u16string unknown_;
};
/// Of text in these bytes, in twips.
double PdfWidth(std::string_view bytes, std::size_t number, double points);

}  // namespace zorvane
