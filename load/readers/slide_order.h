// The order in which one reads what lies on a slide.
#pragma once

#include <cstdint>
#include <vector>

#include "load/readers/xml_part.h"

namespace zorvane {

enum class ShapeRank : std::uint8_t {
    Title,
    Placeholder,  ///< as it stands in the file, which is the order of the layout
    Free,         ///< by its place
    Margin        ///< date, footer, number
};

/// A shape, or a group and what it holds. The place is in EMU (914,400 to an inch).
struct PlacedShapes {
    ShapeRank rank = ShapeRank::Free;
    double left = 0;
    double top = 0;
    std::vector<pugi::xml_node> shapes;
};

/// By rank; what lies free by rows from the top, and in a row from the left.
void PutInReadingOrder(std::vector<PlacedShapes>& items);
/// All shapes of all items.
std::vector<pugi::xml_node> Opened(const std::vector<PlacedShapes>& items);

}  // namespace zorvane
