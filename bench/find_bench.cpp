// Text found in the files of a folder, with the times of ripgrep and grep in the same run where
// they are installed: 20,000 files of some 16 KB, as a large project or a year of letters; lines
// that take endless time in a matcher that goes back and forth; and texts of documents from the
// cache.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "find/engine/line_finder.h"
#include "load/text_cache.h"

namespace {

using namespace zorvane;
namespace fs = std::filesystem;

class Folder {
  public:
    Folder() {
        std::string pattern = (fs::temp_directory_path() / "zvbench-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~Folder() {
        std::error_code error;
        fs::remove_all(path_, error);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    const std::string& Path() const { return path_; }

  private:
    std::string path_;
};

std::vector<std::string> Words(std::mt19937& random) {
    constexpr std::string_view kLetters = "etaoinshrdlucmfwyp";
    std::vector<std::string> words(5000);
    for (std::string& word : words) {
        const std::size_t size = 2 + random() % 8;
        while (word.size() < size)
            word += kLetters[random() % kLetters.size()];
    }
    return words;
}

void WriteText(const std::string& path, const std::vector<std::string>& words,
               std::mt19937& random) {
    std::string text;
    for (std::size_t left = 50 + random() % 350; left > 0; --left) {
        for (int word = 0; word < 7; ++word)
            text += words[random() % words.size()] + " ";
        const auto chance = random() % 1000;
        if (chance == 0)
            text += "Needle ";
        if (chance < 50)
            text += "common std::vector<int> ";
        if (chance >= 980)
            text += "2026-11-" + std::to_string(10 + random() % 18) + " ";
        text += chance >= 500 && chance < 520 ? "Token" + std::to_string(random() % 99) : "x";
        text += '\n';
    }
    std::ofstream(path, std::ios::binary) << text;
}

// One for all rows below.
const std::string& Tree() {
    static const Folder folder;
    static const bool made = [] {
        std::mt19937 random(1);
        const std::vector<std::string> words = Words(random);
        for (int file = 0; file < 20000; ++file) {
            const std::string below = folder.Path() + "/tree/d" + std::to_string(file / 1000) +
                                      "/e" + std::to_string(file / 50 % 20) + "/";
            fs::create_directories(below);
            WriteText(below + std::to_string(file) + ".txt", words, random);
        }
        return true;
    }();
    static const std::string tree = folder.Path() + (made ? "/tree" : "");
    return tree;
}

// Milliseconds; below 0 where the command cannot be run.
double TimeOf(const std::string& command) {
    const std::string line = "cd " + Tree() + " && " + command + " > ../zvbench-out 2>/dev/null";
    const auto before = std::chrono::steady_clock::now();
    const int status = std::system(line.c_str());
    const std::chrono::duration<double, std::milli> time =
        std::chrono::steady_clock::now() - before;
    return status == 0 ? time.count() : -1;
}

struct Search {
    const char* name;
    const char* ours;
    const char* ripgrep;
    const char* grep;
};
constexpr Search kSearches[] = {
    {"rare literal", "Needle", "-F Needle", "-F Needle"},
    {"common literal", "'common std'", "-F 'common std'", "-F 'common std'"},
    {"word without case", "-iw token5", "-iw token5", "-iw token5"},
    {"expression with a literal", "-e 'std::[a-z_]+<int>'", "'std::[a-z_]+<int>'",
     "-E 'std::[a-z_]+<int>'"},
    {"date", "-e '[0-9]{4}-[0-9]{2}-[0-9]{2}'", "'[0-9]{4}-[0-9]{2}-[0-9]{2}'",
     "-E '[0-9]{4}-[0-9]{2}-[0-9]{2}'"},
    {"no literal", "-e '[A-Z][a-z]+[0-9]+$'", "'[A-Z][a-z]+[0-9]+$'", "-E '[A-Z][a-z]+[0-9]+$'"},
};

void FindInTree(benchmark::State& state) {
    const Search& search = kSearches[state.range(0)];
    state.SetLabel(search.name);
    const std::string ours = std::string(ZORVANE_PROGRAM) + " find -r " + search.ours + " .";
    const std::string rg =
        std::string("rg -n --no-heading --no-ignore --hidden ") + search.ripgrep + " .";
    const std::string grep = std::string("LC_ALL=C.UTF-8 grep -rn ") + search.grep + " .";
    if (TimeOf(ours) < 0)
        state.SkipWithError("nothing was found");
    double rg_time = 0;
    double grep_time = 0;
    for (auto step : state) {
        state.SetIterationTime(TimeOf(ours) / 1000);
        rg_time += TimeOf(rg);
        grep_time += TimeOf(grep);
    }
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["rg_ms"] = rg_time / rounds;
    state.counters["grep_ms"] = grep_time / rounds;
}
BENCHMARK(FindInTree)
    ->Name("BM_FindInTree")
    ->ArgName("search")
    ->DenseRange(0, 5)
    ->Iterations(7)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

struct Hostile {
    const char* expression;
    const char* letters;
};
constexpr Hostile kHostile[] = {
    {"(a+)+$", "a"}, {"(a|b|c|d)*e$", "abcd"}, {"a.*b.*c.*d.*e$", "abcd"}};

void FindInHostileLines(benchmark::State& state) {
    const Hostile& hostile = kHostile[state.range(0)];
    state.SetLabel(hostile.expression);
    const auto length = static_cast<std::size_t>(state.range(1));
    std::mt19937 random(1);
    std::string text;
    const std::string_view letters = hostile.letters;
    while (text.size() < (std::size_t{32} << 20)) {
        for (std::size_t left = length; left > 0; --left)
            text += letters[random() % letters.size()];
        // With all that the expressions ask for, but not at the end.
        text += "e!\n";
    }
    FindRules rules;
    rules.text = hostile.expression;
    rules.syntax = FindSyntax::Full;
    rules.match_case = true;
    for (auto step : state) {
        const auto finder = LineFinder::Make(rules);
        MatchScratch scratch;
        std::size_t hits = 0;
        finder.value()->Find(
            text, scratch,
            [&hits](const LineHit&) {
                ++hits;
                return true;
            },
            [] { return false; });
        if (hits != 0)
            state.SkipWithError("a hit that is none");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(FindInHostileLines)
    ->Name("BM_FindInHostileLines")
    ->ArgNames({"expression", "length"})
    ->ArgsProduct({{0, 1, 2}, {80, 900, 4000}})
    ->Unit(benchmark::kMillisecond);

void ReadCachedTexts(benchmark::State& state) {
    const Folder folder;
    const TextCache cache(folder.Path() + "/cache");
    std::mt19937 random(1);
    const std::vector<std::string> words = Words(random);
    std::vector<TextKey> keys;
    for (int document = 0; document < 1000; ++document) {
        std::string text;
        while (text.size() < 60'000)
            text += words[random() % words.size()] + (random() % 12 == 0 ? "\n" : " ");
        keys.push_back(KeyOf(text, "bench"));
        cache.Keep(keys.back(), {text, {{PlaceKind::Page, 1, "1"}}});
    }
    const ByteFinder finder("needle in a document");
    for (auto step : state) {
        for (const TextKey& key : keys) {
            const auto document = cache.Find(key);
            if (!document)
                state.SkipWithError("a text is lost");
            else
                benchmark::DoNotOptimize(finder.Find(
                    document->text.data(), document->text.data() + document->text.size()));
        }
    }
}
BENCHMARK(ReadCachedTexts)
    ->Name("BM_ReadCachedTexts/documents:1000")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
