// Cell addresses as sheets write them, and formulas moved from one cell to another.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

inline constexpr std::int32_t kMaxSheetColumns = 16'384;
inline constexpr std::int32_t kMaxSheetRows = 1'048'576;

/// 0-based; -1 for what is not told.
struct CellPlace {
    std::int32_t row = -1;
    std::int32_t column = -1;
    friend bool operator==(CellPlace, CellPlace) = default;
};

struct CellRange {
    CellPlace first;
    CellPlace last;
    bool Contains(std::int32_t row, std::int32_t column) const {
        return row >= first.row && row <= last.row && column >= first.column &&
               column <= last.column;
    }
    friend bool operator==(const CellRange&, const CellRange&) = default;
};

/// "AB12" or "$AB$12"; both numbers -1 when it is none or lies outside of every sheet.
CellPlace ParseCell(std::string_view text);
/// "A1:B2", or "A1" for a range of one cell.
CellRange ParseRange(std::string_view text);

/// The formula as it reads in a cell that lies `rows` below and `columns` to the right of the one
/// it was written for: relative references move, those with $ stay, one that leaves the sheet
/// becomes #REF!.
void AppendShifted(std::string_view formula, std::int32_t rows, std::int32_t columns,
                   std::string& out);

}  // namespace zorvane
