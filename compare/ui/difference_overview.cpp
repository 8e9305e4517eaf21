#include "compare/ui/difference_overview.h"

#include <algorithm>
#include <cmath>

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "compare/ui/overview_accessible.h"

namespace zorvane {
namespace {

constexpr int kDelay = 100;
constexpr double kLeastMark = 4;
constexpr double kMostOfParagraph = 8;
constexpr double kLeastFrame = 16;
constexpr double kMargin = 4;
constexpr double kFrameRadius = 3;

}  // namespace

DifferenceOverview::DifferenceOverview(QWidget* parent) : QWidget(parent) {
    InstallOverviewAccessible();
    setFixedWidth(kOverviewWidth);
    setAttribute(Qt::WA_OpaquePaintEvent);
    timer_.setInterval(kDelay);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] { MakePicture(); });
}

void DifferenceOverview::SetColors(const ViewColors& colors) {
    colors_ = colors;
    if (!picture_.isNull())
        Flush();  // at once: all around it changes now
}

void DifferenceOverview::SetMarks(std::vector<OverviewStripe> marks) {
    marks_ = std::move(marks);
    Later();
}

void DifferenceOverview::SetWindow(double begin, double end) {
    if (begin == begin_ && end == end_)
        return;
    begin_ = begin;
    end_ = end;
    update();
}

void DifferenceOverview::SetPlaces(const OverviewPlaces& places) {
    if (places == places_)
        return;
    places_ = places;
    TellOverviewMoved(*this);
}

void DifferenceOverview::Later() {
    if (!timer_.isActive())
        timer_.start();
}

void DifferenceOverview::Flush() {
    timer_.stop();
    MakePicture();
}

// Deleted on the left, added on the right, changed across, moved hollow.
void DifferenceOverview::MakePicture() {
    if (size().isEmpty())
        return;
    ++pictures_made_;
    picture_ = QPixmap(size() * devicePixelRatio());
    picture_.setDevicePixelRatio(devicePixelRatio());
    picture_.fill(colors_.window);
    QPainter painter(&picture_);
    painter.fillRect(QRectF(0, 0, 1, height()), colors_.hairline);
    const double inner = width() - 2 * kMargin;
    double last_bottom[4] = {-1e9, -1e9, -1e9, -1e9};
    for (const OverviewStripe& mark : marks_) {
        const double top = std::floor(mark.begin * height());
        // In a short text a paragraph's part of the strip would be a heavy block.
        const double most =
            std::min((mark.end - mark.begin) * height(), kMostOfParagraph * mark.paragraphs);
        const double tall = std::max(kLeastMark, std::round(most));
        // Of many marks in one place one is seen.
        double& bottom = last_bottom[static_cast<std::size_t>(mark.kind) % 4];
        if (top + tall <= bottom)
            continue;
        bottom = top + tall;
        const QColor& color = colors_.Of(mark.kind).text;
        QRectF rect(kMargin, top, inner, tall);
        if (mark.kind == MarkKind::Deleted)
            rect.setRight(kMargin + inner / 2);
        if (mark.kind == MarkKind::Added)
            rect.setLeft(kMargin + inner / 2);
        if (mark.kind == MarkKind::Moved) {
            painter.setPen(QPen(color, 1));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(rect.adjusted(0.5, 0.5, -0.5, -0.5));
        } else {
            painter.fillRect(rect, color);
        }
    }
    update();
}

void DifferenceOverview::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), colors_.window);
    painter.drawPixmap(0, 0, picture_);
    const double top = begin_ * height();
    const double tall = std::max(kLeastFrame, (end_ - begin_) * height());
    const QRectF frame(1.5, std::min(top, height() - tall) + 0.5, width() - 3, tall - 1);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor ground = colors_.ink;
    ground.setAlphaF(0.08F);
    painter.setBrush(ground);
    painter.setPen(QPen(colors_.ink, 1.2));
    painter.drawRoundedRect(frame, kFrameRadius, kFrameRadius);
}

void DifferenceOverview::resizeEvent(QResizeEvent* /*event*/) {
    Later();
}

void DifferenceOverview::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ScreenChangeInternal)
        Later();
}

double DifferenceOverview::PartAt(double y) const {
    return height() > 0 ? std::clamp(y / height(), 0.0, 1.0) : 0;
}

void DifferenceOverview::mousePressEvent(QMouseEvent* event) {
    if (go_to && event->button() == Qt::LeftButton)
        go_to(PartAt(event->position().y()));
}

void DifferenceOverview::mouseMoveEvent(QMouseEvent* event) {
    if (go_to && (event->buttons() & Qt::LeftButton) != 0)
        go_to(PartAt(event->position().y()));
}

void DifferenceOverview::wheelEvent(QWheelEvent* event) {
    if (wheel)
        wheel(event);
}

}  // namespace zorvane
