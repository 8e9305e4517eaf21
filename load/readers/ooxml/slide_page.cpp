#include "load/readers/ooxml/slide_page.h"

#include "load/readers/ooxml/slide_shapes.h"

namespace zorvane {
namespace {

bool IsWanted(const pugi::xml_node& shape, SlidePart part) {
    if (part == SlidePart::All)
        return true;
    const SlidePlaceholder placeholder = PlaceholderOf(shape);
    if (part == SlidePart::OwnShapes)
        return !placeholder.is_one && !HasSlideNumber(shape);
    return placeholder.is_one && placeholder.type == "body";
}

// Below all styles lie the fonts of the theme.
SlideLevelStyle BaseOf(const pugi::xml_node& shape, const SlideTheme& theme) {
    SlideLevelStyle base = PlainSlideStyle();
    const pugi::xml_node font = Child(Child(shape, "style"), "fontRef");
    const std::string_view index = Attribute(font, "idx");
    const std::string_view name = theme.Font(index == "major" ? "+mj-lt" : "+mn-lt");
    if (!name.empty())
        base.run.format.font = FontName(name);
    return base;
}

}  // namespace

ReadEnd SlidePageWriter::Write(const pugi::xml_node& tree, SlidePart part) {
    end_ = ReadEnd::Ok();
    for (const pugi::xml_node& shape : ShapesOf(tree, &page_.design)) {
        if (!IsWanted(shape, part))
            continue;
        ++shape_number_;
        numbered_ = !page_.show_numbers;
        Shape(shape);
        if (!numbered_)  // without text it takes no number
            --shape_number_;
    }
    return end_;
}

void SlidePageWriter::WriteNumbered(const SlideDesignPart& part) {
    for (const pugi::xml_node& shape : part.numbered) {
        ++shape_number_;
        numbered_ = !page_.show_numbers;
        TextShape(shape);
    }
}

void SlidePageWriter::Shape(const pugi::xml_node& shape) {
    if (Is(shape, "graphicFrame"))
        Frame(shape);
    else
        TextShape(shape);
}

void SlidePageWriter::NumberLine() {
    if (numbered_)
        return;
    numbered_ = true;
    text_.Line("Shape " + std::to_string(shape_number_) + ":");
}

void SlidePageWriter::TextShape(const pugi::xml_node& shape) {
    const pugi::xml_node body = Child(shape, "txBody");
    if (!text_.HasText(body))
        return;
    NumberLine();
    SlideStyleChain chain = page_.design.ChainFor(PlaceholderOf(shape), page_.common_style);
    chain.push_back(Child(Child(shape, "style"), "fontRef"));
    chain.push_back(Child(body, "lstStyle"));
    text_.Body(body, chain, BaseOf(shape, page_.design.theme));
}

void SlidePageWriter::Frame(const pugi::xml_node& frame) {
    const pugi::xml_node data = Child(Child(frame, "graphic"), "graphicData");
    for (const pugi::xml_node& content : data.children()) {
        if (Is(content, "tbl")) {
            NumberLine();
            text_.Table(content, page_.design.ChainFor({}, page_.common_style),
                        BaseOf(frame, page_.design.theme));
        } else if (Is(content, "relIds")) {
            Diagram(content);
        } else if (Is(content, "chart")) {
            Chart(content);
        }
    }
}

bool SlidePageWriter::Open(const std::string& id, XmlPart& part) {
    const auto relation = page_.relations.find(id);
    if (relation == page_.relations.end() || relation->second.external ||
        !drawings_.insert(relation->second.target).second)
        return false;
    ReadEnd end = XmlPart::Read(package_, relation->second.target, part);
    const bool opened = end.ok();
    // A picture of it may be all that is left of a drawing; what is broken is told.
    if (!opened && end.error != ReadError::WrongFormat)
        end_ = std::move(end);
    return opened;
}

void SlidePageWriter::Diagram(const pugi::xml_node& ids) {
    XmlPart model;
    if (!Open(std::string(Attribute(ids, "dm")), model))
        return;
    if (!DiagramDrawing(model.Root()))
        DiagramPoints(model.Root());
}

// The program that made the diagram may keep its picture too: that is what a reader sees.
bool SlidePageWriter::DiagramDrawing(const pugi::xml_node& model) {
    for (const pugi::xml_node& extension : Child(model, "extLst").children()) {
        const pugi::xml_node reference = Child(extension, "dataModelExt");
        XmlPart drawing;
        if (!reference || !Open(std::string(Attribute(reference, "relId")), drawing))
            continue;
        for (const pugi::xml_node& shape :
             ShapesOf(Child(drawing.Root(), "spTree"), nullptr, ShapeOrder::File))
            TextShape(shape);
        return true;
    }
    return false;
}

void SlidePageWriter::DiagramPoints(const pugi::xml_node& model) {
    for (const pugi::xml_node& point : Child(model, "ptLst").children()) {
        const std::string_view type = Attribute(point, "type");
        const pugi::xml_node body = Child(point, "t");
        if ((!type.empty() && type != "node" && type != "asst") || !text_.HasText(body))
            continue;
        NumberLine();
        text_.Body(body, page_.design.ChainFor({}, page_.common_style),
                   BaseOf(point, page_.design.theme));
    }
}

void SlidePageWriter::Chart(const pugi::xml_node& reference) {
    XmlPart chart;
    if (!Open(std::string(Attribute(reference, "id")), chart))
        return;
    NumberLine();
    WriteChart(chart.Root(), text_);
}

}  // namespace zorvane
