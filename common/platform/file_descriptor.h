// A file descriptor that closes itself.
#pragma once

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
    void Close() {
        if (number_ >= 0)
            close(std::exchange(number_, -1));
    }

  private:
    int number_ = -1;
};

}  // namespace zorvane
