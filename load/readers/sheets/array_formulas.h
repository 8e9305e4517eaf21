// Formulas that one cell holds for a range: each cell of the range reads as having it.
#pragma once

#include <string>
#include <vector>

#include "load/readers/sheets/cell_reference.h"

namespace zorvane {

class ArrayFormulas {
  public:
    void Add(const CellRange& range, std::string text) {
        std::erase_if(formulas_, [&range](const Formula& formula) {
            return formula.range.last.row < range.first.row;
        });
        if (formulas_.size() < kMost && range.first != range.last)
            formulas_.push_back({range, std::move(text)});
    }
    /// Nothing where no range lies. Rows are asked in ascending order.
    const std::string* At(std::int32_t row, std::int32_t column) const {
        for (const Formula& formula : formulas_) {
            if (formula.range.Contains(row, column))
                return &formula.text;
        }
        return nullptr;
    }

  private:
    static constexpr std::size_t kMost = 256;  ///< at the same time
    struct Formula {
        CellRange range;
        std::string text;
    };
    std::vector<Formula> formulas_;
};

}  // namespace zorvane
