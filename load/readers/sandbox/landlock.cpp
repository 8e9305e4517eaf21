#include "load/readers/sandbox/landlock.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "common/platform/file_descriptor.h"
#include "common/platform/system_failure.h"

namespace zorvane {
namespace {

// Of the kernel's interface, whose header is older than its newest version on most systems.
constexpr long kCreateRuleset = 444;
constexpr long kAddRule = 445;
constexpr long kRestrictSelf = 446;
constexpr unsigned kAskVersion = 1;
constexpr int kBeneathPath = 1;

struct RulesetAttributes {
    std::uint64_t files;
    std::uint64_t network;
    std::uint64_t scoped;
};
struct [[gnu::packed]] PathAttributes {
    std::uint64_t allowed;
    std::int32_t folder;
};

constexpr std::uint64_t Bit(int number) {
    return std::uint64_t{1} << number;
}
constexpr std::uint64_t kExecute = Bit(0);
constexpr std::uint64_t kWriteFile = Bit(1);
constexpr std::uint64_t kReadFile = Bit(2);
constexpr std::uint64_t kReadFolder = Bit(3);
constexpr std::uint64_t kMakeCharacterDevice = Bit(6);
constexpr std::uint64_t kMakeSocket = Bit(9);
constexpr std::uint64_t kMakeBlockDevice = Bit(11);
constexpr std::uint64_t kTruncate = Bit(14);
constexpr std::uint64_t kDeviceControl = Bit(15);
constexpr std::uint64_t kNetwork = Bit(0) | Bit(1);  // TCP: bind, connect
constexpr std::uint64_t kScoped = Bit(0) | Bit(1);   // abstract sockets, signals
// What a rule for a single file may hold.
constexpr std::uint64_t kOfFiles = kExecute | kWriteFile | kReadFile | kTruncate | kDeviceControl;

// What versions 1 to 6 handle of files; an unknown bit would make the call fail.
std::uint64_t FileBits(int version) {
    constexpr int kFirst = 13;
    std::uint64_t bits = Bit(kFirst) - 1;
    if (version >= 2)
        bits |= Bit(13);  // REFER
    if (version >= 3)
        bits |= kTruncate;
    if (version >= 5)
        bits |= kDeviceControl;
    return bits;
}

std::size_t SizeAt(int version) {
    if (version >= 6)
        return sizeof(RulesetAttributes);
    return version >= 4 ? 2 * sizeof(std::uint64_t) : sizeof(std::uint64_t);
}

class Ruleset {
  public:
    explicit Ruleset(int version) : handled_(FileBits(version)) {
        const RulesetAttributes attributes{handled_, version >= 4 ? kNetwork : 0,
                                           version >= 6 ? kScoped : 0};
        rules_ = FileDescriptor(
            static_cast<int>(syscall(kCreateRuleset, &attributes, SizeAt(version), 0)));
    }

    bool IsOpen() const { return rules_.IsOpen(); }
    bool Allow(const std::vector<std::string>& paths, std::uint64_t rights) {
        return std::all_of(paths.begin(), paths.end(), [this, rights](const std::string& path) {
            return AllowOne(path, rights);
        });
    }
    bool Enforce() const { return syscall(kRestrictSelf, rules_.Get(), 0) == 0; }

  private:
    bool AllowOne(const std::string& path, std::uint64_t rights) {
        const FileDescriptor place(open(path.c_str(), O_PATH | O_CLOEXEC));
        struct stat facts {};
        if (!place.IsOpen() || fstat(place.Get(), &facts) != 0)
            return true;
        const std::uint64_t fitting = S_ISDIR(facts.st_mode) ? rights : rights & kOfFiles;
        const PathAttributes rule{fitting & handled_, place.Get()};
        return syscall(kAddRule, rules_.Get(), kBeneathPath, &rule, 0) == 0;
    }

    std::uint64_t handled_;
    FileDescriptor rules_;
};

}  // namespace

int LandlockVersion() {
    const long version = syscall(kCreateRuleset, nullptr, 0, kAskVersion);
    return static_cast<int>(std::max(version, 0L));
}

Status CloseFiles(const FolderRights& rights, int most_version) {
    const int version = std::min(LandlockVersion(), most_version);
    if (version < 1)
        return Failure{"the kernel has no Landlock"};
    Ruleset rules(version);
    if (!rules.IsOpen())
        return SystemFailure("Landlock: no rules can be made");
    constexpr std::uint64_t kRead = kReadFile | kReadFolder;
    constexpr std::uint64_t kNotOwn =
        kExecute | kMakeCharacterDevice | kMakeBlockDevice | kMakeSocket | kDeviceControl;
    const bool added = rules.Allow(rights.read_and_execute, kRead | kExecute) &&
                       rules.Allow(rights.read, kRead) &&
                       rules.Allow(rights.write_device, kReadFile | kWriteFile) &&
                       rules.Allow(rights.own, ~kNotOwn);
    if (!added)
        return SystemFailure("Landlock: a rule is refused");
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || !rules.Enforce())
        return SystemFailure("Landlock: the rules are refused");
    return Status::Ok();
}

}  // namespace zorvane
