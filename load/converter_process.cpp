#include "load/converter_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/platform/passed_files.h"
#include "common/platform/process_end.h"
#include "load/spawn_child.h"
#include "load/warm_readers.h"

namespace zorvane {
namespace {

using Milliseconds = std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

// Closes this process to others of the same user while it has children. The mark is the system's
// and of the whole process, hence a count of the whole process. It cannot stay set: debuggers and
// leak checkers need the process open at other times.
struct LivingChildren {
    std::mutex lock;
    int count = 0;
};
LivingChildren& AllChildren() {
    static LivingChildren children;
    return children;
}

void CountChild(int change) {
    LivingChildren& children = AllChildren();
    const std::lock_guard guard(children.lock);
    children.count += change;
    prctl(PR_SET_DUMPABLE, children.count == 0 ? 1 : 0);
}

std::int32_t PercentOf(std::int64_t progress) {
    constexpr std::int64_t kHundred = 100;
    return static_cast<std::int32_t>(progress * kHundred / kWholeProgress);
}

}  // namespace

// What has been heard of one request so far.
struct ConverterProcess::Course {
    Milliseconds stall;
    SteadyClock::time_point deadline;
    std::int64_t progress = -1;
};

bool ConverterProcess::Start(const std::string& program, const std::vector<std::string>& arguments,
                             const std::vector<std::string>& environment) {
    Kill();
    std::array<int, 2> sockets{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0)
        return false;
    CountChild(1);  // before there is one
    {
        const EndingSignalsHeldBack until_it_is_known;
        process_ = WarmReaders::Copy(program, arguments, environment, sockets[1]);
        if (process_ <= 0)
            process_ = SpawnChild(program, arguments, environment, sockets[1]);
        if (process_ > 0)
            EndWithThisProcess(process_);
    }
    close(sockets[1]);
    socket_ = sockets[0];
    if (process_ > 0)
        return true;
    CountChild(-1);
    Kill();
    return false;
}

void ConverterProcess::Kill() {
    if (process_ > 0) {
        kill(-process_, SIGKILL);
        kill(process_, SIGKILL);
        ForgetChild(process_);
        while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
        }
        CountChild(-1);
    }
    if (socket_ >= 0)
        close(socket_);
    process_ = -1;
    socket_ = -1;
    reader_ = {};
}

void ConverterProcess::Send(const ConversionMessage& request, std::span<const int> files) {
    constexpr Milliseconds kPatience{5000};  // a child that does not read is no child of ours
    const auto until = SteadyClock::now() + kPatience;
    const std::string bytes = EncodeMessage(request);
    std::string_view rest = bytes;
    while (!rest.empty() && SteadyClock::now() < until) {
        const ssize_t sent = SendWithFiles(socket_, rest, files, MSG_DONTWAIT);
        if (sent > 0) {
            rest.remove_prefix(static_cast<std::size_t>(sent));
            files = {};
        } else if (errno == EAGAIN) {
            constexpr int kTick = 50;
            pollfd place{socket_, POLLOUT, 0};
            poll(&place, 1, kTick);
        } else if (errno != EINTR) {
            return;  // the child is gone, which the wait will tell
        }
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
    while (SteadyClock::now() < until && !reader_.Broken()) {
        if (Receive(kPatience) == Received::End)
            break;
        const std::optional<ConversionMessage> message = reader_.Next();
        if (message && message->contains("error"))
            break;
    }
    Kill();
    return {ConversionEnd::Cancelled, {}, {}};
}

ConversionAnswer ConverterProcess::Crash(std::optional<std::int32_t> forbidden_call) {
    Kill();
    return {ConversionEnd::Crashed, {}, forbidden_call};
}

// Nothing while the answer is still to come.
std::optional<ConversionAnswer> ConverterProcess::TakeMessages(Course& course) {
    while (std::optional<ConversionMessage> message = reader_.Next()) {
        if (message->contains("error"))
            return ConversionAnswer{ConversionEnd::Answered, std::move(*message), {}};
        if (message->contains("call"))
            return Crash(static_cast<std::int32_t>(NumberOf(*message, "call") & 0xFFFF));
        const std::int64_t progress = NumberOf(*message, "progress");
        if (!message->contains("progress") || progress < 0 || progress > kWholeProgress)
            return Crash();
        // One that does not rise is no progress: a child could tell it for ever.
        if (progress <= course.progress)
            continue;
        course.progress = progress;
        course.deadline = SteadyClock::now() + course.stall;
    }
    if (reader_.Broken())
        return Crash();
    return std::nullopt;
}

ConversionAnswer ConverterProcess::Wait(const ConversionPatience& patience,
                                        const ConversionObserver& observer) {
    constexpr int kTick = 50;  // milliseconds between two looks at the abort
    if (!Running())
        return {};
    const auto begin = SteadyClock::now();
    Course course{patience.stall, begin + patience.stall};
    while (true) {
        const Received received = Receive(kTick);
        if (std::optional<ConversionAnswer> answer = TakeMessages(course))
            return std::move(*answer);
        if (received == Received::End)
            return Crash();
        if (observer && !observer(course.progress < 0 ? -1 : PercentOf(course.progress)))
            return Cancel();
        const auto now = SteadyClock::now();
        if (now > course.deadline || now > begin + patience.total) {
            Kill();
            return {ConversionEnd::TimedOut, {}, {}};
        }
    }
}

}  // namespace zorvane
