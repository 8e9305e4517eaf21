#include "load/answer_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/platform/file_descriptor.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/system_failure.h"

namespace zorvane {
namespace {

constexpr mode_t kPrivate = 0600;

// Where the file system has no nameless files, the name goes at once.
int MakeNameless(const std::string& folder) {
    const int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kPrivate);
    if (file >= 0)
        return file;
    std::string name = folder + "/answer-XXXXXX";
    const int named = mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0)
        unlink(name.c_str());
    return named;
}

// Read and not mapped: whoever holds the file as well could cut it meanwhile.
bool CopyPart(int from, const AnswerPart& part, int to) {
    std::array<char, 65536> buffer{};
    std::uint64_t done = 0;
    while (done < part.length) {
        const std::size_t wanted = std::min<std::uint64_t>(buffer.size(), part.length - done);
        const ssize_t got =
            pread(from, buffer.data(), wanted, static_cast<off_t>(part.offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got == 0)
            errno = EIO;
        if (got <= 0 || !WriteAll(to, {buffer.data(), static_cast<std::size_t>(got)}))
            return false;
        done += static_cast<std::uint64_t>(got);
    }
    return true;
}

}  // namespace

Result<AnswerFile> AnswerFile::Make(const std::string& folder) {
    AnswerFile made;
    made.file_ = FileDescriptor(MakeNameless(folder));
    if (!made.IsOpen())
        return SystemFailure(folder);
    return made;
}

std::uint64_t AnswerFile::Size() const {
    struct stat facts {};
    const bool known = fstat(file_.Get(), &facts) == 0 && facts.st_size > 0;
    return known ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

Status AnswerFile::CopyTo(const AnswerPart& part, const std::string& target) const {
    const std::string native = NativePath(target);
    struct stat facts {};
    if (lstat(native.c_str(), &facts) == 0 && S_ISREG(facts.st_mode))
        unlink(native.c_str());
    FileDescriptor file(open(native.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kPrivate));
    if (!file.IsOpen())
        return SystemFailure(target);
    if (CopyPart(file_.Get(), part, file.Get()) && file.Close())
        return Status::Ok();
    const Failure failure = SystemFailure(target);
    unlink(native.c_str());
    return failure;
}

Result<std::string> AnswerFile::Read(const AnswerPart& part) const {
    std::string bytes(part.length, '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = pread(file_.Get(), bytes.data() + done, bytes.size() - done,
                                  static_cast<off_t>(part.offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got == 0)
            errno = EIO;
        if (got <= 0)
            return Failure{std::strerror(errno)};
        done += static_cast<std::size_t>(got);
    }
    return bytes;
}

Status AnswerFile::Fill(std::string_view bytes) {
    return WriteAll(file_.Get(), bytes) ? Status::Ok() : Status(Failure{std::strerror(errno)});
}

Result<FileDescriptor> OpenDocument(const std::string& path, const std::string& folder) {
    struct stat facts {};
    const std::string native = NativePath(path);
    // Looked at first: the opening of a pipe waits for its writer, and takes its bytes from it.
    const bool regular = stat(native.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
    if (regular) {
        FileDescriptor file(open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!file.IsOpen())
            return SystemFailure(path);
        return file;
    }
    const Result<std::string> bytes = ReadWholeFile(path);
    if (!bytes.ok())
        return bytes.failure();
    Result<AnswerFile> copy = AnswerFile::Make(folder);
    if (!copy.ok())
        return copy.failure();
    if (Status filled = copy.value().Fill(bytes.value()); !filled.ok())
        return filled.failure();
    return std::move(copy.value()).TakeDescriptor();
}

}  // namespace zorvane
