#include "app/compare_command.h"

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

using Arguments = std::vector<std::string>;

TEST(CompareCommand, ReadsEveryOption) {
    std::istringstream words(
        "compare a.txt b.txt -o r.HTML --report r.csv --json - --stat --color never --no-pager -U "
        "5 "
        "--open --log run.log --view all-in-one --unchanged none --title T --original-label L "
        "--modified-label M -i -w -B --ignore-regex x* --ignore-regex y --letters --faster "
        "--larger-sections --bracket 7 --plain --remove-blank-lines --set sFontName=A=B --settings "
        "s.ini");
    const CommandLineOutcome outcome =
        ParseUnixCommandLine(Arguments(std::istream_iterator<std::string>(words), {}));
    ASSERT_TRUE(outcome.compare.has_value()) << outcome.error;
    const CompareCommand& command = *outcome.compare;
    EXPECT_EQ(command.original, "a.txt");
    EXPECT_EQ(command.modified, "b.txt");
    EXPECT_EQ(command.reports, (std::vector<ReportTarget>{{"r.HTML", ReportType::Html},
                                                          {"r.csv", ReportType::Csv}}));
    EXPECT_EQ(command.json, "-");
    EXPECT_TRUE(command.stat && command.open_reports && command.ignore_case &&
                command.ignore_whitespace && command.ignore_blank_lines && command.letters &&
                command.faster && command.larger_sections && command.load.plain &&
                command.load.remove_blank_lines);
    EXPECT_FALSE(command.quiet || command.pager);
    EXPECT_EQ(command.color, ColorWhen::Never);
    EXPECT_EQ(command.context, 5);
    EXPECT_EQ(command.view, CompareView::AllInOne);
    EXPECT_EQ(command.unchanged, UnchangedText::None);
    EXPECT_EQ(command.title + command.original_label + command.modified_label, "TLM");
    EXPECT_EQ(command.ignore_expressions, (Arguments{"x*", "y"}));
    EXPECT_EQ(command.bracket, 7);
    ASSERT_EQ(command.load.settings.size(), 1U);
    EXPECT_EQ(command.load.settings[0].first, "sFontName");
    EXPECT_EQ(command.load.settings[0].second, "A=B");
    EXPECT_EQ(command.load.settings_file, "s.ini");
    EXPECT_EQ(command.load.log_file, "run.log");
}

TEST(CompareCommand, ReportTypeOverridesTheExtension) {
    const CommandLineOutcome outcome =
        ParseUnixCommandLine({"compare", "a", "b", "-o", "r.out", "--report-type", "doc"});
    ASSERT_TRUE(outcome.compare.has_value()) << outcome.error;
    EXPECT_EQ(outcome.compare->reports,
              (std::vector<ReportTarget>{{"r.out", ReportType::Document}}));
}

struct TroubleRow {
    const char* name;
    Arguments arguments;
    const char* said;
};
const TroubleRow kTroubles[] = {
    {"one side", {"compare", "a"}, "MODIFIED"},
    {"three sides", {"compare", "a", "b", "c"}, "c"},
    {"both from standard input", {"compare", "-", "-"}, "standard input"},
    {"unknown option", {"compare", "a", "b", "--frob"}, "--frob"},
    {"no such type", {"compare", "a", "b", "-o", "r.xyz"}, "r.xyz"},
    {"no extension", {"compare", "a", "b", "-o", "report"}, "report"},
    {"set without a value", {"compare", "a", "b", "--set", "bIgnoreCase"}, "NAME=VALUE"},
    {"set without a name", {"compare", "a", "b", "--set", "=1"}, "NAME=VALUE"},
    {"bracket is no number", {"compare", "a", "b", "--bracket", "x"}, "--bracket"},
    {"bracket of nothing", {"compare", "a", "b", "--bracket", "0"}, "--bracket"},
    {"no such view", {"compare", "a", "b", "--view", "diagonal"}, "--view"},
    {"no such choice of unchanged text",
     {"compare", "a", "b", "--unchanged", "some"},
     "--unchanged"},
    {"no such colour", {"compare", "a", "b", "--color", "blue"}, "--color"},
    {"no command", {"no-such-file", "no-such-file-either"}, ""},
};
TEST(CompareCommand, SaysWhatIsWrong) {
    for (const TroubleRow& row : kTroubles) {
        SCOPED_TRACE(row.name);
        const CommandLineOutcome outcome = ParseUnixCommandLine(row.arguments);
        EXPECT_FALSE(outcome.compare.has_value());
        EXPECT_EQ(outcome.exit_status, 2);
        EXPECT_TRUE(outcome.output.empty());
        EXPECT_NE(outcome.error.find(row.said), std::string::npos) << outcome.error;
        EXPECT_NE(outcome.error.find("--help"), std::string::npos);
    }
}

TEST(CompareCommand, HelpAndVersionEndWithSuccess) {
    for (const Arguments& arguments : {Arguments{"--help"}, Arguments{"compare", "--help"},
                                       Arguments{"--version"}, Arguments{"compare", "--version"}}) {
        const CommandLineOutcome outcome = ParseUnixCommandLine(arguments);
        EXPECT_EQ(outcome.exit_status, 0);
        EXPECT_TRUE(outcome.error.empty()) << outcome.error;
        EXPECT_FALSE(outcome.output.empty());
        EXPECT_FALSE(outcome.compare.has_value());
    }
    EXPECT_NE(ParseUnixCommandLine({"compare", "--help"}).output.find("--ignore-regex"),
              std::string::npos);
}

TEST(CompareCommand, TwoExistingPathsMeanACompare) {
    const CommandLineOutcome outcome = ParseUnixCommandLine({"/", "/tmp", "--stat"});
    ASSERT_TRUE(outcome.compare.has_value()) << outcome.error;
    EXPECT_EQ(outcome.compare->original, "/");
    EXPECT_EQ(outcome.compare->modified, "/tmp");
}

struct FormRow {
    const char* name;
    Arguments arguments;
    bool slash;
};
const FormRow kForms[] = {
    {"nothing", {}, false},
    {"a switch", {"/Ma.txt", "/Sb.txt"}, true},
    {"a switch and a blank", {"/M", "a.txt"}, true},
    {"an existing path", {"/tmp", "/"}, false},
    {"a command", {"compare", "/M", "b"}, false},
    {"two drives", {"C:\\a.txt", "d:\\b.txt"}, true},
    {"a drive later", {"a.txt", "c:\\b.txt"}, true},
    {"a web address is no drive", {"http:\\x"}, false},
    {"a digit is no drive", {"1:\\x"}, false},
};
TEST(CompareCommand, TellsTheSlashForm) {
    for (const FormRow& row : kForms) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(IsSlashForm(row.arguments), row.slash);
    }
}

}  // namespace
}  // namespace zorvane
