// What tells that documents are still read by the same programs and libraries.
#pragma once

#include <string>

namespace zorvane {

/// Of `zorvane-convert` in that folder, of what it reads with and of the office suite. Another text
/// after an update of any of them.
std::string ReaderStamps(const std::string& program_folder);

/// "name=" and what tells the file from another of its name; nothing behind it where there is none.
std::string StampText(const std::string& file);

}  // namespace zorvane
