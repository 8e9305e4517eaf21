// The shapes of a slide in the order in which one reads them.
#pragma once

#include <vector>

#include "load/readers/xml_part.h"

namespace zorvane {

/// How a drawing's shapes are put in order.
enum class ShapeOrder : std::uint8_t {
    Reading,  ///< as `ShapesOf` says
    File      ///< as they stand, for drawings that a program has laid out
};

/// Title; the other placeholders as they stand in the file (that is the order of the layout); then
/// what lies free, by rows from the top and from the left in a row, a group as one; at last date,
/// footer and number. Groups are opened, the chosen branch of alternate content stands for it,
/// hidden shapes are left out.
std::vector<pugi::xml_node> ShapesOf(const pugi::xml_node& tree,
                                     ShapeOrder order = ShapeOrder::Reading);

}  // namespace zorvane
