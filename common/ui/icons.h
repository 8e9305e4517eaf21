// Icons that are drawn from their lines at the size and in the colour in which they are wanted.
#pragma once

#include <QIcon>
#include <QPainter>
#include <QString>

#include "common/ui/color_tokens.h"

namespace zorvane {

/// The icon of this name ("chevron") in a colour that follows the scheme; sharp at any ratio of
/// pixels. Below 20 px the drawing made for 16 is taken. Disabled it is painted greyed.
QIcon LookIcon(const QString& name, Token color = Token::Text);
/// The program's own icon, which has colours of its own.
QIcon ProgramIcon();

void PaintIcon(QPainter& painter, const QString& name, const QRectF& place, const QColor& color);
bool HasIcon(const QString& name);

}  // namespace zorvane
