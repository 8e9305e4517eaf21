// The slash form from its line to its log, report and exit code.
#include "app/run_modes.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

#include "app/command_line_runs.h"
#include "app/settings_location.h"
#include "common/process_state.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

class RunModesTest : public ::testing::Test {
  protected:
    RunModesTest() : process(fakes.platform), frame(process, frame_window, SilentViewers(process)) {
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
    SilentFrame frame_window;
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

TEST_F(RunModesTest, FoldersAreToldWhereThereIsNoViewer) {
    testing::internal::CaptureStderr();
    const std::string folder = Path("");
    ViewerFactories factories = SilentViewers(process);
    factories.compare_folders = {};
    frmMainMDI poor(process, frame_window, factories);
    const RunOutcome outcome = Main(process, "/D /X /M " + folder + " /S " + folder, request, poor);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zorvane: Compare Folders: This program does not have this kind of viewer.\n");
    EXPECT_EQ(outcome.exit_code, 2);
}

TEST_F(RunModesTest, SilenceEndsWithTheRun) {
    Main(process, Line("/WS 2"), request, frame);
    EXPECT_EQ(frame_window.State(), WindowState::Maximised);
    EXPECT_FALSE(process.gbCommandLineRunning);
    EXPECT_FALSE(frame.frmGetCFNumber(1)->Telling().manner.bSilent);
    EXPECT_EQ(frame.OpenScreens()[0].files,
              (std::vector<std::string>{Path("a.txt"), Path("b.txt")}));
    RunOutcome ends = Main(process, Line("/X"), request, frame);
    EXPECT_EQ(ends.mode, RunMode::CommandLine);
    EXPECT_TRUE(frame.frmGetCFNumber(2)->Telling().manner.bSilent);
    EXPECT_FALSE(frame.frmGetCFNumber(1)->Telling().manner.bSilent) << "the user's own viewer";
}

TEST_F(RunModesTest, HistoryStaysOutOfUseForTheWholeSession) {
    ProcessState before(fakes.platform);
    LocateSettingsFile(before);
    before.settings->Write("1_CompareFilemruOriginal", "1_CompareFilemruOriginal1", "old.txt");
    ASSERT_TRUE(before.settings->Flush().ok());
    Main(process, "/CLEARHISTORY", request, frame);
    for (frmCompareFiles* viewer : {frame.frmGetCFNumber(1), frame.CreateNewCompareFilesForm()}) {
        viewer->Options().sFileOriginal.SetData(Path("a.txt"));
        viewer->Options().sFileModified.SetData(Path("b.txt"));
        viewer->RefreshDisplay(true, true);
    }
    frame.CloseFrame();
    ProcessState after(fakes.platform);
    LocateSettingsFile(after);
    EXPECT_EQ(after.settings->Read("1_CompareFilemruOriginal", "1_CompareFilemruOriginal1", ""),
              "old.txt");
    EXPECT_EQ(after.settings->Read("2_CompareFilemruOriginal", "2_CompareFilemruOriginal1", "none"),
              "none");
}

// ---- two folders ----

class FolderRunTest : public RunModesTest {
  protected:
    FolderRunTest() {
        for (const char* folder : {"old", "old/sub", "new", "new/sub", "equal"})
            std::filesystem::create_directory(fakes.folder.Path(folder));
        fakes.folder.Write("old/a.txt", "one\n");
        fakes.folder.Write("new/a.txt", "two!\n");
        fakes.folder.Write("new/sub/b.doc", "2");
    }
    std::string Folders(const std::string& more) const {
        return "/D /M " + Path("old") + " /S " + Path("new") + " /L " + Path("log") + " /X " + more;
    }
    std::size_t Rows(const char* report) const {
        const std::string table = fakes.folder.Read(report);
        return static_cast<std::size_t>(std::count(table.begin(), table.end(), '\n'));
    }
};

TEST_F(FolderRunTest, WritesTheTableAndCountsRecords) {
    const RunOutcome outcome = Run(Folders("/G /C /R4 /F1 /T " + Path("made/table")));
    EXPECT_EQ(outcome.mode, RunMode::CommandLine);
    EXPECT_EQ(outcome.exit_code, 3);
    EXPECT_EQ(Rows("made/table"), 4U);
    EXPECT_TRUE(
        Log().ends_with("Successfully Compared " + Path("old") + " to " + Path("new") + "\r\n"))
        << Log();
    EXPECT_EQ(process.settings->Read("1_CompareDir", "sExtension", "none"), "");
    EXPECT_EQ(process.settings->Read("1_CompareDir", "sFolderOriginal", ""), Path("old"));
}

TEST_F(FolderRunTest, KeepsToItsSwitches) {
    Run(Folders("/T " + Path("flat")));
    EXPECT_EQ(Rows("flat"), 3U);  // without /C the subfolder is named and not looked into
    Run(Folders("/C /U \"*.doc\" /T " + Path("types")));
    EXPECT_EQ(Rows("types"), 3U);
    const std::string empty = "/D /M " + Path("equal") + " /S " + Path("old\\sub") + " /T ";
    Run(empty + Path("skipped") + " /K /X");
    EXPECT_FALSE(std::filesystem::exists(fakes.folder.Path("skipped")));
    Run(empty + Path("empty") + " /X /O");
    EXPECT_EQ(Rows("empty"), 1U);
    EXPECT_EQ(fakes.shell().calls.size(), 1U);
}

TEST_F(FolderRunTest, AFolderAgainstItselfIsTrouble) {
    EXPECT_EQ(
        Run("/D /M " + Path("old") + " /S " + Path("old") + " /L " + Path("log") + " /X").exit_code,
        2);
    EXPECT_NE(Log().find("Original and Modified folders are the same"), std::string::npos);
}

}  // namespace
}  // namespace zorvane
