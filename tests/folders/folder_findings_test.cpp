#include "folders/folder_findings.h"

#include <gtest/gtest.h>

#include "compare/engine/vestrel_x.h"
#include "folders/folder_report.h"
#include "tests/support/folder_trees.h"

namespace zorvane {
namespace {

class FolderFindingsTest : public testing::Test {
  protected:
    FolderFindingsTest() {
        trees.WriteBoth("changed.txt", "one", "two");
        trees.WriteBoth("date", "1", "1");
        trees.SetTime(Side::Modified, "date", 1);
        trees.WriteBoth("same", "1", "1");
        trees.WriteBoth("words.txt", "a", "b");
        trees.Write(Side::Original, "gone/1", "unlike");
        trees.Write(Side::Original, "gone/deep/2", "other");
        trees.Write(Side::Original, "moved/3", "this one moved");
        trees.Write(Side::Modified, "here/3", "this one moved");
        trees.Write(Side::Modified, "new\tname\x1B", "2");
        engine.putMasterFolder(trees.Root(Side::Original));
        engine.putSourceFolder(trees.Root(Side::Modified));
        engine.StartFolderCompare();
        engine.Folders().Join();
        findings.text = [this](std::int32_t record) -> std::optional<TextCheck> {
            const std::string path = engine.Folders().PathBelow(static_cast<std::size_t>(record));
            if (path == "words.txt")
                return TextCheck{TextCheckEnd::Compared, 0, 0, 0, 0, "", ""};
            if (path == "changed.txt")
                return TextCheck{TextCheckEnd::Compared, 1, 0, 2, 0, "", "r.htm"};
            return std::nullopt;
        };
        findings.renamed = FindRenames(engine.Folders(), trees.Roots(), {});
        findings.IndexRenamed();
    }
    std::string List(std::vector<FolderVerdict> only = {}) {
        std::string list;
        EXPECT_TRUE(WriteFolderList(findings, {false, std::move(only)}, [&](std::string_view part) {
                        list += part;
                        return Status::Ok();
                    }).ok());
        return list;
    }
    FolderTrees trees;
    VestrelX engine;
    FolderFindings findings{engine.Folders(), trees.Roots(), false, {}, {}, {}};
};

TEST_F(FolderFindingsTest, ListsEachDifferenceOnce) {
    EXPECT_EQ(List(),
              "M  changed.txt  1 changed, 2 deleted\n"
              "t  date\n"
              "A  new\tname\xE2\x90\x9B\n"
              "m  words.txt  same words\n"
              "D  gone/\n"
              "R  moved/ -> here/\n");
    EXPECT_EQ(List({FolderVerdict::Same}), "=  same\n");
    EXPECT_EQ(List({FolderVerdict::Renamed}), "R  moved/ -> here/\n");
    findings.ignore_dates = true;
    EXPECT_EQ(List({FolderVerdict::Same}), "=  date\n=  same\n");
    EXPECT_EQ(WriteFolderStat(findings),
              "1 changed, 4 only in the original, 1 only in the modified, 1 renamed, 1 with the "
              "same words, 2 the same\n");
}

TEST_F(FolderFindingsTest, AFolderWithAMovedFileIsNotCalledWhole) {
    trees.Write(Side::Modified, "elsewhere", "unlike");
    engine.StartFolderCompare();
    engine.Folders().Join();
    findings.renamed = FindRenames(engine.Folders(), trees.Roots(), {});
    findings.IndexRenamed();
    EXPECT_NE(List().find("D  gone/\nR  gone/1 -> elsewhere\nD  gone/deep/\n"), std::string::npos)
        << List();
}

TEST_F(FolderFindingsTest, OnlyWhatDiffersMakesADifference) {
    struct DifferentRow {
        FolderVerdict verdict;
        bool different;
    };
    for (const DifferentRow& row : {DifferentRow{FolderVerdict::Same, false},
                                    {FolderVerdict::SameWords, false},
                                    {FolderVerdict::Date, true},
                                    {FolderVerdict::Changed, true},
                                    {FolderVerdict::OnlyOriginal, true},
                                    {FolderVerdict::OnlyModified, true},
                                    {FolderVerdict::Renamed, true}}) {
        FolderCounts counts;
        counts.files[row.verdict] = 1;
        EXPECT_EQ(counts.Different(), row.different) << NameOf(row.verdict);
        EXPECT_EQ(FolderVerdictNamed(NameOf(row.verdict)), row.verdict);
    }
}

TEST_F(FolderFindingsTest, WritesATableThatKeepsItsRows) {
    const std::string file = trees.Folder().Path("table");
    FolderReport report{engine, "ERR: File", [](std::int32_t record) -> std::optional<bool> {
                            return record == 0 ? std::optional(false) : std::nullopt;
                        }};
    ASSERT_TRUE(WriteFolderReport(report, file).ok());
    const std::string table = trees.Folder().Read("table");
    const std::string a = trees.Root(Side::Original) + "/";
    const std::string b = trees.Root(Side::Modified) + "/";
    EXPECT_TRUE(
        table.starts_with("Record\tFileName\tDirMaster\tDirSource\tIsFile\tOnlyInSource\t"
                          "OnlyInMaster\tSizeDifferent\tDateDifferent\t"
                          "ContentDifferent\r\n0\tchanged.txt\t" +
                          a + "\t" + b + "\t1\t0\t0\t0\t0\t0\r\n1\tdate\t" + a + "\t" + b +
                          "\t1\t0\t0\t0\t1\t0\r\n2\tnew\xE2\x90\x89name\x1B\t"))
        << table;
    EXPECT_NE(table.find("\twords.txt\t" + a + "\t" + b + "\t1\t0\t0\t0\t0\t1\r\n"),
              std::string::npos);
    EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), engine.getRecordCount() + 1);
}

TEST_F(FolderFindingsTest, AStoppedTableLeavesTheOldOne) {
    for (int file = 0; file < 2500; ++file)
        trees.Write(Side::Original, "many/a name of some length " + std::to_string(file), "");
    VestrelX many;
    many.putMasterFolder(trees.Root(Side::Original));
    many.putSourceFolder(trees.Root(Side::Modified));
    many.putSubfolders(true);
    many.StartFolderCompare();
    many.Folders().Join();
    const FolderReport report{many, "", {}};
    std::filesystem::create_directories(trees.Folder().Path("made"));
    const std::string file = trees.Folder().Write("made/table", "old");
    WritingWatch watch;
    int asked = 0;
    watch.stop = [&asked] { return ++asked == 2; };
    std::vector<int> told;
    watch.progress = [&told](int percent) { told.push_back(percent); };
    EXPECT_FALSE(WriteFolderReport(report, file, watch).ok());
    EXPECT_EQ(trees.Folder().Read("made/table"), "old");
    const auto beside = std::filesystem::directory_iterator(trees.Folder().Path("made"));
    EXPECT_EQ(std::distance(begin(beside), end(beside)), 1) << "nothing half written";
    ASSERT_EQ(told.size(), 1U) << "the table has several parts";
    EXPECT_GT(told[0], 0);
    EXPECT_LT(told[0], 100);
    EXPECT_TRUE(WriteFolderReport(report, file, {}).ok());
    EXPECT_GT(trees.Folder().Read("made/table").size(), 150'000U);
}

}  // namespace
}  // namespace zorvane
