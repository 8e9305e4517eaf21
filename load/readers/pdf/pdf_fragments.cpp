#include "load/readers/pdf/pdf_fragments.h"

#include <algorithm>
#include <cstddef>

namespace zorvane {
namespace {

// Shares of the font size.
constexpr float kNextDrawn = 1.0F;   // widest gap between words drawn one after the other
constexpr float kBlankDrawn = 1.5F;  // with a blank between them
constexpr float kOtherDrawn = 0.6F;  // drawn apart
constexpr float kJump = 0.4F;  // without a blank, where blanks are drawn; 0.6 loses a row in twenty
constexpr float kClear = 0.55F;  // a gap that others continue
constexpr float kFarthestRow = 2.2F;
constexpr std::size_t kRowsOfGap = 5;  // with the gap's own
constexpr std::size_t kMostRows = 16;
constexpr float kMiddle = 0.3F;  // of letters, above the baseline

struct Interval {
    float x0 = 0;
    float x1 = 0;
    float Width() const { return x1 - x0; }
};

// What is clear of words in a row, within an interval; the word behind it, or the row's count.
struct Clear {
    Interval gap;
    std::size_t behind = 0;
};
Clear ClearIn(const PdfWordRow& row, const Interval& wanted) {
    const auto behind = std::partition_point(
        row.words.begin(), row.words.end(),
        [&](const PdfWord& word) { return word.x0 < (wanted.x0 + wanted.x1) / 2; });
    Clear clear{wanted, static_cast<std::size_t>(behind - row.words.begin())};
    if (behind != row.words.end())
        clear.gap.x1 = std::min(clear.gap.x1, behind->x0);
    if (behind != row.words.begin())
        clear.gap.x0 = std::max(clear.gap.x0, (behind - 1)->x1);
    return clear;
}

// Rows with words on both sides of the gap count; those that end before it do not hinder.
void MarkFrom(std::vector<PdfWordRow>& rows, std::size_t first, std::size_t word) {
    const std::vector<PdfWord>& words = rows[first].words;
    Interval gap{words[word - 1].x1, words[word].x0};
    std::vector<PdfWord*> found{&rows[first].words[word]};
    const float least = kClear * rows[first].size;
    const std::size_t end = std::min(rows.size(), first + kMostRows);
    for (std::size_t index = first + 1; index < end; ++index) {
        PdfWordRow& row = rows[index];
        if (row.baseline - rows[index - 1].baseline > kFarthestRow * rows[first].size)
            break;
        const Clear clear = ClearIn(row, gap);
        if (clear.gap.Width() < least)
            break;
        gap = clear.gap;
        if (clear.behind > 0 && clear.behind < row.words.size())
            found.push_back(&row.words[clear.behind]);
    }
    if (found.size() < kRowsOfGap)
        return;
    for (PdfWord* const each : found)
        each->gutter_before = true;
}

// Dots lead to what stands behind them.
bool PartsSegments(const PdfWord& left, const PdfWord& right) {
    const float size = std::max(left.size, right.size);
    const float gap = right.x0 - left.x1;
    if (left.leader || right.leader)
        return false;
    if (right.gutter_before)
        return gap > kClear * size;
    const bool neighbours = right.number == left.number + 1;
    const bool blank = left.blank_after || right.blank_before;
    if (right.jump_before && !left.blank_after)
        return gap > kJump * size;
    if (!neighbours)
        return gap > kOtherDrawn * size;
    return gap > (blank ? kBlankDrawn : kNextDrawn) * size;
}

bool HasUprightBetween(const std::vector<PdfBox>& uprights, const PdfWord& left,
                       const PdfWord& right) {
    const float y = right.baseline - kMiddle * right.size;
    auto rule = std::partition_point(uprights.begin(), uprights.end(),
                                     [&](const PdfBox& each) { return each.x0 < left.x1 - 1; });
    for (; rule != uprights.end() && rule->x0 <= right.x0; ++rule) {
        if (rule->x1 <= right.x0 + 1 && rule->y0 <= y && rule->y1 >= y)
            return true;
    }
    return false;
}

}  // namespace

void MarkClearGaps(std::vector<PdfWordRow>& rows) {
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const float least = kClear * rows[index].size;
        for (std::size_t word = 1; word < rows[index].words.size(); ++word) {
            const std::vector<PdfWord>& words = rows[index].words;
            if (words[word].x0 - words[word - 1].x1 >= least && !words[word].gutter_before)
                MarkFrom(rows, index, word);
        }
    }
}

void AppendSegments(const PdfWordRow& row, const std::vector<PdfBox>& uprights,
                    std::vector<PdfSegment>& segments) {
    bool open = false;
    float right = 0;  // the farthest end so far: a small word may lie within a wide one
    for (const PdfWord& word : row.words) {
        if (open && word.x0 > right) {
            const PdfWord& before = segments.back().words.back();
            open = !PartsSegments(before, word) && !HasUprightBetween(uprights, before, word);
        }
        if (!open) {
            PdfSegment segment;
            segment.x0 = word.x0;
            segment.baseline = row.baseline;
            segment.size = row.size;
            segments.push_back(std::move(segment));
            right = word.x1;
            open = true;
        }
        PdfSegment& segment = segments.back();
        segment.words.push_back(word);
        right = std::max(right, word.x1);
        segment.x1 = right;
    }
}

}  // namespace zorvane
