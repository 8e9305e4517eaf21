// The rows of two views that show both sides of a compare, so that what belongs together stands at
// one height; and those of one view with folds.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "compare/document/block_index.h"
#include "compare/ui/height_sums.h"
#include "compare/ui/view_rows.h"
#include "compare/view/paragraph_rows.h"

namespace zorvane {

/// One row of both sides. A side without blocks tells the block that follows the place.
struct PairedRow {
    PerSide<std::int32_t> block{0, 0};
    PerSide<std::int32_t> count{0, 0};
    std::int32_t folded = 0;
    std::int32_t record = -1;
    MarkKind kind = MarkKind::None;
    bool of_pair = false;
};

class PairedRows {
  public:
    PairedRows() : sides_{SideRows(*this, Side::Original), SideRows(*this, Side::Modified)} {}
    PairedRows(const PairedRows&) = delete;
    PairedRows& operator=(const PairedRows&) = delete;

    /// `heights` are estimates, one for each row.
    void Assign(std::vector<PairedRow> rows, std::vector<float> heights);
    ViewRows& Of(Side side) { return sides_[side]; }
    const PairedRow& At(std::int32_t row) const { return rows_[static_cast<std::size_t>(row)]; }
    std::int32_t Count() const { return static_cast<std::int32_t>(rows_.size()); }
    /// What a side needs at a row; asked by the other one.
    void SetContentHeight(Side side, std::function<double(std::int32_t row)> content) {
        content_[side] = std::move(content);
    }
    /// The rows of a record that are in the list; nothing if it has none.
    RowSpan RowsOfRecord(std::int32_t record) const;

  private:
    class SideRows : public ViewRows {
      public:
        SideRows(PairedRows& pair, Side side) : pair_(&pair), side_(side) {}
        std::int32_t Count() const override { return pair_->Count(); }
        ViewRow At(std::int32_t row) const override;
        std::int32_t RowOfBlock(std::int32_t block) const override;
        RoomRun RunAt(std::int32_t row) const override;
        double LeastHeight(std::int32_t row) const override;
        double Height() const override { return pair_->heights_.Total(); }
        double Y(std::int32_t row) const override { return pair_->heights_.Before(row); }
        std::int32_t AtY(double y) const override { return pair_->heights_.At(y); }
        void SetHeight(std::int32_t row, double height) override {
            pair_->heights_.Set(row, static_cast<float>(height));
        }

      private:
        PairedRows* pair_;
        Side side_;
    };

    std::vector<PairedRow> rows_;
    std::vector<RowSpan> runs_;  // rows of one record each, ascending
    HeightSums heights_;
    PerSide<std::function<double(std::int32_t)>> content_;
    PerSide<SideRows> sides_;
};

/// What of unchanged stretches is hidden.
struct FoldState {
    bool folded = false;
    FoldRule rule;
    std::set<std::int32_t> opened;  ///< first paragraphs of stretches that were opened
};

/// The rows of both sides.
void PairRows(const ParagraphRows& rows, const PerSide<const BlockIndex*>& indexes,
              const std::function<MarkKind(std::int32_t record)>& kind_of, const FoldState& folds,
              PairedRows& paired);
/// The rows of one text, whose unchanged paragraphs (mark `None`) may fold; on the side Original.
void FoldRows(const MarkSource& marks, const BlockIndex& index, const FoldState& folds,
              PairedRows& rows);

}  // namespace zorvane
