#include "load/readers/slide_shapes.h"

#include <algorithm>

#include "load/readers/slide_designs.h"
#include "load/readers/slide_text.h"

namespace zorvane {
namespace {

constexpr double kRow = 228'600;  // a quarter of an inch in EMU: tops this near are one row

enum class Rank : std::uint8_t { Title, Placeholder, Free, Margin };

// From the coordinates inside groups to those of the slide.
struct Frame {
    double scale_x = 1;
    double scale_y = 1;
    double shift_x = 0;
    double shift_y = 0;
};

struct Item {
    Rank rank = Rank::Free;
    double left = 0;
    double top = 0;
    std::vector<pugi::xml_node> shapes;  // one, or all of a group
};

double Coordinate(const pugi::xml_node& node, std::string_view name) {
    return NumberOf(Attribute(node, name), 0);
}

pugi::xml_node TransformOf(const pugi::xml_node& shape) {
    if (const pugi::xml_node own = Child(shape, "xfrm"))
        return own;
    const pugi::xml_node properties = Child(shape, Is(shape, "grpSp") ? "grpSpPr" : "spPr");
    return Child(properties, "xfrm");
}

Frame Inner(const Frame& frame, const pugi::xml_node& transform) {
    const pugi::xml_node place = Child(transform, "off");
    const pugi::xml_node size = Child(transform, "ext");
    const pugi::xml_node inner_place = Child(transform, "chOff");
    const pugi::xml_node inner_size = Child(transform, "chExt");
    const auto share = [&](std::string_view name) {
        const double inner = Coordinate(inner_size, name);
        return inner > 0 ? Coordinate(size, name) / inner : 1.0;
    };
    Frame inner;
    const double scale_x = share("cx");
    const double scale_y = share("cy");
    inner.scale_x = frame.scale_x * scale_x;
    inner.scale_y = frame.scale_y * scale_y;
    inner.shift_x = frame.shift_x + frame.scale_x * (Coordinate(place, "x") -
                                                     Coordinate(inner_place, "x") * scale_x);
    inner.shift_y = frame.shift_y + frame.scale_y * (Coordinate(place, "y") -
                                                     Coordinate(inner_place, "y") * scale_y);
    return inner;
}

bool IsHidden(const pugi::xml_node& shape) {
    for (const pugi::xml_node& facts : shape.children()) {
        if (!LocalName(facts).starts_with("nv"))
            continue;
        const std::string_view hidden = Attribute(Child(facts, "cNvPr"), "hidden");
        return hidden == "1" || hidden == "true";
    }
    return false;
}

Rank RankOf(const pugi::xml_node& shape) {
    const SlidePlaceholder placeholder = PlaceholderOf(shape);
    if (!placeholder.is_one)
        return Rank::Free;
    if (placeholder.IsTitle())
        return Rank::Title;
    return placeholder.IsMargin() ? Rank::Margin : Rank::Placeholder;
}

// Tops that differ by little are one row; a fixed grid would part neighbours at its lines.
void SortFree(std::vector<Item>::iterator first, std::vector<Item>::iterator last) {
    std::stable_sort(first, last, [](const Item& a, const Item& b) { return a.top < b.top; });
    while (first != last) {
        const double limit = first->top + kRow;
        const auto row_end =
            std::find_if(first, last, [limit](const Item& item) { return item.top > limit; });
        std::stable_sort(first, row_end,
                         [](const Item& a, const Item& b) { return a.left < b.left; });
        first = row_end;
    }
}

void Sort(std::vector<Item>& items) {
    std::stable_sort(items.begin(), items.end(),
                     [](const Item& a, const Item& b) { return a.rank < b.rank; });
    const auto is_free = [](const Item& item) { return item.rank == Rank::Free; };
    const auto first = std::find_if(items.begin(), items.end(), is_free);
    SortFree(first, std::find_if_not(first, items.end(), is_free));
}

class Collector {
  public:
    explicit Collector(ShapeOrder order) : order_(order) {}

    std::vector<pugi::xml_node> Collect(const pugi::xml_node& tree, const Frame& frame, int depth) {
        std::vector<Item> items;
        Gather(tree, frame, depth, items);
        if (order_ == ShapeOrder::Reading)
            Sort(items);
        std::vector<pugi::xml_node> shapes;
        for (const Item& item : items)
            shapes.insert(shapes.end(), item.shapes.begin(), item.shapes.end());
        return shapes;
    }

  private:
    void Gather(const pugi::xml_node& tree, const Frame& frame, int depth,
                std::vector<Item>& items) {
        if (depth > kMaxDepth)
            return;
        for (const pugi::xml_node& node : tree.children()) {
            const bool group = Is(node, "grpSp");
            if (Is(node, "AlternateContent")) {
                Gather(ChosenBranch(node), frame, depth + 1, items);
            } else if ((group || Is(node, "sp") || Is(node, "graphicFrame")) && !IsHidden(node)) {
                const pugi::xml_node transform = TransformOf(node);
                Item item;
                item.rank = RankOf(node);
                const pugi::xml_node place = Child(transform, "off");
                item.left = frame.shift_x + frame.scale_x * Coordinate(place, "x");
                item.top = frame.shift_y + frame.scale_y * Coordinate(place, "y");
                item.shapes = group ? Collect(node, Inner(frame, transform), depth + 1)
                                    : std::vector<pugi::xml_node>{node};
                items.push_back(std::move(item));
            }
        }
    }

    ShapeOrder order_;
};

}  // namespace

std::vector<pugi::xml_node> ShapesOf(const pugi::xml_node& tree, ShapeOrder order) {
    return Collector(order).Collect(tree, Frame(), 0);
}

}  // namespace zorvane
