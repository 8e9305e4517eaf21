// A search line written as a literal of code.
#include "find/string_to_code.h"

#include <string>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

TEST(StringToCode, WritesALineAsALiteral) {
    struct CodeRow {
        std::string text;
        const char* code;
    };
    const CodeRow rows[] = {
        {"abc", "\"abc\""},
        {"", "\"\""},
        {"a\tb", "\"a\" &   \"b\""},
        {"say \"x\"", "\"say \"\"x\"\"\""},
        {"\t", "  "},
        {"a\r", "\"a\" & <CR>& "},
        {"\x01", "Chr$(1)"},
        {"\x01z", "Chr$(1) & \"z\""},
        {std::string("\0", 1), "vbNullChar"},
        {"a\nb", "\"a\" & <LF> & \"b\""},
        {"\xC3\xA4", "\"\xC3\xA4\""},
    };
    for (const CodeRow& row : rows)
        EXPECT_EQ(StringToCode(row.text), row.code);
}

}  // namespace
}  // namespace zorvane
