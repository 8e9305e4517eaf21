// Both sides of a compare beside each other, or all in one: views, strip and overview.
#pragma once

#include <functional>
#include <memory>

#include <QWidget>

#include "compare/engine/in_sight.h"
#include "compare/ui/connector_strip.h"
#include "compare/ui/difference_overview.h"
#include "compare/ui/merged_text.h"
#include "compare/ui/pair_aligner.h"
#include "compare/ui/rich_text_view.h"

namespace zorvane {

inline constexpr double kLineLength = 760;  // of "all in one", at 100 %

/// What a pane says, in the user's language. Each may be empty.
struct PaneTexts {
    std::function<QString(std::int32_t paragraphs)> fold;         ///< "14 unchanged paragraphs"
    std::function<QString(std::int32_t paragraphs)> fold_spoken;  ///< "..., folded"
    std::function<QString(Side only, std::int32_t paragraphs)> only_in;
    std::function<QString(std::int32_t paragraph)> moved_to;
    std::function<QString(std::int32_t record, Side from)> copy;  ///< name of a button
    std::function<QString(std::int32_t record)> difference;       ///< for screen readers
    std::function<QString(std::int32_t count)> overview;          ///< its name
    /// What is in sight.
    std::function<QString(std::int32_t first, std::int32_t last, std::int32_t all)> in_sight;
    static PaneTexts English();
};

class ComparePane : public QWidget {
  public:
    /// The documents are borrowed. The merged text of "all in one" is the pane's own.
    ComparePane(RichDocument& original, RichDocument& modified, QWidget* parent = nullptr);
    ~ComparePane() override;

    /// After a run, behind the documents' new texts; nullptr: no result.
    void SetComparison(std::shared_ptr<const Comparison> comparison);
    void SetColors(const ViewColors& colors);
    void SetTexts(PaneTexts texts);
    void SetZoom(double zoom);
    void SetWrap(bool wrap);
    void SetAligned(bool aligned);
    void SetFolded(bool folded);
    /// Which stretches fold, and what stays open of them.
    /// With or without the heading above a difference in sight.
    void SetFoldRule(const FoldRule& rule, bool keep_headings);
    /// Where those of the original begin, in front of its comparison.
    void SetHeadings(std::vector<CharPos> places) {
        aligner_->SetHeadings(keep_headings_ ? std::move(places) : std::vector<CharPos>());
    }
    /// The share of the original side.
    void SetRatio(double ratio);
    void SetAllInOne(bool all_in_one);
    bool AllInOne() const { return all_in_one_; }
    /// Marks a difference as the current one and brings it into sight; -1 for none.
    void SetCurrent(std::int32_t record);
    std::int32_t Current() const { return current_; }
    /// Brings a paragraph of a side into sight.
    void ShowParagraph(Side side, ParagraphNumber paragraph);

    RichTextView& View(Side side) { return *views_[side]; }
    RichTextView& MergedView() { return *merged_view_; }
    ConnectorStrip& Strip() { return *strip_; }
    DifferenceOverview& Overview() { return *overview_; }
    PairAligner& Aligner() { return *aligner_; }

    std::function<void(std::int32_t record, Side from)> copy_over;
    std::function<void(std::int32_t record)> record_clicked;
    /// Other paragraphs are in sight.
    std::function<void(ParagraphsInSight sight)> sight_changed;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Arrange();
    void ConnectViews();
    void Follow(Side from, double moved);
    void MarksOfOverview();
    void WindowOfOverview();
    void TellWindow(double begin, double end);
    void GoToPart(double part);
    void MakeMerged();
    QString RoomLabel(Side side, const RoomRun& run) const;
    void RoomClicked(Side side, const RoomRun& run);
    ViewLabels LabelsOf(Side side) const;
    template <class Do>
    void ForViews(const Do& act) {
        for (RichTextView* view : {views_.original, views_.modified, merged_view_})
            act(*view);
    }

    PerSide<RichTextView*> views_;
    RichDocument merged_document_;
    RichTextView* merged_view_;
    ConnectorStrip* strip_;
    DifferenceOverview* overview_;
    std::unique_ptr<PairAligner> aligner_;
    std::unique_ptr<MergedMarks> merged_marks_;
    std::unique_ptr<PairedRows> merged_rows_;
    FoldState merged_folds_;
    PaneTexts texts_ = PaneTexts::English();
    std::int32_t current_ = -1;
    double ratio_ = 0.5;
    bool all_in_one_ = false;
    bool following_ = false;
    bool keep_headings_ = false;
};

}  // namespace zorvane
