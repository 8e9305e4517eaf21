#include "redline/note_parts.h"

#include <algorithm>
#include <array>
#include <set>
#include <vector>

#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

struct NoteKind {
    std::string_view reference;
    std::string_view part;
    std::string_view element;
};
constexpr std::array<NoteKind, 2> kKinds{
    {{"footnoteReference", "footnotes", "footnote"}, {"endnoteReference", "endnotes", "endnote"}}};

const NoteKind& KindOfReference(std::string_view reference) {
    return reference == kKinds[0].reference ? kKinds[0] : kKinds[1];
}

// Not one of the lines that part notes from text.
bool IsNote(const Node& note) {
    const std::string_view type = Attribute(note, "type");
    return type.empty() || type == "normal";
}

// The Original's part without its notes, but with the lines that part notes from text.
std::string MakePart(WordPackage& from, const std::string& part, const NoteKind& kind,
                     WordPackage& to) {
    std::string name = to.Has(part) ? to.FreshName(part) : part;
    to.Add(name, from.Current(part));
    to.SetContentType(name, from.ContentType(part));
    for (PartRelation relation : from.Relations(from.MainPart())) {
        if (KindOf(relation) != kind.part)
            continue;
        relation.part = name;
        to.AddRelation(to.MainPart(), relation);
    }
    Node notes = to.Edit(name);
    for (Node note = notes.first_child(); note;) {
        const Node next = note.next_sibling();
        if (IsNote(note))
            notes.remove_child(note);
        note = next;
    }
    return name;
}

}  // namespace

NotePlace FindNote(WordPackage& package, const Node& reference) {
    const NoteKind& kind = KindOfReference(LocalName(reference));
    NotePlace place;
    place.part = package.Related(package.MainPart(), kind.part);
    place.id = Attribute(reference, "id");
    if (!place.part.empty())
        place.note = package.Children(package.Tree(place.part), "id").Find(place.id);
    return place;
}

NotePlace CopyNote(WordPackage& from, const NotePlace& note, const std::string& reference_kind,
                   WordPackage& to) {
    const NoteKind& kind = KindOfReference(reference_kind);
    NotePlace copy;
    copy.part = to.Related(to.MainPart(), kind.part);
    if (copy.part.empty())
        copy.part = MakePart(from, note.part, kind, to);
    Node notes = to.Edit(copy.part);
    copy.id = std::to_string(to.Children(notes, "id").Highest() + 1);
    copy.note = notes.append_copy(note.note);
    SetAttribute(copy.note, "w:id", copy.id);
    return copy;
}

namespace {

// Ids of the lines that part notes from text are not given away.
std::int32_t FirstFreeId(const Node& notes) {
    std::int32_t next = 1;
    for (const Node& note : notes.children()) {
        if (!IsNote(note))
            next = std::max(next, NumberOf(Attribute(note, "id"), 0) + 1);
    }
    return next;
}

void OrderNotesOf(const NoteKind& kind, Node document, Node notes) {
    std::vector<std::pair<Node, Node>> pairs;  // references and their notes
    std::vector<Node> ordered;
    std::set<Node> placed;
    ChildIndex by_id(notes, "id");
    VisitElements(document, [&](const Node& node) {
        if (!Is(node, kind.reference))
            return;
        const Node note = by_id.Find(Attribute(node, "id"));
        pairs.emplace_back(node, note);
        if (note && placed.insert(note).second)
            ordered.push_back(note);
    });
    // Those without a reference come last.
    for (const Node& note : notes.children()) {
        if (IsNote(note) && placed.insert(note).second)
            ordered.push_back(note);
    }
    std::int32_t next = FirstFreeId(notes);
    for (Node note : ordered) {
        notes.append_move(note);
        SetAttribute(note, "w:id", std::to_string(next++));
    }
    for (auto& [reference, note] : pairs) {
        if (note)
            SetAttribute(reference, "w:id", Attribute(note, "id"));
    }
}

}  // namespace

void OrderNotes(WordPackage& package) {
    for (const NoteKind& kind : kKinds) {
        const std::string part = package.Related(package.MainPart(), kind.part);
        if (package.Tree(part))
            OrderNotesOf(kind, package.Edit(package.MainPart()), package.Edit(part));
    }
}

}  // namespace zorvane
