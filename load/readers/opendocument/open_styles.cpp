#include "load/readers/opendocument/open_styles.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "load/readers/container/style_parts.h"
#include "load/readers/sink/symbol_fonts.h"
#include "load/readers/slides/slide_look.h"
#include "load/readers/web/css_style.h"

namespace zorvane {
namespace {

constexpr std::size_t kLongestChain = 64;  // a longer one goes round in a circle

std::string StyleKey(std::string_view family, std::string_view name) {
    std::string key(family);
    key += ':';
    key += name;
    return key;
}

Underline UnderlineOf(const pugi::xml_node& properties, Underline otherwise) {
    const std::string_view style = Attribute(properties, "text-underline-style");
    const std::string_view type = Attribute(properties, "text-underline-type");
    if (style.empty() && type.empty())
        return otherwise;
    if (style == "none" || type == "none")
        return Underline::None;
    if (type == "double")
        return style == "wave" ? Underline::DoubleWave : Underline::Double;
    using Row = std::pair<std::string_view, Underline>;
    constexpr std::array<Row, 6> kStyles = {{{"dotted", Underline::Dotted},
                                             {"dash", Underline::Dash},
                                             {"long-dash", Underline::LongDash},
                                             {"dot-dash", Underline::DashDot},
                                             {"dot-dot-dash", Underline::DashDotDot},
                                             {"wave", Underline::Wave}}};
    for (const auto& [name, underline] : kStyles) {
        if (style == name)
            return underline;
    }
    if (Attribute(properties, "text-underline-mode") == "skip-white-space")
        return Underline::Words;
    return Attribute(properties, "text-underline-width") == "bold" ? Underline::Thick
                                                                   : Underline::Single;
}

bool StrikeoutOf(const pugi::xml_node& properties, bool otherwise) {
    const std::string_view style = Attribute(properties, "text-line-through-style");
    const std::string_view type = Attribute(properties, "text-line-through-type");
    if (style.empty() && type.empty())
        return otherwise;
    return style != "none" && type != "none";
}

Baseline BaselineOf(std::string_view position, Baseline otherwise) {
    if (position.empty())
        return otherwise;
    if (position.starts_with("super"))
        return Baseline::Superscript;
    if (position.starts_with("sub") || position.starts_with('-'))
        return Baseline::Subscript;
    return position.starts_with("0") ? Baseline::Normal : Baseline::Superscript;
}

void ApplySize(std::string_view text, CharFormat& format) {
    const std::optional<CssLength> size = ParseLength(text);
    if (!size)
        return;
    const double em = format.half_points * 10.0;
    format.half_points = std::clamp(size->Twips(em, em) / 10, 1, 3276);
}

// Of "'Times New Roman', serif" the first.
std::string_view FirstFamily(std::string_view names) {
    const char quote = names.empty() ? '\0' : names.front();
    if (quote == '\'' || quote == '"') {
        names.remove_prefix(1);
        return names.substr(0, names.find(quote));
    }
    return names.substr(0, names.find(','));
}

// The properties that a style has of that name, unless they are an endless list.
pugi::xml_node PropertiesOf(const pugi::xml_node& style, std::string_view name) {
    constexpr int kMostProperties = 256;  // a default style of an office suite has some 60
    const pugi::xml_node properties = StylePart(style, name);
    int count = 0;
    for (auto one = properties.first_attribute(); one; one = one.next_attribute()) {
        if (++count > kMostProperties)
            return {};
    }
    return properties;
}

void ApplyColors(const pugi::xml_node& properties, OpenColors colors, CharFormat& format) {
    if (const std::string_view text = Attribute(properties, "color"); !text.empty()) {
        const std::optional<Color> color = ParseColor(text);
        if (colors == OpenColors::AsTold)
            format.fore_color = color;
        else if (color)
            SetVisibleColor(*color, format);
    }
    if (Attribute(properties, "use-window-font-color") == "true")
        format.fore_color.reset();
    if (const std::string_view back = Attribute(properties, "background-color"); !back.empty())
        format.back_color = ParseColor(back);
}

void SetLength(std::string_view text, std::int32_t& value) {
    if (const std::optional<std::int32_t> length = OpenLength(text))
        value = *length;
}

void ApplyAlignment(std::string_view align, ParagraphFormat& format) {
    if (align == "center")
        format.alignment = Alignment::Center;
    else if (align == "justify")
        format.alignment = Alignment::Justify;
    else if (align == "right" || align == "end")
        format.alignment = Alignment::Right;
    else if (!align.empty())
        format.alignment = Alignment::Left;
}

void ApplyTabs(const pugi::xml_node& properties, ParagraphFormat& format) {
    constexpr std::size_t kMostTabs = 64;
    const pugi::xml_node stops = StylePart(properties, "tab-stops");
    if (!stops)
        return;
    format.tabs.clear();
    for (const pugi::xml_node& stop : stops.children()) {
        TabStop tab;
        SetLength(Attribute(stop, "position"), tab.twips);
        const std::string_view type = Attribute(stop, "type");
        if (type == "center")
            tab.kind = TabKind::Center;
        else if (type == "right")
            tab.kind = TabKind::Right;
        else if (type == "char")
            tab.kind = TabKind::Decimal;
        if (format.tabs.size() < kMostTabs && tab.twips > 0)
            format.tabs.push_back(tab);
    }
}

void ApplyLayout(const pugi::xml_node& properties, ParagraphFormat& format) {
    if (const std::string_view mode = Attribute(properties, "writing-mode"); !mode.empty())
        format.right_to_left = mode.starts_with("rl");
    ApplyAlignment(Attribute(properties, "text-align"), format);
    const std::string_view all = Attribute(properties, "margin");
    SetLength(all, format.left_indent);
    SetLength(all, format.right_indent);
    SetLength(Attribute(properties, "margin-left"), format.left_indent);
    SetLength(Attribute(properties, "margin-right"), format.right_indent);
    SetLength(Attribute(properties, "margin-top"), format.space_before);
    SetLength(Attribute(properties, "margin-bottom"), format.space_after);
    SetLength(Attribute(properties, "text-indent"), format.first_line_indent);
    std::string_view spacing = Attribute(properties, "line-height");
    if (spacing == "normal")
        spacing = "100%";
    if (const std::optional<CssLength> height = ParseLength(spacing)) {
        constexpr double kSingle = 240;  // twips of a single line in RTF's measure
        format.line_spacing_multiple = height->unit == CssLength::Unit::Percent;
        format.line_spacing = height->Twips(kSingle, kSingle);
        if (!format.line_spacing_multiple)
            format.line_spacing = -format.line_spacing;
        if (format.line_spacing_multiple && format.line_spacing == 240)
            format.line_spacing = 0;
        format.line_spacing_multiple = format.line_spacing_multiple && format.line_spacing != 0;
    }
    ApplyTabs(properties, format);
}

NumberStyle NumberStyleOf(std::string_view format) {
    if (format.empty())
        return NumberStyle::None;
    switch (format.front()) {
        case 'a':
            return NumberStyle::LowerLetter;
        case 'A':
            return NumberStyle::UpperLetter;
        case 'i':
            return NumberStyle::LowerRoman;
        case 'I':
            return NumberStyle::UpperRoman;
        default:
            return NumberStyle::Decimal;
    }
}

void ReadLevelIndent(const pugi::xml_node& node, OpenListLevel& level) {
    const pugi::xml_node properties = StylePart(node, "list-level-properties");
    const pugi::xml_node label = StylePart(properties, "list-level-label-alignment");
    if (label) {
        level.left_indent = OpenLength(Attribute(label, "margin-left"));
        level.first_line_indent = OpenLength(Attribute(label, "text-indent"));
        return;
    }
    const auto space = OpenLength(Attribute(properties, "space-before"));
    const auto width = OpenLength(Attribute(properties, "min-label-width"));
    if (space || width) {
        level.left_indent = space.value_or(0) + width.value_or(0);
        level.first_line_indent = -width.value_or(0);
    }
}

void ReadBullet(const pugi::xml_node& node, std::string_view font, OpenListLevel& level) {
    level.kind = OpenListLevel::Kind::Bullet;
    const std::string_view bullet = Attribute(node, "bullet-char");
    level.bullet = bullet.empty() ? std::string(BulletText(0)) : SymbolBullet(bullet, font);
}

}  // namespace

OpenListStyle OpenStyles::ReadListStyle(const pugi::xml_node& style) const {
    OpenListStyle levels;
    ForStyleParts(style, [&](const pugi::xml_node& node) {
        const std::int32_t number = NumberOf(Attribute(node, "level"), 0);
        if (number < 1 || number > static_cast<std::int32_t>(kListLevels))
            return;
        OpenListLevel& level = levels[static_cast<std::size_t>(number - 1)];
        ReadLevelIndent(node, level);
        const std::string_view kind = LocalName(node);
        level.prefix = Attribute(node, "num-prefix");
        level.suffix = Attribute(node, "num-suffix");
        if (kind == "list-level-style-number" || kind == "outline-level-style") {
            level.number = NumberStyleOf(Attribute(node, "num-format"));
            level.repeat_letters = Attribute(node, "num-letter-sync") == "true";
            level.kind = level.number == NumberStyle::None ? OpenListLevel::Kind::None
                                                           : OpenListLevel::Kind::Number;
            level.pattern = Attribute(node, "num-list-format");
            level.start = NumberOf(Attribute(node, "start-value"), 1);
            level.shown_levels = std::clamp(NumberOf(Attribute(node, "display-levels"), 1), 1, 10);
        } else {
            OpenChars chars;
            ApplyText(Attribute(node, "style-name"), chars);
            ApplyChars(node, chars);
            ReadBullet(node, chars.format.font.view(), level);
        }
    });
    return levels;
}

std::optional<std::int32_t> OpenLength(std::string_view text) {
    const std::optional<CssLength> length = ParseLength(text);
    if (!length || length->unit != CssLength::Unit::Twips)
        return std::nullopt;
    return length->Twips(0, 0);
}

void OpenStyles::Add(const pugi::xml_node& styles) {
    for (const pugi::xml_node& node : styles.children()) {
        const std::string_view kind = LocalName(node);
        if (kind == "style")
            styles_[StyleKey(Attribute(node, "family"), Attribute(node, "name"))] = node;
        else if (kind == "default-style")
            defaults_[std::string(Attribute(node, "family"))] = node;
        else if (kind == "list-style")
            list_styles_[std::string(Attribute(node, "name"))] = node;
        else if (kind == "outline-style")
            outline_style_ = node;
    }
}

void OpenStyles::AddFonts(const pugi::xml_node& declarations) {
    for (const pugi::xml_node& face : declarations.children())
        fonts_[std::string(Attribute(face, "name"))] = FirstFamily(Attribute(face, "font-family"));
}

void OpenStyles::AddMasterPages(const pugi::xml_node& master_styles) {
    for (const pugi::xml_node& page : master_styles.children()) {
        if (!Is(page, "master-page"))
            continue;
        if (first_master_.empty())
            first_master_ = Attribute(page, "name");
        masters_[std::string(Attribute(page, "name"))] = page;
    }
}

pugi::xml_node OpenStyles::MasterPage(std::string_view name) const {
    const auto found = masters_.find(std::string(name));
    return found == masters_.end() ? pugi::xml_node() : found->second;
}

pugi::xml_node OpenStyles::Find(std::string_view family, std::string_view name) const {
    const auto found = styles_.find(StyleKey(family, name));
    return found == styles_.end() ? pugi::xml_node() : found->second;
}

template <class Apply>
void OpenStyles::Inherit(std::string_view family, std::string_view name, Apply&& apply) const {
    std::vector<pugi::xml_node> chain;
    for (pugi::xml_node style = Find(family, name); style && chain.size() < kLongestChain;
         style = Find(family, Attribute(style, "parent-style-name")))
        chain.push_back(style);
    for (std::size_t place = chain.size(); place-- > 0;)
        apply(chain[place]);
}

void OpenStyles::ApplyFont(const pugi::xml_node& properties, CharFormat& format) const {
    const std::string_view name = Attribute(properties, "font-name");
    std::string_view family = FirstFamily(Attribute(properties, "font-family"));
    if (const auto face = fonts_.find(std::string(name)); face != fonts_.end())
        family = face->second;
    if (family.empty())
        family = name;
    if (!family.empty())
        format.font = FontName(family);
}

void OpenStyles::ApplyChars(const pugi::xml_node& style, OpenChars& chars) const {
    const pugi::xml_node properties = PropertiesOf(style, "text-properties");
    if (!properties)
        return;
    CharFormat& format = chars.format;
    ApplyFont(properties, format);
    ApplySize(Attribute(properties, "font-size"), format);
    ApplyColors(properties, colors_, format);
    if (const std::string_view weight = Attribute(properties, "font-weight"); !weight.empty())
        format.bold = weight == "bold" || (weight.size() == 3 && weight >= "600");
    if (const std::string_view slope = Attribute(properties, "font-style"); !slope.empty())
        format.italic = slope != "normal";
    format.underline = UnderlineOf(properties, format.underline);
    format.strikeout = StrikeoutOf(properties, format.strikeout);
    format.baseline = BaselineOf(Attribute(properties, "text-position"), format.baseline);
    if (const std::string_view display = Attribute(properties, "display"); !display.empty())
        chars.hidden = display == "none";
    if (const std::string_view form = Attribute(properties, "text-transform"); !form.empty())
        chars.capitals = form == "uppercase";
}

const OpenParagraphStyle& OpenStyles::Paragraph(std::string_view name) {
    std::string key(name);
    if (const auto found = paragraphs_.find(key); found != paragraphs_.end())
        return found->second;
    OpenParagraphStyle paragraph;
    paragraph.chars.format.font = FontName("Times New Roman");
    paragraph.chars.format.half_points = 24;
    const auto apply = [&](const pugi::xml_node& style) {
        ApplyChars(style, paragraph.chars);
        ApplyLayout(PropertiesOf(style, "paragraph-properties"), paragraph.format);
        if (const auto list = style.attribute("style:list-style-name"))
            paragraph.list_style = list.value();
        if (const std::string_view page = Attribute(style, "master-page-name"); !page.empty())
            paragraph.master_page = page;
    };
    if (const auto found = defaults_.find("paragraph"); found != defaults_.end())
        apply(found->second);
    Inherit("paragraph", name, apply);
    return paragraphs_.emplace(std::move(key), std::move(paragraph)).first->second;
}

void OpenStyles::ApplyText(std::string_view family, std::string_view name, OpenChars& chars) const {
    Inherit(family, name, [&](const pugi::xml_node& style) { ApplyChars(style, chars); });
}

void OpenStyles::ApplyParagraph(std::string_view family, std::string_view name,
                                ParagraphFormat& format) const {
    Inherit(family, name, [&format](const pugi::xml_node& style) {
        ApplyLayout(PropertiesOf(style, "paragraph-properties"), format);
    });
}

std::string OpenStyles::PresentationOutline(std::string_view shape_style, std::size_t level) const {
    std::string outline;
    Inherit("presentation", shape_style, [&](const pugi::xml_node& style) {
        const std::string_view name = Attribute(style, "name");
        if (name.ends_with("-outline1"))
            outline = name.substr(0, name.size() - 1);
    });
    return outline.empty() ? outline : outline + std::to_string(level + 1);
}

bool OpenStyles::HasText(std::string_view name) const {
    return !Find("text", name).empty();
}

const OpenListStyle* OpenStyles::List(std::string_view name) {
    std::string key(name);
    if (const auto found = lists_.find(key); found != lists_.end())
        return &found->second;
    const auto node = list_styles_.find(key);
    if (node == list_styles_.end())
        return nullptr;
    return &lists_.emplace(std::move(key), ReadListStyle(node->second)).first->second;
}

const OpenListStyle& OpenStyles::Outline() {
    if (!outline_)
        outline_ = ReadListStyle(outline_style_);
    return *outline_;
}

}  // namespace zorvane
