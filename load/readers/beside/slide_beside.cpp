// Source: ECMA-376 part 1, 19 (PresentationML), 20 (DrawingML).
#include "load/readers/beside/slide_beside.h"

#include <algorithm>
#include <array>

#include "common/base/text_encoding.h"
#include "load/readers/beside/formula_text.h"
#include "load/readers/ooxml/alternate_content.h"
#include "load/readers/opendocument/odt_beside.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

bool IsShape(std::string_view name) {
    return name == "sp" || name == "pic" || name == "cxnSp" || name == "graphicFrame";
}

std::string NameOfShape(const Node& shape) {
    for (const Node& part : shape.children()) {
        const Node properties = Child(part, "cNvPr");
        if (const std::string_view text = Attribute(properties, "descr"); !text.empty())
            return std::string(text);
    }
    return {};
}

bool IsPlaceholder(const Node& shape) {
    for (const Node& part : shape.children()) {
        if (Child(Child(part, "nvPr"), "ph"))
            return true;
    }
    return false;
}

}  // namespace

void SlideBeside::Begin(std::int32_t number, const std::string& part, const Node& slide,
                        bool with_notes) {
    if (!std::exchange(has_properties_, true))
        ReportOfficeProperties(digests_.Parts(), sink_);
    placed_.SetPlace("slide " + std::to_string(number));
    relations_ = ReadRelationships(digests_.Parts(), part);
    slide_digest_.clear();
    drawn_ = 0;
    Walk(Child(slide, "cSld"), 0);
    // In the order of their names: that of the relations is any.
    std::vector<std::string> comments;
    std::string notes;
    for (const auto& [id, relation] : relations_) {
        if (relation.type == "comments" && !relation.external)
            comments.push_back(relation.target);
        else if (relation.type == "notesSlide")
            notes = relation.target;
    }
    std::sort(comments.begin(), comments.end());
    for (const std::string& name : comments)
        Comments(name);
    if (!with_notes && !notes.empty())
        Notes(notes);
    size_ = sink_.Size();
}

void SlideBeside::End() {
    if (drawn_ > 0 && sink_.Size() == size_)
        placed_.Beside(
            {BesideKind::PageWithoutText, kBesideHere, "picture", BesideDigest(slide_digest_)});
}

void SlideBeside::Behind(const Node& content, const Relationships& relations) {
    placed_.SetPlace(kBehindSlides);
    relations_ = relations;
    Walk(content, 0);
}

void SlideBeside::Walk(const Node& node, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const Node& child : node.children()) {
        const std::string_view name = LocalName(child);
        if (name == "AlternateContent") {
            Walk(ChosenForm(child), depth + 1);
            continue;
        }
        if (name == "oMath") {
            placed_.Beside(MakeBeside(BesideKind::Formula, FormulaStructure(child)));
            continue;
        }
        const std::string outer = name_;
        if (IsShape(name))
            name_ = NameOfShape(child);
        Element(child, name);
        // The picture of an object is a likeness only.
        if (name != "oleObj")
            Walk(child, depth + 1);
        name_ = outer;
    }
}

void SlideBeside::Element(const Node& node, std::string_view name) {
    if (name == "blip") {
        Part(BesideKind::Picture, Attribute(node, "embed"), name_);
    } else if (name == "oleObj") {
        Part(BesideKind::Object, Attribute(node, "id"), Attribute(node, "progId"));
    } else if (name == "videoFile" || name == "audioFile") {
        Part(BesideKind::Object, Attribute(node, "link"), name_);
    } else if (name == "hlinkClick") {
        const auto found = relations_.find(std::string(Attribute(node, "id")));
        if (found != relations_.end() && found->second.external)
            placed_.Beside(MakeBeside(BesideKind::Link, found->second.target));
    } else if (name == "sp" || name == "cxnSp") {
        Shape(node);
    }
}

// A shape without words; what waits for words is none.
void SlideBeside::Shape(const Node& shape) {
    const Node properties = Child(shape, "spPr");
    const std::string_view kind = Attribute(Child(properties, "prstGeom"), "prst");
    const bool words = !Trim(TextInside(Child(shape, "txBody"))).empty();
    if (words || IsPlaceholder(shape) || Child(properties, "blipFill"))
        return;
    const Node size = Child(Child(properties, "xfrm"), "ext");
    std::string look = std::string(kind) + " " + std::string(Attribute(size, "cx")) + " " +
                       std::string(Attribute(size, "cy"));
    const BesideItem item = MakeBeside(BesideKind::Drawing,
                                       !name_.empty() ? std::string_view(name_)
                                       : kind.empty() ? "shape"
                                                      : kind,
                                       look);
    slide_digest_ += item.digest;
    ++drawn_;
    placed_.Beside(item);
}

void SlideBeside::Part(BesideKind kind, std::string_view relation, std::string_view name) {
    const auto found = relations_.find(std::string(relation));
    if (found == relations_.end())
        return;
    const Relationship& part = found->second;
    const std::string digest = part.external ? BesideDigest(part.target) : digests_.Of(part.target);
    slide_digest_ += digest;
    ++drawn_;
    placed_.Beside(
        {kind, kBesideHere, BesideText(name.empty() ? FileOfPart(part.target) : name), digest});
}

void SlideBeside::Comments(const std::string& part) {
    XmlPart xml;
    if (!XmlPart::Read(digests_.Parts(), part, xml).ok())
        return;
    for (const Node& comment : xml.Root().children()) {
        if (Is(comment, "cm"))
            placed_.Beside(MakeBeside(BesideKind::Comment, Trim(TextInside(comment))));
    }
}

void SlideBeside::Notes(const std::string& part) {
    XmlPart xml;
    if (!XmlPart::Read(digests_.Parts(), part, xml).ok())
        return;
    for (const Node& shape : Child(Child(xml.Root(), "cSld"), "spTree").children()) {
        const Node holder = Child(Child(Child(shape, "nvSpPr"), "nvPr"), "ph");
        const std::string text = TextInside(Child(shape, "txBody"));
        if (Attribute(holder, "type") == "body" && !Trim(text).empty())
            placed_.Beside(MakeBeside(BesideKind::HiddenText, "notes: " + text));
    }
}

void ReportOpenSlide(OdtBeside& beside, PlacedSink& placed, const Node& page, std::int32_t number,
                     bool with_notes) {
    placed.SetPlace("slide " + std::to_string(number));
    beside.Page(page);
    std::string notes;
    for (const Node& frame : Child(page, "notes").children()) {
        if (Attribute(frame, "class") == "notes" && Attribute(frame, "placeholder") != "true")
            notes += TextInside(frame);
    }
    if (!with_notes && !Trim(notes).empty())
        placed.Beside(MakeBeside(BesideKind::HiddenText, "notes: " + notes));
}

}  // namespace zorvane
