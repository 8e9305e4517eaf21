#include "compare/run/redline_run.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fmt/format.h>
#include <iterator>
#include <string_view>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"
#include "common/text_privacy.h"
#include "load/conversion_service.h"

namespace zorvane {
namespace {

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

// Removed at the end, whatever happened.
class Made {
  public:
    explicit Made(std::string document) : document_(std::move(document)) {}
    ~Made() {
        std::error_code ignored;
        for (const std::string& file : {Document(), Certificate()})
            std::filesystem::remove(NativePath(file), ignored);
    }
    Made(const Made&) = delete;
    Made& operator=(const Made&) = delete;
    const std::string& Document() const { return document_; }
    std::string Certificate() const { return document_ + "_2"; }

  private:
    std::string document_;
};

// It comes from a process that read hostile bytes.
std::string Shown(std::string_view certificate) {
    constexpr int kMostLines = 40;
    std::string shown;
    for (int line = 0; line < kMostLines && !certificate.empty(); ++line) {
        const std::size_t end = std::min(certificate.find('\n'), certificate.size());
        shown += VisibleText(certificate.substr(0, end)) + "\n";
        certificate.remove_prefix(std::min(end + 1, certificate.size()));
    }
    return shown;
}

std::int64_t SecondsNow(ProcessState& process) {
    return std::chrono::duration_cast<std::chrono::seconds>(
               process.platform.clock->Now().time_since_epoch())
        .count();
}

struct Redline {
    std::string document;
    std::string certificate;
    std::vector<std::string> targets;
};

Result<Redline> MakeRedline(ProcessState& process, ConversionMessage job,
                            std::vector<std::string> targets, RunWatcher* watcher) {
    const Result<std::string> target =
        process.platform.temp_files->NewName("redline", job.at("format"));
    if (!target.ok())
        return target.failure();
    const Made made(target.value());
    job["target"] = made.Document();
    ConversionService service(process);
    const ConversionResult result =
        service.Run(job, [watcher](std::int32_t) { return KeepGoing(watcher); });
    if (!result.ok())
        return Failure{service.Explain(result, targets.front())};
    const Result<std::string> document = ReadWholeFile(made.Document());
    const Result<std::string> certificate = ReadWholeFile(made.Certificate());
    if (!document.ok() || !certificate.ok())
        return document.ok() ? certificate.failure() : document.failure();
    return Redline{document.value(), Shown(certificate.value()), std::move(targets)};
}

}  // namespace

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

std::string RedlineNameFor(const std::string& file) {
    if (IsRedlineName(file))
        return file;
    const std::string_view extension = ExtensionOf(file);
    return extension.empty() ? file + ".docx"
                             : file.substr(0, file.size() - extension.size()) + "docx";
}

Result<std::string> WriteRedlines(ProcessState& process, const RedlineOptions& options,
                                  const RedlineInputs& inputs, RunWatcher* watcher) {
    const auto& [files, passwords] = inputs;
    const Result<std::string> date =
        RevisionDate(options, Environment("SOURCE_DATE_EPOCH"), SecondsNow(process));
    if (!date.ok())
        return date.failure();
    ConversionMessage job{{"kind", "redline"},
                          {"source", files.original},
                          {"second", files.modified},
                          {"secondname", files.modified},
                          {"password", passwords.original},
                          {"secondpassword", passwords.modified},
                          {"author", options.author},
                          {"date", date.value()},
                          {"idprefix", std::to_string(options.id_prefix)},
                          {"formatting", options.track_formatting ? "1" : "0"},
                          {"keeptracked", options.keep_tracked ? "1" : "0"},
                          {"noverify", options.no_verify ? "1" : "0"}};
    // All are made before one is written.
    std::vector<Redline> redlines;
    for (const bool open_document : {false, true}) {
        std::vector<std::string> targets;
        std::copy_if(options.files.begin(), options.files.end(), std::back_inserter(targets),
                     [open_document](const std::string& file) {
                         return IsOpenRedline(file) == open_document;
                     });
        if (targets.empty())
            continue;
        job["format"] = open_document ? "odt" : "docx";
        Result<Redline> redline = MakeRedline(process, job, std::move(targets), watcher);
        if (!redline.ok())
            return redline.failure();
        redlines.push_back(std::move(redline.value()));
    }
    std::string certificates;
    for (const Redline& redline : redlines) {
        for (const std::string& file : redline.targets) {
            const Status written =
                ReplaceFile(file, redline.document, ModeForTextOf(process.telling, files));
            if (!written.ok())
                return written.failure();
        }
        certificates += redline.certificate;
    }
    return certificates;
}

}  // namespace zorvane
