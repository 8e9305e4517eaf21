#include "compare/kind_counts.h"

#include <memory>

#include <gtest/gtest.h>

#include "compare/engine/compare_texts.h"

namespace zorvane {

void PrintTo(const KindCounts& counts, std::ostream* out) {
    *out << "case " << counts.letter_case << ", blanks " << counts.blanks << ", numbering "
         << counts.numbering << ", moves " << counts.moves;
}

namespace kind_counts_test {
namespace {

Comparison Compared(const char16_t* original, const char16_t* modified,
                    const CompareOptions& options) {
    const auto text = [](const char16_t* words) {
        return std::make_shared<const std::u16string>(words);
    };
    Result<Comparison> found = CompareTexts({text(original), text(modified)}, options, nullptr);
    return found.ok() ? std::move(found).value() : Comparison();
}

struct KindRow {
    const char* name;
    const char16_t* original;
    const char16_t* modified;
    KindCounts counts;
};
constexpr KindRow kKinds[] = {
    {"nothing differs", u"One two\r\nThree", u"One two\r\nThree", {}},
    {"case alone", u"One two three\r\nSame", u"One Two THREE\r\nSame", {.letter_case = 2}},
    {"blanks alone", u"One two  three\r\nSame", u"One  two three\r\nSame", {.blanks = 2}},
    {"both in one paragraph", u"One two three", u"one  two three", {.letter_case = 1, .blanks = 1}},
    {"beside a word that changed",
     u"One rent is due on the third day of each month",
     u"one rent is due on the other day of each month",
     {.letter_case = 1}},
    {"another number in front",
     u"Head\r\n1. The rent is due\r\nEnd",
     u"Head\r\n2. The rent is due\r\nEnd",
     {.numbering = 1}},
    {"a number gave way to a word",
     u"Head\r\n1. The rent is due\r\nEnd",
     u"Head\r\nNow The rent is due\r\nEnd",
     {}},
    {"another word is no kind", u"One two", u"One three", {}},
};

// What is left out and what is counted are the same differences.
TEST(KindCounts, AreTheSameWhetherAKindIsCountedOrNot) {
    for (const KindRow& row : kKinds) {
        SCOPED_TRACE(row.name);
        CompareOptions out;
        out.ignore_case = true;
        out.ignore_whitespace = true;
        LeaveNumberingOut(out);
        EXPECT_EQ(CountKinds(Compared(row.original, row.modified, {})), row.counts) << "counted";
        EXPECT_EQ(CountKinds(Compared(row.original, row.modified, out)), row.counts) << "left out";
    }
}

TEST(KindCounts, TellMovesWhereNobodyLookedForThem) {
    constexpr const char16_t* kOriginal =
        u"A first paragraph of some words\r\nIt moves from here to the end\r\nThird one stays\r\n"
        u"Fourth one stays too";
    constexpr const char16_t* kModified =
        u"A first paragraph of some words\r\nThird one stays\r\nFourth one stays too\r\n"
        u"It moves from here to the end";
    CompareOptions without;
    without.find_moves = false;
    EXPECT_EQ(CountKinds(Compared(kOriginal, kModified, {})).moves, 1);
    EXPECT_EQ(CountKinds(Compared(kOriginal, kModified, without)).moves, 1);
}

struct NumberRow {
    const char16_t* paragraph;
    std::size_t length;
};
constexpr NumberRow kNumbers[] = {
    {u"1. Rent", 3},         {u"12) Rent", 4},    {u"2.1 Rent", 4}, {u"2.1.3. Rent", 7},
    {u"(a) Rent", 4},        {u"iv) Rent", 4},    {u"II. Rent", 4}, {u"§ 3 Rent", 4},
    {u"\t1.\tRent", 4},      {u"a) Rent", 3},     {u"1.Rent", 0},   {u"5 apples", 0},
    {u"A. Smith", 0},        {u"Rent 1. due", 0}, {u"", 0},         {u"1.", 0},
    {u"2026 was a year", 0},
};

// The compare and the count must agree on what a number is.
TEST(KindCounts, KnowANumberInFrontAsTheCompareDoes) {
    for (const NumberRow& row : kNumbers) {
        const std::u16string paragraph = row.paragraph;
        EXPECT_EQ(NumberLength(paragraph), row.length)
            << std::string(paragraph.begin(), paragraph.end());
        if (row.length == 0)
            continue;
        CompareOptions options;
        LeaveNumberingOut(options);
        const std::u16string bare = paragraph.substr(row.length);
        EXPECT_TRUE(Compared(paragraph.c_str(), bare.c_str(), options).Same())
            << std::string(paragraph.begin(), paragraph.end());
    }
    for (const char16_t* no_number : {u"5 apples", u"A. Smith", u"2026 was a year"}) {
        CompareOptions options;
        LeaveNumberingOut(options);
        const std::u16string text = no_number;
        EXPECT_FALSE(Compared(no_number, text.substr(text.find(u' ') + 1).c_str(), options).Same());
    }
}

}  // namespace
}  // namespace kind_counts_test
}  // namespace zorvane
