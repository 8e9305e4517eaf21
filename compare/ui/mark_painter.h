// The signs, lines and grounds that tell a difference, drawn alike by views, strip and overview.
#pragma once

#include <QPainter>
#include <QPointF>
#include <QRectF>

#include "compare/ui/mark_source.h"
#include "compare/ui/view_colors.h"

namespace zorvane {

/// The sign of a kind (unequal, minus, plus, up and down) in a square of 14 around `middle`.
void DrawSign(QPainter& painter, MarkKind kind, QPointF middle, const QColor& color);
/// Two arrows that part: a fold that can be opened.
void DrawUnfoldSign(QPainter& painter, QPointF middle, const QColor& color);
/// An arrow to the right or left, of a copy button.
void DrawArrow(QPainter& painter, QPointF middle, bool right, const QColor& color);
/// Ground of room that the other side's paragraphs take. `phase` moves the lines along with the
/// text, so that stripes painted one after the other fit.
void DrawHatch(QPainter& painter, const QRectF& rect, double phase, const ViewColors& colors);
/// Strike, underline or dots along a stretch of a line.
void DrawMarkLine(QPainter& painter, MarkLine line, double left, double right, double baseline,
                  double ascent);

}  // namespace zorvane
