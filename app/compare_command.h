// The command line that users of a Unix shell expect: `zorvane compare ORIGINAL MODIFIED
// [options]`, `zorvane text FILE [options]` and `zorvane folders ORIGINAL MODIFIED [options]`.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/find_command.h"
#include "app/folders_command.h"
#include "app/git_command.h"
#include "app/load_options.h"
#include "app/redline_options.h"
#include "app/text_run.h"
#include "compare/document/beside.h"
#include "compare/engine/engine_report.h"

namespace zorvane {

enum class ColorWhen { Auto, Always, Never };

/// `--view`: the numbers are those of the report styles.
enum class CompareView : std::int32_t { AllInOne = 1, SideBySide = 2 };

struct ReportTarget {
    std::string file;
    ReportType type = ReportType::Html;
    friend bool operator==(const ReportTarget&, const ReportTarget&) = default;
};

/// What a command line asks for. Unset fields leave the option at its default.
struct CompareCommand {
    std::string original;  ///< "-" is standard input; at most one side
    std::string modified;

    std::optional<std::string> pairs;  ///< the list of many pairs, "-" is standard input
    std::string pairs_output;          ///< of their lines; empty: standard output
    std::int32_t jobs = 0;             ///< pairs at once; 0: one a core
    bool fail_fast = false;

    std::vector<ReportTarget> reports;
    std::optional<ReportType> report_type;  ///< of all reports, whatever their names
    bool tracked = false;                   ///< all reports hold tracked changes, likewise
    RedlineOptions redline;                 ///< its files are those of this kind
    std::optional<std::string> json;        ///< "-" is standard output
    bool stat = false;
    bool quiet = false;
    ColorWhen color = ColorWhen::Auto;
    bool pager = true;
    std::int32_t context = 2;  ///< unchanged paragraphs shown around a difference on the terminal
    bool open_reports = false;

    CompareView view = CompareView::SideBySide;
    UnchangedText unchanged = UnchangedText::Fitting;
    std::string title;
    std::string original_label;
    std::string modified_label;

    bool ignore_case = false;
    bool ignore_whitespace = false;
    bool ignore_blank_lines = false;
    std::vector<std::string> ignore_expressions;
    bool letters = false;
    bool faster = false;
    bool larger_sections = false;
    bool no_moves = false;
    std::set<BesideKind> also;  ///< kinds beside the words that count as differences
    std::optional<std::int32_t> bracket;
    LoadOptions load;
};

/// What to do with a command line: run a command, or end at once.
struct CommandLineOutcome {
    std::optional<CompareCommand> compare;
    std::optional<TextCommand> text;
    std::optional<FoldersCommand> folders;
    std::optional<GitCommand> git;
    std::optional<FindCommand> find;
    std::optional<CacheCommand> cache;
    int exit_status = 0;  ///< when there is no command
    std::string output;   ///< for standard output: help or version
    std::string error;    ///< for standard error
};

/// `arguments` without the program's name. Never ends the process and prints nothing.
CommandLineOutcome ParseUnixCommandLine(const std::vector<std::string>& arguments);

/// Two existing paths in front and no command: a compare of both. The second may be "-".
bool MeansCompare(const std::vector<std::string>& arguments);

/// One existing path alone: a document for one side of a window.
bool MeansDocument(const std::vector<std::string>& arguments);

/// True when the arguments are in the slash form: the first begins with "/" and is no existing
/// path, or the line holds a drive and a "\" such as "C:\".
bool IsSlashForm(const std::vector<std::string>& arguments);

/// The type that a report's extension names, if it names one: htm, html, txt, csv, doc, rtf.
std::optional<ReportType> ReportTypeOf(const std::string& file);

/// "zorvane 0.1.0".
std::string VersionText();

}  // namespace zorvane
