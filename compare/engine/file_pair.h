// Whether two entries of one name are equal: kind, size, date, then bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "common/base/ordered_work.h"
#include "common/base/side.h"
#include "common/platform/folder_handle.h"
#include "common/tree_walk.h"

namespace zorvane {

enum class PairContent : std::uint8_t { Same, Different, Failed };

/// What is known of a pair, or of an entry on one side.
struct PairVerdict {
    PerSide<EntryFacts> facts;
    PairContent content = PairContent::Same;
    PerSide<SystemError> errors;
    bool shrank = false;  ///< a file ended before its size
};

struct PairRules {
    bool content = true;  ///< read bytes; else sizes and dates alone
    /// Yes: a link stands for the file that it leads to; one that leads to none is a link.
    FollowLink follow = FollowLink::No;
};

/// With its buffers, for one thread.
class FilePairs {
  public:
    explicit FilePairs(PairRules rules) : rules_(rules) {}
    /// After an abort the verdict means nothing.
    PairVerdict Compare(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                        const OrderedWork& stop);

  private:
    using Files = PerSide<std::unique_ptr<OpenedFile>>;

    void CompareKinds(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                      const OrderedWork& stop, PairVerdict& verdict);
    void LookUp(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                PairVerdict& verdict) const;
    void CompareFiles(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                      const OrderedWork& stop, PairVerdict& verdict);
    void CompareLinks(const TreeEntry& entry, const PerSide<FolderHandle*>& handles,
                      PairVerdict& verdict) const;
    void CompareBytes(const Files& files, const OrderedWork& stop, PairVerdict& verdict);
    static void TakeEnd(const Files& files, const PerSide<std::size_t>& got, PairVerdict& verdict);

    PairRules rules_;
    PerSide<std::unique_ptr<char[]>> buffers_;
};

}  // namespace zorvane
