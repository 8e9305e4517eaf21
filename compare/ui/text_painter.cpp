#include "compare/ui/text_painter.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>

#include "compare/ui/mark_painter.h"

namespace zorvane {
namespace {

constexpr double kWordRadius = 3;
constexpr double kWordReach = 2.5;  // of a word's ground beyond its letters
constexpr double kSelectionRadius = 2;
constexpr double kSelectedEnd = 6;
constexpr double kCaretWidth = 1.5;
constexpr double kCurrentEdge = 4;
constexpr double kWholeLineOpacity = 0.55;
constexpr double kLabelReach = 4;

}  // namespace

RowMark MarkOfRow(ViewPage& page, std::int32_t row) {
    if (row < 0 || row >= page.Rows().Count())
        return {};
    const ViewRow what = page.Rows().At(row);
    if (what.first_block < 0 || page.Layouts().Marks() == nullptr)
        return {what.kind, what.record};
    const ParagraphMark mark =
        page.Layouts().Marks()->Of(page.Index().At(what.first_block).paragraph);
    return {mark.kind, mark.record};
}

void TextPainter::Paint(const QRectF& dirty) {
    painter_.fillRect(dirty, Colors().paper);
    const std::vector<ShownRow> shown = page_.Shown();
    for (const ShownRow& row : shown) {
        if (row.y < dirty.bottom() && row.y + row.height > dirty.top())
            PaintRow(row, dirty);
    }
    // A label belongs to its whole run, of which the first row may be far above.
    for (std::size_t at = 0; at < shown.size(); ++at) {
        if (!shown[at].what.IsRoom())
            continue;
        const RoomRun run = page_.Rows().RunAt(shown[at].row);
        double bottom = shown[at].y;
        std::size_t end = at;
        while (end < shown.size() && shown[end].row < run.first_row + run.row_count)
            bottom += shown[end++].height;
        PaintRoomLabel(run, shown[at].row == run.first_row ? shown[at].y : -1e9, bottom);
        at = end - 1;
    }
    for (const ShownRow& row : shown)
        PaintCurrent(row);
    if (state_.caret)
        PaintCaret();
}

void TextPainter::PaintRow(const ShownRow& row, const QRectF& dirty) {
    if (row.what.folded > 0) {
        PaintFold(row);
        return;
    }
    if (row.what.IsRoom()) {
        PaintRoom(row);
        return;
    }
    PaintGround(row);
    for (const ShownBlock& block : page_.BlocksOf(row)) {
        if (block.y < dirty.bottom() && block.y + block.height > dirty.top())
            PaintBlock(block, dirty);
    }
}

void TextPainter::PaintGround(const ShownRow& row) {
    const MarkKind kind = MarkOfRow(page_, row.row).kind;
    if (kind != MarkKind::None)
        painter_.fillRect(QRectF(0, row.y, state_.size.width(), row.height), Colors().Of(kind).row);
}

void TextPainter::PaintFold(const ShownRow& row) {
    const QRectF rect(0, row.y, state_.size.width(), row.height);
    painter_.fillRect(rect, state_.hovered_fold == row.row ? Colors().hairline : Colors().window);
    DrawUnfoldSign(painter_, {state_.columns.sign_middle - 2, rect.center().y()}, Colors().text2);
    painter_.setPen(Colors().text2);
    painter_.setFont(state_.label_font);
    painter_.drawText(rect.adjusted(state_.columns.text_left, 0, 0, 0),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      state_.labels.fold ? state_.labels.fold(row.what.folded) : QString());
}

void TextPainter::PaintRoom(const ShownRow& row) {
    DrawHatch(painter_, {0, row.y, state_.size.width(), row.height}, state_.hatch_phase, Colors());
}

// The label stays in sight as long as its run is.
void TextPainter::PaintRoomLabel(const RoomRun& run, double y, double bottom) {
    const QString text = state_.labels.room ? state_.labels.room(run) : QString();
    if (text.isEmpty())
        return;
    const QFontMetricsF metrics(state_.label_font);
    const double room = page_.Style().room_above * page_.Style().zoom;
    const double height = metrics.height() + 4;
    double top = std::max(y, 0.0) + room;
    top = std::min(top, bottom - height);
    const QRectF rect(state_.columns.text_left - kLabelReach, top,
                      metrics.horizontalAdvance(text) + 2 * kLabelReach, height);
    painter_.fillRect(rect, Colors().hatch_ground);
    painter_.setPen(Colors().text2);
    painter_.setFont(state_.label_font);
    painter_.drawText(rect.adjusted(kLabelReach, 0, kLabelReach, 0),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

void TextPainter::PaintGutter(const ShownBlock& block, const ParagraphLayout& layout) {
    if (block.block.continues)
        return;
    const MarkSource* marks = page_.Layouts().Marks();
    const std::array<std::int32_t, 2> numbers =
        marks == nullptr ? std::array<std::int32_t, 2>{block.block.paragraph.value, 0}
                         : marks->Numbers(block.block.paragraph);
    const QFontMetricsF metrics(state_.number_font);
    painter_.setFont(state_.number_font);
    painter_.setPen(Colors().muted);
    // Small numbers beside large letters look right a little above the letters' baseline.
    const double middle = block.y + layout.FirstMiddle();
    const double baseline = middle + metrics.capHeight() / 2;
    for (int column = 0; column < state_.columns.number_count; ++column) {
        const std::int32_t number = numbers[static_cast<std::size_t>(column)];
        if (number == 0)
            continue;
        const QString text = QString::number(number);
        const double x = state_.columns.number_right[column] - metrics.horizontalAdvance(text);
        painter_.drawText(QPointF(x, baseline), text);
    }
    const MarkKind kind = layout.Mark().kind;
    // What is no difference is told by its ground alone.
    if (kind != MarkKind::None && layout.Mark().record >= 0)
        DrawSign(painter_, kind, {state_.columns.sign_middle, middle}, Colors().Of(kind).text);
}

void TextPainter::PaintBlock(const ShownBlock& block, const QRectF& dirty) {
    const ParagraphLayout& layout = page_.Layouts().Of(block.block.number);
    PaintGutter(block, layout);
    painter_.save();
    const QRectF text(state_.columns.text_left - 4, block.y,
                      state_.size.width() - state_.columns.text_left + 4, block.height);
    painter_.setClipRect(text, Qt::IntersectClip);
    QList<QTextLayout::FormatRange> selections;
    PaintWords(block, layout);
    PaintFound(block, layout, selections);
    PaintSelection(block, layout, selections);
    painter_.setPen(Colors().text);
    layout.Draw(painter_, {TextX(), block.y}, selections, dirty);
    PaintLines(block, layout);
    PaintPreedit(block, layout);
    painter_.restore();
}

void TextPainter::PaintWords(const ShownBlock& block, const ParagraphLayout& layout) {
    if (layout.Words().empty())
        return;
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    for (const WordMark& word : layout.Words()) {
        painter_.setBrush(Colors().Of(word.kind).word);
        for (const RangeBox& box : layout.Boxes(word.first, word.length, EndTrim::Blanks)) {
            const QRectF rect(
                box.rect.left() - kWordReach, box.natural_top - 0.5,
                box.rect.width() + 2 * kWordReach - (word.gap_behind ? kWordReach : 0),
                box.natural_height + 1);
            painter_.drawRoundedRect(rect.translated(TextX(), block.y), kWordRadius, kWordRadius);
        }
    }
}

void TextPainter::PaintLines(const ShownBlock& block, const ParagraphLayout& layout) {
    const auto draw = [&](std::int32_t first, std::int32_t length, MarkLine line,
                          const QColor& color, bool gap) {
        painter_.setPen(color);
        for (const RangeBox& box : layout.Boxes(first, length, EndTrim::Blanks)) {
            DrawMarkLine(painter_, line, TextX() + box.rect.left(),
                         TextX() + box.rect.right() - (gap ? kWordReach : 0),
                         block.y + box.baseline, box.ascent);
        }
    };
    painter_.setRenderHint(QPainter::Antialiasing);
    if (layout.Mark().line != MarkLine::None) {
        QColor color = Colors().Of(layout.Mark().kind).text;
        color.setAlphaF(static_cast<float>(kWholeLineOpacity));
        draw(0, layout.Length(), layout.Mark().line, color, false);
    }
    for (const WordMark& word : layout.Words())
        draw(word.first, word.length, word.line, Colors().Of(word.kind).text, word.gap_behind);
}

void TextPainter::PaintFound(const ShownBlock& block, const ParagraphLayout& layout,
                             QList<QTextLayout::FormatRange>& selections) {
    if (!state_.find)
        return;
    const std::u16string text = page_.Document().Text({block.block.first, layout.Length()});
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    for (const TextRange& hit : state_.find(text)) {
        const bool this_one = block.block.first + hit.first.value == state_.this_hit.first &&
                              hit.length == state_.this_hit.length;
        painter_.setBrush(this_one ? Colors().this_hit : Colors().hit);
        for (const RangeBox& box : layout.Boxes(hit.first.value, hit.length, EndTrim::No)) {
            const QRectF rect(box.rect.left(), box.natural_top, box.rect.width(),
                              box.natural_height);
            painter_.drawRoundedRect(rect.translated(TextX(), block.y), kSelectionRadius,
                                     kSelectionRadius);
        }
        QTextLayout::FormatRange range;
        range.start = hit.first.value;
        range.length = hit.length;
        range.format.setForeground(this_one ? Colors().this_hit_text : Colors().text);
        selections.append(range);
    }
}

void TextPainter::PaintSelection(const ShownBlock& block, const ParagraphLayout& layout,
                                 QList<QTextLayout::FormatRange>& selections) {
    const std::int32_t begin = state_.selection.first - block.block.first;
    const std::int32_t end = state_.selection.end() - block.block.first;
    if (state_.selection.length == 0 || end <= 0 || begin > layout.Length())
        return;
    const std::int32_t from = std::max(begin, 0);
    const std::int32_t to = std::min(end, layout.Length());
    // What was found stays to be seen inside a selection, unless it is what is selected.
    const bool is_hit = state_.selection == state_.this_hit;
    if (!is_hit) {
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(Colors().selection);
        for (const RangeBox& box : layout.Boxes(from, to - from, EndTrim::No)) {
            painter_.drawRoundedRect(box.rect.translated(TextX(), block.y), kSelectionRadius,
                                     kSelectionRadius);
        }
        QTextLayout::FormatRange range;
        range.start = from;
        range.length = to - from;
        range.format.setForeground(Colors().selection_text);
        selections.append(range);
    }
    const bool has_break = block.block.length > layout.Length() ||
                           block.block.number + 1 == page_.Index().BlockCount();
    if (has_break && end > layout.Length())
        PaintSelectedEnd(block, layout);
}

// A selected break would show nothing by itself.
void TextPainter::PaintSelectedEnd(const ShownBlock& block, const ParagraphLayout& layout) {
    const QRectF caret = layout.CaretRect(layout.Length());
    const QRectF line = layout.LineRect(layout.LineOf(layout.Length()));
    const double left = layout.RightToLeft() ? caret.x() - kSelectedEnd : caret.x();
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(Colors().selection);
    painter_.drawRoundedRect(
        QRectF(TextX() + left, block.y + line.top(), kSelectedEnd, line.height()), kSelectionRadius,
        kSelectionRadius);
}

void TextPainter::PaintPreedit(const ShownBlock& block, const ParagraphLayout& layout) {
    painter_.setPen(Colors().text);
    for (const RangeBox& box : layout.PreeditBoxes()) {
        DrawMarkLine(painter_, MarkLine::Underline, TextX() + box.rect.left(),
                     TextX() + box.rect.right(), block.y + box.baseline, box.ascent);
    }
}

void TextPainter::PaintCaret() {
    const QRectF caret = page_.CaretRect(state_.caret_place);
    painter_.fillRect(
        QRectF(TextX() + caret.x() - kCaretWidth / 2, caret.y(), kCaretWidth, caret.height()),
        Colors().text);
}

// Ink lines above and below the current difference, edges where the pair of views ends.
void TextPainter::PaintCurrent(const ShownRow& row) {
    if (state_.current_record < 0 || MarkOfRow(page_, row.row).record != state_.current_record)
        return;
    const double width = state_.size.width();
    const QColor& ink = Colors().ink;
    const auto same = [&](std::int32_t other) {
        return MarkOfRow(page_, other).record == state_.current_record;
    };
    if (!same(row.row - 1))
        painter_.fillRect(QRectF(0, row.y, width, 1), ink);
    if (!same(row.row + 1))
        painter_.fillRect(QRectF(0, row.y + row.height - 1, width, 1), ink);
    if (state_.edges == OuterEdges::Left || state_.edges == OuterEdges::Both)
        painter_.fillRect(QRectF(0, row.y, kCurrentEdge, row.height), ink);
    if (state_.edges == OuterEdges::Right || state_.edges == OuterEdges::Both)
        painter_.fillRect(QRectF(width - kCurrentEdge, row.y, kCurrentEdge, row.height), ink);
}

}  // namespace zorvane
