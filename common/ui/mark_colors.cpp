#include "common/ui/mark_colors.h"

#include "common/ui/contrast.h"

namespace zorvane {

StoredColors DefaultColors(MarkKind kind) {
    switch (kind) {
        case MarkKind::Changed:
            return {.fore = 0x0000FF};
        case MarkKind::Deleted:
            return {.fore = 0xFF0000};
        case MarkKind::Added:
            return {.fore = 0x008000};
        case MarkKind::Moved:
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

MarkColors PaintedColors(const ColorTokens& tokens, MarkKind kind) {
    const auto colors = [&](Token text, Token word, Token row) {
        return MarkColors{tokens[text], tokens[word], tokens[text], tokens[row]};
    };
    switch (kind) {
        case MarkKind::Changed:
            return colors(Token::ChangedText, Token::ChangedWord, Token::ChangedRow);
        case MarkKind::Deleted:
            return colors(Token::DeletedText, Token::DeletedWord, Token::DeletedRow);
        case MarkKind::Added:
            return colors(Token::AddedText, Token::AddedWord, Token::AddedRow);
        case MarkKind::Moved:
            break;
    }
    return colors(Token::MovedText, Token::MovedWord, Token::MovedRow);
}

MarkColors PaintedColors(const ColorTokens& tokens, MarkKind kind, const StoredColors& stored) {
    MarkColors colors = PaintedColors(tokens, kind);
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
