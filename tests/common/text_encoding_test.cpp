#include "common/base/text_encoding.h"

#include <filesystem>
#include <random>

#include <gtest/gtest.h>

#include "common/base/visible_text.h"
#include "common/platform/files.h"

namespace zorvane {
namespace {

struct Utf8Row {
    const char* name;
    std::string bytes;
    std::u16string text;
    bool valid;
};
const Utf8Row kUtf8Rows[] = {
    {"nothing", "", u"", true},
    {"ASCII of many lengths", "0123456789abcdefg", u"0123456789abcdefg", true},
    {"two, three and four bytes", "ä€😀", u"ä€😀", true},
    {"behind a long run", "12345678ä", u"12345678ä", true},
    {"a lone continuation", "a\x80z", u"a\uFFFDz", false},
    {"cut off", "a\xE2\x82", u"a\uFFFD\uFFFD", false},
    {"overlong", "\xC0\xAF", u"\uFFFD\uFFFD", false},
    {"a surrogate", "\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD", false},
    {"beyond Unicode", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", false},
};
TEST(TextEncoding, ReadsUtf8) {
    for (const Utf8Row& row : kUtf8Rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ToUtf16(row.bytes), row.text);
        EXPECT_EQ(IsValidUtf8(row.bytes), row.valid);
        if (row.valid) {
            EXPECT_EQ(ToUtf8(row.text), row.bytes);
        }
    }
    EXPECT_EQ(ToUtf8(u"a\xD800z"), "a\uFFFDz") << "an unpaired half";
}

TEST(TextEncodingProperty, Utf8RoundTrips) {
    std::mt19937 random(2);
    for (int round = 0; round < 200; ++round) {
        std::u16string text;
        for (unsigned i = 0; i < random() % 40; ++i) {
            const auto unit = static_cast<char16_t>(random() % 0x10000);
            text += unit >= 0xD800 && unit < 0xE000 ? u"\U00010348" : std::u16string(1, unit);
        }
        EXPECT_EQ(ToUtf16(ToUtf8(text)), text);
    }
}

struct PageRow {
    std::int32_t page;
    std::string bytes;
    std::u16string text;
};
TEST(TextEncoding, ReadsCodePages) {
    const PageRow rows[] = {
        {1252, "\x80\xE4\x9F", u"€äŸ"},
        {1251, "\xCF\xF0", u"Пр"},
        {932, "\x93\xFA\x96\x7B", u"日本"},
        {936, "\xD6\xD0", u"中"},
        {949, "\xC7\xD1", u"한"},
        {950, "\xA4\xA4", u"中"},
        {437, "\x84", u"ä"},
        {10000, "\x8A", u"ä"},
        {65001, "ä", u"ä"},
        {31337, "\xE4", u"ä"},
    };
    for (const PageRow& row : rows) {
        SCOPED_TRACE(row.page);
        EXPECT_EQ(DecodeCodePage(row.bytes, CodePage{row.page}), row.text);
    }
}

struct DetectRow {
    const char* name;
    std::string bytes;
    const char* locale;
    const char* encoding;
    std::u16string text;
};
TEST(TextEncoding, DetectsInItsOrder) {
    const DetectRow rows[] = {
        {"a mark", "\xEF\xBB\xBFx", "", "UTF-8", u"x"},
        {"UTF-16 with a mark", std::string("\xFF\xFEx\0", 4), "", "UTF-16LE", u"x"},
        {"the other order", std::string("\xFE\xFF\0x", 4), "", "UTF-16BE", u"x"},
        {"UTF-16 by its look", std::string("a\0b\0c\0", 6), "", "UTF-16LE", u"abc"},
        {"UTF-8 by its form", "zwölf", "ISO-8859-1", "UTF-8", u"zwölf"},
        {"nothing", "", "", "UTF-8", u""},
        {"no form at all", "\xFF", "", "WINDOWS-1252", u"ÿ"},
        {"one accent", "na\xEFve", "", "WINDOWS-1252", u"naïve"},
        {"one quotation mark", "It\x92s fine", "", "WINDOWS-1252", u"It’s fine"},
        {"Spanish", "El ni\xF1o comi\xF3", "", "WINDOWS-1252", u"El niño comió"},
        {"a few words of Russian", "\xCF\xF0\xE8\xE2\xE5\xF2 \xEC\xE8\xF0", "", "WINDOWS-1251",
         u"Привет мир"},
        {"the locale where content tells nothing", "na\xEFve", "KOI8-R", "KOI8-R", u"naОve"},
        {"the first byte that tells stands far behind",
         std::string(300000, ' ') + "\xCF\xF0\xE8\xE2\xE5\xF2 \xEC\xE8\xF0", "", "WINDOWS-1251",
         std::u16string(300000, u' ') + u"Привет мир"},
    };
    for (const DetectRow& row : rows) {
        SCOPED_TRACE(row.name);
        const DetectedEncoding detected = DetectEncoding(row.bytes, row.locale);
        EXPECT_EQ(ToUpper(detected.name), row.encoding);
        EXPECT_EQ(DecodeText(row.bytes, detected), row.text);
    }
}

TEST(TextEncoding, MakesOneKindOfBreak) {
    EXPECT_EQ(NormalizeBreaks(u"a\nb\rc\r\nd\r\r\n\n"), u"a\r\nb\r\nc\r\nd\r\n\r\n\r\n");
    EXPECT_EQ(NormalizeBreaks(u""), u"");
    EXPECT_EQ(NormalizeBreaks(u"\r"), u"\r\n");
}

TEST(TextEncoding, FoldsAndTrims) {
    EXPECT_EQ(FoldCase(u"ÄßΣ😀"), FoldCase(u"äßσ😀"));
    EXPECT_EQ(ToUpper("äbc"), "ÄBC");
    EXPECT_EQ(ToLower("ÄBC"), "äbc");
    EXPECT_EQ(Trim(" \t a b \r\n"), "a b");
    EXPECT_EQ(Trim(" "), "");
}

struct CorpusRow {
    const char* file;
    const char16_t* holds;
};
TEST(TextEncodingCorpus, ReadsRealTexts) {
    const std::string folder = std::string(ZORVANE_CORPUS) + "/text/";
    if (!std::filesystem::exists(folder))
        GTEST_SKIP() << "no documents";
    std::u16string german;
    for (const char* name : {"german-utf8.txt", "german-utf8-bom.txt", "german-utf16le-bom.txt",
                             "german-utf16be-bom.txt", "german-cp1252.txt", "german-lf-only.txt"}) {
        SCOPED_TRACE(name);
        const Result<std::string> bytes = ReadWholeFile(folder + name);
        ASSERT_TRUE(bytes.ok());
        const std::u16string text =
            NormalizeBreaks(DecodeText(bytes.value(), DetectEncoding(bytes.value(), "")));
        if (german.empty())
            german = text;
        EXPECT_EQ(text, german);
    }
    for (const CorpusRow& row : {CorpusRow{"japanese-shiftjis.txt", u"\u5951\u7D04"},
                                 {"japanese-eucjp.txt", u"\u5951\u7D04"},
                                 {"korean-euckr.txt", u"\uB2E4"},
                                 {"russian-cp1251.txt", u"\u0438"},
                                 {"russian-koi8r.txt", u"\u0438"},
                                 {"chinese-big5.txt", u"\u7684"},
                                 {"chinese-gb18030.txt", u"\u7684"}}) {
        SCOPED_TRACE(row.file);
        const Result<std::string> bytes = ReadWholeFile(folder + row.file);
        ASSERT_TRUE(bytes.ok());
        const std::u16string text = DecodeText(bytes.value(), DetectEncoding(bytes.value(), ""));
        EXPECT_NE(text.find(row.holds), std::u16string::npos) << ToUtf8(text).substr(0, 200);
        EXPECT_EQ(text.find(u'\uFFFD'), std::u16string::npos);
    }
}

struct VisibleCase {
    const char* name;
    const char* text;
    LineBreaks ends;
    const char* shown;
};
TEST(VisibleText, LetsNothingSteerATerminal) {
    const VisibleCase rows[] = {
        {"an escape sequence", "a\x1B[2Jb\x7F", LineBreaks::Kept, "a\u241B[2Jb\u2421"},
        {"a control of one byte in two", "\u009B2J", LineBreaks::Kept, "\uFFFD2J"},
        {"no-break space stays", "a\u00A0b", LineBreaks::Kept, "a\u00A0b"},
        {"turned text", "\u202Egpj.exe", LineBreaks::Kept, "[U+202E]gpj.exe"},
        {"isolates and marks", "\u2066\u2069\u200F\u061C", LineBreaks::Kept,
         "[U+2066][U+2069][U+200F][U+061C]"},
        {"their neighbours stay", "\u200D\u2010\u2026\u2065\u0628", LineBreaks::Kept,
         "\u200D\u2010\u2026\u2065\u0628"},
        {"lines", "a\r\nb\nc\rd\te", LineBreaks::Kept, "a\nb\nc\u240Dd\te"},
        {"a message", "no\nzorvane: yes", LineBreaks::Indented, "no\n  zorvane: yes"},
        {"a name", "a\nb\r\n", LineBreaks::Shown, "a\u240Ab\u240D\u240A"},
        {"a cut character", "\xE2\x80", LineBreaks::Shown, "\xE2\x80"},
    };
    for (const VisibleCase& row : rows)
        EXPECT_EQ(VisibleText(row.text, row.ends), row.shown) << row.name;
}

// A long text is decoded in parts, wherever a part ends.
TEST(TextEncoding, ALongTextIsDecodedAsAShortOne) {
    constexpr std::size_t kPart = std::size_t{1} << 20;
    const std::string pieces[] = {"a",    "\xC3\xA4",         "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                                  "\x80", "\x80\x80\x80\x80", "\xF0\x9F",     "\r\n"};
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        std::string bytes(kPart - 8 - random() % 8, 'x');
        while (bytes.size() < kPart + 40)
            bytes += pieces[random() % std::size(pieces)];
        const std::u16string text = DecodeText(bytes, {"UTF-8", 0});
        ASSERT_EQ(text, ToUtf16(bytes));
        std::string back;
        AppendUtf8(text, back);
        ASSERT_EQ(ToUtf8(text), back);
    }
    for (const char* name : {"Shift_JIS", "windows-1252", "UTF-16LE"}) {
        SCOPED_TRACE(name);
        const bool wide = std::string(name) == "UTF-16LE";
        const std::string sign = wide ? std::string("a\x30", 2) : "\x83\x41x";
        std::string bytes;
        while (bytes.size() < 2 * kPart + 7)
            bytes += sign;
        const std::u16string one = DecodeText(sign, {name, 0});
        std::u16string expected;
        for (std::size_t i = 0; i < bytes.size() / sign.size(); ++i)
            expected += one;
        EXPECT_EQ(DecodeText(bytes, {name, 0}), expected);
    }
}

}  // namespace
}  // namespace zorvane
