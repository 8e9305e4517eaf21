// Sizes that every window shares, in device-independent pixels at 100 %.
#pragma once

namespace zorvane::measures {

// Room: within a control, between controls, between groups, and at the edges.
inline constexpr int kTiny = 4;
inline constexpr int kSmall = 8;
inline constexpr int kMedium = 12;
inline constexpr int kLarge = 16;
inline constexpr int kColumnGap = 24;
inline constexpr int kWindowEdge = 16;
inline constexpr int kDialogEdge = 24;

inline constexpr int kControlHeight = 32;
inline constexpr int kBarControlHeight = 28;
inline constexpr int kMenuBarHeight = 34;
inline constexpr int kToolBarHeight = 48;
inline constexpr int kFileRowHeight = 44;
inline constexpr int kTabHeight = 36;
inline constexpr int kGridRowHeight = 28;
inline constexpr int kListRowHeight = 30;
inline constexpr int kStatusBarHeight = 28;
inline constexpr int kSmallestTarget = 24;

inline constexpr int kControlCorner = 6;
inline constexpr int kChipCorner = 4;
inline constexpr int kMenuCorner = 8;
inline constexpr int kCardCorner = 10;

inline constexpr int kHairline = 1;
inline constexpr int kFocusLine = 2;

inline constexpr int kIconSize = 16;
inline constexpr int kIndicatorSize = 16;

// Widths of dialogs: one value, a form, two columns.
inline constexpr int kNarrowDialog = 280;
inline constexpr int kFormDialog = 576;
inline constexpr int kWideDialog = 832;

// Below this width of a row its buttons show no captions.
inline constexpr int kCaptionsFrom = 700;

inline constexpr int kPaletteWidth = 600;
inline constexpr int kPaletteTop = 88;

// Sizes of type, as shares of the desktop's font.
inline constexpr double kSmallType = 0.9;
inline constexpr double kCardTitleType = 1.5;
inline constexpr double kStartTitleType = 2.0;

}  // namespace zorvane::measures
