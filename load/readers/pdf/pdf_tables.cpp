#include "load/readers/pdf/pdf_tables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "load/readers/pdf/pdf_cell_flow.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostColumns = 64;
constexpr std::size_t kFewestRows = 2;

// Shares of the font size.
constexpr float kFarthestTableRow = 5;
constexpr float kTightest = 1.5F;  // a wider pitch parts rows by itself

struct Column {
    float x0 = 0;
    float x1 = 0;
};

/// Columns as lines are added; they never overlap.
class Columns {
  public:
    /// False, and nothing is changed, when a segment of the line belongs to two columns.
    bool Add(const PdfSegmentLine& line) {
        std::vector<Column> changed = columns_;
        for (const PdfSegment* const segment : line) {
            if (!Add(changed, *segment))
                return false;
        }
        if (changed.size() > kMostColumns)
            return false;
        columns_ = std::move(changed);
        return true;
    }
    std::size_t Count() const { return columns_.size(); }
    float RightEdge(std::size_t column) const { return columns_[column].x1; }
    float LeftEdge(std::size_t column) const { return columns_[column].x0; }
    std::size_t Of(const PdfSegment& segment) const {
        const float middle = (segment.x0 + segment.x1) / 2;
        std::size_t column = 0;
        while (column + 1 < columns_.size() && columns_[column].x1 < middle)
            ++column;
        return column;
    }

  private:
    static bool Add(std::vector<Column>& columns, const PdfSegment& segment) {
        const auto first = std::find_if(columns.begin(), columns.end(), [&](const Column& column) {
            return column.x1 > segment.x0;
        });
        if (first == columns.end() || first->x0 >= segment.x1) {
            columns.insert(first, {segment.x0, segment.x1});
            return true;
        }
        const auto next = first + 1;
        if (next != columns.end() && next->x0 < segment.x1)
            return false;
        first->x0 = std::min(first->x0, segment.x0);
        first->x1 = std::max(first->x1, segment.x1);
        return true;
    }

    std::vector<Column> columns_;
};

float Baseline(const PdfTableLine& line) {
    return line.segments.front()->baseline;
}
float Size(const PdfTableLine& line) {
    return line.segments.front()->size;
}

// Whether the neighbour has text over every gap of the line, and ends where the line ends.
bool RunsOver(const PdfTableLine& neighbour, const PdfTableLine& line) {
    constexpr float kNear = 1.7F;
    constexpr float kSameEdge = 0.2F;
    const float size = Size(line);
    if (std::fabs(Baseline(neighbour) - Baseline(line)) > kNear * size ||
        std::fabs(neighbour.segments.back()->x1 - line.segments.back()->x1) > kSameEdge * size)
        return false;
    for (std::size_t index = 1; index < line.segments.size(); ++index) {
        const float x0 = line.segments[index - 1]->x1;
        const float x1 = line.segments[index]->x0;
        const bool over = std::any_of(
            neighbour.segments.begin(), neighbour.segments.end(), [&](const PdfSegment* segment) {
                return std::min(segment->x1, x1) - std::max(segment->x0, x0) > 0.5F * (x1 - x0);
            });
        if (!over)
            return false;
    }
    return true;
}

class Grouping {
  public:
    Grouping(const std::vector<PdfCharacter>& characters, const std::vector<PdfTableLine>& lines,
             const std::vector<PdfBox>& rules)
        : characters_(characters), lines_(lines), rules_(rules) {
        std::ranges::sort(rules_, {}, &PdfBox::y0);
    }

    std::vector<PdfRowGroup> Groups() {
        std::size_t index = 0;
        while (index < lines_.size()) {
            const std::size_t end = EndOfTable(index);
            if (end == index) {
                PdfRowGroup group;
                group.line = lines_[index].segments;
                group.stretched = lines_[index++].stretched;
                groups_.push_back(std::move(group));
                continue;
            }
            PutTable(index, end);
            index = end;
        }
        return std::move(groups_);
    }

  private:
    bool IsRowOfCells(std::size_t line) const {
        return lines_[line].segments.size() > 1 && !lines_[line].is_list_item &&
               !lines_[line].stretched;
    }

    // Behind the last line of the table that begins at `first`, or `first`.
    std::size_t EndOfTable(std::size_t first) {
        columns_ = {};
        if (!IsRowOfCells(first))
            return first;
        std::size_t rows = 0;
        std::size_t end = first;
        for (std::size_t index = first; index < lines_.size(); ++index) {
            const std::size_t columns = columns_.Count();
            if (EndsTable(index, first) || !columns_.Add(lines_[index].segments))
                break;
            const bool row = IsRowOfCells(index);
            const bool wrapped = index == end && Pitch(index) <= kTightest * Size(lines_[index]) &&
                                 columns_.Count() == columns;
            rows += row ? 1U : 0U;
            if (!row && !wrapped)
                continue;
            end = index + 1;
            kept_ = columns_;
        }
        columns_ = kept_;
        return rows >= kFewestRows ? end : first;
    }

    bool EndsTable(std::size_t line, std::size_t first) const {
        if (lines_[line].is_list_item)
            return true;
        return line > first &&
               (Pitch(line) > kFarthestTableRow * Size(lines_[line]) || IsRuledTwice(line));
    }

    float Pitch(std::size_t line) const {
        return line == 0 ? 0 : Baseline(lines_[line]) - Baseline(lines_[line - 1]);
    }

    // Heights of the lines that are drawn between a line of text and the one above it.
    std::pair<float, float> RulesAbove(std::size_t line) const {
        const PdfSegment& segment = *lines_[line].segments.front();
        const float from = Baseline(lines_[line - 1]) + 0.1F * Size(lines_[line - 1]);
        const float to = segment.baseline - 0.6F * segment.size;
        auto rule = std::lower_bound(rules_.begin(), rules_.end(), from,
                                     [](const PdfBox& box, float y) { return box.y0 < y; });
        std::pair<float, float> heights{0, 0};
        constexpr int kMostRulesLooked = 300;
        for (int looked = 0; rule != rules_.end() && rule->y0 <= to && looked < kMostRulesLooked;
             ++rule, ++looked) {
            const float common = std::min(rule->x1, segment.x1) - std::max(rule->x0, segment.x0);
            // A line under a word ends with it; a border goes on.
            if (common < 0.8F * (segment.x1 - segment.x0) ||
                rule->x1 < segment.x1 + 0.4F * segment.size)
                continue;
            if (heights.first == 0)
                heights.first = rule->y0;
            heights.second = rule->y0;
        }
        return heights;
    }
    bool IsRuled(std::size_t line) const { return RulesAbove(line).first > 0; }
    // The foot of one table and the head of the next.
    bool IsRuledTwice(std::size_t line) const {
        const auto [first, last] = RulesAbove(line);
        return last - first > 0.3F * Size(lines_[line]);
    }

    /// What tells the rows of a table apart.
    struct Spacing {
        bool ruled = false;
        float tight = 0;              // lines no farther apart may be one row
        bool rows_are_tight = false;  // rows follow one another as lines do
    };

    Spacing Measure(std::size_t first, std::size_t end) const {
        Spacing spacing;
        spacing.ruled = RowsAreRuled(first, end);
        float least = Pitch(first + 1);
        for (std::size_t line = first + 1; line < end; ++line)
            least = std::min(least, Pitch(line));
        const bool wide = least > kTightest * Size(lines_[first]);
        spacing.tight = wide ? 0 : least * 1.12F + 0.5F;
        std::size_t tight = 0;
        std::size_t full = 0;
        for (std::size_t line = first + 1; line < end; ++line) {
            if (Pitch(line) > spacing.tight)
                continue;
            ++tight;
            full += IsFull(line) ? 1U : 0U;
        }
        spacing.rows_are_tight = full * 2 >= tight;
        return spacing;
    }

    bool IsFull(std::size_t line) const { return lines_[line].segments.size() >= columns_.Count(); }

    // Drawn lines part all rows, or only the heads of the columns and a sum.
    bool RowsAreRuled(std::size_t first, std::size_t end) const {
        constexpr std::size_t kMostLinesOfRow = 4;
        std::size_t ruled = 0;
        std::size_t run = 1;
        std::size_t longest = 1;
        for (std::size_t line = first + 1; line < end; ++line) {
            const bool here = IsRuled(line);
            ruled += here ? 1U : 0U;
            if (here)
                run = 0;
            run += IsFull(line) ? 1U : 0U;
            longest = std::max(longest, run);
        }
        const bool head_only = ruled == 1 && end - first > kFewestRows && IsRuled(first + 1);
        return ruled > 0 && !head_only && longest <= kMostLinesOfRow;
    }

    bool StartsRow(std::size_t line, const Spacing& spacing) const {
        if (spacing.ruled || IsRuled(line))
            return IsRuled(line);
        if (spacing.tight > 0 && Pitch(line) > spacing.tight)
            return true;
        return !GoesOnInCells(line);
    }

    // Every cell of the line goes on in one that was full in the row so far.
    bool GoesOnInCells(std::size_t line) const {
        constexpr float kGap = 6;       // points between two columns
        constexpr float kPitch = 1.6F;  // of the size
        if (Pitch(line) > kPitch * Size(lines_[line]))
            return false;
        const std::vector<std::vector<PdfSegmentLine>>& row = groups_.back().cells;
        const std::vector<PdfSegmentLine> cells = CellsOf(lines_[line].segments);
        for (std::size_t column = 0; column < cells.size(); ++column) {
            if (cells[column].empty())
                continue;
            if (row[column].empty() ||
                row[column].back().front()->baseline < Baseline(lines_[line - 1]) - 1)
                return false;
            const float edge = column + 1 < columns_.Count() ? columns_.LeftEdge(column + 1) - kGap
                                                             : columns_.RightEdge(column);
            if (StepBetween(CellLineOf(characters_, row[column].back()),
                            CellLineOf(characters_, cells[column]), edge) == PdfCellStep::NewCell)
                return false;
        }
        return true;
    }

    std::vector<PdfSegmentLine> CellsOf(const PdfSegmentLine& segments) const {
        std::vector<PdfSegmentLine> cells(columns_.Count());
        for (const PdfSegment* const segment : segments)
            cells[columns_.Of(*segment)].push_back(segment);
        return cells;
    }

    void PutTable(std::size_t first, std::size_t end) {
        const Spacing spacing = Measure(first, end);
        for (std::size_t line = first; line < end; ++line) {
            if (line == first || StartsRow(line, spacing)) {
                PdfRowGroup group;
                group.ruled = spacing.ruled;
                group.cells.resize(columns_.Count());
                for (std::size_t column = 0; column < columns_.Count(); ++column)
                    group.right_edges.push_back(columns_.RightEdge(column));
                groups_.push_back(std::move(group));
            }
            AddToRow(groups_.back(), lines_[line].segments);
        }
    }

    void AddToRow(PdfRowGroup& group, const PdfSegmentLine& segments) const {
        std::size_t last = kMostColumns;
        for (const PdfSegment* const segment : segments) {
            const std::size_t column = columns_.Of(*segment);
            if (column != last)
                group.cells[column].emplace_back();
            group.cells[column].back().push_back(segment);
            last = column;
        }
    }

    const std::vector<PdfCharacter>& characters_;
    const std::vector<PdfTableLine>& lines_;
    std::vector<PdfBox> rules_;
    std::vector<PdfRowGroup> groups_;
    Columns columns_;
    Columns kept_;
};

}  // namespace

std::vector<PdfRowGroup> GroupRows(const std::vector<PdfCharacter>& characters,
                                   const std::vector<PdfTableLine>& lines,
                                   const std::vector<PdfBox>& rules) {
    return Grouping(characters, lines, rules).Groups();
}

void MarkStretchedLines(std::vector<PdfTableLine>& lines) {
    for (std::size_t index = 0; index < lines.size(); ++index) {
        if (lines[index].segments.size() < 2 || lines[index].is_list_item)
            continue;
        lines[index].stretched =
            (index > 0 && RunsOver(lines[index - 1], lines[index])) ||
            (index + 1 < lines.size() && RunsOver(lines[index + 1], lines[index]));
    }
}

}  // namespace zorvane
