// Whether what stands on two sides of a gap is two columns, or the cells of rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "load/readers/pdf/pdf_page.h"
#include "load/readers/pdf/pdf_rows.h"

namespace zorvane {

/// What stands in one row of a side, next to the gap.
struct PdfSideLine {
    float x0 = 0;
    float x1 = 0;
    float baseline = 0;
    float size = 0;
    float first_word = 0;     ///< its width
    std::uint32_t drawn = 0;  ///< number of its first word in the order of drawing
    std::uint32_t words = 0;
    bool number = false;
    bool colon = false;  ///< at its end
    bool table = false;  ///< a ruled table
};
using PdfSide = std::vector<PdfSideLine>;

struct PdfTwoSides {
    PdfSide left;
    PdfSide right;
};

/// How a gap counts as a gutter.
enum class PdfColumnSense : std::uint8_t {
    None,   ///< never
    Usual,  ///< where the page tells it
    Keen,   ///< the user says that there are columns
};

class PdfSides {
  public:
    PdfSides(const std::vector<PdfCharacter>& characters, const std::vector<PdfSegment>& segments,
             const std::vector<PdfBox>& rules, PdfColumnSense sense)
        : characters_(characters), segments_(segments), rules_(rules), sense_(sense) {}

    /// The lines on both sides of `gutter`. The segments come from top to bottom, those of a row
    /// from left to right.
    PdfTwoSides Measure(const std::vector<std::uint32_t>& part, float gutter) const;
    bool AreColumns(const PdfTwoSides& sides) const;
    /// On each side of a run of bands, to measure it as a whole.
    std::size_t FewestLines() const { return Keen() ? 3 : 6; }
    bool Keen() const { return sense_ == PdfColumnSense::Keen; }
    /// 1 where one side was drawn before the other, 0 where the order of drawing says nothing.
    static float Separation(const PdfTwoSides& sides);

  private:
    PdfSideLine LineOf(const PdfSegment& segment) const;
    bool MayBeColumns(const PdfTwoSides& sides) const;
    bool AreBrokenAlone(const PdfTwoSides& sides) const;
    bool LooksLikeTable(const PdfTwoSides& sides) const;

    const std::vector<PdfCharacter>& characters_;
    const std::vector<PdfSegment>& segments_;
    const std::vector<PdfBox>& rules_;
    PdfColumnSense sense_;
};

}  // namespace zorvane
