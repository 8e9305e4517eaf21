// Paints a laid out block: its text, the underlines that Qt lacks, the borders of cells.
#include <algorithm>

#include "compare/ui/paragraph_layout.h"

namespace zorvane {
namespace {

Qt::PenStyle PenStyleOf(Underline kind) {
    switch (kind) {
        case Underline::ThickDotted:
            return Qt::DotLine;
        case Underline::ThickDash:
        case Underline::ThickLongDash:
            return Qt::DashLine;
        case Underline::ThickDashDot:
            return Qt::DashDotLine;
        case Underline::ThickDashDotDot:
            return Qt::DashDotDotLine;
        default:
            return Qt::SolidLine;
    }
}

}  // namespace

void ParagraphLayout::Draw(QPainter& painter, QPointF origin,
                           const QList<QTextLayout::FormatRange>& selections,
                           const QRectF& clip) const {
    if (IsTableRow())
        DrawCellBorders(painter, origin);
    for (const Cell& cell : cells_) {
        QList<QTextLayout::FormatRange> own;
        for (const QTextLayout::FormatRange& range : selections) {
            const std::int32_t from = std::max(range.start, cell.first);
            const std::int32_t to = std::min(range.start + range.length, cell.first + cell.length);
            if (from >= to)
                continue;
            QTextLayout::FormatRange moved;
            moved.start = ToCell(cell, from, true);
            moved.length = ToCell(cell, to, false) - moved.start;
            moved.format = range.format;
            own.append(moved);
        }
        cell.layout->draw(&painter, origin, own, clip);
    }
    DrawOwnLines(painter, origin);
}

// The lines that Qt's formats lack, on the boxes of their text.
void ParagraphLayout::DrawOwnLines(QPainter& painter, QPointF origin) const {
    for (const OwnLine& own : own_lines_) {
        const bool twice = own.kind == Underline::Double || own.kind == Underline::DoubleWave;
        const bool thin = twice || own.kind == Underline::Words;
        painter.setPen(QPen(own.color, thin ? 1.0 : 2.0, PenStyleOf(own.kind), Qt::FlatCap));
        for (const TextSpan& span : SpansUnder(own)) {
            for (const RangeBox& box : Boxes(span.first, span.length, EndTrim::No)) {
                const QPointF from = origin + QPointF(box.rect.left(), box.baseline + 2);
                const QPointF to = origin + QPointF(box.rect.right(), box.baseline + 2);
                painter.drawLine(from, to);
                if (twice)
                    painter.drawLine(from + QPointF(0, 2), to + QPointF(0, 2));
            }
        }
    }
}

// All of it, or under words only: from one blank to the next.
std::vector<ParagraphLayout::TextSpan> ParagraphLayout::SpansUnder(const OwnLine& own) const {
    if (own.kind != Underline::Words || IsTableRow())
        return {{own.first, own.length}};
    std::vector<TextSpan> spans;
    const QString text = cells_.front().layout->text();
    const std::int32_t end =
        std::min(own.first + own.length, static_cast<std::int32_t>(text.size()));
    for (std::int32_t at = own.first; at < end;) {
        std::int32_t stop = at;
        while (stop < end && !text.at(stop).isSpace())
            ++stop;
        if (stop > at)
            spans.push_back({at, stop - at});
        at = stop + 1;
    }
    return spans;
}

void ParagraphLayout::DrawCellBorders(QPainter& painter, QPointF origin) const {
    painter.setPen(QPen(border_, 1));
    painter.setBrush(Qt::NoBrush);
    // The upper edge of a row is the lower one of the row above it.
    const double top = origin.y() + (begins_table_ ? 0.5 : -0.5);
    const double bottom = origin.y() + height_ - 0.5;
    for (const Cell& cell : cells_) {
        if (cell.width > 0)
            painter.drawRect(QRectF(origin.x() + cell.x + 0.5, top, cell.width, bottom - top));
    }
}

}  // namespace zorvane
