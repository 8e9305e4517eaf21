#include "app/compare_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

constexpr const char* kExamples = R"(Examples:
  zorvane compare old.rtf new.rtf                 the changes, on the terminal
  zorvane compare old.docx new.docx -o redline.docx
                                                  tracked changes, to accept or reject
  zorvane compare old.rtf new.rtf -o redline.html one HTML page to read or mail
  zorvane compare old.txt new.txt -o a.doc -o a.csv
                                                  several reports from one compare
  zorvane compare old.txt new.txt -i -w --stat    counts only; case and blanks apart
  zorvane compare old.txt new.txt --ignore-regex '[0-9]{4}-[0-9]{2}-[0-9]{2}'
                                                  dates are no difference
  git show HEAD:a.txt | zorvane compare - a.txt   one side from standard input
  zorvane compare old.docx new.pdf -o redline.html documents of any kind against each other
  zorvane compare old.xlsx new.xlsx --sheets 'Costs' --formulas
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
    std::string also;
    std::int32_t bracket = 0;
    bool no_pager = false;
};

void AddOutputOptions(CLI::App& app, CompareCommand& command, RawOptions& raw) {
    const std::map<std::string, ColorWhen> colors{
        {"auto", ColorWhen::Auto}, {"always", ColorWhen::Always}, {"never", ColorWhen::Never}};
    app.add_option("-o,--report", raw.reports,
                   "Write a report; its extension tells the type: .html, .txt, .csv, .doc or .rtf; "
                   ".docx is the modified document with the changes tracked. May be repeated")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--report-type", raw.report_type,
                   "Type of all reports, whatever their extension")
        ->type_name("TYPE")
        ->check(CLI::IsMember({"html", "text", "csv", "doc", "tracked"}));
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

std::optional<Failure> TakeReports(const RawOptions& raw, CompareCommand& command) {
    const std::optional<ReportType> forced = ReportTypeNamed(raw.report_type);
    for (const std::string& file : raw.reports) {
        if (raw.report_type == "tracked" || (raw.report_type.empty() && IsRedlineName(file))) {
            command.redline.files.push_back(file);
            continue;
        }
        const std::optional<ReportType> type = forced ? forced : ReportTypeOf(file);
        if (!type) {
            return Failure{file +
                           ": the extension tells no report type; use .html, .txt, .csv, .doc, "
                           ".rtf or .docx, or --report-type"};
        }
        command.reports.push_back({file, *type});
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
    if (app.count("--also") > 0) {
        Result<std::set<BesideKind>> kinds = ParseBesideKinds(raw.also);
        if (!kinds.ok())
            return kinds.failure().WithContext("--also");
        command.also = std::move(kinds).value();
    }
    command.pager = !raw.no_pager;
    if (auto failure = TakeReports(raw, command))
        return failure;
    const Status sets = TakeSets(raw.sets, command.load);
    return sets.ok() ? std::nullopt : std::optional<Failure>(sets.failure());
}

CommandLineOutcome Trouble(const std::string& reason, const char* command) {
    CommandLineOutcome outcome;
    outcome.exit_status = 2;
    outcome.error = "zorvane: " + reason + "\nTry 'zorvane " + command + " --help'.\n";
    return outcome;
}

bool Exists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(NativePath(path), error);
}

constexpr const char* kTextExamples = R"(Examples:
  zorvane text report.docx                        what a compare would see
  zorvane text deck.pptx --plain --notes | less   the notes of the slides too
  zorvane text paper.pdf --rtf -o paper.rtf       with its formatting
  zorvane install-git                             documents in git diff

Exit status: 0 done, 2 trouble.
)";

// The commands and what they fill in.
struct Commands {
    CLI::App app{"Compares two versions of a document, paragraph by paragraph and word by word.",
                 "zorvane"};
    CLI::App* compare = nullptr;
    CLI::App* text = nullptr;
    CLI::App* git = nullptr;
    CLI::App* folders = nullptr;
    CLI::App* find = nullptr;
    CLI::App* cache = nullptr;
    CompareCommand compare_command;
    TextCommand text_command;
    GitCommand git_command;
    FoldersCommand folders_command;
    RawFoldersOptions raw_folders;
    FindCommand find_command;
    CacheCommand cache_command;
    RawOptions raw;
};

void AddCompareCommand(Commands& commands) {
    commands.compare = commands.app.add_subcommand("compare", "Compare two files");
    CLI::App& compare = *commands.compare;
    CompareCommand& command = commands.compare_command;
    compare.footer(kExamples);
    compare.set_version_flag("-V,--version", VersionText());
    compare.add_option("ORIGINAL", command.original, "The first version; - is standard input")
        ->required();
    compare.add_option("MODIFIED", command.modified, "The second version; - is standard input")
        ->required();
    AddOutputOptions(compare, command, commands.raw);
    AddReportOptions(compare, command);
    AddRedlineOptions(compare, command.redline);
    AddCompareOptions(compare, command, commands.raw);
    AddLoadOptions(compare, command.load, commands.raw.sets);
}

void AddTextCommand(Commands& commands) {
    commands.text = commands.app.add_subcommand("text", "Print what a compare sees of a file");
    CLI::App& text = *commands.text;
    TextCommand& command = commands.text_command;
    text.footer(kTextExamples);
    text.set_version_flag("-V,--version", VersionText());
    text.add_option("FILE", command.file, "The document; - is standard input")->required();
    text.add_flag("--rtf", command.rtf, "As rich text (RTF)");
    text.add_option("-o,--output", command.output, "Write to this file")->type_name("FILE");
    AddLoadOptions(text, command.load, commands.raw.sets);
}

constexpr const char* kCommands[] = {"compare", "text", "folders", "find", "cache", "install-git"};

const char* CommandNamed(std::string_view name) {
    for (const char* command : kCommands) {
        if (name == command)
            return command;
    }
    return nullptr;
}

// Whose help a fault points to.
const char* CommandOf(const std::vector<std::string>& arguments) {
    const char* named = arguments.empty() ? nullptr : CommandNamed(arguments[0]);
    return named == nullptr ? "compare" : named;
}

std::string HelpFor(const Commands& commands) {
    for (CLI::App* command : {commands.compare, commands.text, commands.git, commands.folders,
                              commands.find, commands.cache}) {
        if (command->parsed())
            return command->help();
    }
    return commands.app.help();
}

}  // namespace

std::string VersionText() {
    return std::string("zorvane ") + ZORVANE_VERSION;
}

std::optional<ReportType> ReportTypeOf(const std::string& file) {
    return ReportTypeNamed(ToLower(ExtensionOf(file)));
}

bool MeansCompare(const std::vector<std::string>& arguments) {
    return arguments.size() >= 2 && CommandNamed(arguments[0]) == nullptr && Exists(arguments[0]) &&
           (arguments[1] == "-" || Exists(arguments[1]));
}

bool MeansDocument(const std::vector<std::string>& arguments) {
    return arguments.size() == 1 && CommandNamed(arguments[0]) == nullptr && Exists(arguments[0]);
}

bool IsSlashForm(const std::vector<std::string>& arguments) {
    if (arguments.empty())
        return false;
    if (arguments.front().starts_with('/'))
        return !Exists(arguments.front());
    // What is looked for may be a path of any kind.
    if (arguments.front() == "find")
        return false;
    for (const std::string& argument : arguments) {
        const std::size_t colon = argument.find(":\\");
        if (colon == 1 && IsAsciiLetter(argument[0]))
            return true;
    }
    return false;
}

CommandLineOutcome ParseUnixCommandLine(const std::vector<std::string>& arguments) {
    Commands commands;
    CLI::App& app = commands.app;
    app.footer(std::string(kExamples) + kFootnote);
    app.set_version_flag("-V,--version", VersionText());
    app.require_subcommand(1);
    AddCompareCommand(commands);
    AddTextCommand(commands);
    commands.git = AddGitCommand(app, commands.git_command);
    commands.folders = AddFoldersCommand(app, commands.folders_command, commands.raw_folders);
    commands.find = AddFindCommand(app, commands.find_command);
    commands.cache = AddCacheCommand(app, commands.cache_command);

    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    if (MeansCompare(arguments))
        reversed.emplace_back("compare");
    const char* name = CommandOf(arguments);
    CommandLineOutcome outcome;
    try {
        app.parse(reversed);
    } catch (const CLI::CallForVersion&) {
        outcome.output = VersionText() + "\n";
        return outcome;
    } catch (const CLI::CallForHelp&) {
        outcome.output = HelpFor(commands);
        return outcome;
    } catch (const CLI::ParseError& error) {
        return Trouble(error.what(), name);
    }
    if (commands.text->parsed()) {
        if (const Status sets = TakeSets(commands.raw.sets, commands.text_command.load); !sets.ok())
            return Trouble(sets.failure().reason, name);
        outcome.text = std::move(commands.text_command);
        return outcome;
    }
    if (commands.git->parsed()) {
        outcome.git = commands.git_command;
        return outcome;
    }
    if (commands.folders->parsed()) {
        if (const Status done = FinishFoldersCommand(*commands.folders, commands.raw_folders,
                                                     commands.folders_command);
            !done.ok())
            return Trouble(done.failure().reason, name);
        outcome.folders = std::move(commands.folders_command);
        return outcome;
    }
    if (commands.find->parsed()) {
        if (const Status done = FinishFindCommand(commands.find_command); !done.ok())
            return Trouble(done.failure().reason, name);
        outcome.find = std::move(commands.find_command);
        return outcome;
    }
    if (commands.cache->parsed()) {
        outcome.cache = commands.cache_command;
        return outcome;
    }
    if (const auto failure = Finish(*commands.compare, commands.raw, commands.compare_command))
        return Trouble(failure->reason, name);
    outcome.compare = std::move(commands.compare_command);
    return outcome;
}

}  // namespace zorvane
