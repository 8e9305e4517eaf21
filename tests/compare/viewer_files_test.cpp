// A viewer and its files: what is saved and printed, what would be lost, what changes on the disk.
#include <chrono>
#include <filesystem>
#include <sys/stat.h>
#include <thread>

#include <gtest/gtest.h>

#include "compare/document/rtf_reader.h"
#include "tests/support/page_notes.h"
#include "tests/support/viewer_fixture.h"

namespace zorvane::viewer_files_test {
namespace {

using namespace std::chrono_literals;

class FilesOfViewer : public ViewerTest {
  protected:
    RichDocument& Text(Side side) {
        return side == Side::Original ? viewer.Editors().rtbOriginal.editor
                                      : viewer.Editors().rtbModified.editor;
    }
    void Edit(Side side, std::u16string_view text) { Text(side).Replace({CharPos{0}, 0}, text); }
    SaveEnd SaveAs(EditorTarget target, const std::string& name, std::int32_t type) {
        viewer.SetActiveEditor(target);
        window.files.file = fakes.folder.Path(name);
        window.files.filter_index = type;
        return viewer.SaveActiveEditorAs().end;
    }
    // Long enough for a change to be still.
    void LookAtDisk() {
        for (int look = 0; look < 3; ++look) {
            fakes.clock().ticks += 2000;
            viewer.CheckFilesOnDisk();
        }
    }
    void WaitForEnd() {
        for (int i = 0; i < 20000 && viewer.Busy(); ++i) {
            viewer.Poll();
            std::this_thread::sleep_for(1ms);
        }
        EXPECT_FALSE(viewer.Busy());
    }
};

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
TEST_F(FilesOfViewer, AReloadAsksAboutTheEditsThatItWouldLose) {
    constexpr std::int32_t kEdits = 0;
    constexpr std::int32_t kFiles = 1;
    constexpr std::int32_t kCancel = 2;
    constexpr const char* kBoth = "Original and Modified have";
    struct Row {
        const char* name;
        std::string_view edited;   // sides, as the begins of their files' names
        std::string_view changed;  // on the disk
        bool optimize;
        std::int32_t answer;
        const char* question;  // its begin; empty: none is asked
        std::u16string_view original;
        std::u16string_view modified;
        bool fresh;
    };
    const Row rows[] = {
        {"nothing edited", "", "om", true, kEdits, "", u"A", u"B", true},
        {"not read again", "om", "", true, kEdits, "", u"xa", u"xb", true},
        {"the other one changed", "o", "m", true, kEdits, "", u"xa", u"B", true},
        {"edits of the left", "o", "om", true, kEdits, "Original has", u"xa", u"B", true},
        {"edits of the right", "m", "om", true, kEdits, "Modified has", u"A", u"xb", true},
        {"one of two", "om", "o", true, kEdits, "Original has", u"xa", u"xb", true},
        {"both", "om", "om", true, kEdits, kBoth, u"xa", u"xb", true},
        {"always read again", "om", "", false, kEdits, kBoth, u"xa", u"xb", true},
        {"files", "om", "om", true, kFiles, kBoth, u"A", u"B", true},
        {"neither", "m", "om", true, kCancel, "Modified has", u"a", u"xb", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        viewer.Telling().manner.bSilent = false;
        viewer.Options().bReloadOnRefresh.SetData(true);
        viewer.Options().bOptimizeFileLoading.SetData(true);
        ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
        viewer.Options().bOptimizeFileLoading.SetData(row.optimize);
        for (const Side side : kBothSides) {
            const bool left = side == Side::Original;
            const char letter = left ? 'o' : 'm';
            if (row.edited.find(letter) != std::string_view::npos)
                Edit(side, u"x");
            if (row.changed.find(letter) != std::string_view::npos)
                fakes.folder.Write(left ? "o.txt" : "m.txt", left ? "A\n\n" : "B\n\n");
        }
        window.files.asked.clear();
        window.files.answer = row.answer;
        viewer.Refresh();
        const std::string asked = window.files.asked.empty() ? "" : window.files.asked.front().text;
        EXPECT_TRUE(*row.question == 0 ? asked.empty() : asked.starts_with(row.question)) << asked;
        EXPECT_LE(window.files.asked.size(), 1U);
        const auto first_line = [this](Side side) {
            const std::u16string text = Text(side).Text();
            return text.substr(0, text.find(u'\r'));
        };
        EXPECT_EQ(first_line(Side::Original), row.original);
        EXPECT_EQ(first_line(Side::Modified), row.modified);
        EXPECT_EQ(!viewer.IsStale(), row.fresh);
        // What was compared is what stands there.
        EXPECT_TRUE(!row.fresh || Left().find(ToUtf8(row.original)) != std::string::npos) << Left();
        // What was kept can still be lost.
        EXPECT_EQ(Text(Side::Original).IsModified(), row.original == u"xa");
    }
}

// Nobody is there to answer, and one side alone is asked about where one is loaded.
TEST_F(FilesOfViewer, AReloadAsksNobodyButTheUserOfItsSide) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    viewer.Options().bOptimizeFileLoading.SetData(false);
    Edit(Side::Original, u"x");
    viewer.Refresh();
    EXPECT_TRUE(window.files.asked.empty()) << "a silent viewer asks nothing";
    Edit(Side::Original, u"x");
    viewer.LoadAgain(Side::Modified);
    EXPECT_TRUE(window.files.asked.empty()) << "that side has no edits";
    viewer.LoadAgain(Side::Original);
    EXPECT_EQ(window.files.asked.size(), 1U);
    EXPECT_EQ(Text(Side::Original).Text(), u"xa\r\n");
}

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

TEST_F(FilesOfViewer, AFileThatSomebodyChangesIsLoadedAgain) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    LookAtDisk();
    EXPECT_TRUE(window.files.asked.empty());
    fakes.folder.Write("m.txt", "longer than it was\n");
    LookAtDisk();
    ASSERT_EQ(window.files.asked.size(), 1U) << "kept, and told once";
    EXPECT_EQ(Text(Side::Modified).Text(), u"b\r\n");
    Edit(Side::Original, u"edited ");
    Edit(Side::Modified, u"lost ");
    fakes.folder.Write("m.txt", "longer still than it was\n");
    window.files.answer = 0;
    LookAtDisk();
    ASSERT_EQ(window.files.asked.size(), 2U);
    EXPECT_NE(window.files.asked[1].text.find("would be lost"), std::string::npos);
    EXPECT_EQ(Text(Side::Modified).Text(), u"longer still than it was\r\n");
    EXPECT_FALSE(Text(Side::Modified).IsModified());
    EXPECT_EQ(Text(Side::Original).Text(), u"edited a\r\n");
    EXPECT_TRUE(Text(Side::Original).IsModified());
    EXPECT_EQ(window.status[StatusPanel::Main], "Diff View not fresh");
    EXPECT_TRUE(viewer.IsStale());
    EXPECT_EQ(viewer.LastRun(), RunEnd::Finished);
    std::filesystem::remove(fakes.folder.Path("m.txt"));
    LookAtDisk();
    EXPECT_EQ(window.files.asked.size(), 3U);
    EXPECT_TRUE(window.messages.empty()) << "what is gone is not loaded again";
    EXPECT_EQ(Text(Side::Modified).Text(), u"longer still than it was\r\n");
    viewer.RunCompare(false);
    EXPECT_NE(Right().find("longer still than it was"), std::string::npos);
    EXPECT_FALSE(viewer.IsStale());
}

// Both sides come in one run, and what the user selected meanwhile for the next run stays.
TEST_F(FilesOfViewer, BothSidesAreLoadedAgainBesideTheWindow) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    viewer.RunInBackground(true);
    fakes.folder.Write("o.txt", "original anew\n");
    fakes.folder.Write("m.txt", "modified anew\n");
    const std::string next = fakes.folder.Write("next.txt", "next\n");
    viewer.Options().sFileOriginal.SetData(next);
    window.files.answer = 0;
    LookAtDisk();
    EXPECT_EQ(window.files.asked.size(), 2U);
    WaitForEnd();
    EXPECT_EQ(Text(Side::Original).Text(), u"original anew\r\n");
    EXPECT_EQ(Text(Side::Modified).Text(), u"modified anew\r\n");
    EXPECT_EQ(viewer.Options().sFileOriginal.Data(), next);
    LookAtDisk();
    EXPECT_EQ(window.files.asked.size(), 2U) << "what was loaded is watched as it was then";
}

// At whatever moment of a run the file changes: what is shown is what stands there, or it is told.
TEST_F(FilesOfViewer, AChangeDuringARunIsShownOrTold) {
    viewer.PumpEvery(0ms);
    int moments = 0;
    for (bool changed = true; changed; ++moments) {
        SCOPED_TRACE(moments);
        ASSERT_LT(moments, 2000);
        changed = false;
        int pumps = 0;
        window.files.asked.clear();
        window.on_pump = [&] {
            if (pumps++ != moments)
                return;
            changed = true;
            fakes.folder.Write("o.txt", "changed meanwhile\n");
        };
        ASSERT_TRUE(Compare("a" + std::to_string(moments) + "\n", "b\n", View::SideBySide));
        window.on_pump = nullptr;
        LookAtDisk();
        const bool shown = Text(Side::Original).Text() == u"changed meanwhile\r\n";
        EXPECT_TRUE(!changed || shown || window.files.asked.size() == 1);
    }
    EXPECT_GT(moments, 5);
}

// Each refusal has its own code and words.
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
