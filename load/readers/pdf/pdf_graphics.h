// Places and colours of what poppler draws, in points from the top left corner of the page. Only
// for the units that read PDF; it includes poppler's headers.
#pragma once

#include <GfxState.h>

#include "load/readers/pdf/pdf_page.h"

namespace zorvane {

/// Points; what lies farther away is on no page.
inline constexpr double kLargestPlace = 2e6;

/// False for what is no number, too.
bool IsPlace(double value);

inline float Narrow(double value) {
    return static_cast<float>(value);
}

Color ColorOf(const GfxRGB& rgb);
bool IsWhite(Color color);

PdfBox BoxOf(double x0, double y0, double x1, double y1);
PdfBox Common(const PdfBox& a, const PdfBox& b);
PdfBox ClipOf(const GfxState& state);
PdfBox BoxOfPath(const GfxState& state, const GfxSubpath& path);

/// Whether a path is a rectangle whose sides are those of the page.
bool IsUpright(const GfxState& state, const GfxSubpath& path);

}  // namespace zorvane
