#include "compare/engine/compare_texts.h"

#include <tuple>
#include <utility>

#include "common/base/free_aside.h"
#include "compare/engine/comparison_builder.h"
#include "compare/engine/line_filter.h"
#include "compare/engine/pairing/document_pairs.h"

namespace zorvane {
namespace {

// The side that comes first when texts are ordered by length, then by bytes. Pairing in that order
// and mirroring the result makes the two directions of a compare mirror images, whatever a tie is
// decided by.
Side CanonicalFirst(const Comparison& comparison) {
    const std::string_view original = comparison.Lines(Side::Original).AllBytes();
    const std::string_view modified = comparison.Lines(Side::Modified).AllBytes();
    if (original.size() != modified.size())
        return original.size() < modified.size() ? Side::Original : Side::Modified;
    return original <= modified ? Side::Original : Side::Modified;
}

// What the reader is told of blocks that were not all looked into.
BlocksFound TellReader(const PerSide<CompareSide>& sides, const Comparison& comparison,
                       const CompareOptions& options, const SectionSwitches& sections,
                       const EarlyReader& reader) {
    if (!reader.found)
        return {};
    const bool swapped = CanonicalFirst(comparison) == Side::Modified;
    BlocksFound found;
    found.tell = [&, swapped](const DocumentPairs& blocks) {
        Comparison early = comparison;
        BuildComparison({{&sides.original, &sides.modified}, blocks, swapped, false}, options,
                        sections, early);
        if (KeepGoing(sections.watcher))
            reader.found(std::move(early));
        else
            FreeAside(std::move(early));
    };
    if (reader.in_sight)
        found.in_sight = reader.in_sight;
    found.by_second = swapped;
    return found;
}

Result<Comparison> Compare(Comparison comparison, const CompareOptions& options,
                           RunWatcher* watcher, const EarlyReader& reader = {}) {
    const bool expressions = !options.expressions.empty();
    LineFilter filter;
    LineFilter line_words;  // with the blanks that part them
    LineFilter word_filter;
    for (const Status& status :
         {filter.Set({options.ignore_case, options.ignore_whitespace, expressions},
                     options.expressions),
          line_words.Set({options.ignore_case, false, expressions}, options.expressions),
          word_filter.Set({options.ignore_case, false, expressions && options.filter_sections},
                          options.expressions)}) {
        if (!status.ok())
            return status.failure();
    }
    PerSide<CompareSide> sides;
    for (const Side side : kBothSides) {
        sides[side].Watch(watcher);
        sides[side].Prepare(comparison.Lines(side), filter, options.ignore_empty_lines,
                            &line_words);
        comparison.ignored[side] = sides[side].LeftOut();
    }
    const auto stopped = [&](DocumentPairs found) {
        FreeAside(std::make_tuple(std::move(comparison), std::move(sides), std::move(found)));
        return Failure{std::string(kCompareStopped)};
    };
    if (!KeepGoing(watcher))
        return stopped(DocumentPairs());
    SectionSwitches sections;
    sections.watcher = watcher;
    sections.tokens = {options.ignore_case, options.ignore_whitespace,
                       word_filter.IsIdentity() ? nullptr : &word_filter};
    sections.by_character = options.by_character;
    sections.larger = options.larger_sections;
    const Side first = CanonicalFirst(comparison);
    comparison.by_character = options.by_character;
    DocumentPairs pairs = PairDocuments(sides[first], sides[OtherSide(first)], options, sections,
                                        TellReader(sides, comparison, options, sections, reader));
    if (pairs.stopped || !KeepGoing(watcher))
        return stopped(std::move(pairs));
    BuildComparison({{&sides.original, &sides.modified}, pairs, first == Side::Modified}, options,
                    sections, comparison);
    if (!KeepGoing(watcher))
        return stopped(std::move(pairs));
    return comparison;
}

}  // namespace

Result<Comparison> CompareTexts(PerSide<std::shared_ptr<const std::u16string>> texts,
                                const CompareOptions& options, RunWatcher* watcher,
                                const EarlyReader& reader) {
    Comparison comparison;
    comparison.SetEditorTexts(std::move(texts), watcher);
    if (!KeepGoing(watcher))
        return Failure{std::string(kCompareStopped)};
    return Compare(std::move(comparison), options, watcher, reader);
}

Result<Comparison> CompareLineFiles(PerSide<std::string_view> texts, const CompareOptions& options,
                                    RunWatcher* watcher) {
    Comparison comparison;
    comparison.SetFileTexts(texts);
    return Compare(std::move(comparison), options, watcher);
}

}  // namespace zorvane
