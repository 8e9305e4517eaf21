// What slides inherit: the layouts, masters and themes of a deck, each read once.
// Source: ECMA-376 part 1, 19.3.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "load/readers/container/package.h"
#include "load/readers/container/xml_part.h"
#include "load/readers/ooxml/slide_styles.h"
#include "load/readers/ooxml/slide_theme.h"

namespace zorvane {

using SlideRelations = std::unordered_map<std::string, Relationship>;

/// What a shape says of the placeholder that it is.
struct SlidePlaceholder {
    bool is_one = false;
    std::string_view type = "obj";
    std::string_view index;  ///< empty when it is not told

    bool IsTitle() const { return type == "title" || type == "ctrTitle"; }
    /// Date, footer, header, number.
    bool IsMargin() const {
        return type == "dt" || type == "ftr" || type == "hdr" || type == "sldNum";
    }
};
SlidePlaceholder PlaceholderOf(const pugi::xml_node& shape);

/// A layout or a master.
struct SlideDesignPart {
    std::string name;
    XmlPart xml;
    SlideRelations relations;
    std::vector<std::pair<SlidePlaceholder, pugi::xml_node>> placeholders;
    /// Shapes of its own that show the number of the slide, so that each slide has its own text.
    std::vector<pugi::xml_node> numbered;

    /// An empty node where the part could not be read.
    pugi::xml_node Content() const;
    pugi::xml_node Shapes() const { return Child(Content(), "spTree"); }
    /// The placeholder that `wanted` takes its looks from, or an empty node.
    pugi::xml_node Match(const SlidePlaceholder& wanted) const;
    /// False when the shapes of what lies under it are not shown.
    bool ShowsMaster() const;
};

struct SlideDesign {
    const SlideDesignPart* layout = nullptr;  ///< nothing for a page of notes
    const SlideDesignPart* master = nullptr;
    SlideTheme theme;

    /// The placeholders of layout and master that one takes after, the nearest first.
    std::vector<pugi::xml_node> ModelsOf(const SlidePlaceholder& placeholder) const;
    /// The styles of a shape's text from general to near, without those of the shape itself.
    /// `common` are those of the deck.
    SlideStyleChain ChainFor(const SlidePlaceholder& placeholder,
                             const pugi::xml_node& common) const;
};

class SlideDesigns {
  public:
    explicit SlideDesigns(Package& package) : package_(package) {}

    /// By the relationships of a slide or of a page of notes. What is missing or broken is left
    /// out: only looks depend on it.
    const SlideDesign& Of(const SlideRelations& relations);

  private:
    const SlideDesignPart* Part(const std::string& name);

    Package& package_;
    std::unordered_map<std::string, std::unique_ptr<SlideDesignPart>> parts_;
    std::unordered_map<std::string, SlideDesign> designs_;
};

/// True for a shape with a field that shows the number of the slide.
bool HasSlideNumber(const pugi::xml_node& shape);

/// Target of the first relationship of that type, by the order of their ids; empty without one.
std::string RelatedPart(const SlideRelations& relations, std::string_view type);

}  // namespace zorvane
