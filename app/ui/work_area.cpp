#include "app/ui/work_area.h"

#include <algorithm>

#include <QEvent>
#include <QHBoxLayout>
#include <QMdiSubWindow>
#include <QVBoxLayout>

#include "common/ui/measures.h"

namespace zorvane {

namespace {

constexpr int kLeastTile = 160;

}  // namespace

WorkArea::WorkArea(const QString& close_name, QWidget* parent)
    : QWidget(parent),
      close_name_(close_name),
      tabs_(new TabStrip(this)),
      strip_(new QWidget(this)),
      rooms_(new QStackedWidget(this)),
      stack_(new QStackedWidget(rooms_)),
      area_(new QMdiArea(rooms_)) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    auto* line = new QHBoxLayout(strip_);
    line->setContentsMargins(measures::kWindowEdge, 0, measures::kSmall, 0);
    line->addWidget(tabs_, 1);
    strip_->hide();
    rows->addWidget(strip_);
    rooms_->addWidget(stack_);
    rooms_->addWidget(area_);
    rows->addWidget(rooms_, 1);
    connect(tabs_, &QTabBar::currentChanged, this, [this](int at) {
        if (at >= 0 && at < static_cast<int>(pages_.size())) {
            Show(*pages_[static_cast<std::size_t>(at)]);
            if (chosen)
                chosen(*pages_[static_cast<std::size_t>(at)]);
        }
    });
    connect(area_, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* window) {
        if (window == nullptr || window->widget() == nullptr || !Free())
            return;
        if (chosen)
            chosen(*window->widget());
        if (laid_out)
            laid_out();
    });
}

void WorkArea::AddTab(QWidget& page, const QString& icon) {
    const int at = tabs_->addTab(QString());
    tabs_->setTabData(at, icon);
    auto* close = new IconButton(QStringLiteral("close"), close_name_, QString(), QString(), tabs_);
    close->setFixedSize(measures::kSmallestTarget, measures::kSmallestTarget);
    close->setFocusPolicy(Qt::NoFocus);  // keys close by the command
    connect(close, &QToolButton::clicked, this, [this, &page] {
        if (close_wanted)
            close_wanted(page);
    });
    tabs_->setTabButton(at, QTabBar::RightSide, close);
}

int WorkArea::PlaceOf(const QWidget* page) const {
    return static_cast<int>(std::find(pages_.begin(), pages_.end(), page) - pages_.begin());
}

void WorkArea::Add(QWidget& page, const QString& icon) {
    BackToTabs();
    pages_.push_back(&page);
    stack_->addWidget(&page);
    const QSignalBlocker silent(tabs_);
    AddTab(page, icon);
    UpdateTabs();
}

void WorkArea::Remove(QWidget& page) {
    const int place = PlaceOf(&page);
    if (place == static_cast<int>(pages_.size()))
        return;
    BackToTabs();
    pages_.erase(pages_.begin() + place);
    stack_->removeWidget(&page);
    page.setParent(nullptr);
    const QSignalBlocker silent(tabs_);
    tabs_->removeTab(place);
    UpdateTabs();
}

void WorkArea::UpdateTabs() {
    strip_->setVisible(pages_.size() > 1 && !Free());
}

void WorkArea::Show(QWidget& page) {
    const int place = PlaceOf(&page);
    if (place == static_cast<int>(pages_.size()))
        return;
    if (Free()) {
        if (auto* window = qobject_cast<QMdiSubWindow*>(page.parentWidget()))
            area_->setActiveSubWindow(window);
        return;
    }
    const QSignalBlocker silent(tabs_);
    stack_->setCurrentWidget(&page);
    tabs_->setCurrentIndex(place);
}

void WorkArea::SetCaption(QWidget& page, const QString& caption) {
    const int place = PlaceOf(&page);
    if (place == static_cast<int>(pages_.size()))
        return;
    page.setWindowTitle(caption);
    tabs_->setTabText(place, QStringLiteral("(%1) %2").arg(place + 1).arg(
                                 QString(caption).replace(u'&', QStringLiteral("&&"))));
}

QWidget* WorkArea::Current() const {
    if (!Free())
        return stack_->currentWidget();
    const QMdiSubWindow* window = area_->activeSubWindow();
    return window == nullptr ? nullptr : window->widget();
}

void WorkArea::ShowNext(int step) {
    const auto count = static_cast<int>(pages_.size());
    if (count < 2)
        return;
    QWidget& page = *pages_[static_cast<std::size_t>((PlaceOf(Current()) + step + count) % count)];
    Show(page);
    if (chosen)
        chosen(page);
}

void WorkArea::LayOut(void (QMdiArea::*arrange)()) {
    if (!Free()) {
        QWidget* current = Current();
        rooms_->setCurrentWidget(area_);
        area_->setBackground(palette().window());
        for (QWidget* page : pages_) {
            stack_->removeWidget(page);
            QMdiSubWindow* window = area_->addSubWindow(page);
            window->setAttribute(Qt::WA_DeleteOnClose, false);
            window->installEventFilter(this);
            // A page gives way where it is narrow. What it needs now, times the columns, would
            // have the area make the whole program wider than the screen.
            page->setMinimumSize(kLeastTile, kLeastTile);
            page->show();
            window->show();
        }
        if (current != nullptr)
            Show(*current);
    }
    (area_->*arrange)();
    UpdateTabs();
    if (laid_out)
        laid_out();
}

void WorkArea::BackToTabs() {
    if (!Free())
        return;
    QWidget* current = Current();
    rooms_->setCurrentWidget(stack_);
    for (QWidget* page : pages_) {
        auto* window = qobject_cast<QMdiSubWindow*>(page->parentWidget());
        stack_->addWidget(page);
        if (window != nullptr) {
            window->removeEventFilter(this);
            area_->removeSubWindow(window);
            window->deleteLater();
        }
    }
    if (current != nullptr)
        Show(*current);
    UpdateTabs();
    if (laid_out)
        laid_out();
}

void WorkArea::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        area_->setBackground(palette().window());
}

// A window that is made as large as the area gives way to tabs; its closing is its viewer's.
bool WorkArea::eventFilter(QObject* watched, QEvent* event) {
    auto* window = qobject_cast<QMdiSubWindow*>(watched);
    if (window != nullptr && event->type() == QEvent::Close) {
        event->ignore();
        if (close_wanted && window->widget() != nullptr)
            QMetaObject::invokeMethod(
                this,
                [this, page = window->widget()] {
                    if (PlaceOf(page) < static_cast<int>(pages_.size()))
                        close_wanted(*page);
                },
                Qt::QueuedConnection);
        return true;
    }
    if (window != nullptr && event->type() == QEvent::WindowStateChange && window->isMaximized())
        QMetaObject::invokeMethod(
            this, [this] { BackToTabs(); }, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

}  // namespace zorvane
