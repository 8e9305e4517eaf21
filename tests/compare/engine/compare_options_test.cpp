// Each option changes what it is for, at each level that it reaches.
#include "compare/engine/compare_options.h"

#include <functional>

#include "compare/engine/report_model.h"
#include "compare/engine/vestrel_x.h"
#include "tests/support/option_effects.h"

namespace zorvane {
namespace {

TEST(CompareOptions, ChangeWhatTheyAreFor) {
    for (const OptionEffect& row : kOptionEffects) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(LetterNotationOf(Compared(row.original, row.modified, row.base)), row.without);
        EXPECT_EQ(LetterNotationOf(Compared(row.original, row.modified, row.options)), row.with);
    }
}

// The properties of the engine, one by one.
void Put(VestrelX& engine, const CompareOptions& options) {
    engine.putIgnoreCase(options.ignore_case);
    engine.putIgnoreWhitespace(options.ignore_whitespace);
    engine.putIgnoreEmptyLines(options.ignore_empty_lines);
    engine.putCompareFaster(options.faster);
    engine.putLargerSections(options.larger_sections);
    engine.putUseLineBracket(options.bracket > 0);
    engine.putLineBracket(options.bracket);
    engine.putFilterExpression(options.expressions);
    engine.putFilterEnabled(!options.expressions.empty());
}

PerSide<std::shared_ptr<const std::u16string>> TextsOf(const OptionEffect& row) {
    return {std::make_shared<const std::u16string>(ParagraphsOf(row.original)),
            std::make_shared<const std::u16string>(ParagraphsOf(row.modified))};
}

TEST(CompareOptions, ReachTheEngineAsProperties) {
    for (const OptionEffect& row : kOptionEffects) {
        if (row.options.by_character || row.options.filter_sections || !row.options.find_moves)
            continue;  // no properties of the engine
        SCOPED_TRACE(row.name);
        VestrelX engine;
        Put(engine, row.options);
        ASSERT_TRUE(engine.CompareEditors(TextsOf(row), nullptr).ok());
        EXPECT_EQ(NotationOf(engine.Compared()), row.with);
        Put(engine, row.base);
        ASSERT_TRUE(engine.CompareEditors(TextsOf(row), nullptr).ok());
        EXPECT_EQ(NotationOf(engine.Compared()), row.without) << "and are taken back";
    }
}

TEST(CompareOptions, ReachTheEngineAllAtOnce) {
    for (const OptionEffect& row : kOptionEffects) {
        SCOPED_TRACE(row.name);
        VestrelX engine;
        engine.SetOptions(row.options);
        ASSERT_TRUE(engine.CompareEditors(TextsOf(row), nullptr).ok());
        EXPECT_EQ(LetterNotationOf(engine.Compared()), row.with);
        engine.SetOptions(row.base);
        ASSERT_TRUE(engine.CompareEditors(TextsOf(row), nullptr).ok());
        EXPECT_EQ(LetterNotationOf(engine.Compared()), row.without);
    }
}

// What a report shows without its title and counts is the comparison.
TEST(CompareOptions, ReachEveryReport) {
    struct Writer {
        const char* name;
        std::function<std::string(const ReportModel&)> write;
        bool shows_words;
    };
    const Writer writers[] = {
        {"side by side", [](const ReportModel& model) { return WriteHtmlReport(model, 2); }, true},
        {"all in one", [](const ReportModel& model) { return WriteHtmlReport(model, 1); }, true},
        {"text", WriteTextReport, true},
        {"csv", WriteCsvReport, false},
    };
    for (const OptionEffect& row : kOptionEffects) {
        const Comparison without = Compared(row.original, row.modified, row.base);
        const Comparison with = Compared(row.original, row.modified, row.options);
        for (const Writer& writer : writers) {
            SCOPED_TRACE(std::string(row.name) + ", " + writer.name);
            if (writer.shows_words || with.records != without.records) {
                EXPECT_NE(writer.write({.comparison = with}),
                          writer.write({.comparison = without}));
            }
        }
    }
}

}  // namespace
}  // namespace zorvane
