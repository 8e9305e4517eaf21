// When a window has what of a long compare: early_times [PARAGRAPHS [SIGHT]]. From the start of the
// run with both texts in memory, wall time; every tenth paragraph is changed.
#include <chrono>
#include <cstdio>
#include <random>
#include <string>

#include "common/base/text_encoding.h"
#include "common/platform/platform.h"
#include "common/process_state.h"
#include "compare/run/compare_job.h"
#include "compare/run/run_control.h"
#include "compare/viewer_window.h"

namespace zorvane {
namespace {

using Clock = std::chrono::steady_clock;

SharedText TextOf(const std::string& utf8) {
    RichText text;
    text.text = ToUtf16(utf8);
    text.SetOneFormat({});
    return std::make_shared<const RichText>(std::move(text));
}

PerSide<SharedText> MakeTexts(int paragraphs) {
    std::mt19937 random(1);
    PerSide<std::string> texts;
    for (int number = 0; number < paragraphs; ++number) {
        std::string line;
        while (line.size() < 80)
            line += "word" + std::to_string(random() % 5000) + " ";
        texts.original += line + "\r\n";
        if (number % 10 == 5)
            line.insert(line.find(' ', random() % 60), "x");
        texts.modified += line + "\r\n";
    }
    return {TextOf(texts.original), TextOf(texts.modified)};
}

class Bench {
  public:
    Bench(int paragraphs, int sight) : paragraphs_(paragraphs), sight_(sight) {
        telling_.manner.bSilent = true;
        IgnoreFailure(options_.LoadStateFromFile(*process_.settings), "the defaults will do");
    }

    void Run(const char* name, View view) {
        CompareInput input(process_, telling_);
        input.options = options_;
        input.settings = DefaultCompareFilesSettings("");
        input.texts = MakeTexts(paragraphs_);
        input.view = view;
        input.questions = &window_;
        input.service = &service_;
        input.show_early = [this](EarlyOutcome early) { Hear(*early.comparison); };
        input.in_sight = [this] { return ParagraphsInSight{sight_, sight_ + 60}; };
        std::printf("%s, %d paragraphs:", name, paragraphs_);
        begin_ = Clock::now();
        RunControl control;
        const CompareOutcome outcome = RunCompareJob(std::move(input), control);
        Tell(outcome.end == RunEnd::Finished ? "result" : "failed");
        std::printf("\n");
    }

  private:
    void Hear(const Comparison& found) {
        Tell(found.sections.empty()
                 ? "paragraphs"
                 : (found.details.back().section_count == 0 ? "words in sight" : "all words"));
    }
    void Tell(const char* what) {
        const std::chrono::duration<double, std::milli> time = Clock::now() - begin_;
        std::printf("  %s %.0f ms", what, time.count());
    }

    int paragraphs_;
    std::int32_t sight_;
    Platform platform_ = MakePosixPlatform();
    ProcessState process_{platform_};
    RunTelling telling_{process_.messages};
    clsCompareFileOptions options_;
    SilentWindow window_;
    ConversionService service_{platform_};
    Clock::time_point begin_;
};

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    const int paragraphs = argc > 1 ? std::stoi(argv[1]) : 50000;
    zorvane::Bench bench(paragraphs, argc > 2 ? std::stoi(argv[2]) : paragraphs / 2);
    bench.Run("side by side", zorvane::View::SideBySide);
    bench.Run("all in one", zorvane::View::AllInOne);
}
