// Tables among the rows of a region: which lines are one row of cells.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_page.h"
#include "load/readers/pdf/pdf_rows.h"

namespace zorvane {

/// The segments of one line, from left to right.
using PdfSegmentLine = std::vector<const PdfSegment*>;

/// A line of text, or a row of a table whose cells may take several lines.
struct PdfRowGroup {
    PdfSegmentLine line;     ///< of a text; empty for a row of a table
    bool stretched = false;  ///< the gaps in that line are blanks
    std::vector<std::vector<PdfSegmentLine>> cells;
    std::vector<float> right_edges;  ///< of the cells' columns
    bool ruled = false;              ///< lines are drawn between the rows of the table
};

/// A line that may belong to a table, told by the caller: the label of a list is no cell.
struct PdfTableLine {
    PdfSegmentLine segments;
    bool is_list_item = false;
    bool stretched = false;  ///< a line of a text whose blanks are wide; see `MarkStretchedLines`
};

/// A line is no row of cells when a neighbour runs over its gaps and ends at the same edge.
void MarkStretchedLines(std::vector<PdfTableLine>& lines);

std::vector<PdfRowGroup> GroupRows(const std::vector<PdfCharacter>& characters,
                                   const std::vector<PdfTableLine>& lines,
                                   const std::vector<PdfBox>& rules);

}  // namespace zorvane
