// Strokes that the style and the widgets of the kit share.
#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QWidget>

#include "common/ui/color_tokens.h"

namespace zorvane {

/// A rounded box whose edge of `line` lies wholly inside `place`.
void PaintBox(QPainter& painter, const QRectF& place, double corner, const QColor& ground,
              const QColor& edge, double line = 1);
/// The ring around what has the focus.
void PaintFocus(QPainter& painter, const QRectF& place, double corner);
/// A soft shadow below a card at `place`.
void PaintShadow(QPainter& painter, const QRectF& place, double corner);
/// A field, combo box or spin box: paper, edge, and the ink edge of the focus.
void PaintField(QPainter& painter, const QRect& place, bool enabled, bool focused, bool wrong);
/// Lines for a room in which one side has nothing.
void PaintHatch(QPainter& painter, const QRect& place);

/// `font` in a size relative to its own, and semibold where asked for.
QFont Sized(const QFont& font, double factor, bool semibold = false);
QFont Semibold(const QFont& font);

/// True when the focus came by keys, so that its ring helps.
bool ShowsFocus(const QWidget& widget);

}  // namespace zorvane
