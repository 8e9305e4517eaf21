// A run as a computation: what it gives, what a stop leaves, and that two at once share nothing.
#include "compare/run/compare_job.h"

#include <cstdio>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "compare/engine/compare_texts.h"
#include "compare/engine/report_model.h"
#include "reports/json_report.h"
#include "tests/support/fakes.h"
#include "tests/support/rich_text_notation.h"
#include "tests/support/stopping_watcher.h"

namespace zorvane::compare_job_test {
namespace {

class NoQuestions : public SilentWindow {};

class CompareJobTest : public ::testing::Test {
  protected:
    CompareJobTest() {
        telling.manner.bSilent = true;
        EXPECT_TRUE(options.LoadStateFromFile(*process.settings).ok());
    }
    CompareInput Input(const PerSide<std::string>& texts, View view) {
        CompareInput input(process, telling);
        input.options = options;
        input.settings = DefaultCompareFilesSettings(fakes.folder.Path());
        input.view = view;
        input.questions = &questions;
        input.service = &service;
        for (const Side side : kBothSides)
            input.texts[side] =
                std::make_shared<const RichText>(RichText::Plain(ToUtf16(texts[side]), {}));
        return input;
    }
    CompareInput FromFiles(const PerSide<std::string>& texts, const std::string& extension) {
        CompareInput input = Input({"", ""}, View::SideBySide);
        input.source = RunSource::Files;
        input.options.sFileOriginal.SetData(fakes.folder.Write("o." + extension, texts.original));
        input.options.sFileModified.SetData(fakes.folder.Write("m." + extension, texts.modified));
        return input;
    }
    static std::string Shown(const CompareOutcome& outcome) {
        return Notation(outcome.side_by_side.original.text) + "\n" +
               Notation(outcome.side_by_side.modified.text) + "\n" +
               Notation(outcome.all_in_one.text) + "\n" + Notation(outcome.changes) +
               Notation(outcome.additions) + Notation(outcome.deletions);
    }

    FakePlatform fakes;
    ProcessState process{fakes.platform};
    RunTelling telling{process.messages};
    clsCompareFileOptions options;
    NoQuestions questions;
    ConversionService service{fakes.platform};
};

std::string Words(std::mt19937& random, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "word" + std::to_string(random() % 5000) + (i % 12 == 11 ? ".\r\n" : " ");
    return text;
}

std::string Edited(std::string text, std::mt19937& random, int edits) {
    for (int i = 0; i < edits; ++i)
        text.insert(random() % text.size(), i % 3 == 0 ? " put\r\nin " : " in ");
    return text;
}

TEST_F(CompareJobTest, GivesAWholeResultOrNone) {
    std::mt19937 random(7);
    options.bCompareByCharacter.SetData(true);
    const std::string original = Words(random, 3000);
    const PerSide<std::string> texts{original, Edited(original, random, 60)};
    for (const View view : {View::SideBySide, View::AllInOne}) {
        StoppingWatcher whole(-1);
        const CompareOutcome expected = RunCompareJob(Input(texts, view), whole);
        ASSERT_EQ(expected.end, RunEnd::Finished);
        ASSERT_GT(whole.asked, 50) << "nobody could stop this";
        const std::int64_t step = 1 + whole.asked / 60;
        for (std::int64_t at = 1; at <= whole.asked; at += step) {
            StoppingWatcher watcher(at);
            const CompareOutcome stopped = RunCompareJob(Input(texts, view), watcher);
            EXPECT_EQ(stopped.end, RunEnd::Aborted) << at;
            EXPECT_FALSE(stopped.views_built) << at;
            EXPECT_LE(watcher.asked, at + 20) << "went on after the stop";
        }
        StoppingWatcher again(-1);
        EXPECT_EQ(Shown(RunCompareJob(Input(texts, view), again)), Shown(expected));
    }
}

TEST_F(CompareJobTest, StopsWhileItLoads) {
    std::mt19937 random(8);
    const std::string body = Words(random, 20000);
    std::string rtf = "{\\rtf1 ";
    for (const char letter : body)
        rtf += letter == '\n' ? std::string("\\par ") : std::string(1, letter);
    rtf += "}";
    for (const auto& [extension, text] :
         {std::pair<std::string, std::string>{"txt", body}, {"rtf", rtf}}) {
        StoppingWatcher watcher(2);
        const CompareOutcome stopped =
            RunCompareJob(FromFiles({text, text + " "}, extension), watcher);
        EXPECT_EQ(stopped.end, RunEnd::Aborted) << extension;
        EXPECT_EQ(stopped.comparison, nullptr);
    }
}

TEST_F(CompareJobTest, TwoAtOnceGiveWhatOneAfterTheOtherGives) {
    std::mt19937 random(9);
    std::vector<PerSide<std::string>> pairs;
    for (int i = 0; i < 4; ++i) {
        const std::string original = Words(random, 2000 + 500 * i);
        pairs.push_back({original, Edited(original, random, 40)});
    }
    std::vector<std::string> alone(pairs.size());
    std::vector<std::string> beside(pairs.size());
    const auto run = [&](std::size_t i, std::string& shown) {
        RunTelling own(process.messages);
        own.manner.bSilent = true;
        CompareInput input = Input(pairs[i], i % 2 == 0 ? View::SideBySide : View::AllInOne);
        StoppingWatcher watcher(-1);
        shown = Shown(RunCompareJob(std::move(input), watcher));
    };
    for (std::size_t i = 0; i < pairs.size(); ++i)
        run(i, alone[i]);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < pairs.size(); ++i)
        threads.emplace_back([&, i] { run(i, beside[i]); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(beside, alone);
}

TEST_F(CompareJobTest, BuildsAnotherViewFromTheSameComparison) {
    const PerSide<std::string> texts{"a\r\nold words here\r\nc", "a\r\nnew words here\r\nc\r\nd"};
    StoppingWatcher watcher(-1);
    const CompareOutcome first = RunCompareJob(Input(texts, View::SideBySide), watcher);
    const CompareOutcome whole = RunCompareJob(Input(texts, View::AllInOne), watcher);
    CompareInput input = Input(texts, View::AllInOne);
    input.source = RunSource::Compared;
    input.compared = &*first.comparison;
    const CompareOutcome view = RunCompareJob(std::move(input), watcher);
    EXPECT_EQ(Shown(view), Shown(whole));
    EXPECT_EQ(view.comparison, nullptr) << "nothing was compared again";
}

// In texts of which a stretch without a question would take a noticeable part. A step that asks
// much less than it did has lost a question in one of its loops; bench/stop_times.cpp has the
// times.
TEST_F(CompareJobTest, AsksOftenOnLongInputs) {
    std::mt19937 random(10);
    std::string one;
    for (int i = 0; i < 100000; ++i)
        one += "w" + std::to_string(random() % 70000) + " ";
    std::string one_edited = one;
    for (std::size_t at = 900; at < one_edited.size(); at += 1000)
        one_edited.replace(at, 3, "new");
    const std::string many = Words(random, 100000);
    const struct {
        const char* name;
        PerSide<std::string> texts;
        std::int64_t compare;  // questions at least, as in the next ones
        std::int64_t marking;
        std::int64_t sections;
    } rows[] = {{"one changed paragraph", {one, one_edited}, 200, 15, 500},
                {"many paragraphs", {many, Edited(many, random, 1000)}, 800, 1500, 700},
                {"nothing in common", {Words(random, 20000), one}, 7000, 15, 0}};
    for (const auto& row : rows) {
        for (const View view : {View::SideBySide, View::AllInOne}) {
            CountingWatcher watcher;
            const CompareOutcome outcome = RunCompareJob(Input(row.texts, view), watcher);
            EXPECT_EQ(outcome.end, RunEnd::Finished);
            const RunStep marking =
                view == View::AllInOne ? RunStep::MarkAllInOne : RunStep::MarkSideBySide;
            EXPECT_GE(watcher.asked[RunStep::PrepareCompare], 8) << row.name;
            EXPECT_GE(watcher.asked[RunStep::Compare], row.compare) << row.name;
            EXPECT_GE(watcher.asked[marking], row.marking) << row.name;
            EXPECT_GE(watcher.asked[RunStep::MarkSections], row.sections) << row.name;
        }
    }
}

// What a reader was told of one compare.
struct Told {
    std::vector<Comparison> found;
    Comparison result;
};

Told Read(const PerSide<std::shared_ptr<const std::u16string>>& texts, const CompareOptions& asked,
          const std::function<ParagraphsInSight()>& in_sight) {
    Told told;
    Result<Comparison> result = CompareTexts(
        texts, asked, nullptr,
        {[&told](Comparison found) { told.found.push_back(std::move(found)); }, in_sight});
    EXPECT_TRUE(result.ok());
    told.result = std::move(result).value();
    return told;
}

std::vector<std::u16string> WordsOf(const Comparison& comparison, std::size_t record) {
    std::vector<std::u16string> words;
    for (const SectionDetail& section : comparison.SectionsOf(record)) {
        for (const Side side : kBothSides) {
            const DetailPlace& place = section.places[side];
            words.push_back(comparison.Text(side, comparison.records[record])
                                .substr(static_cast<std::size_t>(place.begin),
                                        static_cast<std::size_t>(place.Length())));
        }
    }
    return words;
}

// Whoever reads early gets the same in the end, and paragraphs and words that stay.
TEST_F(CompareJobTest, TheEarlyRoadLeadsToTheSameResult) {
    std::mt19937 random(21);
    int words_in_sight = 0;
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        const std::string original = Words(random, 600 + static_cast<int>(random() % 3000));
        std::string modified = Edited(original, random, 1 + static_cast<int>(random() % 200));
        if (round % 4 == 0) {  // a block that moved
            const std::size_t cut = modified.find("\r\n", modified.size() / 3) + 2;
            modified = modified.substr(cut) + modified.substr(0, cut);
        }
        CompareOptions asked;
        asked.find_moves = round % 2 == 0;
        asked.by_character = round % 3 == 0;
        asked.faster = round % 5 == 0;
        asked.bracket = round % 7 == 0 ? 20 : 0;
        asked.ignore_empty_lines = round % 6 == 0;
        asked.larger_sections = round % 8 == 5;
        const auto text = [](const std::string& utf8) {
            return std::make_shared<const std::u16string>(ToUtf16(utf8));
        };
        const PerSide<std::shared_ptr<const std::u16string>> texts{text(original), text(modified)};
        int asked_for = 0;
        const Told told = Read(texts, asked, [&] {
            const std::int32_t begin = 100 * (++asked_for / 20);
            return ParagraphsInSight{begin, begin + 40};
        });
        CompareOptions alone = asked;
        alone.find_moves = false;
        const Result<Comparison> plain = CompareTexts(texts, asked, nullptr);
        const Result<Comparison> unmoved = CompareTexts(texts, alone, nullptr);
        ASSERT_TRUE(plain.ok() && unmoved.ok() && !told.found.empty());
        EXPECT_EQ(WriteJsonReport(ReportModel{told.result}),
                  WriteJsonReport(ReportModel{plain.value()}));
        EXPECT_FALSE(plain.value().sections.empty());
        EXPECT_TRUE(told.found.front().sections.empty());
        for (const Comparison& found : told.found) {
            EXPECT_TRUE(found.moves.empty());
            ASSERT_EQ(found.records, unmoved.value().records);
            for (std::size_t record = 0; record < found.records.size(); ++record) {
                if (found.details[record].section_count == 0)
                    continue;
                ++words_in_sight;
                EXPECT_EQ(WordsOf(found, record), WordsOf(unmoved.value(), record));
            }
        }
    }
    EXPECT_GT(words_in_sight, 1000);
}

// In both directions, since the engine may search in the other one.
TEST_F(CompareJobTest, WordsInSightComeFirst) {
    std::mt19937 random(5);
    const std::string longer = Words(random, 48000);
    const std::string other = Edited(longer, random, 1000);
    const auto text = [](const std::string& utf8) {
        return std::make_shared<const std::u16string>(ToUtf16(utf8));
    };
    const PerSide<std::shared_ptr<const std::u16string>> texts{text(longer), text(other)};
    for (const bool swapped : {false, true}) {
        SCOPED_TRACE(swapped);
        const ParagraphsInSight sight{3000, 3050};
        const Told told = Read(
            swapped ? PerSide<std::shared_ptr<const std::u16string>>{texts.modified, texts.original}
                    : texts,
            {}, [&] { return sight; });
        ASSERT_EQ(told.found.size(), 2U) << "a sight that stays is told of once";
        const Comparison& found = told.found.back();
        int inside = 0;
        for (std::size_t i = 0; i < found.records.size(); ++i) {
            const DifferenceRecord& record = found.records[i];
            if (record.type != DifferenceType::Change)
                continue;
            const bool in_sight = record.paragraphs.original.last.value > sight.begin &&
                                  record.paragraphs.original.first.value <= sight.end;
            inside += in_sight ? 1 : 0;
            EXPECT_EQ(found.details[i].section_count > 0, in_sight)
                << record.paragraphs.original.first.value;
        }
        EXPECT_GT(inside, 3);
    }
}

}  // namespace
}  // namespace zorvane::compare_job_test
