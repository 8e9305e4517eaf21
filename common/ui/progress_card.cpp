#include "common/ui/progress_card.h"

#include <algorithm>
#include <cmath>

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QProgressBar>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kDelay = 300;
constexpr int kCardWidth = 510;
// Before this share is done nobody can tell how long the rest takes.
constexpr double kFirstGuess = 5;
constexpr qint64 kFirstGuessAfter = 1000;

class ProgressLine : public QProgressBar {
  public:
    explicit ProgressLine(QWidget* parent) : QProgressBar(parent) {
        setRange(0, 1000);
        setTextVisible(false);
        setFixedHeight(6);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        PaintBox(painter, rect(), 3, Tokens()[Token::On], QColor());
        QRectF done = rect();
        done.setWidth(done.width() * value() / maximum());
        if (layoutDirection() == Qt::RightToLeft)
            done.moveRight(width());
        painter.setClipRect(done);
        PaintBox(painter, rect(), 3, Tokens()[Token::Ink], QColor());
    }
};

class RaisedCard : public QFrame {
  public:
    using QFrame::QFrame;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        PaintBox(painter, rect(), kCardCorner, Tokens()[Token::Surface], Tokens()[Token::Hairline]);
    }
};

}  // namespace

ProgressCard::ProgressCard(UiText text, QWidget* parent) : QWidget(parent), text_(std::move(text)) {
    card_ = MakeCard();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(card_, 0, Qt::AlignCenter);
    delay_.setSingleShot(true);
    delay_.setInterval(kDelay);
    connect(&delay_, &QTimer::timeout, this, [this] {
        setGeometry(parentWidget()->rect());
        show();
        raise();
    });
    parent->installEventFilter(this);
    setAccessibleName(text_("Please wait"));
    hide();
}

QFrame* ProgressCard::MakeCard() {
    auto* card = new RaisedCard(this);
    card->setFixedWidth(kCardWidth);
    auto* rows = new QVBoxLayout(card);
    rows->setContentsMargins(kDialogEdge, kDialogEdge, kDialogEdge, 20);
    rows->setSpacing(14);
    auto* head = new QHBoxLayout;
    stage_ = MakeLabel(QString(), look::kHeading, card);
    share_ = new QLabel(card);
    share_->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    head->addWidget(stage_, 1);
    head->addWidget(share_);
    rows->addLayout(head);
    bar_ = new ProgressLine(card);
    rows->addWidget(bar_);
    auto* told = new QHBoxLayout;
    words_ = new QLabel(card);
    left_ = new QLabel(card);
    left_->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    told->addWidget(words_, 1);
    told->addWidget(left_);
    rows->addLayout(told);
    auto* foot = new QHBoxLayout;
    foot->setSpacing(kSmall);
    foot->addWidget(
        MakeLabel(text_("The old result stays until the new one is whole."), look::kHint, card), 1);
    abort_ = new Button(text_("Abort"), ButtonLook::Plain, QStringLiteral("abort"), card);
    foot->addWidget(abort_);
    foot->addWidget(MakeKeyLabel(QKeySequence(Qt::Key_Escape).toString(), card));
    rows->addSpacing(kTiny);
    rows->addLayout(foot);
    connect(abort_, &QPushButton::clicked, this, &ProgressCard::AbortClicked);
    return card;
}

void ProgressCard::Begin(const QString& stage) {
    percent_ = 0;
    running_.start();
    SetStage(stage);
    SetProgress(0, QString());
    delay_.start();
}

void ProgressCard::SetStage(const QString& stage) {
    stage_->setText(stage);
}

void ProgressCard::SetProgress(double percent, const QString& words) {
    percent_ = std::clamp(percent, percent_, 100.0);
    static_cast<ProgressLine*>(bar_)->setValue(static_cast<int>(percent_ * 10));
    share_->setText(QStringLiteral("%1 %").arg(static_cast<int>(percent_)));
    words_->setText(words);
    ShowTimeLeft();
}

void ProgressCard::ShowTimeLeft() {
    if (percent_ < kFirstGuess || running_.elapsed() < kFirstGuessAfter) {
        left_->clear();
        return;
    }
    const double seconds = static_cast<double>(running_.elapsed()) / 1000;
    const int left =
        std::max(1, static_cast<int>(std::lround(seconds * (100 - percent_) / percent_)));
    left_->setText(text_("about %1 s left").arg(left));
}

void ProgressCard::End() {
    delay_.stop();
    hide();
}

bool ProgressCard::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void ProgressCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QColor veil = Tokens()[Token::Window];
    veil.setAlphaF(0.75F);
    painter.fillRect(rect(), veil);
    PaintShadow(painter, card_->geometry(), kCardCorner);
}

void ProgressCard::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        Q_EMIT AbortClicked();
    else
        QWidget::keyPressEvent(event);
}

}  // namespace zorvane
