#include "compare/engine/comparison_builder.h"

#include <algorithm>
#include <map>

#include "compare/engine/pairing/section_tokens.h"

namespace zorvane {
namespace {

constexpr std::int64_t kParagraphsBetweenStops = 256;  // paragraphs between two looks for a stop
constexpr std::int32_t kLargerSectionGap = 3;  // unchanged lines that do not part two differences

struct Places {
    std::int32_t begin = 0;
    std::int32_t end = 0;
};

// Numbers of sections at ascending positions of one text.
class SectionNumbers {
  public:
    explicit SectionNumbers(std::u16string_view text) : text_(text) {}

    void Number(DetailPlace& place) {
        place.first = place.last = InFront(place.begin);
        if (place.Length() == 0)
            return;
        place.first = Before(place.begin) + 1;
        place.last = Before(place.end - 1) + 1;
    }

  private:
    // Separators in front of a position.
    std::int32_t Before(std::int32_t position) {
        for (; at_ < position; ++at_)
            count_ += EndsSection(text_[static_cast<std::size_t>(at_)]) ? 1 : 0;
        return count_;
    }
    std::int32_t InFront(std::int32_t position) {
        const std::int32_t before = Before(position);
        const bool begins =
            position == 0 || EndsSection(text_[static_cast<std::size_t>(position - 1)]);
        return begins ? before : before + 1;
    }

    std::u16string_view text_;
    std::int32_t at_ = 0;
    std::int32_t count_ = 0;
};

DifferenceType TypeOf(const DetailPlace& original, const DetailPlace& modified) {
    if (original.Length() == 0)
        return DifferenceType::Addition;
    return modified.Length() == 0 ? DifferenceType::Deletion : DifferenceType::Change;
}

class ComparisonBuilder {
  public:
    ComparisonBuilder(const PairedDocuments& documents, const CompareOptions& options,
                      const SectionSwitches& sections, Comparison& comparison)
        : documents_(documents),
          pairs_(documents.pairs),
          options_(options),
          finder_(sections),
          stop_(sections.watcher, kParagraphsBetweenStops),
          out_(comparison) {
        for (std::size_t i = 0; i < pairs_.moves.size(); ++i) {
            for (const Side side : kBothSides)
                moves_[side].emplace(PlacesOf(pairs_.moves[i].range, side).begin, i);
        }
        out_.moves.resize(pairs_.moves.size());
    }

    void Run() {
        PerSide<std::int32_t> at{0, 0};
        for (const FoundBlock& block : pairs_.blocks) {
            if (!stop_.KeepGoing())
                return;
            const PerSide<Places> own = PlacesOf(block.range);
            Gap({{at.original, own.original.begin}, {at.modified, own.modified.begin}});
            if (!block.equal)
                Add(DifferenceType::Change, own, &block);
            at = {own.original.end, own.modified.end};
        }
        Gap({{at.original, documents_.sides.original->Count()},
             {at.modified, documents_.sides.modified->Count()}});
        if (options_.larger_sections)
            JoinNear();
        for (const Item& item : items_) {
            if (!stop_.KeepGoing(item.record.Count(Side::Original) +
                                 item.record.Count(Side::Modified)))
                return;
            Emit(item);
        }
        FinishMoves();
    }

  private:
    struct Item {
        DifferenceRecord record;
        const FoundBlock* block = nullptr;  // where the sections are known
        std::int32_t move = -1;
    };

    Places PlacesOf(const PlaceRange& range, Side side) const {
        const bool first = (side == Side::Original) != documents_.mirrored;
        return first ? Places{range.first_begin, range.first_end}
                     : Places{range.second_begin, range.second_end};
    }
    PerSide<Places> PlacesOf(const PlaceRange& range) const {
        return {PlacesOf(range, Side::Original), PlacesOf(range, Side::Modified)};
    }

    // What stands between two blocks: the deletions, then the additions, each cut at moves.
    void Gap(const PerSide<Places>& gap) {
        for (const Side side : kBothSides) {
            const DifferenceType type =
                side == Side::Original ? DifferenceType::Deletion : DifferenceType::Addition;
            Places rest = gap[side];
            while (rest.begin < rest.end) {
                const auto next = moves_[side].lower_bound(rest.begin);
                const bool here = next != moves_[side].end() && next->first < rest.end;
                const std::int32_t end = here ? next->first : rest.end;
                if (rest.begin < end)
                    OneSided(type, side, {rest.begin, end}, gap, -1);
                rest.begin = end;
                if (!here)
                    continue;
                const Places moved = PlacesOf(pairs_.moves[next->second].range, side);
                OneSided(type, side, moved, gap, static_cast<std::int32_t>(next->second));
                rest.begin = moved.end;
            }
        }
    }

    void OneSided(DifferenceType type, Side side, Places own, const PerSide<Places>& gap,
                  std::int32_t move) {
        PerSide<Places> places;
        places[side] = own;
        // Deletions stand in front of the additions of their gap.
        const Places& other = gap[OtherSide(side)];
        const std::int32_t behind = side == Side::Original ? other.begin : other.end;
        places[OtherSide(side)] = {behind, behind};
        Add(type, places, nullptr);
        items_.back().move = move;
    }

    void Add(DifferenceType type, const PerSide<Places>& places, const FoundBlock* block) {
        Item item;
        item.block = block;
        item.record.type = type;
        for (const Side side : kBothSides)
            item.record.paragraphs[side] = LinesOf(side, places[side]);
        items_.push_back(item);
    }

    ParagraphRange LinesOf(Side side, Places places) const {
        const CompareSide& lines = *documents_.sides[side];
        const ParagraphNumber last{places.end == 0 ? 0 : lines.LineOf(places.end - 1) + 1};
        if (places.begin == places.end)
            return {last, last};
        return {ParagraphNumber{lines.LineOf(places.begin) + 1}, last};
    }

    // Lines of a record as places in front of and behind them, 0-based.
    static Places Span(const DifferenceRecord& record, Side side) {
        return {record.InFront(side).value, record.paragraphs[side].last.value};
    }

    // Lines between two records, without those that were not looked at: where an empty side stands
    // among them would depend on which side comes first.
    std::int32_t Distance(const Item& front, const Item& back, Side side) const {
        std::int32_t lines = 0;
        const std::int32_t end = Span(back.record, side).begin;
        for (std::int32_t line = Span(front.record, side).end; line < end; ++line)
            lines += out_.IsIgnored(side, line + 1) ? 0 : 1;
        return lines;
    }
    bool Within(const Item& front, const Item& back, std::int32_t lines) const {
        return Distance(front, back, Side::Original) <= lines &&
               Distance(front, back, Side::Modified) <= lines;
    }

    // Records that touch stay as they are when one of them moved: what could be joined around the
    // moved one depends on which side comes first, and swapped sides would join something else.
    std::vector<bool> TouchesMoved() const {
        std::vector<bool> touches(items_.size(), false);
        for (std::size_t begin = 0; begin < items_.size();) {
            std::size_t end = begin + 1;
            while (end < items_.size() && Within(items_[end - 1], items_[end], 0))
                ++end;
            const bool moved = std::any_of(items_.begin() + static_cast<std::ptrdiff_t>(begin),
                                           items_.begin() + static_cast<std::ptrdiff_t>(end),
                                           [](const Item& item) { return item.move >= 0; });
            for (; begin < end; ++begin)
                touches[begin] = moved;
        }
        return touches;
    }

    void JoinNear() {
        const std::vector<bool> touches_moved = TouchesMoved();
        std::vector<Item> joined;
        for (std::size_t i = 0; i < items_.size(); ++i) {
            const bool near = i > 0 && !touches_moved[i - 1] && !touches_moved[i] &&
                              Within(joined.back(), items_[i], kLargerSectionGap);
            if (near)
                joined.back() = Joined(joined.back(), items_[i]);
            else
                joined.push_back(items_[i]);
        }
        items_ = std::move(joined);
    }

    Item Joined(const Item& front, const Item& back) const {
        Item item;
        DifferenceRecord& record = item.record;
        const auto join = [&](Side side) {
            Places places{Span(front.record, side).begin, Span(back.record, side).end};
            while (places.begin < places.end && out_.IsIgnored(side, places.begin + 1))
                ++places.begin;
            const bool any = places.begin < places.end;
            record.paragraphs[side] = {ParagraphNumber{any ? places.begin + 1 : places.end},
                                       ParagraphNumber{places.end}};
            return any;
        };
        const bool original = join(Side::Original);
        const bool modified = join(Side::Modified);
        record.type = !original   ? DifferenceType::Addition
                      : !modified ? DifferenceType::Deletion
                                  : DifferenceType::Change;
        return item;
    }

    void Emit(const Item& item) {
        RecordDetail detail;
        detail.move = item.move;
        const RecordIndex index{static_cast<std::int32_t>(out_.records.size())};
        if (item.move >= 0) {
            Move& move = out_.moves[static_cast<std::size_t>(item.move)];
            (item.record.type == DifferenceType::Deletion ? move.deletion : move.addition) = index;
        }
        detail.first_section = static_cast<std::uint32_t>(out_.sections.size());
        if (item.record.type == DifferenceType::Change && options_.find_sections) {
            const PerSide<std::u16string_view> texts{
                out_.Text(Side::Original, item.record, buffers_.original),
                out_.Text(Side::Modified, item.record, buffers_.modified)};
            if (item.block != nullptr)
                Sections(*item.block, pairs_.sections, pairs_.letters, texts);
            else if (documents_.whole)
                FindSections(texts);
            for (std::size_t i = detail.first_section; i < out_.sections.size(); ++i)
                Count(out_.sections[i]);
        }
        detail.section_count =
            static_cast<std::uint32_t>(out_.sections.size()) - detail.first_section;
        out_.record_counts.Add(item.record.type);
        out_.records.push_back(item.record);
        out_.details.push_back(detail);
    }

    void Count(const SectionDetail& section) {
        out_.section_counts.Add(section.type);
        for (const DetailRecord& letters : out_.CharactersOf(section))
            out_.character_counts.Add(letters.type);
    }

    void FindSections(const PerSide<std::u16string_view>& texts) {
        std::vector<FoundSection> sections;
        std::vector<FoundLetters> letters;
        finder_.Find(documents_.mirrored ? texts.modified : texts.original,
                     documents_.mirrored ? texts.original : texts.modified, nullptr, sections,
                     letters);
        FoundBlock block;
        block.section_count = static_cast<std::uint32_t>(sections.size());
        Sections(block, sections, letters, texts);
    }

    void Sections(const FoundBlock& block, const std::vector<FoundSection>& sections,
                  const std::vector<FoundLetters>& letters,
                  const PerSide<std::u16string_view>& texts) {
        SectionNumbers original(texts.original);
        SectionNumbers modified(texts.modified);
        for (std::uint32_t i = 0; i < block.section_count && stop_.KeepGoing(); ++i) {
            const FoundSection& found = sections[block.first_section + i];
            SectionDetail section;
            SetPlaces(found.first, found.second, section);
            original.Number(section.places.original);
            modified.Number(section.places.modified);
            section.first_character = static_cast<std::uint32_t>(out_.characters.size());
            section.character_count = found.letter_count;
            for (std::uint32_t k = 0; k < found.letter_count; ++k)
                Letters(letters[found.first_letter + k]);
            out_.sections.push_back(section);
        }
    }

    void SetPlaces(UnitRange first, UnitRange second, DetailRecord& record) const {
        const UnitRange& original = documents_.mirrored ? second : first;
        const UnitRange& modified = documents_.mirrored ? first : second;
        record.places.original.begin = original.begin;
        record.places.original.end = original.end;
        record.places.modified.begin = modified.begin;
        record.places.modified.end = modified.end;
        record.type = TypeOf(record.places.original, record.places.modified);
    }

    void Letters(const FoundLetters& found) {
        DetailRecord letters;
        SetPlaces(found.first, found.second, letters);
        for (DetailPlace* place : {&letters.places.original, &letters.places.modified}) {
            place->first = place->Length() == 0 ? place->begin : place->begin + 1;
            place->last = place->end;
        }
        out_.characters.push_back(letters);
    }

    // Their sections stand behind those of the records.
    void FinishMoves() {
        for (std::size_t i = 0; i < pairs_.moves.size(); ++i) {
            Move& move = out_.moves[i];
            move.first_section = static_cast<std::uint32_t>(out_.sections.size());
            const PerSide<std::u16string_view> texts{
                out_.Text(Side::Original, out_.Record(move.deletion), buffers_.original),
                out_.Text(Side::Modified, out_.Record(move.addition), buffers_.modified)};
            Sections(pairs_.moves[i], pairs_.sections, pairs_.letters, texts);
            move.section_count =
                static_cast<std::uint32_t>(out_.sections.size()) - move.first_section;
        }
    }

    const PairedDocuments& documents_;
    const DocumentPairs& pairs_;
    const CompareOptions& options_;
    SectionFinder finder_;
    StopCheck stop_;
    Comparison& out_;
    PerSide<std::map<std::int32_t, std::size_t>> moves_;  // by their first place
    std::vector<Item> items_;
    PerSide<std::u16string> buffers_;  // of texts that have to be decoded
};

}  // namespace

void BuildComparison(const PairedDocuments& documents, const CompareOptions& options,
                     const SectionSwitches& sections, Comparison& comparison) {
    ComparisonBuilder(documents, options, sections, comparison).Run();
}

}  // namespace zorvane
