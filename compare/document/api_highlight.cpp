#include "compare/document/api_highlight.h"

namespace zorvane {

void ClsAPIHighlight::APIHighlight(Color color) {
    if (editor_ == nullptr)
        return;
    CharFormatChange change;
    change.back_color = color;
    editor_->FormatSelection(change);
}

void ClsAPIHighlight::APIUnderline(std::uint8_t type) {
    constexpr auto kMost = static_cast<std::uint8_t>(Underline::ThickLongDash);
    if (editor_ == nullptr || type > kMost)
        return;
    CharFormatChange change;
    change.underline = static_cast<Underline>(type);
    editor_->FormatSelection(change);
}

void ApplyMark(Editor& editor, TextRange range, const MarkStyle& mark) {
    CharFormatChange change;
    change.fore_color = Color{mark.ForeColor};
    change.bold = mark.bBold;
    change.underline = mark.bUnderline ? Underline::Double : Underline::None;
    change.strikeout = mark.bStrikeout;
    change.italic = mark.bItalic;
    change.back_color = Color{mark.BackColor};
    editor.Format(range, change);
}

}  // namespace zorvane
