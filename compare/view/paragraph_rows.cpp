#include "compare/view/paragraph_rows.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace zorvane {
namespace {

std::int32_t& CountOn(RowPiece& piece, Side side) {
    return piece.counts[side];
}

bool IsUnchanged(RowKind kind) {
    return kind == RowKind::Equal || kind == RowKind::Ignored;
}

// The rows of a comparison, run by run.
class RowMaker {
  public:
    explicit RowMaker(const Comparison& comparison) : comparison_(comparison) {
        pieces_.reserve(comparison.records.size() * 2 + 1);
    }

    std::vector<RowPiece> Make() {
        std::int32_t index = 0;
        for (const DifferenceRecord& record : comparison_.records) {
            Equal({record.InFront(Side::Original).value, record.InFront(Side::Modified).value});
            pieces_.push_back(
                {record.type == DifferenceType::Change ? RowKind::Changed : RowKind::OneSided,
                 index++,
                 {record.Count(Side::Original), record.Count(Side::Modified)}});
            at_ = record.Lasts();
        }
        Equal({comparison_.Paragraphs(Side::Original), comparison_.Paragraphs(Side::Modified)});
        return std::move(pieces_);
    }

  private:
    // The paragraphs up to a difference. Those that were not looked at may be more on one side.
    void Equal(const PerSide<std::int32_t>& end) {
        if (comparison_.ignored.original.empty() && comparison_.ignored.modified.empty()) {
            Append(RowKind::Equal, {end.original - at_.original, end.modified - at_.modified});
            return;
        }
        while (at_.original < end.original && at_.modified < end.modified) {
            const PerSide<bool> ignored{IsIgnored(Side::Original), IsIgnored(Side::Modified)};
            if (ignored.original == ignored.modified)
                Append(RowKind::Equal, {1, 1});
            else
                Append(RowKind::Ignored, {ignored.original ? 1 : 0, ignored.modified ? 1 : 0});
            at_.original += pieces_added_.original;
            at_.modified += pieces_added_.modified;
        }
        Append(RowKind::Ignored, {end.original - at_.original, 0});
        Append(RowKind::Ignored, {0, end.modified - at_.modified});
    }

    bool IsIgnored(Side side) const { return comparison_.IsIgnored(side, at_[side] + 1); }

    void Append(RowKind kind, const PerSide<std::int32_t>& counts) {
        pieces_added_ = counts;
        if (counts.original == 0 && counts.modified == 0)
            return;
        RowPiece* last = pieces_.empty() ? nullptr : &pieces_.back();
        const auto side_of = [](const PerSide<std::int32_t>& both) {
            return (both.original > 0 ? 1 : 0) + (both.modified > 0 ? 2 : 0);
        };
        if (last != nullptr && last->kind == kind && side_of(last->counts) == side_of(counts)) {
            last->counts.original += counts.original;
            last->counts.modified += counts.modified;
            return;
        }
        pieces_.push_back({kind, -1, counts});
    }

    const Comparison& comparison_;
    std::vector<RowPiece> pieces_;
    PerSide<std::int32_t> at_{0, 0};  // paragraphs that have a row
    PerSide<std::int32_t> pieces_added_{0, 0};
};

// The first `rows` rows of a piece, and the rest.
std::pair<RowPiece, RowPiece> Split(const RowPiece& piece, std::int32_t rows) {
    RowPiece front = piece;
    RowPiece back = piece;
    for (const Side side : kBothSides) {
        front.counts[side] = std::min(piece.counts[side], rows);
        back.counts[side] -= front.counts[side];
    }
    return {front, back};
}

// Whether one piece for both has the same rows.
bool MayJoin(const RowPiece& front, const RowPiece& back) {
    if (front.kind != back.kind || front.record != back.record)
        return false;
    const bool front_pairs = front.counts.original > 0 && front.counts.modified > 0;
    const bool back_pairs = back.counts.original > 0 && back.counts.modified > 0;
    if (front_pairs)
        return back_pairs && front.counts.original == front.counts.modified;
    return !back_pairs && (front.counts.original > 0) == (back.counts.original > 0);
}

void AppendJoined(const RowPiece& piece, std::vector<RowPiece>& pieces) {
    if (piece.counts.original == 0 && piece.counts.modified == 0)
        return;
    if (pieces.empty() || !MayJoin(pieces.back(), piece)) {
        pieces.push_back(piece);
        return;
    }
    pieces.back().counts.original += piece.counts.original;
    pieces.back().counts.modified += piece.counts.modified;
}

}  // namespace

void ParagraphRows::Assign(const Comparison& comparison) {
    pieces_.Assign(RowMaker(comparison).Make());
}

// ---- look-ups ----

ParagraphRow ParagraphRows::Row(std::int32_t row) const {
    row = std::clamp(row, 0, Rows() - 1);
    const Place place = pieces_.OfRow(row);
    const RowPiece& piece = pieces_.At(place);
    const std::int32_t inside = row - place.before.rows;
    ParagraphRow found{piece.kind, piece.record, {row, 1}, {}};
    for (const Side side : kBothSides) {
        const std::int32_t left = piece.counts[side] - inside;
        const bool last = inside == piece.Rows() - 1;
        found.paragraphs[side].first = ParagraphNumber{place.before.paragraphs[side] +
                                                       std::min(inside, piece.counts[side]) + 1};
        found.paragraphs[side].count = std::max(0, last ? left : std::min(left, 1));
    }
    return found;
}

ParagraphRow ParagraphRows::RunAt(std::int32_t row) const {
    const Place place = pieces_.OfRow(std::clamp(row, 0, Rows() - 1));
    const RowPiece& piece = pieces_.At(place);
    ParagraphRow found{piece.kind, piece.record, {place.before.rows, piece.Rows()}, {}};
    for (const Side side : kBothSides)
        found.paragraphs[side] = {ParagraphNumber{place.before.paragraphs[side] + 1},
                                  piece.counts[side]};
    return found;
}

std::int32_t ParagraphRows::RowOf(Side side, ParagraphNumber number) const {
    if (Paragraphs(side) == 0)
        return 0;
    const std::int32_t paragraph = std::clamp(number.value, 1, Paragraphs(side)) - 1;
    const Place place = pieces_.OfParagraph(side, paragraph);
    const std::int32_t inside = paragraph - place.before.paragraphs[side];
    return place.before.rows + std::min(inside, pieces_.At(place).Rows() - 1);
}

RowSpan ParagraphRows::RowsOfRecord(std::int32_t record) const {
    Place place = pieces_.OfRecord(record);
    const std::int32_t first = place.before.rows;
    std::int32_t end = first;
    // Edits inside the record stand between its pieces.
    for (; !pieces_.IsEnd(place); place = pieces_.Next(place)) {
        const RowPiece& piece = pieces_.At(place);
        if (piece.record == record)
            end = place.before.rows + piece.Rows();
        else if (piece.record >= 0 || piece.kind != RowKind::Edited)
            break;
    }
    return {first, end - first};
}

// ---- edits ----

void ParagraphRows::Apply(Side side, const ParagraphEdit& edit) {
    if (edit.removed == 0 && edit.inserted > 0)
        Insert(side, edit);
    else if (edit.removed > 0 && edit.removed == edit.inserted)
        Touch(side, edit);
    else if (edit.removed > 0)
        Exchange(side, edit);
}

void ParagraphRows::Reset(Side side, std::int32_t paragraphs) {
    if (paragraphs == Paragraphs(side)) {
        Apply(side, {ParagraphNumber{1}, paragraphs, paragraphs});
        return;
    }
    RowPiece all{RowKind::Edited, -1, pieces_.Totals().paragraphs};
    all.counts[side] = paragraphs;
    pieces_.Assign({&all, 1});
}

ParagraphRows::Cut ParagraphRows::CutOut(std::int32_t first_row, std::int32_t end_row) const {
    Cut cut{pieces_.OfRow(first_row), pieces_.OfRow(first_row), {}, {}, {}};
    for (; !pieces_.IsEnd(cut.end) && cut.end.before.rows < end_row;
         cut.end = pieces_.Next(cut.end)) {
        RowPiece piece = pieces_.At(cut.end);
        std::int32_t begins = cut.end.before.rows;
        if (begins < first_row) {
            const auto [front, rest] = Split(piece, first_row - begins);
            cut.front.push_back(front);
            piece = rest;
            begins = first_row;
        }
        if (begins + piece.Rows() > end_row) {
            const auto [inside, back] = Split(piece, end_row - begins);
            cut.back.push_back(back);
            piece = inside;
        }
        cut.inside.push_back(piece);
    }
    return cut;
}

// Neighbours that have become alike are one piece again.
void ParagraphRows::PutBack(Cut cut, const std::vector<RowPiece>& pieces) {
    std::vector<RowPiece> joined;
    if (cut.begin.before.rows > 0) {
        cut.begin = pieces_.Previous(cut.begin);
        joined.push_back(pieces_.At(cut.begin));
    }
    for (const std::vector<RowPiece>& part : {cut.front, pieces, cut.back}) {
        for (const RowPiece& piece : part)
            AppendJoined(piece, joined);
    }
    if (!pieces_.IsEnd(cut.end)) {
        AppendJoined(pieces_.At(cut.end), joined);
        cut.end = pieces_.Next(cut.end);
    }
    pieces_.Replace(cut.begin, cut.end, joined);
}

// As many paragraphs as before: each keeps its row.
void ParagraphRows::Touch(Side side, const ParagraphEdit& edit) {
    const std::int32_t first = RowOf(side, edit.first);
    const std::int32_t last = RowOf(side, edit.first + (edit.removed - 1));
    if (first == last && RunAt(first).kind == RowKind::Edited)
        return;  // a letter behind another one
    Cut cut = CutOut(first, last + 1);
    std::vector<RowPiece> touched = cut.inside;
    for (RowPiece& piece : touched)
        piece.kind = CountOn(piece, side) > 0 ? RowKind::Edited : piece.kind;
    PutBack(std::move(cut), touched);
}

// Nobody knows which of the new paragraphs came from which, so the rows become one piece.
void ParagraphRows::Exchange(Side side, const ParagraphEdit& edit) {
    const std::int32_t first = RowOf(side, edit.first);
    const std::int32_t last = RowOf(side, edit.first + (edit.removed - 1));
    Cut cut = CutOut(first, last + 1);
    RowPiece all{RowKind::Edited, -1, {0, 0}};
    for (const RowPiece& piece : cut.inside) {
        all.record = all.record < 0 ? piece.record : all.record;
        all.counts.original += piece.counts.original;
        all.counts.modified += piece.counts.modified;
    }
    CountOn(all, side) += edit.inserted - edit.removed;
    PutBack(std::move(cut), {all});
}

void ParagraphRows::Insert(Side side, const ParagraphEdit& edit) {
    const std::int32_t paragraph = std::clamp(edit.first.value, 1, Paragraphs(side) + 1) - 1;
    const Place place = pieces_.OfParagraph(side, paragraph);
    RowPiece made{RowKind::Edited, -1, {0, 0}};
    CountOn(made, side) = edit.inserted;
    const std::int32_t inside = paragraph - place.before.paragraphs[side];
    if (inside == 0) {
        if (!FillGap(side, edit, place))
            PutBack({place, place, {}, {}, {}}, {made});
        return;
    }
    const RowPiece& piece = pieces_.At(place);
    if (inside < piece.Rows()) {
        const auto [front, back] = Split(piece, inside);
        PutBack({place, pieces_.Next(place), {front}, {}, {back}}, {made});
        return;
    }
    // Between paragraphs of one row, which grows.
    auto [front, row] = Split(piece, piece.Rows() - 1);
    row.kind = RowKind::Edited;
    CountOn(row, side) += edit.inserted;
    PutBack({place, pieces_.Next(place), {front}, {}, {}}, {row});
}

// Where the other side has rows of its own in between, what is put in stands against them: a
// deletion that is undone, a difference that is copied over.
bool ParagraphRows::FillGap(Side side, const ParagraphEdit& edit, const Place& behind) {
    std::optional<Place> gap;
    for (Place place = behind; place.before.rows > 0;) {
        place = pieces_.Previous(place);
        if (pieces_.At(place).counts[side] > 0)
            break;
        gap = place;
        if (edit.in_front)
            break;
    }
    if (!gap)
        return false;
    RowPiece filled = pieces_.At(*gap);
    filled.kind = RowKind::Edited;
    CountOn(filled, side) = edit.inserted;
    PutBack({*gap, pieces_.Next(*gap), {}, {}, {}}, {filled});
    return true;
}

// ---- folds ----

namespace {

// Rows without a difference from here to the next one.
std::int32_t EndOfUnchanged(const ParagraphRows& rows, std::int32_t row) {
    while (row < rows.Rows()) {
        const ParagraphRow run = rows.RunAt(row);
        if (!IsUnchanged(run.kind))
            break;
        row = run.rows.end();
    }
    return row;
}

}  // namespace

void AddFolds(const RowSpan& stretch, std::int32_t all_rows, const FoldRule& rule,
              std::vector<RowSpan>& folds) {
    const bool at_end = stretch.end() >= all_rows;
    const std::int32_t first = stretch.first + (stretch.first > 0 ? rule.context_above : 0);
    const std::int32_t end = stretch.end() - (at_end ? 0 : rule.context_below);
    const auto add = [&](std::int32_t from, std::int32_t to) {
        if (to > from && to - from >= rule.least)
            folds.push_back({from, to - from});
    };
    const auto behind = std::lower_bound(rule.headings.begin(), rule.headings.end(), stretch.end());
    const std::int32_t heading =
        at_end || behind == rule.headings.begin() ? -1 : *std::prev(behind);
    if (heading < first || heading >= end) {
        add(first, end);
        return;
    }
    add(first, heading);
    add(heading + 1, end);
}

std::vector<RowSpan> FoldableRows(const ParagraphRows& rows, const FoldRule& rule) {
    std::vector<RowSpan> folds;
    for (std::int32_t row = 0; row < rows.Rows();) {
        const std::int32_t end = EndOfUnchanged(rows, row);
        if (end == row) {
            row = rows.RunAt(row).rows.end();
            continue;
        }
        AddFolds({row, end - row}, rows.Rows(), rule, folds);
        row = end;
    }
    return folds;
}

}  // namespace zorvane
