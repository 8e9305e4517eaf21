// An office suite on this machine, for the formats that only it can read. It is looked up at run
// time and only ever driven from the worker process.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "load/readers/reader.h"

namespace zorvane {

struct OfficePlace {
    std::string program_folder;  ///< holds the suite's libraries
    std::string soffice;         ///< the program to start when there is no library to load
    bool has_library = false;
    // Parts of the suite, which many systems install one by one.
    bool has_writer = true;
    bool has_calc = true;
    bool has_impress = true;
};

/// How long a child may take for one document, its start included. A session in this process has no
/// such limit of its own: whoever runs the process ends it.
inline constexpr std::chrono::milliseconds kOfficeTimeLimit{120'000};

/// `ZORVANE_OFFICE` in the environment names the program folder; "none" hides every office suite.
/// Otherwise the usual places and the PATH. Starts nothing.
std::optional<OfficePlace> FindOffice();

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
