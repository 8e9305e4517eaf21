// One road out of a sandbox, tried in a process of its own by an ordinary user.
#pragma once

#include <csignal>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zorvane {

/// How the process that tried ended.
enum class ProbeEnd { Refused, Killed, Reached, NotClosed };

inline constexpr int kProbeReached = 70;
inline constexpr int kProbeNotClosed = 71;
inline constexpr int kNobody = 65534;

/// An administrator's rights would open roads that no user has.
inline bool BecomeOrdinary() {
    return geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
}

/// `close_in` closes the process in; `try_road` tells whether the road is open. `said` gets what
/// was written to standard input, where the program's socket would be.
template <class CloseIn, class TryRoad>
ProbeEnd Probe(CloseIn&& close_in, TryRoad&& try_road, std::string* said = nullptr) {
    int sockets[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, sockets) != 0)
        return ProbeEnd::NotClosed;
    const pid_t child = fork();
    if (child == 0) {
        dup2(sockets[1], STDIN_FILENO);
        close(sockets[0]);
        close(sockets[1]);
        if (!BecomeOrdinary() || !close_in())
            _exit(kProbeNotClosed);
        _exit(try_road() ? kProbeReached : 0);
    }
    close(sockets[1]);
    char bytes[256];
    const ssize_t count = recv(sockets[0], bytes, sizeof bytes, 0);
    if (said != nullptr && count > 0)
        said->assign(bytes, static_cast<std::size_t>(count));
    int status = 0;
    waitpid(child, &status, 0);
    close(sockets[0]);
    constexpr int kBadSystemCall = 128 + SIGSYS;
    if (WIFSIGNALED(status) || WEXITSTATUS(status) == kBadSystemCall)
        return ProbeEnd::Killed;
    if (WEXITSTATUS(status) == kProbeReached)
        return ProbeEnd::Reached;
    return WEXITSTATUS(status) == 0 ? ProbeEnd::Refused : ProbeEnd::NotClosed;
}

}  // namespace zorvane
