// The bytes of an RTF file as groups, control words, control symbols and text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zorvane {

struct RtfToken {
    enum class Kind : std::uint8_t {
        GroupBegin,
        GroupEnd,
        Text,    ///< `text`
        Word,    ///< `text` and `parameter`
        Symbol,  ///< `byte`; also an apostrophe without two digits behind it
        Byte     ///< `byte`, of two hexadecimal digits
    };
    Kind kind = Kind::Text;
    std::string_view text;
    std::optional<std::int32_t> parameter;
    char byte = 0;
};

class RtfScanner {
  public:
    explicit RtfScanner(std::string_view bytes) : bytes_(bytes) {}

    bool AtEnd() const { return at_ >= bytes_.size(); }
    /// Not at the end. False, with `token` as it was, for a break between lines and a file that
    /// ends inside a token; only what its kind has is set.
    bool Next(RtfToken& token);
    /// Behind the last token.
    std::string_view Rest() const { return bytes_.substr(at_); }
    void Skip(std::size_t bytes);

  private:
    void Text(RtfToken& token);
    void Word(RtfToken& token);
    void HexByte(RtfToken& token);
    std::optional<std::int32_t> Parameter();

    std::string_view bytes_;
    std::size_t at_ = 0;
};

}  // namespace zorvane
