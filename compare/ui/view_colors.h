// The colours that a text view paints with, and how a document's own colours stay readable.
#pragma once

#include <array>

#include <QColor>

#include "compare/ui/mark_source.h"

namespace zorvane {

struct MarkColors {
    QColor text;
    QColor word;  ///< ground of a changed word, and of the row in the strip
    QColor row;   ///< ground of a row
};

/// Handed in by whoever knows the theme.
struct ViewColors {
    QColor window;
    QColor paper;
    QColor text;
    QColor text2;
    QColor muted;
    QColor hairline;
    QColor border;
    QColor ink;
    QColor ink_text;
    QColor selection;
    QColor selection_text;
    QColor hit;
    QColor this_hit;
    QColor this_hit_text;
    QColor hatch_ground;
    QColor hatch_lines;
    MarkColors changed;
    MarkColors deleted;
    MarkColors added;
    MarkColors moved;

    /// Of a text whose marks are formats: what the settings store, and how it is painted.
    struct PaintedAs {
        QColor stored;
        QColor painted;
    };
    std::array<PaintedAs, 4> marks_in_text{};

    static ViewColors Light();
    static ViewColors Dark();
    /// Only for a kind that has colours.
    const MarkColors& Of(MarkKind kind) const;
    /// How the own colour of a text is painted, if it is one of a mark.
    QColor OfText(const QColor& own) const;
};

/// Contrast of two opaque colours, 1 to 21, by the formula of the accessibility guidelines.
double ContrastOf(const QColor& one, const QColor& other);
/// `color`, moved along its own lightness until its contrast with `ground` is 4.5.
QColor ReadableOn(const QColor& color, const QColor& ground);

}  // namespace zorvane
