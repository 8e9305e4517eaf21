#include "load/conversion_service.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <sys/stat.h>
#include <utility>

#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "load/office_place.h"
#include "load/password_wanted.h"
#include "load/reading_faults.h"

namespace zorvane {
namespace {

using Milliseconds = std::chrono::milliseconds;

// A document may take this much and grow with its size; a bomb does not.
constexpr std::uint64_t kBaseMemory = std::uint64_t{448} << 20;
constexpr std::uint64_t kMemoryPerByte = 24;
constexpr std::uint64_t kMostMemory = std::uint64_t{8} << 30;
constexpr std::uint64_t kMostAnswer = std::uint64_t{1} << 30;  // as any file that is read
// Longest time without progress: a reader tells it between pages, sheets and parts.
constexpr Milliseconds kBaseStall{8000};
constexpr std::uint64_t kBytesPerMillisecond = 4096;
// An office suite starts slowly, on a cold disk more so.
constexpr Milliseconds kOfficeStall{120000};

// What a file tells of itself; 0 when it tells nothing.
std::uint64_t SizeOf(const FileDescriptor& file) {
    struct stat facts {};
    const bool known = fstat(file.Get(), &facts) == 0 && facts.st_size > 0;
    return known ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

AnswerShape ShapeOf(std::string_view kind) {
    if (kind == "sheets")
        return AnswerShape::Sheets;
    if (kind == "sheetnames")
        return AnswerShape::SheetNames;
    if (kind == "redline")
        return AnswerShape::DocumentAndNote;
    return kind == "pdfpages" ? AnswerShape::PageCount : AnswerShape::OneDocument;
}

ConversionResult ResultOf(const ConversionAnswer& answer, AnswerShape shape,
                          const AnswerFile& file) {
    switch (answer.end) {
        case ConversionEnd::NotStarted:
            return FailedConversion(ReadError::NotStarted);
        case ConversionEnd::Crashed:
            return FailedConversion(
                ReadError::Crashed,
                answer.forbidden_call
                    ? "it made the forbidden system call " + std::to_string(*answer.forbidden_call)
                    : std::string());
        case ConversionEnd::TimedOut:
            return FailedConversion(ReadError::TimedOut);
        case ConversionEnd::Cancelled:
            return FailedConversion(ReadError::Cancelled);
        case ConversionEnd::Answered:
            break;
    }
    return CheckedAnswer(answer.values, shape, file.Size());
}

// Each part to its file: the target, and further ones beside it. All of them or none.
ConversionResult Delivered(ConversionResult result, const AnswerFile& answer,
                           const std::string& target) {
    for (const AnswerPart& part : result.parts) {
        const std::size_t number = result.files.size() + 1;
        const std::string file = number == 1 ? target : target + "_" + std::to_string(number);
        if (const Status copied = answer.CopyTo(part, file); !copied.ok()) {
            std::error_code ignored;
            for (const std::string& made : result.files)
                std::filesystem::remove(NativePath(made), ignored);
            return FailedConversion(ReadError::CannotWrite, copied.failure().reason);
        }
        result.files.push_back(file);
    }
    return result;
}

// What a suite finds in its environment: folders of its own, and nothing of the user's.
std::vector<std::string> OfficeEnvironment(const std::string& profile) {
    std::vector<std::string> environment{"PATH=/usr/local/bin:/usr/bin:/bin", "LC_ALL=C.UTF-8",
                                         "SAL_USE_VCLPLUGIN=svp",
                                         "TMPDIR=" + profile + "/temporary"};
    for (const char* name : {"HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME",
                             "XDG_RUNTIME_DIR", "XDG_STATE_HOME"})
        environment.push_back(std::string(name) + "=" + profile);
    return environment;
}

struct ErrorRow {
    ReadError error;
    std::string_view text;         ///< "#": where the reader's own words go, else behind it
    std::string_view advice = {};  ///< for who types commands, in English as these are
};
constexpr ErrorRow kErrors[] = {
    {ReadError::CannotOpen, "the file cannot be opened"},
    {ReadError::WrongFormat, "this is no document of its kind"},
    {ReadError::Damaged, "the document is damaged"},
    {ReadError::PasswordNeeded, "the document is protected and the password is missing or wrong",
     "; give it with --password, --original-password or --modified-password"},
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
    {ReadError::NoSandbox,
     "the system offers no sandbox for reading documents (#); --no-sandbox "
     "reads them without"},
    {ReadError::NotTracked, "the changes cannot be tracked"},
};

static_assert(std::any_of(std::begin(kErrors), std::end(kErrors), [](const ErrorRow& row) {
    return row.error == ReadError::PasswordNeeded && row.text == kPasswordWanted &&
           row.advice.starts_with(kPasswordAdvice);
}));

std::string FirstOf(const std::string& detail) {
    return detail.substr(0, detail.find_first_of("\r\n"));
}

}  // namespace

std::string Explain(const ConversionResult& result, const std::string& file,
                    const EnglishTo& translate) {
    for (const ErrorRow& row : kErrors) {
        if (row.error != result.error)
            continue;
        const bool clear = result.error == ReadError::PasswordNeeded;  // without a reader's words
        const std::string detail = clear ? "" : ReadingFault(FirstOf(result.detail), translate);
        std::string text = translate ? translate(row.text) : std::string(row.text);
        if (const std::size_t place = text.find('#'); place != std::string::npos)
            text.replace(place, 1, detail);
        else if (!detail.empty())
            text.append(": ").append(detail);
        return file + ": " + text.append(row.advice);
    }
    return {};
}

ConversionService::ConversionService(ProcessState& process)
    : platform_(process.platform),
      translate_{[&process](std::string_view english) { return process.Translate(english); }},
      in_sandbox_(!process.bWithoutSandbox) {}

std::string ConversionService::Program() const {
    return platform_.folders->ProgramFolder() + "/zorvane-convert";
}

ConversionService::Document ConversionService::OpenSource(const std::string& source) {
    const Result<std::string> folder = platform_.temp_files->Folder();
    return folder.ok() ? OpenDocument(source, folder.value()) : Document(folder.failure());
}

// A failure says that the child was not started, and why.
ConversionResult ConversionService::Start(const ConversionMessage& job,
                                          const FileDescriptor& document, Started& started) {
    std::uint64_t size = SizeOf(document);
    const Result<std::string> folder = platform_.temp_files->Folder();
    Result<AnswerFile> answer = folder.ok() ? AnswerFile::Make(folder.value()) : folder.failure();
    if (!answer.ok())
        return FailedConversion(ReadError::CannotWrite, answer.failure().reason);
    FileDescriptor second;
    if (job.contains("second")) {
        Document opened = OpenSource(std::string(TextOf(job, "second")));
        if (!opened.ok())
            return FailedConversion(ReadError::CannotOpen, opened.failure().reason);
        second = std::move(opened).value();
        size += SizeOf(second);
    }
    started.answer = std::move(answer).value();
    started.job = job;
    started.stall = kBaseStall + Milliseconds(size / kBytesPerMillisecond);
    ConversionMessage request = job;
    // A child knows no path of the user's.
    request.try_emplace("name", FileNameOf(TextOf(job, "source")));
    request.erase("source");
    request.erase("second");
    request["locale"] = platform_.locale->EncodingName();
    request["memory"] = std::to_string(std::min(kBaseMemory + size * kMemoryPerByte, kMostMemory));
    request["filebytes"] = std::to_string(kMostAnswer);
    request["seconds"] = std::to_string(
        std::chrono::duration_cast<std::chrono::seconds>(kLongestConversion).count());
    if (!started.process.Start(Program(), {in_sandbox_ ? "--reader" : "--no-sandbox"}))
        return FailedConversion(ReadError::NotStarted);
    const int files[] = {document.Get(), started.answer.Descriptor(), second.Get()};
    started.process.Send(request, std::span(files).first(second.IsOpen() ? 3 : 2));
    return {};
}

// The child has ended when its answer is looked at.
ConversionService::Answered ConversionService::Finish(Started& started,
                                                      const ConversionObserver& observer) {
    const ConversionAnswer answer = started.process.Wait({started.stall}, observer);
    started.process.Kill();
    const AnswerShape shape = ShapeOf(TextOf(started.job, "kind"));
    return {ResultOf(answer, shape, started.answer), std::move(started.answer)};
}

void ConversionService::Expect(ConversionMessage job) {
    expected_.reset();
    job.erase("target");
    const Document document = OpenSource(std::string(TextOf(job, "source")));
    auto expected = std::make_unique<Started>();
    // Otherwise the request will be carried out when it is asked for.
    if (document.ok() && Start(job, document.value(), *expected).ok())
        expected_ = std::move(expected);
}

std::unique_ptr<ConversionService::Started> ConversionService::TakeExpected(
    const ConversionMessage& job) {
    return expected_ && expected_->job == job ? std::move(expected_) : nullptr;
}

ConversionService::Answered ConversionService::RunOnce(const ConversionMessage& job,
                                                       const Document& document,
                                                       const ConversionObserver& observer) {
    if (!document.ok())
        return {FailedConversion(ReadError::CannotOpen, document.failure().reason), {}};
    Started started;
    if (ConversionResult start = Start(job, document.value(), started); !start.ok())
        return {std::move(start), {}};
    return Finish(started, observer);
}

ConversionResult ConversionService::Run(const ConversionMessage& job,
                                        const ConversionObserver& observer) {
    ConversionResult result = RunHereOrThroughOffice(job, observer);
    if (!result.ok())
        NoteFailure(result, std::string(TextOf(job, "source")));
    return result;
}

void ConversionService::NoteFailure(const ConversionResult& result, const std::string& file) {
    if (first_failure_.empty())
        first_failure_ = Explain(result, file);
}

ConversionResult ConversionService::RunHereOrThroughOffice(const ConversionMessage& job,
                                                           const ConversionObserver& observer) {
    ConversionMessage request = job;
    request.erase("target");
    const std::unique_ptr<Started> expected = TakeExpected(request);
    Answered answered =
        expected ? Finish(*expected, observer)
                 : RunOnce(request, OpenSource(std::string(TextOf(job, "source"))), observer);
    const std::string format = answered.result.office;
    if (answered.result.error == ReadError::NeedsOffice && !format.empty() && OfficeInstalled())
        answered = ThroughOffice(std::move(request), format, observer);
    ConversionResult result =
        Delivered(std::move(answered.result), answered.file, std::string(TextOf(job, "target")));
    return result.ok() ? WithBeside(std::move(result), answered.file) : result;
}

// What an answer cannot show is not left out in silence, so that a failure fails the conversion.
ConversionResult ConversionService::WithBeside(ConversionResult result, const AnswerFile& file) {
    const Result<std::string> list = file.Read(result.beside);
    if (!list.ok())
        return FailedConversion(ReadError::CannotOpen, list.failure().reason);
    AddBeside(list.value());
    return result;
}

// The suite turns the file into the modern form of its kind, which is then read as ever.
ConversionService::Answered ConversionService::ThroughOffice(ConversionMessage job,
                                                             const std::string& format,
                                                             const ConversionObserver& observer) {
    Answered modern = AskOffice(std::string(TextOf(job, "source")),
                                std::string(TextOf(job, "password")), format, observer);
    if (!modern.result.ok())
        return modern;
    job["name"] = "document." + format;
    return RunOnce(job, std::move(modern.file).TakeDescriptor(), observer);
}

ConversionResult ConversionService::ConvertByOffice(const std::string& source,
                                                    const std::string& password,
                                                    const std::string& target,
                                                    const std::string& format,
                                                    const ConversionObserver& observer) {
    Answered answered = AskOffice(source, password, format, observer);
    return Delivered(std::move(answered.result), answered.file, target);
}

bool ConversionService::OfficeInstalled() {
    return FindOffice().has_value();
}

void ConversionService::SetInSandbox(bool in_sandbox) {
    if (in_sandbox != in_sandbox_)
        office_.Kill();
    in_sandbox_ = in_sandbox;
}

bool ConversionService::StartOffice(const std::string& profile) {
    if (office_.Running())
        return true;
    const std::optional<OfficePlace> place = FindOffice();
    if (!place)
        return false;
    const bool library = place->has_library && !office_library_fails_;
    return office_.Start(Program(),
                         {"--office", profile, place->program_folder, place->soffice,
                          library ? "1" : "0", in_sandbox_ ? "--reader" : "--no-sandbox"},
                         OfficeEnvironment(profile));
}

// The worker knows no path of the user's: it gets the document and the file for its answer open.
ConversionService::Answered ConversionService::AskWorker(const OfficeJob& job,
                                                         const ConversionObserver& observer) {
    const Result<std::string> folder = platform_.temp_files->Folder();
    Result<AnswerFile> answer = folder.ok() ? AnswerFile::Make(folder.value()) : folder.failure();
    if (!answer.ok())
        return {FailedConversion(ReadError::CannotWrite, answer.failure().reason), {}};
    const std::string& profile = office_profile_.Take(folder.value());
    if (profile.empty() || !StartOffice(profile))
        return {FailedConversion(ReadError::NotStarted), {}};
    office_.Send(job.request, std::array{job.document.value().Get(), answer.value().Descriptor()});
    const ConversionAnswer said = office_.Wait({kOfficeStall, kOfficeStall}, observer);
    if (!office_stays_)
        office_.Kill();
    return {ResultOf(said, AnswerShape::OneDocument, answer.value()), std::move(answer).value()};
}

ConversionService::Answered ConversionService::AskOffice(const std::string& source,
                                                         const std::string& password,
                                                         const std::string& format,
                                                         const ConversionObserver& observer) {
    const std::optional<OfficePlace> place = FindOffice();
    if (!place)
        return {FailedConversion(ReadError::NeedsOffice), {}};
    const Document document = OpenSource(source);
    if (!document.ok())
        return {FailedConversion(ReadError::CannotOpen, document.failure().reason), {}};
    const OfficeJob job{
        document,
        {{"name", std::string(FileNameOf(source))}, {"format", format}, {"password", password}}};
    Answered answered = AskWorker(job, observer);
    // A closed worker that loads the library starts no program, so that another one has to.
    if (answered.result.error == ReadError::NeedsOffice && place->has_library &&
        !office_library_fails_) {
        office_.Kill();
        office_library_fails_ = true;
        answered = AskWorker(job, observer);
    }
    return answered;
}

void ConversionService::SetOfficeStays(bool stays) {
    office_stays_ = stays;
    if (!stays)
        office_.Kill();
}

}  // namespace zorvane
