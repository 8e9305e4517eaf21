#include "load/readers/request_channel.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

#include "common/platform/passed_files.h"

namespace zorvane {

// One piece of a request.
bool RequestChannel::Fill(Request& request) {
    std::array<char, 65536> bytes{};
    PassedFiles files;
    const ssize_t got = ReceiveWithFiles(socket_, bytes, files);
    if (files[1].IsOpen()) {
        request.document = std::move(files[0]);
        request.answer = std::move(files[1]);
        request.second = std::move(files[2]);
    }
    if (got > 0)
        reader_.Feed({bytes.data(), static_cast<std::size_t>(got)});
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
