// A viewer and its files: what is saved and printed, what would be lost, what changes on the disk.
#include "tests/compare/viewer_files.h"

#include <chrono>
#include <filesystem>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "compare/document/rtf_reader.h"
#include "tests/support/page_notes.h"

namespace zorvane::viewer_files_test {
namespace {

using namespace std::chrono_literals;

TEST_F(FilesOfViewer, ASavedSideIsSelectedAndHasNothingToLose) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    Edit(Side::Original, u"more ");
    EXPECT_EQ(SaveAs(EditorTarget::Original, "saved.txt", 2), SaveEnd::Saved) << Log();
    EXPECT_EQ(fakes.folder.Read("saved.txt"), "more a\n");
    EXPECT_EQ(viewer.Options().sFileOriginal.Data(), fakes.folder.Path("saved.txt"));
    EXPECT_TRUE(viewer.MayClose());
    EXPECT_TRUE(window.files.asked.empty());
    LookAtDisk();
    EXPECT_TRUE(window.files.asked.empty()) << "its own save is no news";
    EXPECT_TRUE(Text(Side::Original).CanUndo());
    Text(Side::Original).Undo();
    EXPECT_FALSE(viewer.MayClose()) << "what was saved is another text";
}

TEST_F(FilesOfViewer, ASavedTextIsAsPrivateAsWhereItComesFrom) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::AllInOne));
    chmod(fakes.folder.Path("o.txt").c_str(), 0600);
    chmod(fakes.folder.Path("m.txt").c_str(), 0644);
    struct Row {
        EditorTarget target;
        std::int32_t type;
        bool own;
    };
    for (const Row& row :
         {Row{EditorTarget::Modified, 1, false}, Row{EditorTarget::Modified, 2, false},
          Row{EditorTarget::AllInOneDiff, 1, true}, Row{EditorTarget::AllInOneDiff, 2, true},
          Row{EditorTarget::Original, 1, true}}) {
        const std::string name = "s" + std::to_string(static_cast<int>(row.target)) + ".x";
        std::filesystem::remove(fakes.folder.Path(name));
        EXPECT_EQ(SaveAs(row.target, name, row.type), SaveEnd::Saved) << Log();
        struct stat facts {};
        ASSERT_EQ(stat(fakes.folder.Path(name).c_str(), &facts), 0);
        EXPECT_EQ((facts.st_mode & 0077U) == 0, row.own) << name << " " << row.type;
        ASSERT_EQ(stat(fakes.folder.Path("rtbTemp.RTF").c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 0077U, 0U);
    }
    viewer.SelectFile(Side::Original, fakes.folder.Path("m.txt"));
    EXPECT_EQ(SaveAs(EditorTarget::Original, "later.x", 2), SaveEnd::Saved) << Log();
    struct stat facts {};
    ASSERT_EQ(stat(fakes.folder.Path("later.x").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0077U, 0U) << "the chosen file is not the one that is shown";
}

TEST_F(FilesOfViewer, WhatARunShowsOfItselfGoesWithIt) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    viewer.Telling().manner.bSilent = false;
    viewer.PumpEvery(0ms);
    for (const bool stops : {false, true}) {
        SCOPED_TRACE(stops);
        window.status = {{StatusPanel::Time, "before"}};
        std::string busy;
        std::string time;
        window.on_pump = [&] {
            busy = window.Busy();
            time = window.status[StatusPanel::Time];
            if (stops)
                viewer.Abort();
        };
        viewer.Refresh();  // loads inside the run
        EXPECT_EQ(busy, "hourglass wait abort no filters no edits");
        EXPECT_EQ(time, "---");
        EXPECT_EQ(window.Busy(), "");
    }
}

// A conversion lets the window live, and its user type.
TEST_F(FilesOfViewer, WhatIsTypedDuringASaveIsNotSaved) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    Edit(Side::Modified, u"first ");
    viewer.PumpEvery(0ms);
    int pumps = 0;
    window.on_pump = [&] {
        if (++pumps == 2)
            Edit(Side::Modified, u"second ");
        EXPECT_EQ(viewer.State(), ViewerState::Reporting);
    };
    EXPECT_EQ(SaveAs(EditorTarget::Modified, "m.rtf", 1), SaveEnd::Saved) << Log();
    window.on_pump = nullptr;
    ASSERT_GE(pumps, 2);
    EXPECT_EQ(ReadRtf(fakes.folder.Read("m.rtf")).text, u"first b\r\n");
    EXPECT_FALSE(viewer.MayLoseEdits(LosingStep::Close));
}

TEST_F(FilesOfViewer, TheAllInOneTextIsSavedAsItIsShown) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::AllInOne));
    Edit(Side::Original, u"stale ");
    const std::u16string shown = viewer.Editors().rtbAIODiff.editor.Text();
    const CompareFilesSettings before = viewer.Settings();
    EXPECT_EQ(SaveAs(EditorTarget::AllInOneDiff, "all.rtf", 1), SaveEnd::Saved) << Log();
    EXPECT_EQ(ReadRtf(fakes.folder.Read("all.rtf")).text, shown + u"\r\n") << "and no summaries";
    EXPECT_EQ(viewer.Editors().rtbAIODiff.editor.Text(), shown);
    EXPECT_TRUE(viewer.IsStale());
    EXPECT_EQ(viewer.Settings().bReportDOC_Additions, before.bReportDOC_Additions);
}

TEST_F(FilesOfViewer, ASaveThatIsStoppedLeavesTheOldFileAndTheQuestion) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    Edit(Side::Original, u"more ");
    fakes.folder.Write("old.txt", "old");
    window.files.answer = 0;
    viewer.PumpEvery(0ms);
    window.on_pump = [&] {
        EXPECT_TRUE(window.abort_visible);
        viewer.Abort();
    };
    EXPECT_EQ(SaveAs(EditorTarget::Original, "old.txt", 2), SaveEnd::Stopped);
    window.on_pump = nullptr;
    EXPECT_FALSE(window.abort_visible);
    EXPECT_EQ(fakes.folder.Read("old.txt"), "old");
    EXPECT_EQ(Log(), "");
    window.files.answer.reset();
    EXPECT_FALSE(viewer.MayClose());
    EXPECT_EQ(viewer.LastRun(), RunEnd::Finished) << "the result is as good as before";
}

TEST_F(FilesOfViewer, PrintsWhatIsShownAndStops) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    EXPECT_EQ(viewer.PrintActiveEditor(), PrintEnd::Cancelled);
    window.files.printer = std::make_unique<PageNotes>();
    EXPECT_EQ(viewer.PrintActiveEditor(), PrintEnd::Printed);
    EXPECT_EQ(window.status[StatusPanel::Detail], "Ready");
    window.files.printer = std::make_unique<PageNotes>();
    viewer.PumpEvery(0ms);
    window.on_pump = [&] {
        EXPECT_EQ(viewer.PrintActiveEditor(), PrintEnd::Cancelled) << "one at a time";
        viewer.Abort();
    };
    EXPECT_EQ(viewer.PrintActiveEditor(), PrintEnd::Stopped);
    window.on_pump = nullptr;
    EXPECT_EQ(window.status[StatusPanel::Detail], "Printing Aborted");
    EXPECT_FALSE(window.abort_visible);
    EXPECT_EQ(viewer.State(), ViewerState::Idle);
}

TEST_F(FilesOfViewer, EditsAreAskedAbout) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    EXPECT_TRUE(viewer.MayClose());
    viewer.OptionsChanged();
    EXPECT_TRUE(viewer.MayClose()) << "an option is no edit";
    Edit(Side::Modified, u"x");
    EXPECT_FALSE(viewer.MayClose()) << "nobody there to ask";
    ASSERT_EQ(window.files.asked.size(), 1U);
    EXPECT_NE(window.files.asked[0].text.find("m.txt"), std::string::npos);
    viewer.SelectFile(Side::Modified, fakes.folder.Path("o.txt"));
    EXPECT_FALSE(viewer.MayClose());
    EXPECT_NE(window.files.asked.back().text.find("m.txt"), std::string::npos) << "its edits";
    window.files.answer = 0;
    EXPECT_FALSE(viewer.MayClose()) << "no name was picked";
    EXPECT_EQ(window.files.picked.start, fakes.folder.Path("m")) << "whatever has the focus";
    window.files.answer.reset();
    viewer.RunCompare(false);
    EXPECT_FALSE(viewer.MayClose()) << "a compare saves nothing";
    window.files.answer = 1;
    EXPECT_TRUE(viewer.MayClose());
}

// Only where a reload would put the file over the edits.
TEST_F(FilesOfViewer, SidesAreSwappedWithTheirEditsAndFiles) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    LookAtDisk();
    Edit(Side::Original, u"x");
    viewer.SwapSides();
    EXPECT_FALSE(Text(Side::Original).IsModified());
    EXPECT_TRUE(Text(Side::Modified).IsModified()) << "swapping saves nothing";
    fakes.folder.Write("m.txt", "longer than it was\n");
    window.files.answer = 0;
    LookAtDisk();
    EXPECT_EQ(Text(Side::Original).Text(), u"longer than it was\r\n");
    EXPECT_EQ(Text(Side::Modified).Text(), u"xa\r\n");
}

TEST_F(FilesOfViewer, NothingIsSavedDuringARun) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    Edit(Side::Original, u"x");
    window.files.answer = 0;
    viewer.PumpEvery(0ms);
    int asked = 0;
    window.on_pump = [&] {
        if (asked++ > 0)
            return;
        EXPECT_EQ(viewer.SaveActiveEditorAs(), SaveOutcome{});
        EXPECT_FALSE(viewer.MayClose());
    };
    viewer.RunCompare(false);
    window.on_pump = nullptr;
    EXPECT_GT(asked, 0);
    ASSERT_EQ(window.messages.size(), 1U);
    EXPECT_NE(window.messages[0].find("Nothing can be saved"), std::string::npos);
}

TEST_F(FilesOfViewer, AReportIsRefusedForItsOwnCause) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    std::string file = fakes.folder.Path("r.htm");
    viewer.PumpEvery(0ms);
    bool asked = false;
    window.on_pump = [&] {
        if (std::exchange(asked, true))
            return;
        EXPECT_EQ(viewer.CreateReport(file, ReportType::Html, 1), ReportResult::Busy);
    };
    viewer.Refresh();
    EXPECT_TRUE(asked);
    EXPECT_EQ(Log(),
              "Compare is in progress, no report can be generated until compare is complete\r\n");
    window.on_pump = [&] { viewer.Abort(); };
    viewer.Refresh();
    window.on_pump = nullptr;
    std::filesystem::remove(fakes.folder.Path("log"));
    EXPECT_EQ(viewer.CreateReport(file, ReportType::Html, 1), ReportResult::Aborted);
    EXPECT_EQ(Log(), "Compare was aborted, no report can be generated\r\n");
    viewer.RunCompare(false);
    viewer.Options().sIgnoreRegularExpression.SetData("(");
    viewer.OptionsChanged();
    std::filesystem::remove(fakes.folder.Path("log"));
    EXPECT_EQ(viewer.CreateReport(file, ReportType::Html, 1), ReportResult::NotCompared);
    EXPECT_EQ(Log().find("file"), std::string::npos) << Log();
    EXPECT_FALSE(Log().empty());
    EXPECT_FALSE(std::filesystem::exists(file));
}

// The events of a question may close the viewer, or ask the same again.
TEST_F(FilesOfViewer, AViewerWithAnOpenQuestionIsBusyAndCanBeGivenUp) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    viewer.Telling().manner.bSilent = false;
    viewer.Options().bReloadOnRefresh.SetData(true);
    viewer.Options().bOptimizeFileLoading.SetData(false);
    for (const bool gives_up : {true, false}) {
        SCOPED_TRACE(gives_up);
        Edit(Side::Original, u"x");
        window.files.asked.clear();
        window.files.answer = 1;
        int asked = 0;
        window.files.on_question = [&] {
            if (++asked > 1)
                return;
            EXPECT_TRUE(viewer.Busy()) << "else the frame lets it go";
            viewer.Refresh();
            viewer.LoadAgain(Side::Original);
            viewer.CheckFilesOnDisk();
            viewer.tbShowDifferenceUnknown();
            if (gives_up)
                viewer.Abort();
        };
        viewer.Refresh();
        window.files.on_question = nullptr;
        EXPECT_EQ(asked, 1) << "one question at a time";
        EXPECT_EQ(window.numbers_asked, 0);
        EXPECT_FALSE(viewer.Busy());
        EXPECT_EQ(Text(Side::Original).IsModified(), gives_up);
    }
    window.files.answer.reset();
    viewer.tbShowDifferenceUnknown();
    EXPECT_EQ(window.numbers_asked, 1) << "given up once is not given up for good";
}

TEST_F(FilesOfViewer, NoNumberIsAskedForDuringARun) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    viewer.PumpEvery(0ms);
    window.on_pump = [&] { viewer.tbShowDifferenceUnknown(); };
    viewer.RunCompare(false);
    window.on_pump = nullptr;
    EXPECT_EQ(window.numbers_asked, 0);
}

}  // namespace
}  // namespace zorvane::viewer_files_test
