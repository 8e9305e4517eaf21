#include "load/readers/pdf/pdf_graphics.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace zorvane {

bool IsPlace(double value) {
    return std::fabs(value) < kLargestPlace;  // false for what is no number
}

Color ColorOf(const GfxRGB& rgb) {
    return {colToByte(rgb.r) | colToByte(rgb.g) << 8 | colToByte(rgb.b) << 16};
}

bool IsWhite(Color color) {
    constexpr std::int32_t kNearWhite = 0xFA;
    for (const int shift : {0, 8, 16}) {
        if (((color.value >> shift) & 0xFF) < kNearWhite)
            return false;
    }
    return true;
}

PdfBox BoxOf(double x0, double y0, double x1, double y1) {
    return {Narrow(std::min(x0, x1)), Narrow(std::min(y0, y1)), Narrow(std::max(x0, x1)),
            Narrow(std::max(y0, y1))};
}

PdfBox ClipOf(const GfxState& state) {
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    state.getClipBBox(&x0, &y0, &x1, &y1);
    return BoxOf(x0, y0, x1, y1);
}

PdfBox Common(const PdfBox& a, const PdfBox& b) {
    return {std::max(a.x0, b.x0), std::max(a.y0, b.y0), std::min(a.x1, b.x1), std::min(a.y1, b.y1)};
}

PdfBox BoxOfPath(const GfxState& state, const GfxSubpath& path) {
    PdfBox box{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
               std::numeric_limits<float>::lowest(), std::numeric_limits<float>::lowest()};
    for (int point = 0; point < path.getNumPoints(); ++point) {
        double x = 0;
        double y = 0;
        state.transform(path.getX(point), path.getY(point), &x, &y);
        box.x0 = std::min(box.x0, Narrow(x));
        box.y0 = std::min(box.y0, Narrow(y));
        box.x1 = std::max(box.x1, Narrow(x));
        box.y1 = std::max(box.y1, Narrow(y));
    }
    return box;
}

bool IsUpright(const GfxState& state, const GfxSubpath& path) {
    constexpr int kFewest = 4;
    constexpr int kMost = 5;  // the first corner again
    constexpr double kSlack = 0.3;
    if (path.getNumPoints() < kFewest || path.getNumPoints() > kMost)
        return false;
    for (int point = 0; point < path.getNumPoints(); ++point) {
        const int next = (point + 1) % path.getNumPoints();
        if (path.getCurve(point))
            return false;
        double dx = 0;
        double dy = 0;
        state.transformDelta(path.getX(next) - path.getX(point), path.getY(next) - path.getY(point),
                             &dx, &dy);
        if (std::fabs(dx) > kSlack && std::fabs(dy) > kSlack)
            return false;
    }
    return true;
}

}  // namespace zorvane
