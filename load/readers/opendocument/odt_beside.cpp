// Source: the public format description ODF 1.3, part 3.
#include "load/readers/opendocument/odt_beside.h"

#include <algorithm>
#include <array>

#include "common/base/text_encoding.h"
#include "load/readers/beside/formula_text.h"
#include "load/readers/opendocument/odt_body.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::size_t kMostHidden = std::size_t{1} << 20;
constexpr std::size_t kMostChanges = 50'000;

// Elements whose text is made by the program when it shows the document.
bool IsField(std::string_view name) {
    constexpr std::array<std::string_view, 26> kNames = {"date",
                                                         "time",
                                                         "page-number",
                                                         "page-count",
                                                         "author-name",
                                                         "author-initials",
                                                         "chapter",
                                                         "file-name",
                                                         "sheet-name",
                                                         "variable-get",
                                                         "variable-set",
                                                         "variable-input",
                                                         "user-field-get",
                                                         "expression",
                                                         "sequence",
                                                         "text-input",
                                                         "placeholder",
                                                         "conditional-text",
                                                         "database-display",
                                                         "bookmark-ref",
                                                         "reference-ref",
                                                         "sequence-ref",
                                                         "note-ref",
                                                         "title",
                                                         "subject",
                                                         "page-continuation"};
    return IsOneOf(name, kNames);
}

// The attributes of a field that say what it is, not what it showed last.
std::string FieldText(const Node& field, std::string_view name) {
    std::string text(name);
    for (const std::string_view attribute :
         {"name", "ref-name", "formula", "condition", "reference-format", "display", "table-name",
          "column-name"}) {
        if (const std::string_view value = Attribute(field, attribute); !value.empty())
            text += " " + std::string(value);
    }
    return text;
}

std::string NameOfFrame(const Node& frame) {
    for (const std::string_view element : {"desc", "title"}) {
        std::string name = TextInside(Child(frame, element));
        if (!Trim(name).empty())
            return name;
    }
    return {};
}

// What a tracked change did; empty for what is none.
std::string ChangeText(const Node& change) {
    if (Is(change, "insertion"))
        return "inserted";
    if (Is(change, "format-change"))
        return "format";
    if (!Is(change, "deletion"))
        return {};
    std::string text = "deleted: ";
    for (const Node& part : change.children()) {
        if (!Is(part, "change-info"))
            text += TextInside(part);
    }
    return text;
}

// An empty paragraph stands in each shape that an office suite writes.
bool HasText(const Node& node, int depth) {
    if (depth > kMaxDepth)
        return false;
    return std::any_of(node.begin(), node.end(), [depth](const Node& child) {
        if (Is(child, "p"))
            return !Trim(TextInside(child)).empty();
        return Is(child, "text-box") || HasText(child, depth + 1);
    });
}

}  // namespace

void OdtBeside::TakeChanges(const Node& changes) {
    for (const Node& region : changes.children()) {
        const std::string id(Attribute(region, "id"));
        for (const Node& change : region.children()) {
            const std::string text = ChangeText(change);
            if (!text.empty() && changes_.size() < kMostChanges)
                changes_[id] = text;
        }
    }
}

void OdtBeside::Paragraph(const Node& paragraph, const OpenStyles& styles, const OpenChars& chars) {
    styles_ = &styles;
    hidden_.clear();
    Walk(paragraph, chars, 0);
    if (!Trim(hidden_).empty())
        Send(MakeBeside(BesideKind::HiddenText, hidden_));
}

void OdtBeside::Walk(const Node& node, const OpenChars& chars, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const Node& child : node.children()) {
        const bool text = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
        if (!text)
            Element(child, chars, depth);
        else if (chars.hidden && hidden_.size() < kMostHidden)
            hidden_ += child.value();
    }
}

void OdtBeside::Element(const Node& node, const OpenChars& chars, int depth) {
    const std::string_view name = LocalName(node);
    if (IsOdtShape(name))
        return Shape(node, depth);
    if (Special(node, name))
        return;
    if (name == "a") {
        if (const std::string_view target = Attribute(node, "href"); !target.empty())
            Send(MakeBeside(BesideKind::Link, target));
    } else if (IsField(name)) {
        Send(MakeBeside(BesideKind::Field, FieldText(node, name)));
    }
    OpenChars own = chars;
    if (name == "span" && styles_ != nullptr)
        styles_->ApplyText(Attribute(node, "style-name"), own);
    Walk(node, own, depth + 1);
}

// True for what holds nothing more.
bool OdtBeside::Special(const Node& node, std::string_view name) {
    if (name == "annotation")
        Comment(node);
    else if (name == "change" || name == "change-start")
        Change(Attribute(node, "change-id"));
    else if (name == "hidden-text")
        Send(MakeBeside(BesideKind::HiddenText, Attribute(node, "string-value")));
    else if (name == "hidden-paragraph")
        Send(MakeBeside(BesideKind::Field, FieldText(node, name)));
    else
        return name == "note-citation" || name == "annotation-end" || name == "change-end";
    return true;
}

void OdtBeside::Comment(const Node& annotation) {
    std::string text;
    for (const Node& part : annotation.children()) {
        if (!Is(part, "creator") && !Is(part, "date") && !Is(part, "date-string") &&
            !Is(part, "creator-initials"))
            text += TextInside(part);
    }
    const std::string author = TextInside(Child(annotation, "creator"));
    Send(MakeBeside(BesideKind::Comment, author.empty() ? text : author + ": " + text));
}

void OdtBeside::Change(std::string_view id) {
    if (const auto found = changes_.find(std::string(id)); found != changes_.end())
        Send(MakeBeside(BesideKind::TrackedChange, found->second));
}

void OdtBeside::Shape(const Node& shape, int depth) {
    if (depth > kMaxDepth || !told_.insert(shape.hash_value()).second)
        return;
    const std::string_view name = LocalName(shape);
    if (name == "frame")
        return Frame(shape);
    if (name != "g" && !HasText(shape, 0))
        Drawing(shape, name);
    for (const Node& child : shape.children()) {
        if (IsOdtShape(LocalName(child)))
            Shape(child, depth + 1);
    }
}

void OdtBeside::Page(const Node& page, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const Node& child : page.children())
        PagePart(child, depth);
}

void OdtBeside::PagePart(const Node& part, int depth) {
    const std::string_view name = LocalName(part);
    if (name == "notes")
        return;
    if (name == "annotation")
        return Comment(part);
    if (IsOdtShape(name))
        Shape(part);
    if (name == "p" || name == "h")
        Walk(part, OpenChars(), depth + 1);
    else
        Page(part, depth + 1);
}

void OdtBeside::Drawing(const Node& shape, std::string_view name) {
    constexpr std::array<std::string_view, 8> kLook = {
        "width", "height", "viewBox", "points", "d", "type", "enhanced-path", "transform"};
    std::string look(name);
    for (const Node& part : {shape, Child(shape, "enhanced-geometry")}) {
        for (const std::string_view attribute : kLook)
            look += "|" + std::string(Attribute(part, attribute));
    }
    const std::string shown = NameOfFrame(shape);
    Send(MakeBeside(BesideKind::Drawing, shown.empty() ? name : std::string_view(shown), look));
}

void OdtBeside::Frame(const Node& frame) {
    const std::string name = NameOfFrame(frame);
    if (Child(frame, "text-box") || Child(frame, "table") || Object(frame, name))
        return;
    // Several pictures in a frame are one in several forms.
    const Node image = Child(frame, "image");
    if (!image)
        return;
    const std::string_view address = Attribute(image, "href");
    if (!address.empty())
        return Part(BesideKind::Picture, address, name);
    const std::string data = TextInside(Child(image, "binary-data"));
    Send(MakeBeside(BesideKind::Picture, name.empty() ? "picture" : name, data));
}

bool OdtBeside::Object(const Node& frame, const std::string& name) {
    for (const std::string_view element : {"object-ole", "plugin"}) {  // of films and sounds
        if (const Node data = Child(frame, element)) {
            Part(BesideKind::Object, Attribute(data, "href"), name);
            return true;
        }
    }
    const Node object = Child(frame, "object");
    if (!object)
        return false;
    if (const Node math = Child(object, "math")) {
        Send(MakeBeside(BesideKind::Formula, FormulaStructure(math)));
        return true;
    }
    const std::string folder = ResolvePart("content.xml", Attribute(object, "href"));
    XmlPart content;
    if (!XmlPart::Read(digests_.Parts(), folder + "/content.xml", content).ok()) {
        Part(BesideKind::Object, Attribute(object, "href"), name);
        return true;
    }
    if (Is(content.Root(), "math")) {
        Send(MakeBeside(BesideKind::Formula, FormulaStructure(content.Root())));
        return true;
    }
    const Node body = Child(content.Root(), "body");
    const bool chart = static_cast<bool>(Child(body, "chart"));
    Send(MakeBeside(chart ? BesideKind::Chart : BesideKind::Object,
                    !name.empty() ? name
                    : chart       ? "chart"
                                  : "object",
                    ChartText(body)));
    return true;
}

void OdtBeside::Part(BesideKind kind, std::string_view address, const std::string& name) {
    const std::string part = ResolvePart("content.xml", address);
    const bool inside = digests_.Parts().Has(part);
    Send({kind, kBesideHere, BesideText(name.empty() ? FileOfPart(address) : name),
          inside ? digests_.Of(part) : BesideDigest(address)});
}

void OdtBeside::Hidden(const Node& node, std::string_view what) {
    const std::string text = TextInside(node);
    if (!Trim(text).empty())
        Send(MakeBeside(BesideKind::HiddenText, std::string(what) + ": " + text));
}

}  // namespace zorvane
