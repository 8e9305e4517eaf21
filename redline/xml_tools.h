// Small helpers on WordprocessingML trees, shared by those who write them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

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

/// The children of one element by a number or name that they bear: there may be thousands. What was
/// appended since is taken in by itself; none may be removed.
class ChildIndex {
  public:
    /// Of all children that have an attribute of that local name.
    ChildIndex(const pugi::xml_node& parent, std::string key)
        : parent_(parent), key_(std::move(key)) {}
    /// The first one; an empty node without one.
    pugi::xml_node Find(std::string_view id);
    /// Of what is a number; 0 without one.
    std::int32_t Highest();
    /// Takes in what was not appended as the last child.
    void Add(const pugi::xml_node& child);

  private:
    void TakeIn();

    pugi::xml_node parent_;
    std::string key_;
    pugi::xml_node last_;
    std::unordered_map<std::string, pugi::xml_node> children_;
    std::int32_t highest_ = 0;
};

/// What holds inline content or blocks and shows nothing itself.
bool IsInlineWrapper(std::string_view local_name);
bool IsBlockWrapper(std::string_view local_name);

}  // namespace zorvane
