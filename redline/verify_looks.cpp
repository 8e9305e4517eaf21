// What text looks like to the check of a redline, and its headers and footers.
#include <algorithm>
#include <set>

#include "redline/node_kinds.h"
#include "redline/verify_reading.h"
#include "redline/verify_spelling.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

// What programs hand out anew, and what leads elsewhere.
bool IsGiven(const Node& node, std::string_view attribute) {
    return attribute.starts_with("r:") || attribute.ends_with("relid") ||
           attribute.ends_with(":anchorId") || attribute.ends_with(":editId") ||
           (attribute == "id" && Is(node, "docPr"));
}

void Spell(const Node& node, bool drawn, std::string& out, int depth) {
    if (!IsElement(node)) {
        out += node.value();
        return;
    }
    std::set<std::string> attributes;
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        const std::string_view name = attribute.name();
        const bool says_nothing = name.starts_with("xmlns") || name == kCameBack ||
                                  name.find("rsid") != std::string_view::npos ||
                                  (drawn && IsGiven(node, name));
        if (!says_nothing)
            attributes.insert(std::string(name) + "=" + attribute.value());
    }
    out.append("<").append(LocalName(node));
    for (const std::string& attribute : attributes)
        out.append(" ").append(attribute);
    out += ">";
    for (const Node& child : node.children()) {
        const std::string_view name = LocalName(child);
        if (depth < kMaxDepth && !name.starts_with("bookmark") && !(drawn && name == "txbxContent"))
            Spell(child, drawn, out, depth + 1);
    }
    out += "/";
}

}  // namespace

std::string Spelled(const Node& node) {
    std::string out;
    Spell(node, false, out, 0);
    return out;
}

std::string DrawnForm(const Node& object) {
    std::string out;
    Spell(object, true, out, 0);
    return out;
}

// ---- looks ----

std::string StoryReading::LookOf(const Node& properties) const {
    std::set<std::string> parts;
    for (const Node& child : properties.children()) {
        const std::string_view name = LocalName(child);
        const bool of_paragraph = Is(properties, "pPr");
        if (name == "sectPr" || IsTracking(child) || (of_paragraph && name == "rPr"))
            continue;
        if (name.ends_with("Style"))
            parts.insert(StyleText(std::string(Attribute(child, "val")), 0));
        else
            parts.insert(PropertyText(child));
    }
    std::string look;
    for (const std::string& part : parts)
        look += part;
    return look;
}

// A list by its levels, whatever its id.
std::string StoryReading::PropertyText(const Node& property) const {
    if (!Is(property, "numPr"))
        return Spelled(property);
    return "list" + Spelled(Child(property, "ilvl")) +
           ListText(Attribute(Child(property, "numId"), "val"));
}

std::string StoryReading::StyleText(const std::string& id, int depth) const {
    const auto found = styles_.find(id);
    if (found == styles_.end() || depth > kMaxDepth)
        return "no style " + id;
    std::string text;
    for (const Node& child : found->second.children()) {
        const std::string_view name = LocalName(child);
        if (name == "basedOn")
            text += StyleText(std::string(Attribute(child, "val")), depth + 1);
        else if (name == "rPr" || name == "pPr") {
            for (const Node& property : child.children())
                text += PropertyText(property);
        }
    }
    return "{" + text + "}";
}

std::string StoryReading::ListText(std::string_view id) const {
    const auto list = lists_.find(std::string(id));
    if (list == lists_.end())
        return id == "0" || id.empty() ? "none" : "no list " + std::string(id);
    std::string text;
    const auto abstract =
        list_levels_.find(std::string(Attribute(Child(list->second, "abstractNumId"), "val")));
    if (abstract != list_levels_.end())
        text = abstract->second;
    for (const Node& child : list->second.children())
        text += Is(child, "lvlOverride") ? Spelled(child) : "";
    return text;
}

// ---- headers and footers ----

void StoryReading::Headers(const Node& document) {
    std::set<std::string> seen;
    std::vector<Node> open{document};
    while (!open.empty()) {
        const Node at = open.back();
        open.pop_back();
        // Sections end in paragraphs of the body, or behind them.
        if (!Is(at, "r") && !Is(at, "tbl")) {
            std::vector<Node> children(at.begin(), at.end());
            open.insert(open.end(), children.rbegin(), children.rend());
        }
        if (!Is(at, "headerReference") && !Is(at, "footerReference"))
            continue;
        const auto relation = main_relations_.find(at.attribute("r:id").value());
        if (relation == main_relations_.end() || !seen.insert(relation->second.target).second)
            continue;
        XmlPart* const part = Load(relation->second.target);
        if (part == nullptr)
            continue;
        stories_->without_partner += Resolve(part->Root(), resolution_, kCameBack).without_partner;
        std::vector<ReadLine> lines;
        relations_ = ReadRelationships(package_, relation->second.target);
        Container(part->Root(), lines, 0);
        const bool blank = std::all_of(lines.begin(), lines.end(), [](const ReadLine& line) {
            return line.border.empty() && line.Text().empty();
        });
        if (blank)
            continue;
        ++stories_->counts.headers;
        stories_->headers[std::string(LocalName(at)) + std::string(Attribute(at, "type"))]
            .push_back(std::move(lines));
    }
    relations_ = main_relations_;
}

}  // namespace zorvane
