#include "redline/tracked_paragraph.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

// Text that was deleted has names of its own.
void NameAsDeleted(Node node) {
    if (Is(node, "t"))
        node.set_name("w:delText");
    else if (Is(node, "instrText"))
        node.set_name("w:delInstrText");
}

void SetText(Node node, std::u16string_view text) {
    while (node.first_child())
        node.remove_child(node.first_child());
    node.append_child(pugi::node_pcdata).set_value(ToUtf8(text).c_str());
    if (!node.attribute("xml:space"))
        node.append_attribute("xml:space") = "preserve";
}

bool IsDroppedMarker(const Node& node) {
    const std::string_view name = LocalName(node);
    return name == "proofErr" || name.starts_with("bookmark") || name.starts_with("comment") ||
           name.starts_with("perm") || name == "lastRenderedPageBreak" || name == "annotationRef";
}

}  // namespace

void TrackedParagraph::Write(const Atom& atom, std::size_t begin, std::size_t end, TrackMark mark) {
    if (atom.kind == AtomKind::Marker)
        return WriteMarker(atom, mark);
    if (atom.kind == AtomKind::Text) {
        const std::u16string whole = ToUtf16(atom.parts.front().node.text().get());
        const std::u16string text = whole.substr(begin, end - begin);
        return WritePart(atom.parts.front(), mark, text.size() == whole.size() ? nullptr : &text);
    }
    for (const AtomPart& part : atom.parts) {
        const bool dropped = mark == TrackMark::Delete && IsDroppedMarker(part.node);
        if (!dropped)
            WritePart(part, mark, nullptr);
    }
}

// Those of the Original do not come along; those of the Modified stay.
void TrackedParagraph::WriteMarker(const Atom& atom, TrackMark mark) {
    if (mark == TrackMark::Delete)
        return;
    const AtomPart& part = atom.parts.front();
    if (atom.inserted)
        return WritePart(part, TrackMark::Insert, nullptr);
    if (mark == TrackMark::Insert && Is(part.node, "lastRenderedPageBreak"))
        return;
    WritePart(part, Is(part.node, "commentReference") ? mark : TrackMark::Keep, nullptr);
}

void TrackedParagraph::WritePart(const AtomPart& part, TrackMark mark, const std::u16string* text) {
    if (Is(part.node, "fldSimple") && mark != TrackMark::Keep)
        return WriteSimpleField(part.node, mark);
    if (!part.run) {
        run_ = {};
        return Adopt(Place(part.node, mark).append_copy(part.node), mark);
    }
    Node copy = RunFor(part.run, mark).append_copy(part.node);
    const bool note = Is(part.node, "footnoteReference") || Is(part.node, "endnoteReference");
    if (note && mark == TrackMark::Delete)
        SetAttribute(copy, "w:id", tools_.import_note(part.node));
    else if (note && mark == TrackMark::Insert)
        tools_.mark_note(part.node);
    if (text != nullptr)
        SetText(copy, *text);
    Adopt(copy, mark);
    if (mark == TrackMark::Delete && !moved_)
        NameAsDeleted(copy);
}

void TrackedParagraph::Adopt(Node copy, TrackMark mark) {
    if (mark == TrackMark::Delete)
        tools_.importer.Adapt(copy, tools_.parts);
}

// It may not stand inside a mark, and a mark inside it would leave its code behind.
void TrackedParagraph::WriteSimpleField(const Node& field, TrackMark mark) {
    static_cast<void>(Place(field, mark));
    run_ = {};
    FieldRun("w:fldChar", "begin", mark);
    FieldRun("w:instrText", field.attribute("w:instr").value(), mark);
    FieldRun("w:fldChar", "separate", mark);
    for (const Node& run : field.children()) {
        if (!Is(run, "r"))
            continue;
        Node copy = mark_element_.append_copy(run);
        Adopt(copy, mark);
        for (const Node& child : copy.children()) {
            if (mark == TrackMark::Delete && !moved_)
                NameAsDeleted(child);
        }
    }
    FieldRun("w:fldChar", "end", mark);
}

void TrackedParagraph::FieldRun(const char* element, const char* value, TrackMark mark) {
    Node node = mark_element_.append_child("w:r").append_child(element);
    if (Is(node, "instrText")) {
        SetText(node, ToUtf16(value));
        if (mark == TrackMark::Delete && !moved_)
            NameAsDeleted(node);
    } else {
        node.append_attribute("w:fldCharType") = value;
    }
}

// Where a run or another element goes that stands like `element` in its document.
Node TrackedParagraph::Place(const Node& element, TrackMark mark) {
    Node holder = Holder(element, mark);
    if (mark == TrackMark::Keep)
        return holder;
    if (!mark_element_)
        mark_element_ = tools_.marks.Open(holder, mark, moved_);
    return mark_element_;
}

// Opens and closes links and controls; a mark goes inside them.
Node TrackedParagraph::Holder(const Node& element, TrackMark mark) {
    const std::vector<Node> wanted = WrappersOf(element, mark);
    std::size_t same = 0;
    while (same < wanted.size() && same < wrappers_.size() &&
           SameWrapper(wrappers_[same], wanted[same], mark))
        ++same;
    if (same < wrappers_.size() || same < wanted.size() || mark != mark_) {
        mark_element_ = {};
        run_ = {};
    }
    mark_ = mark;
    wrappers_.resize(same);
    wrapper_copies_.resize(same);
    for (std::size_t i = same; i < wanted.size(); ++i)
        OpenWrapper(wanted[i], mark);
    return Innermost();
}

Node TrackedParagraph::Innermost() const {
    return wrapper_copies_.empty() ? paragraph_ : wrapper_copies_.back();
}

void TrackedParagraph::OpenWrapper(const Node& wrapper, TrackMark mark) {
    Node copy = Innermost().append_child(wrapper.name());
    for (const pugi::xml_attribute& attribute : wrapper.attributes())
        copy.append_copy(attribute);
    for (const Node& child : wrapper.children()) {
        if (LocalName(child).ends_with("Pr"))
            copy.append_copy(child);
    }
    // A control that is written a second time is another one.
    if (std::find(written_controls_.begin(), written_controls_.end(), wrapper) !=
        written_controls_.end())
        Child(copy, "sdtPr").remove_child("w:id");
    written_controls_.push_back(wrapper);
    Adopt(copy, mark);
    wrappers_.push_back(wrapper);
    wrapper_copies_.push_back(copy);
}

std::vector<Node> TrackedParagraph::WrappersOf(const Node& element, TrackMark mark) const {
    std::vector<Node> wrappers;
    for (Node node = element.parent(); node && !Is(node, "p"); node = node.parent()) {
        // Of deleted text the link stays; controls and tags are the Modified's alone.
        if (mark != TrackMark::Delete || Is(node, "hyperlink") || Is(node, "bdo") ||
            Is(node, "dir"))
            wrappers.push_back(node);
        else if (Is(node, "sdt"))
            ++tools_.importer.Left().controls;
    }
    std::reverse(wrappers.begin(), wrappers.end());
    return wrappers;
}

// A deleted word of a link stays in the link.
bool TrackedParagraph::SameWrapper(const Node& open, const Node& wanted, TrackMark mark) const {
    if (open == wanted)
        return true;
    if (mark != TrackMark::Delete || LocalName(open) != LocalName(wanted) || !Is(open, "hyperlink"))
        return false;
    const std::string id(wanted.attribute("r:id").value());
    const std::string mapped = id.empty() ? id : tools_.importer.RelationFor(id, tools_.parts);
    return open.attribute("r:id").value() == mapped &&
           Attribute(open, "anchor") == Attribute(wanted, "anchor");
}

Node TrackedParagraph::RunFor(const Node& run, TrackMark mark) {
    Node place = Place(run, mark);
    if (run_ == run && run_copy_.parent() == place && run_former_ == former_)
        return run_copy_;
    run_ = run;
    run_former_ = former_;
    run_copy_ = place.append_child("w:r");
    if (mark != TrackMark::Delete) {
        for (const pugi::xml_attribute& attribute : run.attributes())
            run_copy_.append_copy(attribute);
    }
    if (const Node look = Child(run, "rPr"))
        Adopt(run_copy_.append_copy(look), mark);
    if (former_)
        tools_.marks.NoteFormerLook(run_copy_, former_);
    return run_copy_;
}

}  // namespace zorvane
