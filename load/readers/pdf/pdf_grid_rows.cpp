#include "load/readers/pdf/pdf_grid_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "load/readers/pdf/pdf_cell_flow.h"

namespace zorvane {
namespace {

constexpr float kRoom = 2;              // points between a text and the line at its right
constexpr float kManyRows = 0.7F;       // share of lines that begin a row, in a band without lines
constexpr float kManyRuledRows = 0.6F;  // where the table has lines between its rows
constexpr std::size_t kHeadLines = 3;

using CellLines = std::vector<PdfSegmentLine>;  // one line of text, by columns

class Rows {
  public:
    Rows(const std::vector<PdfCharacter>& characters, const PdfGrid& grid)
        : characters_(characters), grid_(grid), columns_(grid.columns.size() - 1) {}

    std::vector<PdfRowGroup> Find() {
        std::vector<CellLines> band;
        const PdfSegment* before = nullptr;
        std::size_t rule = 0;
        for (const PdfSegment& segment : grid_.segments) {
            const bool new_line = before == nullptr || segment.row != before->row;
            if (new_line) {
                const std::size_t here = RuleAbove(segment);
                if (before != nullptr && here != rule)
                    PutBand(band);
                rule = here;
                band.emplace_back(columns_);
            }
            band.back()[ColumnOf(segment)].push_back(&segment);
            before = &segment;
        }
        PutBand(band);
        return std::move(groups_);
    }

  private:
    // How many horizontal lines are above a segment, in its own column.
    std::size_t RuleAbove(const PdfSegment& segment) const {
        const float y = segment.baseline - 0.3F * segment.size;
        const float x = (segment.x0 + segment.x1) / 2;
        std::size_t above = 0;
        for (const PdfRuleLine& line : grid_.across)
            above += line.at < y && line.first <= x && line.last >= x ? 1U : 0U;
        return above;
    }

    std::size_t ColumnOf(const PdfSegment& segment) const {
        const float middle = (segment.x0 + segment.x1) / 2;
        std::size_t column = 0;
        while (column + 1 < columns_ && grid_.columns[column + 1] < middle)
            ++column;
        // What runs over several columns belongs to the first of them.
        while (column > 0 && segment.x0 < grid_.columns[column] - kRoom)
            --column;
        return column;
    }

    bool BeginsRow(const std::vector<CellLines>& band, std::size_t line) const {
        for (std::size_t column = 0; column < columns_; ++column) {
            const PdfSegmentLine& here = band[line][column];
            if (here.empty())
                continue;
            std::size_t above = line;
            while (above > 0 && band[above - 1][column].empty())
                --above;
            if (above > 0 && StepBetween(CellLineOf(characters_, band[above - 1][column]),
                                         CellLineOf(characters_, here),
                                         grid_.columns[column + 1] - kRoom) == PdfCellStep::NewCell)
                return true;
        }
        return false;
    }

    // Of a band between two lines: where the text alone begins a row, if it does.
    std::vector<bool> BeginsOf(const std::vector<CellLines>& band) const {
        std::vector<bool> begins(band.size(), false);
        std::size_t count = 0;
        for (std::size_t line = 1; line < band.size(); ++line) {
            begins[line] = BeginsRow(band, line);
            count += begins[line] ? 1U : 0U;
        }
        const bool head = groups_.empty() && grid_.across.size() > 2 && band.size() <= kHeadLines;
        const bool ruled = grid_.across.size() > 3;
        const float share =
            band.size() < 2 ? 0 : static_cast<float>(count) / static_cast<float>(band.size() - 1);
        const bool many = !head && share >= (ruled ? kManyRuledRows : kManyRows);
        const bool by_line = grid_.across.size() < 2;
        if (!many && !by_line)
            begins.assign(band.size(), false);
        return begins;
    }

    void PutBand(std::vector<CellLines>& band) {
        const std::vector<bool> begins = BeginsOf(band);
        for (std::size_t line = 0; line < band.size(); ++line) {
            if (line == 0 || begins[line])
                OpenRow();
            for (std::size_t column = 0; column < columns_; ++column) {
                if (!band[line][column].empty())
                    groups_.back().cells[column].push_back(band[line][column]);
            }
        }
        band.clear();
    }

    void OpenRow() {
        PdfRowGroup group;
        group.ruled = true;
        group.cells.resize(columns_);
        for (std::size_t column = 0; column < columns_; ++column)
            group.right_edges.push_back(grid_.columns[column + 1] - kRoom);
        groups_.push_back(std::move(group));
    }

    const std::vector<PdfCharacter>& characters_;
    const PdfGrid& grid_;
    std::size_t columns_;
    std::vector<PdfRowGroup> groups_;
};

}  // namespace

std::vector<PdfRowGroup> RowsOfGrid(const std::vector<PdfCharacter>& characters,
                                    const PdfGrid& grid) {
    return Rows(characters, grid).Find();
}

}  // namespace zorvane
