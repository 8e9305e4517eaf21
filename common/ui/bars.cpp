#include "common/ui/bars.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kWidestTab = 320;
constexpr int kTabGap = 20;

class HandleWithGrip : public QSplitterHandle {
  public:
    HandleWithGrip(Qt::Orientation orientation, QSplitter* parent)
        : QSplitterHandle(orientation, parent) {}

  protected:
    void paintEvent(QPaintEvent*) override {
        constexpr double kLength = 32;
        constexpr double kThickness = 3;
        QPainter painter(this);
        const ColorTokens& tokens = Tokens();
        painter.fillRect(rect(), tokens[Token::Window]);
        const bool lying = orientation() == Qt::Vertical;
        QRectF grip(0, 0, lying ? kLength : kThickness, lying ? kThickness : kLength);
        grip.moveCenter(QRectF(rect()).center());
        PaintBox(painter, grip, kThickness / 2, tokens[underMouse() ? Token::Ink : Token::Border],
                 QColor());
        painter.setPen(tokens[Token::Hairline]);
        if (lying) {
            painter.drawLine(0, 0, width(), 0);
            painter.drawLine(0, height() - 1, width(), height() - 1);
        }
    }
};

}  // namespace

Splitter::Splitter(Qt::Orientation orientation, const QString& name, QWidget* parent)
    : QSplitter(orientation, parent), name_(name) {
    setHandleWidth(kSmall);
    setChildrenCollapsible(false);
    setAccessibleName(name);
}

QSplitterHandle* Splitter::createHandle() {
    auto* handle = new HandleWithGrip(orientation(), this);
    handle->setAccessibleName(name_);
    handle->setAttribute(Qt::WA_Hover);
    return handle;
}

StatusBar::StatusBar(int panels, QWidget* parent) : QFrame(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kWindowEdge, 1, kWindowEdge, 0);
    layout->setSpacing(2 * kMedium);
    setMinimumHeight(kStatusBarHeight);
    for (int number = 1; number <= panels; ++number) {
        auto* label = new QLabel(this);
        label->setTextFormat(Qt::PlainText);
        label->setProperty(look::kProperty, QString::fromLatin1(look::kCaption));
        if (number == panels)
            layout->addStretch(1);
        panels_.push_back(label);
        layout->addWidget(label);
    }
}

void StatusBar::SetPanel(int number, const QString& text) {
    QLabel& panel = *panels_.at(static_cast<std::size_t>(number) - 1);
    const qsizetype more = text.indexOf(u'\n');
    panel.setText(more < 0 ? text : text.left(more).trimmed());
    panel.setToolTip(more < 0 ? QString() : text);
    update();
}

QString StatusBar::Panel(int number) const {
    return panels_.at(static_cast<std::size_t>(number) - 1)->text();
}

void StatusBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, 0, width(), 0);
    for (std::size_t at = 0; at < panels_.size(); ++at) {
        const QRect panel = panels_[at]->geometry();
        const bool last = at + 1 == panels_.size();
        const int x = last ? panel.left() - kMedium : panel.right() + kMedium;
        if (!panels_[at]->text().isEmpty() || last)
            painter.drawLine(x, 8, x, height() - 8);
    }
}

void StatusBar::mouseReleaseEvent(QMouseEvent* event) {
    for (std::size_t at = 0; at < panels_.size(); ++at)
        if (panels_[at]->geometry().contains(event->position().toPoint()))
            Q_EMIT PanelClicked(static_cast<int>(at) + 1);
}

QHBoxLayout* MakeOptionColumns(QWidget* page) {
    auto* columns = new QHBoxLayout(page);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(2 * kLarge);
    return columns;
}

OptionArea::OptionArea(const UiText& text, QWidget* parent)
    : QFrame(parent), tabs_(new TabStrip(this)), pages_(new QStackedWidget(this)) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kWindowEdge, 0, kWindowEdge, kMedium);
    rows->setSpacing(kMedium);
    auto* head = new QHBoxLayout;
    head->addWidget(tabs_);
    head->addStretch(1);
    auto* fold = new IconButton(QStringLiteral("previous"), text("Fold the options"), QString(),
                                text("Hide the options; they stay as they are"), this);
    head->addWidget(fold);
    rows->addLayout(head);
    rows->addWidget(pages_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    connect(tabs_, &QTabBar::currentChanged, this, &OptionArea::ShowPage);
    connect(fold, &QToolButton::clicked, this, &OptionArea::FoldWanted);
    hide();
}

// The area is as high as the page that shows, not as the highest.
void OptionArea::ShowPage(int index) {
    for (int at = 0; at < pages_->count(); ++at)
        pages_->widget(at)->setSizePolicy(
            QSizePolicy::Preferred, at == index ? QSizePolicy::Preferred : QSizePolicy::Ignored);
    pages_->setCurrentIndex(index);
    pages_->adjustSize();
}

void OptionArea::AddPage(QWidget* page, const QString& title) {
    pages_->addWidget(page);
    tabs_->addTab(title);
    ShowPage(tabs_->currentIndex());
}

void OptionArea::SetUnfolded(bool unfolded) {
    setVisible(unfolded);
}

void OptionArea::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    const int below_tabs = tabs_->geometry().bottom() + 1;
    painter.drawLine(0, below_tabs, width(), below_tabs);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

void OptionArea::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        Q_EMIT FoldWanted();
    else
        QFrame::keyPressEvent(event);
}

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setExpanding(false);
    setElideMode(Qt::ElideRight);
    setAttribute(Qt::WA_Hover);
}

QSize TabStrip::tabSizeHint(int index) const {
    const QFontMetrics heavy(Semibold(font()));
    const int words = heavy.size(Qt::TextShowMnemonic, tabText(index)).width();
    if (tabData(index).isNull())
        return {words + kColumnGap + kTiny, kTabHeight};
    const QWidget* button = tabButton(index, QTabBar::RightSide);
    const int beside = kIconSize + kSmall + (button == nullptr ? 0 : button->width() + kTiny);
    return {std::min(kWidestTab, words + beside + kColumnGap), kTabHeight};
}

// Of a tab with an icon the words are cut where its close button begins.
void TabStrip::PaintTabText(QPainter& painter, int index, const QRect& place) const {
    const QString icon = tabData(index).toString();
    if (icon.isEmpty()) {
        painter.drawText(place, Qt::AlignCenter | Qt::TextShowMnemonic, tabText(index));
        return;
    }
    const auto visual = [&](const QRect& part) {
        return QStyle::visualRect(layoutDirection(), place, part);
    };
    PaintIcon(painter, icon,
              visual({place.left(), place.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize}),
              painter.pen().color());
    const QWidget* button = tabButton(index, QTabBar::RightSide);
    const int left = kIconSize + kSmall;
    const int right = button == nullptr ? 0 : button->width() + kTiny;
    const QRect words =
        visual({place.left() + left, place.top(), place.width() - left - right, place.height()});
    painter.drawText(words,
                     static_cast<int>(Qt::AlignVCenter | Qt::TextShowMnemonic |
                                      QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     painter.fontMetrics().elidedText(tabText(index), Qt::ElideMiddle,
                                                      words.width(), Qt::TextShowMnemonic));
}

void TabStrip::PaintTab(QPainter& painter, int index) const {
    const ColorTokens& tokens = Tokens();
    const bool current = index == currentIndex();
    // The room between tabs stands behind each, so that the first is flush with the edge.
    const bool rightward = layoutDirection() == Qt::LeftToRight;
    const QRect place =
        tabRect(index).adjusted(rightward ? 0 : kTabGap, 0, rightward ? -kTabGap : 0, 0);
    painter.setFont(current ? Semibold(font()) : font());
    const Token enabled = current ? Token::Text : Token::Text2;
    painter.setPen(tokens[isTabEnabled(index) ? enabled : Token::Disabled]);
    PaintTabText(painter, index, place);
    if (!current)
        return;
    painter.fillRect(QRect(place.left(), place.bottom() - 1, place.width(), kFocusLine),
                     tokens[Token::Ink]);
    if (ShowsFocus(*this))
        PaintFocus(painter, QRectF(place).adjusted(0, 4, 0, -5), kControlCorner);
}

void TabStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    for (int index = 0; index < count(); ++index)
        PaintTab(painter, index);
}

}  // namespace zorvane
