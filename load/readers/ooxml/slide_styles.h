// How text on a slide looks: what a text style, a paragraph and a run say, one on top of the other.
// Source: ECMA-376 part 1, 21.1.2.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compare/document/rich_text.h"
#include "load/readers/ooxml/slide_theme.h"
#include "load/readers/slides/slide_look.h"

namespace zorvane {

inline constexpr std::int32_t kSlideLevels = 9;

struct SlideBullet {
    enum class Kind : std::uint8_t { None, Character, Number };
    Kind kind = Kind::None;
    std::string text;    ///< of a character bullet
    std::string font;    ///< its font, empty for that of the text
    std::string scheme;  ///< of a number: "arabicPeriod", ...
    std::int32_t start = 1;
    friend bool operator==(const SlideBullet&, const SlideBullet&) = default;
};

struct SlideRunStyle {
    CharFormat format;
    bool capitals = false;    ///< shown in upper case
    std::string symbol_font;  ///< for characters of a private range
    friend bool operator==(const SlideRunStyle&, const SlideRunStyle&) = default;
};

struct SlideLevelStyle {
    SlideRunStyle run;
    ParagraphFormat paragraph;
    SlideBullet bullet;
};

/// Text on a slide before anything is told of it: 18 points, no bullets.
SlideLevelStyle PlainSlideStyle();
/// Puts run properties (rPr, defRPr) on top. A colour that a white page would swallow is left out,
/// since the background of a slide does not come along; black is the reader's own colour.
void ApplyRun(const pugi::xml_node& properties, const SlideTheme& theme, SlideRunStyle& style);
/// Puts paragraph properties (pPr, lvl1pPr) on top, the run properties in them included.
void ApplyParagraph(const pugi::xml_node& properties, const SlideTheme& theme,
                    SlideLevelStyle& style);
/// Sets the colour of a shape's style, as `SetVisibleColor`.
void ApplyColor(const pugi::xml_node& holder, const SlideTheme& theme, CharFormat& format);

/// Lists of level styles (lstStyle, bodyStyle, ...) from the most general to the nearest. Among
/// them the font of a shape's style (fontRef), which gives a colour; empty nodes are passed over.
using SlideStyleChain = std::vector<pugi::xml_node>;
/// `level` from 0.
void ApplyChain(const SlideStyleChain& chain, std::int32_t level, const SlideTheme& theme,
                SlideLevelStyle& style);

}  // namespace zorvane
