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

struct OfficeTask {
    int document = -1;     ///< open for reading, borrowed
    int answer = -1;       ///< open for writing and empty, borrowed
    std::string name;      ///< of the document, which it may show
    std::string password;  ///< empty: none
    std::string format;    ///< "docx", "xlsx", "pptx", "odt", "doc", "rtf", ...
};

/// Converts files in this process (through the suite's own library) or through a child. Starting
/// the suite is done by the first conversion and costs seconds; later ones are quick.
class OfficeSession {
  public:
    /// `profile_folder`: a folder of our own for the suite's user profile; made if missing.
    static std::unique_ptr<OfficeSession> Make(
        const OfficePlace& place, const std::string& profile_folder,
        std::chrono::milliseconds child_time_limit = kOfficeTimeLimit);
    virtual ~OfficeSession() = default;
    /// `PasswordNeeded`, `Damaged` (the suite could not read it), `WrongFormat` (it reads it as a
    /// kind of document that cannot become the format), `CannotWrite`, `NeedsOffice` (the part of
    /// the suite for the format is missing), `Unsupported` (no such format).
    virtual ReadEnd Convert(const OfficeTask& task) = 0;
};

}  // namespace zorvane
