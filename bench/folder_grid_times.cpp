// What the grid of a Compare Folders window takes with many rows: scrolling, sorting, filtering,
// the report and memory; and how long the window pauses meanwhile. Runs without a display:
// QT_QPA_PLATFORM=offscreen HOME=(an empty folder)
//   zv_folder_grid_times ORIGINAL MODIFIED
// Milliseconds of the processor, which a busy machine does not change, and of the clock.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>

#include "app/run_modes.h"
#include "app/ui/main_window.h"
#include "bench/window_times.h"
#include "common/platform/platform.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr int kSteps = 300;

double MegabytesInUse() {
    std::ifstream status("/proc/self/statm");
    double pages = 0;
    double resident = 0;
    status >> pages >> resident;
    constexpr double kPagesOfMegabyte = 256;
    return resident / kPagesOfMegabyte;
}

// The turns of the window until something beside it is done.
void LiveUntil(WindowTimes& turns, const std::function<bool()>& done) {
    while (!done()) {
        turns.Take([] {});
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void MeasureOrders(MainWindow& window, CompareFoldersPage& page) {
    const auto made = [&page] { return !page.Table().MakesOrder(); };
    for (int column = 0; column < page.Table().columnCount(); ++column) {
        WindowTimes pauses(CLOCK_THREAD_CPUTIME_ID);
        const double begin = MillisecondsOf(CLOCK_MONOTONIC);
        for (int turn = 0; turn < 3; ++turn) {
            pauses.Take([&] { Q_EMIT page.Grid().horizontalHeader()->sectionClicked(column); });
            LiveUntil(pauses, made);
        }
        pauses.Tell(("sort by column " + std::to_string(column)).c_str());
        std::printf("  until the rows stood there: %.0f ms each\n",
                    (MillisecondsOf(CLOCK_MONOTONIC) - begin) / 3);
    }
    WindowTimes filters(CLOCK_THREAD_CPUTIME_ID);
    for (const char* command : {"view.show_changes", "view.show_deletions", "folders.show_same",
                                "view.show_additions", "view.show_all"}) {
        filters.Take([&] { window.Commands().Run(command); });
        LiveUntil(filters, made);
    }
    filters.Tell("filter");
}

void MeasureReport(MainWindow& window, CompareFoldersPage& page) {
    WindowTimes pauses(CLOCK_THREAD_CPUTIME_ID);
    const double begin = MillisecondsOf(CLOCK_MONOTONIC);
    const std::string file =
        (std::filesystem::temp_directory_path() / "folder_grid_times.csv").string();
    page.Viewer()->Settings().txtDefaultReportCSV = file;
    pauses.Take([&] { window.Commands().Run("report.make"); });
    LiveUntil(pauses, [&page] { return !page.Viewer()->WritesReport(); });
    pauses.Tell("report");
    std::printf("  written after %.0f ms\n", MillisecondsOf(CLOCK_MONOTONIC) - begin);
    std::filesystem::remove(file);
}

void Measure(MainWindow& window, CompareFoldersPage& page) {
    QScrollBar& bar = *page.Grid().verticalScrollBar();
    std::mt19937 random(1);
    WindowTimes jumps(CLOCK_THREAD_CPUTIME_ID);
    WindowTimes steps(CLOCK_THREAD_CPUTIME_ID);
    for (int step = 0; step < kSteps; ++step) {
        jumps.Take([&] {
            bar.setValue(static_cast<int>(random() % static_cast<unsigned>(bar.maximum() + 1)));
        });
        steps.Take([&] { bar.setValue(bar.value() + bar.singleStep() * 3); });
    }
    jumps.Tell("scroll: a jump");
    steps.Tell("scroll: a step of the wheel");
    MeasureOrders(window, page);
    MeasureReport(window, page);
}

// The report is opened by nobody.
class NoShell : public ShellOpen {
  public:
    Status Open(const std::string&) override { return Status::Ok(); }
    Status EditText(const std::string&) override { return Status::Ok(); }
};

int Run(Theme& theme, const std::string& original, const std::string& modified) {
    Platform platform = MakePosixPlatform();
    platform.shell = std::make_unique<NoShell>();
    ProcessState process(platform);
    MainWindow window(process, theme);
    frmMainMDI frame(process, window, window.Viewers());
    window.SetFrame(frame);
    CommandLineRequest request;
    Main(process, "", request, frame);
    window.BeginInteractive();
    window.resize(1280, 800);
    QApplication::processEvents();
    const double before = MegabytesInUse();
    const double begin = MillisecondsOf(CLOCK_MONOTONIC);
    window.OpenFolders({original, modified});
    CompareFoldersPage& page = *window.ActiveFolders();
    WindowTimes turns(CLOCK_THREAD_CPUTIME_ID);
    LiveUntil(turns, [&page] { return page.Viewer()->CanReport(); });
    std::printf("%d rows after %.1f s, %.0f MB more than before\n", page.Table().rowCount(),
                (MillisecondsOf(CLOCK_MONOTONIC) - begin) / 1e3, MegabytesInUse() - before);
    turns.Tell("the window while it runs");
    Measure(window, page);
    std::printf("%.0f MB more than before\n", MegabytesInUse() - before);
    frame.UnloadAll();
    return 0;
}

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    constexpr int kArguments = 3;
    if (argc != kArguments) {
        std::fprintf(stderr, "folder_grid_times ORIGINAL MODIFIED\n");
        return 2;
    }
    QApplication application(argc, argv);
    zorvane::Theme theme(application);
    return zorvane::Run(theme, argv[1], argv[2]);
}
