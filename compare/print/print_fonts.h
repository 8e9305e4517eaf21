// The fonts of a paragraph's spans, and what measuring text in them gives.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/print/page_painter.h"
#include "compare/print/print_text.h"

namespace zorvane {

/// Raised and lowered text is smaller.
PrintFont PrintFontOf(const CharFormat& format);
/// How far above the line that font stands: positive for superscript, negative for subscript.
double RaiseOf(const CharFormat& format);

/// Measures stretches of one paragraph, which is borrowed.
class ParagraphMeasure {
  public:
    ParagraphMeasure(TextMeasurer& measurer, const PrintParagraph& paragraph);

    /// From `begin` up to `end`; hidden text has no width.
    double Width(std::int32_t begin, std::int32_t end) const;
    /// The height of a line with that text; of an empty one that of its break.
    FontHeight Height(std::int32_t begin, std::int32_t end) const;
    /// The first span that ends behind `place`.
    std::size_t SpanAt(std::int32_t place) const;
    const PrintFont& FontOf(std::size_t span) const { return fonts_[span]; }
    const PrintParagraph& Paragraph() const { return paragraph_; }

  private:
    TextMeasurer& measurer_;
    const PrintParagraph& paragraph_;
    std::vector<PrintFont> fonts_;
    std::vector<FontHeight> heights_;
};

}  // namespace zorvane
