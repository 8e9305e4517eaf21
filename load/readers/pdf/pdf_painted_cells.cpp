#include "load/readers/pdf/pdf_painted_cells.h"

#include <algorithm>

namespace zorvane {

void PaintedCells::Start(double width, double height) {
    width_ = std::max(width, 1.0);
    height_ = std::max(height, 1.0);
    for (auto& row : painted_)
        row.fill(0);
}

std::size_t PaintedCells::Cell(double at, double length) {
    const double cell = at / length * static_cast<double>(kCells);
    if (!(cell > 0))
        return 0;
    return std::min(static_cast<std::size_t>(std::min(cell, 1e6)), kCells);
}

// A cell is painted when its middle is.
void PaintedCells::Paint(const PdfBox& box, bool white) {
    const double half_width = width_ / kCells / 2;
    const double half_height = height_ / kCells / 2;
    const std::size_t x0 = Cell(box.x0 + half_width, width_);
    const std::size_t x1 = Cell(box.x1 + half_width, width_);
    const std::size_t y1 = Cell(box.y1 + half_height, height_);
    for (std::size_t y = Cell(box.y0 + half_height, height_); y < y1 && x0 < x1; ++y)
        std::fill(painted_[y].begin() + static_cast<std::ptrdiff_t>(x0),
                  painted_[y].begin() + static_cast<std::ptrdiff_t>(x1), white ? 0 : 1);
}

bool PaintedCells::IsPainted(double x, double y) const {
    const std::size_t row = Cell(y, height_);
    const std::size_t column = Cell(x, width_);
    return row < kCells && column < kCells && painted_[row][column] != 0;
}

}  // namespace zorvane
