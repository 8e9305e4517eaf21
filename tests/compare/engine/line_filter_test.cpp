// What of a line takes part in a compare.
#include "compare/engine/line_filter.h"

#include <gtest/gtest.h>

namespace zorvane {
namespace {

struct FilterRow {
    const char* name;
    const char* expressions;
    const char* line;
    const char* left;
    bool ignore_case = false;
    bool ignore_whitespace = false;
};
const FilterRow kFilterRows[] = {
    {"nothing asked", "", "A b", "A b"},
    {"every match goes", "[0-9]+", "12 a 3 b", " a  b"},
    {"a star stands for as little as can be", "<*>", "a<b>c<d>e", "ace"},
    {"at the end for the rest", "x*", "axbxc", "a"},
    {"a dot in front makes it usual", "a.*b", "ab acb", " "},
    {"at the end too", "c.*", "abcde", "ab"},
    {"a dot of its own in front", "1\\.*;", "1.5; 1; 2.5;", " 1; 2.5;"},
    {"an escaped star", "a\\*b", "a*b ab", " ab"},
    {"a star in a class", "[a*]+b", "*ab b", " b"},
    {"a class that is closed", "[x]*y", "xzzy-y", "-y"},
    {"a bracket inside of a class", "[[*]", "a[*b", "ab"},
    {"an escaped backslash", "a\\\\", "a\\b", "b"},
    {"several, one after the other", "ab@@cb", "cabb", ""},
    {"empty ones between", "@@a@@@@b@@", "abc", "c"},
    {"matches of nothing leave all", "x?", "axb", "ab"},
    {"what a match only looks for stays", "a\\Kb", "abab", "aa"},
    {"letters of two bytes", "\xC3\xA4+", "a\xC3\xA4\xC3\xA4z", "az"},
    {"case", "", "AbC \xC3\x84", "abc \xC3\xA4", true},
    {"case of plain letters", "", "AbCZ@[", "abcz@[", true},
    {"blanks of all kinds", "",
     " a\tb\v\xC2\xA0"
     "c\xE3\x80\x80"
     "d\xE2\x80\x83"
     "e\xE2\x80\x8B",
     "abcde\xE2\x80\x8B", false, true},
    {"plain blanks", "", " a \t\v\f\rb\x1F ", "ab\x1F", false, true},
    {"both", "", "A \xC3\x84", "a\xC3\xA4", true, true},
    {"behind the expressions", "b", "A B b", "a b ", true},
};
TEST(LineFilter, LeavesWhatTakesPart) {
    LineFilter filter;  // one for all: what was set before does not count
    std::string buffer;
    for (const FilterRow& row : kFilterRows) {
        SCOPED_TRACE(row.name);
        const std::string expressions = row.expressions;
        ASSERT_TRUE(
            filter.Set({row.ignore_case, row.ignore_whitespace, !expressions.empty()}, expressions)
                .ok());
        EXPECT_EQ(filter.Key(row.line, buffer), row.left);
        EXPECT_EQ(filter.IsIdentity(), row.left == std::string_view(row.line));
    }
}

TEST(LineFilter, NamesTheExpressionThatCannotBeUnderstood) {
    LineFilter filter;
    const Status status = filter.Set({false, false, true}, "a@@(b");
    ASSERT_FALSE(status.ok());
    EXPECT_TRUE(
        status.failure().reason.starts_with("The expression \"(b\"" + std::string(kUnusable)))
        << status.failure().reason;
}

}  // namespace
}  // namespace zorvane
