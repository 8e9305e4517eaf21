#include "app/redline_run.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>

#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"
#include "common/text_privacy.h"
#include "load/conversion_service.h"

namespace zorvane {
namespace {

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
                            std::vector<std::string> targets) {
    const Result<std::string> target =
        process.platform.temp_files->NewName("redline", job.at("format"));
    if (!target.ok())
        return target.failure();
    const Made made(target.value());
    job["target"] = made.Document();
    ConversionService service(process.platform);
    service.SetInSandbox(!process.bWithoutSandbox);
    const ConversionResult result = service.Run(job, {});
    if (!result.ok())
        return Failure{Explain(result, targets.front())};
    const Result<std::string> document = ReadWholeFile(made.Document());
    const Result<std::string> certificate = ReadWholeFile(made.Certificate());
    if (!document.ok() || !certificate.ok())
        return document.ok() ? certificate.failure() : document.failure();
    return Redline{document.value(), Shown(certificate.value()), std::move(targets)};
}

}  // namespace

Result<std::string> WriteRedlines(ProcessState& process, const RedlineOptions& options,
                                  const PerSide<std::string>& files,
                                  const PerSide<std::string>& passwords) {
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
        Result<Redline> redline = MakeRedline(process, job, std::move(targets));
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
