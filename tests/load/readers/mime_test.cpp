#include "load/readers/mail/mime.h"

#include <gtest/gtest.h>

namespace zorvane::mime_test {
namespace {

TEST(Mime, UnfoldsFieldsAndFindsTheBody) {
    const MimeEntity entity = ReadEntity("A: 1\r\n 2\r\n\t3\r\nbroken\r\nb : x\r\n\r\nbody\r\n");
    EXPECT_EQ(entity.Field("a"), "1 2\t3");
    EXPECT_EQ(entity.Field("b"), "x");
    EXPECT_EQ(entity.Field("c"), "");
    EXPECT_EQ(entity.body, "body\r\n");
    EXPECT_EQ(ReadEntity("\n\nx").body, "\nx");
    EXPECT_EQ(ReadEntity("A: b").body, "");
}

TEST(Mime, ReadsParameters) {
    struct Row {
        std::string_view field;
        std::string_view name;
        std::string_view value;
    };
    for (const Row& row : {
             Row{"Text/Plain; CHARSET=UTF-8", "charset", "UTF-8"},
             Row{"a; b=\"c;\\\"d\"; e=f", "b", "c;\"d"},
             Row{"a; b=\"c;\\\"d\"; e=f", "e", "f"},
             Row{"a; b = c ", "b", "c"},
             Row{"a; name*=utf-8'en'%E2%82%AC%20x", "name", "\u20AC x"},
             Row{"a; name*=iso-8859-1''%A3", "name", "\u00A3"},
             Row{"a; n*0=\"x\"; n*1=y; n*2*=%20z", "n", "xy z"},
             Row{"a; b=\"open", "b", "open"},
             Row{"a;;b=c", "b", ""},
             Row{"a; b", "b", ""},
             Row{"", "b", ""},
         }) {
        SCOPED_TRACE(row.field);
        const MimeValue value = ReadMimeValue(row.field);
        EXPECT_EQ(value.Parameter(row.name), row.value);
    }
    EXPECT_EQ(ReadMimeValue(" Text/Plain ; x=y").value, "text/plain");
}

TEST(Mime, SplitsParts) {
    using Parts = std::vector<std::string_view>;
    EXPECT_EQ(SplitParts("p\n--x\na\n--x \r\nb\n--xy\nc\n--x--\n--x\nd", "x"),
              (Parts{"a\n", "b\n--xy\nc\n"}));
    bool whole = true;
    EXPECT_EQ(SplitParts("--x\na", "x", &whole), (Parts{"a"}));
    EXPECT_FALSE(whole);
    SplitParts("--x\na\n--x--", "x", &whole);
    EXPECT_TRUE(whole);
    EXPECT_EQ(SplitParts("--x", "x"), Parts());
    EXPECT_EQ(SplitParts("a", ""), Parts());
}

TEST(Mime, DecodesTransferEncodings) {
    struct Row {
        std::string_view encoding;
        std::string_view body;
        std::string_view decoded;
    };
    for (const Row& row : {
             Row{"base64", "YWJj\r\nZA==", "abcd"},
             Row{"BASE64 ", "YQ", "a"},
             Row{"base64", "****", ""},
             Row{"quoted-printable", "a=\r\nb=3D=3d=E9=", "ab==\xE9="},
             Row{"quoted-printable", "=4", "=4"},
             Row{"quoted-printable", "=GG_", "=GG_"},
             Row{"8bit", "a=3D", "a=3D"},
             Row{"", "x", "x"},
         }) {
        SCOPED_TRACE(row.body);
        EXPECT_EQ(DecodeBody(row.body, row.encoding), row.decoded);
    }
}

TEST(Mime, DecodesEncodedWords) {
    struct Row {
        std::string_view field;
        std::string_view text;
    };
    for (const Row& row : {
             Row{"plain text", "plain text"},
             Row{"=?utf-8?q?a_b?= c", "a b c"},
             Row{"=?utf-8?q?a?=  =?utf-8?q?b?=", "ab"},
             Row{"=?utf-8?q?a?= x =?utf-8?q?b?=", "a x b"},
             Row{"=?utf-8?q?=C3?= =?utf-8?q?=A9?=", "\u00E9"},
             Row{"=?iso-8859-1?q?=E9?= =?utf-8?q?=C3=A9?=", "\u00E9\u00E9"},
             Row{"=?utf-8*en?b?4oKs?=", "\u20AC"},
             Row{"=?utf-8?x?a?=", "=?utf-8?x?a?="},
             Row{"=?utf-8?q?a", "=?utf-8?q?a"},
             Row{"=?", "=?"},
             Row{"", ""},
         }) {
        SCOPED_TRACE(row.field);
        EXPECT_EQ(DecodeField(row.field, "windows-1252"), row.text);
    }
}

}  // namespace
}  // namespace zorvane::mime_test
