#include "app/compare_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "common/base/text_encoding.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

constexpr const char* kExamples = R"(Examples:
  zorvane compare old.rtf new.rtf                 the changes, on the terminal
  zorvane compare old.rtf new.rtf -o redline.html one HTML page to read or mail
  zorvane compare old.txt new.txt -o a.doc -o a.csv
                                                  several reports from one compare
  zorvane compare old.txt new.txt -i -w --stat    counts only; case and blanks apart
  zorvane compare old.txt new.txt --ignore-regex '[0-9]{4}-[0-9]{2}-[0-9]{2}'
                                                  dates are no difference
  git show HEAD:a.txt | zorvane compare - a.txt   one side from standard input
  zorvane compare old.txt new.txt --json - | jq .counts

Exit status: 0 no differences, 1 differences, 2 trouble.
)";

constexpr const char* kFootnote =
    R"(The switch form "/M old.txt /S new.txt /T report.htm /X" works as well; see the manual.
)";

struct NamedType {
    const char* name;
    ReportType type;
};
constexpr NamedType kReportTypes[] = {
    {"html", ReportType::Html},    {"htm", ReportType::Html}, {"text", ReportType::Text},
    {"txt", ReportType::Text},     {"csv", ReportType::Csv},  {"doc", ReportType::Document},
    {"rtf", ReportType::Document},
};

std::optional<ReportType> ReportTypeNamed(const std::string& name) {
    for (const NamedType& row : kReportTypes) {
        if (name == row.name)
            return row.type;
    }
    return std::nullopt;
}

// What CLI11 fills in before it is turned into a CompareCommand.
struct RawOptions {
    std::vector<std::string> reports;
    std::string report_type;
    std::string json;
    std::vector<std::string> sets;
    std::int32_t bracket = 0;
    bool no_pager = false;
};

void AddOutputOptions(CLI::App& app, CompareCommand& command, RawOptions& raw) {
    const std::map<std::string, ColorWhen> colors{
        {"auto", ColorWhen::Auto}, {"always", ColorWhen::Always}, {"never", ColorWhen::Never}};
    app.add_option("-o,--report", raw.reports,
                   "Write a report; its extension tells the type: .html, .txt, .csv, .doc or .rtf. "
                   "May be repeated")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--report-type", raw.report_type,
                   "Type of all reports, whatever their extension")
        ->type_name("TYPE")
        ->check(CLI::IsMember({"html", "text", "csv", "doc"}));
    app.add_option("--json", raw.json, "Write the result as JSON; - is standard output")
        ->type_name("FILE");
    app.add_flag("--stat", command.stat, "Print the counts only");
    app.add_flag("-q,--quiet", command.quiet, "Print nothing; the exit status tells");
    app.add_option("--color", command.color, "Colours on the terminal: auto, always or never")
        ->type_name("WHEN")
        ->transform(CLI::CheckedTransformer(colors).description(""));
    app.add_flag("--no-pager", raw.no_pager, "Do not page long output");
    app.add_option("-U,--context", command.context,
                   "Unchanged paragraphs around each difference on the terminal (2)")
        ->type_name("N")
        ->check(CLI::Range(0, 1000000).description(""));
    app.add_flag("--open", command.open_reports, "Open each report when it is written");
    app.add_option("--log", command.log_file, "Append messages to this file")->type_name("FILE");
}

void AddReportOptions(CLI::App& app, CompareCommand& command) {
    const std::map<std::string, CompareView> views{{"side-by-side", CompareView::SideBySide},
                                                   {"all-in-one", CompareView::AllInOne}};
    app.add_option("--view", command.view,
                   "View of the HTML report: side-by-side (default) or all-in-one")
        ->type_name("VIEW")
        ->transform(CLI::CheckedTransformer(views).description(""));
    app.add_option("--title", command.title, "Title of the report")->type_name("TEXT");
    app.add_option("--original-label", command.original_label, "Name of the original in the report")
        ->type_name("TEXT");
    app.add_option("--modified-label", command.modified_label, "Name of the modified in the report")
        ->type_name("TEXT");
}

void AddCompareOptions(CLI::App& app, CompareCommand& command, RawOptions& raw) {
    app.add_flag("-i,--ignore-case", command.ignore_case, "Upper and lower case are the same");
    app.add_flag("-w,--ignore-whitespace", command.ignore_whitespace, "Blanks make no difference");
    app.add_flag("-B,--ignore-blank-lines", command.ignore_blank_lines,
                 "Empty paragraphs make no difference");
    app.add_option("--ignore-regex", command.ignore_expressions,
                   "What matches is left out of the comparison; * is any run of characters. May be "
                   "repeated")
        ->type_name("EXPR")
        ->allow_extra_args(false);
    app.add_flag("--letters", command.letters, "Mark letters inside changed words");
    app.add_flag("--faster", command.faster,
                 "Search less; for very large files with many small changes");
    app.add_flag("--larger-sections", command.larger_sections, "Show changes in larger sections");
    app.add_option("--bracket", raw.bracket,
                   "Number of paragraphs before and after to consider while comparing")
        ->type_name("N")
        ->check(CLI::Range(1, 1000000000).description(""));
    app.add_flag("--plain", command.plain, "Compare and show plain text, without formatting");
    app.add_flag("--remove-blank-lines", command.remove_blank_lines,
                 "Remove empty paragraphs while loading");
    app.add_option("--set", raw.sets, "Set any compare option by its name, such as lPadLength=30")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    app.add_option("--settings", command.settings_file,
                   "Start from the options in this settings file; it is only read")
        ->type_name("FILE");
}

std::optional<Failure> TakeReports(const RawOptions& raw, CompareCommand& command) {
    const std::optional<ReportType> forced = ReportTypeNamed(raw.report_type);
    for (const std::string& file : raw.reports) {
        const std::optional<ReportType> type = forced ? forced : ReportTypeOf(file);
        if (!type) {
            return Failure{file +
                           ": the extension tells no report type; use .html, .txt, .csv, .doc "
                           "or .rtf, or --report-type"};
        }
        command.reports.push_back({file, *type});
    }
    return std::nullopt;
}

std::optional<Failure> TakeSets(const RawOptions& raw, CompareCommand& command) {
    for (const std::string& set : raw.sets) {
        const std::size_t equals = set.find('=');
        if (equals == std::string::npos || equals == 0)
            return Failure{"--set " + set + ": write NAME=VALUE"};
        command.settings.emplace_back(set.substr(0, equals), set.substr(equals + 1));
    }
    return std::nullopt;
}

std::optional<Failure> Finish(const CLI::App& app, const RawOptions& raw, CompareCommand& command) {
    if (command.original == "-" && command.modified == "-")
        return Failure{"only one side can come from standard input"};
    if (app.count("--json") > 0)
        command.json = raw.json;
    if (app.count("--bracket") > 0)
        command.bracket = raw.bracket;
    command.pager = !raw.no_pager;
    if (auto failure = TakeReports(raw, command))
        return failure;
    return TakeSets(raw, command);
}

CommandLineOutcome Trouble(const std::string& reason) {
    CommandLineOutcome outcome;
    outcome.exit_status = 2;
    outcome.error = "zorvane: " + reason + "\nTry 'zorvane compare --help'.\n";
    return outcome;
}

bool Exists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(NativePath(path), error);
}

// Two existing paths and no command mean a compare.
bool MeansCompare(const std::vector<std::string>& arguments) {
    return arguments.size() >= 2 && arguments[0] != "compare" && Exists(arguments[0]) &&
           (arguments[1] == "-" || Exists(arguments[1]));
}

std::string HelpFor(const CLI::App& app, const CLI::App& compare) {
    return compare.parsed() ? compare.help() : app.help();
}

}  // namespace

std::string VersionText() {
    return std::string("zorvane ") + ZORVANE_VERSION;
}

std::optional<ReportType> ReportTypeOf(const std::string& file) {
    return ReportTypeNamed(ToLower(ExtensionOf(file)));
}

bool IsSlashForm(const std::vector<std::string>& arguments) {
    if (arguments.empty())
        return false;
    if (arguments.front().starts_with('/'))
        return !Exists(arguments.front());
    for (const std::string& argument : arguments) {
        const std::size_t colon = argument.find(":\\");
        if (colon == 1 && ((argument[0] >= 'A' && argument[0] <= 'Z') ||
                           (argument[0] >= 'a' && argument[0] <= 'z')))
            return true;
    }
    return false;
}

CommandLineOutcome ParseUnixCommandLine(const std::vector<std::string>& arguments) {
    CompareCommand command;
    RawOptions raw;
    CLI::App app("Compares two versions of a document, paragraph by paragraph and word by word.",
                 "zorvane");
    app.footer(std::string(kExamples) + kFootnote);
    app.set_version_flag("-V,--version", VersionText());
    app.require_subcommand(1);
    CLI::App& compare = *app.add_subcommand("compare", "Compare two files");
    compare.footer(kExamples);
    compare.set_version_flag("-V,--version", VersionText());
    compare.add_option("ORIGINAL", command.original, "The first version; - is standard input")
        ->required();
    compare.add_option("MODIFIED", command.modified, "The second version; - is standard input")
        ->required();
    AddOutputOptions(compare, command, raw);
    AddReportOptions(compare, command);
    AddCompareOptions(compare, command, raw);

    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    if (MeansCompare(arguments))
        reversed.emplace_back("compare");
    CommandLineOutcome outcome;
    try {
        app.parse(reversed);
    } catch (const CLI::CallForVersion&) {
        outcome.output = VersionText() + "\n";
        return outcome;
    } catch (const CLI::CallForHelp&) {
        outcome.output = HelpFor(app, compare);
        return outcome;
    } catch (const CLI::ParseError& error) {
        return Trouble(error.what());
    }
    if (const auto failure = Finish(compare, raw, command))
        return Trouble(failure->reason);
    outcome.compare = std::move(command);
    return outcome;
}

}  // namespace zorvane
