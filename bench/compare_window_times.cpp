// What the whole window of Compare Files takes with two large texts: a kind of differences counted
// or not, another view, filters, folds, wrapping, zoom, size, scrolling and walking. Runs without a
// display (QT_QPA_PLATFORM=offscreen HOME=(an empty folder)), at another scale by
// QT_SCALE_FACTOR=2:
//   zv_compare_window_times [ORIGINAL MODIFIED]
// Without names it writes two texts of 500,000 words, every tenth paragraph changed. Milliseconds
// of the processor, all threads together, and of the clock, until the window shows it.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <QApplication>

#include "app/run_modes.h"
#include "app/ui/main_window.h"
#include "bench/window_times.h"
#include "common/platform/platform.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

void WriteText(const std::string& name, int changed) {
    constexpr int kParagraphs = 38'462;  // of thirteen words
    std::ofstream file(name);
    for (int at = 0; at < kParagraphs; ++at) {
        file << "Paragraph " << at << " says that the Tenant pays the rent in advance, each ";
        file << (changed > 0 && at % changed == 0 ? "year.\n" : "month.\n");
    }
}

class Bench {
  public:
    Bench(MainWindow& window, CompareFilesPage& page) : window_(window), page_(page) {}

    void Run() {
        Kinds();
        Each("view: all in one, side by side", {"view.all_in_one"}, 6);
        Each("filter",
             {"view.show_changes", "view.show_additions", "view.show_deletions", "view.show_all"},
             3);
        Each("fold, unfold", {"view.fold"}, 6);
        Each("wrap off, on", {"view.wrap"}, 6);
        Each("align off, on", {"view.align"}, 6);
        Each("zoom in, out", {"view.zoom_in", "view.zoom_out"}, 20);
        Each("layouts", {"view.result", "view.editors", "view.both"}, 5);
        Resize("window resized");
        Each("next difference", {"go.next"}, kSteps);
        Scroll("scroll 3 lines, side by side");
        Each("to all in one", {"view.all_in_one"}, 1);
        Scroll("scroll 3 lines, all in one");
        Resize("window resized, all in one");
    }

  private:
    static constexpr int kSteps = 200;

    bool Done() { return !page_.Viewer()->Busy() && page_.Viewer()->ShownComparison() != nullptr; }

    void Each(const char* name, const std::vector<const char*>& commands, int times) {
        WindowTimes figures;
        for (int turn = 0; turn < times; ++turn)
            for (const char* command : commands)
                figures.Take([&] { window_.Commands().Run(command); }, [this] { return Done(); });
        figures.Tell(name);
    }

    void Kinds() {
        for (const char* kind :
             {"compare.count_case", "compare.count_blanks", "compare.count_numbering",
              "compare.count_formatting", "compare.count_moves"})
            Each(kind, {kind}, 6);
    }

    void Resize(const char* name) {
        WindowTimes figures;
        for (int step = 0; step < kSteps; ++step)
            figures.Take([&] { window_.resize(1280 + step % 100, 900 - step % 50); });
        figures.Tell(name);
    }

    void Scroll(const char* name) {
        ComparePane& pane = page_.Pane();
        RichTextView& view = pane.AllInOne() ? pane.MergedView() : pane.View(Side::Original);
        WindowTimes figures;
        for (int step = 0; step < kSteps; ++step)
            figures.Take([&] { view.ScrollByPixels(60); });
        figures.Tell(name);
    }

    MainWindow& window_;
    CompareFilesPage& page_;
};

int Run(Theme& theme, const std::string& original, const std::string& modified) {
    Platform platform = MakePosixPlatform();
    ProcessState process(platform);
    MainWindow window(process, theme);
    frmMainMDI frame(process, window, window.Viewers());
    window.SetFrame(frame);
    CommandLineRequest request;
    Main(process, "", request, frame);
    window.BeginInteractive();
    window.resize(1280, 900);
    QApplication::processEvents();
    WindowTimes compare;
    compare.Take([&] { window.OpenPair(original, modified); },
                 [&] {
                     const frmCompareFiles* viewer = window.ActivePage()->Viewer();
                     return !viewer->Busy() && viewer->ShownComparison() != nullptr;
                 });
    compare.Tell("loaded, compared and shown");
    Bench(window, *window.ActivePage()).Run();
    frame.UnloadAll();
    return 0;
}

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    zorvane::Theme theme(application);
    constexpr int kArguments = 3;
    if (argc == kArguments)
        return zorvane::Run(theme, argv[1], argv[2]);
    const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                         ("compare_window_times." + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    zorvane::WriteText(folder / "old.txt", 0);
    zorvane::WriteText(folder / "new.txt", 10);
    const int status = zorvane::Run(theme, folder / "old.txt", folder / "new.txt");
    std::filesystem::remove_all(folder);
    return status;
}
