// What a story is made of: blocks (paragraphs, tables), and in a paragraph atoms (letters, objects,
// notes, boxes) with the elements that they stand in. One walk serves both sides.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "load/readers/container/xml_part.h"

namespace zorvane {

/// One element of an atom. Without a run it stands beside runs (a formula, a bookmark).
struct AtomPart {
    pugi::xml_node run;
    pugi::xml_node node;
};

enum class AtomKind {
    Text,    ///< letters of one text element; may be cut
    Object,  ///< whole or not at all: a picture, a field, a break
    Note,    ///< a reference; what it leads to is a story of its own
    Box,     ///< an object that holds stories
    Marker   ///< takes no place: a bookmark, the border of a field over paragraphs
};

struct Atom {
    AtomKind kind = AtomKind::Marker;
    std::vector<AtomPart> parts;
    std::size_t begin = 0;  ///< in the paragraph's text
    std::size_t length = 0;
    std::string link{};     ///< what a link around it leads to
    bool inserted = false;  ///< a marker that comes with what is inserted, and goes with it
    std::size_t End() const { return begin + length; }
};

/// Whether blocks stand inside of it.
inline bool HoldsStory(const Atom& atom) {
    return atom.kind == AtomKind::Note || atom.kind == AtomKind::Box;
}

/// The text of a block: its own while it is read, then a stretch of the one that all blocks of a
/// container share, so that there is never a second copy of a document's text.
class BlockText {
  public:
    /// Two equal texts have one digest; others hardly ever.
    struct Digest {
        std::uint64_t high = 0;
        std::uint64_t low = 0;
        std::uint64_t blanks = 0;
        friend auto operator<=>(const Digest&, const Digest&) = default;
    };

    BlockText() = default;
    explicit BlockText(std::u16string own) : held_(std::move(own)), size_(View().size()) {}
    /// Nothing any more behind `LetGo`.
    std::u16string_view View() const;
    std::size_t size() const { return size_; }
    BlockText& operator+=(std::u16string_view more) {
        std::get<std::u16string>(held_) += more;
        size_ += more.size();
        return *this;
    }
    /// Text that is counted alone.
    void Pass(std::size_t units) { size_ += units; }
    /// From then on nothing can be added.
    void MoveInto(std::shared_ptr<std::u16string> shared);
    /// What it was moved into.
    const std::shared_ptr<std::u16string>& Shared() const { return std::get<Place>(held_).text; }
    Digest Told() const;
    /// Size and digest stay.
    void LetGo() { held_ = Told(); }

  private:
    struct Place {
        std::shared_ptr<std::u16string> text;
        std::size_t begin = 0;
    };

    // One after the other: there is one for each paragraph of a document.
    std::variant<std::u16string, Place, Digest> held_;
    std::size_t size_ = 0;
};

/// A paragraph, or a table. A table's text only serves to find its partner.
struct StoryBlock {
    pugi::xml_node node;
    bool is_table = false;
    BlockText text;
    std::vector<Atom> atoms;
    std::string grid{};  ///< of a table
};

bool HoldsLink(const StoryBlock& block);

/// What a reader makes of the blocks of a container.
struct BlockReading {
    bool with_texts = true;  ///< without, sizes alone
    /// Without, neither nodes nor atoms: blocks that outlive their tree.
    bool with_trees = true;
    std::size_t text_room = 0;  ///< UTF-16 units that a container's text hardly passes

    void AddLetters(std::u16string_view letters, StoryBlock& block) const;
    /// Puts a block behind the others of its container.
    void AddBlock(StoryBlock block, std::vector<StoryBlock>& blocks) const;
};

/// The first atom that takes room and ends behind `place`; the end of the list without one.
std::vector<Atom>::const_iterator AtomBehind(const std::vector<Atom>& atoms, std::size_t place);

/// Gives equal objects of both sides one character, which no text holds.
class ObjectKeys {
  public:
    /// Two UTF-16 units.
    std::u16string KeyOf(const std::string& form);

  private:
    std::map<std::string, char32_t> keys_;
};

/// Whether it takes part letter by letter: what keys and ends of paragraphs are made of does not.
bool IsPlainText(std::u16string_view text);

/// How an object is recognised in the other document: its relationships by what they lead to.
using RelationForm = std::function<std::string(const std::string& id)>;

struct AtomReader {
    ObjectKeys& keys;
    RelationForm relation;
    BlockReading reading{};

    /// The blocks of a container, those in block controls among them.
    std::vector<StoryBlock> Blocks(const pugi::xml_node& container) const;
    StoryBlock Paragraph(const pugi::xml_node& node) const;
    StoryBlock Table(const pugi::xml_node& node) const;
    void CollectBlocks(const pugi::xml_node& container, std::vector<StoryBlock>& blocks) const;
    /// An object's form, without what says nothing (ids, names of parts).
    std::string FormOf(const pugi::xml_node& node) const;
};

/// Elements below `node` that hold blocks of a text box, in order; not those of inner boxes.
std::vector<pugi::xml_node> BoxesIn(const pugi::xml_node& node);
/// A table's rows and cells, those of tables inside of it among them, in whatever format.
std::string GridOf(const pugi::xml_node& table);
/// All letters below, with a blank between paragraphs.
std::u16string DocxTextOf(const pugi::xml_node& node);

}  // namespace zorvane
