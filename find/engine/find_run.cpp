#include "find/engine/find_run.h"

#include <cerrno>
#include <utility>

#include "common/platform/native_path.h"
#include "common/platform/thread_priority.h"

namespace zorvane {
namespace {

std::string WithSeparator(const std::string& folder) {
    return folder.empty() || IsPathSeparator(folder.back()) ? folder : folder + "/";
}

}  // namespace

class FindRun::Findings : public TreeFindings {
  public:
    explicit Findings(FindReceiver& receiver) : receiver_(receiver) {}
    void Publish() override {
        for (Found& one : found)
            receiver_.Take(std::move(one.file), std::move(one.rendered));
    }
    struct Found {
        FoundFile file;
        std::string rendered;
    };
    std::vector<Found> found;

  private:
    FindReceiver& receiver_;
};

SystemError FindRun::Start(const LineFinder& finder, const FindRunOptions& options,
                           FindReceiver& receiver, std::function<void()> ended) {
    Clear();
    work_.reset();
    options_ = options;
    patterns_ = FilePatterns(options.file_types);
    receiver_ = &receiver;
    only_.clear();
    root_ = WithSeparator(options.folder);
    PerSide<std::unique_ptr<FolderHandle>> roots;
    SystemError error = OpenFolder(options.folder.empty() ? "." : options.folder, roots.original);
    if (error.code == ENOTDIR) {
        only_ = FileNameOf(options.folder);
        root_ = options.folder.substr(0, options.folder.size() - only_.size());
        error = OpenFolder(root_.empty() ? "." : root_, roots.original);
    }
    if (error)
        return error;
    work_ = std::make_unique<OrderedWork>(
        options.threads,
        options.behind_windows ? std::function<void()>(StandBehindWindows) : nullptr);
    searches_.clear();
    for (int thread = 0; thread < work_->Threads(); ++thread)
        searches_.emplace_back(finder, options.rules);
    work_->Start(WalkTree(std::move(roots), *this), std::move(ended));
    return {};
}

void FindRun::Abort() {
    if (work_)
        work_->Abort();
}

void FindRun::Join() {
    if (work_)
        work_->Join();
}

void FindRun::Release() {
    Abort();
    Join();
}

void FindRun::Clear() {
    Release();
    files_ = binary_ = failed_ = 0;
}

bool FindRun::WantsFile(std::string_view name) {
    if (!only_.empty())
        return name == only_;
    return (options_.hidden || !name.starts_with('.')) && patterns_.Matches(name);
}

FolderUse FindRun::UseOf(std::string_view name) {
    const bool wanted = options_.subfolders && only_.empty();
    return wanted && (options_.hidden || !name.starts_with('.')) ? FolderUse::Walk
                                                                 : FolderUse::Skip;
}

std::unique_ptr<TreeFindings> FindRun::Folder(const std::shared_ptr<const TreeFolder>& folder,
                                              const PerSide<SystemError>& errors) {
    if (!errors.original)
        return nullptr;
    ++failed_;
    auto findings = std::make_unique<Findings>(*receiver_);
    FoundFile fault;
    fault.path = root_ + folder->Below();
    fault.end = FileEnd::Failed;
    fault.code = errors.original.code;
    fault.reason = errors.original.Words();
    findings->found.push_back({std::move(fault), {}});
    return findings;
}

std::unique_ptr<TreeFindings> FindRun::Files(const std::shared_ptr<const TreeFolder>& folder,
                                             const PerSide<FolderHandle*>& handles,
                                             std::span<const TreeEntry> files, int thread,
                                             const OrderedWork& stop) {
    auto findings = std::make_unique<Findings>(*receiver_);
    const std::string below = root_ + folder->Below();
    FoundFile found;  // its memory serves file after file where the receiver drops what is in it
    const std::function<bool()> stopped = [&stop] { return stop.Aborted(); };
    for (const TreeEntry& entry : files) {
        if (stop.Aborted())
            break;
        // One that was asked for by name may be a link.
        const bool plain = entry.kinds.original == EntryKind::File ||
                           entry.kinds.original == EntryKind::Unknown || !only_.empty();
        if (!plain)
            continue;
        found.Reset();
        found.path = below + std::string(entry.Name());
        SearchOne(entry, *handles.original, thread, found, stopped);
        ++files_;
        binary_ += found.end == FileEnd::Binary ? 1 : 0;
        failed_ += found.end == FileEnd::Failed ? 1 : 0;
        if (found.hits == 0 && found.reason.empty())
            continue;
        std::string rendered = receiver_->Render(found, thread);
        findings->found.push_back({found.Take(), std::move(rendered)});
    }
    return findings;
}

void FindRun::SearchOne(const TreeEntry& entry, FolderHandle& handle, int thread, FoundFile& found,
                        const std::function<bool()>& stop) {
    FileSearch& search = searches_[static_cast<std::size_t>(thread)];
    if (options_.documents != nullptr && options_.documents->IsDocument(entry.Name())) {
        DocumentTexts::Text text = options_.documents->TextOf(found.path, stop);
        if (stop())
            return;
        if (!text.text) {
            found.end = FileEnd::Failed;
            found.code = text.wants_password ? kWantsPassword : -1;
            found.reason = text.reason;
            return;
        }
        search.SearchText(*text.text, found, stop);
        found.place = std::move(text.place);
        return;
    }
    std::unique_ptr<OpenedFile> file;
    if (const SystemError error =
            handle.OpenFile(entry.name, only_.empty() ? FollowLink::No : FollowLink::Yes, file)) {
        found.end = FileEnd::Failed;
        found.code = error.code;
        found.reason = error.Words();
        return;
    }
    search.Search(*file, found, stop);
}

}  // namespace zorvane
