// Which lines of a region are items of a list rather than rows of a table.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_page.h"
#include "load/readers/pdf/pdf_tables.h"

namespace zorvane {

/// Marks the lines that consist of a label and a text, with a neighbour of the same list, unless
/// the column of the labels has a head.
void MarkListItems(const std::vector<PdfCharacter>& characters, std::vector<PdfTableLine>& lines);

}  // namespace zorvane
