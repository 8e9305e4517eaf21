#include "compare/engine/html_rows.h"

#include <algorithm>
#include <array>

#include "common/base/append_format.h"
#include "compare/engine/html_markup.h"

namespace zorvane {
namespace {

constexpr std::string_view kMoveSign = "\u2195";

struct KindRow {
    std::string_view classes;
    std::string_view sign;
};
// In the order of `CutKind`.
constexpr std::array<KindRow, 4> kKinds = {
    {{"r", ""}, {"r c", "\u2260"}, {"r x", "\u2212"}, {"r p", "+"}}};
const KindRow& Row(CutKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

// The number of one side's paragraph that waits for the row where its text begins.
struct NumberInRow {
    std::int32_t number = 0;  // 0: the side is not numbered here
    bool waits = true;

    // Of the row: its number, or 0.
    std::int32_t Take(bool is_here) {
        const bool begins = waits && is_here;
        waits = waits && !is_here;
        return begins ? number : 0;
    }
    void GoOn(bool break_is_mine) {
        waits = waits || break_is_mine;
        number += break_is_mine && number > 0 ? 1 : 0;
    }
};

bool IsHere(const CutText& text, std::size_t row, bool (*is_mine)(PieceKind)) {
    const auto pieces = text.PiecesOf(row);
    return row + 1 == text.Count() || is_mine(text.Paragraph(row).end) ||
           std::any_of(pieces.begin(), pieces.end(),
                       [&](const CutPiece& piece) { return is_mine(piece.kind); });
}

}  // namespace

HtmlRows::HtmlRows(const ReportModel& model, bool all_in_one, std::string& page,
                   std::function<void()> hand_on)
    : model_(model),
      comparison_(model.comparison),
      one_(all_in_one),
      page_(page),
      hand_on_(std::move(hand_on)),
      stop_(model.watcher, kBetweenStops),
      text_(model, page, hand_on_) {}

// ---- parts of a row ----

void HtmlRows::Begin(std::string_view classes) {
    if (cuts_runs_ && run_ == kRun) {
        page_ += "</div><div class=\"run\">\n";
        run_ = 0;
    }
    ++run_;
    hand_on_();
    page_.append("<div class=\"").append(classes).append("\">");
}

void HtmlRows::Gutter(std::int32_t number, CutKind kind) {
    Gutter(number, Row(kind).sign);
}

void HtmlRows::Gutter(std::int32_t number, std::string_view sign) {
    page_ += "<b>";
    if (number > 0)
        AppendFormat(page_, "{}", number);
    if (!sign.empty())
        page_.append("<i>").append(sign).append("</i>");
    page_ += "</b>";
}

// The place beside a paragraph that the other side has not; its label stands in the first row.
void HtmlRows::Nothing(std::string_view label, std::int32_t linked_record, bool first) {
    if (linked_record > 0 && first)
        AppendFormat(page_, "<div class=\"n k\"><a href=\"#d{}\">{}</a></div>", linked_record,
                     label);
    else if (first)
        page_.append("<div class=\"n\"><span>").append(label).append("</span></div>");
    else
        page_ += "<div class=\"n\"></div>";
}

std::string HtmlRows::MoveLabel(const Move& move, Side shown) const {
    return std::string(shown == Side::Original ? "moved to " : "moved from ") +
           MovedPlace(comparison_, move, OtherSide(shown));
}

// All in one: a line of its own above the paragraphs.
void HtmlRows::MoveLink(const std::string& label, std::int32_t linked_record) {
    Begin("r m");
    AppendFormat(page_, "<b></b><b></b><div class=\"k\"><a href=\"#d{}\">{}</a></div></div>\n",
                 linked_record, label);
}

// ---- rows ----

void HtmlRows::Unchanged(PageRow row) {
    page_ += row.original > 0 && row.modified > 0 ? "<div class=\"r\">" : "<div class=\"r o\">";
    if (one_) {
        Gutter(row.original, "");
        Gutter(row.modified, "");
        const Side side = row.original > 0 ? Side::Original : Side::Modified;
        text_.Paragraph(side, side == Side::Original ? row.original : row.modified,
                        CellMark::Pieces);
        page_ += "</div>\n";
        return;
    }
    for (const Side side : kBothSides) {
        const std::int32_t number = side == Side::Original ? row.original : row.modified;
        Gutter(number, "");
        if (number > 0)
            text_.Paragraph(side, number, CellMark::Pieces);
        else
            page_ += "<div></div>";
    }
    page_ += "</div>\n";
}

void HtmlRows::Difference(std::size_t index) {
    const DifferenceRecord& record = comparison_.records[index];
    const std::size_t rows = static_cast<std::size_t>(record.Count(Side::Original)) +
                             static_cast<std::size_t>(record.Count(Side::Modified));
    cuts_runs_ = rows > 2 * kRun;
    run_ = 0;
    if (cuts_runs_)
        page_ += "<div class=\"run\">\n";
    const Move* move = comparison_.MoveOf(index);
    if (record.type == DifferenceType::Change)
        Change(index);
    else if (move != nullptr && record.type == DifferenceType::Addition)
        MovedHere(index, *move);
    else
        OneSided(index, record.type == DifferenceType::Deletion ? Side::Original : Side::Modified);
    if (cuts_runs_)
        page_ += "</div>\n";
    cuts_runs_ = false;
}

HtmlRows::OneSidedLook HtmlRows::LookOf(std::size_t index, Side side) const {
    const DifferenceRecord& record = comparison_.records[index];
    const bool original = side == Side::Original;
    if (const Move* move = comparison_.MoveOf(index))
        return {MoveLabel(*move, side), PartnerOf(*move, record.type).value + 1, "r m", kMoveSign,
                CellMark::Moved};
    const KindRow& kind = Row(original ? CutKind::Deleted : CutKind::Added);
    const std::int32_t count = record.Count(side);
    std::string label = original ? "only in Original" : "only in Modified";
    if (count > 1)
        label += ", " + CountText(count, "paragraph", "paragraphs");
    return {std::move(label), 0, kind.classes, kind.sign,
            original ? CellMark::WholeDeleted : CellMark::WholeAdded};
}

// Paragraphs that stand on one side only, or have gone elsewhere from here.
void HtmlRows::OneSided(std::size_t index, Side side) {
    const DifferenceRecord& record = comparison_.records[index];
    const OneSidedLook look = LookOf(index, side);
    if (one_ && look.linked_record > 0)
        MoveLink(look.label, look.linked_record);
    const std::int32_t first = record.paragraphs[side].first.value;
    for (std::int32_t number = first;
         number <= record.paragraphs[side].last.value && stop_.KeepGoing(); ++number) {
        Begin(look.classes);
        if (one_)
            OneSidedInOne(look, side, number);
        else
            OneSidedInTwo(look, side, number, number == first);
        page_ += "</div>\n";
    }
}

void HtmlRows::OneSidedInOne(const OneSidedLook& look, Side side, std::int32_t number) {
    // The sign stands in the second gutter, whichever side is numbered.
    const bool original = side == Side::Original;
    Gutter(original ? number : 0, "");
    Gutter(original ? 0 : number, look.sign);
    text_.Paragraph(side, number, look.mark);
}

void HtmlRows::OneSidedInTwo(const OneSidedLook& look, Side side, std::int32_t number, bool first) {
    if (side == Side::Modified)
        Nothing(look.label, look.linked_record, first);
    Gutter(number, look.sign);
    text_.Paragraph(side, number, look.mark);
    if (side == Side::Original)
        Nothing(look.label, look.linked_record, first);
}

// What moved stands here with what was changed on the way.
void HtmlRows::MovedHere(std::size_t index, const Move& move) {
    const DifferenceRecord& from = comparison_.Record(move.deletion);
    const DifferenceRecord& to = comparison_.records[index];
    if (move.section_count == 0) {
        OneSided(index, Side::Modified);
        return;
    }
    const ChangeText change{comparison_.Text(Side::Original, from, buffers_.original),
                            comparison_.Text(Side::Modified, to, buffers_.modified),
                            comparison_.SectionsOf(move)};
    FindPieces(comparison_, change, places_);
    merged_.Cut(change, places_, CutFor::MergedAsModified);
    const std::string label = MoveLabel(move, Side::Modified);
    if (one_)
        MoveLink(label, move.deletion.value + 1);
    NumberInRow number{to.paragraphs.modified.first.value};
    const PerSide<std::int32_t> first{from.paragraphs.original.first.value,
                                      to.paragraphs.modified.first.value};
    for (std::size_t row = 0; row < merged_.Count() && stop_.KeepGoing(); ++row) {
        const std::int32_t shown = number.Take(IsHere(merged_, row, IsModifiedPiece));
        Begin("r m");
        if (one_)
            Gutter(0, "");
        else
            Nothing(label, move.deletion.value + 1, row == 0);
        Gutter(shown, kMoveSign);
        text_.Pieces(change, merged_, row, first, {0, std::max(number.number, 1)}, CellMark::Moved);
        page_ += "</div>\n";
        number.GoOn(IsModifiedPiece(merged_.Paragraph(row).end));
    }
}

void HtmlRows::Change(std::size_t index) {
    const DifferenceRecord& record = comparison_.records[index];
    const ChangeText change{comparison_.Text(Side::Original, record, buffers_.original),
                            comparison_.Text(Side::Modified, record, buffers_.modified),
                            comparison_.SectionsOf(index)};
    FindPieces(comparison_, change, places_);
    if (one_)
        Merged(change, record.Firsts());
    else if (record.Count(Side::Original) == 1 && record.Count(Side::Modified) == 1)
        OneToOne(change, record);
    else
        Pairs(change, record);
}

// Nearly all changes. The right cell holds what went, too, for a screen that has room for one.
void HtmlRows::OneToOne(const ChangeText& change, const DifferenceRecord& record) {
    const PerSide<std::int32_t> first = record.Firsts();
    left_.Cut(change, places_, CutFor::OriginalSide);
    merged_.Cut(change, places_, CutFor::MergedAsModified);
    Begin("r c s");
    Gutter(first.original, CutKind::Changed);
    text_.Pieces(change, left_, 0, first, {first.original, 0}, CellMark::Pieces);
    Gutter(first.modified, CutKind::Changed);
    text_.Pieces(change, merged_, 0, first, {0, first.modified}, CellMark::Pieces);
    page_ += "</div>\n";
}

// The rows of the merged text that hold one paragraph of each side, whole, by the paragraph of the
// modified; -1: none.
std::vector<std::int32_t> HtmlRows::CleanRows(const DifferenceRecord& record) const {
    std::vector<std::int32_t> rows(static_cast<std::size_t>(record.Count(Side::Modified)), -1);
    std::size_t modified = 0;
    bool begins = true;
    for (std::size_t row = 0; row < merged_.Count() && modified < rows.size(); ++row) {
        const PieceKind end = merged_.Paragraph(row).end;
        if (begins && end == PieceKind::Same && CutKindOf(merged_, row) == CutKind::Changed)
            rows[modified] = static_cast<std::int32_t>(row);
        begins = end == PieceKind::Same;
        modified += IsModifiedPiece(end) ? 1U : 0U;
    }
    return rows;
}

// Paragraphs that share text stand beside each other.
void HtmlRows::Pairs(const ChangeText& change, const DifferenceRecord& record) {
    left_.Cut(change, places_, CutFor::OriginalSide);
    right_.Cut(change, places_, CutFor::ModifiedSide);
    merged_.Cut(change, places_, CutFor::MergedAsModified);
    const std::vector<std::int32_t> clean = CleanRows(record);
    for (const ParagraphPair pair :
         PairParagraphs(SplitPieces(MergedPieces(comparison_, change, model_.watcher)),
                        record.Count(Side::Original), record.Count(Side::Modified))) {
        if (!stop_.KeepGoing())
            return;
        const bool both = pair.original >= 0 && pair.modified >= 0;
        PairRow(change, record, pair, both ? clean[static_cast<std::size_t>(pair.modified)] : -1);
    }
}

CutKind HtmlRows::KindOf(ParagraphPair pair) const {
    const auto kind_in = [](const CutText& text, std::int32_t index) {
        const bool there = static_cast<std::size_t>(index) < text.Count();
        return there ? CutKindOf(text, static_cast<std::size_t>(index)) : CutKind::Same;
    };
    if (pair.original >= 0 && pair.modified >= 0) {
        const CutKind kind = kind_in(left_, pair.original);
        return kind == kind_in(right_, pair.modified) ? kind : CutKind::Changed;
    }
    const CutKind kind = pair.original >= 0   ? kind_in(left_, pair.original)
                         : pair.modified >= 0 ? kind_in(right_, pair.modified)
                                              : CutKind::Same;
    // What one side alone shows is a paragraph that was cut or joined.
    return kind == CutKind::Same ? CutKind::Changed : kind;
}

void HtmlRows::PairRow(const ChangeText& change, const DifferenceRecord& record, ParagraphPair pair,
                       std::int32_t merged_row) {
    const PerSide<std::int32_t> first = record.Firsts();
    const CutKind kind = KindOf(pair);
    Begin(merged_row >= 0 ? "r c s" : Row(kind).classes);
    for (const Side side : kBothSides) {
        const bool original = side == Side::Original;
        const std::int32_t index = original ? pair.original : pair.modified;
        if (index < 0) {
            PairGap(kind);
            continue;
        }
        PerSide<std::int32_t> shown{0, 0};
        shown[side] = first[side] + index;
        Gutter(shown[side], kind);
        if (!original && merged_row >= 0)
            text_.Pieces(change, merged_, static_cast<std::size_t>(merged_row), first, shown,
                         CellMark::Pieces);
        else
            text_.Pieces(change, original ? left_ : right_, static_cast<std::size_t>(index), first,
                         shown, CellMark::Pieces);
    }
    page_ += "</div>\n";
}

void HtmlRows::PairGap(CutKind kind) {
    if (kind == CutKind::Changed)
        page_ += "<b></b><div></div>";  // its text stands in another row
    else
        Nothing("", 0, false);
}

// A row for each paragraph of the merged text; a number stands in the row where the text of its
// paragraph begins.
void HtmlRows::Merged(const ChangeText& change, PerSide<std::int32_t> numbers) {
    merged_.Cut(change, places_, CutFor::Merged);
    NumberInRow original{numbers.original};
    NumberInRow modified{numbers.modified};
    for (std::size_t row = 0; row < merged_.Count() && stop_.KeepGoing(); ++row) {
        const CutKind kind = CutKindOf(merged_, row);
        Begin(Row(kind).classes);
        Gutter(original.Take(IsHere(merged_, row, IsOriginalPiece)), "");
        Gutter(modified.Take(IsHere(merged_, row, IsModifiedPiece)), kind);
        text_.Pieces(change, merged_, row, numbers, {original.number, modified.number},
                     CellMark::Pieces);
        page_ += "</div>\n";
        original.GoOn(IsOriginalPiece(merged_.Paragraph(row).end));
        modified.GoOn(IsModifiedPiece(merged_.Paragraph(row).end));
    }
}

}  // namespace zorvane
