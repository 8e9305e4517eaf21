#include "common/platform/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/system_failure.h"

namespace zorvane {

MappedFile::~MappedFile() {
    Unmap();
}

MappedFile::MappedFile(MappedFile&& other) noexcept
    : address_(std::exchange(other.address_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      read_(std::move(other.read_)) {}

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
    if (this == &other)
        return *this;
    Unmap();
    address_ = std::exchange(other.address_, nullptr);
    size_ = std::exchange(other.size_, 0);
    read_ = std::move(other.read_);
    return *this;
}

void MappedFile::Unmap() {
    if (address_ != nullptr)
        munmap(address_, size_);
    address_ = nullptr;
}

// False for what cannot be mapped: an empty file, or one that is no regular one.
bool MappedFile::Map(int descriptor) {
    struct stat facts {};
    if (fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_size <= 0)
        return false;
    size_ = static_cast<std::size_t>(facts.st_size);
    void* const address =
        mmap(nullptr, size_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, descriptor, 0);
    address_ = address == MAP_FAILED ? nullptr : address;
    return address_ != nullptr;
}

Result<MappedFile> MappedFile::Of(int descriptor) {
    MappedFile file;
    struct stat facts {};
    if (file.Map(descriptor))
        return file;
    if (fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_size == 0)
        return file;
    return SystemFailure("it cannot be mapped");
}

Result<MappedFile> MappedFile::Open(const std::string& path) {
    MappedFile file;
    const int descriptor = open(NativePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    const bool mapped = descriptor >= 0 && file.Map(descriptor);
    if (descriptor >= 0)
        close(descriptor);
    if (mapped)
        return file;
    Result<std::string> bytes = ReadWholeFile(path);
    if (!bytes.ok())
        return bytes.failure();
    file.read_ = std::move(bytes).value();
    return file;
}

}  // namespace zorvane
