#include "load/readers/mail/mime.h"

#include <algorithm>
#include <array>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "load/readers/web/html_parser.h"
#include "load/readers/web/html_reader.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostFields = 2000;
constexpr std::size_t kMostParts = 2000;

// Takes the first line, without its end, from `bytes`.
std::string_view TakeLine(std::string_view& bytes) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

// A byte behind `mark` in two hexadecimal digits; nothing (-1) without them.
int HexByte(std::string_view text, std::size_t at) {
    if (at + 2 >= text.size())
        return -1;
    const int high = HexDigit(text[at + 1]);
    const int low = HexDigit(text[at + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

std::string DecodeQuoted(std::string_view text, bool in_field) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view rest = text.substr(at, 3);
        if (in_field && text[at] == '_') {
            bytes += ' ';
        } else if (rest.starts_with("=\r\n")) {
            at += 2;
        } else if (rest.starts_with("=\n")) {
            at += 1;
        } else if (const int byte = text[at] == '=' ? HexByte(text, at) : -1; byte >= 0) {
            bytes += static_cast<char>(byte);
            at += 2;
        } else {
            bytes += text[at];
        }
    }
    return bytes;
}

std::string DecodeBase64(std::string_view text) {
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (std::size_t digit = 0; digit < kDigits.size(); ++digit)
        values[static_cast<unsigned char>(kDigits[digit])] = static_cast<std::int8_t>(digit);
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    int count = 0;
    for (const char character : text) {
        const std::int8_t value = values[static_cast<unsigned char>(character)];
        if (value < 0)
            continue;
        bits = (bits << 6) | static_cast<std::uint32_t>(value);
        count += 6;
        if (count < 8)
            continue;
        count -= 8;
        bytes += static_cast<char>((bits >> count) & 0xFF);
    }
    return bytes;
}

// The value of a parameter at `at`, which is left at the semicolon behind it.
std::string ParameterValue(std::string_view field, std::size_t& at) {
    std::string value;
    if (at < field.size() && field[at] == '"') {
        for (++at; at < field.size() && field[at] != '"'; ++at) {
            if (field[at] == '\\' && at + 1 < field.size())
                ++at;
            value += field[at];
        }
        at = std::min(field.find(';', at), field.size());
        return value;
    }
    const std::size_t end = std::min(field.find(';', at), field.size());
    value = Trim(field.substr(at, end - at));
    at = end;
    return value;
}

// "name*0*=utf-8''a%20b", "name*1=c": pieces of one parameter.
void AddParameter(MimeValue& value, std::string name, std::string text) {
    const bool encoded = name.ends_with('*');
    const std::size_t star = name.find('*');
    const bool goes_on =
        star != std::string::npos && !name.substr(star).starts_with("*0") && star + 1 < name.size();
    name = name.substr(0, star);
    if (encoded) {
        const std::size_t language = text.find('\'');
        const std::size_t start =
            language == std::string::npos ? language : text.find('\'', language + 1);
        const bool told = start != std::string::npos && !goes_on;
        const std::string charset = told ? text.substr(0, language) : "utf-8";
        text = DecodeCharset(DecodePercent(told ? text.substr(start + 1) : text), charset, "");
    }
    for (auto& [known, content] : value.parameters) {
        if (known == name && goes_on) {
            content += text;
            return;
        }
    }
    value.parameters.emplace_back(std::move(name), std::move(text));
}

struct EncodedWord {
    std::string charset;
    std::string bytes;
    std::size_t length = 0;  ///< 0: none stands here
};

EncodedWord ReadEncodedWord(std::string_view text) {
    EncodedWord word;
    if (!text.starts_with("=?"))
        return word;
    const std::size_t kind = text.find('?', 2);
    if (kind == std::string_view::npos || kind + 2 >= text.size() || text[kind + 2] != '?')
        return word;
    const std::size_t end = text.find("?=", kind + 3);
    if (end == std::string_view::npos)
        return word;
    const std::string_view content = text.substr(kind + 3, end - kind - 3);
    const char encoding = text[kind + 1];
    if (encoding == 'B' || encoding == 'b')
        word.bytes = DecodeBase64(content);
    else if (encoding == 'Q' || encoding == 'q')
        word.bytes = DecodeQuoted(content, true);
    else
        return word;
    const std::string_view charset = text.substr(2, kind - 2);
    word.charset = ToLower(charset.substr(0, charset.find('*')));
    word.length = end + 2;
    return word;
}

// A field's text as it comes together. Neighbouring encoded words in one charset are decoded
// together, since a character may be cut in two; blanks between encoded words are not shown.
class FieldText {
  public:
    explicit FieldText(std::string_view locale_encoding) : locale_encoding_(locale_encoding) {}

    void AddPlain(std::string_view text) {
        plain_ += text;
        if (Trim(text).empty())
            return;
        Flush(bytes_, charset_);
        charset_.clear();
    }
    void AddWord(const EncodedWord& word) {
        const bool joined = !charset_.empty() && Trim(plain_).empty();
        if (joined)
            plain_.clear();
        if (!joined || charset_ != word.charset)
            Flush(bytes_, charset_);
        Flush(plain_, "");
        charset_ = word.charset;
        bytes_ += word.bytes;
    }
    std::string Finish() {
        Flush(bytes_, charset_);
        Flush(plain_, "");
        return std::move(text_);
    }

  private:
    void Flush(std::string& bytes, std::string_view charset) {
        if (!bytes.empty())
            text_ += DecodeCharset(bytes, charset, locale_encoding_);
        bytes.clear();
    }

    std::string_view locale_encoding_;
    std::string text_;
    std::string plain_;
    std::string bytes_;    // of the words that are open
    std::string charset_;  // of these; empty without any
};

}  // namespace

std::string DecodePercent(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int byte = text[at] == '%' ? HexByte(text, at) : -1;
        bytes += byte >= 0 ? static_cast<char>(byte) : text[at];
        at += byte >= 0 ? 2 : 0;
    }
    return bytes;
}

std::string_view MimeEntity::Field(std::string_view lower) const {
    for (const auto& [name, value] : fields) {
        if (EqualsLower(name, lower))
            return value;
    }
    return {};
}

std::string_view MimeValue::Parameter(std::string_view lower) const {
    for (const auto& [name, content] : parameters) {
        if (name == lower)
            return content;
    }
    return {};
}

MimeEntity ReadEntity(std::string_view bytes) {
    MimeEntity entity;
    while (!bytes.empty()) {
        const std::string_view line = TakeLine(bytes);
        if (line.empty())
            break;
        if (line[0] == ' ' || line[0] == '\t') {
            if (!entity.fields.empty())
                entity.fields.back().second += line;
            continue;
        }
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos && entity.fields.size() < kMostFields)
            entity.fields.emplace_back(Trim(line.substr(0, colon)), Trim(line.substr(colon + 1)));
    }
    entity.body = bytes;
    return entity;
}

MimeValue ReadMimeValue(std::string_view field) {
    MimeValue value;
    std::size_t at = std::min(field.find(';'), field.size());
    value.value = ToLower(Trim(field.substr(0, at)));
    constexpr std::size_t kMostParameters = 100;
    while (at < field.size() && value.parameters.size() < kMostParameters) {
        ++at;
        const std::size_t equals = field.find('=', at);
        if (equals == std::string_view::npos)
            break;
        std::string name = ToLower(Trim(field.substr(at, equals - at)));
        at = std::min(field.find_first_not_of(" \t", equals + 1), field.size());
        AddParameter(value, std::move(name), ParameterValue(field, at));
    }
    return value;
}

std::vector<std::string_view> SplitParts(std::string_view body, std::string_view boundary,
                                         bool* whole) {
    bool ignored = false;
    bool& ends = whole == nullptr ? ignored : *whole;
    std::vector<std::string_view> parts;
    if (boundary.empty())
        return parts;
    const std::string mark = "--" + std::string(boundary);
    std::string_view rest = body;
    const char* from = nullptr;  // of the part that is open
    while (!rest.empty() && parts.size() < kMostParts) {
        const char* line_begin = rest.data();
        const std::string_view line = TakeLine(rest);
        if (!line.starts_with(mark))
            continue;
        const std::string_view tail = Trim(line.substr(mark.size()));
        if (!tail.empty() && tail != "--")
            continue;
        if (from != nullptr)
            parts.emplace_back(from, static_cast<std::size_t>(line_begin - from));
        from = rest.data();
        ends = tail == "--";
        if (ends)
            return parts;
    }
    // Cut off in front of the last boundary.
    if (from != nullptr && from < body.data() + body.size())
        parts.emplace_back(from, static_cast<std::size_t>(body.data() + body.size() - from));
    return parts;
}

std::string DecodeBody(std::string_view body, std::string_view encoding) {
    const std::string name = ToLower(Trim(encoding));
    if (name == "base64")
        return DecodeBase64(body);
    if (name == "quoted-printable")
        return DecodeQuoted(body, false);
    return std::string(body);
}

std::string DecodeCharset(std::string_view bytes, std::string_view charset,
                          std::string_view locale_encoding) {
    DetectedEncoding encoding = DetectEncoding(bytes, locale_encoding);
    const std::string label = EncodingByLabel(charset);
    // A wrong "us-ascii" is common; what the bytes look like is nearer to the truth.
    const bool told = !label.empty() && label != "utf-8" && !EqualsLower(charset, "us-ascii");
    if (told && encoding.bom_size == 0)
        encoding.name = label;
    return ToUtf8(DecodeText(bytes, encoding));
}

std::string DecodeField(std::string_view field, std::string_view locale_encoding) {
    std::size_t searches = 4096;  // for the end of a word
    FieldText text(locale_encoding);
    while (!field.empty()) {
        EncodedWord word;
        if (field.starts_with("=?") && searches > 0) {
            --searches;
            word = ReadEncodedWord(field);
        }
        const std::size_t length =
            word.length > 0 ? word.length : std::min(field.find("=?", 1), field.size());
        if (word.length > 0)
            text.AddWord(word);
        else
            text.AddPlain(field.substr(0, length));
        field.remove_prefix(length);
    }
    return text.Finish();
}

}  // namespace zorvane
