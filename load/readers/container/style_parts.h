// Styles as a bounded reading of their elements: they are gone through for each run or shape, so
// that an endless list in one would cost its length times the number of its uses.
#pragma once

#include <string_view>

#include "load/readers/container/xml_part.h"

namespace zorvane {

/// No element of a style has more children or attributes by its format.
inline constexpr int kMostStyleParts = 64;

template <class Visit>
void ForStyleParts(const pugi::xml_node& node, Visit visit) {
    int count = 0;
    for (const pugi::xml_node& child : node.children()) {
        if (++count > kMostStyleParts)
            return;
        visit(child);
    }
}

template <class Visit>
void ForStyleAttributes(const pugi::xml_node& node, Visit visit) {
    int count = 0;
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        if (++count > kMostStyleParts)
            return;
        visit(std::string_view(attribute.name()), std::string_view(attribute.value()));
    }
}

/// First child of that local name among them, or an empty node.
inline pugi::xml_node StylePart(const pugi::xml_node& node, std::string_view local_name) {
    pugi::xml_node found;
    ForStyleParts(node, [&](const pugi::xml_node& child) {
        if (!found && Is(child, local_name))
            found = child;
    });
    return found;
}

}  // namespace zorvane
