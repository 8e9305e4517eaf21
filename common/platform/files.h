// Reading and writing whole files, with failures in a user's words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "common/base/run_watcher.h"

namespace zorvane {

/// The bytes of a regular file, FIFO or character device. Failures name the file and the reason:
/// "No such file or directory", "Is a directory", larger than 1 GiB, ...
/// A stop is a failure here and below; whoever hands over a watcher asks it before telling one.
Result<std::string> ReadWholeFile(const std::string& path, RunWatcher* watcher = nullptr);
/// All of standard input, under the same limit.
Result<std::string> ReadStandardInput();
/// At most the first `most` bytes of a regular file, to see what it is. Anything else is a failure
/// and is not opened: what is read of a FIFO is gone.
Result<std::string> ReadFileHead(const std::string& path, std::size_t most);
/// Whether `ReadWholeFile` would find a file to read; for a clear word before long work.
Status CheckReadable(const std::string& path);
/// For the program's own temporary files: an old file goes first, so that whoever has it mapped
/// keeps it.
Status WriteWholeFile(const std::string& path, std::string_view bytes,
                      RunWatcher* watcher = nullptr);
/// Adds to the end, in one write where the system can, so that lines of two processes do not mix.
Status AppendToFile(const std::string& path, std::string_view bytes);
/// Writes a new file beside `path` and renames it over `path`, so that a failure leaves the old
/// file as it was and no half file. A link stays and what it leads to is replaced, or made where it
/// leads nowhere yet. A target that is not a regular file (a device, a FIFO) is written in place.
/// `mode` is that of a new file, before the user's mask; an old one keeps its own, less what `mode`
/// lacks.
Status ReplaceFile(const std::string& path, std::string_view bytes, std::uint32_t mode = 0666,
                   RunWatcher* watcher = nullptr);
/// Removes the half files beside `path` whose writers ended before they were done: a process that
/// was killed, a power cut. What is still being written is locked and stays.
void SweepHalfFiles(const std::string& path);

/// The same for a file that comes in parts, so that nobody has to hold all of it.
class FileReplacement {
  public:
    static Result<FileReplacement> Begin(const std::string& path, std::uint32_t mode = 0666);
    ~FileReplacement();  ///< without `Finish` the old file is as it was
    FileReplacement(FileReplacement&&) noexcept;
    FileReplacement& operator=(FileReplacement&&) noexcept;

    /// After a failure every call fails with the first reason.
    Status Write(std::string_view bytes, RunWatcher* watcher = nullptr);
    /// The new file takes its place.
    Status Finish();

  private:
    struct State;
    explicit FileReplacement(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace zorvane
