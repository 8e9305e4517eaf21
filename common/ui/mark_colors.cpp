#include "common/ui/mark_colors.h"

#include "common/ui/contrast.h"

namespace zorvane {

StoredColors DefaultColors(LookMark kind) {
    switch (kind) {
        case LookMark::Changed:
            return {.fore = 0x0000FF};
        case LookMark::Deleted:
            return {.fore = 0xFF0000};
        case LookMark::Added:
            return {.fore = 0x008000};
        case LookMark::Moved:
            break;
    }
    return {};
}

QColor FromStored(std::int32_t color) {
    return {color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF};
}

std::int32_t ToStored(const QColor& color) {
    return color.red() | (color.green() << 8) | (color.blue() << 16);
}

PaintedMark PaintedColors(const ColorTokens& tokens, LookMark kind) {
    const auto colors = [&](Token text, Token word, Token row) {
        return PaintedMark{tokens[text], tokens[word], tokens[text], tokens[row]};
    };
    switch (kind) {
        case LookMark::Changed:
            return colors(Token::ChangedText, Token::ChangedWord, Token::ChangedRow);
        case LookMark::Deleted:
            return colors(Token::DeletedText, Token::DeletedWord, Token::DeletedRow);
        case LookMark::Added:
            return colors(Token::AddedText, Token::AddedWord, Token::AddedRow);
        case LookMark::Moved:
            break;
    }
    return colors(Token::MovedText, Token::MovedWord, Token::MovedRow);
}

PaintedMark PaintedColors(const ColorTokens& tokens, LookMark kind, const StoredColors& stored) {
    PaintedMark colors = PaintedColors(tokens, kind);
    if (tokens.GetScheme() == Scheme::HighContrast)
        return colors;
    const StoredColors usual = DefaultColors(kind);
    if (stored.fore != usual.fore)
        colors.text = colors.row_text = FromStored(stored.fore);
    if (stored.back != usual.back)
        colors.word = FromStored(stored.back);
    colors.text = MovedToContrast(colors.text, colors.word);
    colors.row_text = MovedToContrast(colors.row_text, colors.row);
    return colors;
}

}  // namespace zorvane
