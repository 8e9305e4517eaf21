// An office suite on this machine, for the formats that only it can read. It is looked up at run
// time and only ever driven from the worker process.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "load/readers/reader.h"

namespace zorvane {

struct OfficePlace {
    std::string program_folder;  ///< holds the suite's libraries
    std::string soffice;         ///< the program to start when there is no library to load
    bool has_library = false;
};

/// `ZORVANE_OFFICE` in the environment names the program folder; "none" hides every office suite.
/// Otherwise the usual places and the PATH. Starts nothing.
std::optional<OfficePlace> FindOffice();

/// Converts files in this process (through the suite's own library) or through a child. Starting
/// the suite is done by the first conversion and costs seconds; later ones are quick.
class OfficeSession {
  public:
    /// `profile_folder`: a folder of our own for the suite's user profile; made if missing.
    static std::unique_ptr<OfficeSession> Make(const OfficePlace& place,
                                               const std::string& profile_folder);
    virtual ~OfficeSession() = default;
    /// `format`: "docx", "xlsx", "pptx", "odt", "doc", "rtf", ... An empty password is none.
    /// `PasswordNeeded`, `Damaged` (the suite could not read it), `CannotWrite`.
    virtual ReadEnd Convert(const std::string& source, const std::string& password,
                            const std::string& target, const std::string& format) = 0;
};

}  // namespace zorvane
