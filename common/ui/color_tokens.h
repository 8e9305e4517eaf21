// The colours of all windows, by what they are for. Nothing else names a colour.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include <QColor>
#include <QPalette>

namespace zorvane {

enum class Token : std::uint8_t {
    Window,   ///< behind everything
    Surface,  ///< bars, panels, dialogs
    Paper,    ///< documents and fields
    Text,
    Text2,  ///< labels and tabs
    Muted,  ///< numbers in gutters, placeholders
    Disabled,
    Border,    ///< edge of a control
    Hairline,  ///< decoration only
    Ink,       ///< primary button, what is checked, focus
    InkText,
    On,  ///< a toggle that is pressed in, the row under the pointer
    ChangedText,
    ChangedWord,
    ChangedRow,
    DeletedText,
    DeletedWord,
    DeletedRow,
    AddedText,
    AddedWord,
    AddedRow,
    MovedText,
    MovedWord,
    MovedRow,
    Selection,
    SelectionText,
    Hit,
    HitText,
    ThisHit,
    ThisHitText,
    HatchGround,
    HatchLine,
    AmberText,
    AmberGround,
    ErrorText,
    ErrorGround,
};
inline constexpr std::size_t kTokenCount = static_cast<std::size_t>(Token::ErrorGround) + 1;

enum class Scheme : std::uint8_t { Light, Dark, HighContrast };

/// One colour for each token.
class ColorTokens {
  public:
    static ColorTokens Light();
    static ColorTokens Dark();
    /// All from the desktop's palette; marks are told by their signs and lines alone.
    static ColorTokens FromPalette(const QPalette& palette);
    /// The tokens for a desktop with this palette.
    static ColorTokens For(const QPalette& palette);

    QColor operator[](Token token) const {
        return QColor(colors_[static_cast<std::size_t>(token)]);
    }
    Scheme GetScheme() const { return scheme_; }
    /// For what paints by a palette.
    QPalette Palette() const;

    friend bool operator==(const ColorTokens&, const ColorTokens&) = default;

  private:
    std::array<QRgb, kTokenCount> colors_{};
    Scheme scheme_ = Scheme::Light;
};

/// How a desktop with this palette looks. High contrast: both its pairs of text and ground stand
/// above 15, and they are not those that a desktop without a theme gets.
Scheme SchemeOf(const QPalette& palette);

}  // namespace zorvane
