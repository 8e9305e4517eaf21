#include "app/find_command.h"

#include <CLI/CLI.hpp>

#include "app/compare_command.h"

namespace zorvane {
namespace {

constexpr const char* kFindExamples = R"(Examples:
  zorvane find 'total due' letters -r             the words, in all files of a folder and below
  zorvane find 'total due' letters -r --office    in documents, workbooks, slides and PDF too
  zorvane find -e 'v[0-9]+\.[0-9]+' . -r -C 2     an expression, with two lines around each hit
  zorvane find -iw note . -r --types '*.txt *.md' a word, in files of these types
  zorvane find -l TODO src -r | xargs -d '\n' vi  the files alone
  zorvane find -r --json needle . | jq .path      an object for each line, for programs

TEXT is taken as it stands; with -e its signs have their meaning:
  .  any character          [abc]  one of these        ^  at the line's begin
  *  the one before, any times     [^abc] none of these    $  at the line's end
  +  once or more           a|b    one or the other    \  the next sign as it is
  ?  once or not at all     (ab)   a group             \d \w \s  digit, letter, blank

Each line is told once: PATH:LINE:TEXT. In a document the line is that of its text, and the page,
the slide, or sheet and cell stand in brackets. Texts of documents are kept for the next search;
"zorvane cache" tells where, and empties it.

Exit status: 0 found, 1 nothing found, 2 trouble.
)";

}  // namespace

CLI::App* AddFindCommand(CLI::App& app, FindCommand& command) {
    CLI::App* find = app.add_subcommand("find", "Find text in the files of a folder");
    find->footer(kFindExamples);
    find->set_version_flag("-V,--version", VersionText());
    find->add_option("TEXT", command.text, "What to find")->required();
    find->add_option("FOLDER", command.folder, "Where, or one file; without it, here");
    find->add_flag("-e,--regexp", command.expression, "TEXT is a regular expression");
    find->add_flag("-i,--ignore-case", command.ignore_case, "Upper and lower case are the same");
    find->add_flag("-w,--word-regexp", command.word, "Whole words only");
    find->add_flag("-r,--recursive", command.recursive, "Look into subfolders too");
    find->add_option("--types", command.types,
                     "Files to look through, such as '*.docx *.txt'; upper and lower case are "
                     "the same")
        ->type_name("PATTERNS");
    find->add_flag("--office", command.office,
                   "Read documents, workbooks, slides, PDF and web pages as their text");
    find->add_flag("--no-hidden", command.no_hidden, "Pass over names that begin with a dot");
    find->add_option("-j,--threads", command.jobs, "Threads; without it as many as fit")
        ->type_name("N")
        ->check(CLI::Range(1, 64).description(""));
    const std::string group = "What is told";
    find->add_option("-C,--context", command.context, "Lines around each hit")
        ->type_name("N")
        ->check(CLI::Range(0, 1000000).description(""))
        ->group(group);
    find->add_flag("-l,--files-with-matches", command.files, "The names of files alone")
        ->group(group);
    find->add_flag("-c,--count", command.count, "How many lines each file has")->group(group);
    find->add_flag("--json", command.json, "An object of JSON for each line")->group(group);
    find->add_flag("--stats", command.stats, "Counts at the end")->group(group);
    find->add_flag("-q,--quiet", command.quiet, "Nothing; the exit status tells")->group(group);
    find->add_option("--color", command.color, "Colours on the terminal: auto, always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""))
        ->group(group);
    find->add_option("--password", command.load.password,
                     "Password of documents that ask for one; other users may see it in the list "
                     "of processes")
        ->type_name("TEXT");
    find->add_option("--password-file", command.load.password_file,
                     "Read the password from the first line of this file")
        ->type_name("FILE");
    find->add_flag("--ask-password", command.load.ask_password,
                   "Ask for the password on the terminal");
    find->add_flag("--no-cache", command.no_cache,
                   "Neither use nor keep texts of documents that were read before");
    find->add_flag("--no-sandbox", command.no_sandbox,
                   "Read documents even where the system offers no sandbox for it");
    return find;
}

CLI::App* AddCacheCommand(CLI::App& app, CacheCommand& command) {
    CLI::App* cache = app.add_subcommand(
        "cache", "Tell of the texts and text checks that are kept, or remove them");
    cache->set_version_flag("-V,--version", VersionText());
    cache->add_flag("--clear", command.clear, "Remove them all");
    return cache;
}

Status FinishFindCommand(const FindCommand& command) {
    if (command.files + command.count + command.json + command.quiet > 1)
        return Failure{"-l, -c, --json and -q exclude each other"};
    return Status::Ok();
}

}  // namespace zorvane
