#include "common/platform/private_folder.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "common/platform/file_lock.h"
#include "common/platform/process_end.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

constexpr const char* kName = "zorvane-XXXXXX";
constexpr const char* kOwnerFile = "/.owner";

std::string SystemFolder() {
    const std::string given = Environment("TMPDIR").value_or("");
    return given.empty() ? "/tmp" : given;
}

// It gets its name when it is locked already: who finds it unlocked finds an owner that ended.
FileDescriptor MarkAsOwned(const std::string& folder) {
    const std::string name = folder + kOwnerFile;
    const std::string unlocked = name + ".new";
    FileDescriptor file(open(unlocked.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (TryLock(file))
        rename(unlocked.c_str(), name.c_str());
    return file;
}

// A folder of this user whose owner ended without removing it.
bool IsAbandoned(const std::string& folder) {
    struct stat facts {};
    if (lstat(folder.c_str(), &facts) != 0 || !S_ISDIR(facts.st_mode) || facts.st_uid != geteuid())
        return false;
    return TryLock(
        FileDescriptor(open((folder + kOwnerFile).c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW)));
}

std::string SweptStamp(const std::string& system) {
    return system + "/.zorvane-swept-" + std::to_string(geteuid());
}

bool WasSweptToday(const std::string& stamp) {
    constexpr time_t kDay = 24L * 60 * 60;
    struct stat facts {};
    if (lstat(stamp.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_uid != geteuid())
        return false;
    const time_t age = time(nullptr) - facts.st_mtim.tv_sec;
    return age >= 0 && age < kDay;
}

void NoteSweep(const std::string& stamp) {
    const FileDescriptor file(
        open(stamp.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (file.IsOpen())
        futimens(file.Get(), nullptr);
}

// Reading a folder of 20,000 names takes 5 ms, as much as a small compare: where there are many it
// is done once a day.
void SweepAbandoned(const std::string& system) {
    constexpr int kMany = 1000;
    const std::string stamp = SweptStamp(system);
    if (WasSweptToday(stamp))
        return;
    int names = 0;
    std::error_code error;
    for (std::filesystem::directory_iterator at(system, error), end; !error && at != end;
         at.increment(error)) {
        ++names;
        const std::string_view path = at->path().native();
        const std::string_view name = path.substr(path.rfind('/') + 1);
        const bool ours = name.size() == std::strlen(kName) && name.starts_with("zorvane-");
        std::error_code ignored;
        if (ours && IsAbandoned(at->path().string()))
            std::filesystem::remove_all(at->path(), ignored);
    }
    if (names > kMany)
        NoteSweep(stamp);
}

}  // namespace

PrivateTempFiles::~PrivateTempFiles() {
    if (folder_.empty())
        return;
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
    KeepAtBadEnd();
}

Result<std::string> PrivateTempFiles::Folder() {
    const std::lock_guard guard(lock_);
    if (!folder_.empty())
        return folder_;
    const std::string system = SystemFolder();
    SweepAbandoned(system);
    std::string folder = system + "/" + kName;
    const EndingSignalsHeldBack until_it_is_known;
    if (mkdtemp(folder.data()) == nullptr)
        return Failure{system + ": no folder for temporary files can be made here (" +
                       std::strerror(errno) + "); TMPDIR names another place"};
    owner_ = MarkAsOwned(folder);
    if (!RemoveAtBadEnd(folder)) {
        rmdir(folder.c_str());
        return Failure{system + ": the name of the temporary folder is too long"};
    }
    folder_ = folder;
    return folder_;
}

Result<std::string> PrivateTempFiles::NewName(std::string_view prefix, std::string_view extension) {
    Result<std::string> folder = Folder();
    if (!folder.ok())
        return folder;
    return folder.value() + "/" + std::string(prefix) + std::to_string(++count_) + "." +
           std::string(extension);
}

Result<std::string> PrivateTempFiles::LastingFolder() {
    return SystemFolder();
}

}  // namespace zorvane
