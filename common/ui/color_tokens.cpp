#include "common/ui/color_tokens.h"

#include <algorithm>
#include <memory>

#include <QStyle>
#include <QStyleFactory>

#include "common/ui/contrast.h"

namespace zorvane {

namespace {

struct TokenRow {
    Token token;
    QRgb light;
    QRgb dark;
};

constexpr TokenRow kTokenRows[] = {
    {Token::Window, 0xFFF1F3F5, 0xFF202429},      {Token::Surface, 0xFFFAFBFC, 0xFF272C32},
    {Token::Paper, 0xFFFFFFFF, 0xFF1A1D21},       {Token::Text, 0xFF1D242B, 0xFFE7EAED},
    {Token::Text2, 0xFF4F5A66, 0xFFB7C0C9},       {Token::Muted, 0xFF626D79, 0xFF97A1AB},
    {Token::Disabled, 0xFF99A2AB, 0xFF6B747D},    {Token::Border, 0xFF818A94, 0xFF77818C},
    {Token::Hairline, 0xFFD9DEE3, 0xFF393F46},    {Token::Ink, 0xFF2B3B4B, 0xFFC6D3E0},
    {Token::InkText, 0xFFFFFFFF, 0xFF17202A},     {Token::On, 0xFFDCE2E8, 0xFF3A424B},
    {Token::ChangedText, 0xFF9A3600, 0xFFFFA974}, {Token::ChangedWord, 0xFFFDE3D0, 0xFF5A2C10},
    {Token::ChangedRow, 0xFFFEF5EE, 0xFF2A211C},  {Token::DeletedText, 0xFF1A4E9B, 0xFF94C0FF},
    {Token::DeletedWord, 0xFFD6E4F9, 0xFF1D3860}, {Token::DeletedRow, 0xFFF1F6FD, 0xFF1B2431},
    {Token::AddedText, 0xFF00664D, 0xFF82E6C0},   {Token::AddedWord, 0xFFCFEEDF, 0xFF11452F},
    {Token::AddedRow, 0xFFEFF9F4, 0xFF192721},    {Token::MovedText, 0xFF414C58, 0xFFC6CFD8},
    {Token::MovedWord, 0xFFE2E6EA, 0xFF3A434C},   {Token::MovedRow, 0xFFF6F7F9, 0xFF22272C},
    {Token::Selection, 0xFFCBD6E2, 0xFF475765},   {Token::SelectionText, 0xFF10161C, 0xFFFFFFFF},
    {Token::Hit, 0xFFFFE587, 0xFF5E4B00},         {Token::HitText, 0xFF10161C, 0xFFFFFFFF},
    {Token::ThisHit, 0xFFF5B800, 0xFFFFD447},     {Token::ThisHitText, 0xFF10161C, 0xFF10161C},
    {Token::HatchGround, 0xFFF5F7F8, 0xFF1F2327}, {Token::HatchLine, 0xFFDCE1E6, 0xFF30363D},
    {Token::AmberText, 0xFF7A5200, 0xFFFFD88A},   {Token::AmberGround, 0xFFFFF3D1, 0xFF40330F},
    {Token::ErrorText, 0xFF9A1B2E, 0xFFFFB3BC},   {Token::ErrorGround, 0xFFFDE7EA, 0xFF4A1D24},
};
static_assert(std::size(kTokenRows) == kTokenCount);

constexpr std::array<Token, 4> kMarkTexts{Token::ChangedText, Token::DeletedText, Token::AddedText,
                                          Token::MovedText};

struct PaletteRow {
    QPalette::ColorRole role;
    Token token;
};

constexpr PaletteRow kPaletteRows[] = {
    {QPalette::Window, Token::Surface},
    {QPalette::WindowText, Token::Text},
    {QPalette::Base, Token::Paper},
    {QPalette::AlternateBase, Token::Window},
    {QPalette::Text, Token::Text},
    {QPalette::Button, Token::Surface},
    {QPalette::ButtonText, Token::Text},
    {QPalette::BrightText, Token::Text},
    {QPalette::PlaceholderText, Token::Muted},
    {QPalette::Highlight, Token::Selection},
    {QPalette::HighlightedText, Token::SelectionText},
    {QPalette::ToolTipBase, Token::Ink},
    {QPalette::ToolTipText, Token::InkText},
    {QPalette::Link, Token::DeletedText},
    {QPalette::LinkVisited, Token::MovedText},
    {QPalette::Light, Token::Paper},
    {QPalette::Midlight, Token::Hairline},
    {QPalette::Mid, Token::Border},
    {QPalette::Dark, Token::Border},
    {QPalette::Shadow, Token::Border},
};

bool SameMainColors(const QPalette& one, const QPalette& other) {
    const auto same = [&](QPalette::ColorRole role) {
        return one.color(role) == other.color(role);
    };
    return same(QPalette::Window) && same(QPalette::WindowText) && same(QPalette::Base) &&
           same(QPalette::Text);
}

}  // namespace

ColorTokens ColorTokens::Light() {
    ColorTokens tokens;
    for (const TokenRow& row : kTokenRows)
        tokens.colors_[static_cast<std::size_t>(row.token)] = row.light;
    return tokens;
}

ColorTokens ColorTokens::Dark() {
    ColorTokens tokens;
    tokens.scheme_ = Scheme::Dark;
    for (const TokenRow& row : kTokenRows)
        tokens.colors_[static_cast<std::size_t>(row.token)] = row.dark;
    return tokens;
}

ColorTokens ColorTokens::FromPalette(const QPalette& palette) {
    ColorTokens tokens;
    tokens.scheme_ = Scheme::HighContrast;
    const auto set = [&](Token token, const QColor& color) {
        tokens.colors_[static_cast<std::size_t>(token)] = color.rgb();
    };
    const QColor ground = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    // One ground and one text for all: with two of each, not every pair would hold.
    tokens.colors_.fill(ground.rgb());
    for (const Token token :
         {Token::Text, Token::Text2, Token::Muted, Token::Border, Token::Hairline, Token::HatchLine,
          Token::AmberText, Token::ErrorText})
        set(token, text);
    for (const Token token : kMarkTexts)
        set(token, text);
    set(Token::Disabled, palette.color(QPalette::Disabled, QPalette::WindowText));

    QColor strong = palette.color(QPalette::Highlight);
    QColor on_strong = palette.color(QPalette::HighlightedText);
    if (Contrast(strong, on_strong) < kTextContrast || Contrast(strong, ground) < kEdgeContrast) {
        strong = text;
        on_strong = ground;
    }
    for (const Token token : {Token::Ink, Token::Selection, Token::ThisHit})
        set(token, strong);
    for (const Token token : {Token::InkText, Token::SelectionText, Token::ThisHitText})
        set(token, on_strong);
    set(Token::Hit, text);
    set(Token::HitText, ground);
    return tokens;
}

ColorTokens ColorTokens::For(const QPalette& palette) {
    switch (SchemeOf(palette)) {
        case Scheme::Dark:
            return Dark();
        case Scheme::HighContrast:
            return FromPalette(palette);
        case Scheme::Light:
            break;
    }
    return Light();
}

QPalette ColorTokens::Palette() const {
    QPalette palette;
    for (const PaletteRow& row : kPaletteRows)
        palette.setColor(QPalette::All, row.role, (*this)[row.token]);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, (*this)[Token::Disabled]);
    palette.setColor(QPalette::Disabled, QPalette::Base, (*this)[Token::Window]);
    return palette;
}

Scheme SchemeOf(const QPalette& palette) {
    constexpr double kHighContrast = 15;
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const double least = std::min(Contrast(window, text), Contrast(palette.color(QPalette::Base),
                                                                   palette.color(QPalette::Text)));
    if (least > kHighContrast) {
        const std::unique_ptr<QStyle> plain(QStyleFactory::create(QStringLiteral("Fusion")));
        if (!plain || !SameMainColors(palette, plain->standardPalette()))
            return Scheme::HighContrast;
    }
    return window.lightness() < text.lightness() ? Scheme::Dark : Scheme::Light;
}

}  // namespace zorvane
