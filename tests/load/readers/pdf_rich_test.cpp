#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/document/rtf_reader.h"
#include "load/readers/pdf/pdf_reader.h"
#include "load/readers/sink/document_sink.h"
#include "tests/support/pdf_file.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane::pdf_rich_test {
namespace {

using test_pdf::Line;
using test_pdf::Lines;
using test_pdf::MakePdf;
using test_pdf::Page;

class PatientMonitor : public ReadMonitor {
  public:
    explicit PatientMonitor(int allowed = 1'000'000) : allowed_(allowed) {}
    bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override {
        return --allowed_ >= 0;
    }

  private:
    int allowed_;
};

/// One paragraph a line.
std::string TextOf(const std::string& pdf, const PdfRichOptions& options = {}) {
    PatientMonitor monitor;
    const auto sink = MakePlainSink();
    const ReadEnd end = ReadPdfRich(pdf, {}, {}, options, *sink, monitor);
    EXPECT_TRUE(end.ok()) << end.detail;
    std::string text = sink->Finish();
    std::erase(text, '\r');
    return text;
}

RichText RichOf(const std::string& pdf, const PdfRichOptions& options = {}) {
    PatientMonitor monitor;
    const auto sink = MakeRtfSink();
    EXPECT_TRUE(ReadPdfRich(pdf, {}, {}, options, *sink, monitor).ok());
    return ReadRtf(sink->Finish());
}

/// Three lines that fill a column of about 220 points, and a short one.
std::string Prose(double x, double y, double pitch = 14) {
    return Lines(x, y,
                 {"This is a paragraph of several words", "whose lines are as long as they can be",
                  "so that the next word had no room in", "them, and it ends here."},
                 12, pitch);
}
constexpr const char* kProse =
    "This is a paragraph of several words whose lines are as long as they can be so that the next "
    "word had no room in them, and it ends here.\n";

struct ParagraphRow {
    const char* name;
    std::string content;
    std::string expected;
};
const ParagraphRow kParagraphRows[] = {
    {"lines of one paragraph", Prose(200, 700), kProse},
    {"a gap parts paragraphs", Prose(200, 700) + Prose(200, 630), std::string(kProse) + kProse},
    {"a short last line parts them without a gap", Prose(200, 700) + Prose(200, 644),
     std::string(kProse) + kProse},
    {"a gap behind a full line",
     Lines(200, 700,
           {"This is a paragraph of several words",
            "whose last line is full up to its right edge."}) +
         Lines(200, 660,
               {"Another begins here, and it goes on", "in a line that is as long as others."}),
     "This is a paragraph of several words whose last line is full up to its right edge.\n"
     "Another begins here, and it goes on in a line that is as long as others.\n"},
    {"a short line is a paragraph of its own", Line(200, 714, "A short one") + Prose(200, 700),
     std::string("A short one\n") + kProse},
    {"a first line that stands farther in",
     Line(200, 700, "words that go on up to the right edge") +
         Line(200, 686, "of the column, as this line does, too.") +
         Line(220, 672, "Another begins here, and it goes on") +
         Line(200, 658, "in this line to its end."),
     "words that go on up to the right edge of the column, as this line does, too.\n"
     "Another begins here, and it goes on in this line to its end.\n"},
    {"a heading is larger",
     Line(200, 720, "A heading of the text that is long", 16) + Prose(200, 700),
     std::string("A heading of the text that is long\n") + kProse},
    {"words in another font within the lines",
     Line(200, 714, "words_of_code and words_of_code_and_more", 10, "C") + Prose(200, 700),
     "words_of_code and words_of_code_and_more\n" + std::string(kProse)},
    {"items of a list",
     Line(200, 700, "\x95") + Line(218, 700, "the first item of the list that goes") +
         Line(218, 686, "on in a second line") + Line(200, 672, "\x95") +
         Line(218, 672, "the second item of the list"),
     "\xE2\x80\xA2\tthe first item of the list that goes on in a second line\n"
     "\xE2\x80\xA2\tthe second item of the list\n"},
    {"entries of a table of contents",
     Line(72, 700,
          "Chapter one "
          "........................................................................................"
          "... 2") +
         Line(72, 686,
              "Chapter two "
              "...................................................................................."
              "....... 3"),
     "Chapter one "
     "........................................................................................... "
     "2\n"
     "Chapter two "
     "........................................................................................... "
     "3\n"},
    {"far words of a line have a tab between them", Line(72, 700, "left") + Line(300, 700, "right"),
     "left\tright\n"},
};
TEST(PdfRich, JoinsLinesToParagraphs) {
    for (const ParagraphRow& row : kParagraphRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TextOf(MakePdf(row.content)), row.expected);
    }
    PdfRichOptions options;
    options.bBCLMergeParagraph = false;
    EXPECT_EQ(TextOf(MakePdf(Prose(200, 700)), options),
              "This is a paragraph of several words\nwhose lines are as long as they can be\n"
              "so that the next word had no room in\nthem, and it ends here.\n");
}

const std::vector<std::string_view> kOpenLines = {
    "This is a paragraph of several words", "whose lines are as long as they can be",
    "so that the next word had no room in", "this line, which goes on elsewhere for"};

std::vector<Page> PagesWithFeet() {
    return {
        {Line(300, 760, "The head") + Lines(200, 700, kOpenLines) + Line(300, 30, "Page 1"), {}},
        {Line(300, 760, "The head") + Lines(200, 700, {"some words, and here it ends.", "More."}) +
             Line(300, 30, "Page 2"),
         {}}};
}

TEST(PdfRich, JoinsAParagraphAcrossPages) {
    const std::string whole =
        "This is a paragraph of several words whose lines are as long as they can be so that the "
        "next word had no room in this line, which goes on elsewhere for some words, and here it "
        "ends.\n";
    EXPECT_EQ(TextOf(MakePdf(PagesWithFeet())),
              "The head\n" + whole + "Page 1\nThe head\nMore.\nPage 2\n");
    PdfRichOptions options;
    options.bBCLDetectHeader = true;
    EXPECT_EQ(TextOf(MakePdf(PagesWithFeet()), options), whole + "More.\n");
    options.bBCLMergeParagraph = false;
    EXPECT_EQ(TextOf(MakePdf(PagesWithFeet()), options).find("head"), std::string::npos);
    const std::string two = MakePdf({{Prose(200, 700), {}}, {Prose(200, 650), {}}});
    EXPECT_EQ(TextOf(two), std::string(kProse) + kProse);
}

TEST(PdfRich, ConnectsHyphensWhenTold) {
    const std::string pdf = MakePdf(Lines(72, 700,
                                          {"words of a line that is long and has a con-",
                                           "nection to the next, or of a Trace-", "Monkey"}));
    EXPECT_EQ(TextOf(pdf).find("a con-nection to"), 37U);
    PdfRichOptions options;
    options.bConnectHyphens = true;
    EXPECT_EQ(TextOf(pdf, options).find("a connection to"), 37U);
    EXPECT_EQ(TextOf(pdf, options).find("Tracemonkey"), std::string::npos);
}

std::string TwoColumns() {
    std::string content = Line(150, 740, "A title over both of the two columns of it", 16);
    for (int line = 0; line < 8; ++line) {
        const std::string number = std::to_string(line);
        content += Line(60, 700 - 14 * line, "left words of the line that is number " + number);
        content += Line(320, 700 - 14 * line, "right words of the line which is number " + number);
    }
    return content;
}

/// One grey dot, 200 points wide, over the line at 700.
const std::string kPicture = "q 200 0 0 30 60 690 cm\nBI /W 1 /H 1 /CS /G /BPC 8 ID x\nEI Q\n";

struct HiddenRow {
    const char* name;
    std::string content;
    const char* shown;    ///< by default
    const char* scanned;  ///< conversion method 0
};
TEST(PdfRich, LeavesOutWhatNobodySees) {
    const HiddenRow rows[] = {
        {"invisible mode on a page with other text",
         Line(72, 600, "seen") + "3 Tr\n" + Line(72, 700, "text"), "seen\n", "text\nseen\n"},
        {"invisible mode alone", "3 Tr\n" + Line(72, 700, "text"), "text\n", "text\n"},
        {"invisible mode under a picture",
         Line(72, 600, "seen") + "3 Tr\n" + Line(72, 700, "text") + kPicture, "text\nseen\n",
         "text\nseen\n"},
        {"invisible mode over a picture",
         Line(72, 600, "seen") + kPicture + "3 Tr\n" + Line(72, 700, "text"), "text\nseen\n",
         "text\nseen\n"},
        {"invisible mode beside a picture",
         Line(72, 600, "seen") + kPicture + "3 Tr\n" + Line(72, 500, "text"), "seen\n",
         "seen\ntext\n"},
        {"under a picture", Line(72, 700, "text") + kPicture, "text\n", "text\n"},
        {"covered", Line(72, 600, "seen") + Line(72, 700, "text") + "60 690 200 30 re f\n",
         "seen\n", "seen\n"},
        {"covered, as all of the page", Line(72, 700, "text") + "60 690 200 30 re f\n", "text\n",
         "text\n"},
        {"struck through", Line(72, 600, "seen") + Line(72, 700, "text") + "60 702 200 2 re f\n",
         "text\nseen\n", "text\nseen\n"},
        {"over what covers",
         Line(72, 600, "seen") + "1 0 0 rg 60 690 200 30 re f 0 g\n" + Line(72, 700, "text"),
         "text\nseen\n", "text\nseen\n"},
        {"in the colour of its ground", "1 0 0 rg 60 690 200 30 re f\n" + Line(72, 700, "text"), "",
         ""},
        {"in the colour below its ground",
         "1 0 0 rg 60 690 200 30 re f 0 1 0 rg 70 695 100 20 re f 1 0 0 rg\n" +
             Line(72, 700, "text"),
         "text\n", "text\n"},
        {"in the colour of a frame",
         "60 690 200 30 re 65 695 190 20 re f*\n" + Line(72, 700, "text"), "text\n", "text\n"},
        {"white on the white page", "1 1 1 rg\n" + Line(72, 700, "text"), "", ""},
        {"white on a dark box", "0 0 1 rg 60 680 200 60 re f\n1 1 1 rg\n" + Line(72, 700, "text"),
         "text\n", "text\n"},
        {"white on a box that was painted over",
         "0 0 1 rg 60 680 200 60 re f\n1 1 1 rg 50 670 300 90 re f\n" + Line(72, 700, "text"), "",
         ""},
        {"outside of the page", Line(-80, 700, "text") + Line(72, 900, "text"), "", ""},
        {"without size", Line(72, 700, "text", 0.1), "", ""},
        {"clipped away", "q 300 300 20 20 re W n\n" + Line(72, 700, "text") + "Q\n", "", ""},
        {"within its clip", "q 60 690 90 30 re W n\n" + Line(72, 700, "text") + "Q\n", "text\n",
         "text\n"},
        {"light grey", "0.9 g\n" + Line(72, 700, "text"), "text\n", "text\n"},
        {"outlines only", "1 Tr 1 1 1 rg\n" + Line(72, 700, "text"), "text\n", "text\n"},
    };
    for (const HiddenRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string pdf = MakePdf(row.content);
        PdfRichOptions options;
        EXPECT_EQ(TextOf(pdf, options), row.shown);
        options.lBCLConversionMethod = 0;
        EXPECT_EQ(TextOf(pdf, options), row.scanned);
        options.lBCLConversionMethod = 3;
        options.bRemoveHiddenText = false;
        EXPECT_NE(TextOf(pdf, options).find("text"), std::string::npos);
    }
}

TEST(PdfRich, TellsAddressesOfLinks) {
    const std::string pdf = MakePdf({{Line(72, 700, "see the site for more"),
                                      test_pdf::Link(110, 695, 131, 712, "http://example.org/a")}});
    EXPECT_EQ(TextOf(pdf), "see the site for more\n");
    PdfRichOptions options;
    options.bBCLExtractHyperlinks = true;
    EXPECT_EQ(TextOf(pdf, options), "see the site <http://example.org/a> for more\n");
}

TEST(PdfRich, AdjustsNamesAndSizesWhenTold) {
    PdfRichOptions options;
    options.bBCLAdjustFontNames = true;
    options.bBCLShrinkFonts = true;
    const RichText text = RichOf(MakePdf(Line(72, 700, "text", 12, "S")), options);
    EXPECT_EQ(text.char_runs.at(0).format.font.view(), "Times New Roman");
    EXPECT_EQ(text.char_runs.at(0).format.half_points, 23);
}

struct AlignmentRow {
    const char* name;
    std::string content;
    Alignment alignment;
    std::int32_t left_indent;
    std::int32_t first_line_indent;
};
TEST(PdfRich, TellsAlignmentAndIndents) {
    // A line from margin to margin is there to measure by.
    const std::string margins =
        Line(72, 740,
             "A line of text that goes on from the left margin to the right margin of this page,") +
        Line(72, 726, "and one more.");
    const AlignmentRow rows[] = {
        {"left", Line(72, 600, "some words"), Alignment::Left, 0, 0},
        {"centred", Line(278, 600, "some words"), Alignment::Center, 0, 0},
        {"right", Line(455, 600, "some more words"), Alignment::Right, 0, 0},
        {"farther in", Line(102, 600, "some words"), Alignment::Left, 600, 0},
    };
    for (const AlignmentRow& row : rows) {
        SCOPED_TRACE(row.name);
        const RichText text = RichOf(MakePdf(margins + row.content));
        ASSERT_GE(text.paragraph_runs.size(), 1U);
        const ParagraphFormat& format = text.paragraph_runs.back().format;
        EXPECT_EQ(format.alignment, row.alignment);
        EXPECT_EQ(format.left_indent, row.left_indent);
        EXPECT_EQ(format.first_line_indent, row.first_line_indent);
    }
}

TEST(PdfRich, ReadsTurnedPages) {
    // A quarter to the right: what runs up in the file runs right on the screen.
    Page page{"BT /R 12 Tf 0 1 -1 0 100 72 Tm (turned text) Tj ET\n", {}};
    page.rotate = 90;
    EXPECT_EQ(TextOf(MakePdf({page})), "turned text\n");
    page.rotate = 0;
    EXPECT_EQ(TextOf(MakePdf({page})), "turned text\n");
}

TEST(PdfRich, ReadsAPageOfAnySize) {
    for (const double size : {30'000.0, 1e6, 1e9}) {
        SCOPED_TRACE(size);
        Page page{Line(72, 700, "two words") + Line(72, 20'000, "above"), {}};
        page.width = size;
        page.height = size;
        EXPECT_EQ(TextOf(MakePdf(std::vector<Page>{page})), "above\ntwo words\n");
    }
}

TEST(PdfRich, TakesTheTextThatStandsForGlyphs) {
    EXPECT_EQ(
        TextOf(MakePdf("/Span << /ActualText (shown) >> BDC\n" + Line(72, 700, "xyzzy") + "EMC\n")),
        "shown\n");
}

TEST(PdfRich, StopsBetweenPages) {
    PatientMonitor monitor(1);
    const auto sink = MakePlainSink();
    EXPECT_EQ(ReadPdfRich(MakePdf(PagesWithFeet()), {}, {}, {}, *sink, monitor).error,
              ReadError::Cancelled);
    PatientMonitor patient;
    const auto second = MakePlainSink();
    EXPECT_TRUE(ReadPdfRich(MakePdf(PagesWithFeet()), {}, {2, 2}, {}, *second, patient).ok());
    EXPECT_EQ(second->Finish().find("This is"), std::string::npos);
}

// Forms that call one another many times: a small file, and no end of operators. Takes the time
// that a page may take, and a process of its own: what poppler was doing is left as it is.
TEST(PdfRich, StopsAtAPageWithoutEnd) {
    std::string content;
    for (int time = 0; time < 40'000; ++time)
        content += "q 1 0 0 1 0 0 cm Q\n";
    EXPECT_EQ(TextOf(MakePdf(content + Line(72, 700, "end"))), "end\n");
    const auto read = [] {
        PatientMonitor monitor;
        std::string text;
        std::_Exit(static_cast<int>(
            ReadPdfText(test_pdf::MakeFormBomb(12, 12), {}, {}, 0, text, monitor).error));
    };
    EXPECT_EXIT(read(), testing::ExitedWithCode(static_cast<int>(ReadError::TooLarge)), "");
}

void ReadBothWays(const std::string& bytes) {
    PatientMonitor monitor;
    std::string text;
    (void)ReadPdfText(bytes, {}, {}, 1.0, text, monitor).ok();
    PdfRichOptions options;
    options.bBCLExtractHyperlinks = true;
    const auto sink = MakePlainSink();
    (void)ReadPdfRich(bytes, {}, {}, options, *sink, monitor).ok();
}

TEST(PdfRich, OutlivesDamagedFiles) {
    std::vector<std::string> originals = {MakePdf(PagesWithFeet()), MakePdf(TwoColumns())};
    for (const char* const name : {"basicapi.pdf", "copy_paste_ligatures.pdf", "bug1337429.pdf"}) {
        std::ifstream file(std::filesystem::path(ZORVANE_CORPUS) / "pdf" / name, std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(file), {}};
        if (!bytes.empty())
            originals.push_back(std::move(bytes));
    }
    std::mt19937 random(20);
    for (const std::string& original : originals) {
        for (int round = 0; round < 20; ++round) {
            std::string damaged = original;
            if (round % 4 == 0)
                damaged.resize(random() % damaged.size());
            for (int change = 0; change < 1 << (round % 7) && !damaged.empty(); ++change)
                damaged[random() % damaged.size()] = static_cast<char>(random());
            ReadBothWays(damaged);
        }
        ReadBothWays(original);
    }
}

}  // namespace
}  // namespace zorvane::pdf_rich_test
