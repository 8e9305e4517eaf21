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

bool CutsAPair(std::u16string_view text, std::int32_t behind) {
    if (behind < 1 || behind >= static_cast<std::int32_t>(text.size()))
        return false;
    const char16_t next = text[static_cast<std::size_t>(behind)];
    return next >= 0xDC00 && next < 0xE000;
}

// Two characters that share one half of their pair must not be half equal, and no block slides into
// a pair.
TEST(CharacterLinesProperty, NoRecordCutsASurrogatePair) {
    std::mt19937 random(9);
    constexpr const char16_t* kParts[] = {u"\U0001F600", u"\U0001F601", u"\U0001FA00", u" ", u"x"};
    const auto make = [&] {
        std::u16string text;
        for (unsigned count = static_cast<unsigned>(random()) % 12; count > 0; --count)
            text += kParts[random() % std::size(kParts)];
        return text;
    };
    VestrelX engine;
    for (unsigned round = 0; round < 2000; ++round) {
        const std::u16string original_text = make();
        const std::u16string modified_text = make();
        std::string original;
        std::string modified;
        AppendCharacterLines(original_text, original);
        AppendCharacterLines(modified_text, modified);
        ASSERT_TRUE(engine.CompareText(original, modified).ok());
        for (const DifferenceRecord& record : engine.Records()) {
            const auto left =
                WholeCharacters(original_text, {record.first_original, record.last_original});
            const auto right =
                WholeCharacters(modified_text, {record.first_modified, record.last_modified});
            const bool cut = record.OriginalCount() > 0
                                 ? CutsAPair(original_text, left.first - 1) ||
                                       CutsAPair(original_text, left.last)
                                 : CutsAPair(modified_text, right.first - 1) ||
                                       CutsAPair(modified_text, right.last);
            EXPECT_FALSE(cut) << original << "---\n" << modified;
        }
    }
}

TEST(CharacterLines, ARangeSlidesBackToWholeCharacters) {
    constexpr std::u16string_view kText = u"x\U0001F600\U0001F600";
    const auto range = [&](CharacterRange given) {
        const CharacterRange whole = WholeCharacters(kText, given);
        return std::pair(whole.first, whole.last);
    };
    EXPECT_EQ(range({3, 4}), std::pair(2, 3));
    EXPECT_EQ(range({2, 3}), std::pair(2, 3));
    EXPECT_EQ(range({1, 1}), std::pair(1, 1));
    EXPECT_EQ(range({6, 6}), std::pair(6, 6));  // the doubled last one
}

}  // namespace
}  // namespace zorvane
