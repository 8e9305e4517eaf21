// The walk through a WordprocessingML document, from its elements to paragraphs. Source: ECMA-376
// part 1, 17.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "load/readers/container/xml_part.h"
#include "load/readers/ooxml/alternate_content.h"
#include "load/readers/ooxml/docx_beside.h"
#include "load/readers/ooxml/docx_numbering.h"
#include "load/readers/ooxml/docx_styles.h"
#include "load/readers/sink/note_brackets.h"
#include "load/readers/word_readers.h"

namespace zorvane {

/// One document; read once.
class DocxWalker {
  public:
    DocxWalker(Package& package, DocumentSink& sink, ReadMonitor& monitor)
        : package_(package), monitor_(monitor), writer_(sink), beside_(package, styles_, sink) {}

    ReadEnd Read();

  private:
    using Node = pugi::xml_node;
    using Notes = std::unordered_map<std::string, Node>;

    // The package: docx_reader.cpp.
    std::string MainPart();
    void ReadParts();
    bool ReadPart(const std::string& name, XmlPart& part);
    void ReadNotes(const std::string& name, XmlPart& part, Notes& notes);
    void ReadSettings(const std::string& name);
    void HeadersAndFooters(const Node& document);
    bool Shown(const Node& reference, const Node& section) const;
    void HeaderPart(const std::string& relationship, std::set<std::string>& seen);

    // Blocks: docx_blocks.cpp.
    void Blocks(const Node& parent, int depth);
    void Block(const Node& node, int depth);
    void Paragraph(const Node& node, int depth);
    void EndParagraph(bool mark_deleted, bool mark_hidden, int depth);
    void EndOpenParagraph(int depth);
    void ShowBoxes(int depth);
    void BeginNested(bool joined);
    void Table(const Node& table, int depth);
    void Row(const Node& row, int depth);
    bool IsHiddenRow(const Node& row) const;
    bool HidesAll(const Node& parent, int depth) const;
    bool IsHiddenParagraph(const Node& paragraph, int depth) const;
    void Cells(const Node& row, bool nested, int depth);
    void EndCell(bool nested);

    // Inside a paragraph: docx_inline.cpp.
    void Inlines(const Node& parent, int depth);
    void Run(const Node& run, int depth);
    void TakeInline(const Node& node, const RunLook& look, int depth);
    void Characters(const Node& node, const RunLook& look);
    void Break(const RunLook& look);
    void Write(std::string_view utf8, const RunLook& look);
    void Put(std::string_view utf8, const CharFormat& format);
    void RunText(const Node& node, const RunLook& look);
    void Symbol(const Node& node, const RunLook& look);
    void FieldMark(const Node& node, const RunLook& look);
    void CheckBox(const Node& box, const RunLook& look);
    bool InInstruction() const;
    void Ruby(const Node& ruby, int depth);
    void MathText(const Node& node, int depth);
    void TakeNote(const Node& reference, const Notes& notes, int depth);
    void Note(const Node& note, int depth);
    void Alternate(const Node& node, const RunLook& look, int depth);
    void CollectBoxes(const Node& node, const RunLook& look, int depth);

    Package& package_;
    ReadMonitor& monitor_;
    ParagraphWriter writer_;
    NoteBrackets brackets_;
    std::unordered_map<std::string, Relationship> parts_;
    DocxStyles styles_;
    DocxNumbering numbering_;
    XmlPart footnotes_part_;
    XmlPart endnotes_part_;
    Notes footnotes_;
    Notes endnotes_;
    ReadEnd end_;
    RunLook base_;                      ///< of the paragraph at work
    std::vector<Node> boxes_;           ///< anchored in the paragraph or the row at work
    std::vector<bool> in_instruction_;  ///< one for each open field
    std::vector<Node> notes_due_;       ///< whose mark is the text that ends the run at work
    int nesting_ = 0;                   ///< open cells and notes
    bool first_in_cell_ = true;
    bool joins_next_ = false;
    bool even_pages_differ_ = false;
    std::string scratch_;
    std::int64_t done_ = 0;
    std::int64_t total_ = 0;
    DocxBeside beside_;
};

/// Of a property that is on when it is there, unless its value says otherwise.
bool IsOn(const pugi::xml_node& property);

}  // namespace zorvane
