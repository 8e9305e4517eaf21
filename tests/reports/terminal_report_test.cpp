#include "reports/terminal_report.h"

#include "tests/support/compared_pair.h"

namespace zorvane {
namespace {

struct TerminalRow {
    const char* name;
    Paragraphs original;
    Paragraphs modified;
    std::int32_t context;
    std::string text;
};
TEST(TerminalReport, ShowsDifferencesWithTheirSurroundings) {
    const TerminalRow rows[] = {
        {"nothing", {"a"}, {"a"}, 2, ""},
        {"words in place",
         {"1", "2", "3", "a b c", "4", "5", "6"},
         {"1", "2", "3", "a x c", "4", "5", "6"},
         2,
         "--- old.txt\n+++ new.txt\n\n@@ 1. Change at paragraph 4 @@\n  2\n  3\n"
         "~ a [-b-]{+x+} c\n  4\n  5\n"},
        {"surroundings that meet are shown once",
         {"a", "1", "b", "c", "2"},
         {"b", "c", "2", "d"},
         2,
         "--- old.txt\n+++ new.txt\n@@ 1. Deletion of 2 paragraphs at paragraph 1 @@\n- [-a-]\n"
         "- [-1-]\n  b\n  c\n@@ 2. Addition of 1 paragraph behind paragraph 5 @@\n  2\n+ {+d+}\n"},
        {"none around",
         {"1", "a"},
         {"1", "b"},
         0,
         "--- old.txt\n+++ new.txt\n\n@@ 1. Change at paragraph 2 @@\n~ [-a-]{+b+}\n"},
        {"a break that goes",
         {"one two", "three"},
         {"one two three"},
         0,
         "--- old.txt\n+++ new.txt\n@@ 1. Change of 2 paragraphs to 1 at paragraph 1 @@\n"
         "~ one two[-\u00B6-]\n~ {+ +}three\n"},
        {"what steers a terminal is shown",
         {"\x1B[2J\x7F\xC2\x9B"},
         {"\t\a"},
         0,
         "--- old.txt\n+++ new.txt\n@@ 1. Change at paragraph 1 @@\n"
         "~ [-\u241B[2J\u2421\uFFFD-]{+\t\t+}\n"},
    };
    for (const TerminalRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ComparedPair pair(row.original, row.modified);
        EXPECT_EQ(WriteTerminalReport(pair.Model(), {false, row.context}), row.text);
    }
}

TEST(TerminalReport, PaintsAndResets) {
    const ComparedPair pair({"a b"}, {"a c"});
    const std::string text = WriteTerminalReport(pair.Model(), {true, 2});
    EXPECT_NE(text.find("a \x1B[31;9mb\x1B[0m\x1B[32;4mc\x1B[0m\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("[-"), std::string::npos);
}

TEST(Stat, CountsOnEachLevel) {
    const ComparedPair pair({"a horse b", "x", "gone"}, {"a house b", "x"});
    const std::string words =
        "original: old.txt (3 paragraphs)\nmodified: new.txt (2 paragraphs)\n"
        "               changes additions deletions\n"
        "paragraphs           1         0         1\n"
        "words                1         0         0\n";
    EXPECT_EQ(WriteStat(pair.Model()), words);
    EXPECT_EQ(WriteStat(pair.Model(true)), words + "letters              1         0         0\n");
}

}  // namespace
}  // namespace zorvane
