// The options of both command lines reach the compare and what is written of it.
#include <algorithm>

#include "app/compare_command.h"
#include "app/compare_run.h"
#include "app/run_modes.h"
#include "common/process_state.h"
#include "reports/json_report.h"
#include "tests/support/fakes.h"
#include "tests/support/option_effects.h"

namespace zorvane {
namespace {

class CommandOptionsTest : public ::testing::Test {
  protected:
    void WriteFiles(const OptionEffect& row) {
        original_ = fakes_.folder.Write("o.txt", FileOf(row.original));
        modified_ = fakes_.folder.Write("m.txt", FileOf(row.modified));
    }

    // `zorvane compare o.txt m.txt --json r.json` and what asks for these options.
    std::string JsonOf(const CompareOptions& options) {
        const std::string json = fakes_.folder.Path("r.json");
        std::vector<std::string> arguments = {"compare", original_, modified_, "--json", json};
        const auto add = [&](bool wanted, std::initializer_list<std::string> more) {
            if (wanted)
                arguments.insert(arguments.end(), more);
        };
        add(options.ignore_case, {"-i"});
        add(options.ignore_whitespace, {"-w"});
        add(options.ignore_empty_lines, {"-B"});
        add(options.faster, {"--faster"});
        add(options.larger_sections, {"--larger-sections"});
        add(options.bracket > 0, {"--bracket", std::to_string(options.bracket)});
        add(!options.expressions.empty(), {"--ignore-regex", options.expressions});
        add(options.by_character, {"--letters"});
        add(!options.find_moves, {"--no-moves"});
        const CommandLineOutcome outcome = ParseUnixCommandLine(arguments);
        EXPECT_TRUE(outcome.compare.has_value()) << outcome.error;
        EXPECT_LE(RunCompareCommand(fakes_.platform, *outcome.compare), 1);
        return fakes_.folder.Read("r.json");
    }

    // The part of a text report that tells the comparison, of a run in the slash form.
    std::string SlashReport(const std::string& switches) {
        const auto path = [this](const std::string& name) {
            std::string full = fakes_.folder.Path(name);
            std::replace(full.begin(), full.end(), '/', '\\');
            return full;
        };
        ProcessState process(fakes_.platform);
        CommandLineRequest request;
        SilentFrame window;
        frmMainMDI frame(process, window, SilentViewers(process));
        Main(process,
             "/M " + path("o.txt") + " /S " + path("m.txt") + " /L " + path("log") + " /T " +
                 path("r.txt") + " /R2 /X " + switches,
             request, frame);
        frame.UnloadAll();
        return BehindNames(fakes_.folder.Read("r.txt"));
    }
    static std::string BehindNames(const std::string& report) {
        return report.substr(report.find("\r\n\r\n", report.find("Modified: ")));
    }

    FakePlatform fakes_;
    std::string original_;
    std::string modified_;
};

TEST_F(CommandOptionsTest, OfCompareReachEveryLevel) {
    for (const OptionEffect& row : kOptionEffects) {
        SCOPED_TRACE(row.name);
        WriteFiles(row);
        CompareOptions expected = row.options;
        expected.filter_sections = !expected.expressions.empty();  // what is ignored is ignored
        const Comparison comparison = Compared(row.original, row.modified, expected);
        EXPECT_EQ(JsonOf(row.options),
                  WriteJsonReport({.comparison = comparison, .names = {original_, modified_}}));
    }
}

TEST_F(CommandOptionsTest, OfTheSlashFormReachEveryLevel) {
    for (const OptionEffect& row : kOptionEffects) {
        CompareOptions expected = row.options;
        std::string switches;
        switches += expected.ignore_case ? "/I " : "";
        switches += expected.ignore_whitespace ? "/W " : "";
        switches += expected.faster ? "/Q " : "";
        if (!expected.expressions.empty()) {
            switches += "/J " + expected.expressions;  // takes the rest of the line
            expected.expressions = " " + expected.expressions;
        }
        expected.filter_sections = false;
        if (switches.empty())
            continue;
        expected.by_character = false;  // comes from the settings alone
        SCOPED_TRACE(row.name);
        WriteFiles(row);
        const Comparison comparison = Compared(row.original, row.modified, expected);
        EXPECT_EQ(SlashReport(switches), BehindNames(WriteTextReport({.comparison = comparison})));
    }
}

}  // namespace
}  // namespace zorvane
