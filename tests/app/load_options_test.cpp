#include "app/load_options.h"

#include <gtest/gtest.h>

#include "app/compare_command.h"
#include "app/passwords.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

class LoadOptionsTest : public testing::Test {
  protected:
    LoadOptionsTest() {
        const auto profile = MakeMemoryIniProfile();
        EXPECT_TRUE(options_.LoadStateFromFile(*profile).ok());
    }
    std::string Reason(const LoadOptions& from, SetBy command = SetBy::Compare) {
        const Status status = ApplyLoadOptions(from, command, options_, settings_);
        return status.ok() ? "" : status.failure().reason;
    }

    clsCompareFileOptions options_;
    CompareFilesSettings settings_;
};

struct PasswordCase {
    const char* name;
    const char* file;  // its text; null: no file is given
    const char* variable;
    const char* given;
    const char* both;
    const char* original;
    const char* modified;
};
TEST(Passwords, ComeOnRoadsThatNobodySees) {
    const PasswordCase rows[] = {
        {"a variable", nullptr, "v", "", "v", "", ""},
        {"what is given counts more", nullptr, "v", "g", "g", "", ""},
        {"a file", "one\n", "v", "", "", "one", "one"},
        {"a file of two lines", "one\r\ntwo", nullptr, "", "", "one", "two"},
        {"nothing", nullptr, nullptr, "", "", "", ""},
    };
    for (const PasswordCase& row : rows) {
        SCOPED_TRACE(row.name);
        const TempFolder folder;
        LoadOptions options;
        options.password = row.given;
        if (row.file != nullptr)
            options.password_file = folder.Write("passwords", row.file);
        row.variable == nullptr ? unsetenv("ZORVANE_PASSWORD")
                                : setenv("ZORVANE_PASSWORD", row.variable, 1);
        ASSERT_TRUE(FillPasswords(options).ok());
        unsetenv("ZORVANE_PASSWORD");
        EXPECT_EQ(options.password, row.both);
        EXPECT_EQ(options.original_password, row.original);
        EXPECT_EQ(options.modified_password, row.modified);
    }
    LoadOptions missing;
    missing.password_file = "/no/such/file";
    EXPECT_FALSE(FillPasswords(missing).ok());
}

TEST(TextCommand, IsReadFromItsLine) {
    const CommandLineOutcome outcome = ParseUnixCommandLine(
        {"text",        "a.pdf",    "--rtf",       "-o",       "a.rtf",   "--plain",
         "--password",  "p",        "--sheets",    "1,B",      "--rows",  "2-",
         "--columns",   "3",        "--formulas",  "--source", "--pages", "2-5",
         "--pdf-quick", "--slides", "3",           "--notes",  "--set",   "lPadLength=4",
         "--log",       "l",        "--no-sandbox"});
    ASSERT_TRUE(outcome.text.has_value()) << outcome.error;
    EXPECT_FALSE(outcome.compare.has_value());
    const TextCommand& command = *outcome.text;
    EXPECT_EQ(command.file, "a.pdf");
    EXPECT_TRUE(command.rtf);
    EXPECT_EQ(command.output, "a.rtf");
    LoadOptions expected;
    expected.plain = expected.formulas = expected.source = expected.pdf_quick = true;
    expected.notes = true;
    expected.password = "p";
    expected.sheets = "1,B";
    expected.rows = "2-";
    expected.columns = "3";
    expected.pages = "2-5";
    expected.slides = "3";
    expected.settings = {{"lPadLength", "4"}};
    expected.log_file = "l";
    expected.no_sandbox = true;
    EXPECT_EQ(command.load, expected);
    EXPECT_NE(ParseUnixCommandLine({"text"}).error.find("zorvane text --help"), std::string::npos);
    EXPECT_NE(ParseUnixCommandLine({"text", "--help"}).output.find("install-git"),
              std::string::npos);
}

TEST_F(LoadOptionsTest, ReachBothSides) {
    LoadOptions from;
    from.password = "both";
    from.modified_password = "mine";
    from.sheets = "2";
    from.rows = "1-3";
    from.columns = "4";
    from.pages = "7";
    from.slides = "2-6";
    EXPECT_EQ(Reason(from), "");
    EXPECT_EQ(options_.sDOCPassword_TO_Original.Data(), "both");
    EXPECT_EQ(options_.sDOCPassword_TO_Modified.Data(), "mine");
    EXPECT_EQ(options_.sExcelPasswordOriginal.Data(), "both");
    EXPECT_EQ(options_.sExcelPasswordModified.Data(), "mine");
    EXPECT_EQ(settings_.sBCLPasswordUser, "both");
    EXPECT_EQ(settings_.sBCLPasswordOwner, "mine");
    EXPECT_EQ(options_.sExcelSheetNumberSource.Data(), "2");
    EXPECT_TRUE(options_.bExcelUseRowsMaster.Data() && options_.bExcelUseColsSource.Data());
    EXPECT_EQ(options_.sExcelRowsSource.Data(), "1-3");
    EXPECT_EQ(options_.sExcelColsMaster.Data(), "4");
    EXPECT_TRUE(settings_.bBCLUsingPageRange);
    EXPECT_EQ(settings_.lBCLPageFromModified, 7);
    EXPECT_EQ(settings_.lBCLPageTo, 7);
    EXPECT_FALSE(settings_.bConvertAllSlides);
    EXPECT_EQ(settings_.lFromSlideOriginal, 2);
    EXPECT_EQ(settings_.lToSlideModified, 6);
}

TEST_F(LoadOptionsTest, LeaveAloneWhatIsNotAsked) {
    const CompareFilesSettings untouched = settings_;
    EXPECT_EQ(Reason({}), "");
    EXPECT_EQ(settings_, untouched);
    EXPECT_EQ(options_.sExcelSheetNumberMaster.Data(), "1");
    EXPECT_FALSE(options_.bRemoveFormatting.Data());
    EXPECT_FALSE(options_.bExcelUseRowsMaster.Data());
}

TEST_F(LoadOptionsTest, SetReachesOptionsAndSettings) {
    LoadOptions from;
    from.settings = {{"lPadLength", "0"},
                     {"bDoQuickTextExtraction", "TRUE"},
                     {"lBCLDocumentType", "2"},
                     {"bBCLMergeParagraph", "FALSE"}};
    EXPECT_EQ(Reason(from), "");
    EXPECT_EQ(options_.lPadLength.Data(), 0);
    EXPECT_TRUE(settings_.bDoQuickTextExtraction);
    EXPECT_EQ(settings_.lBCLDocumentType, 2);
    EXPECT_FALSE(settings_.bBCLMergeParagraph);
}

struct WrongRow {
    const char* name;
    void (*set)(LoadOptions&);
    const char* said;
};
constexpr WrongRow kWrong[] = {
    {"no page", [](LoadOptions& from) { from.pages = "x"; }, "--pages x: write"},
    {"page 0", [](LoadOptions& from) { from.pages = "0"; }, "--pages 0: write"},
    {"half a range", [](LoadOptions& from) { from.pages = "2-"; }, "--pages 2-: write"},
    {"rows", [](LoadOptions& from) { from.rows = "abc"; }, "--rows abc: write"},
    {"a row among words", [](LoadOptions& from) { from.rows = "1,x"; }, "--rows 1,x: write"},
    {"row 0", [](LoadOptions& from) { from.rows = "0"; }, "--rows 0: write"},
    {"no rows at all", [](LoadOptions& from) { from.rows = ","; }, "--rows ,: write"},
    {"columns by letters", [](LoadOptions& from) { from.columns = "A-C"; }, "--columns A-C: write"},
    {"rows by their name",
     [](LoadOptions& from) {
         from.settings = {{"sExcelRowsSource", "x"}};
     },
     "--rows x: write"},
    {"a switch that is neither",
     [](LoadOptions& from) {
         from.settings = {{"bDoQuickTextExtraction", "maybe"}};
     },
     "--set: bDoQuickTextExtraction=maybe: write true or false"},
    {"slides", [](LoadOptions& from) { from.slides = "1,2"; }, "--slides 1,2: write"},
    {"no such name",
     [](LoadOptions& from) {
         from.settings = {{"bNone", "1"}};
     },
     "--set: bNone: there is no option"},
    {"a setting that is no number",
     [](LoadOptions& from) {
         from.settings = {{"lBCLPageFrom", "one"}};
     },
     "--set: lBCLPageFrom=one: not a number"},
};

TEST_F(LoadOptionsTest, SayWhatIsWrong) {
    for (const WrongRow& row : kWrong) {
        SCOPED_TRACE(row.name);
        const auto defaults = MakeMemoryIniProfile();
        ASSERT_TRUE(options_.LoadStateFromFile(*defaults).ok());
        LoadOptions from;
        row.set(from);
        EXPECT_TRUE(Reason(from).starts_with(row.said)) << Reason(from);
    }
}

TEST_F(LoadOptionsTest, SetObeysOrRefusesEveryName) {
    // What a name would not do without another is done.
    LoadOptions from;
    from.settings = {{"sExcelRowsMaster", "2-"}, {"sExcelColsSource", "*"},
                     {"lBCLPageTo", "4"},        {"lFromSlideOriginal", "2"},
                     {"lLineBracket", "3"},      {"bExcelIncludeValues", "TRUE"},
                     {"bConnectHyphens", "0"}};
    settings_.bConnectHyphens = true;
    EXPECT_EQ(Reason(from), "");
    EXPECT_TRUE(options_.bExcelUseRowsMaster.Data());
    EXPECT_FALSE(options_.bExcelUseRowsSource.Data());
    EXPECT_TRUE(options_.bExcelUseColsSource.Data());
    EXPECT_TRUE(options_.bUseLineBracket.Data());
    EXPECT_TRUE(options_.bExcelCompareFormulas.Data());
    EXPECT_TRUE(settings_.bBCLUsingPageRange);
    EXPECT_FALSE(settings_.bConvertAllSlides);
    EXPECT_FALSE(settings_.bConnectHyphens);
    from.settings = {{"bUseLineBracket", "FALSE"}, {"lLineBracket", "3"}};
    EXPECT_EQ(Reason(from), "");
    EXPECT_FALSE(options_.bUseLineBracket.Data()) << "what is said goes before what is implied";
}

TEST_F(LoadOptionsTest, SetRefusesWhatHasNoEffect) {
    struct Row {
        const char* name;
        const char* value;
        bool compare;  // obeys it
        bool text;
    };
    constexpr Row kRows[] = {
        {"sFileOriginal", "x", false, false},
        {"sFileModified", "x", false, false},
        {"bReportHTMLShowHighDetailSummary", "TRUE", false, false},
        {"msgReportTitleHTM_MD", "x", false, false},
        {"msgReportFileDOC_MD", "x", false, false},
        {"mlReportDefaultStyle_MD", "1", false, false},
        {"sFontName", "Arial", false, false},
        {"dFontSize", "12", false, false},
        {"bReloadOnRefresh", "FALSE", false, false},
        {"Left", "1", false, false},
        {"bWarnedAboutPPTAlready", "TRUE", false, false},
        {"bIgnoreCase", "TRUE", true, false},
        {"lViewChangeForeColorOriginal", "1", true, false},
        {"bReportDOC_Additions", "TRUE", true, false},
        {"lPadLength", "3", true, true},
        {"sExcelSheetNumberMaster", "2", true, true},
        {"sExcelSheetNumberSource", "2", true, false},
        {"lToSlideModified", "2", true, false},
        {"bRemoveHiddenText", "TRUE", true, true},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        LoadOptions from;
        from.settings = {{row.name, row.value}};
        const std::string refused = "--set " + std::string(row.name) + ": ";
        EXPECT_EQ(Reason(from).starts_with(refused), !row.compare) << Reason(from);
        EXPECT_EQ(Reason(from, SetBy::Text).starts_with(refused), !row.text);
    }
}

}  // namespace
}  // namespace zorvane
