#include "redline/odt_import.h"

#include <algorithm>
#include <vector>

#include "compare/document/beside.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

const std::string kStyles = "styles.xml";
const std::string kManifest = "META-INF/manifest.xml";
constexpr const char* kExtension =
    "urn:org:documentfoundation:names:experimental:office:xmlns:loext:1.0";

std::string FamilyOf(const Node& style) {
    if (Is(style, "style"))
        return std::string(Attribute(style, "family"));
    if (Is(style, "list-style"))
        return "list";
    return std::string_view(style.name()).starts_with("number:") ? "data" : std::string();
}

// Of which family a style is that an element names.
std::string FamilyFor(const Node& element, std::string_view attribute) {
    const std::string_view name = LocalName(element);
    if (attribute.ends_with("list-style-name") || name == "list")
        return "list";
    if (attribute.ends_with("data-style-name"))
        return "data";
    if (attribute == "table:default-cell-style-name" || name == "table-cell" ||
        name == "covered-table-cell")
        return "table-cell";
    if (attribute == "draw:text-style-name" || name == "p" || name == "h")
        return "paragraph";
    if (attribute.starts_with("draw:"))
        return "graphic";
    if (name == "table" || name == "table-column" || name == "table-row" || name == "section")
        return std::string(name);
    if (name == "style")
        return std::string(Attribute(element, "family"));
    return "text";
}

// Nothing that a copy may keep: the next style, a page.
bool IsDropped(std::string_view attribute) {
    return attribute == "style:next-style-name" || attribute == "style:master-page-name" ||
           attribute == "style:percentage-data-style-name";
}

struct FoundStyle {
    Node node;
    bool automatic = false;
};

FoundStyle FindStyle(WordPackage& package, const std::string& part, const std::string& family,
                     std::string_view name) {
    const auto in = [&](const Node& list) {
        const Node first = package.Children(list, "name").Find(name);
        if (!first || FamilyOf(first) == family)
            return first;
        for (const Node& style : list.children()) {  // families may share a name
            if (Attribute(style, "name") == name && FamilyOf(style) == family)
                return style;
        }
        return Node();
    };
    if (const Node style = in(Child(package.Tree(part), "automatic-styles")))
        return {style, true};
    return {in(Child(package.Tree(kStyles), "styles")), false};
}

std::string FontForm(WordPackage& package, const std::string& part, std::string_view name) {
    for (const Node& font : Child(package.Tree(part), "font-face-decls").children()) {
        if (Attribute(font, "name") == name)
            return "font " + std::string(Attribute(font, "font-family"));
    }
    return "font " + std::string(name);
}

bool NamesFont(std::string_view attribute) {
    return attribute.starts_with("style:font-name");
}

// What a style means, with all that it names.
std::string FormOfStyle(WordPackage& package, const std::string& part, const Node& style,
                        int depth) {
    constexpr int kMostParents = 40;  // styles of a hostile file can be each other's parents
    return CanonicalXml(
        style, [&](const Node& node, const pugi::xml_attribute& attribute, std::string& value) {
            const std::string_view name = attribute.name();
            if (IsDropped(name) ||
                (node == style && (name == "style:name" || name == "style:display-name")))
                return false;
            if (NamesFont(name)) {
                value = FontForm(package, part, value);
            } else if (name.ends_with("style-name") && depth < kMostParents) {
                const FoundStyle found = FindStyle(package, part, FamilyFor(node, name), value);
                value = found.node ? FormOfStyle(package, part, found.node, depth + 1) : value;
            }
            return true;
        });
}

void DeclareExtension(Node root) {
    if (!root.attribute("xmlns:loext"))
        root.append_attribute("xmlns:loext") = kExtension;
}

// "./Object 1" and "Pictures/a.png" lead into the package, "http://..." does not.
std::string PartOf(WordPackage& package, std::string_view address) {
    if (address.starts_with("./"))
        address.remove_prefix(2);
    if (address.empty() || address.find(':') != std::string_view::npos || address[0] == '#' ||
        address[0] == '/' || address.starts_with(".."))
        return {};
    const std::string folder = std::string(address) + "/";
    for (const std::string& name : package.Names()) {
        if (name == address || name.starts_with(folder))
            return std::string(address);
    }
    return {};
}

// Names of the parts of an object, or of the one part.
std::vector<std::string> PartsOf(WordPackage& package, const std::string& part) {
    std::vector<std::string> parts;
    for (const std::string& name : package.Names()) {
        if (name == part || name.starts_with(part + "/"))
            parts.push_back(name);
    }
    return parts;
}

}  // namespace

Node AutomaticStyles(Node root) {
    Node styles = Child(root, "automatic-styles");
    if (styles)
        return styles;
    for (const Node& child : root.children()) {
        if (Is(child, "body") || Is(child, "master-styles"))
            return root.insert_child_before("office:automatic-styles", child);
    }
    return root.append_child("office:automatic-styles");
}

void OdtImporter::Adapt(Node copy, const std::string& part) {
    VisitElements(copy, [&](const Node& node) { AdaptElement(node, part); });
}

void OdtImporter::AdaptElement(Node element, const std::string& part) {
    for (pugi::xml_attribute attribute = element.first_attribute(); attribute;) {
        const pugi::xml_attribute next = attribute.next_attribute();
        const std::string_view name = attribute.name();
        if (name == "xml:id" || name == "text:id" || IsDropped(name))
            element.remove_attribute(attribute);
        else if (name == "xlink:href")
            attribute.set_value(MappedAddress(attribute.value()).c_str());
        else if (NamesFont(name))
            ImportFont(attribute.value(), part);
        else if (name.ends_with("style-name"))
            attribute.set_value(
                MappedStyle({FamilyFor(element, name), attribute.value()}, part).c_str());
        attribute = next;
    }
}

std::string OdtImporter::MappedStyle(const StyleKey& key, const std::string& part) {
    const auto [place, is_new] = styles_.try_emplace({part, key}, key.second);
    if (!is_new)
        return place->second;
    const FoundStyle old_style = FindStyle(original_, part, key.first, key.second);
    if (!old_style.node)
        return key.second;
    const FoundStyle new_style = FindStyle(modified_, part, key.first, key.second);
    if (new_style.node && FormOfStyle(original_, part, old_style.node, 0) ==
                              FormOfStyle(modified_, part, new_style.node, 0))
        return key.second;
    const std::string name = ImportStyle(key, old_style.node, part, old_style.automatic);
    return styles_[{part, key}] = name;
}

std::string OdtImporter::ImportStyle(const StyleKey& key, const Node& style,
                                     const std::string& part, bool automatic) {
    const std::string home = automatic ? part : kStyles;
    std::string name = FreshStyle(key, part);
    styles_[{part, key}] = name;  // a style may name itself
    const Node root = modified_.Edit(home);
    Node list = automatic ? AutomaticStyles(root) : Child(root, "styles");
    Node copy = list.append_copy(style);
    SetAttribute(copy, "style:name", name);
    if (copy.attribute("style:display-name"))
        SetAttribute(copy, "style:display-name", name);
    Adapt(copy, home);
    return name;
}

std::string OdtImporter::FreshStyle(const StyleKey& key, const std::string& part) {
    std::string name = key.second;
    const auto taken = [&](const std::string& wanted) {
        return FindStyle(modified_, part, key.first, wanted).node ||
               FindStyle(modified_, "content.xml", key.first, wanted).node ||
               FindStyle(modified_, kStyles, key.first, wanted).node;
    };
    for (int number = 1; taken(name); ++number)
        name = key.second + "Original" + (number == 1 ? "" : std::to_string(number));
    return name;
}

void OdtImporter::ImportFont(const std::string& name, const std::string& part) {
    const auto with_name = [&name](const Node& list) {
        for (const Node& font : list.children()) {
            if (Attribute(font, "name") == name)
                return font;
        }
        return Node();
    };
    const Node font = with_name(Child(original_.Tree(part), "font-face-decls"));
    Node list = Child(modified_.Edit(part), "font-face-decls");
    if (font && list && !with_name(list))
        list.append_copy(font);
}

std::string OdtImporter::TrackedRowStyle(const std::string& like, const std::string& part) {
    std::string& name = row_styles_[part + "|" + like];
    if (!name.empty())
        return name;
    const FoundStyle found = FindStyle(modified_, part, "table-row", like);
    name = FreshStyle({"table-row", like.empty() ? "RowTracked" : like + "Tracked"}, part);
    const Node root = modified_.Edit(part);
    DeclareExtension(root);
    Node list = AutomaticStyles(root);
    Node style = found.node ? list.append_copy(found.node) : list.append_child("style:style");
    SetAttribute(style, "style:name", name);
    SetAttribute(style, "style:family", "table-row");
    Node properties = Child(style, "table-row-properties");
    if (!properties)
        properties = style.append_child("style:table-row-properties");
    SetAttribute(properties, "loext:text-changes-only", "false");
    return name;
}

// ---- pictures and objects ----

std::string OdtImporter::FormOf(Side side, const std::string& address) {
    WordPackage& package = side == Side::Original ? original_ : modified_;
    const std::string part = PartOf(package, address);
    if (part.empty())
        return address;
    std::string& form = forms_[side][part];
    if (!form.empty())
        return form;
    for (const std::string& name : PartsOf(package, part))
        form += name.substr(part.size()) + "=" + BesideDigest(package.Bytes(name)) + ";";
    return form;
}

std::string OdtImporter::MappedAddress(const std::string& address) {
    const auto [place, is_new] = addresses_.try_emplace(address, address);
    const std::string part = PartOf(original_, address);
    if (!is_new || part.empty())
        return place->second;
    if (FormOf(Side::Original, address) == FormOf(Side::Modified, address))
        return address;
    std::string fresh = part;
    for (int number = 2; !PartsOf(modified_, fresh).empty(); ++number) {
        const std::size_t dot = std::min(part.rfind('.'), part.size());
        fresh = part.substr(0, dot) + "Original" + std::to_string(number) + part.substr(dot);
    }
    for (const std::string& name : PartsOf(original_, part)) {
        const std::string to = fresh + name.substr(part.size());
        modified_.Add(to, std::string(original_.Bytes(name)));
        AddToManifest(name, to);
    }
    AddToManifest(part + "/", fresh + "/");
    return place->second = (address.starts_with("./") ? "./" : "") + fresh;
}

void OdtImporter::AddToManifest(const std::string& from, const std::string& to) {
    for (const Node& entry : original_.Tree(kManifest).children()) {
        if (Attribute(entry, "full-path") != from)
            continue;
        Node copy = modified_.Edit(kManifest).append_copy(entry);
        SetAttribute(copy, "manifest:full-path", to);
        return;
    }
}

}  // namespace zorvane
