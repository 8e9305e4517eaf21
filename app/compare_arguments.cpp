#include "app/compare_arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

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

void AddFileOptions(CLI::App& app, RawCompareOptions& raw) {
    app.add_option("-o,--report", raw.reports,
                   "Write a report; its extension tells the type: .html, .txt, .csv, .doc or .rtf; "
                   ".docx and .odt are the modified document with the changes tracked. May be "
                   "repeated")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--report-type", raw.report_type,
                   "Type of all reports, whatever their extension")
        ->type_name("TYPE")
        ->check(CLI::IsMember({"html", "text", "csv", "doc", "tracked"}));
    app.add_option("--json", raw.json, "Write the result as JSON; - is standard output")
        ->type_name("FILE");
}

void AddPairOptions(CLI::App& app, CompareCommand& command) {
    const char* group = "Many pairs";
    app.add_option("--pairs", command.pairs,
                   "Compare all pairs of this list; - is standard input. A line holds ORIGINAL, a "
                   "tab and MODIFIED, and reports behind further tabs; or a JSON object. One line "
                   "of JSON a pair is written, in that order, to standard output or the file of "
                   "-o, where lines that stand there already are kept")
        ->type_name("LIST")
        ->group(group);
    app.add_option("-j,--jobs", command.jobs, "Pairs at once; without it one a core")
        ->type_name("N")
        ->check(CLI::Range(1, 256).description(""))
        ->group(group);
    app.add_flag("--fail-fast", command.fail_fast,
                 "End at the first pair in trouble; it is told and has no line, so that the same "
                 "call goes on with it")
        ->group(group);
}

void AddOutputOptions(CLI::App& app, CompareCommand& command, RawCompareOptions& raw) {
    const std::map<std::string, ColorWhen> colors{
        {"auto", ColorWhen::Auto}, {"always", ColorWhen::Always}, {"never", ColorWhen::Never}};
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
}

void AddReportOptions(CLI::App& app, CompareCommand& command) {
    const std::map<std::string, CompareView> views{{"side-by-side", CompareView::SideBySide},
                                                   {"all-in-one", CompareView::AllInOne}};
    app.add_option("--view", command.view,
                   "View of the HTML report: side-by-side (default) or all-in-one")
        ->type_name("VIEW")
        ->transform(CLI::CheckedTransformer(views).description(""));
    const std::map<std::string, UnchangedText> unchanged{{"all", UnchangedText::All},
                                                         {"folded", UnchangedText::Folded},
                                                         {"none", UnchangedText::None}};
    app.add_option("--unchanged", command.unchanged,
                   "Unchanged text in the HTML report: all, folded or none. Without it long "
                   "stretches are folded, and left out where the page would grow too large")
        ->type_name("HOW")
        ->transform(CLI::CheckedTransformer(unchanged).description(""));
    app.add_option("--title", command.title, "Title of the report")->type_name("TEXT");
    app.add_option("--original-label", command.original_label, "Name of the original in the report")
        ->type_name("TEXT");
    app.add_option("--modified-label", command.modified_label, "Name of the modified in the report")
        ->type_name("TEXT");
}

void AddCompareOptions(CLI::App& app, CompareCommand& command, RawCompareOptions& raw) {
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
    app.add_flag(
        "--no-moves", command.no_moves,
        "Tell a moved paragraph as deleted and added, without looking for its other place");
    app.add_option("--also", raw.also,
                   "Kinds beside the words that count as differences in the exit status: all, or "
                   "any of pictures, links, formatting, comments, ... with commas between")
        ->type_name("KINDS");
    app.add_option("--bracket", raw.bracket,
                   "Number of paragraphs before and after to consider while comparing")
        ->type_name("N")
        ->check(CLI::Range(1, 1000000000).description(""));
}

Status TakeKinds(const CLI::App& app, const RawCompareOptions& raw, CompareCommand& command) {
    if (app.count("--bracket") > 0)
        command.bracket = raw.bracket;
    if (app.count("--report-type") > 0)
        command.report_type = ReportTypeNamed(raw.report_type);
    command.tracked = raw.report_type == "tracked";
    if (app.count("--also") == 0)
        return Status::Ok();
    Result<std::set<BesideKind>> kinds = ParseBesideKinds(raw.also);
    if (!kinds.ok())
        return kinds.failure().WithContext("--also");
    command.also = std::move(kinds).value();
    return Status::Ok();
}

// Of many pairs one result is a line, and its files are named in the list.
Status TakePairs(const CLI::App& app, const RawCompareOptions& raw, CompareCommand& command) {
    if (app.count("ORIGINAL") > 0)
        return Failure{"--pairs: the files stand in the list, and none behind the options"};
    for (const char* other : {"--json", "--stat", "--color", "--no-pager", "--context", "--open"}) {
        if (app.count(other) > 0)
            return Failure{std::string(other) + " does not go with --pairs"};
    }
    if (raw.reports.size() > 1)
        return Failure{"--pairs: the lines go to one file; name -o once"};
    if (!raw.reports.empty())
        command.pairs_output = raw.reports.front();
    return Status::Ok();
}

// What a pair has no say in: it concerns the run, or would let a list open a closed reader.
constexpr const char* kOnlyOfTheLine[] = {"settings", "log", "ask-password", "no-sandbox"};

Status CheckPairOption(const CLI::App& app, const PairOption& option) {
    for (const char* name : kOnlyOfTheLine) {
        if (option.name == name)
            return Failure{option.name + ": this stands on the command line, not in a list"};
    }
    if (app.get_option_no_throw("--" + option.name) == nullptr || option.name == "help")
        return Failure{option.name + ": there is no such option of a pair"};
    return Status::Ok();
}

// A password of the pair's own is the only one that it has.
void ForgetPasswords(const std::vector<PairOption>& options, LoadOptions& load) {
    for (const PairOption& option : options) {
        if (option.name.find("password") == std::string::npos)
            continue;
        load.password.clear();
        load.original_password.clear();
        load.modified_password.clear();
        load.password_file.clear();
    }
}

}  // namespace

std::optional<ReportType> ReportTypeOf(const std::string& file) {
    return ReportTypeNamed(ToLower(ExtensionOf(file)));
}

void AddCompareArguments(CLI::App& app, CompareCommand& command, RawCompareOptions& raw) {
    app.add_option("ORIGINAL", command.original, "The first version; - is standard input");
    app.add_option("MODIFIED", command.modified, "The second version; - is standard input");
    AddFileOptions(app, raw);
    AddOutputOptions(app, command, raw);
    AddReportOptions(app, command);
    AddRedlineOptions(app, command.redline);
    AddCompareOptions(app, command, raw);
    AddPairOptions(app, command);
    AddLoadOptions(app, command.load, raw.sets);
}

Status TakeReports(const std::vector<std::string>& files, CompareCommand& command) {
    for (const std::string& file : files) {
        if (command.tracked || (!command.report_type && IsRedlineName(file))) {
            command.redline.files.push_back(file);
            continue;
        }
        const std::optional<ReportType> type =
            command.report_type ? command.report_type : ReportTypeOf(file);
        if (!type) {
            return Failure{file +
                           ": the extension tells no report type; use .html, .txt, .csv, .doc, "
                           ".rtf or .docx, or --report-type"};
        }
        command.reports.push_back({file, *type});
    }
    return Status::Ok();
}

Status FinishCompareCommand(const CLI::App& app, const RawCompareOptions& raw,
                            CompareCommand& command) {
    const bool many = app.count("--pairs") > 0;
    for (const char* file : {"ORIGINAL", "MODIFIED"}) {
        if (!many && app.count(file) == 0)
            return Failure{std::string(file) + " is required"};
    }
    if (!many && (app.count("--jobs") > 0 || command.fail_fast))
        return Failure{"--jobs and --fail-fast are for many pairs; name their list with --pairs"};
    if (command.original == "-" && command.modified == "-")
        return Failure{"only one side can come from standard input"};
    if (app.count("--json") > 0)
        command.json = raw.json;
    command.pager = !raw.no_pager;
    Status step = TakeKinds(app, raw, command);
    if (step.ok())
        step = many ? TakePairs(app, raw, command) : TakeReports(raw.reports, command);
    return step.ok() ? TakeSets(raw.sets, command.load) : step;
}

Status TakePairOptions(const std::vector<PairOption>& options, CompareCommand& command) {
    CLI::App app;
    RawCompareOptions raw;
    AddFileOptions(app, raw);
    AddReportOptions(app, command);
    AddCompareOptions(app, command, raw);
    AddLoadOptions(app, command.load, raw.sets);
    ForgetPasswords(options, command.load);
    std::vector<std::string> arguments;
    for (const PairOption& option : options) {
        if (Status known = CheckPairOption(app, option); !known.ok())
            return known;
        arguments.push_back("--" + option.name + "=" + option.value);
    }
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        return Failure{error.what()};
    }
    if (app.count("--json") > 0)
        command.json = raw.json;
    if (command.json == "-")
        return Failure{"json: a pair's JSON goes to a file of its own"};
    Status step = TakeKinds(app, raw, command);
    if (step.ok())
        step = TakeReports(raw.reports, command);
    return step.ok() ? TakeSets(raw.sets, command.load) : step;
}

}  // namespace zorvane
