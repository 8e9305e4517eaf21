#include "load/conversion_service.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "common/file_utilities.h"
#include "common/platform/native_path.h"
#include "load/office_place.h"

namespace zorvane {
namespace {

using Milliseconds = std::chrono::milliseconds;

// A document may take this much and grow with its size; a bomb does not.
constexpr std::uint64_t kBaseMemory = std::uint64_t{448} << 20;
constexpr std::uint64_t kMemoryPerByte = 24;
constexpr std::uint64_t kMostMemory = std::uint64_t{8} << 30;
// Longest time without progress: a reader tells it between pages, sheets and parts.
constexpr Milliseconds kBaseStall{8000};
constexpr std::uint64_t kBytesPerMillisecond = 4096;
// An office suite starts slowly, on a cold disk more so.
constexpr Milliseconds kOfficeStall{120000};

std::uint64_t SizeOf(const std::string& file) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(NativePath(file), error);
    return error ? 0 : static_cast<std::uint64_t>(size);
}

ConversionResult ResultOf(ConversionAnswer answer) {
    switch (answer.end) {
        case ConversionEnd::NotStarted:
            return {ReadError::NotStarted, {}, {}};
        case ConversionEnd::Crashed:
            return {ReadError::Crashed, {}, {}};
        case ConversionEnd::TimedOut:
            return {ReadError::TimedOut, {}, {}};
        case ConversionEnd::Cancelled:
            return {ReadError::Cancelled, {}, {}};
        case ConversionEnd::Answered:
            break;
    }
    ConversionResult result;
    result.error = static_cast<ReadError>(NumberOf(answer.values, "error"));
    result.detail = TextOf(answer.values, "detail");
    result.values = std::move(answer.values);
    return result;
}

struct ErrorRow {
    ReadError error;
    std::string_view text;
};
constexpr ErrorRow kErrors[] = {
    {ReadError::CannotOpen, "the file cannot be opened"},
    {ReadError::WrongFormat, "this is no document of its kind"},
    {ReadError::Damaged, "the document is damaged"},
    {ReadError::PasswordNeeded,
     "the document is protected and the password is missing or wrong; give it with --password, "
     "--original-password or --modified-password"},
    {ReadError::Unsupported, "nothing here reads this kind of document"},
    {ReadError::NeedsOffice,
     "only an office suite reads this format; install LibreOffice (on Debian: apt install "
     "libreoffice-writer libreoffice-calc libreoffice-impress)"},
    {ReadError::TooLarge, "the document needs more memory than it may have"},
    {ReadError::Cancelled, "the conversion was cancelled"},
    {ReadError::CannotWrite, "the converted document cannot be written"},
    {ReadError::NotStarted,
     "the program zorvane-convert is missing beside zorvane; install Zorvane again"},
    {ReadError::Crashed,
     "the reader of this document failed; the document is probably damaged, nothing else is "
     "affected"},
    {ReadError::TimedOut, "reading the document took too long and was stopped"},
};

std::string FirstOf(const std::string& detail) {
    return detail.substr(0, detail.find_first_of("\r\n"));
}

}  // namespace

std::string Explain(const ConversionResult& result, const std::string& file) {
    for (const ErrorRow& row : kErrors) {
        if (row.error != result.error)
            continue;
        const bool clear = result.error == ReadError::PasswordNeeded;  // without a reader's words
        const std::string detail = clear ? "" : FirstOf(result.detail);
        return file + ": " + std::string(row.text) + (detail.empty() ? "" : ": " + detail);
    }
    return {};
}

std::string ConversionService::Program() const {
    return platform_.folders->ProgramFolder() + "/zorvane-convert";
}

Milliseconds ConversionService::StallOf(const ConversionMessage& job) {
    return kBaseStall +
           Milliseconds(SizeOf(std::string(TextOf(job, "source"))) / kBytesPerMillisecond);
}

bool ConversionService::StartOnce(const ConversionMessage& job, ConverterProcess& process) {
    ConversionMessage request = job;
    const std::string source(TextOf(job, "source"));
    const std::uint64_t memory = kBaseMemory + SizeOf(source) * kMemoryPerByte;
    request["source"] = NativePath(source);
    request["locale"] = platform_.locale->EncodingName();
    request["memory"] = std::to_string(std::min(memory, kMostMemory));
    request.try_emplace("name", source);
    if (!process.Start(Program(), {}))
        return false;
    process.Send(request);
    return true;
}

void ConversionService::Expect(ConversionMessage job) {
    expected_.reset();
    const Result<std::string> target = platform_.temp_files->NewName("ahead", "tmp");
    if (!target.ok())
        return;  // the request will be carried out when it is asked for
    auto expected = std::make_unique<Expected>();
    expected->target = target.value();
    job["target"] = expected->target;
    if (!StartOnce(job, expected->process))
        return;
    job.erase("target");
    expected->job = std::move(job);
    expected_ = std::move(expected);
}

std::optional<ConversionResult> ConversionService::TakeExpected(
    const ConversionMessage& job, const ConversionObserver& observer) {
    ConversionMessage wanted = job;
    wanted.erase("target");
    if (!expected_ || expected_->job != wanted)
        return std::nullopt;
    const std::unique_ptr<Expected> expected = std::move(expected_);
    ConversionResult result = ResultOf(expected->process.Wait(StallOf(job), observer));
    if (result.ok() && !MoveFileByCopy(expected->target, std::string(TextOf(job, "target"))).ok())
        result.error = ReadError::CannotWrite;
    return result;
}

ConversionResult ConversionService::RunOnce(const ConversionMessage& job,
                                            const ConversionObserver& observer) {
    if (std::optional<ConversionResult> expected = TakeExpected(job, observer))
        return *expected;
    ConverterProcess process;
    if (!StartOnce(job, process))
        return {ReadError::NotStarted, {}, {}};
    return ResultOf(process.Wait(StallOf(job), observer));
}

ConversionResult ConversionService::Run(ConversionMessage job, const ConversionObserver& observer) {
    ConversionResult result = RunOnce(job, observer);
    const std::string format(TextOf(result.values, "office"));
    if (result.error == ReadError::NeedsOffice && !format.empty() && OfficeInstalled())
        result = ThroughOffice(std::move(job), format, observer);
    AddBeside(TextOf(result.values, "beside"));
    return result;
}

// The suite turns the file into the modern form of its kind, which is then read as ever.
ConversionResult ConversionService::ThroughOffice(ConversionMessage job, const std::string& format,
                                                  const ConversionObserver& observer) {
    const Result<std::string> modern = platform_.temp_files->NewName("office", format);
    if (!modern.ok())
        return {ReadError::CannotWrite, modern.failure().reason, {}};
    const std::string source(TextOf(job, "source"));
    ConversionResult result = ConvertByOffice(source, std::string(TextOf(job, "password")),
                                              modern.value(), format, observer);
    if (result.ok()) {
        job["source"] = modern.value();
        job["name"] = modern.value();
        result = RunOnce(job, observer);
    }
    DeleteFileWithRetry(*platform_.clock, modern.value());
    return result;
}

bool ConversionService::OfficeInstalled() {
    return FindOffice().has_value();
}

bool ConversionService::StartOffice() {
    if (office_.Running())
        return true;
    return office_.Start(Program(), {"--office"});
}

ConversionResult ConversionService::ConvertByOffice(const std::string& source,
                                                    const std::string& password,
                                                    const std::string& target,
                                                    const std::string& format,
                                                    const ConversionObserver& observer) {
    if (!OfficeInstalled())
        return {ReadError::NeedsOffice, {}, {}};
    if (!StartOffice())
        return {ReadError::NotStarted, {}, {}};
    const Result<std::string> folder = platform_.temp_files->Folder();
    if (!folder.ok())
        return {ReadError::CannotWrite, folder.failure().reason, {}};
    std::error_code ignored;
    const std::string full = std::filesystem::absolute(NativePath(source), ignored).string();
    const std::string full_target = std::filesystem::absolute(NativePath(target), ignored).string();
    office_.Send({{"source", full},
                  {"target", full_target},
                  {"format", format},
                  {"password", password},
                  {"profile", folder.value() + "/office"}});
    ConversionResult result = ResultOf(office_.Wait(kOfficeStall, observer));
    if (!office_stays_)
        office_.Kill();
    return result;
}

void ConversionService::SetOfficeStays(bool stays) {
    office_stays_ = stays;
    if (!stays)
        office_.Kill();
}

}  // namespace zorvane
