// Kinds of XML nodes, for whoever writes and whoever checks.
#pragma once

#include <pugixml.hpp>

namespace zorvane {

inline bool IsElement(const pugi::xml_node& node) {
    return node.type() == pugi::node_element;
}
/// Text, however it is written.
inline bool IsCharacters(const pugi::xml_node& node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

}  // namespace zorvane
