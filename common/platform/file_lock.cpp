#include "common/platform/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace zorvane {
namespace {

// Here the system keeps the order of those who wait.
LockEnd WaitForLock(int file) {
    while (flock(file, LOCK_EX) != 0) {
        if (errno != EINTR)
            return LockEnd::Failed;
    }
    return LockEnd::Taken;
}

}  // namespace

LockEnd LockFile(const FileDescriptor& file, std::chrono::milliseconds patience) {
    constexpr std::chrono::milliseconds kBetweenTries{10};
    // Why it could not be opened is what the caller has to tell.
    if (!file.IsOpen())
        return LockEnd::Failed;
    if (patience == kWithoutLimit)
        return WaitForLock(file.Get());
    const auto end = std::chrono::steady_clock::now() + patience;
    while (flock(file.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR && errno != EWOULDBLOCK)
            return LockEnd::Failed;
        if (std::chrono::steady_clock::now() >= end)
            return LockEnd::Busy;
        std::this_thread::sleep_for(kBetweenTries);
    }
    return LockEnd::Taken;
}

bool TryLock(const FileDescriptor& file) {
    return LockFile(file, std::chrono::milliseconds(0)) == LockEnd::Taken;
}

FileDescriptor OpenLockFile(const std::string& native_path) {
    constexpr mode_t kPrivate = 0600;
    return FileDescriptor(
        open(native_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kPrivate));
}

}  // namespace zorvane
