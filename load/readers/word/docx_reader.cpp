// WordprocessingML to a sink. Source: ECMA-376 part 1, 17.
#include <algorithm>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/base/text_encoding.h"
#include "load/readers/beside/docx_beside.h"
#include "load/readers/symbol_fonts.h"
#include "load/readers/word/docx_numbering.h"
#include "load/readers/word/docx_styles.h"
#include "load/readers/word/word_readers.h"
#include "load/readers/xml_part.h"

namespace zorvane {
namespace {

using Relationships = std::unordered_map<std::string, Relationship>;
using Node = pugi::xml_node;

constexpr std::string_view kNoBreakHyphen = "\xE2\x80\x91";
constexpr std::string_view kSoftHyphen = "\xC2\xAD";
constexpr std::string_view kLine = "\x0B";
constexpr std::string_view kCell = "\x07";

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

// Which of the two forms of one thing is read: never both.
Node Chosen(const Node& alternate) {
    const Node choice = Child(alternate, "Choice");
    return choice ? choice : Child(alternate, "Fallback");
}

class DocxWalker {
  public:
    DocxWalker(Package& package, DocumentSink& sink, ReadMonitor& monitor)
        : package_(package), monitor_(monitor), writer_(sink), beside_(package, styles_, sink) {}

    ReadEnd Read() {
        const std::string main = MainPart();
        parts_ = ReadRelationships(package_, main);
        styles_.Read(package_, parts_);
        beside_.Begin(main);
        std::string numbering = "word/numbering.xml";
        for (const auto& [id, part] : parts_) {
            if (part.type == "numbering")
                numbering = part.target;
            if (part.type == "settings")
                ReadSettings(part.target);
            if (part.type == "footnotes")
                ReadNotes(part.target, footnotes_part_, footnotes_);
            if (part.type == "endnotes")
                ReadNotes(part.target, endnotes_part_, endnotes_);
        }
        numbering_.Read(package_, numbering);
        XmlPart document;
        if (ReadEnd end = XmlPart::Read(package_, main, document); !end.ok())
            return end;
        const Node body = Child(document.Root(), "body");
        if (!body)
            return ReadEnd::Fault(ReadError::WrongFormat, "no document text in the package");
        total_ = std::distance(body.children().begin(), body.children().end());
        Blocks(body, 0);
        EndOpenParagraph();
        HeadersAndFooters(document.Root());
        return end_;
    }

  private:
    // ---- the package ----

    std::string MainPart() {
        for (const auto& [id, part] : ReadRelationships(package_, "")) {
            if (part.type == "officeDocument")
                return part.target;
        }
        return "word/document.xml";
    }

    void ReadNotes(const std::string& name, XmlPart& part,
                   std::unordered_map<std::string, Node>& notes) {
        if (!XmlPart::Read(package_, name, part).ok())
            return;
        for (const Node& note : part.Root().children()) {
            const std::string_view type = Attribute(note, "type");
            if (type.empty() || type == "normal")
                notes.emplace(Attribute(note, "id"), note);
        }
    }

    void ReadSettings(const std::string& name) {
        XmlPart part;
        if (!XmlPart::Read(package_, name, part).ok())
            return;
        const Node even = Child(part.Root(), "evenAndOddHeaders");
        const std::string_view value = Attribute(even, "val");
        even_pages_differ_ = even && value != "0" && value != "false";
    }

    // Each part once, and a text that says what another said once as well.
    void HeadersAndFooters(const Node& document) {
        std::vector<Node> sections;
        CollectSections(document, sections, 0);
        std::set<std::string> seen;
        for (const std::string_view kind : {"headerReference", "footerReference"}) {
            for (const Node& section : sections) {
                for (const Node& reference : section.children()) {
                    if (Is(reference, kind) && Shown(reference, section))
                        HeaderPart(std::string(Attribute(reference, "id")), seen);
                }
            }
        }
    }

    // A first page's or even pages' header is there only when the document says that they differ.
    bool Shown(const Node& reference, const Node& section) const {
        const std::string_view type = Attribute(reference, "type");
        if (type == "first")
            return static_cast<bool>(Child(section, "titlePg"));
        return type != "even" || even_pages_differ_;
    }

    void CollectSections(const Node& node, std::vector<Node>& sections, int depth) {
        for (const Node& child : node.children()) {
            if (Is(child, "sectPr"))
                sections.push_back(child);
            else if (depth < 3 && (Is(child, "body") || Is(child, "p") || Is(child, "pPr")))
                CollectSections(child, sections, depth + 1);
        }
    }

    void HeaderPart(const std::string& relationship, std::set<std::string>& seen) {
        const auto found = parts_.find(relationship);
        XmlPart part;
        if (found == parts_.end() || !seen.insert("part " + found->second.target).second ||
            !XmlPart::Read(package_, found->second.target, part).ok())
            return;
        std::string text;
        PlainText(part.Root(), text, 0);
        if (Trim(text).empty() || !seen.insert("text " + text).second)
            return;
        beside_.UseMarginPart(found->second.target);
        Blocks(part.Root(), 0);
    }

    static void PlainText(const Node& node, std::string& text, int depth) {
        for (const Node& child : node.children()) {
            if (Is(child, "t"))
                text += child.text().get();
            else if (depth < kMaxDepth)
                PlainText(child, text, depth + 1);
        }
    }

    // ---- blocks ----

    void Blocks(const Node& parent, int depth) {
        if (depth > kMaxDepth) {
            end_ = ReadEnd::Fault(ReadError::Damaged, "the document is nested too deeply");
            return;
        }
        for (const Node& node : parent.children()) {
            if (!end_.ok())
                return;
            const std::string_view name = LocalName(node);
            if (name == "p")
                Paragraph(node, depth + 1);
            else if (name == "tbl")
                Table(node, depth + 1);
            else if (name == "AlternateContent")
                Blocks(Chosen(node), depth + 1);
            else if (name == "sdt" || name == "sdtContent" || name == "customXml" ||
                     name == "ins" || name == "moveTo" || name == "smartTag")
                Blocks(node, depth + 1);
            else if (name == "oMathPara" || name == "oMath")
                MathText(node, depth + 1);
            if (nesting_ == 0 && !monitor_.Progress(std::min(done_++, total_ - 1), total_))
                end_ = ReadEnd::Fault(ReadError::Cancelled);
        }
    }

    static bool MarkDeleted(const Node& properties) {
        const Node mark = Child(properties, "rPr");
        return Child(mark, "del") || Child(mark, "moveFrom");
    }

    void Paragraph(const Node& node, int depth) {
        const Node properties = Child(node, "pPr");
        ParagraphLook look = styles_.Paragraph(properties);
        RunLook mark = look.run;
        styles_.ApplyRun(Child(properties, "rPr"), mark);
        beside_.Paragraph(node, look.run);
        const bool joined = std::exchange(joins_next_, false);
        if (nesting_ > 0)
            BeginNested(joined);
        RunLook label_look = mark;
        const std::string label =
            joined || mark.hidden ? std::string() : numbering_.Next(styles_, look, label_look);
        if (nesting_ == 0 && !joined)
            writer_.SetFormat(look.format);
        if (!label.empty() && HasContent(node))
            writer_.ListLabel(CleanText(label, scratch_), label_look.chars);
        const RunLook outer = std::exchange(base_, look.run);
        Inlines(node, depth);
        base_ = outer;
        EndParagraph(MarkDeleted(properties), mark.hidden, depth);
    }

    // A deleted mark joins the paragraph with the next one; a hidden one leaves no empty line.
    void EndParagraph(bool mark_deleted, bool mark_hidden, int depth) {
        if (mark_deleted) {
            joins_next_ = true;
        } else if (nesting_ == 0) {
            if (mark_hidden)
                writer_.EndIfBegun();
            else
                writer_.End();
        }
        if (nesting_ > 0 || joins_next_ || boxes_.empty())
            return;
        const std::vector<Node> boxes = std::exchange(boxes_, {});
        for (const Node& box : boxes)
            Blocks(box, depth + 1);
    }

    // A deleted mark with nothing behind it to join: the text's end, a table.
    void EndOpenParagraph() {
        joins_next_ = false;
        writer_.EndIfBegun();
    }

    // Inside a cell or a note the paragraphs are lines of one paragraph.
    void BeginNested(bool joined) {
        if (!first_in_cell_ && !joined)
            writer_.Text(kLine, base_.chars);
        first_in_cell_ = false;
    }

    // The number of an empty paragraph is seen, but for one that is there to end a section only.
    static bool HasContent(const Node& paragraph) {
        return !Child(Child(paragraph, "pPr"), "sectPr") || Child(paragraph, "r");
    }

    void Table(const Node& table, int depth) {
        if (depth > kMaxDepth) {
            end_ = ReadEnd::Fault(ReadError::Damaged, "the tables are nested too deeply");
            return;
        }
        for (const Node& row : table.children()) {
            const std::string_view name = LocalName(row);
            if (name == "tr")
                Row(row, depth);
            else if (name == "sdt" || name == "sdtContent" || name == "ins" || name == "customXml")
                Table(row, depth + 1);
        }
    }

    void Row(const Node& row, int depth) {
        const Node properties = Child(row, "trPr");
        if (Child(properties, "del") || Child(properties, "hidden"))
            return beside_.HiddenRow(row);
        const bool nested = nesting_ > 0;
        if (nested) {
            BeginNested(false);
        } else {
            EndOpenParagraph();
            writer_.SetFormat({});
        }
        Cells(row, nested, depth + 1);
        if (!nested) {
            writer_.End();
            const std::vector<Node> boxes = std::exchange(boxes_, {});
            for (const Node& box : boxes)
                Blocks(box, depth + 1);
        }
    }

    void Cells(const Node& row, bool nested, int depth) {
        for (const Node& cell : row.children()) {
            const std::string_view name = LocalName(cell);
            if (depth < kMaxDepth && (name == "sdt" || name == "sdtContent"))
                Cells(cell, nested, depth + 1);
            if (name != "tc")
                continue;
            ++nesting_;
            first_in_cell_ = true;
            if (!ContinuesCellAbove(cell))
                Blocks(cell, depth + 1);
            joins_next_ = false;
            --nesting_;
            writer_.Text(nested ? std::string_view("\t") : kCell, base_.chars);
        }
        first_in_cell_ = false;
    }

    static bool ContinuesCellAbove(const Node& cell) {
        const Node merge = Child(Child(cell, "tcPr"), "vMerge");
        return merge && Attribute(merge, "val") != "restart";
    }

    // ---- inside a paragraph ----

    void Inlines(const Node& parent, int depth) {
        if (depth > kMaxDepth) {
            end_ = ReadEnd::Fault(ReadError::Damaged, "the document is nested too deeply");
            return;
        }
        for (const Node& node : parent.children())
            TakeInline(node, base_, depth);
    }

    void Run(const Node& run, int depth) {
        RunLook look = base_;
        styles_.ApplyRun(Child(run, "rPr"), look);
        if (look.hidden)
            return;
        for (const Node& node : run.children())
            TakeInline(node, look, depth + 1);
    }

    void TakeInline(const Node& node, const RunLook& look, int depth) {
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
                return Note(node, footnotes_, depth);
            case Inline::Endnote:
                return Note(node, endnotes_, depth);
            default:
                return Characters(node, look);
        }
    }

    void Characters(const Node& node, const RunLook& look) {
        switch (InlineOf(LocalName(node))) {
            case Inline::Text:
                return RunText(node, look);
            case Inline::Tab:
                return Write("\t", look);
            case Inline::Break:
                if (const std::string_view type = Attribute(node, "type");
                    type.empty() || type == "textWrapping")
                    Write(kLine, look);
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

    void Write(std::string_view utf8, const RunLook& look) {
        if (InInstruction())
            return;
        // Behind its mark a note begins with a blank, and one stands in front of it already.
        if (note_begins_)
            utf8.remove_prefix(std::min(utf8.find_first_not_of(' '), utf8.size()));
        note_begins_ = note_begins_ && utf8.empty();
        writer_.Text(utf8, look.chars);
    }

    void RunText(const Node& node, const RunLook& look) {
        for (const Node& piece : node.children())
            Write(CleanText(piece.value(), scratch_), look);
    }

    void Symbol(const Node& node, const RunLook& look) {
        const std::string code(Attribute(node, "char"));
        const auto unit = static_cast<char16_t>(std::strtoul(code.c_str(), nullptr, 16));
        if (unit >= 0x20)
            Write(SymbolText(ToUtf8(std::u16string_view(&unit, 1)), Attribute(node, "font")), look);
    }

    // Of a field the result is seen, not the instruction in front of it.
    void FieldMark(const Node& node, const RunLook& look) {
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

    void CheckBox(const Node& box, const RunLook& look) {
        Node state = Child(box, "checked");
        if (!state)
            state = Child(box, "default");
        const std::string_view value = Attribute(state, "val");
        const bool checked = state && value != "0" && value != "false";
        Write(checked ? "\xE2\x98\x92" : "\xE2\x98\x90", look);
    }

    bool InInstruction() const {
        return std::find(in_instruction_.begin(), in_instruction_.end(), true) !=
               in_instruction_.end();
    }

    void Ruby(const Node& ruby, int depth) {
        Inlines(Child(ruby, "rubyBase"), depth);
        writer_.Text("(", base_.chars);
        Inlines(Child(ruby, "rt"), depth);
        writer_.Text(")", base_.chars);
    }

    void MathText(const Node& node, int depth) {
        if (depth > kMaxDepth)
            return;
        for (const Node& child : node.children()) {
            if (Is(child, "t"))
                RunText(child, base_);
            else
                MathText(child, depth + 1);
        }
    }

    // The note's text stands at its reference, a blank in front, its paragraphs as lines.
    void Note(const Node& reference, const std::unordered_map<std::string, Node>& notes,
              int depth) {
        const auto found = notes.find(std::string(Attribute(reference, "id")));
        if (found == notes.end() || in_note_ || InInstruction())
            return;
        in_note_ = true;
        note_begins_ = true;
        ++nesting_;
        const bool first = std::exchange(first_in_cell_, true);
        const RunLook outer = base_;
        writer_.Text(" ", base_.chars);
        Blocks(found->second, depth + 1);
        base_ = outer;
        first_in_cell_ = first;
        --nesting_;
        in_note_ = false;
        note_begins_ = false;
    }

    // ---- text boxes ----

    void Alternate(const Node& node, const RunLook& look, int depth) {
        for (const Node& child : Chosen(node).children())
            TakeInline(child, look, depth);
    }

    // They are read behind the paragraph that anchors them.
    void CollectBoxes(const Node& node, const RunLook& look, int depth) {
        if (depth > kMaxDepth || look.hidden)
            return;
        for (const Node& child : node.children()) {
            const std::string_view name = LocalName(child);
            if (name == "txbxContent")
                TakeBox(child, depth);
            else if (name == "AlternateContent")
                CollectBoxes(Chosen(child), look, depth + 1);
            else
                CollectBoxes(child, look, depth + 1);
        }
    }

    void TakeBox(const Node& box, int depth) {
        if (nesting_ == 0) {
            boxes_.push_back(box);
        } else {
            writer_.Text(" ", base_.chars);
            first_in_cell_ = true;
            Blocks(box, depth + 1);
        }
    }

    Package& package_;
    ReadMonitor& monitor_;
    ParagraphWriter writer_;
    Relationships parts_;
    DocxStyles styles_;
    DocxNumbering numbering_;
    XmlPart footnotes_part_;
    XmlPart endnotes_part_;
    std::unordered_map<std::string, Node> footnotes_;
    std::unordered_map<std::string, Node> endnotes_;
    ReadEnd end_;
    RunLook base_;                      // of the paragraph at work
    std::vector<Node> boxes_;           // anchored in the paragraph at work
    std::vector<bool> in_instruction_;  // one for each open field
    int nesting_ = 0;                   // open cells and notes
    bool first_in_cell_ = true;
    bool joins_next_ = false;
    bool even_pages_differ_ = false;
    bool in_note_ = false;
    bool note_begins_ = false;
    std::string scratch_;
    std::int64_t done_ = 0;
    std::int64_t total_ = 0;
    DocxBeside beside_;
};

}  // namespace

ReadEnd ReadWordPackage(Package& package, DocumentSink& sink, ReadMonitor& monitor) {
    return DocxWalker(package, sink, monitor).Read();
}

}  // namespace zorvane
