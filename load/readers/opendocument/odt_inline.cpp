// The text inside the paragraphs of an OpenDocument text.
#include <algorithm>
#include <array>

#include "load/readers/opendocument/odt_body.h"
#include "load/readers/opendocument/open_math.h"
#include "load/readers/sink/symbol_fonts.h"

namespace zorvane {
namespace {

// Elements inside a paragraph that show nothing, or that show what is made elsewhere.
bool IsLeftOut(std::string_view name) {
    constexpr std::array<std::string_view, 16> kNames = {
        "annotation",  "annotation-end",   "tracked-changes", "number",     "note-citation",
        "hidden-text", "hidden-paragraph", "event-listeners", "title",      "desc",
        "forms",       "control",          "object",          "object-ole", "image",
        "script"};
    return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace

void OdtBody::Inline(const pugi::xml_node& parent, const OpenChars& chars) {
    if (!Enter())
        return;
    ++depth_;
    for (const pugi::xml_node& child : parent.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            Characters(child.value(), chars);
        else
            InlineElement(child, chars);
    }
    --depth_;
}

void OdtBody::InlineElement(const pugi::xml_node& node, const OpenChars& chars) {
    const std::string_view name = LocalName(node);
    if (name == "span" || name == "a")
        Span(node, name == "a", chars);
    else if (Blank(node, name, chars))
        return;
    else if (name == "note")
        Note(node, chars);
    else if (name == "ruby")
        Ruby(node, chars);
    else if (name == "frame" && Child(node, "object"))
        Formula(node, chars);
    else if (IsOdtShape(name))
        anchored_.push_back(node);
    else if (!IsLeftOut(name) && Attribute(node, "display") != "none")
        Inline(node, chars);
}

void OdtBody::Span(const pugi::xml_node& node, bool link, const OpenChars& chars) {
    OpenChars own = chars;
    const std::string_view style = Attribute(node, "style-name");
    const bool unstyled = link && (style.empty() || !styles_->HasText(style));
    styles_->ApplyText(unstyled ? "Internet_20_link" : style, own);
    Inline(node, own);
}

// False for an element that is no white space.
bool OdtBody::Blank(const pugi::xml_node& node, std::string_view name, const OpenChars& chars) {
    if (name == "s") {
        Exact(std::string(OpenBlankCount(Attribute(node, "c")), ' '), chars);
    } else if (name == "tab") {
        Exact("\t", chars);
    } else if (name == "line-break") {
        LineBreak(chars);
    } else {
        return false;
    }
    return true;
}

// A note's text stands where its mark is, one paragraph behind the other.
void OdtBody::Note(const pugi::xml_node& note, const OpenChars& chars) {
    if (chars.hidden || brackets_.InNote())
        return;
    brackets_.Open();
    NoteBlocks(Child(note, "note-body"));
    writer_.Text(brackets_.Close(), chars.format);
    blanks_.Exact();
}

void OdtBody::NoteBlocks(const pugi::xml_node& parent) {
    if (!Enter())
        return;
    ++depth_;
    for (const pugi::xml_node& block : parent.children()) {
        if (!Is(block, "p") && !Is(block, "h")) {
            NoteBlocks(block);
            continue;
        }
        brackets_.BreakInNote();
        const OpenChars own = styles_->Paragraph(Attribute(block, "style-name")).chars;
        blanks_.BeginParagraph();
        Inline(block, own);
    }
    --depth_;
}

void OdtBody::Ruby(const pugi::xml_node& ruby, const OpenChars& chars) {
    Inline(Child(ruby, "ruby-base"), chars);
    Exact("(", chars);
    Inline(Child(ruby, "ruby-text"), chars);
    Exact(")", chars);
}

void OdtBody::Formula(const pugi::xml_node& frame, const OpenChars& chars) {
    const pugi::xml_node object = Child(frame, "object");
    std::string text;
    if (const pugi::xml_node math = Child(object, "math")) {
        text = OpenMathText(math);
    } else if (formulas_left_ > 0) {
        --formulas_left_;
        XmlPart part;
        const std::string folder = ResolvePart("content.xml", Attribute(object, "href"));
        if (XmlPart::Read(package_, folder + "/content.xml", part).ok() && Is(part.Root(), "math"))
            text = OpenMathText(part.Root());
    }
    Characters(text, chars);
}

// The lines of a note stand behind each other.
void OdtBody::LineBreak(const OpenChars& chars) {
    if (brackets_.InNote())
        brackets_.BreakInNote();
    else
        Exact(std::string_view(&kLineInParagraph, 1), chars);
}

void OdtBody::Write(std::string_view text, const CharFormat& format) {
    writer_.Text(brackets_.InFrontOf(text), format);
    writer_.Text(text, format);
}

void OdtBody::Characters(std::string_view text, const OpenChars& chars) {
    if (chars.hidden)
        return;
    scratch_.clear();
    blanks_.Append(text, scratch_);
    // Letters of picture fonts lie where no other font has any.
    const bool symbols =
        scratch_.find('\xEF') != std::string::npos && IsSymbolFont(chars.format.font.view());
    if (symbols)
        scratch_ = SymbolText(scratch_, chars.format.font.view());
    Write(scratch_, chars.format);
}

void OdtBody::Exact(std::string_view text, const OpenChars& chars) {
    if (chars.hidden || text.empty())
        return;
    Write(text, chars.format);
    blanks_.Exact();
}

}  // namespace zorvane
