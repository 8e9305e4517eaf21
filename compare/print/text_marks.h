// Lines under and through letters.
#pragma once

#include <string_view>

#include "compare/print/page_painter.h"

namespace zorvane {

/// Text that is drawn in one format from left to right.
struct MarkedPiece {
    std::u16string_view text;
    const CharFormat& format;
    const PrintFont& font;
    double left = 0;
    double width = 0;
};

/// Underlines of all kinds and the stroke through; waves are drawn as a zigzag.
void DrawMarks(PagePainter& painter, const MarkedPiece& piece, double baseline);

}  // namespace zorvane
