// Writing a report of a finished compare: paragraphs of 80 characters, one in ten changed by a word
// or two, as a long document after a thorough revision.
#include <random>

#include <benchmark/benchmark.h>

#include "compare/engine/compare_texts.h"
#include "compare/engine/report_model.h"
#include "reports/json_report.h"
#include "reports/terminal_report.h"

namespace zorvane {
namespace {

struct LineFiles {
    std::string original;
    std::string modified;
};

LineFiles MakeLineFiles(std::int64_t paragraphs) {
    std::mt19937 random(1);
    LineFiles files;
    for (std::int64_t i = 0; i < paragraphs; ++i) {
        std::string text;
        while (text.size() < 80)
            text += "word" + std::to_string(random() % 500) + " ";
        files.original += text + "\r\n";
        if (i % 10 == 0)
            text.replace(text.find(' ', random() % 60), 1, " changed ");
        files.modified += text + "\r\n";
    }
    return files;
}

using Writer = std::string (*)(const ReportModel&);

std::string SideBySide(const ReportModel& model) {
    return WriteHtmlReport(model, 2);
}
std::string AllInOne(const ReportModel& model) {
    return WriteHtmlReport(model, 1);
}
std::string Terminal(const ReportModel& model) {
    return WriteTerminalReport(model, {true, 2});
}

void BM_Report(benchmark::State& state, Writer writer) {
    const LineFiles files = MakeLineFiles(state.range(0));
    const Result<Comparison> compared = CompareLineFiles(
        {std::string_view(files.original), std::string_view(files.modified)}, {}, nullptr);
    if (!compared.ok() ||
        compared.value().record_counts.All() != static_cast<std::int32_t>(state.range(0) / 10)) {
        state.SkipWithError("the compare does not find the changes");
        return;
    }
    const ReportModel model{.comparison = compared.value(),
                            .title = "Title",
                            .names = {"original", "modified"},
                            .high_detail = true};
    for (auto _ : state) {
        std::string report = writer(model);
        benchmark::DoNotOptimize(report);
        state.counters["bytes"] = static_cast<double>(report.size());
    }
}

BENCHMARK_CAPTURE(BM_Report, html_side_by_side, SideBySide)->Arg(25000)->Arg(50000)->Arg(100000);
BENCHMARK_CAPTURE(BM_Report, html_all_in_one, AllInOne)->Arg(50000);
BENCHMARK_CAPTURE(BM_Report, text, WriteTextReport)->Arg(50000);
BENCHMARK_CAPTURE(BM_Report, csv, WriteCsvReport)->Arg(50000);
BENCHMARK_CAPTURE(BM_Report, json, WriteJsonReport)->Arg(50000);
BENCHMARK_CAPTURE(BM_Report, terminal, Terminal)->Arg(50000);

}  // namespace
}  // namespace zorvane
