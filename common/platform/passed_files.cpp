#include "common/platform/passed_files.h"

#include <cerrno>
#include <cstring>
#include <sys/socket.h>
#include <utility>

namespace zorvane {
namespace {

constexpr std::size_t kRoom = CMSG_SPACE(kMostPassedFiles * sizeof(int));
// The room is a whole number of words, so one more may come.
constexpr std::size_t kMostThatCome = (kRoom - CMSG_LEN(0)) / sizeof(int);

// All files of a piece are taken, so that none stays open unseen. The system itself closes those
// for which there is no room.
void TakeFiles(msghdr& message, PassedFiles& files) {
    for (cmsghdr* header = CMSG_FIRSTHDR(&message); header != nullptr;
         header = CMSG_NXTHDR(&message, header)) {
        if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS)
            continue;
        std::array<int, kMostThatCome> numbers{};
        const std::size_t count = (header->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        std::memcpy(numbers.data(), CMSG_DATA(header), count * sizeof(int));
        for (std::size_t i = 0; i < count; ++i) {
            FileDescriptor file(numbers[i]);
            if (i < files.size())
                files[i] = std::move(file);
        }
    }
}

}  // namespace

ssize_t SendWithFiles(int socket, std::string_view bytes, std::span<const int> files, int flags) {
    if (files.size() > kMostPassedFiles) {
        errno = EINVAL;
        return -1;
    }
    iovec data{const_cast<char*>(bytes.data()), bytes.size()};
    alignas(cmsghdr) std::array<char, kRoom> control{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    if (!files.empty()) {
        message.msg_control = control.data();
        message.msg_controllen = CMSG_SPACE(files.size_bytes());
        cmsghdr* const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(files.size_bytes());
        std::memcpy(CMSG_DATA(header), files.data(), files.size_bytes());
    }
    return sendmsg(socket, &message, flags | MSG_NOSIGNAL);
}

ssize_t ReceiveWithFiles(int socket, std::span<char> bytes, PassedFiles& files) {
    alignas(cmsghdr) std::array<char, kRoom> control{};
    iovec data{bytes.data(), bytes.size()};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    ssize_t got = -1;
    do {
        got = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    } while (got < 0 && errno == EINTR);
    if (got >= 0)
        TakeFiles(message, files);
    return got;
}

}  // namespace zorvane
