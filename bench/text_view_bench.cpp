// How fast the views show, scroll and edit long texts. Runs without a display
// (QT_QPA_PLATFORM=offscreen), at another scale by QT_SCALE_FACTOR=2. Each step is the call and all
// that it makes Qt do until the window is painted; the counters are milliseconds, of the clock and
// (cpu) of the processor, which a busy machine does not change.
#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include "compare/engine/compare_texts.h"
#include "compare/ui/compare_pane.h"

namespace zorvane {
namespace {

constexpr int kSteps = 200;

// Paragraphs of 80 characters, one in ten with three formats; one in `changed` differs by a word.
RichText MakeText(int paragraphs, int changed) {
    RichText text;
    CharFormat plain;
    CharFormat bold;
    bold.bold = true;
    for (int at = 0; at < paragraphs; ++at) {
        std::string line = "Paragraph " + std::to_string(at) +
                           " says that the Tenant pays the rent in advance, on the first day,";
        line += changed > 0 && at % changed == 0 ? " each year." : " each month.";
        std::u16string wide(line.begin(), line.end());
        if (at % 10 == 0) {
            text.AppendPlain(wide.substr(0, 20), plain);
            text.AppendPlain(wide.substr(20, 20), bold);
            text.AppendPlain(wide.substr(40), plain);
        } else {
            text.AppendPlain(wide, plain);
        }
        text.AppendPlain(u"\r\n", plain);
    }
    return text;
}

double MillisecondsOf(const std::function<void()>& step) {
    const auto begin = std::chrono::steady_clock::now();
    step();
    QApplication::processEvents();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
    return time.count();
}

void Tell(benchmark::State& state, const std::string& name, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    state.counters[name + "p50"] = times[times.size() / 2];
    state.counters[name + "p99"] = times[times.size() * 99 / 100];
}

// Runs a step many times and tells its median and 99th percentile.
void Measure(benchmark::State& state, const std::function<void(int)>& step) {
    std::vector<double> times;
    std::vector<double> processor;
    for (auto run : state) {
        static_cast<void>(run);
        for (int at = 0; at < kSteps; ++at) {
            const std::clock_t begin = std::clock();
            times.push_back(MillisecondsOf([&] { step(at); }));
            processor.push_back(1000.0 * static_cast<double>(std::clock() - begin) /
                                CLOCKS_PER_SEC);
        }
    }
    Tell(state, "", std::move(times));
    Tell(state, "cpu_", std::move(processor));
}

struct ShownText {
    explicit ShownText(RichText text) {
        view.resize(900, 1000);
        document.SetRich(std::move(text));
        view.show();
        QApplication::processEvents();
    }
    RichDocument document;
    RichTextView view{document};
};

// A text is handed over and painted.
void BM_HandOver(benchmark::State& state) {
    const RichText text = MakeText(static_cast<int>(state.range(0)), 0);
    ShownText shown{RichText()};
    std::vector<double> times;
    for (auto run : state) {
        RichText copy = text;
        const double time = MillisecondsOf([&] { shown.document.SetRich(std::move(copy)); });
        times.push_back(time);
        state.SetIterationTime(time / 1000);
        static_cast<void>(run);
    }
    if (shown.view.Page().Index().ParagraphCount() != state.range(0) + 1)
        state.SkipWithError("not all paragraphs are shown");
    state.counters["worst"] = *std::max_element(times.begin(), times.end());
}
BENCHMARK(BM_HandOver)->Arg(50000)->Arg(500000)->Iterations(10)->UseManualTime();

void BM_Scroll(benchmark::State& state) {
    ShownText shown(MakeText(static_cast<int>(state.range(0)), 0));
    shown.view.ShowRow(static_cast<std::int32_t>(state.range(0) / 2));
    Measure(state, [&](int /*step*/) { shown.view.ScrollByPixels(60); });
}
BENCHMARK(BM_Scroll)->Arg(50000)->Arg(500000)->Iterations(1);

void BM_Page(benchmark::State& state) {
    ShownText shown(MakeText(static_cast<int>(state.range(0)), 0));
    Measure(state, [&](int /*step*/) { shown.view.ScrollByPixels(900); });
}
BENCHMARK(BM_Page)->Arg(500000)->Iterations(1);

void Type(RichTextView& view) {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QApplication::sendEvent(&view, &key);
}

void BM_Type(benchmark::State& state) {
    ShownText shown(MakeText(static_cast<int>(state.range(0)), 0));
    shown.document.MoveCaret(CharPos{shown.document.Length() / 2});
    shown.view.EnsureCaretVisible();
    Measure(state, [&](int /*step*/) { Type(shown.view); });
}
BENCHMARK(BM_Type)->Arg(50000)->Arg(500000)->Iterations(1);

void BM_Resize(benchmark::State& state) {
    ShownText shown(MakeText(static_cast<int>(state.range(0)), 0));
    Measure(state, [&](int step) { shown.view.resize(700 + step, 1000 - step); });
}
BENCHMARK(BM_Resize)->Arg(50000)->Arg(500000)->Iterations(1);

// One paragraph of a million characters; the argument tells whether lines wrap.
void BM_LongParagraph(benchmark::State& state) {
    RichText text = MakeText(10000, 0);
    std::erase_if(text.text, [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
    ShownText shown(RichText::Plain(text.text.substr(0, 1000000)));
    shown.view.SetWrap(state.range(0) == 1);
    shown.document.MoveCaret(CharPos{500000});
    shown.view.EnsureCaretVisible();
    Measure(state, [&](int step) {
        if (step % 2 == 0)
            Type(shown.view);
        else
            shown.view.ScrollByPixels(step % 4 == 1 ? 60 : -60);
    });
}
BENCHMARK(BM_LongParagraph)->Arg(1)->Arg(0)->Iterations(1);

struct ShownPair {
    explicit ShownPair(int paragraphs) {
        original.SetRich(MakeText(paragraphs, 0));
        modified.SetRich(MakeText(paragraphs, 10));
        Result<Comparison> result =
            CompareTexts({std::make_shared<const std::u16string>(original.Text()),
                          std::make_shared<const std::u16string>(modified.Text())},
                         CompareOptions(), nullptr);
        comparison = std::make_shared<const Comparison>(std::move(result).value());
        pane.resize(1440, 900);
        pane.copy_over = [](std::int32_t /*record*/, Side /*from*/) {};
        pane.SetComparison(comparison);
        pane.show();
        QApplication::processEvents();
    }
    RichDocument original;
    RichDocument modified;
    std::shared_ptr<const Comparison> comparison;
    ComparePane pane{original, modified};
};

void BM_PairHandOver(benchmark::State& state) {
    ShownPair shown(static_cast<int>(state.range(0)));
    for (auto run : state) {
        state.SetIterationTime(MillisecondsOf([&] { shown.pane.SetComparison(shown.comparison); }) /
                               1000);
        static_cast<void>(run);
    }
}
BENCHMARK(BM_PairHandOver)->Arg(50000)->Arg(500000)->Iterations(5)->UseManualTime();

void BM_PairScroll(benchmark::State& state) {
    ShownPair shown(static_cast<int>(state.range(0)));
    Measure(state, [&](int /*step*/) { shown.pane.View(Side::Original).ScrollByPixels(60); });
}
BENCHMARK(BM_PairScroll)->Arg(50000)->Arg(500000)->Iterations(1);

void BM_PairWalk(benchmark::State& state) {
    ShownPair shown(static_cast<int>(state.range(0)));
    const auto records = static_cast<std::int32_t>(shown.comparison->records.size());
    std::mt19937 random(1);
    Measure(state, [&](int step) {
        shown.pane.SetCurrent(
            step % 2 == 0 ? step
                          : std::uniform_int_distribution<std::int32_t>(0, records - 1)(random));
    });
}
BENCHMARK(BM_PairWalk)->Arg(50000)->Arg(500000)->Iterations(1);

void BM_PairType(benchmark::State& state) {
    ShownPair shown(static_cast<int>(state.range(0)));
    shown.original.MoveCaret(CharPos{shown.original.Length() / 2});
    shown.pane.View(Side::Original).EnsureCaretVisible();
    Measure(state, [&](int /*step*/) { Type(shown.pane.View(Side::Original)); });
}
BENCHMARK(BM_PairType)->Arg(50000)->Arg(500000)->Iterations(1);

void BM_PairResize(benchmark::State& state) {
    ShownPair shown(static_cast<int>(state.range(0)));
    Measure(state, [&](int step) { shown.pane.resize(1200 + step, 900); });
}
BENCHMARK(BM_PairResize)->Arg(50000)->Arg(500000)->Iterations(1);

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
