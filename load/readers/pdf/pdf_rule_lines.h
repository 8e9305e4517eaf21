// The drawn lines of a page, put together from their pieces.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_page.h"

namespace zorvane {

/// A straight line: at `at`, from `first` to `last` along it.
struct PdfRuleLine {
    float at = 0;
    float first = 0;
    float last = 0;
};

inline constexpr float kPdfRuleSlack = 1.6F;  ///< points between the pieces of one line

/// Horizontal ones by their heights, vertical ones by their places from left to right.
std::vector<PdfRuleLine> HorizontalLines(const std::vector<PdfBox>& rules);
std::vector<PdfRuleLine> VerticalLines(const std::vector<PdfBox>& uprights);

}  // namespace zorvane
