// Where an office suite is on this machine. It reads the formats that nothing else here reads.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace zorvane {

struct OfficePlace {
    std::string program_folder;  ///< holds the suite's libraries
    std::string soffice;         ///< the program to start when there is no library to load
    bool has_library = false;    ///< one that works without a display
    // Parts of the suite, which many systems install one by one.
    bool has_writer = true;
    bool has_calc = true;
    bool has_impress = true;
};

/// `ZORVANE_OFFICE` in the environment names the program folder; "none" hides every office suite.
/// Otherwise the usual places and the PATH. Starts nothing.
std::optional<OfficePlace> FindOffice();

/// The first of `program_folders` that holds a suite, else the one that `search_path` (folders
/// parted by ":") leads to.
std::optional<OfficePlace> FindOfficeIn(std::span<const std::string> program_folders,
                                        std::string_view search_path);

/// A place that is known to be one. `soffice`: the program to start.
OfficePlace OfficeAt(const std::string& program_folder, const std::string& soffice,
                     bool has_library);

}  // namespace zorvane
