#include "app/compare_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "app/compare_arguments.h"
#include "common/base/ascii.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

constexpr const char* kCompareExamples = R"(Examples:
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
  zorvane compare --pairs list.tsv -o results.jsonl
                                                  many pairs; the same call goes on after a stop
  zorvane compare old.txt new.txt --json - | jq .counts

Exit status: 0 no differences, 1 differences, 2 trouble.
)";

constexpr const char* kFootnote =
    R"(The switch form "/M old.txt /S new.txt /T report.htm /X" works as well; see the manual.
)";

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
    RawCompareOptions raw;
};

void AddCompareCommand(Commands& commands) {
    commands.compare = commands.app.add_subcommand("compare", "Compare two files");
    CLI::App& compare = *commands.compare;
    CompareCommand& command = commands.compare_command;
    compare.footer(kCompareExamples);
    compare.set_version_flag("-V,--version", VersionText());
    AddCompareArguments(compare, command, commands.raw);
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

namespace {

void AddCommands(Commands& commands) {
    CLI::App& app = commands.app;
    app.footer(std::string(kCompareExamples) + kFootnote);
    app.set_version_flag("-V,--version", VersionText());
    app.require_subcommand(1);
    AddCompareCommand(commands);
    AddTextCommand(commands);
    commands.git = AddGitCommand(app, commands.git_command);
    commands.folders = AddFoldersCommand(app, commands.folders_command, commands.raw_folders);
    commands.find = AddFindCommand(app, commands.find_command);
    commands.cache = AddCacheCommand(app, commands.cache_command);
}

// What the command that was given makes of its values.
Status TakeCommand(Commands& commands, CommandLineOutcome& outcome) {
    Status done = Status::Ok();
    if (commands.text->parsed()) {
        done = TakeSets(commands.raw.sets, commands.text_command.load);
        outcome.text = std::move(commands.text_command);
    } else if (commands.git->parsed()) {
        outcome.git = commands.git_command;
    } else if (commands.folders->parsed()) {
        done =
            FinishFoldersCommand(*commands.folders, commands.raw_folders, commands.folders_command);
        outcome.folders = std::move(commands.folders_command);
    } else if (commands.find->parsed()) {
        done = FinishFindCommand(commands.find_command);
        outcome.find = std::move(commands.find_command);
    } else if (commands.cache->parsed()) {
        outcome.cache = commands.cache_command;
    } else {
        done = FinishCompareCommand(*commands.compare, commands.raw, commands.compare_command);
        outcome.compare = std::move(commands.compare_command);
    }
    return done;
}

}  // namespace

CommandLineOutcome ParseUnixCommandLine(const std::vector<std::string>& arguments) {
    Commands commands;
    AddCommands(commands);
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    if (MeansCompare(arguments))
        reversed.emplace_back("compare");
    const char* name = CommandOf(arguments);
    CommandLineOutcome outcome;
    try {
        commands.app.parse(reversed);
    } catch (const CLI::CallForVersion&) {
        outcome.output = VersionText() + "\n";
        return outcome;
    } catch (const CLI::CallForHelp&) {
        outcome.output = HelpFor(commands);
        return outcome;
    } catch (const CLI::ParseError& error) {
        return Trouble(error.what(), name);
    }
    if (const Status done = TakeCommand(commands, outcome); !done.ok())
        return Trouble(done.failure().reason, name);
    return outcome;
}

}  // namespace zorvane
