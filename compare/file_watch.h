// Notices that a file which a viewer shows was changed or removed by somebody else.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/base/side.h"
#include "common/platform/file_stamp.h"
#include "compare/file_window.h"

namespace zorvane {

struct ProcessState;

enum class FileNews { Changed, Gone };

/// One for each file, also where both sides show it.
struct FileNotice {
    std::string path;
    FileNews news = FileNews::Changed;
    PerSide<bool> sides{false, false};
    friend bool operator==(const FileNotice&, const FileNotice&) = default;
};

/// Asked by the window's timer; it starts no thread and holds no file open.
class FileWatch {
  public:
    explicit FileWatch(StampReader read = FileStampOf) : read_(std::move(read)) {}

    /// The stamp of a file that is about to be read, for `Watch` when it has been.
    std::optional<FileStamp> StampOf(const std::string& path) const { return read_(path); }
    /// From here on `path` is what that side shows, as it was at `stamp`. Nothing: it was no
    /// regular file (a pipe, an address), and is not watched.
    void Watch(Side side, const std::string& path, std::optional<FileStamp> stamp);
    /// Empty: nothing is watched.
    const std::string& PathOf(Side side) const { return watched_[side].path; }
    void Forget(Side side) { watched_[side] = {}; }
    void SwapSides() { std::swap(watched_.original, watched_.modified); }

    /// What is to be told now, each change once. Looks at the disk once a second at most, and tells
    /// of a file only when it has been still for a moment, since whoever writes it may not be done
    /// and a replaced file is missing for an instant. `now` in milliseconds; it may wrap.
    std::vector<FileNotice> Poll(std::uint32_t now);

  private:
    using Stamp = std::optional<FileStamp>;
    struct Watched {
        std::string path;  // empty: nothing
        Stamp loaded;      // what is shown
        Stamp told;        // what the user knows of
        Stamp seen;        // at the last look
        std::uint32_t seen_since = 0;
    };
    std::optional<FileNews> NewsOf(Watched& file, std::uint32_t now) const;

    StampReader read_;
    PerSide<Watched> watched_;
    std::uint32_t looked_ = 0;
    bool has_looked_ = false;
};

/// What the user is asked: to load the file again (answer 0) or to keep the text (answer 1). Of a
/// file that is gone there is one answer, 0, and nothing to load. `unsaved`: edits would be lost.
WindowQuestion QuestionOf(ProcessState& process, const FileNotice& notice, bool unsaved);

}  // namespace zorvane
