// The rows of menus and the entries of a menu bar, as LookStyle paints them.
#pragma once

#include <QPainter>
#include <QSize>
#include <QStyle>
#include <QStyleOption>

namespace zorvane {

QSize MenuItemSize(const QStyleOption& option, const QSize& contents);
void PaintMenuItem(const QStyleOptionMenuItem& item, QPainter& painter);
void PaintMenuBarItem(const QStyleOptionMenuItem& item, QPainter& painter, const QStyle& style);

}  // namespace zorvane
