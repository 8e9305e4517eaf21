// The two columns that the file row, the editors and the result share.
#pragma once

#include <algorithm>
#include <cmath>

#include "compare/ui/connector_strip.h"
#include "compare/ui/difference_overview.h"

namespace zorvane {

/// In pixels from the window's left edge.
struct PaneColumns {
    int left_end = 0;
    int right_begin = 0;
    int right_end = 0;  ///< the overview stands behind it

    static constexpr int kLeastColumn = 160;

    /// `ratio` is the share of the original side.
    static PaneColumns Of(int width, double ratio) {
        const int inner = std::max(0, width - kOverviewWidth);
        const int both = std::max(0, inner - kStripWidth);
        const int least = std::min(kLeastColumn, both / 2);
        const int left = std::clamp(static_cast<int>(both * ratio), least, both - least);
        return {left, left + kStripWidth, inner};
    }
    /// The share that puts the middle of the strip at `x`; near the middle it is one half.
    static double RatioAt(int width, int x) {
        constexpr double kMiddle = 0.5;
        constexpr double kSnap = 0.015;
        const int both = std::max(1, width - kOverviewWidth - kStripWidth);
        const double ratio = (x - kStripWidth * 0.5) / both;
        return std::abs(ratio - kMiddle) < kSnap ? kMiddle : std::clamp(ratio, 0.1, 0.9);
    }
};

}  // namespace zorvane
