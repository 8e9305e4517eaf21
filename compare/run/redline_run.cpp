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
#include "compare/document/rtf_writer.h"
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

// Names of files that go at the end, whatever happened.
class TemporaryNames {
  public:
    explicit TemporaryNames(ProcessState& process) : process_(process) {}
    ~TemporaryNames() {
        std::error_code ignored;
        for (const std::string& name : names_)
            std::filesystem::remove(NativePath(name), ignored);
    }
    TemporaryNames(const TemporaryNames&) = delete;
    TemporaryNames& operator=(const TemporaryNames&) = delete;

    Result<std::string> New(const std::string& extension) {
        Result<std::string> name = process_.platform.temp_files->NewName("redline", extension);
        if (name.ok())
            Add(name.value());
        return name;
    }
    void Add(std::string name) { names_.push_back(std::move(name)); }

  private:
    ProcessState& process_;
    std::vector<std::string> names_;
};

std::int64_t SecondsNow(ProcessState& process) {
    return std::chrono::duration_cast<std::chrono::seconds>(
               process.platform.clock->Now().time_since_epoch())
        .count();
}

struct Redline {
    std::string document;
    RedlineCertificate certificate;
    std::vector<std::string> targets;
};

class RedlineMaker {
  public:
    RedlineMaker(ProcessState& process, ConversionService& service, const RedlineInputs& inputs,
                 RunWatcher* watcher)
        : service_(service), inputs_(inputs), watcher_(watcher), names_(process) {}

    Result<Redline> Make(const ConversionMessage& job, std::vector<std::string> targets) {
        ConversionResult result = Run(job, inputs_.as_compared);
        // What an office suite read for the compare is not read again.
        if (result.error == ReadError::NeedsOffice && inputs_.texts.original &&
            inputs_.texts.modified)
            result = Run(job, {true, true});
        if (!result.ok())
            return Failure{service_.Explain(result, targets.front())};
        const Result<std::string> document = ReadWholeFile(result.files.at(0));
        const Result<std::string> told = ReadWholeFile(result.files.at(1));
        if (!document.ok() || !told.ok())
            return document.ok() ? told.failure() : document.failure();
        // It comes from a process that read hostile bytes.
        const std::optional<RedlineCertificate> certificate = DecodeCertificate(told.value());
        if (!certificate)
            return Failure{service_.Explain(FailedConversion(ReadError::Crashed), targets.front())};
        return Redline{document.value(), *certificate, std::move(targets)};
    }

  private:
    ConversionResult Run(ConversionMessage job, const PerSide<bool>& as_compared) {
        for (const Side side : kBothSides) {
            const char* const key = side == Side::Original ? "source" : "second";
            const char* const size = side == Side::Original ? "text" : "secondtext";
            if (!as_compared[side] || !inputs_.texts[side])
                continue;
            const Result<std::string> file = PutTextInFront(side, job[size]);
            if (!file.ok())
                return FailedConversion(ReadError::CannotOpen, file.failure().reason);
            job[key] = file.value();
        }
        const Result<std::string> target = names_.New(job.at("format"));
        if (!target.ok())
            return FailedConversion(ReadError::CannotWrite, target.failure().reason);
        job["target"] = target.value();
        names_.Add(target.value() + "_2");  // of the certificate
        return service_.Run(job, [this](std::int32_t) { return KeepGoing(watcher_); });
    }

    // The document itself stands behind: the certificate names it.
    Result<std::string> PutTextInFront(Side side, std::string& size) {
        const Result<std::string> document = ReadWholeFile(inputs_.files[side]);
        const Result<std::string> file = names_.New("rtf");
        if (!document.ok() || !file.ok())
            return document.ok() ? file : document;
        const std::string text = WriteRtf(*inputs_.texts[side], watcher_);
        size = std::to_string(text.size());
        const Status written = WriteWholeFile(file.value(), text + document.value());
        return written.ok() ? file : written.failure();
    }

    ConversionService& service_;
    const RedlineInputs& inputs_;
    RunWatcher* watcher_;
    TemporaryNames names_;
};

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

RedlineRun::RedlineRun(ProcessState& process, RedlineOptions options)
    : process_(process),
      options_(std::move(options)),
      date_(RevisionDate(options_, Environment("SOURCE_DATE_EPOCH"), SecondsNow(process))),
      service_(std::make_unique<ConversionService>(process)) {}

RedlineRun::~RedlineRun() = default;

std::vector<std::string> RedlineRun::Targets(bool open_document) const {
    std::vector<std::string> targets;
    std::copy_if(
        options_.files.begin(), options_.files.end(), std::back_inserter(targets),
        [open_document](const std::string& file) { return IsOpenRedline(file) == open_document; });
    return targets;
}

ConversionMessage RedlineRun::JobFor(const RedlineInputs& inputs, bool open_document) const {
    const PerSide<std::string>& files = inputs.files;
    return {{"kind", "redline"},
            {"format", open_document ? "odt" : "docx"},
            {"source", files.original},
            {"name", files.original},
            {"second", files.modified},
            {"secondname", files.modified},
            {"password", inputs.passwords.original},
            {"secondpassword", inputs.passwords.modified},
            {"author", options_.author},
            {"date", date_.value()},
            {"idprefix", std::to_string(options_.id_prefix)},
            {"formatting", options_.track_formatting ? "1" : "0"},
            {"keeptracked", options_.keep_tracked ? "1" : "0"},
            {"noverify", options_.no_verify ? "1" : "0"}};
}

void RedlineRun::Begin(const RedlineInputs& inputs) {
    const bool known = !inputs.as_compared.original && !inputs.as_compared.modified;
    if (known && date_.ok() && !options_.files.empty())
        service_->Expect(JobFor(inputs, Targets(false).empty()));
}

Result<std::vector<RedlineCertificate>> RedlineRun::Write(const RedlineInputs& inputs,
                                                          RunWatcher* watcher) {
    if (!date_.ok())
        return date_.failure();
    // All are made before one is written.
    RedlineMaker maker(process_, *service_, inputs, watcher);
    std::vector<Redline> redlines;
    for (const bool open_document : {false, true}) {
        std::vector<std::string> targets = Targets(open_document);
        if (targets.empty())
            continue;
        Result<Redline> redline = maker.Make(JobFor(inputs, open_document), std::move(targets));
        if (!redline.ok())
            return redline.failure();
        redlines.push_back(std::move(redline.value()));
    }
    std::vector<RedlineCertificate> certificates;
    for (const Redline& redline : redlines) {
        for (const std::string& file : redline.targets) {
            const Status written =
                ReplaceFile(file, redline.document, ModeForTextOf(process_.telling, inputs.files));
            if (!written.ok())
                return written.failure();
        }
        certificates.push_back(redline.certificate);
    }
    return certificates;
}

}  // namespace zorvane
