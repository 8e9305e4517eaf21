// One open folder: what is in it, its files and its subfolders, without building a path for each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// What a name in a folder stands for. A link is never taken for what it leads to.
enum class EntryKind : std::uint8_t {
    None,  ///< there is no such name
    File,  ///< a regular file
    Folder,
    Link,     ///< symbolic
    Special,  ///< a pipe, a socket, a device
    Unknown   ///< the system would not say
};

/// An error number of the system, 0 for none.
struct [[nodiscard]] SystemError {
    int code = 0;

    explicit operator bool() const { return code != 0; }
    std::string Words() const;  ///< "No such file or directory"
    friend bool operator==(const SystemError&, const SystemError&) = default;
};

struct EntryFacts {
    EntryKind kind = EntryKind::None;
    std::uint64_t special = 0;  ///< which kind of special file, and which device
    std::int64_t size = 0;      ///< bytes; of a link, of its text
    std::int64_t seconds = 0;   ///< of the last change of its content, since 1970
    std::uint64_t device = 0;   ///< with `inode`: tells two names of one file
    std::uint64_t inode = 0;
};

/// Names in one piece of memory, each ended by a NUL, so that they go to the system as they are.
class FolderListing {
  public:
    void Add(std::string_view name, EntryKind kind);
    std::size_t size() const { return entries_.size(); }
    std::string_view Name(std::size_t index) const {
        return {names_.data() + entries_[index].offset, entries_[index].length};
    }
    EntryKind Kind(std::size_t index) const { return entries_[index].kind; }
    /// By the bytes of the names. `stop` is asked every few milliseconds; after a stop the order is
    /// any.
    void Sort(const std::function<bool()>& stop = {});
    /// Keeps the names alone, which stay where they are.
    void DropEntries() { entries_ = {}; }

  private:
    struct Entry {
        std::uint64_t offset = 0;
        std::uint32_t length = 0;
        EntryKind kind = EntryKind::Unknown;
    };
    bool Less(const Entry& one, const Entry& two) const;

    std::vector<char> names_;
    std::vector<Entry> entries_;
};

/// A regular file, open for reading; closes itself.
class OpenedFile {
  public:
    virtual ~OpenedFile() = default;
    virtual SystemError Facts(EntryFacts& facts) = 0;
    /// `got` 0 at the end. May give less than there is.
    virtual SystemError Read(std::span<char> buffer, std::size_t& got) = 0;
};

enum class FollowLink { No, Yes };

/// Closes itself. Several threads may use one at once. A name is that of an entry, NUL-terminated.
class FolderHandle {
  public:
    virtual ~FolderHandle() = default;
    /// Without "." and "..", in any order. `stop` is asked every few milliseconds; after a stop
    /// names are missing.
    virtual SystemError List(FolderListing& listing, const std::function<bool()>& stop) = 0;
    virtual SystemError OpenFolder(const char* name, std::unique_ptr<FolderHandle>& folder) = 0;
    /// Anything but a regular file fails and is not waited for.
    virtual SystemError OpenFile(const char* name, FollowLink follow,
                                 std::unique_ptr<OpenedFile>& file) = 0;
    virtual SystemError Facts(const char* name, FollowLink follow, EntryFacts& facts) = 0;
    virtual SystemError ReadLink(const char* name, std::string& text) = 0;
};

/// The folder of that name, as a user gives it; a link to a folder is followed. Raises the limit of
/// open files; a tree deeper than that is walked all the same.
SystemError OpenFolder(const std::string& path, std::unique_ptr<FolderHandle>& folder);

}  // namespace zorvane
