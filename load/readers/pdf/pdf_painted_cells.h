// What lies behind the text of a page.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "load/readers/pdf/pdf_page.h"

namespace zorvane {

/// Which parts of a page have something other than white on them, in cells.
class PaintedCells {
  public:
    void Start(double width, double height);
    void Paint(const PdfBox& box, bool white);
    bool IsPainted(double x, double y) const;

  private:
    static constexpr std::size_t kCells = 128;  // each way
    static std::size_t Cell(double at, double length);

    double width_ = 1;
    double height_ = 1;
    std::array<std::array<std::uint8_t, kCells>, kCells> painted_{};
};

}  // namespace zorvane
