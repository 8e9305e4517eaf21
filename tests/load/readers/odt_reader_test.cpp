#include <string>

#include <gtest/gtest.h>

#include "load/readers/word_readers.h"
#include "tests/support/shown_document.h"
#include "tests/support/text_rows.h"
#include "tests/support/zip_file.h"

namespace zorvane::odt_reader_test {
namespace {

constexpr std::string_view kNames =
    R"( xmlns:office="o" xmlns:style="s" xmlns:text="t" xmlns:table="b" xmlns:draw="d" xmlns:fo="f")";

std::string Part(std::string_view name, std::string_view content) {
    return "<office:" + std::string(name) + std::string(kNames) + ">" + std::string(content) +
           "</office:" + std::string(name) + ">";
}

std::string ShownPackage(const std::string& content, const std::string& styles,
                         const std::string& manifest = "<m/>") {
    const std::string bytes = MakeZip({{"content.xml", content},
                                       {"styles.xml", styles},
                                       {"META-INF/manifest.xml", manifest},
                                       {"F/content.xml", "<math><mi>y</mi></math>"}});
    const auto package = Package::Open(bytes);
    const auto read = [&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadOpenDocument(*package, sink, monitor);
    };
    return Shown(read, Notation);
}

// The text's body, its own styles, and the content of styles.xml.
std::string ShownText(std::string_view body, std::string_view own = "",
                      std::string_view named = "") {
    const std::string automatic =
        "<office:automatic-styles>" + std::string(own) + "</office:automatic-styles>";
    return ShownPackage(
        Part("document-content", automatic + "<office:body><office:text>" + std::string(body) +
                                     "</office:text></office:body>"),
        Part("document-styles", named));
}

void Check(std::initializer_list<TextRow> rows, std::string_view own = "",
           std::string_view named = "") {
    CheckRows([&](std::string_view body) { return ShownText(body, own, named); }, rows);
}

TEST(OdtReader, ReadsTheTextOfParagraphs) {
    Check({
        {"nothing", "", ""},
        {"white space of the file", "<text:p> a\n b <text:span> c </text:span> </text:p>",
         "a b c |"},
        {"blanks, tabs, lines",
         "<text:p>a<text:s text:c='3'/>b<text:tab/>c<text:line-break/>d<text:s/></text:p>",
         "a   b>c/d |"},
        {"an empty paragraph", "<text:p/><text:p>a</text:p>", "|a|"},
        {"fields and links by their text",
         "<text:p><text:page-number>4</text:page-number><text:a>b<text:bookmark/></text:a>"
         "<text:meta-field>c</text:meta-field></text:p>",
         "4bc|"},
        {"special characters", "<text:p>a\u00A0b\u00ADc &amp; &#x5D0;</text:p>",
         "a\u00A0b\u00ADc & \u05D0|"},
        {"sections and an index",
         "<text:section><text:p>a</text:p></text:section><text:table-of-content>"
         "<text:table-of-content-source><text:index-title-template>x</text:index-title-template>"
         "</text:table-of-content-source><text:index-body><text:index-title><text:p>b</text:p>"
         "</text:index-title><text:p>c<text:tab/>1</text:p></text:index-body>"
         "</text:table-of-content>",
         "a|b|c>1|"},
        {"ruby",
         "<text:p><text:ruby><text:ruby-base>a</text:ruby-base><text:ruby-text>b</text:ruby-text>"
         "</text:ruby></text:p>",
         "a(b)|"},
    });
}

TEST(OdtReader, LeavesOutWhatIsNotShown) {
    Check(
        {
            {"deletions",
             "<text:tracked-changes><text:changed-region><text:deletion><text:p>x</text:p>"
             "</text:deletion></text:changed-region></text:tracked-changes>"
             "<text:p>a<text:change/><text:change-start/>b<text:change-end/></text:p>",
             "ab|"},
            {"comments",
             "<text:p>a<office:annotation><text:p>x</text:p></office:annotation>b"
             "<office:annotation-end/></text:p>",
             "ab|"},
            {"hidden text",
             "<text:p>a<text:span text:style-name='H'>x<text:tab/><text:line-break/><text:note>"
             "<text:note-body><text:p>x</text:p></text:note-body></text:note></text:span>b"
             "<text:hidden-text>x</text:hidden-text></text:p>",
             "ab|"},
            {"hidden sections",
             "<text:section text:display='none'><text:p>x</text:p></text:section>"
             "<text:section text:display='condition' text:is-hidden='true'><text:p>x</text:p>"
             "</text:section><text:p>a</text:p>",
             "a|"},
            {"titles of shapes",
             "<text:p>a<draw:frame><draw:image/><svg:title>x</svg:title><svg:desc>x</svg:desc>"
             "</draw:frame></text:p>",
             "a|"},
        },
        "<style:style style:name='H' style:family='text'>"
        "<style:text-properties text:display='none'/></style:style>");
}

TEST(OdtReader, PutsNotesAtTheirMarkAndFramesBehindTheirParagraph) {
    constexpr std::string_view kNote =
        "<text:note><text:note-citation>1</text:note-citation><text:note-body><text:p><text:s/>n</"
        "text:p>"
        "<text:p>m</text:p></text:note-body></text:note>";
    Check({
        {"a note", "<text:p>a" + std::string(kNote) + " b</text:p>", "a [note: n m] b|"},
        {"behind a blank", "<text:p>a " + std::string(kNote) + ".</text:p>", "a [note: n m] .|"},
        {"frames",
         "<text:p>a<draw:frame><draw:text-box><text:p>x</text:p><text:p>y</text:p></draw:text-box>"
         "</draw:frame>b<draw:g><draw:custom-shape><text:p>z</text:p></draw:custom-shape></draw:g>"
         "</text:p><text:p>c</text:p>",
         "ab|x|y|z|c|"},
        {"a frame in a frame",
         "<text:p>a<draw:frame><draw:text-box><text:p>b<draw:frame><draw:text-box><text:p>c</"
         "text:p>"
         "</draw:text-box></draw:frame></text:p></draw:text-box></draw:frame></text:p>",
         "a|b|c|"},
        {"a formula",
         "<text:p>a<draw:frame><draw:object><math><mi>x</mi><mo> = </mo><mn>1</mn>"
         "<annotation>x over 1</annotation></math></draw:object></draw:frame></text:p>",
         "ax=1|"},
        {"a formula in a part of its own, and none",
         "<text:p>a<draw:frame><draw:object "
         "xlink:href='./F'/></draw:frame><draw:frame><draw:object "
         "xlink:href='./G'/></draw:frame></text:p>",
         "ay|"},
    });
}

TEST(OdtReader, KeepsANoteApartFromTheWordsAroundItsMark) {
    const auto note = [](const std::string& body) {
        return "<text:note><text:note-citation>1</text:note-citation><text:note-body>" + body +
               "</text:note-body></text:note>";
    };
    const std::string simple = note("<text:p>n</text:p>");
    const std::string list = note(
        "<text:p>n<text:line-break/>m</text:p><text:list><text:list-item><text:p>o</text:p>"
        "</text:list-item></text:list>");
    Check({
        {"between two words", "<text:p>a" + simple + "b</text:p>", "a [note: n] b|"},
        {"at both ends", "<text:p>" + simple + "</text:p><text:p>b</text:p>", "[note: n]|b|"},
        {"two notes", "<text:p>a" + simple + simple + ".</text:p>", "a [note: n] [note: n] .|"},
        {"lines and a list in it", "<text:p>a " + list + " b</text:p>", "a [note: n m o] b|"},
        {"nothing in it", "<text:p>a" + note("<text:p/>") + "b</text:p>", "ab|"},
        {"in a cell",
         "<table:table><table:table-row><table:table-cell><text:p>a" + simple +
             "</text:p><text:p>" + simple +
             "</text:p></table:table-cell></table:table-row>"
             "</table:table>",
         "a [note: n]/[note: n]!|"},
    });
}

TEST(OdtReader, LeavesHiddenRowsAndParagraphsOut) {
    const auto row = [](const char* attributes, const char* text) {
        return "<table:table-row" + std::string(attributes) + ">\n <table:table-cell>\n  <text:p>" +
               text + "</text:p>\n </table:table-cell>\n</table:table-row>";
    };
    const char* hidden = "<text:span text:style-name='H'>x</text:span>";
    Check(
        {
            {"rows",
             "<table:table>" + row(" table:visibility='collapse'", "x") +
                 row(" table:visibility='filter'", "x") + row("", hidden) +
                 "<table:table-row-group table:display='false'>" + row("", "x") +
                 "</table:table-row-group>" + row("", "a") + row("", "") +
                 row(" table:style-name='R'", "<text:change text:change-id='c1'/>") +
                 "</table:table>",
             "a!|!|"},
            {"paragraphs",
             "<text:p>" + std::string(hidden) +
                 "</text:p><text:p text:style-name='P'>x</text:p>"
                 "<text:p>x<text:hidden-paragraph text:is-hidden='true'/></text:p><text:p/>"
                 "<text:p>" +
                 hidden + "a</text:p>",
             "|a|"},
        },
        "<style:style style:name='H' style:family='text'><style:text-properties "
        "text:display='none'/></style:style><style:style style:name='P' "
        "style:family='paragraph'><style:text-properties text:display='none'/></style:style>"
        "<style:style style:name='R' style:family='table-row'><style:table-row-properties "
        "loext:text-changes-only='false'/></style:style>");
}

TEST(OdtReader, ShowsHeadersAndFootersOfTheUsedPagesOnce) {
    constexpr std::string_view kNamed =
        "<office:automatic-styles><style:style style:name='P1' style:family='paragraph'>"
        "<style:text-properties fo:font-style='italic'/></style:style></office:automatic-styles>"
        "<office:master-styles><style:master-page style:name='Standard'><style:header>"
        "<text:p text:style-name='P1'>h</text:p></style:header><style:footer><text:p>f "
        "<text:page-number>1</text:page-number></text:p></style:footer><style:footer-left "
        "style:display='false'><text:p>x</text:p></style:footer-left></style:master-page>"
        "<style:master-page style:name='First' style:next-style-name='Standard'><style:header>"
        "<text:p>first</text:p></style:header></style:master-page>"
        "<style:master-page style:name='Unused'><style:header><text:p>x</text:p></style:header>"
        "</style:master-page></office:master-styles>";
    EXPECT_EQ(ShownText("<text:p text:style-name='P1'>a</text:p><text:p text:style-name='P1'>b"
                        "</text:p>",
                        "<style:style style:name='P1' style:family='paragraph' "
                        "style:master-page-name='First'/>",
                        kNamed),
              "a|b|first|[i:h|]f 1|");
    EXPECT_EQ(ShownText("<text:p>a</text:p>", "", kNamed), "a|[i:h|]f 1|");
}

TEST(OdtReader, ReadsTheTextOfSlidesAndSheets) {
    EXPECT_EQ(ShownPackage(
                  Part("document-content",
                       "<office:body><office:presentation><draw:page><draw:frame><draw:text-box>"
                       "<text:p>a</text:p></draw:text-box></draw:frame><presentation:notes>"
                       "<draw:frame><draw:text-box><text:p>n</text:p></draw:text-box></draw:frame>"
                       "</presentation:notes></draw:page></office:presentation></office:body>"),
                  Part("document-styles", "")),
              "a|");
    EXPECT_EQ(ShownPackage(
                  Part("document-content",
                       "<office:body><office:spreadsheet><table:table><table:table-row>"
                       "<table:table-cell><text:p>a</text:p></table:table-cell><table:table-cell "
                       "table:number-columns-repeated='16383'/></table:table-row><table:table-row "
                       "table:number-rows-repeated='1048575'><table:table-cell "
                       "table:number-columns-repeated='16384'/></table:table-row></table:table>"
                       "</office:spreadsheet></office:body>"),
                  Part("document-styles", "")),
              "a!!|!|");
}

TEST(OdtReader, TellsWhatItCannotRead) {
    EXPECT_EQ(ShownPackage("<a><b></a>", "<s/>").substr(0, 8), "error 3:");
    EXPECT_EQ(ShownPackage("<a/>", "<s/>", "<m><encryption-data/></m>").substr(0, 8), "error 4:");
    const std::string empty = MakeZip({{"x", "y"}});
    const auto package = Package::Open(empty);
    const auto sink = MakePlainSink();
    SilentMonitor monitor;
    EXPECT_EQ(ReadOpenDocument(*package, *sink, monitor).error, ReadError::WrongFormat);
}

std::string Nested(std::string_view open, std::string_view close, int times,
                   std::string_view inner) {
    std::string text;
    for (int i = 0; i < times; ++i)
        text += open;
    text += inner;
    for (int i = 0; i < times; ++i)
        text += close;
    return text;
}

TEST(OdtReader, EndsSoonOnHostileDocuments) {
    constexpr int kDeep = 100'000;
    for (const auto& [open, close] :
         {std::pair{"<text:section>", "</text:section>"},
          {"<text:p><text:span>", "</text:span></text:p>"},
          {"<text:list><text:list-item>", "</text:list-item></text:list>"},
          {"<draw:g>", "</draw:g>"},
          {"<text:p><draw:frame><draw:text-box>", "</draw:text-box></draw:frame></text:p>"}}) {
        SCOPED_TRACE(open);
        EXPECT_EQ(ShownText(Nested(open, close, kDeep, "<text:p>x</text:p>")),
                  "error 3: elements are nested too deeply");
    }
    constexpr std::string_view kRepeat =
        "<table:table><table:table-row table:number-rows-repeated='2000000000'><table:table-cell "
        "table:number-columns-repeated='2000000000'>";
    const std::string bomb = ShownText(Nested(
        kRepeat, "</table:table-cell></table:table-row></table:table>", 5, "<text:p>x</text:p>"));
    EXPECT_LT(bomb.size(), 1'000'000U);
    EXPECT_EQ(ShownText("<text:p>a<text:s text:c='2000000000'/>b</text:p>").size(), 10003U);
}

}  // namespace
}  // namespace zorvane::odt_reader_test
