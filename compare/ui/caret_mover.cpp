#include "compare/ui/caret_mover.h"

#include <algorithm>
#include <string>

#include <QTextBoundaryFinder>

#include "common/ui/qt_text.h"

namespace zorvane {
namespace {

// Far below and above any line of a block.
constexpr double kBeyond = 1e7;

bool IsBreak(char16_t unit) {
    return unit == u'\r' || unit == u'\n';
}

// To the begin of the next word, or of this one.
std::int32_t WordEdge(const QString& text, std::int32_t from, bool behind) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    finder.setPosition(from);
    while (true) {
        const auto at = behind ? finder.toNextBoundary() : finder.toPreviousBoundary();
        if (at < 0)
            return behind ? static_cast<std::int32_t>(text.size()) : 0;
        if (at == 0 || at == text.size() || !text.at(at).isSpace())
            return static_cast<std::int32_t>(at);
    }
}

}  // namespace

CaretMover::Target CaretMover::Go(CaretMove move, const TextSelection& from) {
    const CharPos caret = std::min(from.Caret(), CharPos{page_.Document().Length()});
    const auto keep_x = [&] {
        return from.WantedX() ? *from.WantedX() : page_.CaretRect(caret).x();
    };
    switch (move) {
        case CaretMove::Left:
        case CaretMove::Right:
            return {Step(caret, move == CaretMove::Right), {}};
        case CaretMove::WordLeft:
        case CaretMove::WordRight:
            return {WordStep(caret, move == CaretMove::WordRight), {}};
        case CaretMove::LineUp:
        case CaretMove::LineDown: {
            const double x = keep_x();
            return {LineStep(caret, move == CaretMove::LineDown, x), x};
        }
        case CaretMove::PageUp:
        case CaretMove::PageDown: {
            const double x = keep_x();
            return {PageStep(caret, move == CaretMove::PageDown, x), x};
        }
        case CaretMove::LineStart:
        case CaretMove::LineEnd:
            return {LineEdge(caret, move == CaretMove::LineEnd), {}};
        case CaretMove::ParagraphUp:
        case CaretMove::ParagraphDown:
            return {ParagraphStep(caret, move == CaretMove::ParagraphDown), {}};
        case CaretMove::TextStart:
            return {CharPos{0}, {}};
        case CaretMove::TextEnd:
            break;
    }
    return {CharPos{page_.Document().Length()}, {}};
}

std::int32_t CaretMover::Neighbour(std::int32_t block, bool behind) const {
    const ViewRows& rows = page_.Rows();
    const std::int32_t row = rows.RowOfBlock(block);
    const ViewRow own = rows.At(row);
    const std::int32_t next = block + (behind ? 1 : -1);
    if (next >= own.first_block && next < own.first_block + own.block_count)
        return next;
    for (std::int32_t at = row + (behind ? 1 : -1); at >= 0 && at < rows.Count();
         at += behind ? 1 : -1) {
        const ViewRow what = rows.At(at);
        if (what.block_count > 0)
            return behind ? what.first_block : what.first_block + what.block_count - 1;
    }
    return -1;
}

// The last place in a block. A slice ends where the next one begins, so its last character's begin.
CharPos CaretMover::EndOf(std::int32_t block) {
    const Block found = page_.Index().At(block);
    const ParagraphLayout& layout = page_.Layouts().Of(block);
    if (found.length > layout.Length() || block + 1 == page_.Index().BlockCount())
        return found.first + layout.Length();
    return found.first + layout.LineEnd(layout.LineCount() - 1);
}

CharPos CaretMover::Step(CharPos from, bool right) {
    const ViewPage::Place place = page_.PlaceOf(from);
    const std::int32_t next = place.layout->VisualStep(place.at, right);
    if (next >= 0 && place.block.first + next != from)
        return place.block.first + next;
    // Beyond the right edge of a text that runs to the left lies what was before it.
    const bool behind = right != place.layout->RightToLeft();
    const std::int32_t neighbour = Neighbour(place.block.number, behind);
    if (neighbour < 0)
        return from;
    return behind ? page_.Index().At(neighbour).first : EndOf(neighbour);
}

std::u16string CaretMover::TextAround(const Block& block) const {
    std::u16string text = page_.Document().Text({block.first, block.length});
    while (!text.empty() && IsBreak(text.back()))
        text.pop_back();
    return text;
}

CharPos CaretMover::WordStep(CharPos from, bool right) {
    const ViewPage::Place place = page_.PlaceOf(from);
    const bool behind = right != place.layout->RightToLeft();
    const QString text = ToQt(TextAround(place.block));
    if (behind ? place.at >= text.size() : place.at == 0) {
        const std::int32_t neighbour = Neighbour(place.block.number, behind);
        if (neighbour < 0)
            return from;
        return behind ? page_.Index().At(neighbour).first : EndOf(neighbour);
    }
    return place.block.first + WordEdge(text, place.at, behind);
}

CharPos CaretMover::LineStep(CharPos from, bool down, double x) {
    const ViewPage::Place place = page_.PlaceOf(from);
    const QRectF line = place.layout->LineRect(place.layout->LineOf(place.at));
    const double y = down ? line.bottom() + 1 : line.top() - 1;
    const std::int32_t candidate = place.layout->PositionAt({x, y});
    const double top = place.layout->LineRect(place.layout->LineOf(candidate)).top();
    if (down ? top > line.top() : top < line.top())
        return place.block.first + candidate;
    const std::int32_t neighbour = Neighbour(place.block.number, down);
    if (neighbour < 0)
        return down ? EndOf(place.block.number) : place.block.first;
    const ParagraphLayout& layout = page_.Layouts().Of(neighbour);
    const std::int32_t at = layout.PositionAt({x, down ? -kBeyond : kBeyond});
    return page_.Index().At(neighbour).first + at;
}

CharPos CaretMover::PageStep(CharPos from, bool down, double x) {
    page_.Show(from);
    const QRectF caret = page_.CaretRect(from);
    // A line stays in sight, so that a reader finds the place again.
    const double page = std::max(1.0, page_.WindowHeight() - 2 * caret.height());
    const double moved = page_.ScrollBy(down ? page : -page);
    if (moved == 0)
        return down ? CharPos{page_.Document().Length()} : CharPos{0};
    return page_.PositionAt({x, caret.center().y()});
}

CharPos CaretMover::LineEdge(CharPos from, bool end) {
    const ViewPage::Place place = page_.PlaceOf(from);
    const std::int32_t line = place.layout->LineOf(place.at);
    return place.block.first + (end ? place.layout->LineEnd(line) : place.layout->LineStart(line));
}

CharPos CaretMover::ParagraphStep(CharPos from, bool down) {
    const BlockIndex& index = page_.Index();
    const Block block = index.OfChar(from);
    const CharPos begin = index.OfParagraph(block.paragraph).first;
    if (!down && from > begin)
        return begin;
    std::int32_t neighbour = block.number;
    do {
        neighbour = Neighbour(neighbour, down);
        if (neighbour < 0)
            return down ? EndOf(block.number) : begin;
    } while (index.At(neighbour).paragraph == block.paragraph);
    return index.OfParagraph(index.At(neighbour).paragraph).first;
}

TextRange CaretMover::WordAt(CharPos position) const {
    const Block block = page_.Index().OfChar(position);
    const std::u16string around = TextAround(block);
    const QString text = ToQt(around);
    const std::int32_t at =
        std::min(position - block.first, static_cast<std::int32_t>(text.size()));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    finder.setPosition(at);
    // On a boundary the word behind it is meant; at the end of the text the one in front.
    auto begin = finder.isAtBoundary() && at < text.size() ? at : finder.toPreviousBoundary();
    finder.setPosition(begin < 0 ? 0 : begin);
    auto end = finder.toNextBoundary();
    begin = begin < 0 ? 0 : begin;
    end = end < 0 ? text.size() : end;
    return TextRange::Between(block.first + static_cast<std::int32_t>(begin),
                              block.first + static_cast<std::int32_t>(end));
}

TextRange CaretMover::ParagraphAt(CharPos position) const {
    const BlockIndex& index = page_.Index();
    const ParagraphNumber number = index.OfChar(position).paragraph;
    const CharPos begin = index.OfParagraph(number).first;
    const CharPos end = number.value < index.ParagraphCount()
                            ? index.OfParagraph(number + 1).first
                            : CharPos{page_.Document().Length() + 2};
    return TextRange::Between(begin, end);
}

}  // namespace zorvane
