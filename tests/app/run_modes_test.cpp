// The slash form from its line to its log, report and exit code.
#include "app/run_modes.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "app/automation.h"
#include "app/command_line_runs.h"
#include "app/settings_location.h"
#include "common/process_state.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

class RunModesTest : public ::testing::Test {
  protected:
    RunModesTest()
        : process(fakes.platform),
          frame(process, request, [] { return std::make_unique<SilentWindow>(); }) {
        fakes.folder.Write("a.txt", "one\ntwo words\nthree\n");
        fakes.folder.Write("b.txt", "one\n2 words\nthree\nfour\n");
    }
    std::string Path(const std::string& name) const {
        std::string path = fakes.folder.Path(name);
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    std::string Line(const std::string& more) const {
        return "/M " + Path("a.txt") + " /S " + Path("b.txt") + " /L " + Path("log") + " " + more;
    }
    RunOutcome Run(const std::string& line) {
        const RunOutcome outcome = Main(process, line, request, frame);
        frame.UnloadAll();
        return outcome;
    }
    std::string Log() const { return fakes.folder.Read("log"); }

    FakePlatform fakes;
    ProcessState process;
    CommandLineRequest request;
    frmMainMDI frame;
};

TEST_F(RunModesTest, ComparesReportsAndCounts) {
    const RunOutcome outcome =
        Run(Line("/T " + Path("new/r.htm") + " /R1 /F1 /X /G /5 Old /7 Title & Co"));
    EXPECT_EQ(outcome.mode, RunMode::CommandLine);
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_TRUE(Log().ends_with("Successfully Compared " + Path("a.txt") + " to " + Path("b.txt") +
                                "\r\nThere were 2 Differences.  1 Change(s), 1 Addition(s)  and 0 "
                                "Deletion(s)\r\n"))
        << Log();
    const std::string report = fakes.folder.Read("new/r.htm");
    EXPECT_NE(report.find("Title &amp; Co"), std::string::npos);
    EXPECT_NE(report.find("Old"), std::string::npos);
    EXPECT_NE(report.find(Path("b.txt")), std::string::npos);
}

TEST_F(RunModesTest, WritesTheOtherReports) {
    for (const auto& [type, begin] :
         {std::pair{"2", "Original: "}, std::pair{"3", "\xEF\xBB\xBFNumber"},
          std::pair{"4", "{\\rtf1"}}) {
        SCOPED_TRACE(type);
        Run(Line("/T " + Path("r") + " /F1 /X /R" + type));
        EXPECT_TRUE(fakes.folder.Read("r").starts_with(begin)) << fakes.folder.Read("r");
    }
}

TEST_F(RunModesTest, TheExitCodeStopsAt255) {
    EXPECT_EQ(ExitCodeOf(0), 0);
    EXPECT_EQ(ExitCodeOf(255), 255);
    EXPECT_EQ(ExitCodeOf(256), 255);
    EXPECT_EQ(Run(Line("/X")).exit_code, 0) << "not asked for";
    EXPECT_EQ(Run(Line("/G")).exit_code, 0) << "the process does not end by itself";
}

TEST_F(RunModesTest, WithoutDifferencesNoReportAndAnEnd) {
    fakes.folder.Write("b.txt", "one\ntwo words\nthree\n");
    const RunOutcome outcome = Run(Line("/K /G /T " + Path("r.htm")));
    EXPECT_EQ(outcome.mode, RunMode::CommandLine) << "it exits, even without /X";
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_FALSE(std::filesystem::exists(fakes.folder.Path("r.htm")));
}

TEST_F(RunModesTest, OpensTheReportByItsKind) {
    Run(Line("/X /O /T " + Path("r.htm")));
    Run(Line("/X /O /R3 /T " + Path("r.csv")));
    EXPECT_EQ(fakes.shell().calls,
              (std::vector<std::string>{"open " + Path("r.htm"), "edit " + Path("r.csv")}));
}

TEST_F(RunModesTest, AFailingReportStillSaysThatItCompared) {
    Run(Line("/X /O /T \\dev\\full"));
    EXPECT_NE(Log().find("Unable to create target file: \\dev\\full"), std::string::npos) << Log();
    EXPECT_NE(Log().find("Successfully Compared"), std::string::npos);
    EXPECT_TRUE(fakes.shell().calls.empty());
}

TEST_F(RunModesTest, NeverOverwritesAnInput) {
    Run(Line("/X /T " + Path("a.txt")));
    EXPECT_EQ(fakes.folder.Read("a.txt"), "one\ntwo words\nthree\n");
    EXPECT_NE(Log().find("one of the two compared files"), std::string::npos) << Log();
}

TEST_F(RunModesTest, AFileThatCannotBeLoadedFailsTheRun) {
    fakes.folder.Write("b.pdf", "%PDF-1.4");
    Run("/M " + Path("a.txt") + " /S " + Path("b.pdf") + " /X /L " + Path("log"));
    EXPECT_NE(Log().find("Failed to compare. File I/O issue. Original File: " + Path("a.txt") +
                         " Modified File: " + Path("b.pdf")),
              std::string::npos)
        << Log();
    EXPECT_EQ(Log().find("Successfully"), std::string::npos);
}

TEST_F(RunModesTest, SavesTheOptionsOfTheRun) {
    Run(Line("/X /I /AA 3"));
    ProcessState later(fakes.platform);
    LocateSettingsFile(later);
    EXPECT_EQ(later.settings->Read("1_CompareFile", "bIgnoreCase", ""), "TRUE");
    EXPECT_EQ(later.settings->Read("frmMain", "lBCLDocumentType", ""), "3");
    EXPECT_EQ(later.settings->Read("Main", "Partial", ""), "Level3");
}

struct RefusedRow {
    const char* line;
    RunMode mode;
    bool shows_messages;
};
TEST_F(RunModesTest, DecidesWhatARefusedLineMeans) {
    const RefusedRow rows[] = {
        {"/CLEARHISTORY", RunMode::Interactive, false},
        {"/? /M x", RunMode::Nothing, false},
        {"", RunMode::Interactive, true},
        {"/CLEARHISTORY /I", RunMode::Nothing, false},
        {"nonsense", RunMode::Nothing, false},
    };
    for (const RefusedRow& row : rows) {
        SCOPED_TRACE(row.line);
        process.telling.manner.bShowMessages = false;
        EXPECT_EQ(Main(process, row.line, request, frame).mode, row.mode);
        EXPECT_EQ(process.telling.manner.bShowMessages, row.shows_messages);
    }
}

TEST_F(RunModesTest, PreparesTheUserOnce) {
    std::filesystem::create_directories(fakes.folder.Path("program/Languages"));
    fakes.folder.Write("program/Languages/German-Zorvane.txt", "\"x\"");
    const std::string copied = fakes.folder.Path("26/Tarnwick, Inc/Zorvane/Languages");
    InstallUserData(process);
    EXPECT_TRUE(std::filesystem::exists(copied + "/German-Zorvane.txt"));
    std::filesystem::remove_all(copied);
    InstallUserData(process);
    EXPECT_FALSE(std::filesystem::exists(copied)) << "once in a user's life";
}

TEST_F(RunModesTest, AutomationDrivesTheSameRun) {
    std::vector<std::pair<std::string, std::int32_t>> events;
    clsZorvane client(process, request, frame, [&](const std::string& message, std::int32_t code) {
        events.emplace_back(message, code);
    });
    std::string line = Line("/X");
    EXPECT_EQ(client.DoCommandLine(line), 0);
    EXPECT_EQ(client.NumDifferencesFound(), 2);
    line.clear();
    EXPECT_EQ(client.DoCommandLine(line), -2);
    line = "/M only";
    EXPECT_EQ(client.DoCommandLine(line), -3);
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0], std::pair(std::string("Command line is empty"), -2));
    EXPECT_EQ(events[1].second, -3);
    frame.UnloadAll();
}

TEST_F(RunModesTest, NumbersViewersByTheirCount) {
    frame.CreateNewCompareFilesForm();
    EXPECT_EQ(frame.CreateNewCompareFilesForm().Description(), "2_CompareFile");
    EXPECT_EQ(frame.frmGetCFNumber(1).Description(), "1_CompareFile");
    EXPECT_EQ(frame.frmGetCFNumber(7).Description(), "3_CompareFile") << "made when there is none";
    EXPECT_EQ(frame.NumberOpenScreens(), 3);
    frame.UnloadAll();
    EXPECT_EQ(frame.NumberOpenScreens(), 0);
}

}  // namespace
}  // namespace zorvane
