#include "compare/ui/comparison_marks.h"

#include <algorithm>

namespace zorvane {
namespace {

MarkKind WordKindOf(PieceKind kind) {
    switch (kind) {
        case PieceKind::Deleted:
            return MarkKind::Deleted;
        case PieceKind::Added:
            return MarkKind::Added;
        case PieceKind::ChangedOld:
        case PieceKind::ChangedNew:
            return MarkKind::Changed;
        case PieceKind::Same:
            break;
    }
    return MarkKind::None;
}

}  // namespace

MarkKind MarkKindOf(const Comparison& comparison, std::size_t record) {
    const DifferenceType type = comparison.records[record].type;
    if (type == DifferenceType::Change)
        return MarkKind::Changed;
    if (comparison.MoveOf(record) != nullptr)
        return MarkKind::Moved;
    return type == DifferenceType::Deletion ? MarkKind::Deleted : MarkKind::Added;
}

ParagraphMark ComparisonMarks::Of(ParagraphNumber paragraph) const {
    if (rows_->Rows() == 0)
        return {};
    const ParagraphRow row = rows_->Row(rows_->RowOf(side_, paragraph));
    if (row.record < 0 || row.kind == RowKind::Edited)
        return {};
    ParagraphMark mark;
    mark.record = row.record;
    mark.kind = MarkKindOf(*comparison_, static_cast<std::size_t>(row.record));
    if (mark.kind == MarkKind::Moved)
        mark.line = MarkLine::Dotted;
    if (mark.kind == MarkKind::Deleted)
        mark.line = MarkLine::Strike;
    if (mark.kind == MarkKind::Added)
        mark.line = MarkLine::Underline;
    return mark;
}

void ComparisonMarks::FindPiecesOf(std::int32_t record) const {
    if (last_.number == record)
        return;
    last_.number = record;
    last_.pieces.clear();
    const auto index = static_cast<std::size_t>(record);
    PerSide<std::size_t> of{index, index};
    std::span<const SectionDetail> sections = comparison_->SectionsOf(index);
    if (const Move* move = comparison_->MoveOf(index)) {
        of = {static_cast<std::size_t>(move->deletion.value),
              static_cast<std::size_t>(move->addition.value)};
        sections = comparison_->SectionsOf(*move);
    } else if (comparison_->records[index].type != DifferenceType::Change) {
        return;  // all of it is marked
    }
    PerSide<std::u16string> buffer;
    const ChangeText change{
        comparison_->Text(Side::Original, comparison_->records[of.original], buffer.original),
        comparison_->Text(Side::Modified, comparison_->records[of.modified], buffer.modified),
        sections};
    FindPieces(*comparison_, change, last_.pieces);
}

std::vector<WordMark> ComparisonMarks::Words(ParagraphNumber paragraph) const {
    std::vector<WordMark> words;
    const ParagraphMark mark = Of(paragraph);
    if (mark.record < 0)
        return words;
    FindPiecesOf(mark.record);
    // Where the paragraph lies in the record's text, by the lines as they were compared.
    const DifferenceRecord& record = comparison_->records[static_cast<std::size_t>(mark.record)];
    const RowSpan span = rows_->RowsOfRecord(mark.record);
    const ParagraphNumber begin_now = rows_->Row(span.first).paragraphs[side_].first;
    const ParagraphNumber end_now = rows_->Row(span.end() - 1).paragraphs[side_].end();
    // Where paragraphs of the record were edited, which of them this is cannot be told.
    if (end_now - begin_now != record.Count(side_))
        return words;
    const std::int32_t within = paragraph - begin_now;
    const std::int32_t first = record.paragraphs[side_].first.value;
    const std::int32_t line = first + within - 1;
    const LineText& lines = comparison_->Lines(side_);
    if (within < 0 || line + 1 > record.paragraphs[side_].last.value)
        return words;
    const auto begin = static_cast<std::int32_t>(lines.Start(line) - lines.Start(first - 1));
    std::u16string buffer;
    const auto end = begin + static_cast<std::int32_t>(lines.Text(line, buffer).size());
    for (const PiecePlace& piece : last_.pieces) {
        const MarkKind kind = WordKindOf(piece.kind);
        const std::int32_t from = std::max(piece.begin[side_], begin);
        const std::int32_t to = std::min(piece.end[side_], end);
        if (kind == MarkKind::None || from >= to)
            continue;
        words.push_back({from - begin, to - from, kind,
                         side_ == Side::Original ? MarkLine::Strike : MarkLine::Underline, false});
    }
    return words;
}

}  // namespace zorvane
