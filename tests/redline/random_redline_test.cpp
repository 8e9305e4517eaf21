// Seeded pairs with many edits at once, of every kind that the writer knows.
#include <cstdlib>
#include <random>
#include <vector>

#include "tests/redline/odt_pair.h"

namespace zorvane {
namespace {

constexpr const char* kWords[] = {"harbour", "lamp", "the", "of",   "keeper",  "12",  "tide",
                                  "sails",   "a",    "in",  "rain", "morning", "340", "quay"};

// A document as a value, so that it can be edited.
struct Cells {
    std::vector<std::vector<std::string>> rows;
};
struct Block {
    std::vector<std::string> words;
    std::vector<Cells> table;  // one, or none for a paragraph
    std::string note;
    bool bold = false;
    bool list = false;
    bool link = false;
    bool box = false;
};
using Story = std::vector<Block>;

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

    void Edit(Story& story) {
        const std::size_t at = Below(story.size());
        Block& block = story[at];
        const auto place = story.begin() + static_cast<std::ptrdiff_t>(at);
        if (!block.table.empty())
            return Below(4) == 0 ? void(story.erase(place)) : EditTable(block.table[0]);
        switch (Below(9)) {
            case 0:
                story.insert(place, Below(3) == 0 ? MakeTable() : MakeParagraph());
                return;
            case 1:
                if (at + 1 < story.size())
                    story.erase(place);
                return;
            case 2:
                return Split(story, at);
            case 3:
                return Join(story, at);
            case 4:
                block.note = block.note.empty() ? Word() + " note" : Below(2) ? "" : Word();
                return;
            case 5:
                block.bold = !block.bold;
                return;
            case 6:
                (Below(2) ? block.link : block.box) ^= true;
                return;
            default:
                EditWords(block.words);
        }
    }

    std::size_t Below(std::size_t end) { return random_() % end; }

  private:
    std::string Word() { return kWords[Below(std::size(kWords))]; }

    Block MakeParagraph() {
        Block block;
        for (std::size_t i = Below(14); i > 0; --i)
            block.words.push_back(Word());
        block.bold = Below(4) == 0;
        block.list = Below(5) == 0;
        block.link = Below(6) == 0;
        block.box = Below(8) == 0;
        if (Below(5) == 0)
            block.note = Word() + " " + Word();
        return block;
    }

    Block MakeTable() {
        Block block;
        block.table.emplace_back();
        const std::size_t columns = 1 + Below(3);
        for (std::size_t row = 1 + Below(4); row > 0; --row) {
            block.table[0].rows.emplace_back();
            for (std::size_t i = 0; i < columns; ++i)
                block.table[0].rows.back().push_back(Word() + " " + Word());
        }
        return block;
    }

    void EditTable(Cells& cells) {
        auto& rows = cells.rows;
        auto& row = rows[Below(rows.size())];
        const auto place = rows.begin() + (&row - rows.data());
        switch (Below(4)) {
            case 0:
                rows.insert(place, row);
                return;
            case 1:
                if (rows.size() > 1)
                    rows.erase(place);
                return;
            case 2:
                row.push_back(Word());
                return;
            default:
                row[Below(row.size())] = Word();
        }
    }

    void EditWords(std::vector<std::string>& words) {
        const std::size_t at = Below(words.size() + 1);
        if (at == words.size() || Below(3) == 0)
            words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), Word());
        else if (Below(2) == 0)
            words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
        else
            words[at] = Word();
    }

    void Split(Story& story, std::size_t at) {
        Block tail = story[at];
        const auto half = static_cast<std::ptrdiff_t>(tail.words.size() / 2);
        tail.words.erase(tail.words.begin(), tail.words.begin() + half);
        story[at].words.resize(static_cast<std::size_t>(half));
        story[at].note.clear();
        story.insert(story.begin() + static_cast<std::ptrdiff_t>(at) + 1, tail);
    }

    void Join(Story& story, std::size_t at) {
        if (at + 1 >= story.size() || !story[at + 1].table.empty())
            return;
        const std::vector<std::string>& more = story[at + 1].words;
        story[at].words.insert(story[at].words.end(), more.begin(), more.end());
        story.erase(story.begin() + static_cast<std::ptrdiff_t>(at) + 1);
    }

    std::mt19937 random_;
};

// Words cut into runs at places of its own for each side, as two programs would.
std::string Shown(const Block& block, std::size_t cut, PairFile& file, std::size_t& notes) {
    std::string content;
    std::string text;
    const auto flush = [&] {
        if (!text.empty())
            content += TextRun(text, block.bold ? "<w:b/>" : "");
        text.clear();
    };
    for (std::size_t i = 0; i < block.words.size(); ++i) {
        if (i % cut == cut - 1)
            flush();
        text += (i == 0 ? "" : " ") + block.words[i];
    }
    flush();
    if (block.link)
        content += "<w:hyperlink r:id=\"rl\">" + TextRun(" link") + "</w:hyperlink>";
    if (block.box)
        content +=
            "<w:r><w:pict><w:txbxContent>" + Paragraph("box") + "</w:txbxContent></w:pict></w:r>";
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

std::string FileOf(const Story& story, std::size_t cut, const std::string& header) {
    PairFile file;
    std::size_t notes = 0;
    for (const Block& block : story) {
        if (block.table.empty()) {
            file.body += Shown(block, cut, file, notes);
            continue;
        }
        std::string rows;
        for (const auto& row : block.table[0].rows) {
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
std::string ShownInOdt(const Block& block, std::size_t cut) {
    std::string content;
    std::string text;
    const auto flush = [&] {
        content += block.bold && !text.empty() ? OdtSpan(text, "T1") : text;
        text.clear();
    };
    for (std::size_t i = 0; i < block.words.size(); ++i) {
        if (i % cut == cut - 1)
            flush();
        text += (i == 0 ? "" : " ") + block.words[i];
    }
    flush();
    if (block.link)
        content += "<text:a xlink:href=\"http://example.org/\">link</text:a>";
    if (block.box)
        content +=
            "<draw:frame><draw:text-box>" + OdtParagraph("box") + "</draw:text-box></draw:frame>";
    if (!block.note.empty())
        content += OdtNote(block.note);
    const std::string paragraph = OdtParagraph(content, block.bold ? "P2" : "P1");
    return block.list ? "<text:list text:style-name=\"L1\"><text:list-item>" + paragraph +
                            "</text:list-item></text:list>"
                      : paragraph;
}

std::string OdtOf(const Story& story, std::size_t cut, const std::string& header) {
    OdtFile file;
    file.header = header.empty() ? "" : OdtParagraph(header);
    file.styles = OdtStyle("T1", "text", "fo:font-weight=\"bold\"") +
                  OdtStyle("P2", "paragraph", cut == 3 ? "fo:color=\"#123456\"" : "");
    for (const Block& block : story) {
        if (block.table.empty()) {
            file.body += ShownInOdt(block, cut);
            continue;
        }
        std::string rows;
        for (const auto& row : block.table[0].rows) {
            rows += "<table:table-row>";
            for (const std::string& cell : row)
                rows += "<table:table-cell>" + OdtParagraph(cell) + "</table:table-cell>";
            rows += "</table:table-row>";
        }
        file.body += OdtTable(rows, block.table[0].rows[0].size());
    }
    return MakeOdtFile(file);
}

// ZORVANE_REDLINE_PAIRS=1000 for a long look.
std::uint32_t Pairs() {
    constexpr std::uint32_t kEveryday = 150;
    const char* const asked = std::getenv("ZORVANE_REDLINE_PAIRS");
    return asked == nullptr ? kEveryday : static_cast<std::uint32_t>(std::atoi(asked));
}

TEST(RandomRedline, GivesBothDocumentsBack) {
    for (std::uint32_t seed = 0; seed < Pairs(); ++seed) {
        SCOPED_TRACE(seed);
        Generator generator(seed);
        Story story = generator.MakeStory();
        const std::string original = FileOf(story, 3, seed % 3 ? "head of it" : "");
        const std::string old_odt = OdtOf(story, 3, seed % 3 ? "head of it" : "");
        for (std::size_t i = 1 + generator.Below(8); i > 0; --i)
            generator.Edit(story);
        const std::string modified = FileOf(story, 4, seed % 4 ? "head of all" : "");
        const std::string new_odt = OdtOf(story, 4, seed % 4 ? "head of all" : "");
        EXPECT_EQ(OdtLawBreach(old_odt, new_odt, OdtRedlineOf(old_odt, new_odt)), "");
        RedlineRequest request;
        for (const bool looks : {false, true}) {
            request.track_formatting = looks;
            const WrittenRedline written = RedlineOf(original, modified, request);
            EXPECT_EQ(LawBreach(original, modified, written.bytes, written.headers_left_out, looks),
                      "");
        }
    }
}

}  // namespace
}  // namespace zorvane
