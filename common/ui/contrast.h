// Contrast as people with weak sight need it.
#pragma once

#include <QColor>

namespace zorvane {

/// The least contrast of text with its ground, and of an edge that tells where a control is.
inline constexpr double kTextContrast = 4.5;
inline constexpr double kEdgeContrast = 3.0;

/// From 1 (the same) to 21 (black on white), by the luminances of both. Alpha is not looked at.
double Contrast(const QColor& one, const QColor& other);

/// `color` with hue and saturation of its own, made lighter or darker by as little as reaches
/// `wanted` on `ground`; unchanged where it does already. Up to 4.58 can be reached on any ground.
QColor MovedToContrast(const QColor& color, const QColor& ground, double wanted = kTextContrast);

}  // namespace zorvane
