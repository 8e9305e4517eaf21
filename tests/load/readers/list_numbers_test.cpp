#include "load/readers/sink/list_numbers.h"

#include <set>

#include <gtest/gtest.h>

namespace zorvane::list_numbers_test {
namespace {

TEST(ListNumbers, ShowEachStyle) {
    struct Row {
        std::int32_t number;
        NumberStyle style;
        std::string_view text;
    };
    for (const Row& row : {
             Row{0, NumberStyle::Decimal, "0"},
             Row{-3, NumberStyle::Decimal, "-3"},
             Row{7, NumberStyle::LeadingZero, "07"},
             Row{10, NumberStyle::LeadingZero, "10"},
             Row{1, NumberStyle::LowerLetter, "a"},
             Row{26, NumberStyle::LowerLetter, "z"},
             Row{27, NumberStyle::LowerLetter, "aa"},
             Row{52, NumberStyle::UpperLetter, "AZ"},
             Row{53, NumberStyle::UpperLetter, "BA"},
             Row{703, NumberStyle::LowerLetter, "aaa"},
             Row{0, NumberStyle::LowerLetter, "0"},
             Row{-1, NumberStyle::UpperLetter, "-1"},
             Row{4, NumberStyle::LowerRoman, "iv"},
             Row{1994, NumberStyle::UpperRoman, "MCMXCIV"},
             Row{3999, NumberStyle::LowerRoman, "mmmcmxcix"},
             Row{4000, NumberStyle::UpperRoman, "4000"},
             Row{0, NumberStyle::UpperRoman, "0"},
             Row{5, NumberStyle::None, ""},
         }) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(NumberText(row.number, row.style), row.text);
    }
}

TEST(ListNumbers, RepeatLettersWhereTheListDoes) {
    EXPECT_EQ(NumberText(26, NumberStyle::LowerLetter, true), "z");
    EXPECT_EQ(NumberText(28, NumberStyle::LowerLetter, true), "bb");
    EXPECT_EQ(NumberText(79, NumberStyle::UpperLetter, true), "AAAA");
    EXPECT_LT(NumberText(2'000'000'000, NumberStyle::LowerLetter, true).size(), 30U);
}

TEST(ListNumbers, NeverTellTwoNumbersAlike) {
    for (const NumberStyle style : {NumberStyle::Decimal, NumberStyle::LeadingZero,
                                    NumberStyle::LowerLetter, NumberStyle::UpperRoman}) {
        std::set<std::string> texts;
        for (std::int32_t number = -10; number < 5000; ++number)
            EXPECT_TRUE(texts.insert(NumberText(number, style)).second) << number;
    }
}

TEST(ListNumbers, BulletsChangeWithTheLevel) {
    EXPECT_EQ(BulletText(0), "\u2022");
    EXPECT_EQ(BulletText(1), "\u25E6");
    EXPECT_EQ(BulletText(2), BulletText(99));
}

}  // namespace
}  // namespace zorvane::list_numbers_test
