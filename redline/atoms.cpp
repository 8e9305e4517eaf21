#include "redline/atoms.h"

#include <algorithm>
#include <array>
#include <optional>
#include <xxhash.h>

#include "common/base/paragraph_break.h"
#include "common/base/surrogates.h"
#include "common/base/text_encoding.h"
#include "redline/node_kinds.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

constexpr std::array<std::string_view, 12> kMarkers{
    "bookmarkStart", "bookmarkEnd",      "commentRangeStart", "commentRangeEnd",
    "permStart",     "permEnd",          "proofErr",          "lastRenderedPageBreak",
    "subDoc",        "commentReference", "annotationRef",     "softEdge"};

bool IsMarker(std::string_view name) {
    return std::find(kMarkers.begin(), kMarkers.end(), name) != kMarkers.end();
}

std::string FieldMarkOf(const AtomPart& part) {
    return Is(part.node, "fldChar") ? std::string(Attribute(part.node, "fldCharType")) : "";
}

void CollectBoxes(const Node& node, std::vector<Node>& boxes, int depth) {
    for (const Node& child : node.children()) {
        if (Is(child, "txbxContent"))
            boxes.push_back(child);
        else if (depth < kMaxDepth)
            CollectBoxes(child, boxes, depth + 1);
    }
}

void CollectText(const Node& node, std::string& text, int depth) {
    for (const Node& child : node.children()) {
        const std::string_view name = LocalName(child);
        if (name == "t")
            text += child.text().get();
        else if (name == "tab" || name == "br" || name == "cr")
            text += ' ';
        else if (depth < kMaxDepth && name != "Fallback")
            CollectText(child, text, depth + 1);
        if (name == "p")
            text += ' ';
    }
}

// The walk through one paragraph.
class AtomCollector {
  public:
    AtomCollector(const AtomReader& reader, StoryBlock& block) : reader_(reader), block_(block) {}

    void Read(const Node& paragraph) {
        Collect(paragraph, 0);
        for (std::size_t i = 0; i < parts_.size();) {
            if (const std::optional<std::size_t> end = FieldFrom(i)) {
                TakeField(i, *end);
                i = *end;
            } else {
                TakePart(parts_[i++]);
            }
        }
    }

  private:
    void Collect(const Node& parent, int depth) {
        for (const Node& child : parent.children()) {
            const std::string_view name = LocalName(child);
            if (!IsElement(child) || name.ends_with("Pr"))
                continue;
            if (name == "r")
                CollectRun(child);
            else if (IsInlineWrapper(name) && depth < kMaxDepth)
                CollectWrapper(child, depth);
            else
                parts_.push_back({{}, child});
        }
    }

    // One that holds nothing keeps its place.
    void CollectWrapper(const Node& wrapper, int depth) {
        const std::size_t count = parts_.size();
        Collect(wrapper, depth + 1);
        if (parts_.size() == count && !Is(wrapper, "sdtContent"))
            parts_.push_back({{}, wrapper});
    }

    void CollectRun(const Node& run) {
        for (const Node& child : run.children()) {
            if (IsElement(child) && !Is(child, "rPr"))
                parts_.push_back({run, child});
        }
    }

    // The place behind a field that begins at `first` and ends in this paragraph.
    std::optional<std::size_t> FieldFrom(std::size_t first) const {
        if (FieldMarkOf(parts_[first]) != "begin")
            return std::nullopt;
        int open = 0;
        for (std::size_t i = first; i < parts_.size(); ++i) {
            const std::string mark = FieldMarkOf(parts_[i]);
            open += mark == "begin" ? 1 : 0;
            open -= mark == "end" ? 1 : 0;
            if (open == 0)
                return i + 1;
        }
        return std::nullopt;
    }

    void TakeField(std::size_t first, std::size_t end) {
        Put(AtomKind::Object,
            {parts_.begin() + static_cast<std::ptrdiff_t>(first),
             parts_.begin() + static_cast<std::ptrdiff_t>(end)},
            reader_.keys.KeyOf("field:" + FormOfParts(first, end)));
    }

    std::string FormOfParts(std::size_t first, std::size_t end) const {
        std::string form;
        for (std::size_t i = first; i < end; ++i) {
            const AtomPart& part = parts_[i];
            const std::string_view name = LocalName(part.node);
            if (name == "t" || name == "instrText")
                form += part.node.text().get();
            else if (!IsMarker(name))
                form += reader_.FormOf(part.node);
        }
        return form;
    }

    // As that of a field with marks of its own, as which it is written where it is tracked.
    std::string SimpleFieldForm(const Node& field) const {
        StoryBlock unused;
        AtomCollector content(reader_, unused);
        content.Collect(field, 0);
        return "field:" + BorderForm("begin") + field.attribute("w:instr").value() +
               BorderForm("separate") + content.FormOfParts(0, content.parts_.size()) +
               BorderForm("end");
    }

    std::string BorderForm(const char* kind) const {
        pugi::xml_document document;
        Node border = document.append_child("w:fldChar");
        border.append_attribute("w:fldCharType") = kind;
        return reader_.FormOf(border);
    }

    void TakePart(const AtomPart& part) {
        const std::string_view name = LocalName(part.node);
        // The borders of a field over several paragraphs, and its code.
        const bool open_field = name == "fldChar" || name == "instrText";
        if (IsMarker(name) || open_field || IsInlineWrapper(name))
            return Put(AtomKind::Marker, {part}, {});
        if (name == "t")
            return TakeText(part);
        if (name == "tab" && part.run)
            return Put(AtomKind::Object, {part}, u"\t");
        if (name == "footnoteReference" || name == "endnoteReference")
            return Put(AtomKind::Note, {part}, reader_.keys.KeyOf(std::string(name)));
        const std::vector<Node> boxes = BoxesIn(part.node);
        if (!boxes.empty())
            return Put(AtomKind::Box, {part},
                       reader_.keys.KeyOf("box:" + std::to_string(boxes.size())));
        Put(AtomKind::Object, {part},
            reader_.keys.KeyOf(name == "fldSimple" ? SimpleFieldForm(part.node)
                                                   : reader_.FormOf(part.node)));
    }

    void TakeText(const AtomPart& part) {
        const std::string utf8 = part.node.text().get();
        const std::u16string text = ToUtf16(utf8);
        if (IsPlainText(text))
            Put(AtomKind::Text, {part}, text);
        else
            Put(AtomKind::Object, {part}, reader_.keys.KeyOf("text:" + utf8));
    }

    void Put(AtomKind kind, std::vector<AtomPart> parts, std::u16string_view text) {
        std::string link = LinkAround(parts.front().run ? parts.front().run : parts.front().node);
        block_.atoms.push_back(
            {kind, std::move(parts), block_.text.size(), text.size(), std::move(link)});
        reader_.reading.AddLetters(text, block_);
    }

    std::string LinkAround(const Node& element) const {
        for (Node node = element.parent(); node && !Is(node, "p"); node = node.parent()) {
            if (!Is(node, "hyperlink"))
                continue;
            const std::string id = node.attribute("r:id").value();
            return (id.empty() ? "" : reader_.relation(id)) + "#" +
                   std::string(Attribute(node, "anchor"));
        }
        return {};
    }

    const AtomReader& reader_;
    StoryBlock& block_;
    std::vector<AtomPart> parts_;
};

}  // namespace

std::vector<Atom>::const_iterator AtomBehind(const std::vector<Atom>& atoms, std::size_t place) {
    // Ends ascend; what takes no room ends where it begins, so that none of it lies behind a place.
    auto atom = std::partition_point(atoms.begin(), atoms.end(),
                                     [place](const Atom& one) { return one.End() <= place; });
    while (atom != atoms.end() && atom->length == 0)
        ++atom;
    return atom;
}

std::u16string_view BlockText::View() const {
    if (const auto* place = std::get_if<Place>(&held_))
        return std::u16string_view(*place->text).substr(place->begin, size_);
    const auto* own = std::get_if<std::u16string>(&held_);
    return own == nullptr ? std::u16string_view() : std::u16string_view(*own);
}

void BlockText::MoveInto(std::shared_ptr<std::u16string> shared) {
    const std::size_t begin = shared->size();
    shared->append(View());
    held_ = Place{std::move(shared), begin};
}

BlockText::Digest BlockText::Told() const {
    if (const auto* digest = std::get_if<Digest>(&held_))
        return *digest;
    const std::u16string_view text = View();
    const XXH128_hash_t hash = XXH3_128bits(text.data(), text.size() * sizeof(char16_t));
    const auto blanks = std::count(text.begin(), text.end(), u' ');
    return {hash.high64, hash.low64, static_cast<std::uint64_t>(blanks)};
}

bool HoldsLink(const StoryBlock& block) {
    return std::any_of(block.atoms.begin(), block.atoms.end(),
                       [](const Atom& atom) { return !atom.link.empty(); });
}

std::u16string ObjectKeys::KeyOf(const std::string& form) {
    // The last plane of private use, whose signs no font and so no text has.
    constexpr char32_t kFirst = 0x100000;
    constexpr char32_t kLast = 0x10FFFD;
    const auto next = static_cast<char32_t>(kFirst + keys_.size());
    const char32_t key = keys_.try_emplace(form, std::min(next, kLast)).first->second;
    const auto rest = static_cast<std::uint32_t>(key - 0x10000);
    return {static_cast<char16_t>(0xD800 + (rest >> 10U)),
            static_cast<char16_t>(0xDC00 + (rest & 0x3FFU))};
}

bool IsPlainText(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [](char16_t unit) {
        return unit != u'\r' && (unit < 0xDBC0 || unit > 0xDBFF);
    });
}

void BlockReading::AddLetters(std::u16string_view letters, StoryBlock& block) const {
    if (with_texts)
        block.text += letters;
    else
        block.text.Pass(letters.size());
}

void BlockReading::AddBlock(StoryBlock block, std::vector<StoryBlock>& blocks) const {
    if (!with_trees) {
        block.node = {};
        block.atoms = std::vector<Atom>();
    }
    if (!with_texts) {
        blocks.push_back(std::move(block));
        return;
    }
    const bool first = blocks.empty();
    auto text = first ? std::make_shared<std::u16string>() : blocks.back().text.Shared();
    if (first)
        text->reserve(text_room);
    else
        text->append(kBreak);
    block.text.MoveInto(std::move(text));
    blocks.push_back(std::move(block));
}

std::vector<StoryBlock> AtomReader::Blocks(const Node& container) const {
    std::vector<StoryBlock> blocks;
    CollectBlocks(container, blocks);
    return blocks;
}

void AtomReader::CollectBlocks(const Node& container, std::vector<StoryBlock>& blocks) const {
    for (const Node& child : container.children()) {
        const std::string_view name = LocalName(child);
        if (name == "p")
            reading.AddBlock(Paragraph(child), blocks);
        else if (name == "tbl")
            reading.AddBlock(Table(child), blocks);
        else if (IsBlockWrapper(name))
            CollectBlocks(child, blocks);
    }
}

namespace {

// A picture that stands in the line like a letter; empty for anything else. Programs say more of it
// in ways of their own: what is seen are its bytes, its size and what is cut off.
std::string PictureForm(const Node& drawing, const RelationForm& relation) {
    const Node line = Child(drawing, "inline");
    const Node picture = Child(Child(Child(line, "graphic"), "graphicData"), "pic");
    const Node fill = Child(picture, "blipFill");
    const Node image = Child(fill, "blip");
    const std::string id(Attribute(image, "embed"));
    if (!Is(drawing, "drawing") || id.empty() || Child(Child(line, "docPr"), "hlinkClick"))
        return {};
    const Node size = Child(line, "extent");
    std::string recoloured;
    for (const Node& child : image.children())
        recoloured += Is(child, "extLst") ? "" : CanonicalXml(child);
    return "picture:" + recoloured + relation(id) + "|" + std::string(Attribute(size, "cx")) + "|" +
           std::string(Attribute(size, "cy")) + "|" + CanonicalXml(Child(fill, "srcRect")) +
           CanonicalXml(Child(Child(picture, "spPr"), "xfrm"));
}

}  // namespace

StoryBlock AtomReader::Table(const Node& node) const {
    if (!reading.with_texts)
        return {node, true, {}, {}};
    return {node, true, BlockText(DocxTextOf(node)), {}, GridOf(node)};
}

StoryBlock AtomReader::Paragraph(const Node& node) const {
    StoryBlock block{node, false, {}, {}};
    AtomCollector(*this, block).Read(node);
    return block;
}

std::string AtomReader::FormOf(const Node& node) const {
    if (std::string form = PictureForm(node, relation); !form.empty())
        return form;
    return CanonicalXml(node, [this](const Node& element, const pugi::xml_attribute& attribute,
                                     std::string& value) {
        const std::string_view name = attribute.name();
        if (name == "id" || name == "name" || name == "descr" || name == "title" ||
            name == "o:spid")
            return !Is(element, "docPr") && !Is(element, "cNvPr") && !Is(element, "shape");
        if (name.starts_with("r:"))
            value = relation(value);
        return true;
    });
}

std::vector<Node> BoxesIn(const Node& node) {
    std::vector<Node> boxes;
    CollectBoxes(node, boxes, 0);
    return boxes;
}

std::string GridOf(const Node& table) {
    std::string grid;
    VisitElements(table, [&grid](const Node& node) {
        const std::string_view name = LocalName(node);
        if (name == "tr" || name == "table-row")
            grid += 'r';
        else if (name == "tc" || name == "table-cell")
            grid += 'c';
    });
    return grid;
}

std::u16string DocxTextOf(const Node& node) {
    std::string text;
    CollectText(node, text, 0);
    return ToUtf16(text);
}

}  // namespace zorvane
