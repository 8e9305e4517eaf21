// What of an OpenDocument text is hidden as a whole, and then leaves no line behind.
#include <algorithm>

#include "common/base/text_encoding.h"
#include "load/readers/opendocument/odt_body.h"

namespace zorvane {

// Stops at the first that is seen, which most often comes first.
OdtBody::Sight OdtBody::SightOf(const pugi::xml_node& parent, const OpenChars& chars,
                                int depth) const {
    Sight sight = Sight::Nothing;
    for (const pugi::xml_node& node : parent.children()) {
        Sight part = Sight::Nothing;
        const std::string_view name = LocalName(node);
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            if (!Trim(node.value()).empty())
                part = chars.hidden ? Sight::Hidden : Sight::Seen;
        } else if (name == "hidden-text") {
            part = Sight::Hidden;
        } else if (name == "span" || name == "a") {
            OpenChars own = chars;
            styles_->ApplyText(Attribute(node, "style-name"), own);
            part = depth < kMaxDepth ? SightOf(node, own, depth + 1) : Sight::Seen;
        } else if (name == "s" || name == "tab" || name == "line-break") {
            part = chars.hidden ? Sight::Hidden : Sight::Nothing;
        } else if (!node.first_child().empty() && name != "annotation") {
            part = Sight::Seen;
        }
        if (part == Sight::Seen)
            return part;
        sight = std::max(sight, part);
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
    for (const pugi::xml_node& cell : row.children()) {
        for (const pugi::xml_node& block : cell.children()) {
            if (block.type() != pugi::node_element)
                continue;  // blanks of a file that is indented
            if (!Is(block, "p") && !Is(block, "h"))
                return false;
            const OpenChars& chars = styles_->Paragraph(Attribute(block, "style-name")).chars;
            if (!IsHiddenParagraph(block, chars))
                return false;
            hides = true;
        }
    }
    return hides;
}

// A tracked row whose text is all deleted. Its style tells that it goes away with it.
bool OdtBody::IsDeletedRow(const pugi::xml_node& row) {
    bool deleted = false;
    for (const pugi::xml_node& cell : row.children()) {
        for (const pugi::xml_node& block : cell.children()) {
            if (block.type() != pugi::node_element)
                continue;  // blanks of a file that is indented
            if (!Is(block, "p") && !Is(block, "h"))
                return false;
            for (const pugi::xml_node& node : block.children()) {
                if (!Is(node, "change"))
                    return false;
                deleted = true;
            }
        }
    }
    if (!deleted)
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
