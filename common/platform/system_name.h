// The running operating system in words.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

/// The distribution's name from the text of an os-release file; empty where it has none.
std::string DistributionName(std::string_view os_release);
/// "Debian GNU/Linux 12 (bookworm), Linux 6.1.0, x86_64".
std::string OperatingSystemName();

}  // namespace zorvane
