#include "common/platform/copy_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "common/platform/file_descriptor.h"
#include "common/platform/native_path.h"
#include "common/platform/system_failure.h"

namespace zorvane {
namespace {

// A file that goes with its owner, unless it was given its place.
class FileBeside {
  public:
    // A name of its own: that of the target may be as long as names can be.
    explicit FileBeside(const std::string& target)
        : name_((std::filesystem::path(target).parent_path() / ".copy.XXXXXX").string()) {
        descriptor_ = FileDescriptor(mkostemp(name_.data(), O_CLOEXEC));
        made_ = descriptor_.IsOpen();
    }
    ~FileBeside() {
        if (made_)
            unlink(name_.c_str());
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    FileDescriptor& Descriptor() { return descriptor_; }
    bool TakePlaceOf(const std::string& target) {
        if (!descriptor_.Close() || rename(name_.c_str(), target.c_str()) != 0)
            return false;
        made_ = false;
        return true;
    }

  private:
    std::string name_;
    FileDescriptor descriptor_;
    bool made_ = false;
};

bool CopyBytes(int from, int to) {
    constexpr std::size_t kBuffer = 1 << 18;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kBuffer);
    while (true) {
        const ssize_t got = read(from, buffer.get(), kBuffer);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return got == 0;
        if (!WriteAll(to, {buffer.get(), static_cast<std::size_t>(got)}))
            return false;
    }
}

}  // namespace

Status CopyFileKeeping(const std::string& from, const std::string& to) {
    const std::string target = NativePath(to);
    const FileDescriptor source(open(NativePath(from).c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat told {};
    if (!source.IsOpen() || fstat(source.Get(), &told) != 0)
        return SystemFailure(from);
    if (!S_ISREG(told.st_mode))
        return Failure{from + ": this is not a regular file"};
    struct stat old {};
    const bool exists = stat(target.c_str(), &old) == 0;
    constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    if (exists && ((old.st_mode & kAnyWrite) == 0 || access(target.c_str(), W_OK) != 0))
        return SystemFailure(to, EACCES);
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(target).parent_path(), error);
    FileBeside copy(target);
    if (!copy.Descriptor().IsOpen())
        return SystemFailure(to);
    const int number = copy.Descriptor().Get();
    const timespec times[] = {told.st_atim, told.st_mtim};
    if (!CopyBytes(source.Get(), number) || fchmod(number, told.st_mode & 07777U) != 0 ||
        futimens(number, times) != 0 || !copy.TakePlaceOf(target))
        return SystemFailure(to);
    return Status::Ok();
}

}  // namespace zorvane
