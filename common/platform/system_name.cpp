#include "common/platform/system_name.h"

#include <fstream>
#include <sstream>
#include <sys/utsname.h>

namespace zorvane {
namespace {

// What a shell would make of a value: quotes go, a backslash protects what follows it.
std::string AsShellWord(std::string_view value) {
    std::string text;
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] == '"' || value[at] == '\'')
            continue;
        if (value[at] == '\\' && at + 1 < value.size())
            ++at;
        text += value[at];
    }
    return text;
}

std::string ValueOf(std::string_view os_release, std::string_view key) {
    while (!os_release.empty()) {
        const std::size_t end = os_release.find('\n');
        const std::string_view line = os_release.substr(0, end);
        os_release.remove_prefix(end == std::string_view::npos ? os_release.size() : end + 1);
        if (line.starts_with(key) && line.size() > key.size() && line[key.size()] == '=')
            return AsShellWord(line.substr(key.size() + 1));
    }
    return {};
}

}  // namespace

std::string DistributionName(std::string_view os_release) {
    const std::string pretty = ValueOf(os_release, "PRETTY_NAME");
    return pretty.empty() ? ValueOf(os_release, "NAME") : pretty;
}

std::string OperatingSystemName() {
    std::string name;
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"}) {
        std::ifstream file(path);
        std::ostringstream text;
        if (file && text << file.rdbuf())
            name = DistributionName(text.str());
        if (!name.empty())
            break;
    }
    utsname kernel{};
    if (uname(&kernel) != 0)
        return name;
    return name + (name.empty() ? "" : ", ") + kernel.sysname + " " + kernel.release + ", " +
           kernel.machine;
}

}  // namespace zorvane
