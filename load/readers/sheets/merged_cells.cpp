#include "load/readers/sheets/merged_cells.h"

#include <algorithm>

namespace zorvane {
namespace {

constexpr std::size_t kMostRanges = 1'000'000;

}  // namespace

void MergedCells::Add(const CellRange& range) {
    if (range.first.row < 0 || range.last.row < range.first.row ||
        range.last.column < range.first.column || range.first == range.last)
        return;
    if (ranges_.size() < kMostRanges)
        ranges_.push_back(range);
}

void MergedCells::Activate(std::int32_t row) {
    if (!sorted_)
        std::sort(ranges_.begin(), ranges_.end(), [](const CellRange& one, const CellRange& other) {
            return one.first.row < other.first.row;
        });
    sorted_ = true;
    row_ = row;
    for (; next_ < ranges_.size() && ranges_[next_].first.row <= row; ++next_) {
        const CellRange& range = ranges_[next_];
        if (range.last.row < row)
            continue;
        // Of two that overlap, which no sheet may have, the first stays: so the active ones are
        // never more than there are columns.
        auto behind = active_.upper_bound(range.last.column);
        bool overlaps = false;
        while (behind != active_.begin()) {
            const auto before = std::prev(behind);
            if (before->second.last.column < range.first.column)
                break;
            if (before->second.last.row >= row) {
                overlaps = true;
                break;
            }
            behind = active_.erase(before);
        }
        if (!overlaps)
            active_.emplace(range.first.column, range);
    }
}

bool MergedCells::Covers(std::int32_t row, std::int32_t column) {
    if (ranges_.empty())
        return false;
    if (row != row_)
        Activate(row);
    const auto behind = active_.upper_bound(column);
    if (behind == active_.begin())
        return false;
    const CellRange& range = std::prev(behind)->second;
    return range.Contains(row, column) && range.first != CellPlace{row, column};
}

}  // namespace zorvane
