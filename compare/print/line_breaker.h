// Breaks a paragraph into lines of a page or a cell.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "compare/print/line_pen.h"
#include "compare/print/print_fonts.h"

namespace zorvane {

/// Positions count from the paragraph's first unit. What ends the line is not in it.
struct PrintLine {
    std::int32_t begin = 0;
    std::int32_t end = 0;
    FontHeight height{};
    bool first = false;  ///< of its paragraph
    bool whole = false;  ///< the text asked for its end, so it is not justified
    bool ends_page = false;
};

/// Lines end where the script's own rules allow it; only a word that fills a line alone is cut.
class LineBreaker {
  public:
    LineBreaker();
    ~LineBreaker();
    LineBreaker(const LineBreaker&) = delete;
    LineBreaker& operator=(const LineBreaker&) = delete;

    /// At least one line, in `lines`, whose old content goes. False when `keep_going` said so,
    /// which a long paragraph asks now and then.
    bool Break(const ParagraphMeasure& measure, const ParagraphRoom& room,
               std::vector<PrintLine>& lines, const std::function<bool()>& keep_going);

  private:
    struct Places;  // where a line may end
    class Job;

    std::unique_ptr<Places> places_;
};

}  // namespace zorvane
