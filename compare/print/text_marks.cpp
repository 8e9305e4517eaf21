#include "compare/print/text_marks.h"

#include <algorithm>

#include "common/base/number.h"

namespace zorvane {
namespace {

struct UnderlineLook {
    StrokeStyle style = StrokeStyle::Solid;
    int lines = 1;
    bool thick = false;
    bool wave = false;
};

UnderlineLook LookOf(Underline underline) {
    switch (underline) {
        case Underline::Double:
            return {StrokeStyle::Solid, 2, false, false};
        case Underline::Thick:
            return {StrokeStyle::Solid, 1, true, false};
        case Underline::Dotted:
        case Underline::ThickDotted:
            return {StrokeStyle::Dotted, 1, underline == Underline::ThickDotted, false};
        case Underline::Dash:
        case Underline::LongDash:
        case Underline::ThickDash:
        case Underline::ThickLongDash:
            return {StrokeStyle::Dashed, 1,
                    underline == Underline::ThickDash || underline == Underline::ThickLongDash,
                    false};
        case Underline::DashDot:
        case Underline::ThickDashDot:
            return {StrokeStyle::DashDot, 1, underline == Underline::ThickDashDot, false};
        case Underline::DashDotDot:
        case Underline::ThickDashDotDot:
            return {StrokeStyle::DashDotDot, 1, underline == Underline::ThickDashDotDot, false};
        case Underline::Wave:
        case Underline::HeavyWave:
            return {StrokeStyle::Solid, 1, underline == Underline::HeavyWave, true};
        case Underline::DoubleWave:
            return {StrokeStyle::Solid, 2, false, true};
        case Underline::None:
        case Underline::Single:
        case Underline::Words:
            break;
    }
    return {};
}

void DrawWave(PagePainter& painter, const Stroke& line, double height) {
    double x = line.from.x;
    for (bool down = true; x < line.to.x; down = !down) {
        Stroke stroke = line;
        const double next = std::min(x + height, line.to.x);
        stroke.from = {x, line.from.y + (down ? 0 : height)};
        stroke.to = {next, line.from.y + (down ? height : 0)};
        painter.DrawLine(stroke);
        x = next;
    }
}

// Each word by itself.
void DrawUnderWords(PagePainter& painter, const MarkedPiece& piece, const Stroke& line) {
    const std::u16string_view text = piece.text;
    for (std::size_t begin = 0;
         (begin = text.find_first_not_of(u' ', begin)) != std::u16string_view::npos;) {
        const std::size_t end = std::min(text.find(u' ', begin), text.size());
        Stroke stroke = line;
        stroke.from.x = piece.left + painter.Width(text.substr(0, begin), piece.font);
        stroke.to.x = piece.left + painter.Width(text.substr(0, end), piece.font);
        painter.DrawLine(stroke);
        begin = end;
    }
}

}  // namespace

void DrawMarks(PagePainter& painter, const MarkedPiece& piece, double baseline) {
    const double size = piece.font.points * kTwipsPerPoint;
    const double thin = std::max(size / 16, 5.0);
    Stroke stroke;
    stroke.color = piece.format.fore_color.value_or(Color{});
    stroke.from.x = piece.left;
    stroke.to.x = piece.left + piece.width;
    stroke.width = thin;
    const auto at = [&](double y) { stroke.from.y = stroke.to.y = y; };
    if (piece.format.strikeout) {
        at(baseline - size * 0.28);
        painter.DrawLine(stroke);
    }
    if (piece.format.underline == Underline::None)
        return;
    const UnderlineLook look = LookOf(piece.format.underline);
    stroke.style = look.style;
    stroke.width = look.thick ? 2 * thin : thin;
    for (int line = 0; line < look.lines; ++line) {
        at(baseline + size * 0.1 + line * 2.2 * thin);
        if (look.wave)
            DrawWave(painter, stroke, 2 * thin);
        else if (piece.format.underline == Underline::Words)
            DrawUnderWords(painter, piece, stroke);
        else
            painter.DrawLine(stroke);
    }
}

}  // namespace zorvane
