#include "compare/ui/mark_painter.h"

#include <algorithm>
#include <cmath>

#include <QLineF>
#include <QList>

namespace zorvane {
namespace {

constexpr double kIconWidth = 1.5;
constexpr double kMarkWidth = 1.2;
constexpr double kHatchStep = 8;
constexpr double kUnderlineGap = 2.8;  // below the baseline, clear of most descenders
constexpr double kStrikePart = 0.27;   // of the ascent: the middle of small letters

void SetIconPen(QPainter& painter, const QColor& color) {
    painter.setPen(QPen(color, kIconWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
}

void Lines(QPainter& painter, QPointF middle, std::initializer_list<QLineF> lines) {
    for (const QLineF& line : lines)
        painter.drawLine(line.translated(middle));
}

}  // namespace

void DrawSign(QPainter& painter, MarkKind kind, QPointF middle, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    SetIconPen(painter, color);
    switch (kind) {
        case MarkKind::Changed:
            Lines(painter, middle, {{-5, -2, 5, -2}, {-5, 2, 5, 2}, {3, -5.5, -3, 5.5}});
            break;
        case MarkKind::Deleted:
            Lines(painter, middle, {{-5, 0, 5, 0}});
            break;
        case MarkKind::Added:
            Lines(painter, middle, {{-5, 0, 5, 0}, {0, -5, 0, 5}});
            break;
        case MarkKind::Moved:
            Lines(painter, middle,
                  {{0, -5.5, 0, 5.5},
                   {0, -5.5, -3, -2.5},
                   {0, -5.5, 3, -2.5},
                   {0, 5.5, -3, 2.5},
                   {0, 5.5, 3, 2.5}});
            break;
        case MarkKind::None:
            break;
    }
    painter.restore();
}

void DrawUnfoldSign(QPainter& painter, QPointF middle, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    SetIconPen(painter, color);
    Lines(painter, middle,
          {{-6, 0, 6, 0}, {0, -7, -3, -4}, {0, -7, 3, -4}, {0, 7, -3, 4}, {0, 7, 3, 4}});
    painter.restore();
}

void DrawArrow(QPainter& painter, QPointF middle, bool right, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    SetIconPen(painter, color);
    const double way = right ? 1 : -1;
    Lines(painter, middle,
          {{-4.5, 0, 4.5, 0}, {4.5 * way, 0, 1 * way, -3.5}, {4.5 * way, 0, 1 * way, 3.5}});
    painter.restore();
}

void DrawHatch(QPainter& painter, const QRectF& rect, double phase, const ViewColors& colors) {
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.fillRect(rect, colors.hatch_ground);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.hatch_lines, 1));
    // Lines of x + y = n * step in a plane that moves with the text.
    const double begin = std::floor((rect.left() + rect.top() + phase) / kHatchStep) * kHatchStep;
    const double end = rect.right() + rect.bottom() + phase;
    const auto count = static_cast<int>((end - begin) / kHatchStep) + 1;
    QList<QLineF> lines;
    for (int line = 0; line < count; ++line) {
        const double sum = begin + line * kHatchStep;
        const double top = sum - phase - rect.top();
        const double bottom = sum - phase - rect.bottom();
        lines.append({top, rect.top(), bottom, rect.bottom()});
    }
    painter.drawLines(lines);
    painter.restore();
}

void DrawMarkLine(QPainter& painter, MarkLine line, double left, double right, double baseline,
                  double ascent) {
    QPen pen = painter.pen();
    pen.setWidthF(kMarkWidth);
    pen.setCapStyle(Qt::FlatCap);
    double y = baseline + kUnderlineGap;
    if (line == MarkLine::None)
        return;
    if (line == MarkLine::Strike)
        y = baseline - kStrikePart * ascent;
    pen.setStyle(Qt::SolidLine);
    if (line == MarkLine::Dotted)
        pen.setDashPattern({1.2, 1.8});
    painter.setPen(pen);
    painter.drawLine(QPointF(left, y), QPointF(right, y));
}

}  // namespace zorvane
