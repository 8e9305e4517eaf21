// Conversions by the program zorvane-convert, and by an office suite in a worker of its own where
// nothing else helps. One object for a viewer; its children end with it.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "common/english_to.h"
#include "common/platform/platform.h"
#include "load/answer_file.h"
#include "load/conversion_answer.h"
#include "load/conversion_error.h"
#include "load/conversion_message.h"
#include "load/converter_process.h"
#include "load/office_profile.h"

namespace zorvane {

struct ProcessState;

/// What went wrong with `file` and what to do, for a user; what the reader itself says of it as
/// `ReadingFault` has it. Empty for none.
std::string Explain(const ConversionResult& result, const std::string& file,
                    const EnglishTo& translate = {});

class ConversionService {
  public:
    explicit ConversionService(Platform& platform) : platform_(platform) {}
    /// Explains in the language of that process, and is as closed in as it wants its readers.
    explicit ConversionService(ProcessState& process);

    std::string Explain(const ConversionResult& result, const std::string& file) const {
        return zorvane::Explain(result, file, translate_);
    }

    /// Carries out one request in a fresh child under limits. A file that only an office suite
    /// reads goes through one first, when there is one. `job` as `RunJob` wants it, and "source"
    /// and "target" as the user gave them. What the answer holds goes to the target, and further
    /// sheets to files beside it.
    ConversionResult Run(const ConversionMessage& job, const ConversionObserver& observer);
    /// What the first request that failed since `ForgetFailures` ended with, in a user's words;
    /// empty without one. Later ones are other roads to the same end.
    const std::string& FirstFailure() const { return first_failure_; }
    /// For a failure that was known without a request.
    void NoteFailure(const ConversionResult& result, const std::string& file);
    void ForgetFailures() { first_failure_.clear(); }
    /// What lay beside the texts that were converted to a form without a place for it, as a list
    /// of `EncodeBesideList`; nothing is left here.
    std::string TakeBeside() { return std::exchange(beside_, {}); }
    /// Such a list of a conversion that needed no child.
    void AddBeside(std::string_view list) { beside_ += list; }
    /// Starts a request that `Run` will be asked for soon, so that it is carried out beside another
    /// one. The job as `Run` will get it; its target does not matter. One at a time.
    void Expect(ConversionMessage job);
    /// `format`: "docx", "xlsx", "pptx", "doc", ...
    ConversionResult ConvertByOffice(const std::string& source, const std::string& password,
                                     const std::string& target, const std::string& format,
                                     const ConversionObserver& observer);
    bool OfficeInstalled();
    /// False reads documents where the system lets nobody close a process in. True at first.
    void SetInSandbox(bool in_sandbox);
    /// The office worker stays for the next file.
    bool OfficeStays() const { return office_stays_; }
    /// False ends a worker that stayed.
    void SetOfficeStays(bool stays);

  private:
    /// A request that is under way.
    struct Started {
        ConversionMessage job;  ///< without a target
        std::chrono::milliseconds stall{0};
        AnswerFile answer;
        ConverterProcess process;
    };
    /// What an answer says, and the file that its parts lie in.
    struct Answered {
        ConversionResult result;
        AnswerFile file;
    };
    using Document = Result<FileDescriptor>;

    Document OpenSource(const std::string& source);
    ConversionResult Start(const ConversionMessage& job, const FileDescriptor& document,
                           Started& started);
    Answered Finish(Started& started, const ConversionObserver& observer);
    std::unique_ptr<Started> TakeExpected(const ConversionMessage& job);
    Answered RunOnce(const ConversionMessage& job, const Document& document,
                     const ConversionObserver& observer);
    ConversionResult RunHereOrThroughOffice(const ConversionMessage& job,
                                            const ConversionObserver& observer);
    ConversionResult WithBeside(ConversionResult result, const AnswerFile& file);
    Answered ThroughOffice(ConversionMessage job, const std::string& format,
                           const ConversionObserver& observer);
    Answered AskOffice(const std::string& source, const std::string& password,
                       const std::string& format, const ConversionObserver& observer);
    /// The request of one document to the suite, the same whichever road it takes.
    struct OfficeJob {
        const Document& document;
        ConversionMessage request;
    };
    bool StartOffice(const std::string& profile);
    Answered AskWorker(const OfficeJob& job, const ConversionObserver& observer);
    std::string Program() const;

    Platform& platform_;
    EnglishTo translate_;
    OfficeProfile office_profile_;  ///< goes behind the worker that uses it
    ConverterProcess office_;
    std::unique_ptr<Started> expected_;
    std::string first_failure_;
    std::string beside_;
    bool office_stays_ = false;
    bool office_library_fails_ = false;  ///< its start program has to do
    bool in_sandbox_ = true;
};

}  // namespace zorvane
