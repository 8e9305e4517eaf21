// Puts a rich text on pages, one after the other, and forgets each when it is done.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "common/base/result.h"
#include "compare/print/line_breaker.h"
#include "compare/print/line_painter.h"
#include "compare/print/page_painter.h"
#include "compare/print/page_setup.h"

namespace zorvane {

/// What a layout asks of whoever drives it.
struct PageCalls {
    /// A page begins, numbered from 1; the painter is told of it here.
    std::function<Status(std::int32_t)> new_page;
    /// Asked every few milliseconds with the part that is done, 0 to 1; false stops.
    std::function<bool(double)> keep_going;
};

/// How a print ended that was stopped.
inline constexpr const char* kPrintStopped = "Printing Aborted";

class PageLayout {
  public:
    /// `painter` nullptr: nothing is drawn, pages are counted. All is borrowed.
    PageLayout(const RichText& text, const PageSetup& setup, TextMeasurer& measurer,
               PagePainter* painter)
        : text_(text), setup_(setup), measurer_(measurer), painter_(painter) {}

    /// Gives back the number of pages, at least one. A paragraph's first or last line never stands
    /// on a page alone, and a row that fits a page is not cut.
    Result<std::int32_t> Run(const PageCalls& calls);

  private:
    struct Cell;

    bool NewPage();
    bool Fresh() const { return y_ == setup_.top; }
    double Room() const { return setup_.height - setup_.bottom - y_; }
    bool KeepGoing();
    void PlaceParagraph(const PrintParagraph& paragraph);
    bool PlaceLines(const ParagraphFormat& format, LinePainter* painter);
    std::size_t LinesThatFit(const ParagraphFormat& format, std::size_t first) const;
    void PlaceRow(const PrintParagraph& row, const std::vector<std::int32_t>& ends);
    void PlaceRowPart(const std::vector<std::unique_ptr<Cell>>& cells);
    double PlaceCellPart(Cell& cell, double top);
    std::vector<std::unique_ptr<Cell>> BrokenCells(const PrintParagraph& row,
                                                   const std::vector<std::int32_t>& ends);
    LinePlace TakeLine(const ParagraphFormat& format, const FontHeight& extent);
    bool TurnDuePage();
    bool IsRow(std::u16string_view paragraph) const;
    std::size_t TableEnd(std::size_t begin) const;

    const RichText& text_;
    const PageSetup& setup_;
    TextMeasurer& measurer_;
    PagePainter* painter_;
    const PageCalls* calls_ = nullptr;
    LineBreaker breaker_;
    std::vector<PrintLine> lines_;  // of the paragraph at hand
    double y_ = 0;
    bool page_due_ = false;  // the text asked for one, if more follows
    std::int32_t page_ = 0;
    std::size_t place_ = 0;
    int until_asked_ = 0;
    Status status_;
};

}  // namespace zorvane
