#include "compare/engine/difference_search.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace zorvane {
namespace {

constexpr std::int32_t kFewEdits = 128;       // tried exactly before a large part is cut at anchors
constexpr std::int32_t kManyEdits = 512;      // where there are no anchors
constexpr std::int32_t kExhaustedEdits = 24;  // when the work budget is spent
constexpr std::int64_t kBudgetPerLine = 256;
constexpr std::int64_t kLeastBudget = std::int64_t{1} << 22;
constexpr std::int64_t kEditsWork = 1 << 12;  // what a cut costs, as the stop is asked for
constexpr std::int64_t kPartWork = 4;         // what the least part costs, likewise
constexpr std::int32_t kDeepestAnchors = 24;  // deeper parts are halved, so no input nests for ever
constexpr std::array<std::int32_t, 4> kRunLengths = {1, 2, 4, 16};
constexpr std::uint8_t kInOriginal = 1;
constexpr std::uint8_t kInModified = 2;

// Where a part of a span begins in it.
std::size_t Offset(std::span<const std::int32_t> part, std::span<const std::int32_t> whole) {
    return static_cast<std::size_t>(part.data() - whole.data());
}

}  // namespace

void DifferenceSearch::Match(std::int32_t original, std::int32_t modified) {
    changed_.original[static_cast<std::size_t>(original)] = 0;
    changed_.modified[static_cast<std::size_t>(modified)] = 0;
}

DifferenceSearch::View DifferenceSearch::Trim(View view) {
    const std::size_t most = std::min(view.original.size(), view.modified.size());
    std::size_t front = 0;
    while (front < most && OriginalAt(view, front) == ModifiedAt(view, front)) {
        Match(view.original[front], view.modified[front]);
        ++front;
    }
    view.original = view.original.subspan(front);
    view.modified = view.modified.subspan(front);
    while (!view.original.empty() && !view.modified.empty() &&
           OriginalAt(view, view.original.size() - 1) ==
               ModifiedAt(view, view.modified.size() - 1)) {
        Match(view.original.back(), view.modified.back());
        view.original = view.original.first(view.original.size() - 1);
        view.modified = view.modified.first(view.modified.size() - 1);
    }
    return view;
}

bool DifferenceSearch::Compact(View view, Part& part) {
    for (const std::int32_t place : view.original)
        seen_[original_[static_cast<std::size_t>(place)]] |= kInOriginal;
    for (const std::int32_t place : view.modified)
        seen_[modified_[static_cast<std::size_t>(place)]] |= kInModified;
    constexpr std::uint8_t kBoth = kInOriginal | kInModified;
    part.original.reserve(view.original.size());
    part.modified.reserve(view.modified.size());
    for (const std::int32_t place : view.original) {
        if (seen_[original_[static_cast<std::size_t>(place)]] == kBoth)
            part.original.push_back(place);
    }
    for (const std::int32_t place : view.modified) {
        if (seen_[modified_[static_cast<std::size_t>(place)]] == kBoth)
            part.modified.push_back(place);
    }
    for (const std::int32_t place : view.original)
        seen_[original_[static_cast<std::size_t>(place)]] = 0;
    for (const std::int32_t place : view.modified)
        seen_[modified_[static_cast<std::size_t>(place)]] = 0;
    part.depth = view.depth;
    return part.original.size() + part.modified.size() < view.Size();
}

void DifferenceSearch::Gather(View view) {
    gathered_original_.clear();
    gathered_modified_.clear();
    for (const std::int32_t place : view.original)
        gathered_original_.push_back(original_[static_cast<std::size_t>(place)]);
    for (const std::int32_t place : view.modified)
        gathered_modified_.push_back(modified_[static_cast<std::size_t>(place)]);
}

void DifferenceSearch::SolveSmall(View view) {
    Gather(view);
    for (const MatchedPlaces match :
         bit_vector_.Run(gathered_original_, gathered_modified_, number_count_)) {
        Match(view.original[static_cast<std::size_t>(match.original)],
              view.modified[static_cast<std::size_t>(match.modified)]);
    }
}

void DifferenceSearch::SolveHalves(View view, SplitPlace place) {
    const auto original = static_cast<std::size_t>(place.original);
    const auto modified = static_cast<std::size_t>(place.modified);
    Solve({view.original.first(original), view.modified.first(modified), view.depth + 1});
    Solve({view.original.subspan(original), view.modified.subspan(modified), view.depth + 1});
}

bool DifferenceSearch::SplitByFewEdits(View view) {
    Gather(view);
    const auto place = middle_snake_.Find(gathered_original_, gathered_modified_, kFewEdits,
                                          WhenTooExpensive::GiveUp);
    if (!place)
        return false;
    SolveHalves(view, *place);
    return true;
}

bool DifferenceSearch::SplitByAnchors(View view) {
    if (view.depth > kDeepestAnchors)
        return false;
    std::vector<MatchedPlaces> chain;
    for (const std::int32_t length : kRunLengths) {
        Gather(view);
        const auto found = anchors_.Find(gathered_original_, gathered_modified_, length);
        chain.assign(found.begin(), found.end());
        if (!chain.empty())
            break;
    }
    if (chain.empty())
        return false;
    // Each part begins at an anchor, which its own trimming then takes off the front.
    std::size_t original = 0;
    std::size_t modified = 0;
    chain.push_back({static_cast<std::int32_t>(view.original.size()),
                     static_cast<std::int32_t>(view.modified.size())});
    for (const MatchedPlaces anchor : chain) {
        const auto next_original = static_cast<std::size_t>(anchor.original);
        const auto next_modified = static_cast<std::size_t>(anchor.modified);
        Solve({view.original.subspan(original, next_original - original),
               view.modified.subspan(modified, next_modified - modified), view.depth + 1});
        original = next_original;
        modified = next_modified;
    }
    return true;
}

std::int32_t DifferenceSearch::EditLimit() const {
    if (middle_snake_.Work() > budget_)
        return kExhaustedEdits;
    return kManyEdits;
}

// The smaller piece of each cut is solved at once and the larger is cut again, in a loop over one
// copy of the numbers: cuts may be lopsided, and copying at each would make the whole quadratic.
void DifferenceSearch::SplitByBest(const View whole) {
    View view = whole;
    Gather(view);
    const std::vector<std::uint32_t> original = gathered_original_;
    const std::vector<std::uint32_t> modified = gathered_modified_;
    std::span<const std::uint32_t> originals(original);
    std::span<const std::uint32_t> modifieds(modified);
    while (!BitVectorLcs::Fits(originals.size(), modifieds.size())) {
        const std::optional<SplitPlace> place =
            middle_snake_.Find(originals, modifieds, EditLimit(), WhenTooExpensive::TakeBest);
        if (!place || !stop_.KeepGoing(kEditsWork))
            return;
        const auto at_original = static_cast<std::size_t>(place->original);
        const auto at_modified = static_cast<std::size_t>(place->modified);
        const View front{view.original.first(at_original), view.modified.first(at_modified),
                         view.depth + 1};
        const View back{view.original.subspan(at_original), view.modified.subspan(at_modified),
                        view.depth + 1};
        const bool front_is_smaller = front.Size() < back.Size();
        Solve(front_is_smaller ? front : back);
        view = Trim(front_is_smaller ? back : front);
        if (view.original.empty() || view.modified.empty())
            return;
        originals = std::span(original).subspan(Offset(view.original, whole.original),
                                                view.original.size());
        modifieds = std::span(modified).subspan(Offset(view.modified, whole.modified),
                                                view.modified.size());
    }
    Solve(view);
}

void DifferenceSearch::SolveLarge(View view) {
    if (!SplitByFewEdits(view) && !SplitByAnchors(view))
        SplitByBest(view);
}

void DifferenceSearch::Solve(View view) {
    if (!stop_.KeepGoing(static_cast<std::int64_t>(view.Size()) + kPartWork))
        return;
    view = Trim(view);
    const auto work = static_cast<std::int64_t>(view.Size());
    if (view.original.empty() || view.modified.empty() || !stop_.KeepGoing(work))
        return;
    if (BitVectorLcs::Fits(view.original.size(), view.modified.size())) {
        SolveSmall(view);
        return;
    }
    Part part;
    const bool smaller = Compact(view, part);
    if (!stop_.KeepGoing(work))
        return;
    if (!smaller) {
        SolveLarge(view);
        return;
    }
    Solve({part.original, part.modified, part.depth});
}

void DifferenceSearch::Run(std::span<const std::uint32_t> original,
                           std::span<const std::uint32_t> modified, std::uint32_t number_count) {
    original_ = original;
    modified_ = modified;
    number_count_ = number_count;
    const auto lines = static_cast<std::int64_t>(original.size() + modified.size());
    changed_.original.assign(original.size(), 1);
    changed_.modified.assign(modified.size(), 1);
    stop_.KeepGoing(lines);
    seen_.resize(std::max<std::size_t>(seen_.size(), number_count), 0);
    stop_.KeepGoing(lines);
    budget_ = middle_snake_.Work() + std::max(lines * kBudgetPerLine, kLeastBudget);
    all_original_.resize(original.size());
    all_modified_.resize(modified.size());
    std::iota(all_original_.begin(), all_original_.end(), 0);
    std::iota(all_modified_.begin(), all_modified_.end(), 0);
    Solve({all_original_, all_modified_, 0});
}

}  // namespace zorvane
