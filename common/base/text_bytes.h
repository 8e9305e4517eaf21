// What the files that turn bytes into text share.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zorvane {

/// Length of the run of ASCII at the start.
std::size_t AsciiRun(std::string_view bytes);
/// Whether text of that encoding can be decoded.
bool HasConverter(const std::string& encoding);

}  // namespace zorvane
