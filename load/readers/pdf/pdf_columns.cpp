#include "load/readers/pdf/pdf_columns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <utility>

#include "load/readers/pdf/pdf_bands.h"

namespace zorvane {
namespace {

constexpr int kMostLevels = 14;  // columns within columns
constexpr std::size_t kMostCandidates = 48;
constexpr std::size_t kMostSegments = 20'000;  // a page with more is no text

class Splitter {
  public:
    Splitter(const std::vector<PdfSegment>& segments, const PdfSides& sides)
        : segments_(segments), sides_(sides) {}

    std::vector<PdfRegion> Split(bool columns) {
        PdfNumbers all(segments_.size());
        for (std::uint32_t index = 0; index < all.size(); ++index)
            all[index] = index;
        Split(all, columns && all.size() <= kMostSegments ? 0 : kMostLevels);
        return std::move(regions_);
    }

  private:
    void Split(const PdfNumbers& part, int level) {
        if (part.empty())
            return;
        const PdfParting best = level < kMostLevels ? BestParting(part) : PdfParting();
        if (best.worth <= 0) {
            Emit(part);
            return;
        }
        for (const PdfStretch& stretch : best.stretches) {
            if (stretch.columns)
                SplitSides(stretch.segments, best.gutter, level + 1);
            else
                Split(stretch.segments, level + 1);
        }
    }

    void SplitSides(const PdfNumbers& part, float gutter, int level) {
        PdfNumbers left;
        PdfNumbers right;
        for (const std::uint32_t number : part)
            (segments_[number].x0 < gutter ? left : right).push_back(number);
        Split(left, level);
        Split(right, level);
    }

    PdfParting BestParting(const PdfNumbers& part) const {
        PdfParting best;
        for (const float gutter : Candidates(part)) {
            PdfParting parting = PartAt(segments_, part, gutter, sides_);
            if (parting.worth > best.worth)
                best = std::move(parting);
        }
        return best;
    }

    // Left edges of segments that have something at their left, the most frequent ones.
    std::vector<float> Candidates(const PdfNumbers& part) const {
        constexpr float kSlack = 0.5F;  // points
        float first_end = std::numeric_limits<float>::max();
        for (const std::uint32_t number : part)
            first_end = std::min(first_end, segments_[number].x1);
        using Edge = std::pair<std::size_t, float>;  // how often, and where
        std::map<long, Edge> edges;
        for (const std::uint32_t number : part) {
            const float x0 = segments_[number].x0;
            if (x0 < first_end)
                continue;
            auto& [count, edge] = edges.try_emplace(std::lround(x0), 0, x0).first->second;
            ++count;
            edge = std::min(edge, x0);
        }
        std::vector<Edge> order;
        order.reserve(edges.size());
        for (const auto& [key, edge] : edges)
            order.push_back(edge);
        std::ranges::stable_sort(order, std::ranges::greater(), &Edge::first);
        order.resize(std::min(order.size(), kMostCandidates));
        std::vector<float> candidates;
        candidates.reserve(order.size());
        for (const auto& [count, edge] : order)
            candidates.push_back(edge - kSlack);
        return candidates;
    }

    void Emit(const PdfNumbers& part) {
        PdfRegion region{part, std::numeric_limits<float>::max(),
                         std::numeric_limits<float>::lowest()};
        for (const std::uint32_t number : part) {
            region.x0 = std::min(region.x0, segments_[number].x0);
            region.x1 = std::max(region.x1, segments_[number].x1);
        }
        regions_.push_back(std::move(region));
    }

    const std::vector<PdfSegment>& segments_;
    const PdfSides& sides_;
    std::vector<PdfRegion> regions_;
};

}  // namespace

std::vector<PdfRegion> RegionsOf(const std::vector<PdfCharacter>& characters,
                                 const std::vector<PdfSegment>& segments,
                                 const std::vector<PdfBox>& rules, PdfColumnSense sense) {
    const PdfSides sides(characters, segments, rules, sense);
    return Splitter(segments, sides).Split(sense != PdfColumnSense::None);
}

}  // namespace zorvane
