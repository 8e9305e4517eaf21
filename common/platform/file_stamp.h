// What tells that a file on the disk is still the one that it was.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace zorvane {

struct FileStamp {
    std::int64_t size = 0;
    std::int64_t modified = 0;  ///< nanoseconds
    std::uint64_t file = 0;     ///< its number on its device: another after a replacement
    std::uint64_t device = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// Nothing when there is no regular file of that name.
std::optional<FileStamp> FileStampOf(const std::string& path);

/// The same as a service, so that a test stands in for the disk.
using StampReader = std::function<std::optional<FileStamp>(const std::string&)>;

}  // namespace zorvane
