#include "reports/terminal_report.h"

#include "tests/support/compared_pair.h"

namespace zorvane {
namespace {

struct TerminalRow {
    const char* name;
    TextLines original;
    TextLines modified;
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
         {"1", "oak a"},
         {"1", "oak b"},
         0,
         "--- old.txt\n+++ new.txt\n\n@@ 1. Change at paragraph 2 @@\n~ oak [-a-]{+b+}\n"},
        {"unlike neighbours",
         {"a"},
         {"b"},
         0,
         "--- old.txt\n+++ new.txt\n@@ 1. Deletion of 1 paragraph at paragraph 1 @@\n- [-a-]\n"
         "@@ 2. Addition of 1 paragraph behind paragraph 1 @@\n+ {+b+}\n"},
        {"a break that goes",
         {"one two three four", "five six seven eight"},
         {"one two three four five six seven eight"},
         0,
         "--- old.txt\n+++ new.txt\n@@ 1. Change of 2 paragraphs to 1 at paragraph 1 @@\n"
         "~ one two three four[-\u00B6-]\n~ five six seven eight\n"},
        {"what steers a terminal is shown",
         {"\x1B[2J\x7F\xC2\x9B"},
         {"\t\a"},
         0,
         "--- old.txt\n+++ new.txt\n@@ 1. Deletion of 1 paragraph at paragraph 1 @@\n"
         "- [-\u241B[2J\u2421\uFFFD-]\n@@ 2. Addition of 1 paragraph behind paragraph 1 @@\n"
         "+ {+\t\t+}\n"},
        {"a move, edited on the way",
         {"Oil lanterns must be emptied, dried and stored upright before the winter begins.",
          "The boat house is locked at sunset by the warden of the week who also puts out the "
          "fire."},
         {"The boat house is locked at sunset by the warden of the week who also puts out the "
          "fire.",
          "Oil lanterns must be emptied, cleaned and stored upright before the winter begins."},
         0,
         "--- old.txt\n+++ new.txt\n@@ 1. 1 paragraph moved to paragraph 2 @@\n- [-Oil lanterns "
         "must "
         "be emptied, dried and stored upright before the winter begins.-]\n\n@@ 2. 1 paragraph "
         "moved "
         "from paragraph 1 @@\n> Oil lanterns must be emptied, [-dried-]{+cleaned+} and stored "
         "upright "
         "before the winter begins.\n"},
    };
    for (const TerminalRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ComparedPair pair(row.original, row.modified);
        const Comparison& comparison = pair.comparison();
        const std::string verdict =
            (comparison.Same() ? "" : "\n") + VerdictText(comparison) + "\n";
        EXPECT_EQ(WriteTerminalReport(pair.Model(), {false, row.context}), row.text + verdict);
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
    const ComparedPair with_letters({"a horse b", "x", "gone"}, {"a house b", "x"},
                                    {.by_character = true});
    EXPECT_EQ(WriteStat(with_letters.Model()),
              words + "letters              1         0         0\n");
}

}  // namespace
}  // namespace zorvane
