// How a view's text is laid out: colours, width, zoom; and the core's formats as Qt's.
#pragma once

#include <vector>

#include <QFont>
#include <QTextCharFormat>

#include "compare/document/rich_text.h"
#include "compare/ui/view_colors.h"

namespace zorvane {

/// Everything but the text that a layout depends on. Sizes are in pixels at 100 %.
struct TextStyle {
    ViewColors colors = ViewColors::Light();
    double width = 600;  ///< of the text column
    bool wrap = true;
    double zoom = 1;
    double line_factor = 1.22;  ///< line height as a part of the font's
    double room_above = 5;
    double room_below = 7;
};

/// A distance of a document on the screen.
double PixelsOf(std::int32_t twips, double zoom);

/// Makes fonts and formats, and keeps those made last: a document has few, each paragraph asks.
class FormatMaker {
  public:
    /// For another zoom, font resolution or set of colours.
    void Clear() { made_.clear(); }
    /// The format without its colours and lines.
    const QTextCharFormat& Of(const CharFormat& format, double zoom);

  private:
    struct Made {
        CharFormat format;
        QTextCharFormat text;
    };
    std::vector<Made> made_;
};

/// True for the underlines that Qt's own formats cannot show.
bool IsOwnUnderline(Underline underline);
QTextCharFormat::UnderlineStyle QtUnderlineOf(Underline underline);
QColor QtColorOf(Color color);

}  // namespace zorvane
