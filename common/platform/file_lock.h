// Locks between processes. A lock lies on an open file and goes with its descriptor, however its
// owner ends; so a file that nobody has locked is one whose owner is gone.
#pragma once

#include <chrono>
#include <string>

#include "common/platform/file_descriptor.h"

namespace zorvane {

/// Failed: the file is not open, or its file system has no locks; `errno` tells.
enum class LockEnd { Taken, Busy, Failed };

inline constexpr std::chrono::milliseconds kWithoutLimit = std::chrono::milliseconds::max();

/// Waits so long for whoever has it.
LockEnd LockFile(const FileDescriptor& file, std::chrono::milliseconds patience);
/// Asks once.
bool TryLock(const FileDescriptor& file);

/// A file that is there to be locked alone: made if it is missing, private, and never behind a
/// link.
FileDescriptor OpenLockFile(const std::string& native_path);

}  // namespace zorvane
