#include "load/readers/ooxml/docx_styles.h"

#include <algorithm>
#include <array>

#include "common/base/parse_number.h"

namespace zorvane {
namespace {

constexpr int kDeepestChain = 64;  // a chain of styles that is longer goes round in a circle

struct NamedColor {
    std::string_view name;
    std::int32_t value;
};
constexpr NamedColor kHighlights[] = {
    {"yellow", 0x00FFFF},   {"green", 0x00FF00},      {"cyan", 0xFFFF00},
    {"magenta", 0xFF00FF},  {"blue", 0xFF0000},       {"red", 0x0000FF},
    {"darkBlue", 0x800000}, {"darkCyan", 0x808000},   {"darkGreen", 0x008000},
    {"darkRed", 0x000080},  {"darkYellow", 0x008080}, {"darkMagenta", 0x800080},
    {"darkGray", 0x808080}, {"lightGray", 0xC0C0C0},  {"black", 0x000000},
    {"white", 0xFFFFFF}};

struct NamedUnderline {
    std::string_view name;
    Underline kind;
};
constexpr NamedUnderline kUnderlines[] = {{"none", Underline::None},
                                          {"single", Underline::Single},
                                          {"words", Underline::Words},
                                          {"double", Underline::Double},
                                          {"thick", Underline::Thick},
                                          {"dotted", Underline::Dotted},
                                          {"dottedHeavy", Underline::ThickDotted},
                                          {"dash", Underline::Dash},
                                          {"dashedHeavy", Underline::ThickDash},
                                          {"dashLong", Underline::LongDash},
                                          {"dashLongHeavy", Underline::ThickLongDash},
                                          {"dotDash", Underline::DashDot},
                                          {"dashDotHeavy", Underline::ThickDashDot},
                                          {"dotDotDash", Underline::DashDotDot},
                                          {"dashDotDotHeavy", Underline::ThickDashDotDot},
                                          {"wave", Underline::Wave},
                                          {"wavyHeavy", Underline::HeavyWave},
                                          {"wavyDouble", Underline::DoubleWave}};

// "RRGGBB"; anything else ("auto") is no colour.
std::optional<Color> HexColor(std::string_view text) {
    const auto value = ParseNumber<std::uint32_t>(text, 16);
    if (text.size() != 6 || !value)
        return std::nullopt;
    return Color{
        static_cast<std::int32_t>((*value >> 16) | (*value & 0xFF00) | ((*value & 0xFF) << 16))};
}

bool TurnsOn(const pugi::xml_node& node) {
    const std::string_view value = Attribute(node, "val");
    return value != "0" && value != "false" && value != "off" && value != "none";
}

Underline UnderlineNamed(std::string_view name) {
    for (const NamedUnderline& row : kUnderlines) {
        if (row.name == name)
            return row.kind;
    }
    return Underline::Single;
}

void ApplyHighlight(std::string_view name, CharFormat& chars) {
    chars.back_color.reset();
    for (const NamedColor& row : kHighlights) {
        if (row.name == name)
            chars.back_color = Color{row.value};
    }
}

Baseline BaselineNamed(std::string_view name) {
    if (name == "superscript")
        return Baseline::Superscript;
    return name == "subscript" ? Baseline::Subscript : Baseline::Normal;
}

Alignment AlignmentNamed(std::string_view name) {
    if (name == "center")
        return Alignment::Center;
    if (name == "right" || name == "end")
        return Alignment::Right;
    if (name == "both" || name == "distribute")
        return Alignment::Justify;
    return Alignment::Left;
}

void ApplyIndent(const pugi::xml_node& node, DocxParagraphLook& look) {
    const auto take = [&node](std::string_view name, std::int32_t sign, std::int32_t& value,
                              bool& own) {
        if (const std::string_view text = Attribute(node, name); !text.empty()) {
            value = sign * NumberOf(text, 0);
            own = true;
        }
    };
    ParagraphFormat& format = look.format;
    take("start", 1, format.left_indent, look.own_left);
    take("left", 1, format.left_indent, look.own_left);
    take("end", 1, format.right_indent, look.own_right);
    take("right", 1, format.right_indent, look.own_right);
    take("firstLine", 1, format.first_line_indent, look.own_first_line);
    take("hanging", -1, format.first_line_indent, look.own_first_line);
}

void ApplySpacing(const pugi::xml_node& node, ParagraphFormat& format) {
    format.space_before = NumberOf(Attribute(node, "before"), format.space_before);
    format.space_after = NumberOf(Attribute(node, "after"), format.space_after);
    const std::int32_t line = NumberOf(Attribute(node, "line"), 0);
    if (line == 0)
        return;
    const std::string_view rule = Attribute(node, "lineRule");
    format.line_spacing_multiple = rule.empty() || rule == "auto";
    format.line_spacing = rule == "exact" ? -line : line;
}

void ApplyNumbering(const pugi::xml_node& node, DocxParagraphLook& look) {
    if (const pugi::xml_node list = Child(node, "numId")) {
        look.list = NumberOf(Attribute(list, "val"), 0);
        // What is named together with the list or later goes before its indents.
        look.own_left = look.own_right = look.own_first_line = false;
    }
    if (const pugi::xml_node level = Child(node, "ilvl"))
        look.level = std::clamp(NumberOf(Attribute(level, "val"), 0), 0, 8);
}

}  // namespace

void DocxStyles::ReadTheme(Package& package, std::string_view part) {
    XmlPart theme;
    if (!XmlPart::Read(package, part, theme).ok())
        return;
    const pugi::xml_node scheme = Child(Child(theme.Root(), "themeElements"), "fontScheme");
    major_font_ = Attribute(Child(Child(scheme, "majorFont"), "latin"), "typeface");
    minor_font_ = Attribute(Child(Child(scheme, "minorFont"), "latin"), "typeface");
}

void DocxStyles::Read(Package& package,
                      const std::unordered_map<std::string, Relationship>& parts) {
    std::string styles_part = "word/styles.xml";
    for (const auto& [id, part] : parts) {
        if (part.type == "styles")
            styles_part = part.target;
        if (part.type == "theme")
            ReadTheme(package, part.target);
    }
    defaults_.run.chars.font = FontName("Times New Roman");
    if (!XmlPart::Read(package, styles_part, part_).ok())
        return;
    for (const pugi::xml_node& node : part_.Root().children()) {
        if (Is(node, "docDefaults")) {
            ApplyRunOwn(Child(Child(node, "rPrDefault"), "rPr"), defaults_.run);
            ApplyParagraph(Child(Child(node, "pPrDefault"), "pPr"), defaults_);
        }
        if (!Is(node, "style"))
            continue;
        const std::string id(Attribute(node, "styleId"));
        styles_[id] = {std::string(Attribute(Child(node, "basedOn"), "val")), Child(node, "rPr"),
                       Child(node, "pPr")};
        if (Attribute(node, "type") == "paragraph" && Attribute(node, "default") == "1")
            default_style_ = id;
    }
}

void DocxStyles::ApplyFont(const pugi::xml_node& fonts, CharFormat& chars) const {
    const std::string_view theme = Attribute(fonts, "asciiTheme");
    const std::string& themed = theme.starts_with("major") ? major_font_ : minor_font_;
    if (!theme.empty() && !themed.empty())
        chars.font = FontName(themed);
    else if (const std::string_view name = Attribute(fonts, "ascii"); !name.empty())
        chars.font = FontName(name);
}

void DocxStyles::ApplyRunOwn(const pugi::xml_node& properties, RunLook& look) const {
    CharFormat& chars = look.chars;
    for (const pugi::xml_node& node : properties.children()) {
        const std::string_view name = LocalName(node);
        const auto value = [&node] { return Attribute(node, "val"); };
        if (name == "b")
            chars.bold = TurnsOn(node);
        else if (name == "i")
            chars.italic = TurnsOn(node);
        else if (name == "u")
            chars.underline = UnderlineNamed(value());
        else if (name == "strike" || name == "dstrike")
            chars.strikeout = TurnsOn(node);
        else if (name == "vanish")
            look.hidden = TurnsOn(node);
        else if (name == "sz")
            chars.half_points = std::clamp(NumberOf(value(), chars.half_points), 1, 3276);
        else if (name == "color")
            chars.fore_color = HexColor(value());
        else if (name == "highlight")
            ApplyHighlight(value(), chars);
        else if (name == "shd")
            chars.back_color = HexColor(Attribute(node, "fill"));
        else if (name == "vertAlign")
            chars.baseline = BaselineNamed(value());
        else if (name == "rFonts")
            ApplyFont(node, chars);
    }
}

void DocxStyles::ApplyParagraph(const pugi::xml_node& properties, DocxParagraphLook& look) {
    for (const pugi::xml_node& node : properties.children()) {
        const std::string_view name = LocalName(node);
        if (name == "jc")
            look.format.alignment = AlignmentNamed(Attribute(node, "val"));
        else if (name == "ind")
            ApplyIndent(node, look);
        else if (name == "spacing")
            ApplySpacing(node, look.format);
        else if (name == "bidi")
            look.format.right_to_left = TurnsOn(node);
        else if (name == "numPr")
            ApplyNumbering(node, look);
    }
}

void DocxStyles::ApplyChain(const std::string& id, int depth, DocxParagraphLook* paragraph,
                            RunLook& run) const {
    const auto found = styles_.find(id);
    if (found == styles_.end() || depth > kDeepestChain)
        return;
    ApplyChain(found->second.based_on, depth + 1, paragraph, run);
    ApplyRunOwn(found->second.run, run);
    if (paragraph != nullptr)
        ApplyParagraph(found->second.paragraph, *paragraph);
}

const DocxParagraphLook& DocxStyles::StyleLook(const std::string& id) const {
    const auto known = looks_.find(id);
    if (known != looks_.end())
        return known->second;
    DocxParagraphLook look = defaults_;
    ApplyChain(id, 0, &look, look.run);
    return looks_.emplace(id, look).first->second;
}

DocxParagraphLook DocxStyles::Paragraph(const pugi::xml_node& properties) const {
    const std::string_view named = Attribute(Child(properties, "pStyle"), "val");
    const std::string style(named.empty() ? std::string_view(default_style_) : named);
    DocxParagraphLook look = StyleLook(styles_.contains(style) ? style : default_style_);
    ApplyParagraph(properties, look);
    return look;
}

void DocxStyles::ApplyRun(const pugi::xml_node& properties, RunLook& look) const {
    if (!properties)
        return;
    if (const std::string_view style = Attribute(Child(properties, "rStyle"), "val");
        !style.empty())
        ApplyCharacterStyle(std::string(style), look);
    ApplyRunOwn(properties, look);
}

// What the styles of the paragraph and of the letters both turn on is off again: emphasis within
// emphasis. A style of letters turns nothing off, and nothing turns off what the document begins
// with.
void DocxStyles::ApplyCharacterStyle(const std::string& id, RunLook& look) const {
    RunLook style;
    ApplyChain(id, 0, nullptr, style);
    RunLook both = look;
    ApplyChain(id, 0, nullptr, both);
    const auto merged = [](bool base, bool turned, bool always) {
        return turned ? always || !base : base;
    };
    const CharFormat& always = defaults_.run.chars;
    both.chars.bold = merged(look.chars.bold, style.chars.bold, always.bold);
    both.chars.italic = merged(look.chars.italic, style.chars.italic, always.italic);
    both.chars.strikeout = merged(look.chars.strikeout, style.chars.strikeout, always.strikeout);
    both.hidden = merged(look.hidden, style.hidden, defaults_.run.hidden);
    look = both;
}

void DocxStyles::ApplyListIndent(const pugi::xml_node& level, DocxParagraphLook& look) {
    DocxParagraphLook listed = look;
    ApplyIndent(Child(level, "ind"), listed);
    if (!look.own_left)
        look.format.left_indent = listed.format.left_indent;
    if (!look.own_right)
        look.format.right_indent = listed.format.right_indent;
    if (!look.own_first_line)
        look.format.first_line_indent = listed.format.first_line_indent;
}

}  // namespace zorvane
