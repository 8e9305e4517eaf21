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

class FileLook {
  public:
    explicit FileLook(PartTrees& trees) : trees_(trees) {}

    Package& Parts() { return trees_.Parts(); }

    // The parts with text.
    std::vector<std::string> Stories() {
        std::vector<std::string> parts;
        for (const auto& [id, relation] : ReadRelationships(Parts(), "")) {
            if (relation.type == "officeDocument")
                parts.push_back(relation.target);
        }
        if (parts.empty())
            return parts;
        for (const auto& [id, relation] : ReadRelationships(Parts(), parts.front())) {
            if (relation.type == "header" || relation.type == "footer" ||
                relation.type == "footnotes" || relation.type == "endnotes")
                parts.push_back(relation.target);
        }
        return parts;
    }

    Node Root(const std::string& part) {
        const XmlPart* const xml = trees_.Load(part);
        return xml == nullptr ? Node() : xml->Root();
    }

    // All that the package's XML refers to and does not have.
    std::set<std::string> Missing() {
        std::set<std::string> missing;
        const std::vector<std::string> stories = Stories();
        if (stories.empty())
            return missing;
        const auto relations = ReadRelationships(Parts(), stories.front());
        std::set<std::string> defined;
        for (const auto& [id, relation] : relations) {
            const std::string& kind = relation.type;
            if (!relation.external && (kind == "styles" || kind == "numbering" ||
                                       kind == "footnotes" || kind == "endnotes")) {
                for (const Node& node : Root(relation.target).children())
                    Define(node, kind, defined);
            }
        }
        for (const std::string& part : stories)
            Refer(part, defined, missing);
        for (const std::string& name : Parts().Names()) {
            if (!name.ends_with('/') && !HasType(name))
                missing.insert("content type of " + name);
        }
        return missing;
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

    using Relationships = std::unordered_map<std::string, Relationship>;

    void Refer(const std::string& part, const std::set<std::string>& defined,
               std::set<std::string>& missing) {
        const Relationships relations = ReadRelationships(Parts(), part);
        Walk(Root(part), [&](const Node& node) {
            const std::string wanted = WantedBy(node);
            if (!wanted.empty() && !defined.contains(wanted))
                missing.insert(wanted);
            for (const pugi::xml_attribute& attribute : node.attributes()) {
                if (LeadsNowhere(attribute, relations))
                    missing.insert("relationship " + std::string(attribute.value()) + " of " +
                                   part);
            }
        });
    }

    // What an element names, as `Define` spells it; mostly nothing.
    static std::string WantedBy(const Node& node) {
        const std::string_view name = LocalName(node);
        const std::string value(Attribute(node, "val"));
        if (name == "pStyle" || name == "rStyle" || name == "tblStyle")
            return "style " + value;
        if (name == "numId" && value != "0")
            return "list " + value;
        if (name == "footnoteReference" || name == "endnoteReference")
            return std::string(name.substr(0, name.find('R'))) + " " +
                   std::string(Attribute(node, "id"));
        return {};
    }

    bool LeadsNowhere(const pugi::xml_attribute& attribute, const Relationships& relations) {
        if (!std::string_view(attribute.name()).starts_with("r:") || *attribute.value() == '\0')
            return false;
        const auto found = relations.find(attribute.value());
        return found == relations.end() ||
               (!found->second.external && !Parts().Has(found->second.target));
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

    PartTrees& trees_;
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
class MarkCheck {
  public:
    std::string FirstFault(FileLook& file) {
        for (const std::string& part : file.Stories())
            Visit(file.Root(part), {}, 0);
        return std::move(fault_);
    }

  private:
    // What an element stands in.
    struct Around {
        bool deleted = false;
        bool inserted = false;
        bool boxed = false;
        Node row;  // its properties
    };

    void Visit(const Node& node, Around around, int depth) {
        const std::string_view name = LocalName(node);
        CheckText(node, around);
        if (name == "r" || name == "p")
            CheckRow(node, name == "r", around);
        if (IsChange(name) && !node.attribute("w:author"))
            fault_ = "a change without an author";
        around.deleted = around.deleted || name == "del";
        around.inserted = around.inserted || name == "ins";
        around.boxed = around.boxed || name == "txbxContent";
        if (name == "tr")
            around.row = Child(node, "trPr");
        for (const Node& child : node.children()) {
            if (depth < kMaxDepth && child.type() == pugi::node_element)
                Visit(child, around, depth + 1);
        }
    }

    static bool IsChange(std::string_view name) {
        return name == "ins" || name == "del" ||
               (name.starts_with("move") && !name.ends_with("End"));
    }

    void CheckText(const Node& node, const Around& around) {
        // A formula has texts of its own, which no name tells apart.
        if (std::string_view(node.name()) == "w:t" && around.deleted && !around.boxed)
            fault_ = "deleted text without its own name: " + std::string(node.text().get());
        else if (Is(node, "delText") && !around.deleted)
            fault_ = "text named as deleted outside of a deletion";
    }

    void CheckRow(const Node& node, bool run, const Around& around) {
        if (!around.row || around.boxed)
            return;
        for (const char* mark : {"ins", "del"}) {
            if (!Child(around.row, mark))
                continue;
            const bool in_mark = *mark == 'i' ? around.inserted : around.deleted;
            const bool marked = run ? in_mark : !!Child(Child(Child(node, "pPr"), "rPr"), mark);
            if (!marked)
                fault_ = "a row is marked, something in it is not";
        }
    }

    std::string fault_;
};

// Parts that no redline has to change.
std::string PartFault(Package& modified, FileLook& redline) {
    const std::vector<std::string> stories = redline.Stories();
    for (const std::string& name : modified.Names()) {
        const bool may_change = std::find(stories.begin(), stories.end(), name) != stories.end() ||
                                name.ends_with("styles.xml") || name.ends_with("numbering.xml") ||
                                name.ends_with(".rels") || name == "[Content_Types].xml" ||
                                name.ends_with('/');
        if (!name.ends_with('/') && !redline.Parts().Has(name))
            return "the part " + name + " is missing";
        if (!may_change && modified.Read(name) != redline.Parts().Read(name))
            return "the part " + name + " has changed";
    }
    return {};
}

}  // namespace

std::set<std::string> MissingIn(PartTrees& trees) {
    return FileLook(trees).Missing();
}

std::string FirstStructureFault(PartTrees& redline, Package& modified,
                                const std::set<std::string>& missing_before) {
    FileLook file(redline);
    for (const std::string& part : file.Stories()) {
        if (!file.Root(part))
            return "the part " + part + " is no XML";
    }
    // What the inputs lack already is not the redline's fault, unless they had used it so.
    for (const std::string& name : file.Missing()) {
        if (!missing_before.contains(name))
            return "missing: " + name;
    }
    const std::array<std::string, 4> faults{
        IdFault(file), MoveFault(file), MarkCheck().FirstFault(file), PartFault(modified, file)};
    for (const std::string& fault : faults) {
        if (!fault.empty())
            return fault;
    }
    return {};
}

}  // namespace zorvane
