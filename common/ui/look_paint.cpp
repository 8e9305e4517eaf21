#include "common/ui/look_paint.h"

#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

void PaintBox(QPainter& painter, const QRectF& place, double corner, const QColor& ground,
              const QColor& edge, double line) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(ground.isValid() ? QBrush(ground) : QBrush(Qt::NoBrush));
    painter.setPen(edge.isValid() ? QPen(edge, line) : QPen(Qt::NoPen));
    const double inset = edge.isValid() ? line / 2 : 0;
    painter.drawRoundedRect(place.adjusted(inset, inset, -inset, -inset), corner - inset,
                            corner - inset);
    painter.restore();
}

void PaintFocus(QPainter& painter, const QRectF& place, double corner) {
    PaintBox(painter, place, corner, QColor(), Tokens()[Token::Ink], measures::kFocusLine);
}

void PaintShadow(QPainter& painter, const QRectF& place, double corner) {
    const bool dark = Tokens().GetScheme() == Scheme::Dark;
    constexpr int kSteps = 20;
    constexpr int kBelow = 6;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int step = kSteps; step > 0; --step) {
        painter.setBrush(QColor(0, 0, 0, dark ? 6 : 1));
        painter.drawRoundedRect(place.adjusted(-step, -step + kBelow, step, step + kBelow),
                                corner + step, corner + step);
    }
    painter.restore();
}

void PaintField(QPainter& painter, const QRect& place, bool enabled, bool focused, bool wrong) {
    const ColorTokens& tokens = Tokens();
    const QColor ground = tokens[enabled ? Token::Paper : Token::Window];
    QColor edge = tokens[enabled ? Token::Border : Token::Hairline];
    if (focused)
        edge = tokens[Token::Ink];
    if (wrong)
        edge = tokens[Token::ErrorText];
    PaintBox(painter, place, measures::kControlCorner, ground, edge,
             focused || wrong ? measures::kFocusLine : measures::kHairline);
}

void PaintHatch(QPainter& painter, const QRect& place) {
    constexpr int kStep = 8;
    painter.save();
    painter.setClipRect(place);
    painter.fillRect(place, Tokens()[Token::HatchGround]);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Tokens()[Token::HatchLine], 1));
    for (int x = place.left() - place.height(); x < place.right(); x += kStep)
        painter.drawLine(x, place.bottom() + 1, x + place.height(), place.top());
    painter.restore();
}

QFont Sized(const QFont& font, double factor, bool semibold) {
    QFont sized = font;
    if (font.pointSizeF() > 0)
        sized.setPointSizeF(font.pointSizeF() * factor);
    else
        sized.setPixelSize(qRound(font.pixelSize() * factor));
    if (semibold)
        sized.setWeight(QFont::DemiBold);
    return sized;
}

QFont Semibold(const QFont& font) {
    return Sized(font, 1, true);
}

bool ShowsFocus(const QWidget& widget) {
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

}  // namespace zorvane
