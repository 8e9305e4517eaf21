// Which words on a baseline belong together: pieces of lines, before any column is known.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_rows.h"

namespace zorvane {

/// The words of one baseline, from left to right.
struct PdfWordRow {
    float baseline = 0;
    float size = 0;
    std::vector<PdfWord> words;
};

/// Marks the words before which a gap stays clear over several neighbouring rows: a gutter, where
/// the order of drawing tells nothing.
void MarkClearGaps(std::vector<PdfWordRow>& rows);

/// Appends the segments of a row. A vertical rule between two words parts them; `uprights` ascend
/// by their left edges.
void AppendSegments(const PdfWordRow& row, const std::vector<PdfBox>& uprights,
                    std::vector<PdfSegment>& segments);

}  // namespace zorvane
