#include "common/ui/style_sheet.h"

#include "common/ui/measures.h"

namespace zorvane {

namespace {

struct NamedToken {
    const char* name;
    Token token;
};

// "@name" in a rule; no name is the start of another that stands behind it.
constexpr NamedToken kNames[] = {
    {"@window", Token::Window},       {"@surface", Token::Surface}, {"@paper", Token::Paper},
    {"@text2", Token::Text2},         {"@text", Token::Text},       {"@muted", Token::Muted},
    {"@disabled", Token::Disabled},   {"@border", Token::Border},   {"@hairline", Token::Hairline},
    {"@inktext", Token::InkText},     {"@ink", Token::Ink},         {"@on", Token::On},
    {"@errortext", Token::ErrorText}, {"@handle", Token::Muted},
};

// A control is 32 high with its edge; an edge of two pixels takes one of the padding.
constexpr const char* kButtonRules = R"(
QPushButton { min-height: 30px; padding: 0 15px; border: 1px solid @border; border-radius: 6px;
  background: @surface; color: @text; }
QPushButton:hover, QPushButton:checked, QPushButton:pressed { background: @on; }
QPushButton:focus { border: 2px solid @ink; padding: 0 14px; min-height: 28px; }
QPushButton:disabled { color: @disabled; border-color: @hairline; background: @surface; }
QPushButton[look="primary"] { background: @ink; color: @inktext; border-color: @ink;
  font-weight: 600; }
QPushButton[look="primary"]:focus { border: 2px solid @ink; background: @ink; }
QPushButton[look="primary"]:pressed { background: @text; }
QPushButton[look="primary"]:disabled { background: @on; color: @disabled; border-color: @on; }
QPushButton[look="flat"] { border: 1px solid transparent; background: transparent;
  padding: 0 11px; }
QPushButton[look="flat"]:hover, QPushButton[look="flat"]:checked { background: @on; }
QPushButton[look="flat"]:focus { border: 2px solid @ink; padding: 0 10px; }
QToolButton[look="icon"] { min-width: 28px; min-height: 28px; border: 2px solid transparent;
  border-radius: 6px; background: transparent; color: @text; }
QToolButton[look="icon"]:hover, QToolButton[look="icon"]:checked { background: @on;
  border-color: @on; }
QToolButton[look="icon"]:focus { border-color: @ink; }
)";

constexpr const char* kLabelRules = R"(
QLabel[look="caption"], QLabel[look="hint"] { color: @text2; font-size: %1pt; }
QLabel[look="caption"]:disabled, QLabel[look="hint"]:disabled { color: @disabled; }
QLabel[look="beside"] { color: @text2; }
QLabel[look="beside"]:disabled { color: @disabled; }
QLabel[look="heading"] { color: @text; font-weight: 600; }
QLabel[look="error"] { color: @errortext; font-size: %1pt; }
QLabel[look="keys"] { color: @text2; background: @paper; border: 1px solid @hairline;
  border-radius: 4px; padding: 3px 9px; font-size: %1pt; }
QToolTip { color: @inktext; background: @ink; border: 1px solid @ink; padding: 4px 8px; }
)";

constexpr const char* kRestRules = R"(
QScrollBar:vertical { background: transparent; width: 12px; margin: 0; border: none; }
QScrollBar:horizontal { background: transparent; height: 12px; margin: 0; border: none; }
QScrollBar::handle:vertical { background: @border; border-radius: 4px; min-height: 28px;
  margin: 2px; }
QScrollBar::handle:horizontal { background: @border; border-radius: 4px; min-width: 28px;
  margin: 2px; }
QScrollBar::handle:hover { background: @muted; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; border: none; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QHeaderView::section { background: @surface; color: @text2; font-weight: 600; border: none;
  border-right: 1px solid @hairline; border-bottom: 1px solid @hairline; padding: 0 15px;
  min-height: 30px; }
)";

}  // namespace

QString StyleSheetOf(const ColorTokens& tokens, double font_points) {
    QString sheet =
        QString::fromLatin1(kButtonRules) +
        QString::fromLatin1(kLabelRules).arg(font_points * measures::kSmallType, 0, 'f', 2) +
        QString::fromLatin1(kRestRules);
    for (const NamedToken& row : kNames)
        sheet.replace(QLatin1String(row.name), tokens[row.token].name());
    return sheet;
}

}  // namespace zorvane
