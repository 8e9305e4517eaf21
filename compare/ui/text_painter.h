// Paints the rows of a page that are in sight: grounds, gutter, text, marks, selection, caret.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "compare/ui/view_page.h"

namespace zorvane {

/// Where the columns of a view stand, in pixels from its left edge.
struct ViewColumns {
    double number_right[2] = {30, 0};
    int number_count = 1;
    double sign_middle = 40;
    double text_left = 52;
    double text_width = 600;
};

/// The edges of a view that are the outer ones of the pair it belongs to.
enum class OuterEdges : unsigned char { None, Left, Right, Both };

/// Finds what is to be marked as found in a block's text.
using FindInText = std::function<std::vector<TextRange>(std::u16string_view)>;
struct ViewLabels {
    std::function<QString(std::int32_t folded)> fold;
    /// The same for screen readers.
    std::function<QString(std::int32_t folded)> fold_spoken;
    std::function<QString(const RoomRun&)> room;
    /// A difference in words, for screen readers.
    std::function<QString(std::int32_t record)> difference;
};

/// Everything of a view that a paint needs besides its page.
struct PaintState {
    QSizeF size;
    ViewColumns columns;
    double scrolled_x = 0;
    double hatch_phase = 0;
    TextRange selection;
    bool caret = false;  ///< shown
    CharPos caret_place;
    std::int32_t current_record = -1;
    OuterEdges edges = OuterEdges::None;
    FindInText find;
    TextRange this_hit{CharPos{0}, -1};
    ViewLabels labels;
    QFont number_font;
    QFont label_font;
    std::int32_t hovered_fold = -1;
};

class TextPainter {
  public:
    TextPainter(ViewPage& page, const PaintState& state, QPainter& painter)
        : page_(page), state_(state), painter_(painter) {}

    /// Only rows that reach into `dirty` are painted.
    void Paint(const QRectF& dirty);

  private:
    void PaintRow(const ShownRow& row, const QRectF& dirty);
    void PaintGround(const ShownRow& row);
    void PaintFold(const ShownRow& row);
    void PaintRoom(const ShownRow& row);
    void PaintRoomLabel(const RoomRun& run, double y, double bottom);
    void PaintGutter(const ShownBlock& block, const ParagraphLayout& layout);
    void PaintBlock(const ShownBlock& block, const QRectF& dirty);
    void PaintWords(const ShownBlock& block, const ParagraphLayout& layout);
    void PaintLines(const ShownBlock& block, const ParagraphLayout& layout);
    void PaintFound(const ShownBlock& block, const ParagraphLayout& layout,
                    QList<QTextLayout::FormatRange>& selections);
    void PaintSelection(const ShownBlock& block, const ParagraphLayout& layout,
                        QList<QTextLayout::FormatRange>& selections);
    void PaintSelectedEnd(const ShownBlock& block, const ParagraphLayout& layout);
    void PaintPreedit(const ShownBlock& block, const ParagraphLayout& layout);
    void PaintCaret();
    void PaintCurrent(const ShownRow& row);
    double TextX() const { return state_.columns.text_left - state_.scrolled_x; }
    const ViewColors& Colors() const { return page_.Style().colors; }

    ViewPage& page_;
    const PaintState& state_;
    QPainter& painter_;
};

/// Kind and record of a row: of its first paragraph's marks, or its own where it is room.
struct RowMark {
    MarkKind kind = MarkKind::None;
    std::int32_t record = -1;
};
RowMark MarkOfRow(ViewPage& page, std::int32_t row);

}  // namespace zorvane
