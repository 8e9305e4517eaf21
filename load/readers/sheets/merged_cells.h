// Which cells of a sheet are hidden by a merged range, asked row by row.
#pragma once

#include <map>
#include <vector>

#include "load/readers/sheets/cell_reference.h"

namespace zorvane {

class MergedCells {
  public:
    /// Ranges of one cell, and those that lie outside of a sheet, are passed over.
    void Add(const CellRange& range);
    /// True for all cells of a range but the first. Rows are asked in ascending order.
    bool Covers(std::int32_t row, std::int32_t column);

  private:
    void Activate(std::int32_t row);

    std::vector<CellRange> ranges_;
    std::size_t next_ = 0;
    bool sorted_ = false;
    std::int32_t row_ = -1;
    std::map<std::int32_t, CellRange> active_;  ///< by first column; they do not overlap
};

}  // namespace zorvane
