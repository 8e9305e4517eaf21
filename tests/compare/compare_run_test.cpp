// Whole runs: what stands marked in the editors and the summaries.
#include <random>

#include <gtest/gtest.h>

#include "compare/document_markers.h"
#include "tests/support/printers.h"
#include "tests/support/viewer_fixture.h"

namespace zorvane::compare_run_test {
namespace {

using CompareRunTest = ViewerTest;

// The marks of the defaults: addition green, deletion blue, change red.
struct ViewRow {
    const char* name;
    const char* original;
    const char* modified;
    bool letters;
    const char* all_in_one;
    const char* left;
    const char* right;
};
#define ADD(text) "[bu3#32768:" text "]"
#define DEL(text) "[bs#16711680:" text "]"
#define OLD(text) "[bs#255:" text "]"
#define NEW(text) "[bu3#255:" text "]"
const ViewRow kViewRows[] = {
    {"no difference", "a\nb", "a\nb", false, "a|b", "a|b", "a|b"},
    {"added in the middle", "a\nc", "a\nb\nc", false, "a" ADD("|b") "|c", "a|c",
     "a|" ADD("b|") "c"},
    {"added at the front", "b", "a\nb", false, ADD("a|") "b", "b", ADD("a|") "b"},
    {"added at the end", "a", "a\nb\nc", false, "a" ADD("|b|c"), "a", "a|" ADD("b|c")},
    {"deleted", "a\nb\nc", "a\nc", false, "a|" DEL("b|") "c", "a|" DEL("b|") "c", "a|c"},
    {"deleted at the end", "a\nb", "a", false, "a|" DEL("b"), "a|" DEL("b"), "a"},
    {"a blank paragraph added", "a\nc", "a\n\nc", false, "a" ADD("|") "|c", "a|c",
     "a|" ADD("|") "c"},
    {"a paragraph became two", "one two three. Four five six.", "one two three.\nFour five six.",
     false, "one two three." OLD(" ") NEW("|") "Four five six.",
     "one two three." OLD(" ") "Four five six.", "one two three." NEW("|") "Four five six."},
    {"two became one", "one two three.\nFour five six.", "one two three. Four five six.", false,
     "one two three." OLD("|") NEW(" ") "Four five six.",
     "one two three." OLD("|") "Four five six.", "one two three." NEW(" ") "Four five six."},
    {"a trailing blank", "one two\nx", "one two \nx", false, "one two" ADD(" ") "|x", "one two|x",
     "one two" ADD(" ") "|x"},
    {"another paragraph", "a\nold\nc", "a\nnew\nc", false, "a|" DEL("old") ADD("|new") DEL("|") "c",
     "a|" DEL("old|") "c", "a|" ADD("new|") "c"},
    {"another at the end", "a\nold", "a\nnew", false, "a|" DEL("old") ADD("|new"), "a|" DEL("old"),
     "a|" ADD("new")},
    {"a word changed", "one two three", "one 2 three", false, "one " OLD("two ") NEW(" 2 ") "three",
     "one " OLD("two ") "three", "one " NEW("2 ") "three"},
    {"a word added", "one three", "one two three", false, "one " ADD(" two ") "three", "one three",
     "one " ADD("two ") "three"},
    {"a word added in front", "two x", "one two x", false, ADD("one ") "two x", "two x",
     ADD("one ") "two x"},
    {"a word deleted", "one two three", "one three", false, "one " DEL("two ") "three",
     "one " DEL("two ") "three", "one three"},
    {"the last word", "one two\nx", "one 2\nx", false, "one " OLD("two") NEW(" 2") "|x",
     "one " OLD("two") "|x", "one " NEW("2") "|x"},
    {"the last word of all", "one two", "one 2", false, "one " OLD("two") NEW(" 2"),
     "one " OLD("two"), "one " NEW("2")},
    {"a letter lost", "one house two", "one hose two", true, "one ho" DEL("u") "se two",
     "one ho" DEL("u") "se two", "one hose two"},
    {"the first letter", "one house two", "one mouse two", true,
     "one " OLD("h") NEW("m") "ouse two", "one " OLD("h") "ouse two", "one " NEW("m") "ouse two"},
    {"a letter added at the end", "one tool two", "one tools two", true, "one tool" ADD("s") " two",
     "one tool two", "one tool" ADD("s") " two"},
    {"a character of two units", "a 😀 b", "a 😁 b", true, "a " OLD("😀") NEW("😁") " b",
     "a " OLD("😀") " b", "a " NEW("😁") " b"},
};
TEST_F(CompareRunTest, MarksWhatDiffers) {
    for (const ViewRow& row : kViewRows) {
        SCOPED_TRACE(row.name);
        viewer.Options().bCompareByCharacter.SetData(row.letters);
        ASSERT_TRUE(Compare(row.original, row.modified, View::AllInOne));
        EXPECT_EQ(AllInOne(), row.all_in_one);
        ASSERT_TRUE(Compare(row.original, row.modified, View::SideBySide));
        EXPECT_EQ(Left(), row.left);
        EXPECT_EQ(Right(), row.right);
    }
}

TEST_F(CompareRunTest, SubParagraphChangesCanLookAlike) {
    viewer.Options().bShowSubParagraphChangesSimilarly.SetData(true);
    ASSERT_TRUE(Compare("one two three\nx", "two three 4\nx\ny", View::AllInOne));
    EXPECT_EQ(AllInOne(), "[bu3#255:one ]two three[bu3#255: 4]|x" ADD("|y"));
}

TEST_F(CompareRunTest, KeepsTheFormatsOfTheDocuments) {
    ASSERT_TRUE(Compare("{\\rtf1\\i a\\par b {\\b bold} word\\par}",
                        "{\\rtf1\\i a\\par b {\\b bold} term\\par}", View::AllInOne, "rtf"));
    EXPECT_EQ(AllInOne(), "[i:a|b ][bi:bold][i: ]" OLD("word") NEW(" term") "[i:|]");
}

// A heading that comes in as part of a change is still one; its size is no mark of ours.
TEST_F(CompareRunTest, WholeParagraphsInAChangeBringTheirOwnFormats) {
    ASSERT_TRUE(
        Compare("{\\rtf1 one two three four five six seven eight\\par end\\par}",
                "{\\rtf1 one two three four\\par {\\i\\fs48 New heading\\par}five six seven "
                "eight\\par end\\par}",
                View::AllInOne, "rtf"));
    ASSERT_EQ(viewer.mlChanges(), 1);
    const RichText merged = viewer.Editors().rtbAIODiff.editor.Rich();
    const std::size_t heading = merged.text.find(u"New heading");
    ASSERT_NE(heading, std::u16string::npos);
    std::size_t at = 0;
    for (const CharRun& run : merged.char_runs) {
        if (at <= heading && heading < at + static_cast<std::size_t>(run.length)) {
            EXPECT_EQ(run.format.half_points, 48);
        }
        at += static_cast<std::size_t>(run.length);
    }
}

struct CellRow {
    const char* name;
    const char* original;
    const char* modified;
    const char* all_in_one;
};
const CellRow kCellRows[] = {
    {"one cell", "a\\cell b\\cell", "a\\cell c\\cell", "a!" OLD("b") NEW(" c") "!|"},
    {"two cells side by side", "w a\\cell b x\\cell", "w c\\cell d x\\cell",
     "w " OLD("a") NEW(" c") "!" OLD("b ") NEW(" d ") "x!|"},
    {"a word in front", "w a\\cell b\\cell", "w c\\cell b\\cell", "w " OLD("a") NEW(" c") "!b!|"},
};
TEST_F(CompareRunTest, MarksCellByCell) {
    const auto table = [](const char* row) {
        return std::string("{\\rtf1 top\\par\\trowd\\cellx900\\cellx1800\\intbl ") + row +
               "\\row\\pard end\\par}";
    };
    ASSERT_TRUE(Compare(table("a\\cell b\\cell"), table("a\\cell c\\cell"), View::AllInOne, "rtf"));
    EXPECT_EQ(AllInOne(), "top|a!" OLD("b!") NEW("c!") "|end|")
        << "kept: the text as it was marked";
    viewer.PresentDocumentReport({"o", "m"});
    for (const CellRow& row : kCellRows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(Compare(table(row.original), table(row.modified), View::AllInOne, "rtf"));
        EXPECT_EQ(AllInOne(), "top|[^:[1] ]" + std::string(row.all_in_one) + "end|");
    }
}

// Numbers stand in front of what is marked and in no summary; without names there are none.
TEST_F(CompareRunTest, NumbersTheDifferencesOfAPresentedReport) {
    const char* original = "gone one\nx\nold words\ny\nz";
    const char* modified = "x\nnew words\ny\nlast\nz\nmore\nand more";
    ASSERT_TRUE(Compare(original, modified, View::AllInOne));
    const std::string plain = AllInOne();
    EXPECT_EQ(plain.find('^'), std::string::npos);
    const std::u16string summary = viewer.Editors().rtbAdditions.Text();
    viewer.PresentDocumentReport({"o", "m"});
    ASSERT_TRUE(Compare(original, modified, View::AllInOne));
    EXPECT_EQ(Readable(viewer.Editors().rtbAIODiff.editor.Text()),
              "[1] gone one|x|[2] old new words|y|[3] last|z|[4] more|and more");
    std::string bare = AllInOne();
    for (const char* number : {"[^:[1] ]", "[^:[2] ]", "[^:[3] ]", "[^:[4] ]"}) {
        const std::size_t at = bare.find(number);
        ASSERT_NE(at, std::string::npos) << number << bare;
        bare.erase(at, std::string(number).size());
    }
    EXPECT_EQ(viewer.Editors().rtbAdditions.Text(), summary);
}

// An addition directly behind a deletion, and one that opens the document.
TEST_F(CompareRunTest, NumbersLeaveTheMarksWhereTheyBelong) {
    viewer.PresentDocumentReport({"o", "m"});
    ASSERT_TRUE(Compare("alpha beta gamma\nend", "1 2 3 4 5 6 7 8\nend", View::AllInOne));
    const std::string merged = AllInOne();
    EXPECT_NE(merged.find(DEL("alpha beta gamma")), std::string::npos) << merged;
    EXPECT_NE(merged.find("1 2 3 4 5 6 7 8"), std::string::npos) << merged;
    EXPECT_TRUE(merged.ends_with("end")) << merged;
    ASSERT_TRUE(Compare("end", "first\nend", View::AllInOne));
    EXPECT_EQ(AllInOne(), "[^:[1] ]" ADD("first|") "end");
    ASSERT_TRUE(Compare("", "first", View::AllInOne));
    EXPECT_NE(AllInOne().find(ADD("first")), std::string::npos);
}

TEST_F(CompareRunTest, PlainTextDropsThem) {
    viewer.Options().bRemoveFormatting.SetData(true);
    ASSERT_TRUE(Compare("{\\rtf1\\i oak a}", "{\\rtf1\\i oak b}", View::SideBySide, "rtf"));
    EXPECT_EQ(Left(), "oak " OLD("a"));
}

TEST_F(CompareRunTest, SummariesAreInOrderUnderTheirFooters) {
    ASSERT_TRUE(Compare("x\nold one\ny\nz", "new\nx\nold two\ny\nz\nlast\nmore", View::SideBySide));
    const ViewerEditors& editors = viewer.Editors();
    EXPECT_EQ(Readable(editors.rtbAdditions.Text()),
              "+++++++ Additions Summary. 2 additions found +++++++|"
              "<<<1>>> Addition of 1 line at paragraph (0)|new|"
              "<<<3>>> Addition of 2 lines at paragraph (4) |last|more|");
    EXPECT_EQ(Readable(editors.rtbChanges.Text()),
              "^^^^^^^ Change Summary. 1 changes found ^^^^^^^|"
              "<<<2>>> 1 change at paragraph (2) |old one|old two|");
    EXPECT_EQ(Readable(editors.rtbDeletions.Text()),
              "------- Deletions Summary. No deletions found -------|");
}

TEST_F(CompareRunTest, AChangeStandsTwiceInTheAllInOneSummary) {
    ASSERT_TRUE(Compare("a b", "a c", View::AllInOne));
    EXPECT_EQ(Readable(viewer.Editors().rtbChanges.Text()),
              "^^^^^^^ Change Summary. 1 changes found ^^^^^^^|"
              "<<<1>>> 1 change at paragraph (1) |a b c|a b c|");
}

struct HeaderRow {
    DifferenceRecord record;
    const char* header;
};
TEST_F(CompareRunTest, WritesHeaders) {
    constexpr auto kA = DifferenceType::Addition;
    constexpr auto kC = DifferenceType::Change;
    constexpr auto kD = DifferenceType::Deletion;
    const HeaderRow rows[] = {
        {{kA, {{0, 0}, {1, 1}}}, "<<<5>>> Addition of 1 line at paragraph (0)"},
        {{kA, {{2, 2}, {2, 3}}}, "<<<5>>> Addition of 2 lines at paragraph (2) "},
        {{kD, {{3, 3}, {0, 0}}}, "<<<5>>> Deletion of 1 line at paragraph (3)"},
        {{kD, {{1, 2}, {0, 0}}}, "<<<5>>> Deletion of 2 lines at paragraph (1)"},
        {{kC, {{2, 2}, {2, 2}}}, "<<<5>>> 1 change at paragraph (2) "},
        {{kC, {{1, 1}, {1, 3}}}, "<<<5>>> 3 changes at paragraph (1) "},
    };
    RunControl control;
    RunMonitor monitor(process, control);
    for (const HeaderRow& row : rows) {
        SCOPED_TRACE(row.header);
        EXPECT_EQ(EntryHeader(monitor, RecordIndex{4}, row.record), row.header);
    }
}

TEST_F(CompareRunTest, CountsAtThreeLevels) {
    viewer.Options().bCompareByCharacter.SetData(true);
    ASSERT_TRUE(Compare("alpha beta wooden more\nx\ngone\ny", "alpha bets wooden\nx\ny\nnew",
                        View::AllInOne));
    const RunCounters expected{{1, 1, 1}, {1, 0, 1}, {1, 0, 0}};
    EXPECT_EQ(viewer.Counters(), expected);
    ASSERT_TRUE(Compare("alpha beta wooden more\nx\ngone\ny", "alpha bets wooden\nx\ny\nnew",
                        View::SideBySide));
    EXPECT_EQ(viewer.Counters(), expected);
}

TEST_F(CompareRunTest, IgnoredExpressionsHoldInsideOnRequest) {
    viewer.Options().sIgnoreRegularExpression.SetData("[0-9]+");
    ASSERT_TRUE(Compare("page 1 old", "page 2 new", View::SideBySide));
    EXPECT_EQ(Left(), "page " OLD("1 old"));
    viewer.Options().bIgnoreRegExOnBothPasses.SetData(true);
    ASSERT_TRUE(Compare("page 1 old", "page 2 new", View::SideBySide));
    EXPECT_EQ(Left(), "page 1 " OLD("old"));
    ASSERT_TRUE(Compare("page 1", "page 2", View::SideBySide));
    EXPECT_EQ(viewer.VXMacroDiff().getDifferenceCount(), 0);
}

TEST_F(CompareRunTest, ABadExpressionFailsByName) {
    viewer.Options().sIgnoreRegularExpression.SetData("(open");
    EXPECT_FALSE(Compare("a", "b", View::SideBySide));
    EXPECT_NE(Log().find("(open"), std::string::npos);
}

// ---- properties ----

std::string RandomText(std::mt19937& random) {
    constexpr const char* kWords[] = {"one", "two", "three", "ä", "x", "", "😀"};
    std::string text;
    for (auto paragraph = random() % 12; paragraph > 0; --paragraph) {
        for (auto word = random() % 6; word > 0; --word)
            text += std::string(kWords[random() % std::size(kWords)]) + " ";
        if (paragraph > 1)
            text += "\n";
    }
    return text;
}

// The text without the pieces in which `drop` holds.
template <class Drop>
std::u16string Without(const RichText& text, const Drop& drop) {
    std::u16string rest;
    std::size_t at = 0;
    for (const CharRun& run : text.char_runs) {
        if (!drop(run.format))
            rest += text.text.substr(at, static_cast<std::size_t>(run.length));
        at += static_cast<std::size_t>(run.length);
    }
    return rest;
}

TEST_F(CompareRunTest, AllInOneHoldsTheOriginalAndKnowsItsParagraphs) {
    std::mt19937 random(5);
    for (int pair = 0; pair < 120; ++pair) {
        SCOPED_TRACE(pair);
        viewer.Options().bCompareByCharacter.SetData(pair % 3 == 0);
        ASSERT_TRUE(Compare(RandomText(random), RandomText(random), View::AllInOne));
        const ViewerEditors& editors = viewer.Editors();
        const RichText merged = editors.rtbAIODiff.editor.Rich();
        // Additions and the new words of changes are underlined; the documents are not.
        EXPECT_EQ(Readable(Without(merged,
                                   [](const CharFormat& format) {
                                       return format.underline == Underline::Double;
                                   })),
                  Readable(editors.rtbOriginal.editor.Text()));
        // A paragraph that no record touches stands where the collection says; not so the last,
        // since a delta there is dropped.
        const clsRTBDocument& original = editors.rtbOriginal.document;
        const clsRTBDocument& all_in_one = editors.rtbAIODiff.document;
        std::vector<bool> touched(static_cast<std::size_t>(original.ParagraphCount()) + 2, false);
        for (const DifferenceRecord& record : viewer.VXMacroDiff().Records()) {
            for (std::int32_t line = record.paragraphs.original.first.value;
                 line <= record.paragraphs.original.last.value; ++line)
                touched[static_cast<std::size_t>(line)] = touched[static_cast<std::size_t>(line)] ||
                                                          record.type != DifferenceType::Addition;
        }
        for (ParagraphNumber number{1}; number.value < original.ParagraphCount(); ++number) {
            if (touched[static_cast<std::size_t>(number.value)])
                continue;
            const auto text_at = [&](const clsRTBDocument& document) {
                const CharPos first = document.GetFirstCharLocationOfParagraph(number);
                const CharPos last = original.GetLastCharLocationOfParagraph(number);
                const std::int32_t length =
                    last - original.GetFirstCharLocationOfParagraph(number) - 2;
                return Readable(document.RichTB().Text({first, length}));
            };
            EXPECT_EQ(text_at(all_in_one), text_at(original)) << number.value;
        }
    }
}

TEST_F(CompareRunTest, SideBySideLeavesBothTextsAsTheyAre) {
    std::mt19937 random(6);
    for (int pair = 0; pair < 120; ++pair) {
        SCOPED_TRACE(pair);
        viewer.Options().bCompareByCharacter.SetData(pair % 2 == 0);
        ASSERT_TRUE(Compare(RandomText(random), RandomText(random), View::SideBySide));
        const ViewerEditors& editors = viewer.Editors();
        EXPECT_EQ(Readable(editors.rtbOriginalDiffFinal.editor.Text()),
                  Readable(editors.rtbOriginal.editor.Text()));
        EXPECT_EQ(Readable(editors.rtbModifiedDiffFinal.editor.Text()),
                  Readable(editors.rtbModified.editor.Text()));
    }
}

}  // namespace
}  // namespace zorvane::compare_run_test
