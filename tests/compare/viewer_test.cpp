// The viewer's decisions: aborts, freshness, views, navigation, settings.
#include <filesystem>
#include <set>

#include <gtest/gtest.h>

#include "tests/support/printers.h"
#include "tests/support/viewer_fixture.h"

namespace zorvane::viewer_test {
namespace {

class FrmCompareFilesTest : public ViewerTest {
  protected:
    std::set<std::string> Files() const {
        std::set<std::string> names;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(fakes.folder.Path())) {
            if (entry.is_regular_file())
                names.insert(entry.path().filename());
        }
        return names;
    }
    std::string Many(int changed) const {
        std::string text;
        for (int i = 0; i < 20; ++i)
            text += (i % 4 == 0 ? "line " + std::to_string(changed) : "same") + std::to_string(i) +
                    "\n";
        return text;
    }
};

TEST_F(FrmCompareFilesTest, TellsWhenNothingDiffers) {
    ASSERT_TRUE(Compare("a", "a", View::SideBySide));
    EXPECT_EQ(window.status[StatusPanel::Main], "Compare Completed. No differences detected.");
    EXPECT_FALSE(window.filters[ViewFilter::Additions] || window.filters[ViewFilter::Changes] ||
                 window.filters[ViewFilter::Deletions]);
    EXPECT_EQ(window.status[StatusPanel::Time], "0:00:00");
    EXPECT_EQ(viewer.Differences().Count(), 0);
    EXPECT_EQ(window.navigation, NavigationButtons{});
}

// A run to a report that shows no editors marks none and leaves no files of its own behind.
TEST_F(FrmCompareFilesTest, BuildsOnlyWhatIsAskedFor) {
    ASSERT_TRUE(Compare(Many(1), Many(2), View::SideBySide, "txt", BuildViews::No));
    EXPECT_EQ(viewer.VXMacroDiff().getDifferenceCount(), 5);
    EXPECT_EQ(viewer.mlChanges(), 5);
    ViewerEditors& editors = viewer.Editors();
    for (const ShownDocument* entry :
         {&editors.rtbOriginal, &editors.rtbModified, &editors.rtbOriginalDiffFinal,
          &editors.rtbModifiedDiffFinal, &editors.rtbAIODiff})
        EXPECT_EQ(entry->editor.Length(), 0);
    EXPECT_EQ(viewer.Differences().Count(), 0);
    const auto report = [&](const char* name) {
        std::string file = fakes.folder.Path(name);
        EXPECT_EQ(viewer.CreateReport(file, ReportType::Html, 2), ReportResult::Ok);
        return fakes.folder.Read(name);
    };
    const std::string page = report("no_views.htm");
    EXPECT_NE(page.find("5 differences"), std::string::npos);
    EXPECT_EQ(Files(), (std::set<std::string>{"m.txt", "no_views.htm", "o.txt"}))
        << "no line files";
    ASSERT_TRUE(Compare(Many(1), Many(2), View::SideBySide));
    EXPECT_NE(Left(), "");
    EXPECT_EQ(report("views.htm"), page) << "the page does not depend on the editors";
}

TEST_F(FrmCompareFilesTest, ADocumentReportHoldsThePartsThatAreChosen) {
    ASSERT_TRUE(Compare("same\nthe first line of two\nkept\ngone away\n",
                        "same\nthe other line of two\nkept\nnewly\nkept too\n", View::AllInOne));
    CompareFilesSettings& settings = viewer.Settings();
    struct Part {
        bool& chosen;
        std::string_view shown;
    };
    const Part parts[] = {{settings.bReportDOC_ShowAllInOneDifferenceViewer, "kept\\par"},
                          {settings.bReportDOC_Additions, "Additions Summary. 1 "},
                          {settings.bReportDOC_ShowDeletions, "Deletions Summary. 1 "},
                          {settings.bReportDOC_ShowChanges, "Change Summary. 1 "}};
    for (const Part& wanted : parts) {
        for (const Part& part : parts)
            part.chosen = &part == &wanted;
        std::string file = fakes.folder.Path("r.rtf");
        EXPECT_EQ(viewer.CreateReport(file, ReportType::Document, 2), ReportResult::Ok);
        const std::string report = fakes.folder.Read("r.rtf");
        for (const Part& part : parts)
            EXPECT_EQ(report.find(part.shown) != std::string::npos, part.chosen) << part.shown;
    }
}

// At whichever yield the user asks for it, a run ends, and the next one is whole.
TEST_F(FrmCompareFilesTest, EndsAtAnyYieldAndRunsAgain) {
    viewer.PumpEvery(std::chrono::milliseconds(0));
    for (const View view : {View::SideBySide, View::AllInOne}) {
        window.pumps = 0;
        ASSERT_TRUE(Compare(Many(1), Many(2), view));
        const int pumps_of_a_run = window.pumps;
        const std::string whole = view == View::AllInOne ? AllInOne() : Left();
        int aborted = 0;
        for (int at = 4; at < pumps_of_a_run; at += 3) {
            int left = at;
            window.on_pump = [&] {
                if (--left == 0)
                    viewer.Abort();
            };
            Compare(Many(1), Many(2), view);
            aborted += window.status[StatusPanel::Main] == "Compare Aborted" ? 1 : 0;
            EXPECT_FALSE(window.abort_visible);
            window.on_pump = nullptr;
            ASSERT_TRUE(Compare(Many(1), Many(2), view));
            EXPECT_EQ(view == View::AllInOne ? AllInOne() : Left(), whole);
        }
        EXPECT_GT(aborted, 3);
        window.pumps = 0;
    }
}

TEST_F(FrmCompareFilesTest, ShowsProgressOfTheWalk) {
    viewer.PumpEvery(std::chrono::milliseconds(0));
    ASSERT_TRUE(Compare("a\nb\nc\nd", "1\nb\n2\nd", View::AllInOne));
    const auto& texts = window.main_texts;
    const auto has = [&](const char* text) {
        return std::find(texts.begin(), texts.end(), text) != texts.end();
    };
    EXPECT_TRUE(has("Comparing..."));
    EXPECT_TRUE(has("Compare In Process..."));
    EXPECT_TRUE(has("Document: 0% Done."));
    EXPECT_TRUE(has("Document: 50.0% Done."));
    EXPECT_TRUE(has("Document: 100.0% Done."));
    ASSERT_TRUE(Compare("a\nb\nc\nd", "1\nb\n2\nd", View::SideBySide));
    EXPECT_TRUE(has("Document 50.0% Done. Click here to Abort.")) << "kept: no colon in this one";
}

TEST_F(FrmCompareFilesTest, BuildsEachViewWhenItIsFirstShown) {
    viewer.PumpEvery(std::chrono::milliseconds(0));
    viewer.Telling().manner.bSilent = false;
    ASSERT_TRUE(Compare("a\nb", "a\nc", View::SideBySide));
    EXPECT_EQ(AllInOne(), "");
    viewer.cmdChangeViewFormat_Click();
    EXPECT_EQ(viewer.CurrentView(), View::AllInOne);
    EXPECT_NE(AllInOne(), "");
    const int pumps = window.pumps;
    viewer.cmdChangeViewFormat_Click();
    viewer.cmdChangeViewFormat_Click();
    EXPECT_EQ(window.pumps, pumps) << "both views are fresh, so nothing runs";
    viewer.RefreshDisplay(false, true);
    const int after_refresh = window.pumps;
    viewer.cmdChangeViewFormat_Click();
    EXPECT_GT(window.pumps, after_refresh) << "a refresh leaves the other view stale";
}

TEST_F(FrmCompareFilesTest, MovesFromDifferenceToDifference) {
    ASSERT_TRUE(
        Compare("a oak\nb\nc oak\nd\ne oak", "1 oak\nb\n2 oak\nd\n3 oak", View::SideBySide));
    ASSERT_EQ(viewer.Differences().Count(), 3);
    EXPECT_EQ(viewer.Differences().Line(1), "[2] 1 change at paragraph (3) :\"c oak\"");
    viewer.ShowDifferenceLast();
    EXPECT_EQ(viewer.mlCurrentDifference(), 3);
    EXPECT_EQ(window.navigation, (NavigationButtons{true, true, false, false, true}));
    EXPECT_EQ(window.status[StatusPanel::Main], "[3] Change at paragraph: 5");
    viewer.ShowDifferenceNext();
    EXPECT_EQ(viewer.mlCurrentDifference(), 3) << "held at the last";
    viewer.ShowDifferencePrevious();
    EXPECT_EQ(window.navigation, (NavigationButtons{true, true, true, true, true}));
    viewer.ShowDifferenceFirst();
    EXPECT_EQ(window.navigation, (NavigationButtons{false, false, true, true, true}));
    EXPECT_EQ(Readable(viewer.Editors().rtbOriginal.editor.SelectedText()), "a oak|");
    EXPECT_EQ(viewer.Editors().rtbOriginalDiffFinal.editor.Selection().length, 1)
        << "the result only scrolls";
    viewer.Options().bSelectTextInDiffViewer.SetData(true);
    viewer.SelectListItem(2);
    EXPECT_EQ(Readable(viewer.Editors().rtbModifiedDiffFinal.editor.SelectedText()), "3 oak|");
}

TEST_F(FrmCompareFilesTest, FiltersTellTheirCounts) {
    ASSERT_TRUE(Compare("a\nb oak\nc", "a\nx oak\nc\nd", View::SideBySide));
    viewer.ShowFilter(ViewFilter::Additions);
    EXPECT_EQ(window.status[StatusPanel::Main], "1: Number of additions");
    viewer.ShowFilter(ViewFilter::Deletions);
    EXPECT_EQ(window.status[StatusPanel::Main], "0: Number of deletions");
    viewer.OptionsChanged();
    EXPECT_EQ(window.status[StatusPanel::Main], "Diff View not fresh");
}

TEST_F(FrmCompareFilesTest, BeepsWhenAsked) {
    ASSERT_TRUE(Compare("a", "b", View::SideBySide));
    EXPECT_EQ(fakes.sound().beeps, 0);
    viewer.Options().bBeepWhenDone.SetData(true);
    ASSERT_TRUE(Compare("a", "b", View::SideBySide));
    EXPECT_EQ(fakes.sound().beeps, 1);
}

TEST_F(FrmCompareFilesTest, AsksOnlyWithAUserAndAboveTheLimit) {
    std::string lines;
    for (std::int32_t i = 1; i < kParagraphsBeforeAsking; ++i)
        lines += "x\n";  // and the paragraph behind the last break
    viewer.Telling().manner.bSilent = false;
    ASSERT_TRUE(Compare(lines, lines + "y", View::AllInOne));
    EXPECT_TRUE(window.questions.empty());
    ASSERT_TRUE(Compare(lines + "\n", lines + "\ny", View::AllInOne));
    ASSERT_EQ(window.questions.size(), 1U);
    EXPECT_NE(window.questions[0].find("50,000 paragraphs.  The comparison"), std::string::npos);
    viewer.Telling().manner.bSilent = true;
    ASSERT_TRUE(Compare(lines + "\n", lines + "\nz", View::AllInOne));
    EXPECT_EQ(window.questions.size(), 1U);
}

TEST_F(FrmCompareFilesTest, KeepsItsSectionAndRecentFiles) {
    ASSERT_TRUE(Compare("a", "b", View::SideBySide));
    viewer.Options().bIgnoreCase.SetData(true);
    viewer.Settings().dFontSize = 12.5;
    viewer.SaveIniFile();
    frmCompareFiles again(process, request, window);
    again.Setup("1_CompareFile", true);
    EXPECT_TRUE(again.Options().bIgnoreCase.Data());
    EXPECT_EQ(again.Settings().dFontSize, 12.5);
    EXPECT_EQ(process.settings->Read("1_CompareFilemruOriginal", "1_CompareFilemruOriginal1", ""),
              fakes.folder.Path("o.txt"));
    EXPECT_EQ(process.settings->Read("1_CompareFilemruOriginal", "1_CompareFilemruOriginal2", ""),
              "MRU_DONE");
}

TEST_F(FrmCompareFilesTest, RefreshWithEmptyEditorsSaysSo) {
    viewer.Telling().manner.bSilent = false;
    viewer.Options().bReloadOnRefresh.SetData(false);
    viewer.Refresh();
    ASSERT_EQ(window.messages.size(), 1U);
    EXPECT_EQ(window.messages[0].find("Original and Modified editors are empty."), 0U);
    EXPECT_EQ(window.status[StatusPanel::Main], "Compare Completed. No differences detected.");
}

TEST_F(FrmCompareFilesTest, AMissingFileFailsWithItsName) {
    viewer.Options().sFileOriginal.SetData(fakes.folder.Path("none.txt"));
    viewer.Options().sFileModified.SetData(fakes.folder.Write("m.txt", "x"));
    bool failed = false;
    viewer.RefreshDisplayCommandLine(2, BuildViews::Yes, failed);
    EXPECT_TRUE(failed);
    EXPECT_NE(Log().find("File does not exist:\r\n\r\n" + fakes.folder.Path("none.txt")),
              std::string::npos);
}

}  // namespace
}  // namespace zorvane::viewer_test
