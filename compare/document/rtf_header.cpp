#include "compare/document/rtf_header.h"

namespace zorvane {
namespace {

constexpr std::size_t kLongestFontName = 4096;

}  // namespace

bool RtfHeader::Take(const RtfWord& word, std::int32_t number) {
    switch (word.action) {
        case RtfAction::DefaultFont:
            default_font_ = number;
            return true;
        case RtfAction::AnsiCodePage:
            page_ = CodePage{number};
            return true;
        case RtfAction::CodePageFixed:
            page_ = CodePage{word.value};
            return true;
        case RtfAction::FontCharset:
            fonts_[font_].page = CodePageOfCharset(number);
            return true;
        case RtfAction::FontCodePage:
            if (number > 0)
                fonts_[font_].page = CodePage{number};
            return true;
        default:
            return TakeColorPart(word, number);
    }
}

bool RtfHeader::TakeColorPart(const RtfWord& word, std::int32_t number) {
    int shift = 0;
    if (word.action == RtfAction::Green)
        shift = 8;
    else if (word.action == RtfAction::Blue)
        shift = 16;
    else if (word.action != RtfAction::Red)
        return false;
    color_.value |= (number & 0xFF) << shift;
    has_color_ = true;
    return true;
}

void RtfHeader::TakeFontBytes(std::string_view bytes) {
    if (font_bytes_.size() < kLongestFontName)
        font_bytes_ += bytes;
    EndFontName();
}

void RtfHeader::TakeFontUnit(char16_t unit) {
    FlushFontName();
    font_name_ += unit;
}

// Bytes of a name wait, so that both halves of a double-byte character are there.
void RtfHeader::FlushFontName() {
    const CodePage page = fonts_[font_].page;
    const bool own = page.number != 0 && page != kSymbolPage;
    font_name_ += DecodeCodePage(font_bytes_, own ? page : page_);
    font_bytes_.clear();
}

void RtfHeader::EndFontName() {
    if (font_bytes_.find(';') == std::string::npos)
        return;
    font_bytes_.erase(font_bytes_.find(';'));
    FlushFontName();
    fonts_[font_].name = std::string(Trim(ToUtf8(font_name_)));
    font_name_.clear();
}

void RtfHeader::TakeColorBytes(std::string_view bytes) {
    for (const char character : bytes) {
        if (character != ';')
            continue;
        colors_.push_back(has_color_ ? std::optional<Color>(color_) : std::nullopt);
        color_ = Color{};
        has_color_ = false;
    }
}

const RtfHeader::Font* RtfHeader::FontAt(std::int32_t number) const {
    const auto font = fonts_.find(number);
    return font == fonts_.end() ? nullptr : &font->second;
}

std::optional<Color> RtfHeader::ColorAt(std::int32_t index) const {
    const auto at = static_cast<std::size_t>(index);
    return index < 0 || at >= colors_.size() ? std::nullopt : colors_[at];
}

}  // namespace zorvane
