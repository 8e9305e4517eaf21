// `zorvane folders ORIGINAL MODIFIED [options]` as it is written, and as it is carried out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/load_options.h"
#include "compare/engine/engine_report.h"
#include "folders/folder_findings.h"

namespace CLI {
class App;
}

namespace zorvane {

struct Platform;

/// Unset fields leave the option at its default.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): one of them, in the order of the help
struct FoldersCommand {
    std::string original;
    std::string modified;

    bool recursive = false;
    std::string types;
    bool dates = false;
    bool quick = false;  ///< sizes and dates, no bytes
    bool no_hidden = false;
    bool follow = false;
    bool no_renames = false;
    std::int32_t jobs = 0;  ///< 0: as many as fit

    bool text = false;
    bool no_cache = false;
    bool ignore_case = false;
    bool ignore_whitespace = false;
    bool ignore_blank_lines = false;
    std::string reports;  ///< a folder; empty: no report for each pair
    ReportType report_type = ReportType::Html;

    std::string output;               ///< the table; empty: none
    std::optional<std::string> json;  ///< "-" is standard output
    std::vector<FolderVerdict> only;  ///< empty: all differences
    bool stat = false;
    bool quiet = false;
    std::string color = "auto";
    LoadOptions load;
};

/// What the line holds before it is checked.
struct RawFoldersOptions {
    std::vector<std::string> sets;
    std::string json;
    std::string only;
    std::string report_type = "html";
};

/// Puts the command on the program's line.
CLI::App* AddFoldersCommand(CLI::App& app, FoldersCommand& command, RawFoldersOptions& raw);
/// Checks what was read, in a user's words.
Status FinishFoldersCommand(const CLI::App& app, const RawFoldersOptions& raw,
                            FoldersCommand& command);

/// 0 no differences, 1 differences, 2 trouble, which has been told on standard error. Reads no
/// window's settings section and writes no settings.
int RunFoldersCommand(Platform& platform, const FoldersCommand& command);

}  // namespace zorvane
