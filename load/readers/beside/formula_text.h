// A formula's structure as one line of text.
#pragma once

#include <pugixml.hpp>
#include <string>

namespace zorvane {

/// "x^2", "(a+b)/(2)", "√(x_1)": a formula of Office Open XML (`oMath`) or of MathML (`math`), told
/// apart by the names of its elements. Bounded in depth and length.
std::string FormulaStructure(const pugi::xml_node& formula);

}  // namespace zorvane
