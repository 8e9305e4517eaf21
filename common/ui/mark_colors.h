// In which colours a difference is painted.
#pragma once

#include <cstdint>

#include "common/ui/color_tokens.h"

namespace zorvane {

enum class LookMark : std::uint8_t { Changed, Deleted, Added, Moved };

/// Colours as settings keep them: 24 bits, red lowest.
struct StoredColors {
    std::int32_t fore = 0;
    std::int32_t back = 0xFFFFFF;
};

struct PaintedMark {
    QColor text;      ///< of marked words
    QColor word;      ///< their ground
    QColor row_text;  ///< of a paragraph that is marked as a whole
    QColor row;       ///< ground of the paragraph
    friend bool operator==(const PaintedMark&, const PaintedMark&) = default;
};

/// What the settings hold for a mark that nobody has changed: red, blue and green on white.
StoredColors DefaultColors(LookMark kind);

QColor FromStored(std::int32_t color);
std::int32_t ToStored(const QColor& color);

/// A default is painted by the token of its kind, a colour that somebody chose as chosen, but
/// lighter or darker as far as it takes to be read on the ground it stands on. In high contrast
/// nothing stored counts.
PaintedMark PaintedColors(const ColorTokens& tokens, LookMark kind, const StoredColors& stored);
/// The colours of a mark with its defaults.
PaintedMark PaintedColors(const ColorTokens& tokens, LookMark kind);

}  // namespace zorvane
