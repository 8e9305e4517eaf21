// The bytes of a file without a copy.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "common/base/result.h"

namespace zorvane {

/// A regular file mapped into memory, all of it at once; what cannot be mapped is read. The bytes
/// live as long as this object. Nobody may cut the file meanwhile: it is for the program's own
/// files, which are written anew and never in place.
class MappedFile {
  public:
    MappedFile() = default;
    ~MappedFile();
    MappedFile(MappedFile&& other) noexcept;
    MappedFile& operator=(MappedFile&& other) noexcept;

    static Result<MappedFile> Open(const std::string& path);
    /// The whole of an open regular file, which may be closed afterwards.
    static Result<MappedFile> Of(int descriptor);
    std::string_view Bytes() const {
        return address_ == nullptr ? std::string_view(read_)
                                   : std::string_view(static_cast<const char*>(address_), size_);
    }

  private:
    void Unmap();
    bool Map(int descriptor);

    void* address_ = nullptr;  // of the mapping; nothing: the bytes were read
    std::size_t size_ = 0;
    std::string read_;
};

}  // namespace zorvane
