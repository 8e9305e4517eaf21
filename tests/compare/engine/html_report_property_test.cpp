// Every paragraph of both sides is on the page once, with its number and all its text.
#include <algorithm>

#include "tests/support/compared_pair.h"
#include "tests/support/html_rows.h"

namespace zorvane {
namespace {

struct Column {
    std::vector<std::string> numbers;
    std::string text;
    friend bool operator==(const Column&, const Column&) = default;
};

std::string WithoutBlanks(std::string text) {
    const std::string pilcrow = "\u00B6";
    for (std::size_t at = text.find(pilcrow); at != std::string::npos; at = text.find(pilcrow))
        text.erase(at, pilcrow.size());
    std::erase_if(text, [](char character) { return character == ' ' || character == '\t'; });
    return text;
}

void TakeNumber(const HtmlNode& gutter, Column& column) {
    const std::string number = gutter.Text("i");
    if (!number.empty())
        column.numbers.push_back(number);
}

// What a row shows of each side. A paragraph that moved shows both its texts at the new place.
void TakeRow(const HtmlNode& row, bool one, PerSide<Column>& columns) {
    if (row.children.back().Has("\"k\""))
        return;
    if (one) {
        const HtmlNode& text = row.children.back();
        const bool has_original = !row.children[0].Text("i").empty();
        TakeNumber(row.children[0], columns.original);
        TakeNumber(row.children[1], columns.modified);
        if (!row.Has("r m") || has_original)
            columns.original.text += text.Text("ins");
        if (!row.Has("r m") || !has_original)
            columns.modified.text += text.Text("del");
        return;
    }
    std::size_t at = 0;
    for (const Side side : kBothSides) {
        if (row.children.at(at).Has(" class=\"n")) {
            ++at;
            continue;
        }
        TakeNumber(row.children.at(at), columns[side]);
        columns[side].text += row.children.at(at + 1).Text(side == Side::Modified ? "del" : "-");
        at += 2;
    }
    EXPECT_EQ(at, row.children.size());
}

Column Expected(const TextLines& paragraphs) {
    Column column;
    for (const std::string& paragraph : paragraphs) {
        column.numbers.push_back(std::to_string(column.numbers.size() + 1));
        column.text += paragraph;
    }
    column.text = WithoutBlanks(column.text);
    return column;
}

// Edited, with a long paragraph that stands elsewhere, changed a little, in every other round.
TextLines EditedAndMoved(std::mt19937& random, TextLines& original, bool moves) {
    TextLines modified = EditedParagraphs(random, original);
    if (!moves)
        return modified;
    std::string wanderer;
    for (int i = 0; i < 14; ++i)
        wanderer += "word" + std::to_string(random() % 1000) + " ";
    original.insert(original.begin(), wanderer + "old");
    modified.push_back(wanderer + (random() % 2 == 0 ? "new" : "old"));
    return modified;
}

TEST(HtmlReportProperty, ShowsEveryParagraphOnceWithItsNumber) {
    std::mt19937 random(3);
    std::size_t moves = 0;
    for (unsigned round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        TextLines original = RandomParagraphs(random, random() % 50);
        const TextLines modified = EditedAndMoved(random, original, round % 5 < 2);
        const ComparedPair pair(
            original, modified,
            {.ignore_empty_lines = round % 3 == 1, .by_character = round % 4 < 2});
        moves += pair.comparison().moves.size();
        const bool one = round % 2 == 0;
        const HtmlNode page =
            ParsedPage(WriteHtmlReport(pair.Model(), one ? kAllInOne : kSideBySide));
        PerSide<Column> columns;
        for (const HtmlNode& row : RowsOf(page))
            TakeRow(row, one, columns);
        for (const Side side : kBothSides) {
            columns[side].text = WithoutBlanks(columns[side].text);
            const Column expected = Expected(side == Side::Original ? original : modified);
            ASSERT_EQ(columns[side].numbers, expected.numbers);
            ASSERT_EQ(columns[side].text, expected.text);
        }
    }
    EXPECT_GT(moves, 50U);
}

}  // namespace
}  // namespace zorvane
