// zorvane-convert: reads one document that it is handed open, and ends. It holds all foreign
// libraries, so that nothing in a document can touch the program itself.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <openssl/crypto.h>
#include <sched.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "common/platform/mapped_file.h"
#include "common/platform/passed_files.h"
#include "load/conversion_message.h"
#include "load/office_place.h"
#include "load/readers/convert_jobs.h"
#include "load/readers/office/office_worker.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/request_channel.h"
#include "load/readers/sandbox/open_tables.h"
#include "load/readers/sandbox/sandbox.h"
#include "redline/redline_job.h"

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

// The second of them is empty but in a request for two.
ReadEnd RunGuarded(const PerSide<std::string_view>& documents, const ConversionMessage& job,
                   ReadMonitor& monitor, JobOutput& output) {
    try {
        if (TextOf(job, "kind") == "redline")
            return RunRedlineJob(documents, job, monitor, output);
        return RunJob(documents.original, job, monitor, output);
    } catch (const std::bad_alloc&) {
        return ReadEnd::Fault(ReadError::TooLarge, "the document needs more memory than allowed");
    } catch (const std::exception& error) {
        return ReadEnd::Fault(ReadError::Damaged, error.what());
    }
}

// What a library would load when it is wanted: nothing can be loaded later.
void LoadInAdvance(std::string_view bytes, std::string_view kind, OpenTables& tables) {
    // No file of the system's has a say in how a document is opened.
    OPENSSL_init_crypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr);
    if (kind.starts_with("pdf") || LooksLikePdf(bytes))
        static_cast<void>(PreparePdf(tables));  // told again when it is read
}

ProcessLimits LimitsOf(const ConversionMessage& job, int highest_file) {
    const auto number = [&job](const char* key) {
        return static_cast<std::uint64_t>(std::max<std::int64_t>(NumberOf(job, key), 0));
    };
    return {number("memory"), number("filebytes"), number("seconds"), highest_file};
}

// Only behind the last step is the first byte of the document looked into.
ReadEnd Carry(Request& request, bool in_sandbox, ReadMonitor& monitor, JobOutput& output) {
    const Result<MappedFile> document = MappedFile::Of(request.document.Get());
    if (!document.ok())
        return ReadEnd::Fault(ReadError::CannotOpen, document.failure().reason);
    request.document.Close();
    Result<MappedFile> second = Failure{};
    if (request.second.IsOpen()) {
        second = MappedFile::Of(request.second.Get());
        if (!second.ok())
            return ReadEnd::Fault(ReadError::CannotOpen, second.failure().reason);
        request.second.Close();
    }
    static OpenTables tables;  // lives as long as the process
    const std::string_view other = second.ok() ? second.value().Bytes() : std::string_view();
    LoadInAdvance(LooksLikePdf(other) ? other : document.value().Bytes(),
                  TextOf(request.message, "kind"), tables);
    SetLimits(LimitsOf(request.message, std::max(tables.HighestFile(), request.answer.Get())));
    if (in_sandbox) {
        if (const Status closed = EnterReaderSandbox(tables); !closed.ok())
            return ReadEnd::Fault(ReadError::NoSandbox, closed.failure().reason);
    }
    return RunGuarded({document.value().Bytes(), other}, request.message, monitor, output);
}

// A batch system that ends a job signals all its processes. This one ends with the one that started
// it, so that none of these signals is taken for a fault of the document.
void LeaveSignalsToStarter() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, SIG_IGN);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);  // they were blocked until here
}

int ServeReader(bool in_sandbox) {
    mallopt(M_ARENA_MAX, 1);
    if (!CloseToOthers())
        return EXIT_FAILURE;
    RequestChannel channel(STDIN_FILENO);
    std::optional<Request> request = channel.Next();
    if (!request)
        return EXIT_FAILURE;
    ChannelMonitor monitor(channel);
    JobOutput output(request->answer.Get());
    const ReadEnd end = Carry(*request, in_sandbox, monitor, output);
    output.answer["error"] = std::to_string(static_cast<std::int32_t>(end.error));
    output.answer["detail"] = end.detail.substr(0, kMostTextBytes + 1);
    return channel.Send(output.answer) ? EXIT_SUCCESS : EXIT_FAILURE;
}

// A child of the one that started this process, which waits for it and ends it as one of its own.
// There is one thread and no lock is held, so nothing has to be put right in the copy.
pid_t CopyForStarter() {
    return static_cast<pid_t>(
        syscall(SYS_clone, CLONE_PARENT | SIGCHLD, nullptr, nullptr, nullptr, nullptr));
}

// Reads nothing itself: each call brings a reader's end of its socket. Each copy has loaded its
// libraries, reads one document, and ends.
int ServeCopies(bool in_sandbox) {
    if (!CloseToOthers())
        return EXIT_FAILURE;
    while (true) {
        std::array<char, 1> call{};
        PassedFiles sockets;
        if (ReceiveWithFiles(STDIN_FILENO, call, sockets) <= 0 || !sockets[0].IsOpen())
            return EXIT_SUCCESS;  // nobody wants one any more
        const pid_t copy = CopyForStarter();
        if (copy == 0) {
            setpgid(0, 0);
            if (dup2(sockets[0].Get(), STDIN_FILENO) != STDIN_FILENO || !sockets[0].Close())
                return EXIT_FAILURE;
            return ServeReader(in_sandbox);
        }
        if (send(STDIN_FILENO, &copy, sizeof copy, MSG_NOSIGNAL) != sizeof copy)
            return EXIT_FAILURE;
    }
}

int ServeOffice(const OfficeWork& work) {
    if (!CloseToOthers())
        return EXIT_FAILURE;
    return RunOfficeWorker(STDIN_FILENO, work);
}

}  // namespace

// "--reader" or "--no-sandbox"; or "--copies" and one of these; or "--office", the profile folder,
// the suite's program folder, its start program, 1 when its library is to be loaded, and one of the
// first two.
int main(int count, char** values) {
    constexpr std::string_view kOpen = "--no-sandbox";
    constexpr int kOfficeArguments = 7;
    constexpr int kCopyArguments = 3;
    const std::string_view mode = count > 1 ? values[1] : "";
    LeaveSignalsToStarter();
    if (mode == "--office" && count == kOfficeArguments)
        _exit(ServeOffice(
            {OfficeAt(values[3], values[4], *values[5] == '1'), values[2], values[6] != kOpen}));
    if (mode == "--copies" && count == kCopyArguments)
        _exit(ServeCopies(values[2] != kOpen));
    _exit(ServeReader(mode != kOpen));
}
