// Two folders on the disk for a compare, and what it says of them.
#pragma once

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

#include "common/base/side.h"
#include "compare/engine/folder_scan.h"
#include "tests/support/temp_folder.h"

namespace zorvane {

class FolderTrees {
  public:
    FolderTrees() {
        for (const Side side : kBothSides)
            std::filesystem::create_directory(Root(side));
    }
    std::string Root(Side side) const { return folder_.Path(side == Side::Original ? "a" : "b"); }
    PerSide<std::string> Roots() const { return {Root(Side::Original), Root(Side::Modified)}; }
    std::string Path(Side side, std::string_view name) const {
        return Root(side) + "/" + std::string(name);
    }
    /// Made with its folders; changed at `seconds` after 1970.
    void Write(Side side, std::string_view name, std::string_view bytes,
               std::int64_t seconds = 1700000000) const {
        const std::filesystem::path path = Path(side, name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
        SetTime(side, name, seconds);
    }
    void WriteBoth(std::string_view name, std::string_view original,
                   std::string_view modified) const {
        Write(Side::Original, name, original);
        Write(Side::Modified, name, modified);
    }
    void SetTime(Side side, std::string_view name, std::int64_t seconds) const {
        const timespec times[] = {{seconds, 0}, {seconds, 0}};
        utimensat(AT_FDCWD, Path(side, name).c_str(), times, AT_SYMLINK_NOFOLLOW);
    }
    const TempFolder& Folder() const { return folder_; }

  private:
    TempFolder folder_;
};

/// "= sub/", "~ sub/x size<" (different), "< only", "> only", "! failed", with what differs:
/// "content", and for size and date "<" where the Modified one is greater or later, else ">".
inline std::string NoteOf(const FolderScan& scan, std::size_t index) {
    const ScannedEntry& entry = scan.Entry(index);
    std::string what;
    if (entry.content == PairContent::Different)
        what += " content";
    if (entry.SizeSign() != 0)
        what += entry.SizeSign() < 0 ? " size<" : " size>";
    if (entry.DateSign() != 0)
        what += entry.DateSign() < 0 ? " date<" : " date>";
    std::string mark = what.empty() ? "= " : "~ ";
    if (!entry.InBoth())
        mark = entry.Has(Side::Original) ? "< " : "> ";
    if (entry.content == PairContent::Failed)
        mark = "! ";
    return mark + scan.PathBelow(index) + what;
}

inline std::vector<std::string> NotesOf(const FolderScan& scan) {
    std::vector<std::string> notes;
    for (std::size_t index = 0; index < scan.Count(); ++index)
        notes.push_back(NoteOf(scan, index));
    return notes;
}

}  // namespace zorvane
