#include "common/ui/look_style_title.h"

#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

struct TitleButton {
    QStyle::SubControl part;
    Qt::WindowType hint;
};
// From the end of the bar on.
constexpr TitleButton kButtons[] = {{QStyle::SC_TitleBarCloseButton, Qt::WindowSystemMenuHint},
                                    {QStyle::SC_TitleBarMaxButton, Qt::WindowMaximizeButtonHint},
                                    {QStyle::SC_TitleBarMinButton, Qt::WindowMinimizeButtonHint}};
constexpr int kSize = kSmallestTarget;

bool Restores(const QStyleOptionTitleBar& option) {
    constexpr int kNotNormal = Qt::WindowMinimized | Qt::WindowMaximized;
    return (option.titleBarState & kNotNormal) != 0;
}

// A line for minimise, a square for maximise: there is no word for either in so little room.
void PaintSign(QPainter& painter, QStyle::SubControl part, const QRect& place,
               const QColor& color) {
    if (part == QStyle::SC_TitleBarCloseButton) {
        PaintIcon(painter, QStringLiteral("close"),
                  QRectF(place.center().x() - kIconSize * 0.5 + 0.5,
                         place.center().y() - kIconSize * 0.5 + 0.5, kIconSize, kIconSize),
                  color);
        return;
    }
    constexpr double kReach = 4.5;
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const QPointF middle = QRectF(place).center();
    if (part == QStyle::SC_TitleBarMinButton)
        painter.drawLine(middle + QPointF(-kReach, kReach), middle + QPointF(kReach, kReach));
    else
        painter.drawRoundedRect(
            QRectF(middle - QPointF(kReach, kReach), middle + QPointF(kReach, kReach)), 1, 1);
}

}  // namespace

QRect TitleBarPart(const QStyleOptionTitleBar& option, QStyle::SubControl part) {
    const QRect& bar = option.rect;
    int right = bar.right() - kTiny;
    const QStyle::SubControl wanted =
        part == QStyle::SC_TitleBarNormalButton ? QStyle::SC_TitleBarMaxButton : part;
    for (const TitleButton& button : kButtons) {
        if ((option.titleBarFlags & button.hint) == 0)
            continue;
        const QRect place(right - kSize + 1, bar.center().y() - kSize / 2 + 1, kSize, kSize);
        if (button.part == wanted) {
            // Maximise and restore share a place; one of them is there.
            const bool normal = part == QStyle::SC_TitleBarNormalButton;
            const bool shared = button.part == QStyle::SC_TitleBarMaxButton;
            if (shared && normal != Restores(option))
                return {};
            return QStyle::visualRect(option.direction, bar, place);
        }
        right -= kSize + kTiny;
    }
    if (part == QStyle::SC_TitleBarLabel)
        return QStyle::visualRect(
            option.direction, bar,
            QRect(bar.left() + kMedium, bar.top(), right - bar.left() - kMedium, bar.height()));
    return {};
}

void PaintTitleBar(const QStyleOptionTitleBar& option, QPainter& painter) {
    const ColorTokens& tokens = Tokens();
    const bool active = (option.titleBarState & static_cast<int>(QStyle::State_Active)) != 0;
    painter.fillRect(option.rect, tokens[active ? Token::Surface : Token::Window]);
    if (active)
        painter.fillRect(QRect(option.rect.topLeft(), QSize(option.rect.width(), kFocusLine)),
                         tokens[Token::Ink]);
    painter.fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1),
                     tokens[Token::Hairline]);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect label = TitleBarPart(option, QStyle::SC_TitleBarLabel);
    const QFont face = active ? Semibold(painter.font()) : painter.font();
    painter.setFont(face);
    painter.setPen(tokens[active ? Token::Text : Token::Text2]);
    painter.drawText(label,
                     static_cast<int>(Qt::AlignVCenter | Qt::TextSingleLine |
                                      QStyle::visualAlignment(option.direction, Qt::AlignLeft)),
                     QFontMetrics(face).elidedText(option.text, Qt::ElideMiddle, label.width()));
    for (const QStyle::SubControl part :
         {QStyle::SC_TitleBarCloseButton, QStyle::SC_TitleBarMaxButton,
          QStyle::SC_TitleBarNormalButton, QStyle::SC_TitleBarMinButton}) {
        const QRect place = TitleBarPart(option, part);
        if (place.isNull() || (option.subControls & part) == 0)
            continue;
        const bool hovered = (option.activeSubControls & part) != 0 &&
                             (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken)) != 0;
        if (hovered)
            PaintBox(painter, place, kChipCorner, tokens[Token::On], QColor());
        PaintSign(painter, part, place, tokens[active ? Token::Text : Token::Text2]);
    }
    painter.restore();
}

void PaintWindowFrame(const QStyleOption& option, QPainter& painter) {
    painter.fillRect(option.rect, Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Border]);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}

}  // namespace zorvane
