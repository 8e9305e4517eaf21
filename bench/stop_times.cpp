// How long a run takes from the wish to stop to its return: stop_times KIND [MOMENTS [SEED]].
// Processor time of the thread that runs, so that a busy machine does not stretch it. A stop may
// come at any moment, so the request lies at a random time and not at a question of the run.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include "common/platform/platform.h"
#include "common/process_state.h"
#include "compare/engine/report_model.h"
#include "compare/engine/vestrel_x.h"
#include "compare/run/compare_job.h"
#include "compare/run/report_run.h"
#include "compare/viewer_window.h"
#include "reports/json_report.h"
#include "reports/terminal_report.h"

namespace zorvane {
namespace {

double Now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Stops at a time, and notes the longest stretch without a question.
class TimedWatcher : public RunWatcher {
  public:
    explicit TimedWatcher(double stop_at) : stop_at_(stop_at) {}
    bool KeepGoing() override {
        const double now = Now();
        if (now - last_ > longest) {
            longest = now - last_;
            in_step = step_;
        }
        last_ = now;
        return now < stop_at_;
    }
    void Progress(RunStep step, double) override { step_ = step; }
    void End() { KeepGoing(); }

    double longest = 0;
    RunStep in_step = RunStep::None;

  private:
    double stop_at_;
    double last_ = Now();
    RunStep step_ = RunStep::None;
};

constexpr double kNever = 1e18;

// ---- what is compared ----

using LineOf = std::function<std::string(std::mt19937&, int)>;

std::string Prose(std::mt19937& random, int) {
    std::string line;
    while (line.size() < 80)
        line += "word" + std::to_string(random() % 500) + " ";
    return line;
}

std::string Row(std::mt19937& random, int number) {
    std::string line = std::to_string(number);
    for (int cell = 0; cell < 5; ++cell)
        line += "," + std::to_string(random() % 100000);
    return line;
}

std::string Changed(std::string line, std::mt19937& random) {
    const std::size_t at = line.find_first_of(" ,", random() % line.size());
    return line.insert(at == std::string::npos ? line.size() / 2 : at, "x");
}

struct Kind {
    const char* name;
    const char* extension;
    const char* head;
    const char* end;  // of a line
    const char* foot;
    int lines;
    int each;  // so many lines have one that is changed
    LineOf line;
};

const Kind kKinds[] = {
    {"csv", "csv", "", "\n", "", 1'000'000, 1, Row},
    {"rtf", "rtf", "{\\rtf1\\ansi ", "\\par\n", "}", 300'000, 10,
     [](std::mt19937& random, int number) {
         return (number % 5 == 0 ? "{\\b bold} " : "plain ") + Prose(random, number);
     }},
    {"paragraph", "txt", "", " ", "", 280'000, 10, Prose},
    {"lines", "txt", "", "\n", "", 500'000, 10, Prose},
    {"unlike", "txt", "", "\n", "", 200'000, 0, Prose},
};

PerSide<std::string> WriteFiles(const Kind& kind, const std::string& folder) {
    const PerSide<std::string> files{folder + "/o." + kind.extension,
                                     folder + "/m." + kind.extension};
    std::ofstream original(files.original);
    std::ofstream modified(files.modified);
    original << kind.head;
    modified << kind.head;
    std::mt19937 random(1);
    for (int number = 0; number < kind.lines; ++number) {
        std::string line = kind.line(random, number);
        original << line << kind.end;
        if (kind.each == 0)
            line = kind.line(random, number);
        else if (number % kind.each == 0)
            line = Changed(std::move(line), random);
        modified << line << kind.end;
    }
    original << kind.foot;
    modified << kind.foot;
    return files;
}

// ---- what is stopped ----

class Stopper {
  public:
    Stopper(int moments, unsigned seed) : moments_(moments), random_(seed) {}

    /// Gives false when it was stopped.
    using Work = std::function<bool(RunWatcher&)>;

    /// `prepare` makes the work with its input, which is not measured.
    void Measure(const std::string& name, const std::function<Work()>& prepare) {
        Work work = prepare();
        TimedWatcher whole(kNever);
        const double begin = Now();
        if (!work(whole)) {
            std::printf("%-26s fails\n", name.c_str());
            std::exit(1);
        }
        whole.End();
        const double length = Now() - begin;
        double longest = 0;
        int stopped = 0;
        for (int moment = 0; moment < moments_; ++moment) {
            work = prepare();
            const double asked = Now() + std::uniform_real_distribution<double>(0, length)(random_);
            TimedWatcher watcher(asked);
            if (work(watcher))
                continue;
            ++stopped;
            longest = std::max(longest, Now() - asked);
        }
        std::printf(
            "%-26s %8.0f ms  longest unasked %5.1f ms (step %d)  longest stop %5.1f ms of "
            "%d\n",
            name.c_str(), length, whole.longest, static_cast<int>(whole.in_step), longest, stopped);
        std::fflush(stdout);
    }

  private:
    int moments_;
    std::mt19937 random_;
};

class Session {
  public:
    Session(const Kind& kind, const std::string& folder, Stopper& stopper)
        : folder_(folder), stopper_(stopper) {
        telling_.manner.bSilent = true;
        IgnoreFailure(options_.LoadStateFromFile(*process_.settings), "the defaults will do");
        const PerSide<std::string> files = WriteFiles(kind, folder);
        options_.sFileOriginal.SetData(files.original);
        options_.sFileModified.SetData(files.modified);
    }

    void Run() {
        MeasureCompare("side by side", View::SideBySide);
        MeasureCompare("all in one", View::AllInOne);
        MeasureReports();
    }

  private:
    CompareInput Input(View view) {
        CompareInput input(process_, telling_);
        input.options = options_;
        input.settings = DefaultCompareFilesSettings(folder_);
        input.source = RunSource::Files;
        input.view = view;
        input.questions = &window_;
        input.service = &service_;
        input.show_early = [](EarlyOutcome) {};
        return input;
    }

    void MeasureCompare(const std::string& name, View view) {
        CompareOutcome last;
        stopper_.Measure(name, [&] {
            return [this, &last, input = Input(view)](RunWatcher& watcher) {
                CompareOutcome outcome = RunCompareJob(input, watcher);
                const bool finished = outcome.end == RunEnd::Finished;
                if (finished && !last.comparison)
                    last = std::move(outcome);
                return finished;
            };
        });
        all_in_one_ = std::move(last.all_in_one.text);
        engine_.Show(std::move(*last.comparison));
    }

    void MeasureReport(const std::string& name, ReportType type, std::int32_t style) {
        stopper_.Measure(name, [&] {
            auto input =
                std::make_shared<ReportInput>(ReportInput{process_,
                                                          telling_,
                                                          engine_,
                                                          options_,
                                                          DefaultCompareFilesSettings(folder_),
                                                          "",
                                                          {},
                                                          {},
                                                          &window_,
                                                          &service_});
            input->wanted.file = folder_ + "/report";
            input->wanted.type = type;
            input->wanted.style = style;
            if (type == ReportType::Document)
                input->texts.all_in_one = all_in_one_;
            return [input](RunWatcher& watcher) {
                return RunReport(std::move(*input), watcher).result == ReportResult::Ok;
            };
        });
    }

    void MeasureWriter(const std::string& name,
                       const std::function<std::string(const ReportModel&)>& write) {
        stopper_.Measure(name, [&] {
            return [&](RunWatcher& watcher) {
                ReportModel model{engine_.Compared()};
                model.watcher = &watcher;
                return !write(model).empty() && watcher.KeepGoing();
            };
        });
    }

    void MeasureReports() {
        MeasureReport("HTML, side by side", ReportType::Html, 2);
        MeasureReport("HTML, all in one", ReportType::Html, 1);
        MeasureReport("text", ReportType::Text, 1);
        MeasureReport("comma-delimited", ReportType::Csv, 1);
        MeasureReport("word processor", ReportType::Document, 1);
        MeasureWriter("JSON", WriteJsonReport);
        MeasureWriter("terminal", [](const ReportModel& model) {
            return WriteTerminalReport(model, {true, 2});
        });
    }

    std::string folder_;
    Stopper& stopper_;
    Platform platform_ = MakePosixPlatform();
    ProcessState process_{platform_};
    RunTelling telling_{process_.messages};
    clsCompareFileOptions options_;
    SilentWindow window_;
    ConversionService service_{platform_};
    VestrelX engine_;
    RichText all_in_one_;
};

int Main(const std::string& wanted, int moments, unsigned seed) {
    const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                   [&](const Kind& row) { return wanted == row.name; });
    if (kind == std::end(kKinds)) {
        std::fprintf(stderr, "stop_times csv|rtf|paragraph|lines|unlike [MOMENTS [SEED]]\n");
        return 2;
    }
    std::string folder = (std::filesystem::temp_directory_path() / "zorvane-stops-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr)
        return 2;
    std::printf("%s\n", kind->name);
    Stopper stopper(moments, seed);
    Session(*kind, folder, stopper).Run();
    std::filesystem::remove_all(folder);
    return 0;
}

}  // namespace
}  // namespace zorvane

int main(int argc, char** argv) {
    return zorvane::Main(argc > 1 ? argv[1] : "", argc > 2 ? std::stoi(argv[2]) : 20,
                         argc > 3 ? static_cast<unsigned>(std::stoul(argv[3])) : 1);
}
