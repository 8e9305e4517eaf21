// Which lines go on in the next one.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "load/readers/pdf/pdf_lines.h"

namespace zorvane {

/// What is known of a paragraph while its lines are gathered.
struct PdfParagraphSoFar {
    const PdfLine* last = nullptr;
    std::size_t lines = 0;
    float body_x0 = 0;  ///< left edge of its second line
    float pitch = 0;    ///< distance between its first two baselines
    bool centered = false;
};

class PdfLineFlow {
  public:
    explicit PdfLineFlow(const std::vector<PdfLine>& lines);

    /// Whether `next`, the line below in the same column, belongs to the paragraph.
    bool GoesOn(const PdfParagraphSoFar& paragraph, const PdfLine& next) const;
    /// The same for the first line of another column or page.
    bool GoesOnElsewhere(const PdfParagraphSoFar& paragraph, const PdfLine& next) const;

    /// Where the lines of a line's column end.
    float RightEdge(const PdfLine& line) const;

  private:
    static int SizeKey(const PdfLine& line);
    void LearnPitches(const std::vector<PdfLine>& lines);
    static int ColumnKey(const PdfLine& line);
    void LearnEdges(const std::vector<PdfLine>& lines);
    void LearnBlocks(const std::vector<PdfLine>& lines);
    void LearnBlock(const PdfLine* first, const PdfLine* last);
    bool PitchFits(const PdfParagraphSoFar& paragraph, const PdfLine& next) const;
    bool SentenceGoesOn(const PdfLine& line, const PdfLine& next) const;
    bool IsFull(const PdfLine& line, const PdfLine& next) const;

    const PdfLine* begin_ = nullptr;
    std::map<int, float> pitches_;    // by size
    std::map<int, float> edges_;      // by column
    std::vector<float> block_edges_;  // by line; 0 where the column's counts
};

}  // namespace zorvane
