// What the program and zorvane-convert say to each other: small records of text over a socket.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace zorvane {

using ConversionMessage = std::map<std::string, std::string>;

/// Each entry is "key=length:value" and a line end; an empty line ends the message. A value may
/// hold any bytes, a key neither "=" nor a line end.
std::string EncodeMessage(const ConversionMessage& message);

/// Puts messages together from pieces of any size.
class MessageReader {
  public:
    void Feed(std::string_view bytes) { bytes_ += bytes; }
    /// The next whole message; nothing when more bytes are needed or the bytes make no sense.
    std::optional<ConversionMessage> Next();
    /// True for good once the bytes made no sense.
    bool Broken() const { return broken_; }

  private:
    bool TakeEntry();

    std::string bytes_;
    std::size_t at_ = 0;
    ConversionMessage message_;
    bool broken_ = false;
};

/// The value of `key`; empty and 0 without one.
std::string_view TextOf(const ConversionMessage& message, const std::string& key);
std::int64_t NumberOf(const ConversionMessage& message, const std::string& key);
inline bool IsSet(const ConversionMessage& message, const std::string& key) {
    return NumberOf(message, key) != 0;
}

}  // namespace zorvane
