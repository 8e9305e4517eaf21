#include "load/readers/pdf/pdf_labels.h"

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "load/readers/pdf/pdf_letters.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/sink/document_sink.h"
#include "tests/support/pdf_file.h"

namespace zorvane::pdf_labels_test {
namespace {

using test_pdf::Line;
using test_pdf::MakePdf;

struct LabelRow {
    const char32_t* text;
    std::uint32_t length;
};
TEST(PdfLabels, AreToldByTheirShape) {
    const LabelRow rows[] = {
        {U"1. x", 2},        {U"(a) x", 3},   {U"iv) x", 3},     {U"1.2.3 x", 5}, {U"[12] x", 4},
        {U"\u2022 x", 1},    {U"- x", 1},     {U"\u2022\tx", 1}, {U"1990 x", 0},  {U"word. x", 0},
        {U"I went", 0},      {U"-x", 0},      {U"", 0},          {U"12.", 0},     {U". x", 0},
        {U"() x", 0},        {U"1990. x", 0}, {U"12,50 x", 0},   {U"1..2 x", 0},  {U"aB) x", 0},
        {U"12.03.2024 x", 0}};
    for (const LabelRow& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::u32string(row.text)));
        EXPECT_EQ(LabelLength(row.text), row.length);
    }
}

bool AnyFollows(std::u32string_view word, std::u32string_view next) {
    for (const PdfLabel& a : LabelsOf(word)) {
        for (const PdfLabel& b : LabelsOf(next)) {
            if (Follows(a, b))
                return true;
        }
    }
    return false;
}

TEST(PdfLabels, FollowEachOtherByOne) {
    const std::pair<const char32_t*, const char32_t*> rows[] = {
        {U"1.", U"2."},    {U"(9)", U"(10)"}, {U"h)", U"i)"},     {U"ix.", U"x."},
        {U"iii)", U"iv)"}, {U"1.9", U"1.10"}, {U"1.2", U"1.2.1"}, {U"1.2.3", U"1.3"},
        {U"-", U"-"},      {U"[1]", U"[2]"},  {U"2.3.4", U"3."}};
    for (const auto& [word, next] : rows) {
        SCOPED_TRACE(testing::PrintToString(std::u32string(next)));
        // The last one changes its kind: a number is no decimal.
        EXPECT_EQ(AnyFollows(word, next), std::u32string_view(next) != U"3.");
    }
    for (const auto& [word, next] : {std::pair{U"1.", U"3."},
                                     {U"1.", U"2)"},
                                     {U"a)", U"B)"},
                                     {U"2.", U"1."},
                                     {U"1.2", U"1.3.1"},
                                     {U"1.2", U"1.2.2"}}) {
        SCOPED_TRACE(testing::PrintToString(std::u32string(next)));
        EXPECT_FALSE(AnyFollows(word, next));
    }
}

/// Each paragraph a line, a label in angle quotes; cells as in `MakePlainSink`.
class LabelSink : public DocumentSink {
  public:
    void BeginParagraph(const ParagraphFormat& /*format*/) override {}
    void Text(std::string_view utf8, const CharFormat& /*format*/) override { text_ += utf8; }
    void ListLabel(std::string_view utf8, const CharFormat& /*format*/) override {
        text_ += "<" + std::string(utf8) + ">";
    }
    void EndParagraph() override { text_ += '\n'; }
    std::size_t Size() const override { return text_.size(); }
    std::string Finish() override { return text_; }

  private:
    std::string text_;
};

class QuietMonitor : public ReadMonitor {
  public:
    bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override { return true; }
};

std::string ReadWithLabels(const std::string& content) {
    QuietMonitor monitor;
    LabelSink sink;
    EXPECT_TRUE(ReadPdfRich(MakePdf(content), {}, {}, {}, sink, monitor).ok());
    return sink.Finish();
}

struct ListRow {
    const char* name;
    std::vector<std::pair<const char*, const char*>> items;  ///< "" before a text hangs it
    float text_x;
    const char* expected;
};
std::string Drawn(const ListRow& row) {
    std::string content;
    double y = 700;
    for (const auto& [label, text] : row.items) {
        if (*label != 0)
            content += Line(72, y, label);
        content += Line(row.text_x, y, text);
        y -= 14;
    }
    return content;
}

// What stands at the start of a line is dropped from the compared text only where a list proves it.
const ListRow kListRows[] = {
    {"numbers with a gap", {{"1.", "first"}, {"2.", "second"}}, 96, "<1.>first\n<2.>second\n"},
    {"letters with hanging text",
     {{"a)", "the first of them"}, {"", "goes on"}, {"b)", "second"}},
     84,
     "<a)>the first of them\ngoes on\n<b)>second\n"},
    {"a bullet alone", {{"\x95", "only one"}}, 90, "<\xE2\x80\xA2>only one\n"},
    {"dashes", {{"-", "one"}, {"-", "two"}}, 90, "<->one\n<->two\n"},
    {"the signs of amounts", {{"-", "100.00"}, {"-", "200.00"}}, 90, "- 100.00\n- 200.00\n"},
    {"a number alone", {{"1.", "only one"}}, 96, "1. only one\n"},
    {"a list that begins elsewhere tells its start",
     {{"5.", "five"}, {"6.", "six"}},
     96,
     "5. five\n6. six\n"},
    {"numbers that jump", {{"1.", "one"}, {"3.", "three"}}, 96, "1.\tone\n3.\tthree\n"},
    {"days with a blank behind them",
     {{"1.", "January"}, {"2.", "January"}},
     84,
     "1. January\n2. January\n"},
    {"dates",
     {{"12.03.2024", "rent"}, {"13.03.2024", "food"}},
     150,
     "12.03.2024\trent\n13.03.2024\tfood\n"},
    {"days and months", {{"12.3.", "rent"}, {"12.4.", "food"}}, 150, "12.3.\trent\n12.4.\tfood\n"},
    {"amounts in parentheses",
     {{"(250)", "rent"}, {"(251)", "food"}},
     150,
     "(250)\trent\n(251)\tfood\n"},
    {"decimals", {{"2.5", "rent"}, {"2.6", "food"}}, 150, "2.5\trent\n2.6\tfood\n"},
    {"years", {{"1990", "rent"}, {"1991", "food"}}, 150, "1990\trent\n1991\tfood\n"},
    {"a decimal with hanging text",
     {{"1.1", "the first of them"}, {"", "hangs under it"}, {"1.2", "the next"}},
     110,
     "<1.1>the first of them\nhangs under it\n<1.2>the next\n"},
    {"the head of a column of numbers",
     {{"No.", "Item"}, {"1.", "nut"}, {"2.", "bolt"}},
     120,
     "No.\tItem\n1.\tnut\n2.\tbolt\n"},
};
TEST(PdfLabels, AreProvenByTheirList) {
    for (const ListRow& row : kListRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ReadWithLabels(Drawn(row)), row.expected);
    }
}

TEST(PdfLabels, AreNoneInATableOfThreeColumns) {
    std::string content;
    for (int row = 1; row < 5; ++row) {
        const double y = 700 - 14 * row;
        content +=
            Line(72, y, std::to_string(row) + ".") + Line(100, y, "item") + Line(300, y, "12.00");
    }
    EXPECT_EQ(ReadWithLabels(content),
              "1.\titem\t12.00\n2.\titem\t12.00\n3.\titem\t12.00\n4.\titem\t12.00\n");
}

}  // namespace
}  // namespace zorvane::pdf_labels_test
