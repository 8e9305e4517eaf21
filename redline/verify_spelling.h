// What the files of the check share.
#pragma once

#include <string>

#include "load/readers/container/xml_part.h"

namespace zorvane {

/// The attribute by which what came back from a deletion is known.
inline constexpr const char* kCameBack = "zorvane-came-back";

/// An element as text, in one form whatever the order of its attributes.
std::string Spelled(const pugi::xml_node& node);

}  // namespace zorvane
