#include "compare/engine/html_text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

#include "common/base/append_format.h"
#include "common/base/unit_search.h"
#include "compare/engine/html_markup.h"

namespace zorvane {
namespace {

constexpr char16_t kCellMark = u'\a';

struct Tag {
    std::string_view name;
    std::string_view mark;
};
constexpr std::size_t kMarkName = 3;  // "ins" and "del"

Tag TagOf(PieceKind kind, CellMark mark) {
    if (mark == CellMark::WholeDeleted)
        return {"del", "a"};
    if (mark == CellMark::WholeAdded)
        return {"ins", "a"};
    switch (kind) {
        case PieceKind::Same:
            break;
        case PieceKind::Deleted:
            return {"del", "w"};
        case PieceKind::Added:
            return {"ins", "w"};
        case PieceKind::ChangedOld:
            return {"del", "c"};
        case PieceKind::ChangedNew:
            return {"ins", "c"};
    }
    return mark == CellMark::Moved ? Tag{"span", "v"} : Tag{};
}

constexpr std::array<std::string_view, 3> kAlignments = {"", "ac", "ar"};

bool HasCells(std::u16string_view text) {
    return FindUnit(text, kCellMark) != std::u16string_view::npos;
}

// A no-break space that came or went looks like any blank, so it is told by its code.
bool TellsNoBreakSpace(PieceKind kind, std::u16string_view text) {
    return kind != PieceKind::Same && text.find(u'\u00A0') != std::u16string_view::npos;
}

// Widest text of each cell; empty for a paragraph that is no table's row.
std::vector<std::size_t> CellWidths(std::u16string_view text) {
    std::vector<std::size_t> widths;
    std::size_t at = 0;
    for (std::size_t end = text.find(kCellMark); end != std::u16string_view::npos;
         end = text.find(kCellMark, at)) {
        widths.push_back(end - at);
        at = end + 1;
    }
    if (!widths.empty() && at < text.size())
        widths.push_back(text.size() - at);
    return widths;
}

std::string ClassesOf(const ParagraphLook* look, bool table) {
    std::string classes = table ? "t" : "";
    if (look == nullptr)
        return classes;
    const auto add = [&](std::string_view name) {
        classes.append(classes.empty() || name.empty() ? "" : " ").append(name);
    };
    add(kAlignments[static_cast<std::size_t>(look->alignment)]);
    add(look->indent > 0 && look->hanging ? "hang" : "");
    add(look->indent > 0 && !table ? "in" : "");
    if (look->heading > 0)
        add(fmt::format("h{}", look->heading));
    return classes;
}

}  // namespace

const ParagraphLook* HtmlText::LookOf(Side side, std::int32_t number) const {
    const DocumentLook* look = number > 0 ? model_.document_looks[side] : nullptr;
    if (look == nullptr)
        return nullptr;
    const auto found = std::lower_bound(
        look->paragraphs.begin(), look->paragraphs.end(), number,
        [](const ParagraphLook& paragraph, std::int32_t n) { return paragraph.number < n; });
    return found != look->paragraphs.end() && found->number == number ? &*found : nullptr;
}

std::size_t HtmlText::PlaceOf(Side side, std::int32_t number) const {
    const bool needed = number > 0 && model_.document_looks[side] != nullptr;
    return needed ? model_.comparison.Lines(side).Start(number - 1) : 0;
}

// Shares of the width by the longest cell of each column. What is too long to matter is cut, so
// that a column of numbers keeps its room beside one of prose.
const std::string& HtmlText::ColumnsOf(Side side, std::int32_t number) {
    // Units, between which a column's share grows with its text.
    constexpr std::size_t kLeastShare = 6;
    constexpr std::size_t kMostShare = 40;
    constexpr std::int32_t kMostRows = 2000;  // that are looked at
    Table& table = tables_[side];
    if (number >= table.first && number <= table.last)
        return table.columns;
    const LineText& lines = model_.comparison.Lines(side);
    std::vector<std::size_t> widths = CellWidths(lines.Text(number - 1, buffer_));
    table.first = table.last = number;
    while (table.last < lines.Count() && table.last - table.first < kMostRows) {
        const std::vector<std::size_t> next = CellWidths(lines.Text(table.last, buffer_));
        if (next.size() != widths.size())
            break;
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], next[i]);
        ++table.last;
    }
    // Room for a short word, unless there are so many columns that it has to be shared.
    const std::size_t part = 100 / std::max<std::size_t>(widths.size(), 1);
    table.columns.clear();
    for (const std::size_t width : widths)
        table.columns +=
            fmt::format("{}minmax(min(5em,{}%),{}fr)", table.columns.empty() ? "" : " ",
                        part > 3 ? part - 3 : part, std::clamp(width, kLeastShare, kMostShare));
    return table.columns;
}

void HtmlText::Open(Side side, std::int32_t number, bool table) {
    const ParagraphLook* look = LookOf(side, number);
    const std::string classes = ClassesOf(look, table);
    page_ += "<div";
    if (!classes.empty())
        AppendFormat(page_, " class=\"{}\"", classes);
    if (table && !ColumnsOf(side, number).empty())
        AppendFormat(page_, " style=\"grid-template-columns:{}\"", ColumnsOf(side, number));
    else if (look != nullptr && look->indent > 0)
        AppendFormat(page_, " style=\"--i:{}\"", look->indent);
    page_ += table ? "><span>" : ">";
}

// The mark behind the last cell has opened one more.
void HtmlText::Close(bool table) {
    constexpr std::string_view kOpenCell = "<span>";
    if (!table) {
        page_ += "</div>";
        return;
    }
    if (std::string_view(page_).ends_with(kOpenCell))
        page_.resize(page_.size() - kOpenCell.size());
    else
        page_ += "</span>";
    page_ += "</div>";
}

// One paragraph may be the whole document.
void HtmlText::Text(std::u16string_view text) {
    WriteInParts(text, stop_, [this](std::u16string_view part) {
        AppendHtmlText(part, page_);
        hand_on_();
    });
}

void HtmlText::LookedWords(const WordsLook& look, std::u16string_view text) {
    page_ += look.bold ? "<strong>" : "";
    page_ += look.italic ? "<em>" : "";
    Text(text);
    page_ += look.italic ? "</em>" : "";
    page_ += look.bold ? "</strong>" : "";
}

void HtmlText::Words(const TextPart& part) {
    if (part.look == nullptr || part.look->words.empty()) {
        Text(part.text);
        return;
    }
    const std::vector<WordsLook>& words = part.look->words;
    auto next = std::upper_bound(
        words.begin(), words.end(), part.place,
        [](std::size_t place, const WordsLook& look) { return place < look.begin; });
    std::size_t at = 0;
    while (at < part.text.size()) {
        const WordsLook look = next == words.begin() ? WordsLook{} : *(next - 1);
        const std::size_t end = next == words.end()
                                    ? part.text.size()
                                    : std::min(part.text.size(), next->begin - part.place);
        LookedWords(look, part.text.substr(at, end - at));
        at = end;
        if (next != words.end())
            ++next;
    }
}

// A mark ends with its last word: blanks behind it belong to it unseen.
void HtmlText::Marked(const TextPart& part, CellMark mark) {
    const Tag tag = TagOf(part.kind, mark);
    const bool trims = tag.name.size() == kMarkName && mark == CellMark::Pieces;
    const std::size_t last = trims ? part.text.find_last_not_of(u' ') : part.text.npos;
    const std::size_t end = last == part.text.npos ? part.text.size() : last + 1;
    if (!tag.name.empty())
        AppendFormat(page_, "<{} class=\"{}\">", tag.name, tag.mark);
    if (TellsNoBreakSpace(part.kind, part.text))
        Text(ToldText(part.kind, part.text.substr(0, end), buffer_));
    else
        Words({part.kind, part.text.substr(0, end), part.look, part.place});
    if (!tag.name.empty())
        page_.append("</").append(tag.name).append(">");
    if (end == part.text.size())
        return;
    AppendFormat(page_, "<{} class=\"z\">", tag.name);
    Text(part.text.substr(end));
    page_.append("</").append(tag.name).append(">");
}

void HtmlText::Part(const TextPart& part, CellMark mark, bool table) {
    std::size_t at = 0;
    while (at < part.text.size()) {
        const std::size_t found = table ? part.text.find(kCellMark, at) : part.text.npos;
        const std::size_t end = std::min(found, part.text.size());
        if (end > at)
            Marked({part.kind, part.text.substr(at, end - at), part.look, part.place + at}, mark);
        if (found == part.text.npos)
            return;
        page_ += "</span><span>";
        at = end + 1;
    }
}

// Cells of both sides stand in each other's place, so that what came for a cell is shown in it.
void HtmlText::PutIntoCells(const TextPart& part, PerSide<std::size_t>& at) {
    std::size_t begin = 0;
    while (begin < part.text.size()) {
        const std::size_t found = part.text.find(kCellMark, begin);
        const std::size_t end = std::min(found, part.text.size());
        const bool original = IsOriginalPiece(part.kind);
        const bool modified = IsModifiedPiece(part.kind);
        const std::size_t cell = std::max(original ? at.original : 0, modified ? at.modified : 0);
        cells_.resize(std::max(cells_.size(), cell + 1));
        if (end > begin)
            cells_[cell].push_back(
                {part.kind, part.text.substr(begin, end - begin), part.look, part.place + begin});
        if (found == part.text.npos)
            return;
        at.original += original ? 1U : 0U;
        at.modified += modified ? 1U : 0U;
        begin = end + 1;
    }
}

void HtmlText::Paragraph(Side side, std::int32_t number, CellMark mark) {
    std::u16string buffer;
    const std::u16string_view text = model_.comparison.Lines(side).Text(number - 1, buffer);
    const bool table = HasCells(text);
    Open(side, number, table);
    Part({PieceKind::Same, text, model_.document_looks[side], PlaceOf(side, number)}, mark, table);
    Close(table);
}

void HtmlText::Pieces(const ChangeText& change, const CutText& text, std::size_t index,
                      PerSide<std::int32_t> first, PerSide<std::int32_t> shown, CellMark mark) {
    const auto pieces = text.PiecesOf(index);
    const Side side = shown.modified > 0 ? Side::Modified : Side::Original;
    const bool table =
        shown[side] > 0 && std::any_of(pieces.begin(), pieces.end(), [&](const CutPiece& piece) {
            return HasCells(text.TextOf(change, piece));
        });
    Open(side, shown[side], table);
    cells_.assign(1, {});
    PerSide<std::size_t> at{0, 0};
    for (const CutPiece& piece : pieces) {
        if (!stop_.KeepGoing(kUnitsOfRecord))
            return;  // half a page is no report
        const TextPart part{
            piece.kind, text.TextOf(change, piece), model_.document_looks[piece.side],
            PlaceOf(piece.side, first[piece.side]) + static_cast<std::size_t>(piece.begin)};
        if (table)
            PutIntoCells(part, at);
        else
            Marked(part, mark);
    }
    for (std::size_t cell = 0; cell < cells_.size(); ++cell) {
        page_ += cell > 0 ? "</span><span>" : "";
        for (const TextPart& part : cells_[cell])
            Marked(part, mark);
    }
    if (BreakStandsOut(text, index)) {
        constexpr std::u16string_view kPilcrow = u"\u00B6";
        Marked({text.Paragraph(index).end, kPilcrow}, mark);
    }
    Close(table);
}

}  // namespace zorvane
