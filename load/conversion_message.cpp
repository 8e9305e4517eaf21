#include "load/conversion_message.h"

#include <charconv>
#include <utility>

namespace zorvane {
namespace {

constexpr std::size_t kMaxValue = std::size_t{64} << 20;

}  // namespace

std::string EncodeMessage(const ConversionMessage& message) {
    std::string bytes;
    for (const auto& [key, value] : message)
        bytes += key + "=" + std::to_string(value.size()) + ":" + value + "\n";
    return bytes + "\n";
}

// False when the entry is not whole yet, or broken.
bool MessageReader::TakeEntry() {
    const std::string_view rest = std::string_view(bytes_).substr(at_);
    const std::size_t equals = rest.find('=');
    const std::size_t colon = rest.find(':', equals);
    if (equals == std::string_view::npos || colon == std::string_view::npos)
        return false;
    std::size_t length = 0;
    const char* const number_end = rest.data() + colon;
    const auto [end, error] = std::from_chars(rest.data() + equals + 1, number_end, length);
    broken_ = error != std::errc() || end != number_end || length > kMaxValue;
    if (broken_ || rest.size() - colon - 1 <= length)
        return false;
    broken_ = rest[colon + 1 + length] != '\n';
    if (broken_)
        return false;
    message_[std::string(rest.substr(0, equals))] = rest.substr(colon + 1, length);
    at_ += colon + length + 2;
    return true;
}

std::optional<ConversionMessage> MessageReader::Next() {
    while (!broken_ && at_ < bytes_.size()) {
        if (bytes_[at_] == '\n') {
            bytes_.erase(0, at_ + 1);
            at_ = 0;
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
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace zorvane
