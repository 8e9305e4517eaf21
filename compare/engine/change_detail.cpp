#include "compare/engine/change_detail.h"

#include <algorithm>

#include "compare/engine/section_lines.h"

namespace zorvane {
namespace {

// Paragraphs belong together when at least this part of the shorter one stayed.
constexpr std::int32_t kLeastSharedPart = 4;

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

void Append(std::vector<Piece>& pieces, PieceKind kind, std::u16string_view text) {
    if (text.empty())
        return;
    if (!pieces.empty() && pieces.back().kind == kind)
        pieces.back().text += text;
    else
        pieces.push_back({kind, std::u16string(text)});
}

std::u16string_view Part(std::u16string_view text, std::int32_t begin, std::int32_t end) {
    return text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

// One side's sections, and which places between two of them lie inside a break.
struct SectionSide {
    std::u16string_view text;
    const std::vector<std::int32_t>& ends;

    std::int32_t Count() const { return static_cast<std::int32_t>(ends.size()); }
    // Whether the place behind section `number` is between a CR and its LF.
    bool InsideBreak(std::int32_t number) const {
        if (number < 1 || number >= Count())
            return false;
        const auto end = static_cast<std::size_t>(ends[static_cast<std::size_t>(number - 1)]);
        return text[end - 1] == u'\r' && text[end] == u'\n';
    }
};

// A record as the places in front of and behind its sections.
struct Span {
    std::int32_t original_begin;
    std::int32_t original_end;
    std::int32_t modified_begin;
    std::int32_t modified_end;
};

Span SpanOf(const DifferenceRecord& record) {
    const bool addition = record.type == DifferenceType::Addition;
    const bool deletion = record.type == DifferenceType::Deletion;
    return {addition ? record.first_original : record.first_original - 1, record.last_original,
            deletion ? record.first_modified : record.first_modified - 1, record.last_modified};
}

DifferenceRecord RecordOf(const Span& span) {
    if (span.original_begin == span.original_end)
        return {DifferenceType::Addition, span.original_begin, span.original_begin,
                span.modified_begin + 1, span.modified_end};
    if (span.modified_begin == span.modified_end)
        return {DifferenceType::Deletion, span.original_begin + 1, span.original_end,
                span.modified_begin, span.modified_begin};
    return {DifferenceType::Change, span.original_begin + 1, span.original_end,
            span.modified_begin + 1, span.modified_end};
}

// The two halves of a break are sections of their own and all look alike to the engine (an empty
// line), so a record may begin or end between them. What people read knows only whole breaks: such
// a record slides on by one section where that is the same difference, else it takes the half it
// cuts off with it.
class BreakAligner {
  public:
    BreakAligner(SectionSide original, SectionSide modified)
        : original_(original), modified_(modified) {}

    std::vector<DifferenceRecord> Run(const std::vector<DifferenceRecord>& records) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            const bool last = i + 1 == records.size();
            const Span end{original_.Count(), 0, modified_.Count(), 0};
            Take(SpanOf(records[i]), last ? end : SpanOf(records[i + 1]));
        }
        std::vector<DifferenceRecord> aligned;
        aligned.reserve(spans_.size());
        for (const Span& span : spans_)
            aligned.push_back(RecordOf(span));
        return aligned;
    }

  private:
    bool CutsAt(std::int32_t original, std::int32_t modified) const {
        return original_.InsideBreak(original) || modified_.InsideBreak(modified);
    }

    void Take(Span span, const Span& next) {
        const bool one_sided =
            span.original_begin == span.original_end || span.modified_begin == span.modified_end;
        if (one_sided && original_.InsideBreak(span.original_begin) &&
            original_.InsideBreak(span.original_end) &&
            modified_.InsideBreak(span.modified_begin) &&
            modified_.InsideBreak(span.modified_end) && span.original_end < next.original_begin) {
            span = {span.original_begin + 1, span.original_end + 1, span.modified_begin + 1,
                    span.modified_end + 1};
        }
        const std::int32_t lowest = spans_.empty() ? 0 : spans_.back().original_end;
        while (CutsAt(span.original_begin, span.modified_begin) && span.original_begin > lowest) {
            --span.original_begin;
            --span.modified_begin;
        }
        while (CutsAt(span.original_end, span.modified_end) &&
               span.original_end < next.original_begin) {
            ++span.original_end;
            ++span.modified_end;
        }
        if (!spans_.empty() && span.original_begin < spans_.back().original_end) {
            spans_.back().original_end = span.original_end;
            spans_.back().modified_end = span.modified_end;
            return;
        }
        spans_.push_back(span);
    }

    SectionSide original_;
    SectionSide modified_;
    std::vector<Span> spans_;
};

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
            Append(pieces_, PieceKind::Same, Part(modified_, modified_at_, modified_end));
        else
            Append(pieces_, PieceKind::Same, Part(original_, original_at_, original_end));
        original_at_ = original_end;
        modified_at_ = modified_end;
    }

    void Different(DifferenceType type, std::int32_t original_end, std::int32_t modified_end) {
        const bool change = type == DifferenceType::Change;
        if (change)
            TrimChange(original_end, modified_end);
        if (sides_ != Sides::Modified)
            Append(pieces_, change ? PieceKind::ChangedOld : PieceKind::Deleted,
                   Part(original_, original_at_, original_end));
        if (sides_ != Sides::Original)
            Append(pieces_, change ? PieceKind::ChangedNew : PieceKind::Added,
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
        BreakAligner({original, original_ends_}, {modified, modified_ends_}).Run(mini_.Records());
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

namespace {

// Where a break begins at or behind `from`, and where the text goes on. A mark may have cut a break
// in two: its CR then stands last in a piece and its LF first in another.
struct BreakPlace {
    std::size_t begin;
    std::size_t next;
    bool ends_paragraph;
};
BreakPlace FindBreak(std::u16string_view text, std::size_t from, bool behind_return) {
    if (from == 0 && behind_return && text.starts_with(u'\n'))
        return {0, 1, true};
    const std::size_t at = text.find(u"\r\n", from);
    if (at != std::u16string_view::npos)
        return {at, at + 2, true};
    const std::size_t end = text.ends_with(u'\r') ? text.size() - 1 : text.size();
    return {std::max(end, from), text.size(), false};
}

struct SharedText {
    std::int32_t original;
    std::int32_t modified;
    std::int32_t length;
};

// How much text each two paragraphs share, in reading order, without what is too little.
std::vector<SharedText> FindSharedText(const std::vector<PieceParagraph>& merged,
                                       std::int32_t originals, std::int32_t modifieds) {
    std::vector<SharedText> shared;
    std::vector<std::int32_t> original_lengths(static_cast<std::size_t>(originals), 0);
    std::vector<std::int32_t> modified_lengths(static_cast<std::size_t>(modifieds), 0);
    std::int32_t original = 0;
    std::int32_t modified = 0;
    for (const PieceParagraph& paragraph : merged) {
        if (original >= originals || modified >= modifieds)
            break;
        std::int32_t same = 0;
        for (const Piece& piece : paragraph.pieces) {
            const auto length = static_cast<std::int32_t>(piece.text.size());
            same += piece.kind == PieceKind::Same ? length : 0;
            if (IsOriginalPiece(piece.kind))
                original_lengths[static_cast<std::size_t>(original)] += length;
            if (IsModifiedPiece(piece.kind))
                modified_lengths[static_cast<std::size_t>(modified)] += length;
        }
        if (same > 0)
            shared.push_back({original, modified, same});
        original += IsOriginalPiece(paragraph.end) ? 1 : 0;
        modified += IsModifiedPiece(paragraph.end) ? 1 : 0;
    }
    std::erase_if(shared, [&](const SharedText& text) {
        return text.length * kLeastSharedPart <
               std::min(original_lengths[static_cast<std::size_t>(text.original)],
                        modified_lengths[static_cast<std::size_t>(text.modified)]);
    });
    return shared;
}

// The chain of pairs, both sides ascending, with the most shared text. Since the list ascends on
// both sides, what may stand in front of a pair is always a front part of the list: linear time.
std::vector<SharedText> BestChain(const std::vector<SharedText>& shared) {
    std::vector<std::size_t> in_front(shared.size(), 0);
    std::vector<std::int64_t> best(shared.size() + 1, 0);
    std::size_t below_original = 0;
    std::size_t below_modified = 0;
    for (std::size_t i = 0; i < shared.size(); ++i) {
        while (shared[below_original].original < shared[i].original)
            ++below_original;
        while (shared[below_modified].modified < shared[i].modified)
            ++below_modified;
        in_front[i] = std::min(below_original, below_modified);
        best[i + 1] = std::max(best[i], shared[i].length + best[in_front[i]]);
    }
    std::vector<SharedText> chain;
    std::size_t at = shared.size();
    while (at > 0) {
        if (best[at] == best[at - 1]) {
            --at;
            continue;
        }
        chain.push_back(shared[at - 1]);
        at = in_front[at - 1];
    }
    std::reverse(chain.begin(), chain.end());
    return chain;
}

}  // namespace

std::vector<PieceParagraph> SplitPieces(const std::vector<Piece>& pieces) {
    std::vector<PieceParagraph> paragraphs(1);
    bool behind_return = false;
    for (const Piece& piece : pieces) {
        const std::u16string_view text = piece.text;
        std::size_t from = 0;
        while (from < text.size()) {
            const BreakPlace place = FindBreak(text, from, behind_return);
            Append(paragraphs.back().pieces, piece.kind, text.substr(from, place.begin - from));
            if (place.ends_paragraph) {
                paragraphs.back().end = piece.kind;
                paragraphs.emplace_back();
            }
            from = place.next;
        }
        behind_return = text.ends_with(u'\r');
    }
    return paragraphs;
}

std::vector<ParagraphPair> PairParagraphs(const std::vector<PieceParagraph>& merged,
                                          std::int32_t originals, std::int32_t modifieds) {
    std::vector<ParagraphPair> pairs;
    std::int32_t original = 0;
    std::int32_t modified = 0;
    const auto pair_by_order_up_to = [&](std::int32_t original_end, std::int32_t modified_end) {
        while (original < original_end || modified < modified_end) {
            pairs.push_back({original < original_end ? original++ : -1,
                             modified < modified_end ? modified++ : -1});
        }
    };
    for (const SharedText& text : BestChain(FindSharedText(merged, originals, modifieds))) {
        pair_by_order_up_to(text.original, text.modified);
        pairs.push_back({original++, modified++});
    }
    pair_by_order_up_to(originals, modifieds);
    return pairs;
}

}  // namespace zorvane
