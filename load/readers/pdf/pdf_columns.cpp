#include "load/readers/pdf/pdf_columns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>

namespace zorvane {
namespace {

using Numbers = std::vector<std::uint32_t>;

constexpr float kFullRow = 0.7F;
constexpr int kMaxSplits = 12;  // columns within columns

class Splitter {
  public:
    Splitter(const std::vector<PdfSegment>& segments, const PdfColumnRules& rules)
        : segments_(segments), rules_(rules) {}

    std::vector<PdfRegion> Split() {
        Numbers all(segments_.size());
        for (std::uint32_t index = 0; index < all.size(); ++index)
            all[index] = index;
        Split(all, 0);
        return std::move(regions_);
    }

  private:
    struct Edge {
        float x = 0;
        int step = 0;
        friend bool operator<(const Edge& a, const Edge& b) {
            return a.x != b.x ? a.x < b.x : a.step < b.step;
        }
    };

    void Split(const Numbers& part, int depth) {
        const std::optional<float> gutter = depth < kMaxSplits ? Gutter(part) : std::nullopt;
        if (!gutter) {
            Emit(part);
            return;
        }
        // What crosses the gutter parts the columns above from those below.
        Numbers flow;
        Numbers strip;
        bool split = false;
        for (const std::uint32_t number : part) {
            const PdfSegment& segment = segments_[number];
            if (segment.x0 < *gutter && segment.x1 > *gutter) {
                split |= EndStrip(flow, strip, *gutter, depth);
                flow.push_back(number);
            } else {
                strip.push_back(number);
            }
        }
        split |= EndStrip(flow, strip, *gutter, depth);
        if (!split && flow.size() == part.size())
            Emit(flow);
        else if (!flow.empty())
            Split(flow, depth + 1);
    }

    // Columns are put out, with what stands above them before; anything else joins the flow.
    bool EndStrip(Numbers& flow, Numbers& strip, float gutter, int depth) {
        Numbers left;
        Numbers right;
        for (const std::uint32_t number : strip)
            (segments_[number].x1 <= gutter ? left : right).push_back(number);
        const bool columns = IsColumn(left) && IsColumn(right);
        if (columns) {
            if (!flow.empty())
                Split(flow, depth + 1);
            flow.clear();
            Split(left, depth + 1);
            Split(right, depth + 1);
        } else {
            flow.insert(flow.end(), strip.begin(), strip.end());
        }
        strip.clear();
        return columns;
    }

    // The place with the most gaps between neighbours in a row.
    std::optional<float> Gutter(const Numbers& part) const {
        std::vector<Edge> edges;
        for (std::size_t index = 1; index < part.size(); ++index) {
            const PdfSegment& left = segments_[part[index - 1]];
            const PdfSegment& right = segments_[part[index]];
            if (left.row == right.row && right.x0 > left.x1) {
                edges.push_back({left.x1, 1});
                edges.push_back({right.x0, -1});
            }
        }
        std::sort(edges.begin(), edges.end());
        int open = 0;
        int most = static_cast<int>(rules_.least_full_rows) - 1;
        std::optional<float> best;
        for (std::size_t index = 0; index + 1 < edges.size(); ++index) {
            open += edges[index].step;
            if (open > most && edges[index + 1].x > edges[index].x) {
                most = open;
                best = (edges[index].x + edges[index + 1].x) / 2;
            }
        }
        return best;
    }

    bool IsColumn(const Numbers& part) const {
        float x0 = std::numeric_limits<float>::max();
        float x1 = std::numeric_limits<float>::lowest();
        for (const std::uint32_t number : part) {
            x0 = std::min(x0, segments_[number].x0);
            x1 = std::max(x1, segments_[number].x1);
        }
        std::size_t rows = 0;
        std::size_t full_rows = 0;
        std::size_t index = 0;
        while (index < part.size()) {
            const PdfSegment& first = segments_[part[index]];
            float width = 0;  // without the gaps within the row
            for (; index < part.size() && segments_[part[index]].row == first.row; ++index)
                width += segments_[part[index]].x1 - segments_[part[index]].x0;
            const bool full =
                width >= kFullRow * (x1 - x0) && width >= rules_.least_width * first.size;
            full_rows += full ? 1U : 0U;
            ++rows;
        }
        return full_rows >= rules_.least_full_rows && full_rows * rules_.share_of_rows >= rows;
    }

    void Emit(const Numbers& part) {
        if (part.empty())
            return;
        PdfRegion region{part, std::numeric_limits<float>::max(),
                         std::numeric_limits<float>::lowest()};
        for (const std::uint32_t number : part) {
            region.x0 = std::min(region.x0, segments_[number].x0);
            region.x1 = std::max(region.x1, segments_[number].x1);
        }
        regions_.push_back(std::move(region));
    }

    const std::vector<PdfSegment>& segments_;
    const PdfColumnRules& rules_;
    std::vector<PdfRegion> regions_;
};

}  // namespace

std::vector<PdfRegion> RegionsOf(const std::vector<PdfSegment>& segments,
                                 const PdfColumnRules& rules) {
    return Splitter(segments, rules).Split();
}

}  // namespace zorvane
