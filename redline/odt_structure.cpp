// The file of an OpenDocument redline: its list of changes, ids, styles and parts.
#include <map>
#include <optional>
#include <set>

#include "redline/node_kinds.h"
#include "redline/odt_resolve.h"
#include "redline/odt_verify.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

class OdtFile {
  public:
    OdtFile(Package& package, Package& original) : package_(package), original_(original) {}

    std::string FirstFault(Package& modified) {
        for (const char* part : {"content.xml", "styles.xml"}) {
            if (!XmlPart::Read(package_, part, parts_[part]).ok())
                return std::string(part) + " cannot be read";
        }
        for (const char* part : {"content.xml", "styles.xml"}) {
            ids_.clear();
            root_ = parts_[part].Root();
            rows_ = TrackedRowStyles(Child(root_, "automatic-styles"));
            Visit(root_, false, 0);
            if (fault_.empty())
                CheckRegions();
            if (!fault_.empty())
                return std::string(part) + ": " + fault_;
        }
        return PartFault(modified);
    }

  private:
    using Names = std::set<std::string>;
    struct Region {
        std::string kind;
        Node story;
        int marks = 0;
        bool open = false;
    };

    void Fail(std::string what) {
        if (fault_.empty())
            fault_ = std::move(what);
    }

    void Visit(const Node& node, bool deleted, int depth) {
        const std::string_view name = LocalName(node);
        if (const pugi::xml_attribute id = node.attribute("xml:id");
            id && !ids_.insert(id.value()).second)
            Fail("an id twice: " + std::string(id.value()));
        if (name == "tracked-changes")
            TakeList(node);
        else if (name.starts_with("change-") || name == "change")
            TakeMark(node);
        else if (name == "table-row" && rows_.contains(std::string(Attribute(node, "style-name"))))
            CheckRow(node);
        if (deleted)
            CheckNames(node);
        for (const Node& child : node.children()) {
            if (IsElement(child) && depth < kMaxDepth)
                Visit(child, deleted || name == "tracked-changes", depth + 1);
        }
    }

    void TakeList(const Node& list) {
        const std::string_view before = LocalName(list.previous_sibling());
        if (!before.empty() && before != "forms")
            Fail("the list of changes does not come first");
        for (const Node& region : list.children()) {
            const Node change = region.first_child();
            Region& known = regions_[std::string(Attribute(region, "id"))];
            if (!known.kind.empty() || std::string_view(region.attribute("xml:id").value()) !=
                                           region.attribute("text:id").value())
                Fail("a change without an id of its own");
            const Node info = Child(change, "change-info");
            if (!Child(info, "creator") || !Child(info, "date"))
                Fail("a change without an author");
            known.kind = LocalName(change);
            known.story = list.parent();
        }
    }

    void TakeMark(const Node& mark) {
        const std::string_view name = LocalName(mark);
        if (name == "change-info")
            return;
        const auto found = regions_.find(std::string(Attribute(mark, "change-id")));
        if (found == regions_.end())
            return Fail("a mark of no change");
        Region& region = found->second;
        ++region.marks;
        Node story = mark.parent();
        bool in_paragraph = false;
        for (; story && story != region.story; story = story.parent())
            in_paragraph = in_paragraph || IsOdtParagraph(LocalName(story));
        const bool fits = region.kind == "deletion"
                              ? name == "change"
                              : (name == "change-start") != region.open && name != "change";
        region.open = name == "change-start";
        if (!story || !in_paragraph || !fits)
            Fail("a mark stands where it may not");
    }

    void CheckRegions() {
        for (const auto& [id, region] : regions_) {
            if (region.kind == "format-change")
                continue;
            if (region.marks != (region.kind == "deletion" ? 1 : 2) || region.open)
                return Fail("the change " + id + " has not its marks");
        }
        regions_.clear();
    }

    // One kind of mark in all of a row that goes away with its text.
    void CheckRow(const Node& row) {
        bool deletion = false;
        bool insertion = false;
        bool text = false;
        RowContent(row, false, deletion, insertion, text);
        if (deletion == insertion || (deletion && text))
            Fail("a tracked row is not marked throughout");
    }

    void RowContent(const Node& node, bool in_paragraph, bool& deletion, bool& insertion,
                    bool& text) {
        for (const Node& child : node.children()) {
            const std::string_view name = LocalName(child);
            deletion = deletion || name == "change";
            insertion = insertion || name == "change-start";
            text = text || (in_paragraph && IsCharacters(child));
            RowContent(child, in_paragraph || IsOdtParagraph(name), deletion, insertion, text);
        }
    }

    void CheckNames(const Node& node) {
        for (const pugi::xml_attribute& attribute : node.attributes()) {
            const std::string_view name = attribute.name();
            const std::string value = attribute.value();
            if (name.ends_with("style-name") && !value.empty() && !HasStyle(value) &&
                OriginalDefines(value))
                Fail("no style " + value);
            if (name == "xlink:href" && value.starts_with("Pictures/") && !package_.Has(value))
                Fail("no part " + value);
        }
    }

    // Documents name styles that they do not have, in each paragraph perhaps.
    bool OriginalDefines(const std::string& style) {
        if (!original_styles_) {
            original_styles_ = NamesIn(original_.Read("content.xml").value_or(""));
            original_styles_->merge(NamesIn(original_.Read("styles.xml").value_or("")));
        }
        return original_styles_->contains(style);
    }

    static Names NamesIn(std::string_view xml) {
        constexpr std::string_view kName = "style:name=\"";
        Names names;
        for (std::size_t at = xml.find(kName); at != xml.npos; at = xml.find(kName, at)) {
            at += kName.size();
            names.emplace(xml.substr(at, xml.find('"', at) - at));
        }
        return names;
    }

    bool HasStyle(const std::string& wanted) {
        if (styles_.empty()) {
            for (const char* part : {"content.xml", "styles.xml"}) {
                for (const char* list : {"automatic-styles", "styles"}) {
                    for (const Node& style : Child(parts_[part].Root(), list).children())
                        styles_.emplace(Attribute(style, "name"));
                }
            }
        }
        return styles_.contains(wanted);
    }

    // Nobody may change what is not marked, and the package lists what it holds.
    std::string PartFault(Package& modified) {
        const std::string manifest = package_.Read("META-INF/manifest.xml").value_or("");
        if (package_.Names().empty() || package_.Names().front() != "mimetype")
            return "the package does not begin with its type";
        if (package_.Has("META-INF/documentsignatures.xml"))
            return "a signature is left, which does not fit";
        for (const std::string& name : modified.Names()) {
            const bool may = name == "content.xml" || name == "styles.xml" ||
                             name.starts_with("META-INF/") || name.ends_with('/');
            if (!may && modified.Read(name) != package_.Read(name))
                return "the part " + name + " was changed";
        }
        for (const std::string& name : package_.Names()) {
            if (!modified.Has(name) && manifest.find("\"" + name + "\"") == std::string::npos)
                return "the package does not list " + name;
        }
        return {};
    }

    Package& package_;
    Package& original_;
    std::map<std::string, XmlPart> parts_;
    Node root_;
    Names ids_;
    Names rows_;
    Names styles_;
    std::optional<Names> original_styles_;  // once somebody asked
    std::map<std::string, Region> regions_;
    std::string fault_;
};

}  // namespace

std::string FirstOdtFault(std::string_view modified, std::string_view original,
                          std::string_view redline) {
    const std::unique_ptr<Package> written = Package::Open(redline);
    const std::unique_ptr<Package> before = Package::Open(modified);
    const std::unique_ptr<Package> old = Package::Open(original);
    if (!written || !before || !old)
        return "the file is no package";
    return OdtFile(*written, *old).FirstFault(*before);
}

}  // namespace zorvane
