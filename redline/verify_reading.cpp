#include "redline/verify_reading.h"

#include <algorithm>
#include <set>
#include <utility>

#include "load/readers/container/crypto_tools.h"
#include "redline/node_kinds.h"
#include "redline/verify_spelling.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

bool PassedOver(std::string_view name) {
    return name.starts_with("bookmark") || name.starts_with("comment") ||
           name.starts_with("perm") || name == "proofErr" || name == "lastRenderedPageBreak" ||
           name == "annotationRef";
}

// What stands in these counts as if it stood without them.
bool SeenThrough(std::string_view name) {
    return name == "sdt" || name == "sdtContent" || name == "smartTag" || name == "customXml" ||
           name == "bdo" || name == "dir";
}

}  // namespace

// One thing in a paragraph, before fields are known to be whole.
struct StoryReading::Event {
    enum class Kind { Text, FieldBegin, FieldMiddle, FieldEnd, Code } kind = Kind::Text;
    ReadPiece piece;

    void BecomeBorder(std::string_view type) {
        kind = type == "begin" ? Kind::FieldBegin
               : type == "end" ? Kind::FieldEnd
                               : Kind::FieldMiddle;
        piece.text = type == "begin" ? "\x01" : type == "end" ? "\x02" : "\x03";
    }
};

std::string ReadLine::Text() const {
    std::string text;
    std::string_view link;
    for (const ReadPiece& piece : pieces) {
        if (piece.link != link)
            text += "[" + piece.link + "]";
        link = piece.link;
        text += piece.text;
    }
    return text;
}

XmlPart* PartTrees::Load(const std::string& part) {
    if (const auto found = parts_.find(part); found != parts_.end())
        return found->second.get();
    auto xml = std::make_unique<XmlPart>();
    if (part.empty() || !XmlPart::Read(*package_, part, *xml).ok() || xml->Empty())
        xml = nullptr;
    return (parts_[part] = std::move(xml)).get();
}

ReadEnd StoryReading::Read(Resolution resolution, ReadStories& stories) {
    resolution_ = resolution;
    stories_ = &stories;
    std::string main;
    for (const auto& [id, relation] : ReadRelationships(package_, "")) {
        if (relation.type == "officeDocument")
            main = relation.target;
    }
    XmlPart* const document = Load(main);
    if (document == nullptr)
        return ReadEnd::Fault(ReadError::Damaged, "no text that can be read");
    main_relations_ = ReadRelationships(package_, main);
    relations_ = main_relations_;
    ReadStyles();
    for (const auto& [id, relation] : main_relations_) {
        XmlPart* part = relation.type == "footnotes" || relation.type == "endnotes"
                            ? Load(relation.target)
                            : nullptr;
        if (part != nullptr)
            stories.without_partner += Resolve(part->Root(), resolution, kCameBack).without_partner;
    }
    stories.without_partner += Resolve(document->Root(), resolution, kCameBack).without_partner;
    Container(Child(document->Root(), "body"), stories.body, 0);
    Headers(document->Root());
    return ReadEnd::Ok();
}

namespace {

std::string LevelsOf(const Node& abstract) {
    std::string text;
    for (const Node& level : abstract.children())
        text += Is(level, "lvl") || Is(level, "numStyleLink") ? Spelled(level) : "";
    return text;
}

}  // namespace

void StoryReading::ReadStyles() {
    for (const auto& [id, relation] : main_relations_) {
        XmlPart* const part = relation.type == "styles" || relation.type == "numbering"
                                  ? Load(relation.target)
                                  : nullptr;
        if (part == nullptr)
            continue;
        for (const Node& child : part->Root().children()) {
            if (Is(child, "style"))
                styles_.emplace(Attribute(child, "styleId"), child);
            else if (Is(child, "num"))
                lists_.emplace(Attribute(child, "numId"), child);
            else if (Is(child, "abstractNum"))
                list_levels_[std::string(Attribute(child, "abstractNumId"))] += LevelsOf(child);
        }
    }
}

// ---- blocks ----

// What ends in a table has an empty paragraph behind it for whoever opens it.
void StoryReading::Container(const Node& container, std::vector<ReadLine>& lines, int depth) {
    const std::size_t begin = lines.size();
    Blocks(container, lines, depth);
    if (lines.size() > begin && lines.back().border == "tbl>")
        lines.emplace_back();
}

void StoryReading::Blocks(const Node& container, std::vector<ReadLine>& lines, int depth) {
    for (const Node& node : container.children()) {
        const std::string_view name = LocalName(node);
        if (depth > kMaxDepth)
            return;
        if (name == "p")
            Paragraph(node, lines, depth + 1);
        else if (name == "tbl")
            Table(node, lines, depth + 1);
        else if (name == "sdt" || name == "sdtContent" || name == "customXml")
            Blocks(node, lines, depth + 1);
    }
}

void StoryReading::Table(const Node& table, std::vector<ReadLine>& lines, int depth) {
    const std::string_view name = LocalName(table);
    const bool row = name == "tr";
    const bool cell = name == "tc";
    if (!row && !cell && name != "tbl") {
        for (const Node& child : table.children()) {
            if (depth < kMaxDepth)
                Table(child, lines, depth + 1);
        }
        return;
    }
    ReadCounts& counts = stories_->counts;
    ++(row ? counts.rows : cell ? counts.cells : counts.tables);
    lines.push_back({"<" + std::string(name), {}, {}, false});
    if (cell)
        Container(table, lines, depth + 1);
    for (const Node& child : table.children()) {
        const std::string_view inner = LocalName(child);
        if (!cell && depth < kMaxDepth && !inner.ends_with("Pr"))
            Table(child, lines, depth + 1);
    }
    lines.push_back({std::string(name) + ">", {}, {}, false});
}

void StoryReading::Paragraph(const Node& paragraph, std::vector<ReadLine>& lines, int depth) {
    ++stories_->counts.paragraphs;
    std::vector<Event> events;
    Inline(paragraph, {}, events, depth);
    ReadLine line{
        {}, {}, LookOf(Child(paragraph, "pPr")), static_cast<bool>(paragraph.attribute(kCameBack))};
    // A field counts when it begins and ends here; the frame of a longer one is not text.
    std::vector<std::size_t> open;
    std::set<std::size_t> whole;
    for (std::size_t i = 0; i < events.size(); ++i) {
        if (events[i].kind == Event::Kind::FieldBegin) {
            open.push_back(i);
        } else if (events[i].kind == Event::Kind::FieldEnd && !open.empty()) {
            whole.insert({open.back(), i});
            open.pop_back();
        }
    }
    std::vector<bool> inside;  // of each open field, whether it is whole
    for (std::size_t i = 0; i < events.size(); ++i) {
        Event& event = events[i];
        const bool begins = event.kind == Event::Kind::FieldBegin;
        if (begins)
            inside.push_back(whole.contains(i));
        const bool counts = event.kind == Event::Kind::Text || (!inside.empty() && inside.back());
        if (event.kind == Event::Kind::FieldEnd && !inside.empty())
            inside.pop_back();
        if (!counts)
            continue;
        line.pieces.push_back(event.piece);
    }
    lines.push_back(std::move(line));
}

// ---- inside a paragraph ----

void StoryReading::Inline(const Node& parent, const Event& around, std::vector<Event>& events,
                          int depth) {
    for (const Node& node : parent.children()) {
        const std::string_view name = LocalName(node);
        if (depth > kMaxDepth || !IsElement(node) || name.ends_with("Pr") || PassedOver(name))
            continue;
        if (name == "r") {
            Run(node, around, events, depth);
        } else if (name == "hyperlink") {
            Event event = around;
            event.piece.link = RelationText(node.attribute("r:id").value()) + "#" +
                               std::string(Attribute(node, "anchor"));
            Inline(node, event, events, depth + 1);
        } else if (name == "fldSimple") {
            SimpleField(node, around, events, depth);
        } else if (SeenThrough(name)) {
            Inline(node, around, events, depth + 1);
        } else {
            RunChild(node, around, events, depth + 1);
        }
    }
}

void StoryReading::Run(const Node& run, const Event& around, std::vector<Event>& events,
                       int depth) {
    Event event = around;
    event.piece.look = LookOf(Child(run, "rPr"));
    event.piece.deleted = around.piece.deleted || run.attribute(kCameBack);
    for (const Node& child : run.children()) {
        if (!Is(child, "rPr"))
            RunChild(child, event, events, depth + 1);
    }
}

void StoryReading::SimpleField(const Node& field, const Event& around, std::vector<Event>& events,
                               int depth) {
    Event event = around;
    const auto put_border = [&](std::string_view type) {
        event.BecomeBorder(type);
        events.push_back(event);
    };
    put_border("begin");
    event.kind = Event::Kind::Code;
    event.piece.text = Attribute(field, "instr");
    events.push_back(event);
    put_border("separate");
    Inline(field, around, events, depth + 1);
    put_border("end");
}

void StoryReading::RunChild(const Node& node, const Event& around, std::vector<Event>& events,
                            int depth) {
    const std::string_view name = LocalName(node);
    if (!IsElement(node) || PassedOver(name))
        return;
    Event event = around;
    if (name == "t") {
        event.piece.text = node.text().get();
    } else if (name == "tab") {
        event.piece.text = "\t";
    } else if (name == "fldChar") {
        event.BecomeBorder(Attribute(node, "fldCharType"));
        for (const Node& form : node.children())
            event.piece.text += Spelled(form);
    } else if (name == "instrText") {
        event.kind = Event::Kind::Code;
        event.piece.text = node.text().get();
    } else if (name == "footnoteReference" || name == "endnoteReference") {
        event.piece.text = NoteText(node, depth);
    } else {
        event.piece.text = ObjectText(node, depth);
        event.piece.look += kDrawn + DrawnForm(node);
    }
    if (!event.piece.text.empty())
        events.push_back(event);
}

std::string StoryReading::Nested(const Node& container, const std::string& part, int depth) {
    std::vector<ReadLine> lines;
    std::unordered_map<std::string, Relationship> outer;
    if (!part.empty())
        outer = std::exchange(relations_, ReadRelationships(package_, part));
    Container(container, lines, depth + 1);
    if (!part.empty())
        relations_ = std::move(outer);
    std::string text;
    for (const ReadLine& line : lines)
        text += line.border + line.Text() + "\x05";
    return text;
}

std::string StoryReading::NoteText(const Node& reference, int depth) {
    const std::string_view kind = Is(reference, "footnoteReference") ? "footnotes" : "endnotes";
    for (const auto& [id, relation] : main_relations_) {
        XmlPart* const part = relation.type == kind ? Load(relation.target) : nullptr;
        if (part == nullptr)
            continue;
        const auto [notes, is_new] = notes_.try_emplace(relation.target);
        if (is_new) {
            for (const Node& note : part->Root().children())
                notes->second.emplace(Attribute(note, "id"), note);
        }
        const auto note = notes->second.find(std::string(Attribute(reference, "id")));
        if (note == notes->second.end())
            continue;
        ++stories_->counts.notes;
        return "\x06" + std::string(kind) + ":" + Nested(note->second, relation.target, depth + 1) +
               "\x07";
    }
    return "\x06no note\x07";
}

// A picture by its bytes and size, a box by its stories, all else as it is spelled.
std::string StoryReading::ObjectText(const Node& node, int depth) {
    std::string boxes;
    std::string related;
    std::string size;
    std::vector<Node> open{node};
    while (!open.empty()) {
        const Node at = open.back();
        open.pop_back();
        if (Is(at, "txbxContent")) {
            boxes += "\x0E" + Nested(at, {}, depth + 1) + "\x0F";
            continue;
        }
        for (const pugi::xml_attribute& attribute : at.attributes()) {
            if (std::string_view(attribute.name()).starts_with("r:"))
                related += "|" + RelationText(attribute.value());
        }
        if (Is(at, "extent"))
            size = "|" + Spelled(at);
        std::vector<Node> children(at.begin(), at.end());
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    const std::string_view name = LocalName(node);
    const bool drawn = !boxes.empty() || !related.empty() || name == "drawing" || name == "pict" ||
                       name == "AlternateContent";
    return "\x06" + (drawn ? std::string(name) : Spelled(node)) + related +
           (boxes.empty() ? size : boxes) + "\x07";
}

// By the bytes of the part, and of all parts that it leads to.
std::string StoryReading::RelationText(const std::string& id) const {
    if (id.empty())
        return {};
    if (!relations_.contains(id))
        return "nothing";
    std::set<std::string> seen;
    std::multiset<std::string> texts;
    std::vector<Relationship> open{relations_.at(id)};
    while (!open.empty()) {
        const Relationship at = open.back();
        open.pop_back();
        if (at.external || !seen.insert(at.target).second) {
            texts.insert(at.type + ">" + (at.external ? at.target : ""));
            continue;
        }
        std::string drawing;
        texts.insert(at.type + ":" + PartText(at, drawing));
        if (const auto shown = relations_.find(drawing); shown != relations_.end())
            open.push_back(shown->second);
        for (const auto& [inner, relation] : ReadRelationships(package_, at.target))
            open.push_back(relation);
    }
    std::string all;
    for (const std::string& text : texts)
        all += text + ";";
    return all;
}

// A diagram's data names its drawing by an id, which the story knows and which may be any.
std::string StoryReading::PartText(const Relationship& relation, std::string& drawing) const {
    std::optional<std::string> content;
    const XmlPart* const data =
        relation.type == "diagramData" ? trees_.Load(relation.target) : nullptr;
    if (data == nullptr) {
        content = package_.Read(relation.target);
    } else {
        content = Spelled(data->Root());
        constexpr std::string_view kId = " relId=";
        const std::size_t begin = std::min(content->find(kId), content->size());
        const std::size_t end = std::min(content->find_first_of(" >", begin + 1), content->size());
        if (begin < end)
            drawing = content->substr(begin + kId.size(), end - begin - kId.size());
        content->erase(begin, end - begin);
    }
    std::string digest = content ? Hasher(HashKind::Sha256).Digest({*content}) : "missing";
    for (char& byte : digest)
        byte = static_cast<char>('a' + (static_cast<unsigned char>(byte) & 0xFU));
    return digest;
}

}  // namespace zorvane
