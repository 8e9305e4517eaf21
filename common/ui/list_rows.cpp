#include "common/ui/list_rows.h"

#include <algorithm>

#include <QPainter>

#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

void RowModel::SetRows(int count, Provider provider) {
    beginResetModel();
    count_ = count;
    provider_ = std::move(provider);
    endResetModel();
}

int RowModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count_)
        return {};
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
        case Qt::AccessibleTextRole:
            return provider_(index.row()).text;
        case IconRole:
            return provider_(index.row()).icon;
        case ColorRole:
            return static_cast<int>(provider_(index.row()).icon_color);
        case SideRole:
            return provider_(index.row()).side;
        default:
            return {};
    }
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    const ColorTokens& tokens = Tokens();
    painter->save();
    painter->fillRect(option.rect, tokens[Token::Surface]);
    const QRect row = option.rect.adjusted(6, 0, -6, 0);
    if (option.state & (QStyle::State_Selected | QStyle::State_MouseOver))
        PaintBox(*painter, row, kControlCorner, tokens[Token::On], QColor());
    const auto visual = [&](const QRect& place) {
        return QStyle::visualRect(option.direction, option.rect, place);
    };
    QRect inner = row.adjusted(kSmall, 0, -kSmall, 0);
    if (const QString icon = index.data(RowModel::IconRole).toString(); !icon.isEmpty()) {
        const QRect place(inner.left(), inner.center().y() - kIconSize / 2 + 1, kIconSize,
                          kIconSize);
        PaintIcon(*painter, icon, visual(place),
                  tokens[static_cast<Token>(index.data(RowModel::ColorRole).toInt())]);
        inner.setLeft(inner.left() + kIconSize + kSmall);
    }
    const int edge = static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignRight));
    if (const QString side = index.data(RowModel::SideRole).toString(); !side.isEmpty()) {
        painter->setFont(Sized(option.font, kSmallType));
        painter->setPen(tokens[Token::Text2]);
        const QFontMetrics metrics(painter->font());
        const QString shown = metrics.elidedText(side, Qt::ElideMiddle, inner.width() / 2);
        painter->drawText(visual(inner), Qt::AlignVCenter | edge, shown);
        inner.setRight(inner.right() - metrics.horizontalAdvance(shown) - kLarge);
    }
    painter->setFont(option.font);
    painter->setPen(tokens[Token::Text]);
    const QString text = QFontMetrics(option.font)
                             .elidedText(index.data().toString(), Qt::ElideRight, inner.width());
    painter->drawText(visual(inner),
                      static_cast<int>(Qt::AlignVCenter | Qt::TextSingleLine |
                                       QStyle::visualAlignment(option.direction, Qt::AlignLeft)),
                      text);
    painter->restore();
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    // Without a look at the row: a list of 50,000 asks for one and takes it for all.
    return {kLarge, std::max(kListRowHeight, option.fontMetrics.height() + kSmall)};
}

}  // namespace zorvane
