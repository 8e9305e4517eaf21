// The paragraphs of a text as blocks with heights: where each begins, in the text and on the page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "compare/document/document_observer.h"
#include "compare/document/editor.h"

namespace zorvane {

/// How texts are cut into blocks and how high one is as long as nobody has laid it out.
struct BlockRules {
    /// A longer paragraph is cut into slices. 8,192 where lines wrap, 2,048 where they don't (such
    /// a line is laid out whole, however little of it is in sight).
    std::int32_t longest_block = 8192;
    float row_height = 16;
    std::int32_t units_in_row = 80;  ///< 0: rows do not wrap
    float room = 0;                  ///< above and below the rows of a block
};

struct Block {
    std::int32_t number = 0;    ///< 0-based
    CharPos first;              ///< of its text
    std::int32_t length = 0;    ///< with the break behind it; 0 for an empty last paragraph
    ParagraphNumber paragraph;  ///< 1-based; slices of one paragraph share it
    bool continues = false;     ///< a slice behind another one of the same paragraph
    double y = 0;               ///< of its upper edge, from the text's
    float height = 0;
    bool exact = false;  ///< the height was set; else it is an estimate
};

/// A block is a paragraph, or a slice of a very long one. A text that ends in a break has an empty
/// last block, an empty text has one. Every look-up costs about a microsecond in 500,000 blocks;
/// an edit costs by the blocks touched. Added to a document's observers it survives its edits.
class BlockIndex : public DocumentObserver {
  public:
    /// The editor is borrowed.
    explicit BlockIndex(const Editor& editor, const BlockRules& rules = {});

    std::int32_t BlockCount() const { return blocks_; }
    std::int32_t ParagraphCount() const { return paragraphs_; }
    double Height() const { return height_; }

    // Arguments outside are taken to the nearest block.
    Block At(std::int32_t block) const;
    /// The block of a position; one between two blocks belongs to the second, the text's end and
    /// the break behind it to the last.
    Block OfChar(CharPos position) const;
    Block AtY(double y) const;
    /// The first block of a paragraph.
    Block OfParagraph(ParagraphNumber number) const;

    /// All blocks in order, far cheaper than one after the other: `visit(continues, height)`.
    template <class Visit>
    void VisitAll(const Visit& visit) const {
        for (const Chunk& chunk : chunks_) {
            for (const Entry& entry : chunk.entries)
                visit(static_cast<bool>(entry.continues), entry.height);
        }
    }

    /// The height that a layout found.
    void SetHeight(std::int32_t block, float height);
    /// Cuts and estimates everything anew: another width, font, way of wrapping.
    void SetRules(const BlockRules& rules);
    const BlockRules& Rules() const { return rules_; }

    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) override;
    /// The blocks touched go back to estimates.
    void Reformatted(CharPos first, std::int32_t length) override;
    void Reset() override;

  private:
    struct Entry {
        std::uint32_t length : 30;
        bool exact : 1;
        bool continues : 1;
        float height;
    };
    static_assert(sizeof(Entry) == 8);
    // At most 512 entries, so that an edit moves and sums few.
    struct Chunk {
        std::vector<Entry> entries;
        std::int32_t length = 0;
        std::int32_t paragraphs = 0;  // entries that begin one
        double height = 0;
    };
    // A place between blocks: all that lies in front of it.
    struct Place {
        std::size_t chunk = 0;
        std::size_t entry = 0;
        std::int32_t block = 0;
        std::int32_t first = 0;
        std::int32_t paragraphs = 0;
        double y = 0;
    };

    template <class Before>
    Place Find(const Before& before) const;
    Place PlaceOfChar(std::int32_t position) const;
    Block BlockAt(const Place& place) const;
    void GoBehind(const Entry& entry, Place& place) const;
    bool StepBack(Place& place) const;
    float Estimate(std::int32_t length) const;
    Entry NewEntry(std::int32_t length, std::int32_t text_length, bool continues) const;
    void AppendParagraph(TextRange range, bool has_break, std::vector<Entry>& entries) const;
    std::vector<Entry> Cut(TextRange range) const;
    void PutEntries(const Place& from, std::size_t count, const std::vector<Entry>& entries);
    void Balance(std::size_t chunk);
    void SumUp(Chunk& chunk) const;
    void SumUpAll();

    const Editor* editor_;
    BlockRules rules_;
    std::vector<Chunk> chunks_;
    std::int32_t blocks_ = 0;
    std::int32_t paragraphs_ = 0;
    double height_ = 0;
};

}  // namespace zorvane
