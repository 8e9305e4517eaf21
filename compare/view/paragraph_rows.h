// Which paragraphs of two texts stand opposite each other, row by row.
#pragma once

#include <cstdint>
#include <vector>

#include "common/base/number.h"
#include "compare/engine/comparison.h"
#include "compare/view/row_pieces.h"

namespace zorvane {

/// Paragraphs of one side. Where there are none `first` is the one that follows the place.
struct ParagraphSpan {
    ParagraphNumber first{1};
    std::int32_t count = 0;
    ParagraphNumber end() const { return first + count; }
    friend bool operator==(const ParagraphSpan&, const ParagraphSpan&) = default;
};

/// 0-based rows.
struct RowSpan {
    std::int32_t first = 0;
    std::int32_t count = 0;
    std::int32_t end() const { return first + count; }
    friend bool operator==(const RowSpan&, const RowSpan&) = default;
};

/// A row, or a run of rows of one kind.
struct ParagraphRow {
    RowKind kind = RowKind::Equal;
    std::int32_t record = -1;  ///< 0-based; -1: of none
    RowSpan rows;
    PerSide<ParagraphSpan> paragraphs;
    friend bool operator==(const ParagraphRow&, const ParagraphRow&) = default;
};

/// `removed` paragraphs from `first` on gave way to `inserted` others.
struct ParagraphEdit {
    ParagraphNumber first{1};
    std::int32_t removed = 0;
    std::int32_t inserted = 0;
    /// Of an insertion between two paragraphs: whether it belongs to the one behind it.
    bool in_front = true;
};

/// Every paragraph of either side stands in exactly one row, in order. Equal pairs cost nothing:
/// the memory and the build go by the number of differences, an edit by a few hundred numbers, a
/// look-up by a logarithm. What was edited since the compare keeps its place as well as can be told
/// without comparing anew; what was not keeps it exactly.
class ParagraphRows {
  public:
    void Assign(const Comparison& comparison);

    std::int32_t Rows() const { return pieces_.Totals().rows; }
    std::int32_t Paragraphs(Side side) const { return pieces_.Totals().paragraphs[side]; }
    /// A measure of the memory.
    std::size_t Runs() const { return pieces_.Count(); }

    // Rows and paragraphs outside are taken to the nearest; only where there are rows.
    ParagraphRow Row(std::int32_t row) const;
    /// The whole run of a row: all equal pairs between two differences are one.
    ParagraphRow RunAt(std::int32_t row) const;
    std::int32_t RowOf(Side side, ParagraphNumber number) const;
    /// The rows of a record. One that edits removed has none, and begins where it stood.
    RowSpan RowsOfRecord(std::int32_t record) const;

    void Apply(Side side, const ParagraphEdit& edit);
    /// The text was replaced by one of so many paragraphs.
    void Reset(Side side, std::int32_t paragraphs);

  private:
    using Place = RowPieces::Place;
    // The pieces that an edit puts in the place of others.
    struct Cut {
        Place begin;
        Place end;
        std::vector<RowPiece> front;   // what is left of a piece in front of the edit
        std::vector<RowPiece> inside;  // the rows that it touches
        std::vector<RowPiece> back;
    };

    Cut CutOut(std::int32_t first_row, std::int32_t end_row) const;
    void PutBack(Cut cut, const std::vector<RowPiece>& pieces);
    void Insert(Side side, const ParagraphEdit& edit);
    bool FillGap(Side side, const ParagraphEdit& edit, const Place& behind);
    void Touch(Side side, const ParagraphEdit& edit);
    void Exchange(Side side, const ParagraphEdit& edit);

    RowPieces pieces_;
};

/// How unchanged rows fold.
struct FoldRule {
    std::int32_t context_above = 1;      ///< rows that stay in sight behind a difference
    std::int32_t context_below = 1;      ///< and in front of the next
    std::int32_t least = 4;              ///< fewer are not worth a fold
    std::vector<std::int32_t> headings;  ///< rows; the last one above a difference stays in sight
};

/// What folds of an unchanged stretch of so many rows.
void AddFolds(const RowSpan& stretch, std::int32_t all_rows, const FoldRule& rule,
              std::vector<RowSpan>& folds);
/// The stretches of unchanged rows that fold, in order.
std::vector<RowSpan> FoldableRows(const ParagraphRows& rows, const FoldRule& rule);

}  // namespace zorvane
