#include "app/folders_command.h"

#include <CLI/CLI.hpp>
#include <map>

#include "app/compare_command.h"

namespace zorvane {
namespace {

constexpr const char* kFoldersExamples = R"(Examples:
  zorvane folders old new -r                      what differs, a line each
  zorvane folders old new -r --types '*.docx *.pdf' --text
                                                  changed documents, with how much of their words
  zorvane folders old new -r --reports diffs      a page to read for each changed document
  zorvane folders old new -r -o table.txt         all records, for a spreadsheet
  zorvane folders old new -r --only changed,failed
  zorvane folders old new -r --json - | jq .counts
  git config difftool.folders.cmd 'zorvane folders -r "$LOCAL" "$REMOTE"'
  git difftool -d -t folders v1 v2                two versions of a repository

Letters: M changed, D only in ORIGINAL, A only in MODIFIED, R renamed or moved, t another date,
m other bytes with the same words, ! not compared, = the same.

Exit status: 0 no differences, 1 differences, 2 trouble.
)";

const std::map<std::string, ReportType> kFolderReportTypes{{"html", ReportType::Html},
                                                           {"text", ReportType::Text},
                                                           {"csv", ReportType::Csv},
                                                           {"doc", ReportType::Document}};

void AddCompareOptions(CLI::App& app, FoldersCommand& command) {
    app.add_flag("-r,--recursive", command.recursive,
                 "Look into subfolders too; without it they are named only");
    app.add_option("--types", command.types,
                   "Files to compare, such as '*.docx *.pdf'; upper and lower case are the same")
        ->type_name("PATTERNS");
    app.add_flag("--dates", command.dates, "A date that differs is a difference");
    app.add_flag("--quick", command.quick,
                 "Compare sizes and dates and read no file; includes --dates");
    app.add_flag("--no-hidden", command.no_hidden, "Pass over names that begin with a dot");
    app.add_flag("--follow", command.follow,
                 "A link to a file stands for the file; folders are never followed. On in a "
                 "folder difftool of git");
    app.add_flag("--no-renames", command.no_renames,
                 "Do not look for files that were renamed or moved");
    app.add_option("-j,--jobs", command.jobs, "Threads; without it as many as fit")
        ->type_name("N")
        ->check(CLI::Range(1, 64).description(""));
}

void AddTextOptions(CLI::App& app, FoldersCommand& command, RawFoldersOptions& raw) {
    const std::string group = "Words of changed files";
    app.add_flag("--text", command.text, "Compare the words of each pair that differs")
        ->group(group);
    app.add_option("--reports", command.reports,
                   "Write a report for each pair whose words differ into this folder (and --text)")
        ->type_name("FOLDER")
        ->group(group);
    app.add_option("--report-type", raw.report_type,
                   "Type of these reports: html (default), text, csv or doc")
        ->type_name("TYPE")
        ->check(CLI::IsMember({"html", "text", "csv", "doc"}).description(""))
        ->group(group);
    app.add_flag("--no-cache", command.no_cache,
                 "Neither use nor keep what was found of pairs before (zorvane cache)")
        ->group(group);
    app.add_flag("-i,--ignore-case", command.ignore_case, "Upper and lower case are the same")
        ->group(group);
    app.add_flag("-w,--ignore-whitespace", command.ignore_whitespace, "Blanks make no difference")
        ->group(group);
    app.add_flag("-B,--ignore-blank-lines", command.ignore_blank_lines,
                 "Empty paragraphs make no difference")
        ->group(group);
}

void AddOutputOptions(CLI::App& app, FoldersCommand& command, RawFoldersOptions& raw) {
    app.add_option("-o,--output", command.output,
                   "Write a table of all records, with tabs between, to this file")
        ->type_name("FILE");
    app.add_option("--json", raw.json, "Write the result as JSON; - is standard output")
        ->type_name("FILE");
    app.add_option("--only", raw.only,
                   "List these alone, with commas between: changed, original, modified, renamed, "
                   "date, same-words, failed, same")
        ->type_name("KINDS");
    app.add_flag("--stat", command.stat, "Print the counts only");
    app.add_flag("-q,--quiet", command.quiet, "Print nothing; the exit status tells");
    app.add_option("--color", command.color, "Colours on the terminal: auto, always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""));
}

Status TakeOnly(const std::string& text, std::vector<FolderVerdict>& only) {
    for (const std::string& name : CLI::detail::split(text, ',')) {
        const std::optional<FolderVerdict> verdict = FolderVerdictNamed(name);
        if (!verdict)
            return Failure{"--only " + name +
                           ": write any of changed, original, modified, renamed, date, "
                           "same-words, failed, same"};
        only.push_back(*verdict);
    }
    return Status::Ok();
}

}  // namespace

CLI::App* AddFoldersCommand(CLI::App& app, FoldersCommand& command, RawFoldersOptions& raw) {
    CLI::App* folders = app.add_subcommand("folders", "Compare two folders, file by file");
    folders->footer(kFoldersExamples);
    folders->set_version_flag("-V,--version", VersionText());
    folders->add_option("ORIGINAL", command.original, "The first folder")->required();
    folders->add_option("MODIFIED", command.modified, "The second folder")->required();
    AddCompareOptions(*folders, command);
    AddOutputOptions(*folders, command, raw);
    AddTextOptions(*folders, command, raw);
    AddLoadOptions(*folders, command.load, raw.sets);
    return folders;
}

Status FinishFoldersCommand(const CLI::App& app, const RawFoldersOptions& raw,
                            FoldersCommand& command) {
    if (app.count("--json") > 0)
        command.json = raw.json;
    if (app.count("--only") > 0) {
        if (Status only = TakeOnly(raw.only, command.only); !only.ok())
            return only;
    }
    command.report_type = kFolderReportTypes.at(raw.report_type);
    command.text = command.text || !command.reports.empty();
    // Without its bytes the date is all that tells of a change that keeps the size.
    command.dates = command.dates || command.quick;
    if (command.text && command.quick)
        return Failure{"--quick reads no file, and --text and --reports read the changed ones"};
    return TakeSets(raw.sets, command.load);
}

}  // namespace zorvane
