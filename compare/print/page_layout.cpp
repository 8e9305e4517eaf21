#include "compare/print/page_layout.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "compare/document/rtf_output.h"
#include "compare/document/table_columns.h"
#include "compare/print/line_painter.h"

namespace zorvane {
namespace {

constexpr double kCellPadding = 100;
constexpr double kBorder = 10;
constexpr std::ptrdiff_t kMostColumns = 63;  // a wider row is shown as text with tabs
constexpr int kParagraphsUnasked = 32;

// As RTF tells it: nothing, at least, exactly (negative), or a multiple of 240ths.
double LineHeight(const ParagraphFormat& format, const FontHeight& height) {
    const double natural = height.ascent + height.descent;
    if (format.line_spacing_multiple && format.line_spacing > 0)
        return natural * format.line_spacing / 240;
    if (format.line_spacing < 0)
        return -format.line_spacing;
    return std::max<double>(natural, format.line_spacing);
}

std::ptrdiff_t CellsOf(std::u16string_view paragraph) {
    return std::count(paragraph.begin(), paragraph.end(), kRtfCell);
}

double HeightOf(const ParagraphFormat& format, const std::vector<PrintLine>& lines) {
    double height = 0;
    for (const PrintLine& line : lines)
        height += LineHeight(format, line.height);
    return height;
}

}  // namespace

struct PageLayout::Cell {
    Cell(TextMeasurer& measurer, PrintParagraph own, double left_edge, double right_edge)
        : paragraph(std::move(own)),
          left(left_edge),
          right(right_edge),
          measure(measurer, paragraph),
          room(*paragraph.format, TextWidth()) {}

    double TextWidth() const { return std::max(right - left - 2 * kCellPadding, 1.0); }
    double LineHeightAt(std::size_t line) const {
        return LineHeight(*paragraph.format, lines[line].height);
    }
    bool Done() const { return next >= lines.size(); }

    PrintParagraph paragraph;
    double left;
    double right;
    ParagraphMeasure measure;
    ParagraphRoom room;
    std::vector<PrintLine> lines;
    std::size_t next = 0;  // the first line that is not on a page yet
};

bool PageLayout::NewPage() {
    y_ = setup_.top;
    ++page_;
    status_ = calls_->new_page(page_);
    return status_.ok() && KeepGoing();
}

bool PageLayout::KeepGoing() {
    until_asked_ = kParagraphsUnasked;
    const double size = std::max<double>(static_cast<double>(text_.text.size()), 1);
    if (status_.ok() && !calls_->keep_going(static_cast<double>(place_) / size))
        status_ = Failure{kPrintStopped};
    return status_.ok();
}

Result<std::int32_t> PageLayout::Run(const PageCalls& calls) {
    calls_ = &calls;
    page_ = 0;
    page_due_ = false;
    status_ = Status::Ok();
    PrintReader reader(text_);
    PrintParagraph paragraph;
    std::vector<std::int32_t> ends;
    std::size_t table_end = 0;
    NewPage();
    for (place_ = 0; status_.ok() && reader.Next(paragraph); place_ = reader.Place()) {
        if (--until_asked_ < 0 && !KeepGoing())
            break;
        if (!IsRow(paragraph.text)) {
            PlaceParagraph(paragraph);
            continue;
        }
        if (place_ >= table_end) {
            table_end = TableEnd(place_);
            ends = CellEnds(std::u16string_view(text_.text).substr(place_, table_end - place_),
                            static_cast<std::int32_t>(setup_.TextWidth()));
        }
        PlaceRow(paragraph, ends);
    }
    if (!status_.ok())
        return status_.failure();
    return page_;
}

bool PageLayout::IsRow(std::u16string_view paragraph) const {
    const std::ptrdiff_t cells = CellsOf(paragraph);
    return cells > 0 && cells <= kMostColumns;
}

std::size_t PageLayout::TableEnd(std::size_t begin) const {
    const std::u16string_view text = text_.text;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find(u'\r', begin), text.size());
        if (!IsRow(text.substr(begin, end - begin)))
            break;
        begin = std::min(end + 2, text.size());
    }
    return begin;
}

// How many lines from `first` on stand on this page: not the first of several alone, and not so
// many that the last is left alone.
std::size_t PageLayout::LinesThatFit(const ParagraphFormat& format, std::size_t first) const {
    double used = 0;
    std::size_t end = first;
    while (end < lines_.size()) {
        used += LineHeight(format, lines_[end].height);
        if (used > Room())
            break;
        ++end;
        if (lines_[end - 1].ends_page)
            return end;
    }
    std::size_t count = end - first;
    const std::size_t left = lines_.size() - end;
    const bool alone = count == 1 || (count == 2 && left == 1);
    if (left == 1 && count >= 3)
        --count;
    else if (left > 0 && first == 0 && alone && !Fresh())
        count = 0;
    return first + (count == 0 && Fresh() ? 1 : count);
}

// Where the line stands that comes next; the height of the page goes on below it.
LinePlace PageLayout::TakeLine(const ParagraphFormat& format, const FontHeight& extent) {
    const double height = LineHeight(format, extent);
    const LinePlace place{setup_.left, setup_.TextWidth(), y_, y_ + height - extent.descent,
                          y_ + height};
    y_ += height;
    return place;
}

void PageLayout::PlaceParagraph(const PrintParagraph& paragraph) {
    const ParagraphFormat& format = *paragraph.format;
    const ParagraphMeasure measure(measurer_, paragraph);
    const ParagraphRoom room(format, setup_.TextWidth());
    if (!breaker_.Break(measure, room, lines_, [this] { return KeepGoing(); }))
        return;
    if (!Fresh())
        y_ += std::max(format.space_before, 0);
    std::optional<LinePainter> painter;
    if (painter_ != nullptr)
        painter.emplace(*painter_, measure, room);
    if (PlaceLines(format, painter ? &*painter : nullptr))
        y_ += std::max(format.space_after, 0);
}

// False where nothing follows: after a stop, and where an empty line was to begin a page.
bool PageLayout::PlaceLines(const ParagraphFormat& format, LinePainter* painter) {
    for (std::size_t at = 0; at < lines_.size();) {
        const bool nothing_behind = at + 1 == lines_.size() && lines_[at].begin == lines_[at].end;
        if ((page_due_ && nothing_behind) || !TurnDuePage())
            return false;
        for (const std::size_t end = LinesThatFit(format, at); at < end; ++at) {
            const LinePlace place = TakeLine(format, lines_[at].height);
            if (painter != nullptr)
                painter->Paint(lines_[at], place);
        }
        page_due_ = at > 0 && lines_[at - 1].ends_page;
        if (!page_due_ && at < lines_.size() && !NewPage())
            return false;
    }
    return true;
}

bool PageLayout::TurnDuePage() {
    return !std::exchange(page_due_, false) || NewPage();
}

// The cells of a row with their lines; nothing after a stop.
std::vector<std::unique_ptr<PageLayout::Cell>> PageLayout::BrokenCells(
    const PrintParagraph& row, const std::vector<std::int32_t>& ends) {
    std::vector<std::unique_ptr<Cell>> cells;
    const auto size = static_cast<std::int32_t>(row.text.size());
    for (std::int32_t begin = 0; begin < size;) {
        const auto end = static_cast<std::int32_t>(
            std::min(row.text.find(kRtfCell, static_cast<std::size_t>(begin)), row.text.size()));
        // What stands behind the last cell has the room of a cell behind it.
        const std::size_t column = cells.size();
        const double left = column == 0 ? 0 : cells.back()->right;
        const double right = column < ends.size() ? ends[column] : setup_.TextWidth();
        cells.push_back(std::make_unique<Cell>(measurer_, row.Part(begin, end), left,
                                               std::max(right, left + 1)));
        Cell& cell = *cells.back();
        if (!breaker_.Break(cell.measure, cell.room, cell.lines, [this] { return KeepGoing(); }))
            return {};
        begin = end + 1;
    }
    return cells;
}

void PageLayout::PlaceRow(const PrintParagraph& row, const std::vector<std::int32_t>& ends) {
    if (!TurnDuePage())
        return;
    const std::vector<std::unique_ptr<Cell>> cells = BrokenCells(row, ends);
    double height = 0;
    for (const std::unique_ptr<Cell>& cell : cells)
        height = std::max(height, HeightOf(*cell->paragraph.format, cell->lines));
    if (height > Room() && height <= setup_.TextHeight() && !NewPage())
        return;
    const auto left = [&cells] {
        return std::any_of(cells.begin(), cells.end(),
                           [](const auto& cell) { return !cell->Done(); });
    };
    while (left()) {
        const double before = y_;
        PlaceRowPart(cells);
        if ((left() || y_ == before) && !NewPage())
            return;
    }
}

// As many lines of a cell as this page takes; where they end.
double PageLayout::PlaceCellPart(Cell& cell, double top) {
    std::optional<LinePainter> painter;
    if (painter_ != nullptr)
        painter.emplace(*painter_, cell.measure, cell.room);
    bool first = Fresh();  // one line at least on a page of its own
    double y = top;
    for (; !cell.Done(); ++cell.next) {
        const double height = cell.LineHeightAt(cell.next);
        if (!std::exchange(first, false) && y + height > top + Room())
            break;
        const PrintLine& line = cell.lines[cell.next];
        if (painter)
            painter->Paint(line, {setup_.left + cell.left + kCellPadding, cell.TextWidth(), y,
                                  y + height - line.height.descent, y + height});
        y += height;
    }
    return y;
}

// What this page takes of the row, and the edges around it.
void PageLayout::PlaceRowPart(const std::vector<std::unique_ptr<Cell>>& cells) {
    const double top = y_;
    double bottom = top;
    for (const std::unique_ptr<Cell>& cell : cells)
        bottom = std::max(bottom, PlaceCellPart(*cell, top));
    y_ = bottom;
    if (painter_ == nullptr || bottom == top)
        return;
    const double left = setup_.left;
    const double right = left + cells.back()->right;
    for (const double y : {top, bottom})
        painter_->DrawLine({{left, y}, {right, y}, kBorder, {}, StrokeStyle::Solid});
    painter_->DrawLine({{left, top}, {left, bottom}, kBorder, {}, StrokeStyle::Solid});
    for (const std::unique_ptr<Cell>& cell : cells) {
        const double x = left + cell->right;
        painter_->DrawLine({{x, top}, {x, bottom}, kBorder, {}, StrokeStyle::Solid});
    }
}

}  // namespace zorvane
