// The title bars of windows inside a window.
#pragma once

#include <QStyleOptionTitleBar>

namespace zorvane {

inline constexpr int kTitleBarHeight = 30;

/// Null for a part that it does not have.
QRect TitleBarPart(const QStyleOptionTitleBar& option, QStyle::SubControl part);
void PaintTitleBar(const QStyleOptionTitleBar& option, QPainter& painter);
void PaintWindowFrame(const QStyleOption& option, QPainter& painter);

}  // namespace zorvane
