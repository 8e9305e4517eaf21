// Whether a line within a table goes on in the cells above it.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_page.h"
#include "load/readers/pdf/pdf_tables.h"

namespace zorvane {

/// One line of one cell.
struct PdfCellLine {
    float x1 = 0;
    float first_word = 0;  ///< its width
    float blank = 0;
    bool number = false;
};
PdfCellLine CellLineOf(const std::vector<PdfCharacter>& characters, const PdfSegmentLine& segments);

enum class PdfCellStep { Unknown, SameCell, NewCell };

/// `edge`: where the lines of the cell's column end. A line that could have taken the next word
/// ends its cell; so does a number before another.
PdfCellStep StepBetween(const PdfCellLine& above, const PdfCellLine& below, float edge);

}  // namespace zorvane
