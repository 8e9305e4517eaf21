#include "redline/header_pairs.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;
using HeaderKind = std::pair<std::string, std::string>;  // kind and type
using PartsByKind = std::map<HeaderKind, std::vector<std::string>>;

std::vector<Node> SectionsOf(const Node& document) {
    std::vector<Node> sections;
    VisitElements(document, [&sections](const Node& node) {
        if (Is(node, "sectPr") && !Is(node.parent(), "sectPrChange"))
            sections.push_back(node);
    });
    return sections;
}

std::string PartWith(const std::vector<PartRelation>& relations, std::string_view id) {
    const auto found = std::find_if(relations.begin(), relations.end(),
                                    [id](const PartRelation& one) { return one.id == id; });
    return found == relations.end() ? std::string() : found->part;
}

PartsByKind PartsOf(WordPackage& package) {
    PartsByKind parts;
    std::set<std::string> seen;
    const std::vector<PartRelation> relations = package.Relations(package.MainPart());
    for (const Node& section : SectionsOf(package.Tree(package.MainPart()))) {
        for (const Node& reference : section.children()) {
            const std::string_view name = LocalName(reference);
            if (name != "headerReference" && name != "footerReference")
                continue;
            const std::string part = PartWith(relations, reference.attribute("r:id").value());
            if (part.empty() || !package.Tree(part) || !seen.insert(part).second)
                continue;
            parts[{name == "headerReference" ? "header" : "footer",
                   std::string(Attribute(reference, "type"))}]
                .push_back(part);
        }
    }
    return parts;
}

}  // namespace

HeaderPairs PairHeaders(WordPackage& original, WordPackage& modified) {
    HeaderPairs result;
    PartsByKind old_parts = PartsOf(original);
    const PartsByKind new_parts = PartsOf(modified);
    for (const auto& [kind, parts] : new_parts) {
        std::vector<std::string>& partners = old_parts[kind];
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (i < partners.size())
                result.pairs.push_back({partners[i], parts[i]});
            else
                result.added.push_back(parts[i]);
        }
        partners.erase(partners.begin(), partners.begin() + static_cast<std::ptrdiff_t>(std::min(
                                                                parts.size(), partners.size())));
    }
    for (const auto& [kind, parts] : old_parts) {
        for (const std::string& part : parts)
            result.lost.push_back({part, kind.first, kind.second});
    }
    return result;
}

std::string TakeHeader(WordPackage& original, const LostHeader& lost, WordPackage& modified) {
    const std::string element = lost.kind + "Reference";
    const std::vector<Node> sections = SectionsOf(modified.Tree(modified.MainPart()));
    const bool taken = std::any_of(sections.begin(), sections.end(), [&](const Node& section) {
        return std::any_of(section.begin(), section.end(), [&](const Node& reference) {
            return Is(reference, element) && Attribute(reference, "type") == lost.type;
        });
    });
    if (sections.empty() || taken)
        return {};
    std::string name = modified.Has(lost.part) ? modified.FreshName(lost.part) : lost.part;
    modified.Add(name, original.Current(lost.part));
    modified.SetContentType(name, original.ContentType(lost.part));
    for (PartRelation relation : original.Relations(original.MainPart())) {
        if (relation.part != lost.part)
            continue;
        relation.part = name;
        modified.Edit(modified.MainPart());
        Node section = sections.front();
        Node reference = section.prepend_child(("w:" + element).c_str());
        reference.append_attribute("w:type") = lost.type.c_str();
        reference.append_attribute("r:id") =
            modified.AddRelation(modified.MainPart(), relation).c_str();
        return name;
    }
    return {};
}

}  // namespace zorvane
