#include "common/tree_walk.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zorvane {
namespace {

// A flat folder is spread over the threads too; between 8 and 256 the size makes no difference.
constexpr std::size_t kFilesOfChunk = 32;
// A folder of a million subfolders makes its tasks as they are wanted.
constexpr std::size_t kFoldersOfChunk = 256;

using Handles = PerSide<std::unique_ptr<FolderHandle>>;

// What the tasks of a folder share; the handles go with the last of them that opens something, the
// names with the last that publishes.
struct OpenFolderPair {
    Handles handles;
};
struct FolderNames {
    PerSide<FolderListing> listings;
    std::vector<TreeEntry> files;
    std::vector<TreeEntry> folders;
};
struct Walked {
    TreeJob& job;
    std::shared_ptr<const TreeFolder> folder;
    std::shared_ptr<OpenFolderPair> open;
    std::shared_ptr<FolderNames> names;
};

class ChunkTask : public OrderedTask {
  public:
    ChunkTask(const Walked& walked, std::size_t first) : walked_(walked), first_(first) {}

    void Do(OrderedWork& work, int thread) override {
        const std::vector<TreeEntry>& files = walked_.names->files;
        const std::size_t count = std::min(kFilesOfChunk, files.size() - first_);
        const Handles& handles = walked_.open->handles;
        findings_ =
            walked_.job.Files(walked_.folder, {handles.original.get(), handles.modified.get()},
                              std::span(files).subspan(first_, count), thread, work);
        walked_.open.reset();
    }
    void Publish() override {
        if (findings_)
            findings_->Publish();
    }

  private:
    Walked walked_;
    std::size_t first_;
    std::unique_ptr<TreeFindings> findings_;
};

std::vector<OrderedWork::Task> SubfolderTasks(const Walked& walked, std::size_t first);

// The subfolders behind those that have tasks already.
class RestTask : public OrderedTask {
  public:
    RestTask(const Walked& walked, std::size_t first) : walked_(walked), first_(first) {}

    void Do(OrderedWork& work, int /*thread*/) override {
        work.Follow(*this, SubfolderTasks(walked_, first_));
        walked_.open.reset();
    }
    void Publish() override {}

  private:
    Walked walked_;
    std::size_t first_;
};

class FolderTask : public OrderedTask {
  public:
    FolderTask(TreeJob& job, Handles roots) : job_(job), handles_(std::move(roots)) {
        auto folder = std::make_shared<TreeFolder>();
        for (const Side side : kBothSides)
            folder->present[side] = handles_[side] != nullptr;
        folder_ = std::move(folder);
    }
    FolderTask(const Walked& parent, const TreeEntry& entry)
        : job_(parent.job), parent_open_(parent.open), parent_names_(parent.names) {
        auto folder = std::make_shared<TreeFolder>();
        folder->parent = parent.folder;
        folder->name = entry.Name();
        folder->depth = parent.folder->depth + 1;
        for (const Side side : kBothSides)
            folder->present[side] = entry.kinds[side] == EntryKind::Folder;
        folder_ = std::move(folder);
    }

    void Do(OrderedWork& work, int /*thread*/) override {
        const bool root = !folder_->parent;
        const FolderUse use = root ? FolderUse::Walk : job_.UseOf(folder_->name);
        if (use == FolderUse::Walk) {
            if (!root)
                Open();
            Read(work);
        }
        parent_open_.reset();
        parent_names_.reset();
        if (use == FolderUse::Skip || work.Aborted())
            return;
        findings_ = job_.Folder(folder_, errors_);
        Follow(work);
    }
    void Publish() override {
        if (findings_)
            findings_->Publish();
    }

  private:
    void Open() {
        for (const Side side : kBothSides) {
            FolderHandle* parent = parent_open_->handles[side].get();
            if (folder_->present[side] && parent != nullptr)
                errors_[side] = parent->OpenFolder(folder_->name.c_str(), handles_[side]);
        }
    }

    void Read(const OrderedWork& work) {
        names_ = std::make_shared<FolderNames>();
        for (const Side side : kBothSides) {
            FolderListing& listing = names_->listings[side];
            if (handles_[side] == nullptr)
                continue;
            const auto stop = [&work] { return work.Aborted(); };
            errors_[side] = handles_[side]->List(listing, stop);
            if (errors_[side])
                listing = {};
            listing.Sort(stop);
        }
        // Where one side cannot be read nothing is known of what the two have in common.
        if (work.Aborted() || errors_.original || errors_.modified)
            return;
        Merge(work);
        for (const Side side : kBothSides)
            names_->listings[side].DropEntries();
    }

    void Merge(const OrderedWork& work) {
        PerSide<std::size_t> at{0, 0};
        const PerSide<FolderListing>& listings = names_->listings;
        while ((at.original < listings.original.size() || at.modified < listings.modified.size()) &&
               !work.Aborted()) {
            const int order = Order(at);
            PerSide<TreeEntry> entries;
            for (const Side side : kBothSides) {
                if (order == (side == Side::Original ? 1 : -1))
                    continue;
                const std::string_view name = listings[side].Name(at[side]);
                entries[side] = {name.data(), static_cast<std::uint32_t>(name.size()), {}};
                entries[side].kinds[side] = listings[side].Kind(at[side]);
                ++at[side];
            }
            Take(entries);
        }
    }

    // Which side has the next name: -1 the Original, 1 the Modified, 0 both.
    int Order(const PerSide<std::size_t>& at) const {
        const PerSide<FolderListing>& listings = names_->listings;
        if (at.original == listings.original.size())
            return 1;
        if (at.modified == listings.modified.size())
            return -1;
        const int order =
            listings.original.Name(at.original).compare(listings.modified.Name(at.modified));
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    }

    void Take(PerSide<TreeEntry>& entries) {
        TreeEntry& one = entries.original;
        TreeEntry& two = entries.modified;
        const bool both = one.name != nullptr && two.name != nullptr;
        const bool alike = both && (one.kinds.original == EntryKind::Folder) ==
                                       (two.kinds.modified == EntryKind::Folder);
        if (alike) {
            one.kinds.modified = two.kinds.modified;
            two.name = nullptr;
        }
        for (const Side side : kBothSides) {
            const TreeEntry& entry = entries[side];
            if (entry.name == nullptr)
                continue;
            if (entry.kinds[side] == EntryKind::Folder)
                names_->folders.push_back(entry);
            else if (job_.WantsFile(entry.Name()))
                names_->files.push_back(entry);
        }
    }

    void Follow(OrderedWork& work) {
        if (!names_)
            return;
        auto open = std::make_shared<OpenFolderPair>(OpenFolderPair{std::move(handles_)});
        const Walked walked{job_, folder_, std::move(open), std::move(names_)};
        std::vector<OrderedWork::Task> tasks;
        for (std::size_t first = 0; first < walked.names->files.size(); first += kFilesOfChunk)
            tasks.push_back(std::make_unique<ChunkTask>(walked, first));
        for (OrderedWork::Task& task : SubfolderTasks(walked, 0))
            tasks.push_back(std::move(task));
        work.Follow(*this, std::move(tasks));
    }

    TreeJob& job_;
    std::shared_ptr<const TreeFolder> folder_;
    std::shared_ptr<OpenFolderPair> parent_open_;
    std::shared_ptr<FolderNames> parent_names_;
    Handles handles_;
    PerSide<SystemError> errors_;
    std::shared_ptr<FolderNames> names_;
    std::unique_ptr<TreeFindings> findings_;
};

std::vector<OrderedWork::Task> SubfolderTasks(const Walked& walked, std::size_t first) {
    const std::vector<TreeEntry>& folders = walked.names->folders;
    const std::size_t last = std::min(folders.size(), first + kFoldersOfChunk);
    std::vector<OrderedWork::Task> tasks;
    for (std::size_t index = first; index < last; ++index)
        tasks.push_back(std::make_unique<FolderTask>(walked, folders[index]));
    if (last < folders.size())
        tasks.push_back(std::make_unique<RestTask>(walked, last));
    return tasks;
}

}  // namespace

std::string TreeFolder::Below() const {
    std::vector<const TreeFolder*> way;
    for (const TreeFolder* step = this; step->parent; step = step->parent.get())
        way.push_back(step);
    std::string below;
    for (auto step = way.rbegin(); step != way.rend(); ++step)
        below += (*step)->name + "/";
    return below;
}

OrderedWork::Task WalkTree(PerSide<std::unique_ptr<FolderHandle>> roots, TreeJob& job) {
    return std::make_unique<FolderTask>(job, std::move(roots));
}

}  // namespace zorvane
