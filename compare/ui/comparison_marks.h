// What a comparison marks in the paragraphs of one of its sides.
#pragma once

#include <memory>
#include <vector>

#include "compare/engine/comparison.h"
#include "compare/engine/pieces.h"
#include "compare/ui/mark_source.h"
#include "compare/view/paragraph_rows.h"

namespace zorvane {

MarkKind MarkKindOf(const Comparison& comparison, std::size_t record);

/// Marks follow the rows: a paragraph that was edited since has none.
class ComparisonMarks : public MarkSource {
  public:
    /// `rows` is borrowed and is that of the texts shown.
    ComparisonMarks(std::shared_ptr<const Comparison> comparison, const ParagraphRows& rows,
                    Side side)
        : comparison_(std::move(comparison)), rows_(&rows), side_(side) {}

    ParagraphMark Of(ParagraphNumber paragraph) const override;
    std::vector<WordMark> Words(ParagraphNumber paragraph) const override;

  private:
    struct Record {
        std::int32_t number = -1;
        std::vector<PiecePlace> pieces;
    };
    void FindPiecesOf(std::int32_t record) const;

    std::shared_ptr<const Comparison> comparison_;
    const ParagraphRows* rows_;
    Side side_;
    mutable Record last_;  // paragraphs of one record are asked for one after the other
};

}  // namespace zorvane
