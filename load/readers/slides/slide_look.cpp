#include "load/readers/slides/slide_look.h"

namespace zorvane {
namespace {

// A white page swallows what is this light (0 to 255, weighed as the eye does).
bool IsNearlyWhite(Color color) {
    const std::int32_t red = color.value & 0xFF;
    const std::int32_t green = (color.value >> 8) & 0xFF;
    const std::int32_t blue = (color.value >> 16) & 0xFF;
    return red * 30 + green * 59 + blue * 11 > 225 * 100;
}

}  // namespace

CharFormat PlainSlideFormat() {
    CharFormat format;
    format.font = FontName("Arial");
    format.half_points = 36;
    return format;
}

void SetVisibleColor(Color color, CharFormat& format) {
    format.fore_color.reset();
    if (color.value != 0 && !IsNearlyWhite(color))
        format.fore_color = color;
}

}  // namespace zorvane
