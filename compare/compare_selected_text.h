// The compare of what is selected in the two editors of a viewer, in a viewer of its own.
#pragma once

#include <functional>

#include "compare/compare_files_viewer.h"

namespace zorvane {

/// `new_viewer` makes and shows an empty viewer, or gives nullptr. Both selections go there with
/// their formats, and `viewer`'s options with them; nothing is loaded.
void CompareSelectedText(frmCompareFiles& viewer,
                         const std::function<frmCompareFiles*()>& new_viewer);

}  // namespace zorvane
