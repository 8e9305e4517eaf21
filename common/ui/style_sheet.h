// The style sheet of windows and dialogs, made from the tokens.
#pragma once

#include <QString>

#include "common/ui/color_tokens.h"

namespace zorvane {

/// What a widget is for, set as its property "look"; the sheet's selectors ask for it.
namespace look {
inline constexpr const char* kProperty = "look";
inline constexpr const char* kPrimary = "primary";
inline constexpr const char* kFlat = "flat";
inline constexpr const char* kIcon = "icon";
inline constexpr const char* kCaption = "caption";
inline constexpr const char* kHeading = "heading";
inline constexpr const char* kBeside = "beside";
inline constexpr const char* kHint = "hint";
inline constexpr const char* kError = "error";
inline constexpr const char* kKeys = "keys";
}  // namespace look

/// Names buttons, tool tips, scroll bars, headers and labels by their look alone, so that nothing
/// in it reaches a view of text, and has no rule for rows, which would hide their models' grounds.
QString StyleSheetOf(const ColorTokens& tokens, double font_points);

}  // namespace zorvane
