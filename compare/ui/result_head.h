// The line above the result: which differences are shown, how many there are, what is left out.
#pragma once

#include <functional>

#include <QFrame>

#include "common/ui/buttons.h"
#include "common/ui/cards.h"
#include "common/ui/command_table.h"
#include "compare/engine/comparison.h"
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
    void SetFiltersEnabled(bool enabled) { filters_->setEnabled(enabled); }
    /// What is left out of the counts, in words; none hides the chip.
    void SetIgnored(const QStringList& kinds);
    void FitTo(int width);
    /// What came of the compare, such as "13 differences".
    QString Verdict() const { return sentence_->text(); }

    std::function<void(ViewFilter)> filter_chosen;
    std::function<void()> ignored_clicked;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    UiText text_;
    SegmentedGroup* filters_;
    QLabel* sentence_;
    Chip* chip_;
};

}  // namespace zorvane
