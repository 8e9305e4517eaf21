// The order in which one reads what lies on a slide.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/container/xml_part.h"

namespace zorvane {

enum class ShapeRank : std::uint8_t {
    Title,  ///< when there is one; several are headings and lie among the others
    Free,   ///< by its place
    Margin  ///< date, footer, number
};

/// A shape, or a group and what it holds. The place is in EMU (914,400 to an inch).
struct PlacedShapes {
    ShapeRank rank = ShapeRank::Free;
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    std::vector<pugi::xml_node> shapes;
};

/// By rank; what lies free as the eye goes: parted into rows or columns where gaps run through, and
/// so on in each part; what overlaps by rows from the top, in a row from the left.
void PutInReadingOrder(std::vector<PlacedShapes>& items);
/// Gives a group without a place of its own that of what it holds.
void LieAround(const std::vector<PlacedShapes>& inner, PlacedShapes& group);
/// All shapes of all items.
std::vector<pugi::xml_node> Opened(const std::vector<PlacedShapes>& items);

}  // namespace zorvane
