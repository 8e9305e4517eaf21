#include "load/readers/opendocument/open_text.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "load/readers/sink/symbol_fonts.h"
#include "load/readers/slides/slide_look.h"

namespace zorvane {
namespace {

constexpr std::string_view kLine(&kLineInParagraph, 1);
constexpr std::int32_t kMostRepeats = 256;  // of cells and rows that say "again"

constexpr std::size_t kMostTableText = std::size_t{256} << 20;

// What is written about a shape is none of its words.
bool IsComment(const pugi::xml_node& node) {
    const std::string_view name = node.name();
    return LocalName(node).starts_with("annotation") || name == "svg:title" || name == "svg:desc";
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

std::int32_t Repeats(const pugi::xml_node& node, std::string_view attribute) {
    return std::clamp(NumberOf(Attribute(node, attribute), 1), 1, kMostRepeats);
}

}  // namespace

bool OpenTextWriter::HasText(const pugi::xml_node& holder) const {
    return HoldsText(holder, fields_.page > 0, 0);
}

void OpenTextWriter::Blocks(const pugi::xml_node& holder, const OpenShapeStyle& shape) {
    shape_ = shape;
    lists_ = OpenLists();
    list_ = OpenListPlace();
    Walk(holder, 0);
}

void OpenTextWriter::Walk(const pugi::xml_node& holder, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const pugi::xml_node& child : holder.children()) {
        if (Is(child, "p") || Is(child, "h"))
            Paragraph(child);
        else if (Is(child, "list"))
            List(child, depth + 1);
        else if (Is(child, "section"))
            Walk(child, depth + 1);
    }
}

void OpenTextWriter::List(const pugi::xml_node& list, int depth) {
    ForOpenItems(list, styles_, lists_, list_,
                 [&](const pugi::xml_node& item) { Walk(item, depth); });
}

void OpenTextWriter::Format(const pugi::xml_node& paragraph, OpenChars& chars,
                            ParagraphFormat& layout) {
    const auto apply = [&](std::string_view family, std::string_view name) {
        styles_.ApplyText(family, name, chars);
        styles_.ApplyParagraph(family, name, layout);
    };
    chars.format = PlainSlideFormat();
    apply(shape_.family, shape_.name);
    if (list_.counters != nullptr && list_.level > 0)
        apply("presentation", styles_.PresentationOutline(shape_.name, list_.level));
    if (list_.style != nullptr) {
        const OpenListLevel& level = (*list_.style)[list_.level];
        layout.left_indent = level.left_indent.value_or(layout.left_indent);
        layout.first_line_indent = level.first_line_indent.value_or(layout.first_line_indent);
    }
    apply("paragraph", Attribute(paragraph, "style-name"));
}

// An item's number is counted by its first paragraph with text, so that an item which only holds a
// deeper list takes none.
void OpenTextWriter::Label(const CharFormat& format) {
    list_.label_waits = false;
    if (list_.style == nullptr)
        return;
    const std::string label = list_.counters->Next(*list_.style, list_.level, list_.start);
    // A label in the middle of a row would end in a tab, as cells do.
    if (!label.empty() && in_cell_)
        writer_.Text(CleanText(label + " ", scratch_), format);
    else if (!label.empty())
        writer_.ListLabel(CleanText(label, scratch_), format);
}

void OpenTextWriter::Paragraph(const pugi::xml_node& paragraph) {
    OpenChars chars;
    ParagraphFormat layout;
    Format(paragraph, chars, layout);
    blanks_.BeginParagraph();
    if (in_cell_ && cell_has_paragraph_)
        writer_.Text(kLine, chars.format);
    cell_has_paragraph_ = true;
    if (!in_cell_)
        writer_.SetFormat(layout);
    if (list_.label_waits && HasText(paragraph))
        Label(chars.format);
    Inline(paragraph, chars, 0);
    if (!in_cell_)
        writer_.End();
}

void OpenTextWriter::Inline(const pugi::xml_node& node, const OpenChars& style, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            shown_.clear();
            blanks_.Append(child.value(), shown_);
            Write(shown_, style);
        } else if (Is(child, "span")) {
            OpenChars own = style;
            styles_.ApplyText("text", Attribute(child, "style-name"), own);
            Inline(child, own, depth + 1);
        } else if (!IsComment(child) && !Special(child, style)) {
            Inline(child, style, depth + 1);
        }
    }
}

bool OpenTextWriter::Special(const pugi::xml_node& node, const OpenChars& style) {
    if (Is(node, "s"))
        Put(std::string(OpenBlankCount(Attribute(node, "c")), ' '), style);
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

void OpenTextWriter::Put(std::string_view text, const OpenChars& style) {
    if (text == kLine)
        writer_.Text(text, style.format);
    else
        Write(text, style);
    blanks_.Exact();
}

void OpenTextWriter::Write(std::string_view text, const OpenChars& style) {
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
    writer_.BeginRow();
    in_cell_ = true;
    for (const pugi::xml_node& cell : row.children()) {
        const bool covered = Is(cell, "covered-table-cell");
        if (!covered && !Is(cell, "table-cell"))
            continue;
        for (std::int32_t again = Repeats(cell, "number-columns-repeated"); again > 0; --again) {
            cell_has_paragraph_ = false;
            if (!covered)
                Blocks(cell, {"table-cell", Attribute(cell, "style-name")});
            writer_.EndCell(PlainSlideFormat());
        }
    }
    in_cell_ = false;
    writer_.End();
}

void OpenTextWriter::Line(std::string_view text) {
    writer_.SetFormat({});
    writer_.Text(CleanText(text, scratch_), PlainSlideFormat());
    writer_.End();
}

}  // namespace zorvane
