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

#include "common/platform/platform.h"
#include "load/conversion_error.h"
#include "load/conversion_message.h"
#include "load/converter_process.h"

namespace zorvane {

struct ConversionResult {
    ReadError error = ReadError::None;
    std::string detail;  ///< the reader's own words, in one line; may be empty
    ConversionMessage values;

    bool ok() const { return error == ReadError::None; }
};

/// What went wrong with `file` and what to do, for a user. Empty for none.
std::string Explain(const ConversionResult& result, const std::string& file);

class ConversionService {
  public:
    explicit ConversionService(Platform& platform) : platform_(platform) {}

    /// Carries out one request in a fresh child under limits. A file that only an office suite
    /// reads goes through one first, when there is one. `job` as `RunJob` wants it, "source" as the
    /// user gave it.
    ConversionResult Run(ConversionMessage job, const ConversionObserver& observer);
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
    /// The office worker stays for the next file.
    bool OfficeStays() const { return office_stays_; }
    /// False ends a worker that stayed.
    void SetOfficeStays(bool stays);

  private:
    /// A request that is under way before it is asked for.
    struct Expected {
        ConversionMessage job;  ///< without a target
        std::string target;
        ConverterProcess process;
    };
    static std::chrono::milliseconds StallOf(const ConversionMessage& job);
    bool StartOnce(const ConversionMessage& job, ConverterProcess& process);
    std::optional<ConversionResult> TakeExpected(const ConversionMessage& job,
                                                 const ConversionObserver& observer);
    ConversionResult RunOnce(const ConversionMessage& job, const ConversionObserver& observer);
    ConversionResult ThroughOffice(ConversionMessage job, const std::string& format,
                                   const ConversionObserver& observer);
    bool StartOffice();
    std::string Program() const;

    Platform& platform_;
    ConverterProcess office_;
    std::unique_ptr<Expected> expected_;
    std::string beside_;
    bool office_stays_ = false;
};

}  // namespace zorvane
