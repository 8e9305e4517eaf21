#include "load/readers/pdf/pdf_paragraphs.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "load/readers/pdf/pdf_line_flow.h"
#include "load/readers/pdf/pdf_line_join.h"

namespace zorvane {
namespace {

struct Group {
    std::vector<const PdfLine*> lines;
    PdfParagraphSoFar so_far;
};

class Grouper {
  public:
    Grouper(const std::vector<PdfLine>& lines, const PdfParagraphOptions& options)
        : lines_(lines), options_(options), flow_(lines) {}

    std::vector<Group> Groups() {
        for (const PdfLine& line : lines_)
            Add(line);
        return std::move(groups_);
    }
    const PdfLineFlow& Flow() const { return flow_; }

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    void Add(const PdfLine& line) {
        const std::size_t group = GroupFor(line);
        if (group == kNone) {
            groups_.push_back({{&line}, {&line, 1, 0, 0, false}});
            if (!line.running)
                current_ = groups_.size() - 1;
            return;
        }
        Group& target = groups_[group];
        PdfParagraphSoFar& so_far = target.so_far;
        const bool here = so_far.last->region == line.region;
        if (so_far.lines == 1) {
            so_far.body_x0 = line.right_to_left ? -line.x1 : line.x0;
            so_far.pitch = here ? line.baseline - so_far.last->baseline : 1.2F * line.size;
            so_far.centered =
                std::fabs(line.x0 - so_far.last->x0) > 1 &&
                std::fabs(line.x0 + line.x1 - so_far.last->x0 - so_far.last->x1) < 0.6F * line.size;
        } else if (!here) {
            so_far.body_x0 = line.right_to_left ? -line.x1 : line.x0;
        }
        target.lines.push_back(&line);
        so_far.last = &line;
        ++so_far.lines;
        current_ = group;
    }

    std::size_t GroupFor(const PdfLine& line) const {
        if (!options_.merge || line.running || current_ == kNone)
            return kNone;
        const Group& current = groups_[current_];
        if (current.so_far.last->region == line.region)
            return flow_.GoesOn(current.so_far, line) ? current_ : kNone;
        return Elsewhere(line);
    }

    // The paragraph of the last page that goes on: notes in a smaller size may stand behind it.
    std::size_t Elsewhere(const PdfLine& line) const {
        constexpr std::size_t kMostNotes = 12;
        constexpr float kNoteSize = 0.93F;
        for (std::size_t index = groups_.size(); index > 0 && groups_.size() - index < kMostNotes;
             --index) {
            const Group& group = groups_[index - 1];
            const PdfLine& last = *group.so_far.last;
            if (last.running)
                continue;
            if (flow_.GoesOnElsewhere(group.so_far, line))
                return index - 1;
            if (last.size > kNoteSize * line.size || last.page == line.page)
                return kNone;
        }
        return kNone;
    }

    const std::vector<PdfLine>& lines_;
    const PdfParagraphOptions& options_;
    PdfLineFlow flow_;
    std::vector<Group> groups_;
    std::size_t current_ = kNone;
};

// A drawn soft hyphen is a hyphen.
void ShowSoftHyphens(std::vector<PdfLetter>& letters) {
    for (PdfLetter& letter : letters) {
        if (letter.letter == 0xAD)
            letter.letter = U'-';
    }
}

Alignment AlignmentOf(const Group& group, const PdfLineFlow& flow) {
    // Cells stand where their columns are.
    if (group.lines.front()->wide_gaps > 0)
        return Alignment::Left;
    bool centered = true;
    bool right = true;
    bool justified = group.lines.size() > 2;
    for (std::size_t index = 0; index < group.lines.size(); ++index) {
        const PdfLine& line = *group.lines[index];
        const float slack = std::max(2.0F, 0.2F * line.size);
        const float left_room = line.x0 - line.region_x0;
        const float right_room = flow.RightEdge(line) - line.x1;
        centered &= std::fabs(left_room - right_room) <= slack && left_room > 2 * line.size;
        // Ragged lines that all go beyond a column's edge tell that it is not theirs.
        right &= right_room <= slack && left_room > 4 * line.size &&
                 std::fabs(line.x1 - group.lines.front()->x1) <= slack;
        justified &=
            (right_room <= slack && right_room > -2 * line.size) || index + 1 == group.lines.size();
    }
    if (centered)
        return Alignment::Center;
    if (right)
        return Alignment::Right;
    return justified ? Alignment::Justify : Alignment::Left;
}

PdfParagraph ParagraphOf(const Group& group, const PdfParagraphOptions& options,
                         const PdfLineFlow& flow) {
    const PdfLine& first = *group.lines.front();
    PdfParagraph paragraph;
    paragraph.right_to_left = first.right_to_left;
    for (const PdfLine* const line : group.lines)
        JoinLetters(paragraph.letters, line->letters, options.connect_hyphens);
    ShowSoftHyphens(paragraph.letters);
    if (options.by_layout)
        return paragraph;
    if (!first.right_to_left)
        paragraph.label = first.label;
    if (first.direction != PdfDirection::Right)
        return paragraph;
    paragraph.alignment = AlignmentOf(group, flow);
    if (paragraph.alignment == Alignment::Center || paragraph.alignment == Alignment::Right ||
        first.right_to_left)
        return paragraph;
    const PdfLine& body = *group.lines[group.lines.size() > 1 ? 1 : 0];
    const float body_x0 = group.lines.size() > 1 ? body.x0 : body.text_x0;
    paragraph.left_indent = std::max(0.0F, body_x0 - body.region_x0);
    paragraph.first_line_indent = (first.x0 - first.region_x0) - paragraph.left_indent;
    return paragraph;
}

// Gaps between the lines of a layout become empty paragraphs.
std::size_t EmptyLinesBefore(const PdfLine* above, const PdfLine& line) {
    if (above == nullptr || above->region != line.region)
        return 0;
    constexpr float kPitch = 1.2F;  // of the size
    constexpr long kMost = 3;
    const float gap =
        (line.baseline - above->baseline) / (kPitch * std::max(line.size, above->size));
    return static_cast<std::size_t>(std::clamp(std::lround(gap) - 1, 0L, kMost));
}

}  // namespace

std::vector<PdfParagraph> ParagraphsOf(const std::vector<PdfLine>& lines,
                                       const PdfParagraphOptions& options) {
    Grouper grouper(lines, options);
    std::vector<PdfParagraph> paragraphs;
    const PdfLine* above = nullptr;
    for (const Group& group : grouper.Groups()) {
        if (options.by_layout)
            paragraphs.resize(paragraphs.size() + EmptyLinesBefore(above, *group.lines.front()));
        paragraphs.push_back(ParagraphOf(group, options, grouper.Flow()));
        above = group.lines.back();
    }
    return paragraphs;
}

}  // namespace zorvane
