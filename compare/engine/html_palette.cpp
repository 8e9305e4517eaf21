#include "compare/engine/html_palette.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace zorvane {
namespace {

// The curve of the sRGB colour space.
double Linear(int part) {
    const double value = part / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Rgb color) {
    return 0.2126 * Linear(color.red) + 0.7152 * Linear(color.green) + 0.0722 * Linear(color.blue);
}

}  // namespace

std::string HexOf(Rgb color) {
    return fmt::format("#{:02x}{:02x}{:02x}", color.red, color.green, color.blue);
}

double ContrastOf(Rgb text, Rgb ground) {
    constexpr double kFlare = 0.05;
    const double one = Luminance(text) + kFlare;
    const double other = Luminance(ground) + kFlare;
    return std::max(one, other) / std::min(one, other);
}

Rgb ReadableOn(Rgb color, Rgb ground) {
    constexpr int kSteps = 64;
    // Towards the end that is farther from the ground.
    const int end = ContrastOf({0, 0, 0}, ground) > ContrastOf({255, 255, 255}, ground) ? 0 : 255;
    const auto moved = [&](int part, int step) { return part + (end - part) * step / kSteps; };
    Rgb readable = color;
    for (int step = 1; step <= kSteps && ContrastOf(readable, ground) < kLeastContrast; ++step)
        readable = {moved(color.red, step), moved(color.green, step), moved(color.blue, step)};
    return readable;
}

}  // namespace zorvane
