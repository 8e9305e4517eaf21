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

using Telling = std::string (*)(const RichText&);

std::string ShownPackage(const std::string& content, const std::string& styles,
                         const std::string& manifest = "<m/>", Telling tell = Notation) {
    const std::string bytes = MakeZip({{"content.xml", content},
                                       {"styles.xml", styles},
                                       {"META-INF/manifest.xml", manifest},
                                       {"F/content.xml", "<math><mi>y</mi></math>"}});
    const auto package = Package::Open(bytes);
    const auto read = [&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadOpenDocument(*package, sink, monitor);
    };
    return Shown(read, tell);
}

// The text's body, its own styles, and the content of styles.xml.
std::string ShownText(std::string_view body, std::string_view own = "", std::string_view named = "",
                      Telling tell = Notation) {
    const std::string automatic =
        "<office:automatic-styles>" + std::string(own) + "</office:automatic-styles>";
    return ShownPackage(
        Part("document-content", automatic + "<office:body><office:text>" + std::string(body) +
                                     "</office:text></office:body>"),
        Part("document-styles", named), "<m/>", tell);
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

TEST(OdtReader, ReadsABoxInACellBehindItsRow) {
    const auto box = [](const char* text) {
        return "<draw:frame><draw:text-box><text:p>" + std::string(text) +
               "</text:p></draw:text-box></draw:frame>";
    };
    const auto cell = [](const std::string& content) {
        return "<table:table-cell>" + content + "</table:table-cell>";
    };
    const std::string row = "<table:table-row>" + cell("<text:p>a" + box("x") + "</text:p>") +
                            cell(box("y") + "<text:p>b</text:p>") + "</table:table-row>";
    Check({
        {"in and beside a cell's paragraph",
         "<table:table>" + row + "</table:table><text:p>c</text:p>", "a!b!|x|y|c|"},
        {"in a table in a cell",
         "<table:table><table:table-row>" + cell("<table:table>" + row + "</table:table>") +
             "</table:table-row></table:table>",
         "a>b!|x|y|"},
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

TEST(OdtReader, NumbersListsAndHeadings) {
    constexpr std::string_view kStyles =
        "<text:list-style style:name='N'><text:list-level-style-number text:level='1' "
        "style:num-format='1' style:num-suffix='.' text:start-value='3'/>"
        "<text:list-level-style-number text:level='2' style:num-format='a' style:num-prefix='(' "
        "style:num-suffix=')' text:display-levels='2'/></text:list-style>"
        "<text:list-style style:name='B'><text:list-level-style-bullet text:level='1' "
        "text:bullet-char='-' style:num-suffix='-'/></text:list-style>"
        "<text:list-style style:name='S'><text:list-level-style-bullet text:level='1' "
        "text:bullet-char='&#xF0A7;'><style:text-properties fo:font-family='Wingdings'/>"
        "</text:list-level-style-bullet></text:list-style><text:list-style "
        "style:name='F'><text:list-level-style-number text:level='1' "
        "style:num-format='I' loext:num-list-format='&lt;%1%&gt;'/></text:list-style>";
    const auto item = [](std::string_view content, std::string_view attributes = "") {
        return "<text:list-item " + std::string(attributes) + "><text:p>" + std::string(content) +
               "</text:p></text:list-item>";
    };
    const std::string open = "<text:list text:style-name='N' ";
    const std::string nested = "<text:list-item><text:p>b</text:p><text:p>c</text:p><text:list>" +
                               item("d") + item("e") + "</text:list></text:list-item>";
    const std::string deep =
        "<text:list-item><text:list>" + item("e") + "</text:list></text:list-item>";
    Check(
        {
            {"levels", open + ">" + item("a") + nested + item("f") + "</text:list>",
             "3.>a|4.>b|c|(4.a)>d|(4.b)>e|5.>f|"},
            {"an inner list begins anew in each item",
             open + ">" + nested + nested + "</text:list>",
             "3.>b|c|(3.a)>d|(3.b)>e|4.>b|c|(4.a)>d|(4.b)>e|"},
            {"a header has no number",
             open + "><text:list-header><text:p>h</text:p></text:list-header>" + item("a") +
                 "</text:list>",
             "h|3.>a|"},
            {"a new list begins anew, another goes on",
             open + ">" + item("a") + "</text:list><text:p>x</text:p>" + open + ">" + item("b") +
                 "</text:list>" + open + "text:continue-numbering='true'>" + item("c") +
                 "</text:list>",
             "3.>a|x|3.>b|4.>c|"},
            {"a list goes on by its id",
             open + "xml:id='l1'>" + item("a") + "</text:list>" + open + ">" + item("b") +
                 "</text:list>" + open + "text:continue-list='l1'>" + deep + item("c") +
                 "</text:list>",
             "3.>a|3.>b|(3.a)>e|4.>c|"},
            {"start", open + ">" + item("a") + item("b", "text:start-value='9'") + "</text:list>",
             "3.>a|9.>b|"},
            {"bullets and patterns",
             "<text:list text:style-name='B'>" + item("a") +
                 "</text:list><text:list text:style-name='F'>" + item("b") +
                 "</text:list><text:list text:style-name='S'>" + item("c") + "</text:list>",
             "->a|<I>>b|\u25AA>c|"},
            {"a heading that counts anew, and one below the last level",
             "<text:h>a</text:h><text:h text:restart-numbering='true' text:start-value='7'>b"
             "</text:h><text:h text:outline-level='99'>c</text:h><text:h "
             "text:outline-level='1'>d</text:h>",
             "1>a|7>b|c|8>d|"},
            {"headings",
             "<text:h text:outline-level='1'>a</text:h><text:h text:outline-level='2'>b</text:h>"
             "<text:h text:outline-level='1'><text:number>x</text:number>c</text:h>"
             "<text:h text:is-list-header='true' text:outline-level='1'>d</text:h>",
             "1>a|1.i>b|2>c|d|"},
        },
        kStyles,
        "<office:styles><text:outline-style><text:outline-level-style text:level='1' "
        "style:num-format='1'/><text:outline-level-style text:level='2' style:num-format='i' "
        "text:display-levels='2'/></text:outline-style></office:styles>");
}

TEST(OdtReader, MakesARowAParagraph) {
    const auto cell = [](std::string_view content, std::string_view attributes = "") {
        return "<table:table-cell " + std::string(attributes) + ">" + std::string(content) +
               "</table:table-cell>";
    };
    const auto row = [](const std::string& cells, std::string_view attributes = "") {
        return "<table:table-row " + std::string(attributes) + ">" + cells + "</table:table-row>";
    };
    const auto table = [](const std::string& rows) {
        return "<table:table>" + rows + "</table:table>";
    };
    const std::string a = cell("<text:p>a</text:p>");
    const std::string inner = table(row(a + a) + row(a));
    Check({
        {"rows and paragraphs",
         table("<table:table-header-rows>" + row(a + cell("<text:p>b</text:p><text:p>c</text:p>")) +
               "</table:table-header-rows>" + row(a + cell(""))),
         "a!b/c!|a!!|"},
        {"covered cells",
         table(row(cell("<text:p>w</text:p>", "table:number-columns-spanned='2'") +
                   "<table:covered-table-cell/>" + a) +
               row(a + "<table:covered-table-cell/>" + a)),
         "w!a!|a!!a!|"},
        {"cells below one that is wide and high",
         table(row(cell("<text:p>w</text:p>", "table:number-columns-spanned='3'") +
                   "<table:covered-table-cell table:number-columns-repeated='2'/>" +
                   "<table:covered-table-cell/>" + a)),
         "w!!a!|"},
        {"a table in a cell",
         table(row(cell("<text:p>x</text:p>" + inner + "<text:p>y</text:p>") + a)),
         "x/a>a/a/y!a!|"},
        {"repeats",
         table(row(cell("<text:p>a</text:p>", "table:number-columns-repeated='2'"),
                   "table:number-rows-repeated='2'")),
         "a!a!|a!a!|"},
        {"a list in a cell has its own numbers",
         table(row(cell("<text:list><text:list-item>"
                        "<text:p>a</text:p></text:list-item>"
                        "</text:list>"))),
         "a!|"},
    });
}

TEST(OdtReader, ResolvesStylesThroughTheirParents) {
    constexpr std::string_view kNamed =
        "<office:font-face-decls><style:font-face style:name='F' svg:font-family=\"'My Font'\"/>"
        "</office:font-face-decls><office:styles><style:default-style style:family='paragraph'>"
        "<style:text-properties fo:font-size='10pt' style:font-name='F'/></style:default-style>"
        "<style:style style:name='A' style:family='paragraph' style:parent-style-name='B'>"
        "<style:text-properties fo:font-style='italic' fo:font-size='150%'/></style:style>"
        "<style:style style:name='B' style:family='paragraph'><style:text-properties "
        "fo:font-weight='bold' fo:color='#ff0000'/></style:style>"
        "<style:style style:name='C1' style:family='paragraph' style:parent-style-name='C2'>"
        "<style:text-properties fo:font-weight='bold'/></style:style>"
        "<style:style style:name='C2' style:family='paragraph' style:parent-style-name='C1'/>"
        "<style:style style:name='T' style:family='text'><style:text-properties "
        "fo:font-weight='normal' style:text-underline-style='wave' style:text-position='super 58%' "
        "style:text-line-through-style='solid' "
        "fo:background-color='#00ff00' style:use-window-font-color='true'/></style:style>"
        "</office:styles>";
    Check(
        {
            {"parents", "<text:p text:style-name='A'>a</text:p>", "[bi#255:a|]"},
            {"a circle", "<text:p text:style-name='C1'>a</text:p>", "[b:a|]"},
            {"over the paragraph's",
             "<text:p text:style-name='A'>a<text:span text:style-name='T'>b</text:span></text:p>",
             "[bi#255:a][iu8s^@65280:b|]"},
            {"its own style over a named one", "<text:p text:style-name='P'>a</text:p>", "[b:a|]"},
        },
        "<style:style style:name='P' style:family='paragraph' style:parent-style-name='A'>"
        "<style:text-properties fo:font-style='normal' style:use-window-font-color='true'/>"
        "<style:paragraph-properties fo:text-align='center'/></style:style>",
        kNamed);
}

struct LookRow {
    const char* name;
    std::vector<std::string> properties;  ///< of a style each, up to the end of the element
    const char* looks;
};

// A paragraph, or a span, for each set of properties.
std::string ShownLook(const LookRow& row, bool spans, Telling tell) {
    std::string own;
    std::string body;
    for (const std::string& properties : row.properties) {
        const std::string name = "P" + std::to_string(own.size());
        const std::string kind = spans ? "text" : "paragraph";
        own += "<style:style style:name='" + name + "' style:family='" + kind + "'><style:" + kind +
               "-properties " + properties + "</style:style>";
        body += spans ? "<text:p><text:span text:style-name='" + name + "'>x</text:span></text:p>"
                      : "<text:p text:style-name='" + name + "'>x</text:p>";
    }
    return ShownText(body, own,
                     "<office:font-face-decls><style:font-face style:name='F' "
                     "svg:font-family=\"'My Font'\"/></office:font-face-decls>",
                     tell);
}

TEST(OdtReader, TakesLooksOfParagraphs) {
    const LookRow rows[] = {
        {"alignment",
         {"fo:text-align='center'/>", "fo:text-align='justify'/>", "fo:text-align='right'/>",
          "fo:text-align='end'/>", "fo:text-align='start'/>"},
         "C 0 0 0 0 0 0|J 0 0 0 0 0 0|R 0 0 0 0 0 0|L 0 0 0 0 0 0|"},
        {"indents",
         {"fo:margin='0.5in'/>",
          "fo:margin='9in' fo:margin-left='1in' fo:margin-right='0.1in' fo:text-indent='-0.5in'/>"},
         "L 720 720 0 0 0 0|L 1440 144 -720 0 0 0|"},
        {"spaces and lines",
         {"fo:margin-top='6pt' fo:margin-bottom='3pt' fo:line-height='150%'/>",
          "fo:line-height='0.5in'/>"},
         "L 0 0 0 120 60 360*|L 0 0 0 0 0 -720|"},
        {"direction",
         {"style:writing-mode='rl-tb'/>", "style:writing-mode='lr-tb'/>"},
         "L 0 0 0 0 0 0<|L 0 0 0 0 0 0|"},
        {"tabs",
         {"><style:tab-stops><style:tab-stop style:position='0in'/><style:tab-stop "
          "style:position='1in'/><style:tab-stop style:position='2in' style:type='center'/>"
          "<style:tab-stop style:position='3in' style:type='right'/><style:tab-stop "
          "style:position='4in' "
          "style:type='char'/></style:tab-stops></style:paragraph-properties>"},
         "L 0 0 0 0 0 0 >1440L >2880C >4320R >5760D|"},
    };
    for (const LookRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ShownLook(row, false, ParagraphLooks), row.looks);
    }
    const auto list = [](const std::string& name) {
        return "<text:list text:style-name='" + name +
               "'><text:list-item><text:p>a</text:p><text:p>b</text:p></text:list-item></"
               "text:list>";
    };
    EXPECT_EQ(
        ShownText(list("N") + list("O"),
                  "<text:list-style style:name='N'><text:list-level-style-number text:level='1' "
                  "style:num-format='1'><style:list-level-properties>"
                  "<style:list-level-label-alignment fo:margin-left='0.5in' "
                  "fo:text-indent='-0.25in'/></style:list-level-properties>"
                  "</text:list-level-style-number></text:list-style><text:list-style "
                  "style:name='O'><text:list-level-style-bullet text:level='1'>"
                  "<style:list-level-properties text:space-before='1in' "
                  "text:min-label-width='0.25in'/></text:list-level-style-bullet>"
                  "</text:list-style>",
                  "", ParagraphLooks),
        "L 720 0 -360 0 0 0|L 720 0 0 0 0 0|L 1800 0 -360 0 0 0|L 1800 0 0 0 0 0|");
}

TEST(OdtReader, TakesLooksOfCharacters) {
    const LookRow fonts = {"",
                           {"style:font-name='F' fo:font-family='No'/>", "fo:font-family='A, B'/>",
                            "style:font-name='C' fo:font-size='10.5pt'/>", "fo:font-size='200%'/>"},
                           "My Font 24|A 24|C 21|Times New Roman 48|"};
    EXPECT_EQ(ShownLook(fonts, true, FontLooks), fonts.looks);
    const LookRow rows[] = {
        {"lines under it",
         {"style:text-underline-style='dotted'/>", "style:text-underline-style='long-dash'/>",
          "style:text-underline-style='wave' style:text-underline-type='double'/>",
          "style:text-underline-type='double'/>", "style:text-underline-style='none'/>",
          "style:text-underline-style='solid' style:text-underline-mode='skip-white-space'/>",
          "style:text-underline-style='solid' style:text-underline-width='bold'/>"},
         "[u4:x|][u11:x|][u10:x|][u3:x|]x|[u2:x|][u9:x|]"},
        {"lines through it",
         {"style:text-line-through-type='single'/>",
          "style:text-line-through-style='solid' style:text-line-through-type='none'/>"},
         "[s:x|]x|"},
        {"places",
         {"style:text-position='sub 58%'/>", "style:text-position='-33% 58%'/>",
          "style:text-position='0% 100%'/>", "style:text-position='33% 58%'/>"},
         "[_:x|x|]x|[^:x|]"},
        {"weights and slopes",
         {"fo:font-weight='600'/>", "fo:font-weight='500'/>", "fo:font-style='oblique'/>"},
         "[b:x|]x|[i:x|]"},
    };
    for (const LookRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ShownLook(row, true, Notation), row.looks);
    }
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
