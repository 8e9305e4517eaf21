#include "load/readers/request_channel.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zorvane {
namespace {

constexpr std::size_t kFewestFiles = 2;
constexpr std::size_t kMostFiles = 3;

// All files of a piece are taken, so that none stays open unseen.
void TakeFiles(msghdr& message, Request& request) {
    for (cmsghdr* header = CMSG_FIRSTHDR(&message); header != nullptr;
         header = CMSG_NXTHDR(&message, header)) {
        const bool two = header->cmsg_len == CMSG_LEN(kFewestFiles * sizeof(int));
        const bool three = header->cmsg_len == CMSG_LEN(kMostFiles * sizeof(int));
        if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS || (!two && !three))
            continue;
        std::array<int, kMostFiles> files{-1, -1, -1};
        std::memcpy(files.data(), CMSG_DATA(header), header->cmsg_len - CMSG_LEN(0));
        request.document = FileDescriptor(files[0]);
        request.answer = FileDescriptor(files[1]);
        request.second = FileDescriptor(files[2]);
    }
}

}  // namespace

// One piece of a request. The kernel itself closes files for which there is no room.
bool RequestChannel::Fill(Request& request) {
    std::array<char, 65536> bytes{};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(kMostFiles * sizeof(int))> control{};
    iovec data{bytes.data(), bytes.size()};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    ssize_t got = -1;
    do {
        got = recvmsg(socket_, &message, MSG_CMSG_CLOEXEC);
    } while (got < 0 && errno == EINTR);
    TakeFiles(message, request);
    if (got > 0)
        reader_.Feed({bytes.data(), static_cast<std::size_t>(got)});
    ended_well_ = got == 0;
    return got > 0;
}

std::optional<Request> RequestChannel::Next() {
    Request request;
    while (!reader_.Broken()) {
        if (std::optional<ConversionMessage> message = reader_.Next()) {
            if (message->contains("cancel"))
                continue;  // it came too late
            request.message = std::move(*message);
            if (request.document.IsOpen() && request.answer.IsOpen())
                return request;
            return std::nullopt;
        }
        if (!Fill(request))
            return std::nullopt;
    }
    return std::nullopt;
}

bool RequestChannel::Send(const ConversionMessage& message) const {
    return WriteBytes(socket_, EncodeMessage(message));
}

// By calls that are allowed after the start: no `recv`.
bool RequestChannel::CancelAsked() {
    pollfd place{socket_, POLLIN, 0};
    while (poll(&place, 1, 0) > 0) {
        std::array<char, 256> bytes{};
        const ssize_t got = read(socket_, bytes.data(), bytes.size());
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return true;
        reader_.Feed({bytes.data(), static_cast<std::size_t>(got)});
        const std::optional<ConversionMessage> message = reader_.Next();
        if (reader_.Broken() || (message && message->contains("cancel")))
            return true;
    }
    return false;
}

bool WriteBytes(int file, std::string_view bytes) {
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

}  // namespace zorvane
