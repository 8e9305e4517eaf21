// XML of a package's part as a tree, under bounds. Uses pugixml, which fetches nothing and expands
// no entities of a document's own.
#pragma once

#include <memory>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "load/readers/container/package.h"
#include "load/readers/reader.h"

namespace zorvane {

/// A parsed part. The nodes live as long as this object.
class XmlPart {
  public:
    /// Whitespace-only text is kept, since runs may hold a single blank.
    static ReadEnd Parse(std::string bytes, XmlPart& part);
    static ReadEnd Read(Package& package, std::string_view name, XmlPart& part);
    pugi::xml_node Root() const { return document_->document_element(); }
    bool Empty() const { return !document_ || document_->empty(); }

  private:
    std::string bytes_;  // parsed in place, so it must stay
    std::unique_ptr<pugi::xml_document> document_;
};

/// The name without its prefix: "w:p" gives "p".
std::string_view LocalName(const pugi::xml_node& node);
inline bool Is(const pugi::xml_node& node, std::string_view local_name) {
    return LocalName(node) == local_name;
}
bool IsOneOf(std::string_view name, std::span<const std::string_view> names);
/// First child of that local name, or an empty node.
pugi::xml_node Child(const pugi::xml_node& node, std::string_view local_name);
/// Value of the attribute of that local name; empty without one.
std::string_view Attribute(const pugi::xml_node& node, std::string_view local_name);
/// Whole number of an attribute, `otherwise` when missing or no number; bounded to 32 bits.
std::int32_t NumberOf(std::string_view text, std::int32_t otherwise);

/// The relationships of an Office Open XML part: id to target part (resolved) or address.
struct Relationship {
    std::string type;    ///< last segment of the type's address: "hyperlink", "footnotes", ...
    std::string target;  ///< a part's name, or an address when external
    bool external = false;
};
std::unordered_map<std::string, Relationship> ReadRelationships(Package& package,
                                                                std::string_view part);

}  // namespace zorvane
