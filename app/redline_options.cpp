#include "app/redline_options.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <ctime>
#include <fmt/format.h>
#include <string_view>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLargestPrefix = 9999;

// A moment that the calendar has, of the form 2026-01-31T12:00:00 with or without Z.
bool IsDate(std::string_view text) {
    constexpr std::string_view kForm = "0000-00-00T00:00:00";
    if (text.ends_with('Z'))
        text.remove_suffix(1);
    if (text.size() != kForm.size())
        return false;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        if (kForm[i] == '0' ? !IsAsciiDigit(text[i]) : text[i] != kForm[i])
            return false;
    }
    const auto number = [text](std::size_t at, std::size_t digits) {
        return ParseNumber<std::int32_t>(text.substr(at, digits)).value_or(0);
    };
    const std::chrono::year_month_day day{std::chrono::year(number(0, 4)),
                                          std::chrono::month(static_cast<unsigned>(number(5, 2))),
                                          std::chrono::day(static_cast<unsigned>(number(8, 2)))};
    return day.ok() && number(11, 2) < 24 && number(14, 2) < 60 && number(17, 2) < 60;
}

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

bool IsRedlineName(const std::string& file) {
    return ToLower(ExtensionOf(file)) == "docx" || IsOpenRedline(file);
}

bool IsOpenRedline(const std::string& file) {
    return ToLower(ExtensionOf(file)) == "odt";
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
