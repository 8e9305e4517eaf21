#include "compare/print/print_job.h"

#include <gtest/gtest.h>

#include "compare/document/rtf_reader.h"
#include "tests/support/page_notes.h"

namespace zorvane {
namespace {

using Strings = std::vector<std::string>;

// Letters of 20 half-points are 100 twips wide and a line is 200 high: 20 letters on a line, 5
// lines on a page, margins too narrow for a head and a foot.
PageSetup SmallPage() {
    return {2200, 1200, 100, 100, 100, 100};
}

class Printed : public testing::Test {
  protected:
    void PrintRich(const RichText& text, const PageSetup& setup = SmallPage()) {
        notes_ = PageNotes();
        const Result<std::int32_t> pages = PrintRTF({text, setup}, notes_, nullptr);
        ASSERT_TRUE(pages.ok()) << pages.failure().reason;
        EXPECT_EQ(pages.value(), static_cast<std::int32_t>(notes_.pages.size()));
        EXPECT_TRUE(notes_.finished);
    }
    void PrintRtf(const std::string& body, const PageSetup& setup = SmallPage()) {
        PrintRich(
            ReadRtf("{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red255;}\\fs20 " + body + "}"),
            setup);
    }
    void PrintText(std::u16string_view text) { PrintRich(RichText::Plain(text)); }
    const PageNotes::Text& Drawn(std::size_t at) const { return notes_.pages.at(0).texts.at(at); }
    std::size_t PageCount() const { return notes_.pages.size(); }

    PageNotes notes_;
};

TEST_F(Printed, LinesEndWhereTheScriptAllows) {
    struct Row {
        const char* name;
        std::u16string_view text;
        Strings lines;
    };
    const Row rows[] = {
        {"fits exactly", u"12345678901234567890", {"12345678901234567890"}},
        {"one letter more", u"1234567890123456789 1", {"1234567890123456789", "1"}},
        {"blanks hang", u"12345678901234567890   a", {"12345678901234567890", "a"}},
        {"behind a hyphen", u"abcdefghij-klmnopqrstuv", {"abcdefghij-", "klmnopqrstuv"}},
        {"no break at a hard blank",
         u"aaaaaaaaaaaaa bbbb\u00A0ccc",
         {"aaaaaaaaaaaaa",
          "bbbb\u00A0"
          "ccc"}},
        {"a long word is cut",
         u"a 123456789012345678901234",
         {"a", "12345678901234567890", "1234"}},
        {"marks stay with their letter",
         u"1234567890123456789e\u0301x",
         {"1234567890123456789", "e\u0301x"}},
        {"pairs stay whole",
         u"1234567890123456789\U0001F600",
         {"1234567890123456789", "\U0001F600"}},
        {"ideographs without blanks",
         u"\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00"
         u"\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E8C\u3002",
         {"\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00"
          "\u4E00\u4E00\u4E00\u4E00\u4E00\u4E00",
          "\u4E8C\u3002"}},
        {"line inside a paragraph", u"a\vb", {"a", "b"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PrintText(row.text);
        EXPECT_EQ(notes_.Lines(0), row.lines);
    }
}

TEST_F(Printed, ALineTooNarrowForALetterTakesOne) {
    PrintRich(RichText::Plain(u"ab c\td"), {290, 3000, 100, 100, 100, 100});
    EXPECT_EQ(notes_.Lines(0), (Strings{"a", "b", "c", "d"}));
}

TEST_F(Printed, PagesBreakBetweenLinesAndLeaveNoneAlone) {
    struct Row {
        const char* name;
        std::u16string_view text;
        std::vector<Strings> pages;
    };
    const std::u16string_view kThree = u"aaaaaaaaaaaa bbbbbbbbbbbb cccccccccccc";
    const std::u16string four = std::u16string(kThree) + u" dddddddddddd";
    const Row rows[] = {
        {"nothing", u"", {{}}},
        {"a full page", u"1\n2\n3\n4\n5", {{"1", "2", "3", "4", "5"}}},
        {"one more", u"1\n2\n3\n4\n5\n6", {{"1", "2", "3", "4", "5"}, {"6"}}},
        {"the first line is not left",
         u"1\n2\n3\n4\naaaaaaaaaaaa bbbbbbbbbbbb",
         {{"1", "2", "3", "4"}, {"aaaaaaaaaaaa", "bbbbbbbbbbbb"}}},
        {"nor the last sent alone",
         u"1\n2\naaaaaaaaaaaa bbbbbbbbbbbb cccccccccccc dddddddddddd",
         {{"1", "2", "aaaaaaaaaaaa", "bbbbbbbbbbbb"}, {"cccccccccccc", "dddddddddddd"}}},
        {"two lines stay where two follow",
         u"1\n2\n3\naaaaaaaaaaaa bbbbbbbbbbbb cccccccccccc dddddddddddd",
         {{"1", "2", "3", "aaaaaaaaaaaa", "bbbbbbbbbbbb"}, {"cccccccccccc", "dddddddddddd"}}},
        {"three lines stay together",
         u"1\n2\n3\naaaaaaaaaaaa bbbbbbbbbbbb cccccccccccc",
         {{"1", "2", "3"}, {"aaaaaaaaaaaa", "bbbbbbbbbbbb", "cccccccccccc"}}},
        {"form feed", u"1\f2", {{"1"}, {"2"}}},
        {"form feed on a line of its own", u"1\n\f\n2", {{"1"}, {"2"}}},
        {"form feed at the end", u"1\n\f", {{"1"}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PrintText(row.text);
        ASSERT_EQ(PageCount(), row.pages.size());
        for (std::size_t page = 0; page < row.pages.size(); ++page)
            EXPECT_EQ(notes_.Lines(page), row.pages[page]);
    }
}

TEST_F(Printed, TextStandsWhereItsParagraphWants) {
    struct Row {
        const char* name;
        const char* rtf;
        std::vector<double> xs;
    };
    const Row rows[] = {
        {"left", "\\pard\\ql abcd", {100}},
        {"centre", "\\pard\\qc abcd", {900}},
        {"right", "\\pard\\qr abcd", {1700}},
        {"right, blanks behind it apart", "\\pard\\qr abcd  ", {1700}},
        {"indents", "\\pard\\li300\\fi-100 abcdefghij klmnopqrstuv", {300, 400}},
        {"default stops", "\\pard a\\tab b", {100, 820}},
        {"own stops", "\\pard\\tx500 a\\tab b", {100, 600}},
        {"right stop", "\\pard\\tqr\\tx1000 a\\tab bcd", {100, 800}},
        {"centre stop", "\\pard\\tqc\\tx1000 a\\tab bcd", {100, 950}},
        {"decimal stop", "\\pard\\tqdec\\tx1000 a\\tab 12.5", {100, 900}},
        {"decimal stop, no point", "\\pard\\tqdec\\tx1000 a\\tab 125", {100, 800}},
        {"number of a list", "\\pard\\li600\\fi-400 1.\\tab b", {300, 700}},
        {"a stop in front is passed over", "\\pard\\tx100 abc\\tab b", {100, 820}},
        {"from right to left", "\\pard\\rtlpar ab", {1900}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        PrintRtf(row.rtf);
        std::vector<double> xs;
        for (const PageNotes::Text& text : notes_.pages[0].texts)
            xs.push_back(text.x);
        EXPECT_EQ(xs, row.xs);
    }
}

TEST_F(Printed, WordsOfTheOtherDirectionAreTurned) {
    // Hebrew in an English line: the two Hebrew words stand in their own order.
    PrintText(u"ab \u05D0\u05D1 \u05D2 cd");
    ASSERT_EQ(notes_.pages[0].texts.size(), 3U);
    EXPECT_FALSE(Drawn(0).right_to_left);
    EXPECT_TRUE(Drawn(1).right_to_left);
    EXPECT_EQ(Drawn(1).text, "\u05D0\u05D1 \u05D2");
    EXPECT_EQ(Drawn(1).x, 400);
    EXPECT_EQ(Drawn(2).text, " cd");
    // In a paragraph that runs so, the English word stands at the left of what follows it.
    PrintRtf("\\pard\\rtlpar \\u1488?\\u1489? ab {\\b \\u1490?}");
    Strings texts;
    for (const PageNotes::Text& text : notes_.pages[0].texts)
        texts.push_back(text.text);
    EXPECT_EQ(texts, (Strings{"\u05D2", " ", "ab", "\u05D0\u05D1 "}));
    EXPECT_EQ(notes_.pages[0].texts.back().x + notes_.pages[0].texts.back().width, 2100);
}

TEST_F(Printed, HeadAndFootStandInTheMargins) {
    PageSetup setup;
    const RichText text = RichText::Plain(
        u"a\f"
        u"b");
    PageNotes notes;
    const PageEdges edges{"/a/very/long/name" + std::string(200, 'x') + "/end.txt", "2026-11-22",
                          "Seite", "von"};
    ASSERT_TRUE(PrintRTF({text, setup, edges}, notes, nullptr).ok());
    for (const std::size_t page : {0U, 1U}) {
        const auto& texts = notes.pages[page].texts;
        ASSERT_EQ(texts.size(), 4U);
        EXPECT_EQ(texts[0].text, "2026-11-22");
        EXPECT_EQ(texts[0].x + texts[0].width, setup.width - setup.right);
        EXPECT_TRUE(texts[1].text.starts_with("...")) << texts[1].text;
        EXPECT_TRUE(texts[1].text.ends_with("/end.txt"));
        EXPECT_LT(texts[1].x + texts[1].width, texts[0].x);
        EXPECT_LT(texts[1].y, setup.top);
        EXPECT_EQ(texts[2].text, "Seite " + std::to_string(page + 1) + " von 2");
        EXPECT_GT(texts[2].y, setup.height - setup.bottom);
        EXPECT_LT(texts[2].y, setup.height);
    }
    setup.top = 340;
    setup.bottom = 339;
    PageNotes narrow;
    ASSERT_TRUE(PrintRTF({text, setup, edges}, narrow, nullptr).ok());
    EXPECT_EQ(narrow.pages[0].texts.size(), 3U) << "no room for the foot";
}

struct StopAt : RunWatcher {
    explicit StopAt(double where) : part(where) {}
    void Progress(RunStep step, double done) override {
        EXPECT_EQ(step, RunStep::Print);
        EXPECT_GE(done, last);
        last = done;
    }
    bool KeepGoing() override { return last < part; }
    double part;
    double last = 0;
};

TEST_F(Printed, StopsWhenTheWatcherSaysSoAndTellsHowFarItIs) {
    std::u16string text;
    for (int line = 0; line < 2000; ++line)
        text += u"line\n";
    const RichText rich = RichText::Plain(text);
    for (const double part : {0.0, 0.2, 0.7}) {
        SCOPED_TRACE(part);
        PageNotes notes;
        StopAt watcher(part);
        const Result<std::int32_t> pages = PrintRTF({rich, SmallPage()}, notes, &watcher);
        ASSERT_FALSE(pages.ok());
        EXPECT_EQ(pages.failure().reason, kPrintStopped);
        EXPECT_FALSE(notes.finished);
        EXPECT_NEAR(watcher.last, part, 0.02);
        EXPECT_EQ(notes.pages.empty(), part < 0.4);
    }
}

// One word as long as a book costs by its length, and is left in mid-way as well.
TEST_F(Printed, AWordWithoutEndIsCutInTimeAndCanBeStopped) {
    const RichText book = RichText::Plain(std::u16string(600'000, u'x'));
    PageNotes whole;
    ASSERT_TRUE(PrintRTF({book, SmallPage()}, whole, nullptr).ok());
    EXPECT_EQ(whole.pages.size(), 600'000U / 100);
    EXPECT_LT(whole.measured, 600'000U * 60);
    struct StopSoon : RunWatcher {
        bool KeepGoing() override { return ++asked < 5; }
        int asked = 0;
    } soon;
    PageNotes stopped;
    EXPECT_FALSE(PrintRTF({book, SmallPage()}, stopped, &soon).ok());
    EXPECT_LT(stopped.measured, whole.measured / 10);
}

TEST_F(Printed, HiddenTextTakesNoRoom) {
    RichText text = RichText::Plain(u"a");
    CharFormat hidden = text.char_runs[0].format;
    hidden.hidden = true;
    text.AppendPlain(u"secret", hidden);
    text.AppendPlain(u"b", text.char_runs[0].format);
    PrintRich(text);
    EXPECT_EQ(notes_.Lines(0), Strings{"a|b"});
    EXPECT_EQ(Drawn(1).x, 200);
    RichText words = RichText::Plain(u"1234567890 ");
    words.AppendPlain(u"secret secret ", hidden);
    words.AppendPlain(u"123456789", words.char_runs[0].format);
    PrintRich(words);
    EXPECT_EQ(notes_.Lines(0).size(), 1U);
}

TEST_F(Printed, MarginsLeaveRoom) {
    PageNotes notes;
    const RichText text = RichText::Plain(u"a");
    const PageSetup none{1000, 1000, 500, 100, 500, 100};
    EXPECT_EQ(PrintRTF({text, none}, notes, nullptr).failure().reason,
              "The margins leave no room on the page");
}

// Whatever the text, every unit of it that shows is drawn once, in its order, within the page.
TEST_F(Printed, LosesNothingOfRandomTexts) {
    constexpr std::u16string_view kUnits = u"ab c-\t\v\r\u4E00\u05D0.";
    std::uint32_t seed = 7;
    const auto next = [&seed] { return (seed = seed * 1664525U + 1013904223U) >> 16U; };
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        std::u16string text;
        for (std::uint32_t unit = next() % 300; unit > 0; --unit)
            text += kUnits[next() % kUnits.size()];
        PrintText(text);
        std::size_t drawn = 0;
        for (const PageNotes::Page& page : notes_.pages) {
            for (const PageNotes::Text& part : page.texts) {
                for (const char16_t unit : ToUtf16(part.text))
                    drawn += unit == u' ' ? 0U : 1U;
                EXPECT_GE(part.x, 100);
                EXPECT_LE(part.x + part.width, 2100 + 0.001);
                EXPECT_LE(part.y, 1100);
            }
        }
        std::size_t shown = 0;
        for (const char16_t unit : text)
            shown += std::u16string_view(u" \t\v\r\n").find(unit) == std::u16string_view::npos;
        EXPECT_EQ(drawn, shown);
    }
}

}  // namespace
}  // namespace zorvane
