// What attributes and style sheets change of how an element shows.
#include <algorithm>
#include <array>

#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"
#include "load/readers/web/html_flow.h"
#include "load/readers/web/html_tags.h"

namespace zorvane {

void HtmlFlow::ApplyAttributes(const HtmlElement& element, Box& box) {
    if (element.attributes == nullptr)
        return;
    // Of two that bear one name the first counts.
    for (auto attribute = element.attributes->rbegin(); attribute != element.attributes->rend();
         ++attribute)
        ApplyAttribute(element.tag, *attribute, box);
}

void HtmlFlow::ApplyAttribute(GumboTag tag, const HtmlAttribute& attribute, Box& box) {
    const auto as_style = [&](std::string_view property) {
        CssStyle style;
        ParseDeclarations(std::string(property) + ":" + std::string(attribute.value), style);
        ApplyStyle(style, box, box);
    };
    const std::string_view name = attribute.name;
    if (EqualsLower(name, "dir")) {
        if (!EqualsLower(attribute.value, "auto"))
            box.right_to_left = EqualsLower(attribute.value, "rtl");
    } else if (EqualsLower(name, "align") && tag != GUMBO_TAG_IMG && tag != GUMBO_TAG_TABLE) {
        as_style("text-align");
    } else if (tag == GUMBO_TAG_FONT) {
        ApplyFontAttribute(attribute, box);
    } else if (EqualsLower(name, "type")) {
        ApplyListType(tag, attribute.value, box);
    } else if (tag == GUMBO_TAG_BODY && EqualsLower(name, "text")) {
        as_style("color");
    }
}

void HtmlFlow::ApplyFontAttribute(const HtmlAttribute& attribute, Box& box) {
    CssStyle style;
    if (EqualsLower(attribute.name, "color")) {
        style.color = ParseColor(attribute.value);
        if (!style.color)
            style.color = ParseColor("#" + std::string(attribute.value));
    } else if (EqualsLower(attribute.name, "face")) {
        ParseDeclarations("font-family:" + Decoded(&attribute.value), style);
    } else if (EqualsLower(attribute.name, "size")) {
        const std::string_view value = Trim(attribute.value);
        const bool relative = value.starts_with('+') || value.starts_with('-');
        const std::int32_t given =
            ParseNumber(value.starts_with('+') ? value.substr(1) : value, relative ? 0 : 3);
        constexpr std::array<double, 7> kTwips = {150, 195, 240, 270, 360, 480, 720};
        const auto size = std::clamp(relative ? 3 + std::clamp(given, -3, 4) : given, 1, 7);
        style.font_size = CssLength{kTwips[static_cast<std::size_t>(size - 1)]};
    }
    ApplyStyle(style, box, box);
}

void HtmlFlow::ApplyListType(GumboTag tag, std::string_view type, Box& box) {
    if (tag != GUMBO_TAG_OL && tag != GUMBO_TAG_UL && tag != GUMBO_TAG_LI)
        return;
    std::string_view style;
    if (type == "a")
        style = "lower-alpha";
    else if (type == "A")
        style = "upper-alpha";
    else if (type == "i")
        style = "lower-roman";
    else if (type == "I")
        style = "upper-roman";
    else
        style = type == "1" ? "decimal" : type;
    CssStyle parsed;
    ParseDeclarations("list-style-type:" + std::string(style), parsed);
    ApplyStyle(parsed, box, box);
}

void HtmlFlow::ApplySheet(const HtmlElement& element, const Box& outer, Box& box) {
    const std::string_view* classes = element.Find("class");
    std::string all(classes == nullptr ? std::string_view() : *classes);
    if (element.tag == GUMBO_TAG_A && element.Has("href"))
        all.append(" ").append(kLinkClass);
    const std::string_view* id = element.Find("id");
    const std::string_view tag = element.tag == GUMBO_TAG_UNKNOWN
                                     ? std::string_view()
                                     : std::string_view(gumbo_normalized_tagname(element.tag));
    sheet_.Match(tag, all, id == nullptr ? std::string_view() : *id,
                 [&](const CssStyle& style) { ApplyStyle(style, outer, box); });
}

// Sheets stand inside of the page: they are known when its body begins.
void HtmlFlow::StyleRoot(Box& html) {
    Box styled = html;
    sheet_.Match("html", "", "",
                 [&](const CssStyle& style) { ApplyStyle(style, RootBox(), styled); });
    html.chars = styled.chars;
    html.alignment = styled.alignment;
}

void HtmlFlow::ApplyStyle(const CssStyle& style, const Box& outer, Box& box) {
    constexpr double kPageTwips = 9000;  // about what a sheet holds; percentages are of it
    CharFormat& chars = box.chars;
    if (style.font_size) {
        const double em = outer.chars.half_points * 10.0;
        const std::int32_t half_points = style.font_size->Twips(em, em) / 10;
        box.hidden = box.hidden || half_points <= 0;
        chars.half_points = std::clamp(half_points, 1, 3276);
    }
    if (style.color)
        chars.fore_color = style.color;
    if (style.background && box.tag != GUMBO_TAG_BODY && box.tag != GUMBO_TAG_HTML)
        chars.back_color = *style.background;
    chars.font = style.font.value_or(chars.font);
    chars.bold = style.bold.value_or(chars.bold);
    chars.italic = style.italic.value_or(chars.italic);
    chars.strikeout = style.strikeout.value_or(chars.strikeout);
    chars.baseline = style.baseline.value_or(chars.baseline);
    if (style.underline)
        chars.underline = *style.underline ? Underline::Single : Underline::None;
    const double em = chars.half_points * 10.0;
    if (style.left)
        box.left = outer.left + style.left->Twips(em, kPageTwips);
    if (style.text_indent)
        box.text_indent = style.text_indent->Twips(em, kPageTwips);
    box.alignment = style.alignment.value_or(box.alignment);
    box.right_to_left = style.right_to_left.value_or(box.right_to_left);
    box.display = style.display.value_or(box.display);
    box.hidden = box.hidden || style.hidden.value_or(false) || box.display == CssDisplay::None;
    box.space = style.space.value_or(box.space);
    box.transform = style.transform.value_or(box.transform);
    box.list = style.list.value_or(box.list);
}

// What stands in a line says nothing of the paragraph that it may begin.
void HtmlFlow::KeepParagraph(const Box& outer, Box& box) {
    box.alignment = outer.alignment;
    box.left = outer.left;
    box.text_indent = outer.text_indent;
    box.right_to_left = outer.right_to_left;
}

std::string HtmlFlow::Decoded(const std::string_view* value) {
    std::string text;
    if (value != nullptr)
        references_.DecodeValue(*value, text);
    return text;
}

std::int32_t HtmlFlow::ParseNumber(std::string_view text, std::int32_t otherwise) {
    constexpr std::int32_t kLargest = 1'000'000'000;
    const auto number = ReadNumber<std::int32_t>(Trim(text)).value;
    return number ? std::clamp(*number, -kLargest, kLargest) : otherwise;
}

}  // namespace zorvane
