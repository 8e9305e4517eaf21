// What of an OpenDocument text is hidden as a whole, and then leaves no line behind.
#include <algorithm>

#include "common/base/text_encoding.h"
#include "load/readers/opendocument/odt_body.h"

namespace zorvane {
namespace {

// That a row holds paragraphs alone, and `fits` says yes to each.
template <class Fits>
bool AreAllParagraphs(const pugi::xml_node& row, const Fits& fits) {
    for (const pugi::xml_node& cell : row.children()) {
        for (const pugi::xml_node& block : cell.children()) {
            if (block.type() != pugi::node_element)
                continue;  // blanks of a file that is indented
            if ((!Is(block, "p") && !Is(block, "h")) || !fits(block))
                return false;
        }
    }
    return true;
}

template <class Sight>
Sight HiddenOr(Sight otherwise, const OpenChars& chars) {
    return chars.hidden ? Sight::Hidden : otherwise;
}

}  // namespace

OdtBody::Sight OdtBody::SightOfNode(const pugi::xml_node& node, const OpenChars& chars,
                                    int depth) const {
    const std::string_view name = LocalName(node);
    if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
        if (Trim(node.value()).empty())
            return Sight::Nothing;
        return HiddenOr(Sight::Seen, chars);
    }
    if (name == "hidden-text")
        return Sight::Hidden;
    if (name == "span" || name == "a") {
        OpenChars own = chars;
        styles_->ApplyText(Attribute(node, "style-name"), own);
        return depth < kMaxDepth ? SightOf(node, own, depth + 1) : Sight::Seen;
    }
    if (name == "s" || name == "tab" || name == "line-break")
        return HiddenOr(Sight::Nothing, chars);
    const bool shows = !node.first_child().empty() && name != "annotation";
    return shows ? Sight::Seen : Sight::Nothing;
}

// Stops at the first that is seen, which most often comes first.
OdtBody::Sight OdtBody::SightOf(const pugi::xml_node& parent, const OpenChars& chars,
                                int depth) const {
    Sight sight = Sight::Nothing;
    for (const pugi::xml_node& node : parent.children()) {
        sight = std::max(sight, SightOfNode(node, chars, depth));
        if (sight == Sight::Seen)
            break;
    }
    return sight;
}

bool OdtBody::IsHiddenParagraph(const pugi::xml_node& paragraph, const OpenChars& chars) const {
    for (const pugi::xml_node& node : paragraph.children()) {
        if (Is(node, "hidden-paragraph") && Attribute(node, "is-hidden") == "true")
            return true;
    }
    return SightOf(paragraph, chars, 0) == Sight::Hidden;
}

// Collapsed, filtered, or with nothing but hidden paragraphs in its cells.
bool OdtBody::IsHiddenRow(const pugi::xml_node& row) const {
    const std::string_view visibility = Attribute(row, "visibility");
    if (visibility == "collapse" || visibility == "filter")
        return true;
    bool hides = false;
    const bool all = AreAllParagraphs(row, [&](const pugi::xml_node& paragraph) {
        hides = true;
        const std::string_view style = Attribute(paragraph, "style-name");
        return IsHiddenParagraph(paragraph, styles_->Paragraph(style).chars);
    });
    return all && hides;
}

// A tracked row whose text is all deleted. Its style tells that it goes away with it.
bool OdtBody::IsDeletedRow(const pugi::xml_node& row) {
    bool deleted = false;
    const bool all = AreAllParagraphs(row, [&](const pugi::xml_node& paragraph) {
        deleted = deleted || paragraph.first_child();
        return std::all_of(paragraph.begin(), paragraph.end(),
                           [](const pugi::xml_node& node) { return Is(node, "change"); });
    });
    if (!all || !deleted)
        return false;
    for (const pugi::xml_node& root : row.root().children()) {
        for (const pugi::xml_node& style : Child(root, "automatic-styles").children()) {
            if (Attribute(style, "name") == Attribute(row, "style-name") &&
                Attribute(Child(style, "table-row-properties"), "text-changes-only") == "false")
                return true;
        }
    }
    return false;
}

}  // namespace zorvane
