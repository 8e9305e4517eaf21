#include "compare/ui/printer_painter.h"

#include <QFontMetricsF>

#include "common/ui/qt_text.h"
#include "compare/ui/font_families.h"

namespace zorvane {
namespace {

constexpr double kTwipsPerInch = 1440;

QColor ColorOf(Color color) {
    constexpr int kByte = 0xFF;
    return {color.value & kByte, (color.value >> 8) & kByte, (color.value >> 16) & kByte};
}

Qt::PenStyle PenOf(StrokeStyle style) {
    switch (style) {
        case StrokeStyle::Dotted:
            return Qt::DotLine;
        case StrokeStyle::Dashed:
            return Qt::DashLine;
        case StrokeStyle::DashDot:
            return Qt::DashDotLine;
        case StrokeStyle::DashDotDot:
            return Qt::DashDotDotLine;
        case StrokeStyle::Solid:
            break;
    }
    return Qt::SolidLine;
}

}  // namespace

PrinterPainter::PrinterPainter(std::unique_ptr<QPrinter> printer) : PrinterPainter(*printer) {
    own_ = std::move(printer);
}

PrinterPainter::PrinterPainter(QPrinter& printer) : printer_(&printer) {
    printer_->setFullPage(true);
    pixels_per_twip_ = printer_->resolution() / kTwipsPerInch;
}

// A job without its end counts for nothing.
PrinterPainter::~PrinterPainter() {
    if (painter_.isActive() && !finished_) {
        printer_->abort();
        painter_.end();
    }
}

QFont PrinterPainter::FontOf(const PrintFont& font) const {
    QFont face = FaceOf(font.name.view());
    face.setPointSizeF(font.points);
    face.setBold(font.bold);
    face.setItalic(font.italic);
    return face;
}

double PrinterPainter::Width(std::u16string_view text, const PrintFont& font) {
    return TwipsOf(QFontMetricsF(FontOf(font), printer_).horizontalAdvance(ToQt(text)));
}

FontHeight PrinterPainter::Height(const PrintFont& font) {
    const QFontMetricsF metrics(FontOf(font), printer_);
    return {TwipsOf(metrics.ascent()), TwipsOf(metrics.descent())};
}

Status PrinterPainter::NewPage(double, double) {
    const bool ready = painter_.isActive() ? printer_->newPage() : painter_.begin(printer_);
    const QString name =
        printer_->outputFileName().isEmpty() ? printer_->printerName() : printer_->outputFileName();
    return ready ? Status::Ok() : Failure{FromQt(name)};
}

void PrinterPainter::DrawText(const PaintedText& text) {
    painter_.setFont(FontOf(text.font));
    painter_.setPen(ColorOf(text.color));
    painter_.setLayoutDirection(text.right_to_left ? Qt::RightToLeft : Qt::LeftToRight);
    painter_.drawText(PointOf(text.baseline), ToQt(text.text));
}

void PrinterPainter::DrawLine(const Stroke& stroke) {
    painter_.setPen(QPen(ColorOf(stroke.color), Pixels(stroke.width), PenOf(stroke.style)));
    painter_.drawLine(PointOf(stroke.from), PointOf(stroke.to));
}

void PrinterPainter::FillBox(const PageBox& box, Color color) {
    painter_.fillRect(
        QRectF(Pixels(box.left), Pixels(box.top), Pixels(box.width), Pixels(box.height)),
        ColorOf(color));
}

Status PrinterPainter::Finish() {
    finished_ = true;
    return painter_.end() ? Status::Ok() : Failure{FromQt(printer_->printerName())};
}

}  // namespace zorvane
