// Collects the cells of a row and hands rows over in order, with the empty ones between.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "load/readers/sheets/cell_reference.h"
#include "load/readers/sheets/workbook.h"

namespace zorvane {

class RowBuilder {
  public:
    explicit RowBuilder(const RowSink& sink) : sink_(sink) {}

    /// 0-based. A row that does not lie behind the last one follows it.
    void BeginRow(std::int32_t row);
    std::int32_t Row() const { return row_; }
    /// Place to which the text of the next cell is appended.
    std::string& Text() { return text_; }
    /// Makes what was appended to `Text` since the last cell the text of this one.
    void EndCell(std::int32_t column);
    /// A cell whose text lives longer than the row and is not copied.
    void AddCell(std::int32_t column, std::string_view text);
    /// Hands the row over, with empty rows before it, and as often as it repeats. False when the
    /// reading is to end.
    bool EndRow(std::int32_t repeated = 1);

    /// Why EndRow gave false.
    ReadEnd End() const;

  private:
    struct Cell {
        const char* data = nullptr;  ///< nothing: at `offset` in `text_`
        std::size_t offset = 0;
        std::size_t size = 0;
    };
    void Put(std::int32_t column, const Cell& cell);
    bool WithinBounds(std::int32_t repeated);
    bool HandOver(std::int32_t repeated);

    const RowSink& sink_;
    std::string text_;
    std::size_t used_ = 0;
    std::vector<Cell> cells_;
    std::vector<std::string_view> views_;
    std::int32_t row_ = 0;
    std::int32_t next_row_ = 0;
    std::size_t padding_ = 0;
    std::size_t bytes_ = 0;
    bool too_large_ = false;
    bool cancelled_ = false;
};

}  // namespace zorvane
