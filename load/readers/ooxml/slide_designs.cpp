#include "load/readers/ooxml/slide_designs.h"

#include <algorithm>

#include "load/readers/ooxml/slide_shapes.h"

namespace zorvane {
namespace {

// What a placeholder's text is styled as by the master.
std::string_view FamilyOf(const SlidePlaceholder& placeholder) {
    if (placeholder.IsTitle())
        return "title";
    return placeholder.IsMargin() ? placeholder.type : "body";
}

std::string_view MasterStyleOf(const SlidePlaceholder& placeholder) {
    if (!placeholder.is_one || placeholder.IsMargin())
        return "otherStyle";
    return placeholder.IsTitle() ? "titleStyle" : "bodyStyle";
}

// They are gone through for each shape of each slide.
constexpr std::size_t kMostPlaceholders = 256;
constexpr std::size_t kMostNumbered = 8;

void FindShapes(SlideDesignPart& part) {
    for (const pugi::xml_node& shape : part.Shapes().children()) {
        const SlidePlaceholder placeholder = PlaceholderOf(shape);
        if (placeholder.is_one && part.placeholders.size() < kMostPlaceholders)
            part.placeholders.emplace_back(placeholder, shape);
    }
    for (const pugi::xml_node& shape : ShapesOf(part.Shapes(), nullptr)) {
        if (!PlaceholderOf(shape).is_one && part.numbered.size() < kMostNumbered &&
            HasSlideNumber(shape))
            part.numbered.push_back(shape);
    }
}

pugi::xml_node StyleListOf(const pugi::xml_node& shape) {
    return Child(Child(shape, "txBody"), "lstStyle");
}

}  // namespace

SlidePlaceholder PlaceholderOf(const pugi::xml_node& shape) {
    SlidePlaceholder placeholder;
    for (const pugi::xml_node& facts : shape.children()) {
        if (!LocalName(facts).starts_with("nv"))
            continue;
        const pugi::xml_node node = Child(Child(facts, "nvPr"), "ph");
        placeholder.is_one = static_cast<bool>(node);
        if (const std::string_view type = Attribute(node, "type"); !type.empty())
            placeholder.type = type;
        placeholder.index = Attribute(node, "idx");
        break;
    }
    return placeholder;
}

bool HasSlideNumber(const pugi::xml_node& shape) {
    for (const pugi::xml_node& paragraph : Child(shape, "txBody").children()) {
        for (const pugi::xml_node& run : paragraph.children()) {
            if (Is(run, "fld") && Attribute(run, "type") == "slidenum")
                return true;
        }
    }
    return false;
}

std::string RelatedPart(const SlideRelations& relations, std::string_view type) {
    const std::string* first = nullptr;
    std::string target;
    for (const auto& [id, relation] : relations) {
        if (relation.type != type || relation.external || (first != nullptr && *first < id))
            continue;
        first = &id;
        target = relation.target;
    }
    return target;
}

pugi::xml_node SlideDesignPart::Content() const {
    return xml.Empty() ? pugi::xml_node() : Child(xml.Root(), "cSld");
}

bool SlideDesignPart::ShowsMaster() const {
    return xml.Empty() || (Attribute(xml.Root(), "showMasterSp") != "0" &&
                           Attribute(xml.Root(), "showMasterSp") != "false");
}

pugi::xml_node SlideDesignPart::Match(const SlidePlaceholder& wanted) const {
    pugi::xml_node by_family;
    for (const auto& [placeholder, shape] : placeholders) {
        if (!wanted.index.empty() && placeholder.index == wanted.index)
            return shape;
        if (!by_family && FamilyOf(placeholder) == FamilyOf(wanted))
            by_family = shape;
    }
    return by_family;
}

SlideStyleChain SlideDesign::ChainFor(const SlidePlaceholder& placeholder,
                                      const pugi::xml_node& common) const {
    SlideStyleChain chain;
    const auto add = [&chain](const pugi::xml_node& list) {
        if (list)
            chain.push_back(list);
    };
    add(common);
    if (master == nullptr || master->xml.Empty())
        return chain;
    const pugi::xml_node root = master->xml.Root();
    if (placeholder.is_one) {
        add(Child(Child(root, "txStyles"), MasterStyleOf(placeholder)));
        add(Child(root, "notesStyle"));
    }
    std::vector<pugi::xml_node> models = ModelsOf(placeholder);
    std::reverse(models.begin(), models.end());
    for (const pugi::xml_node& model : models)
        add(StyleListOf(model));
    return chain;
}

std::vector<pugi::xml_node> SlideDesign::ModelsOf(const SlidePlaceholder& placeholder) const {
    std::vector<pugi::xml_node> models;
    if (!placeholder.is_one)
        return models;
    if (layout != nullptr)
        models.push_back(layout->Match(placeholder));
    if (master != nullptr) {
        // Numbers of placeholders are those of the layout; the master knows families alone.
        SlidePlaceholder family = placeholder;
        family.index = {};
        models.push_back(master->Match(family));
    }
    return models;
}

const SlideDesignPart* SlideDesigns::Part(const std::string& name) {
    if (name.empty())
        return nullptr;
    std::unique_ptr<SlideDesignPart>& part = parts_[name];
    if (!part) {
        part = std::make_unique<SlideDesignPart>();
        part->name = name;
        if (!XmlPart::Read(package_, name, part->xml).ok())
            part->xml = XmlPart();
        part->relations = ReadRelationships(package_, name);
        FindShapes(*part);
    }
    return part.get();
}

const SlideDesign& SlideDesigns::Of(const SlideRelations& relations) {
    const std::string layout = RelatedPart(relations, "slideLayout");
    const std::string notes_master = RelatedPart(relations, "notesMaster");
    const auto [place, is_new] = designs_.try_emplace(layout + "\n" + notes_master);
    SlideDesign& design = place->second;
    if (!is_new)
        return design;
    design.layout = Part(layout);
    design.master = design.layout == nullptr
                        ? Part(notes_master)
                        : Part(RelatedPart(design.layout->relations, "slideMaster"));
    if (design.master == nullptr || design.master->xml.Empty())
        return design;
    XmlPart theme;
    if (XmlPart::Read(package_, RelatedPart(design.master->relations, "theme"), theme).ok())
        design.theme = SlideTheme(theme.Root());
    design.theme.SetColorMap(Child(design.master->xml.Root(), "clrMap"));
    return design;
}

}  // namespace zorvane
