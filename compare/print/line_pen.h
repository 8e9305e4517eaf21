// Where text stands on a line that has tabs. Places are twips from the edge at which the paragraph
// begins: the left one, or the right one of a paragraph that runs from right to left.
#pragma once

#include "compare/document/rich_text.h"

namespace zorvane {

/// The room of one line.
struct LineRoom {
    double begin = 0;  ///< the first letter's place
    double end = 0;
};

/// The lines of a paragraph between the two edges of a page or cell, its indents kept within them.
struct ParagraphRoom {
    ParagraphRoom(const ParagraphFormat& format, double width);
    LineRoom First() const { return {left + first, end}; }
    LineRoom Later() const { return {left, end}; }

    double left = 0;
    double first = 0;  ///< of the first line, from `left`
    double end = 0;
};

/// Text is added from the line's beginning on; a tab moves on to the next stop, and what follows it
/// stands behind, around or in front of that stop as its kind wants.
class LinePen {
  public:
    LinePen(const ParagraphFormat& format, const ParagraphRoom& room, LineRoom line)
        : format_(format), room_(room), begin_(line.begin), stop_(line.begin) {}

    /// The stop that a tab would lead to.
    double NextStop() const { return FindStop().place; }
    void Tab();
    /// `to_point`: how much of it stands in front of a decimal point; negative: there is none.
    void Add(double width, double to_point = -1);
    /// The text behind the last tab so far: where it begins, and where it ends.
    double TextBegin() const;
    double End() const { return TextBegin() + width_; }
    bool WantsPoint() const { return kind_ == TabKind::Decimal && to_point_ < 0; }

  private:
    struct Stop {
        double place;
        TabKind kind;
    };
    Stop FindStop() const;

    const ParagraphFormat& format_;
    const ParagraphRoom& room_;
    double begin_;  // text may not stand in front of it
    double stop_;
    TabKind kind_ = TabKind::Left;
    double width_ = 0;
    double to_point_ = -1;
};

}  // namespace zorvane
