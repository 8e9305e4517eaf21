#include "common/ui/flow_box.h"

#include <algorithm>

#include <QEvent>
#include <QStyle>

namespace zorvane {

FlowBox::FlowBox(int beside, int below, QWidget* parent)
    : QWidget(parent), beside_(beside), below_(below) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FlowBox::Add(QWidget* widget) {
    widget->setParent(this);
    widget->show();
    widgets_.push_back(widget);
    PlaceAll();
}

int FlowBox::LayOut(int width, bool place) const {
    int x = 0;
    int y = 0;
    int line = 0;
    for (QWidget* widget : widgets_) {
        const int wanted = std::min(widget->sizeHint().width(), width);
        const int height = widget->hasHeightForWidth() ? widget->heightForWidth(wanted)
                                                       : widget->sizeHint().height();
        if (x > 0 && x + wanted > width) {
            x = 0;
            y += line + below_;
            line = 0;
        }
        if (place)
            widget->setGeometry(
                QStyle::visualRect(layoutDirection(), rect(), QRect(x, y, wanted, height)));
        x += wanted + beside_;
        line = std::max(line, height);
    }
    return y + line;
}

QSize FlowBox::sizeHint() const {
    int width = 0;
    for (const QWidget* widget : widgets_)
        width += widget->sizeHint().width() + beside_;
    return {width, LayOut(std::max(width, 1), false)};
}

QSize FlowBox::minimumSizeHint() const {
    int width = 0;
    for (const QWidget* widget : widgets_)
        width = std::max(width, widget->minimumSizeHint().width());
    return {width, 0};
}

// The height follows the width here, since layouts in layouts do not ask for it.
void FlowBox::PlaceAll() {
    setFixedHeight(LayOut(width(), true));
}

void FlowBox::resizeEvent(QResizeEvent*) {
    PlaceAll();
}

// Another language, or another font.
bool FlowBox::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::LanguageChange) {
        PlaceAll();
    }
    return QWidget::event(event);
}

}  // namespace zorvane
