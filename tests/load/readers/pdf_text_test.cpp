#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "load/readers/pdf/pdf_letters.h"
#include "load/readers/pdf/pdf_reader.h"
#include "tests/support/pdf_file.h"

namespace zorvane::pdf_text_test {
namespace {

using test_pdf::Line;
using test_pdf::MakePdf;

class CountingMonitor : public ReadMonitor {
  public:
    explicit CountingMonitor(int allowed = 1'000'000) : allowed_(allowed) {}
    bool Progress(std::int64_t done, std::int64_t total) override {
        last_done = done;
        last_total = total;
        return ++calls <= allowed_;
    }
    int calls = 0;
    std::int64_t last_done = -1;
    std::int64_t last_total = -1;

  private:
    int allowed_;
};

std::string TextOf(const std::string& pdf, double max_delta_x = 0, PdfPages pages = {}) {
    CountingMonitor monitor;
    std::string text;
    const ReadEnd end = ReadPdfText(pdf, {}, pages, max_delta_x, text, monitor);
    EXPECT_TRUE(end.ok()) << end.detail;
    return text;
}

TEST(PdfText, ReadsLinesInOrderOfReading) {
    const std::string pdf = MakePdf(Line(72, 700, "first line of it") +
                                    Line(72, 600, "a block below") + Line(72, 686, "second line"));
    EXPECT_EQ(TextOf(pdf), "first line of it\nsecond line\n\na block below\n\n");
}

TEST(PdfText, JoinsAWordThatAHyphenParts) {
    EXPECT_EQ(TextOf(MakePdf(Line(72, 700, "a connec-") + Line(72, 686, "tion here"))),
              "a connection here\n\n");
}

struct LetterRow {
    const char* name;
    const char* text;
    const char* expected;
};
constexpr LetterRow kLetterRows[] = {
    {"nothing to do", "plain text\n", "plain text\n"},
    {"nothing at all", "", ""},
    {"Latin ligatures", "\xEF\xAC\x80 \xEF\xAC\x83x \xEF\xAC\x86", "ff ffix st"},
    {"beyond the ligatures", "\xEF\xAC\x87|\xEF\xAC\x9D", "\xEF\xAC\x87|\xEF\xAC\x9D"},
    {"Armenian ligature", "\xEF\xAC\x94", "\xD5\xB4\xD5\xA5"},
    {"soft hyphen at the end of a line", "con\xC2\xAD\nnect", "connect"},
    {"soft hyphen that is drawn",
     "a\xC2\xAD"
     "b",
     "a-b"},
    {"soft hyphen at the very end", "a\xC2\xAD", "a-"},
    {"other letters of its range", "\xC2\xA9\xC2\xB0", "\xC2\xA9\xC2\xB0"},
    {"marks of direction", "\xE2\x80\xABx\xE2\x80\xAC\xE2\x80\x8F", "x"},
    {"quotation marks stay", "\xE2\x80\x9Cx\xE2\x80\x9D\xE2\x80\xAF",
     "\xE2\x80\x9Cx\xE2\x80\x9D\xE2\x80\xAF"},
    {"a character cut off", "x\xEF\xAC", "x\xEF\xAC"},
};
TEST(PdfText, TellsLettersAsTheyAreSeen) {
    for (const LetterRow& row : kLetterRows) {
        SCOPED_TRACE(row.name);
        std::string text = std::string("\xEF\xAC\x80") + row.text;
        PlainLetters(text, 3);
        EXPECT_EQ(text, std::string("\xEF\xAC\x80") + row.expected);
    }
}

struct ShadowRow {
    const char* name;
    double shift;
    double down;
    double max_delta_x;
    const char* expected;
};
// "all tea" once more at a small distance, as a shadow.
constexpr ShadowRow kShadowRows[] = {
    {"a shadow within the tolerance", 0.8, 0.5, 1.0, "all tea\n\n"},
    {"a wide tolerance keeps both letters of a pair", 0.8, 0.5, 5.0, "all tea\n\n"},
    {"another line below stays", 0.8, 14, 5.0, "all tea\nall tea\n\n"},
};
TEST(PdfText, CountsAShadowOnce) {
    for (const ShadowRow& row : kShadowRows) {
        SCOPED_TRACE(row.name);
        const std::string pdf =
            MakePdf(Line(72, 700, "all tea") + Line(72 + row.shift, 700 - row.down, "all tea"));
        EXPECT_EQ(TextOf(pdf, row.max_delta_x), row.expected);
    }
    const std::string far = MakePdf(Line(72, 700, "all") + Line(75, 700, "all"));
    EXPECT_NE(TextOf(far, 1.0), TextOf(far, 3.5));
}

struct RangeRow {
    const char* name;
    PdfPages pages;
    const char* expected;
};
constexpr RangeRow kRangeRows[] = {
    {"all", {0, 0}, "one\n\n\ftwo\n\n\fthree\n\n"},
    {"one page", {2, 2}, "two\n\n"},
    {"turned round", {3, 2}, "two\n\n\fthree\n\n"},
    {"behind the end", {2, 9}, "two\n\n\fthree\n\n"},
    {"wholly outside", {7, 9}, "one\n\n\ftwo\n\n\fthree\n\n"},
};
TEST(PdfText, ReadsARangeOfPages) {
    const std::string pdf = MakePdf(
        {{Line(72, 700, "one"), {}}, {Line(72, 700, "two"), {}}, {Line(72, 700, "three"), {}}});
    for (const RangeRow& row : kRangeRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TextOf(pdf, 0, row.pages), row.expected);
    }
    std::int32_t pages = 0;
    EXPECT_TRUE(CountPdfPages(pdf, {}, pages).ok());
    EXPECT_EQ(pages, 3);
}

TEST(PdfText, TellsOfEachPageAndStopsBetweenThem) {
    const std::string pdf = MakePdf({{Line(72, 700, "one"), {}}, {Line(72, 700, "two"), {}}});
    std::string text;
    CountingMonitor all;
    EXPECT_TRUE(ReadPdfText(pdf, {}, {}, 0, text, all).ok());
    EXPECT_EQ(all.calls, 3);
    EXPECT_EQ(all.last_done, 2);
    EXPECT_EQ(all.last_total, 2);
    CountingMonitor stopped(1);
    EXPECT_EQ(ReadPdfText(pdf, {}, {}, 0, text, stopped).error, ReadError::Cancelled);
    EXPECT_EQ(text.find("two"), std::string::npos);
}

TEST(PdfText, ReadsThroughABrokenTable) {
    EXPECT_EQ(TextOf(MakePdf(Line(72, 700, "still here"), test_pdf::Xref::Broken)),
              "still here\n\n");
}

struct EndRow {
    const char* name;
    const char* bytes;
    ReadError expected;
};
constexpr EndRow kEndRows[] = {
    {"nothing", "", ReadError::WrongFormat},
    {"another format", "PK\x03\x04 and so on", ReadError::WrongFormat},
    {"the header alone", "%PDF-1.4\n", ReadError::Damaged},
    {"a pointer into nothing", "x\nstartxref\n5\n%%EOF", ReadError::Damaged},
};
// Sorting so many pieces of text is not left to the library, whose time grows with their square:
// the page would be refused.
TEST(PdfText, ReadsAPageOfScatteredWords) {
    std::string content;
    constexpr int kWords = 15'000;
    for (int word = 0; word < kWords; ++word) {
        content += test_pdf::Line(10 + (word * 7919) % 580, 10 + (word * 104'729) % 770,
                                  "w" + std::to_string(word), 5);
    }
    const std::string text = TextOf(MakePdf(content));
    for (const int word : {0, 777, kWords - 1})
        EXPECT_NE(text.find("w" + std::to_string(word)), std::string::npos);
}

TEST(PdfText, TellsWhyItCannotRead) {
    for (const EndRow& row : kEndRows) {
        SCOPED_TRACE(row.name);
        std::int32_t pages = 7;
        EXPECT_EQ(CountPdfPages(row.bytes, {}, pages).error, row.expected);
        EXPECT_EQ(pages, 0);
        CountingMonitor monitor;
        std::string text;
        EXPECT_EQ(ReadPdfText(row.bytes, {}, {}, 0, text, monitor).error, row.expected);
    }
    EXPECT_EQ(TextOf("junk before the header\n" + MakePdf(Line(72, 700, "x"))), "x\n\n");
}

std::string CorpusFile(const std::string& name) {
    std::ifstream file(std::filesystem::path(ZORVANE_CORPUS) / "pdf" / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct PasswordRow {
    const char* name;
    const char* file;
    PdfPasswords passwords;
    ReadError expected;
};
TEST(PdfText, OpensWithEitherPassword) {
    if (CorpusFile("issue6010_1.pdf").empty())
        GTEST_SKIP() << "no documents";
    const PasswordRow rows[] = {
        {"none", "issue6010_1.pdf", {}, ReadError::PasswordNeeded},
        {"wrong", "issue6010_1.pdf", {"abd", "x"}, ReadError::PasswordNeeded},
        {"as the user's", "issue6010_1.pdf", {"abc", ""}, ReadError::None},
        {"as the owner's", "issue6010_1.pdf", {"", "abc"}, ReadError::None},
        {"beside a wrong one", "issue6010_1.pdf", {"wrong", "abc"}, ReadError::None},
        {"streams alone encrypted", "bug1782186.pdf", {"Hello", ""}, ReadError::None},
        {"streams alone encrypted, none", "bug1782186.pdf", {}, ReadError::PasswordNeeded},
    };
    for (const PasswordRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::int32_t pages = 0;
        EXPECT_EQ(CountPdfPages(CorpusFile(row.file), row.passwords, pages).error, row.expected);
    }
}

}  // namespace
}  // namespace zorvane::pdf_text_test
