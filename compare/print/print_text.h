// The paragraphs of a rich text one after the other, as printing wants them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "compare/document/rich_text.h"

namespace zorvane {

/// A stretch of a paragraph in one format; positions count from the paragraph's first unit.
struct PrintSpan {
    std::int32_t begin = 0;
    std::int32_t end = 0;
    const CharFormat* format = nullptr;
};

/// Borrowed from the rich text.
struct PrintParagraph {
    std::u16string_view text;                ///< without its break
    std::vector<PrintSpan> spans;            ///< cover the text; hidden text is a span like others
    const CharFormat* end_format = nullptr;  ///< of its break: how high an empty paragraph is
    const ParagraphFormat* format = nullptr;

    /// A part of it, as a cell of a row is one.
    PrintParagraph Part(std::int32_t begin, std::int32_t end) const;
};

/// Goes through the text once, from the beginning.
class PrintReader {
  public:
    explicit PrintReader(const RichText& text) : text_(text) {}
    /// False at the end. The storage of `paragraph` is used again.
    bool Next(PrintParagraph& paragraph);
    /// Where the next paragraph begins.
    std::size_t Place() const { return place_; }

  private:
    const CharFormat* CharsAt(std::size_t place);
    const ParagraphFormat* ParagraphAt(std::size_t place);

    const RichText& text_;
    std::size_t place_ = 0;
    std::size_t char_run_ = 0;
    std::size_t char_begin_ = 0;
    std::size_t paragraph_run_ = 0;
    std::size_t paragraph_begin_ = 0;
};

}  // namespace zorvane
