// What the check of a redline reads: a plain account of all stories of a document, by a walk of its
// own that knows nothing of how redlines are written.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "load/readers/container/package.h"
#include "load/readers/container/xml_part.h"
#include "redline/resolve.h"

namespace zorvane {

/// Letters of one look. Objects, notes and boxes stand in it by their content.
struct ReadPiece {
    std::string text;
    std::string look;      ///< of an object with `kDrawn` and what is drawn of it
    std::string link;      ///< what a link around it leads to
    bool deleted = false;  ///< it came back from a deletion
    friend bool operator==(const ReadPiece&, const ReadPiece&) = default;
};

/// A paragraph, or the border of a table, a row or a cell.
struct ReadLine {
    std::string border;  ///< empty for a paragraph
    std::vector<ReadPiece> pieces;
    std::string look;
    bool deleted = false;  ///< its end came back from a deletion

    /// With the links in it.
    std::string Text() const;
    bool SaysTheSame(const ReadLine& other) const {
        return border == other.border && Text() == other.Text();
    }
};

struct ReadCounts {
    std::int32_t paragraphs = 0;
    std::int32_t tables = 0;
    std::int32_t rows = 0;
    std::int32_t cells = 0;
    std::int32_t notes = 0;
    std::int32_t headers = 0;
};

struct ReadStories {
    std::vector<ReadLine> body;
    /// By kind and type, those with text in the order in which sections name them.
    std::map<std::string, std::vector<std::vector<ReadLine>>> headers;
    ReadCounts counts;
    std::int32_t without_partner = 0;  ///< marks of paragraphs with nothing to join with
};

/// A package whose parts are parsed once, when somebody first asks for them.
class PartTrees {
  public:
    /// Borrowed.
    explicit PartTrees(std::string_view bytes) : package_(Package::Open(bytes)) {}
    bool IsPackage() const { return package_ != nullptr; }
    Package& Parts() { return *package_; }
    /// Nothing for what is no part, or no XML.
    XmlPart* Load(const std::string& part);

  private:
    std::unique_ptr<Package> package_;
    std::map<std::string, std::unique_ptr<XmlPart>> parts_;
};

class StoryReading {
  public:
    /// Borrowed; takes the changes in them, so that no other reading follows.
    explicit StoryReading(PartTrees& trees) : trees_(trees), package_(trees.Parts()) {}
    ReadEnd Read(Resolution resolution, ReadStories& stories);

  private:
    using Node = pugi::xml_node;
    struct Event;

    XmlPart* Load(const std::string& part) { return trees_.Load(part); }
    void ReadStyles();
    void Blocks(const Node& container, std::vector<ReadLine>& lines, int depth);
    void Container(const Node& container, std::vector<ReadLine>& lines, int depth);
    void Table(const Node& table, std::vector<ReadLine>& lines, int depth);
    void Paragraph(const Node& paragraph, std::vector<ReadLine>& lines, int depth);
    void Inline(const Node& parent, const Event& around, std::vector<Event>& events, int depth);
    void Run(const Node& run, const Event& around, std::vector<Event>& events, int depth);
    void SimpleField(const Node& field, const Event& around, std::vector<Event>& events, int depth);
    void RunChild(const Node& node, const Event& around, std::vector<Event>& events, int depth);
    std::string Nested(const Node& container, const std::string& part, int depth);
    std::string NoteText(const Node& reference, int depth);
    std::string ObjectText(const Node& node, int depth);
    std::string RelationText(const std::string& id) const;
    std::string PartText(const Relationship& relation, std::string& drawing) const;
    std::string LookOf(const Node& properties) const;
    std::string PropertyText(const Node& property) const;
    std::string StyleText(const std::string& id, int depth) const;
    std::string ListText(std::string_view id) const;
    void Headers(const Node& document);

    PartTrees& trees_;
    Package& package_;
    Resolution resolution_ = Resolution::Accept;
    std::unordered_map<std::string, Relationship> main_relations_;
    std::unordered_map<std::string, Relationship> relations_;  // of the part at work
    std::map<std::string, Node> styles_;
    std::unordered_map<std::string, Node> lists_;
    std::unordered_map<std::string, std::string> list_levels_;  // as spelled, by abstract list
    std::map<std::string, std::unordered_map<std::string, Node>> notes_;  // by part and id
    ReadStories* stories_ = nullptr;
};

}  // namespace zorvane
