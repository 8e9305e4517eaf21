// The user's options as a compare takes them.
#pragma once

#include "compare/engine/compare_options.h"
#include "options/compare_file_options.h"

namespace zorvane {

/// A copy of everything that bears on the result, at every level.
CompareOptions CompareOptionsOf(const clsCompareFileOptions& options);

}  // namespace zorvane
