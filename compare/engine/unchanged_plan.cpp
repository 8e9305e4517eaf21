#include "compare/engine/unchanged_plan.h"

#include <algorithm>
#include <vector>

namespace zorvane {
namespace {

// Unchanged paragraphs of the original, 0-based.
struct Stretch {
    std::int32_t begin;
    std::int32_t end;
    bool behind_difference;
    bool before_difference;
};

std::vector<Stretch> StretchesOf(const Comparison& comparison) {
    std::vector<Stretch> stretches;
    std::int32_t at = 0;
    for (const DifferenceRecord& record : comparison.records) {
        const std::int32_t end = record.InFront(Side::Original).value;
        stretches.push_back({at, end, at > 0 || !stretches.empty(), true});
        at = record.paragraphs.original.last.value;
    }
    stretches.push_back(
        {at, comparison.Paragraphs(Side::Original), !comparison.records.empty(), false});
    return stretches;
}

class Planner {
  public:
    Planner(const Comparison& comparison, std::int64_t columns, std::int64_t most)
        : lines_(comparison.Lines(Side::Original)),
          stretches_(StretchesOf(comparison)),
          columns_(columns),
          most_(most) {}

    // The most context that fits, then as many folded stretches as fit beside it.
    UnchangedPlan Fitting() {
        UnchangedPlan plan;
        while (Measure(plan) > most_ && plan.least_folded > 1) {
            if (plan.context > 0)
                --plan.context;
            else
                plan.least_folded = 1;
        }
        std::int64_t room = most_ - Measure(plan);
        std::sort(folded_.begin(), folded_.end());
        plan.most_kept = 0;
        for (std::size_t i = 0; i < folded_.size() && folded_[i] <= room; ++i) {
            room -= folded_[i];
            const bool all_of_that_size = i + 1 == folded_.size() || folded_[i + 1] > folded_[i];
            plan.most_kept = all_of_that_size ? folded_[i] / columns_ : plan.most_kept;
        }
        return plan;
    }

  private:
    // Text that is shown open; what is folded goes to the list.
    std::int64_t Measure(const UnchangedPlan& plan) {
        folded_.clear();
        std::int64_t open = 0;
        for (const Stretch& stretch : stretches_) {
            const auto context = static_cast<std::int32_t>(plan.context);
            const std::int32_t begin = stretch.begin + (stretch.behind_difference ? context : 0);
            const std::int32_t end = stretch.end - (stretch.before_difference ? context : 0);
            const std::int64_t all = Units(stretch.begin, stretch.end);
            const bool folds = end - begin >= static_cast<std::int32_t>(plan.least_folded);
            const std::int64_t folded = folds ? Units(begin, end) : 0;
            open += all - folded;
            if (folds)
                folded_.push_back(folded);
        }
        return open;
    }

    std::int64_t Units(std::int32_t begin, std::int32_t end) const {
        return end > begin ? lines_.Units(begin, end) * columns_ : 0;
    }

    const LineText& lines_;
    std::vector<Stretch> stretches_;
    std::int64_t columns_;
    std::int64_t most_;
    std::vector<std::int64_t> folded_;
};

}  // namespace

UnchangedPlan PlanUnchanged(const Comparison& comparison, UnchangedText wanted, int columns,
                            std::int64_t most) {
    UnchangedPlan plan;
    switch (wanted) {
        case UnchangedText::All:
            plan.fold = false;
            return plan;
        case UnchangedText::Folded:
            return plan;
        case UnchangedText::None:
            plan.least_folded = 1;
            plan.most_kept = -1;
            return plan;
        case UnchangedText::Fitting:
            break;
    }
    plan = Planner(comparison, columns, most).Fitting();
    const std::int64_t all =
        comparison.Lines(Side::Original).Units(0, comparison.Paragraphs(Side::Original));
    if (comparison.Same() && all * columns <= most)
        plan.fold = false;
    return plan;
}

}  // namespace zorvane
