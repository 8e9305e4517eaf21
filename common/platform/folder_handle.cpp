#include "common/platform/folder_handle.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <mutex>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

#include "common/platform/file_descriptor.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

SystemError LastError() {
    return SystemError{errno};
}

EntryKind KindOfMode(mode_t mode) {
    if (S_ISREG(mode))
        return EntryKind::File;
    if (S_ISDIR(mode))
        return EntryKind::Folder;
    return S_ISLNK(mode) ? EntryKind::Link : EntryKind::Special;
}

EntryKind KindOfListed(unsigned char type) {
    switch (type) {
        case DT_REG:
            return EntryKind::File;
        case DT_DIR:
            return EntryKind::Folder;
        case DT_LNK:
            return EntryKind::Link;
        case DT_UNKNOWN:
            return EntryKind::Unknown;
        default:
            return EntryKind::Special;
    }
}

EntryFacts FactsOf(const struct stat& told) {
    EntryFacts facts;
    facts.kind = KindOfMode(told.st_mode);
    if (facts.kind == EntryKind::Special) {
        constexpr unsigned kBehindMode = 16;
        const bool device = S_ISBLK(told.st_mode) || S_ISCHR(told.st_mode);
        facts.special = told.st_mode & S_IFMT;
        facts.special |= device ? std::uint64_t{told.st_rdev} << kBehindMode : 0;
    }
    facts.size = told.st_size;
    facts.seconds = told.st_mtim.tv_sec;
    facts.device = told.st_dev;
    facts.inode = told.st_ino;
    return facts;
}

class PosixFile : public OpenedFile {
  public:
    explicit PosixFile(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

    SystemError Facts(EntryFacts& facts) override {
        struct stat told {};
        if (fstat(descriptor_.Get(), &told) != 0)
            return LastError();
        facts = FactsOf(told);
        return {};
    }
    SystemError Read(std::span<char> buffer, std::size_t& got) override {
        while (true) {
            const ssize_t count = read(descriptor_.Get(), buffer.data(), buffer.size());
            if (count < 0 && errno == EINTR)
                continue;
            got = count < 0 ? 0 : static_cast<std::size_t>(count);
            return count < 0 ? LastError() : SystemError{};
        }
    }

  private:
    FileDescriptor descriptor_;
};

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

std::atomic<std::int64_t> open_folders{0};

// Files of many threads and what else the process holds need the other half.
std::int64_t FoldersHeldOpen() {
    static std::once_flag once;
    static std::int64_t most = 0;
    std::call_once(once, [] {
        struct rlimit limit {};
        if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
            return;
        limit.rlim_cur = limit.rlim_max;
        if (setrlimit(RLIMIT_NOFILE, &limit) != 0 && getrlimit(RLIMIT_NOFILE, &limit) != 0)
            return;
        most = static_cast<std::int64_t>(std::min<rlim_t>(limit.rlim_cur, 1 << 20)) / 2;
    });
    return most;
}

// Where a folder lies below the root, which stays open: the way back to one that was let go.
struct Place {
    std::shared_ptr<const Place> parent;
    std::string name;
    FileDescriptor root;  // of the root alone
};

FileDescriptor OpenAgain(const Place& place) {
    if (place.root.IsOpen())
        return FileDescriptor(openat(place.root.Get(), ".", kFolderFlags));
    std::vector<const Place*> way;
    const Place* step = &place;
    for (; !step->root.IsOpen(); step = step->parent.get())
        way.push_back(step);
    FileDescriptor open;
    for (auto below = way.rbegin(); below != way.rend(); ++below) {
        const int from = open.IsOpen() ? open.Get() : step->root.Get();
        open = FileDescriptor(openat(from, (*below)->name.c_str(), kFolderFlags | O_NOFOLLOW));
        if (!open.IsOpen())
            break;
    }
    return open;
}

class PosixFolder : public FolderHandle {
  public:
    PosixFolder(std::shared_ptr<const Place> place, FileDescriptor descriptor)
        : place_(std::move(place)), descriptor_(std::move(descriptor)) {
        if (descriptor_.IsOpen() && ++open_folders > FoldersHeldOpen())
            LetGo();
    }
    ~PosixFolder() override { LetGo(); }
    PosixFolder(const PosixFolder&) = delete;
    PosixFolder& operator=(const PosixFolder&) = delete;

    SystemError List(FolderListing& listing, const std::function<bool()>& stop) override {
        const Use use(*this);
        if (use.Error())
            return use.Error();
        if (lseek(use.Get(), 0, SEEK_SET) != 0)
            return LastError();
        constexpr std::size_t kBuffer = std::size_t{64} << 10;
        const auto buffer = std::make_unique_for_overwrite<char[]>(kBuffer);
        while (!stop()) {
            const long got = syscall(SYS_getdents64, use.Get(), buffer.get(), kBuffer);
            if (got < 0)
                return LastError();
            if (got == 0)
                return {};
            TakeEntries(use.Get(), {buffer.get(), static_cast<std::size_t>(got)}, listing);
        }
        return {};
    }

    SystemError OpenFolder(const char* name, std::unique_ptr<FolderHandle>& folder) override {
        const Use use(*this);
        if (use.Error())
            return use.Error();
        FileDescriptor below(openat(use.Get(), name, kFolderFlags | O_NOFOLLOW));
        if (!below.IsOpen())
            return LastError();
        auto place = std::make_shared<const Place>(Place{place_, name, {}});
        folder = std::make_unique<PosixFolder>(std::move(place), std::move(below));
        return {};
    }

    SystemError OpenFile(const char* name, FollowLink follow,
                         std::unique_ptr<OpenedFile>& file) override {
        const Use use(*this);
        if (use.Error())
            return use.Error();
        const int link = follow == FollowLink::Yes ? 0 : O_NOFOLLOW;
        FileDescriptor open(
            openat(use.Get(), name, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | link));
        if (!open.IsOpen())
            return LastError();
        file = std::make_unique<PosixFile>(std::move(open));
        return {};
    }

    SystemError Facts(const char* name, FollowLink follow, EntryFacts& facts) override {
        const Use use(*this);
        if (use.Error())
            return use.Error();
        struct stat told {};
        const int link = follow == FollowLink::Yes ? 0 : AT_SYMLINK_NOFOLLOW;
        if (fstatat(use.Get(), name, &told, link) != 0)
            return LastError();
        facts = FactsOf(told);
        return {};
    }

    SystemError ReadLink(const char* name, std::string& text) override {
        const Use use(*this);
        if (use.Error())
            return use.Error();
        std::array<char, 4096> buffer{};  // longer than the system lets a link be
        const ssize_t length = readlinkat(use.Get(), name, buffer.data(), buffer.size());
        if (length < 0)
            return LastError();
        text.assign(buffer.data(), static_cast<std::size_t>(length));
        return {};
    }

  private:
    // The folder's descriptor for one call, opened again when it was let go.
    class Use {
      public:
        explicit Use(const PosixFolder& folder) {
            number_ = folder.descriptor_.Get();
            if (number_ >= 0)
                return;
            again_ = OpenAgain(*folder.place_);
            number_ = again_.Get();
            if (number_ < 0)
                error_ = LastError();
        }
        int Get() const { return number_; }
        SystemError Error() const { return error_; }

      private:
        FileDescriptor again_;
        int number_ = -1;
        SystemError error_;
    };

    void LetGo() {
        if (!descriptor_.IsOpen())
            return;
        descriptor_.Close();
        --open_folders;
    }

    // The system writes one entry after the other, each with its own length.
    static void TakeEntries(int folder, std::span<const char> bytes, FolderListing& listing) {
        for (std::size_t at = 0; at < bytes.size();) {
            std::uint16_t length = 0;
            std::memcpy(&length, bytes.data() + at + offsetof(dirent64, d_reclen), sizeof length);
            const auto type = static_cast<unsigned char>(bytes[at + offsetof(dirent64, d_type)]);
            const char* name = bytes.data() + at + offsetof(dirent64, d_name);
            at += length;
            const std::string_view text(name);
            if (text == "." || text == "..")
                continue;
            EntryKind kind = KindOfListed(type);
            struct stat told {};
            if (kind == EntryKind::Unknown &&
                fstatat(folder, name, &told, AT_SYMLINK_NOFOLLOW) == 0)
                kind = KindOfMode(told.st_mode);
            listing.Add(text, kind);
        }
    }

    std::shared_ptr<const Place> place_;
    FileDescriptor descriptor_;
};

}  // namespace

std::string SystemError::Words() const {
    return std::generic_category().message(code);
}

void FolderListing::Add(std::string_view name, EntryKind kind) {
    entries_.push_back({names_.size(), static_cast<std::uint32_t>(name.size()), kind});
    names_.insert(names_.end(), name.begin(), name.end());
    names_.push_back('\0');
}

bool FolderListing::Less(const Entry& one, const Entry& two) const {
    const int order = std::memcmp(names_.data() + one.offset, names_.data() + two.offset,
                                  std::min(one.length, two.length));
    return order != 0 ? order < 0 : one.length < two.length;
}

void FolderListing::Sort(const std::function<bool()>& stop) {
    // A million names take half a second in one piece.
    constexpr std::size_t kRun = 1 << 15;
    const auto less = [this](const Entry& one, const Entry& two) { return Less(one, two); };
    const auto place = [this](std::size_t index) {
        return entries_.begin() + static_cast<std::ptrdiff_t>(std::min(index, entries_.size()));
    };
    const auto stopped = [&stop] { return stop && stop(); };
    for (std::size_t at = 0; at < entries_.size() && !stopped(); at += kRun)
        std::sort(place(at), place(at + kRun), less);
    for (std::size_t run = kRun; run < entries_.size(); run *= 2) {
        for (std::size_t at = 0; at + run < entries_.size() && !stopped(); at += 2 * run)
            std::inplace_merge(place(at), place(at + run), place(at + 2 * run), less);
    }
}

SystemError OpenFolder(const std::string& path, std::unique_ptr<FolderHandle>& folder) {
    FoldersHeldOpen();
    const std::string native = NativePath(path);
    FileDescriptor root(open(native.c_str(), kFolderFlags));
    if (!root.IsOpen())
        return LastError();
    FileDescriptor own(openat(root.Get(), ".", kFolderFlags));
    if (!own.IsOpen())
        return LastError();
    auto place = std::make_shared<Place>();
    place->root = std::move(root);
    folder = std::make_unique<PosixFolder>(std::move(place), std::move(own));
    return {};
}

}  // namespace zorvane
