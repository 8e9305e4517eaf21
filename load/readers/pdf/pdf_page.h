// What a page of a PDF shows, as it was collected: characters with their places and styles, thin
// lines, links. The layout units work on this, without the library that reads PDF.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "compare/document/rich_text.h"

namespace zorvane {

/// A font as the file names it, without the prefix of a subset.
struct PdfFont {
    std::string name;
    bool bold = false;
    bool italic = false;
    friend bool operator==(const PdfFont&, const PdfFont&) = default;
};

/// Fonts and colours of a document; a character holds an index into `styles`.
struct PdfStyle {
    std::uint32_t font = 0;
    Color color;
    friend bool operator==(const PdfStyle&, const PdfStyle&) = default;
};
struct PdfStyles {
    std::vector<PdfFont> fonts;
    std::vector<PdfStyle> styles;
};

/// Why nobody sees a character.
enum class PdfHidden : std::uint8_t {
    No,
    InvisibleMode,  ///< drawn in the invisible mode, but not as the text of a scanned page
    Unseen,  ///< in the colour of its ground, covered, off the page, clipped away, transparent
};

/// The direction in which a text runs; each has a frame of its own, in which `x` grows along the
/// line and `y` from line to line.
enum class PdfDirection : std::uint8_t { Right, Down, Left, Up, Slanting };
inline constexpr std::size_t kPdfDirections = 5;

/// Distances in points.
struct PdfCharacter {
    char32_t letter = 0;
    float x0 = 0;
    float x1 = 0;
    float baseline = 0;
    float size = 0;
    std::uint32_t style = 0;
    PdfDirection direction = PdfDirection::Right;
    PdfHidden hidden = PdfHidden::No;
};

struct PdfBox {
    float x0 = 0;
    float y0 = 0;
    float x1 = 0;
    float y1 = 0;
};

struct PdfLink {
    PdfBox box;
    std::string address;
};

/// In the order in which the page draws it; the origin is the top left corner.
struct PdfPage {
    float width = 0;
    float height = 0;
    std::vector<PdfCharacter> characters;
    std::vector<PdfBox> rules;     ///< thin horizontal lines
    std::vector<PdfBox> uprights;  ///< thin vertical lines
    std::vector<PdfLink> links;
};

}  // namespace zorvane
