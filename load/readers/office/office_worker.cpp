#include "load/readers/office/office_worker.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "load/conversion_message.h"
#include "load/readers/office/office.h"
#include "load/readers/request_channel.h"
#include "load/readers/sandbox.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostMemory = std::size_t{2} << 30;

/// Above the standard streams, and out of reach of what the suite starts.
int MoveUp(int file) {
    constexpr int kFirstOwn = 3;
    return fcntl(file, F_DUPFD_CLOEXEC, kFirstOwn);
}

void SilenceStandardStreams() {
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, standard);
    close(nothing);
}

bool Reply(const RequestChannel& channel, int file, const ReadEnd& end) {
    ConversionMessage answer{{"error", std::to_string(static_cast<std::int32_t>(end.error))},
                             {"detail", end.detail.substr(0, kMostTextBytes + 1)}};
    struct stat facts {};
    if (end.ok() && fstat(file, &facts) == 0)
        answer["part1"] = "0 " + std::to_string(facts.st_size);
    return channel.Send(answer);
}

int ServeAll(int socket, OfficeSession& session) {
    RequestChannel channel(socket);
    while (const std::optional<Request> request = channel.Next()) {
        const ConversionMessage& message = request->message;
        const int answer = request->answer.Get();
        const ReadEnd end = session.Convert(
            {request->document.Get(), answer, std::string(TextOf(message, "name")),
             std::string(TextOf(message, "password")), std::string(TextOf(message, "format"))});
        if (!Reply(channel, answer, end))
            return 1;
    }
    return channel.EndedWell() ? 0 : 1;
}

}  // namespace

int RunOfficeWorker(int socket, const OfficePlace& place, const std::string& profile) {
    DieWithParent();
    LimitMemory(kMostMemory);
    // The other side may be gone: told by the write itself.
    std::signal(SIGPIPE, SIG_IGN);
    const int own_socket = MoveUp(socket);
    if (own_socket < 0)
        return 1;
    SilenceStandardStreams();
    try {
        const std::unique_ptr<OfficeSession> session = OfficeSession::Make(place, profile);
        return ServeAll(own_socket, *session);
    } catch (const std::exception&) {  // out of memory
        return 1;
    }
}

}  // namespace zorvane
