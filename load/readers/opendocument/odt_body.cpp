#include "load/readers/opendocument/odt_body.h"

#include <algorithm>
#include <array>
#include <utility>

#include "load/readers/sink/symbol_fonts.h"
#include "load/readers/word_readers.h"

namespace zorvane {
namespace {

// Elements whose children are paragraphs and the like.
bool IsContainer(std::string_view name) {
    constexpr std::array<std::string_view, 19> kNames = {"section",
                                                         "table-of-content",
                                                         "index-body",
                                                         "index-title",
                                                         "illustration-index",
                                                         "table-index",
                                                         "object-index",
                                                         "user-index",
                                                         "alphabetical-index",
                                                         "bibliography",
                                                         "text-box",
                                                         "page",
                                                         "text",
                                                         "presentation",
                                                         "drawing",
                                                         "spreadsheet",
                                                         "g",
                                                         "a",
                                                         "numbered-paragraph"};
    return IsOneOf(name, kNames);
}

// Word processors want a paragraph behind a last table: this one is none of the text.
bool IsTableEnd(const pugi::xml_node& paragraph) {
    bool marked = false;
    for (const pugi::xml_node& child : paragraph.children()) {
        const std::string_view name = LocalName(child);
        if (!name.starts_with("bookmark") && !name.starts_with("change"))
            return false;
        marked = marked || Attribute(child, "name") == kTableEndMark;
    }
    return marked;
}

constexpr std::size_t kMostAreas = 64;            // at work in one row
constexpr std::int32_t kMostColumns = 1'000'000;  // beyond all tables

std::int32_t Count(const pugi::xml_node& node, std::string_view attribute) {
    return std::clamp(NumberOf(Attribute(node, attribute), 1), 1, kMostColumns);
}

bool IsHiddenByItself(const pugi::xml_node& node) {
    const std::string_view display = Attribute(node, "display");
    return display == "none" || (display == "condition" && Attribute(node, "is-hidden") == "true");
}

}  // namespace

bool IsOdtShape(std::string_view name) {
    constexpr std::array<std::string_view, 13> kNames = {
        "frame", "custom-shape", "g",    "rect",    "ellipse",   "circle", "polygon",
        "line",  "polyline",     "path", "caption", "connector", "measure"};
    return IsOneOf(name, kNames);
}

// False ends the walk: the monitor's wish, too much text, too deep an element.
bool OdtBody::Enter() {
    constexpr int kStep = 1024;
    if (error_ != ReadError::None)
        return false;
    if (depth_ >= kMaxDepth)
        error_ = ReadError::Damaged;
    else if (writer_.Sink().Size() > kMaxPartBytes)
        error_ = ReadError::TooLarge;
    else if ((entered_ = (entered_ + 1) % kStep) == 0 && !monitor_.Progress(done_, total_))
        error_ = ReadError::Cancelled;
    return error_ == ReadError::None;
}

void OdtBody::Blocks(const pugi::xml_node& parent, OpenStyles& styles) {
    styles_ = &styles;
    const pugi::xml_node blocks = parent.first_child();
    done_ = 0;
    total_ = std::distance(blocks.begin(), blocks.end()) + 1;
    Container(parent);
}

void OdtBody::Container(const pugi::xml_node& node) {
    if (!Enter())
        return;
    ++depth_;
    constexpr int kBody = 2;  // office:text in office:body
    for (const pugi::xml_node& child : node.children()) {
        Block(child);
        if (depth_ == kBody && done_ + 1 < total_)
            ++done_;
    }
    --depth_;
}

void OdtBody::Block(const pugi::xml_node& node) {
    const std::string_view name = LocalName(node);
    if (name == "p" || name == "h") {
        Paragraph(node, name == "h");
    } else if (name == "list") {
        List(node);
    } else if (name == "table") {
        Table(node);
    } else if (IsOdtShape(name)) {
        beside_.Shape(node);
        TakeShape(node);
    } else if (name == "tracked-changes") {
        beside_.TakeChanges(node);
    } else if (IsContainer(name)) {
        if (IsHiddenByItself(node))
            beside_.Hidden(node, "section");
        else
            Container(node);
    }
}

void OdtBody::UseMasterPage(const std::string& name) {
    if (!started_)
        starts_on_default_ = name.empty();
    started_ = true;
    if (!name.empty() &&
        std::find(master_pages_.begin(), master_pages_.end(), name) == master_pages_.end())
        master_pages_.push_back(name);
}

void OdtBody::Paragraph(const pugi::xml_node& node, bool heading) {
    if (!Enter())
        return;
    const OpenParagraphStyle& style = styles_->Paragraph(Attribute(node, "style-name"));
    UseMasterPage(style.master_page);
    beside_.Paragraph(node, *styles_, style.chars);
    if (IsHiddenParagraph(node, style.chars) || IsTableEnd(node))
        return;
    const OpenBlanks outer = blanks_;
    const std::size_t anchored = anchored_.size();
    blanks_.BeginParagraph();
    ParagraphFormat format = style.format;
    std::string label;
    Label(node, heading, style, format, label);
    brackets_.BeginParagraph();  // of a cell as well: what stands in front parts words
    writer_.BeginParagraph(format);
    if (!label.empty())
        writer_.ListLabel(CleanText(label), style.chars.format);
    Inline(node, style.chars);
    writer_.EndParagraph();
    blanks_ = outer;
    Anchored(anchored);
}

// Frames are shown behind the paragraph, or the table row, that holds them.
void OdtBody::Anchored(std::size_t from) {
    if (open_rows_ > 0)
        return;
    const std::vector<pugi::xml_node> shapes(anchored_.begin() + static_cast<std::ptrdiff_t>(from),
                                             anchored_.end());
    anchored_.resize(from);
    const OpenListPlace outer = list_;
    list_ = OpenListPlace();
    for (const pugi::xml_node& shape : shapes)
        Shape(shape);
    list_ = outer;
}

void OdtBody::Label(const pugi::xml_node& node, bool heading, const OpenParagraphStyle& style,
                    ParagraphFormat& format, std::string& label) {
    const OpenListLevel* level = nullptr;
    if (list_.label_waits && list_.style != nullptr) {
        label = list_.counters->Next(*list_.style, list_.level, list_.start);
        level = &(*list_.style)[list_.level];
    } else if (heading && list_.counters == nullptr &&
               Attribute(node, "is-list-header") != "true") {
        const std::int32_t depth = NumberOf(Attribute(node, "outline-level"), 1);
        const auto place = static_cast<std::size_t>(
            std::clamp(depth, 1, static_cast<std::int32_t>(kListLevels)) - 1);
        std::optional<std::int32_t> start;
        if (Attribute(node, "restart-numbering") == "true")
            start = NumberOf(Attribute(node, "start-value"), 1);
        label = outline_.Next(styles_->Outline(), place, start);
        level = &styles_->Outline()[place];
    } else if (list_.counters != nullptr && list_.style != nullptr) {
        format.left_indent = (*list_.style)[list_.level].left_indent.value_or(format.left_indent);
    }
    list_.label_waits = false;
    const bool own_indent = style.format.left_indent != 0;
    if (level == nullptr || own_indent)
        return;
    format.left_indent = level->left_indent.value_or(format.left_indent);
    format.first_line_indent = level->first_line_indent.value_or(format.first_line_indent);
}

void OdtBody::List(const pugi::xml_node& node) {
    if (!Enter())
        return;
    ++depth_;
    ForOpenItems(node, *styles_, lists_, list_,
                 [&](const pugi::xml_node& item) { Container(item); });
    --depth_;
}

void OdtBody::Table(const pugi::xml_node& table) {
    if (!Enter())
        return;
    if (IsHiddenByItself(table))
        return beside_.Hidden(table, "table");
    const OpenListPlace outer = std::exchange(list_, {});
    const std::vector<Area> outer_areas = std::exchange(areas_, {});
    TableRows(table);
    areas_ = outer_areas;
    list_ = outer;
}

void OdtBody::TableRows(const pugi::xml_node& parent) {
    if (!Enter())
        return;
    ++depth_;
    for (const pugi::xml_node& node : parent.children()) {
        const std::string_view name = LocalName(node);
        if (name == "table-row")
            Row(node);
        else if (name == "table-header-rows" || name == "table-rows" ||
                 (name == "table-row-group" && Attribute(node, "display") != "false"))
            TableRows(node);
    }
    --depth_;
}

// How often a row or cell stands there. Empty ones fill a sheet to its edge by the million.
std::int32_t OdtBody::Repeats(const pugi::xml_node& node, std::string_view attribute, bool filled) {
    constexpr std::int32_t kMost = 1000;
    const std::int32_t told = std::clamp(NumberOf(Attribute(node, attribute), 1), 1, kMost);
    const std::int32_t repeats = filled ? std::min(told, std::max(repeats_left_, 1)) : 1;
    repeats_left_ -= repeats - 1;
    return repeats;
}

void OdtBody::Row(const pugi::xml_node& row) {
    if (IsHiddenRow(row))
        return beside_.Hidden(row, "row");
    if (IsDeletedRow(row))
        return;
    const bool filled = std::any_of(row.begin(), row.end(), [](const pugi::xml_node& cell) {
        return !cell.first_child().empty();
    });
    const std::int32_t repeats = Repeats(row, "number-rows-repeated", filled);
    for (std::int32_t i = 0; i < repeats && Enter(); ++i) {
        const std::size_t anchored = anchored_.size();
        ++open_rows_;
        writer_.BeginRow();
        Cells(row);
        writer_.EndRow();
        --open_rows_;
        Anchored(anchored);
    }
}

void OdtBody::Cells(const pugi::xml_node& row) {
    PlaceInRow place;
    for (const pugi::xml_node& cell : row.children()) {
        if (Is(cell, "table-cell") || Is(cell, "covered-table-cell"))
            CellsAt(place, cell);
    }
    for (Area& area : areas_)
        --area.rows;
    std::erase_if(areas_, [](const Area& area) { return area.rows == 0; });
}

// Of what a cell covers, nothing stands at its right, and in each row below one cell.
void OdtBody::CellsAt(PlaceInRow& place, const pugi::xml_node& cell) {
    const bool hidden = Is(cell, "covered-table-cell");
    const std::int32_t told = Count(cell, "number-columns-repeated");
    const std::int32_t first = place.column;
    place.column = std::min(first + told, kMostColumns);
    if (hidden && place.covered > 0) {
        place.covered -= told;
        return;
    }
    const bool filled = !cell.first_child().empty() || cell.next_sibling();
    const std::int32_t repeats = Repeats(cell, "number-columns-repeated", filled);
    for (std::int32_t i = 0; i < repeats && Enter(); ++i) {
        if (!hidden || !LiesInArea(first + i))
            Cell(cell);
    }
    if (hidden)
        return;
    place.covered = Count(cell, "number-columns-spanned") - 1;
    if (place.covered > 0 && areas_.size() < kMostAreas)
        areas_.push_back({first, place.covered, Count(cell, "number-rows-spanned")});
}

// Behind the first column of what a cell above covers.
bool OdtBody::LiesInArea(std::int32_t column) const {
    return std::any_of(areas_.begin(), areas_.end(), [column](const Area& area) {
        return column > area.column && column <= area.column + area.more_columns;
    });
}

void OdtBody::Cell(const pugi::xml_node& cell) {
    writer_.BeginCell();
    if (!Is(cell, "covered-table-cell"))
        Container(cell);
    writer_.EndCell(styles_->Paragraph({}).chars.format);
}

// One that stands in a cell beside its paragraphs waits for the end of the row.
void OdtBody::TakeShape(const pugi::xml_node& shape) {
    if (open_rows_ > 0)
        anchored_.push_back(shape);
    else
        Shape(shape);
}

void OdtBody::Shape(const pugi::xml_node& shape) {
    if (!Enter())
        return;
    ++depth_;
    for (const pugi::xml_node& child : shape.children()) {
        const std::string_view name = LocalName(child);
        if (name == "p" || name == "h" || name == "list" || name == "table" || name == "text-box" ||
            IsOdtShape(name))
            Block(child);
    }
    --depth_;
}

}  // namespace zorvane
