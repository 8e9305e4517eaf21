// Keeps the rows of two views opposite each other, through edits of either text.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "compare/ui/comparison_marks.h"
#include "compare/ui/paired_rows.h"
#include "compare/ui/rich_text_view.h"

namespace zorvane {

/// As an observer it comes behind the views, whose indexes it reads.
class PairAligner {
  public:
    PairAligner(RichTextView& original, RichTextView& modified);
    ~PairAligner();
    PairAligner(const PairAligner&) = delete;
    PairAligner& operator=(const PairAligner&) = delete;

    /// nullptr: nothing is paired or marked.
    void SetComparison(std::shared_ptr<const Comparison> comparison);
    const std::shared_ptr<const Comparison>& Result() const { return comparison_; }
    /// Off: both views show their paragraphs as they come, marked all the same.
    void SetAligned(bool aligned);
    bool Aligned() const { return aligned_; }
    void SetFolded(bool folded);
    /// Takes hold with the next `SetFolded`.
    void SetFoldRule(const FoldRule& rule) { folds_.rule = rule; }
    bool Folded() const { return folds_.folded; }
    /// Where headings of the original begin, ascending. Takes hold with the next comparison.
    void SetHeadings(std::vector<CharPos> places) { headings_ = std::move(places); }
    /// Opens the stretch that a row hides.
    void OpenFold(std::int32_t row);
    /// The rows are made anew if the texts were cut into other blocks.
    void Check();

    const ParagraphRows& Rows() const { return rows_; }
    const PairedRows& Shown() const { return paired_; }
    /// Called when the rows are others.
    std::function<void()> rows_changed;

  private:
    class SideObserver : public DocumentObserver {
      public:
        SideObserver(PairAligner& aligner, Side side) : aligner_(aligner), side_(side) {}
        void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) override;
        void Reformatted(CharPos /*first*/, std::int32_t /*length*/) override {}
        void Reset() override;

      private:
        PairAligner& aligner_;
        Side side_;
    };

    const BlockIndex& IndexOf(Side side) const { return views_[side]->Page().Index(); }
    void NoteCounts();
    void FindHeadingRows();
    void Rebuild();
    void Touched(Side side, std::int32_t rows_before, const ParagraphSpan& paragraphs);

    PerSide<RichTextView*> views_;
    std::shared_ptr<const Comparison> comparison_;
    ParagraphRows rows_;
    PairedRows paired_;
    PerSide<std::unique_ptr<ComparisonMarks>> marks_;
    FoldState folds_;
    std::vector<CharPos> headings_;
    PerSide<SideObserver> observers_;
    PerSide<std::int32_t> paragraphs_{};  // of the texts when the rows were made
    PerSide<std::int32_t> blocks_{};
    bool aligned_ = true;
};

}  // namespace zorvane
