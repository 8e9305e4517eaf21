#include "common/text_privacy.h"

#include <sys/stat.h>

#include "common/platform/native_path.h"
#include "common/run_telling.h"

namespace zorvane {
namespace {

// The user's own file, where `file` is a copy of it.
std::string SourceOf(const RunTelling& telling, const std::string& file) {
    const auto& names = telling.manner.shown_names;
    const auto found = names.find(file);
    if (found == names.end())
        return NativePath(file);
    return found->second == kStandardInputName ? "/dev/stdin" : NativePath(found->second);
}

}  // namespace

std::uint32_t ModeForTextOf(const RunTelling& telling, const PerSide<std::string>& files) {
    std::uint32_t mode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    for (const Side side : kBothSides) {
        struct stat facts {};
        if (files[side].empty() || stat(SourceOf(telling, files[side]).c_str(), &facts) != 0 ||
            !S_ISREG(facts.st_mode))
            continue;
        if ((facts.st_mode & S_IRGRP) == 0)
            mode &= ~static_cast<std::uint32_t>(S_IRGRP | S_IWGRP);
        if ((facts.st_mode & S_IROTH) == 0)
            mode &= ~static_cast<std::uint32_t>(S_IROTH | S_IWOTH);
    }
    return mode;
}

}  // namespace zorvane
