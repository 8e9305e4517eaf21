#include "find/find_viewer.h"

#include <filesystem>
#include <map>

#include <gtest/gtest.h>

#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "tests/support/endless_documents.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

class FakeFindWindow : public FindTextWindow {
  public:
    FindEntries Entries() override { return entries; }
    void SetEntries(const FindEntries& given) override { entries = given; }
    void SetHistories(const FindHistories& given) override { histories = given; }
    void ShowStatus(FindPanel panel, const std::string& text) override { status[panel] = text; }
    void SetCaption(const std::string& text) override { caption = text; }
    void EnableAbort(bool on) override { abort = on; }
    void WritingChanged() override {}
    void SetHourglass(bool on) override { hourglass = on; }
    void GridChanged(FindGrid grid) override { ++changes[grid]; }
    void SizeRows(FindGrid grid) override { ++sized[grid]; }
    void SettingsChanged() override {}
    void Form_Resize() override { ++resizes; }
    void ShowMessage(const std::string& text) override { message = text; }
    void ShowInContextGrid(const std::string& text) override { in_context = text; }
    void ShownHitChanged() override { ++hits_shown; }
    void FocusEntry(FindError wrong) override { focused = wrong; }
    std::string PickFile(const std::string&, const std::string&) override { return picked; }
    std::string PickReportFile(const std::string&, const std::string&) override { return picked; }
    std::string BrowseForFolder(const std::string&) override { return picked; }
    void CompareFiles(const PerSide<std::string>& files) override { compared = files; }
    void Activate() override {}
    void CloseDialogs() override {}

    FindEntries entries;
    FindHistories histories;
    std::map<FindPanel, std::string> status;
    std::map<FindGrid, int> changes;
    std::map<FindGrid, int> sized;
    std::string caption;
    std::string message;
    std::string in_context;
    std::string picked;
    PerSide<std::string> compared;
    std::optional<FindError> focused;
    bool abort = false;
    bool hourglass = false;
    int resizes = 0;
    int hits_shown = 0;
};

class FindViewerTest : public testing::Test {
  protected:
    FindViewerTest() {
        process_.gsDataFolder = system_.folder.Path("data");
        std::filesystem::create_directories(system_.folder.Path("tree"));
        viewer_.emplace(process_, window_);
        viewer_->Setup("1_FindText", true);
    }
    ~FindViewerTest() override { viewer_.reset(); }
    void Begin(const std::string& text) {
        window_.entries.cbSearchFor = text;
        window_.entries.cbDirectory = system_.folder.Path("tree");
        viewer_->UpdateEngineFromGUI();
    }
    void Find(const std::string& text) {
        Begin(text);
        while (!viewer_->Poll())
            std::this_thread::yield();
    }
    std::string Write(const std::string& name, const std::string& bytes) const {
        return system_.folder.Write("tree/" + name, bytes);
    }
    void Show(std::int32_t row) {
        viewer_->ShowHit(row);
        viewer_->FinishReading();
    }
    const std::string& Main() { return window_.status[FindPanel::Main]; }

    FakePlatform system_;
    ProcessState process_{system_.platform};
    FakeFindWindow window_;
    std::optional<frmFindTextInFiles> viewer_;
};

TEST_F(FindViewerTest, BeginsAtTheEnginesDefaults) {
    EXPECT_TRUE(window_.entries.cbLookInSubfolders);
    EXPECT_FALSE(window_.entries.cbCaseSensitive || window_.entries.cbWholeWordOnly ||
                 window_.entries.cbRegularExpression || window_.entries.cbSupportOfficeDocs);
    EXPECT_EQ(viewer_->mdDividerPrimaryRatio, 1.0);
    viewer_->Abort();  // nothing goes on
    EXPECT_EQ(Main(), "");
}

TEST_F(FindViewerTest, CopiesHitsIntoRows) {
    const std::string file = Write("a.txt", "x\n needle\n");
    process_.settings->Write("1_FindText", "cbBeepWhenDone", "TRUE");
    viewer_->ReadIniFile();
    Find("needle");
    EXPECT_EQ(window_.entries.cbFileExt, "*.*");
    ASSERT_EQ(viewer_->fgFiles().Count(), 1);
    const HitRows& rows = viewer_->fgFiles();
    EXPECT_EQ(rows.Cell(0, HitRows::Number), "1");
    EXPECT_EQ(rows.Cell(0, HitRows::File), file);
    EXPECT_EQ(rows.Cell(0, HitRows::Line), "2");
    EXPECT_EQ(rows.Cell(0, HitRows::Col), "2");
    EXPECT_EQ(rows.Cell(0, HitRows::Item), "needle");
    EXPECT_EQ(rows.Cell(1, HitRows::Item), "");
    EXPECT_EQ(window_.status[FindPanel::Hits], "1");
    EXPECT_EQ(Main(), "Scan Completed");
    EXPECT_EQ(window_.status[FindPanel::Time], sTimeSpan(0, TimeSpanStyle::Colons));
    EXPECT_FALSE(window_.abort || window_.hourglass);
    EXPECT_EQ(viewer_->mdDividerPrimaryRatio, 1.0);
    EXPECT_EQ(system_.sound().beeps, 2);
    Find("nothing");
    EXPECT_EQ(viewer_->fgFiles().Count(), 0);
    EXPECT_EQ(Main(), "Scan Completed");
}

TEST_F(FindViewerTest, StreamsAHundredHitsATick) {
    std::string text;
    for (int line = 0; line < 500; ++line)
        text += "needle\n";
    Write("a.txt", text);
    Begin("needle");
    std::int32_t before = 0;
    while (!viewer_->Poll()) {
        EXPECT_LE(viewer_->fgFiles().Count() - before, 100);
        before = viewer_->fgFiles().Count();
    }
    EXPECT_EQ(viewer_->fgFiles().Count(), 500);
}

TEST_F(FindViewerTest, WordsTheThreeErrorsByTheirEntries) {
    struct ErrorRow {
        const char* text;
        const char* folder;
        const char* words;
    };
    const ErrorRow rows[] = {
        {"", "", "Error: Search string is empty, change 'What To Find' entry"},
        {"[", "", "Error: missing terminating ] for character class ["},
        {"a", "", "Error: Folder not specified. Change 'Folder' entry"},
        {"a", "/nowhere at all", "Error: /nowhere at all: there is no such folder"},
    };
    window_.entries.cbRegularExpression = true;
    viewer_->mdDividerPrimaryRatioLast = 0.7;
    for (const ErrorRow& row : rows) {
        SCOPED_TRACE(row.words);
        window_.entries.cbSearchFor = row.text;
        window_.entries.cbDirectory = row.folder;
        viewer_->UpdateEngineFromGUI();
        EXPECT_EQ(viewer_->fgErrorMessages(), std::vector<std::string>{row.words});
        EXPECT_EQ(viewer_->mdDividerPrimaryRatio, 0.7);
        EXPECT_EQ(Main(), "Scan Aborted");
        EXPECT_FALSE(window_.abort);
    }
    Write("a.txt", "a");
    Find("a");
    EXPECT_EQ(viewer_->mdDividerPrimaryRatio, 1.0);
}

class BrokenDocuments : public DocumentTexts {
  public:
    bool IsDocument(std::string_view name) override { return name.ends_with(".doc"); }
    Text TextOf(const std::string& path, const std::function<bool()>&) override {
        if (path.ends_with("bad.doc"))
            return {nullptr, "is broken", {}};
        return {std::make_shared<std::string>("one\nneedle\tx\n"), "", {}};
    }
};

TEST_F(FindViewerTest, GoesOnBehindOtherErrorsAndShowsDocuments) {
    BrokenDocuments documents;
    viewer_->SetDocuments(&documents);
    const std::string bad = Write("bad.doc", "");
    Write("good.doc", "");
    window_.entries.cbSupportOfficeDocs = true;
    Find("needle");
    EXPECT_EQ(viewer_->fgErrorMessages(),
              std::vector<std::string>{"Error: " + bad + ": is broken"});
    EXPECT_EQ(viewer_->fgFiles().Count(), 1);
    EXPECT_EQ(Main(), "Scan Completed");
    Show(1);
    EXPECT_EQ(viewer_->fgFileWithHit().rows,
              (std::vector<std::string>{"\"one\"", "\"needle\" &   \"x\""}));
    EXPECT_EQ(viewer_->fgFileWithHit().marked, 1);
}

// Each document is opened by its own name.
class LockedDocuments : public DocumentTexts {
  public:
    bool IsDocument(std::string_view name) override { return name.ends_with(".doc"); }
    void UsePasswords(const std::vector<std::string>& passwords) override { known = passwords; }
    Text TextOf(const std::string& path, const std::function<bool()>&) override {
        const std::string key(FileNameOf(path));
        if (std::find(known.begin(), known.end(), key) == known.end())
            return {nullptr, "is protected", {}, true};
        return {std::make_shared<std::string>("needle of " + key), "", {}};
    }
    std::vector<std::string> known;
};

TEST_F(FindViewerTest, OpensProtectedDocumentsByThePasswordsThatWereGiven) {
    LockedDocuments documents;
    viewer_->SetDocuments(&documents);
    for (const char* name : {"a.doc", "b.doc"})
        Write(name, "");
    window_.entries.cbSupportOfficeDocs = true;
    Find("needle");
    EXPECT_EQ(viewer_->ProtectedDocuments(), 2);
    EXPECT_FALSE(viewer_->GavePassword());
    const auto give = [&](const char* password) {
        viewer_->UsePassword(password);
        while (!viewer_->Poll())
            std::this_thread::yield();
    };
    give("b.doc");
    EXPECT_EQ(viewer_->ProtectedDocuments(), 1);
    EXPECT_EQ(viewer_->fgErrorMessages().size(), 1U);
    EXPECT_TRUE(viewer_->GavePassword());
    give("a.doc");
    EXPECT_EQ(viewer_->ProtectedDocuments(), 0);
    EXPECT_EQ(viewer_->fgFiles().Count(), 2) << "the first password is kept";
    Show(1);
    EXPECT_EQ(viewer_->fgFileWithHit().rows, std::vector<std::string>{"\"needle of a.doc\""});
    EXPECT_FALSE(std::filesystem::exists(system_.folder.Path("data") + "/Reports/DemoTemp.TXT"));
}

TEST_F(FindViewerTest, ShowsTheLinesAroundAHit) {
    std::string text;
    for (int line = 1; line <= 400; ++line)
        text += (line == 2 || line == 250 ? "needle" : "line " + std::to_string(line)) + "\n";
    const std::string file = Write("a.txt", text);
    Find("needle");
    Show(0);
    EXPECT_EQ(window_.caption, "");
    Show(1);
    EXPECT_EQ(window_.caption, "FILE: " + file + " LINE: 2 COL: 1 ITEM: needle");
    EXPECT_EQ(viewer_->fgFileWithHit().rows.size(), 101U);
    EXPECT_EQ(viewer_->fgFileWithHit().top, 0);
    EXPECT_EQ(viewer_->fgFileWithHit().marked, 1);
    Show(2);
    const ContextRows& rows = viewer_->fgFileWithHit();
    ASSERT_EQ(rows.rows.size(), 199U);
    EXPECT_EQ(rows.rows.front(), "\"line 151\"");
    EXPECT_EQ(rows.rows.back(), "\"line 349\"");
    EXPECT_EQ(rows.marked, 99);
    EXPECT_EQ(rows.top, 96);
    Show(3);
    std::filesystem::remove(file);
    Show(1);
    EXPECT_TRUE(window_.in_context.starts_with("File Name:  " + file + "\nNot Found"));
}

TEST_F(FindViewerTest, AbortsOnlyWhileItSearches) {
    EndlessDocuments documents;
    viewer_->SetDocuments(&documents);
    window_.entries.cbSupportOfficeDocs = true;
    Write("a.doc", "needle");
    Begin("needle");
    EXPECT_TRUE(window_.abort);
    viewer_->Abort();
    EXPECT_FALSE(window_.abort || window_.hourglass);
    EXPECT_EQ(Main(), "Scan Aborted");
    while (viewer_->Busy())
        std::this_thread::yield();
    EXPECT_FALSE(viewer_->Poll());
    EXPECT_EQ(Main(), "Scan Aborted");
}

TEST_F(FindViewerTest, ShowsAllThatWasFoundBeforeAnAbort) {
    EndlessDocuments documents;
    viewer_->SetDocuments(&documents);
    window_.entries.cbSupportOfficeDocs = true;
    window_.entries.cbLookInSubfolders = true;
    Write("a.txt", "needle\nneedle\n");
    Write("sub/b.doc", "read until somebody stops");
    Begin("needle");
    while (viewer_->Engine().HitCount() == 0)
        std::this_thread::yield();
    viewer_->Abort();
    while (viewer_->Busy())
        std::this_thread::yield();
    viewer_->Poll();
    EXPECT_EQ(viewer_->fgFiles().Count(), viewer_->Engine().HitCount());
    EXPECT_EQ(viewer_->fgFiles().Count(), 2);
    EXPECT_EQ(Main(), "Scan Aborted");
    EXPECT_FALSE(viewer_->Completed());
}

TEST_F(FindViewerTest, ShowsAHitInItsWholeDocument) {
    const std::string file = Write("a.txt", "one\nneedle\n");
    Find("needle");
    Show(1);
    EXPECT_EQ(viewer_->Document(), nullptr) << "nobody asked for it";
    viewer_->SetShowDocument(true);
    viewer_->FinishReading();
    ASSERT_NE(viewer_->Document(), nullptr);
    EXPECT_EQ(viewer_->Document()->text.text.substr(0, 11), u"one\r\nneedle");
    EXPECT_EQ(viewer_->PlaceInShownDocument().first.value, 5);
    const HitDocument* known = viewer_->Document();
    Show(1);
    EXPECT_EQ(viewer_->Document(), known) << "the same file is not read again";
    Write("a.txt", "other\nneedle\n");
    Show(1);
    EXPECT_EQ(viewer_->PlaceInShownDocument().first.value, 7) << "it was changed since";
    std::filesystem::remove(file);
    Show(1);
    EXPECT_NE(viewer_->Document()->reason, "");
}

TEST_F(FindViewerTest, ComparesTwoFilesAndNeverOneWithItself) {
    const std::string first = Write("a.txt", "needle\nneedle\n");
    const std::string second = Write("b.txt", "needle\n");
    Find("needle");
    struct ChoiceRow {
        std::vector<std::int32_t> marked;
        std::vector<std::int32_t> chosen;
        bool both;
    };
    const ChoiceRow rows[] = {
        {{}, {0, 2}, true},  {{}, {0, 1}, false},   {{}, {1}, false},     {{2}, {0}, true},
        {{2, 0}, {1}, true}, {{0, 1, 2}, {}, true}, {{2, 2}, {0}, false}, {{0}, {0}, false},
    };
    for (const ChoiceRow& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.marked) + testing::PrintToString(row.chosen));
        Find("needle");
        EXPECT_TRUE(viewer_->Marked().Hits().empty());
        for (const std::int32_t hit : row.marked)
            viewer_->ToggleMark(hit);
        window_.compared = {};
        EXPECT_EQ(viewer_->CompareFilesOf(row.chosen), row.both);
        EXPECT_EQ(window_.compared.original, row.both ? first : "");
        EXPECT_EQ(window_.compared.modified, row.both ? second : "");
    }
}

TEST_F(FindViewerTest, KeepsTwentySearchesNewestFirst) {
    for (int search = 1; search <= 25; ++search)
        Find("text" + std::to_string(search));
    Find("TEXT20");
    viewer_.emplace(process_, window_);
    viewer_->Setup("2_FindText", true);
    ASSERT_EQ(window_.histories.cbSearchFor.size(), 20U);
    EXPECT_EQ(window_.histories.cbSearchFor[0], "TEXT20");
    EXPECT_EQ(window_.histories.cbSearchFor[1], "text25");
    EXPECT_EQ(window_.entries.cbSearchFor, "TEXT20");
    EXPECT_EQ(window_.histories.cbFileExt, std::vector<std::string>{"*.*"});
    process_.bHistoryOff = true;
    Find("secret");
    EXPECT_EQ(process_.settings->Read("SearchFor", "SearchFor20", ""), "TEXT20");
}

TEST_F(FindViewerTest, PutsSignsWhereTheyBelong) {
    window_.entries.cbSearchFor = "ab";
    for (const ExpressionSign& sign : ExpressionSigns())
        viewer_->PickSign(sign);
    EXPECT_EQ(window_.entries.cbSearchFor, "^ab?*[]$\\");
    EXPECT_TRUE(viewer_->Engine().RegularExpression());
}

TEST_F(FindViewerTest, WritesItsReportAndOpensIt) {
    const std::string file = Write("a.txt", "needle\n");
    Find("needle");
    viewer_->Settings().txtDefaultReportCSV = system_.folder.Path("reports") + "/r[Y].csv";
    viewer_->mnuReportTabDelimitedFile_Click();
    viewer_->FinishWriting();
    EXPECT_EQ(window_.message, "");
    EXPECT_NE(system_.folder.Read("reports/r2023.csv").find(file + "\t1\t1\tneedle"),
              std::string::npos);
    ASSERT_EQ(system_.shell().calls.size(), 1U);
    EXPECT_EQ(system_.shell().calls[0], "edit " + system_.folder.Path("reports/r2023.csv"));
    viewer_->Settings().txtDefaultReportCSV = "/proc/none/r.csv";
    viewer_->mnuReportTabDelimitedFile_Click();
    viewer_->FinishWriting();
    EXPECT_NE(window_.message, "");
}

TEST_F(FindViewerTest, KeepsItsRatios) {
    viewer_->mdDividerPrimaryRatio = 0.6;
    viewer_->mdDividerSecondaryRatio = 0.3;
    viewer_->Close();
    viewer_.emplace(process_, window_);
    viewer_->Setup("1_FindText", true);
    EXPECT_EQ(viewer_->mdDividerPrimaryRatio, 1.0);
    EXPECT_EQ(viewer_->mdDividerPrimaryRatioLast, 0.6);
    EXPECT_EQ(viewer_->mdDividerSecondaryRatio, 0.3);
}

}  // namespace
}  // namespace zorvane
