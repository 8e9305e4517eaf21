// zorvane-convert: reads one document that it is handed open, and ends. It holds all foreign
// libraries, so that nothing in a document can touch the program itself.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <string_view>
#include <unistd.h>

#include "common/platform/mapped_file.h"
#include "load/conversion_message.h"
#include "load/office_place.h"
#include "load/readers/convert_jobs.h"
#include "load/readers/office/office_worker.h"
#include "load/readers/request_channel.h"
#include "load/readers/sandbox.h"

namespace {

using namespace zorvane;

// Progress goes out a few times a second; more would cost time and tell nobody anything.
class ChannelMonitor : public ReadMonitor {
  public:
    explicit ChannelMonitor(RequestChannel& channel) : channel_(channel) {}
    bool Progress(std::int64_t done, std::int64_t total) override {
        const auto now = std::chrono::steady_clock::now();
        if (now - last_ < std::chrono::milliseconds(50))
            return !cancelled_;
        last_ = now;
        cancelled_ = cancelled_ || channel_.CancelAsked();
        if (!cancelled_)
            Tell(total > 0 ? std::clamp<double>(
                                 static_cast<double>(done) / static_cast<double>(total), 0, 1)
                           : 0);
        return !cancelled_;
    }

  private:
    void Tell(double share) {
        const auto progress = static_cast<std::int64_t>(share * kWholeProgress);
        if (progress <= told_)
            return;
        told_ = progress;
        if (!channel_.Send({{"progress", std::to_string(progress)}}))
            _exit(EXIT_FAILURE);  // nobody waits for an answer any more
    }

    RequestChannel& channel_;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    std::int64_t told_ = -1;
    bool cancelled_ = false;
};

ReadEnd RunGuarded(std::string_view bytes, const ConversionMessage& job, ReadMonitor& monitor,
                   JobOutput& output) {
    try {
        return RunJob(bytes, job, monitor, output);
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the document needs more memory than allowed");
    } catch (const std::exception& error) {
        return ReadEnd::Fault(ReadError::Damaged, error.what());
    }
}

ReadEnd Carry(Request& request, ReadMonitor& monitor, JobOutput& output) {
    const Result<MappedFile> document = MappedFile::Of(request.document.Get());
    if (!document.ok())
        return ReadEnd::Fault(ReadError::CannotOpen, document.failure().reason);
    request.document.Close();
    if (const std::int64_t memory = NumberOf(request.message, "memory"); memory > 0)
        LimitMemory(static_cast<std::size_t>(memory));
    // Best effort: where the system knows no such filter, the bounds of the readers have to do.
    static_cast<void>(ForbidNetwork() && ForbidPrograms());
    return RunGuarded(document.value().Bytes(), request.message, monitor, output);
}

int ServeReader() {
    mallopt(M_ARENA_MAX, 1);
    DieWithParent();
    std::signal(SIGPIPE, SIG_IGN);
    RequestChannel channel(STDIN_FILENO);
    std::optional<Request> request = channel.Next();
    if (!request)
        return EXIT_FAILURE;
    ChannelMonitor monitor(channel);
    JobOutput output(request->answer.Get());
    const ReadEnd end = Carry(*request, monitor, output);
    output.answer["error"] = std::to_string(static_cast<std::int32_t>(end.error));
    output.answer["detail"] = end.detail.substr(0, kMostTextBytes + 1);
    return channel.Send(output.answer) ? EXIT_SUCCESS : EXIT_FAILURE;
}

// The office suite starts programs of its own, so only the network is closed to it.
int ServeOffice(const OfficePlace& place, const std::string& profile) {
    DieWithParent();
    if (!ForbidNetwork())
        return EXIT_FAILURE;
    return RunOfficeWorker(STDIN_FILENO, place, profile);
}

}  // namespace

int main(int count, char** values) {
    constexpr int kOfficeArguments = 6;
    const std::string_view mode = count > 1 ? values[1] : "";
    if (mode == "--office" && count == kOfficeArguments)
        _exit(ServeOffice(OfficeAt(values[3], values[4], *values[5] == '1'), values[2]));
    _exit(ServeReader());
}
