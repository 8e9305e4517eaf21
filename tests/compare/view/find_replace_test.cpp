// Find and replace by their rules, against a plain search of the whole text.
#include "compare/view/find_replace.h"

#include <random>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/document/memory_editor.h"
#include "tests/support/printers.h"

namespace zorvane::find_replace_test {
namespace {

class FindReplaceTest : public ::testing::Test {
  protected:
    void Begin(const std::string& text, std::int32_t caret = 0) {
        editor.SetText(ToUtf16(text));
        editor.Select({CharPos{caret}, 0});
        find.Open(editor);
    }
    std::string Text() const { return ToUtf8(editor.Text()); }
    std::int32_t At() const { return editor.Selection().first.value; }

    MemoryEditor editor;
    std::vector<std::string> messages;
    frmCompareFilesFindReplace find{[this](const char* text) { messages.emplace_back(text); }};
};

struct FindRow {
    const char* name;
    const char* text;
    const char* find;
    bool whole_word;
    bool match_case;
    std::vector<std::int32_t> hits;  // of as many presses
};
const FindRow kFindRows[] = {
    {"each after the other, then the first", "a b a b a", "a", false, false, {0, 4, 8, 0}},
    {"the only hit again", "one two", "two", false, false, {4, 4}},
    {"hits may overlap", "aaaa", "aa", false, false, {0, 1, 2, 0}},
    {"any case", "Rent RENT rent", "rEnt", false, false, {0, 5, 10}},
    {"the exact case", "Rent RENT rent", "rent", false, true, {10, 10}},
    {"any case of any alphabet", "STRASSE Ärger ÄRGER", "ärger", false, false, {8, 14}},
    {"a whole word at both ends", "rent, rents, current rent", "rent", true, false, {0, 21, 0}},
    {"a digit rules out", "7rent rent7 rent", "rent", true, false, {12, 12}},
    {"an underscore rules out", "rent_a _rent rent.", "rent", true, false, {13}},
    {"a bracket does not", "[rent] {rent}", "rent", true, false, {1, 8}},
    {"a letter beyond ASCII rules out", "Größe Gr", "gr", true, false, {6}},
    {"writing without blanks has no words", "契約書契約", "契約", true, false, {0, 3}},
    {"beside a break", "x\nrent\nx", "rent", true, false, {3}},
    {"blanks are text", "a  b a b", "a b", false, false, {5}},
    {"a pair of units", "x 😀 y", "😀", true, false, {2, 2}},
};
TEST_F(FindReplaceTest, FindsByItsRules) {
    for (const FindRow& row : kFindRows) {
        SCOPED_TRACE(row.name);
        Begin(row.text);
        find.Text1 = row.find;
        find.Check1 = row.whole_word;
        find.Check2 = row.match_case;
        for (const std::int32_t hit : row.hits) {
            EXPECT_TRUE(find.Command1_Click());
            EXPECT_EQ(
                editor.Selection(),
                (TextRange{CharPos{hit}, static_cast<std::int32_t>(ToUtf16(row.find).size())}));
        }
    }
    EXPECT_TRUE(messages.empty());
}

TEST_F(FindReplaceTest, SaysThatNothingIsThere) {
    Begin("Rent", 2);
    for (const char* text : {"rents", "xyz", ""}) {
        find.Text1 = text;
        EXPECT_FALSE(find.Command1_Click());
        EXPECT_FALSE(find.FindPrevious());
        EXPECT_FALSE(find.Command2_Click());
        EXPECT_EQ(find.ReplaceAll(), 0);
        EXPECT_EQ(At(), 2) << "the caret stays";
    }
    EXPECT_EQ(messages, std::vector<std::string>(12, "Nothing found"));
    Begin("");
    find.Text1 = "a";
    EXPECT_FALSE(find.Command1_Click());
}

TEST_F(FindReplaceTest, BeginsBehindTheSelection) {
    Begin("a a a a", 3);
    find.Text1 = "a";
    EXPECT_TRUE(find.Command1_Click());
    EXPECT_EQ(At(), 4);
    editor.Select({CharPos{0}, 1});  // the user's own
    EXPECT_TRUE(find.Command1_Click());
    EXPECT_EQ(At(), 2);
    EXPECT_TRUE(find.FindPrevious());
    EXPECT_EQ(At(), 0);
    EXPECT_TRUE(find.FindPrevious());
    EXPECT_EQ(At(), 6) << "round the other way";
    find.cmdDone_Click();
    EXPECT_FALSE(find.Command1_Click());
    find.Open(editor);
    EXPECT_EQ(find.Text1, "a") << "the fields come back";
    EXPECT_TRUE(find.Command1_Click());
    EXPECT_EQ(At(), 0);
}

TEST_F(FindReplaceTest, ReplacesAndGoesOnBehindTheNewText) {
    Begin("a b a b a");
    find.Text1 = "a";
    find.Text2 = "aa";
    EXPECT_TRUE(find.Command2_Click());
    EXPECT_EQ(Text(), "a b a b a") << "nothing was selected yet";
    EXPECT_TRUE(find.Command2_Click());
    EXPECT_EQ(Text(), "aa b a b a");
    EXPECT_EQ(At(), 5);
    EXPECT_TRUE(find.Command2_Click());
    EXPECT_TRUE(find.Command2_Click());
    EXPECT_EQ(Text(), "aa b aa b aa");
    EXPECT_EQ(At(), 0) << "round again";
    find.Text2 = "";
    EXPECT_TRUE(find.Command2_Click());
    EXPECT_EQ(Text(), "a b aa b aa");
    find.Text2 = "x\ny";
    EXPECT_TRUE(find.Command2_Click());
    EXPECT_EQ(Text(), "x\r\ny b aa b aa");
}

TEST_F(FindReplaceTest, ReplacesAll) {
    Begin("aaa Rent rents RENT", 5);
    find.Text1 = "aa";
    find.Text2 = "aaa";
    EXPECT_EQ(find.ReplaceAll(), 1) << "what was put in is not searched";
    EXPECT_EQ(Text(), "aaaa Rent rents RENT");
    find.Text1 = "rent";
    find.Text2 = "lease";
    find.Check1 = true;
    EXPECT_EQ(find.ReplaceAll(), 2);
    EXPECT_EQ(Text(), "aaaa lease rents lease");
    EXPECT_TRUE(messages.empty());
}

// All hits of a text by looking at every place.
std::vector<TextRange> PlainHits(const std::u16string& text, const SearchRules& rules) {
    const auto folded = [&](const std::u16string& some) {
        return rules.match_case ? some : FoldCase(some);
    };
    const auto part_of_word = [&](std::size_t at) {
        const char16_t unit = at < text.size() ? text[at] : u' ';
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
               unit == u'\u00E4';
    };
    std::vector<TextRange> hits;
    for (std::size_t at = 0; at + rules.text.size() <= text.size(); ++at) {
        if (folded(text.substr(at, rules.text.size())) != folded(rules.text))
            continue;
        const std::size_t end = at + rules.text.size();
        if (rules.whole_word && ((at > 0 && part_of_word(at - 1)) || part_of_word(end)))
            continue;
        hits.push_back(
            {CharPos{static_cast<std::int32_t>(at)}, static_cast<std::int32_t>(rules.text.size())});
    }
    return hits;
}

// Long enough for three stretches, with hits and breaks across their borders.
TEST(TextSearch, AgreesWithAPlainSearchOfLongTexts) {
    std::mt19937 random(3);
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        std::u16string text;
        const std::u16string_view pieces[] = {u"ab",     u"aB ", u"\r\n",      u"a",
                                              u"\u00E4", u" ",   u"\U0001F600"};
        while (text.size() < 140000)
            text += pieces[random() % std::size(pieces)];
        MemoryEditor editor;
        editor.SetText(text);
        const SearchRules rules{round % 4 == 0   ? u"ab"
                                : round % 4 == 1 ? u"b \r\n"
                                : round % 4 == 2 ? u"aba"
                                                 : u"\U0001F600a",
                                round % 2 == 0, round % 3 == 0};
        const TextSearch search(rules);
        const std::vector<TextRange> hits = PlainHits(text, rules);
        ASSERT_FALSE(hits.empty());
        EXPECT_EQ(search.Touching(editor, {CharPos{0}, editor.Length()}), hits);
        for (int i = 0; i < 40; ++i) {
            const CharPos from{static_cast<std::int32_t>(random() % text.size())};
            const CharPos before{static_cast<std::int32_t>(random() % text.size())};
            std::optional<TextRange> first;
            std::optional<TextRange> last;
            for (const TextRange& hit : hits) {
                if (hit.first < from || hit.first >= before)
                    continue;
                first = first ? first : hit;
                last = hit;
            }
            EXPECT_EQ(search.First(editor, from, before), first);
            EXPECT_EQ(search.Last(editor, from, before), last);
        }
        std::vector<TextRange> apart;
        for (const TextRange& hit : hits) {
            if (apart.empty() || hit.first >= apart.back().end())
                apart.push_back(hit);
        }
        EXPECT_EQ(search.All(editor), apart);
    }
}

TEST(TextSearch, MarksWhatIsPartlyInSight) {
    MemoryEditor editor;
    editor.SetText(u"abc abc abc");
    const TextSearch search({u"abc"});
    const auto marks = [&](std::int32_t first, std::int32_t length) {
        std::vector<std::int32_t> places;
        for (const TextRange& hit : search.Touching(editor, {CharPos{first}, length}))
            places.push_back(hit.first.value);
        return places;
    };
    EXPECT_EQ(marks(2, 3), (std::vector<std::int32_t>{0, 4}));
    EXPECT_EQ(marks(3, 1), (std::vector<std::int32_t>{}));
    EXPECT_EQ(marks(0, 100), (std::vector<std::int32_t>{0, 4, 8}));
}

struct GoToRow {
    const char* text;
    std::int32_t number;
};
TEST(FrmCompareFilesGoTo, TakesANumber) {
    const GoToRow rows[] = {{"3", 3}, {" 17 ", 17}, {"0", 0},    {"-2", -2},
                            {"", -1}, {"3x", -1},   {"two", -1}, {"99999999999", -1}};
    for (const GoToRow& row : rows) {
        frmCompareFilesGoTo go_to;
        go_to.Text1 = row.text;
        EXPECT_EQ(go_to.lNumber(), -1);
        go_to.cmdOK_Click();
        EXPECT_EQ(go_to.lNumber(), row.number) << row.text;
        go_to.cmdCancel_Click();
        EXPECT_EQ(go_to.lNumber(), -1);
    }
}

}  // namespace
}  // namespace zorvane::find_replace_test
