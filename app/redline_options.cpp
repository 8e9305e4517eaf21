#include "app/redline_options.h"

#include <CLI/CLI.hpp>
#include <ctime>
#include <fmt/format.h>
#include <regex>

#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLargestPrefix = 9999;

bool IsDate(const std::string& text) {
    static const std::regex kForm("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z?");
    return std::regex_match(text, kForm);
}

}  // namespace

void AddRedlineOptions(CLI::App& app, RedlineOptions& options) {
    app.add_option("--author", options.author,
                   "Whose name the tracked changes of a .docx bear (Zorvane)")
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
    app.add_flag("--no-verify", options.no_verify,
                 "Write a .docx without reading it again to see that accepting all gives the "
                 "modified and rejecting all the original");
}

bool IsRedlineName(const std::string& file) {
    return ToLower(ExtensionOf(file)) == "docx";
}

Result<std::string> RevisionDate(const RedlineOptions& options,
                                 const std::optional<std::string>& epoch, std::int64_t now) {
    if (!options.date.empty()) {
        if (!IsDate(options.date))
            return Failure{"--revision-date: " + options.date +
                           ": no date of the form 2026-01-31T12:00:00Z"};
        return options.date.ends_with('Z') ? options.date : options.date + "Z";
    }
    if (epoch && !epoch->empty()) {
        const auto seconds = ParseNumber<std::int64_t>(*epoch);
        constexpr std::int64_t kLastSecond = 253'402'300'799;  // of the year 9999
        if (!seconds || *seconds < 0 || *seconds > kLastSecond)
            return Failure{"SOURCE_DATE_EPOCH: " + *epoch + ": no number of seconds"};
        now = *seconds;
    }
    const auto time = static_cast<std::time_t>(now);
    std::tm parts{};
    gmtime_r(&time, &parts);
    constexpr int kFirstYear = 1900;
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", parts.tm_year + kFirstYear,
                       parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
}

}  // namespace zorvane
