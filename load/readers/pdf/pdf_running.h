// Running heads and feet: lines that come back at one place on several pages.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_lines.h"

namespace zorvane {

/// Marks the lines whose text, with its numbers masked, stands at the same height of at least two
/// pages and of a third of those pages that could have it, at the top or the foot of the page.
void MarkRunningLines(std::vector<PdfLine>& lines);

}  // namespace zorvane
