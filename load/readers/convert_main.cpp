// zorvane-convert: reads requests from the socket at standard input, carries out one after another,
// answers there. It holds all foreign libraries, so that nothing in a document can touch the
// program itself.
#include <array>
#include <chrono>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

#include "load/conversion_message.h"
#include "load/readers/convert_jobs.h"
#include "load/readers/office/office_worker.h"
#include "load/readers/sandbox.h"

namespace {

using namespace zorvane;

class Channel {
  public:
    /// Nothing at the end of the requests.
    std::optional<ConversionMessage> Next() {
        while (true) {
            if (std::optional<ConversionMessage> message = reader_.Next())
                return message;
            if (reader_.Broken() || !Fill())
                return std::nullopt;
        }
    }
    void Send(const ConversionMessage& message) {
        const std::string bytes = EncodeMessage(message);
        if (send(STDIN_FILENO, bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0)
            std::_Exit(EXIT_FAILURE);  // nobody waits for an answer any more
    }
    bool CancelAsked() {
        pollfd place{STDIN_FILENO, POLLIN, 0};
        while (poll(&place, 1, 0) > 0) {
            if (!Fill())
                std::_Exit(EXIT_FAILURE);
            if (const auto message = reader_.Next(); message && message->contains("cancel"))
                return true;
        }
        return false;
    }

  private:
    bool Fill() {
        std::array<char, 65536> bytes{};
        const ssize_t got = recv(STDIN_FILENO, bytes.data(), bytes.size(), 0);
        if (got > 0)
            reader_.Feed({bytes.data(), static_cast<std::size_t>(got)});
        return got > 0;
    }

    MessageReader reader_;
};

// Progress goes out a few times a second; more would cost time and tell nobody anything.
class ChannelMonitor : public ReadMonitor {
  public:
    explicit ChannelMonitor(Channel& channel) : channel_(channel) {}
    bool Progress(std::int64_t done, std::int64_t total) override {
        const auto now = std::chrono::steady_clock::now();
        if (now - last_ < std::chrono::milliseconds(50))
            return !cancelled_;
        last_ = now;
        cancelled_ = cancelled_ || channel_.CancelAsked();
        if (!cancelled_)
            channel_.Send({{"progress", std::to_string(total > 0 ? done * 100 / total : 0)}});
        return !cancelled_;
    }

  private:
    Channel& channel_;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    bool cancelled_ = false;
};

ReadEnd RunGuarded(const ConversionMessage& job, ReadMonitor& monitor, ConversionMessage& answer) {
    try {
        return RunJob(job, monitor, answer);
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the document needs more memory than allowed");
    } catch (const std::exception& error) {
        return ReadEnd::Fault(ReadError::Damaged, error.what());
    }
}

// The office suite starts programs of its own, so only the network is closed to it.
int ServeOffice() {
    DieWithParent();
    if (!ForbidNetwork())
        return EXIT_FAILURE;
    _exit(RunOfficeWorker(STDIN_FILENO, STDIN_FILENO));
}

}  // namespace

int main(int count, char** values) {
    if (count > 1 && std::string_view(values[1]) == "--office")
        return ServeOffice();
    mallopt(M_ARENA_MAX, 1);
    DieWithParent();
    Channel channel;
    std::optional<ConversionMessage> job = channel.Next();
    if (!job)
        return EXIT_FAILURE;
    // Best effort: where the system knows no such filter, the bounds of the readers have to do.
    static_cast<void>(ForbidNetwork() && ForbidPrograms());
    for (; job; job = channel.Next()) {
        if (const std::int64_t memory = NumberOf(*job, "memory"); memory > 0)
            LimitMemory(static_cast<std::size_t>(memory));
        ConversionMessage answer;
        ChannelMonitor monitor(channel);
        const ReadEnd end = RunGuarded(*job, monitor, answer);
        answer["error"] = std::to_string(static_cast<std::int32_t>(end.error));
        answer["detail"] = end.detail;
        channel.Send(answer);
    }
    return EXIT_SUCCESS;
}
