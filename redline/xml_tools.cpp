#include "redline/xml_tools.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "redline/node_kinds.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

void AppendCanonical(const Node& node, const AttributeForm& form, std::string& out, int depth) {
    if (!IsElement(node)) {
        out += node.value();
        return;
    }
    out.append("<").append(LocalName(node));
    std::vector<std::pair<std::string, std::string>> attributes;
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        std::string value = attribute.value();
        const std::string_view name = attribute.name();
        if (name.starts_with("xmlns") || IsSaveId(name) || (form && !form(node, attribute, value)))
            continue;
        attributes.emplace_back(name, std::move(value));
    }
    std::sort(attributes.begin(), attributes.end());
    for (const auto& [name, value] : attributes)
        out.append(" ").append(name).append("=").append(value);
    out += ">";
    if (depth < kMaxDepth) {
        for (const Node& child : node.children()) {
            if (!LocalName(child).starts_with("bookmark"))
                AppendCanonical(child, form, out, depth + 1);
        }
    }
    out += "</>";
}

void Visit(const Node& node, const std::function<void(Node)>& visit, int depth) {
    visit(node);
    for (Node child = node.first_child(); child && depth < kMaxDepth;) {
        const Node next = child.next_sibling();
        if (IsElement(child))
            Visit(child, visit, depth + 1);
        child = next;
    }
}

}  // namespace

std::string CanonicalXml(const Node& node, const AttributeForm& form) {
    std::string out;
    AppendCanonical(node, form, out, 0);
    return out;
}

void VisitElements(const Node& node, const std::function<void(Node)>& visit) {
    if (node)
        Visit(node, visit, 0);
}

bool IsSaveId(std::string_view attribute) {
    const std::size_t colon = attribute.find(':');
    const std::string_view local =
        colon == std::string_view::npos ? attribute : attribute.substr(colon + 1);
    return local.starts_with("rsid") || local == "paraId" || local == "textId" ||
           local == "anchorId" || local == "editId";
}

void SetAttribute(Node node, const char* name, std::string_view value) {
    pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute)
        attribute = node.append_attribute(name);
    attribute.set_value(std::string(value).c_str());
}

pugi::xml_node ChildIndex::Find(std::string_view id) {
    TakeIn();
    const auto found = children_.find(std::string(id));
    return found == children_.end() ? pugi::xml_node() : found->second;
}

std::int32_t ChildIndex::Highest() {
    TakeIn();
    return highest_;
}

void ChildIndex::Add(const pugi::xml_node& child) {
    const std::string_view id = Attribute(child, key_);
    if (id.empty())
        return;
    children_.emplace(id, child);
    highest_ = std::max(highest_, NumberOf(id, 0));
}

void ChildIndex::TakeIn() {
    for (pugi::xml_node child = last_ ? last_.next_sibling() : parent_.first_child(); child;
         child = child.next_sibling()) {
        Add(child);
        last_ = child;
    }
}

bool IsInlineWrapper(std::string_view local_name) {
    return local_name == "hyperlink" || local_name == "smartTag" || local_name == "customXml" ||
           local_name == "sdt" || local_name == "sdtContent" || local_name == "dir" ||
           local_name == "bdo";
}

bool IsBlockWrapper(std::string_view local_name) {
    return local_name == "sdt" || local_name == "sdtContent" || local_name == "customXml";
}

}  // namespace zorvane
