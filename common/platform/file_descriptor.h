// A file descriptor that closes itself, and writing to one.
#pragma once

#include <cerrno>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace zorvane {

class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    ~FileDescriptor() { Close(); }
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            Close();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }

    bool IsOpen() const { return number_ >= 0; }
    /// -1 for none.
    int Get() const { return number_; }
    /// Whoever takes it closes it.
    int Release() { return std::exchange(number_, -1); }
    /// False when the system finds a fault only at the end, as on a full network disk.
    bool Close() { return number_ < 0 || close(std::exchange(number_, -1)) == 0; }

  private:
    int number_ = -1;
};

/// All bytes; false, with `errno` telling why, when the target is full or its reader is gone.
inline bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace zorvane
