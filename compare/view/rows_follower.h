// Keeps the rows of two texts right while one of them is edited.
#pragma once

#include "compare/document/block_index.h"
#include "compare/document/document_observer.h"
#include "compare/view/paragraph_rows.h"

namespace zorvane {

/// An observer of one side's document, added in front of its block index: of that it learns where
/// paragraphs were, of the document what they are now. All are borrowed.
class RowsFollower : public DocumentObserver {
  public:
    RowsFollower(ParagraphRows& rows, Side side, const Editor& editor, const BlockIndex& blocks)
        : rows_(rows), side_(side), editor_(editor), blocks_(blocks) {}

    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) override;
    /// Formats are no matter of rows.
    void Reformatted(CharPos, std::int32_t) override {}
    void Reset() override;

  private:
    CharPos EndOf(ParagraphNumber number) const;
    void Apply(ParagraphNumber first, std::int32_t removed, std::int32_t inserted,
               bool in_front = true) {
        rows_.Apply(side_, {first, removed, inserted, in_front});
    }

    ParagraphRows& rows_;
    Side side_;
    const Editor& editor_;
    const BlockIndex& blocks_;
};

}  // namespace zorvane
