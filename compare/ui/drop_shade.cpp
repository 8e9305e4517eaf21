#include "compare/ui/drop_shade.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>

#include "common/ui/dropped_files.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

DropShade::DropShade(const PerSide<QString>& names, QWidget* parent)
    : QWidget(parent), names_(names) {
    setAcceptDrops(true);
    hide();
}

void DropShade::Begin() {
    setGeometry(parentWidget()->rect());
    show();
    raise();
}

void DropShade::dragEnterEvent(QDragEnterEvent* event) {
    if (DroppedFiles(*event->mimeData()).isEmpty())
        return;
    side_ = SideAt(event->position().x());
    event->acceptProposedAction();
}

void DropShade::dragMoveEvent(QDragMoveEvent* event) {
    side_ = SideAt(event->position().x());
    event->acceptProposedAction();
    update();
}

void DropShade::dragLeaveEvent(QDragLeaveEvent*) {
    hide();
}

void DropShade::dropEvent(QDropEvent* event) {
    hide();
    const QStringList paths = DroppedFiles(*event->mimeData());
    event->acceptProposedAction();
    if (dropped && !paths.isEmpty())
        dropped(SideAt(event->position().x()), paths);
}

// The name stands on a card of its own, so that it can be read over any text.
void DropShade::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ColorTokens& tokens = Tokens();
    const bool left = side_ == Side::Original;
    QRectF half(left ? 0 : width() / 2.0, 0, width() / 2.0, height());
    half.adjust(kTiny, kTiny, -kTiny, -kTiny);
    painter.setPen(QPen(tokens[Token::Ink], kFocusLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(half, kControlCorner, kControlCorner);
    painter.setFont(Sized(font(), kCardTitleType, true));
    const QString& name = names_[side_];
    QRectF card(0, 0, painter.fontMetrics().horizontalAdvance(name) + 2.0 * kColumnGap,
                painter.fontMetrics().height() + 2.0 * kMedium);
    card.moveCenter(half.center());
    PaintBox(painter, card, kCardCorner, tokens[Token::Surface], tokens[Token::Ink]);
    painter.setPen(tokens[Token::Text]);
    painter.drawText(card, Qt::AlignCenter, name);
}

}  // namespace zorvane
