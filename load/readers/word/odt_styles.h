// The styles of an OpenDocument text, resolved through their parents. Source: the public format
// description ODF 1.3, part 3.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>

#include "compare/document/rich_text.h"
#include "load/readers/list_numbers.h"

namespace zorvane {

struct OdtChars {
    CharFormat format;
    bool hidden = false;
    friend bool operator==(const OdtChars&, const OdtChars&) = default;
};

struct OdtParagraph {
    ParagraphFormat format;
    OdtChars chars;
    std::string list_style;
    std::string master_page;
};

struct OdtListLevel {
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
using OdtListStyle = std::array<OdtListLevel, kListLevels>;

/// Length in twips: "1.27cm", "12pt"; nothing for a percentage.
std::optional<std::int32_t> OdtLength(std::string_view text);

class OdtStyles {
  public:
    /// The children of an element that holds styles; later ones win. The nodes are borrowed.
    void Add(const pugi::xml_node& styles);
    void AddFonts(const pugi::xml_node& declarations);

    const OdtParagraph& Paragraph(std::string_view name);
    /// Changes `chars` to what a style of characters makes of them.
    void ApplyText(std::string_view name, OdtChars& chars) const;
    bool HasText(std::string_view name) const;
    const OdtListStyle* List(std::string_view name);
    const OdtListStyle& Outline();
    /// The children "header", "footer", ... of a master page; empty when unknown.
    pugi::xml_node MasterPage(std::string_view name) const;
    std::string_view FirstMasterPage() const { return first_master_; }
    void AddMasterPages(const pugi::xml_node& master_styles);

  private:
    using Nodes = std::unordered_map<std::string, pugi::xml_node>;
    pugi::xml_node Find(std::string_view family, std::string_view name) const;
    /// Calls `apply` for a style and its parents, the farthest first.
    template <class Apply>
    void Inherit(std::string_view family, std::string_view name, Apply&& apply) const;
    void ApplyChars(const pugi::xml_node& style, OdtChars& chars) const;
    OdtListStyle ReadListStyle(const pugi::xml_node& style) const;
    void ApplyFont(const pugi::xml_node& properties, CharFormat& format) const;

    Nodes styles_;
    Nodes list_styles_;
    Nodes defaults_;
    Nodes masters_;
    pugi::xml_node outline_style_;
    std::string first_master_;
    std::unordered_map<std::string, std::string> fonts_;
    std::unordered_map<std::string, OdtParagraph> paragraphs_;
    std::unordered_map<std::string, OdtListStyle> lists_;
    std::optional<OdtListStyle> outline_;
};

}  // namespace zorvane
