#include <algorithm>

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include "common/ui/bars.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

class Separator : public QWidget {
  public:
    explicit Separator(QWidget* parent) : QWidget(parent) { setFixedSize(kHairline, 20); }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), Tokens()[Token::Hairline]);
    }
};

bool CanHaveFocus(const QWidget* widget) {
    return widget->isVisible() && widget->isEnabled();
}

}  // namespace

ToolBar::ToolBar(const QString& name, QWidget* parent)
    : QFrame(parent), layout_(new QHBoxLayout(this)) {
    setAccessibleName(name);
    layout_->setContentsMargins(kWindowEdge, 0, kWindowEdge, 0);
    layout_->setSpacing(kSmall);
    setMinimumHeight(kToolBarHeight);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ToolBar::Add(QWidget* widget, int stretch) {
    layout_->addWidget(widget, stretch);
    Enrol(widget);
    for (QWidget* child : widget->findChildren<QAbstractButton*>())
        Enrol(child);
}

void ToolBar::AddSeparator() {
    layout_->addWidget(new Separator(this));
}

void ToolBar::AddStretch() {
    layout_->addStretch(1);
}

void ToolBar::Enrol(QWidget* widget) {
    if (widget->focusPolicy() == Qt::NoFocus)
        return;
    widget->installEventFilter(this);
    // The first is the stop until another had the focus.
    widget->setFocusPolicy(stops_.empty() ? Qt::StrongFocus : Qt::ClickFocus);
    stops_.push_back(widget);
}

void ToolBar::MakeStop(QWidget* widget) {
    for (QWidget* other : stops_)
        other->setFocusPolicy(other == widget ? Qt::StrongFocus : Qt::ClickFocus);
}

bool ToolBar::Move(QWidget* from, int key) {
    std::vector<QWidget*> able;
    std::copy_if(stops_.begin(), stops_.end(), std::back_inserter(able), CanHaveFocus);
    const auto found = std::find(able.begin(), able.end(), from);
    if (found == able.end())
        return false;
    const bool rightward = layoutDirection() == Qt::LeftToRight;
    auto at = static_cast<std::ptrdiff_t>(found - able.begin());
    const auto last = static_cast<std::ptrdiff_t>(able.size()) - 1;
    if (key == Qt::Key_Home)
        at = 0;
    else if (key == Qt::Key_End)
        at = last;
    else
        at = std::clamp<std::ptrdiff_t>(at + ((key == Qt::Key_Right) == rightward ? 1 : -1), 0,
                                        last);
    able[static_cast<std::size_t>(at)]->setFocus(Qt::TabFocusReason);
    return true;
}

bool ToolBar::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr)
        return QFrame::eventFilter(watched, event);
    // Where the stop is greyed or goes, the bar could no longer be reached.
    if ((event->type() == QEvent::EnabledChange || event->type() == QEvent::Hide) &&
        widget->focusPolicy() == Qt::StrongFocus && !CanHaveFocus(widget)) {
        const auto able = std::find_if(stops_.begin(), stops_.end(), CanHaveFocus);
        if (able != stops_.end())
            MakeStop(*able);
    }
    if (event->type() == QEvent::FocusIn)
        MakeStop(widget);
    if (event->type() == QEvent::KeyPress) {
        const auto* press = static_cast<QKeyEvent*>(event);
        const bool moves = press->key() == Qt::Key_Left || press->key() == Qt::Key_Right ||
                           press->key() == Qt::Key_Home || press->key() == Qt::Key_End;
        if (moves && (press->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier)
            return Move(widget, press->key());
    }
    return QFrame::eventFilter(watched, event);
}

void ToolBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

}  // namespace zorvane
