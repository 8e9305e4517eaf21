// The order in which the segments of a page are read.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/pdf_rows.h"

namespace zorvane {

/// How readily a gap down the page counts as a gutter between columns. A table has gaps too, but
/// its cells do not fill their columns.
struct PdfColumnRules {
    std::size_t least_rows = 4;  ///< on each side
    float least_fill = 0.5F;     ///< median width of a segment, as a share of its column
    float least_width = 6;       ///< median width of a segment, in font sizes
};
inline constexpr PdfColumnRules kOneColumnRules{5, 0.55F, 7};
/// Rows of the whole page.
inline constexpr PdfColumnRules kNoColumnsRules{1'000'000, 2, 0};
inline constexpr PdfColumnRules kManyColumnsRules{2, 0.3F, 3};

/// A flow of lines: one column, or what spans them. Segments of one row are neighbours.
struct PdfRegion {
    std::vector<std::uint32_t> segments;  ///< in order of reading
    float x0 = 0;
    float x1 = 0;
};

std::vector<PdfRegion> RegionsOf(const std::vector<PdfSegment>& segments,
                                 const PdfColumnRules& rules);

}  // namespace zorvane
