// Small helpers on WordprocessingML trees, shared by those who write them.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "load/readers/container/xml_part.h"

namespace zorvane {

/// The element and its content in one form whatever its attributes' order. `attribute` gives what
/// an attribute counts for; nothing leaves it out.
using AttributeForm = std::function<bool(const pugi::xml_node& node,
                                         const pugi::xml_attribute& attribute, std::string& value)>;
std::string CanonicalXml(const pugi::xml_node& node, const AttributeForm& form = {});

/// Calls `visit` for the node and all elements below it.
void VisitElements(const pugi::xml_node& node, const std::function<void(pugi::xml_node)>& visit);

/// Revision-save ids and paragraph ids, which say nothing about the text.
bool IsSaveId(std::string_view attribute);

void SetAttribute(pugi::xml_node node, const char* name, std::string_view value);

/// What holds inline content or blocks and shows nothing itself.
bool IsInlineWrapper(std::string_view local_name);
bool IsBlockWrapper(std::string_view local_name);

}  // namespace zorvane
