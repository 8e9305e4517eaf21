#include "load/readers/pdf/pdf_bands.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace zorvane {
namespace {

// Of the size: a white stripe parts bands. From 0.75 to 0.9; more glues cards, less tears columns.
constexpr float kStripe = 0.9F;
constexpr float kHeading = 2.5F;    // of the size: so near above a column stands its heading
constexpr float kCrossing = 0.7F;   // lines that a crossing segment is worth; flat from 0 to 1.5
constexpr float kUnordered = 0.3F;  // the order of drawing says nothing

/// Rows between two white stripes, or one that crosses the gutter.
struct Band {
    PdfNumbers segments;
    bool crosses = false;
    bool left = false;
    bool right = false;
    bool columns = false;
    std::uint32_t first_drawn = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t last_drawn = 0;
    float top = std::numeric_limits<float>::max();
    float bottom = std::numeric_limits<float>::lowest();
    float right_x0 = std::numeric_limits<float>::max();

    bool TwoSided() const { return left && right; }
    void Add(const Band& other) {
        segments.insert(segments.end(), other.segments.begin(), other.segments.end());
        left |= other.left;
        right |= other.right;
        first_drawn = std::min(first_drawn, other.first_drawn);
        last_drawn = std::max(last_drawn, other.last_drawn);
        top = std::min(top, other.top);
        bottom = std::max(bottom, other.bottom);
        right_x0 = std::min(right_x0, other.right_x0);
    }
};

class Parter {
  public:
    Parter(const std::vector<PdfSegment>& segments, const PdfNumbers& part, float gutter,
           const PdfSides& sides)
        : segments_(segments), part_(part), gutter_(gutter), sides_(sides) {}

    PdfParting Part() {
        FindBands();
        for (std::size_t index = 0; index < bands_.size();) {
            if (bands_[index].crosses) {
                PutFlow(bands_[index]);
                crossing_ += 1;
                ++index;
                continue;
            }
            std::size_t end = index;
            while (end < bands_.size() && !bands_[end].crosses)
                ++end;
            PutRun(index, end);
            index = end;
        }
        parting_.gutter = gutter_;
        parting_.worth = lines_ == 0 ? 0 : static_cast<float>(lines_) - kCrossing * between_;
        return std::move(parting_);
    }

  private:
    Band BandOf(std::size_t first, std::size_t end) const {
        Band band;
        for (std::size_t index = first; index < end; ++index) {
            const PdfSegment& segment = segments_[part_[index]];
            band.segments.push_back(part_[index]);
            band.top = std::min(band.top, segment.Top());
            band.bottom = std::max(band.bottom, segment.Bottom());
            for (const PdfWord& word : segment.words) {
                band.first_drawn = std::min(band.first_drawn, word.number);
                band.last_drawn = std::max(band.last_drawn, word.number);
            }
            if (segment.x0 >= gutter_) {
                band.right = true;
                band.right_x0 = std::min(band.right_x0, segment.x0);
            } else {
                band.left = true;
                band.crosses |= segment.x1 > gutter_;
            }
        }
        return band;
    }

    void FindBands() {
        for (std::size_t index = 0; index < part_.size();) {
            const PdfSegment& first = segments_[part_[index]];
            std::size_t end = index;
            while (end < part_.size() && segments_[part_[end]].row == first.row)
                ++end;
            const Band row = BandOf(index, end);
            const bool apart = bands_.empty() || row.crosses || bands_.back().crosses ||
                               row.top - bands_.back().bottom > kStripe * first.size;
            if (apart)
                bands_.push_back(row);
            else
                bands_.back().Add(row);
            index = end;
        }
    }

    void PutFlow(const Band& band) {
        if (parting_.stretches.empty() || parting_.stretches.back().columns)
            parting_.stretches.emplace_back();
        PdfNumbers& flow = parting_.stretches.back().segments;
        flow.insert(flow.end(), band.segments.begin(), band.segments.end());
    }

    void PutColumns(const Band& band) {
        parting_.stretches.push_back({band.segments, true});
        std::uint32_t row = std::numeric_limits<std::uint32_t>::max();
        for (const std::uint32_t number : band.segments) {
            lines_ += segments_[number].row != row ? 1U : 0U;
            row = segments_[number].row;
        }
        if (seen_columns_)
            between_ += crossing_;
        seen_columns_ = true;
        crossing_ = 0;
    }

    // Bands that nothing crosses.
    void PutRun(std::size_t first, std::size_t end) {
        Band all;
        bool any = false;
        for (std::size_t index = first; index < end; ++index) {
            all.Add(bands_[index]);
            any |= bands_[index].TwoSided();
        }
        if (!any) {
            for (std::size_t index = first; index < end; ++index)
                PutFlow(bands_[index]);
            return;
        }
        const PdfTwoSides measured = sides_.Measure(all.segments, gutter_);
        ordered_ = !sides_.Keen() && PdfSides::Separation(measured) >= kUnordered;
        const bool enough =
            std::min(measured.left.size(), measured.right.size()) >= sides_.FewestLines();
        whole_ = enough && sides_.AreColumns(measured);
        JudgeBands(first, end);
        PutBands(first, end);
    }

    // Where the run as a whole is none, each band may be columns by itself: cards. Short ones among
    // rows of single lines are rows too, whose cells have several lines.
    void JudgeBands(std::size_t first, std::size_t end) {
        constexpr std::size_t kFewestLinesOfCard = 3;
        constexpr std::size_t kMostOf = 5;
        constexpr std::size_t kMost = 3;  // of so many bands
        std::size_t two_sided = 0;
        std::size_t columns = 0;
        std::size_t lines = 0;
        for (std::size_t index = first; index < end; ++index) {
            Band& band = bands_[index];
            if (!band.TwoSided())
                continue;
            ++two_sided;
            const PdfTwoSides measured = sides_.Measure(band.segments, gutter_);
            band.columns = sides_.AreColumns(measured);
            columns += band.columns ? 1U : 0U;
            lines += std::min(measured.left.size(), measured.right.size());
        }
        const bool cards = two_sided == 1 || (columns * kMostOf >= two_sided * kMost &&
                                              lines >= two_sided * kFewestLinesOfCard);
        for (std::size_t index = first; index < end; ++index) {
            Band& band = bands_[index];
            band.columns = band.TwoSided() && (whole_ || (cards && band.columns));
        }
    }

    void PutBands(std::size_t first, std::size_t end) {
        Band open;  // columns so far
        for (std::size_t index = first; index < end; ++index) {
            Band& band = bands_[index];
            const bool goes_on = !open.segments.empty() &&
                                 (!ordered_ || band.first_drawn < open.last_drawn) &&
                                 (!band.TwoSided() || band.columns);
            if (goes_on) {
                open.Add(band);
                continue;
            }
            Close(open);
            if (band.columns || IsHeading(index, end))
                open = band;
            else
                PutFlow(band);
        }
        Close(open);
    }

    // A heading may stand above the right column alone.
    bool IsHeading(std::size_t index, std::size_t end) const {
        const Band& band = bands_[index];
        if (band.left || index + 1 == end)
            return false;
        const Band& below = bands_[index + 1];
        const float size = segments_[band.segments.front()].size;
        return below.columns && std::fabs(band.right_x0 - below.right_x0) <= 0.5F * size &&
               below.top - band.bottom <= kHeading * size;
    }

    void Close(Band& open) {
        if (open.segments.empty())
            return;
        if (open.TwoSided())
            PutColumns(open);
        else
            PutFlow(open);
        open = {};
    }

    const std::vector<PdfSegment>& segments_;
    const PdfNumbers& part_;
    float gutter_;
    const PdfSides& sides_;
    std::vector<Band> bands_;
    bool ordered_ = false;  // of the run at hand
    bool whole_ = false;    // that run is columns
    PdfParting parting_;
    std::size_t lines_ = 0;
    float crossing_ = 0;
    float between_ = 0;
    bool seen_columns_ = false;
};

}  // namespace

PdfParting PartAt(const std::vector<PdfSegment>& segments, const PdfNumbers& part, float gutter,
                  const PdfSides& sides) {
    return Parter(segments, part, gutter, sides).Part();
}

}  // namespace zorvane
