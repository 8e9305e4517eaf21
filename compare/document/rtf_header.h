// The fonts, colours and code pages that an RTF document declares and its text refers to by number.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/text_encoding.h"
#include "compare/document/rich_text.h"
#include "compare/document/rtf_tables.h"

namespace zorvane {

class RtfHeader {
  public:
    struct Font {
        std::string name;
        CodePage page{0};  ///< 0: the document's
    };

    /// Takes a control word of the header; false when it is none.
    bool Take(const RtfWord& word, std::int32_t number);

    // Inside the table of fonts.
    void BeginFont(std::int32_t number) { font_ = number; }
    void TakeFontBytes(std::string_view bytes);
    /// One unit of a name that stands as a number.
    void TakeFontUnit(char16_t unit);
    /// A name ends at a semicolon, or with its group.
    void EndFontName();

    /// Inside the table of colours: each semicolon ends one.
    void TakeColorBytes(std::string_view bytes);

    /// nullptr: no such font.
    const Font* FontAt(std::int32_t number) const;
    std::int32_t DefaultFont() const { return default_font_; }
    /// None: the automatic colour.
    std::optional<Color> ColorAt(std::int32_t index) const;
    CodePage Page() const { return page_; }
    CodePage PageOf(const Font& font) const { return font.page.number == 0 ? page_ : font.page; }

  private:
    bool TakeColorPart(const RtfWord& word, std::int32_t number);
    void FlushFontName();

    std::map<std::int32_t, Font> fonts_;
    std::vector<std::optional<Color>> colors_;
    std::int32_t default_font_ = 0;
    CodePage page_{1252};
    std::int32_t font_ = 0;  // the one at work
    std::string font_bytes_;
    std::u16string font_name_;
    Color color_;  // the one at work
    bool has_color_ = false;
};

}  // namespace zorvane
