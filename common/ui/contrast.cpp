#include "common/ui/contrast.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace zorvane {

namespace {

// The curve of sRGB: screens give less light for a value than the value says.
double LightOf(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double LuminanceOf(const QColor& color) {
    return 0.2126 * LightOf(color.redF()) + 0.7152 * LightOf(color.greenF()) +
           0.0722 * LightOf(color.blueF());
}

QColor WithLightness(const QColor& color, double lightness) {
    float hue = 0;
    float saturation = 0;
    float own = 0;
    color.toHsl().getHslF(&hue, &saturation, &own);
    // Through 8 bits a channel, since that is what is painted.
    return QColor(
        QColor::fromHslF(std::max(hue, 0.0F), saturation, static_cast<float>(lightness)).rgb());
}

// The lightness nearest to `from` on the way to `to` (0 or 1) that reaches `wanted`.
std::optional<double> FirstThatReaches(const QColor& color, const QColor& ground, double wanted,
                                       double from, double to) {
    if (Contrast(WithLightness(color, to), ground) < wanted)
        return std::nullopt;
    // On this way the contrast may fall before it grows, where it crosses the ground's luminance:
    // but its own start does not reach, so the last point that does not is what is looked for.
    double misses = from;
    double reaches = to;
    for (int step = 0; step < 20; ++step) {
        const double middle = (misses + reaches) / 2;
        (Contrast(WithLightness(color, middle), ground) < wanted ? misses : reaches) = middle;
    }
    return reaches;
}

}  // namespace

double Contrast(const QColor& one, const QColor& other) {
    const double first = LuminanceOf(one);
    const double second = LuminanceOf(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor MovedToContrast(const QColor& color, const QColor& ground, double wanted) {
    if (Contrast(color, ground) >= wanted)
        return color;
    const double own = color.lightnessF();
    const std::optional<double> darker = FirstThatReaches(color, ground, wanted, own, 0);
    const std::optional<double> lighter = FirstThatReaches(color, ground, wanted, own, 1);
    if (!darker && !lighter)
        return Contrast(Qt::black, ground) > Contrast(Qt::white, ground) ? Qt::black : Qt::white;
    if (!lighter || (darker && own - *darker <= *lighter - own))
        return WithLightness(color, *darker);
    return WithLightness(color, *lighter);
}

}  // namespace zorvane
