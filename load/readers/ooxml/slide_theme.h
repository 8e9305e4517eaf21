// Fonts and colours of a deck's theme. Source: the public format description ECMA-376 part 1, 20.1.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compare/document/rich_text.h"
#include "load/readers/container/style_parts.h"

namespace zorvane {

/// "4472C4" as a colour.
std::optional<Color> ColorFromHex(std::string_view text);

class SlideTheme {
  public:
    SlideTheme() = default;
    /// `theme` is the root of a theme part; an empty node leaves black, white and no fonts.
    explicit SlideTheme(const pugi::xml_node& theme);

    /// A typeface as a run names it: "+mj-lt" and "+mn-lt" are those of the theme.
    std::string_view Font(std::string_view typeface) const;
    /// Which theme colour "tx1", "bg1", ... mean (attributes of a colour map).
    void SetColorMap(const pugi::xml_node& color_map);
    /// The colour of an element that holds one (srgbClr, schemeClr, sysClr, prstClr), such as a
    /// solid fill. Nothing when there is none that is known.
    std::optional<Color> ColorIn(const pugi::xml_node& holder) const;
    /// A theme colour by its name, "hlink".
    std::optional<Color> SchemeColor(std::string_view name) const;

  private:
    std::string major_font_;
    std::string minor_font_;
    std::vector<std::pair<std::string, Color>> colors_;
    std::vector<std::pair<std::string, std::string>> color_map_;
};

}  // namespace zorvane
