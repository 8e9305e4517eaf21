// What a compare of two folders tells of one entry, by its fixed names.
#pragma once

#include <cstdint>
#include <string>

namespace zorvane {

/// `ContentDifferent`: any other value is one that could not be compared, `kContentFailed` here.
inline constexpr std::int32_t kContentSame = 0;
inline constexpr std::int32_t kContentDifferent = 1;
inline constexpr std::int32_t kContentFailed = 2;

struct FolderRecord {
    std::int32_t Record = 0;         ///< 0-based
    std::string FileName;            ///< empty for a folder
    std::string DirMaster;           ///< with `FileName` behind it the full path; of a folder its
    std::string DirSource;           ///< own. Both are there, also where the entry is not
    std::int32_t IsFile = 0;         ///< 1 a file, a link or a special file; 0 a folder
    std::int32_t OnlyInSource = 0;   ///< nonzero: only in the Modified tree
    std::int32_t OnlyInMaster = 0;   ///< nonzero: only in the Original tree
    std::int32_t SizeDifferent = 0;  ///< negative: the Modified one is greater; positive: less
    std::int32_t DateDifferent = 0;  ///< negative: the Modified one is later; positive: earlier
    std::int32_t ContentDifferent = 0;

    bool InBoth() const { return OnlyInSource == 0 && OnlyInMaster == 0; }
    std::string Original() const { return DirMaster + FileName; }
    std::string Modified() const { return DirSource + FileName; }
    friend bool operator==(const FolderRecord&, const FolderRecord&) = default;
};

/// Told by an engine that compares two folders.
class FolderCompareEvents {
  public:
    virtual ~FolderCompareEvents() = default;
    /// From within the start.
    virtual void OnFolderCompareStarted() {}
    /// On any thread, never two at once, in the order of the records, whatever the number of
    /// threads. `code` is the system's, -1 without one. The run goes on.
    virtual void OnFolderCompareError(std::int32_t /*code*/, const std::string& /*message*/) {}
    /// Likewise, now and then.
    virtual void OnFolderCompareProgress() {}
};

}  // namespace zorvane
