// The order in which the segments of a page are read.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/pdf/pdf_rows.h"

namespace zorvane {

/// How readily a gap down the page counts as a gutter between columns. A table has gaps too, but
/// its cells do not fill their columns.
struct PdfColumnRules {
    std::size_t least_full_rows = 5;  ///< on each side, rows that fill most of their column
    std::size_t share_of_rows = 4;    ///< one row in so many is full; figures stand in columns too
    float least_width = 7;            ///< of a full row, in font sizes
};
inline constexpr PdfColumnRules kOneColumnRules{5, 3, 7};
inline constexpr PdfColumnRules kManyColumnsRules{3, 5, 4};
/// Rows of the whole page.
inline constexpr PdfColumnRules kNoColumnsRules{1'000'000, 1, 0};

/// A flow of lines: one column, or what spans them. Segments of one row are neighbours.
struct PdfRegion {
    std::vector<std::uint32_t> segments;  ///< in order of reading
    float x0 = 0;
    float x1 = 0;
};

std::vector<PdfRegion> RegionsOf(const std::vector<PdfSegment>& segments,
                                 const PdfColumnRules& rules);

}  // namespace zorvane
