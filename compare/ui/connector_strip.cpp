#include "compare/ui/connector_strip.h"

#include <algorithm>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "compare/ui/mark_painter.h"

namespace zorvane {
namespace {

constexpr int kButton = 24;
constexpr int kButtonStep = 26;
constexpr double kButtonRadius = 5;

}  // namespace

CopyButton::CopyButton(Side from, QWidget* parent) : QAbstractButton(parent), from_(from) {
    setFocusPolicy(Qt::NoFocus);  // the keys for it work in the text
    setCursor(Qt::ArrowCursor);
    resize(kButton, kButton);
}

void CopyButton::SetColors(const ViewColors& colors) {
    colors_ = colors;
    update();
}

void CopyButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors_.border, 1));
    painter.setBrush(isDown() ? colors_.hairline : underMouse() ? colors_.window : colors_.paper);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kButtonRadius,
                            kButtonRadius);
    DrawArrow(painter, QRectF(rect()).center(), from_ == Side::Original,
              isEnabled() ? colors_.ink : colors_.muted);
}

void CopyButton::enterEvent(QEnterEvent* /*event*/) {
    update();
}

void CopyButton::leaveEvent(QEvent* /*event*/) {
    update();
}

ConnectorStrip::ConnectorStrip(RichTextView& view, QWidget* parent)
    : QWidget(parent),
      view_(view),
      buttons_{new CopyButton(Side::Original, this), new CopyButton(Side::Modified, this)} {
    setFixedWidth(kStripWidth);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    for (const Side side : kBothSides) {
        buttons_[side]->hide();
        connect(buttons_[side], &QAbstractButton::clicked, this, [this, side] {
            const std::int32_t record = hovered_ >= 0 ? hovered_ : current_;
            if (copy_over && record >= 0)
                copy_over(record, side);
        });
    }
}

void ConnectorStrip::SetColors(const ViewColors& colors) {
    colors_ = colors;
    for (const Side side : kBothSides)
        buttons_[side]->SetColors(colors);
    update();
}

void ConnectorStrip::SetCurrentRecord(std::int32_t record) {
    current_ = record;
    RowsMoved();
}

void ConnectorStrip::SetAligned(bool aligned) {
    aligned_ = aligned;
    RowsMoved();
}

void ConnectorStrip::RowsMoved() {
    PlaceButtons();
    update();
}

QRectF ConnectorStrip::ExtentOf(std::int32_t record) {
    QRectF extent;
    const double origin = view_.viewport()->y();
    for (const ShownRow& row : view_.Page().Shown()) {
        if (record >= 0 && MarkOfRow(view_.Page(), row.row).record == record)
            extent |= QRectF(0, row.y + origin, width(), row.height);
    }
    return extent & QRectF(rect());
}

std::int32_t ConnectorStrip::RecordAt(double y) {
    const double origin = view_.viewport()->y();
    for (const ShownRow& row : view_.Page().Shown()) {
        if (y >= row.y + origin && y < row.y + origin + row.height)
            return MarkOfRow(view_.Page(), row.row).record;
    }
    return -1;
}

// On the difference under the pointer, else on the current one.
void ConnectorStrip::PlaceButtons() {
    const std::int32_t record = hovered_ >= 0 ? hovered_ : current_;
    const QRectF extent = aligned_ ? ExtentOf(record) : QRectF();
    const bool shown = !extent.isEmpty() && static_cast<bool>(copy_over);
    const int x = (width() - kButton) / 2;
    int y = static_cast<int>(extent.center().y()) - kButtonStep;
    y = std::clamp(y, 0, std::max(0, height() - 2 * kButtonStep));
    for (const Side side : kBothSides) {
        CopyButton& button = *buttons_[side];
        button.setVisible(shown);
        button.setEnabled(!may_copy_to || may_copy_to(OtherSide(side)));
        button.move(x, y + 1);
        y += kButtonStep;
        if (shown && button_name) {
            button.setAccessibleName(button_name(record, side));
            button.setToolTip(button_name(record, side));
        }
    }
}

void ConnectorStrip::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), colors_.window);
    const double origin = view_.viewport()->y();
    painter.setClipRect(QRectF(0, origin, width(), view_.viewport()->height()));
    const std::vector<ShownRow> rows = aligned_ ? view_.Page().Shown() : std::vector<ShownRow>();
    for (const ShownRow& row : rows) {
        const RowMark mark = MarkOfRow(view_.Page(), row.row);
        const QRectF rect(0, row.y + origin, width(), row.height);
        if (mark.kind == MarkKind::None)
            continue;
        const bool current = mark.record == current_ && current_ >= 0;
        const MarkColors& colors = colors_.Of(mark.kind);
        painter.fillRect(rect, current ? colors.row : colors.word);
        if (!current)
            continue;
        if (MarkOfRow(view_.Page(), row.row - 1).record != current_)
            painter.fillRect(QRectF(0, rect.top(), width(), 1), colors_.ink);
        if (MarkOfRow(view_.Page(), row.row + 1).record != current_)
            painter.fillRect(QRectF(0, rect.bottom() - 1, width(), 1), colors_.ink);
    }
    painter.setClipping(false);
    painter.fillRect(QRectF(0, 0, 1, height()), colors_.hairline);
    painter.fillRect(QRectF(width() - 1, 0, 1, height()), colors_.hairline);
}

void ConnectorStrip::mouseMoveEvent(QMouseEvent* event) {
    const std::int32_t record = RecordAt(event->position().y());
    if (record == hovered_)
        return;
    hovered_ = record;
    PlaceButtons();
}

void ConnectorStrip::mousePressEvent(QMouseEvent* event) {
    const std::int32_t record = RecordAt(event->position().y());
    if (record >= 0 && clicked)
        clicked(record);
}

// Between the texts the wheel scrolls them all the same.
void ConnectorStrip::wheelEvent(QWheelEvent* event) {
    QApplication::sendEvent(view_.viewport(), event);
}

void ConnectorStrip::leaveEvent(QEvent* /*event*/) {
    hovered_ = -1;
    PlaceButtons();
}

}  // namespace zorvane
