// Paper and margins.
#pragma once

#include <string>

namespace zorvane {

/// Twips. A4 at first.
struct PageSetup {
    double width = 11906;
    double height = 16838;
    double left = 720;
    double top = 720;
    double right = 720;
    double bottom = 720;

    double TextWidth() const { return width - left - right; }
    double TextHeight() const { return height - top - bottom; }
};

}  // namespace zorvane
