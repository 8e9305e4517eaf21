// What stands inside the paragraphs of a WordprocessingML document.
#include <algorithm>
#include <utility>

#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"
#include "load/readers/ooxml/docx_walker.h"
#include "load/readers/sink/symbol_fonts.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::string_view kNoBreakHyphen = "\xE2\x80\x91";
constexpr std::string_view kSoftHyphen = "\xC2\xAD";

// What the walk does with an element of that name inside a paragraph or a run.
enum class Inline : std::uint8_t {
    Descend,
    Skip,
    Run,
    Text,
    Tab,
    Break,
    SoftHyphen,
    NoBreakHyphen,
    Symbol,
    FieldMark,
    Footnote,
    Endnote,
    Alternate,
    Boxes,
    Ruby,
    MathText,
};
const std::unordered_map<std::string_view, Inline>& InlineTable() {
    static const std::unordered_map<std::string_view, Inline> kTable = {
        {"r", Inline::Run},
        {"t", Inline::Text},
        {"tab", Inline::Tab},
        {"ptab", Inline::Tab},
        {"br", Inline::Break},
        {"cr", Inline::Break},
        {"softHyphen", Inline::SoftHyphen},
        {"noBreakHyphen", Inline::NoBreakHyphen},
        {"sym", Inline::Symbol},
        {"fldChar", Inline::FieldMark},
        {"footnoteReference", Inline::Footnote},
        {"endnoteReference", Inline::Endnote},
        {"AlternateContent", Inline::Alternate},
        {"drawing", Inline::Boxes},
        {"pict", Inline::Boxes},
        {"object", Inline::Boxes},
        {"ruby", Inline::Ruby},
        {"hyperlink", Inline::Descend},
        {"ins", Inline::Descend},
        {"moveTo", Inline::Descend},
        {"smartTag", Inline::Descend},
        {"customXml", Inline::Descend},
        {"fldSimple", Inline::Descend},
        {"sdt", Inline::Descend},
        {"sdtContent", Inline::Descend},
        {"dir", Inline::Descend},
        {"bdo", Inline::Descend},
        {"rubyBase", Inline::Descend},
        {"oMath", Inline::MathText},
        {"oMathPara", Inline::MathText},
    };
    return kTable;
}

Inline InlineOf(std::string_view name) {
    const auto found = InlineTable().find(name);
    return found == InlineTable().end() ? Inline::Skip : found->second;
}

}  // namespace

void DocxWalker::Inlines(const Node& parent, int depth) {
    if (depth > kMaxDepth) {
        end_ = ReadEnd::Fault(ReadError::Damaged, "the document is nested too deeply");
        return;
    }
    for (const Node& node : parent.children())
        TakeInline(node, base_, depth);
}

void DocxWalker::Run(const Node& run, int depth) {
    RunLook look = base_;
    styles_.ApplyRun(Child(run, "rPr"), look);
    if (look.hidden)
        return;
    for (const Node& node : run.children())
        TakeInline(node, look, depth + 1);
    for (const Node& note : std::exchange(notes_due_, {}))
        Note(note, depth + 1);
}

// The lines of a note stand behind each other.
void DocxWalker::Break(const RunLook& look) {
    if (brackets_.InNote())
        brackets_.BreakInNote();
    else
        Write(kLineText, look);
}

void DocxWalker::TakeInline(const Node& node, const RunLook& look, int depth) {
    switch (InlineOf(LocalName(node))) {
        case Inline::Skip:
            return;
        case Inline::Descend:
            return Inlines(node, depth + 1);
        case Inline::Run:
            return Run(node, depth + 1);
        case Inline::FieldMark:
            return FieldMark(node, look);
        case Inline::Boxes:
            return CollectBoxes(node, look, depth + 1);
        case Inline::Alternate:
            return Alternate(node, look, depth + 1);
        case Inline::MathText:
            return MathText(node, depth + 1);
        case Inline::Ruby:
            return Ruby(node, depth + 1);
        case Inline::Footnote:
            return TakeNote(node, footnotes_, depth + 1);
        case Inline::Endnote:
            return TakeNote(node, endnotes_, depth + 1);
        default:
            return Characters(node, look);
    }
}

void DocxWalker::Characters(const Node& node, const RunLook& look) {
    switch (InlineOf(LocalName(node))) {
        case Inline::Text:
            return RunText(node, look);
        case Inline::Tab:
            return Write("\t", look);
        case Inline::Break:
            if (const std::string_view type = Attribute(node, "type");
                type.empty() || type == "textWrapping")
                Break(look);
            return;
        case Inline::SoftHyphen:
            return Write(kSoftHyphen, look);
        case Inline::NoBreakHyphen:
            return Write(kNoBreakHyphen, look);
        case Inline::Symbol:
            return Symbol(node, look);
        default:
            return;
    }
}

void DocxWalker::Write(std::string_view utf8, const RunLook& look) {
    if (!InInstruction())
        Put(utf8, look.chars);
}

void DocxWalker::Put(std::string_view utf8, const CharFormat& format) {
    writer_.Text(brackets_.InFrontOf(utf8), format);
    writer_.Text(utf8, format);
}

void DocxWalker::RunText(const Node& node, const RunLook& look) {
    for (const Node& piece : node.children())
        Write(CleanText(piece.value(), scratch_), look);
}

void DocxWalker::Symbol(const Node& node, const RunLook& look) {
    const auto code = ReadNumber<std::uint32_t>(Attribute(node, "char"), 16);
    const auto unit = static_cast<char16_t>(code.value.value_or(0));
    if (unit >= 0x20)
        Write(SymbolText(ToUtf8(std::u16string_view(&unit, 1)), Attribute(node, "font")), look);
}

// Of a field the result is seen, not the instruction in front of it.
void DocxWalker::FieldMark(const Node& node, const RunLook& look) {
    const std::string_view type = Attribute(node, "fldCharType");
    if (type == "begin") {
        if (const Node box = Child(Child(node, "ffData"), "checkBox"))
            CheckBox(box, look);
        in_instruction_.push_back(true);
    } else if (type == "separate" && !in_instruction_.empty()) {
        in_instruction_.back() = false;
    } else if (type == "end" && !in_instruction_.empty()) {
        in_instruction_.pop_back();
    }
}

void DocxWalker::CheckBox(const Node& box, const RunLook& look) {
    Node state = Child(box, "checked");
    if (!state)
        state = Child(box, "default");
    const std::string_view value = Attribute(state, "val");
    const bool checked = state && value != "0" && value != "false";
    Write(checked ? "\xE2\x98\x92" : "\xE2\x98\x90", look);
}

bool DocxWalker::InInstruction() const {
    return std::find(in_instruction_.begin(), in_instruction_.end(), true) != in_instruction_.end();
}

void DocxWalker::Ruby(const Node& ruby, int depth) {
    Inlines(Child(ruby, "rubyBase"), depth);
    Put("(", base_.chars);
    Inlines(Child(ruby, "rt"), depth);
    Put(")", base_.chars);
}

void DocxWalker::MathText(const Node& node, int depth) {
    if (depth > kMaxDepth)
        return;
    for (const Node& child : node.children()) {
        if (Is(child, "t"))
            RunText(child, base_);
        else
            MathText(child, depth + 1);
    }
}

// A mark of the author's own is the text behind the reference in its run: the note stands behind
// it.
void DocxWalker::TakeNote(const Node& reference, const Notes& notes, int depth) {
    const auto found = notes.find(std::string(Attribute(reference, "id")));
    if (found == notes.end() || brackets_.InNote() || InInstruction())
        return;
    const std::string_view own_mark = Attribute(reference, "customMarkFollows");
    if (own_mark.empty() || own_mark == "0" || own_mark == "false")
        Note(found->second, depth);
    else
        notes_due_.push_back(found->second);
}

// The note's text stands at its reference.
void DocxWalker::Note(const Node& note, int depth) {
    brackets_.Open();
    ++nesting_;
    const bool first = std::exchange(first_in_cell_, true);
    const bool joins = std::exchange(joins_next_, false);
    const RunLook outer = base_;
    Blocks(note, depth + 1);
    base_ = outer;
    joins_next_ = joins;
    first_in_cell_ = first;
    --nesting_;
    writer_.Text(brackets_.Close(), base_.chars);
}

void DocxWalker::Alternate(const Node& node, const RunLook& look, int depth) {
    for (const Node& child : ChosenForm(node).children())
        TakeInline(child, look, depth);
}

void DocxWalker::CollectBoxes(const Node& node, const RunLook& look, int depth) {
    if (depth > kMaxDepth || look.hidden)
        return;
    for (const Node& child : node.children()) {
        const std::string_view name = LocalName(child);
        if (name == "txbxContent")
            boxes_.push_back(child);
        else if (name == "AlternateContent")
            CollectBoxes(ChosenForm(child), look, depth + 1);
        else
            CollectBoxes(child, look, depth + 1);
    }
}

}  // namespace zorvane
