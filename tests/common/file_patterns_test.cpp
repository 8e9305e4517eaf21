#include "common/file_patterns.h"

#include <gtest/gtest.h>

namespace zorvane {
namespace {

struct PatternRow {
    const char* patterns;
    const char* name;
    bool matches;
};
constexpr PatternRow kRows[] = {
    {"", "any", true},
    {"  ", "any", true},
    {"*.*", "makefile", true},
    {"*.txt *", "any", true},
    {"*.TXT *.XLS", "a.txt", true},
    {"*.TXT *.XLS", "a.Xls", true},
    {"*.TXT *.XLS", "a.xlsx", false},
    {"*.txt;*.doc", "a.doc", true},
    {"*.doc", ".doc", true},
    {"*.doc", "doc", false},
    {"a*b*c", "a--b-bc", true},
    {"a*b*c", "a--b-b", false},
    {"?.txt", "\xC3\xA4.txt", true},
    {"?.txt", "\xE4.txt", true},
    {"?.txt", ".txt", false},
    {"???", "ab", false},
    {"\"my file*\" *.c", "my file.txt", true},
    {"\"my file*\" *.c", "my", false},
    {"***", "", true},
    {"x", "", false},
    {"*a*a*a*a*a*a*a*a*b", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", false},
};

TEST(FilePatterns, MatchAsAUserTypesThem) {
    for (const PatternRow& row : kRows) {
        SCOPED_TRACE(std::string(row.patterns) + " / " + row.name);
        EXPECT_EQ(FilePatterns(row.patterns).Matches(row.name), row.matches);
    }
}

}  // namespace
}  // namespace zorvane
