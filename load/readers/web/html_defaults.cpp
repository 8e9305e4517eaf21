// How browsers show each element before any style sheet, and the elements that show more than the
// text inside them.
#include <algorithm>
#include <array>
#include <charconv>

#include "common/base/text_encoding.h"
#include "load/readers/web/html_flow.h"
#include "load/readers/web/html_tags.h"

namespace zorvane {
namespace {

constexpr std::int32_t kListIndent = 600;  // 40 pixels
constexpr std::int32_t kMargin = 240;      // 16 pixels
constexpr Color kLinkColor{0xEE0000};
constexpr Color kMarkColor{0x00FFFF};
constexpr std::string_view kFixedFont = "Courier New";

void Scale(CharFormat& chars, std::int32_t times, std::int32_t by) {
    chars.half_points = std::clamp(chars.half_points * times / by, 1, 3276);
}

void UseFixedFont(CharFormat& chars) {
    if (chars.font.view() == kFixedFont)
        return;
    chars.font = FontName(kFixedFont);
    Scale(chars, 5, 6);
}

void ScaleHeading(GumboTag tag, CharFormat& chars) {
    chars.bold = true;
    switch (tag) {
        case GUMBO_TAG_H1:
            return Scale(chars, 2, 1);
        case GUMBO_TAG_H2:
            return Scale(chars, 3, 2);
        case GUMBO_TAG_H3:
            return Scale(chars, 7, 6);
        case GUMBO_TAG_H5:
            return Scale(chars, 5, 6);
        case GUMBO_TAG_H6:
            return Scale(chars, 2, 3);
        default:
            return;
    }
}

bool IsNeverShown(const HtmlElement& element) {
    switch (element.tag) {
        case GUMBO_TAG_SCRIPT:
        case GUMBO_TAG_STYLE:
        case GUMBO_TAG_TITLE:
        case GUMBO_TAG_TEMPLATE:
        case GUMBO_TAG_NOSCRIPT:
        case GUMBO_TAG_NOEMBED:
        case GUMBO_TAG_NOFRAMES:
        case GUMBO_TAG_IFRAME:
        case GUMBO_TAG_AUDIO:
        case GUMBO_TAG_VIDEO:
        case GUMBO_TAG_CANVAS:
        case GUMBO_TAG_DATALIST:
        case GUMBO_TAG_DESC:
        case GUMBO_TAG_ANNOTATION_XML:
        case GUMBO_TAG_PROGRESS:
        case GUMBO_TAG_METER:
            return true;
        default:
            break;
    }
    if (element.tag != GUMBO_TAG_UNKNOWN)
        return false;
    if (element.foreign)
        return EqualsLower(element.name, "annotation") || EqualsLower(element.name, "metadata") ||
               EqualsLower(element.name, "defs");
    return EqualsLower(element.name, "dialog") && !element.Has("open");
}

bool IsDrawnText(const HtmlElement& element) {
    return element.foreign && EqualsLower(element.name, "text");
}

CssDisplay DisplayOf(const HtmlElement& element) {
    switch (element.tag) {
        case GUMBO_TAG_LI:
            return CssDisplay::ListItem;
        case GUMBO_TAG_TR:
            return CssDisplay::TableRow;
        case GUMBO_TAG_TD:
        case GUMBO_TAG_TH:
            return CssDisplay::TableCell;
        case GUMBO_TAG_TEXTAREA:
            return CssDisplay::Block;
        default:
            break;
    }
    const bool block = IsBlockTag(element.tag) || IsDrawnText(element) ||
                       (element.tag == GUMBO_TAG_UNKNOWN && EqualsLower(element.name, "dialog"));
    return block ? CssDisplay::Block : CssDisplay::Inline;
}

// Attributes such as "hidden" as a page writes them, or the start of the content of an element, up
// to its end tag. What lies farther away than this is not looked at.
std::string_view ContentUpTo(std::string_view rest, std::string_view end_tag) {
    constexpr std::size_t kFarthestStyle = std::size_t{1} << 14;
    rest = rest.substr(0, kFarthestStyle);
    return rest.substr(0, rest.find(end_tag));
}

std::int32_t CountItems(std::string_view rest) {
    rest = ContentUpTo(rest, "</ol");
    std::int32_t count = 0;
    for (std::size_t at = rest.find("<li"); at != std::string_view::npos;
         at = rest.find("<li", at + 3))
        ++count;
    return count;
}

// What is looked at is taken from `left`, so that a page of such elements is not read over and
// over.
bool HasSelected(std::string_view rest, std::size_t& left) {
    const std::string_view content = ContentUpTo(rest, "</select");
    left -= std::min(left, content.size());
    return content.find(" selected") != std::string_view::npos;
}

}  // namespace

const HtmlFlow::Box& HtmlFlow::RootBox() {
    static const Box kRoot = [] {
        Box box;
        box.chars.font = FontName("Times New Roman");
        box.chars.half_points = 24;
        return box;
    }();
    return kRoot;
}

void HtmlFlow::ApplyDefaults(const HtmlElement& element, Box& box) {
    if (IsNeverShown(element)) {
        box.hidden = box.never_shown = true;
        return;
    }
    if (element.tag == GUMBO_TAG_SVG)
        box.drawing = true;
    else if (!element.foreign || element.tag == GUMBO_TAG_FOREIGNOBJECT || IsDrawnText(element))
        box.drawing = false;
    box.display = DisplayOf(element);
    if (box.display == CssDisplay::Inline)
        DefaultChars(element, box.chars);
    else
        DefaultBlock(element, box);
}

void HtmlFlow::DefaultChars(const HtmlElement& element, CharFormat& chars) {
    switch (element.tag) {
        case GUMBO_TAG_B:
        case GUMBO_TAG_STRONG:
            chars.bold = true;
            break;
        case GUMBO_TAG_I:
        case GUMBO_TAG_EM:
        case GUMBO_TAG_CITE:
        case GUMBO_TAG_DFN:
        case GUMBO_TAG_VAR:
            chars.italic = true;
            break;
        case GUMBO_TAG_U:
        case GUMBO_TAG_INS:
            chars.underline = Underline::Single;
            break;
        case GUMBO_TAG_S:
        case GUMBO_TAG_STRIKE:
        case GUMBO_TAG_DEL:
            chars.strikeout = true;
            break;
        case GUMBO_TAG_CODE:
        case GUMBO_TAG_TT:
        case GUMBO_TAG_KBD:
        case GUMBO_TAG_SAMP:
            UseFixedFont(chars);
            break;
        case GUMBO_TAG_SUP:
            chars.baseline = Baseline::Superscript;
            break;
        case GUMBO_TAG_SUB:
            chars.baseline = Baseline::Subscript;
            break;
        case GUMBO_TAG_SMALL:
        case GUMBO_TAG_RT:
            Scale(chars, 5, 6);
            break;
        case GUMBO_TAG_BIG:
            Scale(chars, 6, 5);
            break;
        case GUMBO_TAG_MARK:
            chars.back_color = kMarkColor;
            break;
        case GUMBO_TAG_A:
            if (element.Has("href")) {
                chars.fore_color = kLinkColor;
                chars.underline = Underline::Single;
            }
            break;
        default:
            break;
    }
}

void HtmlFlow::DefaultBlock(const HtmlElement& element, Box& box) {
    box.block_space = 0;
    if (IsHeadingTag(element.tag))
        ScaleHeading(element.tag, box.chars);
    switch (element.tag) {
        case GUMBO_TAG_P:
        case GUMBO_TAG_H1:
        case GUMBO_TAG_H2:
        case GUMBO_TAG_H3:
        case GUMBO_TAG_H4:
        case GUMBO_TAG_H5:
        case GUMBO_TAG_H6:
            box.block_space = kMargin;
            break;
        case GUMBO_TAG_OL:
        case GUMBO_TAG_UL:
        case GUMBO_TAG_MENU:
        case GUMBO_TAG_DIR:
            DefaultList(element, box);
            break;
        case GUMBO_TAG_DD:
        case GUMBO_TAG_BLOCKQUOTE:
        case GUMBO_TAG_FIGURE:
            box.left += kListIndent;
            break;
        case GUMBO_TAG_CENTER:
        case GUMBO_TAG_CAPTION:
            box.alignment = Alignment::Center;
            break;
        case GUMBO_TAG_ADDRESS:
            box.chars.italic = true;
            break;
        case GUMBO_TAG_TH:
            box.chars.bold = true;
            break;
        case GUMBO_TAG_PRE:
        case GUMBO_TAG_LISTING:
        case GUMBO_TAG_XMP:
        case GUMBO_TAG_PLAINTEXT:
        case GUMBO_TAG_TEXTAREA:
            box.space = CssSpace::Pre;
            UseFixedFont(box.chars);
            break;
        case GUMBO_TAG_TABLE:
            box.alignment = Alignment::Left;
            box.text_indent = 0;
            box.space = CssSpace::Normal;
            break;
        default:
            break;
    }
}

void HtmlFlow::DefaultList(const HtmlElement& element, Box& box) {
    box.left += kListIndent;
    box.block_space = 0;
    box.number = box.step = 1;
    box.list = CssListType();
    if (element.tag != GUMBO_TAG_OL)
        return;
    box.list.marker = CssMarker::Number;
    box.list.number = NumberStyle::Decimal;
    if (element.Has("reversed")) {
        box.step = -1;
        box.number = element.Has("start") ? 1 : CountItems(element.rest);
    }
    if (const std::string_view* start = element.Find("start"))
        box.number = ParseNumber(*start, 1);
}

void HtmlFlow::BeginSpecial(const HtmlElement& element, Box& box) {
    switch (element.tag) {
        case GUMBO_TAG_BR:
            return Line();
        case GUMBO_TAG_HR:
            return Rule(box);
        case GUMBO_TAG_Q:
            return Write("\u201C", box);
        case GUMBO_TAG_IMG:
        case GUMBO_TAG_IMAGE:
            // With a picture a reader sees that one; its other text stands for a missing picture.
            if (!element.Has("src") && !element.Has("srcset"))
                Write(Decoded(element.Find("alt")), box);
            return;
        case GUMBO_TAG_INPUT:
            return InputText(element, box);
        case GUMBO_TAG_SELECT:
            box.listed = element.Has("multiple") || element.Has("size");
            box.picked = look_ahead_left_ > 0 && HasSelected(element.rest, look_ahead_left_);
            box.number = 0;
            return;
        case GUMBO_TAG_OPTION:
            return BeginOption(element, box);
        case GUMBO_TAG_RP:
            if (boxes_.size() > 1)
                boxes_[boxes_.size() - 2].picked = true;
            return;
        case GUMBO_TAG_RT:
            // Small text above the line has to be set apart from what it stands above.
            box.picked = boxes_.size() > 1 && !boxes_[boxes_.size() - 2].picked;
            if (box.picked)
                Write("(", box);
            return;
        default:
            return;
    }
}

void HtmlFlow::Rule(const Box& box) {
    Break();
    if (rows_ > 0)
        return;
    writer_.SetFormat(FormatOf(box));
    writer_.End();
}

void HtmlFlow::BeginOption(const HtmlElement& element, Box& box) {
    for (std::size_t level = boxes_.size() - 1; level-- > 0;) {
        Box& select = boxes_[level];
        if (select.tag != GUMBO_TAG_SELECT)
            continue;
        const bool first = select.number++ == 0;
        box.hidden = !select.listed && !(select.picked ? element.Has("selected") : first);
        box.never_shown = box.hidden;
        if (select.listed && !first)
            Write(" ", box);
        return;
    }
    // Outside of a list it is shown as a block.
    box.display = CssDisplay::Block;
    Break();
}

void HtmlFlow::InputText(const HtmlElement& element, const Box& box) {
    const std::string_view* type = element.Find("type");
    const std::string kind = type == nullptr ? "text" : ToLower(type->substr(0, 16));
    for (const std::string_view silent :
         {"hidden", "password", "checkbox", "radio", "image", "color", "range", "file"}) {
        if (kind == silent)
            return;
    }
    std::string text = Decoded(element.Find("value"));
    if (!element.Has("value") && kind == "submit")
        text = "Submit";
    if (!element.Has("value") && kind == "reset")
        text = "Reset";
    Write(text, box);
}

}  // namespace zorvane
