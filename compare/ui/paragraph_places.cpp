// The way between positions and points of a laid out block.
#include <algorithm>
#include <cmath>
#include <utility>

#include <QGlyphRun>

#include "compare/ui/paragraph_layout.h"

namespace zorvane {
namespace {

constexpr double kSamePlace = 0.5;
constexpr double kSameStop = 0.01;

// Left edges of the letters of a stretch, in no order.
std::vector<double> LeftEdges(const QTextLine& line, std::int32_t begin, std::int32_t length) {
    std::vector<double> edges;
    for (const QGlyphRun& run : line.glyphRuns(begin, length)) {
        for (const QPointF& place : run.positions())
            edges.push_back(place.x());
    }
    return edges;
}

}  // namespace

double ParagraphLayout::Ascent() const {
    const QTextLine line = cells_.front().layout->lineAt(0);
    return line.isValid() ? line.y() + line.ascent() : room_above_;
}

double ParagraphLayout::FirstMiddle() const {
    const std::vector<Line>& lines = cells_.front().lines;
    return lines.empty() ? room_above_ : lines.front().top + lines.front().height / 2;
}

// `behind_preedit`: which side of the composed text the place of composing itself stands for.
std::int32_t ParagraphLayout::ToCell(const Cell& cell, std::int32_t position,
                                     bool behind_preedit) const {
    const bool composing =
        preedit_length_ > 0 && preedit_at_ >= cell.first && preedit_at_ <= cell.first + cell.length;
    const bool shifted = position > preedit_at_ || (position == preedit_at_ && behind_preedit);
    return position - cell.first + (composing && shifted ? preedit_length_ : 0);
}

std::int32_t ParagraphLayout::FromCell(const Cell& cell, std::int32_t at) const {
    const bool composing =
        preedit_length_ > 0 && preedit_at_ >= cell.first && preedit_at_ <= cell.first + cell.length;
    const std::int32_t begin = preedit_at_ - cell.first;
    if (composing && at > begin)
        at = std::max(begin, at - preedit_length_);
    return cell.first + at;
}

const ParagraphLayout::Cell& ParagraphLayout::CellOf(std::int32_t position) const {
    const auto behind =
        std::upper_bound(cells_.begin(), cells_.end(), position,
                         [](std::int32_t place, const Cell& cell) { return place < cell.first; });
    return behind == cells_.begin() ? cells_.front() : *std::prev(behind);
}

std::int32_t ParagraphLayout::PositionAt(QPointF point) const {
    const Cell* cell = &cells_.front();
    for (const Cell& other : cells_) {
        if (other.x <= point.x())
            cell = &other;
    }
    std::int32_t number = 0;
    const auto count = static_cast<std::int32_t>(cell->lines.size());
    while (number + 1 < count) {
        const Line& line = cell->lines[static_cast<std::size_t>(number)];
        if (point.y() < line.top + line.height)
            break;
        ++number;
    }
    const QTextLine line = cell->layout->lineAt(number);
    if (!line.isValid())
        return cell->first;
    return FromCell(*cell, HitLine(*cell, line, point.x()));
}

// Where the caret can stand on a line, by the cell's positions.
std::vector<ParagraphLayout::Stop> ParagraphLayout::StopsOf(const Cell& cell,
                                                            const QTextLine& line) const {
    std::vector<Stop> stops;
    const bool last = line.lineNumber() + 1 >= cell.layout->lineCount();
    const int end = line.textStart() + line.textLength() - (last ? 0 : 1);
    for (int at = line.textStart(); at <= end; ++at) {
        if (cell.layout->isValidCursorPosition(at))
            stops.push_back({line.cursorToX(at), at});
    }
    return stops;
}

// In text of both directions the letter that is hit and the place where the caret shows may lie
// apart; the nearest place where it shows is what a click means.
std::int32_t ParagraphLayout::HitLine(const Cell& cell, const QTextLine& line, double x) const {
    if (bidi_) {
        const std::vector<Stop> stops = StopsOf(cell, line);
        const auto nearest =
            std::min_element(stops.begin(), stops.end(), [&](const Stop& one, const Stop& other) {
                return std::abs(one.x - x) < std::abs(other.x - x);
            });
        return nearest == stops.end() ? line.textStart() : nearest->at;
    }
    int at = line.xToCursor(x);
    // The end of a wrapped line is the begin of the next one; a click stays on the line it hit.
    const bool last = line.lineNumber() + 1 >= cell.layout->lineCount();
    if (!last && at >= line.textStart() + line.textLength())
        at = cell.layout->previousCursorPosition(line.textStart() + line.textLength());
    return std::max(at, line.textStart());
}

// To the next place where the caret shows on this side, or on the line before or behind.
std::int32_t ParagraphLayout::BidiStep(const Cell& cell, std::int32_t at, bool right) const {
    const QTextLine line = cell.layout->lineForTextPosition(at);
    if (!line.isValid())
        return -1;
    const double x = line.cursorToX(at);
    const auto nearer = [right](const Stop& one, const Stop& other) {
        return right ? one.x < other.x : one.x > other.x;
    };
    std::vector<Stop> stops = StopsOf(cell, line);
    std::erase_if(stops, [&](const Stop& stop) {
        return right ? stop.x <= x + kSameStop : stop.x >= x - kSameStop;
    });
    const auto best = std::min_element(stops.begin(), stops.end(), nearer);
    if (best != stops.end())
        return best->at;
    const int number = line.lineNumber() + (right != right_to_left_ ? 1 : -1);
    if (number < 0 || number >= cell.layout->lineCount())
        return -1;
    const std::vector<Stop> others = StopsOf(cell, cell.layout->lineAt(number));
    const auto edge = std::min_element(others.begin(), others.end(), nearer);
    return edge == others.end() ? -1 : edge->at;
}

QRectF ParagraphLayout::CaretIn(const Cell& cell, std::int32_t at) const {
    const QTextLine line = cell.layout->lineForTextPosition(at);
    if (!line.isValid())
        return {cell.x, room_above_, 0, height_ - room_above_ - room_below_};
    return {line.cursorToX(at), line.y(), 0, line.height()};
}

QRectF ParagraphLayout::CaretRect(std::int32_t position) const {
    const Cell& cell = CellOf(position);
    return CaretIn(cell, ToCell(cell, position, false));
}

QRectF ParagraphLayout::PreeditCaretRect() const {
    const Cell& cell = CellOf(preedit_at_);
    return CaretIn(cell, ToCell(cell, preedit_at_, false) + preedit_caret_);
}

// By the glyphs, since the edges of letters that the layout tells belong to the caret: where two
// directions meet they are another letter's. A letter reaches to the next one to its right.
void ParagraphLayout::AddBidiBoxes(const QTextLine& line, std::int32_t begin, std::int32_t end,
                                   RangeBox box, std::vector<RangeBox>& boxes) {
    std::vector<double> edges = LeftEdges(line, line.textStart(), line.textLength());
    if (edges.empty())
        return;
    std::sort(edges.begin(), edges.end());
    edges.push_back(edges.front() + line.horizontalAdvance());
    std::vector<std::pair<double, double>> parts;
    for (const double left : LeftEdges(line, begin, end - begin)) {
        const auto next = std::upper_bound(edges.begin(), edges.end(), left + kSameStop);
        if (next != edges.end())
            parts.emplace_back(left, *next);
    }
    std::sort(parts.begin(), parts.end());
    const std::size_t before = boxes.size();
    for (const auto& [left, right] : parts) {
        if (boxes.size() > before && left <= boxes.back().rect.right() + kSamePlace) {
            boxes.back().rect.setRight(std::max(boxes.back().rect.right(), right));
            continue;
        }
        box.rect.setLeft(left);
        box.rect.setRight(right);
        boxes.push_back(box);
    }
}

// `begin` and `end` are positions of the cell's layout.
void ParagraphLayout::AddBoxes(const Cell& cell, std::int32_t begin, std::int32_t end, EndTrim trim,
                               std::vector<RangeBox>& boxes) const {
    const QString text = cell.layout->text();
    for (int number = 0; number < cell.layout->lineCount(); ++number) {
        const QTextLine line = cell.layout->lineAt(number);
        std::int32_t from = std::max(begin, line.textStart());
        std::int32_t to = std::min(end, line.textStart() + line.textLength());
        if (trim == EndTrim::Blanks) {
            while (from < to && text.at(from).isSpace())
                ++from;
            while (from < to && text.at(to - 1).isSpace())
                --to;
        }
        if (from >= to)
            continue;
        const Line& place = cell.lines[static_cast<std::size_t>(number)];
        RangeBox box;
        box.rect = QRectF(0, place.top, 0, place.height);
        box.baseline = line.y() + line.ascent();
        box.ascent = line.ascent();
        box.natural_top = line.y();
        box.natural_height = line.height();
        if (bidi_) {
            AddBidiBoxes(line, from, to, box, boxes);
            continue;
        }
        box.rect.setLeft(line.cursorToX(from));
        // The trailing edge, because the end of a line is no place on it.
        box.rect.setRight(line.cursorToX(to - 1, QTextLine::Trailing));
        boxes.push_back(box);
    }
}

std::vector<RangeBox> ParagraphLayout::Boxes(std::int32_t first, std::int32_t length,
                                             EndTrim trim) const {
    std::vector<RangeBox> boxes;
    for (const Cell& cell : cells_) {
        const std::int32_t from = std::max(first, cell.first);
        const std::int32_t to = std::min(first + length, cell.first + cell.length);
        if (from < to)
            AddBoxes(cell, ToCell(cell, from, true), ToCell(cell, to, false), trim, boxes);
    }
    return boxes;
}

std::vector<RangeBox> ParagraphLayout::PreeditBoxes() const {
    std::vector<RangeBox> boxes;
    if (preedit_length_ == 0)
        return boxes;
    const Cell& cell = CellOf(preedit_at_);
    const std::int32_t begin = preedit_at_ - cell.first;
    AddBoxes(cell, begin, begin + preedit_length_, EndTrim::No, boxes);
    return boxes;
}

std::int32_t ParagraphLayout::VisualStep(std::int32_t position, bool right) const {
    const Cell& cell = CellOf(position);
    const int at = ToCell(cell, position, right);
    if (bidi_) {
        const std::int32_t step = BidiStep(cell, at, right);
        if (step >= 0)
            return FromCell(cell, step);
    } else {
        const int next =
            right ? cell.layout->nextCursorPosition(at) : cell.layout->previousCursorPosition(at);
        if (next != at)
            return FromCell(cell, next);
    }
    // Beyond a cell's edge comes its neighbour.
    const auto index = static_cast<std::size_t>(&cell - cells_.data());
    if (right && index + 1 < cells_.size())
        return cells_[index + 1].first;
    if (!right && index > 0)
        return cells_[index - 1].first + cells_[index - 1].length;
    return -1;
}

std::int32_t ParagraphLayout::LineCount() const {
    std::int32_t count = 0;
    for (const Cell& cell : cells_)
        count += cell.layout->lineCount();
    return count;
}

ParagraphLayout::LinePlace ParagraphLayout::PlaceOf(std::int32_t line) const {
    for (const Cell& cell : cells_) {
        if (line < cell.layout->lineCount())
            return {&cell, line};
        line -= cell.layout->lineCount();
    }
    return {&cells_.back(), cells_.back().layout->lineCount() - 1};
}

std::int32_t ParagraphLayout::LineOf(std::int32_t position) const {
    const Cell& own = CellOf(position);
    std::int32_t line = 0;
    for (const Cell& cell : cells_) {
        if (&cell == &own)
            break;
        line += cell.layout->lineCount();
    }
    const QTextLine found = own.layout->lineForTextPosition(ToCell(own, position, false));
    return line + (found.isValid() ? found.lineNumber() : 0);
}

std::int32_t ParagraphLayout::LineStart(std::int32_t line) const {
    const LinePlace place = PlaceOf(line);
    return FromCell(*place.cell, place.cell->layout->lineAt(place.line).textStart());
}

std::int32_t ParagraphLayout::LineEnd(std::int32_t line) const {
    const LinePlace place = PlaceOf(line);
    const QTextLine found = place.cell->layout->lineAt(place.line);
    const int end = found.textStart() + found.textLength();
    if (place.line + 1 >= place.cell->layout->lineCount())
        return FromCell(*place.cell, end);
    return FromCell(*place.cell,
                    std::max(found.textStart(), place.cell->layout->previousCursorPosition(end)));
}

QRectF ParagraphLayout::LineRect(std::int32_t line) const {
    const LinePlace place = PlaceOf(line);
    const Line& box = place.cell->lines[static_cast<std::size_t>(std::max(place.line, 0))];
    return {place.cell->x, box.top, place.cell->width, box.height};
}

}  // namespace zorvane
