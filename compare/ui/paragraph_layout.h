// One block of a text on the screen: its lines, and the way between positions and points.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QPainter>
#include <QRectF>
#include <QTextLayout>

#include "compare/document/rich_text.h"
#include "compare/ui/mark_source.h"
#include "compare/ui/text_style.h"

namespace zorvane {

/// Text that an input method composes. It lives in the layout alone, never in the document.
struct Preedit {
    std::int32_t at = 0;  ///< position in the block
    std::u16string text;
    std::int32_t caret = 0;  ///< position in `text`
    bool Empty() const { return text.empty(); }
    friend bool operator==(const Preedit&, const Preedit&) = default;
};

/// A block as it is laid out. Positions below count from the block's begin, the break left out.
struct BlockText {
    std::u16string text;  ///< without its break
    std::vector<CharRun> runs;
    CharFormat default_format;  ///< of an empty block
    ParagraphFormat paragraph;
    bool right_to_left = false;  ///< of the whole paragraph, so of each of its slices
    bool first_slice = true;
    bool last_slice = true;
    bool begins_table = false;  ///< a row of cells behind something else
    ParagraphMark mark;
    std::vector<WordMark> words;
    Preedit preedit;
};

/// A stretch of text on one line.
struct RangeBox {
    QRectF rect;          ///< as high as its line
    double baseline = 0;  ///< from the block's upper edge, as all y here
    double ascent = 0;
    double natural_top = 0;  ///< without the line's leading
    double natural_height = 0;
};

enum class EndTrim : bool { No, Blanks };

/// A paragraph with cell marks is laid out as a row of cells of equal width.
class ParagraphLayout {
  public:
    ParagraphLayout(const BlockText& block, const TextStyle& style, FormatMaker& formats);

    /// Whole pixels, so that rows lie at whole pixels.
    double Height() const { return height_; }
    double Width() const { return width_; }  ///< of the longest line, indents included
    std::int32_t Length() const { return length_; }
    const ParagraphMark& Mark() const { return mark_; }
    const std::vector<WordMark>& Words() const { return words_; }
    double Ascent() const;       ///< baseline of the first line, from the upper edge
    double FirstMiddle() const;  ///< middle of the first line

    // ---- positions and points ----
    std::int32_t PositionAt(QPointF point) const;
    /// Without width; what an input method composes is passed over.
    QRectF CaretRect(std::int32_t position) const;
    QRectF PreeditCaretRect() const;
    std::vector<RangeBox> Boxes(std::int32_t first, std::int32_t length, EndTrim trim) const;
    std::vector<RangeBox> PreeditBoxes() const;

    // ---- steps ----
    /// One step to the right or left as the eye sees it, or -1 beyond the block's edge.
    std::int32_t VisualStep(std::int32_t position, bool right) const;
    std::int32_t LineCount() const;
    std::int32_t LineOf(
        std::int32_t position) const;  ///< 0-based; cells count one behind the other
    std::int32_t LineStart(std::int32_t line) const;
    std::int32_t LineEnd(std::int32_t line) const;  ///< the last place that is still on that line
    QRectF LineRect(std::int32_t line) const;
    bool RightToLeft() const { return right_to_left_; }
    bool IsTableRow() const { return cells_.size() > 1; }

    /// Paints text, document underlines and cell borders. `selections` are in positions of the
    /// block; only the foregrounds of their formats are used.
    void Draw(QPainter& painter, QPointF origin, const QList<QTextLayout::FormatRange>& selections,
              const QRectF& clip) const;

  private:
    struct Line {
        double top = 0;
        double height = 0;
    };
    struct Cell {
        std::int32_t first = 0;
        std::int32_t length = 0;  // in the document
        double x = 0;
        double width = 0;
        std::unique_ptr<QTextLayout> layout;
        std::vector<Line> lines;
    };
    struct OwnLine {
        std::int32_t first = 0;
        std::int32_t length = 0;
        Underline kind = Underline::None;
        QColor color;
    };
    struct TextSpan {
        std::int32_t first = 0;
        std::int32_t length = 0;
    };
    std::vector<TextSpan> SpansUnder(const OwnLine& own) const;
    struct LinePlace {
        const Cell* cell = nullptr;
        std::int32_t line = 0;  // in the cell
    };

    void SplitCells(const BlockText& block, const TextStyle& style);
    QList<QTextLayout::FormatRange> Formats(const BlockText& block, const Cell& cell,
                                            const TextStyle& style, FormatMaker& formats);
    QTextCharFormat FormatOf(const CharFormat& format, const WordMark* word, const BlockText& block,
                             const TextStyle& style, FormatMaker& formats);
    double LayOut(Cell& cell, const BlockText& block, const TextStyle& style, FormatMaker& formats);
    double PlaceLines(Cell& cell, const BlockText& block, const TextStyle& style, double width);
    std::int32_t ToCell(const Cell& cell, std::int32_t position, bool behind_preedit) const;
    std::int32_t FromCell(const Cell& cell, std::int32_t at) const;
    const Cell& CellOf(std::int32_t position) const;
    LinePlace PlaceOf(std::int32_t line) const;
    void AddBoxes(const Cell& cell, std::int32_t begin, std::int32_t end, EndTrim trim,
                  std::vector<RangeBox>& boxes) const;
    static void AddBidiBoxes(const QTextLine& line, std::int32_t begin, std::int32_t end,
                             RangeBox box, std::vector<RangeBox>& boxes);
    // Places of the caret on a line with text of both directions.
    struct Stop {
        double x = 0;
        std::int32_t at = 0;
    };
    std::vector<Stop> StopsOf(const Cell& cell, const QTextLine& line) const;
    std::int32_t BidiStep(const Cell& cell, std::int32_t at, bool right) const;
    std::int32_t HitLine(const Cell& cell, const QTextLine& line, double x) const;
    QRectF CaretIn(const Cell& cell, std::int32_t at) const;
    void DrawOwnLines(QPainter& painter, QPointF origin) const;
    void DrawCellBorders(QPainter& painter, QPointF origin) const;

    std::vector<Cell> cells_;
    std::vector<OwnLine> own_lines_;
    ParagraphMark mark_;
    std::vector<WordMark> words_;
    std::int32_t length_ = 0;
    std::int32_t preedit_at_ = 0;
    std::int32_t preedit_length_ = 0;
    std::int32_t preedit_caret_ = 0;
    bool right_to_left_ = false;
    bool bidi_ = false;
    bool begins_table_ = false;
    double room_above_ = 0;
    double room_below_ = 0;
    double height_ = 0;
    double width_ = 0;
    QColor border_;
};

/// True when a text may hold letters that run from right to left.
bool MayBeBidi(std::u16string_view text);
/// The direction of a paragraph without a word on it: that of its first letter that has one.
bool StartsRightToLeft(std::u16string_view text);

}  // namespace zorvane
