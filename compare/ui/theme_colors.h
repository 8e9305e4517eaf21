// The colours of text views in the look in force.
#pragma once

#include "common/ui/color_tokens.h"
#include "compare/ui/view_colors.h"
#include "options/compare_file_options.h"

namespace zorvane {

/// With marks as they come.
ViewColors ViewColorsOf(const ColorTokens& tokens);
/// Marks are painted as the options store them; a default by the token of its kind.
ViewColors ViewColorsOf(const ColorTokens& tokens, const clsCompareFileOptions& options);
/// For a text that has its marks as formats, in the stored colours.
ViewColors MarkedTextColorsOf(const ColorTokens& tokens, const clsCompareFileOptions& options);

}  // namespace zorvane
