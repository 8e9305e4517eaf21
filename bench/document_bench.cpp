// The document behind a window, at the size that must not be felt: 500,000 paragraphs of 80
// characters, every tenth in three runs of formats. One edit under 20 ms, one look-up under 10 us.
#include <algorithm>
#include <malloc.h>
#include <optional>
#include <random>
#include <time.h>

#include <benchmark/benchmark.h>

#include "compare/document/block_index.h"
#include "compare/document/rich_document.h"

namespace zorvane {
namespace {

constexpr std::int32_t kParagraphLength = 80;  // with its break
constexpr std::int64_t kParagraphs = 500'000;

RichText MakeText(std::int64_t paragraphs) {
    constexpr std::u16string_view kWords = u"every paragraph reads like any other one does ";
    RichText rich;
    RichText plain;
    while (plain.Length() < kParagraphLength - 2)
        plain.AppendPlain(kWords, {});
    plain = RichText::Plain(plain.text.substr(0, kParagraphLength - 2) + u"\r\n");
    RichText bold = plain;
    bold.char_runs.assign({{10, {}}, {5, {}}, {kParagraphLength - 15, {}}});
    bold.char_runs[1].format.bold = true;
    for (std::int64_t paragraph = 0; paragraph < paragraphs; ++paragraph)
        rich.Append(paragraph % 10 == 0 ? bold : plain);
    return rich;
}

const RichText& LargeText() {
    static const RichText text = MakeText(kParagraphs);
    return text;
}

class Places {
  public:
    explicit Places(std::int64_t length) : length_(static_cast<std::uint32_t>(length)) {}
    CharPos Next() { return CharPos{static_cast<std::int32_t>(random_() % length_)}; }

  private:
    std::mt19937 random_{7};
    std::uint32_t length_;
};

std::int64_t BytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

// Of this thread, so that the longest of many edits is not that of a busy machine.
double ProcessorMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// A loaded text handed to the document. The text itself was made before.
void BM_Load(benchmark::State& state) {
    std::int64_t bytes = 0;
    std::optional<RichDocument> document;
    for (auto unused : state) {
        state.PauseTiming();
        document.reset();
        const std::int64_t before = BytesInUse();
        document.emplace();
        RichText text = LargeText();
        state.ResumeTiming();
        document->SetRich(std::move(text));
        state.PauseTiming();
        bytes = BytesInUse() - before - document->Length() * std::int64_t{2};
        state.ResumeTiming();
    }
    state.counters["bytes_beside_text"] = static_cast<double>(bytes) / kParagraphs;
}
BENCHMARK(BM_Load)->Unit(benchmark::kMillisecond);

// The first letter in the middle of a text that was just loaded.
void BM_FirstEdit(benchmark::State& state) {
    std::optional<RichDocument> document;
    for (auto unused : state) {
        state.PauseTiming();
        document.emplace();
        document->SetRich(LargeText());
        document->MoveCaret(CharPos{document->Length() / 2});
        state.ResumeTiming();
        document->Type(u"x");
    }
}
BENCHMARK(BM_FirstEdit)->Iterations(5)->Unit(benchmark::kMicrosecond);

using Edit = void (*)(RichDocument&, CharPos);

void TypeLetter(RichDocument& document, CharPos place) {
    document.MoveCaret(place);
    document.Type(u"x");
}
void DeleteWord(RichDocument& document, CharPos place) {
    document.MoveCaret(place);
    document.DeleteForward(TextUnit::Word);
}
void Embolden(RichDocument& document, CharPos place) {
    CharFormatChange change;
    change.bold = true;
    document.Format({place, 40}, change);
}
void Center(RichDocument& document, CharPos place) {
    ParagraphFormatChange change;
    change.alignment = Alignment::Center;
    document.FormatParagraphs({place, 0}, change);
}
void UndoAndRedo(RichDocument& document, CharPos place) {
    TypeLetter(document, place);
    document.Undo();
    document.Redo();
}

// Each edit far from the last one, all observers and line look-ups alive; the longest counts.
void BM_EditAnywhere(benchmark::State& state, Edit edit) {
    RichDocument document;
    document.SetRich(LargeText());
    BlockIndex index(document);
    document.AddObserver(index);
    benchmark::DoNotOptimize(document.LineOfChar(CharPos{0}));
    Places places(document.Length());
    double longest = 0;
    for (auto unused : state) {
        const double begin = ProcessorMilliseconds();
        edit(document, places.Next());
        longest = std::max(longest, ProcessorMilliseconds() - begin);
    }
    document.RemoveObserver(index);
    if (!document.CanUndo())
        state.SkipWithError("nothing was edited");
    state.counters["longest_ms"] = longest;
}
BENCHMARK_CAPTURE(BM_EditAnywhere, letter, TypeLetter)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_EditAnywhere, word, DeleteWord)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_EditAnywhere, bold, Embolden)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_EditAnywhere, centre, Center)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_EditAnywhere, undo, UndoAndRedo)->Unit(benchmark::kMicrosecond);

// A word typed in one place.
void BM_TypeOn(benchmark::State& state) {
    RichDocument document;
    document.SetRich(LargeText());
    BlockIndex index(document);
    document.AddObserver(index);
    document.MoveCaret(CharPos{document.Length() / 2});
    for (auto unused : state)
        document.Type(u"x");
    document.RemoveObserver(index);
}
BENCHMARK(BM_TypeOn);

struct LookUpBench {
    LookUpBench() {
        document.SetRich(LargeText());
        index.Reset();
        document.AddObserver(index);
        for (int edit = 0; edit < edits; ++edit)
            TypeLetter(document, places.Next());
    }
    ~LookUpBench() { document.RemoveObserver(index); }
    LookUpBench(const LookUpBench&) = delete;
    LookUpBench& operator=(const LookUpBench&) = delete;

    static constexpr int edits = 1000;
    RichDocument document;
    BlockIndex index{document};
    Places places{kParagraphs * kParagraphLength};
};

using LookUp = std::int32_t (*)(const LookUpBench&, CharPos);

std::int32_t Paragraph(const LookUpBench& bench, CharPos place) {
    return bench.document.Rich({place, kParagraphLength}).Length();
}
std::int32_t FormatOf(const LookUpBench& bench, CharPos place) {
    return bench.document.FormatAt(place).half_points;
}
std::int32_t LineOf(const LookUpBench& bench, CharPos place) {
    return bench.document.LineOfChar(place);
}
std::int32_t FirstOfLine(const LookUpBench& bench, CharPos place) {
    return bench.document.FirstCharOfLine(place.value / kParagraphLength).value;
}
std::int32_t BlockOfChar(const LookUpBench& bench, CharPos place) {
    return bench.index.OfChar(place).number;
}
std::int32_t BlockAtY(const LookUpBench& bench, CharPos place) {
    return bench.index.AtY(static_cast<double>(place.value) / kParagraphLength * 16).number;
}
std::int32_t BlockOfParagraph(const LookUpBench& bench, CharPos place) {
    return bench.index.OfParagraph(ParagraphNumber{place.value / kParagraphLength}).number;
}

void BM_LookUp(benchmark::State& state, LookUp look_up) {
    static LookUpBench bench;
    Places places(bench.document.Length());
    for (auto unused : state)
        benchmark::DoNotOptimize(look_up(bench, places.Next()));
}
BENCHMARK_CAPTURE(BM_LookUp, paragraph, Paragraph);
BENCHMARK_CAPTURE(BM_LookUp, format, FormatOf);
BENCHMARK_CAPTURE(BM_LookUp, line, LineOf);
BENCHMARK_CAPTURE(BM_LookUp, first_of_line, FirstOfLine);
BENCHMARK_CAPTURE(BM_LookUp, block_of_char, BlockOfChar);
BENCHMARK_CAPTURE(BM_LookUp, block_at_y, BlockAtY);
BENCHMARK_CAPTURE(BM_LookUp, block_of_paragraph, BlockOfParagraph);

void BM_FirstLookUpOfALine(benchmark::State& state) {
    MemoryEditor editor;
    for (auto unused : state) {
        state.PauseTiming();
        editor.SetRich(LargeText());
        state.ResumeTiming();
        benchmark::DoNotOptimize(editor.LineOfChar(CharPos{0}));
    }
}
BENCHMARK(BM_FirstLookUpOfALine)->Iterations(5)->Unit(benchmark::kMillisecond);

void BM_BuildBlockIndex(benchmark::State& state) {
    RichDocument document;
    document.SetRich(LargeText());
    std::int64_t bytes = 0;
    for (auto unused : state) {
        const std::int64_t before = BytesInUse();
        const BlockIndex index(document);
        if (index.BlockCount() != kParagraphs + 1)
            state.SkipWithError("paragraphs are lost");
        bytes = BytesInUse() - before;
    }
    state.counters["bytes_a_paragraph"] = static_cast<double>(bytes) / kParagraphs;
}
BENCHMARK(BM_BuildBlockIndex)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorvane
