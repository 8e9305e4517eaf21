// The properties of a style sheet that change what a page shows, and simple rules for elements.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "compare/document/rich_text.h"
#include "load/readers/sink/list_numbers.h"

namespace zorvane {

enum class CssDisplay : std::uint8_t { None, Inline, Block, ListItem, TableRow, TableCell };
enum class CssSpace : std::uint8_t { Normal, Pre, PreLine };
enum class CssTransform : std::uint8_t { None, Upper, Lower };
enum class CssMarker : std::uint8_t { None, Bullet, Number };

struct CssListType {
    CssMarker marker = CssMarker::Bullet;
    NumberStyle number = NumberStyle::None;
    std::string_view bullet;  ///< empty: by level
};

struct CssLength {
    enum class Unit : std::uint8_t { Twips, Em, Percent };
    double value = 0;
    Unit unit = Unit::Twips;
    /// `em_twips` is the size of the font, `whole_twips` what a percentage is of.
    std::int32_t Twips(double em_twips, double whole_twips) const;
};

/// What a rule or a style attribute sets; what is nothing stays as it is.
struct CssStyle {
    std::optional<Color> color;
    std::optional<std::optional<Color>> background;
    std::optional<FontName> font;
    std::optional<CssLength> font_size;
    std::optional<bool> bold;
    std::optional<bool> italic;
    std::optional<bool> underline;
    std::optional<bool> strikeout;
    std::optional<Baseline> baseline;
    std::optional<Alignment> alignment;
    std::optional<bool> right_to_left;
    std::optional<CssLength> left;
    std::optional<CssLength> text_indent;
    std::optional<CssDisplay> display;
    std::optional<bool> hidden;
    std::optional<CssSpace> space;
    std::optional<CssTransform> transform;
    std::optional<CssListType> list;
};

std::optional<Color> ParseColor(std::string_view text);
std::optional<CssLength> ParseLength(std::string_view text);
/// "color: red; font-weight: bold".
void ParseDeclarations(std::string_view text, CssStyle& style);

/// A class that elements have that lead somewhere.
inline constexpr std::string_view kLinkClass = ":link";

/// Rules with simple selectors: tag, .class, #id, tag.class, tag#id, *. Others are passed over.
class CssSheet {
  public:
    /// Adds the rules of a style element, without comments and of media of a screen.
    void Add(std::string_view css);
    bool Empty() const { return rules_.empty(); }
    /// Calls `apply` for each rule that fits, the strongest last. `tag` is in lower case.
    template <class Apply>
    void Match(std::string_view tag, std::string_view classes, std::string_view id,
               Apply&& apply) const {
        for (const std::size_t rule : Find(tag, classes, id))
            apply(rules_[rule]);
    }

  private:
    using Places = std::vector<std::size_t>;
    Places Find(std::string_view tag, std::string_view classes, std::string_view id) const;
    void AddBlock(std::string_view css, int depth);
    void AddRule(std::string_view selectors, std::string_view declarations);
    void Collect(const std::string& key, Places& places) const;

    std::vector<CssStyle> rules_;
    std::unordered_map<std::string, Places> by_selector_;
};

}  // namespace zorvane
