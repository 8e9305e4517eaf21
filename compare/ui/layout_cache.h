// The blocks of a view that are laid out, some hundreds of them.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "compare/document/block_index.h"
#include "compare/document/rich_document.h"
#include "compare/ui/paragraph_layout.h"

namespace zorvane {

class LayoutCache {
  public:
    /// Borrowed; `index` hears of an edit before this does.
    LayoutCache(const RichDocument& document, const BlockIndex& index)
        : document_(&document), index_(&index) {}

    /// Lays it out where it is not yet. The reference holds until the next call of anything here.
    const ParagraphLayout& Of(std::int32_t block);

    const TextStyle& Style() const { return style_; }
    void SetStyle(const TextStyle& style);
    void SetMarks(const MarkSource* marks);
    const MarkSource* Marks() const { return marks_; }
    /// Composed text at a position of the document; an empty one ends it.
    void SetPreedit(CharPos at, const Preedit& preedit);
    CharPos PreeditPlace() const { return preedit_place_; }
    bool HasPreedit() const { return !preedit_.Empty(); }

    /// Everything must be laid out anew: fonts, screen, marks.
    void Clear();
    /// After an edit by which the blocks behind it moved by `moved` numbers: what is still a block
    /// of the same text is kept, so that a letter typed into a long paragraph costs one slice.
    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted, std::int32_t moved);
    /// These blocks must be laid out anew.
    void Drop(std::int32_t first, std::int32_t last);
    std::size_t Size() const { return layouts_.size(); }
    /// How many blocks were laid out so far, for benches and tests.
    std::int64_t Made() const { return made_; }

  private:
    struct Entry {
        std::unique_ptr<ParagraphLayout> layout;
        std::uint64_t used = 0;
        Block block;  // as it was laid out
    };

    BlockText TextOf(const Block& block) const;
    void DropOld();

    const RichDocument* document_;
    const BlockIndex* index_;
    const MarkSource* marks_ = nullptr;
    TextStyle style_;
    FormatMaker formats_;
    Preedit preedit_;
    CharPos preedit_place_{0};
    std::unordered_map<std::int32_t, Entry> layouts_;
    std::uint64_t clock_ = 0;
    std::int64_t made_ = 0;
};

}  // namespace zorvane
