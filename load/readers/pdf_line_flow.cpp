#include "load/readers/pdf_line_flow.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace zorvane {
namespace {

// Shares of the font size.
constexpr float kIndent = 0.45F;    // a smaller step is no indentation
constexpr float kCenter = 0.3F;     // how exactly lines are centred
constexpr float kBlank = 0.2F;      // the narrowest blank that a line is set with
constexpr float kSizeStep = 0.08F;  // sizes farther apart differ

constexpr float kWidestPitch = 1.22F;  // of the pitch that is usual or was so far
constexpr float kNarrowestPitch = 0.8F;
constexpr float kPitchUnknown = 1.75F;  // of the size, where nothing tells more

char32_t LastLetter(const PdfLine& line) {
    return line.letters.empty() ? 0 : line.letters.back().letter;
}
char32_t FirstLetter(const PdfLine& line) {
    return line.letters.empty() ? 0 : line.letters.front().letter;
}

bool IsHyphen(char32_t letter) {
    return letter == U'-' || letter == 0xAD || letter == 0x2010;
}

// Cased letters of the scripts of Europe; enough to tell whether a sentence goes on.
bool IsLowerCase(char32_t letter) {
    return (letter >= U'a' && letter <= U'z') || (letter >= 0xDF && letter <= 0xFF) ||
           (letter >= 0x3AC && letter <= 0x3CE) || (letter >= 0x430 && letter <= 0x45F) ||
           (letter >= 0x100 && letter <= 0x17F && letter % 2 == 1);
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

bool SameSize(const PdfLine& a, const PdfLine& b) {
    return std::fabs(a.size - b.size) <= kSizeStep * std::max(a.size, b.size);
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
    LearnWidth(lines);
    LearnBlocks(lines);
}

int PdfLineFlow::SizeKey(const PdfLine& line) {
    return static_cast<int>(std::lround(line.size * 2));
}

// The commonest distance between lines of one size.
void PdfLineFlow::LearnPitches(const std::vector<PdfLine>& lines) {
    std::map<std::pair<int, long>, int> counts;
    std::map<int, int> most;
    constexpr float kSteps = 5;  // in a point
    for (std::size_t index = 1; index < lines.size(); ++index) {
        const PdfLine& above = lines[index - 1];
        const PdfLine& line = lines[index];
        const float pitch = line.baseline - above.baseline;
        if (above.region != line.region || !SameSize(above, line) || pitch <= 0 ||
            pitch > 4 * line.size)
            continue;
        const int key = SizeKey(line);
        const int count = ++counts[{key, std::lround(pitch * kSteps)}];
        if (count > most[key]) {
            most[key] = count;
            pitches_[key] = pitch;
        }
    }
    // Twice is no habit.
    constexpr int kFewest = 3;
    std::erase_if(pitches_, [&](const auto& entry) { return most[entry.first] < kFewest; });
}

// The commonest width of columns whose lines fill them; nothing where short lines only are seen.
void PdfLineFlow::LearnWidth(const std::vector<PdfLine>& lines) {
    std::map<long, int> counts;
    int most = 0;
    constexpr float kStep = 4;  // points
    constexpr float kLongLine = 15;
    constexpr float kNearEdge = 2;
    for (const PdfLine& line : lines) {
        const float width = line.region_x1 - line.region_x0;
        if (line.direction != PdfDirection::Right || line.wide_gaps > 0 ||
            line.x1 - line.x0 < kLongLine * line.size ||
            line.x1 < line.region_x1 - kNearEdge * line.size)
            continue;
        const int count = ++counts[std::lround(width / kStep)];
        if (count > most) {
            most = count;
            width_ = width;
        }
    }
    constexpr int kFewest = 4;
    if (most < kFewest)
        width_ = 0;
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
        if (edge - line->x1 < line[1].first_word + kBlank * line->size)
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
    return width_ > 0 ? std::max(line.region_x1, line.region_x0 + width_) : line.margin_x1;
}

float PdfLineFlow::Room(const PdfLine& line, float edge) const {
    const float left = line.x0 - line.region_x0;
    if (line.right_to_left)
        return left;
    const float right = edge - line.x1;
    // A centred line has room on both sides.
    const bool centered =
        left > line.size && std::fabs(left - right) <= std::max(2.0F, kCenter * line.size);
    return centered ? left + right : right;
}

// A line that had room for the next word ends its paragraph.
bool PdfLineFlow::IsFull(const PdfLine& line, const PdfLine& next) const {
    const float block_edge = block_edges_[static_cast<std::size_t>(&line - begin_)];
    const float edge = block_edge > 0 ? block_edge : RightEdge(line);
    return Room(line, edge) < next.first_word + kBlank * line.size;
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
    if (IsHyphen(LastLetter(last)) && IsLowerCase(FirstLetter(next)))
        return true;
    if (IsFull(last, next))
        return true;
    const float width = RightEdge(last) - last.region_x0;
    return IsLowerCase(FirstLetter(next)) && !EndsSentence(LastLetter(last)) &&
           last.x1 - last.x0 > 0.5F * width;
}

bool PdfLineFlow::GoesOnElsewhere(const PdfParagraphSoFar& paragraph, const PdfLine& next) const {
    const PdfLine& last = *paragraph.last;
    if (next.label > 0 || next.wide_gaps > 0 || last.wide_gaps > 0 ||
        last.direction != next.direction || !SameSize(last, next))
        return false;
    const float last_indent =
        paragraph.lines > 1 ? paragraph.body_x0 - last.region_x0 : TextStart(last) - last.region_x0;
    const float next_indent = Start(next) - next.region_x0;
    // The first line of a new paragraph stands farther in than the body of the last.
    if (!last.right_to_left && next_indent > last_indent + kIndent * next.size)
        return false;
    const bool goes_on = IsLowerCase(FirstLetter(next)) || !EndsSentence(LastLetter(last));
    return goes_on && (IsHyphen(LastLetter(last)) || IsFull(last, next));
}

}  // namespace zorvane
