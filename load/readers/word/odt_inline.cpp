// The text inside the paragraphs of an OpenDocument text.
#include <algorithm>
#include <array>

#include "common/base/text_encoding.h"
#include "load/readers/symbol_fonts.h"
#include "load/readers/word/odt_body.h"

namespace zorvane {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// Elements inside a paragraph that show nothing, or that show what is made elsewhere.
bool IsLeftOut(std::string_view name) {
    constexpr std::array<std::string_view, 16> kNames = {
        "annotation",  "annotation-end",   "tracked-changes", "number",     "note-citation",
        "hidden-text", "hidden-paragraph", "event-listeners", "title",      "desc",
        "forms",       "control",          "object",          "object-ole", "image",
        "script"};
    return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

// The letters and signs of a formula, in their order.
void FormulaText(const pugi::xml_node& node, int depth, std::string& text) {
    if (depth >= kMaxDepth)
        return;
    for (const pugi::xml_node& child : node.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            text += Trim(child.value());
        else if (!Is(child, "annotation") && !Is(child, "annotation-xml"))
            FormulaText(child, depth + 1, text);
    }
}

}  // namespace

void OdtBody::Inline(const pugi::xml_node& parent, const OdtChars& chars) {
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

void OdtBody::InlineElement(const pugi::xml_node& node, const OdtChars& chars) {
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
    else if (!IsLeftOut(name))
        Inline(node, chars);
}

void OdtBody::Span(const pugi::xml_node& node, bool link, const OdtChars& chars) {
    OdtChars own = chars;
    const std::string_view style = Attribute(node, "style-name");
    const bool unstyled = link && (style.empty() || !styles_->HasText(style));
    styles_->ApplyText(unstyled ? "Internet_20_link" : style, own);
    Inline(node, own);
}

// False for an element that is no white space.
bool OdtBody::Blank(const pugi::xml_node& node, std::string_view name, const OdtChars& chars) {
    constexpr std::int32_t kMostBlanks = 4096;
    if (name == "s") {
        const std::int32_t count = std::clamp(NumberOf(Attribute(node, "c"), 1), 1, kMostBlanks);
        Exact(std::string(static_cast<std::size_t>(count), ' '), chars);
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
void OdtBody::Note(const pugi::xml_node& note, const OdtChars& chars) {
    if (chars.hidden || brackets_.InNote())
        return;
    TakeBlank();
    const Line outer = line_;
    brackets_.Open();
    NoteBlocks(Child(note, "note-body"));
    writer_.Text(brackets_.Close(), chars.format);
    line_ = outer;
    line_.has_text = true;
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
        const OdtChars own = styles_->Paragraph(Attribute(block, "style-name")).chars;
        line_ = Line();
        line_.base = own;
        Inline(block, own);
    }
    --depth_;
}

void OdtBody::Ruby(const pugi::xml_node& ruby, const OdtChars& chars) {
    Inline(Child(ruby, "ruby-base"), chars);
    Exact("(", chars);
    Inline(Child(ruby, "ruby-text"), chars);
    Exact(")", chars);
}

void OdtBody::Formula(const pugi::xml_node& frame, const OdtChars& chars) {
    const pugi::xml_node object = Child(frame, "object");
    std::string text;
    if (const pugi::xml_node math = Child(object, "math")) {
        FormulaText(math, 0, text);
    } else if (formulas_left_ > 0) {
        --formulas_left_;
        XmlPart part;
        const std::string folder = ResolvePart("content.xml", Attribute(object, "href"));
        if (XmlPart::Read(package_, folder + "/content.xml", part).ok() && Is(part.Root(), "math"))
            FormulaText(part.Root(), 0, text);
    }
    Characters(text, chars);
}

// The lines of a note stand behind each other.
void OdtBody::LineBreak(const OdtChars& chars) {
    if (brackets_.InNote())
        brackets_.BreakInNote();
    else
        Exact(std::string_view(&kLineInParagraph, 1), chars);
}

void OdtBody::Write(std::string_view text, const CharFormat& format) {
    writer_.Text(brackets_.InFrontOf(text), format);
    writer_.Text(text, format);
}

void OdtBody::TakeBlank() {
    if (line_.blank_waits)
        Write(" ", line_.blank_format);
    line_.blank_waits = false;
}

// A blank in the format of the word goes with it.
void OdtBody::AddWord(std::string_view word, const OdtChars& chars) {
    if (line_.blank_waits && line_.blank_format == chars.format) {
        line_.blank_waits = false;
        scratch_ += ' ';
    }
    TakeBlank();
    scratch_ += word;
    line_.has_text = true;
}

// White space of the file counts as one blank, and as none at both ends of a paragraph.
void OdtBody::Characters(std::string_view text, const OdtChars& chars) {
    if (chars.hidden)
        return;
    scratch_.clear();
    while (!text.empty()) {
        const std::size_t word = std::min(text.find_first_of(kBlanks), text.size());
        if (word > 0)
            AddWord(text.substr(0, word), chars);
        text.remove_prefix(word);
        const std::size_t blanks = std::min(text.find_first_not_of(kBlanks), text.size());
        text.remove_prefix(blanks);
        if (blanks > 0 && line_.has_text && !line_.blank_waits) {
            line_.blank_waits = true;
            line_.blank_format = chars.format;
        }
    }
    if (scratch_.empty())
        return;
    // Letters of picture fonts lie where no other font has any.
    const bool symbols =
        scratch_.find('\xEF') != std::string::npos && IsSymbolFont(chars.format.font.view());
    if (symbols)
        scratch_ = SymbolText(scratch_, chars.format.font.view());
    Write(scratch_, chars.format);
}

void OdtBody::Exact(std::string_view text, const OdtChars& chars) {
    if (chars.hidden || text.empty())
        return;
    TakeBlank();
    Write(text, chars.format);
    line_.has_text = true;
}

}  // namespace zorvane
