#include "common/platform/process_end.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <mutex>
#include <new>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zorvane {
namespace {

// What a signal handler may read: plain memory and nothing that allocates.
constexpr std::size_t kFolderBytes = 512;
constexpr std::size_t kMostChildren = 64;
constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP};

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): a handler has no other way
std::array<char, kFolderBytes> folder_to_remove{};
std::atomic<bool> has_folder{false};
std::atomic<bool> ending{false};
std::atomic<int> told_to{-1};  // where the first ending signal goes
std::array<std::atomic<pid_t>, kMostChildren> children{};
struct HalfFile {
    enum State { Free, Taken, Named };
    std::atomic<int> state{Free};
    std::array<char, kFolderBytes> path{};
};
std::array<HalfFile, 8> half_files{};
// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)

void EndChildren() {
    for (std::atomic<pid_t>& entry : children) {
        const pid_t child = entry.exchange(0);
        if (child <= 0)
            continue;
        kill(-child, SIGKILL);
        kill(child, SIGKILL);
        while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
}

void UnlinkHalfFiles() {
    for (HalfFile& file : half_files) {
        if (file.state == HalfFile::Named)
            unlink(file.path.data());
    }
}

void RemoveFolderOnce() {
    // A child does it: after a fork it may only exec, which is all that it does. `_Fork` is the one
    // that a handler may call.
    const pid_t child = _Fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        execl("/bin/rm", "rm", "-rf", "--", folder_to_remove.data(), nullptr);
        _exit(1);
    }
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

// A child's own children die a moment after it, and may write until then.
void RemoveFolder() {
    if (!has_folder.exchange(false))
        return;
    constexpr int kTries = 40;
    constexpr timespec kPause{0, 25'000'000};
    struct stat facts {};
    for (int attempt = 0; attempt < kTries; ++attempt) {
        RemoveFolderOnce();
        if (lstat(folder_to_remove.data(), &facts) != 0)
            return;
        nanosleep(&kPause, nullptr);
    }
}

// The signal is blocked in the handler and so in the child that removes, which a second Ctrl-C does
// not stop.
extern "C" void CleanUpAndDie(int signal_number) {
    const auto byte = static_cast<unsigned char>(signal_number);
    const int error = errno;  // of what was interrupted
    if (const int pipe = told_to.exchange(-1); pipe >= 0 && write(pipe, &byte, 1) == 1) {
        errno = error;
        return;
    }
    ending = true;
    EndChildren();
    UnlinkHalfFiles();
    RemoveFolder();
    std::signal(signal_number, SIG_DFL);
    raise(signal_number);
}

extern "C" void PassOverSignal(int /*signal_number*/) {}

void WatchEndingSignals() {
    static std::once_flag once;
    std::call_once(once, [] {
        for (const int number : kEndingSignals) {
            if (std::signal(number, CleanUpAndDie) == SIG_IGN)
                std::signal(number, SIG_IGN);
        }
    });
}

void Complain(std::string_view text) {
    const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
    static_cast<void>(written);
}

[[noreturn]] void EndInTrouble() {
    constexpr int kTrouble = 2;
    try {
        if (const std::exception_ptr fault = std::current_exception())
            std::rethrow_exception(fault);
        Complain("zorvane: ended by a fault of its own\n");
    } catch (const std::bad_alloc&) {
        Complain("zorvane: not enough memory for these documents\n");
    } catch (const std::exception& fault) {
        Complain("zorvane: ended by a fault of its own: ");
        Complain(fault.what());
        Complain("\n");
    } catch (...) {
        Complain("zorvane: ended by a fault of its own\n");
    }
    CleanUpAndEnd(kTrouble);
}

}  // namespace

void PrepareForBadEndings() {
    std::set_terminate(EndInTrouble);
    // Handlers that do nothing: a child starts without them but would inherit SIG_IGN.
    std::signal(SIGPIPE, PassOverSignal);
    std::signal(SIGXFSZ, PassOverSignal);
}

bool IsEnding() {
    return ending;
}

bool RemoveAtBadEnd(const std::string& folder) {
    if (folder.size() >= kFolderBytes)
        return false;
    has_folder = false;
    folder_to_remove.fill('\0');
    folder.copy(folder_to_remove.data(), folder.size());
    has_folder = true;
    WatchEndingSignals();
    return true;
}

void KeepAtBadEnd() {
    has_folder = false;
}

int UnlinkAtBadEnd(const std::string& path) {
    if (path.size() >= kFolderBytes)
        return -1;
    WatchEndingSignals();
    for (std::size_t number = 0; number < half_files.size(); ++number) {
        HalfFile& file = half_files[number];
        int free = HalfFile::Free;
        if (!file.state.compare_exchange_strong(free, HalfFile::Taken))
            continue;
        file.path.fill('\0');
        path.copy(file.path.data(), path.size());
        file.state = HalfFile::Named;
        return static_cast<int>(number);
    }
    return -1;
}

void ForgetHalfFile(int number) {
    if (number >= 0)
        half_files[static_cast<std::size_t>(number)].state = HalfFile::Free;
}

void EndWithThisProcess(int child) {
    WatchEndingSignals();
    for (std::atomic<pid_t>& entry : children) {
        pid_t free = 0;
        if (entry.compare_exchange_strong(free, child))
            return;
    }
}

void ForgetChild(int child) {
    for (std::atomic<pid_t>& entry : children) {
        pid_t known = child;
        if (entry.compare_exchange_strong(known, 0))
            return;
    }
}

int TellOfEndingSignal() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return -1;
    told_to = ends[1];
    WatchEndingSignals();
    return ends[0];
}

void DieOfSignal(int number) {
    told_to = -1;
    CleanUpAndDie(number);
    constexpr int kShellsOffset = 128;
    _exit(kShellsOffset + number);  // a signal that somebody ignores
}

void CleanUpAndEnd(int status) {
    EndChildren();
    UnlinkHalfFiles();
    RemoveFolder();
    _exit(status);
}

EndingSignalsHeldBack::EndingSignalsHeldBack() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int number : kEndingSignals)
        sigaddset(&ending, number);
    pthread_sigmask(SIG_BLOCK, &ending, &old_);
}

EndingSignalsHeldBack::~EndingSignalsHeldBack() {
    pthread_sigmask(SIG_SETMASK, &old_, nullptr);
}

}  // namespace zorvane
