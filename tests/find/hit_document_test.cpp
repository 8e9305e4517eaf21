// A hit in other forms of its text: as a literal, and in its document as a whole.
#include "find/hit_document.h"

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "find/find_rows.h"
#include "find/string_to_code.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

TEST(PlaceInCode, FindsTheItemBehindWhatStandsBefore) {
    struct PlaceRow {
        std::string line;
        std::size_t begin;
        std::string item;
        std::int32_t at;
    };
    const PlaceRow rows[] = {
        {"abc needle", 4, "needle", 5}, {"needle needle", 7, "needle", 8},
        {"\"\" x x", 5, "x", 8},       // quotes before it are doubled
        {"a\tb a", 4, "a", 11},        // "a" &   "b a"
        {"\x01\x01x", 2, "x", 21},     // Chr$(1) & Chr$(1) & "x"
        {"say \"x\"", 4, "\"x\"", 5},  // doubled in itself
        {"none", 0, "other", -1},       {"any", 0, "", -1},
    };
    for (const PlaceRow& row : rows) {
        SCOPED_TRACE(StringToCode(row.line));
        EXPECT_EQ(PlaceInCode(row.line, row.begin, row.item).at, row.at);
    }
}

TEST(PlaceInDocument, FindsTheHitNearItsLine) {
    struct DocumentRow {
        const char* name;
        std::u16string text;
        std::int32_t line;
        std::int32_t column;
        const char* words;  ///< of the line
        std::int32_t at;
    };
    const DocumentRow rows[] = {
        {"as it was searched", u"one\r\na hit\r\na hit", 3, 3, "a hit", 14},
        {"lines in a paragraph count",
         u"one\x0B"
         u"a hit\r\nx",
         2, 3, "a hit", 6},
        {"the same line a little further", u"Slide 1\r\nShape 1\r\na hit here\r\nnext", 1, 3,
         "a hit here", 20},
        {"not a nearer line that has it too", u"hit\r\n\r\nthis hit\r\n", 1, 6, "this hit", 12},
        {"other blanks", u"one\r\nthe  hit\u00A0now", 2, 5, "the hit now", 10},
        {"the second of a line", u"hit and hit", 1, 9, "hit and hit", 8},
        {"a line that reads otherwise", u"one\r\n1.\thit", 2, 1, "hit", 8},
        {"gone", u"one\r\ntwo", 1, 1, "hit", 0},
    };
    for (const DocumentRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ShownHit hit{0, "", row.line, row.column, "hit", ""};
        const TextRange place = PlaceInDocument(row.text, hit, row.words);
        EXPECT_EQ(place.first.value, row.at);
        EXPECT_EQ(place.length, row.name == std::string("gone") ? -1 : 3);
    }
}

TEST(FoundInLine, CountsInUnitsOfTheWindow) {
    FoundInLine found({.text = "b*a", .syntax = FindSyntax::Simple});
    EXPECT_EQ(found(u"\U0001F600 BETA \u00E4 ba"), (std::vector<TextRange>{{CharPos{3}, 9}}));
    FoundInLine literal({.text = "ba"});
    EXPECT_EQ(literal(u"\U0001F600 ba \u00E4 BA"),
              (std::vector<TextRange>{{CharPos{3}, 2}, {CharPos{8}, 2}}));
    EXPECT_TRUE(FoundInLine({.text = ""})(u"any").empty());
}

TEST(ContextRows, ShowAPieceOfAVeryLongLine) {
    TempFolder folder;
    const std::string before(30'000, 'x');
    const std::string path =
        folder.Write("long.txt", "first\n" + before + "\xC3\xA4needle" + before + "\n");
    ContextRows rows;
    const ShownHit hit{0, path, 2, 30'002, "needle", ""};
    ASSERT_TRUE(ReadContextRows(
        path, hit, "UTF-8", [] { return false; }, rows));
    ASSERT_EQ(rows.rows.size(), 2U);
    EXPECT_EQ(rows.marked, 1);
    const std::string& row = rows.rows[1];
    EXPECT_LT(row.size(), 11'000U);
    EXPECT_TRUE(IsValidUtf8(row));
    EXPECT_EQ(row.substr(static_cast<std::size_t>(rows.item_at),
                         static_cast<std::size_t>(rows.item_length)),
              "needle");
    EXPECT_FALSE(ReadContextRows(
        path, hit, "UTF-8", [] { return true; }, rows));
}

}  // namespace
}  // namespace zorvane
