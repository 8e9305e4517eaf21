#include "load/readers/ooxml/slide_theme.h"

#include <algorithm>
#include <cmath>

#include "common/base/parse_number.h"

namespace zorvane {
namespace {

constexpr double kWhole = 100'000;  // a percentage is given in thousandths

struct Rgb {
    double red = 0;  // 0 to 1
    double green = 0;
    double blue = 0;
};

std::optional<Color> FromPresetName(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, std::int32_t>, 12> kNames = {
        {{"black", 0x000000},
         {"white", 0xFFFFFF},
         {"red", 0x0000FF},
         {"green", 0x008000},
         {"blue", 0xFF0000},
         {"yellow", 0x00FFFF},
         {"cyan", 0xFFFF00},
         {"magenta", 0xFF00FF},
         {"gray", 0x808080},
         {"darkRed", 0x00008B},
         {"darkBlue", 0x8B0000},
         {"orange", 0x00A5FF}}};
    for (const auto& [known, value] : kNames) {
        if (known == name)
            return Color{value};
    }
    return std::nullopt;
}

Rgb Parts(Color color) {
    return {(color.value & 0xFF) / 255.0, ((color.value >> 8) & 0xFF) / 255.0,
            ((color.value >> 16) & 0xFF) / 255.0};
}

Color Joined(const Rgb& rgb) {
    const auto byte = [](double part) {
        return static_cast<std::int32_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
    };
    return Color{byte(rgb.red) | (byte(rgb.green) << 8) | (byte(rgb.blue) << 16)};
}

// Scales the lightness of the HSL model; hue and saturation stay.
Rgb WithLightness(const Rgb& rgb, double factor, double offset) {
    const double most = std::max({rgb.red, rgb.green, rgb.blue});
    const double least = std::min({rgb.red, rgb.green, rgb.blue});
    const double old_light = (most + least) / 2;
    const double light = std::clamp(old_light * factor + offset, 0.0, 1.0);
    // Colourfulness as HSL counts it, before and behind the change.
    const double old_room = 1 - std::abs(2 * old_light - 1);
    const double saturation = old_room > 0 ? (most - least) / old_room : 0;
    const double chroma = saturation * (1 - std::abs(2 * light - 1));
    const double span = most - least;
    const auto part = [&](double value) {
        const double share = span > 0 ? (value - least) / span : 0;
        return light - chroma / 2 + share * chroma;
    };
    return {part(rgb.red), part(rgb.green), part(rgb.blue)};
}

Rgb Mixed(const Rgb& rgb, double share, double other) {
    const auto part = [&](double value) { return value * share + other * (1 - share); };
    return {part(rgb.red), part(rgb.green), part(rgb.blue)};
}

Color Changed(Color color, const pugi::xml_node& definition) {
    Rgb rgb = Parts(color);
    ForStyleParts(definition, [&rgb](const pugi::xml_node& change) {
        const double value = NumberOf(Attribute(change, "val"), 0) / kWhole;
        if (Is(change, "lumMod"))
            rgb = WithLightness(rgb, value, 0);
        else if (Is(change, "lumOff"))
            rgb = WithLightness(rgb, 1, value);
        else if (Is(change, "tint"))
            rgb = Mixed(rgb, value, 1);
        else if (Is(change, "shade"))
            rgb = Mixed(rgb, value, 0);
    });
    return Joined(rgb);
}

}  // namespace

std::optional<Color> ColorFromHex(std::string_view text) {
    const auto number = ParseNumber<std::uint32_t>(text, 16);
    if (text.size() != 6 || !number)
        return std::nullopt;
    return Color{
        static_cast<std::int32_t>((*number >> 16) | (*number & 0xFF00) | ((*number & 0xFF) << 16))};
}

SlideTheme::SlideTheme(const pugi::xml_node& theme) {
    const pugi::xml_node elements = Child(theme, "themeElements");
    const pugi::xml_node fonts = Child(elements, "fontScheme");
    major_font_ = Attribute(Child(Child(fonts, "majorFont"), "latin"), "typeface");
    minor_font_ = Attribute(Child(Child(fonts, "minorFont"), "latin"), "typeface");
    ForStyleParts(Child(elements, "clrScheme"), [this](const pugi::xml_node& color) {
        if (const std::optional<Color> value = ColorIn(color))
            colors_.emplace_back(LocalName(color), *value);
    });
}

std::string_view SlideTheme::Font(std::string_view typeface) const {
    if (typeface.starts_with("+mj"))
        return major_font_;
    if (typeface.starts_with("+mn"))
        return minor_font_;
    return typeface;
}

void SlideTheme::SetColorMap(const pugi::xml_node& color_map) {
    color_map_.clear();
    ForStyleAttributes(color_map, [this](std::string_view name, std::string_view value) {
        color_map_.emplace_back(name, value);
    });
}

std::optional<Color> SlideTheme::SchemeColor(std::string_view name) const {
    for (const auto& [from, to] : color_map_) {
        if (from == name) {
            name = to;
            break;
        }
    }
    for (const auto& [known, color] : colors_) {
        if (known == name)
            return color;
    }
    return std::nullopt;
}

std::optional<Color> SlideTheme::ColorIn(const pugi::xml_node& holder) const {
    std::optional<Color> first;
    ForStyleParts(holder, [&](const pugi::xml_node& definition) {
        if (first)
            return;
        if (Is(definition, "srgbClr"))
            first = ColorFromHex(Attribute(definition, "val"));
        else if (Is(definition, "schemeClr"))
            first = SchemeColor(Attribute(definition, "val"));
        else if (Is(definition, "sysClr"))
            first = ColorFromHex(Attribute(definition, "lastClr"));
        else if (Is(definition, "prstClr"))
            first = FromPresetName(Attribute(definition, "val"));
        if (first)
            first = Changed(*first, definition);
    });
    return first;
}

}  // namespace zorvane
