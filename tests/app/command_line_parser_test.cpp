#include "app/command_line_parser.h"

#include <functional>

#include <gtest/gtest.h>

#include "common/process_state.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

class CommandLineParserTest : public ::testing::Test {
  protected:
    CommandLineParserTest() : process(fakes.platform) {
        original = Backslashed(fakes.folder.Write("a.txt", "a"));
        modified = Backslashed(fakes.folder.Write("b.txt", "b"));
    }
    static std::string Backslashed(std::string path) {
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    bool Parse(std::string line, const std::string& process_line = "") {
        return ParseCommandLine(process, line, process_line, request);
    }
    /// With both files in front.
    bool ParseSwitches(const std::string& switches) {
        return Parse("/M " + original + " /S" + modified + " " + switches);
    }

    FakePlatform fakes;
    ProcessState process;
    CommandLineRequest request;
    std::string original;
    std::string modified;
};

struct SwitchRow {
    const char* line;
    std::function<bool(const CommandLineRequest&)> holds;
};
using R = CommandLineRequest;
const SwitchRow kSwitchRows[] = {
    {"",
     [](const R& r) { return r.lReportType == 1 && r.lViewFormat == 2 && r.lWindowState == -1; }},
    {"/R3", [](const R& r) { return r.lReportType == 3; }},
    {"/Rx", [](const R& r) { return r.lReportType == 1; }},
    {"/F 1", [](const R& r) { return r.lViewFormat == 1; }},
    {"/i/w/q/b",
     [](const R& r) {
         return r.bIgnoreCase && r.bIgnoreWhitespace && r.bCompareFaster && r.bBeepWhenDone;
     }},
    {"/N /P /A /H",
     [](const R& r) {
         return r.bRemoveFormatting && r.bRemoveBlankLines && r.bExcelCompareFormulas &&
                r.bHTMLCompareSource;
     }},
    {"/K /O /X /G /E",
     [](const R& r) {
         return r.bSkipIfSame && r.bOpenReport && r.bExitWhenDone && r.bExitCodeIsCount &&
                r.bLegacyE;
     }},
    {"/Y2 /Z 3",
     [](const R& r) { return r.sExcelSheetMaster == "2" && r.sExcelSheetSource == "3"; }},
    {"/1 1-3 /2 A /3 4 /4 B-C",
     [](const R& r) {
         return r.sRowsMaster == "1-3" && r.sColsMaster == "A" && r.sRowsSource == "4" &&
                r.sColsSource == "B-C";
     }},
    {"/5\"old one\" /6 new /7 \"The Title\"",
     [](const R& r) {
         return r.sMasterLabel == "old one" && r.sSourceLabel == "new" &&
                r.sReportTitle == "The Title";
     }},
    {"/8 \"u\" /9 o",
     [](const R& r) { return r.sPdfUserPassword == "u" && r.sPdfOwnerPassword == "o"; }},
    {"/U *.txt", [](const R& r) { return r.sFileFilter == "*.txt"; }},
    {"/C", [](const R& r) { return r.bIncludeSubfolders && !r.bCompareFolders; }},
    {"/j a/b ", [](const R& r) { return r.sIgnoreRegEx.empty(); }},
    {"/J a/b /X", [](const R& r) { return r.sIgnoreRegEx == " a/b /X" && !r.bExitWhenDone; }},
    {"/WS 2 /CLEARHISTORY",
     [](const R& r) { return r.lWindowState == 2 && r.bClearHistory && !r.bIgnoreWhitespace; }},
    {"/XPOO a /XPWO \"b\" /XPOM c /XPWM d",
     [](const R& r) {
         return r.sXlsPasswordOpenMaster == "a" && r.sXlsPasswordWriteMaster == "b" &&
                r.sXlsPasswordOpenSource == "c" && r.sXlsPasswordWriteSource == "d" &&
                !r.bExitWhenDone;
     }},
    {"/XPOO a /XPOO b",
     [](const R& r) { return r.sXlsPasswordOpenMaster == "b" && r.bExitWhenDone; }},
    {"/WPOO 1 /WPWO 2 /WPOTO 3 /WPOTWO 4",
     [](const R& r) {
         return r.sDocPasswordOpenMaster == "1" && r.sDocPasswordWriteMaster == "2" &&
                r.sDocPasswordTemplateOpenMaster == "3" && r.sDocPasswordTemplateWriteMaster == "4";
     }},
    {"/WPOM 5 /WPWM 6 /WPOTM 7 /WPOTWM 8",
     [](const R& r) {
         return r.sDocPasswordOpenSource == "5" && r.sDocPasswordWriteSource == "6" &&
                r.sDocPasswordTemplateOpenSource == "7" && r.sDocPasswordTemplateWriteSource == "8";
     }},
    {"/AA 6 /AA7",
     [](const R& r) {
         return r.colAdvancedActions == std::vector<std::int32_t>{7, 6} && !r.bExcelCompareFormulas;
     }},
    {"/aa6", [](const R& r) { return r.colAdvancedActions.empty() && r.bExcelCompareFormulas; }},
    {"/!x /~", [](const R& r) { return !r.bExitWhenDone; }},
};
TEST_F(CommandLineParserTest, ReadsEverySwitch) {
    for (const SwitchRow& row : kSwitchRows) {
        SCOPED_TRACE(row.line);
        EXPECT_TRUE(ParseSwitches(row.line));
        EXPECT_TRUE(row.holds(request));
        EXPECT_EQ(request.sMaster, original);
        EXPECT_EQ(request.sSource, modified);
    }
}

TEST_F(CommandLineParserTest, ANumberThatIsNoneMakesTheLineUnusable) {
    EXPECT_FALSE(ParseSwitches("/WS wide"));
    EXPECT_FALSE(ParseSwitches("/AA x"));
}

TEST_F(CommandLineParserTest, AWordProcessorReportNeedsAllInOne) {
    process.telling.manner.sLogFile = fakes.folder.Path("log");
    EXPECT_FALSE(ParseSwitches("/R4"));
    EXPECT_NE(fakes.folder.Read("log").find("Document report type is only available for ALL IN ONE "
                                            "format (use /F1)."),
              std::string::npos);
    EXPECT_TRUE(ParseSwitches("/R4 /F1"));
}

TEST_F(CommandLineParserTest, TellsEachMissingFile) {
    const std::string log = Backslashed(fakes.folder.Path("log"));
    EXPECT_FALSE(Parse("/L " + log + " /M \\no\\a /S \\no\\b"));
    const std::string text = fakes.folder.Read("log");
    EXPECT_TRUE(text.starts_with(std::string(29, '-') + "Zorvane-------\r\nDate: ")) << text;
    EXPECT_TRUE(
        text.ends_with("Invalid Source file specified\r\nInvalid Master file specified\r\n"));
    EXPECT_FALSE(Parse("/D /M \\no\\a /S " + Backslashed(fakes.folder.Path())));
    EXPECT_TRUE(fakes.folder.Read("log").ends_with("Invalid Master folder specified\r\n"));
}

TEST_F(CommandLineParserTest, LooksInTheCurrentAndTheProgramFolder) {
    std::filesystem::create_directories(fakes.folder.Path("program"));
    fakes.folder.Write("program/only-here.txt", "x");
    EXPECT_TRUE(Parse("/M only-here.txt /S " + modified));
    EXPECT_EQ(request.sMaster, Backslashed(fakes.folder.Path("program/only-here.txt")));
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(fakes.folder.Path());
    EXPECT_TRUE(Parse("/Ma.txt /S\"b.txt\" /Tr.htm"));
    EXPECT_EQ(request.sMaster, original);
    EXPECT_EQ(request.sSource, modified);
    EXPECT_EQ(request.sReportFile, Backslashed(fakes.folder.Path("r.htm")));
    std::filesystem::current_path(before);
}

TEST_F(CommandLineParserTest, TakesTwoAbsolutePaths) {
    const std::string line = "\"c:" + original + "\" \"C:" + modified + "\" /v";
    testing::internal::CaptureStderr();
    EXPECT_TRUE(Parse("", line));
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(request.sMaster, "c:" + original);
    EXPECT_EQ(request.sSource, "C:" + modified);
    EXPECT_TRUE(request.bShowMessages);
    EXPECT_FALSE(Parse("x", "")) << "an automation client cannot use it";
}

TEST_F(CommandLineParserTest, OverridesTheSettingsFile) {
    const std::string ini = Backslashed(fakes.folder.Write("other.ini", "[S]\nk=v\n"));
    EXPECT_TRUE(ParseSwitches("/+ \"" + ini + "\""));
    EXPECT_EQ(process.gsSettingsFile, ini);
    EXPECT_EQ(process.settings->Read("S", "k", ""), "v");
    EXPECT_TRUE(ParseSwitches("/+ \\no\\such.ini"));
    EXPECT_EQ(process.gsSettingsFile, ini) << "a file that is not there changes nothing";
}

TEST_F(CommandLineParserTest, HelpOpensItsPage) {
    EXPECT_FALSE(ParseSwitches("/? /X"));
    EXPECT_EQ(fakes.shell().calls.size(), 1U);
    EXPECT_FALSE(request.bExitWhenDone) << "parsing has ended";
}

TEST_F(CommandLineParserTest, CutsTokens) {
    std::string letter = "z";
    EXPECT_EQ(CountSwitchTokens("/a/b", '/'), 3);
    EXPECT_EQ(CountSwitchTokens("", '/'), 1);
    EXPECT_EQ(GetSwitchToken(2, "x /M a b /", '/', letter), "a b");
    EXPECT_EQ(letter, "M");
    EXPECT_EQ(GetSwitchToken(9, "x /M", '/', letter), "");
    EXPECT_EQ(letter, "M") << "a token that is not there leaves the letter";
    std::string line = "/XPOO a /I /XPOO a /W";
    std::string value;
    EXPECT_TRUE(TakeLongSwitch(line, "/XPOO", value));
    EXPECT_EQ(value, "a");
    EXPECT_EQ(line, "/I /W") << "everywhere it occurs as exactly that text";
}

TEST_F(CommandLineParserTest, AnyLineEnds) {
    std::uint32_t seed = 9;
    for (int round = 0; round < 3000; ++round) {
        std::string line;
        for (int i = 0; i < 30; ++i) {
            seed = seed * 1664525U + 1013904223U;
            line += "/MSJTXW AO1\"\\:? "[seed >> 28];
        }
        if (line.find('L') == std::string::npos)
            Parse(line, line);
    }
}

}  // namespace
}  // namespace zorvane
