#include "common/ui/cards.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "common/ui/announce.h"
#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

/// An icon that follows the scheme and the window's pixels.
class IconLabel : public QWidget {
  public:
    IconLabel(QString icon, int size, Token color, QWidget* parent)
        : QWidget(parent), icon_(std::move(icon)), color_(color) {
        setFixedSize(size, size);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        PaintIcon(painter, icon_, rect(), Tokens()[color_]);
    }

  private:
    QString icon_;
    Token color_;
};

class Hairline : public QWidget {
  public:
    explicit Hairline(QWidget* parent) : QWidget(parent) {
        setFixedHeight(kHairline);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), Tokens()[Token::Hairline]);
    }
};

}  // namespace

QWidget* MakeHairline(QWidget* parent) {
    return new Hairline(parent);
}

QLabel* MakeLabel(const QString& text, const char* look, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setProperty(look::kProperty, QString::fromLatin1(look));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

Card::Card(const QString& icon, const QString& title, const QString& text, QWidget* parent)
    : QFrame(parent), lines_(new QVBoxLayout(this)) {
    setAccessibleName(title);
    setAccessibleDescription(text);
    lines_->setContentsMargins(32, kColumnGap, 32, kColumnGap);
    lines_->setSpacing(kMedium);
    auto* head = new QHBoxLayout;
    head->setSpacing(kMedium);
    if (!icon.isEmpty())
        head->addWidget(new IconLabel(icon, kColumnGap, Token::Text, this));
    auto* label = new QLabel(title, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFont(Sized(label->font(), kCardTitleType, true));
    head->addWidget(label, 1);
    lines_->addLayout(head);
    if (!text.isEmpty())
        lines_->addWidget(MakeLabel(text, look::kHint, this));
}

void Card::AddLine(const QString& icon, const QString& text, QPushButton* button, bool warning) {
    if (lines_->count() <= 2)
        lines_->addWidget(MakeHairline(this));
    auto* line = new QHBoxLayout;
    line->setSpacing(kMedium);
    if (!icon.isEmpty())
        line->addWidget(
            new IconLabel(icon, kIconSize, warning ? Token::AmberText : Token::Text2, this));
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    line->addWidget(label, 1);
    if (button != nullptr) {
        button->setMinimumWidth(112);
        line->addWidget(button);
    }
    lines_->addLayout(line);
}

void Card::AddButton(QPushButton* button) {
    if (buttons_ == nullptr) {
        buttons_ = new QHBoxLayout;
        buttons_->setSpacing(kSmall);
        buttons_->addStretch(1);
        lines_->addSpacing(kTiny);
        lines_->addLayout(buttons_);
    }
    buttons_->addWidget(button);
}

void Card::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PaintBox(painter, rect(), kCardCorner, Tokens()[Token::Surface], Tokens()[Token::Hairline]);
}

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent), text_(new QLabel(this)), layout_(new QHBoxLayout(this)) {
    layout_->setContentsMargins(kWindowEdge, 6, kSmall, 6);
    layout_->setSpacing(kSmall);
    layout_->addWidget(new IconLabel(QStringLiteral("warning"), kIconSize, Token::AmberText, this));
    text_->setWordWrap(true);
    text_->setTextFormat(Qt::PlainText);
    layout_->addWidget(text_, 1);
    hide();
}

void MessageBar::ShowMessage(const QString& text, const QList<QPushButton*>& buttons) {
    for (QPushButton* button : buttons_)
        button->deleteLater();
    buttons_ = buttons;
    for (QPushButton* button : buttons_) {
        layout_->addWidget(button);
        button->show();
    }
    text_->setText(text);
    setAccessibleName(text);
    show();
    Announce(*this, text);
}

void MessageBar::HideMessage() {
    hide();
}

void MessageBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const ColorTokens& tokens = Tokens();
    painter.fillRect(rect(), tokens[Token::AmberGround]);
    painter.fillRect(QRect(0, height() - kHairline, width(), kHairline), tokens[Token::Hairline]);
    QPalette palette = text_->palette();
    if (palette.color(QPalette::WindowText) != tokens[Token::AmberText]) {
        palette.setColor(QPalette::WindowText, tokens[Token::AmberText]);
        text_->setPalette(palette);
    }
}

Chip::Chip(QWidget* parent) : QToolButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Chip::SetWords(const QString& words, int count) {
    words_ = words;
    count_ = count;
    setAccessibleName(words);
    setToolTip(words);
    // Shown before it stands in a window it would be one of its own.
    if (count == 0 || parentWidget() != nullptr)
        setVisible(count > 0);
    updateGeometry();
    update();
}

void Chip::SetShort(bool is_short) {
    short_ = is_short;
    updateGeometry();
    update();
}

QString Chip::Shown() const {
    return short_ ? QString::number(count_) : words_;
}

QSize Chip::sizeHint() const {
    return {kSmall + kIconSize + kTiny + fontMetrics().horizontalAdvance(Shown()) + kMedium,
            kBarControlHeight};
}

void Chip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const ColorTokens& tokens = Tokens();
    PaintBox(painter, rect(), kControlCorner, tokens[Token::AmberGround],
             underMouse() ? tokens[Token::AmberText] : QColor());
    const auto visual = [&](const QRect& place) {
        return QStyle::visualRect(layoutDirection(), rect(), place);
    };
    PaintIcon(painter, QStringLiteral("warning"),
              visual({kSmall, (height() - kIconSize) / 2, kIconSize, kIconSize}),
              tokens[Token::AmberText]);
    painter.setPen(tokens[Token::AmberText]);
    const int left = kSmall + kIconSize + 6;
    painter.drawText(visual({left, 0, width() - left, height()}),
                     static_cast<int>(Qt::AlignVCenter |
                                      QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     Shown());
    if (ShowsFocus(*this))
        PaintFocus(painter, rect(), kControlCorner);
}

}  // namespace zorvane
