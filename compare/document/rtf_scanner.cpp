#include "compare/document/rtf_scanner.h"

#include <algorithm>
#include <array>
#include <limits>

#include "common/base/ascii.h"

namespace zorvane {
namespace {

constexpr std::size_t kLongestWord = 32;

constexpr auto kEndsText = [] {
    std::array<bool, 256> ends{};
    for (const char end : {'{', '}', '\\', '\r', '\n'})
        ends[static_cast<unsigned char>(end)] = true;
    return ends;
}();

}  // namespace

bool RtfScanner::Next(RtfToken& token) {
    const char character = bytes_[at_];
    switch (character) {
        case '{':
            ++at_;
            token.kind = RtfToken::Kind::GroupBegin;
            return true;
        case '}':
            ++at_;
            token.kind = RtfToken::Kind::GroupEnd;
            return true;
        case '\r':
        case '\n':
        case '\0':
            ++at_;
            return false;
        case '\\':
            break;
        default:
            Text(token);
            return true;
    }
    if (++at_ == bytes_.size())
        return false;
    if (IsAsciiLetter(bytes_[at_])) {
        Word(token);
        return true;
    }
    token.kind = RtfToken::Kind::Symbol;
    token.byte = bytes_[at_++];
    if (token.byte == '\'')
        HexByte(token);
    return true;
}

void RtfScanner::Skip(std::size_t bytes) {
    at_ += std::min(bytes, bytes_.size() - at_);
}

void RtfScanner::Text(RtfToken& token) {
    std::size_t end = at_ + 1;
    while (end < bytes_.size() && !kEndsText[static_cast<unsigned char>(bytes_[end])])
        ++end;
    token.kind = RtfToken::Kind::Text;
    token.text = bytes_.substr(at_, end - at_);
    at_ = end;
}

void RtfScanner::Word(RtfToken& token) {
    const std::size_t most = std::min(bytes_.size(), at_ + kLongestWord);
    std::size_t end = at_ + 1;
    while (end < most && IsAsciiLetter(bytes_[end]))
        ++end;
    token.kind = RtfToken::Kind::Word;
    token.text = bytes_.substr(at_, end - at_);
    at_ = end;
    token.parameter = Parameter();
    if (at_ < bytes_.size() && bytes_[at_] == ' ')
        ++at_;
}

void RtfScanner::HexByte(RtfToken& token) {
    if (at_ + 2 > bytes_.size()) {
        at_ = bytes_.size();
        return;
    }
    const int high = HexDigit(bytes_[at_]);
    const int low = HexDigit(bytes_[at_ + 1]);
    if (high < 0 || low < 0)
        return;
    at_ += 2;
    token.kind = RtfToken::Kind::Byte;
    token.byte = static_cast<char>(high * 16 + low);
}

std::optional<std::int32_t> RtfScanner::Parameter() {
    constexpr std::int64_t kBeyond = std::int64_t{1} << 32;  // of all that a parameter can be
    std::size_t end = at_;
    const bool negative = end < bytes_.size() && bytes_[end] == '-';
    if (negative)
        ++end;
    const std::size_t digits = end;
    std::int64_t number = 0;
    for (; end < bytes_.size() && IsAsciiDigit(bytes_[end]); ++end)
        number = std::min(number * 10 + (bytes_[end] - '0'), kBeyond);
    if (end == digits)
        return std::nullopt;
    at_ = end;
    if (negative)
        number = -number;
    const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
    return fits ? static_cast<std::int32_t>(number) : 0;
}

}  // namespace zorvane
