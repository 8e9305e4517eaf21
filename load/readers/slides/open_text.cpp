#include "load/readers/slides/open_text.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "load/readers/slides/slide_styles.h"
#include "load/readers/slides/slide_text.h"
#include "load/readers/symbol_fonts.h"

namespace zorvane {
namespace {

constexpr std::string_view kLine(&kLineInParagraph, 1);
constexpr std::string_view kCell(&kCellEnd, 1);
constexpr std::int32_t kMostRepeats = 256;  // of blanks, cells and rows that say "again"

constexpr std::size_t kMostTableText = std::size_t{256} << 20;

bool IsComment(const pugi::xml_node& node) {
    return LocalName(node).starts_with("annotation");
}

bool IsField(const pugi::xml_node& node) {
    return Is(node, "page-number") || Is(node, "footer") || Is(node, "date-time");
}

bool HoldsText(const pugi::xml_node& node, bool with_fields, int depth) {
    if (depth > kMaxDepth || IsComment(node))
        return false;
    if (IsField(node))
        return with_fields;
    for (const pugi::xml_node& child : node.children()) {
        const bool text = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
        if (text ? std::string_view(child.value()).find_first_not_of(" \t\r\n") !=
                       std::string_view::npos
                 : HoldsText(child, with_fields, depth + 1))
            return true;
    }
    return false;
}

std::string_view SchemeOf(std::string_view format) {
    if (format == "a")
        return "alphaLcPlain";
    if (format == "A")
        return "alphaUcPlain";
    if (format == "i")
        return "romanLcPlain";
    return format == "I" ? "romanUcPlain" : "arabicPlain";
}

std::int32_t Repeats(const pugi::xml_node& node, std::string_view attribute) {
    return std::clamp(NumberOf(Attribute(node, attribute), 1), 1, kMostRepeats);
}

// Where a level of a list stands, unless its paragraph tells otherwise.
void ApplyListIndent(const pugi::xml_node& level, ParagraphFormat& format) {
    const pugi::xml_node properties = StylePart(level, "list-level-properties");
    if (!properties)
        return;
    const pugi::xml_node alignment = StylePart(properties, "list-level-label-alignment");
    if (alignment) {
        ApplyOpenParagraph(alignment, format);
        return;
    }
    const std::int32_t label = OpenTwips(Attribute(properties, "min-label-width"));
    format.left_indent = OpenTwips(Attribute(properties, "space-before")) + label;
    format.first_line_indent = -label;
}

std::string BulletOf(const pugi::xml_node& level) {
    const std::string_view font = Attribute(StylePart(level, "text-properties"), "font-family");
    return SymbolBullet(Attribute(level, "bullet-char"), font);
}

}  // namespace

bool OpenTextWriter::HasText(const pugi::xml_node& holder) const {
    return HoldsText(holder, fields_.page > 0, 0);
}

void OpenTextWriter::Blocks(const pugi::xml_node& holder, const OpenShapeStyle& shape) {
    shape_ = shape;
    ListPlace place;
    Walk(holder, place, 0);
}

void OpenTextWriter::Walk(const pugi::xml_node& holder, ListPlace& place, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const pugi::xml_node& child : holder.children()) {
        if (Is(child, "p") || Is(child, "h"))
            Paragraph(child, place);
        else if (Is(child, "list"))
            List(child, place, depth + 1);
        else if (Is(child, "section"))
            Walk(child, place, depth + 1);
    }
}

void OpenTextWriter::List(const pugi::xml_node& list, ListPlace& place, int depth) {
    ListPlace inner = place;
    ++inner.level;
    if (const std::string_view style = Attribute(list, "style-name"); !style.empty())
        inner.style = style;
    inner.counts.push_back(-1);  // before the first item
    for (const pugi::xml_node& item : list.children()) {
        if (!Is(item, "list-item") && !Is(item, "list-header"))
            continue;
        inner.label = Is(item, "list-item");
        if (const std::int32_t start = NumberOf(Attribute(item, "start-value"), -1); start >= 0)
            inner.counts.back() = std::min(start, 32'767) - 1;
        Walk(item, inner, depth);
    }
}

// An item's number is counted by its first paragraph, so that an item which only holds a deeper
// list takes none.
std::string OpenTextWriter::Label(ListPlace& place) {
    const pugi::xml_node level = styles_.ListLevel(place.style, place.level);
    if (Is(level, "list-level-style-bullet"))
        return BulletOf(level);
    if (Is(level, "list-level-style-image"))
        return "\xE2\x80\xA2";
    if (!Is(level, "list-level-style-number"))
        return {};
    std::int32_t& count = place.counts.back();
    const std::int32_t first = std::clamp(NumberOf(Attribute(level, "start-value"), 1), 0, 32'767);
    count = count < 0 ? first : count + 1;
    const std::string_view format = Attribute(level, "num-format");
    if (format.empty())
        return {};
    std::string label(Attribute(level, "num-prefix"));
    const auto shown = static_cast<std::size_t>(
        std::clamp(NumberOf(Attribute(level, "display-levels"), 1), 1, place.level + 1));
    for (std::size_t i = place.counts.size() - shown; i + 1 < place.counts.size(); ++i) {
        const pugi::xml_node upper = styles_.ListLevel(place.style, static_cast<std::int32_t>(i));
        const std::string_view upper_format = Attribute(upper, "num-format");
        if (!upper_format.empty())
            label += SlideNumberText(SchemeOf(upper_format), std::max(place.counts[i], 1)) + ".";
    }
    label += SlideNumberText(SchemeOf(format), std::max(count, 1));
    label += Attribute(level, "num-suffix");
    return label;
}

void OpenTextWriter::Paragraph(const pugi::xml_node& paragraph, ListPlace& place) {
    SlideRunStyle run = PlainSlideStyle().run;
    const CharFormat& format = run.format;
    ParagraphFormat layout;
    styles_.ApplyText(shape_.family, shape_.name, run);
    styles_.ApplyParagraph(shape_.family, shape_.name, layout);
    if (place.level > 0) {
        const std::string outline = styles_.OutlineStyle(shape_.name, place.level);
        styles_.ApplyText("presentation", outline, run);
        styles_.ApplyParagraph("presentation", outline, layout);
    }
    if (place.level >= 0)
        ApplyListIndent(styles_.ListLevel(place.style, place.level), layout);
    const std::string_view style = Attribute(paragraph, "style-name");
    styles_.ApplyText("paragraph", style, run);
    styles_.ApplyParagraph("paragraph", style, layout);
    after_blank_ = true;
    if (in_cell_ && cell_has_paragraph_)
        writer_.Text(kLine, format);
    cell_has_paragraph_ = true;
    if (!in_cell_)
        writer_.SetFormat(layout);
    if (place.label && HasText(paragraph)) {
        place.label = false;
        const std::string label = Label(place);
        // A label in the middle of a row would end in a tab, as cells do.
        if (!label.empty() && in_cell_)
            writer_.Text(CleanText(label + " ", scratch_), format);
        else if (!label.empty())
            writer_.ListLabel(CleanText(label, scratch_), format);
    }
    Inline(paragraph, run, 0);
    if (!in_cell_)
        writer_.End();
}

void OpenTextWriter::Inline(const pugi::xml_node& node, const SlideRunStyle& style, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            Collapsed(child.value(), style);
        } else if (Is(child, "span")) {
            SlideRunStyle own = style;
            styles_.ApplyText("text", Attribute(child, "style-name"), own);
            Inline(child, own, depth + 1);
        } else if (!IsComment(child) && !Special(child, style)) {
            Inline(child, style, depth + 1);
        }
    }
}

bool OpenTextWriter::Special(const pugi::xml_node& node, const SlideRunStyle& style) {
    if (Is(node, "s"))
        Put(std::string(static_cast<std::size_t>(Repeats(node, "c")), ' '), style);
    else if (Is(node, "tab"))
        Put("\t", style);
    else if (Is(node, "line-break"))
        Put(kLine, style);
    else if (Is(node, "page-number"))
        Put(fields_.page > 0 ? std::to_string(fields_.page) : std::string(), style);
    else if (Is(node, "page-count"))
        Put(fields_.pages > 0 ? std::to_string(fields_.pages) : std::string(), style);
    else if (Is(node, "footer"))
        Put(fields_.footer, style);
    else if (Is(node, "header"))
        Put(fields_.header, style);
    else if (Is(node, "date-time"))
        Put(fields_.date, style);
    else
        return false;
    return true;
}

// White space in the file is one blank, and none at the start of a paragraph.
void OpenTextWriter::Collapsed(std::string_view text, const SlideRunStyle& style) {
    shown_.clear();
    for (const char character : text) {
        const bool blank =
            character == ' ' || character == '\t' || character == '\n' || character == '\r';
        if (!blank)
            shown_ += character;
        else if (!after_blank_)
            shown_ += ' ';
        after_blank_ = blank;
    }
    Write(shown_, style);
}

void OpenTextWriter::Put(std::string_view text, const SlideRunStyle& style) {
    if (text == kLine)
        writer_.Text(text, style.format);
    else
        Write(text, style);
    after_blank_ = false;
}

void OpenTextWriter::Write(std::string_view text, const SlideRunStyle& style) {
    const std::string_view clean = CleanText(text, scratch_);
    if (style.capitals)
        writer_.Text(ToUpper(clean), style.format);
    else
        writer_.Text(clean, style.format);
}

void OpenTextWriter::Table(const pugi::xml_node& table) {
    shape_ = {};
    Rows(table, 0);
}

void OpenTextWriter::Rows(const pugi::xml_node& holder, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const pugi::xml_node& child : holder.children()) {
        if (Is(child, "table-row")) {
            for (std::int32_t again = Repeats(child, "number-rows-repeated");
                 again > 0 && writer_.Sink().Size() < kMostTableText; --again)
                Row(child);
        } else if (LocalName(child).starts_with("table-") && !Is(child, "table-column")) {
            Rows(child, depth + 1);
        }
    }
}

void OpenTextWriter::Row(const pugi::xml_node& row) {
    writer_.SetFormat({});
    in_cell_ = true;
    for (const pugi::xml_node& cell : row.children()) {
        const bool covered = Is(cell, "covered-table-cell");
        if (!covered && !Is(cell, "table-cell"))
            continue;
        for (std::int32_t again = Repeats(cell, "number-columns-repeated"); again > 0; --again) {
            cell_has_paragraph_ = false;
            if (!covered)
                Blocks(cell, {"table-cell", Attribute(cell, "style-name")});
            writer_.Text(kCell, PlainSlideStyle().run.format);
        }
    }
    in_cell_ = false;
    writer_.End();
}

void OpenTextWriter::Line(std::string_view text) {
    writer_.SetFormat({});
    writer_.Text(CleanText(text, scratch_), PlainSlideStyle().run.format);
    writer_.End();
}

}  // namespace zorvane
