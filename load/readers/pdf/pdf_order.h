// The order of letters within a line: what was drawn from left to right becomes what is read.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_lines.h"

namespace zorvane {

/// The letter for a base and an accent drawn over it, or 0 where they make none.
char32_t Composed(char32_t base, char32_t accent);

/// Whether an accent can be drawn over a letter.
bool IsAccent(char32_t letter);

bool IsRightToLeft(char32_t letter);

/// Puts a line with right-to-left letters into its logical order, and its joined Arabic forms
/// into plain letters. True when the line as a whole runs to the left.
bool ReorderVisualLine(std::vector<PdfLetter>& letters);

}  // namespace zorvane
