#include "load/readers/office/office_worker.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "load/conversion_message.h"
#include "load/readers/office/office.h"
#include "load/readers/request_channel.h"
#include "load/readers/sandbox/sandbox.h"

namespace zorvane {
namespace {

constexpr std::uint64_t kMostMemory = std::uint64_t{2} << 30;
constexpr std::uint64_t kMostAnswer = std::uint64_t{1} << 30;
// Of a worker's whole life; who waits for one document has less patience.
constexpr std::uint64_t kMostSeconds = 3600;

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

// `closed`: how the closing in went; nothing is read where it failed.
ReadEnd Serve(const Request& request, const Status& closed, OfficeSession& session) {
    if (!closed.ok())
        return ReadEnd::Fault(ReadError::NoSandbox, closed.failure().reason);
    const ConversionMessage& message = request.message;
    return session.Convert(
        {request.document.Get(), request.answer.Get(), std::string(TextOf(message, "name")),
         std::string(TextOf(message, "password")), std::string(TextOf(message, "format"))});
}

// Until nobody asks or listens any more.
void ServeAll(int socket, const Status& closed, OfficeSession& session) {
    RequestChannel channel(socket);
    std::optional<Request> request = channel.Next();
    while (request && Reply(channel, request->answer.Get(), Serve(*request, closed, session)))
        request = channel.Next();
}

Status CloseIn(const OfficeWork& work) {
    std::error_code error;
    std::filesystem::create_directories(work.profile, error);
    if (!work.in_sandbox)
        return Status::Ok();
    return EnterOfficeSandbox(OfficeRights(work.place, work.profile), !work.place.has_library);
}

}  // namespace

FolderRights OfficeRights(const OfficePlace& place, const std::string& profile) {
    namespace fs = std::filesystem;
    FolderRights rights;
    rights.read_and_execute = {"/usr",
                               "/lib",
                               "/lib32",
                               "/lib64",
                               "/bin",
                               "/sbin",
                               fs::path(place.program_folder).parent_path(),
                               fs::path(place.soffice).parent_path()};
    // Of the suite's own folder, links lead to the first three.
    rights.read = {"/etc/libreoffice", "/var/lib/libreoffice",    "/var/spool/libreoffice",
                   "/etc/fonts",       "/var/cache/fontconfig",   "/etc/ld.so.cache",
                   "/etc/localtime",   "/sys/devices/system/cpu", "/dev/urandom"};
    rights.write_device = {"/dev/null"};
    rights.own = {profile};
    return rights;
}

int RunOfficeWorker(int socket, const OfficeWork& work) {
    const int own_socket = MoveUp(socket);
    if (own_socket < 0)
        return 1;
    SilenceStandardStreams();
    ProcessLimits limits;
    limits.memory = kMostMemory;
    limits.file_bytes = kMostAnswer;
    limits.cpu_seconds = kMostSeconds;
    limits.may_start_threads = true;
    SetLimits(limits);
    try {
        const Status closed = CloseIn(work);
        const std::unique_ptr<OfficeSession> session =
            OfficeSession::Make(work.place, work.profile);
        ServeAll(own_socket, closed, *session);
        return 0;
    } catch (const std::exception&) {  // out of memory
        return 1;
    }
}

}  // namespace zorvane
