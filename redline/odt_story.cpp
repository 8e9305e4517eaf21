#include "redline/odt_story.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "redline/node_kinds.h"
#include "redline/odt_resolve.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::size_t kKeyLength = 2;  // of `ObjectKeys::KeyOf`, in UTF-16 units

// What holds blocks and shows nothing but a label itself.
bool IsOdtBlockWrapper(std::string_view name) {
    return name == "list" || name == "list-item" || name == "list-header" || name == "section" ||
           name == "index-body" || name == "index-title" || name == "table-of-content" ||
           name == "numbered-paragraph" || name == "alphabetical-index" ||
           name == "illustration-index" || name == "table-index" || name == "object-index" ||
           name == "user-index" || name == "bibliography";
}

void CollectStories(const Node& node, std::vector<Node>& stories, int depth) {
    for (const Node& child : node.children()) {
        if (Is(child, "note-body") || Is(child, "text-box"))
            stories.push_back(child);
        else if (IsElement(child) && depth < kMaxDepth)
            CollectStories(child, stories, depth + 1);
    }
}

// Names and places that programs hand out anew each time.
bool SaysNothing(std::string_view attribute) {
    return attribute == "xml:id" || attribute == "text:id" || attribute == "draw:id" ||
           attribute == "draw:name" || attribute == "draw:z-index" || attribute == "office:name" ||
           attribute == "loext:mime-type" || attribute == "draw:mime-type" ||
           attribute.ends_with("style-name");
}

// A paragraph's stretch on its way into another one.
class StretchCopy {
  public:
    StretchCopy(std::size_t begin, std::size_t end) : begin_(begin), end_(end) {}

    void Children(const Node& from, Node to, int depth) {
        for (const Node& child : from.children()) {
            const std::size_t length = OdtLengthOf(child);
            const bool meets = at_ < end_ && at_ + length > begin_;
            const bool marker = IsOdtMarker(LocalName(child)) && !Is(child, "soft-page-break");
            if (marker && at_ > begin_ && at_ < end_)
                ++left_out_;
            else if (meets)
                Take(child, length, to, depth);
            at_ += meets && IsOdtWrapper(LocalName(child)) ? 0 : length;
        }
    }
    std::size_t LeftOut() const { return left_out_; }

  private:
    void Take(const Node& child, std::size_t length, Node to, int depth) {
        if (IsOdtWrapper(LocalName(child)) && depth < kMaxDepth) {
            Node shell = to.append_child(child.name());
            for (const pugi::xml_attribute& attribute : child.attributes())
                shell.append_copy(attribute);
            return Children(child, shell, depth + 1);
        }
        const std::u16string text = IsCharacters(child) ? ToUtf16(child.value()) : std::u16string();
        if (!IsCharacters(child) || !IsPlainText(text)) {
            to.append_copy(child);
            return;
        }
        const std::size_t first = std::max(at_, begin_);
        const std::size_t end = std::min(at_ + length, end_);
        Letters(text.substr(first - at_, end - first), first, to);
    }

    // A reader would drop a blank at either end.
    void Letters(std::u16string_view text, std::size_t at, Node to) const {
        const bool blank_first = at == begin_ && text.starts_with(u' ');
        const bool blank_last =
            at + text.size() == end_ && text.ends_with(u' ') && !(blank_first && text.size() == 1);
        if (blank_first)
            to.append_child("text:s");
        text.remove_prefix(blank_first ? 1 : 0);
        text.remove_suffix(blank_last ? 1 : 0);
        if (!text.empty())
            to.append_child(pugi::node_pcdata).set_value(ToUtf8(text).c_str());
        if (blank_last)
            to.append_child("text:s");
    }

    std::size_t begin_;
    std::size_t end_;
    std::size_t at_ = 0;
    std::size_t left_out_ = 0;
};

void CollectOdtText(const Node& node, std::string& text, int depth) {
    for (const Node& child : node.children()) {
        if (IsCharacters(child))
            text += child.value();
        else if (depth < kMaxDepth && !Is(child, "tracked-changes"))
            CollectOdtText(child, text, depth + 1);
        const std::string_view name = LocalName(child);
        if (IsOdtParagraph(name) || name == "s" || name == "tab")
            text += ' ';
    }
}

void CollectNamed(const Node& parent, bool (*wanted)(std::string_view), std::vector<Node>& found) {
    for (const Node& child : parent.children()) {
        const std::string_view name = LocalName(child);
        if (wanted(name))
            found.push_back(child);
        else if (name == "table-rows" || name == "table-header-rows" || name == "table-row-group")
            CollectNamed(child, wanted, found);
    }
}

}  // namespace

std::vector<StoryBlock> OdtReader::Blocks(const Node& container) const {
    std::vector<StoryBlock> blocks;
    CollectBlocks(container, blocks);
    return blocks;
}

void OdtReader::CollectBlocks(const Node& container, std::vector<StoryBlock>& blocks,
                              int depth) const {
    for (const Node& child : container.children()) {
        const std::string_view name = LocalName(child);
        if (IsOdtParagraph(name))
            reading.AddBlock(Paragraph(child), blocks);
        else if (name == "table")
            reading.AddBlock(Table(child), blocks);
        else if (IsOdtBlockWrapper(name) && depth < kMaxDepth)
            CollectBlocks(child, blocks, depth + 1);
    }
}

StoryBlock OdtReader::Table(const Node& node) const {
    if (!reading.with_texts)
        return {node, true, {}, {}};
    return {node, true, BlockText(OdtTextOf(node)), {}, GridOf(node)};
}

StoryBlock OdtReader::Paragraph(const Node& node) const {
    StoryBlock block{node, false, {}, {}};
    CollectAtoms(node, {}, block, 0);
    return block;
}

void OdtReader::CollectAtoms(const Node& parent, const std::string& link, StoryBlock& block,
                             int depth) const {
    for (const Node& child : parent.children()) {
        const std::string_view name = LocalName(child);
        if (IsCharacters(child)) {
            const std::u16string text = ToUtf16(child.value());
            const bool plain = IsPlainText(text);
            const std::u16string form =
                plain ? text : keys.KeyOf("text:" + std::string(child.value()));
            block.atoms.push_back({plain ? AtomKind::Text : AtomKind::Object,
                                   {{{}, child}},
                                   block.text.size(),
                                   form.size(),
                                   link});
            reading.AddLetters(form, block);
        } else if (IsOdtWrapper(name) && depth < kMaxDepth) {
            CollectAtoms(child, name == "a" ? std::string(Attribute(child, "href")) : link, block,
                         depth + 1);
        } else if (IsElement(child)) {
            TakeElement(child, link, block);
        }
    }
}

void OdtReader::TakeElement(const Node& node, const std::string& link, StoryBlock& block) const {
    const std::string_view name = LocalName(node);
    AtomKind kind = AtomKind::Object;
    std::u16string key;
    if (IsOdtMarker(name)) {
        kind = AtomKind::Marker;
    } else if (name == "s" || name == "tab") {
        key = name == "s" ? u" " : u"\t";
    } else if (name == "note") {
        kind = AtomKind::Note;
        key = keys.KeyOf("note:" + std::string(Attribute(node, "note-class")));
    } else if (const std::size_t stories = OdtStoriesIn(node).size(); stories > 0) {
        kind = AtomKind::Box;
        key = keys.KeyOf("box:" + std::to_string(stories));
    } else {
        key = keys.KeyOf(FormOf(node));
    }
    block.atoms.push_back({kind, {{{}, node}}, block.text.size(), key.size(), link});
    reading.AddLetters(key, block);
}

std::string OdtReader::FormOf(const Node& node) const {
    return CanonicalXml(
        node, [this](const Node&, const pugi::xml_attribute& attribute, std::string& value) {
            const std::string_view name = attribute.name();
            if (name == "xlink:href")
                value = address(value);
            return !SaysNothing(name);
        });
}

std::size_t OdtLengthOf(const Node& node) {
    const std::string_view name = LocalName(node);
    if (IsCharacters(node)) {
        const std::u16string text = ToUtf16(node.value());
        return IsPlainText(text) ? text.size() : kKeyLength;
    }
    if (!IsElement(node) || IsOdtMarker(name))
        return 0;
    if (name == "s" || name == "tab")
        return 1;
    if (!IsOdtWrapper(name))
        return kKeyLength;
    std::size_t length = 0;
    for (const Node& child : node.children())
        length += OdtLengthOf(child);
    return length;
}

Node OdtCut(Node paragraph, std::size_t place) {
    Node parent = paragraph;
    Node child = paragraph.first_child();
    for (std::size_t at = 0; child;) {
        const std::size_t length = OdtLengthOf(child);
        if (at >= place && (length > 0 || place == 0))
            break;
        if (at + length <= place) {
            at += length;
            child = child.next_sibling();
        } else if (IsCharacters(child)) {
            const std::u16string text = ToUtf16(child.value());
            Node head = parent.insert_child_before(pugi::node_pcdata, child);
            head.set_value(ToUtf8(text.substr(0, place - at)).c_str());
            child.set_value(ToUtf8(text.substr(place - at)).c_str());
            break;
        } else {
            parent = child;
            child = child.first_child();
        }
    }
    if (parent == paragraph)
        return child;
    // A holder of the place, to lift it out of what it stands in.
    Node holder = child ? parent.insert_child_before("text:change", child)
                        : parent.append_child("text:change");
    LiftToParagraph(holder);
    const Node behind = holder.next_sibling();
    paragraph.remove_child(holder);
    return behind;
}

std::size_t OdtCopyStretch(const Node& paragraph, std::size_t begin, std::size_t end, Node into) {
    StretchCopy copy(begin, end);
    copy.Children(paragraph, into, 0);
    return copy.LeftOut();
}

std::vector<Node> OdtStoriesIn(const Node& node) {
    std::vector<Node> stories;
    CollectStories(node, stories, 0);
    return stories;
}

std::u16string OdtTextOf(const Node& node) {
    std::string text;
    CollectOdtText(node, text, 0);
    return ToUtf16(text);
}

std::vector<Node> OdtRowsOf(const Node& table) {
    std::vector<Node> rows;
    CollectNamed(
        table, [](std::string_view name) { return name == "table-row"; }, rows);
    return rows;
}

std::vector<Node> OdtCellsOf(const Node& row) {
    std::vector<Node> cells;
    CollectNamed(
        row,
        [](std::string_view name) { return name == "table-cell" || name == "covered-table-cell"; },
        cells);
    return cells;
}

}  // namespace zorvane
