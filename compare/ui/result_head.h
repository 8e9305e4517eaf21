// The line above the result: which differences are shown, how many there are, what is left out.
#pragma once

#include <functional>

#include <QFrame>

#include "common/ui/buttons.h"
#include "common/ui/cards.h"
#include "common/ui/combo_boxes.h"
#include "common/ui/command_table.h"
#include "compare/engine/comparison.h"
#include "compare/ui/fold_plan.h"
#include "compare/view/view_state.h"

namespace zorvane {

/// What the head tells; counts of -1 are not known.
struct ResultCounts {
    int all = -1;
    int changes = -1;
    int additions = -1;
    int deletions = -1;
    int beside = 0;
    friend bool operator==(const ResultCounts&, const ResultCounts&) = default;
};

class ResultHead : public QFrame {
  public:
    ResultHead(CommandSet& commands, UiText text, QWidget* parent);

    void SetCounts(const ResultCounts& counts);
    void SetFilter(ViewFilter filter);
    void SetFilterEnabled(ViewFilter filter, bool enabled);
    /// The whole group.
    void SetFiltersEnabled(bool enabled);
    /// The view that a press of its button would give.
    void SetAllInOne(bool all_in_one);
    /// What is left out of the counts, in words; none hides the chip.
    void SetIgnored(const QStringList& kinds);
    /// Where the focus comes to.
    QWidget* FirstStop() const;
    void FitTo(const FoldPlan& plan);
    /// What came of the compare, such as "13 differences".
    QString Verdict() const { return sentence_->text(); }

    std::function<void(ViewFilter)> filter_chosen;
    std::function<void()> ignored_clicked;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void ShowInBox();

    UiText text_;
    SegmentedGroup* filters_;
    ComboBox* box_;  ///< the same filters where room is short
    ResultCounts counts_;
    Button* fold_ = nullptr;
    Button* offer_;  ///< all in one, where two columns are too narrow
    bool all_in_one_ = false;
    bool narrow_ = false;
    QLabel* sentence_;
    Chip* chip_;
};

}  // namespace zorvane
