// Rich text as a value: a text with runs of character formats and runs of paragraph formats. It is
// what moves between editors; RTF is made and read only at files and the clipboard.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"

namespace zorvane {

/// A 24-bit colour with red in the low byte: 255 is red, 0xFF0000 blue, 0xFFFFFF white.
struct Color {
    std::int32_t value = 0;
    friend bool operator==(Color, Color) = default;
};

/// The name of a font in UTF-8, at most 63 bytes; a longer name is cut at a whole character. Kept
/// in place, so that a format is copied as plain bytes.
class FontName {
  public:
    constexpr FontName() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a name is written as a literal
    FontName(std::string_view utf8);
    std::string_view view() const { return {bytes_.data(), size_}; }
    friend bool operator==(const FontName&, const FontName&) = default;

  private:
    std::array<char, 63> bytes_{};  // zero behind the name, so that equal names are equal bytes
    std::uint8_t size_ = 0;
};

/// The numbers are those of the RTF writer's table; 3 is what the marks of a difference use.
enum class Underline : std::uint8_t {
    None = 0,
    Single = 1,
    Words = 2,
    Double = 3,
    Dotted = 4,
    Dash = 5,
    DashDot = 6,
    DashDotDot = 7,
    Wave = 8,
    Thick = 9,
    DoubleWave = 10,
    LongDash = 11,
    HeavyWave = 12,
    ThickDotted = 13,
    ThickDash = 14,
    ThickDashDot = 15,
    ThickDashDotDot = 16,
    ThickLongDash = 17
};

enum class Baseline : std::uint8_t { Normal, Superscript, Subscript };

struct CharFormat {
    FontName font{"Courier"};
    std::int32_t half_points = 20;    ///< font size in halves of a point, 1 to 3276
    std::optional<Color> fore_color;  ///< nothing: the reader's own text colour
    std::optional<Color> back_color;  ///< nothing: no background of its own
    Underline underline = Underline::None;
    Baseline baseline = Baseline::Normal;
    bool bold = false;
    bool italic = false;
    bool strikeout = false;
    bool hidden = false;
    friend bool operator==(const CharFormat&, const CharFormat&) = default;
};

enum class Alignment : std::uint8_t { Left, Center, Right, Justify };
enum class TabKind : std::uint8_t { Left, Center, Right, Decimal, Bar };

struct TabStop {
    std::int32_t twips = 0;
    TabKind kind = TabKind::Left;
    friend bool operator==(TabStop, TabStop) = default;
};

/// Distances in twips.
struct ParagraphFormat {
    Alignment alignment = Alignment::Left;
    bool right_to_left = false;
    std::int32_t left_indent = 0;
    std::int32_t right_indent = 0;
    std::int32_t first_line_indent = 0;
    std::int32_t space_before = 0;
    std::int32_t space_after = 0;
    std::int32_t line_spacing = 0;       ///< as RTF's \sl: 0 automatic, negative exact
    bool line_spacing_multiple = false;  ///< as RTF's \slmult
    std::vector<TabStop> tabs;
    friend bool operator==(const ParagraphFormat&, const ParagraphFormat&) = default;
};

/// A run covers `length` code units, counted from the end of the run before. Two neighbouring runs
/// never hold equal formats, and no run is empty.
struct CharRun {
    std::int32_t length = 0;
    CharFormat format;
    friend bool operator==(const CharRun&, const CharRun&) = default;
};
struct ParagraphRun {
    std::int32_t length = 0;
    ParagraphFormat format;
    friend bool operator==(const ParagraphRun&, const ParagraphRun&) = default;
};

/// The lengths of each list of runs add up to the length of the text. A paragraph break is CR LF
/// and counts two; the last paragraph needs none. A lone CR or LF does not occur in an editor.
struct RichText {
    std::u16string text;
    std::vector<CharRun> char_runs;
    std::vector<ParagraphRun> paragraph_runs;

    /// `text` in one format, breaks normalized to CR LF.
    static RichText Plain(std::u16string_view text, const CharFormat& format = {});
    /// The same of a large text that is not needed any more: at no time are there three copies.
    static RichText PlainFrom(std::u16string&& text, const CharFormat& format,
                              RunWatcher* watcher = nullptr);

    std::int32_t Length() const { return static_cast<std::int32_t>(text.size()); }
    bool Empty() const { return text.empty(); }
    /// Puts another text behind this one and joins equal neighbours. Linear in `other`; where
    /// somebody watches, in a way that can be stopped, and then some is missing.
    void Append(const RichText& other, RunWatcher* watcher = nullptr);
    void AppendPlain(std::u16string_view more, const CharFormat& format);
    /// All of the text in one format, its paragraphs in the default one.
    void SetOneFormat(const CharFormat& format);
    friend bool operator==(const RichText&, const RichText&) = default;
};

/// A large text, in a way that can be stopped; then nothing.
RichText CopyOf(const RichText& text, RunWatcher* watcher);

/// The properties of a format that a call sets; what is nothing stays as it is.
struct CharFormatChange {
    std::optional<FontName> font;
    std::optional<std::int32_t> half_points;
    std::optional<std::optional<Color>> fore_color;
    std::optional<std::optional<Color>> back_color;
    std::optional<Underline> underline;
    std::optional<Baseline> baseline;
    std::optional<bool> bold;
    std::optional<bool> italic;
    std::optional<bool> strikeout;

    void ApplyTo(CharFormat& format) const;
};

/// The same for paragraphs.
struct ParagraphFormatChange {
    std::optional<Alignment> alignment;
    std::optional<bool> right_to_left;
    std::optional<std::int32_t> left_indent;
    std::optional<std::int32_t> right_indent;
    std::optional<std::int32_t> first_line_indent;
    std::optional<std::int32_t> space_before;
    std::optional<std::int32_t> space_after;

    void ApplyTo(ParagraphFormat& format) const;
};

}  // namespace zorvane
