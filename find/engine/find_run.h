// All files of a folder tree looked through, on several threads, with results in a steady order.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "common/file_patterns.h"
#include "common/tree_walk.h"
#include "find/engine/file_search.h"

namespace zorvane {

/// The code of a document that a password would open.
constexpr std::int32_t kWantsPassword = 510;

/// The texts of documents, by whoever reads these.
class DocumentTexts {
  public:
    struct Text {
        std::shared_ptr<const std::string> text;  ///< nothing: `reason` says why
        std::string reason;
        FoundPlace place;
        bool wants_password = false;
    };
    virtual ~DocumentTexts() = default;
    /// By its name; what is none is read as text.
    virtual bool IsDocument(std::string_view name) = 0;
    /// While no text is asked for: what may open those that are protected.
    virtual void UsePasswords(const std::vector<std::string>& /*passwords*/) {}
    /// On any thread, several at once.
    virtual Text TextOf(const std::string& path, const std::function<bool()>& stop) = 0;
};

/// Who gets the results.
class FindReceiver {
  public:
    virtual ~FindReceiver() = default;
    /// On any thread, several at once: what takes time. Comes back with `Take`. What is not needed
    /// there may be dropped here.
    virtual std::string Render(FoundFile&, int /*thread*/) { return {}; }
    /// In the order of the tree and never two at once: files with hits, and with a reason.
    virtual void Take(FoundFile&& file, std::string&& rendered) = 0;
};

struct FindRunOptions {
    std::string folder;      ///< or one file; empty: the folder one is in, paths without it
    std::string file_types;  ///< see `FilePatterns`
    bool subfolders = true;
    bool hidden = true;  ///< names that begin with "."
    FileSearchRules rules;
    DocumentTexts* documents = nullptr;  ///< nullptr: all are read as they are
    int threads = 0;
    bool behind_windows = false;  ///< leaves processors to a window that a person looks at
};

struct FindCounts {
    std::int64_t files = 0;  ///< that were looked through, binary ones too
    std::int64_t binary = 0;
    std::int64_t failed = 0;  ///< files and folders
};

class FindRun : private TreeJob {
  public:
    FindRun() = default;
    ~FindRun() override { Release(); }
    FindRun(const FindRun&) = delete;
    FindRun& operator=(const FindRun&) = delete;

    /// Comes back at once. A folder that cannot be opened is the failure. `finder` and `receiver`
    /// outlive the run; `ended` as for `OrderedWork`.
    SystemError Start(const LineFinder& finder, const FindRunOptions& options,
                      FindReceiver& receiver, std::function<void()> ended = {});
    bool Busy() const { return work_ && work_->Busy(); }
    void Abort();
    bool Aborted() const { return work_ && work_->Aborted(); }
    void Join();
    void Release();  ///< aborts and waits
    void Clear();    ///< the same, and nothing is counted any more
    FindCounts Counts() const { return {files_.load(), binary_.load(), failed_.load()}; }

  private:
    class Findings;

    bool WantsFile(std::string_view name) override;
    FolderUse UseOf(std::string_view name) override;
    std::unique_ptr<TreeFindings> Folder(const std::shared_ptr<const TreeFolder>& folder,
                                         const PerSide<SystemError>& errors) override;
    std::unique_ptr<TreeFindings> Files(const std::shared_ptr<const TreeFolder>& folder,
                                        const PerSide<FolderHandle*>& handles,
                                        std::span<const TreeEntry> files, int thread,
                                        const OrderedWork& stop) override;
    void SearchOne(const TreeEntry& entry, FolderHandle& handle, int thread, FoundFile& found,
                   const std::function<bool()>& stop);

    FindRunOptions options_;
    FilePatterns patterns_;
    std::string only_;  // the one file that is looked through
    std::string root_;  // with a separator behind
    FindReceiver* receiver_ = nullptr;
    std::vector<FileSearch> searches_;  // one for each thread
    std::atomic<std::int64_t> files_{0};
    std::atomic<std::int64_t> binary_{0};
    std::atomic<std::int64_t> failed_{0};
    std::unique_ptr<OrderedWork> work_;  // the last member: its threads use all the others
};

}  // namespace zorvane
