// Loaded in front of the C library, it lets one call to the file system fail, for tests: the call
// number FAILING_AT of the kind FAILING_CALL on a file below FAILING_FOLDER. "short" instead moves
// a few bytes at each call, as the system may. The calls met are counted in the file FAILING_COUNT.
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic<int> met{0};

bool Is(const char* kind) {
    const char* wanted = std::getenv("FAILING_CALL");
    return wanted != nullptr && std::strcmp(wanted, kind) == 0;
}

bool IsBelow(const char* path) {
    const char* folder = std::getenv("FAILING_FOLDER");
    char whole[PATH_MAX];
    if (folder == nullptr || path == nullptr)
        return false;
    const bool relative = path[0] != '/' && getcwd(whole, sizeof whole) != nullptr;
    return (relative ? std::string(whole) + '/' + path : std::string(path)).starts_with(folder);
}

bool IsBelow(int descriptor) {
    char target[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), target, sizeof target - 1);
    return length > 0 && IsBelow(std::string(target, static_cast<std::size_t>(length)).c_str());
}

template <typename Place>
bool Fails(const char* kind, Place place, int code) {
    if (!Is(kind) || !IsBelow(place))
        return false;
    const int number = ++met;
    const int count = static_cast<int>(syscall(SYS_open, std::getenv("FAILING_COUNT"),
                                               O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    dprintf(count, "%d", number);
    syscall(SYS_close, count);
    if (number != std::atoi(std::getenv("FAILING_AT")))
        return false;
    errno = code;
    return true;
}

std::size_t Few(int descriptor, std::size_t size) {
    constexpr std::size_t kFew = 7;
    return Is("short") && IsBelow(descriptor) ? std::min(size, kFew) : size;
}

template <typename Call>
Call* Next(const char* name) {
    return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

ssize_t read(int descriptor, void* bytes, std::size_t size) {
    return Fails("read", descriptor, EIO)
               ? -1
               : Next<decltype(read)>("read")(descriptor, bytes, Few(descriptor, size));
}
ssize_t __read_chk(int descriptor, void* bytes, std::size_t size, std::size_t /*room*/) {
    return read(descriptor, bytes, size);
}
ssize_t pread(int descriptor, void* bytes, std::size_t size, off_t at) {
    return Fails("read", descriptor, EIO)
               ? -1
               : Next<decltype(pread)>("pread")(descriptor, bytes, Few(descriptor, size), at);
}
ssize_t write(int descriptor, const void* bytes, std::size_t size) {
    return Fails("write", descriptor, ENOSPC)
               ? -1
               : Next<decltype(write)>("write")(descriptor, bytes, Few(descriptor, size));
}
int rename(const char* from, const char* to) {
    return Fails("rename", to, EXDEV) ? -1 : Next<decltype(rename)>("rename")(from, to);
}
int close(int descriptor) {
    const bool fails = Fails("close", descriptor, EIO);
    // A file that was written anew loses what it holds.
    struct stat facts {};
    if (fails && fstat(descriptor, &facts) == 0 && facts.st_nlink > 0 &&
        (fcntl(descriptor, F_GETFL) & O_APPEND) == 0)
        syscall(SYS_ftruncate, descriptor, 0);
    const int result = Next<decltype(close)>("close")(descriptor);
    errno = fails ? EIO : errno;
    return fails ? -1 : result;
}
int fchmod(int descriptor, mode_t mode) {
    return Fails("fchmod", descriptor, EPERM) ? -1
                                              : Next<decltype(fchmod)>("fchmod")(descriptor, mode);
}
}
