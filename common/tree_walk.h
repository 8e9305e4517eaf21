// The walk of a folder tree, or of two merged into one, in a documented order on several threads.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/ordered_work.h"
#include "common/base/side.h"
#include "common/platform/folder_handle.h"

namespace zorvane {

/// A folder of the tree. Lives as long as anybody works below it or holds it.
struct TreeFolder {
    std::shared_ptr<const TreeFolder> parent;  ///< nothing for the root
    std::string name;                          ///< empty for the root
    PerSide<bool> present{false, false};
    std::int32_t depth = 0;  ///< 0 for the root
    /// For who publishes: told of the folder itself first, so what is below can look here.
    mutable std::int64_t number = -1;

    std::string Below() const;  ///< "a/b/", the way from the root; empty for the root
};

/// A name that is no folder. A name that is a file on one side and a folder on the other is an
/// entry and a folder, each on one side.
struct TreeEntry {
    const char* name = nullptr;  ///< NUL-terminated
    std::uint32_t length = 0;
    PerSide<EntryKind> kinds{EntryKind::None, EntryKind::None};

    std::string_view Name() const { return {name, length}; }
    bool InBoth() const {
        return kinds.original != EntryKind::None && kinds.modified != EntryKind::None;
    }
};

/// What was found out, for the one who publishes.
class TreeFindings {
  public:
    virtual ~TreeFindings() = default;
    /// In the order of the tree and never two at once, on any thread. Names of entries are still
    /// there.
    virtual void Publish() = 0;
};

enum class FolderUse {
    Skip,      ///< as if it were not there
    NameOnly,  ///< told by `Folder`, and not looked into
    Walk
};

/// What is done with a tree. Called from several threads at once, `Publish` excepted. A side that
/// is not walked, or has no such folder, has neither entries nor a handle.
class TreeJob {
  public:
    virtual ~TreeJob() = default;
    virtual bool WantsFile(std::string_view /*name*/) { return true; }
    virtual FolderUse UseOf(std::string_view /*name*/) { return FolderUse::Walk; }
    /// A folder whose names were read, before all that is in it. One that could not be read on a
    /// side where it is has no entries on either. May give nothing.
    virtual std::unique_ptr<TreeFindings> Folder(const std::shared_ptr<const TreeFolder>& folder,
                                                 const PerSide<SystemError>& errors) = 0;
    /// Some files, links and special files of it, in order. `thread`: 0 up to the number of
    /// threads. Asks `stop.Aborted()` for each file and each buffer.
    virtual std::unique_ptr<TreeFindings> Files(const std::shared_ptr<const TreeFolder>& folder,
                                                const PerSide<FolderHandle*>& handles,
                                                std::span<const TreeEntry> files, int thread,
                                                const OrderedWork& stop) = 0;
};

/// The task to start an `OrderedWork` with. The order: a folder, its files by the bytes of their
/// names, then its subfolders likewise, each with all that is in it; it does not depend on the
/// number of threads. One handle is a walk of one tree, two are merged. `job` outlives the work.
OrderedWork::Task WalkTree(PerSide<std::unique_ptr<FolderHandle>> roots, TreeJob& job);

}  // namespace zorvane
