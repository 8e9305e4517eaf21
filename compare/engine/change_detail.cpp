#include "compare/engine/change_detail.h"

#include <algorithm>

#include "compare/engine/section_lines.h"

namespace zorvane {
namespace {

constexpr std::u16string_view kBreak = u"\r\n";
constexpr std::int64_t kMostPairs = 40000;  // cells of the table that paragraphs are paired by

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
        if (!spans_.empty() && span.original_begin <= spans_.back().original_end) {
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

// Writes records of one level, ascending, over a stretch of both texts.
class PieceWriter {
  public:
    PieceWriter(std::u16string_view original, std::u16string_view modified, Sides sides)
        : original_(original), modified_(modified), sides_(sides) {}

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
        Same(section.original.begin, section.modified.begin);
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
    std::u16string_view original_;
    std::u16string_view modified_;
    Sides sides_;
    std::int32_t original_at_ = 0;
    std::int32_t modified_at_ = 0;
    std::vector<Piece> pieces_;
};

std::vector<Piece> Pieces(std::span<const SectionDetail> sections, std::u16string_view original,
                          std::u16string_view modified, Sides sides) {
    PieceWriter writer(original, modified, sides);
    for (const SectionDetail& section : sections)
        writer.Section(section);
    return writer.Finish();
}

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
    const auto place = [](std::u16string_view text, std::int32_t first, std::int32_t last,
                          std::int32_t count) {
        const CharacterRange range = WholeCharacters(text, {first, last});
        const auto size = static_cast<std::int32_t>(text.size());
        const std::int32_t end = std::min(range.last, size);
        return DetailPlace{range.first, range.last,
                           count == 0 ? end : std::min(range.first - 1, size), end};
    };
    for (const DifferenceRecord& record : micro_.Records()) {
        DetailRecord letters;
        letters.type = record.type;
        letters.original =
            place(original, record.first_original, record.last_original, record.OriginalCount());
        letters.modified =
            place(modified, record.first_modified, record.last_modified, record.ModifiedCount());
        // The doubled last character can make a record of nothing.
        if (letters.original.Length() == 0 && letters.modified.Length() == 0)
            continue;
        character_counts_.Add(record.type);
        section.characters.push_back(letters);
    }
}

std::vector<Piece> ChangeDetail::MergedPieces() const {
    return Pieces(sections_, original_, modified_, Sides::Both);
}
std::vector<Piece> ChangeDetail::OriginalPieces() const {
    return Pieces(sections_, original_, modified_, Sides::Original);
}
std::vector<Piece> ChangeDetail::ModifiedPieces() const {
    return Pieces(sections_, original_, modified_, Sides::Modified);
}

std::vector<std::vector<Piece>> SplitPieces(std::vector<Piece> pieces) {
    std::vector<std::vector<Piece>> paragraphs(1);
    for (Piece& piece : pieces) {
        std::size_t begin = 0;
        while (true) {
            const std::size_t end = piece.text.find(kBreak, begin);
            if (end == std::u16string::npos)
                break;
            Append(paragraphs.back(), piece.kind,
                   std::u16string_view(piece.text).substr(begin, end - begin));
            paragraphs.emplace_back();
            begin = end + kBreak.size();
        }
        Append(paragraphs.back(), piece.kind, std::u16string_view(piece.text).substr(begin));
    }
    return paragraphs;
}

std::vector<ParagraphPair> PairParagraphs(std::span<const Piece> merged, std::int32_t originals,
                                          std::int32_t modifieds) {
    std::vector<ParagraphPair> pairs;
    if (originals == modifieds || std::int64_t{originals} * modifieds > kMostPairs) {
        for (std::int32_t i = 0; i < std::max(originals, modifieds); ++i)
            pairs.push_back({i < originals ? i : -1, i < modifieds ? i : -1});
        return pairs;
    }
    const auto columns = static_cast<std::size_t>(modifieds) + 1;
    const auto at = [columns](std::int32_t original, std::int32_t modified) {
        return static_cast<std::size_t>(original) * columns + static_cast<std::size_t>(modified);
    };
    // How much text each two paragraphs share.
    std::vector<std::int32_t> shared(at(originals, modifieds) + 1, 0);
    std::int32_t original = 0;
    std::int32_t modified = 0;
    for (const Piece& piece : merged) {
        std::size_t begin = 0;
        while (true) {
            const std::size_t end = piece.text.find(kBreak, begin);
            const std::size_t stop = end == std::u16string::npos ? piece.text.size() : end;
            if (piece.kind == PieceKind::Same)
                shared[at(std::min(original, originals), std::min(modified, modifieds))] +=
                    static_cast<std::int32_t>(stop - begin);
            if (end == std::u16string::npos)
                break;
            original += IsOriginalPiece(piece.kind) ? 1 : 0;
            modified += IsModifiedPiece(piece.kind) ? 1 : 0;
            begin = end + kBreak.size();
        }
    }
    // The best sum of shared text over pairs that do not cross.
    std::vector<std::int32_t> best(shared.size() + columns + 1, 0);
    for (std::int32_t i = originals - 1; i >= 0; --i) {
        for (std::int32_t j = modifieds - 1; j >= 0; --j)
            best[at(i, j)] = std::max({best[at(i + 1, j)], best[at(i, j + 1)],
                                       shared[at(i, j)] + best[at(i + 1, j + 1)]});
    }
    std::int32_t i = 0;
    std::int32_t j = 0;
    while (i < originals || j < modifieds) {
        const bool both = i < originals && j < modifieds;
        if (both && shared[at(i, j)] > 0 &&
            best[at(i, j)] == shared[at(i, j)] + best[at(i + 1, j + 1)])
            pairs.push_back({i++, j++});
        else if (i < originals && (!both || best[at(i, j)] == best[at(i + 1, j)]))
            pairs.push_back({i++, -1});
        else
            pairs.push_back({-1, j++});
    }
    return pairs;
}

}  // namespace zorvane
