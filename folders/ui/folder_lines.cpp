#include "folders/ui/folder_lines.h"

#include <QHBoxLayout>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QStringListModel>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/icons.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kLineHeight = 35;
constexpr int kListHeight = 132;

QLabel* MakeIcon(const QString& name, Token ink, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setPixmap(LookIcon(name, ink).pixmap(kIconSize, kIconSize));
    return label;
}

}  // namespace

// ---- errors ----

ErrorLine::ErrorLine(const UiText& text, QWidget* parent)
    : QFrame(parent),
      head_(MakeLabel(QString(), "", this)),
      last_words_(MakeLabel(QString(), look::kBeside, this)),
      unfold_(new IconButton(QStringLiteral("chevron"), text("Show all errors"), QString(),
                             QString(), this)),
      list_(new QListView(this)),
      model_(new QStringListModel(this)) {
    for (QLabel* label : {head_, last_words_})
        label->setWordWrap(false);
    head_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kWindowEdge, 0, kWindowEdge, 1);
    rows->setSpacing(0);
    auto* line = new QHBoxLayout;
    line->setSpacing(kSmall);
    line->addWidget(MakeIcon(QStringLiteral("warning"), Token::AmberText, this));
    line->addWidget(head_);
    line->addWidget(last_words_, 1);
    line->addWidget(unfold_);
    auto* top = new QWidget(this);
    top->setFixedHeight(kLineHeight);
    line->setContentsMargins(0, 0, 0, 0);
    top->setLayout(line);
    rows->addWidget(top);
    list_->setModel(model_);
    list_->setUniformItemSizes(true);
    list_->setAccessibleName(text("Error Event Messages Received"));
    list_->setFrameShape(QFrame::NoFrame);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setFixedHeight(kListHeight);
    list_->hide();
    rows->addWidget(list_);
    unfold_->setCheckable(true);
    connect(unfold_, &QToolButton::clicked, this, [this] { SetUnfolded(!unfolded_); });
    hide();
}

void ErrorLine::ShowErrors(const std::vector<std::string>& errors) {
    QStringList all;
    for (std::size_t at = 1; at < errors.size(); ++at)
        all.append(ToQt(errors[at]));
    count_ = static_cast<int>(all.size());
    model_->setStringList(all);
    if (count_ == 0) {
        SetUnfolded(false);
        hide();
        return;
    }
    head_->setText(QStringLiteral("%1: %2").arg(ToQt(errors.front())).arg(count_));
    last_ = all.back();
    ShowLast();
    show();
}

void ErrorLine::ShowLast() {
    last_words_->setMinimumWidth(1);
    last_words_->setText(
        last_words_->fontMetrics().elidedText(last_, Qt::ElideMiddle, last_words_->width()));
    last_words_->setToolTip(last_);
}

void ErrorLine::SetUnfolded(bool unfolded) {
    unfolded_ = unfolded;
    unfold_->setChecked(unfolded);
    list_->setVisible(unfolded);
}

void ErrorLine::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    layout()->activate();
    ShowLast();
}

void ErrorLine::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        SetUnfolded(!unfolded_);
}

void ErrorLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

// ---- legend ----

FolderLegend::FolderLegend(const UiText& text, QWidget* parent)
    : QFrame(parent), greater_(text("the modified one is greater or later")) {
    setFixedHeight(kLineHeight + 1);
    marks_ = {
        {QStringLiteral("deleted"), text("= Only In Original Folder"), Token::DeletedText},
        {QStringLiteral("added"), text("= Only In Modified Folder"), Token::AddedText},
        {QStringLiteral("changed"), text("= File has changed"), Token::ChangedText},
    };
    QStringList words;
    for (const Mark& mark : marks_)
        words.append(mark.words);
    setAccessibleName(words.join(QStringLiteral(", ")));
    auto* close = new IconButton(QStringLiteral("close"), text("Hide the legend"), QString(),
                                 QString(), this);
    connect(close, &QToolButton::clicked, this, &FolderLegend::HideWanted);
    close_ = close;
}

void FolderLegend::resizeEvent(QResizeEvent*) {
    close_->setGeometry(width() - kWindowEdge - kBarControlHeight,
                        (height() - kBarControlHeight) / 2, kBarControlHeight, kBarControlHeight);
}

void FolderLegend::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const ColorTokens& tokens = Tokens();
    painter.fillRect(rect(), tokens[Token::Surface]);
    painter.setPen(tokens[Token::Hairline]);
    painter.drawLine(0, 0, width(), 0);
    int x = kWindowEdge;
    const int top = (height() - kIconSize) / 2;
    for (const Mark& mark : marks_) {
        PaintIcon(painter, mark.icon, QRectF(x, top, kIconSize, kIconSize), tokens[mark.ink]);
        x += kColumnGap;
        painter.setPen(tokens[Token::Text2]);
        const int width = fontMetrics().horizontalAdvance(mark.words);
        painter.drawText(QRect(x, 0, width, height()), Qt::AlignVCenter, mark.words);
        x += width + kColumnGap;
    }
    const QString last = QStringLiteral("[M]>[O]  ") + greater_;
    const int room = close_->x() - kMedium - x;
    if (fontMetrics().horizontalAdvance(last) <= room)
        painter.drawText(QRect(x, 0, room, height()), Qt::AlignVCenter | Qt::AlignRight, last);
}

}  // namespace zorvane
