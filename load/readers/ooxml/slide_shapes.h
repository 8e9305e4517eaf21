// The shapes of a slide in the order in which one reads them.
#pragma once

#include <vector>

#include "load/readers/container/xml_part.h"
#include "load/readers/ooxml/slide_designs.h"

namespace zorvane {

/// How a drawing's shapes are put in order.
enum class ShapeOrder : std::uint8_t {
    Reading,  ///< as `ShapesOf` says
    File      ///< as they stand, for drawings that a program has laid out
};

/// The title; then what lies on the slide as `PutInReadingOrder` says, a group as one; at last
/// date, footer and number. Groups are opened, the chosen branch of alternate content stands for
/// it, hidden shapes are left out. A placeholder without a place of its own lies where `design`
/// says.
std::vector<pugi::xml_node> ShapesOf(const pugi::xml_node& tree, const SlideDesign* design,
                                     ShapeOrder order = ShapeOrder::Reading);

}  // namespace zorvane
