// Lines to paragraphs.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/pdf/pdf_lines.h"

namespace zorvane {

struct PdfParagraphOptions {
    bool merge = true;             ///< else each line is a paragraph
    bool connect_hyphens = false;  ///< a hyphen at a line's end goes when the word goes on
    bool by_layout = false;        ///< each line a paragraph, gaps between them as empty ones
};

/// Distances in points.
struct PdfParagraph {
    std::vector<PdfLetter> letters;
    std::uint32_t label = 0;  ///< letters of a number or bullet, parted from the text by a gap
    Alignment alignment = Alignment::Left;
    float left_indent = 0;
    float first_line_indent = 0;
    bool right_to_left = false;
};

std::vector<PdfParagraph> ParagraphsOf(const std::vector<PdfLine>& lines,
                                       const PdfParagraphOptions& options);

}  // namespace zorvane
