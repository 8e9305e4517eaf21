#include "load/readers/pdf/pdf_line_flow.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

#include "load/readers/pdf/pdf_line_join.h"

namespace zorvane {
namespace {

// Shares of the font size.
constexpr float kIndent = 0.45F;    // a smaller step is no indentation; flat from 0.3 to 0.8
constexpr float kCenter = 0.3F;     // how exactly lines are centred
constexpr float kSizeStep = 0.03F;  // sizes farther apart differ
constexpr float kMixedSizeStep = 0.2F;

// Of the pitch that is usual or was so far; flat from 1.15 to 1.35.
constexpr float kWidestPitch = 1.22F;
constexpr float kNarrowestPitch = 0.8F;
constexpr float kPitchUnknown = 1.75F;  // of the size, where nothing tells more

char32_t LastLetter(const PdfLine& line) {
    return line.letters.empty() ? 0 : line.letters.back().letter;
}
char32_t FirstLetter(const PdfLine& line) {
    return line.letters.empty() ? 0 : line.letters.front().letter;
}

bool EndsSentence(char32_t letter) {
    constexpr std::u32string_view kEnds = U".!?:;\"\u201D\u3002\uFF01\uFF1F";
    return kEnds.find(letter) != std::u32string_view::npos;
}

// An entry of a table of contents: dots lead to its page.
bool HasLeader(const PdfLine& line) {
    constexpr int kDots = 5;
    int dots = 0;
    for (const PdfLetter& letter : line.letters) {
        const bool dot = letter.letter == U'.' || letter.letter == 0x2026 || letter.letter == U'_';
        if (dot && ++dots == kDots)
            return true;
        if (!dot && letter.letter != U' ')
            dots = 0;
    }
    return false;
}

// Words of another font within a line may be smaller; a heading is larger as a whole.
bool SameSize(const PdfLine& a, const PdfLine& b) {
    const float smallest = std::max(a.smallest, b.smallest);
    const float largest = std::min(a.largest, b.largest);
    return smallest <= largest * (1 + kSizeStep) &&
           std::fabs(a.size - b.size) <= kMixedSizeStep * std::max(a.size, b.size);
}

bool SameMiddle(const PdfLine& a, const PdfLine& b) {
    return std::fabs((a.x0 + a.x1) - (b.x0 + b.x1)) / 2 <= kCenter * a.size;
}

// In a line that runs to the left, start and end are swapped.
float Start(const PdfLine& line) {
    return line.right_to_left ? -line.x1 : line.x0;
}

float TextStart(const PdfLine& line) {
    return line.right_to_left ? -line.x1 : line.text_x0;
}

}  // namespace

PdfLineFlow::PdfLineFlow(const std::vector<PdfLine>& lines)
    : begin_(lines.data()), block_edges_(lines.size(), 0.0F) {
    LearnPitches(lines);
    LearnEdges(lines);
    LearnBlocks(lines);
}

int PdfLineFlow::SizeKey(const PdfLine& line) {
    return static_cast<int>(std::lround(line.size * 2));
}

// The least of the usual distances between lines of one size: where many paragraphs have but one
// line, the distance between paragraphs is the commonest.
void PdfLineFlow::LearnPitches(const std::vector<PdfLine>& lines) {
    std::map<int, std::map<long, int>> counts;
    constexpr float kSteps = 5;  // in a point
    for (std::size_t index = 1; index < lines.size(); ++index) {
        const PdfLine& above = lines[index - 1];
        const PdfLine& line = lines[index];
        const float pitch = line.baseline - above.baseline;
        if (above.region == line.region && SameSize(above, line) &&
            pitch >= kNarrowestPitch * line.size && pitch <= 4 * line.size)
            ++counts[SizeKey(line)][std::lround(pitch * kSteps)];
    }
    // Twice is no habit.
    constexpr int kFewest = 3;
    constexpr int kShare = 6;  // of the commonest
    for (const auto& [size, pitches] : counts) {
        int most = 0;
        for (const auto& [pitch, count] : pitches)
            most = std::max(most, count);
        for (const auto& [pitch, count] : pitches) {
            if (count >= kFewest && count * kShare >= most) {
                pitches_[size] = static_cast<float>(pitch) / kSteps;
                break;
            }
        }
    }
}

// Pages of one column share an edge; other columns are told by their left edges.
int PdfLineFlow::ColumnKey(const PdfLine& line) {
    constexpr float kStep = 8;  // points
    return line.margin_x1 > 0 ? -1 : static_cast<int>(std::lround(line.region_x0 / kStep));
}

// A line that goes on in the next one ends before the edge, and the next word goes beyond it: the
// edge is where most lines agree. What sticks out of a column does not move it.
void PdfLineFlow::LearnEdges(const std::vector<PdfLine>& lines) {
    std::map<int, std::vector<std::pair<float, int>>> votes;
    constexpr float kLongLine = 15;  // of the size
    for (std::size_t index = 0; index + 1 < lines.size(); ++index) {
        const PdfLine& line = lines[index];
        const PdfLine& next = lines[index + 1];
        if (line.direction != PdfDirection::Right || line.region != next.region ||
            line.wide_gaps + next.wide_gaps + next.label > 0 || line.right_to_left ||
            line.x1 - line.x0 < kLongLine * line.size)
            continue;
        std::vector<std::pair<float, int>>& column = votes[ColumnKey(line)];
        // An end comes before a start at the same place, and takes its vote back.
        column.emplace_back(line.x1, 1);
        column.emplace_back(line.x1 + next.first_word + line.blank, -1);
    }
    constexpr int kFewest = 4;
    for (auto& [key, column] : votes) {
        std::sort(column.begin(), column.end());
        int open = 0;
        int most = kFewest - 1;
        for (const auto& [x, step] : column) {
            open += step;
            if (open > most) {
                most = open;
                edges_[key] = x;
            }
        }
    }
}

// Paragraphs with an indentation at the right fill lines of their own length.
void PdfLineFlow::LearnBlocks(const std::vector<PdfLine>& lines) {
    std::size_t first = 0;
    for (std::size_t index = 1; index <= lines.size(); ++index) {
        const bool same =
            index < lines.size() && lines[index].region == lines[first].region &&
            SameSize(lines[index], lines[first]) && lines[index].label == 0 &&
            std::fabs(lines[index].x0 - lines[index - 1].x0) < kIndent * lines[first].size &&
            lines[index].baseline - lines[index - 1].baseline < kPitchUnknown * lines[first].size;
        if (same)
            continue;
        LearnBlock(&lines[first], &lines[index - 1]);
        first = index;
    }
}

void PdfLineFlow::LearnBlock(const PdfLine* first, const PdfLine* last) {
    constexpr std::ptrdiff_t kFewest = 3;
    if (last - first < kFewest || first->right_to_left)
        return;
    float edge = 0;
    for (const PdfLine* line = first; line <= last; ++line)
        edge = std::max(edge, line->x1);
    if (edge >= RightEdge(*first) - first->size)
        return;
    std::ptrdiff_t full = 0;
    for (const PdfLine* line = first; line < last; ++line) {
        if (edge - line->x1 < line[1].first_word + line->blank)
            ++full;
    }
    if (full * 5 < (last - first) * 4)
        return;
    for (const PdfLine* line = first; line <= last; ++line)
        block_edges_[static_cast<std::size_t>(line - begin_)] = edge;
}

float PdfLineFlow::RightEdge(const PdfLine& line) const {
    if (line.direction != PdfDirection::Right)
        return line.region_x1;
    const auto learned = edges_.find(ColumnKey(line));
    return learned != edges_.end() ? learned->second : std::max(line.region_x1, line.margin_x1);
}

// A line that had room for the next word ends its paragraph.
bool PdfLineFlow::IsFull(const PdfLine& line, const PdfLine& next) const {
    const float block_edge = block_edges_[static_cast<std::size_t>(&line - begin_)];
    const float edge = block_edge > 0 ? block_edge : RightEdge(line);
    const float left = line.x0 - line.region_x0;
    const float right = edge - line.x1;
    float room = line.right_to_left ? left : right;
    // Centred lines have room on both sides.
    if (SameMiddle(line, next) && left > line.size &&
        std::fabs(left - right) <= std::max(2.0F, kCenter * line.size))
        room = left + right;
    return room < next.first_word + line.blank;
}

bool PdfLineFlow::PitchFits(const PdfParagraphSoFar& paragraph, const PdfLine& next) const {
    const float pitch = next.baseline - paragraph.last->baseline;
    if (paragraph.lines > 1)
        return pitch <= kWidestPitch * paragraph.pitch &&
               pitch >= kNarrowestPitch * paragraph.pitch;
    const auto known = pitches_.find(SizeKey(next));
    if (pitch <= 0)
        return false;
    const float widest =
        known == pitches_.end() ? kPitchUnknown * next.size : kWidestPitch * known->second;
    return pitch <= widest;
}

bool PdfLineFlow::GoesOn(const PdfParagraphSoFar& paragraph, const PdfLine& next) const {
    const PdfLine& last = *paragraph.last;
    if (next.label > 0 || next.wide_gaps > 0 || last.wide_gaps > 0 || HasLeader(last))
        return false;
    if (last.direction != next.direction || last.right_to_left != next.right_to_left ||
        !SameSize(last, next) || !PitchFits(paragraph, next))
        return false;
    const bool centered = SameMiddle(last, next) && last.x0 > last.region_x0 + last.size;
    if (paragraph.lines > 1 && !(paragraph.centered && centered) &&
        std::fabs(Start(next) - paragraph.body_x0) > kIndent * next.size)
        return false;
    return SentenceGoesOn(last, next) || IsFull(last, next);
}

// A word is parted, or a long line is followed by what begins no sentence.
bool PdfLineFlow::SentenceGoesOn(const PdfLine& line, const PdfLine& next) const {
    if (!IsPdfLowerCase(FirstLetter(next)))
        return false;
    const float width = RightEdge(line) - line.region_x0;
    return IsPdfHyphen(LastLetter(line)) ||
           (!EndsSentence(LastLetter(line)) && line.x1 - line.x0 > 0.5F * width);
}

bool PdfLineFlow::GoesOnElsewhere(const PdfParagraphSoFar& paragraph, const PdfLine& next) const {
    const PdfLine& last = *paragraph.last;
    if (next.label > 0 || next.wide_gaps > 0 || last.wide_gaps > 0 ||
        last.direction != next.direction || last.right_to_left != next.right_to_left ||
        !SameSize(last, next))
        return false;
    const float last_indent =
        paragraph.lines > 1 ? paragraph.body_x0 - last.region_x0 : TextStart(last) - last.region_x0;
    const float next_indent = Start(next) - next.region_x0;
    // The first line of a new paragraph stands farther in than the body of the last.
    if (!last.right_to_left && next_indent > last_indent + kIndent * next.size)
        return false;
    const bool goes_on = IsPdfLowerCase(FirstLetter(next)) || !EndsSentence(LastLetter(last));
    return SentenceGoesOn(last, next) || (goes_on && IsFull(last, next));
}

}  // namespace zorvane
