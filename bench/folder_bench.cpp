// Two folder trees compared, with the times of `diff -rq` in the same run: 20,000 pairs of some 9
// KB of which one in a hundred differs, as after a day's work on a large project, from memory and
// from the disk; 100,000 of them; and a million empty files for the memory of the records.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include "compare/engine/folder_scan.h"

namespace {

using namespace zorvane;
namespace fs = std::filesystem;

class Trees {
  public:
    Trees(int files, std::size_t bytes) {
        std::string pattern = (fs::temp_directory_path() / "zvbench-XXXXXX").string();
        root_ = mkdtemp(pattern.data());
        std::mt19937 random(1);
        std::string text(bytes + 1000, 'x');
        for (char& byte : text)
            byte = static_cast<char>('a' + random() % 26);
        for (int file = 0; file < files; ++file) {
            const std::string folder =
                "/d" + std::to_string(file / 1000) + "/e" + std::to_string(file / 50 % 20) + "/";
            const std::size_t size = bytes == 0 ? 0 : bytes - 500 + random() % 1000;
            for (const char* side : {"/a", "/b"}) {
                fs::create_directories(root_ + side + folder);
                std::string own = text.substr(0, size);
                if (side[1] == 'b' && file % 100 == 0 && size > 0)
                    own[size / 2] = '#';
                std::ofstream(root_ + side + folder + std::to_string(file) + ".txt") << own;
            }
        }
    }
    ~Trees() {
        std::error_code error;
        fs::remove_all(root_, error);
    }
    Trees(const Trees&) = delete;
    Trees& operator=(const Trees&) = delete;
    const std::string& Root() const { return root_; }

  private:
    std::string root_;
};

std::size_t Compare(const Trees& trees, int threads, bool content) {
    FolderScanOptions options;
    options.threads = threads;
    options.rules.content = content;
    FolderScan scan;
    scan.Start({trees.Root() + "/a", trees.Root() + "/b"}, options, nullptr);
    scan.Join();
    std::size_t different = 0;
    for (std::size_t index = 0; index < scan.Count(); ++index)
        different += scan.Entry(index).content == PairContent::Different;
    return different;
}

// What they hold has to come from the disk again; their names stay known. Others' files are left.
void ForgetContents(const Trees& trees) {
    sync();
    for (const auto& entry : fs::recursive_directory_iterator(trees.Root())) {
        if (!entry.is_regular_file())
            continue;
        const int file = open(entry.path().c_str(), O_RDONLY | O_CLOEXEC);
        static_cast<void>(posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED));
        close(file);
    }
}

void CompareBench(benchmark::State& state) {
    const auto files = static_cast<int>(state.range(0));
    const Trees trees(files, 9000);
    if (Compare(trees, 0, true) != static_cast<std::size_t>(files) / 100)
        state.SkipWithError("wrong verdicts");
    const bool cold = state.range(2) != 0;
    double diff = 0;
    for (auto step : state) {
        state.PauseTiming();
        if (cold)
            ForgetContents(trees);
        state.ResumeTiming();
        benchmark::DoNotOptimize(Compare(trees, static_cast<int>(state.range(1)), true));
        state.PauseTiming();
        if (cold)
            ForgetContents(trees);
        const auto before = std::chrono::steady_clock::now();
        const std::string command =
            "diff -rq " + trees.Root() + "/a " + trees.Root() + "/b > /dev/null";
        if (std::system(command.c_str()) == 0)
            state.SkipWithError("diff saw no difference");
        diff += std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count();
        state.ResumeTiming();
    }
    state.counters["diff_ms"] = 1000 * diff / static_cast<double>(state.iterations());
}
BENCHMARK(CompareBench)
    ->Name("BM_CompareFolders")
    ->ArgNames({"pairs", "threads", "cold"})
    ->Args({20000, 0, 0})
    ->Args({20000, 1, 0})
    ->Args({20000, 2, 0})
    ->Args({20000, 0, 1})
    ->Args({100000, 0, 0})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

double ResidentMegabytes() {
    std::ifstream status("/proc/self/statm");
    double all = 0;
    double resident = 0;
    status >> all >> resident;
    return resident * 4096 / 1e6;
}

void RecordMemory(benchmark::State& state) {
    const Trees trees(static_cast<int>(state.range(0)), 0);
    const double before = ResidentMegabytes();
    for (auto step : state) {
        FolderScan scan;
        FolderScanOptions options;
        options.rules.content = false;
        scan.Start({trees.Root() + "/a", trees.Root() + "/b"}, options, nullptr);
        scan.Join();
        state.counters["records"] = static_cast<double>(scan.Count());
        state.counters["MB"] = ResidentMegabytes() - before;
    }
}
BENCHMARK(RecordMemory)
    ->Name("BM_MemoryOfRecords")
    ->ArgName("pairs")
    ->Arg(1000000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
