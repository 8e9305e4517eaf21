// Draws one line of a paragraph: order of directions, tabs, alignment, marks.
#pragma once

#include <memory>
#include <vector>

#include "compare/print/line_breaker.h"

namespace zorvane {

/// Where the room of a paragraph stands on the page.
struct LinePlace {
    double left = 0;
    double width = 0;
    double top = 0;  ///< of the line
    double baseline = 0;
    double bottom = 0;
};

/// Runs of text in one direction as they stand on the line, from left to right.
struct DirectedRun {
    std::int32_t begin = 0;
    std::int32_t end = 0;
    bool right_to_left = false;
};

/// Knows in which direction the parts of a paragraph run; the paragraph is borrowed.
class TextDirections {
  public:
    explicit TextDirections(const PrintParagraph& paragraph);
    ~TextDirections();
    TextDirections(const TextDirections&) = delete;
    TextDirections& operator=(const TextDirections&) = delete;

    /// The paragraph as a whole.
    bool RightToLeft() const;
    std::vector<DirectedRun> RunsOf(std::int32_t begin, std::int32_t end) const;

  private:
    struct State;
    std::unique_ptr<State> state_;  // nullptr: all from left to right
};

class LinePainter {
  public:
    LinePainter(PagePainter& painter, const ParagraphMeasure& measure, const ParagraphRoom& room)
        : painter_(painter), measure_(measure), room_(room), directions_(measure.Paragraph()) {}

    void Paint(const PrintLine& line, const LinePlace& place);

  private:
    struct Piece;
    struct Segment;

    std::vector<Segment> SegmentsOf(const PrintLine& line) const;
    void AddPieces(std::int32_t begin, std::int32_t end, Segment& segment) const;
    void AddWords(const DirectedRun& run, std::size_t span, std::vector<Piece>& pieces) const;
    double Shift(const std::vector<Segment>& segments) const;
    void Justify(const PrintLine& line, Segment& segment) const;
    void PaintPiece(const Piece& piece, double x, const LinePlace& place);
    void PaintBars(const LinePlace& place);

    PagePainter& painter_;
    const ParagraphMeasure& measure_;
    const ParagraphRoom& room_;
    TextDirections directions_;
};

}  // namespace zorvane
