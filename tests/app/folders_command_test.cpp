#include "app/folders_command.h"

#include <gtest/gtest.h>

#include "app/compare_command.h"
#include "app/output_check.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

CommandLineOutcome Parse(std::vector<std::string> more) {
    more.insert(more.begin(), {"folders", "a", "b"});
    return ParseUnixCommandLine(more);
}

TEST(FoldersCommand, TakesEachOption) {
    struct OptionRow {
        std::vector<std::string> arguments;
        bool (*taken)(const FoldersCommand&);
    };
    using F = FoldersCommand;
    const OptionRow rows[] = {
        {{}, [](const F& f) { return f.original == "a" && f.modified == "b" && !f.recursive; }},
        {{"-r"}, [](const F& f) { return f.recursive; }},
        {{"--types", "*.txt *.doc"}, [](const F& f) { return f.types == "*.txt *.doc"; }},
        {{"--dates"}, [](const F& f) { return f.dates && !f.quick; }},
        {{"--quick"}, [](const F& f) { return f.quick && f.dates; }},
        {{"--no-hidden"}, [](const F& f) { return f.no_hidden; }},
        {{"--follow"}, [](const F& f) { return f.follow; }},
        {{"--no-renames"}, [](const F& f) { return f.no_renames; }},
        {{"-j", "3"}, [](const F& f) { return f.jobs == 3; }},
        {{"--text", "-i", "-w", "-B"},
         [](const F& f) {
             return f.text && f.ignore_case && f.ignore_whitespace && f.ignore_blank_lines;
         }},
        {{"--reports", "r", "--report-type", "doc"},
         [](const F& f) {
             return f.text && f.reports == "r" && f.report_type == ReportType::Document;
         }},
        {{"-o", "t"}, [](const F& f) { return f.output == "t" && !f.json; }},
        {{"--json", "-"}, [](const F& f) { return f.json == "-"; }},
        {{"--only", "changed,same-words"},
         [](const F& f) {
             return f.only == std::vector{FolderVerdict::Changed, FolderVerdict::SameWords};
         }},
        {{"--stat", "-q", "--color", "never"},
         [](const F& f) { return f.stat && f.quiet && f.color == "never"; }},
        {{"--set", "bIgnoreCase=True", "--password", "p"},
         [](const F& f) { return f.load.settings.size() == 1 && f.load.password == "p"; }},
    };
    for (const OptionRow& row : rows) {
        const CommandLineOutcome outcome = Parse(row.arguments);
        ASSERT_TRUE(outcome.folders) << outcome.error;
        EXPECT_TRUE(row.taken(*outcome.folders)) << testing::PrintToString(row.arguments);
    }
}

TEST(FoldersCommand, SaysWhatIsWrong) {
    struct FaultRow {
        std::vector<std::string> arguments;
        const char* words;
    };
    const FaultRow rows[] = {
        {{"--only", "changed,bad"}, "--only bad: write any of changed"},
        {{"--quick", "--text"}, "--quick reads no file"},
        {{"--set", "x"}, "write NAME=VALUE"},
        {{"--report-type", "pdf"}, "--report-type"},
        {{"c"}, "c"},
    };
    for (const FaultRow& row : rows) {
        const CommandLineOutcome outcome = Parse(row.arguments);
        EXPECT_EQ(outcome.exit_status, 2);
        EXPECT_NE(outcome.error.find(row.words), std::string::npos) << outcome.error;
        EXPECT_NE(outcome.error.find("zorvane folders --help"), std::string::npos);
    }
    EXPECT_NE(Parse({"--help"}).output.find("git difftool -d"), std::string::npos);
}

TEST(FoldersCommand, WritesNothingIntoWhatItCompares) {
    const TempFolder folder;
    std::filesystem::create_directories(folder.Path("a/reports"));
    std::filesystem::create_directories(folder.Path("b"));
    std::filesystem::create_directory_symlink(folder.Path("b"), folder.Path("link"));
    const auto check = [&](auto set) {
        FoldersCommand command;
        command.original = folder.Path("a");
        command.modified = folder.Path("b") + "/";
        set(command);
        return CheckOutputs(command).ok();
    };
    EXPECT_TRUE(check([&](auto& command) { command.output = folder.Path("aa"); }));
    EXPECT_FALSE(check([&](auto& command) { command.output = folder.Path("a/new"); }));
    EXPECT_FALSE(check([&](auto& command) { command.json = folder.Path("link/new"); }));
    EXPECT_FALSE(check([&](auto& command) { command.reports = folder.Path("a/reports"); }));
    EXPECT_FALSE(check([&](auto& command) { command.reports = folder.Path("b"); }));
    EXPECT_FALSE(check([&](auto& command) {
        command.output = folder.Path("x");
        command.json = folder.Path("x");
    }));
}

}  // namespace
}  // namespace zorvane
