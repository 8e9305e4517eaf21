#include "compare/print/line_pen.h"

#include <algorithm>
#include <cmath>

namespace zorvane {
namespace {

constexpr double kDefaultStops = 720;  // twips apart
constexpr double kLeastRoom = 720;     // what indents leave of a line at least
constexpr double kNear = 1;            // a stop this near is the place where the pen stands

}  // namespace

ParagraphRoom::ParagraphRoom(const ParagraphFormat& format, double width) {
    const double least = std::min(kLeastRoom, width);
    left = std::clamp<double>(format.left_indent, 0, width - least);
    end = width - std::clamp<double>(format.right_indent, 0, width - least - left);
    first = std::clamp<double>(format.first_line_indent, -left, end - left - least);
}

LinePen::Stop LinePen::FindStop() const {
    const double from = End() + kNear;
    Stop best{kDefaultStops * (std::floor(from / kDefaultStops) + 1), TabKind::Left};
    bool own = false;
    for (const TabStop& tab : format_.tabs) {
        if (tab.kind == TabKind::Bar || tab.twips < from || (own && tab.twips >= best.place))
            continue;
        best = {static_cast<double>(tab.twips), tab.kind};
        own = true;
    }
    // The indent of the later lines is a stop of the first, as lists need it.
    if (room_.left >= from && (!own || room_.left < best.place))
        best = {room_.left, TabKind::Left};
    return best;
}

void LinePen::Tab() {
    const Stop stop = FindStop();
    begin_ = End();
    stop_ = stop.place;
    kind_ = stop.kind;
    width_ = 0;
    to_point_ = -1;
}

void LinePen::Add(double width, double to_point) {
    if (to_point >= 0 && to_point_ < 0)
        to_point_ = width_ + to_point;
    width_ += width;
}

double LinePen::TextBegin() const {
    switch (kind_) {
        case TabKind::Center:
            return std::max(begin_, stop_ - width_ / 2);
        case TabKind::Right:
            return std::max(begin_, stop_ - width_);
        case TabKind::Decimal:
            return std::max(begin_, stop_ - (to_point_ < 0 ? width_ : to_point_));
        case TabKind::Left:
        case TabKind::Bar:
            break;
    }
    return stop_;
}

}  // namespace zorvane
