#include "load/readers/pdf/pdf_lines.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <utility>

#include "load/readers/pdf/pdf_grid_rows.h"
#include "load/readers/pdf/pdf_grids.h"
#include "load/readers/pdf/pdf_line_builder.h"
#include "load/readers/pdf/pdf_line_join.h"
#include "load/readers/pdf/pdf_list_rows.h"
#include "load/readers/pdf/pdf_order.h"
#include "load/readers/pdf/pdf_pleading.h"
#include "load/readers/pdf/pdf_tables.h"
#include "load/readers/sink/document_sink.h"

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
        const bool right = direction == PdfDirection::Right;
        std::vector<PdfSegment> segments = SegmentsOf(
            page_.characters, std::move(words), right ? page_.uprights : std::vector<PdfBox>());
        grids_.clear();
        if (right && !options_.by_layout)
            grids_ = TakeGrids(page_, segments);
        const std::vector<PdfRegion> regions = Regions(segments, direction);
        // Most pages have equal margins.
        right_margin_ = regions.size() == 1 && direction == PdfDirection::Right
                            ? page_.width - regions.front().x0
                            : 0;
        for (const PdfRegion& region : regions)
            AppendRegion(region, segments, direction);
    }

    std::vector<PdfRegion> Regions(const std::vector<PdfSegment>& segments,
                                   PdfDirection direction) const {
        PdfColumnSense sense = PdfColumnSense::Usual;
        if (options_.by_layout || options_.document_type == PdfDocumentType::Pleading)
            sense = PdfColumnSense::None;
        else if (options_.document_type == PdfDocumentType::ManyColumns)
            sense = PdfColumnSense::Keen;
        return RegionsOf(page_.characters, segments, Rules(direction), sense);
    }

    // Rules are told in the frame of the page.
    const std::vector<PdfBox>& Rules(PdfDirection direction) const {
        static const std::vector<PdfBox> kNone;
        return direction == PdfDirection::Right ? page_.rules : kNone;
    }

    void AppendRegion(const PdfRegion& region, const std::vector<PdfSegment>& segments,
                      PdfDirection direction) {
        const std::uint32_t number = lines_.empty() ? 1 : lines_.back().region + 1;
        for (const PdfRowGroup& group : Groups(region, segments, direction)) {
            PdfLine line =
                group.cells.empty() ? Built(group.line, group.stretched) : TableRow(group);
            line.region = number;
            line.region_x0 = region.x0;
            line.region_x1 = region.x1;
            line.margin_x1 = right_margin_;
            line.page = number_;
            line.direction = direction;
            lines_.push_back(std::move(line));
        }
    }

    // The lines of a region, with the rows of the tables that stand in it.
    std::vector<PdfRowGroup> Groups(const PdfRegion& region,
                                    const std::vector<PdfSegment>& segments,
                                    PdfDirection direction) const {
        std::vector<PdfRowGroup> groups;
        std::vector<const PdfSegment*> run;
        const auto put_run = [&] {
            Append(groups, TextGroups(run, direction));
            run.clear();
        };
        for (const std::uint32_t number : region.segments) {
            const PdfSegment& segment = segments[number];
            if (segment.table == kNoPdfTable) {
                run.push_back(&segment);
                continue;
            }
            put_run();
            Append(groups, GridGroups(grids_[segment.table], direction));
        }
        put_run();
        return groups;
    }

    static void Append(std::vector<PdfRowGroup>& groups, std::vector<PdfRowGroup> more) {
        std::move(more.begin(), more.end(), std::back_inserter(groups));
    }

    // Without vertical lines the gaps in its rows tell its columns.
    std::vector<PdfRowGroup> GridGroups(const PdfGrid& grid, PdfDirection direction) const {
        if (!grid.columns.empty())
            return RowsOfGrid(page_.characters, grid);
        std::vector<const PdfSegment*> run;
        for (const PdfSegment& segment : grid.segments)
            run.push_back(&segment);
        return TextGroups(run, direction);
    }

    // Rows of tables only where the text flows.
    std::vector<PdfRowGroup> TextGroups(const std::vector<const PdfSegment*>& run,
                                        PdfDirection direction) const {
        std::vector<PdfTableLine> rows;
        for (const PdfSegment* const segment : run) {
            if (rows.empty() || rows.back().segments.back()->row != segment->row)
                rows.emplace_back();
            rows.back().segments.push_back(segment);
        }
        if (options_.by_layout) {
            for (PdfTableLine& row : rows)
                row.is_list_item = true;  // rows are kept as lines
        } else {
            MarkListItems(page_.characters, rows);
            MarkStretchedLines(rows);
        }
        return GroupRows(page_.characters, rows, Rules(direction));
    }

    PdfLine* Last() { return lines_.size() > first_ ? &lines_.back() : nullptr; }

    PdfLine Built(const PdfSegmentLine& row, bool stretched = false) {
        PdfLine line = builder_.Build(row, Last(), stretched);
        line.right_to_left = ReorderVisualLine(line.letters);
        return line;
    }

    PdfLine TableRow(const PdfRowGroup& group) {
        PdfLine row;
        bool begun = false;
        for (std::size_t column = 0; column < group.cells.size(); ++column) {
            PdfLine cell = Cell(group.cells[column], group.right_edges[column]);
            if (!begun && !cell.letters.empty()) {
                const std::vector<PdfLetter> before = std::move(row.letters);
                row = cell;
                row.letters = before;
                begun = true;
            }
            row.letters.insert(row.letters.end(), cell.letters.begin(), cell.letters.end());
            PdfLetter mark = row.letters.empty() ? PdfLetter{} : row.letters.back();
            mark.letter = group.ruled ? static_cast<char32_t>(kCellEnd) : U'\t';
            mark.underline = false;
            mark.strikeout = false;
            if (group.ruled || column + 1 < group.cells.size())
                row.letters.push_back(mark);
            row.x1 = std::max(row.x1, cell.x1);
        }
        LendLook(row.letters);
        row.label = 0;
        row.wide_gaps = 1;
        return row;
    }

    // The marks of empty cells at the start look like the first letter.
    static void LendLook(std::vector<PdfLetter>& letters) {
        const auto first = std::find_if(letters.begin(), letters.end(),
                                        [](const PdfLetter& letter) { return letter.size > 0; });
        for (auto mark = letters.begin(); first != letters.end() && mark != first; ++mark) {
            mark->style = first->style;
            mark->size = first->size;
        }
    }

    // The lines of a cell are one text, parted where the next word had had room.
    PdfLine Cell(const std::vector<PdfSegmentLine>& cell_lines, float right_edge) {
        PdfLine cell;
        for (std::size_t index = 0; index < cell_lines.size(); ++index) {
            PdfLine line = Built(cell_lines[index]);
            if (index == 0) {
                cell = std::move(line);
                continue;
            }
            const bool had_room = cell.x1 + line.first_word + 0.3F * line.size < right_edge;
            if (had_room) {
                PdfLetter mark = line.letters.front();
                mark.letter = static_cast<char32_t>(kLineInParagraph);
                cell.letters.push_back(mark);
                cell.letters.insert(cell.letters.end(), line.letters.begin(), line.letters.end());
            } else {
                JoinLetters(cell.letters, line.letters, options_.connect_hyphens);
            }
            cell.x1 = line.x1;
        }
        return cell;
    }

    const PdfPage& page_;
    std::int32_t number_;
    const PdfLineOptions& options_;
    std::vector<PdfLine>& lines_;
    std::size_t first_;
    float right_margin_ = 0;
    std::vector<PdfGrid> grids_;  // of the direction at hand
    PdfLineBuilder builder_;
};

}  // namespace

void AppendLines(const PdfPage& page, std::int32_t page_number, const PdfLineOptions& options,
                 std::vector<PdfLine>& lines) {
    PageLines(page, page_number, options, lines).Append();
}

}  // namespace zorvane
