// All differences of a compare over the height of a window.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "compare/engine/comparison.h"
#include "compare/view/paragraph_rows.h"

namespace zorvane {

enum class OverviewKind : std::uint8_t { Changed, Deleted, Added, Moved, Edited };

/// A part of a side's height, 0 to 1; of nothing where both are the same.
struct HeightShare {
    double begin = 0;
    double end = 0;
    friend bool operator==(const HeightShare&, const HeightShare&) = default;
};

struct OverviewMark {
    OverviewKind kind = OverviewKind::Changed;
    std::int32_t record = -1;  ///< the first of those that it stands for; -1: an edit
    PerSide<HeightShare> shares;
};

/// How far a paragraph's upper edge is from the top of its side, in any unit; the paragraph behind
/// the last one gives the whole height.
using HeightOfParagraph = std::function<double(Side side, ParagraphNumber number)>;

/// The marks in order. Neighbours of one kind that `least` of the height (a pixel's share) does not
/// part are one mark, so there are never many more than a window has pixels.
std::vector<OverviewMark> MakeOverview(const ParagraphRows& rows, const Comparison& comparison,
                                       const HeightOfParagraph& height, double least);
/// Each paragraph as high as the next.
std::vector<OverviewMark> MakeOverview(const ParagraphRows& rows, const Comparison& comparison,
                                       double least);

}  // namespace zorvane
