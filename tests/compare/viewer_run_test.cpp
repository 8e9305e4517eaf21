// A viewer whose runs go on beside it: states, the hand-over, stops at any moment, closing.
#include <chrono>
#include <future>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "compare/run/question_relay.h"
#include "tests/support/viewer_fixture.h"

namespace zorvane::viewer_run_test {
namespace {

using namespace std::chrono_literals;

class ViewerRunTest : public ViewerTest {
  protected:
    ViewerRunTest() {
        std::mt19937 random(11);
        std::string original;
        for (int i = 0; i < 4000; ++i)
            original += "word" + std::to_string(random() % 900) + (i % 9 == 8 ? "\n" : " ");
        std::string modified = original;
        for (int i = 0; i < 80; ++i)
            modified.insert(random() % modified.size(), " other ");
        texts_ = {original, modified};
    }
    void UseFiles() {
        viewer.Options().sFileOriginal.SetData(fakes.folder.Write("o.txt", texts_.original));
        viewer.Options().sFileModified.SetData(fakes.folder.Write("m.txt", texts_.modified));
    }
    std::vector<std::string> ListLines() {
        std::vector<std::string> lines;
        for (std::int32_t index = 0; index < viewer.Differences().Count(); ++index)
            lines.push_back(viewer.Differences().Line(index));
        return lines;
    }
    // Everything that a user sees of the result.
    std::string Whole() {
        ViewerEditors& editors = viewer.Editors();
        std::string shown;
        for (const Editor* editor :
             {static_cast<const Editor*>(&editors.rtbOriginal.editor),
              static_cast<const Editor*>(&editors.rtbModified.editor),
              static_cast<const Editor*>(&editors.rtbOriginalDiffFinal.editor),
              static_cast<const Editor*>(&editors.rtbModifiedDiffFinal.editor),
              static_cast<const Editor*>(&editors.rtbAIODiff.editor),
              static_cast<const Editor*>(&editors.rtbAdditions),
              static_cast<const Editor*>(&editors.rtbDeletions),
              static_cast<const Editor*>(&editors.rtbChanges)})
            shown += Notation(editor->Rich()) + "\n====\n";
        for (const std::string& line : ListLines())
            shown += line + "\n";
        return shown + std::to_string(viewer.mlChanges()) + "," +
               std::to_string(viewer.Compared().sections.size());
    }
    bool WaitForEnd() {
        for (int i = 0; i < 20000; ++i) {
            if (viewer.Poll() && !viewer.Busy())
                return true;
            std::this_thread::sleep_for(1ms);
        }
        return !viewer.Busy();
    }

    PerSide<std::string> texts_;
};

TEST_F(ViewerRunTest, GoesOnBesideTheWindowAndHandsOverOnce) {
    UseFiles();
    viewer.RunInBackground(true);
    EXPECT_EQ(viewer.State(), ViewerState::Idle);
    viewer.Refresh();
    EXPECT_TRUE(viewer.Busy());
    EXPECT_NE(viewer.State(), ViewerState::Idle);
    EXPECT_TRUE(viewer.IsEnabled(ViewerCommand::Abort));
    EXPECT_FALSE(viewer.IsEnabled(ViewerCommand::Refresh));
    EXPECT_FALSE(viewer.IsEnabled(ViewerCommand::Save));
    EXPECT_EQ(viewer.Editors().rtbOriginal.editor.Length(), 0) << "nothing before the hand-over";
    const View view = viewer.CurrentView();
    viewer.cmdChangeViewFormat_Click();
    EXPECT_EQ(viewer.CurrentView(), view) << "refused while a run goes on";
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(viewer.LastRun(), RunEnd::Finished);
    EXPECT_FALSE(viewer.IsStale());
    EXPECT_GT(viewer.mlChanges(), 0);
    EXPECT_FALSE(viewer.Editors().rtbOriginal.editor.CanUndo());
    const std::string beside = Whole();
    viewer.RunInBackground(false);
    viewer.Options().bOptimizeFileLoading.SetData(false);
    viewer.Refresh();
    EXPECT_EQ(Whole(), beside) << "on its own thread it gives the same";
}

TEST_F(ViewerRunTest, AStopAtAnyMomentLeavesTheLastWholeResult) {
    UseFiles();
    viewer.Refresh();
    const std::string whole = Whole();
    viewer.Options().bOptimizeFileLoading.SetData(false);
    viewer.Options().bCompareByCharacter.SetData(true);  // so that a new result would be another
    std::mt19937 random(12);
    viewer.PumpEvery(0ms);
    window.pumps = 0;
    std::string report = fakes.folder.Path("whole.htm");
    int stopped = 0;
    for (int i = 0; stopped < 200 && i < 2000; ++i) {
        SCOPED_TRACE(i);
        const bool beside = i % 2 == 0;
        viewer.RunInBackground(beside);
        int left = static_cast<int>(1 + random() % 150);
        window.on_pump = [&] {
            if (--left == 0)
                viewer.Abort();
        };
        viewer.Refresh();
        if (beside) {
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 8000));
            viewer.Abort();
            ASSERT_TRUE(WaitForEnd());
        }
        window.on_pump = nullptr;
        ASSERT_EQ(viewer.State(), ViewerState::Idle);
        EXPECT_FALSE(window.abort_visible);
        if (viewer.LastRun() != RunEnd::Aborted) {
            viewer.RunInBackground(false);
            viewer.Options().bCompareByCharacter.SetData(false);
            viewer.Refresh();
            viewer.Options().bCompareByCharacter.SetData(true);
            continue;
        }
        ++stopped;
        EXPECT_EQ(window.status[StatusPanel::Main], "Compare Aborted");
        ASSERT_EQ(Whole(), whole);
        EXPECT_EQ(viewer.CreateReport(report, ReportType::Html, 1), ReportResult::Aborted);
    }
    EXPECT_EQ(stopped, 200) << "too many moments lie behind the end of a run";
    EXPECT_NE(Log().find("Compare was aborted, no report can be generated"), std::string::npos);
    EXPECT_EQ(fakes.folder.Read("whole.htm"), "");
}

// Of a long text the paragraphs come first; a stop puts back what was there before.
TEST_F(ViewerRunTest, ShowsALongResultEarlyAndTakesItBackAfterAStop) {
    std::string lines;
    for (int i = 0; i < 30000; ++i)
        lines += "line " + std::to_string(i) + " of many words that stay as they are\n";
    std::string changed = lines;
    for (std::size_t at = 5000; at < changed.size(); at += 4000)
        changed.replace(changed.find("words", at), 5, "texts");
    texts_ = {lines, changed};
    UseFiles();
    viewer.RunInBackground(true);
    const auto wait_for_early = [&] {
        viewer.Refresh();
        for (int i = 0; i < 60000 && viewer.Busy() && !viewer.ShowsEarlyResult(); ++i) {
            viewer.Poll();
            std::this_thread::sleep_for(1ms);
        }
        return viewer.ShowsEarlyResult();
    };
    // A run may be done before the stop reaches it.
    constexpr int kTries = 20;
    bool stopped = false;
    for (int attempt = 0; attempt < kTries && !stopped; ++attempt) {
        const std::string before = Whole();
        const std::int32_t differences = viewer.VXMacroDiff().getDifferenceCount();
        if (!wait_for_early())
            continue;
        ASSERT_NE(viewer.ComparedText(Side::Original), nullptr);
        EXPECT_EQ(viewer.ShownComparison()->Paragraphs(Side::Original), 30001);
        EXPECT_EQ(viewer.VXMacroDiff().getDifferenceCount(), differences)
            << "nothing is made of it";
        EXPECT_FALSE(viewer.IsEnabled(ViewerCommand::Save));
        viewer.Abort();
        ASSERT_TRUE(WaitForEnd());
        stopped = viewer.LastRun() == RunEnd::Aborted;
        EXPECT_TRUE(!stopped || Whole() == before);
    }
    EXPECT_TRUE(stopped);
    std::vector<std::string> early_list;
    if (wait_for_early())
        early_list = ListLines();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_FALSE(viewer.ShowsEarlyResult());
    EXPECT_EQ(static_cast<std::size_t>(viewer.VXMacroDiff().getDifferenceCount()),
              ListLines().size());
    EXPECT_TRUE(early_list.empty() || ListLines() == early_list);
}

TEST_F(ViewerRunTest, AnEditDuringARunLeavesItsResultStale) {
    UseFiles();
    viewer.Refresh();
    ASSERT_FALSE(viewer.IsStale());
    viewer.RunInBackground(true);
    viewer.RunCompare(false);
    viewer.Editors().rtbOriginal.editor.Type(u"typed ");
    const std::u16string typed = viewer.Editors().rtbOriginal.editor.Text();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_TRUE(viewer.IsStale());
    EXPECT_EQ(window.status[StatusPanel::Main], "Diff View not fresh");
    EXPECT_EQ(viewer.Editors().rtbOriginal.editor.Text(), typed) << "the edit stays";
    EXPECT_TRUE(viewer.Editors().rtbOriginal.editor.CanUndo());
    viewer.RunCompare(false);
    ASSERT_TRUE(WaitForEnd());
    EXPECT_FALSE(viewer.IsStale());
}

// What is typed while a run compares stays; a run that loads would put its texts over it, also when
// it has come to comparing.
TEST_F(ViewerRunTest, ARunThatLoadsTakesNoEditsToItsEnd) {
    UseFiles();
    viewer.PumpEvery(0ms);
    for (const bool loads : {true, false}) {
        SCOPED_TRACE(loads);
        std::map<ViewerState, int> seen;
        window.on_pump = [&] {
            ++seen[viewer.State()];
            EXPECT_EQ(viewer.IsEnabled(ViewerCommand::Edit), !loads);
            EXPECT_EQ(window.editable, !loads);
        };
        viewer.RefreshDisplay(loads, true);
        window.on_pump = nullptr;
        EXPECT_GT(seen[ViewerState::Comparing], 0);
        EXPECT_EQ(seen[ViewerState::Loading] > 0, loads);
        EXPECT_TRUE(viewer.IsEnabled(ViewerCommand::Edit));
        EXPECT_TRUE(window.editable);
    }
    viewer.Options().bOptimizeFileLoading.SetData(false);
    viewer.RunInBackground(true);
    viewer.Refresh();
    EXPECT_FALSE(window.editable);
    viewer.Abort();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_TRUE(window.editable) << "behind a stop too";
}

TEST_F(ViewerRunTest, BuildsTheOtherViewBesideTheWindow) {
    UseFiles();
    viewer.BeginWith(View::AllInOne);
    EXPECT_EQ(viewer.CurrentView(), View::AllInOne);
    EXPECT_EQ(window.view, View::AllInOne);
    viewer.BeginWith(View::SideBySide);
    viewer.Refresh();
    viewer.BeginWith(View::AllInOne);
    EXPECT_EQ(viewer.CurrentView(), View::SideBySide) << "nothing begins behind a result";
    viewer.RunInBackground(true);
    viewer.cmdChangeViewFormat_Click();
    EXPECT_TRUE(viewer.Busy());
    ASSERT_TRUE(WaitForEnd());
    EXPECT_GT(viewer.Editors().rtbAIODiff.editor.Length(), 0);
    viewer.cmdChangeViewFormat_Click();
    EXPECT_FALSE(viewer.Busy()) << "both views are fresh";
    // A stop while a view is built leaves it to be tried again.
    viewer.OptionsChanged();
    viewer.cmdChangeViewFormat_Click();
    viewer.cmdChangeViewFormat_Click();
}

TEST_F(ViewerRunTest, ClosesInEachState) {
    UseFiles();
    std::mt19937 random(13);
    for (int i = 0; i < 20; ++i) {
        RecordingWindow own_window;
        frmCompareFiles own(process, request, own_window);
        own.Telling().manner.bSilent = true;
        own.Setup("2_CompareFile", true);
        own.Options().sFileOriginal.SetData(viewer.Options().sFileOriginal.Data());
        own.Options().sFileModified.SetData(viewer.Options().sFileModified.Data());
        own.RunInBackground(true);
        own.Refresh();
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        if (i % 3 == 0)
            own.Poll();
        own.Close();
        EXPECT_EQ(own.State(), ViewerState::Closing);
        EXPECT_FALSE(own.Busy());
        own.Refresh();
        EXPECT_FALSE(own.Busy()) << "takes no more work";
    }
}

TEST_F(ViewerRunTest, WritesAReportBesideTheWindow) {
    UseFiles();
    viewer.Refresh();
    viewer.Settings().mlReportDefaultFileType_MD = static_cast<std::int32_t>(ReportType::Document);
    viewer.Settings().msgReportFileDOC_MD = fakes.folder.Path("r.doc");
    CommandLineRequest line;
    line.sLogFile = fakes.folder.Path("log");
    line.sReportTitle = "A title";
    viewer.BeginCommandLine(line, true);
    viewer.PresentDocumentReport({"first.rtf", "second.rtf"});
    viewer.RunInBackground(true);
    viewer.cmdViewReport();
    EXPECT_TRUE(viewer.Busy()) << "the all-in-one view is built first";
    std::string other = fakes.folder.Path("other.htm");
    EXPECT_EQ(viewer.CreateReport(other, ReportType::Html, 1), ReportResult::Busy);
    ASSERT_TRUE(WaitForEnd());
    while (viewer.Busy())
        ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(viewer.LastReport(), ReportResult::Ok);
    EXPECT_EQ(viewer.CurrentView(), View::SideBySide);
    EXPECT_NE(fakes.folder.Read("r.doc").find("A title"), std::string::npos);
    EXPECT_EQ(fakes.shell().calls, std::vector{"open " + fakes.folder.Path("r.doc")});
    viewer.Settings().bReportDOC_Tracked = true;
    viewer.cmdViewReport();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(viewer.LastReport(), ReportResult::TargetNotWritten) << "nobody converts here";
    EXPECT_EQ(fakes.shell().calls.size(), 1U);
    viewer.Editors().rtbModified.editor.ReplaceSelection(u"typed");
    viewer.cmdViewReport();
    while (viewer.Busy())
        ASSERT_TRUE(WaitForEnd());
    EXPECT_NE(fakes.folder.Read("log").find("save the edits first"), std::string::npos);
}

// The window answers on its own thread; a stop answers no.
TEST_F(ViewerRunTest, AsksThroughTheWindowsThread) {
    viewer.Telling().manner.bSilent = false;
    viewer.RunInBackground(true);
    viewer.Refresh();  // no file was ever chosen
    for (int i = 0; i < 5000 && window.messages.empty() && viewer.Busy(); ++i) {
        viewer.Poll();
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_EQ(window.messages.size(), 1U) << "a file that does not exist is told";
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(viewer.LastRun(), RunEnd::Failed);
    viewer.Options().sFileModified.SetData("");
    viewer.Refresh();
    std::this_thread::sleep_for(20ms);
    viewer.Abort();
    ASSERT_TRUE(WaitForEnd());
    EXPECT_EQ(viewer.LastRun(), RunEnd::Aborted);
    EXPECT_TRUE(window.questions.empty()) << "nobody answered";
}

TEST(QuestionRelay, BringsBackWhatTheWindowSaid) {
    for (const bool said : {true, false}) {
        RecordingWindow window;
        window.answer = said;
        QuestionRelay relay;
        auto heard = std::async(std::launch::async, [&] { return relay.AskYesNo("Go on?", ""); });
        while (heard.wait_for(1ms) != std::future_status::ready)
            relay.Answer(window);
        EXPECT_EQ(heard.get(), said);
    }
}

TEST(RunControl, MakesItsTextsFromStepAndPart) {
    FakePlatform fakes;
    ProcessState process(fakes.platform);
    const struct {
        RunStep step;
        double part;
        const char* text;
    } rows[] = {
        {RunStep::LoadFiles, 0, "Loading files..."},
        {RunStep::ReloadFiles, 0, "Re-loading files..."},
        {RunStep::ImportPdf, 0, "Importing PDF: 0.0% Complete "},
        {RunStep::ImportPdf, 0.42, "Importing PDF: 42.0% Complete "},
        {RunStep::ImportSlides, 0.5, "Importing PPT: 50% Complete "},
        {RunStep::PrepareCompare, 0, "Comparing..."},
        {RunStep::Compare, 0.3, "Compare In Process..."},
        {RunStep::List, 0.5, "Updating List Box: 50.0 % Done. Click here to Abort."},
        {RunStep::BeginMarking, 0, "Document: 0% Done."},
        {RunStep::MarkAllInOne, 1, "Document: 100.0% Done."},
        {RunStep::MarkSideBySide, 0.001, "Document .1% Done. Click here to Abort."},
        {RunStep::MarkSections, 0, "Section: .0% Done"},
        {RunStep::MarkLetters, 0.125, "By Character: 12.5% Done"},
        {RunStep::WriteReport, 0, "Creating Report"},
        {RunStep::LaunchReport, 0, "Launching Report"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        RunControl control;
        control.Progress(row.step, row.part);
        const RunTexts texts = control.Texts(process);
        EXPECT_EQ(texts.main + texts.detail, row.text);
        EXPECT_TRUE(texts.main.empty() || texts.detail.empty());
    }
}

}  // namespace
}  // namespace zorvane::viewer_run_test
