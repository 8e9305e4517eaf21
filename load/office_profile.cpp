#include "load/office_profile.h"

#include <fcntl.h>
#include <sys/file.h>

namespace zorvane {

const std::string& OfficeProfile::Take(const std::string& parent) {
    constexpr int kMost = 256;  // more workers than any machine starts
    constexpr mode_t kPrivate = 0600;
    for (int number = 1; folder_.empty() && number <= kMost; ++number) {
        const std::string folder = parent + "/office-" + std::to_string(number);
        FileDescriptor lock(
            open((folder + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kPrivate));
        if (!lock.IsOpen())
            break;
        if (flock(lock.Get(), LOCK_EX | LOCK_NB) != 0)
            continue;
        folder_ = folder;
        lock_ = std::move(lock);
    }
    return folder_;
}

}  // namespace zorvane
