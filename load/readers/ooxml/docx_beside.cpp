// Source: ECMA-376 part 1, 17 (WordprocessingML), 20 (DrawingML), part 4, 14 (VML).
#include "load/readers/ooxml/docx_beside.h"

#include <array>
#include <utility>

#include "common/base/text_encoding.h"
#include "compare/document/rtf_beside.h"
#include "load/readers/beside/formula_text.h"
#include "load/readers/ooxml/alternate_content.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::size_t kMostUnseen = std::size_t{1} << 20;  // bytes of one paragraph
constexpr std::size_t kMostComments = 20'000;

void AppendBounded(std::string& text, std::string_view more) {
    if (text.size() < kMostUnseen)
        text += more.substr(0, kMostUnseen);
}

// The text of runs, deleted ones too; none of boxes and field codes.
void RunText(const Node& node, int depth, std::string& text) {
    for (const Node& child : node.children()) {
        const std::string_view name = LocalName(child);
        if (name == "t" || name == "delText")
            AppendBounded(text, child.text().get());
        else if (name == "tab" || name == "br")
            AppendBounded(text, " ");
        else if (depth < kMaxDepth && name != "txbxContent" && name != "rPr")
            RunText(child, depth + 1, text);
    }
}

// How a shape looks, without the ids that each saving makes anew.
void Look(const Node& node, int depth, std::string& look) {
    constexpr std::array<std::string_view, 3> kIds = {"id", "spid", "name"};
    constexpr std::size_t kLongest = std::size_t{1} << 16;
    if (depth > kMaxDepth || look.size() > kLongest)
        return;
    look += LocalName(node);
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        const std::string_view name = attribute.name();
        const bool own = name.find(':') != std::string_view::npos || IsOneOf(name, kIds);
        if (!own)
            look += std::string(" ") + std::string(name) + "=" + attribute.value();
    }
    for (const Node& child : node.children())
        Look(child, depth + 1, look);
}

bool HasBox(const Node& node, int depth) {
    if (depth > kMaxDepth)
        return false;
    for (const Node& child : node.children()) {
        if (Is(child, "txbxContent") || HasBox(child, depth + 1))
            return true;
    }
    return false;
}

std::string NameOfDrawing(const Node& drawing) {
    for (const Node& place : drawing.children()) {
        const Node properties = Child(place, "docPr");
        for (const std::string_view attribute : {"descr", "title"}) {
            if (!Attribute(properties, attribute).empty())
                return std::string(Attribute(properties, attribute));
        }
    }
    return {};
}

bool IsVmlShape(std::string_view name) {
    constexpr std::array<std::string_view, 9> kNames = {
        "shape", "rect", "oval", "line", "polyline", "curve", "arc", "roundrect", "image"};
    return IsOneOf(name, kNames);
}

std::string_view Otherwise(std::string_view text, std::string_view otherwise) {
    return text.empty() ? otherwise : text;
}

std::string_view FirstOf(const Node& node, std::string_view attribute, std::string_view other) {
    return Otherwise(Attribute(node, attribute), Attribute(node, other));
}

}  // namespace

void DocxBeside::Begin(const std::string& main_part) {
    main_part_ = main_part;
    ReportOfficeProperties(digests_.Parts(), sink_);
}

// The notes of a document are parts of their own, with relations of their own.
const DocxBeside::Relationships& DocxBeside::RelationsOf(const Node& node) {
    const std::string_view root = LocalName(node.root().first_child());
    std::string part = main_part_;
    if (root == "hdr" || root == "ftr")
        part = margin_part_;
    else if (root == "footnotes" || root == "endnotes")
        part = main_part_.substr(0, main_part_.rfind('/') + 1) + std::string(root) + ".xml";
    const auto [entry, fresh] = relations_.try_emplace(part);
    if (fresh)
        entry->second = ReadRelationships(digests_.Parts(), part);
    return entry->second;
}

const Relationship* DocxBeside::Find(const Node& node, std::string_view id) {
    if (id.empty())
        return nullptr;
    if (current_ == nullptr)
        current_ = &RelationsOf(node);
    const auto found = current_->find(std::string(id));
    return found == current_->end() ? nullptr : &found->second;
}

void DocxBeside::Paragraph(const Node& paragraph, const RunLook& look) {
    base_ = look;
    current_ = nullptr;  // looked up when a relation is met
    unseen_ = Unseen();
    const Node properties = Child(paragraph, "pPr");
    const Node mark = Child(properties, "rPr");
    if (Child(mark, "ins") || Child(mark, "moveTo"))
        unseen_.inserted = "\xC2\xB6";
    if (Child(mark, "del") || Child(mark, "moveFrom"))
        unseen_.deleted = "\xC2\xB6";
    if (Child(properties, "pPrChange"))
        Send(MakeBeside(BesideKind::TrackedChange, "paragraph format"));
    Walk(paragraph, 0);
    SendUnseen();
}

void DocxBeside::SendUnseen() {
    if (!unseen_.inserted.empty())
        Send(MakeBeside(BesideKind::TrackedChange, "inserted: " + unseen_.inserted));
    if (!unseen_.deleted.empty())
        Send(MakeBeside(BesideKind::TrackedChange, "deleted: " + unseen_.deleted));
    if (!Trim(unseen_.hidden).empty())
        Send(MakeBeside(BesideKind::HiddenText, unseen_.hidden));
}

void DocxBeside::HiddenRow(const Node& row) {
    std::string text;
    RunText(row, 0, text);
    const bool deleted = static_cast<bool>(Child(Child(row, "trPr"), "del"));
    if (deleted)
        Send(MakeBeside(BesideKind::TrackedChange, "deleted row: " + text));
    else
        Send(MakeBeside(BesideKind::HiddenText, "row: " + text));
}

void DocxBeside::Walk(const Node& node, int depth) {
    constexpr std::array<std::string_view, 12> kInside = {
        "hyperlink", "smartTag", "customXml", "sdt", "sdtContent", "dir",
        "bdo",       "ruby",     "rubyBase",  "rt",  "fldSimple",  "oMathPara"};
    if (depth > kMaxDepth)
        return;
    for (const Node& child : node.children()) {
        const std::string_view name = LocalName(child);
        if (name == "AlternateContent") {
            Walk(ChosenForm(child), depth + 1);
        } else if (!WalkSpecial(child, name, depth)) {
            Tell(child, name);
            if (IsOneOf(name, kInside))
                Walk(child, depth + 1);
        }
    }
}

// What walks on by itself. False for anything else.
bool DocxBeside::WalkSpecial(const Node& node, std::string_view name, int depth) {
    constexpr std::array<std::string_view, 4> kTracked = {"ins", "moveTo", "del", "moveFrom"};
    if (name == "r")
        Run(node, depth + 1);
    else if (IsOneOf(name, kTracked))
        WalkTracked(node, name, depth);
    else if (name == "drawing" || name == "pict")
        Drawing(node, depth + 1);
    else if (name == "object")
        Object(node, depth + 1);
    else
        return false;
    return true;
}

// What tells something by itself, whatever is inside of it.
void DocxBeside::Tell(const Node& node, std::string_view name) {
    if (name == "oMath") {
        Formula(node);
    } else if (name == "fldChar") {
        FieldMark(node);
    } else if (name == "instrText") {
        if (!fields_.empty() && fields_.back().in_code)
            AppendBounded(fields_.back().code, node.text().get());
    } else if (name == "commentReference") {
        Comment(Attribute(node, "id"));
    } else if (name == "hyperlink") {
        Link(node);
    } else if (name == "fldSimple") {
        FieldCode(Attribute(node, "instr"));
    }
}

void DocxBeside::FieldCode(std::string_view code) {
    if (const auto item = BesideOfFieldCode(code.substr(0, kMostUnseen)))
        Send(*item);
}

void DocxBeside::WalkTracked(const Node& node, std::string_view name, int depth) {
    const bool gone = name == "del" || name == "moveFrom";
    RunText(node, 0, gone ? unseen_.deleted : unseen_.inserted);
    if (!gone)
        Walk(node, depth + 1);
}

void DocxBeside::Run(const Node& run, int depth) {
    const Node properties = Child(run, "rPr");
    RunLook look = base_;
    styles_.ApplyRun(properties, look);
    if (Child(properties, "rPrChange"))
        Send(MakeBeside(BesideKind::TrackedChange, "format"));
    if (look.hidden)
        RunText(run, 0, unseen_.hidden);
    Walk(run, depth + 1);
}

void DocxBeside::Link(const Node& link) {
    const Relationship* const relation = Find(link, Attribute(link, "id"));
    std::string target = relation == nullptr ? std::string() : relation->target;
    if (const std::string_view anchor = Attribute(link, "anchor"); !anchor.empty())
        target += "#" + std::string(anchor);
    // Those of a table of contents are made anew with it.
    if (!target.empty() && !target.starts_with("#_Toc"))
        Send(MakeBeside(BesideKind::Link, target));
}

void DocxBeside::FieldMark(const Node& mark) {
    const std::string_view type = Attribute(mark, "fldCharType");
    if (type == "begin") {
        fields_.emplace_back();
    } else if (!fields_.empty()) {
        if (std::exchange(fields_.back().in_code, false))
            FieldCode(fields_.back().code);
        if (type == "end")
            fields_.pop_back();
    }
}

void DocxBeside::Formula(const Node& formula) {
    Send(MakeBeside(BesideKind::Formula, FormulaStructure(formula)));
}

void DocxBeside::Drawing(const Node& drawing, int depth) {
    const std::string name = NameOfDrawing(drawing);
    Graphic(drawing, name, depth);
}

void DocxBeside::Graphic(const Node& node, const std::string& name, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const Node& child : node.children()) {
        const std::string_view element = LocalName(child);
        if (element == "AlternateContent") {
            Graphic(ChosenForm(child), name, depth + 1);
        } else if (element != "txbxContent") {  // its paragraphs come for themselves
            GraphicPart(child, element, name);
            Graphic(child, name, depth + 1);
        }
    }
}

void DocxBeside::GraphicPart(const Node& part, std::string_view element, const std::string& name) {
    if (element == "hlinkClick")
        Link(part);
    else if (element == "blip")
        Picture(part, FirstOf(part, "embed", "link"), name);
    else if (element == "imagedata")
        Picture(part, FirstOf(part, "id", "relid"), Otherwise(Attribute(part, "title"), name));
    else if (element == "chart")
        PartText(part, "id", BesideKind::Chart, Otherwise(name, "chart"));
    else if (element == "relIds")
        PartText(part, "dm", BesideKind::Drawing, Otherwise(name, "diagram"));
    else if (element == "wsp" || IsVmlShape(element))
        Shape(part, name);
}

// A chart or a diagram, by the text of the part that holds it.
void DocxBeside::PartText(const Node& node, std::string_view relation, BesideKind kind,
                          std::string_view shown) {
    if (const Relationship* const part = Find(node, Attribute(node, relation)))
        Send({kind, kBesideHere, BesideText(shown), digests_.OfText(part->target)});
}

// A shape without text and without a picture in it.
void DocxBeside::Shape(const Node& shape, const std::string& name) {
    if (HasBox(shape, 0) || Child(shape, "imagedata"))
        return;
    std::string look;
    const Node properties = Child(shape, "spPr");
    Look(properties ? properties : shape, 0, look);
    const std::string_view kind = Attribute(Child(properties, "prstGeom"), "prst");
    Send(MakeBeside(BesideKind::Drawing, Otherwise(name, Otherwise(kind, "shape")), look));
}

void DocxBeside::Picture(const Node& node, std::string_view relation, std::string_view name) {
    const Relationship* const part = Find(node, relation);
    if (part == nullptr)
        return;
    const std::string_view file = FileOfPart(part->target);
    Send({BesideKind::Picture, kBesideHere, BesideText(Otherwise(name, file)),
          part->external ? BesideDigest(part->target) : digests_.Of(part->target)});
}

void DocxBeside::Object(const Node& object, int depth) {
    if (!ObjectData(object))
        Graphic(object, {}, depth);
}

// Beside an object's data its picture is a likeness only.
bool DocxBeside::ObjectData(const Node& object) {
    const Node data = object.find_node([this](const Node& node) {
        return Is(node, "OLEObject") && Find(node, Attribute(node, "id")) != nullptr;
    });
    if (!data)
        return false;
    const Relationship& part = *Find(data, Attribute(data, "id"));
    Send({BesideKind::Object, kBesideHere, BesideText(Attribute(data, "ProgID")),
          part.external ? BesideDigest(part.target) : digests_.Of(part.target)});
    return true;
}

void DocxBeside::Comment(std::string_view id) {
    if (!std::exchange(comments_loaded_, true))
        LoadComments();
    if (const auto found = comments_.find(std::string(id)); found != comments_.end())
        Send(MakeBeside(BesideKind::Comment, found->second));
}

void DocxBeside::LoadComments() {
    for (const auto& [relation, part] : ReadRelationships(digests_.Parts(), main_part_)) {
        XmlPart xml;
        if (part.type != "comments" || part.external ||
            !XmlPart::Read(digests_.Parts(), part.target, xml).ok())
            continue;
        for (const Node& comment : xml.Root().children()) {
            if (comments_.size() >= kMostComments)
                return;
            std::string text(Attribute(comment, "author"));
            text += (text.empty() ? "" : ": ") + TextInside(comment);
            comments_.emplace(Attribute(comment, "id"), std::move(text));
        }
    }
}

}  // namespace zorvane
