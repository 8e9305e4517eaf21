// The engine in memory: the thousands of changed paragraphs inside a document, and how time grows
// with the size of one text.
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "common/base/text_encoding.h"
#include "compare/engine/pairing/section_finder.h"
#include "compare/engine/vestrel_x.h"

namespace zorvane {
namespace {

// Words of a changed paragraph, a word a line.
std::string WordLines(std::mt19937& random, std::int64_t words) {
    std::string text;
    for (std::int64_t i = 0; i < words; ++i)
        text += std::string(2 + random() % 8, static_cast<char>('a' + random() % 26)) + " \r\n";
    return text;
}

// The same lines with every n-th changed.
std::string Edited(const std::string& text, std::int64_t every) {
    std::string edited;
    std::int64_t line = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find("\r\n", begin) + 2;
        edited += ++line % every == 0 ? "changed \r\n" : text.substr(begin, end - begin);
        begin = end;
    }
    return edited;
}

// One changed paragraph, as in a thousand of a document.
void BM_Sections(benchmark::State& state) {
    std::mt19937 random(1);
    const auto paragraph = [](std::string words) {
        for (std::size_t at = words.find("\r\n"); at != std::string::npos; at = words.find("\r\n"))
            words.erase(at, 2);
        return ToUtf16(words);
    };
    const std::string words = WordLines(random, state.range(0));
    const std::u16string original = paragraph(words);
    const std::u16string modified = paragraph(Edited(words, 10));
    SectionFinder finder({});
    std::vector<FoundSection> sections;
    std::vector<FoundLetters> letters;
    for (auto _ : state) {
        sections.clear();
        finder.Find(original, modified, nullptr, sections, letters);
        if (sections.empty()) {
            state.SkipWithError("the sections are missing");
            break;
        }
        benchmark::DoNotOptimize(sections.data());
    }
}
BENCHMARK(BM_Sections)->ArgName("words")->Arg(20)->Arg(40)->Arg(60);

// A whole document; the time per line should stay as the size doubles.
void BM_Compare(benchmark::State& state) {
    std::mt19937 random(1);
    const std::string original = WordLines(random, state.range(0));
    const std::string modified = Edited(original, 1000 / state.range(1));
    VestrelX engine;
    for (auto _ : state) {
        if (!engine.CompareText(original, modified).ok() || engine.getDifferenceCount() == 0) {
            state.SkipWithError("the records are missing");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Compare)
    ->ArgNames({"lines", "edits_per_mille"})
    ->Args({25000, 10})
    ->Args({50000, 10})
    ->Args({100000, 10})
    ->Args({200000, 10})
    ->Args({50000, 100});

}  // namespace
}  // namespace zorvane
