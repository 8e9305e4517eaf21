// The order in which the segments of a page are read: white space proposes where columns part, the
// order of drawing decides, and lines that were broken because the next word had no room overrule
// both.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/pdf/pdf_rows.h"
#include "load/readers/pdf/pdf_sides.h"

namespace zorvane {

/// A flow of lines: one column, or what spans them. Segments of one row are neighbours.
struct PdfRegion {
    std::vector<std::uint32_t> segments;  ///< in order of reading
    float x0 = 0;
    float x1 = 0;
};

std::vector<PdfRegion> RegionsOf(const std::vector<PdfCharacter>& characters,
                                 const std::vector<PdfSegment>& segments,
                                 const std::vector<PdfBox>& rules, PdfColumnSense sense);

}  // namespace zorvane
