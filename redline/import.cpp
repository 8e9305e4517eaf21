#include "redline/import.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::array<std::string_view, 10> kDropped{"bookmarkStart",     "bookmarkEnd",
                                                    "commentRangeStart", "commentRangeEnd",
                                                    "permStart",         "permEnd",
                                                    "commentReference",  "proofErr",
                                                    "annotationRef",     "lastRenderedPageBreak"};

Node StyleNamed(const Node& styles, std::string_view id) {
    for (const Node& style : styles.children()) {
        if (Is(style, "style") && Attribute(style, "styleId") == id)
            return style;
    }
    return {};
}

// The one that a paragraph names itself.
std::string ListOf(const Node& paragraph) {
    return std::string(Attribute(Child(Child(Child(paragraph, "pPr"), "numPr"), "numId"), "val"));
}

bool IsRelationAttribute(std::string_view name) {
    return name.starts_with("r:") || name == "o:relid";
}

}  // namespace

void Importer::Adapt(Node copy, const PartPair& parts) {
    std::vector<Node> elements;
    VisitElements(copy, [&elements](const Node& node) { elements.push_back(node); });
    // From the last to the first, so that one that goes takes none with it that is still to come.
    std::reverse(elements.begin(), elements.end());
    for (const Node& element : elements)
        AdaptElement(element, parts);
}

void Importer::AdaptElement(Node element, const PartPair& parts) {
    const std::string_view name = LocalName(element);
    if (std::find(kDropped.begin(), kDropped.end(), name) != kDropped.end()) {
        left_.markers += name == "proofErr" || name == "lastRenderedPageBreak" ? 0 : 1;
        element.parent().remove_child(element);
        return;
    }
    if (name == "sectPr") {
        ++left_.sections;
        element.parent().remove_child(element);
        return;
    }
    std::vector<std::string> gone;
    for (pugi::xml_attribute attribute : element.attributes()) {
        const std::string_view key = attribute.name();
        if (IsSaveId(key))
            gone.emplace_back(key);
        else if (IsRelationAttribute(key))
            attribute.set_value(RelationFor(attribute.value(), parts).c_str());
    }
    for (const std::string& key : gone)
        element.remove_attribute(key.c_str());
    pugi::xml_attribute value = element.attribute("w:val");
    if (name == "pStyle" || name == "rStyle" || name == "tblStyle")
        value.set_value(StyleFor(value.value()).c_str());
    else if (name == "numId")
        value.set_value(NumberingFor(value.value()).c_str());
    else if (name == "docPr")
        SetAttribute(element, "id", FreshDrawingId());
}

std::string Importer::FreshDrawingId() {
    std::string id;
    do
        id = std::to_string(++last_drawing_);
    while (drawings_.contains(id));
    return id;
}

std::string Importer::StyleFor(const std::string& id) {
    if (const auto found = styles_.find(id); found != styles_.end())
        return found->second;
    const Node old_styles = original_.Tree(original_.Related(original_.MainPart(), "styles"));
    const std::string part = modified_.Related(modified_.MainPart(), "styles");
    const Node style = StyleNamed(old_styles, id);
    Node new_styles = modified_.Tree(part);
    styles_[id] = id;
    if (!style || !new_styles)
        return id;
    const Node same = StyleNamed(new_styles, id);
    if (same && CanonicalXml(same) == CanonicalXml(style))
        return id;
    std::string fresh = id;
    if (same || id.empty()) {
        fresh = id + "Original";
        for (int number = 2; StyleNamed(new_styles, fresh); ++number)
            fresh = id + "Original" + std::to_string(number);
    }
    styles_[id] = fresh;
    ImportStyle(style, fresh);
    return fresh;
}

void Importer::ImportStyle(const Node& style, const std::string& id) {
    Node styles = modified_.Edit(modified_.Related(modified_.MainPart(), "styles"));
    Node copy = styles.append_copy(style);
    copy.remove_attribute("w:default");
    SetAttribute(copy, "w:styleId", id);
    Node name = Child(copy, "name");
    if (id != Attribute(style, "styleId"))
        SetAttribute(name, "w:val", std::string(Attribute(name, "val")) + " (Original)");
    std::vector<Node> elements;
    VisitElements(copy, [&elements](const Node& node) { elements.push_back(node); });
    for (Node element : elements) {
        const std::string_view kind = LocalName(element);
        pugi::xml_attribute value = element.attribute("w:val");
        if (kind == "basedOn" || kind == "link" || kind == "next")
            value.set_value(StyleFor(value.value()).c_str());
        else if (kind == "numId")
            value.set_value(NumberingFor(value.value()).c_str());
    }
}

Node Importer::Lists(Side side) {
    WordPackage& package = side == Side::Original ? original_ : modified_;
    return package.Tree(package.Related(package.MainPart(), "numbering"));
}

// Of lists and of what they are made of: each bears a key of its own.
ChildIndex& Importer::ListsById(Side side) {
    return (side == Side::Original ? original_ : modified_).Children(Lists(side), "numId");
}

ChildIndex& Importer::AbstractLists(Side side) {
    return (side == Side::Original ? original_ : modified_).Children(Lists(side), "abstractNumId");
}

Node Importer::AbstractOf(Side side, const Node& list) {
    return AbstractLists(side).Find(Attribute(Child(list, "abstractNumId"), "val"));
}

// Without what a program notes for itself.
std::string Importer::FormOfList(Side side, std::string_view id) {
    const Node list = ListsById(side).Find(id);
    std::string form;
    for (const Node& parent : {AbstractOf(side, list), list}) {
        for (const Node& child : parent.children()) {
            if (Is(child, "lvl") || Is(child, "lvlOverride") || Is(child, "styleLink") ||
                Is(child, "numStyleLink"))
                form += CanonicalXml(child);
        }
    }
    return form;
}

void Importer::PairLists(const Node& original, const Node& modified) {
    const std::string old_id = ListOf(original);
    const std::string new_id = ListOf(modified);
    if (lists_.contains(old_id) || !lists_compared_.insert({old_id, new_id}).second)
        return;
    if (ListsById(Side::Original).Find(old_id) && ListsById(Side::Modified).Find(new_id) &&
        FormOfList(Side::Original, old_id) == FormOfList(Side::Modified, new_id))
        Name(old_id, new_id);
}

void Importer::Name(const std::string& list, const std::string& name) {
    lists_[list] = name;
    list_names_.insert(name);
}

std::string Importer::NumberingFor(const std::string& id) {
    if (const auto found = lists_.find(id); found != lists_.end())
        return found->second;
    const Node list = ListsById(Side::Original).Find(id);
    // One of that id that is another list of the Original in the Modified would go on counting.
    const bool taken = list_names_.contains(id);
    lists_[id] = id;
    if (!list) {
        list_names_.insert(id);
        return id;
    }
    std::string part = modified_.Related(modified_.MainPart(), "numbering");
    if (part.empty()) {
        // The whole part is the Original's then.
        part = CopyPart(original_.Related(original_.MainPart(), "numbering"));
        for (const PartRelation& relation : original_.Relations(original_.MainPart())) {
            if (KindOf(relation) == "numbering")
                modified_.AddRelation(modified_.MainPart(), {{}, relation.type, {}, false, part});
        }
        list_names_.insert(id);
        return id;
    }
    if (!taken && FormOfList(Side::Modified, id) == FormOfList(Side::Original, id)) {
        list_names_.insert(id);
        return id;
    }
    std::string fresh = AddList(list, modified_.Edit(part));
    Name(id, fresh);
    return fresh;
}

// Abstract lists stand in front of lists.
std::string Importer::AddList(const Node& list, Node lists) {
    ChildIndex& abstracts = AbstractLists(Side::Modified);
    ChildIndex& numbered = ListsById(Side::Modified);
    const std::string abstract_id = std::to_string(abstracts.Highest() + 1);
    const Node first = Child(lists, "num");
    const Node abstract = AbstractOf(Side::Original, list);
    Node levels = first ? lists.insert_copy_before(abstract, first) : lists.append_copy(abstract);
    SetAttribute(levels, "w:abstractNumId", abstract_id);
    // Two lists of one of these ids would be taken for one.
    for (const char* own : {"w:nsid", "w:tmpl"})
        levels.remove_child(own);
    abstracts.Add(levels);
    std::string id = std::to_string(numbered.Highest() + 1);
    Node last = lists.last_child();
    while (last.previous_sibling() && !Is(last, "num"))
        last = last.previous_sibling();
    Node copy = lists.insert_copy_after(list, Is(last, "num") ? last : lists.last_child());
    SetAttribute(copy, "w:numId", id);
    SetAttribute(Child(copy, "abstractNumId"), "w:val", abstract_id);
    numbered.Add(copy);
    return id;
}

std::string Importer::RelationFor(const std::string& id, const PartPair& parts) {
    const auto key = std::make_pair(parts, id);
    if (const auto found = relations_.find(key); found != relations_.end())
        return found->second;
    const PartRelation* const old = original_.Relation(parts.original, id);
    if (old == nullptr)
        return relations_[key] = id;
    PartRelation wanted = *old;
    const std::string_view kind = KindOf(wanted);
    const std::string form = forms_.original.Of(parts.original, id);
    if (std::string there = forms_.modified.IdOf(parts.modified, kind, form); !there.empty())
        return relations_[key] = std::move(there);
    if (!wanted.external)
        wanted.part = CopyPart(wanted.part);
    relations_[key] = modified_.AddRelation(parts.modified, wanted);
    forms_.modified.Tell(parts.modified, kind, form, relations_[key]);
    if (kind == kDiagram) {
        if (const Node name = DrawingName(modified_.Edit(wanted.part)))
            SetAttribute(name, kDrawingId,
                         RelationFor(std::string(Attribute(name, kDrawingId)), parts));
    }
    return relations_[key];
}

// With what the part itself leads to; equal bytes come once.
std::string Importer::CopyPart(const std::string& part) {
    if (const auto found = parts_.find(part); found != parts_.end())
        return found->second;
    std::string name = modified_.Has(part) ? modified_.FreshName(part) : part;
    parts_[part] = name;
    modified_.Add(name, std::string(original_.Bytes(part)));
    modified_.SetContentType(name, original_.ContentType(part));
    for (PartRelation relation : original_.Relations(part)) {
        if (!relation.external)
            relation.part = CopyPart(relation.part);
        const std::string id = modified_.AddRelation(name, relation);
        for (Node node : modified_.Edit(RelationsPartOf(name)).children()) {
            if (Attribute(node, "Id") == id)
                SetAttribute(node, "Id", relation.id);
        }
    }
    return name;
}

namespace {

// The two forms of the standard give the same names other addresses.
std::string MeaningOf(std::string_view address) {
    constexpr std::string_view kStrict = "http://purl.oclc.org/ooxml/";
    constexpr std::string_view kTransitional = "http://schemas.openxmlformats.org/";
    constexpr std::string_view kYear = "/2006";
    if (address.starts_with(kStrict))
        return std::string(address.substr(kStrict.size()));
    if (!address.starts_with(kTransitional))
        return std::string(address);
    std::string meaning(address.substr(kTransitional.size()));
    if (const std::size_t year = meaning.find(kYear); year != std::string::npos)
        meaning.erase(year, kYear.size());
    return meaning;
}

bool Uses(const Node& root, const std::string& prefix) {
    const std::string begin = prefix + ":";
    bool used = false;
    VisitElements(root, [&](const Node& node) {
        used = used || std::string_view(node.name()).starts_with(begin);
        for (const pugi::xml_attribute& attribute : node.attributes())
            used = used || std::string_view(attribute.name()).starts_with(begin);
    });
    return used;
}

}  // namespace

bool UnitePrefixes(const Node& source, Node target) {
    std::string ignorable(target.attribute("mc:Ignorable").value());
    const std::string old_ignorable = " " + std::string(Attribute(source, "Ignorable")) + " ";
    for (const pugi::xml_attribute& attribute : source.attributes()) {
        const std::string name = attribute.name();
        if (!name.starts_with("xmlns:"))
            continue;
        const pugi::xml_attribute there = target.attribute(name.c_str());
        const std::string prefix = name.substr(name.find(':') + 1);
        // What readers may pass over says nothing that anybody would miss.
        const bool passed_over =
            (" " + ignorable + " ").find(" " + prefix + " ") != std::string::npos;
        if (there && !passed_over && MeaningOf(there.value()) != MeaningOf(attribute.value()) &&
            Uses(source, prefix))
            return false;
        if (there)
            continue;
        target.append_attribute(name.c_str()) = attribute.value();
        if (old_ignorable.find(" " + prefix + " ") != std::string::npos)
            ignorable += (ignorable.empty() ? "" : " ") + prefix;
    }
    if (!ignorable.empty())
        SetAttribute(target, "mc:Ignorable", ignorable);
    return true;
}

}  // namespace zorvane
