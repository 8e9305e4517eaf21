// Open files that travel with bytes over a local socket, from one process to another.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <sys/types.h>

#include "common/platform/file_descriptor.h"

namespace zorvane {

constexpr std::size_t kMostPassedFiles = 3;
using PassedFiles = std::array<FileDescriptor, kMostPassedFiles>;

/// One call of the system: how many bytes went, the files with the first of them; -1 with `errno`.
/// `files` stay the caller's, at most `kMostPassedFiles`. `flags` are those of `sendmsg`; a reader
/// that has gone is never a signal.
ssize_t SendWithFiles(int socket, std::string_view bytes, std::span<const int> files,
                      int flags = 0);

/// One call of the system, again after a signal: how many bytes came, 0 at the end, -1 with
/// `errno`. The files that came with them fill `files` from its begin, closed in what is started
/// later; the other places stay as they were. Files for which there is no place are closed.
ssize_t ReceiveWithFiles(int socket, std::span<char> bytes, PassedFiles& files);

}  // namespace zorvane
