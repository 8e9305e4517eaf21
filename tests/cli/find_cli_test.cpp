// "zorvane find" and "zorvane cache" as users start them.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/encrypted_package.h"
#include "tests/support/pdf_file.h"
#include "tests/support/shell_run.h"
#include "tests/support/temp_folder.h"
#include "tests/support/word_file.h"

namespace zorvane {
namespace {

class FindCliTest : public ::testing::Test {
  protected:
    FindCliTest() {
        std::filesystem::create_directories(folder_.Path("home"));
        std::filesystem::create_directories(folder_.Path("tree/sub"));
        folder_.Write("tree/a.txt", "one\nTwo words\nthree\n");
        folder_.Write("tree/b.log", "two\ntwofold two\n");
        folder_.Write("tree/sub/c.txt", "two\n");
        folder_.Write("tree/.hidden", "two\n");
        folder_.Write("tree/binary", std::string("two\0", 4));
    }
    // In the tree, with a home of its own.
    ShellRun Run(const std::string& arguments, const std::string& output = "../out") {
        const std::string command =
            "cd '" + folder_.Path("tree") + "' && env -i LANG=C.UTF-8 PATH=\"$PATH\" HOME='" +
            folder_.Path("home") + "' '" ZORVANE_PROGRAM "' " + arguments + " 2>../err >" + output;
        return RunShell(folder_, command);
    }

    TempFolder folder_;
};

TEST_F(FindCliTest, ObeysItsOptions) {
    struct FindOptionRow {
        const char* line;
        int status;
        const char* output;
    };
    const FindOptionRow rows[] = {
        {"find two", 0, ".hidden:1:two\nb.log:1:two\nb.log:2:twofold two\n"},
        {"find two . --no-hidden -r", 0,
         "./b.log:1:two\n./b.log:2:twofold two\n./sub/c.txt:1:two\n"},
        {"find -i TWO --types '*.TXT' -r", 0, "a.txt:2:Two words\nsub/c.txt:1:two\n"},
        {"find -w fold .", 1, ""},
        {"find -w two b.log", 0, "b.log:1:two\nb.log:2:twofold two\n"},
        {"find -e '^t.o$' -l --no-hidden", 0, "b.log\n"},
        {"find -c two b.log", 0, "b.log:2\n"},
        {"find -C 1 two a.txt -i", 0, "a.txt-1-one\na.txt:2:Two words\na.txt-3-three\n"},
        {"find -C 0 two sub", 0, "sub/c.txt:1:two\n"},
        {"find -q two", 0, ""},
        {"find nothing . -r", 1, ""},
        {"find one a.txt --color always", 0,
         "\x1B[35ma.txt\x1B[0m:\x1B[32m1\x1B[0m:\x1B[1;31mone\x1B[0m\n"},
        {"find two --no-hidden --stats -l", 0,
         "b.log\n1 line in 1 of 3 files, 1 binary file passed over\n"},
        {"find 'C:\\x' .", 1, ""},
        {"find -- -two .", 1, ""},
    };
    for (const FindOptionRow& row : rows) {
        SCOPED_TRACE(row.line);
        const ShellRun run = Run(row.line);
        EXPECT_EQ(run.status, row.status);
        EXPECT_EQ(run.output, row.output);
        EXPECT_EQ(run.error, "");
    }
}

TEST_F(FindCliTest, TellsTroubleInAUsersWords) {
    const char* const lines[][2] = {
        {"find two nowhere", "zorvane: nowhere: No such file or directory\n"},
        {"find -e '(two'", "zorvane: (two: missing closing parenthesis\n"},
        {"find ''", "zorvane: : There is nothing to find\n"},
        {"find -l -c two", "exclude each other"},
        {"find two a.txt --office -j 0", "--threads"},
    };
    for (const auto& [line, words] : lines) {
        SCOPED_TRACE(line);
        const ShellRun run = Run(line);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_NE(run.error.find(words), std::string::npos) << run.error;
    }
}

TEST_F(FindCliTest, TellsOnceThatTheOutputIsLost) {
    const ShellRun run = Run("find two", "/dev/full");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(std::count(run.error.begin(), run.error.end(), '\n'), 1) << run.error;
}

TEST_F(FindCliTest, WritesAnObjectALine) {
    const ShellRun run = Run("find -i two . --json -C 1");
    std::vector<nlohmann::json> objects;
    std::istringstream lines(run.output);
    for (std::string line; std::getline(lines, line);)
        objects.push_back(nlohmann::json::parse(line));
    ASSERT_EQ(objects.size(), 7U);
    EXPECT_EQ(objects[1]["type"], "context");
    EXPECT_EQ(objects[2]["type"], "hit");
    EXPECT_EQ(objects[2]["path"], "./a.txt");
    EXPECT_EQ(objects[2]["line"], 2);
    EXPECT_EQ(objects[2]["text"], "Two words");
    EXPECT_EQ(objects[5]["matches"].size(), 2U);
    EXPECT_EQ(objects[5]["matches"][1]["column"], 9);
    EXPECT_EQ(objects[6]["schema"], "zorvane-find/1");
    EXPECT_EQ(objects[6]["hits"], 4);
    EXPECT_EQ(objects[6]["binary"], 1);
}

TEST_F(FindCliTest, ReadsDocumentsAndKeepsTheirTexts) {
    folder_.Write("tree/d.pdf", test_pdf::MakePdf(test_pdf::Line(72, 700, "a needle here")));
    folder_.Write("tree/e.html", "<p>one</p><p>nee<b>dle</b></p>");
    folder_.Write("tree/f.docx", "PK\3\4 broken");
    EXPECT_EQ(Run("find needle --types '*.html'").status, 1);
    for (int round = 0; round < 2; ++round) {
        const ShellRun run = Run("find needle --office");
        EXPECT_EQ(run.output, "d.pdf:1:[page 1] a needle here\ne.html:2:needle\n");
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.error.substr(0, 16), "zorvane: f.docx:") << run.error;
        EXPECT_EQ(run.error.find("f.docx", 18), std::string::npos) << run.error;
    }
    const ShellRun told = Run("cache");
    EXPECT_EQ(told.output,
              folder_.Path("home/.cache/zorvane/texts") + ": 2 entries, 1 of 512 MB\n");
    EXPECT_NE(Run("cache --clear").output.find(" 0 entries"), std::string::npos);
    EXPECT_EQ(Run("find needle --office --no-cache --types *.pdf").status, 0);
    EXPECT_NE(Run("cache").output.find(" 0 entries"), std::string::npos);
}

TEST_F(FindCliTest, OpensProtectedDocumentsAndKeepsNothingOfThem) {
    WordFile letter;
    letter.body = "<w:p><w:r><w:t>a needle</w:t></w:r></w:p>";
    folder_.Write("tree/p.docx", StandardEncrypted(MakeWordFile(letter), "pass", 128));
    EXPECT_EQ(Run("find needle --office --types *.docx").status, 2);
    const ShellRun run = Run("find needle --office --types *.docx --password pass");
    EXPECT_EQ(run.output, "p.docx:1:a needle\n") << run.error;
    EXPECT_NE(Run("cache").output.find(" 0 entries"), std::string::npos);
}

TEST_F(FindCliTest, TeachesItself) {
    const ShellRun run = Run("find --help");
    EXPECT_EQ(run.status, 0);
    for (const char* words : {"--regexp", "--office", "Exit status", "Examples:"})
        EXPECT_NE(run.output.find(words), std::string::npos) << words;
}

}  // namespace
}  // namespace zorvane
