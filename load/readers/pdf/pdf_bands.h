// A part of a page as one gutter would part it.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/pdf/pdf_rows.h"
#include "load/readers/pdf/pdf_sides.h"

namespace zorvane {

using PdfNumbers = std::vector<std::uint32_t>;  ///< of segments

/// A stretch of a part: two columns, or what is not.
struct PdfStretch {
    PdfNumbers segments;
    bool columns = false;
};

struct PdfParting {
    float gutter = 0;
    float worth = 0;                    ///< lines in columns, less what crosses between them
    std::vector<PdfStretch> stretches;  ///< from top to bottom
};

/// Parts the segments at a gutter: what crosses it, and a white stripe, parts what is above from
/// what is below. The worth is 0 where there are no columns.
PdfParting PartAt(const std::vector<PdfSegment>& segments, const PdfNumbers& part, float gutter,
                  const PdfSides& sides);

}  // namespace zorvane
