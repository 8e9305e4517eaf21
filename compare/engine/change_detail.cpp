#include "compare/engine/change_detail.h"

#include <algorithm>

#include "compare/engine/break_aligner.h"
#include "compare/engine/section_lines.h"

namespace zorvane {
namespace {

std::int32_t EndOf(const std::vector<std::int32_t>& ends, std::int32_t number, std::int32_t size) {
    if (number < 1 || ends.empty())
        return 0;
    const auto at = static_cast<std::size_t>(number - 1);
    return std::min(at < ends.size() ? ends[at] : ends.back(), size);
}

DetailPlace PlaceOf(const std::vector<std::int32_t>& ends, std::int32_t first, std::int32_t last,
                    std::int32_t count, std::int32_t size) {
    const std::int32_t end = EndOf(ends, last, size);
    return {first, last, count == 0 ? end : EndOf(ends, first - 1, size), end};
}

std::u16string_view Part(std::u16string_view text, std::int32_t begin, std::int32_t end) {
    return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

enum class Sides { Both, Original, Modified };

// How many sections each side has, the last with its guard blank.
struct SectionTotals {
    std::int32_t original;
    std::int32_t modified;
};

bool IsSeparator(char16_t unit) {
    return unit == u' ' || unit == u'\r' || unit == u'\n' || unit == u'\v' || unit == u'\a';
}

// Writes the sections, ascending, over both texts.
class PieceWriter {
  public:
    PieceWriter(std::u16string_view original, std::u16string_view modified, SectionTotals totals,
                Sides sides)
        : original_(original), modified_(modified), totals_(totals), sides_(sides) {}

    void Same(std::int32_t original_end, std::int32_t modified_end) {
        if (sides_ == Sides::Modified)
            AppendPiece(pieces_, PieceKind::Same, Part(modified_, modified_at_, modified_end));
        else
            AppendPiece(pieces_, PieceKind::Same, Part(original_, original_at_, original_end));
        original_at_ = original_end;
        modified_at_ = modified_end;
    }

    void Different(DifferenceType type, std::int32_t original_end, std::int32_t modified_end) {
        const bool change = type == DifferenceType::Change;
        if (change)
            TrimChange(original_end, modified_end);
        if (sides_ != Sides::Modified)
            AppendPiece(pieces_, change ? PieceKind::ChangedOld : PieceKind::Deleted,
                        Part(original_, original_at_, original_end));
        if (sides_ != Sides::Original)
            AppendPiece(pieces_, change ? PieceKind::ChangedNew : PieceKind::Added,
                        Part(modified_, modified_at_, modified_end));
        original_at_ = original_end;
        modified_at_ = modified_end;
    }

    void Section(const SectionDetail& section) {
        // Behind one side's last word there is no blank; the other side's belongs to what follows.
        const bool original_ended = section.type == DifferenceType::Addition &&
                                    section.original.first == totals_.original &&
                                    EndsInBlank(modified_, section.modified.begin);
        const bool modified_ended = section.type == DifferenceType::Deletion &&
                                    section.modified.first == totals_.modified &&
                                    EndsInBlank(original_, section.original.begin);
        Same(section.original.begin - (modified_ended ? 1 : 0),
             section.modified.begin - (original_ended ? 1 : 0));
        for (const DetailRecord& letters : section.characters) {
            Same(section.original.begin + letters.original.begin,
                 section.modified.begin + letters.modified.begin);
            Different(letters.type, section.original.begin + letters.original.end,
                      section.modified.begin + letters.modified.end);
        }
        if (section.characters.empty())
            Different(section.type, section.original.end, section.modified.end);
        else
            Same(section.original.end, section.modified.end);
    }

    std::vector<Piece> Finish() {
        Same(static_cast<std::int32_t>(original_.size()),
             static_cast<std::int32_t>(modified_.size()));
        return std::move(pieces_);
    }

  private:
    static bool EndsInBlank(std::u16string_view text, std::int32_t end) {
        return end > 0 && text[static_cast<std::size_t>(end - 1)] == u' ';
    }

    // Whole words that both texts of a change begin with, and blanks and breaks that both end in,
    // are not what changed.
    void TrimChange(std::int32_t& original_end, std::int32_t& modified_end) {
        const std::u16string_view old_text = Part(original_, original_at_, original_end);
        const std::u16string_view new_text = Part(modified_, modified_at_, modified_end);
        const auto ends_word = [](std::u16string_view text, std::size_t at) {
            return at == text.size() || (IsSeparator(text[at]) && text[at] != u'\n');
        };
        std::size_t front = 0;
        for (std::size_t at = 0; at < std::min(old_text.size(), new_text.size()); ++at) {
            if (old_text[at] != new_text[at])
                break;
            if (ends_word(old_text, at + 1) && ends_word(new_text, at + 1))
                front = at + 1;
        }
        Same(original_at_ + static_cast<std::int32_t>(front),
             modified_at_ + static_cast<std::int32_t>(front));
        while (original_end > original_at_ && modified_end > modified_at_) {
            const char16_t last = original_[static_cast<std::size_t>(original_end - 1)];
            if (!IsSeparator(last) || last != modified_[static_cast<std::size_t>(modified_end - 1)])
                break;
            --original_end;
            --modified_end;
        }
    }

    std::u16string_view original_;
    std::u16string_view modified_;
    SectionTotals totals_;
    Sides sides_;
    std::int32_t original_at_ = 0;
    std::int32_t modified_at_ = 0;
    std::vector<Piece> pieces_;
};

}  // namespace

void DetailCounts::Add(DifferenceType type) {
    switch (type) {
        case DifferenceType::Addition:
            ++additions;
            return;
        case DifferenceType::Deletion:
            ++deletions;
            return;
        case DifferenceType::Change:
            ++changes;
            return;
    }
}

ChangeDetail::ChangeDetail(const DetailSwitches& switches) : switches_(switches) {
    for (VestrelX* engine : {&mini_, &micro_}) {
        engine->putIgnoreCase(switches.ignore_case);
        engine->putIgnoreWhitespace(switches.ignore_whitespace);
    }
    mini_.putFilterExpression(switches.expressions);
    mini_.putFilterEnabled(switches.use_expressions);
}

void ChangeDetail::Find(std::u16string_view original, std::u16string_view modified) {
    original_ = original;
    modified_ = modified;
    const auto cut = [this](std::u16string_view text, std::string& lines,
                            std::vector<std::int32_t>& ends) {
        // The guard blank gives the last word a separator, so that it equals itself whatever
        // follows.
        guarded_.assign(text).push_back(u' ');
        lines.clear();
        AppendSectionLines(guarded_, lines);
        FindSectionEnds(guarded_, ends);
    };
    cut(original, original_lines_, original_ends_);
    cut(modified, modified_lines_, modified_ends_);
    sections_.clear();
    const auto original_size = static_cast<std::int32_t>(original.size());
    const auto modified_size = static_cast<std::int32_t>(modified.size());
    IgnoreFailure(mini_.CompareText(original_lines_, modified_lines_),
                  "a bad expression has failed at document level");
    const std::vector<DifferenceRecord> records =
        AlignToBreaks(mini_.Records(), {original, original_ends_}, {modified, modified_ends_});
    sections_.reserve(records.size());
    for (const DifferenceRecord& record : records) {
        SectionDetail section;
        section.type = record.type;
        section.original = PlaceOf(original_ends_, record.first_original, record.last_original,
                                   record.OriginalCount(), original_size);
        section.modified = PlaceOf(modified_ends_, record.first_modified, record.last_modified,
                                   record.ModifiedCount(), modified_size);
        section_counts_.Add(record.type);
        if (switches_.by_character && record.type == DifferenceType::Change)
            FindCharacters(section);
        sections_.push_back(std::move(section));
    }
}

namespace {

DetailPlace CharacterPlace(std::u16string_view text, CharacterRange raw, std::int32_t count) {
    const CharacterRange range = WholeCharacters(text, raw);
    const auto size = static_cast<std::int32_t>(text.size());
    const std::int32_t end = std::min(range.last, size);
    return {range.first, range.last, count == 0 ? end : std::min(range.first - 1, size), end};
}

void TakeDoubled(DetailPlace& empty, std::int32_t size, DetailPlace& different) {
    if (empty.first <= size || different.begin == 0)
        return;
    empty.first = empty.last = size;
    --different.first;
    --different.begin;
}

}  // namespace

void ChangeDetail::FindCharacters(SectionDetail& section) {
    const std::u16string_view original =
        Part(original_, section.original.begin, section.original.end);
    const std::u16string_view modified =
        Part(modified_, section.modified.begin, section.modified.end);
    original_lines_.clear();
    modified_lines_.clear();
    AppendCharacterLines(original, original_lines_);
    AppendCharacterLines(modified, modified_lines_);
    IgnoreFailure(micro_.CompareText(original_lines_, modified_lines_), "nothing is filtered here");
    for (const DifferenceRecord& record : micro_.Records()) {
        DetailRecord letters;
        letters.type = record.type;
        letters.original = CharacterPlace(original, {record.first_original, record.last_original},
                                          record.OriginalCount());
        letters.modified = CharacterPlace(modified, {record.first_modified, record.last_modified},
                                          record.ModifiedCount());
        // What equals nothing but the doubled last character of the other side is different, too.
        if (letters.type == DifferenceType::Addition)
            TakeDoubled(letters.original, static_cast<std::int32_t>(original.size()),
                        letters.modified);
        if (letters.type == DifferenceType::Deletion)
            TakeDoubled(letters.modified, static_cast<std::int32_t>(modified.size()),
                        letters.original);
        // The doubled character can also make a record of nothing.
        if (letters.original.Length() == 0 && letters.modified.Length() == 0)
            continue;
        character_counts_.Add(record.type);
        section.characters.push_back(letters);
    }
}

namespace {

std::vector<Piece> Written(std::span<const SectionDetail> sections, PieceWriter writer) {
    for (const SectionDetail& section : sections)
        writer.Section(section);
    return writer.Finish();
}

SectionTotals Totals(const std::vector<std::int32_t>& original,
                     const std::vector<std::int32_t>& modified) {
    return {static_cast<std::int32_t>(original.size()), static_cast<std::int32_t>(modified.size())};
}

}  // namespace

std::vector<Piece> ChangeDetail::MergedPieces() const {
    return Written(sections_, PieceWriter(original_, modified_,
                                          Totals(original_ends_, modified_ends_), Sides::Both));
}
std::vector<Piece> ChangeDetail::OriginalPieces() const {
    return Written(sections_, PieceWriter(original_, modified_,
                                          Totals(original_ends_, modified_ends_), Sides::Original));
}
std::vector<Piece> ChangeDetail::ModifiedPieces() const {
    return Written(sections_, PieceWriter(original_, modified_,
                                          Totals(original_ends_, modified_ends_), Sides::Modified));
}

}  // namespace zorvane
