#include "load/readers/slides/slide_order.h"

#include <algorithm>

namespace zorvane {
namespace {

constexpr double kRow = 228'600;    // a quarter of an inch: tops this near are one row
constexpr double kMargin = 91'440;  // inside a box its text keeps off the edge by about this
constexpr double kRowsFirst = 0.7;  // a gap between rows counts when it is this share of that
                                    // between columns
constexpr double kStandsOut = 1.5;  // times the usual gap
constexpr double kSameGap = 0.75;   // gaps of this share of the widest cut as that does
constexpr int kMostCuts = 24;       // nested; deeper ones are no layout that somebody made

using Iterator = std::vector<PlacedShapes>::iterator;

// Tops that differ by little are one row; a fixed grid would part neighbours at its lines.
void SortByRows(Iterator first, Iterator last) {
    std::stable_sort(first, last,
                     [](const PlacedShapes& a, const PlacedShapes& b) { return a.top < b.top; });
    while (first != last) {
        const double limit = first->top + kRow;
        const auto row_end = std::find_if(
            first, last, [limit](const PlacedShapes& item) { return item.top > limit; });
        std::stable_sort(first, row_end, [](const PlacedShapes& a, const PlacedShapes& b) {
            return a.left < b.left;
        });
        first = row_end;
    }
}

// One direction of the page: where boxes begin and end in it, without the margin of their text.
struct Direction {
    double PlacedShapes::*begin;
    double PlacedShapes::*end;

    double Begin(const PlacedShapes& item) const { return item.*begin + Inset(item); }
    double End(const PlacedShapes& item) const { return item.*end - Inset(item); }
    double Inset(const PlacedShapes& item) const {
        return std::clamp((item.*end - item.*begin) / 4, 0.0, kMargin);
    }
};

constexpr Direction kDown{&PlacedShapes::top, &PlacedShapes::bottom};
constexpr Direction kAcross{&PlacedShapes::left, &PlacedShapes::right};

void SortAlong(Direction direction, Iterator first, Iterator last) {
    std::stable_sort(first, last, [direction](const PlacedShapes& a, const PlacedShapes& b) {
        return direction.Begin(a) < direction.Begin(b);
    });
}

// Calls `visit` with each place before which nothing reaches over it, and the width of the gap.
template <class Visit>
void ForGaps(Direction direction, Iterator first, Iterator last, Visit visit) {
    if (first == last)
        return;
    double reach = direction.End(*first);
    for (Iterator item = first + 1; item != last; ++item) {
        const double gap = direction.Begin(*item) - reach;
        if (gap > 0)
            visit(item, gap);
        reach = std::max(reach, direction.End(*item));
    }
}

struct Gaps {
    double widest = 0;
    double usual = 0;  // the middle one
};

Gaps GapsOf(Direction direction, Iterator first, Iterator last) {
    std::vector<double> widths;
    SortAlong(direction, first, last);
    ForGaps(direction, first, last, [&widths](Iterator, double gap) { widths.push_back(gap); });
    if (widths.empty())
        return {};
    std::sort(widths.begin(), widths.end());
    return {widths.back(), widths[widths.size() / 2]};
}

// Rows come first where the gap between them is no narrower than that between columns, or stands
// out from the other gaps between lines: two rows of cards, each with a heading over its text.
bool RowsFirst(const Gaps& down, const Gaps& across) {
    return down.widest > 0 &&
           (down.widest >= kRowsFirst * across.widest || down.widest >= kStandsOut * down.usual);
}

// Cuts along the gaps that run through from edge to edge, as the eye parts a page into rows and
// columns, and so on in each part.
void SortByGaps(Iterator first, Iterator last, int depth) {
    if (last - first < 2)
        return;
    const Gaps across = GapsOf(kAcross, first, last);
    const Gaps down = GapsOf(kDown, first, last);
    if (depth == kMostCuts || (across.widest <= 0 && down.widest <= 0)) {
        SortByRows(first, last);
        return;
    }
    const bool rows = RowsFirst(down, across);
    const Direction direction = rows ? kDown : kAcross;
    const double least = kSameGap * (rows ? down.widest : across.widest);
    SortAlong(direction, first, last);
    std::vector<Iterator> cuts{first};
    ForGaps(direction, first, last, [&](Iterator item, double gap) {
        if (gap >= least)
            cuts.push_back(item);
    });
    cuts.push_back(last);
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i)
        SortByGaps(cuts[i], cuts[i + 1], depth + 1);
}

}  // namespace

void PutInReadingOrder(std::vector<PlacedShapes>& items) {
    const auto is_title = [](const PlacedShapes& item) { return item.rank == ShapeRank::Title; };
    if (std::count_if(items.begin(), items.end(), is_title) > 1) {
        for (PlacedShapes& item : items)
            item.rank = item.rank == ShapeRank::Title ? ShapeRank::Free : item.rank;
    }
    std::stable_sort(items.begin(), items.end(),
                     [](const PlacedShapes& a, const PlacedShapes& b) { return a.rank < b.rank; });
    const auto is_free = [](const PlacedShapes& item) { return item.rank == ShapeRank::Free; };
    const auto first = std::find_if(items.begin(), items.end(), is_free);
    SortByGaps(first, std::find_if_not(first, items.end(), is_free), 0);
}

void LieAround(const std::vector<PlacedShapes>& inner, PlacedShapes& group) {
    for (const PlacedShapes& one : inner) {
        const bool first = &one == &inner.front();
        group.left = first ? one.left : std::min(group.left, one.left);
        group.top = first ? one.top : std::min(group.top, one.top);
        group.right = first ? one.right : std::max(group.right, one.right);
        group.bottom = first ? one.bottom : std::max(group.bottom, one.bottom);
    }
}

std::vector<pugi::xml_node> Opened(const std::vector<PlacedShapes>& items) {
    std::vector<pugi::xml_node> shapes;
    for (const PlacedShapes& item : items)
        shapes.insert(shapes.end(), item.shapes.begin(), item.shapes.end());
    return shapes;
}

}  // namespace zorvane
