#include "load/readers/pdf_lines.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "load/readers/pdf_line_builder.h"
#include "load/readers/pdf_order.h"
#include "load/readers/pdf_pleading.h"

namespace zorvane {
namespace {

// The direction of most of the page's letters comes first.
std::array<PdfDirection, kPdfDirections> DirectionsOf(const PdfPage& page) {
    std::array<std::size_t, kPdfDirections> counts{};
    for (const PdfCharacter& character : page.characters)
        ++counts[static_cast<std::size_t>(character.direction)];
    std::array<PdfDirection, kPdfDirections> directions = {PdfDirection::Right, PdfDirection::Down,
                                                           PdfDirection::Left, PdfDirection::Up,
                                                           PdfDirection::Slanting};
    std::stable_sort(directions.begin(), directions.end(), [&](PdfDirection a, PdfDirection b) {
        return counts[static_cast<std::size_t>(a)] > counts[static_cast<std::size_t>(b)];
    });
    return directions;
}

class PageLines {
  public:
    PageLines(const PdfPage& page, std::int32_t number, const PdfLineOptions& options,
              std::vector<PdfLine>& lines)
        : page_(page),
          number_(number),
          options_(options),
          lines_(lines),
          first_(lines.size()),
          builder_(page, options) {}

    void Append() {
        for (const PdfDirection direction : DirectionsOf(page_))
            AppendDirection(direction);
        if (lines_.size() > first_)
            builder_.CloseLink(lines_.back());
    }

  private:
    void AppendDirection(PdfDirection direction) {
        std::vector<PdfWord> words = WordsOf(page_.characters, direction, options_.hidden);
        if (options_.document_type == PdfDocumentType::Pleading && direction == PdfDirection::Right)
            DropLineNumbers(page_.characters, words);
        if (words.empty())
            return;
        const std::vector<PdfSegment> segments = SegmentsOf(page_.characters, std::move(words));
        const std::vector<PdfRegion> regions = Regions(segments);
        // Most pages have equal margins.
        right_margin_ = regions.size() == 1 && direction == PdfDirection::Right
                            ? page_.width - regions.front().x0
                            : 0;
        for (const PdfRegion& region : regions)
            AppendRegion(region, segments, direction);
    }

    std::vector<PdfRegion> Regions(const std::vector<PdfSegment>& segments) const {
        if (options_.by_layout || options_.document_type == PdfDocumentType::Pleading)
            return RegionsOf(segments, kNoColumnsRules);
        return RegionsOf(segments, options_.document_type == PdfDocumentType::ManyColumns
                                       ? kManyColumnsRules
                                       : kOneColumnRules);
    }

    void AppendRegion(const PdfRegion& region, const std::vector<PdfSegment>& segments,
                      PdfDirection direction) {
        const std::uint32_t number = lines_.empty() ? 1 : lines_.back().region + 1;
        std::vector<const PdfSegment*> row;
        for (std::size_t index = 0; index < region.segments.size(); ++index) {
            const PdfSegment& segment = segments[region.segments[index]];
            if (!row.empty() && row.back()->row != segment.row)
                AppendLine(row, region, number, direction);
            row.push_back(&segment);
        }
        if (!row.empty())
            AppendLine(row, region, number, direction);
    }

    void AppendLine(std::vector<const PdfSegment*>& row, const PdfRegion& region,
                    std::uint32_t number, PdfDirection direction) {
        PdfLine* const before = lines_.size() > first_ ? &lines_.back() : nullptr;
        PdfLine line = builder_.Build(row, before);
        row.clear();
        line.region = number;
        line.region_x0 = region.x0;
        line.region_x1 = region.x1;
        line.margin_x1 = std::max(right_margin_, region.x1);
        line.page = number_;
        line.direction = direction;
        line.right_to_left = ReorderVisualLine(line.letters);
        lines_.push_back(std::move(line));
    }

    const PdfPage& page_;
    std::int32_t number_;
    const PdfLineOptions& options_;
    std::vector<PdfLine>& lines_;
    std::size_t first_;
    float right_margin_ = 0;
    PdfLineBuilder builder_;
};

}  // namespace

void AppendLines(const PdfPage& page, std::int32_t page_number, const PdfLineOptions& options,
                 std::vector<PdfLine>& lines) {
    PageLines(page, page_number, options, lines).Append();
}

}  // namespace zorvane
