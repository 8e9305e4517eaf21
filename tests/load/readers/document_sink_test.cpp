#include "load/readers/sink/document_sink.h"

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/document/rtf_reader.h"

namespace zorvane::document_sink_test {
namespace {

// Two paragraphs: a numbered one with a bold word, and a row of two cells.
std::string Written(DocumentSink& sink) {
    CharFormat plain;
    CharFormat bold = plain;
    bold.bold = true;
    ParagraphWriter writer(sink);
    writer.ListLabel("1.", plain);
    writer.Text("a {b\\} ", plain);
    writer.Text("caf\xC3\xA9 \xF0\x9F\x98\x80", bold);
    writer.End();
    writer.Text("x\x07y<&>\x0Bz\x07", plain);
    writer.End();
    writer.EndIfBegun();
    return sink.Finish();
}

TEST(DocumentSink, RtfReadsBackWithLabelsThatTheNumberingRuleDrops) {
    std::string rtf = Written(*MakeRtfSink());
    EXPECT_EQ(ToUtf8(ReadRtf(rtf).text),
              "1.\ta {b\\} caf\xC3\xA9 \xF0\x9F\x98\x80\r\nx\x07y<&>\x0Bz\x07\r\n");
    EXPECT_TRUE(ReadRtf(rtf).char_runs.at(1).format.bold);
    const std::size_t label = rtf.find("\\pn");
    ASSERT_NE(label, std::string::npos);
    rtf.replace(label, 3, "\\pzn");
    EXPECT_EQ(ToUtf8(ReadRtf(rtf).text).substr(0, 8), "a {b\\} c");
}

TEST(DocumentSink, PlainTextKeepsLabelsAndPartsCellsByTabs) {
    EXPECT_EQ(Written(*MakePlainSink()),
              "1.\ta {b\\} caf\xC3\xA9 \xF0\x9F\x98\x80\r\nx\ty<&>\nz\r\n");
}

TEST(DocumentSink, HtmlEscapesAndClosesItsSpans) {
    const std::string html = Written(*MakeHtmlSink());
    EXPECT_NE(html.find("font-weight: bold\">caf\xC3\xA9"), std::string::npos) << html;
    EXPECT_NE(html.find("y&lt;&amp;&gt;<br>z"), std::string::npos) << html;
    EXPECT_TRUE(html.ends_with("</span></p>\n</body>\n</html>\n")) << html;
}

TEST(DocumentSink, ItemsAreAtTheirPlacesAndBounded) {
    const auto fill = [](DocumentSink& sink, std::size_t links) {
        ParagraphWriter writer(sink);
        writer.Text(
            "a\x0B"
            "b",
            {});
        writer.End();
        writer.Text("c", {});
        for (std::size_t i = 0; i < links; ++i)
            sink.Beside(MakeBeside(BesideKind::Link, "x"));
        sink.Beside(*MakeMetadata("title", "T"));
        writer.End();
    };
    const auto plain = MakePlainSink();
    fill(*plain, 1);
    std::vector<BesideItem> items = plain->TakeBeside();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].paragraph, 3) << "of plain text each line is a paragraph";
    EXPECT_EQ(items[1].paragraph, 0);
    for (const std::size_t links : {std::size_t{1}, kMostBesideItems, 3 * kMostBesideItems}) {
        const auto rich = MakeRtfSink();
        fill(*rich, links);
        items.clear();
        EXPECT_EQ(ToUtf8(ReadRtf(rich->Finish(), items).text),
                  "a\x0B"
                  "b\r\nc\r\n");
        EXPECT_EQ(items.front().paragraph, 2);
        EXPECT_EQ(items.size(), links == 1                  ? 2U
                                : links == kMostBesideItems ? links + 1
                                                            : kMostBesideItems + 2);
    }
    const auto page = MakeHtmlSink();
    fill(*page, 1);
    EXPECT_EQ(page->Finish().find("title: T"), std::string::npos);
}

TEST(DocumentSink, ReplayIsTheSameText) {
    const RichText text = RichText::Plain(u"one\r\n\r\ntwo\r\nthree");
    const auto sink = MakePlainSink();
    Replay(text, *sink);
    EXPECT_EQ(sink->Finish(), "one\r\n\r\ntwo\r\nthree\r\n");
}

}  // namespace
}  // namespace zorvane::document_sink_test
