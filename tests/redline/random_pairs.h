// Seeded documents as values, and edits of every kind that the writers of redlines know.
#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/redline/odt_pair.h"

namespace zorvane::random_pairs {

constexpr const char* kWords[] = {"harbour", "lamp", "the", "of",   "keeper",  "12",  "tide",
                                  "sails",   "a",    "in",  "rain", "morning", "340", "quay"};

// A document as a value, so that it can be edited.
using Rows = std::vector<std::vector<std::string>>;
struct Block {
    std::vector<std::string> words;
    Rows rows;  // of a table; none for a paragraph
    std::string note;
    bool bold = false;
    bool list = false;
    bool link = false;
    bool box = false;
    bool picture = false;
};
using Story = std::vector<Block>;

// The kinds of edits, as they are told when a pair fails. pandoc 2.17 reads a marked row as an
// empty one, leaves out boxes, and pictures in changes, and does not join items of a list; what
// joins paragraphs it puts into a note of the second one.
enum class ByPandoc { Read, WithoutNotes, NotRead };
struct EditKind {
    const char* name;
    ByPandoc pandoc;
};
enum Edit : std::size_t {
    Word,
    Number,
    Insert,
    InsertTable,
    Delete,
    Split,
    Join,
    Move,
    MoveTable,
    NoteText,
    Look,
    List,
    Link,
    Box,
    Picture,
    CellText,
    RowMore,
    RowLess,
    ColumnMore,
    ColumnLess,
    OtherCells,
    EditCount
};
constexpr EditKind kEdits[EditCount] = {
    {"a word", ByPandoc::Read},
    {"a number", ByPandoc::Read},
    {"a paragraph more", ByPandoc::WithoutNotes},
    {"a table more", ByPandoc::NotRead},
    {"a block less", ByPandoc::NotRead},
    {"a split", ByPandoc::WithoutNotes},
    {"a join", ByPandoc::WithoutNotes},
    {"a move", ByPandoc::WithoutNotes},
    {"a table's move", ByPandoc::NotRead},
    {"a note", ByPandoc::Read},
    {"a look", ByPandoc::Read},
    {"a list", ByPandoc::NotRead},
    {"a link", ByPandoc::Read},
    {"a text box", ByPandoc::NotRead},
    {"a picture", ByPandoc::NotRead},
    {"a cell's text", ByPandoc::Read},
    {"a row more", ByPandoc::NotRead},
    {"a row less", ByPandoc::NotRead},
    {"a column more", ByPandoc::NotRead},
    {"a column less", ByPandoc::NotRead},
    {"a row of other cells", ByPandoc::NotRead},
};

class Generator {
  public:
    explicit Generator(std::uint32_t seed) : random_(seed) {}

    Story MakeStory() {
        Story story;
        for (std::size_t i = 3 + Below(8); i > 0; --i)
            story.push_back(Below(5) == 0 ? MakeTable() : MakeParagraph());
        story.push_back(MakeParagraph());
        return story;
    }

    // Gives the name of what was done; where that cannot be done here, the text is left alone.
    const char* Change(Story& story, Edit edit) {
        const std::size_t at = Below(story.size());
        Block& block = story[at];
        const auto place = story.begin() + static_cast<std::ptrdiff_t>(at);
        if (edit >= CellText)
            return EditTable(story, edit);
        switch (edit) {
            case Insert:
            case InsertTable:
                story.insert(place, edit == Insert ? MakeParagraph() : MakeTable());
                break;
            case Delete:
                if (at + 1 < story.size())
                    story.erase(place);
                break;
            case Move:
            case MoveTable:
                if (at + 1 < story.size() && block.rows.empty() == (edit == Move))
                    std::rotate(place, place + 1, story.end() - 1);
                break;
            default:
                return block.rows.empty() ? EditParagraph(story, at, edit) : "nothing";
        }
        return kEdits[edit].name;
    }

    std::size_t Below(std::size_t end) { return random_() % end; }
    Edit AnyEdit() { return static_cast<Edit>(Below(EditCount)); }

  private:
    std::string AnyWord() { return kWords[Below(std::size(kWords))]; }

    Block MakeParagraph() {
        Block block;
        for (std::size_t i = Below(14); i > 0; --i)
            block.words.push_back(AnyWord());
        block.bold = Below(4) == 0;
        block.list = Below(5) == 0;
        block.link = Below(6) == 0;
        block.box = Below(8) == 0;
        block.picture = Below(8) == 0;
        if (Below(5) == 0)
            block.note = AnyWord() + " " + AnyWord();
        return block;
    }

    Block MakeTable() {
        Block block;
        block.rows.resize(1 + Below(4));
        const std::size_t columns = 1 + Below(3);
        for (auto& row : block.rows) {
            for (std::size_t i = 0; i < columns; ++i)
                row.push_back(AnyWord() + " " + AnyWord());
        }
        return block;
    }

    const char* EditTable(Story& story, Edit edit) {
        const auto table = std::find_if(story.begin(), story.end(),
                                        [](const Block& block) { return !block.rows.empty(); });
        if (table == story.end())
            return "nothing";
        Rows& rows = table->rows;
        auto& row = rows[Below(rows.size())];
        const std::size_t column = Below(row.size());
        if (edit == CellText)
            row[column] = AnyWord();
        else if (edit == RowMore)
            rows.insert(rows.begin() + (&row - rows.data()), row);
        else if (edit == RowLess && rows.size() > 1)
            rows.erase(rows.begin() + (&row - rows.data()));
        else if (edit == OtherCells)
            row.push_back(AnyWord());
        for (auto& each : rows) {
            const auto cell =
                each.begin() + static_cast<std::ptrdiff_t>(std::min(column, each.size() - 1));
            if (edit == ColumnMore)
                each.insert(cell, AnyWord());
            else if (edit == ColumnLess && each.size() > 1)
                each.erase(cell);
        }
        return kEdits[edit].name;
    }

    const char* EditParagraph(Story& story, std::size_t at, Edit edit) {
        Block& block = story[at];
        if (edit == Split) {
            SplitAt(story, at);
        } else if (edit == Join) {
            JoinAt(story, at);
        } else if (edit == NoteText) {
            block.note = block.note.empty() ? AnyWord() + " note" : Below(2) ? "" : AnyWord();
        } else if (edit == Word || edit == Number) {
            EditWords(block.words, edit == Number);
        } else {
            for (const auto& [kind, flag] :
                 {std::pair{Look, &Block::bold}, std::pair{List, &Block::list},
                  std::pair{Link, &Block::link}, std::pair{Box, &Block::box},
                  std::pair{Picture, &Block::picture}}) {
                if (edit == kind)
                    block.*flag = !(block.*flag);
            }
        }
        return kEdits[edit].name;
    }

    void EditWords(std::vector<std::string>& words, bool number) {
        const std::size_t at = Below(words.size() + 1);
        const std::string word = number ? std::to_string(Below(1000)) : AnyWord();
        if (at == words.size() || Below(3) == 0)
            words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), word);
        else if (Below(2) == 0)
            words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
        else
            words[at] = word;
    }

    static void SplitAt(Story& story, std::size_t at) {
        Block tail = story[at];
        const auto half = static_cast<std::ptrdiff_t>(tail.words.size() / 2);
        tail.words.erase(tail.words.begin(), tail.words.begin() + half);
        story[at].words.resize(static_cast<std::size_t>(half));
        story[at].note.clear();
        story.insert(story.begin() + static_cast<std::ptrdiff_t>(at) + 1, tail);
    }

    static void JoinAt(Story& story, std::size_t at) {
        if (at + 1 >= story.size() || !story[at + 1].rows.empty())
            return;
        const std::vector<std::string>& more = story[at + 1].words;
        story[at].words.insert(story[at].words.end(), more.begin(), more.end());
        story.erase(story.begin() + static_cast<std::ptrdiff_t>(at) + 1);
    }

    std::mt19937 random_;
};

// Runs end at places of their own on each side, as in two programs.
template <class Put>
void ForRuns(const Block& block, std::size_t cut, const Put& put) {
    std::string text;
    for (std::size_t i = 0; i <= block.words.size(); ++i) {
        const bool ends = i == block.words.size() || i % cut == cut - 1;
        if (ends && !text.empty())
            put(std::exchange(text, {}));
        if (i < block.words.size())
            text += (i == 0 ? "" : " ") + block.words[i];
    }
}

inline std::string Shown(const Block& block, std::size_t cut, PairFile& file, std::size_t& notes) {
    std::string content;
    ForRuns(block, cut,
            [&](const std::string& text) { content += TextRun(text, block.bold ? "<w:b/>" : ""); });
    if (block.link)
        content += "<w:hyperlink r:id=\"rl\">" + TextRun(" link") + "</w:hyperlink>";
    if (block.box)
        content +=
            "<w:r><w:pict><w:txbxContent>" + Paragraph("box") + "</w:txbxContent></w:pict></w:r>";
    if (block.picture)
        content += "<w:r><w:drawing><a:blip r:embed=\"rp\"/></w:drawing></w:r>";
    if (!block.note.empty()) {
        const std::string id = std::to_string(++notes);
        file.footnotes += Note(id, block.note);
        content += NoteReference(id);
    }
    return "<w:p>" +
           std::string(block.list ? "<w:pPr><w:numPr><w:numId w:val=\"1\"/></w:numPr></w:pPr>"
                                  : "") +
           content + "</w:p>";
}

inline std::string FileOf(const Story& story, std::size_t cut, const std::string& header) {
    PairFile file;
    file.picture = "picture";
    std::size_t notes = 0;
    for (const Block& block : story) {
        if (block.rows.empty()) {
            file.body += Shown(block, cut, file, notes);
            continue;
        }
        std::string rows;
        for (const auto& row : block.rows) {
            rows += "<w:tr>";
            for (const std::string& cell : row)
                rows += Cell(cell);
            rows += "</w:tr>";
        }
        file.body += Table(rows);
    }
    file.header = header.empty() ? "" : Paragraph(header);
    file.numbering =
        "<w:abstractNum w:abstractNumId=\"0\"><w:lvl w:ilvl=\"0\"/></w:abstractNum>"
        "<w:num w:numId=\"1\"><w:abstractNumId w:val=\"0\"/></w:num>";
    return MakePairFile(file);
}

// The same story as another program writes it.
inline std::string ShownInOdt(const Block& block, std::size_t cut) {
    std::string content;
    ForRuns(block, cut,
            [&](const std::string& text) { content += block.bold ? OdtSpan(text, "T1") : text; });
    if (block.link)
        content += "<text:a xlink:href=\"http://example.org/\">link</text:a>";
    if (block.box)
        content +=
            "<draw:frame><draw:text-box>" + OdtParagraph("box") + "</draw:text-box></draw:frame>";
    if (block.picture)
        content += "<draw:frame><draw:image xlink:href=\"Pictures/p.png\"/></draw:frame>";
    if (!block.note.empty())
        content += OdtNote(block.note);
    const std::string paragraph = OdtParagraph(content, block.bold ? "P2" : "P1");
    return block.list ? "<text:list text:style-name=\"L1\"><text:list-item>" + paragraph +
                            "</text:list-item></text:list>"
                      : paragraph;
}

inline std::string OdtOf(const Story& story, std::size_t cut, const std::string& header) {
    OdtFile file;
    file.picture = "picture";
    file.header = header.empty() ? "" : OdtParagraph(header);
    file.styles = OdtStyle("T1", "text", "fo:font-weight=\"bold\"") +
                  OdtStyle("P2", "paragraph", cut == 3 ? "fo:color=\"#123456\"" : "");
    for (const Block& block : story) {
        if (block.rows.empty()) {
            file.body += ShownInOdt(block, cut);
            continue;
        }
        std::string rows;
        for (const auto& row : block.rows) {
            rows += "<table:table-row>";
            for (const std::string& cell : row)
                rows += "<table:table-cell>" + OdtParagraph(cell) + "</table:table-cell>";
            rows += "</table:table-row>";
        }
        file.body += OdtTable(rows, block.rows[0].size());
    }
    return MakeOdtFile(file);
}

}  // namespace zorvane::random_pairs
