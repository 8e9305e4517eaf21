#include "load/office_profile.h"

#include "common/platform/file_lock.h"

namespace zorvane {

const std::string& OfficeProfile::Take(const std::string& parent) {
    constexpr int kMost = 256;  // more workers than any machine starts
    for (int number = 1; folder_.empty() && number <= kMost; ++number) {
        const std::string folder = parent + "/office-" + std::to_string(number);
        FileDescriptor lock = OpenLockFile(folder + ".lock");
        if (!lock.IsOpen())
            break;
        if (!TryLock(lock))
            continue;
        folder_ = folder;
        lock_ = std::move(lock);
    }
    return folder_;
}

}  // namespace zorvane
