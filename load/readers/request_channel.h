// The child's end of the socket: requests with the files that come with them, and answers.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "common/platform/file_descriptor.h"
#include "load/conversion_message.h"

namespace zorvane {

struct Request {
    ConversionMessage message;
    FileDescriptor document;  ///< to be read
    FileDescriptor answer;    ///< to be written, empty
    FileDescriptor second;    ///< a second document, of requests for two
};

class RequestChannel {
  public:
    /// `socket` is borrowed.
    explicit RequestChannel(int socket) : socket_(socket) {}

    /// Waits. Nothing at the end of the requests, and for one that makes no sense or brings other
    /// than two or three files.
    std::optional<Request> Next();
    /// False when nobody listens any more.
    bool Send(const ConversionMessage& message) const;
    /// True when the request is no longer wanted, or nobody listens. Does not wait.
    bool CancelAsked();

  private:
    bool Fill(Request& request);

    int socket_;
    MessageReader reader_;
};

/// False when not all of it could be written.
bool WriteBytes(int file, std::string_view bytes);

}  // namespace zorvane
