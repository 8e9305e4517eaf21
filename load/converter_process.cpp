#include "load/converter_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zorvane {
namespace {

using Milliseconds = std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

// What a child inherits: the socket as standard input, nothing to print on, no blocked signals.
class SpawnSetup {
  public:
    explicit SpawnSetup(int socket) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, socket, STDIN_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        // A group of its own: Ctrl-C at the terminal ends the run, and the run ends its children.
        posix_spawnattr_setpgroup(&attributes_, 0);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    }
    ~SpawnSetup() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;

    int Spawn(const std::string& program, const std::vector<std::string>& arguments) {
        std::vector<std::string> texts = {program};
        texts.insert(texts.end(), arguments.begin(), arguments.end());
        std::vector<char*> values;
        values.reserve(texts.size() + 1);
        for (std::string& text : texts)
            values.push_back(text.data());
        values.push_back(nullptr);
        pid_t process = -1;
        const int error =
            posix_spawn(&process, program.c_str(), &actions_, &attributes_, values.data(), environ);
        return error == 0 ? process : -1;
    }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

bool ConverterProcess::Start(const std::string& program,
                             const std::vector<std::string>& arguments) {
    Kill();
    std::array<int, 2> sockets{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0)
        return false;
    process_ = SpawnSetup(sockets[1]).Spawn(program, arguments);
    close(sockets[1]);
    socket_ = sockets[0];
    if (process_ > 0)
        return true;
    Kill();
    return false;
}

void ConverterProcess::Kill() {
    if (process_ > 0) {
        kill(-process_, SIGKILL);
        kill(process_, SIGKILL);
        while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    if (socket_ >= 0)
        close(socket_);
    process_ = -1;
    socket_ = -1;
    reader_ = {};
}

void ConverterProcess::Send(const ConversionMessage& request) {
    const std::string bytes = EncodeMessage(request);
    std::string_view rest = bytes;
    while (!rest.empty()) {
        const ssize_t sent = send(socket_, rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR)
            return;  // the child is gone, which the wait will tell
        rest.remove_prefix(static_cast<std::size_t>(sent < 0 ? 0 : sent));
    }
}

ConverterProcess::Received ConverterProcess::Receive(int milliseconds) {
    pollfd place{socket_, POLLIN, 0};
    if (poll(&place, 1, milliseconds) <= 0)
        return Received::Nothing;
    std::array<char, 4096> bytes{};
    const ssize_t got = recv(socket_, bytes.data(), bytes.size(), 0);
    if (got < 0 && errno == EINTR)
        return Received::Nothing;
    if (got <= 0)
        return Received::End;
    reader_.Feed({bytes.data(), static_cast<std::size_t>(got)});
    return Received::Something;
}

ConversionAnswer ConverterProcess::Cancel() {
    constexpr int kPatience = 500;  // milliseconds; a child between two pages ends by itself
    Send({{"cancel", "1"}});
    const auto until = SteadyClock::now() + Milliseconds(kPatience);
    while (SteadyClock::now() < until) {
        if (Receive(kPatience) == Received::End)
            break;
        const std::optional<ConversionMessage> message = reader_.Next();
        if (message && message->contains("error"))
            break;
    }
    Kill();
    return {ConversionEnd::Cancelled, {}};
}

ConversionAnswer ConverterProcess::Wait(Milliseconds stall, const ConversionObserver& observer) {
    constexpr int kTick = 50;  // milliseconds between two looks at the abort
    if (!Running())
        return {};
    auto deadline = SteadyClock::now() + stall;
    std::int32_t percent = -1;
    while (true) {
        const Received received = Receive(kTick);
        while (std::optional<ConversionMessage> message = reader_.Next()) {
            if (message->contains("error"))
                return {ConversionEnd::Answered, std::move(*message)};
            percent = static_cast<std::int32_t>(NumberOf(*message, "progress"));
            deadline = SteadyClock::now() + stall;
        }
        if (received == Received::End || reader_.Broken()) {
            Kill();
            return {ConversionEnd::Crashed, {}};
        }
        if (observer && !observer(percent))
            return Cancel();
        if (SteadyClock::now() > deadline) {
            Kill();
            return {ConversionEnd::TimedOut, {}};
        }
    }
}

}  // namespace zorvane
