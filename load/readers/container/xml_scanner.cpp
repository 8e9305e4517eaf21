#include "load/readers/container/xml_scanner.h"

#include <cstring>

#include "common/base/parse_number.h"
#include "common/base/surrogates.h"
#include "common/base/text_bytes.h"

namespace zorvane {
namespace {

constexpr std::size_t kChunk = std::size_t{256} << 10;
constexpr std::string_view kCdata = "<![CDATA[";
// One tag or one stretch of text; nothing that an office program writes comes near.
constexpr std::size_t kLongestToken = std::size_t{32} << 20;

bool IsSpace(char character) {
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

std::string_view Local(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// The character that an entity stands for, 0 when it is none of XML's own.
char32_t EntityOf(std::string_view name) {
    if (name == "lt")
        return U'<';
    if (name == "gt")
        return U'>';
    if (name == "amp")
        return U'&';
    if (name == "quot")
        return U'"';
    if (name == "apos")
        return U'\'';
    if (name.size() < 2 || name[0] != '#')
        return 0;
    const bool hexadecimal = name[1] == 'x' || name[1] == 'X';
    const auto number =
        ParseNumber<std::uint32_t>(name.substr(hexadecimal ? 2 : 1), hexadecimal ? 16 : 10);
    return number && *number <= 0x10FFFF && !IsSurrogate(*number) ? *number : 0xFFFD;
}

}  // namespace

XmlScanner::XmlScanner(PartStream& stream) : stream_(stream), buffer_(kChunk, '\0') {}

// More bytes behind those that are not yet used. False at the end.
bool XmlScanner::Fill() {
    if (at_end_)
        return false;
    if (begin_ > 0) {
        std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        consumed_ += begin_;
        begin_ = 0;
    }
    if (end_ == buffer_.size()) {
        if (buffer_.size() >= kLongestToken) {
            too_large_ = at_end_ = true;
            return false;
        }
        buffer_.resize(buffer_.size() * 2);
    }
    const std::size_t got = stream_.Read(buffer_.data() + end_, buffer_.size() - end_);
    end_ += got;
    at_end_ = got == 0;
    return got > 0;
}

// `from` and `at` count from the first byte that is not yet used.
bool XmlScanner::Find(std::string_view what, std::size_t from, std::size_t& at) {
    while (true) {
        const std::string_view rest(buffer_.data() + begin_, end_ - begin_);
        const std::size_t found = rest.find(what, from);
        if (found != std::string_view::npos) {
            at = found;
            return true;
        }
        from = rest.size() < what.size() ? from : std::max(from, rest.size() - what.size() + 1);
        if (!Fill())
            return false;
    }
}

bool XmlScanner::FindTagEnd(std::size_t& at) {
    char quote = 0;
    std::size_t index = 1;
    while (true) {
        const char* const bytes = buffer_.data() + begin_;
        const std::size_t size = end_ - begin_;
        for (; index < size; ++index) {
            const char character = bytes[index];
            if (quote != 0) {
                if (character == quote)
                    quote = 0;
            } else if (character == '>') {
                at = index;
                return true;
            } else if (character == '"' || character == '\'') {
                quote = character;
            }
        }
        if (!Fill())
            return false;
    }
}

bool XmlScanner::PassOver(std::string_view end) {
    std::size_t at = 0;
    // What is passed over need not be kept together.
    while (true) {
        const std::string_view rest(buffer_.data() + begin_, end_ - begin_);
        at = rest.find(end);
        if (at != std::string_view::npos) {
            begin_ += at + end.size();
            return true;
        }
        begin_ += rest.size() < end.size() ? 0 : rest.size() - end.size() + 1;
        if (!Fill())
            return false;
    }
}

XmlScanner::Token XmlScanner::Next() {
    while (true) {
        if (begin_ == end_ && !Fill())
            return too_large_ || stream_.Failed() || open_ > 0 ? Token::Failed : Token::Done;
        offset_ = consumed_ + begin_;
        Token token = Token::Done;
        if (buffer_[begin_] != '<')
            token = PlainText();
        else
            token = Markup();
        if (token != Token::Done)
            return token;
    }
}

XmlScanner::Token XmlScanner::PlainText() {
    std::size_t at = 0;
    if (!Find("<", 0, at)) {
        at = end_ - begin_;  // text behind the last tag
        if (too_large_ || stream_.Failed())
            return Token::Failed;
    }
    text_ = std::string_view(buffer_.data() + begin_, at);
    raw_text_ = false;
    begin_ += at;
    return Token::Text;
}

// Gives Done for what is passed over.
XmlScanner::Token XmlScanner::Markup() {
    while (end_ - begin_ < kCdata.size() && Fill()) {
    }
    const std::string_view rest(buffer_.data() + begin_, end_ - begin_);
    const char second = rest.size() > 1 ? rest[1] : '\0';
    if (rest.starts_with("<!--")) {
        begin_ += 4;
        return PassOver("-->") ? Token::Done : Token::Failed;
    }
    if (second == '?')
        return PassOver("?>") ? Token::Done : Token::Failed;
    if (rest.starts_with(kCdata))
        return Cdata();
    std::size_t at = 0;
    if (!FindTagEnd(at))
        return Token::Failed;
    if (second != '!')
        return Tag(at);
    begin_ += at + 1;
    return Token::Done;
}

XmlScanner::Token XmlScanner::Cdata() {
    std::size_t at = 0;
    if (!Find("]]>", kCdata.size(), at))
        return Token::Failed;
    text_ = std::string_view(buffer_.data() + begin_, at).substr(kCdata.size());
    raw_text_ = true;
    begin_ += at + 3;
    return Token::Text;
}

XmlScanner::Token XmlScanner::Tag(std::size_t end) {
    std::string_view tag(buffer_.data() + begin_ + 1, end - 1);
    begin_ += end + 1;
    const bool closing = tag.starts_with('/');
    if (closing)
        tag.remove_prefix(1);
    self_closing_ = !closing && tag.ends_with('/');
    if (self_closing_)
        tag.remove_suffix(1);
    std::size_t name_end = 0;
    while (name_end < tag.size() && !IsSpace(tag[name_end]))
        ++name_end;
    name_ = Local(tag.substr(0, name_end));
    attributes_ = tag.substr(name_end);
    if (!self_closing_)
        open_ += closing ? -1 : 1;
    return closing ? Token::End : Token::Start;
}

XmlAttribute NextAttribute(std::string_view& rest) {
    std::size_t at = 0;
    while (at < rest.size() && IsSpace(rest[at]))
        ++at;
    const std::size_t equal = rest.find('=', at);
    if (equal == std::string_view::npos)
        return {};
    std::size_t name_end = equal;
    while (name_end > at && IsSpace(rest[name_end - 1]))
        --name_end;
    const std::string_view name = rest.substr(at, name_end - at);
    at = equal + 1;
    while (at < rest.size() && IsSpace(rest[at]))
        ++at;
    const std::size_t close =
        at < rest.size() ? rest.find(rest[at], at + 1) : std::string_view::npos;
    if (close == std::string_view::npos)
        return {};
    const std::string_view value = rest.substr(at + 1, close - at - 1);
    rest.remove_prefix(close + 1);
    return {Local(name), value};
}

std::string_view XmlScanner::Attribute(std::string_view local_name) const {
    std::string_view rest = attributes_;
    while (true) {
        const XmlAttribute attribute = NextAttribute(rest);
        if (attribute.name.empty() || attribute.name == local_name)
            return attribute.value;
    }
}

void XmlScanner::AppendText(std::string& out) const {
    if (raw_text_)
        out += text_;
    else
        AppendDecoded(text_, out);
}

ReadEnd XmlScanner::Fault() const {
    if (too_large_ || stream_.Error() == ReadError::TooLarge)
        return ReadEnd::Fault(ReadError::TooLarge, "a part of the document is too large");
    return ReadEnd::Fault(ReadError::Damaged, "a part of the document ends too early");
}

namespace {

// CR LF becomes LF, and so does a CR alone.
void AppendLineEnd(std::string_view& raw, std::string& out) {
    raw.remove_prefix(1);
    if (!raw.starts_with('\n'))
        out += '\n';
}

// An ampersand that begins no entity stands for itself.
void AppendEntity(std::string_view& raw, std::string& out) {
    constexpr std::size_t kLongestEntity = 12;
    const std::size_t end = raw.substr(0, kLongestEntity).find(';');
    const char32_t character = end == std::string_view::npos ? 0 : EntityOf(raw.substr(1, end - 1));
    if (character == 0) {
        out += '&';
        raw.remove_prefix(1);
        return;
    }
    AppendUtf8(character, out);
    raw.remove_prefix(end + 1);
}

}  // namespace

void AppendDecoded(std::string_view raw, std::string& out) {
    while (true) {
        std::size_t special = 0;
        while (special < raw.size() && raw[special] != '&' && raw[special] != '\r')
            ++special;
        out += raw.substr(0, special);
        raw.remove_prefix(special);
        if (raw.empty())
            return;
        if (raw[0] == '\r')
            AppendLineEnd(raw, out);
        else
            AppendEntity(raw, out);
    }
}

}  // namespace zorvane
