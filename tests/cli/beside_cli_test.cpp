// What lies beside the words, from two documents to every output and the exit status.
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

class BesideCliTest : public ::testing::Test {
  protected:
    BesideCliTest() {
        folder_.Write("old.md", Page("http://a.example/old", "plain"));
        folder_.Write("new.md", Page("http://a.example/new", "**plain**"));
        folder_.Write("copy.md", Page("http://a.example/old", "plain"));
        folder_.Write("words.md", Page("http://a.example/new", "changed"));
    }
    static std::string Page(const std::string& address, const std::string& word) {
        return "# Tides\n\nSee [the table](" + address + ") first.\n\nThe rest is " + word + ".\n";
    }
    int Run(const std::string& arguments) {
        const std::string command = "cd '" + folder_.Path() + "' && '" + ZORVANE_PROGRAM +
                                    "' compare " + arguments + " >out 2>err";
        const int status = std::system(command.c_str());
        EXPECT_TRUE(WIFEXITED(status));
        return WEXITSTATUS(status);
    }

    TempFolder folder_;
};

constexpr const char* kSentence =
    "Beside the words: 1 link target changed (paragraph 2), formatting changed in 1 paragraph "
    "(paragraph 3).";

TEST_F(BesideCliTest, IsToldByEveryOutput) {
    const std::string verdict = std::string("No differences in the words. ") + kSentence;
    EXPECT_EQ(Run("old.md new.md"), 0);
    EXPECT_EQ(folder_.Read("out").find(verdict), 0U) << folder_.Read("out");
    EXPECT_NE(folder_.Read("out").find("http://a.example/old \u2192 http://a.example/new"),
              std::string::npos);
    EXPECT_EQ(Run("old.md new.md --json r.json -o r.html -o r.txt -o r.csv -o r.rtf"), 0);
    const auto json = nlohmann::json::parse(folder_.Read("r.json"));
    EXPECT_EQ(json["verdict"], verdict);
    ASSERT_EQ(json["beside"].size(), 2U);
    EXPECT_EQ(json["beside"][0]["kind"], "links");
    EXPECT_EQ(json["beside"][0]["original"]["text"], "http://a.example/old");
    EXPECT_EQ(json["beside"][1]["kind"], "formatting");
    for (const char* report : {"r.html", "r.txt", "r.csv", "r.rtf"}) {
        SCOPED_TRACE(report);
        EXPECT_NE(folder_.Read(report).find("http://a.example/new"), std::string::npos);
        EXPECT_NE(folder_.Read(report).find("link target changed"), std::string::npos);
    }
}

struct StatusRow {
    const char* arguments;
    int status;
    const char* output;  // how it begins
};
TEST_F(BesideCliTest, CountsWhereItIsAskedFor) {
    const StatusRow rows[] = {
        {"old.md copy.md", 0, "The files are identical."},
        {"old.md new.md", 0, "No differences in the words."},
        {"old.md new.md --also links", 1, "No differences in the words."},
        {"old.md new.md --also pictures,comments", 0, "No differences in the words."},
        {"old.md new.md --also pictures,formatting", 1, "No differences in the words."},
        {"old.md new.md --also all -q", 1, ""},
        {"old.md new.md -q", 0, ""},
        {"old.md words.md", 1, "--- old.md"},
        {"old.md new.md --also nonsense", 2, ""},
    };
    for (const StatusRow& row : rows) {
        SCOPED_TRACE(row.arguments);
        EXPECT_EQ(Run(row.arguments), row.status);
        const std::string output = folder_.Read("out");
        EXPECT_EQ(output.substr(0, std::string(row.output).size()), row.output);
        if (std::string(row.output).empty()) {
            EXPECT_EQ(output, "");
        }
    }
}

}  // namespace
}  // namespace zorvane
