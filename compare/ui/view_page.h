// The page behind a view's window: which rows stand where, and the way between positions of the
// text and points of the window. Knows layouts, not widgets.
#pragma once

#include <cstdint>
#include <vector>

#include <QPointF>
#include <QRectF>

#include "compare/document/block_index.h"
#include "compare/document/rich_document.h"
#include "compare/ui/layout_cache.h"
#include "compare/ui/view_rows.h"

namespace zorvane {

/// What stands at the window's upper edge. Kept instead of a sum of pixels: estimates above may
/// become exact without anything moving.
struct PageTop {
    std::int32_t row = 0;
    double offset = 0;  ///< how much of the row is above the edge
    friend bool operator==(const PageTop&, const PageTop&) = default;
};

/// A row in sight; `y` counts from the window's upper edge.
struct ShownRow {
    std::int32_t row = 0;
    ViewRow what{};
    double y = 0;
    double height = 0;
};

/// A block in sight.
struct ShownBlock {
    Block block;
    double y = 0;
    double height = 0;
};

class ViewPage {
  public:
    /// Borrowed. `ViewPage` is no observer: the view tells it, behind the index.
    explicit ViewPage(RichDocument& document);

    RichDocument& Document() const { return *document_; }
    const BlockIndex& Index() const { return index_; }
    BlockIndex& Index() { return index_; }
    LayoutCache& Layouts() { return cache_; }
    const ViewRows& Rows() const { return *rows_; }

    // ---- what the layout depends on ----
    void SetStyle(const TextStyle& style);
    /// Brings the estimated heights up to the style; costs by the length of the text.
    void EstimateAnew();
    const TextStyle& Style() const { return cache_.Style(); }
    /// nullptr: each block is a row.
    void SetRows(ViewRows* rows);
    void SetWindowHeight(double height) { window_height_ = height; }
    double WindowHeight() const { return window_height_; }

    // ---- notices ----
    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted);
    void Reformatted(CharPos first, std::int32_t length);
    void Reset();
    /// The rows changed (folded, paired anew): `top` is kept on its block.
    void RowsChanged(std::int32_t top_block);

    // ---- rows ----
    double ContentHeight(std::int32_t row);
    double RowHeight(std::int32_t row);
    std::vector<ShownRow> Shown();
    std::vector<ShownBlock> BlocksOf(const ShownRow& row);
    std::int32_t TopBlock() const;

    // ---- scrolling ----
    static constexpr double kUpperThird = 1.0 / 3;  ///< where what was far away begins
    const PageTop& Top() const { return top_; }
    /// Clipped so that the text ends at the window's lower edge at the latest.
    void SetTop(PageTop top);
    /// Goes by real heights; gives back by how much the text moved.
    double ScrollBy(double distance);
    void GoToY(double y);
    double Y() const;
    double Height() const { return rows_->Height(); }
    /// Scrolls as little as is needed, or brings a far place to the upper third. True if it moved.
    bool Show(CharPos position);
    bool ShowRow(std::int32_t row);
    /// A row's upper edge at a part of the window's height.
    void PutRow(std::int32_t row, double part);

    // ---- positions and points, both of the window; x from the text column's left edge ----
    QRectF CaretRect(CharPos position);
    CharPos PositionAt(QPointF point);
    /// Layout and block of a position.
    struct Place {
        const ParagraphLayout* layout = nullptr;
        Block block;
        std::int32_t at = 0;  ///< in the block
    };
    Place PlaceOf(CharPos position);
    /// Upper edge of a row. Exact for rows in and near the window, else by the sums.
    double RowY(std::int32_t row);
    double Widest() const { return widest_; }

  private:
    void Normalize();
    void KeepEndAtBottom();
    double RoomBelowTop(double wanted);
    double BlockHeight(std::int32_t block);

    RichDocument* document_;
    BlockIndex index_;
    BlockRows block_rows_;
    ViewRows* rows_;
    LayoutCache cache_;
    PageTop top_;
    double window_height_ = 0;
    double widest_ = 0;
    std::int32_t blocks_before_ = 0;  // as they were before the edit that is being told
};

}  // namespace zorvane
