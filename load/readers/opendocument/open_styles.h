// The styles of an OpenDocument file, resolved through their parents: what they say of text, of
// paragraphs and of lists. Source: the public format description OpenDocument 1.3, part 3 (16, 17,
// 20).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>

#include "compare/document/rich_text.h"
#include "load/readers/sink/list_numbers.h"

namespace zorvane {

struct OpenChars {
    CharFormat format;
    bool hidden = false;
    bool capitals = false;  ///< shown in upper case
    friend bool operator==(const OpenChars&, const OpenChars&) = default;
};

struct OpenParagraphStyle {
    ParagraphFormat format;
    OpenChars chars;
    std::string list_style;
    std::string master_page;
};

struct OpenListLevel {
    enum class Kind : std::uint8_t { None, Number, Bullet };
    Kind kind = Kind::None;
    NumberStyle number = NumberStyle::None;
    bool repeat_letters = false;
    std::string prefix;
    std::string suffix;
    std::string bullet;
    std::string pattern;  ///< such as "%1%.%2%."; empty: by prefix, levels and suffix
    std::int32_t shown_levels = 1;
    std::int32_t start = 1;
    std::optional<std::int32_t> left_indent;
    std::optional<std::int32_t> first_line_indent;
};

inline constexpr std::size_t kListLevels = 10;
using OpenListStyle = std::array<OpenListLevel, kListLevels>;

/// Length in twips: "1.27cm", "12pt"; nothing for a percentage.
std::optional<std::int32_t> OpenLength(std::string_view text);

/// What text may be coloured in. A slide's background does not come along, so that a colour which a
/// white page would swallow is left out there.
enum class OpenColors : std::uint8_t { AsTold, SeenOnWhite };

class OpenStyles {
  public:
    explicit OpenStyles(OpenColors colors = OpenColors::AsTold) : colors_(colors) {}

    /// The children of an element that holds styles; later ones win. The nodes are borrowed.
    void Add(const pugi::xml_node& styles);
    void AddFonts(const pugi::xml_node& declarations);

    const OpenParagraphStyle& Paragraph(std::string_view name);
    /// Changes `chars` to what a style makes of them, one of characters where no family is named.
    void ApplyText(std::string_view name, OpenChars& chars) const {
        ApplyText("text", name, chars);
    }
    void ApplyText(std::string_view family, std::string_view name, OpenChars& chars) const;
    void ApplyParagraph(std::string_view family, std::string_view name,
                        ParagraphFormat& format) const;
    bool HasText(std::string_view name) const;
    const OpenListStyle* List(std::string_view name);
    const OpenListStyle& Outline();
    /// The children "header", "footer", ... of a master page; empty when unknown.
    pugi::xml_node MasterPage(std::string_view name) const;
    std::string_view FirstMasterPage() const { return first_master_; }
    void AddMasterPages(const pugi::xml_node& master_styles);

    /// An empty node for a name that is not known.
    pugi::xml_node Find(std::string_view family, std::string_view name) const;
    /// The style of an outline's level (from 0), "x-outline3" for a shape whose style descends from
    /// "x-outline1"; empty when it does not.
    std::string PresentationOutline(std::string_view shape_style, std::size_t level) const;

  private:
    using Nodes = std::unordered_map<std::string, pugi::xml_node>;
    /// Calls `apply` for a style and its parents, the farthest first.
    template <class Apply>
    void Inherit(std::string_view family, std::string_view name, Apply&& apply) const;
    void ApplyChars(const pugi::xml_node& style, OpenChars& chars) const;
    OpenListStyle ReadListStyle(const pugi::xml_node& style) const;
    void ApplyFont(const pugi::xml_node& properties, CharFormat& format) const;

    OpenColors colors_;
    Nodes styles_;
    Nodes list_styles_;
    Nodes defaults_;
    Nodes masters_;
    pugi::xml_node outline_style_;
    std::string first_master_;
    std::unordered_map<std::string, std::string> fonts_;
    std::unordered_map<std::string, OpenParagraphStyle> paragraphs_;
    std::unordered_map<std::string, OpenListStyle> lists_;
    std::optional<OpenListStyle> outline_;
};

}  // namespace zorvane
