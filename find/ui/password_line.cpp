#include "find/ui/password_line.h"

#include <utility>

#include <QHBoxLayout>
#include <QPainter>

#include "common/ui/cards.h"
#include "common/ui/icons.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kFieldWidth = 240;

}  // namespace

PasswordLine::PasswordLine(UiText text, QWidget* parent)
    : QFrame(parent),
      text_(std::move(text)),
      words_(MakeLabel(QString(), "", this)),
      field_(new QLineEdit(this)),
      open_(new Button(text_("Open"), ButtonLook::Plain, QString(), this)) {
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(kWindowEdge, kSmall, kWindowEdge, kSmall);
    line->setSpacing(kSmall);
    auto* lock = new QLabel(this);
    lock->setPixmap(
        LookIcon(QStringLiteral("lock"), Token::AmberText).pixmap(kIconSize, kIconSize));
    line->addWidget(lock);
    words_->setWordWrap(false);
    line->addWidget(words_);
    field_->setEchoMode(QLineEdit::Password);
    field_->setMaximumWidth(kFieldWidth);
    line->addWidget(field_, 1);
    line->addWidget(open_);
    line->addStretch(1);
    connect(field_, &QLineEdit::returnPressed, this, [this] { Give(); });
    connect(open_, &QPushButton::clicked, this, [this] { Give(); });
    hide();
}

void PasswordLine::Show(int documents, bool tried) {
    words_->setText(
        (tried ? text_("Protected by another password: %1") : text_("Protected by a password: %1"))
            .arg(documents));
    field_->setPlaceholderText(text_("Password"));
    field_->setAccessibleName(text_("Password"));
    field_->setToolTip(text_("The password is forgotten when this window closes."));
    open_->SetCaption(text_("Open"));
    setVisible(documents > 0);
}

void PasswordLine::Give() {
    const QString password = field_->text();
    field_->clear();
    if (!password.isEmpty())
        given(password);
}

void PasswordLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

}  // namespace zorvane
