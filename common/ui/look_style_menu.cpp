#include "common/ui/look_style_menu.h"

#include <algorithm>

#include <QPainterPath>

#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kSeparatorHeight = 11;
constexpr int kIconColumn = kMedium + kIconSize + kMedium;
constexpr int kKeyGap = 32;
constexpr int kArrowColumn = 28;

void PaintMark(const QStyleOptionMenuItem& item, QPainter& painter, const QRect& place) {
    const bool enabled = item.state.testFlag(QStyle::State_Enabled);
    const bool checkable = item.checkType != QStyleOptionMenuItem::NotCheckable;
    if (checkable && item.checked) {
        PaintIcon(painter, QStringLiteral("check"), place,
                  Tokens()[enabled ? Token::Text : Token::Disabled]);
        return;
    }
    if (!item.icon.isNull() && !checkable)
        item.icon.paint(&painter, place, Qt::AlignCenter,
                        enabled ? QIcon::Normal : QIcon::Disabled);
}

}  // namespace

QRegion MenuShape(const QRect& rect) {
    QPainterPath shape;
    shape.addRoundedRect(rect, kMenuCorner, kMenuCorner);
    return QRegion(shape.toFillPolygon().toPolygon());
}

QSize MenuItemSize(const QStyleOption& option, const QSize& contents) {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
    if (item == nullptr)
        return contents;
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return {contents.width(), kSeparatorHeight};
    const QFontMetrics metrics(item->font);
    const QString text = item->text.section(QLatin1Char('\t'), 0, 0);
    int width = kIconColumn + metrics.size(Qt::TextShowMnemonic, text).width() + kMedium;
    // The width of the keys is the same for all rows, so that they stand under each other.
    if (item->reservedShortcutWidth > 0)
        width += kKeyGap + item->reservedShortcutWidth;
    else if (item->text.contains(QLatin1Char('\t')))
        width += kKeyGap;
    if (item->menuItemType == QStyleOptionMenuItem::SubMenu)
        width += kArrowColumn;
    return {width, std::max(kListRowHeight, metrics.height() + kSmall)};
}

void PaintMenuItem(const QStyleOptionMenuItem& item, QPainter& painter) {
    const ColorTokens& tokens = Tokens();
    const QRect row = item.rect;
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(row.left(), row.center().y(), row.width(), kHairline,
                         tokens[Token::Hairline]);
        return;
    }
    const bool enabled = item.state.testFlag(QStyle::State_Enabled);
    if (item.state.testFlag(QStyle::State_Selected))
        PaintBox(painter, row, kControlCorner, tokens[Token::On], QColor());
    const auto visual = [&](const QRect& place) {
        return QStyle::visualRect(item.direction, row, place);
    };
    PaintMark(
        item, painter,
        visual({row.left() + kMedium, row.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize}));
    const QString text = item.text.section(QLatin1Char('\t'), 0, 0);
    const QString keys = item.text.section(QLatin1Char('\t'), 1);
    const QRect inner = row.adjusted(kIconColumn, 0, -kMedium, 0);
    painter.setFont(item.font);
    painter.setPen(tokens[enabled ? Token::Text : Token::Disabled]);
    painter.drawText(visual(inner),
                     static_cast<int>(Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine |
                                      QStyle::visualAlignment(item.direction, Qt::AlignLeft)),
                     text);
    painter.setPen(tokens[enabled ? Token::Text2 : Token::Disabled]);
    painter.setFont(Sized(item.font, kSmallType));
    painter.drawText(visual(inner),
                     static_cast<int>(Qt::AlignVCenter | Qt::TextSingleLine |
                                      QStyle::visualAlignment(item.direction, Qt::AlignRight)),
                     keys);
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        PaintIcon(painter, QStringLiteral("chevron-right"),
                  visual({row.right() - kMedium - kIconSize + kTiny,
                          row.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize}),
                  tokens[enabled ? Token::Text2 : Token::Disabled]);
}

void PaintMenuBarItem(const QStyleOptionMenuItem& item, QPainter& painter, const QStyle& style) {
    const ColorTokens& tokens = Tokens();
    painter.fillRect(item.rect, tokens[Token::Surface]);
    if (item.state & (QStyle::State_Selected | QStyle::State_Sunken))
        PaintBox(painter, item.rect.adjusted(1, 4, -1, -4), kControlCorner, tokens[Token::On],
                 QColor());
    int flags = Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip | Qt::TextShowMnemonic;
    if (style.styleHint(QStyle::SH_UnderlineShortcut, &item, nullptr) == 0)
        flags |= Qt::TextHideMnemonic;
    const bool enabled = item.state.testFlag(QStyle::State_Enabled);
    painter.setPen(tokens[enabled ? Token::Text : Token::Disabled]);
    painter.drawText(item.rect, flags, item.text);
}

}  // namespace zorvane
