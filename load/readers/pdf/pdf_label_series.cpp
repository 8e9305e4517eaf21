// Which labels a list proves.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <deque>
#include <string>
#include <utility>

#include "common/base/ascii.h"
#include "load/readers/pdf/pdf_labels.h"
#include "load/readers/pdf/pdf_lines.h"

namespace zorvane {
namespace {

constexpr float kHang = 0.15F;     // of the size
constexpr float kNoBlank = 0.45F;  // of the size; a wider gap is no blank; flat from 0.35 to 0.6
constexpr float kNextLine = 2.2F;  // of the size
constexpr std::size_t kOpen = 24;  // series that may still go on
constexpr std::size_t kFarthest = 300;  // lines from one member to the next

struct Series {
    PdfLabel last;
    std::vector<std::size_t> lines;
};

class Prover {
  public:
    explicit Prover(std::vector<PdfLine>& lines) : lines_(lines) {}

    void Settle() {
        for (std::size_t index = 0; index < lines_.size(); ++index) {
            if (lines_[index].label > 0)
                Enter(index);
        }
        const std::vector<bool> proven = Proven();
        for (std::size_t index = 0; index < lines_.size(); ++index) {
            PdfLine& line = lines_[index];
            if (line.label > 0 && proven[index])
                line.wide_gaps -= line.label_is_wide ? 1U : 0U;
            else if (line.label > 0)
                DropLabel(index);
        }
    }

  private:
    std::vector<bool> Proven() const {
        std::vector<bool> proven(lines_.size(), false);
        for (const Series& series : series_) {
            if (!IsProven(series))
                continue;
            for (const std::size_t index : series.lines)
                proven[index] = true;
        }
        return proven;
    }

    // A text that hangs under what is no label goes on all the same.
    void DropLabel(std::size_t index) {
        PdfLine& line = lines_[index];
        line.label = 0;
        if (Hangs(index) && !IsRow(line))
            line.wide_gaps = 0;
        else
            line.text_x0 = line.x0;
    }

    // A tab behind the text: a row of a table, whose first cell is no label.
    static bool IsRow(const PdfLine& line) {
        return line.wide_gaps > (line.label_is_wide ? 1U : 0U);
    }

    void Enter(std::size_t index) {
        const PdfLine& line = lines_[index];
        if (IsRow(line) || line.right_to_left)
            return;
        std::u32string word;
        for (std::uint32_t letter = 0; letter < line.label; ++letter)
            word += line.letters[letter].letter;
        const std::vector<PdfLabel> readings = LabelsOf(word);
        for (const PdfLabel& reading : readings) {
            if (GoesOn(reading, index))
                return;
        }
        for (const PdfLabel& reading : readings) {
            if (BeginsList(reading) && !(reading.kind == PdfLabelKind::Dash && LeadsNumber(line)))
                Open({reading, {index}});
        }
    }

    // The sign of an amount.
    static bool LeadsNumber(const PdfLine& line) {
        const std::size_t text = line.label + 1U;
        return text < line.letters.size() && IsAsciiDigit(line.letters[text].letter);
    }

    bool GoesOn(const PdfLabel& label, std::size_t index) {
        if (label.kind == PdfLabelKind::Dash && LeadsNumber(lines_[index]))
            return false;
        for (auto open = open_.rbegin(); open != open_.rend(); ++open) {
            Series& series = series_[*open];
            const std::size_t before = series.lines.back();
            if (index - before > kFarthest || !Follows(series.last, label) ||
                !SameEdge(lines_[before], lines_[index]))
                continue;
            series.last = label;
            series.lines.push_back(index);
            return true;
        }
        return false;
    }

    void Open(Series series) {
        if (open_.size() == kOpen)
            open_.pop_front();
        open_.push_back(series_.size());
        series_.push_back(std::move(series));
    }

    // Columns and the pages of a book have edges of their own.
    static bool SameEdge(const PdfLine& a, const PdfLine& b) {
        const float there = a.text_x0 - a.region_x0;
        const float here = b.text_x0 - b.region_x0;
        return a.direction == b.direction && (std::fabs(a.text_x0 - b.text_x0) <= kListEdge ||
                                              std::fabs(there - here) <= kListEdge);
    }

    bool Hangs(std::size_t index) const {
        const PdfLine& line = lines_[index];
        if (index + 1 == lines_.size())
            return false;
        const PdfLine& next = lines_[index + 1];
        const float pitch = next.baseline - line.baseline;
        return next.region == line.region && next.direction == line.direction && pitch > 0 &&
               pitch < kNextLine * line.size && next.label == 0 && next.wide_gaps == 0 &&
               std::fabs(next.x0 - line.text_x0) <= kHang * line.size;
    }

    bool IsProven(const Series& series) const {
        const PdfLabelKind kind = series.last.kind;
        if (kind == PdfLabelKind::Bullet)
            return true;
        if (series.lines.size() < 2)
            return false;
        std::size_t apart = 0;
        for (const std::size_t index : series.lines) {
            if (Hangs(index))
                return true;
            apart += lines_[index].label_gap >= kNoBlank ? 1U : 0U;
        }
        return kind != PdfLabelKind::Decimal && apart * 2 >= series.lines.size();
    }

    std::vector<PdfLine>& lines_;
    std::vector<Series> series_;
    std::deque<std::size_t> open_;
};

}  // namespace

void SettleLabels(std::vector<PdfLine>& lines) {
    Prover(lines).Settle();
}

}  // namespace zorvane
