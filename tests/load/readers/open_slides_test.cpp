#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "compare/document/rtf_reader.h"
#include "load/readers/opendocument/open_styles.h"
#include "tests/support/rich_text_notation.h"
#include "tests/support/slide_reading.h"
#include "tests/support/zip_file.h"

namespace zorvane::open_slides_test {
namespace {

constexpr const char* kAutomatic =
    "<text:list-style style:name=\"L1\"><text:list-level-style-bullet text:level=\"1\" "
    "text:bullet-char=\"*\"/><text:list-level-style-number text:level=\"2\" style:num-format=\"a\" "
    "style:num-suffix=\")\"/></text:list-style><text:list-style style:name=\"L2\">"
    "<text:list-level-style-number text:level=\"1\" style:num-format=\"1\" style:num-suffix=\".\" "
    "text:start-value=\"3\"/><text:list-level-style-number text:level=\"2\" "
    "style:num-format=\"I\" style:num-prefix=\"(\" style:num-suffix=\")\" "
    "text:display-levels=\"2\"/></text:list-style>"
    "<text:list-style style:name=\"L3\"><text:list-level-style-number text:level=\"1\" "
    "style:num-format=\"a\" loext:num-list-format=\"[%1%]\" style:num-suffix=\".\"/>"
    "</text:list-style>"
    "<style:style style:name=\"dp1\" style:family=\"drawing-page\"><style:drawing-page-properties "
    "presentation:display-footer=\"true\" presentation:display-page-number=\"true\" "
    "presentation:display-date-time=\"false\"/></style:style>"
    "<style:style style:name=\"T1\" style:family=\"text\"><style:text-properties "
    "fo:font-weight=\"bold\" style:text-underline-style=\"solid\" fo:color=\"#ff0000\"/>"
    "</style:style><style:style style:name=\"T2\" style:family=\"text\"><style:text-properties "
    "fo:text-transform=\"uppercase\"/></style:style>"
    "<style:style style:name=\"gr1\" style:family=\"graphic\" style:parent-style-name=\"base\"/>"
    "<style:style style:name=\"P1\" style:family=\"paragraph\" style:parent-style-name=\"P1\">"
    "<style:paragraph-properties fo:margin-left=\"2cm\" fo:text-align=\"end\"/></style:style>";

constexpr const char* kStyles =
    "<office:document-styles><office:styles><style:style style:name=\"base\" "
    "style:family=\"graphic\"><style:text-properties fo:font-family=\"'My Font'\" "
    "fo:font-size=\"20pt\" fo:font-style=\"italic\"/></style:style></office:styles>"
    "<office:master-styles><style:master-page style:name=\"M\"><draw:frame "
    "presentation:class=\"title\"><draw:text-box><text:p>Click here</text:p></draw:text-box>"
    "</draw:frame><draw:frame presentation:class=\"footer\"><draw:text-box><text:p>"
    "<presentation:footer/></text:p></draw:text-box></draw:frame><draw:frame "
    "presentation:class=\"page-number\"><draw:text-box><text:p>p. <text:page-number>n</"
    "text:page-number></text:p></draw:text-box></draw:frame><draw:frame "
    "presentation:class=\"date-time\"><draw:text-box><text:p><presentation:date-time/></text:p>"
    "</draw:text-box></draw:frame><draw:frame><draw:text-box><text:p>No. "
    "<text:page-number/></text:p></draw:text-box></"
    "draw:frame><draw:frame><draw:text-box><text:p>Logo</text:p></draw:text-box>"
    "</draw:frame></style:master-page></office:master-styles></office:document-styles>";

std::string Presentation(const std::string& pages) {
    return MakeZip(
        {{"content.xml",
          "<office:document-content><office:automatic-styles>" + std::string(kAutomatic) +
              "</office:automatic-styles><office:body><office:presentation>" + pages +
              "</office:presentation></office:body></office:document-content>"},
         {"styles.xml", kStyles}});
}

std::string Page(const std::string& shapes) {
    return "<draw:page>" + shapes + "</draw:page>";
}

std::string Box(const std::string& content, const std::string& attributes = "") {
    return "<draw:frame " + attributes + "><draw:text-box>" + content +
           "</draw:text-box></draw:frame>";
}

std::string Text(const std::string& text, const std::string& attributes = "") {
    return Box("<text:p>" + text + "</text:p>", attributes);
}

std::string List(const std::string& style, const std::string& items) {
    return "<text:list text:style-name=\"" + style + "\">" + items + "</text:list>";
}

std::string Item(const std::string& text, const std::string& more = "") {
    return "<text:list-item><text:p>" + text + "</text:p>" + more + "</text:list-item>";
}

std::string Inner(const std::string& items) {
    return "<text:list>" + items + "</text:list>";
}

TEST(OpenSlides, ReadsTextListsAndTables) {
    const std::string cell = "<table:table-cell><text:p>";
    const std::string end = "</text:p></table:table-cell>";
    const struct {
        const char* name;
        std::string shapes;
        const char* text;
    } rows[] = {
        {"white space, blanks, tab, break, comment",
         Text(" a\n  b<text:s text:c=\"2\"/>c<text:tab/>d<text:line-break/><text:span "
              "text:style-name=\"T2\">e</text:span><office:annotation><text:p>no</text:p>"
              "</office:annotation>"),
         "a b  c\td\nE\n"},
        {"a blank at the end", Text("a \n"), "a \n"},
        {"title first, then placeholders, then by place",
         Text("low", "svg:x=\"1cm\" svg:y=\"9cm\"") + Text("high", "svg:y=\"1in\"") +
             Text("turned", "draw:transform=\"rotate (1) translate (1cm 50mm)\"") +
             Text("outline", "presentation:class=\"outline\"") +
             Text("title", "presentation:class=\"title\" svg:y=\"20cm\""),
         "title\noutline\nhigh\nturned\nlow\n"},
        {"a group lies where its first shape does",
         Text("between", "svg:y=\"5cm\"") + "<draw:g>" + Text("last", "svg:y=\"9cm\"") +
             Text("first", "svg:y=\"1cm\"") + "</draw:g>",
         "first\nlast\nbetween\n"},
        {"shapes with text of their own",
         "<draw:custom-shape><text:p>x</text:p></draw:custom-shape>", "x\n"},
        {"bullets and numbers by level",
         Box(List("L1", Item("a", Inner(Item("b") + Item("c"))) + Item("d", Inner(Item("e"))))),
         "*\ta\na)\tb\nb)\tc\n*\td\na)\te\n"},
        {"start, levels shown, second paragraph without number",
         Box(List("L2", Item("a</text:p><text:p>a2") + Item("b", Inner(Item("c"))) +
                            "<text:list-header><text:p>h</text:p></text:list-header>"
                            "<text:list-item text:start-value=\"9\"><text:p>d</text:p>"
                            "</text:list-item>")),
         "3.\ta\na2\n4.\tb\n(4.I)\tc\nh\n9.\td\n"},
        {"an item that only holds a list takes no number",
         Box(List("L2", "<text:list-item>" + Inner(Item("x")) + "</text:list-item>" + Item("a"))),
         "(3.I)\tx\n3.\ta\n"},
        {"a pattern of its own, numbers that go on",
         Box(List("L3", Item("a")) + "<text:p>b</text:p>" +
             "<text:list text:style-name=\"L3\" text:continue-numbering=\"true\">" + Item("c") +
             "</text:list>" + List("L3", Item("d"))),
         "[a]\ta\nb\n[b]\tc\n[a]\td\n"},
        {"empty paragraphs take no number", Box(List("L2", Item("") + Item("a"))), "\n3.\ta\n"},
        {"table with its picture, covered and repeated cells",
         "<draw:frame><table:table><table:table-column/><table:table-row>" + cell +
             "a</text:p>"
             "<text:p>b" +
             end +
             "<table:covered-table-cell/></table:table-row><table:table-rows>"
             "<table:table-row table:number-rows-repeated=\"2\"><table:table-cell "
             "table:number-columns-repeated=\"2\">" +
             List("L1", Item("c")) +
             "</table:table-cell></table:table-row></table:table-rows></table:table><draw:image>"
             "<text:p>not seen</text:p></draw:image></draw:frame>",
         "a\nb\t\n* c\t* c\n* c\t* c\n"},
        {"not shown", Text("x", "draw:display=\"none\""), ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(SlideText(ReadOpenDocumentSlides, Presentation(Page(row.shapes))), row.text);
    }
}

TEST(OpenSlides, ShowsWhatTheMasterPageGives) {
    const std::string page =
        "<presentation:footer-decl presentation:name=\"f1\">foot</presentation:footer-decl>"
        "<draw:page draw:style-name=\"dp1\" draw:master-page-name=\"M\" "
        "presentation:use-footer-name=\"f1\">" +
        Text("body") +
        "</draw:page>"
        "<draw:page draw:master-page-name=\"M\">" +
        Text("second") + "</draw:page>";
    EXPECT_EQ(SlideText(ReadOpenDocumentSlides, Presentation(page)),
              "body\nNo. 1\nfoot\np. 1\nsecond\nNo. 2\nLogo\n");
}

TEST(OpenSlides, RangesNotesAndNumbers) {
    const std::string file =
        Presentation(Page(Text("one") + "<presentation:notes><draw:page-thumbnail/>" +
                          Text("said", "presentation:class=\"notes\"") +
                          Text("head", "presentation:class=\"header\"") + "</presentation:notes>") +
                     Page(Text("two")));
    const struct {
        SlideOptions options;
        const char* text;
    } rows[] = {
        {{}, "one\ntwo\n"},
        {{2, 9}, "two\n"},
        {{2, 1}, "one\ntwo\n"},
        {{0, 0, false, true}, "one\nsaid\ntwo\n"},
        {{0, 0, false, true, true}, "said\n"},
        {{0, 0, true, true}, "Slide 1\nShape 1:\none\nNotes:\nsaid\nSlide 2\nShape 1:\ntwo\n"},
        {{1, 1, true, true, true}, "Slide 1\nsaid\n"}};
    for (const auto& row : rows)
        EXPECT_EQ(SlideText(ReadOpenDocumentSlides, file, row.options), row.text);
}

TEST(OpenSlides, StylesInheritAndCirclesEnd) {
    const std::string file = Presentation(
        Page(Box("<text:p text:style-name=\"P1\">a<text:span text:style-name=\"T1\">b</text:span>"
                 "</text:p>",
                 "draw:style-name=\"gr1\"")));
    const std::unique_ptr<Package> package = Package::Open(file);
    const auto sink = MakeRtfSink();
    RecordingMonitor monitor;
    ASSERT_TRUE(ReadOpenDocumentSlides(*package, {}, *sink, monitor).ok());
    const RichText text = ReadRtf(sink->Finish());
    EXPECT_EQ(Notation(text), "[i:a][biu1#255:b|]");
    EXPECT_EQ(FontLooks(text), "My Font 40|My Font 40|");
    EXPECT_EQ(ParagraphLooks(text), "R 1134 0 0 0 0 0|");
}

TEST(OpenSlides, ReadsChartsAndFormulas) {
    const std::string object = "<draw:frame><draw:object xlink:href=\"./Object 1\"/></draw:frame>";
    const auto with = [&](const std::string& content) {
        return SlideText(
            ReadOpenDocumentSlides,
            MakeZip({{"content.xml",
                      "<office:document-content><office:body><office:presentation>" +
                          Page(object + object) +
                          "</office:presentation></office:body></office:document-content>"},
                     {"Object 1/content.xml", content}}));
    };
    EXPECT_EQ(with("<math><mrow><mi>x</mi><mo>=</mo><mn>2</mn></mrow><annotation>x=2</annotation>"
                   "</math>"),
              "x=2\n");
    for (const std::string kind : {"bar", "ring"}) {
        EXPECT_EQ(
            with("<o:c><office:body><office:chart><chart:chart chart:class=\"chart:" + kind +
                 "\"><chart:title><text:p>T</text:p></chart:title><chart:subtitle><text:p>U"
                 "</text:p></chart:subtitle><chart:plot-area><chart:axis><chart:title><text:p>X"
                 "</text:p></chart:title></chart:axis></chart:plot-area><chart:legend/>"
                 "<table:table>"
                 "<table:table-header-rows><table:table-row><table:table-cell/><table:table-cell>"
                 "<text:p>S</text:p></table:table-cell></table:table-row></"
                 "table:table-header-rows><table:table-rows><table:table-row><table:table-cell "
                 "office:value-type=\"string\"><text:p>C</text:p></table:table-cell>"
                 "<table:table-cell><text:p>7</text:p></table:table-cell></table:table-row></"
                 "table:table-rows></table:table></chart:chart></office:chart></office:body>"
                 "</o:c>"),
            kind == "bar" ? "T\nU\nX\nS\nC\n" : "T\nU\nX\nC\n");
    }
    EXPECT_TRUE(with("<math>").starts_with("error 3: "));
}

TEST(OpenSlides, HostileFilesEnd) {
    EXPECT_EQ(SlideText(ReadOpenDocumentSlides, MakeZip({{"mimetype", "x"}})),
              "error 2: cannot read the part content.xml");
    EXPECT_EQ(SlideText(ReadOpenDocumentSlides,
                        MakeZip({{"META-INF/manifest.xml", "<m:encryption-data/>"},
                                 {"content.xml", "noise"}})),
              "error 5: the document's encryption cannot be read");
    std::string deep;
    std::string ends;
    for (int i = 0; i < 20'000; ++i) {
        deep += "<text:list><text:list-item>";
        ends += "</text:list-item></text:list>";
    }
    EXPECT_EQ(SlideText(ReadOpenDocumentSlides,
                        Presentation(Page(Box(deep + "<text:p>x</text:p>" + ends) + Text("y")))),
              "y\n");
    // Blanks, rows and columns that say "again" a thousand million times.
    const std::string many = "1000000000\"";
    const std::string text =
        SlideText(ReadOpenDocumentSlides,
                  Presentation(Page(Text("a<text:s text:c=\"" + many + "/>b") +
                                    "<draw:frame><table:table><table:table-row "
                                    "table:number-rows-repeated=\"" +
                                    many +
                                    "><table:table-cell "
                                    "table:number-columns-repeated=\"" +
                                    many + "/></table:table-row></table:table></draw:frame>")));
    EXPECT_LT(text.size(), 100'000u);
    EXPECT_TRUE(text.starts_with("a "));
}

TEST(OpenSlides, CorruptedFilesEnd) {
    std::mt19937 random(9);
    const std::string file = Presentation(
        Page(Box(List("L1", Item("a", Inner(Item("b"))))) + Text("c", "draw:style-name=\"gr1\"")));
    for (int round = 0; round < 300; ++round) {
        std::string copy = file.substr(0, round % 4 == 0 ? random() % file.size() : file.size());
        for (int i = 0; i < 8 && !copy.empty(); ++i)
            copy[random() % copy.size()] = static_cast<char>(random() & 0xFF);
        SlideText(ReadOpenDocumentSlides, copy, {0, 0, true, true, false});
    }
}

}  // namespace
}  // namespace zorvane::open_slides_test
