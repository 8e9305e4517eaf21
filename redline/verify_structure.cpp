// What must hold of a redline's file whatever its text says.
#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>

#include "common/base/ascii.h"
#include "redline/node_kinds.h"
#include "redline/verify.h"
#include "redline/verify_spelling.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

void Walk(const Node& node, const std::function<void(const Node&)>& visit, int depth = 0) {
    visit(node);
    for (const Node& child : node.children()) {
        if (depth < kMaxDepth && IsElement(child))
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
        for (const std::string& id : DrawingsTwice(stories))
            missing.insert("an id of its own for the drawing " + id);
        for (const std::string& name : Parts().Names()) {
            if (!name.ends_with('/') && TypeOf(name).empty())
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

    std::set<std::string> DrawingsTwice(const std::vector<std::string>& stories) {
        std::set<std::string> ids;
        std::set<std::string> twice;
        for (const std::string& part : stories) {
            Walk(Root(part), [&](const Node& node) {
                if (std::string id(Attribute(node, "id"));
                    Is(node, "docPr") && !ids.insert(id).second)
                    twice.insert(std::move(id));
            });
        }
        return twice;
    }

    using Relationships = std::unordered_map<std::string, Relationship>;

    void Refer(const std::string& part, const std::set<std::string>& defined,
               std::set<std::string>& missing) {
        const Relationships relations = ReadRelationships(Parts(), part);
        // A type that no part of its kind has in the inputs is none that a reader would take.
        for (const auto& [id, relation] : relations) {
            if (!relation.external)
                missing.insert("content type of a part for " + relation.type + " other than " +
                               TypeOf(relation.target));
        }
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

    // As the package tells it; empty where it does not.
    std::string TypeOf(const std::string& name) {
        if (name == "[Content_Types].xml")
            return "of the package";
        if (types_.empty()) {
            for (const Node& type : Root("[Content_Types].xml").children()) {
                const bool own = Is(type, "Override");
                const std::string key(Attribute(type, own ? "PartName" : "Extension"));
                types_.emplace(AsciiUpper((own ? "" : ".") + key), Attribute(type, "ContentType"));
            }
        }
        for (const std::string& key :
             {"/" + name, name.substr(std::min(name.rfind('.'), name.size()))}) {
            if (const auto found = types_.find(AsciiUpper(key)); found != types_.end())
                return found->second;
        }
        return {};
    }

    std::map<std::string, std::string> types_;  // by "/" and part, or "." and ending
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

// Each move has two halves, and each half a begin and an end.
struct MoveHalves {
    std::multiset<std::string> from;  // names
    std::multiset<std::string> to;
    std::set<std::string> open;
    bool ends_alone = false;

    void Take(const Node& node) {
        const std::string_view name = LocalName(node);
        const std::size_t range = name.starts_with("move") ? name.find("Range") : name.npos;
        if (range == name.npos)
            return;
        const std::string half =
            std::string(name.substr(0, range)) + node.attribute("w:id").value();
        if (name.ends_with("End")) {
            ends_alone = open.erase(half) == 0 || ends_alone;
            return;
        }
        open.insert(half);
        (name.starts_with("moveFrom") ? from : to).insert(node.attribute("w:name").value());
    }
    bool AnyTwice() const {
        return std::set<std::string>(from.begin(), from.end()).size() < from.size();
    }
};

std::string MoveFault(FileLook& file) {
    MoveHalves halves;
    for (const std::string& part : file.Stories())
        Walk(file.Root(part), [&halves](const Node& node) { halves.Take(node); });
    if (halves.ends_alone || !halves.open.empty())
        return "half a move has no begin or no end";
    return halves.from == halves.to && !halves.AnyTwice() ? "" : "a move has not two halves";
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
        Node row;  // its properties
    };

    void Visit(const Node& node, Around around, int depth) {
        const std::string_view name = LocalName(node);
        CheckText(node, around);
        if (name == "r" || name == "p" || name == "tr")
            CheckRow(node, name, around);
        if (IsChange(node.name()) && !node.attribute("w:author"))
            fault_ = "a change without an author";
        around.deleted = around.deleted || name == "del";
        around.inserted = around.inserted || name == "ins";
        if (name == "tr")
            around.row = Child(node, "trPr");
        if (name == "txbxContent")
            around = {};  // a box has marks of its own
        for (const Node& child : node.children()) {
            if (depth < kMaxDepth && IsElement(child))
                Visit(child, around, depth + 1);
        }
    }

    static bool IsChange(std::string_view name) {
        return name == "w:ins" || name == "w:del" || name.ends_with("PrChange") ||
               (name.starts_with("w:move") && !name.ends_with("End"));
    }

    void CheckText(const Node& node, const Around& around) {
        // A formula has texts of its own, which no name tells apart.
        const std::string_view name = node.name();
        if ((name == "w:t" || name == "w:instrText") && around.deleted)
            fault_ = "deleted text without its own name: " + std::string(node.text().get());
        else if ((name == "w:delText" || name == "w:delInstrText") && !around.deleted)
            fault_ = "text named as deleted outside of a deletion";
    }

    void CheckRow(const Node& node, std::string_view name, const Around& around) {
        for (const char* mark : {"ins", "del"}) {
            if (!Child(around.row, mark))
                continue;
            const bool in_mark = *mark == 'i' ? around.inserted : around.deleted;
            const Node look = name == "p" ? Child(Child(node, "pPr"), "rPr") : Child(node, "trPr");
            if (!(name == "r" ? in_mark : !!Child(look, mark)))
                fault_ = "a row is marked, something in it is not";
        }
    }

    std::string fault_;
};

// What a part had at its top and has no more, as styles, lists and relationships.
std::string LostFrom(const Node& before, const Node& now) {
    std::multiset<std::string> there;
    for (const Node& child : now.children())
        there.insert(Spelled(child));
    for (const Node& child : before.children()) {
        const auto found = there.find(Spelled(child));
        if (found == there.end() && IsElement(child) &&
            !Attribute(child, "Type").ends_with("/digital-signature/origin"))
            return std::string(LocalName(child));
        if (found != there.end())
            there.erase(found);
    }
    return {};
}

// Of signatures: the part that leads to all, these, and what they lead to in turn.
std::set<std::string> SignatureParts(Package& package) {
    std::vector<std::string> open;
    for (const auto& [id, relation] : ReadRelationships(package, "")) {
        if (relation.type == "origin")
            open.push_back(relation.target);
    }
    std::set<std::string> parts;
    while (!open.empty()) {
        const std::string part = std::move(open.back());
        open.pop_back();
        if (!parts.insert(part).second)
            continue;
        const std::size_t file = part.rfind('/') + 1;
        parts.insert(part.substr(0, file) + "_rels/" + part.substr(file) + ".rels");
        for (const auto& [id, relation] : ReadRelationships(package, part)) {
            if (!relation.external)
                open.push_back(relation.target);
        }
    }
    return parts;
}

// Some parts no redline has to change, others may get more.
std::string ChangeFault(const std::string& name, bool is_story, Package& modified,
                        FileLook& redline) {
    const bool grows =
        name.ends_with("styles.xml") || name.ends_with("numbering.xml") || name.ends_with(".rels");
    const bool may_change = grows || is_story || name == "[Content_Types].xml";
    if (!redline.Parts().Has(name))
        return " is missing";
    if (!may_change && modified.Read(name) != redline.Parts().Read(name))
        return " has changed";
    XmlPart before;
    if (!grows || !XmlPart::Read(modified, name, before).ok())
        return {};
    const std::string lost = LostFrom(before.Root(), redline.Root(name));
    return lost.empty() ? "" : " has lost a " + lost;
}

std::string PartFault(Package& modified, FileLook& redline) {
    const std::vector<std::string> stories = redline.Stories();
    const std::set<std::string> signatures = SignatureParts(modified);
    if (!SignatureParts(redline.Parts()).empty())
        return "a signature is left, which does not fit";
    for (const std::string& name : modified.Names()) {
        if (name.ends_with('/') || signatures.contains(name))
            continue;
        const bool is_story = std::find(stories.begin(), stories.end(), name) != stories.end();
        if (const std::string fault = ChangeFault(name, is_story, modified, redline);
            !fault.empty())
            return "the part " + name + fault;
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
