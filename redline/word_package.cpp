#include "redline/word_package.h"

#include <algorithm>

#include "common/base/ascii.h"
#include "load/readers/container/package.h"
#include "redline/zip_writer.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::string_view kTypesPart = "[Content_Types].xml";

bool SameName(std::string_view one, std::string_view other) {
    if (one.starts_with('/'))
        one.remove_prefix(1);
    if (other.starts_with('/'))
        other.remove_prefix(1);
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return AsciiLower(a) == AsciiLower(b); });
}

class StringWriter : public pugi::xml_writer {
  public:
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
};

std::string Printed(const Node& root) {
    StringWriter writer;
    root.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return std::move(writer.text);
}

// From the folder of `part`, or from the root.
std::string TargetFrom(std::string_view part, const PartRelation& relation) {
    return relation.external ? std::string() : ResolvePart(part, relation.target);
}

}  // namespace

std::string_view KindOf(const PartRelation& relation) {
    const std::string_view type = relation.type;
    return type.substr(type.rfind('/') + 1);
}

std::string RelationsPartOf(std::string_view part) {
    const std::size_t slash = part.rfind('/');
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash + 1;
    return std::string(part.substr(0, begin)) + "_rels/" + std::string(part.substr(begin)) +
           ".rels";
}

ReadEnd WordPackage::OpenParts(std::string_view bytes) {
    given_ = bytes;
    const std::unique_ptr<Package> package = Package::Open(bytes);
    if (!package)
        return ReadEnd::Fault(ReadError::WrongFormat, "no package");
    if (package->Encrypted())
        return ReadEnd::Fault(ReadError::PasswordNeeded);
    for (const std::string& name : package->Names()) {
        ReadError error = ReadError::None;
        if (name.ends_with('/') || Has(name))
            continue;
        std::optional<std::string> content = package->Read(name, &error);
        if (!content)
            return ReadEnd::Fault(error, "cannot read the part " + name);
        Add(name, std::move(*content));
        parts_.back().given = true;
    }
    return ReadEnd::Ok();
}

ReadEnd WordPackage::Open(std::string_view bytes) {
    if (ReadEnd end = OpenParts(bytes); !end.ok())
        return end;
    main_part_ = Related("", "officeDocument");
    return Has(main_part_) ? ReadEnd::Ok()
                           : ReadEnd::Fault(ReadError::WrongFormat, "no document in the package");
}

WordPackage::Part* WordPackage::Find(std::string_view name) {
    const auto found = std::find_if(parts_.begin(), parts_.end(),
                                    [name](const Part& part) { return SameName(part.name, name); });
    return found == parts_.end() ? nullptr : &*found;
}

const WordPackage::Part* WordPackage::Find(std::string_view name) const {
    const auto found = std::find_if(parts_.begin(), parts_.end(),
                                    [name](const Part& part) { return SameName(part.name, name); });
    return found == parts_.end() ? nullptr : &*found;
}

std::vector<std::string> WordPackage::Names() const {
    std::vector<std::string> names;
    for (const Part& part : parts_)
        names.push_back(part.name);
    return names;
}

std::string_view WordPackage::Bytes(std::string_view name) const {
    const Part* part = Find(name);
    return part == nullptr ? std::string_view() : std::string_view(BytesOf(*part));
}

const std::string& WordPackage::BytesOf(const Part& part) const {
    if (part.gone) {
        // One of its own: a package counts all that it unpacks, and this is here for the second
        // time.
        const std::unique_ptr<Package> package = Package::Open(given_);
        part.bytes = package->Read(part.name).value_or(std::string());  // it could be read before
        part.gone = false;
    }
    return part.bytes;
}

std::string WordPackage::Current(std::string_view name) const {
    const Part* part = Find(name);
    if (part == nullptr)
        return {};
    return part->edited ? Printed(part->xml->Root()) : BytesOf(*part);
}

Node WordPackage::Tree(std::string_view name) {
    Part* part = Find(name);
    if (part == nullptr)
        return {};
    if (!part->xml) {
        part->xml = std::make_unique<XmlPart>();
        static_cast<void>(BytesOf(*part));  // they are there again if they were gone
        part->gone = part->given;
        std::string text = part->given ? std::move(part->bytes) : part->bytes;
        if (!XmlPart::Parse(std::move(text), *part->xml).ok())
            *part->xml = XmlPart();
    }
    return part->xml->Empty() ? Node() : part->xml->Root();
}

Node WordPackage::Edit(std::string_view name) {
    const Node root = Tree(name);
    if (root)
        Find(name)->edited = true;
    ForgetRelationsIn(name);
    return root;
}

// What stood in a part of relationships that may change.
void WordPackage::ForgetRelationsIn(std::string_view name) {
    if (name.ends_with(".rels"))
        std::erase_if(relations_, [name](const auto& list) {
            return SameName(RelationsPartOf(list.first), name);
        });
}

void WordPackage::Forget(std::string_view name) {
    if (Part* part = Find(name); part != nullptr && !part->edited) {
        part->xml.reset();
        children_.clear();
    }
}

bool WordPackage::IsEdited(std::string_view name) const {
    const Part* part = Find(name);
    return part != nullptr && part->edited;
}

std::size_t WordPackage::Size(std::string_view name) const {
    const Part* part = Find(name);
    return part == nullptr ? 0 : part->size;
}

void WordPackage::Remove(std::string_view name) {
    const auto tells = [name](const Node& node) {
        return Is(node, "Override") && SameName(Attribute(node, "PartName"), name);
    };
    if (Tree(kTypesPart).find_child(tells))
        Edit(kTypesPart).remove_child(Tree(kTypesPart).find_child(tells));
    const std::string relations = RelationsPartOf(name);
    ForgetRelationsIn(relations);
    children_.clear();
    std::erase_if(parts_, [&](const Part& part) {
        return SameName(part.name, name) || SameName(part.name, relations);
    });
}

void WordPackage::Add(std::string name, std::string bytes) {
    Part& part = parts_.emplace_back();
    part.name = std::move(name);
    part.bytes = std::move(bytes);
    part.size = part.bytes.size();
}

std::string WordPackage::FreshName(std::string_view wanted) const {
    const std::size_t dot = std::min(wanted.rfind('.'), wanted.size());
    for (int number = 2;; ++number) {
        std::string name = std::string(wanted.substr(0, dot)) + std::to_string(number) +
                           std::string(wanted.substr(dot));
        if (!Has(name))
            return name;
    }
}

void WordPackage::RelationList::Add(PartRelation relation) {
    places.emplace(relation.id, all.size());
    all.push_back(std::move(relation));
}

WordPackage::RelationList& WordPackage::RelationsOf(std::string_view part) {
    if (const auto known = relations_.find(part); known != relations_.end())
        return known->second;
    RelationList& list = relations_[std::string(part)];
    for (const Node& node : Tree(RelationsPartOf(part)).children()) {
        if (!Is(node, "Relationship"))
            continue;
        PartRelation relation{std::string(Attribute(node, "Id")),
                              std::string(Attribute(node, "Type")),
                              std::string(Attribute(node, "Target")),
                              Attribute(node, "TargetMode") == "External",
                              {}};
        relation.part = TargetFrom(part, relation);
        list.Add(std::move(relation));
    }
    return list;
}

std::vector<PartRelation> WordPackage::Relations(std::string_view part) {
    return RelationsOf(part).all;
}

const PartRelation* WordPackage::Relation(std::string_view part, const std::string& id) {
    const RelationList& list = RelationsOf(part);
    const auto found = list.places.find(id);
    return found == list.places.end() ? nullptr : &list.all[found->second];
}

ChildIndex& WordPackage::Children(const Node& parent, const char* key) {
    return children_.try_emplace({parent.hash_value(), key}, parent, key).first->second;
}

std::string WordPackage::Related(std::string_view part, std::string_view kind) {
    for (const PartRelation& relation : RelationsOf(part).all) {
        if (KindOf(relation) == kind)
            return relation.part;
    }
    return {};
}

std::string WordPackage::AddRelation(std::string_view part, const PartRelation& relation) {
    const std::string name = RelationsPartOf(part);
    if (!Has(name))
        Add(name,
            "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/"
            "relationships\"/>");
    RelationList& there = RelationsOf(part);
    while (there.places.contains("rIdOld" + std::to_string(there.fresh)))
        ++there.fresh;
    std::string id = "rIdOld" + std::to_string(there.fresh);
    PartRelation added = relation;
    added.id = id;
    Node node = Tree(name).append_child("Relationship");
    Find(name)->edited = true;
    node.append_attribute("Id") = id.c_str();
    node.append_attribute("Type") = relation.type.c_str();
    const std::string target = relation.external ? relation.target : "/" + relation.part;
    node.append_attribute("Target") = target.c_str();
    if (relation.external)
        node.append_attribute("TargetMode") = "External";
    there.Add(std::move(added));
    return id;
}

void WordPackage::RemoveRelation(std::string_view part, std::string_view id) {
    Node relations = Edit(RelationsPartOf(part));
    relations.remove_child(
        relations.find_child([id](const Node& node) { return Attribute(node, "Id") == id; }));
}

std::string WordPackage::ContentType(std::string_view part) {
    const std::size_t dot = part.rfind('.');
    const std::string_view extension =
        dot == std::string_view::npos ? std::string_view() : part.substr(dot + 1);
    std::string by_extension;
    for (const Node& node : Tree(kTypesPart).children()) {
        if (Is(node, "Override") && SameName(Attribute(node, "PartName"), part))
            return std::string(Attribute(node, "ContentType"));
        if (Is(node, "Default") && SameName(Attribute(node, "Extension"), extension))
            by_extension = Attribute(node, "ContentType");
    }
    return by_extension;
}

void WordPackage::SetContentType(std::string_view part, std::string_view type) {
    if (ContentType(part) == type)
        return;
    for (Node node : Edit(kTypesPart).children()) {
        if (Is(node, "Override") && SameName(Attribute(node, "PartName"), part)) {
            node.attribute("ContentType").set_value(std::string(type).c_str());
            return;
        }
    }
    Node node = Edit(kTypesPart).append_child("Override");
    node.append_attribute("PartName") = ("/" + std::string(part)).c_str();
    node.append_attribute("ContentType") = std::string(type).c_str();
}

std::optional<std::string> WordPackage::Save() {
    std::vector<ZipEntry> entries;
    for (Part& part : parts_) {
        if (part.edited) {
            part.bytes = Printed(part.xml->Root());
            part.xml.reset();  // nobody needs both, and they are large
        }
        entries.push_back({part.name, part.edited ? part.bytes : BytesOf(part)});
    }
    return WriteZip(entries, given_);
}

}  // namespace zorvane
