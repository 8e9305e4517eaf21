// What stands under each other in a view: blocks of its text, room for what only the other side
// has, stretches that are folded.
#pragma once

#include <cstdint>
#include <functional>

#include "compare/document/block_index.h"
#include "compare/ui/mark_source.h"

namespace zorvane {

inline constexpr double kFoldRowHeight = 30;

struct ViewRow {
    std::int32_t first_block = -1;  ///< -1: nothing of this side stands here
    std::int32_t block_count = 0;
    std::int32_t folded = 0;  ///< so many paragraphs are hidden behind this row
    MarkKind kind = MarkKind::None;
    std::int32_t record = -1;  ///< the difference of a row of room; of text, the marks tell it
    bool of_pair = false;      ///< room beside the longer half of a pair, not of a missing one
    bool IsRoom() const { return block_count == 0 && folded == 0 && !of_pair; }
};

/// Rows of room that belong together and carry one label.
struct RoomRun {
    std::int32_t first_row = 0;
    std::int32_t row_count = 0;
    std::int32_t record = -1;
    MarkKind kind = MarkKind::None;
    std::int32_t paragraphs = 0;  ///< of the other side
};

/// A list of rows with their heights. Rows are numbered from 0; numbers outside are never asked.
class ViewRows {
  public:
    ViewRows() = default;
    ViewRows(const ViewRows&) = delete;
    ViewRows& operator=(const ViewRows&) = delete;
    virtual ~ViewRows() = default;

    virtual std::int32_t Count() const = 0;
    virtual ViewRow At(std::int32_t row) const = 0;
    /// Of a block that is folded: the row that hides it.
    virtual std::int32_t RowOfBlock(std::int32_t block) const = 0;
    virtual RoomRun RunAt(std::int32_t row) const { return {row, 1, -1, MarkKind::None, 0}; }
    /// What the other side needs at this row.
    virtual double LeastHeight(std::int32_t /*row*/) const { return 0; }

    // Heights are estimates until they are set; sums are for scroll bars and far jumps.
    virtual double Height() const = 0;
    virtual double Y(std::int32_t row) const = 0;
    virtual std::int32_t AtY(double y) const = 0;
    virtual void SetHeight(std::int32_t row, double height) = 0;
};

/// Each block is a row.
class BlockRows : public ViewRows {
  public:
    /// Borrowed.
    explicit BlockRows(BlockIndex& index) : index_(&index) {}

    std::int32_t Count() const override { return index_->BlockCount(); }
    ViewRow At(std::int32_t row) const override { return {row, 1, 0, MarkKind::None, -1}; }
    std::int32_t RowOfBlock(std::int32_t block) const override { return block; }
    double Height() const override { return index_->Height(); }
    double Y(std::int32_t row) const override { return index_->At(row).y; }
    std::int32_t AtY(double y) const override { return index_->AtY(y).number; }
    void SetHeight(std::int32_t row, double height) override {
        index_->SetHeight(row, static_cast<float>(height));
    }

  private:
    BlockIndex* index_;
};

}  // namespace zorvane
