#include "compare/engine/report_counts.h"

#include <algorithm>

#include "compare/engine/pairing/word_runs.h"

namespace zorvane {
namespace {

// Kana and Han in the first plane; the rest of such scripts lies in surrogates and is rare.
bool IsWordOfItsOwn(char16_t unit) {
    return (unit >= 0x3040 && unit <= 0x30FF) || (unit >= 0x3400 && unit <= 0x9FFF) ||
           (unit >= 0xF900 && unit <= 0xFAFF);
}

class Counter {
  public:
    Counter(const Comparison& comparison, RunWatcher* watcher)
        : comparison_(comparison), stop_(watcher) {}

    ReportCounts Count() {
        for (std::size_t i = 0; i < comparison_.records.size() && !stop_.Stopped(); ++i)
            Record(i);
        for (const Move& move : comparison_.moves) {
            const DifferenceRecord& from = comparison_.Record(move.deletion);
            const DifferenceRecord& to = comparison_.Record(move.addition);
            counts_.paragraphs_moved +=
                std::max(from.Count(Side::Original), to.Count(Side::Modified));
            Sections(from, to, comparison_.SectionsOf(move));
        }
        return counts_;
    }

  private:
    void Record(std::size_t index) {
        const DifferenceRecord& record = comparison_.records[index];
        if (record.type == DifferenceType::Change) {
            counts_.paragraphs_changed +=
                std::max(record.Count(Side::Original), record.Count(Side::Modified));
            Sections(record, record, comparison_.SectionsOf(index));
            return;
        }
        if (comparison_.MoveOf(index) != nullptr)
            return;
        counts_.paragraphs_added += record.Count(Side::Modified);
        counts_.paragraphs_deleted += record.Count(Side::Original);
        counts_.words_added += WordsOf(TextOf(Side::Modified, record));
        counts_.words_deleted += WordsOf(TextOf(Side::Original, record));
    }

    void Sections(const DifferenceRecord& from, const DifferenceRecord& to,
                  std::span<const SectionDetail> sections) {
        if (sections.empty())
            return;
        Sections(Side::Original, from, sections, counts_.words_deleted);
        Sections(Side::Modified, to, sections, counts_.words_added);
    }

    void Sections(Side side, const DifferenceRecord& record,
                  std::span<const SectionDetail> sections, std::int64_t& words) {
        const std::u16string_view text = TextOf(side, record);
        for (const SectionDetail& section : sections) {
            const DetailPlace& place = section.places[side];
            if (!stop_.KeepGoing(place.Length() + 1))
                return;
            words += CountWords(text.substr(static_cast<std::size_t>(place.begin),
                                            static_cast<std::size_t>(place.Length())));
        }
    }

    // Cut behind a break, which no word goes over.
    std::int64_t WordsOf(std::u16string_view text) {
        constexpr std::size_t kPart = 1 << 16;
        std::int64_t words = 0;
        while (stop_.KeepGoing(static_cast<std::int64_t>(std::min(text.size(), kPart)))) {
            const std::size_t cut = text.size() > kPart ? text.find(u'\n', kPart) : text.npos;
            if (cut == text.npos)
                return words + CountWords(text);
            words += CountWords(text.substr(0, cut));
            text.remove_prefix(cut + 1);
        }
        return words;
    }

    std::u16string_view TextOf(Side side, const DifferenceRecord& record) {
        return comparison_.Text(side, record, buffer_);
    }

    const Comparison& comparison_;
    StopCheck stop_;
    ReportCounts counts_;
    std::u16string buffer_;
};

}  // namespace

std::int64_t CountWords(std::u16string_view text) {
    std::int64_t words = 0;
    bool inside = false;
    for (const char16_t unit : text) {
        const bool alone = IsWordOfItsOwn(unit);
        const bool part = !alone && !PartsWords(unit);
        words += alone || (part && !inside) ? 1 : 0;
        inside = part;
    }
    return words;
}

ReportCounts CountForReaders(const Comparison& comparison, RunWatcher* watcher) {
    return Counter(comparison, watcher).Count();
}

}  // namespace zorvane
