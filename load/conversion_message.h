// What the program and zorvane-convert say to each other: small records of text over a socket.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace zorvane {

using ConversionMessage = std::map<std::string, std::string>;

// What one message may hold. Documents never travel in messages, so that these are far above what
// any needs; whoever sends more is not listened to.
inline constexpr std::size_t kMostMessageBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMostMessageEntries = 10'000;
inline constexpr std::size_t kLongestMessageKey = 32;
inline constexpr std::size_t kLongestMessageValue = std::size_t{128} << 10;

// What an answer may hold.
inline constexpr std::size_t kMostSheets = 4096;
inline constexpr std::size_t kMostTextBytes = 300;  ///< of a name or of a reader's words

/// Each entry is "key=length:value" and a line end; an empty line ends the message. A key is of
/// ASCII letters and digits and comes once; a value may hold any bytes.
std::string EncodeMessage(const ConversionMessage& message);

/// Puts messages together from pieces of any size, of a sender that may be hostile: what makes no
/// sense, or more than a message may hold, breaks it for good.
class MessageReader {
  public:
    void Feed(std::string_view bytes);
    /// The next whole message; nothing when more bytes are needed or the bytes make no sense.
    std::optional<ConversionMessage> Next();
    /// True for good once the bytes made no sense.
    bool Broken() const { return broken_; }

  private:
    bool TakeEntry();
    void Break();

    std::string bytes_;
    std::size_t at_ = 0;
    std::size_t message_bytes_ = 0;  // of the message that is not whole yet
    ConversionMessage message_;
    bool broken_ = false;
};

/// The value of `key`; empty and 0 without one, and 0 for what is no whole number.
std::string_view TextOf(const ConversionMessage& message, const std::string& key);
std::int64_t NumberOf(const ConversionMessage& message, const std::string& key);
inline bool IsSet(const ConversionMessage& message, const std::string& key) {
    return NumberOf(message, key) != 0;
}

/// Progress is told in these, so that every step of a long document counts.
inline constexpr std::int64_t kWholeProgress = 1'000'000;

}  // namespace zorvane
