#include "load/readers/ooxml/slide_shapes.h"

#include "load/readers/container/xml_part.h"
#include "load/readers/ooxml/alternate_content.h"
#include "load/readers/slides/slide_order.h"

namespace zorvane {
namespace {

// From the coordinates inside groups to those of the slide.
struct Frame {
    double scale_x = 1;
    double scale_y = 1;
    double shift_x = 0;
    double shift_y = 0;
};

double Coordinate(const pugi::xml_node& node, std::string_view name) {
    return NumberOf(Attribute(node, name), 0);
}

pugi::xml_node OwnTransform(const pugi::xml_node& shape) {
    if (const pugi::xml_node own = Child(shape, "xfrm"))
        return own;
    const pugi::xml_node properties = Child(shape, Is(shape, "grpSp") ? "grpSpPr" : "spPr");
    return Child(properties, "xfrm");
}

pugi::xml_node TransformOf(const pugi::xml_node& shape, const SlideDesign* design) {
    const pugi::xml_node own = OwnTransform(shape);
    const SlidePlaceholder placeholder = PlaceholderOf(shape);
    if (own || design == nullptr || !placeholder.is_one)
        return own;
    for (const pugi::xml_node& model : design->ModelsOf(placeholder)) {
        if (const pugi::xml_node transform = OwnTransform(model))
            return transform;
    }
    return own;
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

ShapeRank RankOf(const pugi::xml_node& shape) {
    const SlidePlaceholder placeholder = PlaceholderOf(shape);
    if (!placeholder.is_one)
        return ShapeRank::Free;
    if (placeholder.IsTitle())
        return ShapeRank::Title;
    return placeholder.IsMargin() ? ShapeRank::Margin : ShapeRank::Free;
}

class Collector {
  public:
    Collector(const SlideDesign* design, ShapeOrder order) : design_(design), order_(order) {}

    std::vector<pugi::xml_node> Collect(const pugi::xml_node& tree, const Frame& frame, int depth) {
        return Opened(Ordered(tree, frame, depth));
    }

  private:
    std::vector<PlacedShapes> Ordered(const pugi::xml_node& tree, const Frame& frame, int depth) {
        std::vector<PlacedShapes> items;
        Gather(tree, frame, depth, items);
        if (order_ == ShapeOrder::Reading)
            PutInReadingOrder(items);
        return items;
    }

    static void TakeGroup(const std::vector<PlacedShapes>& inner, PlacedShapes& group) {
        if (group.left == group.right && group.top == group.bottom)
            LieAround(inner, group);
        group.shapes = Opened(inner);
    }

    void Gather(const pugi::xml_node& tree, const Frame& frame, int depth,
                std::vector<PlacedShapes>& items) {
        if (depth > kMaxDepth)
            return;
        for (const pugi::xml_node& node : tree.children()) {
            const bool group = Is(node, "grpSp");
            if (Is(node, "AlternateContent")) {
                Gather(ChosenForm(node), frame, depth + 1, items);
            } else if ((group || Is(node, "sp") || Is(node, "graphicFrame")) && !IsHidden(node)) {
                const pugi::xml_node transform = TransformOf(node, design_);
                PlacedShapes item;
                item.rank = RankOf(node);
                const pugi::xml_node place = Child(transform, "off");
                item.left = frame.shift_x + frame.scale_x * Coordinate(place, "x");
                item.top = frame.shift_y + frame.scale_y * Coordinate(place, "y");
                const pugi::xml_node size = Child(transform, "ext");
                item.right = item.left + frame.scale_x * Coordinate(size, "cx");
                item.bottom = item.top + frame.scale_y * Coordinate(size, "cy");
                if (group)
                    TakeGroup(Ordered(node, Inner(frame, transform), depth + 1), item);
                else
                    item.shapes = {node};
                items.push_back(std::move(item));
            }
        }
    }

    const SlideDesign* design_;
    ShapeOrder order_;
};

}  // namespace

std::vector<pugi::xml_node> ShapesOf(const pugi::xml_node& tree, const SlideDesign* design,
                                     ShapeOrder order) {
    return Collector(design, order).Collect(tree, Frame(), 0);
}

}  // namespace zorvane
