#include <algorithm>
#include <map>
#include <unordered_map>

#include "load/readers/container/crypto_tools.h"
#include "redline/node_kinds.h"
#include "redline/odt_resolve.h"
#include "redline/odt_verify.h"
#include "redline/verify_spelling.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;
using Properties = std::map<std::string, std::string>;

class OdtReading {
  public:
    OdtReading(Package& package, Resolution resolution, bool lists)
        : package_(package), resolution_(resolution), lists_(lists) {}

    ReadEnd Read(ReadStories& stories) {
        counts_ = &stories.counts;
        if (ReadEnd end = XmlPart::Read(package_, "content.xml", content_); !end.ok())
            return end;
        if (ReadEnd end = XmlPart::Read(package_, "styles.xml", styles_); !end.ok())
            return end;
        root_ = content_.Root();
        const Node body = Child(Child(root_, "body"), "text");
        Story(body, stories.body);
        root_ = styles_.Root();
        for (const Node& page : Child(root_, "master-styles").children()) {
            for (const Node& child : page.children())
                Header(page, child, stories);
        }
        return ReadEnd::Ok();
    }

  private:
    void Story(const Node& story, std::vector<ReadLine>& lines) {
        FormText(story);
        ResolveOdt(story, resolution_, TrackedRowStyles(Child(root_, "automatic-styles")),
                   kCameBack);
        Container(story, lines, 0);
    }

    void Header(const Node& page, const Node& header, ReadStories& stories) {
        const std::string name(LocalName(header));
        if (!name.starts_with("header") && !name.starts_with("footer"))
            return;
        std::vector<ReadLine> lines;
        Story(header, lines);
        const bool blank = std::all_of(lines.begin(), lines.end(), [](const ReadLine& line) {
            return line.border.empty() && line.Text().empty();
        });
        if (blank)
            return;
        ++counts_->headers;
        stories.headers[name + " of " + std::string(Attribute(page, "name"))].push_back(
            std::move(lines));
    }

    // ---- blocks ----

    // Behind a last table stands an empty paragraph, whether it is in the file or not.
    void Container(const Node& container, std::vector<ReadLine>& lines, int depth) {
        const std::size_t begin = lines.size();
        Blocks(container, {}, lines, depth);
        if (lines.size() > begin && lines.back().border == "</table>")
            lines.push_back({{}, {}, lists_ ? "p" : "", false});
    }

    void Blocks(const Node& parent, const std::string& around, std::vector<ReadLine>& lines,
                int depth) {
        for (const Node& child : parent.children()) {
            const std::string_view name = LocalName(child);
            if (depth > kMaxDepth || !IsElement(child))
                continue;
            if (name == "p" || name == "h")
                Paragraph(child, around, lines, depth);
            else if (name == "table")
                Table(child, lines, depth);
            else if (name.starts_with("list") || name == "section" || name.starts_with("index") ||
                     name.ends_with("-index") || name == "table-of-content" ||
                     name == "bibliography" || name == "numbered-paragraph")
                Blocks(child, around + ">" + std::string(name) + ListForm(child), lines, depth + 1);
        }
    }

    void Table(const Node& table, std::vector<ReadLine>& lines, int depth) {
        ++counts_->tables;
        lines.push_back({"<table>", {}, {}, false});
        Rows(table, lines, depth);
        lines.push_back({"</table>", {}, {}, false});
    }

    void Rows(const Node& parent, std::vector<ReadLine>& lines, int depth) {
        for (const Node& child : parent.children()) {
            const std::string_view name = LocalName(child);
            if (name == "table-row") {
                ++counts_->rows;
                lines.push_back({"<row>", {}, {}, false});
                Cells(child, lines, depth);
            } else if (name.ends_with("-rows") || name == "table-row-group") {
                Rows(child, lines, depth);
            }
        }
    }

    void Cells(const Node& row, std::vector<ReadLine>& lines, int depth) {
        for (const Node& cell : row.children()) {
            const std::string_view name = LocalName(cell);
            if (name != "table-cell" && name != "covered-table-cell")
                continue;
            ++counts_->cells;
            lines.push_back({"<" + std::string(name) + ">", {}, {}, false});
            Container(cell, lines, depth + 1);
        }
    }

    void Paragraph(const Node& paragraph, const std::string& around, std::vector<ReadLine>& lines,
                   int depth) {
        ++counts_->paragraphs;
        ReadLine line;
        line.look = Joined(StyleOf("paragraph", std::string(Attribute(paragraph, "style-name"))));
        if (lists_)
            line.look += std::string(LocalName(paragraph)) + around;
        line.deleted = static_cast<bool>(paragraph.attribute(kCameBack));
        Inline(paragraph, {}, {}, line.pieces, depth + 1);
        lines.push_back(std::move(line));
    }

    // ---- letters ----

    void Inline(const Node& parent, const ReadPiece& around, const Properties& look,
                std::vector<ReadPiece>& pieces, int depth) {
        for (const Node& child : parent.children()) {
            const std::string_view name = LocalName(child);
            ReadPiece piece = around;
            piece.look = Joined(look);
            if (IsCharacters(child)) {
                piece.text = child.value();
            } else if (IsOdtWrapper(name) && depth < kMaxDepth) {
                Wrapper(child, piece, look, pieces, depth);
                continue;
            } else if (name == "s" || name == "tab") {
                piece.text = name == "s" ? " " : "\t";
            } else if (IsElement(child) && !IsOdtMarker(name)) {
                piece.text = ObjectText(child, depth);
                piece.look.clear();
            }
            if (!piece.text.empty())
                pieces.push_back(std::move(piece));
        }
    }

    void Wrapper(const Node& node, ReadPiece piece, Properties look, std::vector<ReadPiece>& pieces,
                 int depth) {
        if (Is(node, "a"))
            piece.link = Attribute(node, "href");
        piece.deleted = piece.deleted || node.attribute(kCameBack);
        for (const auto& [name, value] :
             StyleOf("text", std::string(Attribute(node, "style-name"))))
            look[name] = value;
        Inline(node, piece, look, pieces, depth + 1);
    }

    std::string ObjectText(const Node& node, int depth) {
        if (Is(node, "note"))
            ++counts_->notes;
        std::string text = "{" + std::string(LocalName(node));
        for (const pugi::xml_attribute& attribute : node.attributes()) {
            const std::string_view name = attribute.name();
            if (name == "xlink:href")
                text += " " + Target(attribute.value());
            else if (!Is(node, "note") && !Is(node, "frame") && SaysWhatIsShown(name))
                text += " " + std::string(name) + "=" + attribute.value();
        }
        for (const Node& child : node.children()) {
            // A note's text says all but its number, which may be another one.
            const bool passed_over = Is(node, "note") && IsElement(child) && !HoldsLines(child);
            text += passed_over ? "" : ObjectChildText(child, depth);
        }
        return text + "}";
    }

    // Names and ids are made anew by every program.
    static bool SaysWhatIsShown(std::string_view attribute) {
        return attribute != "draw:name" && attribute != "office:name" &&
               !attribute.ends_with("style-name") && !attribute.ends_with("id") &&
               !attribute.ends_with("z-index") && !attribute.ends_with("mime-type");
    }

    static bool HoldsLines(const Node& node) {
        return Is(node, "note-body") || Is(node, "text-box");
    }

    std::string ObjectChildText(const Node& child, int depth) {
        if (!IsElement(child) || depth >= kMaxDepth)
            return child.value();
        if (!HoldsLines(child))
            return ObjectText(child, depth + 1);
        std::string text;
        std::vector<ReadLine> lines;
        Container(child, lines, depth + 1);
        for (const ReadLine& line : lines)
            text += "|" + line.border + line.Text();
        return text;
    }

    // Once for each address: a package counts all that it unpacks, and pictures are large.
    const std::string& Target(const std::string& address) {
        const auto [known, first] = targets_.try_emplace(address);
        if (first)
            known->second = ReadTarget(address);
        return known->second;
    }

    std::string ReadTarget(std::string address) {
        if (address.starts_with("./"))
            address.erase(0, 2);
        std::string form;
        for (const std::string& name : package_.Names()) {
            if (name != address && !name.starts_with(address + "/"))
                continue;
            for (const char byte :
                 Hasher(HashKind::Sha256).Digest({package_.Read(name).value_or("")}))
                form += std::to_string(static_cast<unsigned char>(byte)) + ".";
        }
        return form.empty() ? address : form;
    }

    // ---- looks ----

    // By family and name; those of the part at work go before those that all share.
    Node FindStyle(const std::string& family, const std::string& name) {
        const auto [index, is_new] = styles_of_.try_emplace(root_.hash_value());
        for (const Node& list :
             {Child(root_, "automatic-styles"), Child(styles_.Root(), "styles")}) {
            if (!is_new)
                break;
            for (const Node& style : list.children()) {
                const std::string_view its =
                    Is(style, "list-style") ? "list" : Attribute(style, "family");
                index->second.emplace(
                    std::string(its) + "|" + std::string(Attribute(style, "name")), style);
            }
        }
        const auto found = index->second.find(family + "|" + name);
        return found == index->second.end() ? Node() : found->second;
    }

    // Parents first; what a style says itself goes before.
    Properties StyleOf(const std::string& family, const std::string& name) {
        if (name.empty())
            return {};
        const auto [place, is_new] = looks_.try_emplace({root_.hash_value(), family + "|" + name});
        if (!is_new)
            return place->second;
        Properties properties;
        Node style = FindStyle(family, name);
        if (!style)
            properties["no style"] = name;
        if (const std::string parent(Attribute(style, "parent-style-name")); !parent.empty())
            properties = StyleOf(family, parent);
        for (const Node& group : style.children()) {
            for (const pugi::xml_attribute& attribute : group.attributes())
                properties[std::string(LocalName(group)) + attribute.name()] = attribute.value();
            for (const Node& child : group.children())
                properties[std::string(LocalName(group)) + child.name()] = Spelled(child);
        }
        return looks_[{root_.hash_value(), family + "|" + name}] = properties;
    }

    static std::string Joined(const Properties& properties) {
        std::string text;
        for (const auto& [name, value] : properties)
            text.append(name).append("=").append(value).append(";");
        return text;
    }

    std::string ListForm(const Node& list) {
        const std::string name(Attribute(list, "style-name"));
        return name.empty() || !Is(list, "list") ? "" : Spelled(FindStyle("list", name));
    }

    Package& package_;
    Resolution resolution_;
    bool lists_;
    XmlPart content_;
    XmlPart styles_;
    Node root_;
    std::map<std::string, std::string> targets_;
    std::map<std::size_t, std::unordered_map<std::string, Node>> styles_of_;  // by part
    ReadCounts* counts_ = nullptr;
    std::map<std::pair<std::size_t, std::string>, Properties> looks_;
};

}  // namespace

Result<ReadStories> ReadOdtStories(std::string_view bytes, Resolution resolution, bool lists) {
    const std::unique_ptr<Package> package = Package::Open(bytes);
    if (!package)
        return Failure{"the file is no package"};
    ReadStories stories;
    if (const ReadEnd end = OdtReading(*package, resolution, lists).Read(stories); !end.ok())
        return Failure{end.detail};
    return stories;
}

}  // namespace zorvane
