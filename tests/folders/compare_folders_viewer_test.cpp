#include "folders/compare_folders_viewer.h"

#include <gtest/gtest.h>

#include "tests/support/folder_process.h"

namespace zorvane {
namespace {

class FoldersViewerTest : public testing::Test, protected FolderViewerSetup {
  protected:
    std::vector<std::string> Cells(std::int32_t row) {
        std::vector<std::string> cells;
        for (const FolderCell& cell : viewer.Rows().Row(row).cells)
            cells.push_back(
                cell.text + (cell.shaded ? "#" : "") +
                (cell.ink == CellInk::Plain ? "" : std::to_string(static_cast<int>(cell.ink))));
        return cells;
    }
};

TEST_F(FoldersViewerTest, MakesRowsOfRecords) {
    trees.WriteBoth("both", "1", "22");
    trees.SetTime(Side::Original, "both", 1800000000);
    trees.WriteBoth("same", "1", "1");
    trees.Write(Side::Original, "left", "1");
    trees.Write(Side::Modified, "sub/right", "1");
    ASSERT_TRUE(RunWhole());
    const std::string a = trees.Root(Side::Original) + "/";
    const std::string b = trees.Root(Side::Modified) + "/";
    using Row = std::vector<std::string>;
    ASSERT_EQ(viewer.RowCount(), 5);
    EXPECT_EQ(Cells(0),
              (Row{"       both#1", "       both#1", "CHANGED#1", "[M]>[O]1", "[O]>[M]#1"}));
    EXPECT_EQ(Cells(1), (Row{"       left#2", "    #", "  ", " ", " "}));
    EXPECT_EQ(Cells(2), (Row{"       same", "       same", "  ", " ", " "}));
    EXPECT_EQ(Cells(3), (Row{"     #", "     " + b + "sub/#3", "  ", " ", " "}));
    EXPECT_EQ(Cells(4), (Row{" #", "       right#3", "  ", " ", " "}));
    EXPECT_EQ(viewer.Rows().Row(3)[FolderColumn::Modified].picture, CellPicture::Folder);
    EXPECT_EQ(viewer.Rows().Row(3)[FolderColumn::Original].picture, CellPicture::None);
    EXPECT_EQ(window.status[2], "Files: 4  Dirs: 1");
    EXPECT_EQ(window.status[3], "Compare Completed");
    EXPECT_EQ(window.flashes, 1);
    EXPECT_TRUE(viewer.CanReport());
    EXPECT_FALSE(viewer.CanAbort());
}

TEST_F(FoldersViewerTest, ShowsWhatHidesInAName) {
    trees.Write(Side::Original, "a\xE2\x80\xAEtxt.exe\n", "1");
    ASSERT_TRUE(RunWhole());
    EXPECT_EQ(Cells(0)[0], "       a[U+202E]txt.exe\xE2\x90\x8A#2");
}

TEST_F(FoldersViewerTest, DatesThatDoNotCountAreNotShown) {
    trees.WriteBoth("date", "1", "1");
    trees.SetTime(Side::Modified, "date", 1);
    viewer.Options().bIgnoreDateDifferences.SetData(true);
    ASSERT_TRUE(RunWhole());
    EXPECT_EQ(Cells(0), (std::vector<std::string>{"       date", "       date", "  ", " ", " "}));
    EXPECT_EQ(viewer.ColumnWidth(FolderColumn::Date), 0);
}

TEST_F(FoldersViewerTest, ChecksWordsInTheOrderOfTheRows) {
    trees.WriteBoth("a.txt", "one\r\nthe second line\r\n",
                    "one\r\nthe 2nd line\r\nof another kind\r\n");
    trees.WriteBoth("ends.txt", "one\r\ntwo\r\n", "one\ntwo\n");
    trees.WriteBoth("sub/b.txt", "line one of it\r\n", "line 1 of it\r\n");
    viewer.Options().bContentCompareText.SetData(true);
    viewer.Options().bCreateReport.SetData(true);
    viewer.txtReportFolder = fakes.folder.Path("reports");
    ASSERT_TRUE(RunWhole());
    EXPECT_EQ(Cells(0)[2], "1C, 1A, 0D#1");
    EXPECT_EQ(Cells(1)[2], "  #1");  // red, and without words that differ
    EXPECT_EQ(Cells(3)[2], "1C, 0A, 0D#1");
    EXPECT_TRUE(fakes.folder.Read("reports/sub/b_txt.doc").starts_with("{\\rtf"));
    viewer.OpenRow(3);
    EXPECT_EQ(fakes.shell().calls.back(), "open " + fakes.folder.Path("reports/sub/b_txt.doc"));
    std::string table = fakes.folder.Path("made/[Y]/table");
    ASSERT_TRUE(viewer.CreateTabDelimitedReport(table));
    EXPECT_TRUE(table.ends_with("made/2023/table")) << table;
    viewer.Settings().txtDefaultReportCSV = fakes.folder.Path("made/beside");
    viewer.mnuReportTabDelimitedFile();
    viewer.FinishWriting();
    EXPECT_EQ(fakes.shell().calls.back(), "edit " + fakes.folder.Path("made/beside"));
    EXPECT_EQ(fakes.folder.Read("made/beside"), fakes.folder.Read("made/2023/table"));
    EXPECT_NE(fakes.folder.Read("made/2023/table").find("1\tends.txt\t"), std::string::npos);
    EXPECT_NE(fakes.folder.Read("made/2023/table").find("\t1\t0\t0\t1\t0\t0\r\n2\t"),
              std::string::npos);
}

TEST_F(FoldersViewerTest, TwoReportsOfOneNameLoseNothing) {
    for (const char* name : {"a.log", "a.txt"})
        trees.WriteBoth(name, "one\r\n", std::string("words of ") + name + "\r\n");
    viewer.Options().bContentCompareText.SetData(true);
    viewer.Options().bCreateReport.SetData(true);
    viewer.txtReportFolder = fakes.folder.Path("reports");
    viewer.cbFileExt = "*.txt *.log";
    ASSERT_TRUE(RunWhole());
    for (const auto& [row, report] : {std::pair(0, "a.doc"), std::pair(1, "a_txt.doc")}) {
        viewer.OpenRow(row);
        const std::string file = fakes.folder.Path("reports/") + report;
        EXPECT_EQ(fakes.shell().calls.back(), "open " + file);
        EXPECT_NE(
            fakes.folder.Read(std::string("reports/") + report).find(row == 0 ? "log" : "txt"),
            std::string::npos);
    }
}

TEST_F(FoldersViewerTest, ShowsNoRowBeforeItsWordsAreCompared) {
    std::string large;
    for (int line = 0; line < 20000; ++line)
        large += "line " + std::to_string(line * 7919 % 20011) + " with some words\r\n";
    trees.WriteBoth("1.txt", large, "new\r\n" + large);
    trees.WriteBoth("2.txt", "one\r\n", "1\r\n");
    viewer.Options().bContentCompareText.SetData(true);
    ASSERT_TRUE(viewer.RefreshDiffViewer());
    do {
        viewer.Poll();
        for (std::int32_t row = 0; row < viewer.RowCount(); ++row)
            ASSERT_NE(Cells(row)[2], "...#1");
    } while (viewer.Busy());
    EXPECT_EQ(viewer.RowCount(), 2);
}

TEST_F(FoldersViewerTest, EachRowOfARenamedFileTellsOfTheOther) {
    trees.Write(Side::Original, "a", "some bytes");
    trees.Write(Side::Original, "sub/gone", "others");
    trees.Write(Side::Modified, "z", "some bytes");
    const auto cells = [this](const char* name) {
        const FolderRow row = viewer.Rows().Row(RowOf(name));
        return row[FolderColumn::Original].text + "|" + row[FolderColumn::Modified].text;
    };
    const auto look = [this] {
        while (viewer.LooksForRenamed())
            viewer.Poll();
    };
    ASSERT_TRUE(RunWhole());
    EXPECT_EQ(cells("a"), "       a|    ") << "the rows are there before the search has ended";
    window.changed.clear();
    look();
    EXPECT_EQ(cells("a"), "       a|\u2192 z");
    EXPECT_EQ(cells("z"), "\u2190 a|       z");
    EXPECT_EQ(cells("sub/gone"), "       gone|    ");
    EXPECT_EQ(window.changed.size(), 1U) << "the window paints them anew";
    viewer.ClickTellRenamed(false);
    look();
    EXPECT_EQ(cells("a"), "       a|    ");
    viewer.ClickTellRenamed(true);
    look();
    EXPECT_EQ(cells("a"), "       a|\u2192 z");
    trees.Write(Side::Modified, "z", "no more of it");
    ASSERT_TRUE(RunWhole());
    EXPECT_EQ(cells("a"), "       a|    ");
    look();
    EXPECT_EQ(cells("a"), "       a|    ");
}

TEST_F(FoldersViewerTest, RefusesFoldersThatItCannotCompare) {
    viewer.cbSelectModified = trees.Path(Side::Modified, "none");
    EXPECT_FALSE(viewer.RefreshDiffViewer());
    EXPECT_EQ(window.focus, Side::Modified);
    EXPECT_EQ(window.messages.back(), "Pick a different directory|Folder:\n\n" +
                                          viewer.cbSelectModified + "\n\ndoes not exist");
    viewer.cbSelectModified = viewer.cbSelectOriginal;
    EXPECT_FALSE(viewer.RefreshDiffViewer());
    EXPECT_EQ(window.focus, Side::Original);
    EXPECT_FALSE(viewer.Busy());
    viewer.cbSelectModified = viewer.cbSelectOriginal + "/";  // another text
    EXPECT_TRUE(RunWhole());
}

TEST_F(FoldersViewerTest, AnAbortKeepsTheRowsAndNoReportIsOffered) {
    for (int file = 0; file < 500; ++file)
        trees.WriteBoth("f" + std::to_string(file), "1", "2");
    ASSERT_TRUE(viewer.RefreshDiffViewer());
    EXPECT_TRUE(viewer.CanAbort());
    while (viewer.VestrelX1().getRecordCount() < 30)
        std::this_thread::yield();
    viewer.WriteFindings(20);
    viewer.Abort();
    EXPECT_EQ(viewer.RowCount(), 20);
    EXPECT_EQ(window.status[3], "Compare Aborted");
    EXPECT_FALSE(viewer.CanReport() || viewer.Busy() || viewer.Poll());
    ASSERT_TRUE(RunWhole());
    EXPECT_EQ(viewer.RowCount(), 500);
}

TEST_F(FoldersViewerTest, BoxesTakeWhatDependsOnThemAlong) {
    viewer.ClickContentCompareText(true);
    window.answer = true;
    viewer.ClickCreateReport(true);
    viewer.ClickCreateReport(true);
    EXPECT_EQ(window.notices, (std::vector<std::string>{"Create Report"}));
    EXPECT_TRUE(viewer.Options().bCreateReport.Data());
    viewer.ClickShowDifferentInBothPlaces(false);
    EXPECT_FALSE(viewer.Options().bContentCompareText.Data() ||
                 viewer.Options().bCreateReport.Data());
}

TEST_F(FoldersViewerTest, BringsItsSettingsBack) {
    trees.WriteBoth("x", "1", "2");
    viewer.cbFileExt = "*.x y*";
    viewer.txtReportFolder = "/some/where";
    viewer.cbDontStreamResults = true;
    viewer.ToggleLegend();
    viewer.Settings().mlCol2Width_CD = 4321;
    viewer.Settings().mlCol5Width_CD = 77;
    viewer.Swap();
    while (!viewer.Poll())
        std::this_thread::yield();
    viewer.Close();
    RecordingFoldersWindow other_window;
    frmCompareDir other(process, other_window, false);
    other.Setup("1_CompareDir", true);
    EXPECT_EQ(other.cbSelectOriginal, trees.Root(Side::Modified));
    EXPECT_EQ(other.Caption(),
              "(1) " + trees.Root(Side::Modified) + " vs. " + trees.Root(Side::Original));
    EXPECT_EQ(other.cbFileExt, "*.x y*");
    EXPECT_EQ(other.txtReportFolder, "/some/where");
    EXPECT_TRUE(other.cbDontStreamResults);
    EXPECT_FALSE(other.Settings().ShowLegend);
    EXPECT_EQ(other.ColumnWidth(FolderColumn::Modified), 4321);
    EXPECT_EQ(other.ColumnWidth(FolderColumn::Date), 900);  // Kept: the same at each start
    EXPECT_EQ(other.RecentFolders(Side::Original).Items(),
              (std::vector<std::string>{trees.Root(Side::Modified)}));
    EXPECT_EQ(other.RecentTypes().Items(), (std::vector<std::string>{"*.x y*", "*.*"}));
}

}  // namespace
}  // namespace zorvane
