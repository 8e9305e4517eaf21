#include "compare/ui/card_ground.h"

#include <algorithm>

#include <QEvent>
#include <QPainter>

#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

namespace {

constexpr int kWidest = 640;

}  // namespace

CardGround::CardGround(QWidget* parent) : QWidget(parent) {
    hide();
}

void CardGround::SetCard(Card* card) {
    if (card_ != nullptr) {
        card_->hide();
        card_->deleteLater();  // one of its buttons may have asked for this
    }
    card_ = card;
    setVisible(card != nullptr);
    if (card == nullptr)
        return;
    card->setParent(this);
    Arrange();
    card->show();
    raise();
}

// A little above the middle, where the eye looks for it.
void CardGround::Arrange() {
    if (card_ == nullptr)
        return;
    const int wide = std::min(kWidest, width() - 2 * measures::kWindowEdge);
    const int tall =
        card_->hasHeightForWidth() ? card_->heightForWidth(wide) : card_->sizeHint().height();
    card_->setGeometry((width() - wide) / 2, std::max(0, (height() - tall) / 2), wide, tall);
}

void CardGround::resizeEvent(QResizeEvent*) {
    Arrange();
}

void CardGround::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        Arrange();
}

void CardGround::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Tokens()[Token::Window]);
}

}  // namespace zorvane
