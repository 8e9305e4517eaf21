// `zorvane compare --pairs` as users and schedulers start it.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/schema_check.h"
#include "tests/support/shell_run.h"

namespace zorvane {
namespace {

using Json = nlohmann::json;

class PairsCliTest : public ::testing::Test {
  protected:
    PairsCliTest() {
        std::filesystem::create_directories(folder_.Path("home"));
        folder_.Write("a.txt", "one\ntwo\n");
        folder_.Write("b.txt", "one\nTWO\n");
        folder_.Write("a.html", "<p>one two three</p>");
        folder_.Write("b.html", "<p>one 2 three</p>");
        folder_.Write("bad.docx", "PK\x03\x04 no document");
    }
    ShellRun Shell(const std::string& command) {
        folder_.Write("script", command);
        return RunShell(folder_, "cd '" + folder_.Path() + "' && env -i PATH=\"$PATH\" HOME='" +
                                     folder_.Path("home") +
                                     "' LANG=C.UTF-8 Z='" ZORVANE_PROGRAM
                                     "' sh ./script >out 2>err");
    }
    ShellRun Compare(const std::string& arguments) { return Shell("\"$Z\" compare " + arguments); }
    ShellRun Pairs(const std::string& list, const std::string& more = "") {
        folder_.Write("list", list);
        return Compare("--pairs list " + more);
    }
    static std::vector<Json> Lines(const std::string& text) {
        std::vector<Json> lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);)
            lines.push_back(Json::parse(line));
        return lines;
    }
    TempFolder folder_;
};

TEST_F(PairsCliTest, TellsOfEachPairWhatACompareOfItTells) {
    struct PairRow {
        const char* line;       // of the list
        const char* arguments;  // of a compare of that pair alone
    };
    const PairRow rows[] = {
        {"a.txt\ta.txt", "a.txt a.txt"},
        {"a.html\tb.html\tr.html\tr.csv", "a.html b.html -o s.html -o s.csv"},
        {"a.txt\tnone", "a.txt none"},
        {"bad.docx\tb.html", "bad.docx b.html"},
        {R"({"original":"a.txt","modified":"b.txt","ignore-case":true})", "a.txt b.txt -i"},
        {R"({"original":"a.txt","modified":"b.txt","title":"T","report":["t.html"]})",
         "a.txt b.txt --title T -o u.html"},
        {"a.txt\tb.txt", "a.txt b.txt"},
    };
    std::string list;
    for (const PairRow& row : rows)
        list += std::string(row.line) + "\r\n\n";
    const ShellRun run = Pairs(list, "-j 3");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(Compare("--pairs - -j 1 <list").output, run.output);
    const std::vector<Json> lines = Lines(run.output);
    ASSERT_EQ(lines.size(), std::size(rows));
    const SchemaCheck schema("zorvane-pairs-1");
    for (std::size_t at = 0; at < lines.size(); ++at) {
        SCOPED_TRACE(rows[at].line);
        const ShellRun single = Compare(std::string(rows[at].arguments) + " --json j");
        EXPECT_EQ(schema.Fault(lines[at]), "");
        EXPECT_EQ(lines[at]["pair"], at + 1);
        EXPECT_EQ(lines[at]["status"], single.status);
        if (single.status == 2) {
            EXPECT_EQ("zorvane: " + lines[at]["messages"][0].get<std::string>() + "\n",
                      single.error);
            continue;
        }
        const Json alone = Json::parse(folder_.Read("j"));
        EXPECT_EQ(lines[at]["verdict"], alone["verdict"]);
        EXPECT_EQ(lines[at]["counts"]["changes"], alone["counts"]["changes"]);
        EXPECT_EQ(lines[at]["counts"]["additions"], alone["counts"]["additions"]);
    }
    EXPECT_EQ(lines[1]["reports"], (Json{"r.html", "r.csv"}));
    EXPECT_EQ(folder_.Read("r.html"), folder_.Read("s.html"));
    EXPECT_EQ(folder_.Read("r.csv"), folder_.Read("s.csv"));
    EXPECT_EQ(folder_.Read("t.html"), folder_.Read("u.html"));
    EXPECT_NE(folder_.Read("t.html"), "");
}

TEST_F(PairsCliTest, ALineThatMakesNoSenseIsTroubleOfItsOwn) {
    const std::string pair = R"({"original":"a.txt","modified":"b.txt",)";
    struct FaultRow {
        std::string line;
        const char* words;
    };
    const FaultRow rows[] = {
        {"a.txt", "a tab"},
        {"a.txt\t-", "standard input"},
        {"a.txt\tb.txt\ta.txt", "a document that is read"},
        {"a.txt\tb.txt\tr.xyz", "the extension tells no report type"},
        {"a.txt\tb.txt\tsame.html", ""},
        {"a.txt\tb.html\t./same.html", "writes to this file too"},
        {"{", "no JSON object"},
        {"{}", "original"},
        {pair + R"("stat":true})", "no such option"},
        {pair + R"("no-sandbox":true})", "on the command line"},
        {pair + R"("letters":"perhaps"})", "letters"},
        {pair + R"("json":"-"})", "a file of its own"},
        {pair + R"("set":{"bNone":true}})", "bNone"},
        {pair + R"("title":{"a":1}})", "title"},
    };
    std::string list;
    for (const FaultRow& row : rows)
        list += row.line + "\n";
    const std::vector<Json> lines = Lines(Pairs(list).output);
    ASSERT_EQ(lines.size(), std::size(rows));
    for (std::size_t at = 0; at < lines.size(); ++at) {
        const std::string words = rows[at].words;
        EXPECT_EQ(lines[at]["status"], words.empty() ? 1 : 2) << rows[at].line;
        if (words.empty())
            continue;
        EXPECT_NE(lines[at]["messages"][0].get<std::string>().find(words), std::string::npos)
            << lines[at];
    }
    EXPECT_EQ(folder_.Read("a.txt"), "one\ntwo\n");
}

TEST_F(PairsCliTest, GoesOnBehindWhatIsWritten) {
    const std::string list = "a.txt\tb.txt\na.txt\tnone\na.html\tb.html\na.txt\ta.txt\n";
    const std::string whole = Pairs(list).output;
    const std::size_t second = whole.find('\n') + 1;
    const std::size_t third = whole.find('\n', second) + 1;
    folder_.Write("a.txt", "one\nTWO\n");  // the first pair would be equal now
    for (const std::size_t kept : {second, second + 1, second + 40, third - 1, third}) {
        folder_.Write("lines", whole.substr(0, kept));
        const ShellRun run = Pairs(list, "-o lines");
        EXPECT_EQ(run.status, 2) << run.error;
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(folder_.Read("lines"), whole) << kept;
    }
    // A disk that was lost in the middle of a line may have left anything but text.
    folder_.Write("lines", whole.substr(0, second) + std::string(30, '\0') + "\n");
    EXPECT_EQ(Pairs(list, "-o lines").status, 2);
    EXPECT_EQ(folder_.Read("lines"), whole);
    EXPECT_EQ(Pairs(list, "-o lines").status, 2) << "of a pair that was kept";
    EXPECT_EQ(folder_.Read("lines"), whole);
}

TEST_F(PairsCliTest, HarmsNoFileOfSomebodyElses) {
    const std::string list = "a.txt\tb.txt\nb.txt\tb.txt\n";
    const std::string whole = Pairs(list).output;
    struct OtherRow {
        std::string lines;
        const char* words;
    };
    const OtherRow rows[] = {
        {"my notes", "no results of pairs"},
        {"my notes\n", "no results of pairs"},
        {"{\"a\":1}\n" + whole, "line 1 is no result"},
        {whole.substr(whole.find('\n') + 1), "another pair"},
        {whole + whole, "the list only 2 pairs"},
    };
    for (const OtherRow& row : rows) {
        folder_.Write("lines", row.lines);
        const ShellRun run = Pairs(list, "-o lines");
        EXPECT_EQ(run.status, 2);
        EXPECT_NE(run.error.find(row.words), std::string::npos) << run.error;
        EXPECT_EQ(folder_.Read("lines"), row.lines);
    }
    EXPECT_NE(Pairs(list, "-o list").error.find("a document that is read"), std::string::npos);
    EXPECT_NE(Shell("(flock 9; \"$Z\" compare --pairs list -o mine) 9>mine")
                  .error.find("another "
                              "run"),
              std::string::npos);
}

TEST_F(PairsCliTest, EndsAtTheFirstTroubleWhereThatIsWanted) {
    const std::string list = "a.txt\tb.txt\na.txt\tnew\nb.txt\tb.txt\n";
    const ShellRun run = Pairs(list, "--fail-fast -o lines");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.error, "zorvane: pair 2: new: No such file or directory\n");
    EXPECT_EQ(Lines(folder_.Read("lines")).size(), 1U);
    folder_.Write("new", "one\ntwo\n");
    EXPECT_EQ(Pairs(list, "--fail-fast -o lines").status, 1);
    EXPECT_EQ(Lines(folder_.Read("lines")).size(), 3U);
}

// A scheduler signals all processes of a job: a reader that was hit is no fault of its document.
TEST_F(PairsCliTest, AReaderHearsNoSignalToTheJob) {
    std::string page;
    for (int paragraph = 0; paragraph < 60000; ++paragraph)
        page += "<p>the same words</p>";
    folder_.Write("large.html", page);
    folder_.Write("list", "large.html\ta.html\nlarge.html\ta.html\nlarge.html\ta.html\n");
    const ShellRun run = Shell(
        "\"$Z\" compare --pairs list -o lines & p=$!\n"
        "while kill -0 $p 2>/dev/null; do\n"
        "  for r in $(grep -l \"^PPid:.$p\\$\" /proc/[0-9]*/status 2>/dev/null); do\n"
        "    r=${r#/proc/}; kill -TERM ${r%/status} 2>/dev/null && echo hit\n"
        "  done\ndone; wait $p");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.output, "") << "no reader was there long enough to be hit";
    for (const Json& line : Lines(folder_.Read("lines")))
        EXPECT_EQ(line["status"], 1) << line;
}

TEST_F(PairsCliTest, LosesAndInventsNothingWhenItIsStopped) {
    std::string list;
    for (int pair = 0; pair < 80; ++pair)
        list += "a.html\tb.html\n";
    const std::string whole = Pairs(list).output;
    for (const char* lines : {"1", "20", "50"}) {
        Shell(
            "\"$Z\" compare --pairs list -o lines & p=$!\n while [ ! -f lines ] || [ $(wc -l "
            "<lines) -lt " +
            std::string(lines) + " ]; do :; done; kill -TERM $p; wait $p");
        EXPECT_LT(folder_.Read("lines").size(), whole.size());
    }
    EXPECT_EQ(Pairs(list, "-o lines").status, 1);
    EXPECT_EQ(folder_.Read("lines"), whole);
}

TEST_F(PairsCliTest, RefusesWhatIsForOnePair) {
    folder_.Write("list", "a.txt\tb.txt\n");
    for (const char* other : {"a.txt b.txt", "--stat", "--json j", "--open", "-o x -o y"}) {
        const ShellRun run = Compare(std::string("--pairs list ") + other);
        EXPECT_EQ(run.status, 2) << other;
        EXPECT_NE(run.error.find("pairs"), std::string::npos) << run.error;
    }
    EXPECT_EQ(Compare("a.txt b.txt -j 2").status, 2);
    EXPECT_EQ(Compare("--pairs nowhere").error, "zorvane: nowhere: No such file or directory\n");
    EXPECT_EQ(Compare("--pairs list -q").output, "");
}

}  // namespace
}  // namespace zorvane
