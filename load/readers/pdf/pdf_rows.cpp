#include "load/readers/pdf/pdf_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "common/base/ascii.h"
#include "load/readers/pdf/pdf_fragments.h"

namespace zorvane {
namespace {

// All shares are shares of the font size.
// A wider gap parts two words. Sharp: at 0.08 words break, at 0.18 they run together.
constexpr float kWordGap = 0.1F;
constexpr float kNarrowestBlank = 0.04F;
constexpr float kRowJump = 0.4F;
constexpr float kFarthestBack = 0.7F;  // an accent is drawn over the letter before it
constexpr float kSameBaseline = 0.05F;
constexpr float kSameSize = 0.05F;
constexpr float kTwinX = 0.15F;  // a word this near to an equal one is that word again
constexpr float kTwinY = 0.2F;
constexpr float kWideGap = 1.5F;             // where nothing says that a blank is meant
constexpr float kWideGapBehindBlank = 2.5F;  // a justified line stretches its blanks
constexpr float kOneRow = 0.12F;             // baselines of one row differ by no more
constexpr float kNearRow = 0.4F;
constexpr float kScriptSize = 0.85F;
constexpr float kScriptGap = 0.4F;

bool IsWanted(const PdfCharacter& character, PdfDirection direction, const PdfHiddenText& hidden) {
    if (character.direction != direction)
        return false;
    if (character.hidden == PdfHidden::InvisibleMode)
        return !hidden.drop_invisible_mode;
    return character.hidden == PdfHidden::No || !hidden.drop_unseen;
}

bool Continues(const PdfWord& word, const PdfCharacter& next) {
    const float size = word.size;
    const float gap = next.x0 - word.x1;
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

using Row = PdfWordRow;

float Top(const Row& row) {
    return row.baseline - 0.75F * row.size;
}
float Bottom(const Row& row) {
    return row.baseline + 0.25F * row.size;
}

void SortByPlace(std::vector<PdfWord>& words) {
    std::ranges::stable_sort(words, {}, &PdfWord::x0);
}

// The largest words carry a row; what is raised or lowered is smaller.
void SettleRow(Row& row) {
    row.size = 0;
    for (const PdfWord& word : row.words) {
        if (word.size > row.size * 1.05F) {
            row.size = word.size;
            row.baseline = word.baseline;
        }
    }
}

// Words on one baseline, from top to bottom.
std::vector<Row> BaselinesOf(std::vector<PdfWord> words) {
    std::ranges::stable_sort(words, {}, &PdfWord::baseline);
    std::vector<Row> rows;
    for (const PdfWord& word : words) {
        if (rows.empty() ||
            word.baseline - rows.back().baseline > kOneRow * std::min(word.size, rows.back().size))
            rows.push_back({word.baseline, word.size, {}});
        rows.back().words.push_back(word);
    }
    for (Row& row : rows) {
        SettleRow(row);
        SortByPlace(row.words);
    }
    return rows;
}

// Whether a raised or lowered word stands at, or within, the words of a row.
bool IsScriptOf(const Row& host, const PdfWord& word) {
    if (word.size > kScriptSize * host.size)
        return false;
    const Row alone{word.baseline, word.size, {}};
    const float common = std::min(Bottom(host), Bottom(alone)) - std::max(Top(host), Top(alone));
    if (common < 0.5F * word.size || std::fabs(host.baseline - word.baseline) > 0.6F * host.size)
        return false;
    auto next = std::lower_bound(host.words.begin(), host.words.end(), word.x0,
                                 [](const PdfWord& each, float x) { return each.x0 < x; });
    const float reach = kScriptGap * host.size;
    if (next != host.words.end() && next->x0 - word.x1 <= reach)
        return true;
    return next != host.words.begin() && word.x0 - (--next)->x1 <= reach;
}

// Moves scripts from their own baselines to the row that they belong to.
void AttachScripts(std::vector<Row>& rows) {
    constexpr std::size_t kLookedAt = 6;  // rows above and below
    for (std::size_t index = 0; index < rows.size(); ++index) {
        Row& row = rows[index];
        const std::size_t first = index > kLookedAt ? index - kLookedAt : 0;
        const std::size_t end = std::min(rows.size(), index + kLookedAt + 1);
        std::erase_if(row.words, [&](const PdfWord& word) {
            for (std::size_t host = first; host < end; ++host) {
                if (host == index || !IsScriptOf(rows[host], word))
                    continue;
                rows[host].words.insert(
                    std::upper_bound(
                        rows[host].words.begin(), rows[host].words.end(), word,
                        [](const PdfWord& a, const PdfWord& b) { return a.x0 < b.x0; }),
                    word);
                return true;
            }
            return false;
        });
    }
    std::erase_if(rows, [](const Row& row) { return row.words.empty(); });
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

// Where blanks are drawn, a gap without one leads to another cell.
bool IsJump(const PdfWord& left, const PdfWord& right) {
    return right.jump_before && !left.blank_after;
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

// Segments of nearly one height that leave each other room are one row to a reader.
void NumberRows(std::vector<PdfSegment>& segments) {
    constexpr std::size_t kMostRowsLooked = 40;
    std::size_t first = 0;  // of the row
    std::uint32_t number = 0;
    for (std::size_t index = 0; index < segments.size(); ++index) {
        PdfSegment& segment = segments[index];
        const float size = std::min(segment.size, segments[first].size);
        bool joins = std::fabs(segment.baseline - segments[first].baseline) <= kNearRow * size;
        const std::size_t from = index - first > kMostRowsLooked ? index - kMostRowsLooked : first;
        for (std::size_t other = from; joins && other < index; ++other)
            joins = segment.x0 >= segments[other].x1 || segment.x1 <= segments[other].x0;
        if (!joins) {
            first = index;
            ++number;
        }
        segment.row = number;
    }
    std::stable_sort(segments.begin(), segments.end(),
                     [](const PdfSegment& a, const PdfSegment& b) {
                         return a.row != b.row ? a.row < b.row : a.x0 < b.x0;
                     });
}

// Three dots and more, and nothing else.
void MarkLeaders(const std::vector<PdfCharacter>& characters, std::vector<PdfWord>& words) {
    constexpr std::uint32_t kFewest = 3;
    for (PdfWord& word : words) {
        word.leader = word.count >= kFewest;
        for (std::uint32_t index = 0; word.leader && index < word.count; ++index) {
            const char32_t letter = characters[word.first + index].letter;
            word.leader = letter == U'.' || letter == 0x2026 || letter == U'_' || letter == 0xB7;
        }
    }
}

void FindJumps(std::vector<PdfWord>& words) {
    std::size_t blanks = 0;
    for (const PdfWord& word : words)
        blanks += word.blank_before ? 1U : 0U;
    if (blanks * 2 < words.size())
        return;
    for (PdfWord& word : words)
        word.jump_before = !word.blank_before;
}

}  // namespace

void PdfDigitShare::Add(const std::vector<PdfCharacter>& characters, const PdfWord& word) {
    letters_ += word.count;
    for (std::uint32_t index = 0; index < word.count; ++index)
        digits_ += IsAsciiDigit(characters[word.first + index].letter) ? 1U : 0U;
}

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
    if ((left.leader || right.leader) && gap > size * kWordGap)
        return PdfGap::Blank;
    if (IsJump(left, right) && gap > size * kRowJump)
        return PdfGap::Wide;
    if (gap > size * (blank ? kWideGapBehindBlank : kWideGap))
        return PdfGap::Wide;
    // A blank may be drawn somewhere else.
    const bool drawn = (left.blank_after || right.blank_before) && gap > size * kNarrowestBlank;
    return drawn || gap > size * kWordGap ? PdfGap::Blank : PdfGap::None;
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
        if (!open || !Continues(words.back(), character)) {
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
    FindJumps(words);
    return words;
}

std::vector<PdfSegment> SegmentsOf(const std::vector<PdfCharacter>& characters,
                                   std::vector<PdfWord> words, std::vector<PdfBox> uprights) {
    std::ranges::sort(uprights, {}, &PdfBox::x0);
    MarkLeaders(characters, words);
    std::vector<Row> rows = BaselinesOf(std::move(words));
    AttachScripts(rows);
    std::vector<PdfSegment> segments;
    for (Row& row : rows)
        DropTwins(characters, row.words);
    MarkClearGaps(rows);
    for (const Row& row : rows)
        AppendSegments(row, uprights, segments);
    for (PdfSegment& segment : segments)
        SettleBaseline(segment);
    NumberRows(segments);
    return segments;
}

}  // namespace zorvane
