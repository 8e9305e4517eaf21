#include "load/readers/pdf_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zorvane {
namespace {

// All shares are shares of the font size.
constexpr float kWordGap = 0.1F;       // a wider gap parts two words
constexpr float kFarthestBack = 0.7F;  // an accent is drawn over the letter before it
constexpr float kSameBaseline = 0.05F;
constexpr float kSameSize = 0.05F;
constexpr float kTwinX = 0.15F;  // a word this near to an equal one is that word again
constexpr float kTwinY = 0.2F;
constexpr float kWideGap = 1.5F;             // where nothing says that a blank is meant
constexpr float kWideGapBehindBlank = 2.5F;  // a justified line stretches its blanks
constexpr float kSegmentGap = 0.9F;          // a gutter between columns may be this narrow

bool IsWanted(const PdfCharacter& character, PdfDirection direction, const PdfHiddenText& hidden) {
    if (character.direction != direction)
        return false;
    if (character.hidden == PdfHidden::InvisibleMode)
        return !hidden.drop_invisible_mode;
    return character.hidden == PdfHidden::No || !hidden.drop_unseen;
}

bool Continues(const PdfWord& word, const PdfCharacter& last, const PdfCharacter& next) {
    const float size = word.size;
    const float gap = next.x0 - last.x1;
    return std::fabs(next.baseline - word.baseline) <= kSameBaseline * size &&
           std::fabs(next.size - size) <= kSameSize * size && gap <= kWordGap * size &&
           gap >= -kFarthestBack * size;
}

bool IsTwin(const PdfCharacter& a, const PdfCharacter& b) {
    return a.letter == b.letter && std::fabs(a.x0 - b.x0) <= kWordGap * a.size &&
           std::fabs(a.baseline - b.baseline) <= kTwinY * a.size && a.x1 - a.x0 > kWordGap * a.size;
}

bool EqualLetters(const std::vector<PdfCharacter>& characters, const PdfWord& a, const PdfWord& b) {
    if (a.count != b.count)
        return false;
    for (std::uint32_t index = 0; index < a.count; ++index) {
        if (characters[a.first + index].letter != characters[b.first + index].letter)
            return false;
    }
    return true;
}

/// Rows as they are found from top to bottom.
struct Row {
    float baseline = 0;
    float size = 0;
    std::vector<PdfWord> words;
};

bool IsInRow(const Row& row, const PdfWord& word) {
    const float smaller = std::min(row.size, word.size);
    const float top = std::max(row.baseline - 0.75F * row.size, word.baseline - 0.75F * word.size);
    const float bottom =
        std::min(row.baseline + 0.25F * row.size, word.baseline + 0.25F * word.size);
    return bottom - top >= 0.5F * smaller &&
           std::fabs(row.baseline - word.baseline) <= 0.75F * smaller;
}

void AddToRow(Row& row, const PdfWord& word) {
    // The largest words carry the row; what is raised or lowered is smaller.
    if (word.size > row.size * 1.05F) {
        row.size = word.size;
        row.baseline = word.baseline;
    }
    row.words.push_back(word);
}

std::vector<Row> RowsOf(std::vector<PdfWord> words) {
    std::stable_sort(words.begin(), words.end(),
                     [](const PdfWord& a, const PdfWord& b) { return a.baseline < b.baseline; });
    std::vector<Row> rows;
    constexpr std::size_t kLookedAt = 3;  // rows that may still be open at a baseline
    for (const PdfWord& word : words) {
        const std::size_t end = rows.size();
        std::size_t best = end;
        for (std::size_t index = end > kLookedAt ? end - kLookedAt : 0; index < end; ++index) {
            if (IsInRow(rows[index], word) &&
                (best == end || std::fabs(rows[index].baseline - word.baseline) <
                                    std::fabs(rows[best].baseline - word.baseline)))
                best = index;
        }
        if (best == end)
            rows.push_back({word.baseline, word.size, {}});
        AddToRow(rows[best], word);
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const Row& a, const Row& b) { return a.baseline < b.baseline; });
    return rows;
}

void DropTwins(const std::vector<PdfCharacter>& characters, std::vector<PdfWord>& words) {
    std::size_t kept = 0;
    for (std::size_t index = 0; index < words.size(); ++index) {
        bool twin = false;
        for (std::size_t back = kept; back > 0 && !twin && kept - back < 4; --back) {
            const PdfWord& other = words[back - 1];
            twin = std::fabs(other.x0 - words[index].x0) <= kTwinX * other.size &&
                   std::fabs(other.baseline - words[index].baseline) <= kTwinY * other.size &&
                   EqualLetters(characters, other, words[index]);
        }
        if (!twin)
            words[kept++] = words[index];
    }
    words.resize(kept);
}

bool PartsSegments(const PdfWord& left, const PdfWord& right) {
    const float size = std::max(left.size, right.size);
    const float gap = right.x0 - left.x1;
    const bool neighbours = right.number == left.number + 1;
    return gap > size * (neighbours ? kWideGap : kSegmentGap);
}

void AddSegments(Row& row, std::uint32_t number, std::vector<PdfSegment>& segments) {
    bool open = false;
    float right = 0;  // the farthest end so far: a small word may lie within a wide one
    for (const PdfWord& word : row.words) {
        if (open && PartsSegments(segments.back().words.back(), word) && word.x0 > right)
            open = false;
        if (!open) {
            segments.push_back({{}, word.x0, word.x1, row.baseline, row.size, number});
            right = word.x1;
            open = true;
        }
        PdfSegment& segment = segments.back();
        segment.words.push_back(word);
        right = std::max(right, word.x1);
        segment.x1 = right;
    }
}

// A row may hold columns whose baselines and sizes differ: each segment takes its own.
void SettleBaseline(PdfSegment& segment) {
    segment.size = 0;
    for (const PdfWord& word : segment.words) {
        if (word.size > segment.size * 1.05F) {
            segment.size = word.size;
            segment.baseline = word.baseline;
        }
    }
}

}  // namespace

bool IsPdfBlank(char32_t letter) {
    return letter == ' ' || letter == '\t' || letter == 0xA0 ||
           (letter >= 0x2000 && letter <= 0x200A) || letter == 0x202F || letter == 0x205F ||
           letter == 0x3000;
}

PdfGap GapBetween(const PdfWord& left, const PdfWord& right) {
    const float size = std::max(std::min(left.size, right.size), 0.1F);
    const float gap = right.x0 - left.x1;
    const bool neighbours = right.number == left.number + 1;
    const bool blank = neighbours && (left.blank_after || right.blank_before);
    if (gap > size * (blank ? kWideGapBehindBlank : kWideGap))
        return PdfGap::Wide;
    return blank || gap > size * kWordGap || left.blank_after ? PdfGap::Blank : PdfGap::None;
}

std::vector<PdfWord> WordsOf(const std::vector<PdfCharacter>& characters, PdfDirection direction,
                             const PdfHiddenText& hidden) {
    std::vector<PdfWord> words;
    bool open = false;
    bool blank = false;
    std::size_t last = 0;
    for (std::size_t index = 0; index < characters.size(); ++index) {
        const PdfCharacter& character = characters[index];
        if (!IsWanted(character, direction, hidden)) {
            open = false;
            continue;
        }
        if (IsPdfBlank(character.letter)) {
            if (open)
                words.back().blank_after = true;
            open = false;
            blank = true;
            continue;
        }
        if (open && IsTwin(characters[last], character)) {
            open = false;
            continue;
        }
        if (!open || !Continues(words.back(), characters[last], character)) {
            PdfWord word;
            word.first = static_cast<std::uint32_t>(index);
            word.x0 = character.x0;
            word.x1 = character.x1;
            word.baseline = character.baseline;
            word.size = character.size;
            word.number = static_cast<std::uint32_t>(words.size());
            word.blank_before = blank;
            words.push_back(word);
        }
        PdfWord& word = words.back();
        word.count = static_cast<std::uint32_t>(index - word.first + 1);
        word.x0 = std::min(word.x0, character.x0);
        word.x1 = std::max(word.x1, character.x1);
        open = true;
        blank = false;
        last = index;
    }
    return words;
}

std::vector<PdfSegment> SegmentsOf(const std::vector<PdfCharacter>& characters,
                                   std::vector<PdfWord> words) {
    std::vector<PdfSegment> segments;
    std::uint32_t number = 0;
    for (Row& row : RowsOf(std::move(words))) {
        std::stable_sort(row.words.begin(), row.words.end(),
                         [](const PdfWord& a, const PdfWord& b) { return a.x0 < b.x0; });
        DropTwins(characters, row.words);
        AddSegments(row, number++, segments);
    }
    for (PdfSegment& segment : segments)
        SettleBaseline(segment);
    return segments;
}

}  // namespace zorvane
