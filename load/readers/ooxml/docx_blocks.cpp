// Paragraphs and tables of a WordprocessingML document.
#include <algorithm>
#include <utility>

#include "load/readers/ooxml/docx_walker.h"
#include "load/readers/sink/symbol_fonts.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

bool MarkDeleted(const Node& properties) {
    const Node mark = Child(properties, "rPr");
    return Child(mark, "del") || Child(mark, "moveFrom");
}

// The number of an empty paragraph is seen, but for one that is there to end a section only.
bool HasContent(const Node& paragraph) {
    return !Child(Child(paragraph, "pPr"), "sectPr") || Child(paragraph, "r");
}

// A word processor wants a paragraph behind a last table: this one is none of the text.
bool IsTableEnd(const Node& paragraph) {
    return std::any_of(paragraph.begin(), paragraph.end(), [](const Node& node) {
        return Is(node, "bookmarkStart") && Attribute(node, "name") == kTableEndMark;
    });
}

bool ContinuesCellAbove(const Node& cell) {
    const Node merge = Child(Child(cell, "tcPr"), "vMerge");
    return merge && Attribute(merge, "val") != "restart";
}

bool HoldsParagraph(const Node& parent, int depth) {
    return depth < kMaxDepth && std::any_of(parent.begin(), parent.end(), [&](const Node& node) {
               return Is(node, "p") || HoldsParagraph(node, depth + 1);
           });
}

// What holds blocks, and shows nothing itself.
bool IsWrapper(std::string_view name) {
    return name == "sdt" || name == "sdtContent" || name == "customXml" || name == "ins" ||
           name == "moveTo" || name == "smartTag";
}

}  // namespace

void DocxWalker::Blocks(const Node& parent, int depth) {
    if (depth > kMaxDepth) {
        end_ = ReadEnd::Fault(ReadError::Damaged, "the document is nested too deeply");
        return;
    }
    for (const Node& node : parent.children()) {
        if (!end_.ok())
            return;
        Block(node, depth + 1);
        if (nesting_ == 0 && !monitor_.Progress(std::min(done_++, total_ - 1), total_))
            end_ = ReadEnd::Fault(ReadError::Cancelled);
    }
}

void DocxWalker::Block(const Node& node, int depth) {
    const std::string_view name = LocalName(node);
    if (name == "p" || name == "oMathPara" || name == "oMath")
        Paragraph(node, depth);
    else if (name == "tbl")
        Table(node, depth);
    else if (name == "AlternateContent")
        Blocks(ChosenForm(node), depth);
    else if (IsWrapper(name))
        Blocks(node, depth);
}

void DocxWalker::Paragraph(const Node& node, int depth) {
    const Node properties = Child(node, "pPr");
    DocxParagraphLook look = styles_.Paragraph(properties);
    RunLook mark = look.run;
    styles_.ApplyRun(Child(properties, "rPr"), mark);
    beside_.Paragraph(node, look.run);
    const bool joined = std::exchange(joins_next_, false);
    if (nesting_ > 0)
        BeginNested(joined);
    RunLook label_look = mark;
    const std::string label =
        joined || mark.hidden ? std::string() : numbering_.Next(styles_, look, label_look);
    if (nesting_ == 0 && !joined) {
        writer_.SetFormat(look.format);
        brackets_.BeginParagraph();
    }
    if (!label.empty() && HasContent(node))
        writer_.ListLabel(CleanText(label, scratch_), label_look.chars);
    const RunLook outer = std::exchange(base_, look.run);
    if (Is(node, "p"))
        Inlines(node, depth);
    else  // a formula that stands by itself
        MathText(node, depth);
    base_ = outer;
    EndParagraph(MarkDeleted(properties), mark.hidden || IsTableEnd(node), depth);
}

// A deleted mark joins the paragraph with the next one; a hidden one leaves no empty line.
void DocxWalker::EndParagraph(bool mark_deleted, bool mark_hidden, int depth) {
    if (mark_deleted) {
        joins_next_ = true;
    } else if (nesting_ == 0) {
        if (mark_hidden)
            writer_.EndIfBegun();
        else
            writer_.End();
    }
    if (!joins_next_)
        ShowBoxes(depth);
}

// A deleted mark with nothing behind it to join: the text's end, a table.
void DocxWalker::EndOpenParagraph(int depth) {
    joins_next_ = false;
    writer_.EndIfBegun();
    ShowBoxes(depth);
}

// Text boxes are paragraphs of their own behind the paragraph, or the table row, that anchors them.
void DocxWalker::ShowBoxes(int depth) {
    if (nesting_ > 0 || boxes_.empty())
        return;
    const std::vector<Node> boxes = std::exchange(boxes_, {});
    for (const Node& box : boxes) {
        Blocks(box, depth + 1);
        EndOpenParagraph(depth + 1);
    }
}

// Inside a cell the paragraphs are lines of one paragraph; those of a note stand behind each other.
void DocxWalker::BeginNested(bool joined) {
    if (!first_in_cell_ && !joined) {
        if (brackets_.InNote())
            brackets_.BreakInNote();
        else
            Put(kLineText, base_.chars);
    }
    first_in_cell_ = false;
}

void DocxWalker::Table(const Node& table, int depth) {
    if (depth > kMaxDepth) {
        end_ = ReadEnd::Fault(ReadError::Damaged, "the tables are nested too deeply");
        return;
    }
    for (const Node& row : table.children()) {
        const std::string_view name = LocalName(row);
        if (name == "tr")
            Row(row, depth);
        else if (name == "AlternateContent")
            Table(ChosenForm(row), depth + 1);
        else if (IsWrapper(name))
            Table(row, depth + 1);
    }
}

void DocxWalker::Row(const Node& row, int depth) {
    if (IsHiddenRow(row))
        return beside_.HiddenRow(row);
    const bool nested = nesting_ > 0;
    if (nested) {
        BeginNested(false);
    } else {
        EndOpenParagraph(depth);
        writer_.BeginRow();
        brackets_.BeginParagraph();
    }
    Cells(row, nested, depth + 1);
    if (!nested) {
        writer_.End();
        ShowBoxes(depth);
    }
}

// Deleted, hidden by its own property, or with nothing in it that is not hidden.
bool DocxWalker::IsHiddenRow(const Node& row) const {
    const Node properties = Child(row, "trPr");
    if (Child(properties, "del") || IsOn(Child(properties, "hidden")))
        return true;
    return HoldsParagraph(row, 0) && HidesAll(row, 0);
}

// True as well for what holds nothing.
bool DocxWalker::HidesAll(const Node& parent, int depth) const {
    return std::all_of(parent.begin(), parent.end(), [&](const Node& node) {
        const std::string_view name = LocalName(node);
        if (name == "p")
            return IsHiddenParagraph(node, depth + 1);
        return name.ends_with("Pr") || (depth < kMaxDepth && HidesAll(node, depth + 1));
    });
}

bool DocxWalker::IsHiddenParagraph(const Node& paragraph, int depth) const {
    const Node properties = Child(paragraph, "pPr");
    const RunLook base = styles_.Paragraph(properties).run;
    RunLook mark = base;
    styles_.ApplyRun(Child(properties, "rPr"), mark);
    if (!mark.hidden || depth > kMaxDepth)
        return false;
    return std::all_of(paragraph.begin(), paragraph.end(), [&](const Node& node) {
        const std::string_view name = LocalName(node);
        if (name != "r")
            return name == "pPr" || name == "del" || name == "moveFrom" ||
                   node.first_child().empty();
        RunLook look = base;
        styles_.ApplyRun(Child(node, "rPr"), look);
        return look.hidden;
    });
}

// Of a table in a cell or a note no more than a tab is shown.
void DocxWalker::EndCell(bool nested) {
    if (nested)
        return Put("\t", base_.chars);
    writer_.EndCell(base_.chars);
    brackets_.BeginParagraph();
}

void DocxWalker::Cells(const Node& row, bool nested, int depth) {
    for (const Node& cell : row.children()) {
        const std::string_view name = LocalName(cell);
        if (depth < kMaxDepth && IsWrapper(name))
            Cells(cell, nested, depth + 1);
        if (name != "tc")
            continue;
        ++nesting_;
        first_in_cell_ = true;
        if (!ContinuesCellAbove(cell))
            Blocks(cell, depth + 1);
        joins_next_ = false;
        --nesting_;
        EndCell(nested);
    }
    first_in_cell_ = false;
}

}  // namespace zorvane
