#include "common/base/visible_text.h"

#include <cstdint>

namespace zorvane {
namespace {

// Bytes of UTF-8 that begin here and steer the direction of text: U+061C, U+200E, U+200F, U+202A to
// U+202E, U+2066 to U+2069. 0 for none.
std::uint32_t DirectionControl(std::string_view text) {
    if (text.starts_with("\xD8\x9C"))
        return 0x061C;
    if (text.size() < 3 || text[0] != '\xE2' || (text[1] != '\x80' && text[1] != '\x81'))
        return 0;
    const std::uint32_t code =
        0x2000U + (text[1] == '\x81' ? 0x40U : 0U) + (static_cast<unsigned char>(text[2]) & 0x3FU);
    const bool steers = code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
                        (code >= 0x2066 && code <= 0x2069);
    return steers ? code : 0;
}

std::string NumberOf(std::uint32_t code) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "[U+";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += kDigits[(code >> static_cast<unsigned>(shift)) & 0xFU];
    return text + "]";
}

void AppendPicture(std::string& out, unsigned char byte) {
    constexpr unsigned char kDelete = 0x7F;
    out.append("\xE2\x90").append(1, static_cast<char>(byte == kDelete ? 0xA1 : 0x80 + byte));
}

class VisibleWriter {
  public:
    VisibleWriter(std::string_view text, LineBreaks line_breaks)
        : rest_(text), ends_(line_breaks) {}

    std::string Write() {
        out_.reserve(rest_.size());
        while (!rest_.empty())
            rest_.remove_prefix(Take());
        return std::move(out_);
    }

  private:
    // How many bytes were taken.
    std::size_t Take() {
        const auto byte = static_cast<unsigned char>(rest_[0]);
        if (byte < 0x20 || byte == 0x7F)
            return TakeControl(byte);
        if (byte == 0xC2 && rest_.size() > 1 && static_cast<unsigned char>(rest_[1]) < 0xA0) {
            out_ += "\xEF\xBF\xBD";
            return 2;
        }
        if (const std::uint32_t code = DirectionControl(rest_); code != 0) {
            out_ += NumberOf(code);
            return byte == 0xD8 ? 2 : 3;
        }
        out_ += rest_[0];
        return 1;
    }

    std::size_t TakeControl(unsigned char byte) {
        const bool pair = rest_.starts_with("\r\n");
        if (byte == '\t') {
            out_ += '\t';
        } else if (ends_ != LineBreaks::Shown && (byte == '\n' || pair)) {
            out_ += ends_ == LineBreaks::Indented ? "\n  " : "\n";
            return pair ? 2 : 1;
        } else {
            AppendPicture(out_, byte);
        }
        return 1;
    }

    std::string_view rest_;
    LineBreaks ends_;
    std::string out_;
};

}  // namespace

std::string VisibleText(std::string_view utf8, LineBreaks line_breaks) {
    return VisibleWriter(utf8, line_breaks).Write();
}

}  // namespace zorvane
