// The compare of two folder trees in the background: size and date first, then bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/append_only.h"
#include "common/base/side.h"
#include "common/file_patterns.h"
#include "common/tree_walk.h"
#include "compare/engine/file_pair.h"
#include "compare/engine/folder_record.h"

namespace zorvane {

struct FolderScanOptions {
    PairRules rules;
    bool show_only_original = true;
    bool show_only_modified = true;
    bool show_same = true;
    bool show_different = true;   ///< and what could not be compared
    bool ignore_dates = false;    ///< what differs in its date alone is the same
    bool subfolders = true;       ///< else they are told and not looked into
    bool hidden = true;           ///< names that begin with "."
    std::string file_types;       ///< see `FilePatterns`; bears on files, not on folders
    int threads = 0;              ///< see `OrderedWork`
    bool behind_windows = false;  ///< leaves processors to a window that a person looks at
};

/// One record, small, since there may be millions. Names are bytes as the system has them.
struct ScannedEntry {
    const char* name = nullptr;  ///< of a folder its own
    PerSide<std::int64_t> sizes{0, 0};
    PerSide<std::int64_t> seconds{0, 0};
    std::int32_t folder =
        0;  ///< that it lies in; of a folder record itself. See `FolderScan::Folder`
    std::uint16_t length = 0;
    PairContent content = PairContent::Same;
    EntryKind original : 4 = EntryKind::None;
    EntryKind modified : 4 = EntryKind::None;

    std::string_view Name() const { return {name, length}; }
    bool IsFolder() const { return original == EntryKind::Folder || modified == EntryKind::Folder; }
    bool InBoth() const { return original != EntryKind::None && modified != EntryKind::None; }
    bool Has(Side side) const {
        return (side == Side::Original ? original : modified) != EntryKind::None;
    }
    std::int32_t SizeSign() const;  ///< as `FolderRecord` has them
    std::int32_t DateSign() const;
};
static_assert(sizeof(ScannedEntry) <= 48);

struct ScannedFolder {
    std::int32_t parent = -1;
    std::string_view name;
};

struct FolderFault {
    std::int32_t code = 0;
    std::string message;  ///< the path and the reason
};

/// Records come in the order of `WalkTree` and never change; reading them takes no lock.
class FolderScan : private TreeJob {
  public:
    FolderScan() = default;
    ~FolderScan() override { Release(); }
    FolderScan(const FolderScan&) = delete;
    FolderScan& operator=(const FolderScan&) = delete;

    /// Comes back at once; a run that goes on is ended first, and its records go. A folder that
    /// cannot be opened is a fault and ends the run. `events` may be nullptr, else outlives it.
    void Start(const PerSide<std::string>& folders, const FolderScanOptions& options,
               FolderCompareEvents* events);
    /// The same with roots of the caller's.
    void StartIn(PerSide<std::unique_ptr<FolderHandle>> roots, const PerSide<std::string>& folders,
                 const FolderScanOptions& options, FolderCompareEvents* events);
    bool Busy() const { return work_ && work_->Busy(); }
    /// Comes back at once; what is published stays.
    void Abort();
    /// Aborts and waits.
    void Release();
    /// Waits for the end.
    void Join();

    std::size_t Count() const { return entries_.size(); }
    /// `index` is below a count that the caller has seen.
    const ScannedEntry& Entry(std::size_t index) const { return entries_[index]; }
    const ScannedFolder& Folder(std::int32_t number) const {
        return folders_[static_cast<std::size_t>(number)];
    }
    FolderRecord Record(std::size_t index) const;
    /// From the roots, "sub/name"; of the folder records with a "/" behind.
    std::string PathBelow(std::size_t index) const;
    const AppendOnly<FolderFault>& Faults() const { return faults_; }
    /// Pairs and single entries that were looked at, shown or not.
    std::int64_t LookedAt() const { return looked_at_.load(std::memory_order_relaxed); }

  private:
    class Found;
    class FoundFolder;

    bool WantsFile(std::string_view name) override;
    FolderUse UseOf(std::string_view name) override;
    std::unique_ptr<TreeFindings> Folder(const std::shared_ptr<const TreeFolder>& folder,
                                         const PerSide<SystemError>& errors) override;
    std::unique_ptr<TreeFindings> Files(const std::shared_ptr<const TreeFolder>& folder,
                                        const PerSide<FolderHandle*>& handles,
                                        std::span<const TreeEntry> files, int thread,
                                        const OrderedWork& stop) override;
    bool Shows(const ScannedEntry& entry) const;
    bool ShowsSide(const TreeEntry& entry) const;
    void TakeFaults(const TreeFolder& folder, std::string_view name, const PairVerdict& verdict,
                    std::vector<FolderFault>& faults) const;
    std::string PathOf(Side side, std::string_view below) const;
    std::string FolderBelow(std::int32_t number) const;
    void Publish(ScannedEntry entry);
    void Tell(FolderFault fault);

    FolderScanOptions options_;
    FilePatterns patterns_;
    PerSide<std::string> roots_;  ///< with a separator behind
    FolderCompareEvents* events_ = nullptr;
    std::vector<FilePairs> pairs_;  ///< one for each thread
    AppendOnly<ScannedEntry> entries_;
    AppendOnly<ScannedFolder> folders_;
    AppendOnly<FolderFault> faults_;
    TextArena names_;
    std::atomic<std::int64_t> looked_at_{0};
    std::unique_ptr<OrderedWork> work_;  ///< the last member: its threads use all the others
};

}  // namespace zorvane
