// Small helpers on WordprocessingML trees, shared by those who write them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

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
    /// Children of that local name, or all, by the attribute of that local name.
    explicit ChildIndex(const char* key, std::string_view element = {})
        : key_(key), element_(element) {}
    /// The first one; an empty node without one.
    pugi::xml_node Find(const pugi::xml_node& parent, std::string_view id);
    /// Of what is a number; 0 without one.
    std::int32_t Highest(const pugi::xml_node& parent);
    /// Takes in what was not appended as the last child.
    void Add(const pugi::xml_node& child);

  private:
    void TakeIn(const pugi::xml_node& parent);

    const char* key_;
    std::string_view element_;
    pugi::xml_node parent_;
    pugi::xml_node last_;
    std::unordered_map<std::string, pugi::xml_node> children_;
    std::int32_t highest_ = 0;
};

/// What holds inline content or blocks and shows nothing itself.
bool IsInlineWrapper(std::string_view local_name);
bool IsBlockWrapper(std::string_view local_name);

}  // namespace zorvane
