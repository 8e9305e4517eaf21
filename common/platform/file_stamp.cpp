#include "common/platform/file_stamp.h"

#include <sys/stat.h>

#include "common/platform/native_path.h"

namespace zorvane {

std::optional<FileStamp> FileStampOf(const std::string& path) {
    constexpr std::int64_t kNanoseconds = 1'000'000'000;
    struct stat facts {};
    if (path.empty() || stat(NativePath(path).c_str(), &facts) != 0 || !S_ISREG(facts.st_mode))
        return std::nullopt;
    return FileStamp{facts.st_size,
                     static_cast<std::int64_t>(facts.st_mtim.tv_sec) * kNanoseconds +
                         static_cast<std::int64_t>(facts.st_mtim.tv_nsec),
                     facts.st_ino, facts.st_dev};
}

}  // namespace zorvane
