// The rows of menus and the entries of a menu bar, as LookStyle paints them.
#pragma once

#include <QPainter>
#include <QRegion>
#include <QSize>
#include <QStyle>
#include <QStyleOption>

namespace zorvane {

/// What a menu covers: desktops that blend no windows would show its corners black.
QRegion MenuShape(const QRect& rect);
QSize MenuItemSize(const QStyleOption& option, const QSize& contents);
void PaintMenuItem(const QStyleOptionMenuItem& item, QPainter& painter);
void PaintMenuBarItem(const QStyleOptionMenuItem& item, QPainter& painter, const QStyle& style);

}  // namespace zorvane
