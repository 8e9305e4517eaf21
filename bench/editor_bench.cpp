// The windowless editor under the work of a compare: a walk of edits from the last record to the
// first, whole texts that move, and the reading of the text. Sizes double, so growth shows.
#include <benchmark/benchmark.h>

#include "common/platform/services.h"
#include "compare/document/memory_editor.h"
#include "compare/document/rtb_document.h"

namespace zorvane {
namespace {

constexpr std::int32_t kParagraphLength = 80;  // with its break
constexpr std::int32_t kStep = 10 * kParagraphLength;
constexpr std::int64_t kLeast = 1 << 19;
constexpr std::int64_t kMost = 1 << 23;

class Silence : public Sound {
  public:
    void Beep() override {}
};

// Paragraphs of prose; every tenth has a bold word.
RichText MakeText(std::int64_t characters) {
    constexpr std::u16string_view kWords = u"every paragraph reads like any other one does ";
    RichText rich;
    const RichText plain = [&] {
        std::u16string text;
        while (text.size() < kParagraphLength - 2)
            text += kWords;
        return RichText::Plain(text.substr(0, kParagraphLength - 2) + u"\r\n");
    }();
    RichText bold = plain;
    bold.char_runs.assign({{10, {}}, {5, {}}, {kParagraphLength - 15, {}}});
    bold.char_runs[1].format.bold = true;
    for (std::int64_t paragraph = 0; paragraph * kParagraphLength < characters; ++paragraph)
        rich.Append(paragraph % 10 == 0 ? bold : plain);
    return rich;
}

CharFormatChange Mark() {
    CharFormatChange change;
    change.fore_color = Color{255};
    change.bold = true;
    return change;
}

using Edit = void (*)(MemoryEditor&, std::int32_t);

// One paragraph in ten replaced by a longer one of two formats, as a changed paragraph is put back.
void ReplaceParagraph(MemoryEditor& editor, std::int32_t first) {
    static const RichText changed = [] {
        RichText text = RichText::Plain(std::u16string(90, u'x'));
        text.char_runs = {{40, {}}, {20, {}}, {30, {}}};
        Mark().ApplyTo(text.char_runs[1].format);
        return text;
    }();
    editor.Replace({CharPos{first}, kParagraphLength - 2}, changed);
}
// One in ten marked where it stands, as a deletion is.
void FormatParagraph(MemoryEditor& editor, std::int32_t first) {
    editor.Format({CharPos{first}, kParagraphLength}, Mark());
}
// One in ten asked for its line, as a caret that moves upward does.
void AskLine(MemoryEditor& editor, std::int32_t first) {
    benchmark::DoNotOptimize(editor.LineOfChar(CharPos{first}));
}

void BM_WalkFromTheEnd(benchmark::State& state, Edit edit) {
    const RichText text = MakeText(state.range(0));
    for (auto unused : state) {
        state.PauseTiming();
        MemoryEditor editor;
        editor.SetRich(text);
        state.ResumeTiming();
        for (std::int32_t first = text.Length() - kStep; first >= 0; first -= kStep)
            edit(editor, first);
        benchmark::DoNotOptimize(editor.Length());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) *
                            (text.Length() / kStep));
}
BENCHMARK_CAPTURE(BM_WalkFromTheEnd, replace, ReplaceParagraph)
    ->RangeMultiplier(2)
    ->Range(kLeast, kMost)
    ->ArgName("characters")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_WalkFromTheEnd, format, FormatParagraph)
    ->RangeMultiplier(2)
    ->Range(kLeast, kMost)
    ->ArgName("characters")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_WalkFromTheEnd, lines, AskLine)
    ->RangeMultiplier(2)
    ->Range(kLeast, kMost)
    ->ArgName("characters")
    ->Unit(benchmark::kMillisecond);

// A result that moves from the working copy to the editor that shows it.
void BM_MoveWholeText(benchmark::State& state) {
    MemoryEditor from;
    MemoryEditor to;
    from.SetRich(MakeText(state.range(0)));
    for (auto unused : state) {
        to.SetRich(from.TakeRich());
        std::swap(from, to);
    }
    if (from.Length() < state.range(0))
        state.SkipWithError("the text is lost");
}
BENCHMARK(BM_MoveWholeText)->Arg(kMost)->ArgName("characters")->Unit(benchmark::kMillisecond);

// A text copied for a working editor.
void BM_CopyWholeText(benchmark::State& state) {
    MemoryEditor from;
    from.SetRich(MakeText(state.range(0)));
    for (auto unused : state) {
        MemoryEditor to;
        to.SetRich(from.Rich());
        benchmark::DoNotOptimize(to.Length());
    }
}
BENCHMARK(BM_CopyWholeText)->Arg(kMost)->ArgName("characters")->Unit(benchmark::kMillisecond);

// The small editor of one change: filled, guarded by a blank, marked in three places, taken.
void BM_OneSmallChange(benchmark::State& state) {
    const RichText text = MakeText(kParagraphLength);
    MemoryEditor editor;
    for (auto unused : state) {
        editor.SetRich(text);
        editor.Replace({CharPos{editor.Length()}, 0}, u" ");
        for (const std::int32_t first : {60, 40, 20})
            editor.Format({CharPos{first}, 8}, Mark());
        benchmark::DoNotOptimize(editor.Rich());
    }
}
BENCHMARK(BM_OneSmallChange);

struct DocumentBench {
    explicit DocumentBench(std::int64_t characters) {
        document.Setup(editor, silence);
        editor.SetRich(MakeText(characters));
    }
    Silence silence;
    MemoryEditor editor;
    clsRTBDocument document;
};

void BM_Paragraphs(benchmark::State& state) {
    DocumentBench bench(state.range(0));
    for (auto unused : state) {
        bench.document.ParagraphCollectionCreate();
        bench.document.ParagraphCollectionAdjust();
    }
}
BENCHMARK(BM_Paragraphs)->Arg(kMost)->ArgName("characters")->Unit(benchmark::kMillisecond);

void BM_LineFileText(benchmark::State& state) {
    DocumentBench bench(state.range(0));
    for (auto unused : state)
        benchmark::DoNotOptimize(bench.document.LineFileText());
}
BENCHMARK(BM_LineFileText)->Arg(kMost)->ArgName("characters")->Unit(benchmark::kMillisecond);

void BM_FindAndReplace(benchmark::State& state) {
    const bool match_case = state.range(1) != 0;
    for (auto unused : state) {
        state.PauseTiming();
        DocumentBench bench(state.range(0));
        state.ResumeTiming();
        if (bench.document.FindAndReplaceString(u"like", u"as", match_case) == 0)
            state.SkipWithError("nothing is found");
    }
}
BENCHMARK(BM_FindAndReplace)
    ->Args({kMost, 1})
    ->Args({kMost, 0})
    ->ArgNames({"characters", "match_case"})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorvane
