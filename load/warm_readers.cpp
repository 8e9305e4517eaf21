#include "load/warm_readers.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/platform/passed_files.h"
#include "common/platform/process_end.h"
#include "load/spawn_child.h"

namespace zorvane {
namespace {

// A sanitizer's own threads and tables do not outlive a copy.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kCopies = false;
#else
constexpr bool kCopies = true;
#endif

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): of the thread that it serves
thread_local WarmReaders* of_this_thread = nullptr;

}  // namespace

bool WarmReaders::MakesCopies() {
    return kCopies;
}

WarmReaders::WarmReaders() {
    of_this_thread = this;
}

WarmReaders::~WarmReaders() {
    End();
    of_this_thread = nullptr;
}

void WarmReaders::End() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        ForgetChild(process_);
        while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    if (socket_ >= 0)
        close(socket_);
    process_ = socket_ = -1;
}

bool WarmReaders::Begin(const std::string& program, const std::string& mode) {
    if (process_ > 0 && what_ == program + " " + mode)
        return true;
    End();
    what_ = program + " " + mode;
    std::array<int, 2> sockets{};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, sockets.data()) != 0)
        return false;
    {
        const EndingSignalsHeldBack until_it_is_known;
        process_ = SpawnChild(program, {"--copies", mode}, {}, sockets[1]);
        if (process_ > 0)
            EndWithThisProcess(process_);
    }
    close(sockets[1]);
    socket_ = sockets[0];
    return process_ > 0;
}

int WarmReaders::Ask(int socket) const {
    if (SendWithFiles(socket_, std::string_view("c"), std::array{socket}) != 1)
        return -1;
    constexpr int kPatience = 5000;  // milliseconds; a copy is there within one
    pollfd place{socket_, POLLIN, 0};
    pid_t copy = -1;
    if (poll(&place, 1, kPatience) <= 0 ||
        recv(socket_, &copy, sizeof copy, MSG_TRUNC) != sizeof copy || copy <= 0)
        return -1;
    // A number that is no child's is never signalled.
    siginfo_t facts{};
    const bool ours =
        waitid(P_PID, static_cast<id_t>(copy), &facts, WEXITED | WNOHANG | WNOWAIT) == 0;
    return ours ? copy : -1;
}

int WarmReaders::Copy(const std::string& program, const std::vector<std::string>& arguments,
                      const std::vector<std::string>& environment, int socket) {
    WarmReaders* const warm = of_this_thread;
    const bool reader =
        arguments.size() == 1 && (arguments[0] == "--reader" || arguments[0] == "--no-sandbox");
    if (!kCopies || warm == nullptr || warm->failed_ || !reader || !environment.empty())
        return -1;
    const int copy = warm->Begin(program, arguments[0]) ? warm->Ask(socket) : -1;
    if (copy <= 0) {
        warm->End();
        warm->failed_ = true;  // what cannot make copies is not asked again and again
    }
    return copy;
}

}  // namespace zorvane
