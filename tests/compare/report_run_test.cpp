// A report that is stopped: nothing comes of it, and what stood there before still stands.
#include "compare/run/report_run.h"

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "common/process_state.h"
#include "compare/engine/compare_texts.h"
#include "compare/viewer_window.h"
#include "tests/support/fakes.h"
#include "tests/support/stopping_watcher.h"

namespace zorvane::report_run_test {
namespace {

class ReportRunTest : public ::testing::Test {
  protected:
    ReportRunTest() {
        telling.manner.bSilent = true;
        EXPECT_TRUE(options.LoadStateFromFile(*process.settings).ok());
    }

    void Compare(const PerSide<std::u16string>& texts) {
        Result<Comparison> compared =
            CompareTexts({std::make_shared<const std::u16string>(texts.original),
                          std::make_shared<const std::u16string>(texts.modified)},
                         {}, nullptr);
        ASSERT_TRUE(compared.ok());
        engine.Show(std::move(compared).value());
        merged = RichText::Plain(texts.modified);
    }

    ReportResult Write(ReportType type, std::int32_t style, RunWatcher& watcher) {
        ReportInput input{
            process, telling, engine, options,   DefaultCompareFilesSettings(fakes.folder.Path()),
            "",      {},      {},     &questions};
        input.wanted.file = fakes.folder.Path("reports/r");
        input.wanted.type = type;
        input.wanted.style = style;
        input.texts.all_in_one = merged;
        input.texts.additions = merged;
        input.texts.head = RichReportHead{};
        return RunReport(std::move(input), watcher).result;
    }

    std::vector<std::string> Files() const {
        std::vector<std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(fakes.folder.Path("reports")))
            files.push_back(entry.path().filename().string());
        return files;
    }

    // Stops at each of some questions, with no file there and with an old one.
    void StopEverywhere(ReportType type, std::int32_t style) {
        StoppingWatcher whole(-1);
        std::filesystem::create_directory(fakes.folder.Path("reports"));
        ASSERT_EQ(Write(type, style, whole), ReportResult::Ok);
        const std::string report = fakes.folder.Read("reports/r");
        ASSERT_GT(whole.asked, 0) << "nobody could stop this";
        for (std::int64_t at = 1; at <= whole.asked; at += 1 + whole.asked / 10) {
            for (const std::string old : {"", "an older report"}) {
                SCOPED_TRACE(std::to_string(at) + " " + old);
                std::filesystem::remove(fakes.folder.Path("reports/r"));
                if (!old.empty())
                    fakes.folder.Write("reports/r", old);
                StoppingWatcher watcher(at);
                EXPECT_EQ(Write(type, style, watcher), ReportResult::Aborted);
                EXPECT_EQ(Files(),
                          old.empty() ? std::vector<std::string>{} : std::vector<std::string>{"r"});
                EXPECT_EQ(old.empty() ? "" : fakes.folder.Read("reports/r"), old);
                EXPECT_LE(watcher.asked, at + 10) << "went on after the stop";
            }
        }
        StoppingWatcher again(-1);
        EXPECT_EQ(Write(type, style, again), ReportResult::Ok);
        EXPECT_EQ(fakes.folder.Read("reports/r"), report);
    }

    FakePlatform fakes;
    ProcessState process{fakes.platform};
    RunTelling telling{process.messages};
    clsCompareFileOptions options;
    SilentWindow questions;
    VestrelX engine;
    RichText merged;
};

std::u16string ManyParagraphs(const char16_t* word) {
    std::u16string text;
    for (std::size_t i = 0; i < 4000; ++i)
        text.append(u"the ").append(word).append(i % 7, u'x').append(u" line of it\r\n");
    return text;
}

std::u16string OneParagraph(const char16_t* word) {
    std::u16string text;
    for (int i = 0; i < 40000; ++i)
        text.append(u"some more words ").append(i % 50 == 0 ? word : u"same").append(u" ");
    return text;
}

TEST_F(ReportRunTest, LeavesWhatStoodThereWhenItIsStopped) {
    const struct {
        const char* name;
        PerSide<std::u16string> texts;
    } documents[] = {
        {"many records", {ManyParagraphs(u"old"), ManyParagraphs(u"new")}},
        {"one huge record", {OneParagraph(u"old"), OneParagraph(u"new")}},
        {"one huge deletion", {u"a\r\n" + OneParagraph(u"old") + u"\r\nb", u"a\r\nb"}},
    };
    const struct {
        const char* name;
        ReportType type;
        std::int32_t style;
    } reports[] = {{"HTML, all in one", ReportType::Html, 1},
                   {"HTML, side by side", ReportType::Html, 2},
                   {"text", ReportType::Text, 0},
                   {"CSV", ReportType::Csv, 0},
                   {"document", ReportType::Document, 0}};
    for (const auto& document : documents) {
        Compare(document.texts);
        for (const auto& report : reports) {
            SCOPED_TRACE(std::string(document.name) + ", " + report.name);
            StopEverywhere(report.type, report.style);
        }
    }
}

}  // namespace
}  // namespace zorvane::report_run_test
