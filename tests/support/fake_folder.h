// A folder tree in memory, with faults where a test wants them.
#pragma once

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "common/platform/folder_handle.h"

namespace zorvane {

/// What a name stands for. A fault is the error number that the call gives.
struct FakeEntry {
    EntryFacts facts{EntryKind::File, 0, 0, 0, 1, 0};
    std::string bytes;                         ///< of a file; the text of a link
    std::map<std::string, FakeEntry> entries;  ///< of a folder
    int open_fault = 0;
    int list_fault = 0;
    bool endless = false;  ///< its list goes on until a stop
    int read_fault = 0;    ///< after the first half of the bytes
    std::int64_t told_size = -1;
};

inline FakeEntry FakeFile(std::string bytes, std::int64_t seconds = 0) {
    FakeEntry entry;
    entry.facts.size = static_cast<std::int64_t>(bytes.size());
    entry.facts.seconds = seconds;
    entry.bytes = std::move(bytes);
    return entry;
}
inline FakeEntry FakeTree(std::map<std::string, FakeEntry> entries) {
    FakeEntry entry;
    entry.facts.kind = EntryKind::Folder;
    entry.entries = std::move(entries);
    return entry;
}

class FakeOpenedFile : public OpenedFile {
  public:
    explicit FakeOpenedFile(const FakeEntry& entry) : entry_(entry) {}
    SystemError Facts(EntryFacts& facts) override {
        facts = entry_.facts;
        facts.inode = reinterpret_cast<std::uintptr_t>(&entry_);  // no two are one file
        if (entry_.told_size >= 0)
            facts.size = entry_.told_size;
        return {};
    }
    SystemError Read(std::span<char> buffer, std::size_t& got) override {
        if (entry_.read_fault != 0 && at_ >= entry_.bytes.size() / 2)
            return SystemError{entry_.read_fault};
        got = std::min({buffer.size(), entry_.bytes.size() - at_, kMost});
        std::copy_n(entry_.bytes.begin() + static_cast<std::ptrdiff_t>(at_), got, buffer.begin());
        at_ += got;
        return {};
    }

  private:
    static constexpr std::size_t kMost = 5;  // a read may give less than there is
    const FakeEntry& entry_;
    std::size_t at_ = 0;
};

/// `root` outlives the handle.
class FakeFolder : public FolderHandle {
  public:
    explicit FakeFolder(const FakeEntry& root) : root_(root) {}
    SystemError List(FolderListing& listing, const std::function<bool()>& stop) override {
        while (root_.endless && !stop())
            std::this_thread::yield();
        for (auto entry = root_.entries.rbegin(); entry != root_.entries.rend(); ++entry)
            listing.Add(entry->first, entry->second.facts.kind);
        return SystemError{root_.list_fault};
    }
    SystemError OpenFolder(const char* name, std::unique_ptr<FolderHandle>& folder) override {
        const FakeEntry* entry = Find(name);
        if (entry == nullptr || entry->open_fault != 0)
            return SystemError{entry == nullptr ? ENOENT : entry->open_fault};
        folder = std::make_unique<FakeFolder>(*entry);
        return {};
    }
    SystemError OpenFile(const char* name, FollowLink /*follow*/,
                         std::unique_ptr<OpenedFile>& file) override {
        const FakeEntry* entry = Find(name);
        if (entry == nullptr || entry->open_fault != 0)
            return SystemError{entry == nullptr ? ENOENT : entry->open_fault};
        file = std::make_unique<FakeOpenedFile>(*entry);
        return {};
    }
    SystemError Facts(const char* name, FollowLink /*follow*/, EntryFacts& facts) override {
        const FakeEntry* entry = Find(name);
        if (entry == nullptr)
            return SystemError{ENOENT};
        facts = entry->facts;
        return {};
    }
    SystemError ReadLink(const char* name, std::string& text) override {
        const FakeEntry* entry = Find(name);
        text = entry == nullptr ? "" : entry->bytes;
        return SystemError{entry == nullptr ? ENOENT : 0};
    }

  private:
    const FakeEntry* Find(const char* name) const {
        const auto found = root_.entries.find(name);
        const bool gone = found == root_.entries.end() || found->second.open_fault == ENOENT;
        return gone ? nullptr : &found->second;
    }
    const FakeEntry& root_;
};

}  // namespace zorvane
