#include "common/ui/list_box.h"

#include <QEvent>
#include <QPainter>

#include "common/ui/list_rows.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

ListBox::ListBox(const QString& name, int rows, QWidget* parent) : QListWidget(parent) {
    setAccessibleName(name);
    setItemDelegate(new RowDelegate(this));
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(kFocusLine, kTiny, kFocusLine, kTiny);
    viewport()->setAutoFillBackground(false);
    setFixedHeight(rows * kListRowHeight + 2 * kTiny);
}

void ListBox::SetItems(const QStringList& items) {
    clear();
    addItems(items);
}

QString ListBox::Current() const {
    return currentItem() == nullptr ? QString() : currentItem()->text();
}

// The frame is painted below the viewport, by the tokens in force.
bool ListBox::event(QEvent* event) {
    if (event->type() != QEvent::Paint)
        return QListWidget::event(event);
    QPainter painter(this);
    const ColorTokens& tokens = Tokens();
    const bool focus = hasFocus();
    PaintBox(painter, rect(), kControlCorner, tokens[Token::Surface],
             tokens[focus         ? Token::Ink
                    : isEnabled() ? Token::Border
                                  : Token::Hairline],
             focus ? kFocusLine : kHairline);
    return true;
}

void ListBox::focusInEvent(QFocusEvent* event) {
    QListWidget::focusInEvent(event);
    update();
}

void ListBox::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    update();
}

}  // namespace zorvane
