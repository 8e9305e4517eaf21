// The colours of the HTML report: one table of tokens, light and dark, and how a colour that the
// user chose is made readable.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};
constexpr Rgb RgbOfHex(std::int32_t hex) {
    return {(hex >> 16) & 0xFF, (hex >> 8) & 0xFF, hex & 0xFF};
}
/// Of a stored colour, which has red in the low byte.
constexpr Rgb RgbOfStored(std::int32_t color) {
    return {color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF};
}
/// "#1a2b3c".
std::string HexOf(Rgb color);

/// A custom property of the page's style; 0xRRGGBB.
struct ColorToken {
    std::string_view name;
    std::int32_t light;
    std::int32_t dark;
};
inline constexpr auto kColorTokens = std::to_array<ColorToken>({
    {"window", 0xF1F3F5, 0x202429},       {"paper", 0xFFFFFF, 0x1A1D21},
    {"text", 0x1D242B, 0xE7EAED},         {"text2", 0x4F5A66, 0xB7C0C9},
    {"muted", 0x626D79, 0x97A1AB},        {"line", 0xD9DEE3, 0x393F46},
    {"edge", 0x818A94, 0x77818C},         {"changed", 0x9A3600, 0xFFA974},
    {"changed-word", 0xFDE3D0, 0x5A2C10}, {"changed-row", 0xFEF5EE, 0x2A211C},
    {"deleted", 0x1A4E9B, 0x94C0FF},      {"deleted-word", 0xD6E4F9, 0x1D3860},
    {"deleted-row", 0xF1F6FD, 0x1B2431},  {"added", 0x00664D, 0x82E6C0},
    {"added-word", 0xCFEEDF, 0x11452F},   {"added-row", 0xEFF9F4, 0x192721},
    {"moved", 0x414C58, 0xC6CFD8},        {"moved-word", 0xE2E6EA, 0x3A434C},
    {"moved-row", 0xF6F7F9, 0x22272C},    {"hatch", 0xF5F7F8, 0x1F2327},
    {"hatch-line", 0xDCE1E6, 0x30363D},
});
constexpr const ColorToken& TokenNamed(std::string_view name) {
    for (const ColorToken& token : kColorTokens) {
        if (token.name == name)
            return token;
    }
    return kColorTokens[0];
}

/// Contrast ratio as accessibility guidelines define it: 1 to 21.
double ContrastOf(Rgb text, Rgb ground);

/// What text needs at least.
inline constexpr double kLeastContrast = 4.5;

/// `color` moved along its own lightness, away from the ground, until it can be read on it.
Rgb ReadableOn(Rgb color, Rgb ground);

}  // namespace zorvane
