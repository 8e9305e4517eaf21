#include "load/readers/office/office_worker.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>

#include "load/conversion_message.h"
#include "load/readers/office/office.h"
#include "load/readers/sandbox.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

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

bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

class OfficeWorker {
  public:
    OfficeWorker() = default;
    ~OfficeWorker() {
        session_.reset();
        std::error_code error;
        if (!own_folder_.empty())
            fs::remove_all(own_folder_, error);
    }
    OfficeWorker(const OfficeWorker&) = delete;
    OfficeWorker& operator=(const OfficeWorker&) = delete;

    ReadEnd Serve(const ConversionMessage& request);

  private:
    ReadEnd Open(std::string profile);

    std::unique_ptr<OfficeSession> session_;
    std::string own_folder_;
};

ReadEnd OfficeWorker::Open(std::string profile) {
    const std::optional<OfficePlace> place = FindOffice();
    if (!place)
        return ReadEnd::Fault(ReadError::NeedsOffice, "No office suite was found.");
    if (profile.empty()) {
        std::error_code error;
        own_folder_ = fs::temp_directory_path(error) / "zorvane-office-XXXXXX";
        if (mkdtemp(own_folder_.data()) == nullptr) {
            own_folder_.clear();
            return ReadEnd::Fault(ReadError::CannotWrite, "There is no temporary folder.");
        }
        profile = own_folder_;
    }
    session_ = OfficeSession::Make(*place, profile);
    return ReadEnd::Ok();
}

ReadEnd OfficeWorker::Serve(const ConversionMessage& request) {
    if (session_ == nullptr) {
        if (ReadEnd end = Open(std::string(TextOf(request, "profile"))); !end.ok())
            return end;
    }
    return session_->Convert(
        std::string(TextOf(request, "source")), std::string(TextOf(request, "password")),
        std::string(TextOf(request, "target")), std::string(TextOf(request, "format")));
}

bool Reply(int file, const ReadEnd& end) {
    return WriteAll(file,
                    EncodeMessage({{"error", std::to_string(static_cast<std::int32_t>(end.error))},
                                   {"detail", end.detail}}));
}

int ServeAll(int request_file, int reply_file) {
    OfficeWorker worker;
    MessageReader reader;
    std::array<char, 4096> bytes{};
    for (;;) {
        const ssize_t count = read(request_file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count == 0 ? 0 : 1;
        reader.Feed({bytes.data(), static_cast<std::size_t>(count)});
        while (const std::optional<ConversionMessage> request = reader.Next()) {
            if (!Reply(reply_file, worker.Serve(*request)))
                return 1;
        }
        if (reader.Broken())
            return 1;
    }
}

}  // namespace

int RunOfficeWorker(int request_fd, int reply_fd) {
    DieWithParent();
    LimitMemory(kMostMemory);
    // The other side may be gone: told by the write itself.
    signal(SIGPIPE, SIG_IGN);
    const int request_file = MoveUp(request_fd);
    const int reply_file = MoveUp(reply_fd);
    if (request_file < 0 || reply_file < 0)
        return 1;
    SilenceStandardStreams();
    try {
        return ServeAll(request_file, reply_file);
    } catch (const std::exception&) {  // out of memory
        return 1;
    }
}

}  // namespace zorvane
