// What a page is drawn with: a PDF file, a printer of the desktop, or a test that writes down what
// it is told. All lengths are twips (1440 an inch), y grows downward from the paper's upper edge.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "compare/document/rich_text.h"

namespace zorvane {

struct PrintFont {
    FontName name{"Helvetica"};
    double points = 10;
    bool bold = false;
    bool italic = false;
    friend bool operator==(const PrintFont&, const PrintFont&) = default;
};

/// Above and below the line that letters stand on.
struct FontHeight {
    double ascent = 0;
    double descent = 0;
};

class TextMeasurer {
  public:
    virtual ~TextMeasurer() = default;
    virtual double Width(std::u16string_view text, const PrintFont& font) = 0;
    virtual FontHeight Height(const PrintFont& font) = 0;
};

struct PagePoint {
    double x = 0;
    double y = 0;
};
struct PageBox {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// Letters of one font and direction, in the order in which they are read; the painter shapes them.
struct PaintedText {
    std::u16string_view text;
    PrintFont font;
    Color color{};
    PagePoint baseline{};  ///< its left end, whatever the direction
    double width = 0;      ///< as measured
    bool right_to_left = false;
};

enum class StrokeStyle : std::uint8_t { Solid, Dotted, Dashed, DashDot, DashDotDot };
struct Stroke {
    PagePoint from{};
    PagePoint to{};
    double width = 10;
    Color color{};
    StrokeStyle style = StrokeStyle::Solid;
};

/// Failures name the printer or the file; after one nothing more is drawn.
class PagePainter : public TextMeasurer {
  public:
    /// A page begins; the one before is done.
    virtual Status NewPage(double width, double height) = 0;
    virtual void DrawText(const PaintedText& text) = 0;
    virtual void DrawLine(const Stroke& stroke) = 0;
    virtual void FillBox(const PageBox& box, Color color) = 0;
    /// The job is complete. Without this call nothing of it counts: no file, no job in the queue.
    virtual Status Finish() = 0;
    /// What is to be told of a finished job: letters that it could not show. Empty: nothing.
    virtual std::string Remark() const { return {}; }
};

}  // namespace zorvane
