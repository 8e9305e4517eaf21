#include "common/ui/drop_area.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPainter>
#include <QVBoxLayout>

#include "common/ui/dropped_files.h"
#include "common/ui/icons.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kIconTop = 24;
constexpr int kHeight = 176;

}  // namespace

DropArea::DropArea(const QString& invitation, QWidget* parent)
    : QFrame(parent), invitation_(invitation), words_(new QLabel(invitation, this)) {
    setAcceptDrops(true);
    setAccessibleName(invitation);
    setMinimumHeight(kHeight);
    words_->setProperty(look::kProperty, QString::fromLatin1(look::kHeading));
    words_->setAlignment(Qt::AlignCenter);
    words_->setTextFormat(Qt::PlainText);
    words_->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kLarge, kIconTop + kColumnGap + kMedium, kLarge, kColumnGap);
    rows->addWidget(words_, 1);
    buttons_ = new QHBoxLayout;
    buttons_->setSpacing(kSmall);
    buttons_->addStretch(1);
    buttons_->addStretch(1);
    rows->addLayout(buttons_);
}

void DropArea::AddButton(QPushButton* button) {
    buttons_->insertWidget(buttons_->count() - 1, button);
}

void DropArea::SetInvitation(const QString& invitation) {
    if (words_->text() == invitation_)
        words_->setText(invitation);
    invitation_ = invitation;
}

void DropArea::SetChosen(const QString& name) {
    words_->setText(name.isEmpty() ? invitation_ : name);
    setAccessibleDescription(name);
}

void DropArea::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ColorTokens& tokens = Tokens();
    QPen pen(tokens[hovered_ ? Token::Ink : Token::Border], hovered_ ? kFocusLine : 1.5);
    if (!hovered_)
        pen.setDashPattern({5, 3});
    painter.setPen(pen);
    painter.setBrush(tokens[Token::Paper]);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kCardCorner, kCardCorner);
    PaintIcon(painter, QStringLiteral("file"),
              QRectF((width() - kColumnGap) / 2.0, kIconTop, kColumnGap, kColumnGap),
              tokens[Token::Text2]);
}

void DropArea::SetHovered(bool hovered) {
    hovered_ = hovered;
    update();
}

void DropArea::dragEnterEvent(QDragEnterEvent* event) {
    if (!event->mimeData()->hasUrls() && !event->mimeData()->hasText())
        return;
    event->acceptProposedAction();
    SetHovered(true);
}

void DropArea::dragLeaveEvent(QDragLeaveEvent*) {
    SetHovered(false);
}

void DropArea::dropEvent(QDropEvent* event) {
    SetHovered(false);
    const QStringList paths = DroppedFiles(*event->mimeData());
    event->acceptProposedAction();
    if (!paths.isEmpty())
        Q_EMIT FilesDropped(paths);
    else if (event->mimeData()->hasText())
        Q_EMIT TextDropped(event->mimeData()->text());
}

}  // namespace zorvane
