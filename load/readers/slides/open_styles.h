// Styles of OpenDocument presentations: what they say of text, paragraphs and lists.
// Source: the public format description OpenDocument 1.3, part 3 (16, 17, 20).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "compare/document/rich_text.h"
#include "load/readers/slides/slide_styles.h"
#include "load/readers/xml_part.h"

namespace zorvane {

/// A length such as "2.5cm" or "12pt" in EMU; 0 for what is none.
double OpenLength(std::string_view text);
/// The same in twips, bounded to what a page can hold.
std::int32_t OpenTwips(std::string_view text);

class OpenStyles {
  public:
    /// `automatic` are the styles of the part that uses them, `common` those of the document; what
    /// stands first counts. Borrowed.
    OpenStyles(const pugi::xml_node& automatic, const pugi::xml_node& common,
               const pugi::xml_node& fonts);

    /// Puts the style and what it inherits on top. Unknown names do nothing.
    void ApplyText(std::string_view family, std::string_view name, SlideRunStyle& style) const;
    void ApplyParagraph(std::string_view family, std::string_view name,
                        ParagraphFormat& format) const;
    /// The level's style (from 0) of a list style, or an empty node.
    pugi::xml_node ListLevel(std::string_view list_style, std::int32_t level) const;
    pugi::xml_node Style(std::string_view family, std::string_view name) const;
    /// The style of an outline's level, "x-outline3" for a shape whose style descends from
    /// "x-outline1"; empty when it does not.
    std::string OutlineStyle(std::string_view shape_style, std::int32_t level) const;

  private:
    void Add(const pugi::xml_node& styles);
    bool ApplyFont(std::string_view name, std::string_view value, CharFormat& format) const;
    void ApplyTextProperties(const pugi::xml_node& properties, SlideRunStyle& style) const;
    template <class Visit>
    void ForChain(std::string_view family, std::string_view name, Visit visit) const;

    std::unordered_map<std::string, pugi::xml_node> styles_;
    std::unordered_map<std::string, std::string> fonts_;
};

/// Puts the properties of paragraphs on top.
void ApplyOpenParagraph(const pugi::xml_node& properties, ParagraphFormat& format);

}  // namespace zorvane
