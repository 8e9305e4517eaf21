#include "compare/engine/pairing/document_pairs.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "compare/engine/pairing/alike_lines.h"
#include "compare/engine/pairing/moves.h"
#include "compare/engine/pairing/trusted_runs.h"

namespace zorvane {
namespace {

constexpr std::size_t kLongRecord = 1 << 16;
// How much of a compare pairing is, and of that the paragraphs where their words come behind.
constexpr double kPairingPart = 0.9;
constexpr double kParagraphsPart = 0.4;

class DocumentPairer {
  public:
    DocumentPairer(const CompareSide& first, const CompareSide& second,
                   const CompareOptions& options, const SectionSwitches& sections,
                   const BlocksFound& found)
        : first_(first),
          second_(second),
          options_(options),
          finder_(sections),
          watcher_(sections.watcher),
          found_(found) {
        if (found_.tell)
            part_.end = kParagraphsPart;
    }

    DocumentPairs Run() {
        const std::vector<EqualRun> runs = FindTrustedRuns(first_, second_, watcher_);
        // No runs may mean that there are none, or that the search for them was stopped.
        pairs_.stopped = !zorvane::KeepGoing(watcher_);
        if (pairs_.stopped)
            return std::move(pairs_);
        PlaceRange stretch;
        for (const EqualRun& run : runs) {
            stretch.first_end = run.first;
            stretch.second_end = run.second;
            Stretch(stretch);
            if (pairs_.stopped)
                return std::move(pairs_);
            Equal(run);
            stretch.first_begin = run.first + run.length;
            stretch.second_begin = run.second + run.length;
        }
        stretch.first_end = first_.Count();
        stretch.second_end = second_.Count();
        Stretch(stretch);
        if (found_.tell)
            LookIntoBlocks();
        if (options_.bracket > 0)
            KeepWithinBracket(pairs_.blocks);
        if (options_.find_moves && !pairs_.stopped)
            AddMoves();
        return std::move(pairs_);
    }

  private:
    // A changed block whose words are looked for when all blocks are found.
    struct Unlooked {
        std::size_t block = 0;
        const StretchText* weights = nullptr;
        bool looked = false;
        bool told = false;  // with its words
    };

    bool StillGoing() {
        pairs_.stopped = pairs_.stopped || !zorvane::KeepGoing(watcher_);
        return !pairs_.stopped;
    }

    bool KeepGoing(std::int32_t place) {
        constexpr std::int64_t kUnitsBetween = 1 << 16;
        if (watcher_ == nullptr || pairs_.stopped)
            return !pairs_.stopped;
        const std::int64_t done = first_.Lines().Units(0, first_.LineOf(place));
        if (done < told_ + kUnitsBetween)
            return true;
        told_ = done;
        const auto all = static_cast<double>(first_.Lines().Units(0, first_.Lines().Count()));
        watcher_->Progress(RunStep::Compare, part_.begin + (part_.end - part_.begin) *
                                                               static_cast<double>(done) / all);
        pairs_.stopped = !watcher_->KeepGoing();
        return !pairs_.stopped;
    }

    void Equal(const EqualRun& run) {
        for (std::int32_t i = 0; run.only_alike && i < run.length; ++i) {
            if (!KeepGoing(run.first + i))
                return;
            Changed({{run.first + i, run.first + i + 1, run.second + i, run.second + i + 1}, false},
                    nullptr);
        }
        if (run.only_alike)
            return;
        pairs_.blocks.push_back(
            {{run.first, run.first + run.length, run.second, run.second + run.length}, true});
    }

    void Stretch(const PlaceRange& range) {
        if (range.FirstCount() == 0 || range.SecondCount() == 0)
            return;
        if (range.FirstCount() == 1 && range.SecondCount() == 1 &&
            AreLonePartners(range.first_begin, range.second_begin)) {
            Changed({range, false}, nullptr);
            return;
        }
        const auto kept = std::make_shared<const StretchText>(first_, second_, range);
        const StretchText& text = *kept;
        if (!StillGoing())
            return;
        if (found_.tell)
            kept_.push_back(kept);
        for (const PairedBlock& block : PairStretch(first_, second_, text, options_)) {
            if (!KeepGoing(block.range.first_begin))
                return;
            if (block.equal)
                pairs_.blocks.push_back({block.range, true});
            else
                Changed(block, &text);
        }
    }

    // One changed paragraph between equal ones, the commonest stretch: half of its text in common
    // at the ends is enough.
    bool AreLonePartners(std::int32_t first, std::int32_t second) const {
        const std::string_view left = first_.Key(first);
        const std::string_view right = second_.Key(second);
        return CommonEnds(left, right, first_.UnitSize()) * 2 >=
               std::max(left.size(), right.size());
    }

    void Changed(const PairedBlock& block, const StretchText* weights) {
        pairs_.blocks.push_back({block.range, false});
        if (found_.tell)
            unlooked_.push_back({pairs_.blocks.size() - 1, weights});
        else
            FindSections(pairs_.blocks.back(), weights);
    }

    // Those in sight first, the others in their order.
    void LookIntoBlocks() {
        if (!StillGoing())
            return;
        Tell();
        told_ = 0;
        part_ = {kParagraphsPart, kPairingPart};
        ParagraphsInSight seen;
        for (Unlooked& next : unlooked_) {
            const ParagraphsInSight now = found_.in_sight ? found_.in_sight() : seen;
            if (now != seen)
                LookIntoSight(now);
            seen = now;
            if (!KeepGoing(pairs_.blocks[next.block].range.first_begin))
                return;
            Look(next);
        }
    }

    void LookIntoSight(const ParagraphsInSight& sight) {
        const auto ends_before = [&](const Unlooked& entry, std::int32_t line) {
            return LinesOf(entry).end <= line;
        };
        const auto begin =
            std::lower_bound(unlooked_.begin(), unlooked_.end(), sight.begin, ends_before);
        bool any = false;
        for (auto entry = begin; entry != unlooked_.end() && LinesOf(*entry).begin < sight.end;
             ++entry) {
            if (!StillGoing())
                return;
            Look(*entry);
            any = any || !entry->told;
        }
        if (any)
            Tell();
    }

    ParagraphsInSight LinesOf(const Unlooked& entry) const {
        const PlaceRange& range = pairs_.blocks[entry.block].range;
        return found_.by_second ? ParagraphsInSight{second_.LineOf(range.second_begin),
                                                    second_.LineOf(range.second_end - 1) + 1}
                                : ParagraphsInSight{first_.LineOf(range.first_begin),
                                                    first_.LineOf(range.first_end - 1) + 1};
    }

    void Look(Unlooked& entry) {
        if (entry.looked)
            return;
        FindSections(pairs_.blocks[entry.block], entry.weights);
        entry.looked = true;
    }

    void Tell() {
        if (!StillGoing())
            return;
        DocumentPairs blocks = pairs_;
        if (options_.bracket > 0)
            KeepWithinBracket(blocks.blocks);
        if (StillGoing())
            found_.tell(blocks);
        for (Unlooked& entry : unlooked_)
            entry.told = entry.looked;
    }

    void FindSections(FoundBlock& block, const StretchText* weights) {
        block.first_section = static_cast<std::uint32_t>(pairs_.sections.size());
        if (options_.find_sections) {
            const std::u16string_view first = TextOfPlaces(first_, block.range.first_begin,
                                                           block.range.first_end, buffers_.first);
            const std::u16string_view second = TextOfPlaces(
                second_, block.range.second_begin, block.range.second_end, buffers_.second);
            finder_.Find(first, second, weights, pairs_.sections, pairs_.letters);
            // One record may be the whole document: half of its sections are none.
            if (first.size() + second.size() > kLongRecord)
                StillGoing();
        }
        block.section_count =
            static_cast<std::uint32_t>(pairs_.sections.size()) - block.first_section;
    }

    // Each block that stays moves the place where the next one is expected.
    void KeepWithinBracket(std::vector<FoundBlock>& blocks) const {
        std::int32_t shift = 0;
        std::erase_if(blocks, [&](const FoundBlock& block) {
            const std::int32_t found = block.range.second_begin - block.range.first_begin;
            if (std::abs(found - shift) > options_.bracket)
                return true;
            shift = block.range.second_end - block.range.first_end;
            return false;
        });
    }

    void AddMoves() {
        std::vector<PlaceRange> gaps;
        PlaceRange gap;
        for (const FoundBlock& block : pairs_.blocks) {
            gap.first_end = block.range.first_begin;
            gap.second_end = block.range.second_begin;
            if (!gap.Empty())
                gaps.push_back(gap);
            gap.first_begin = block.range.first_end;
            gap.second_begin = block.range.second_end;
        }
        gap.first_end = first_.Count();
        gap.second_end = second_.Count();
        if (!gap.Empty())
            gaps.push_back(gap);
        if (!StillGoing())
            return;
        for (const PlaceRange& move : FindMoves(first_, second_, gaps)) {
            if (!StillGoing())
                return;
            pairs_.moves.push_back({move, false});
            FindSections(pairs_.moves.back(), nullptr);
        }
    }

    const CompareSide& first_;
    const CompareSide& second_;
    const CompareOptions& options_;
    SectionFinder finder_;
    RunWatcher* watcher_;
    const BlocksFound& found_;
    std::vector<std::shared_ptr<const StretchText>> kept_;  // that `weights_` points to
    std::vector<Unlooked> unlooked_;                        // the changed blocks in their order
    struct {
        double begin = 0;
        double end = kPairingPart;
    } part_;  // of the compare that `KeepGoing` tells of
    DocumentPairs pairs_;
    std::int64_t told_ = 0;
    struct {
        std::u16string first;
        std::u16string second;
    } buffers_;
};

}  // namespace

std::u16string_view TextOfPlaces(const CompareSide& side, std::int32_t begin, std::int32_t end,
                                 std::u16string& buffer) {
    return side.Lines().Joined(side.LineOf(begin), side.LineOf(end - 1) + 1, buffer);
}

DocumentPairs PairDocuments(const CompareSide& first, const CompareSide& second,
                            const CompareOptions& options, const SectionSwitches& sections,
                            const BlocksFound& found) {
    return DocumentPairer(first, second, options, sections, found).Run();
}

}  // namespace zorvane
