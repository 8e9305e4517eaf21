// The numbers that count the lines of a pleading at its left edge.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_rows.h"

namespace zorvane {

/// Leaves out the words that count lines: left of all text, one below the other, ascending.
void DropLineNumbers(const std::vector<PdfCharacter>& characters, std::vector<PdfWord>& words);

}  // namespace zorvane
