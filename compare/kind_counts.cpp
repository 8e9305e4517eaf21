#include "compare/kind_counts.h"

#include <algorithm>
#include <map>
#include <string>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

// Shorter paragraphs stand in two places by chance.
constexpr std::size_t kLeastMoved = 20;

// The same three forms as in `NumberLength`; a star would be a wildcard here.
constexpr const char* kNumbers =
    "^[ \\t]{0,9}(?:§ ?[0-9]{1,4}[a-z]?|\\(?[0-9]{1,4}(?:\\.[0-9]{1,4}){1,8}[.)]{0,2}|"
    "\\(?(?:[0-9]{1,4}|[ivxIVX]{1,7})[.)]{1,2}|\\(?[A-Za-z]\\))[ \\t]{1,9}";

bool IsBlank(char16_t letter) {
    constexpr char16_t kNoBreak = 0xA0;
    return letter == u' ' || letter == u'\t' || letter == u'\r' || letter == u'\n' ||
           letter == kNoBreak;
}
bool IsRoman(char16_t letter) {
    const char16_t lower = letter | 0x20;
    return lower == u'i' || lower == u'v' || lower == u'x';
}

// A cursor over the front of a paragraph.
class Front {
  public:
    explicit Front(std::u16string_view text) : text_(text) {}
    template <class Fits>
    std::size_t Take(Fits fits, std::size_t most) {
        const std::size_t begin = at_;
        while (at_ < text_.size() && at_ - begin < most && fits(text_[at_]))
            ++at_;
        return at_ - begin;
    }
    bool Take(char16_t letter) {
        return Take([letter](char16_t found) { return found == letter; }, 1) == 1;
    }
    std::size_t At() const { return at_; }
    void GoBack(std::size_t place) { at_ = place; }

  private:
    std::u16string_view text_;
    std::size_t at_ = 0;
};

bool IsClosing(char16_t letter) {
    return letter == u'.' || letter == u')';
}

bool TakeNumber(Front& front) {
    constexpr std::size_t kDigits = 4;
    if (front.Take(u'§')) {
        front.Take(u' ');
        const bool number = front.Take(IsAsciiDigit<char16_t>, kDigits) > 0;
        front.Take(IsAsciiLower<char16_t>, 1);
        return number;
    }
    front.Take(u'(');
    const std::size_t core = front.At();
    if (front.Take(IsAsciiDigit<char16_t>, kDigits) > 0) {
        std::size_t levels = 0;
        for (std::size_t before = front.At(); front.Take(u'.'); before = front.At()) {
            if (front.Take(IsAsciiDigit<char16_t>, kDigits) == 0) {
                front.GoBack(before);
                break;
            }
            ++levels;
        }
        return front.Take(IsClosing, 2) > 0 || levels > 0;
    }
    if (front.Take(IsRoman, 7) > 0 && front.Take(IsClosing, 2) > 0)
        return true;
    front.GoBack(core);
    return front.Take(IsAsciiLetter<char16_t>, 1) > 0 && front.Take(u')');
}

// Walks two texts that are equal but for case and blanks, and counts both.
class EqualWalk {
  public:
    explicit EqualWalk(KindCounts& counts) : counts_(counts) {}

    /// False where more than case and blanks differs; what came before it is counted.
    bool Count(std::u16string_view one, std::u16string_view other) {
        if (one == other)
            return true;
        one_ = one;
        other_ = other;
        at_one_ = at_other_ = 0;
        while (at_one_ < one.size() || at_other_ < other.size()) {
            if (!CountBlanks() || !CountWord())
                return false;
        }
        return true;
    }

  private:
    bool CountBlanks() {
        const std::size_t begin_one = at_one_;
        const std::size_t begin_other = at_other_;
        while (at_one_ < one_.size() && IsBlank(one_[at_one_]))
            ++at_one_;
        while (at_other_ < other_.size() && IsBlank(other_[at_other_]))
            ++at_other_;
        if (one_.substr(begin_one, at_one_ - begin_one) !=
            other_.substr(begin_other, at_other_ - begin_other))
            ++counts_.blanks;
        return true;
    }
    // Up to the next blank of either text.
    bool CountWord() {
        bool differs = false;
        while (at_one_ < one_.size() && at_other_ < other_.size() && !IsBlank(one_[at_one_]) &&
               !IsBlank(other_[at_other_])) {
            const char16_t letter = one_[at_one_++];
            const char16_t partner = other_[at_other_++];
            if (letter == partner)
                continue;
            if (FoldCase({&letter, 1}) != FoldCase({&partner, 1}))
                return false;
            differs = true;
        }
        counts_.letter_case += differs ? 1 : 0;
        const bool one_done = at_one_ == one_.size();
        const bool other_done = at_other_ == other_.size();
        // One of them goes on with letters where the other has ended: not equal after all.
        return !((one_done && !other_done && !IsBlank(other_[at_other_])) ||
                 (other_done && !one_done && !IsBlank(one_[at_one_])));
    }

    KindCounts& counts_;
    std::u16string_view one_;
    std::u16string_view other_;
    std::size_t at_one_ = 0;
    std::size_t at_other_ = 0;
};

void CountEqual(std::u16string_view original, std::u16string_view modified, KindCounts& counts) {
    if (original == modified)
        return;
    const std::size_t number = NumberLength(original);
    const std::size_t other = NumberLength(modified);
    if (original.substr(0, number) != modified.substr(0, other)) {
        ++counts.numbering;
        original.remove_prefix(number);
        modified.remove_prefix(other);
    }
    EqualWalk(counts).Count(original, modified);
}

std::u16string_view PartOf(std::u16string_view text, std::size_t begin, std::size_t end) {
    begin = std::min(begin, text.size());
    return text.substr(begin, std::max(begin, end) - begin);
}

bool InsideNumber(std::u16string_view text, const DetailPlace& place) {
    const auto begin = static_cast<std::size_t>(place.begin);
    const std::size_t line = begin == 0 ? std::u16string_view::npos : text.rfind(u'\n', begin - 1);
    const std::size_t first = line == std::u16string_view::npos ? 0 : line + 1;
    return static_cast<std::size_t>(place.end) <=
           first + NumberLength(PartOf(text, first, text.size()));
}

// A difference that is counted, by what it would be were its kind left out.
void CountSection(const PerSide<std::u16string_view>& texts, const SectionDetail& section,
                  KindCounts& counts) {
    if (InsideNumber(texts.original, section.places.original) &&
        InsideNumber(texts.modified, section.places.modified)) {
        ++counts.numbering;
        return;
    }
    const auto part = [&](Side side) {
        const DetailPlace& place = section.places[side];
        return PartOf(texts[side], static_cast<std::size_t>(place.begin),
                      static_cast<std::size_t>(place.end));
    };
    KindCounts found;
    if (!EqualWalk(found).Count(part(Side::Original), part(Side::Modified)))
        return;
    counts.letter_case += found.letter_case;
    counts.blanks += found.blanks;
}

void CountRecord(const Comparison& comparison, std::size_t at, KindCounts& counts) {
    const DifferenceRecord& record = comparison.records[at];
    PerSide<std::u16string> buffers;
    const PerSide<std::u16string_view> texts{
        comparison.Text(Side::Original, record, buffers.original),
        comparison.Text(Side::Modified, record, buffers.modified)};
    PerSide<std::size_t> done{0, 0};
    for (const SectionDetail& section : comparison.SectionsOf(at)) {
        const auto begin = [&](Side side) {
            return static_cast<std::size_t>(section.places[side].begin);
        };
        EqualWalk(counts).Count(PartOf(texts.original, done.original, begin(Side::Original)),
                                PartOf(texts.modified, done.modified, begin(Side::Modified)));
        CountSection(texts, section, counts);
        for (const Side side : kBothSides)
            done[side] = static_cast<std::size_t>(section.places[side].end);
    }
    EqualWalk(counts).Count(PartOf(texts.original, done.original, texts.original.size()),
                            PartOf(texts.modified, done.modified, texts.modified.size()));
}

// Where nobody looked for moves: whole records whose words stand elsewhere on the other side.
std::int32_t LikelyMoves(const Comparison& comparison) {
    std::map<std::u16string, std::int32_t> gone;
    for (const DifferenceRecord& record : comparison.records) {
        if (record.type == DifferenceType::Deletion)
            ++gone[comparison.Text(Side::Original, record)];
    }
    std::int32_t moves = 0;
    for (const DifferenceRecord& record : comparison.records) {
        if (record.type != DifferenceType::Addition || gone.empty())
            continue;
        const std::u16string text = comparison.Text(Side::Modified, record);
        const auto found = gone.find(text);
        if (text.size() >= kLeastMoved && found != gone.end() && found->second-- > 0)
            ++moves;
    }
    return moves;
}

}  // namespace

std::size_t NumberLength(std::u16string_view paragraph) {
    constexpr std::size_t kMostBlanks = 9;
    const auto gap = [](char16_t letter) { return letter == u' ' || letter == u'\t'; };
    Front front(paragraph);
    front.Take(gap, kMostBlanks);
    return TakeNumber(front) && front.Take(gap, kMostBlanks) > 0 ? front.At() : 0;
}

void LeaveNumberingOut(CompareOptions& options) {
    // The user's own expressions hold inside paragraphs only where the user said so.
    options.filter_sections = options.filter_sections || options.expressions.empty();
    options.expressions += (options.expressions.empty() ? "" : "@@") + std::string(kNumbers);
}

KindCounts CountKinds(const Comparison& comparison) {
    KindCounts counts;
    const std::vector<std::int32_t> partners = comparison.Partners();
    std::size_t record = 0;
    for (std::size_t at = 0; at < partners.size(); ++at) {
        const auto number = static_cast<std::int32_t>(at) + 1;
        while (record < comparison.records.size() &&
               comparison.records[record].paragraphs[Side::Original].last.value < number)
            ++record;
        const bool inside =
            record < comparison.records.size() &&
            comparison.records[record].Count(Side::Original) > 0 &&
            comparison.records[record].paragraphs[Side::Original].first.value <= number;
        if (inside || partners[at] == 0)
            continue;
        const DifferenceRecord pair{DifferenceType::Change,
                                    {{number, number}, {partners[at], partners[at]}}};
        PerSide<std::u16string> buffers;
        CountEqual(comparison.Text(Side::Original, pair, buffers.original),
                   comparison.Text(Side::Modified, pair, buffers.modified), counts);
    }
    for (std::size_t at = 0; at < comparison.records.size(); ++at) {
        if (comparison.records[at].type == DifferenceType::Change)
            CountRecord(comparison, at, counts);
    }
    counts.moves = comparison.moves.empty() ? LikelyMoves(comparison)
                                            : static_cast<std::int32_t>(comparison.moves.size());
    for (const BesideNote& note : comparison.beside)
        counts.formatting += note.kind == "formatting" ? 1 : 0;
    return counts;
}

}  // namespace zorvane
