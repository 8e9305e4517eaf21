// Pages on a printer of the desktop, or in a file that its dialog named.
#pragma once

#include <memory>

#include <QPainter>
#include <QPrinter>

#include "compare/print/page_painter.h"

namespace zorvane {

class PrinterPainter : public PagePainter {
  public:
    explicit PrinterPainter(std::unique_ptr<QPrinter> printer);
    /// Borrowed; for a preview.
    explicit PrinterPainter(QPrinter& printer);
    ~PrinterPainter() override;

    double Width(std::u16string_view text, const PrintFont& font) override;
    FontHeight Height(const PrintFont& font) override;
    Status NewPage(double width, double height) override;
    void DrawText(const PaintedText& text) override;
    void DrawLine(const Stroke& stroke) override;
    void FillBox(const PageBox& box, Color color) override;
    Status Finish() override;

  private:
    QFont FontOf(const PrintFont& font) const;
    double Pixels(double twips) const { return twips * pixels_per_twip_; }
    double TwipsOf(double pixels) const { return pixels / pixels_per_twip_; }
    QPointF PointOf(PagePoint point) const { return {Pixels(point.x), Pixels(point.y)}; }

    std::unique_ptr<QPrinter> own_;
    QPrinter* printer_;
    QPainter painter_;
    double pixels_per_twip_ = 1;
    bool finished_ = false;
};

}  // namespace zorvane
