// What the files of the check share.
#pragma once

#include <string>

#include "load/readers/container/xml_part.h"

namespace zorvane {

/// The attribute by which what came back from a deletion is known.
inline constexpr const char* kCameBack = "zorvane-came-back";

/// An element as text, in one form whatever the order of its attributes.
std::string Spelled(const pugi::xml_node& node);
/// The same of an object without its ids, what its relationships are called, and its boxes.
std::string DrawnForm(const pugi::xml_node& object);

/// Stands in front of an object's form in its look. What stays is drawn as the Modified says.
inline constexpr char kDrawn = '\x05';

}  // namespace zorvane
