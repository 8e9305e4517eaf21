// The two columns that the file row, the editors and the result share.
#pragma once

#include <algorithm>

#include "compare/ui/connector_strip.h"
#include "compare/ui/difference_overview.h"

namespace zorvane {

/// In pixels from the window's left edge.
struct PaneColumns {
    int left_end = 0;
    int right_begin = 0;
    int right_end = 0;  ///< the overview stands behind it
    static PaneColumns Of(int width) {
        const int inner = std::max(0, width - kOverviewWidth);
        const int half = std::max(0, (inner - kStripWidth) / 2);
        return {half, half + kStripWidth, inner};
    }
};

}  // namespace zorvane
