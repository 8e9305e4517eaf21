#include "common/platform/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "common/platform/file_descriptor.h"
#include "common/platform/file_lock.h"
#include "common/platform/native_path.h"
#include "common/platform/process_end.h"
#include "common/platform/system_failure.h"

namespace zorvane {
namespace {

bool WriteInParts(int descriptor, std::string_view bytes, RunWatcher* watcher) {
    constexpr std::size_t kPart = std::size_t{1} << 22;
    for (std::size_t at = 0; at < bytes.size(); at += kPart) {
        if (!KeepGoing(watcher)) {
            errno = ECANCELED;
            return false;
        }
        if (!WriteAll(descriptor, bytes.substr(at, kPart)))
            return false;
    }
    return true;
}

Status WriteInPlace(const std::string& path, const std::string& native, std::string_view bytes,
                    std::uint32_t mode, RunWatcher* watcher) {
    FileDescriptor file(open(native.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode));
    if (file.Get() < 0)
        return SystemFailure(path);
    if (!WriteInParts(file.Get(), bytes, watcher) || !file.Close())
        return SystemFailure(path);
    return Status::Ok();
}

// Another user's file stays that user's where the system lets us, as it lets an administrator.
void KeepOwner(int descriptor, const struct stat& facts) {
    const int given = fchown(descriptor, facts.st_uid, facts.st_gid);
    static_cast<void>(given);
}

// Text positions have 32 bits, and a text of lone line ends doubles when it is loaded.
constexpr std::size_t kMostBytes = (std::size_t{1} << 30) - 1;

Failure TooLarge(const std::string& path) {
    return Failure{path + ": larger than 1 GiB, which is the most that is read"};
}

// How large the bytes grow for the next part: within what they have, else half as large again.
std::size_t RoomBehind(std::size_t filled, std::size_t capacity) {
    constexpr std::size_t kPart = std::size_t{1} << 22;
    if (capacity > filled)
        return std::min(capacity, filled + kPart);
    return std::min(filled + std::max<std::size_t>(filled / 2, 65536), kMostBytes + 1);
}

// Reads on to the end, whatever the size says: a device or a FIFO has none.
bool ReadRest(int descriptor, std::string& bytes, std::size_t filled, RunWatcher* watcher) {
    while (true) {
        if (!KeepGoing(watcher)) {
            errno = ECANCELED;
            return false;
        }
        if (filled == bytes.size())
            bytes.resize(RoomBehind(filled, bytes.capacity()));
        const ssize_t count = read(descriptor, bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        if (count == 0)
            break;
        filled += static_cast<std::size_t>(count);
        if (filled > kMostBytes) {
            errno = EFBIG;
            return false;
        }
    }
    bytes.resize(filled);
    return true;
}

// `room`: one more than the size, to see the end at once.
Result<std::string> ReadAll(int descriptor, const std::string& name, std::size_t room,
                            RunWatcher* watcher = nullptr) {
    std::string bytes;
    bytes.reserve(room);
    if (!ReadRest(descriptor, bytes, 0, watcher))
        return errno == EFBIG ? TooLarge(name) : SystemFailure(name);
    return bytes;
}

constexpr const char* kHalfName = ".zorvane-XXXXXX";

// Of this user, not locked, and older than the moment between its making and its lock.
bool IsLeftHalf(const std::string& path) {
    constexpr time_t kSeconds = 60;
    struct stat facts {};
    if (lstat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_uid != geteuid() ||
        time(nullptr) - facts.st_mtim.tv_sec < kSeconds)
        return false;
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    return TryLock(file);
}

}  // namespace

Result<std::string> ReadStandardInput() try {
    return ReadAll(STDIN_FILENO, "standard input", 0);
} catch (const std::bad_alloc&) {
    return Failure{"standard input: too large for the memory"};
}

Result<std::string> ReadWholeFile(const std::string& path, RunWatcher* watcher) try {
    const FileDescriptor file(open(NativePath(path).c_str(), O_RDONLY | O_CLOEXEC));
    struct stat facts {};
    if (file.Get() < 0 || fstat(file.Get(), &facts) != 0)
        return SystemFailure(path);
    if (S_ISDIR(facts.st_mode)) {
        errno = EISDIR;
        return SystemFailure(path);
    }
    if (static_cast<std::size_t>(facts.st_size) > kMostBytes)
        return TooLarge(path);
    return ReadAll(file.Get(), path, static_cast<std::size_t>(facts.st_size) + 1, watcher);
} catch (const std::bad_alloc&) {
    return Failure{path + ": too large for the memory"};
}

Result<std::string> ReadFileHead(const std::string& path, std::size_t most) {
    const std::string native = NativePath(path);
    struct stat facts {};
    if (stat(native.c_str(), &facts) != 0)
        return SystemFailure(path);
    if (!S_ISREG(facts.st_mode))
        return Failure{path + ": not a regular file"};
    const FileDescriptor file(open(native.c_str(), O_RDONLY | O_CLOEXEC));
    std::string head(most, '\0');
    const ssize_t count = file.Get() < 0 ? -1 : read(file.Get(), head.data(), head.size());
    if (count < 0)
        return SystemFailure(path);
    head.resize(static_cast<std::size_t>(count));
    return head;
}

Status CheckReadable(const std::string& path) {
    const std::string native = NativePath(path);
    struct stat facts {};
    // Who writes to a FIFO takes an open for the reader, and its close for the reader's end.
    if (stat(native.c_str(), &facts) == 0 && S_ISFIFO(facts.st_mode))
        return access(native.c_str(), R_OK) == 0 ? Status::Ok() : Status(SystemFailure(path));
    const FileDescriptor file(open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.Get() < 0 || fstat(file.Get(), &facts) != 0)
        return SystemFailure(path);
    if (!S_ISDIR(facts.st_mode))
        return Status::Ok();
    errno = EISDIR;
    return SystemFailure(path);
}

Status WriteWholeFile(const std::string& path, std::string_view bytes, RunWatcher* watcher) {
    const std::string native = NativePath(path);
    struct stat facts {};
    if (lstat(native.c_str(), &facts) == 0 && S_ISREG(facts.st_mode))
        unlink(native.c_str());
    return WriteInPlace(path, native, bytes, 0600, watcher);
}

Status AppendToFile(const std::string& path, std::string_view bytes) {
    constexpr mode_t kMode = 0666;
    FileDescriptor file(
        open(NativePath(path).c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, kMode));
    if (file.Get() < 0 || !WriteAll(file.Get(), bytes) || !file.Close())
        return SystemFailure(path);
    return Status::Ok();
}

struct FileReplacement::State {
    State(std::string shown_path, std::string native_path, int descriptor)
        : path(std::move(shown_path)), native(std::move(native_path)), file(descriptor) {}

    std::string path;    // as the caller named it
    std::string native;  // behind links
    std::string fresh;   // beside it; empty: the target is written in place
    mode_t mode = 0;
    int at_bad_end = -1;
    FileDescriptor file;
    Status status;
};

FileReplacement::FileReplacement(std::unique_ptr<State> state) : state_(std::move(state)) {}
FileReplacement::FileReplacement(FileReplacement&&) noexcept = default;
FileReplacement& FileReplacement::operator=(FileReplacement&&) noexcept = default;
FileReplacement::~FileReplacement() {
    if (!state_)
        return;
    if (!state_->fresh.empty())
        unlink(state_->fresh.c_str());
    ForgetHalfFile(state_->at_bad_end);
}

Result<FileReplacement> FileReplacement::Begin(const std::string& path, std::uint32_t mode) {
    const std::string native = BehindLinks(NativePath(path));
    struct stat facts {};
    const bool exists = stat(native.c_str(), &facts) == 0;
    if (exists && S_ISDIR(facts.st_mode)) {
        errno = EISDIR;
        return SystemFailure(path);
    }
    if (exists && !S_ISREG(facts.st_mode)) {
        constexpr int kInPlace = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
        auto state = std::make_unique<State>(path, native, open(native.c_str(), kInPlace, mode));
        if (state->file.Get() < 0)
            return SystemFailure(path);
        return FileReplacement(std::move(state));
    }
    if (exists && access(native.c_str(), W_OK) != 0)
        return SystemFailure(path);
    // A name of its own, since the file's with something behind it may be longer than names can be.
    std::string fresh = JoinPath(ParentOf(native), kHalfName);
    const EndingSignalsHeldBack until_it_is_known;
    auto state = std::make_unique<State>(path, native, mkostemp(fresh.data(), O_CLOEXEC));
    if (state->file.Get() < 0)
        return SystemFailure(path);
    TryLock(state->file);  // see `SweepHalfFiles`
    state->at_bad_end = UnlinkAtBadEnd(fresh);
    state->fresh = std::move(fresh);
    const mode_t mask = umask(0);
    umask(mask);
    constexpr mode_t kAnybody = 0666;
    const mode_t kept = facts.st_mode & (mode == kAnybody ? 07777U : mode);
    state->mode = exists ? kept : mode & ~mask;
    if (exists && facts.st_uid != geteuid())
        KeepOwner(state->file.Get(), facts);
    return FileReplacement(std::move(state));
}

Status FileReplacement::Write(std::string_view bytes, RunWatcher* watcher) {
    if (state_->status.ok() && !WriteInParts(state_->file.Get(), bytes, watcher))
        state_->status = SystemFailure(state_->path);
    return state_->status;
}

Status FileReplacement::Finish() {
    State& state = *state_;
    if (!state.status.ok())
        return state.status;
    const bool in_place = state.fresh.empty();
    const bool finished = (in_place || fchmod(state.file.Get(), state.mode) == 0) &&
                          state.file.Close() &&
                          (in_place || std::rename(state.fresh.c_str(), state.native.c_str()) == 0);
    if (!finished)
        return state.status = SystemFailure(state.path);
    state.fresh.clear();
    return state.status;
}

void SweepHalfFiles(const std::string& path) {
    const std::string native = BehindLinks(NativePath(path));
    const std::string folder(ParentOf(native));
    std::error_code error;
    for (std::filesystem::directory_iterator at(folder.empty() ? "." : folder, error), end;
         !error && at != end; at.increment(error)) {
        const std::string name = at->path().filename().string();
        if (name.size() == std::strlen(kHalfName) && name.starts_with(".zorvane-") &&
            IsLeftHalf(at->path().string()))
            unlink(at->path().c_str());
    }
}

Status ReplaceFile(const std::string& path, std::string_view bytes, std::uint32_t mode,
                   RunWatcher* watcher) {
    Result<FileReplacement> file = FileReplacement::Begin(path, mode);
    if (!file.ok())
        return file.failure();
    if (Status written = file.value().Write(bytes, watcher); !written.ok())
        return written;
    return file.value().Finish();
}

}  // namespace zorvane
