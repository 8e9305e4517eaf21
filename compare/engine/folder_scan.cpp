#include "compare/engine/folder_scan.h"

#include <utility>

#include "common/platform/native_path.h"
#include "common/platform/thread_priority.h"

namespace zorvane {
namespace {

std::int32_t Sign(std::int64_t original, std::int64_t modified) {
    return original < modified ? -1 : original > modified ? 1 : 0;
}

// Below a root written in the manner of another system its own separator goes on.
char SeparatorOf(const std::string& root) {
    const std::size_t last = root.find_last_of("\\/");
    return last == std::string::npos ? '/' : root[last];
}

std::string WithSeparator(const std::string& root) {
    return root.empty() || !IsPathSeparator(root.back()) ? root + SeparatorOf(root) : root;
}

ScannedEntry EntryOf(const TreeEntry& file, const PairVerdict& verdict) {
    ScannedEntry entry;
    entry.name = file.name;
    entry.length = static_cast<std::uint16_t>(file.length);
    entry.original = file.kinds.original;
    entry.modified = file.kinds.modified;
    entry.content = verdict.content;
    const bool known = !file.InBoth() || (verdict.facts.original.kind != EntryKind::None &&
                                          verdict.facts.modified.kind != EntryKind::None);
    for (const Side side : kBothSides) {
        entry.sizes[side] = known ? verdict.facts[side].size : 0;
        entry.seconds[side] = known ? verdict.facts[side].seconds : 0;
    }
    return entry;
}

}  // namespace

std::int32_t ScannedEntry::SizeSign() const {
    return InBoth() ? Sign(sizes.original, sizes.modified) : 0;
}
std::int32_t ScannedEntry::DateSign() const {
    return InBoth() ? Sign(seconds.original, seconds.modified) : 0;
}

// ---- what is published ----

class FolderScan::FoundFolder : public TreeFindings {
  public:
    FoundFolder(FolderScan& scan, std::shared_ptr<const TreeFolder> folder)
        : scan_(scan), folder_(std::move(folder)) {}
    void Publish() override {
        const TreeFolder& folder = *folder_;
        const std::string_view name = scan_.names_.Add(folder.name);
        folder.number = static_cast<std::int64_t>(scan_.folders_.size());
        scan_.folders_.Append(
            {folder.parent ? static_cast<std::int32_t>(folder.parent->number) : -1, name});
        for (FolderFault& fault : faults)
            scan_.Tell(std::move(fault));
        if (!folder.parent)
            return;
        ScannedEntry entry;
        entry.name = name.data();
        entry.length = static_cast<std::uint16_t>(name.size());
        entry.folder = static_cast<std::int32_t>(folder.number);
        entry.original = folder.present.original ? EntryKind::Folder : EntryKind::None;
        entry.modified = folder.present.modified ? EntryKind::Folder : EntryKind::None;
        entry.content = content;
        if (scan_.Shows(entry))
            scan_.Publish(entry);
    }
    std::vector<FolderFault> faults;
    PairContent content = PairContent::Same;

  private:
    FolderScan& scan_;
    std::shared_ptr<const TreeFolder> folder_;
};

class FolderScan::Found : public TreeFindings {
  public:
    Found(FolderScan& scan, std::shared_ptr<const TreeFolder> folder)
        : scan_(scan), folder_(std::move(folder)) {}
    void Publish() override {
        for (FolderFault& fault : faults)
            scan_.Tell(std::move(fault));
        for (ScannedEntry& entry : entries) {
            entry.name = scan_.names_.Add(entry.Name()).data();
            entry.folder = static_cast<std::int32_t>(folder_->number);
            scan_.Publish(entry);
        }
        if (scan_.events_ != nullptr)
            scan_.events_->OnFolderCompareProgress();
    }
    std::vector<ScannedEntry> entries;
    std::vector<FolderFault> faults;

  private:
    FolderScan& scan_;
    std::shared_ptr<const TreeFolder> folder_;
};

// ---- a run ----

void FolderScan::Start(const PerSide<std::string>& folders, const FolderScanOptions& options,
                       FolderCompareEvents* events) {
    Release();
    PerSide<std::unique_ptr<FolderHandle>> roots;
    std::vector<FolderFault> faults;
    for (const Side side : kBothSides) {
        if (const SystemError error = OpenFolder(folders[side], roots[side]))
            faults.push_back({error.code, folders[side] + ": " + error.Words()});
    }
    if (!faults.empty())
        roots = {};
    StartIn(std::move(roots), folders, options, events);
    for (FolderFault& fault : faults)
        Tell(std::move(fault));
}

void FolderScan::StartIn(PerSide<std::unique_ptr<FolderHandle>> roots,
                         const PerSide<std::string>& folders, const FolderScanOptions& options,
                         FolderCompareEvents* events) {
    Release();
    work_.reset();
    entries_.Clear();
    folders_.Clear();
    faults_.Clear();
    names_.Clear();
    looked_at_ = 0;
    options_ = options;
    patterns_ = FilePatterns(options.file_types);
    roots_ = {WithSeparator(folders.original), WithSeparator(folders.modified)};
    events_ = events;
    if (events_ != nullptr)
        events_->OnFolderCompareStarted();
    if (roots.original == nullptr || roots.modified == nullptr)
        return;
    work_ = std::make_unique<OrderedWork>(
        options.threads,
        options.behind_windows ? std::function<void()>(StandBehindWindows) : nullptr);
    pairs_.clear();
    for (int thread = 0; thread < work_->Threads(); ++thread)
        pairs_.emplace_back(options.rules);
    work_->Start(WalkTree(std::move(roots), *this));
}

void FolderScan::Abort() {
    if (work_)
        work_->Abort();
}

void FolderScan::Release() {
    Abort();
    Join();
}

void FolderScan::Join() {
    if (work_)
        work_->Join();
}

void FolderScan::Publish(ScannedEntry entry) {
    entries_.Append(entry);
}

void FolderScan::Tell(FolderFault fault) {
    if (events_ != nullptr)
        events_->OnFolderCompareError(fault.code, fault.message);
    faults_.Append(std::move(fault));
}

// ---- the walk ----

bool FolderScan::WantsFile(std::string_view name) {
    return (options_.hidden || !name.starts_with('.')) && patterns_.Matches(name);
}

FolderUse FolderScan::UseOf(std::string_view name) {
    if (!options_.hidden && name.starts_with('.'))
        return FolderUse::Skip;
    return options_.subfolders ? FolderUse::Walk : FolderUse::NameOnly;
}

std::unique_ptr<TreeFindings> FolderScan::Folder(const std::shared_ptr<const TreeFolder>& folder,
                                                 const PerSide<SystemError>& errors) {
    auto found = std::make_unique<FoundFolder>(*this, folder);
    for (const Side side : kBothSides) {
        if (!errors[side])
            continue;
        found->faults.push_back(
            {errors[side].code, PathOf(side, folder->Below()) + ": " + errors[side].Words()});
        found->content = PairContent::Failed;
    }
    return found;
}

std::unique_ptr<TreeFindings> FolderScan::Files(const std::shared_ptr<const TreeFolder>& folder,
                                                const PerSide<FolderHandle*>& handles,
                                                std::span<const TreeEntry> files, int thread,
                                                const OrderedWork& stop) {
    auto found = std::make_unique<Found>(*this, folder);
    found->entries.reserve(files.size());
    FilePairs& pairs = pairs_[static_cast<std::size_t>(thread)];
    for (const TreeEntry& file : files) {
        if (stop.Aborted())
            break;
        if (!ShowsSide(file))
            continue;
        const PairVerdict verdict = pairs.Compare(file, handles, stop);
        TakeFaults(*folder, file.Name(), verdict, found->faults);
        const ScannedEntry entry = EntryOf(file, verdict);
        if (Shows(entry))
            found->entries.push_back(entry);
    }
    looked_at_.fetch_add(static_cast<std::int64_t>(files.size()), std::memory_order_relaxed);
    return found;
}

// What is on one side only and not wanted is not even looked up.
bool FolderScan::ShowsSide(const TreeEntry& entry) const {
    if (entry.InBoth())
        return true;
    return entry.kinds.original != EntryKind::None ? options_.show_only_original
                                                   : options_.show_only_modified;
}

bool FolderScan::Shows(const ScannedEntry& entry) const {
    if (!entry.InBoth())
        return entry.Has(Side::Original) ? options_.show_only_original
                                         : options_.show_only_modified;
    const bool dates = !options_.ignore_dates && entry.DateSign() != 0;
    const bool same = entry.content == PairContent::Same && entry.SizeSign() == 0 && !dates;
    return same ? options_.show_same : options_.show_different;
}

void FolderScan::TakeFaults(const TreeFolder& folder, std::string_view name,
                            const PairVerdict& verdict, std::vector<FolderFault>& faults) const {
    for (const Side side : kBothSides) {
        if (const SystemError error = verdict.errors[side])
            faults.push_back({error.code, PathOf(side, folder.Below() + std::string(name)) + ": " +
                                              error.Words()});
    }
    if (verdict.shrank && !verdict.errors.original && !verdict.errors.modified)
        faults.push_back({-1, PathOf(Side::Original, folder.Below() + std::string(name)) +
                                  ": one of the two files became shorter while it was read"});
}

// ---- records ----

std::string FolderScan::PathOf(Side side, std::string_view below) const {
    std::string path = roots_[side];
    const char separator = path.back();
    if (separator == '/')
        return path.append(below);
    for (const char character : below)
        path += character == '/' ? separator : character;
    return path;
}

std::string FolderScan::FolderBelow(std::int32_t number) const {
    std::vector<std::string_view> way;
    for (std::int32_t step = number; step > 0; step = Folder(step).parent)
        way.push_back(Folder(step).name);
    std::string below;
    for (auto name = way.rbegin(); name != way.rend(); ++name)
        below.append(*name) += '/';
    return below;
}

FolderRecord FolderScan::Record(std::size_t index) const {
    const ScannedEntry& entry = entries_[index];
    const std::string below = FolderBelow(entry.folder);
    FolderRecord record;
    record.Record = static_cast<std::int32_t>(index);
    if (!entry.IsFolder())
        record.FileName = entry.Name();
    record.DirMaster = PathOf(Side::Original, below);
    record.DirSource = PathOf(Side::Modified, below);
    record.IsFile = entry.IsFolder() ? 0 : 1;
    record.OnlyInMaster = entry.InBoth() || !entry.Has(Side::Original) ? 0 : 1;
    record.OnlyInSource = entry.InBoth() || !entry.Has(Side::Modified) ? 0 : 1;
    record.SizeDifferent = entry.SizeSign();
    record.DateDifferent = entry.DateSign();
    record.ContentDifferent = static_cast<std::int32_t>(entry.content);
    return record;
}

std::string FolderScan::PathBelow(std::size_t index) const {
    const ScannedEntry& entry = entries_[index];
    std::string below = FolderBelow(entry.folder);
    return entry.IsFolder() ? below : below.append(entry.Name());
}

}  // namespace zorvane
