#include "compare/engine/break_aligner.h"

namespace zorvane {
namespace {

std::int32_t CountOf(const SectionSide& side) {
    return static_cast<std::int32_t>(side.ends.size());
}

// Whether the place behind section `number` is between a CR and its LF.
bool IsInsideBreak(const SectionSide& side, std::int32_t number) {
    if (number < 1 || number >= CountOf(side))
        return false;
    const auto end = static_cast<std::size_t>(side.ends[static_cast<std::size_t>(number - 1)]);
    return end < side.text.size() && side.text[end - 1] == u'\r' && side.text[end] == u'\n';
}

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

class BreakAligner {
  public:
    BreakAligner(SectionSide original, SectionSide modified)
        : original_(original), modified_(modified) {}

    std::vector<DifferenceRecord> Run(const std::vector<DifferenceRecord>& records) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            const bool last = i + 1 == records.size();
            const Span end{CountOf(original_), 0, CountOf(modified_), 0};
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
        return IsInsideBreak(original_, original) || IsInsideBreak(modified_, modified);
    }

    void Take(Span span, const Span& next) {
        const bool one_sided =
            span.original_begin == span.original_end || span.modified_begin == span.modified_end;
        if (one_sided && IsInsideBreak(original_, span.original_begin) &&
            IsInsideBreak(original_, span.original_end) &&
            IsInsideBreak(modified_, span.modified_begin) &&
            IsInsideBreak(modified_, span.modified_end) &&
            span.original_end < next.original_begin) {
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

}  // namespace

std::vector<DifferenceRecord> AlignToBreaks(const std::vector<DifferenceRecord>& records,
                                            SectionSide original, SectionSide modified) {
    return BreakAligner(original, modified).Run(records);
}

}  // namespace zorvane
