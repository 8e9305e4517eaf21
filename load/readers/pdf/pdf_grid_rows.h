// The rows and cells of a table whose lines are drawn.
#pragma once

#include <vector>

#include "load/readers/pdf/pdf_grids.h"
#include "load/readers/pdf/pdf_tables.h"

namespace zorvane {

/// For a grid with columns. The groups point into the grid.
std::vector<PdfRowGroup> RowsOfGrid(const std::vector<PdfCharacter>& characters,
                                    const PdfGrid& grid);

}  // namespace zorvane
