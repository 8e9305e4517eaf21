#include "compare/viewer_saving.h"

#include <filesystem>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "common/platform/files.h"
#include "common/process_state.h"
#include "compare/document/memory_editor.h"
#include "tests/support/fakes.h"
#include "tests/support/file_answers.h"

namespace zorvane::viewer_saving_test {
namespace {

using namespace std::literals;

// A word processor that writes what it was asked for.
class FakePage : public TrellisPage {
  public:
    double WordVersion() const override { return version; }
    bool OptimizeForSpeed() const override { return true; }
    void putOptimizeForSpeed(bool) override {}
    WordResult OpenWordSaveAs(const std::string& source, const std::string& target,
                              WordFormat format) override {
        asked.push_back(static_cast<std::int32_t>(format));
        EXPECT_TRUE(ReadWholeFile(source).value().starts_with("{\\rtf"));
        if (result == WordResult::Ok) {
            EXPECT_TRUE(WriteWholeFile(target, "made\r\nso").ok());
        }
        return result;
    }
    void HideWordIfVisible() override { ++hidden; }
    std::string ErrorString() const override { return "the word processor's own words"; }

    double version = 16.0;
    WordResult result = WordResult::Ok;
    std::vector<std::int32_t> asked;
    int hidden = 0;
};

class SavingTest : public testing::Test {
  protected:
    SavingTest() {
        process.gsDataFolder = fakes.folder.Path("data/of/user");
        telling.manner.sLogFile = fakes.folder.Path("log");
        extensions.Setup(15, *process.settings, "x", "txt,log,csv");
        editor.SetText(u"one\r\ntwo");
    }
    SaveOutcome Save(EditorTarget target, const std::string& name, std::int32_t type) {
        window.file = name.empty() ? "" : fakes.folder.Path(name);
        window.filter_index = type;
        return SaveEditorAs({process, telling, window, settings, extensions, page,
                             [this](EditorTarget) -> const Editor& { return editor; },
                             [this](std::string& file) {
                                 return WriteWholeFile(file, "{\\rtf1 report}").ok() && report_made
                                            ? ReportResult::Ok
                                            : ReportResult::TargetNotWritten;
                             },
                             [this](Side side, const std::string& file) { selected[side] = file; },
                             "", mode, watcher},
                            target);
    }
    std::string Log() { return fakes.folder.Read("log"); }

    FakePlatform fakes;
    ProcessState process{fakes.platform};
    RunTelling telling{process.messages};
    FileAnswers window;
    CompareFilesSettings settings;
    clsMRU extensions;
    FakePage page;
    MemoryEditor editor;
    PerSide<std::string> selected;
    bool report_made = true;
    std::uint32_t mode = 0666;
    RunWatcher* watcher = nullptr;
};

TEST_F(SavingTest, AsksByTheNameOfTheEditor) {
    struct Row {
        EditorTarget target;
        const char* title;
    };
    for (const Row& row : {Row{EditorTarget::AllInOneDiff, "Save ALL IN ONE DIFF Editor As"},
                           Row{EditorTarget::OriginalDiffFinal, "Save ORIGINAL DIFF Editor As"},
                           Row{EditorTarget::ModifiedDiffFinal, "Save MODIFIED DIFF Editor As"},
                           Row{EditorTarget::Original, "Save ORIGINAL Editor As"},
                           Row{EditorTarget::Modified, "Save MODIFIED Editor As"}}) {
        EXPECT_EQ(Save(row.target, "", 2), SaveOutcome{});
        EXPECT_EQ(window.picked.title, row.title);
    }
    EXPECT_EQ(window.picked.filter,
              "Rich Text Format(*.RTF)|*.RTF|Text (*.txt;*.log;*.csv etc)|*.txt;*.log;*.csv|"
              "MS Word (*.doc)|*.doc|HTML (*.htm;*.html)|*.htm;*.html");
    EXPECT_TRUE(window.picked.saving);
    EXPECT_EQ(settings.lLastSelectedFileFilterIndex, 1) << "a cancel is not remembered";
    EXPECT_EQ(Log(), "");
}

TEST_F(SavingTest, NamesATextAfterItsOwnFile) {
    struct Row {
        EditorTarget target;
        PerSide<std::string> files;
        const char* title;
        const char* name;
    };
    const PerSide<std::string> both{"/a/old.v1.docx", "/b/.new"};
    for (const Row& row : {
             Row{EditorTarget::Original, both, "/a/old.v1.docx", "/a/old.v1"},
             Row{EditorTarget::Modified, both, "/b/.new", "/b/.new"},
             Row{EditorTarget::OriginalDiffFinal, both, "old.v1.docx vs. .new",
                 "/a/old.v1 vs. .new"},
             Row{EditorTarget::ModifiedDiffFinal, both, "old.v1.docx vs. .new",
                 "/b/old.v1 vs. .new"},
             Row{EditorTarget::AllInOneDiff, {"/a/old", ""}, "ALL IN ONE DIFF", "/a/old"},
             Row{EditorTarget::Modified, {"/a/old", ""}, "MODIFIED", ""},
         }) {
        SCOPED_TRACE(EditorTitle(row.target));
        EXPECT_EQ(TitleOf(row.target, row.files), row.title);
        EXPECT_EQ(SuggestedName(row.target, row.files), row.name);
    }
}

TEST_F(SavingTest, WritesTheFourTypes) {
    struct Row {
        const char* name;
        std::int32_t type;
        const char* file;
        std::vector<std::int32_t> format;
        const char* holds;
    };
    const Row rows[] = {
        {"rich text", 1, "a.rtf", {}, "{\\rtf1"},
        {"text", 2, "a.log", {2}, "made\nso"},
        {"document", 3, "a.doc", {0}, "made\r\nso"},
        {"page", 4, "a.html", {8}, "made\r\nso"},
        {"no extension", 1, "b.rtf", {}, "{\\rtf1"},
        {"nor here", 2, "c.txt", {2}, "made\nso"},
        {"doc", 3, "d.doc", {0}, "made"},
        {"htm", 4, "e.htm", {8}, "made"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        page.asked.clear();
        page.hidden = 0;
        const std::string file = row.file;
        const std::string picked = file.starts_with("a") ? file : file.substr(0, 1);
        EXPECT_EQ(Save(EditorTarget::ModifiedDiffFinal, picked, row.type),
                  (SaveOutcome{SaveEnd::Saved, fakes.folder.Path(file)}));
        EXPECT_EQ(page.asked, row.format);
        EXPECT_EQ(page.hidden, static_cast<int>(row.format.size()));
        EXPECT_EQ(fakes.folder.Read(file).substr(0, std::string(row.holds).size()), row.holds);
        EXPECT_EQ(settings.lLastSelectedFileFilterIndex, row.type);
    }
    EXPECT_EQ(selected, PerSide<std::string>{});
    EXPECT_TRUE(window.lists.empty()) << "a result's file is no side's";
    EXPECT_EQ(window.captions, 8);
}

TEST_F(SavingTest, MakesTheFileOfASideTheSelectedOne) {
    Save(EditorTarget::Original, "o.txt", 2);
    Save(EditorTarget::Modified, "m.rtf", 1);
    EXPECT_EQ(selected.original, fakes.folder.Path("o.txt"));
    EXPECT_EQ(selected.modified, fakes.folder.Path("m.rtf"));
    EXPECT_EQ(window.lists, (std::vector{Side::Original, Side::Modified}));
}

TEST_F(SavingTest, SavesTheAllInOneTextAsItsReport) {
    EXPECT_EQ(Save(EditorTarget::AllInOneDiff, "a.rtf", 1).end, SaveEnd::Saved);
    EXPECT_EQ(fakes.folder.Read("a.rtf"), "{\\rtf1 report}");
    report_made = false;
    EXPECT_EQ(Save(EditorTarget::AllInOneDiff, "b.rtf", 1).end, SaveEnd::Failed);
    EXPECT_FALSE(std::filesystem::exists(fakes.folder.Path("b.rtf")));
}

// A stop leaves the old file, and nothing is told of it.
TEST_F(SavingTest, StopsAtEachQuestionBeforeTheFileIsReplaced) {
    struct StopAt : RunWatcher {
        explicit StopAt(int number) : last(number) {}
        bool KeepGoing() override { return asked++ < last; }
        int last;
        int asked = 0;
    };
    window.answer = 0;
    int stops = 0;
    for (;; ++stops) {
        ASSERT_LT(stops, 20);
        fakes.folder.Write("f.doc", "old");
        StopAt stop(stops);
        watcher = &stop;
        page.result = WordResult::Ok;
        selected = {};
        const SaveEnd end = Save(EditorTarget::Original, "f.doc", 3).end;
        EXPECT_EQ(Log(), "");
        if (end == SaveEnd::Saved)
            break;
        EXPECT_EQ(end, SaveEnd::Stopped) << stops;
        EXPECT_EQ(fakes.folder.Read("f.doc"), "old") << stops;
        EXPECT_EQ(selected.original, "");
    }
    EXPECT_GE(stops, 3);
    EXPECT_EQ(fakes.folder.Read("f.doc"), "made\r\nso");
}

TEST_F(SavingTest, ReplacesAFileOnlyWhenTold) {
    const std::string file = fakes.folder.Write("old.txt", "old\r\ntext");
    ASSERT_EQ(chmod(file.c_str(), 0640), 0);
    EXPECT_EQ(Save(EditorTarget::Original, "old.txt", 2).end, SaveEnd::Cancelled);
    EXPECT_EQ(fakes.folder.Read("old.txt"), "old\r\ntext");
    ASSERT_EQ(window.asked.size(), 1U);
    EXPECT_NE(window.asked[0].text.find(file), std::string::npos);
    EXPECT_EQ(window.asked[0].icon, MessageIcon::Warning);
    window.answer = 0;
    EXPECT_EQ(Save(EditorTarget::Original, "old.txt", 2).end, SaveEnd::Saved);
    EXPECT_EQ(fakes.folder.Read("old.txt"), "made\r\nso") << "it keeps its line ends";
    struct stat facts {};
    ASSERT_EQ(stat(file.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777U, 0640U);
    fakes.folder.Write("name.txt", "");
    window.asked.clear();
    window.answer.reset();
    EXPECT_EQ(Save(EditorTarget::Original, "name", 2).end, SaveEnd::Cancelled)
        << "the question is about the name with its extension";
    EXPECT_EQ(window.asked.size(), 1U);
}

TEST_F(SavingTest, LeavesTheFileAloneWhenItFails) {
    struct Row {
        const char* name;
        std::int32_t type;
        WordResult result;
        double version;
        const char* words;
    };
    const Row rows[] = {
        {"too new a word processor", 2, WordResult::Ok, 16.2,
         "Error 20: Version of MS Word : Version (16.2)\r\n"},
        {"the newest that works", 2, WordResult::Ok, 16.1, ""},
        {"rich text needs none", 1, WordResult::Ok, 16.2, ""},
        {"none installed", 3, WordResult::NotInstalled, 16,
         "Failed to Convert.  Check that MS Word is installed\r\n"},
        {"another fault", 4, WordResult::Other, 16, "the word processor's own words\r\n"},
    };
    window.answer = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(fakes.folder.Path("log"));
        fakes.folder.Write("f.x", "old");
        page.result = row.result;
        page.version = row.version;
        const bool fails = row.words[0] != '\0';
        EXPECT_EQ(Save(EditorTarget::Original, "f.x", row.type).end,
                  fails ? SaveEnd::Failed : SaveEnd::Saved);
        EXPECT_EQ(Log(), row.words);
        EXPECT_EQ(fakes.folder.Read("f.x") == "old", fails);
    }
    std::filesystem::remove(fakes.folder.Path("log"));
    page = FakePage();
    window.answer.reset();
    for (const std::int32_t type : {1, 2}) {
        EXPECT_EQ(Save(EditorTarget::Original, "none/f.x", type).end, SaveEnd::Failed);
        EXPECT_NE(Log().find(fakes.folder.Path("none/f.x") + ": No such file"), std::string::npos);
        std::filesystem::remove(fakes.folder.Path("log"));
    }
}

}  // namespace
}  // namespace zorvane::viewer_saving_test
