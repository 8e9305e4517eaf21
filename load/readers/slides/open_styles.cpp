#include "load/readers/slides/open_styles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace zorvane {
namespace {

constexpr std::size_t kMostParents = 32;  // a chain of styles may be a circle
constexpr double kFarthest = 31'680;      // twips; the widest that an RTF reader takes

std::string Key(std::string_view family, std::string_view name) {
    std::string key(family);
    key += '\n';
    key += name;
    return key;
}

double EmuOf(std::string_view unit) {
    constexpr std::array<std::pair<std::string_view, double>, 6> kUnits = {{{"cm", 360'000},
                                                                            {"mm", 36'000},
                                                                            {"in", 914'400},
                                                                            {"pt", 12'700},
                                                                            {"pc", 152'400},
                                                                            {"px", 9525}}};
    for (const auto& [name, size] : kUnits) {
        if (name == unit)
            return size;
    }
    return 0;
}

// Digits, a point, digits: the C library's reading depends on the locale.
double ReadDecimal(std::string_view& text) {
    constexpr std::size_t kLongest = 32;
    double value = 0;
    const std::size_t size =
        std::min(text.find_first_not_of("-.0123456789"), std::min(text.size(), kLongest));
    const auto [end, error] = std::from_chars(text.data(), text.data() + size, value);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc() ? value : 0;
}

std::int32_t PercentOf(std::string_view text, std::int32_t whole) {
    const double percent = ReadDecimal(text);
    return static_cast<std::int32_t>(std::clamp(whole * percent / 100, 1.0, 3276.0));
}

std::string_view WithoutQuotes(std::string_view name) {
    name = name.substr(0, name.find(','));
    while (name.starts_with('\'') || name.starts_with('"'))
        name.remove_prefix(1);
    while (name.ends_with('\'') || name.ends_with('"'))
        name.remove_suffix(1);
    return name;
}

Underline UnderlineOf(std::string_view style) {
    constexpr std::array<std::pair<std::string_view, Underline>, 6> kNames = {
        {{"none", Underline::None},
         {"dotted", Underline::Dotted},
         {"dash", Underline::Dash},
         {"dot-dash", Underline::DashDot},
         {"dot-dot-dash", Underline::DashDotDot},
         {"wave", Underline::Wave}}};
    for (const auto& [known, underline] : kNames) {
        if (known == style)
            return underline;
    }
    return style == "long-dash" ? Underline::LongDash : Underline::Single;
}

std::optional<Color> ColorOf(std::string_view text) {
    return text.starts_with('#') ? ColorFromHex(text.substr(1)) : std::nullopt;
}

Baseline BaselineOf(std::string_view position) {
    if (position.starts_with("super"))
        return Baseline::Superscript;
    if (position.starts_with("sub") || position.starts_with('-'))
        return Baseline::Subscript;
    const double shift = ReadDecimal(position);
    return shift > 0 ? Baseline::Superscript : Baseline::Normal;
}

Alignment AlignmentOf(std::string_view name) {
    if (name == "center")
        return Alignment::Center;
    if (name == "end" || name == "right")
        return Alignment::Right;
    return name == "justify" ? Alignment::Justify : Alignment::Left;
}

void ApplyDecoration(std::string_view name, std::string_view value, CharFormat& format) {
    if (name == "style:text-underline-style")
        format.underline = UnderlineOf(value);
    else if (name == "style:text-line-through-style")
        format.strikeout = value != "none";
    else if (name == "style:text-position")
        format.baseline = BaselineOf(value);
    else if (name == "fo:background-color")
        format.back_color = ColorOf(value);
    else if (const std::optional<Color> color = ColorOf(value); color && name == "fo:color")
        SetVisibleColor(*color, format);
}

}  // namespace

double OpenLength(std::string_view text) {
    const double value = ReadDecimal(text);
    return std::clamp(value * EmuOf(text), -1e12, 1e12);
}

std::int32_t OpenTwips(std::string_view text) {
    return static_cast<std::int32_t>(std::clamp(OpenLength(text) / 635, -kFarthest, kFarthest));
}

OpenStyles::OpenStyles(const pugi::xml_node& automatic, const pugi::xml_node& common,
                       const pugi::xml_node& fonts) {
    Add(automatic);
    Add(common);
    for (const pugi::xml_node& font : fonts.children()) {
        if (Is(font, "font-face"))
            fonts_.try_emplace(std::string(Attribute(font, "name")),
                               WithoutQuotes(Attribute(font, "font-family")));
    }
}

void OpenStyles::Add(const pugi::xml_node& styles) {
    for (const pugi::xml_node& style : styles.children()) {
        if (Is(style, "style"))
            styles_.try_emplace(Key(Attribute(style, "family"), Attribute(style, "name")), style);
        else if (Is(style, "default-style"))
            styles_.try_emplace(Key(Attribute(style, "family"), ""), style);
        else if (Is(style, "list-style"))
            styles_.try_emplace(Key("list", Attribute(style, "name")), style);
    }
}

pugi::xml_node OpenStyles::Style(std::string_view family, std::string_view name) const {
    const auto found = styles_.find(Key(family, name));
    return found == styles_.end() ? pugi::xml_node() : found->second;
}

template <class Visit>
void OpenStyles::ForChain(std::string_view family, std::string_view name, Visit visit) const {
    std::vector<pugi::xml_node> chain;
    while (!name.empty() && chain.size() < kMostParents) {
        const pugi::xml_node style = Style(family, name);
        if (!style)
            break;
        chain.push_back(style);
        name = Attribute(style, "parent-style-name");
    }
    std::reverse(chain.begin(), chain.end());
    for (const pugi::xml_node& style : chain)
        visit(style);
}

void OpenStyles::ApplyText(std::string_view family, std::string_view name,
                           SlideRunStyle& run) const {
    ForChain(family, name, [&](const pugi::xml_node& style) {
        ApplyTextProperties(StylePart(style, "text-properties"), run);
    });
}

void OpenStyles::ApplyParagraph(std::string_view family, std::string_view name,
                                ParagraphFormat& format) const {
    ForChain(family, name, [&format](const pugi::xml_node& style) {
        ApplyOpenParagraph(StylePart(style, "paragraph-properties"), format);
    });
}

bool OpenStyles::ApplyFont(std::string_view name, std::string_view value,
                           CharFormat& format) const {
    if (name == "fo:font-family") {
        format.font = FontName(WithoutQuotes(value));
    } else if (name == "style:font-name") {
        const auto font = fonts_.find(std::string(value));
        format.font = FontName(font == fonts_.end() ? value : font->second);
    } else if (name == "fo:font-size" && value.ends_with('%')) {
        format.half_points = PercentOf(value, format.half_points);
    } else if (name == "fo:font-size") {
        format.half_points =
            static_cast<std::int32_t>(std::clamp(OpenLength(value) / 6350, 1.0, 3276.0));
    } else {
        return false;
    }
    return true;
}

void OpenStyles::ApplyTextProperties(const pugi::xml_node& properties, SlideRunStyle& style) const {
    ForStyleAttributes(properties, [&](std::string_view name, std::string_view value) {
        if (ApplyFont(name, value, style.format))
            return;
        if (name == "fo:font-weight")
            style.format.bold = value == "bold" || (value.size() == 3 && value >= "600");
        else if (name == "fo:font-style")
            style.format.italic = value == "italic" || value == "oblique";
        else if (name == "fo:text-transform")
            style.capitals = value == "uppercase";
        else
            ApplyDecoration(name, value, style.format);
    });
}

void ApplyOpenParagraph(const pugi::xml_node& properties, ParagraphFormat& format) {
    ForStyleAttributes(properties, [&format](std::string_view name, std::string_view value) {
        if (name == "fo:margin-left")
            format.left_indent = OpenTwips(value);
        else if (name == "fo:margin-right")
            format.right_indent = OpenTwips(value);
        else if (name == "fo:text-indent")
            format.first_line_indent = OpenTwips(value);
        else if (name == "fo:margin-top")
            format.space_before = std::max(OpenTwips(value), 0);
        else if (name == "fo:margin-bottom")
            format.space_after = std::max(OpenTwips(value), 0);
        else if (name == "fo:text-align")
            format.alignment = AlignmentOf(value);
        else if (name == "style:writing-mode")
            format.right_to_left = value.starts_with("rl");
    });
}

pugi::xml_node OpenStyles::ListLevel(std::string_view list_style, std::int32_t level) const {
    const std::string number = std::to_string(level + 1);
    pugi::xml_node found;
    ForStyleParts(Style("list", list_style), [&](const pugi::xml_node& node) {
        if (!found && Attribute(node, "level") == number)
            found = node;
    });
    return found;
}

std::string OpenStyles::OutlineStyle(std::string_view shape_style, std::int32_t level) const {
    std::string outline;
    ForChain("presentation", shape_style, [&](const pugi::xml_node& style) {
        const std::string_view name = Attribute(style, "name");
        if (name.ends_with("-outline1"))
            outline = name.substr(0, name.size() - 1);
    });
    return outline.empty() ? outline : outline + std::to_string(level + 1);
}

}  // namespace zorvane
