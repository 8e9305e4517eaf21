// What must hold of a redline's file whatever its text says.
#include <algorithm>
#include <array>
#include <functional>
#include <set>

#include "common/base/ascii.h"
#include "redline/verify.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

void Walk(const Node& node, const std::function<void(const Node&)>& visit, int depth = 0) {
    visit(node);
    for (const Node& child : node.children()) {
        if (depth < kMaxDepth && child.type() == pugi::node_element)
            Walk(child, visit, depth + 1);
    }
}

bool HasAncestor(Node node, std::string_view name) {
    for (node = node.parent(); node; node = node.parent()) {
        if (Is(node, name))
            return true;
    }
    return false;
}

// All that a package's XML refers to and does not have.
struct Dangling {
    std::set<std::string> names;
};

class FileLook {
  public:
    explicit FileLook(std::string_view bytes) : package_(Package::Open(bytes)) {}

    bool IsPackage() const { return package_ != nullptr; }
    Package& Parts() { return *package_; }

    // The parts with text.
    std::vector<std::string> Stories() {
        std::vector<std::string> parts;
        for (const auto& [id, relation] : ReadRelationships(*package_, "")) {
            if (relation.type == "officeDocument")
                parts.push_back(relation.target);
        }
        if (parts.empty())
            return parts;
        for (const auto& [id, relation] : ReadRelationships(*package_, parts.front())) {
            if (relation.type == "header" || relation.type == "footer" ||
                relation.type == "footnotes" || relation.type == "endnotes")
                parts.push_back(relation.target);
        }
        return parts;
    }

    Node Root(const std::string& part) {
        auto& xml = trees_[part];
        if (!xml) {
            xml = std::make_unique<XmlPart>();
            static_cast<void>(XmlPart::Read(*package_, part, *xml));
        }
        return xml->Empty() ? Node() : xml->Root();
    }

    Dangling References() {
        Dangling dangling;
        const std::vector<std::string> stories = Stories();
        if (stories.empty())
            return dangling;
        const auto relations = ReadRelationships(*package_, stories.front());
        std::set<std::string> defined;
        for (const auto& [id, relation] : relations) {
            if (!relation.external)
                Walk(Root(relation.target),
                     [&, kind = relation.type](const Node& node) { Define(node, kind, defined); });
        }
        for (const std::string& part : stories)
            Refer(part, defined, dangling);
        for (const std::string& name : package_->Names()) {
            if (!name.ends_with('/') && !HasType(name))
                dangling.names.insert("content type of " + name);
        }
        return dangling;
    }

  private:
    static void Define(const Node& node, const std::string& kind, std::set<std::string>& defined) {
        const std::string_view name = LocalName(node);
        if (kind == "styles" && name == "style")
            defined.insert("style " + std::string(Attribute(node, "styleId")));
        else if (kind == "numbering" && name == "num")
            defined.insert("list " + std::string(Attribute(node, "numId")));
        else if (name == "footnote" || name == "endnote")
            defined.insert(std::string(name) + " " + std::string(Attribute(node, "id")));
    }

    void Refer(const std::string& part, const std::set<std::string>& defined, Dangling& dangling) {
        const auto relations = ReadRelationships(*package_, part);
        Walk(Root(part), [&](const Node& node) {
            const std::string_view name = LocalName(node);
            const std::string value(Attribute(node, "val"));
            std::string wanted;
            if (name == "pStyle" || name == "rStyle" || name == "tblStyle")
                wanted = "style " + value;
            else if (name == "numId" && value != "0")
                wanted = "list " + value;
            else if (name == "footnoteReference" || name == "endnoteReference")
                wanted = std::string(name.substr(0, name.find('R'))) + " " +
                         std::string(Attribute(node, "id"));
            if (!wanted.empty() && !defined.contains(wanted))
                dangling.names.insert(wanted);
            for (const pugi::xml_attribute& attribute : node.attributes()) {
                if (!std::string_view(attribute.name()).starts_with("r:"))
                    continue;
                const auto found = relations.find(attribute.value());
                const bool there = found != relations.end() &&
                                   (found->second.external || package_->Has(found->second.target));
                if (!there && attribute.value()[0] != '\0')
                    dangling.names.insert("relationship " + std::string(attribute.value()) +
                                          " of " + part);
            }
        });
    }

    bool HasType(const std::string& name) {
        const auto equal = [](std::string_view one, std::string_view other) {
            return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                              [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
        };
        if (name == "[Content_Types].xml")
            return true;
        const std::string extension = name.substr(name.rfind('.') + 1);
        const Node types = Root("[Content_Types].xml");
        return std::any_of(types.begin(), types.end(), [&](const Node& type) {
            return equal(Attribute(type, "Extension"), extension) ||
                   equal(Attribute(type, "PartName"), "/" + name);
        });
    }

    std::unique_ptr<Package> package_;
    std::map<std::string, std::unique_ptr<XmlPart>> trees_;
};

bool IsRevision(const Node& node) {
    return node.attribute("w:author") && node.attribute("w:id") && !Is(node, "comment");
}

std::string IdFault(FileLook& file) {
    // Those of bookmarks may be used twice as it is.
    std::set<std::string> bookmarks;
    std::set<std::string> revisions;
    std::string fault;
    for (const std::string& part : file.Stories()) {
        Walk(file.Root(part), [&](const Node& node) {
            const std::string id = node.attribute("w:id").value();
            if (Is(node, "bookmarkStart"))
                bookmarks.insert(id);
            else if (IsRevision(node) && !revisions.insert(id).second)
                fault = "the id " + id + " is used twice";
        });
    }
    for (const std::string& id : revisions) {
        if (bookmarks.contains(id))
            fault = "the id " + id + " is used twice";
    }
    return fault;
}

// Each move has two halves.
std::string MoveFault(FileLook& file) {
    std::multiset<std::string> from;
    std::multiset<std::string> to;
    for (const std::string& part : file.Stories()) {
        Walk(file.Root(part), [&](const Node& node) {
            const bool away = Is(node, "moveFromRangeStart");
            if (away || Is(node, "moveToRangeStart"))
                (away ? from : to).insert(node.attribute("w:name").value());
        });
    }
    const bool twice = std::set<std::string>(from.begin(), from.end()).size() < from.size();
    return from == to && !twice ? "" : "a move has not two halves";
}

// Inside a marked row every run and every end of a paragraph is marked alike; deleted text has
// names of its own, and stands nowhere else.
std::string MarkFault(FileLook& file) {
    std::string fault;
    const auto row_of = [](Node node) {
        while (node && !Is(node, "tr"))
            node = node.parent();
        return node;
    };
    const auto visit = [&](const Node& node) {
        const std::string_view name = LocalName(node);
        const bool deleted = HasAncestor(node, "del");
        // A formula has texts of its own, which no name tells apart.
        if (std::string_view(node.name()) == "w:t" && deleted && !HasAncestor(node, "txbxContent"))
            fault = "deleted text without its own name: " + std::string(node.text().get());
        if (name == "delText" && !deleted)
            fault = "text named as deleted outside of a deletion";
        const bool moved = name.starts_with("move") && !name.ends_with("End");
        if ((name == "ins" || name == "del" || moved) && !node.attribute("w:author"))
            fault = "a change without an author";
        if (name != "r" && name != "p")
            return;
        const Node properties = Child(row_of(node), "trPr");
        for (const char* mark : {"ins", "del"}) {
            if (!Child(properties, mark) || HasAncestor(node, "txbxContent"))
                continue;
            const bool marked = name == "r" ? HasAncestor(node, mark)
                                            : !!Child(Child(Child(node, "pPr"), "rPr"), mark);
            if (!marked)
                fault = "a row is marked, something in it is not";
        }
    };
    for (const std::string& part : file.Stories())
        Walk(file.Root(part), visit);
    return fault;
}

// Parts that no redline has to change.
std::string PartFault(FileLook& modified, FileLook& redline) {
    const std::vector<std::string> stories = redline.Stories();
    for (const std::string& name : modified.Parts().Names()) {
        const bool may_change = std::find(stories.begin(), stories.end(), name) != stories.end() ||
                                name.ends_with("styles.xml") || name.ends_with("numbering.xml") ||
                                name.ends_with(".rels") || name == "[Content_Types].xml" ||
                                name.ends_with('/');
        if (!name.ends_with('/') && !redline.Parts().Has(name))
            return "the part " + name + " is missing";
        if (!may_change && modified.Parts().Read(name) != redline.Parts().Read(name))
            return "the part " + name + " has changed";
    }
    return {};
}

}  // namespace

std::string FirstStructureFault(std::string_view modified, std::string_view original,
                                std::string_view redline) {
    FileLook file(redline);
    FileLook new_side(modified);
    FileLook old_side(original);
    if (!file.IsPackage() || !new_side.IsPackage() || !old_side.IsPackage())
        return "the file is no package";
    for (const std::string& part : file.Stories()) {
        if (!file.Root(part))
            return "the part " + part + " is no XML";
    }
    // What the inputs lack already is not the redline's fault, unless they had used it so.
    const Dangling before = new_side.References();
    const Dangling of_original = old_side.References();
    for (const std::string& name : file.References().names) {
        if (!before.names.contains(name) && !of_original.names.contains(name))
            return "missing: " + name;
    }
    const std::array<std::string, 4> faults{IdFault(file), MoveFault(file), MarkFault(file),
                                            PartFault(new_side, file)};
    for (const std::string& fault : faults) {
        if (!fault.empty())
            return fault;
    }
    return {};
}

}  // namespace zorvane
