#include "app/redline_options.h"

#include <CLI/CLI.hpp>
#include <cstdint>

namespace zorvane {
namespace {

constexpr std::int32_t kLargestPrefix = 9999;

}  // namespace

void AddRedlineOptions(CLI::App& app, RedlineOptions& options) {
    app.add_option("--author", options.author,
                   "Whose name the tracked changes of a .docx or .odt bear (Zorvane)")
        ->type_name("NAME");
    app.add_option("--revision-date", options.date,
                   "Their date, as 2026-01-31T12:00:00Z; without it now, or SOURCE_DATE_EPOCH")
        ->type_name("DATE");
    app.add_option("--revision-ids", options.id_prefix,
                   "First digits of their ids, to tell those of several redlines apart")
        ->type_name("DIGITS")
        ->check(CLI::Range(1, kLargestPrefix).description(""));
    app.add_flag("--track-formatting", options.track_formatting,
                 "Track how text and paragraphs that stay looked before, too");
    app.add_flag("--keep-tracked", options.keep_tracked,
                 "Refuse documents that hold tracked changes already, which are otherwise "
                 "compared as accepted");
    app.add_flag(
        "--no-verify", options.no_verify,
        "Write a .docx or .odt without reading it again to see that accepting all gives the "
        "modified and rejecting all the original");
}

}  // namespace zorvane
