#include "compare/ui/theme_colors.h"

#include "common/ui/mark_colors.h"

namespace zorvane {
namespace {

MarkColors Painted(const ColorTokens& tokens, LookMark kind, const clsVarLong& fore,
                   const clsVarLong& back) {
    const PaintedMark mark =
        PaintedColors(tokens, kind, {.fore = fore.Data(), .back = back.Data()});
    return {mark.text, mark.word, mark.row};
}

}  // namespace

ViewColors ViewColorsOf(const ColorTokens& tokens) {
    ViewColors colors;
    colors.window = tokens[Token::Window];
    colors.paper = tokens[Token::Paper];
    colors.text = tokens[Token::Text];
    colors.text2 = tokens[Token::Text2];
    colors.muted = tokens[Token::Muted];
    colors.hairline = tokens[Token::Hairline];
    colors.border = tokens[Token::Border];
    colors.ink = tokens[Token::Ink];
    colors.ink_text = tokens[Token::InkText];
    colors.selection = tokens[Token::Selection];
    colors.selection_text = tokens[Token::SelectionText];
    colors.hit = tokens[Token::Hit];
    colors.this_hit = tokens[Token::ThisHit];
    colors.this_hit_text = tokens[Token::ThisHitText];
    colors.hatch_ground = tokens[Token::HatchGround];
    colors.hatch_lines = tokens[Token::HatchLine];
    colors.changed = {tokens[Token::ChangedText], tokens[Token::ChangedWord],
                      tokens[Token::ChangedRow]};
    colors.deleted = {tokens[Token::DeletedText], tokens[Token::DeletedWord],
                      tokens[Token::DeletedRow]};
    colors.added = {tokens[Token::AddedText], tokens[Token::AddedWord], tokens[Token::AddedRow]};
    colors.moved = {tokens[Token::MovedText], tokens[Token::MovedWord], tokens[Token::MovedRow]};
    return colors;
}

ViewColors ViewColorsOf(const ColorTokens& tokens, const clsCompareFileOptions& options) {
    ViewColors colors = ViewColorsOf(tokens);
    colors.changed = Painted(tokens, LookMark::Changed, options.lViewChangeForeColorOriginal,
                             options.lViewChangeBackColorOriginal);
    colors.deleted = Painted(tokens, LookMark::Deleted, options.lViewDeletionForeColor,
                             options.lViewDeletionBackColor);
    colors.added = Painted(tokens, LookMark::Added, options.lViewAdditionForeColor,
                           options.lViewAdditionBackColor);
    const PaintedMark moved = PaintedColors(tokens, LookMark::Moved);
    colors.moved = {moved.text, moved.word, moved.row};
    return colors;
}

ViewColors MarkedTextColorsOf(const ColorTokens& tokens, const clsCompareFileOptions& options) {
    ViewColors colors = ViewColorsOf(tokens, options);
    const MarkColors modified =
        Painted(tokens, LookMark::Changed, options.lViewChangeForeColorModified,
                options.lViewChangeBackColorModified);
    colors.marks_in_text = {{
        {FromStored(options.lViewChangeForeColorOriginal.Data()), colors.changed.text},
        {FromStored(options.lViewChangeForeColorModified.Data()), modified.text},
        {FromStored(options.lViewDeletionForeColor.Data()), colors.deleted.text},
        {FromStored(options.lViewAdditionForeColor.Data()), colors.added.text},
    }};
    return colors;
}

}  // namespace zorvane
