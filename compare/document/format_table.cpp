#include "compare/document/format_table.h"

#include <array>
#include <optional>
#include <xxhash.h>

namespace zorvane {
namespace {

std::uint64_t BitsOf(std::int32_t value) {
    return static_cast<std::uint32_t>(value);
}

std::uint64_t BitsOf(const std::optional<Color>& color) {
    return color ? BitsOf(color->value) : ~std::uint64_t{0};
}

template <std::size_t kCount>
std::uint64_t Hash(const std::array<std::uint64_t, kCount>& numbers, std::uint64_t seed) {
    return XXH3_64bits_withSeed(numbers.data(), sizeof numbers, seed);
}

}  // namespace

// Field by field: the bytes between fields may hold anything.
std::uint64_t HashOf(const CharFormat& format) {
    const std::uint64_t flags = (format.bold ? 1U : 0U) | (format.italic ? 2U : 0U) |
                                (format.strikeout ? 4U : 0U) | (format.hidden ? 8U : 0U) |
                                BitsOf(static_cast<std::int32_t>(format.underline)) << 8U |
                                BitsOf(static_cast<std::int32_t>(format.baseline)) << 16U;
    const std::string_view font = format.font.view();
    return Hash(std::array{flags, BitsOf(format.half_points), BitsOf(format.fore_color),
                           BitsOf(format.back_color)},
                XXH3_64bits(font.data(), font.size()));
}

std::uint64_t HashOf(const ParagraphFormat& format) {
    const std::uint64_t flags = (format.right_to_left ? 1U : 0U) |
                                (format.line_spacing_multiple ? 2U : 0U) |
                                BitsOf(static_cast<std::int32_t>(format.alignment)) << 8U;
    std::uint64_t hash =
        Hash(std::array{flags, BitsOf(format.left_indent), BitsOf(format.right_indent),
                        BitsOf(format.first_line_indent), BitsOf(format.space_before),
                        BitsOf(format.space_after), BitsOf(format.line_spacing)},
             format.tabs.size());
    for (const TabStop& tab : format.tabs)
        hash =
            Hash(std::array{BitsOf(tab.twips), BitsOf(static_cast<std::int32_t>(tab.kind))}, hash);
    return hash;
}

}  // namespace zorvane
