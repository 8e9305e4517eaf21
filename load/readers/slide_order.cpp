#include "load/readers/slide_order.h"

#include <algorithm>

namespace zorvane {
namespace {

constexpr double kRow = 228'600;  // a quarter of an inch: tops this near are one row

using Items = std::vector<PlacedShapes>;

// Tops that differ by little are one row; a fixed grid would part neighbours at its lines.
void SortFree(Items::iterator first, Items::iterator last) {
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

}  // namespace

void PutInReadingOrder(std::vector<PlacedShapes>& items) {
    std::stable_sort(items.begin(), items.end(),
                     [](const PlacedShapes& a, const PlacedShapes& b) { return a.rank < b.rank; });
    const auto is_free = [](const PlacedShapes& item) { return item.rank == ShapeRank::Free; };
    const auto first = std::find_if(items.begin(), items.end(), is_free);
    SortFree(first, std::find_if_not(first, items.end(), is_free));
}

std::vector<pugi::xml_node> Opened(const std::vector<PlacedShapes>& items) {
    std::vector<pugi::xml_node> shapes;
    for (const PlacedShapes& item : items)
        shapes.insert(shapes.end(), item.shapes.begin(), item.shapes.end());
    return shapes;
}

}  // namespace zorvane
