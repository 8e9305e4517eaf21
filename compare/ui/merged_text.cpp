#include "compare/ui/merged_text.h"

#include <algorithm>

#include "compare/engine/pieces.h"
#include "compare/ui/comparison_marks.h"

namespace zorvane {
namespace {

class Merger {
  public:
    Merger(const Comparison& comparison, const PerSide<const Editor*>& editors)
        : comparison_(comparison), editors_(editors) {}

    MergedText Make() {
        PerSide<std::int32_t> done;  // paragraphs that are merged
        for (std::size_t at = 0; at < comparison_.records.size(); ++at) {
            const DifferenceRecord& record = comparison_.records[at];
            Equal(done,
                  {record.InFront(Side::Original).value, record.InFront(Side::Modified).value});
            done = record.Lasts();
            if (record.type == DifferenceType::Change)
                Changed(at);
            else
                Whole(at);
        }
        Equal(done,
              {comparison_.Paragraphs(Side::Original), comparison_.Paragraphs(Side::Modified)});
        return std::move(merged_);
    }

  private:
    std::int32_t Start(Side side, std::int32_t line) const {
        return static_cast<std::int32_t>(comparison_.Lines(side).Start(line));
    }

    // A group of paragraphs begins on a line of its own, whatever the last one ended in.
    void BeginParagraph() {
        const std::u16string& text = merged_.text.text;
        if (!text.empty() && !text.ends_with(u"\r\n"))
            merged_.text.AppendPlain(u"\r\n", merged_.text.char_runs.back().format);
    }

    void Take(Side side, std::int32_t begin, std::int32_t end) {
        const TextRange range = TextRange::Between(CharPos{begin}, CharPos{end});
        merged_.text.Append(editors_[side]->Rich(
            {range.first, std::min(range.length, editors_[side]->Length() - range.first.value)}));
    }

    // Paragraphs that are the same on both sides; the original's spelling is shown. What was not
    // looked at may be more on one side: the longer side's is shown then.
    void Equal(const PerSide<std::int32_t>& begin, const PerSide<std::int32_t>& end) {
        const std::int32_t originals = end.original - begin.original;
        const std::int32_t modifieds = end.modified - begin.modified;
        const Side side = originals >= modifieds ? Side::Original : Side::Modified;
        const std::int32_t count = std::max(originals, modifieds);
        if (count <= 0)
            return;
        BeginParagraph();
        Take(side, Start(side, begin[side]), Start(side, end[side]));
        for (std::int32_t at = 0; at < count; ++at) {
            MergedMarks::Paragraph paragraph;
            paragraph.numbers = {at < originals ? begin.original + at + 1 : 0,
                                 at < modifieds ? begin.modified + at + 1 : 0};
            merged_.marks.Add(std::move(paragraph));
        }
    }

    void Whole(std::size_t index) {
        const DifferenceRecord& record = comparison_.records[index];
        const Side side = record.type == DifferenceType::Deletion ? Side::Original : Side::Modified;
        const std::int32_t first = record.paragraphs[side].first.value;
        const std::int32_t last = record.paragraphs[side].last.value;
        BeginParagraph();
        Take(side, Start(side, first - 1), Start(side, last));
        for (std::int32_t line = first; line <= last; ++line) {
            MergedMarks::Paragraph paragraph;
            paragraph.mark = MarkOf(index);
            paragraph.numbers[side == Side::Original ? 0 : 1] = line;
            merged_.marks.Add(std::move(paragraph));
        }
    }

    ParagraphMark MarkOf(std::size_t index) const {
        ParagraphMark mark;
        mark.record = static_cast<std::int32_t>(index);
        mark.kind = MarkKindOf(comparison_, index);
        if (mark.kind == MarkKind::Moved)
            mark.line = MarkLine::Dotted;
        if (mark.kind == MarkKind::Deleted)
            mark.line = MarkLine::Strike;
        if (mark.kind == MarkKind::Added)
            mark.line = MarkLine::Underline;
        return mark;
    }

    void Changed(std::size_t index) {
        const DifferenceRecord& record = comparison_.records[index];
        PerSide<std::u16string> buffer;
        const ChangeText change{comparison_.Text(Side::Original, record, buffer.original),
                                comparison_.Text(Side::Modified, record, buffer.modified),
                                comparison_.SectionsOf(index)};
        std::vector<PiecePlace> pieces;
        FindPieces(comparison_, change, pieces);
        BeginParagraph();
        open_ = {};
        open_.mark = MarkOf(index);
        at_ = 0;
        next_ = record.Firsts();
        for (const PiecePlace& piece : pieces) {
            if (piece.in_merged)
                Put(piece, record, change);
        }
        merged_.marks.Add(std::move(open_));
    }

    // A piece may hold breaks; each ends a paragraph of the merged text.
    void Put(const PiecePlace& piece, const DifferenceRecord& record, const ChangeText& change) {
        const PieceKind kind = piece.merged_kind;
        const Side side = IsOriginalPiece(kind) ? Side::Original : Side::Modified;
        const std::u16string_view text =
            piece.Of(side, side == Side::Original ? change.original : change.modified);
        Take(side, Start(side, record.paragraphs[side].first.value - 1) + piece.begin[side],
             Start(side, record.paragraphs[side].first.value - 1) + piece.end[side]);
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(u"\r\n", begin), text.size());
            Mark(kind, static_cast<std::int32_t>(end - begin));
            if (end == text.size())
                return;
            Number(kind);
            MergedMarks::Paragraph next;
            next.mark = open_.mark;
            merged_.marks.Add(std::move(open_));
            open_ = std::move(next);
            at_ = 0;
            if (IsOriginalPiece(kind))
                ++next_.original;
            if (IsModifiedPiece(kind))
                ++next_.modified;
            begin = end + 2;
        }
    }

    // A paragraph has the number of each side that has text in it.
    void Number(PieceKind kind) {
        if (IsOriginalPiece(kind))
            open_.numbers[0] = next_.original;
        if (IsModifiedPiece(kind))
            open_.numbers[1] = next_.modified;
    }

    void Mark(PieceKind kind, std::int32_t length) {
        if (length == 0)
            return;
        Number(kind);
        const bool changed = kind == PieceKind::ChangedOld || kind == PieceKind::ChangedNew;
        if (kind == PieceKind::ChangedNew && !open_.words.empty()) {
            WordMark& old = open_.words.back();
            old.gap_behind = old.line == MarkLine::Strike && old.first + old.length == at_;
        }
        if (kind != PieceKind::Same) {
            WordMark word{at_, length, MarkKind::Changed, MarkLine::Underline, false};
            if (!changed)
                word.kind = kind == PieceKind::Deleted ? MarkKind::Deleted : MarkKind::Added;
            if (IsOriginalPiece(kind))
                word.line = MarkLine::Strike;
            open_.words.push_back(word);
        }
        at_ += length;
    }

    const Comparison& comparison_;
    PerSide<const Editor*> editors_;
    MergedText merged_;
    MergedMarks::Paragraph open_;
    std::int32_t at_ = 0;           // in the open paragraph
    PerSide<std::int32_t> next_{};  // numbers of the sides' paragraphs that are being merged
};

}  // namespace

const MergedMarks::Paragraph& MergedMarks::At(ParagraphNumber paragraph) const {
    static const Paragraph none;
    const auto at = static_cast<std::size_t>(std::max(paragraph.value - 1, 0));
    return at < paragraphs_.size() ? paragraphs_[at] : none;
}

MergedText MergeTexts(const Comparison& comparison, const PerSide<const Editor*>& editors) {
    return Merger(comparison, editors).Make();
}

}  // namespace zorvane
