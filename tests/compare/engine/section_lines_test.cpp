#include "compare/engine/section_lines.h"

#include <random>

#include <gtest/gtest.h>

#include "compare/engine/vestrel_x.h"

namespace zorvane {
namespace {

struct SectionRow {
    const char* name;
    std::u16string text;
    std::string file;
    std::vector<std::int32_t> ends;
};
TEST(SectionLines, EndBehindSeparators) {
    const SectionRow rows[] = {
        {"nothing", u"", "", {}},
        {"a word", u"one", "one\r\n", {3}},
        {"the separator belongs to the word", u"one two", "one \r\ntwo\r\n", {4, 7}},
        {"two blanks are two sections", u"a  b", "a \r\n \r\nb\r\n", {2, 3, 4}},
        {"a break is two sections and, to the engine, two lines",
         u"a\r\nb",
         "a\r\n\r\nb\r\n",
         {2, 3, 4}},
        {"cell mark and line break", u"a\ab\vc", "a\a\r\nb\v\r\nc\r\n", {2, 4, 5}},
        {"no section behind a last blank", u"a ", "a \r\n", {2}},
        {"a tab is no separator", u"a\tb", "a\tb\r\n", {3}},
        {"outside the basic plane", u"\U0001F600 x", "\xF0\x9F\x98\x80 \r\nx\r\n", {3, 4}},
    };
    for (const SectionRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::string file;
        AppendSectionLines(row.text, file);
        EXPECT_EQ(file, row.file);
        std::vector<std::int32_t> ends = {99};
        FindSectionEnds(row.text, ends);
        EXPECT_EQ(ends, row.ends);
    }
}

TEST(SectionLines, LineOfTheEngineIsSection) {
    std::mt19937 random(5);
    constexpr const char16_t* kParts[] = {u"a", u"bc", u" ", u"\r\n", u"\v", u"\a", u"\U0001F600"};
    VestrelX engine;
    for (unsigned round = 0; round < 300; ++round) {
        std::u16string text;
        for (unsigned i = 0; i < round % 20; ++i)
            text += kParts[random() % std::size(kParts)];
        text += u' ';
        std::string file;
        AppendSectionLines(text, file);
        std::vector<std::int32_t> ends;
        FindSectionEnds(text, ends);
        ASSERT_TRUE(engine.CompareText(file, "").ok());
        EXPECT_EQ(engine.MasterLineCount(), static_cast<std::int32_t>(ends.size())) << file;
    }
}

TEST(CharacterLines, HoldTheLastUnitTwice) {
    std::string file;
    AppendCharacterLines(u"", file);
    EXPECT_EQ(file, "");
    AppendCharacterLines(u"aü", file);
    EXPECT_EQ(file, "a\r\nü\r\nü\r\n");
}

// Two characters that share one half of their pair must not be half equal.
TEST(CharacterLines, NeverCutASurrogatePair) {
    struct Row {
        const char* name;
        std::u16string original;
        std::u16string modified;
    };
    const Row rows[] = {
        {"equal first halves", u"x\U0001F600y", u"x\U0001F601y"},
        {"equal second halves", u"x\U0001F600y", u"x\U0001FA00y"},
        {"one more of the same", u"\U0001F600\U0001F600", u"\U0001F600\U0001F600\U0001F600"},
        {"swapped", u"\U0001F600\U0001F601", u"\U0001F601\U0001F600"},
    };
    const auto cuts = [](std::u16string_view text, CharacterRange range) {
        const auto low = [text](std::int32_t number) {
            return number >= 1 && number <= static_cast<std::int32_t>(text.size()) &&
                   text[static_cast<std::size_t>(number - 1)] >= 0xDC00 &&
                   text[static_cast<std::size_t>(number - 1)] < 0xE000;
        };
        return low(range.first) || low(range.last + 1);
    };
    VestrelX engine;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::string original;
        std::string modified;
        AppendCharacterLines(row.original, original);
        AppendCharacterLines(row.modified, modified);
        ASSERT_TRUE(engine.CompareText(original, modified).ok());
        ASSERT_GT(engine.getDifferenceCount(), 0);
        for (const DifferenceRecord& record : engine.Records()) {
            const auto left =
                WholeCharacters(row.original, {record.first_original, record.last_original});
            const auto right =
                WholeCharacters(row.modified, {record.first_modified, record.last_modified});
            EXPECT_FALSE(record.OriginalCount() > 0 && cuts(row.original, left));
            EXPECT_FALSE(record.ModifiedCount() > 0 && cuts(row.modified, right));
        }
    }
}

}  // namespace
}  // namespace zorvane
