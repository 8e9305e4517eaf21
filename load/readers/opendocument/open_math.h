// Formulas inside OpenDocument files.
#pragma once

#include <pugixml.hpp>
#include <string>

namespace zorvane {

/// The letters and signs of a formula, in their order.
std::string OpenMathText(const pugi::xml_node& math);

}  // namespace zorvane
