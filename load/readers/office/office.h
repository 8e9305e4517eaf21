// Driving an office suite, for the formats that only it can read. Only ever done in the worker
// process.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "load/office_place.h"
#include "load/readers/reader.h"

namespace zorvane {

/// How long a child may take for one document, its start included. A session in this process has no
/// such limit of its own: whoever runs the process ends it.
inline constexpr std::chrono::milliseconds kOfficeTimeLimit{120'000};

/// Converts files in this process (through the suite's own library) or through a child. Starting
/// the suite is done by the first conversion and costs seconds; later ones are quick.
class OfficeSession {
  public:
    /// `profile_folder`: a folder of our own for the suite's user profile; made if missing.
    static std::unique_ptr<OfficeSession> Make(
        const OfficePlace& place, const std::string& profile_folder,
        std::chrono::milliseconds child_time_limit = kOfficeTimeLimit);
    virtual ~OfficeSession() = default;
    /// `format`: "docx", "xlsx", "pptx", "odt", "doc", "rtf", ... An empty password is none.
    /// `CannotOpen`, `PasswordNeeded`, `Damaged` (the suite could not read it), `WrongFormat` (it
    /// reads it as a kind of document that cannot become `format`), `CannotWrite`, `NeedsOffice`
    /// (the part of the suite for `format` is missing), `Unsupported` (no such `format`).
    virtual ReadEnd Convert(const std::string& source, const std::string& password,
                            const std::string& target, const std::string& format) = 0;
};

}  // namespace zorvane
