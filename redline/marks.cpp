#include "redline/marks.h"

#include "load/readers/word_readers.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

const char* NameOf(TrackMark mark, bool moved = false) {
    if (moved)
        return mark == TrackMark::Insert ? "w:moveTo" : "w:moveFrom";
    return mark == TrackMark::Insert ? "w:ins" : "w:del";
}

// The run properties of a paragraph's end stand behind its other properties, in front of these.
Node EndLookOf(Node properties) {
    Node look = Child(properties, "rPr");
    if (look)
        return look;
    for (const Node& child : properties.children()) {
        if (Is(child, "sectPr") || Is(child, "pPrChange"))
            return properties.insert_child_before("w:rPr", child);
    }
    return properties.append_child("w:rPr");
}

}  // namespace

void RevisionMarks::Stamp(Node element) {
    element.append_attribute("w:id") = std::to_string(next_id_++).c_str();
    element.append_attribute("w:author") = author_.c_str();
    element.append_attribute("w:date") = date_.c_str();
}

Node RevisionMarks::Open(Node parent, TrackMark mark, bool moved) {
    Node element = parent.append_child(NameOf(mark, moved));
    Stamp(element);
    if (moved)
        return element;
    ++(mark == TrackMark::Insert ? counts_.insertions : counts_.deletions);
    return element;
}

void RevisionMarks::MarkTableEnd(Node paragraph) {
    const std::string id = std::to_string(next_id_++);
    Node begin = paragraph.append_child("w:bookmarkStart");
    begin.append_attribute("w:id") = id.c_str();
    begin.append_attribute("w:name") = kTableEndMark;
    paragraph.append_child("w:bookmarkEnd").append_attribute("w:id") = id.c_str();
}

void RevisionMarks::BeginMove(Node paragraph, TrackMark mark, const std::string& name) {
    const bool inserted = mark == TrackMark::Insert;
    Node begin = paragraph.append_child(inserted ? "w:moveToRangeStart" : "w:moveFromRangeStart");
    Stamp(begin);
    begin.append_attribute("w:name") = name.c_str();
    counts_.moves += inserted ? 1 : 0;
}

void RevisionMarks::EndMove(Node paragraph, TrackMark mark) {
    const bool inserted = mark == TrackMark::Insert;
    const Node begin = Child(paragraph, inserted ? "moveToRangeStart" : "moveFromRangeStart");
    Node end = paragraph.append_child(inserted ? "w:moveToRangeEnd" : "w:moveFromRangeEnd");
    end.append_attribute("w:id") = begin.attribute("w:id").value();
}

void RevisionMarks::MarkEnd(Node paragraph, TrackMark mark, bool moved) {
    Stamp(EndLookOf(PropertiesOf(paragraph)).prepend_child(NameOf(mark, moved)));
    ++counts_.paragraph_marks;
}

void RevisionMarks::MarkRow(Node row, TrackMark mark) {
    Node properties = Child(row, "trPr");
    if (!properties) {
        const Node exceptions = Child(row, "tblPrEx");
        properties =
            exceptions ? row.insert_child_after("w:trPr", exceptions) : row.prepend_child("w:trPr");
    }
    Stamp(properties.append_child(NameOf(mark)));
    ++counts_.rows;
}

void RevisionMarks::NoteFormer(Node paragraph, const Node& former) {
    Node properties = PropertiesOf(paragraph);
    Node change = properties.append_child("w:pPrChange");
    Stamp(change);
    Node old = change.append_child("w:pPr");
    for (const Node& child : former.children()) {
        if (!Is(child, "rPr") && !Is(child, "sectPr") && !Is(child, "pPrChange"))
            old.append_copy(child);
    }
    ++counts_.properties;
}

void RevisionMarks::NoteFormerLook(Node run, const Node& former) {
    Node look = Child(run, "rPr");
    if (!look)
        look = run.prepend_child("w:rPr");
    Node change = look.append_child("w:rPrChange");
    Stamp(change);
    Node old = change.append_child("w:rPr");
    for (const Node& child : former.children())
        old.append_copy(child);
    ++counts_.properties;
}

Node PropertiesOf(Node paragraph) {
    Node properties = Child(paragraph, "pPr");
    return properties ? properties : paragraph.prepend_child("w:pPr");
}

}  // namespace zorvane
