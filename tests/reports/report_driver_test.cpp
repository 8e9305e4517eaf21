#include "reports/report_driver.h"

#include <filesystem>
#include <functional>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "common/platform/files.h"
#include "common/process_state.h"
#include "common/text_privacy.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

using namespace std::literals;

class FakeSource : public ReportSource {
  public:
    explicit FakeSource(const TempFolder& folder) {
        process_.telling.manner.sLogFile = folder.Path("log");
        EXPECT_TRUE(options.LoadStateFromFile(*process_.settings).ok());  // the defaults
        options.sFileOriginal.SetData(folder.Write("a.txt", "x\r\n"));
        options.sFileModified.SetData(folder.Write("b.txt", "y\r\n"));
        settings = DefaultCompareFilesSettings(folder.Path());
        engine_.putMasterFile(folder.Write("line1", "x\r\n"));
        engine_.putSourceFile(folder.Write("line2", "y\r\n"));
        EXPECT_TRUE(engine_.Compare().ok());
    }
    ProcessState& Process() override { return process_; }
    RunTelling& Telling() override { return process_.telling; }
    VestrelX& Engine() override { return engine_; }
    const clsCompareFileOptions& ReportOptions() const override { return options; }
    CompareFilesSettings& ReportSettings() override { return settings; }
    RunWatcher* Watcher() override { return watcher; }
    std::string TrackedName(const std::string& file) const override { return file + "x"; }
    Status SaveTrackedReport(const std::string& file) override {
        if (file == held_by_another)
            return Failure{file + ": held"};
        return ReplaceFile(file, "tracked");
    }
    Status SaveDocumentReport(const std::string& file, std::uint32_t mode) override {
        if (file == held_by_another)
            return Failure{file + ": held"};
        return ReplaceFile(file, "{\\rtf1}", mode);
    }
    void TellStep(RunStep step) override { steps.push_back(step); }
    void ShutDownAppsIfRequired(const std::string& file) override {
        system.shell().calls.push_back("let go " + file);
    }
    void ShowReportMessage(const std::string& text, const std::string& heading) override {
        shown.push_back(heading + "|" + text);
    }
    std::string CommandLineTitle() const override { return title; }

    FakePlatform system;
    clsCompareFileOptions options;
    CompareFilesSettings settings;
    std::string title;
    std::string held_by_another;
    RunWatcher* watcher = nullptr;
    std::vector<RunStep> steps;
    std::vector<std::string> shown;

  private:
    ProcessState process_{system.platform};
    VestrelX engine_;
};

class ReportDriver : public testing::Test {
  protected:
    ReportResult Write(std::string file, ReportType type = ReportType::Html,
                       std::int32_t style = 1) {
        return CreateReport(source_, file, type, style);
    }
    ReportResult WriteDefault(ReportType type, Launch launch = Launch::Yes,
                              const std::string& file = "") {
        source_.settings.mlReportDefaultFileType_MD = static_cast<std::int32_t>(type);
        return CreateReportGUI(source_, launch, file);
    }
    bool Exists(const std::string& name) const {
        return std::filesystem::exists(folder_.Path(name));
    }
    std::string Log() const { return folder_.Read("log"); }
    std::vector<std::string>& Opened() { return source_.system.shell().calls; }

    TempFolder folder_;
    FakeSource source_{folder_};
};

TEST_F(ReportDriver, MakesTheWholeChainOfFolders) {
    EXPECT_EQ(Write(folder_.Path("p/q\\r/out.htm")), ReportResult::Ok);
    EXPECT_TRUE(Exists("p/q/r/out.htm"));
    EXPECT_EQ(Log(), "");
}

// A page paints what the user left alone in its own palette, so both must know the same defaults.
TEST(ReportLook, IsTheOptionsWhereNothingWasChosen) {
    const auto file = MakeMemoryIniProfile();
    clsCompareFileOptions options;
    ASSERT_TRUE(options.LoadStateFromFile(*file).ok());
    EXPECT_EQ(ReportLookOf(options), ReportLook{});
    for (clsVarLong* color :
         {&options.lViewAdditionForeColor, &options.lViewDeletionForeColor,
          &options.lViewChangeForeColorOriginal, &options.lViewChangeForeColorModified}) {
        const ReportLook before = ReportLookOf(options);
        color->SetData(0x123456);
        EXPECT_NE(ReportLookOf(options), before);
    }
}

TEST_F(ReportDriver, ExpandsDatesInTheirExactSpellingAndFolders) {
    std::string file = folder_.Path("[YMD]-[ymd].csv");
    EXPECT_EQ(CreateReport(source_, file, ReportType::Csv, 0), ReportResult::Ok);
    EXPECT_TRUE(file.ends_with("/20231114-[ymd].csv") || file.ends_with("/20231115-[ymd].csv"))
        << file;
    EXPECT_TRUE(std::filesystem::exists(file));
    file = "%APPDATA%/r.txt";
    EXPECT_EQ(CreateReport(source_, file, ReportType::Text, 0), ReportResult::Ok);
    EXPECT_EQ(file, source_.system.folder.Path("26/r.txt"));
}

struct FailureRow {
    const char* name;
    const char* file;
    ReportType type;
    ReportResult result;
    const char* words;
    const char* reason;
};
constexpr FailureRow kFailureRows[] = {
    {"full disk", "/dev/full", ReportType::Html, ReportResult::TargetNotCreated,
     "Unable to create target file: /dev/full\r\n\r\nCheck to make sure path exists in the 'Report "
     "Options' tab\r\n",
     "No space left on device"},
    {"a folder as target", "folder", ReportType::Csv, ReportResult::TargetNotCreated,
     "Unable to create target file: ", "Is a directory"},
    {"a folder below a file", "a.txt/r.htm", ReportType::Text, ReportResult::TargetNotWritten,
     "Unable to create target folder: ", "Not a directory"},
    {"a folder below a file, document", "a.txt/sub/r.doc", ReportType::Document,
     ReportResult::TargetNotWritten, "Unable to create target folder: ", "Not a directory"},
    {"a folder that nobody may write to", "readonly/r.htm", ReportType::Html,
     ReportResult::TargetNotWritten,
     "Report folder is read only. Change the report folder in the 'Report Options' tab.", ""},
    {"a document that cannot be saved", "held.doc", ReportType::Document,
     ReportResult::TargetNotWritten, "Unable to save report: ", "held"},
    {"an input", "a.txt", ReportType::Text, ReportResult::TargetNotCreated, "a.txt: this is one of",
     ""},
    {"an input by another road", "folder/../b.txt", ReportType::Html,
     ReportResult::TargetNotCreated, "b.txt: this is one of", ""},
    {"an input behind a link", "link", ReportType::Document, ReportResult::TargetNotWritten,
     "link: this is one of", ""},
};

TEST_F(ReportDriver, TellsWhyAReportIsNotWritten) {
    std::filesystem::create_directory(folder_.Path("folder"));
    std::filesystem::create_directory(folder_.Path("readonly"));
    ASSERT_EQ(chmod(folder_.Path("readonly").c_str(), 0555), 0);
    std::filesystem::create_symlink("a.txt", folder_.Path("link"));
    source_.held_by_another = folder_.Path("held.doc");
    for (const FailureRow& row : kFailureRows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(folder_.Path("log"));
        const std::string file = row.file[0] == '/' ? row.file : folder_.Path(row.file);
        EXPECT_EQ(Write(file, row.type), row.result);
        EXPECT_NE(Log().find(row.words), std::string::npos) << Log();
        EXPECT_TRUE(Log().ends_with(row.reason + "\r\n"s)) << Log();
    }
    EXPECT_EQ(folder_.Read("a.txt"), "x\r\n");
    EXPECT_EQ(folder_.Read("b.txt"), "y\r\n");
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path("folder")));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.Path("readonly")));
}

// Each code has its own cause and its own words, and no other cause has them.
TEST_F(ReportDriver, HasACodeForEachCause) {
    struct Row {
        const char* name;
        std::function<void(FakeSource&)> cause;
        ReportResult result;
        const char* words;  // all that is told, but for the system's own words
    };
    struct Stop : RunWatcher {
        bool KeepGoing() override { return false; }
    } stop;
    const Row rows[] = {
        {"nothing", [](FakeSource&) {}, ReportResult::Ok, ""},
        {"the user stopped the report", [&](FakeSource& source) { source.watcher = &stop; },
         ReportResult::Aborted, "Compare was aborted, no report can be generated\r\n"},
        {"the original is gone",
         [](FakeSource& source) { source.Engine().putMasterFile("/none/m"); },
         ReportResult::MasterNotLoaded, "Unable to load master file for comparison\r\n"},
        {"the modified is gone",
         [](FakeSource& source) { source.Engine().putSourceFile("/none/s"); },
         ReportResult::SourceNotLoaded, "Unable to load source file for comparison\r\n"},
        {"an expression that cannot be understood",
         [](FakeSource& source) {
             source.Engine().putFilterExpression("(");
             source.Engine().putFilterEnabled(true);
         },
         ReportResult::NotCompared,
         "The expression \"(\" cannot be used: missing closing parenthesis\r\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        FakeSource source(folder_);
        row.cause(source);
        std::filesystem::remove(folder_.Path("log"));
        std::filesystem::remove(folder_.Path("r.htm"));
        std::string file = folder_.Path("r.htm");
        EXPECT_EQ(CreateReport(source, file, ReportType::Html, 1), row.result);
        EXPECT_EQ(Log(), row.words);
        EXPECT_EQ(Exists("r.htm"), row.result == ReportResult::Ok);
    }
}

TEST_F(ReportDriver, ReplacesWhatALinkLeadsTo) {
    folder_.Write("real.htm", "old");
    std::filesystem::create_symlink("real.htm", folder_.Path("link.htm"));
    EXPECT_EQ(Write(folder_.Path("link.htm")), ReportResult::Ok);
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("link.htm")));
    EXPECT_NE(folder_.Read("real.htm"), "old");
}

// Whoever cannot read one of the two files cannot read what tells of it.
TEST_F(ReportDriver, IsAsPrivateAsItsFiles) {
    struct Row {
        const char* name;
        mode_t original;
        mode_t modified;
        mode_t fresh;  // of a new report, under a mask that takes nothing
        mode_t old;    // of one that anybody could read
    };
    const Row rows[] = {
        {"both public", 0644, 0644, 0666, 0644},
        {"the original is the owner's", 0600, 0644, 0600, 0600},
        {"the modified is the owner's", 0644, 0400, 0600, 0600},
        {"a group's", 0640, 0644, 0660, 0640},
        {"a group's and another's", 0640, 0604, 0600, 0600},
    };
    const mode_t mask = umask(0);
    const auto mode_of = [](const std::string& file) {
        struct stat facts {};
        return stat(file.c_str(), &facts) == 0 ? facts.st_mode & 0777U : 0U;
    };
    for (const Row& row : rows) {
        for (const ReportType type :
             {ReportType::Html, ReportType::Text, ReportType::Csv, ReportType::Document}) {
            SCOPED_TRACE(row.name + (" " + std::to_string(static_cast<int>(type))));
            chmod(folder_.Path("a.txt").c_str(), row.original);
            chmod(folder_.Path("b.txt").c_str(), row.modified);
            const std::string fresh = folder_.Path("fresh");
            std::filesystem::remove(fresh);
            EXPECT_EQ(Write(fresh, type), ReportResult::Ok);
            EXPECT_EQ(mode_of(fresh), row.fresh);
            const std::string old = folder_.Write("old", "old");
            chmod(old.c_str(), 0644);
            EXPECT_EQ(Write(old, type), ReportResult::Ok);
            EXPECT_EQ(mode_of(old), row.old);
        }
    }
    umask(mask);
}

// A copy of what came through a pipe is the program's own, whatever its permissions.
TEST_F(ReportDriver, IsNotMadePrivateByItsOwnCopies) {
    const std::string copy = folder_.Path("a.txt");
    chmod(copy.c_str(), 0600);
    const PerSide<std::string> files{copy, folder_.Path("b.txt")};
    EXPECT_EQ(ModeForTextOf(source_.Telling(), files), 0600U);
    source_.Telling().manner.shown_names[copy] = "/dev/null";
    EXPECT_EQ(ModeForTextOf(source_.Telling(), files), 0666U);
    const std::string link = folder_.Path("link");
    std::filesystem::create_symlink(folder_.Write("secret", "x"), link);
    chmod(folder_.Path("secret").c_str(), 0600);
    source_.Telling().manner.shown_names[copy] = link;
    EXPECT_EQ(ModeForTextOf(source_.Telling(), files), 0600U) << "what a name leads to counts";
    EXPECT_EQ(ModeForTextOf(source_.Telling(), {"", "/none"}), 0666U);
}

TEST_F(ReportDriver, TakesTheTitleOfTheCommandLineForEngineReportsAlone) {
    source_.title = "From the command line";
    EXPECT_EQ(Write(folder_.Path("r.htm")), ReportResult::Ok);
    EXPECT_NE(folder_.Read("r.htm").find("From the command line"), std::string::npos);
    EXPECT_EQ(Write(folder_.Path("r.doc"), ReportType::Document), ReportResult::Ok);
}

TEST_F(ReportDriver, OpensEachDefaultReportInItsOwnWay) {
    EXPECT_EQ(WriteDefault(ReportType::Html), ReportResult::Ok);
    EXPECT_EQ(WriteDefault(ReportType::Text), ReportResult::Ok);
    EXPECT_EQ(WriteDefault(ReportType::Csv), ReportResult::Ok);
    EXPECT_EQ(WriteDefault(ReportType::Document), ReportResult::Ok);
    const CompareFilesSettings& settings = source_.settings;
    EXPECT_EQ(Opened(), (std::vector{
                            "open " + settings.msgReportFileHTM_MD,
                            "edit " + settings.msgReportFileTXT_MD,
                            "let go " + settings.msgReportFileCSV_MD,
                            "open " + settings.msgReportFileCSV_MD,
                            "let go " + settings.msgReportFileDOC_MD,
                            "open " + settings.msgReportFileDOC_MD,
                        }));
    Opened().clear();
    EXPECT_EQ(WriteDefault(ReportType::Html, Launch::Yes, folder_.Path("out.txt")),
              ReportResult::Ok);
    EXPECT_TRUE(Exists("out.txt"));
    EXPECT_EQ(WriteDefault(ReportType::Csv, Launch::No), ReportResult::Ok);
    EXPECT_TRUE(Opened().empty()) << "an HTML report under another name is not opened";
}

TEST_F(ReportDriver, WritesNothingWithoutAType) {
    source_.settings.mlReportDefaultFileType_MD = 5;
    EXPECT_EQ(CreateReportGUI(source_, Launch::Yes, folder_.Path("r")), ReportResult::Ok);
    EXPECT_FALSE(Exists("r"));
    EXPECT_EQ(source_.steps, (std::vector{RunStep::WriteReport}));
}

// Kept: a failed text or comma-delimited report ends well, its message having been shown.
TEST_F(ReportDriver, HandsBackTheFailureOfHtmlAlone) {
    EXPECT_EQ(WriteDefault(ReportType::Html, Launch::Yes, "/dev/full"),
              ReportResult::TargetNotCreated);
    EXPECT_EQ(WriteDefault(ReportType::Text, Launch::Yes, "/dev/full"), ReportResult::Ok);
    EXPECT_EQ(WriteDefault(ReportType::Csv, Launch::Yes, "/dev/full"), ReportResult::Ok);
    EXPECT_TRUE(Opened().empty());
}

TEST_F(ReportDriver, PutsAHeldDocumentUnderATemporaryName) {
    const std::string held = source_.settings.msgReportFileDOC_MD;
    source_.held_by_another = held;
    EXPECT_EQ(WriteDefault(ReportType::Document), ReportResult::Ok);
    const std::string& fallback = source_.settings.msgReportFileDOC_MD;
    EXPECT_NE(fallback.find("/ZV_"), std::string::npos) << fallback;
    EXPECT_TRUE(fallback.ends_with(".DOC"));
    EXPECT_TRUE(std::filesystem::exists(fallback));
    EXPECT_EQ(Opened(), (std::vector{"let go " + held, "open " + fallback}));
    EXPECT_TRUE(source_.shown.empty());
}

TEST_F(ReportDriver, WritesTrackedChangesUnderTheirOwnNameOrNot) {
    source_.settings.bReportDOC_Tracked = true;
    const std::string name = folder_.Path("r.docx");
    for (const bool held : {false, true}) {
        source_.held_by_another = held ? name : "";
        EXPECT_EQ(WriteDefault(ReportType::Document, Launch::Yes, folder_.Path("r.doc")),
                  held ? ReportResult::TargetNotWritten : ReportResult::Ok);
        EXPECT_EQ(folder_.Read("r.docx"), "tracked");
        EXPECT_FALSE(Exists("r.doc"));
        EXPECT_EQ(Opened().empty(), held) << "no other name is tried";
        Opened().clear();
    }
}

TEST_F(ReportDriver, HasTheUsersColumnTitlesInHtml) {
    source_.settings.txtReportMasterTitleHTML = "Left of all";
    source_.settings.msgReportTitleHTM_MD = "The title";
    EXPECT_EQ(WriteDefault(ReportType::Html), ReportResult::Ok);
    const std::string page = folder_.Read("ZorvaneReport.HTM");
    EXPECT_NE(page.find("Left of all"), std::string::npos);
    EXPECT_NE(page.find("The title"), std::string::npos);
    EXPECT_NE(page.find("b.txt"), std::string::npos) << "a blank title is the file's name";
}

}  // namespace
}  // namespace zorvane
