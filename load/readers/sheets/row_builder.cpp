#include "load/readers/sheets/row_builder.h"

#include <algorithm>

namespace zorvane {
namespace {

// Empty rows and empty cells before filled ones in one sheet: each becomes a character or two.
constexpr std::size_t kMostPadding = std::size_t{64} << 20;
// Text of one row and of one sheet. One long text may stand in each of a million cells.
constexpr std::size_t kMostRowBytes = std::size_t{64} << 20;
constexpr std::size_t kMostSheetBytes = kMaxPartBytes;

}  // namespace

void RowBuilder::BeginRow(std::int32_t row) {
    row_ = std::max(row, next_row_);
    cells_.clear();
    text_.clear();
    used_ = 0;
}

void RowBuilder::EndCell(std::int32_t column) {
    if (text_.size() > kMostRowBytes) {
        too_large_ = true;
        text_.clear();
        used_ = 0;
        return;
    }
    if (text_.size() > used_)
        Put(column, {nullptr, used_, text_.size() - used_});
    used_ = text_.size();
}

void RowBuilder::AddCell(std::int32_t column, std::string_view text) {
    if (!text.empty())
        Put(column, {text.data(), 0, text.size()});
}

void RowBuilder::Put(std::int32_t column, const Cell& cell) {
    if (column < 0 || column >= kMaxSheetColumns)
        return;
    const auto index = static_cast<std::size_t>(column);
    if (index >= cells_.size())
        cells_.resize(index + 1);
    cells_[index] = cell;
}

bool RowBuilder::WithinBounds(std::int32_t repeated) {
    const auto times = static_cast<std::size_t>(repeated);
    padding_ += static_cast<std::size_t>(row_ - next_row_);
    for (const Cell& cell : cells_) {
        bytes_ += cell.size * times;
        padding_ += cell.size == 0 ? times : 0;
    }
    too_large_ = too_large_ || padding_ > kMostPadding || bytes_ > kMostSheetBytes;
    return !too_large_;
}

bool RowBuilder::HandOver(std::int32_t repeated) {
    views_.clear();
    for (; next_row_ < row_; ++next_row_) {
        if (!sink_(views_))
            return false;
    }
    for (const Cell& cell : cells_)
        views_.emplace_back(cell.data == nullptr ? text_.data() + cell.offset : cell.data,
                            cell.size);
    for (std::int32_t i = 0; i < repeated; ++i, ++next_row_) {
        if (!sink_(views_))
            return false;
    }
    return true;
}

bool RowBuilder::EndRow(std::int32_t repeated) {
    if (too_large_)
        return false;
    if (cells_.empty() || row_ >= kMaxSheetRows)
        return true;
    repeated = std::clamp(repeated, 1, kMaxSheetRows - row_);
    if (!WithinBounds(repeated))
        return false;
    cancelled_ = !HandOver(repeated);
    cells_.clear();
    return !cancelled_;
}

ReadEnd RowBuilder::End() const {
    if (too_large_)
        return ReadEnd::Fault(ReadError::TooLarge, "the sheet holds more than can be shown");
    if (cancelled_)
        return ReadEnd::Fault(ReadError::Cancelled);
    return ReadEnd::Ok();
}

}  // namespace zorvane
