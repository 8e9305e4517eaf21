// Tables whose lines are drawn. Each is one block, taken out before any column is sought.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/pdf/pdf_page.h"
#include "load/readers/pdf/pdf_rows.h"
#include "load/readers/pdf/pdf_rule_lines.h"

namespace zorvane {

struct PdfGrid {
    PdfBox box;
    std::vector<float> columns;        ///< edges from left to right; empty without vertical lines
    std::vector<PdfRuleLine> across;   ///< its horizontal lines, from top to bottom
    std::vector<PdfSegment> segments;  ///< what stands in it, by rows and from left to right
};

/// Takes the segments of ruled tables out of `segments`; one that stands for each table, with the
/// index of its grid, comes in their place.
std::vector<PdfGrid> TakeGrids(const PdfPage& page, std::vector<PdfSegment>& segments);

}  // namespace zorvane
