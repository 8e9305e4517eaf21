// A WordprocessingML package that can be changed: its parts in the order of the file, their trees
// where somebody looks, relationships and content types. What nobody edits keeps its bytes.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "load/readers/container/xml_part.h"
#include "load/readers/reader.h"
#include "redline/xml_tools.h"

namespace zorvane {

/// One line of a part's relationships.
struct PartRelation {
    std::string id;
    std::string type;    ///< the whole address of the type
    std::string target;  ///< as it stands
    bool external = false;
    std::string part;  ///< the part it leads to; empty when external
};

/// Last segment of a relationship's type: "hyperlink", "footnotes", ...
std::string_view KindOf(const PartRelation& relation);

class WordPackage {
  public:
    /// Reads all parts. `bytes` outlives the package: what is parsed is read again when somebody
    /// asks for it as it was.
    ReadEnd Open(std::string_view bytes);

    /// The same of a package of any kind.
    ReadEnd OpenParts(std::string_view bytes);

    /// The part with the document's text.
    const std::string& MainPart() const { return main_part_; }
    std::vector<std::string> Names() const;
    bool Has(std::string_view name) const { return Find(name) != nullptr; }
    /// As it was read or added; empty without such a part.
    std::string_view Bytes(std::string_view name) const;
    /// The same with the changes made to it.
    std::string Current(std::string_view name) const;
    /// The root element; empty when there is no such part or it is no XML.
    pugi::xml_node Tree(std::string_view name);
    /// The same, to be changed.
    pugi::xml_node Edit(std::string_view name);
    /// Lets go of a tree that nobody edited; it is read again when somebody asks.
    void Forget(std::string_view name);
    bool IsEdited(std::string_view name) const;
    /// Of its bytes as they were read or added.
    std::size_t Size(std::string_view name) const;
    void Add(std::string name, std::string bytes);
    /// With its relationships and what the package tells of its type.
    void Remove(std::string_view name);
    /// A name that no part has: "word/media/image.png" and 2 give "word/media/image2.png".
    std::string FreshName(std::string_view wanted) const;

    std::vector<PartRelation> Relations(std::string_view part);
    /// One of them; null without one. Good until the next call that changes relationships.
    const PartRelation* Relation(std::string_view part, const std::string& id);
    /// The children of one element of this package, by an attribute's local name. None of them may
    /// be removed once somebody asked.
    ChildIndex& Children(const pugi::xml_node& parent, const char* key);
    /// The first part that `part` leads to by that kind; empty without one.
    std::string Related(std::string_view part, std::string_view kind);
    /// The id of the new relationship.
    std::string AddRelation(std::string_view part, const PartRelation& relation);
    void RemoveRelation(std::string_view part, std::string_view id);
    /// Empty when nothing tells it.
    std::string ContentType(std::string_view part);
    void SetContentType(std::string_view part, std::string_view type);

    /// Nothing when the package cannot be written.
    std::optional<std::string> Save();

  private:
    // A part's relationships in order, and their places by id.
    struct RelationList {
        std::vector<PartRelation> all;
        std::unordered_map<std::string, std::size_t> places;
        std::size_t fresh = 1;  // ids below are taken
        void Add(PartRelation relation);
    };
    RelationList& RelationsOf(std::string_view part);
    void ForgetRelationsIn(std::string_view name);
    struct Part {
        std::string name;
        mutable std::string bytes;
        std::size_t size = 0;
        std::unique_ptr<XmlPart> xml;
        bool edited = false;
        bool given = false;         ///< it is one of the package that was opened
        mutable bool gone = false;  ///< its bytes went into its tree
    };
    Part* Find(std::string_view name);
    const Part* Find(std::string_view name) const;
    const std::string& BytesOf(const Part& part) const;

    std::string_view given_;
    std::deque<Part> parts_;
    std::string main_part_;
    std::map<std::string, RelationList, std::less<>> relations_;          // by part
    std::map<std::pair<std::size_t, std::string>, ChildIndex> children_;  // by element and key
};

/// "word/document.xml" gives "word/_rels/document.xml.rels".
std::string RelationsPartOf(std::string_view part);

}  // namespace zorvane
