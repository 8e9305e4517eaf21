#include "load/conversion_message.h"

#include <algorithm>
#include <utility>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostDigits = 6;  // of the longest value

bool IsKeyCharacter(char character) {
    return IsAsciiLetter(character) || IsAsciiDigit(character);
}

bool IsKey(std::string_view text) {
    return !text.empty() && text.size() <= kLongestMessageKey &&
           std::all_of(text.begin(), text.end(), IsKeyCharacter);
}

// What stands in front of a value: "key=length:".
struct EntryHead {
    std::string_view key;
    std::size_t length = 0;
    std::size_t size = 0;
};

enum class HeadState { Whole, Partial, Broken };

// Looks no further than a head can reach, so that a flood of bytes without one is not searched
// again and again.
HeadState ReadHead(std::string_view bytes, EntryHead& head) {
    const std::size_t equals = bytes.substr(0, kLongestMessageKey + 1).find('=');
    if (equals == std::string_view::npos)
        return bytes.size() > kLongestMessageKey ? HeadState::Broken : HeadState::Partial;
    head.key = bytes.substr(0, equals);
    const std::string_view rest = bytes.substr(equals + 1);
    const std::size_t digits = rest.substr(0, kMostDigits + 1).find(':');
    if (digits == std::string_view::npos)
        return rest.size() > kMostDigits ? HeadState::Broken : HeadState::Partial;
    const auto length = ParseNumber<std::size_t>(rest.substr(0, digits));
    head.length = length.value_or(0);
    head.size = equals + 1 + digits + 1;
    const bool good = IsKey(head.key) && length && head.length <= kLongestMessageValue;
    return good ? HeadState::Whole : HeadState::Broken;
}

}  // namespace

std::string EncodeMessage(const ConversionMessage& message) {
    std::string bytes;
    for (const auto& [key, value] : message)
        bytes += key + "=" + std::to_string(value.size()) + ":" + value + "\n";
    return bytes + "\n";
}

void MessageReader::Break() {
    *this = MessageReader();
    broken_ = true;
}

void MessageReader::Feed(std::string_view bytes) {
    if (broken_)
        return;
    // What is read already goes, so that a message takes its own size and not twice that.
    bytes_.erase(0, std::exchange(at_, 0));
    if (bytes.size() > kMostMessageBytes || bytes_.size() > kMostMessageBytes)
        Break();
    else
        bytes_ += bytes;
}

// False when the entry is not whole yet, or broken.
bool MessageReader::TakeEntry() {
    const std::string_view rest = std::string_view(bytes_).substr(at_);
    EntryHead head;
    const HeadState state = ReadHead(rest, head);
    const std::size_t size = head.size + head.length + 1;
    const bool too_much = state == HeadState::Whole && (message_bytes_ + size > kMostMessageBytes ||
                                                        message_.size() >= kMostMessageEntries);
    if (state == HeadState::Broken || too_much) {
        Break();
        return false;
    }
    if (state == HeadState::Partial || rest.size() < size)
        return false;
    const auto [entry, fresh] =
        message_.try_emplace(std::string(head.key), rest.substr(head.size, head.length));
    if (!fresh || rest[size - 1] != '\n') {
        Break();
        return false;
    }
    at_ += size;
    message_bytes_ += size;
    return true;
}

std::optional<ConversionMessage> MessageReader::Next() {
    while (!broken_ && at_ < bytes_.size()) {
        if (bytes_[at_] == '\n') {
            ++at_;
            message_bytes_ = 0;
            return std::exchange(message_, {});
        }
        if (!TakeEntry())
            return std::nullopt;
    }
    return std::nullopt;
}

std::string_view TextOf(const ConversionMessage& message, const std::string& key) {
    const auto found = message.find(key);
    return found == message.end() ? std::string_view() : std::string_view(found->second);
}

std::int64_t NumberOf(const ConversionMessage& message, const std::string& key) {
    const std::string_view text = TextOf(message, key);
    return ParseNumber<std::int64_t>(text).value_or(0);
}

}  // namespace zorvane
