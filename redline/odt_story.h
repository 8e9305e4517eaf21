// What a story of an OpenDocument text is made of, for those who write changes into it: its blocks,
// the characters of a paragraph, and cuts through it. The text was formed before (`FormText`).
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "redline/atoms.h"

namespace zorvane {

/// What an address of an object leads to, in a form that is equal for equal content.
using AddressForm = std::function<std::string(const std::string& address)>;

struct OdtReader {
    ObjectKeys& keys;
    AddressForm address;
    BlockReading reading{};

    /// Paragraphs and tables of a container, those in lists and sections among them.
    std::vector<StoryBlock> Blocks(const pugi::xml_node& container) const;
    StoryBlock Paragraph(const pugi::xml_node& node) const;
    void CollectBlocks(const pugi::xml_node& container, std::vector<StoryBlock>& blocks,
                       int depth = 0) const;

  private:
    StoryBlock Table(const pugi::xml_node& node) const;
    void CollectAtoms(const pugi::xml_node& parent, const std::string& link, StoryBlock& block,
                      int depth) const;
    void TakeElement(const pugi::xml_node& node, const std::string& link, StoryBlock& block) const;
    std::string FormOf(const pugi::xml_node& node) const;
};

/// How many characters a node of a paragraph takes.
std::size_t OdtLengthOf(const pugi::xml_node& node);
/// Cuts the paragraph at a character: the node in front of which something can be put, or an empty
/// one for the paragraph's end.
pugi::xml_node OdtCut(pugi::xml_node paragraph, std::size_t place);
/// Puts a copy of a stretch of `paragraph` behind what `into` holds. Gives how many marks of places
/// were left out.
std::size_t OdtCopyStretch(const pugi::xml_node& paragraph, std::size_t begin, std::size_t end,
                           pugi::xml_node into);

/// The elements in a note or a frame that hold blocks.
std::vector<pugi::xml_node> OdtStoriesIn(const pugi::xml_node& node);
/// All letters below, with a blank between paragraphs.
std::u16string OdtTextOf(const pugi::xml_node& node);
/// Rows of a table and cells of a row, covered ones too.
std::vector<pugi::xml_node> OdtRowsOf(const pugi::xml_node& table);
std::vector<pugi::xml_node> OdtCellsOf(const pugi::xml_node& row);

}  // namespace zorvane
