// What a window asks of a comparison: 500,000 paragraphs with 50,000 differences, the rows, the
// list, and a search through 40 million characters.
#include <random>

#include <benchmark/benchmark.h>

#include "compare/difference_list.h"
#include "compare/document/memory_editor.h"
#include "compare/view/overview.h"
#include "compare/view/paragraph_rows.h"
#include "compare/view/spoken_difference.h"
#include "compare/view/text_search.h"

namespace zorvane {
namespace {

constexpr std::int32_t kParagraphs = 500000;
constexpr std::int32_t kEvery = 10;  // one in so many differs

// As a compare would give it: changes, additions and deletions in turn.
const Comparison& Large() {
    static const Comparison comparison = [] {
        std::u16string text;
        for (std::int32_t i = 0; i < kParagraphs; ++i)
            text +=
                u"every paragraph reads like any other one does, and none is longer than this\r\n";
        const auto shared = std::make_shared<const std::u16string>(std::move(text));
        Comparison made;
        made.SetEditorTexts({shared, shared});
        std::int32_t shift = 0;  // the Modified's numbers are so much higher
        for (std::int32_t at = kEvery; at < kParagraphs; at += kEvery) {
            const std::int32_t other = at + shift;
            if (at / kEvery % 3 == 0)
                made.records.push_back({DifferenceType::Change, {{at, at}, {other, other}}});
            else if (shift == 0)
                made.records.push_back(
                    {DifferenceType::Addition, {{at, at}, {at + 1, at + ++shift}}});
            else
                made.records.push_back(
                    {DifferenceType::Deletion, {{at, at}, {other - 1, at - 1 + shift--}}});
        }
        made.details.resize(made.records.size());
        return made;
    }();
    return comparison;
}

const ParagraphRows& LargeRows() {
    static const ParagraphRows rows = [] {
        ParagraphRows made;
        made.Assign(Large());
        return made;
    }();
    return rows;
}

void BM_RowsBuild(benchmark::State& state) {
    const Comparison& comparison = Large();
    for (auto unused : state) {
        ParagraphRows rows;
        rows.Assign(comparison);
        if (rows.Paragraphs(Side::Original) < kParagraphs)
            state.SkipWithError("paragraphs are missing");
    }
    state.counters["bytes a paragraph"] =
        static_cast<double>(LargeRows().Runs() * (sizeof(RowPiece) + sizeof(RowSums))) /
        kParagraphs;
}
BENCHMARK(BM_RowsBuild)->Unit(benchmark::kMillisecond);

void BM_RowOfParagraph(benchmark::State& state) {
    const ParagraphRows& rows = LargeRows();
    std::mt19937 random(1);
    for (auto unused : state) {
        const ParagraphNumber number{1 + static_cast<std::int32_t>(random() % kParagraphs)};
        const ParagraphRow row = rows.Row(rows.RowOf(Side::Modified, number));
        benchmark::DoNotOptimize(row);
    }
}
BENCHMARK(BM_RowOfParagraph);

void BM_RowsOfRecord(benchmark::State& state) {
    const ParagraphRows& rows = LargeRows();
    std::mt19937 random(2);
    for (auto unused : state)
        benchmark::DoNotOptimize(rows.RowsOfRecord(static_cast<std::int32_t>(random() % 49999)));
}
BENCHMARK(BM_RowsOfRecord);

// A break typed at random places, and taken out again.
void BM_RowsEdit(benchmark::State& state) {
    ParagraphRows rows = LargeRows();
    std::mt19937 random(3);
    for (auto unused : state) {
        const ParagraphNumber number{1 + static_cast<std::int32_t>(random() % kParagraphs)};
        rows.Apply(Side::Original, {number, 1, 2});
        rows.Apply(Side::Original, {number, 2, 1});
    }
    state.SetItemsProcessed(2 * static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(BM_RowsEdit)->Iterations(20000);

void BM_FoldableRows(benchmark::State& state) {
    for (auto unused : state)
        benchmark::DoNotOptimize(FoldableRows(LargeRows(), {}).size());
}
BENCHMARK(BM_FoldableRows)->Unit(benchmark::kMillisecond);

// For a window of 1,000 pixels.
void BM_Overview(benchmark::State& state) {
    for (auto unused : state)
        benchmark::DoNotOptimize(MakeOverview(LargeRows(), Large(), 0.001).size());
}
BENCHMARK(BM_Overview)->Unit(benchmark::kMillisecond);

std::string Same(std::string_view english) {
    return std::string(english);
}

void BM_ListShow(benchmark::State& state) {
    const Comparison& comparison = Large();
    DifferenceList list;
    for (auto unused : state) {
        list.Show(comparison, Same);
        benchmark::DoNotOptimize(list.Count());
    }
}
BENCHMARK(BM_ListShow);

void BM_ListLine(benchmark::State& state) {
    DifferenceList list;
    list.Show(Large(), Same);
    std::mt19937 random(4);
    for (auto unused : state)
        benchmark::DoNotOptimize(list.Line(static_cast<std::int32_t>(random() % 49999)));
}
BENCHMARK(BM_ListLine);

void BM_ListNearest(benchmark::State& state) {
    DifferenceList list;
    list.Show(Large(), Same);
    std::mt19937 random(5);
    for (auto unused : state)
        benchmark::DoNotOptimize(list.Nearest(
            Side::Original, ParagraphNumber{static_cast<std::int32_t>(random() % kParagraphs)}));
}
BENCHMARK(BM_ListNearest);

// The whole text without a hit, in any case; and the marks of a screen.
void BM_FindNothing(benchmark::State& state) {
    MemoryEditor editor;
    std::u16string buffer;
    editor.SetText(Large().Lines(Side::Original).Joined(0, kParagraphs, buffer));
    const TextSearch search({u"nothing of the kind"});
    for (auto unused : state)
        benchmark::DoNotOptimize(search.First(editor, CharPos{0}, CharPos{editor.Length()}));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * editor.Length() * 2);
}
BENCHMARK(BM_FindNothing)->Unit(benchmark::kMillisecond);

void BM_FindMarks(benchmark::State& state) {
    MemoryEditor editor;
    std::u16string buffer;
    editor.SetText(Large().Lines(Side::Original).Joined(0, kParagraphs, buffer));
    const TextSearch search({u"other"});
    for (auto unused : state)
        benchmark::DoNotOptimize(search.Touching(editor, {CharPos{20000000}, 5000}));
}
BENCHMARK(BM_FindMarks);

}  // namespace
}  // namespace zorvane
