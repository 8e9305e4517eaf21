#include <string>

#include <gtest/gtest.h>

#include "load/readers/word_readers.h"
#include "tests/support/shown_document.h"
#include "tests/support/text_rows.h"

namespace zorvane::html_reader_test {
namespace {

std::string Told(std::string_view page, std::string (*tell)(const RichText&)) {
    const auto read = [page](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadHtml(page, "windows-1252", sink, monitor);
    };
    return Shown(read, tell);
}
std::string ShownHtml(std::string_view page) {
    return Told(page, Notation);
}

void Check(std::initializer_list<TextRow> rows) {
    CheckRows(ShownHtml, rows);
}

TEST(HtmlReader, CollapsesWhiteSpaceAsABrowserDoes) {
    Check({
        {"nothing", "", ""},
        {"no markup", "a  b\n c", "a b c|"},
        {"between elements", "<p> a <b> b</b> c </p> <p>d", "a [b:b] c|d|"},
        {"a blank keeps the format of where it stood", "x <u>a </u> b", "x [u1:a ]b|"},
        {"no-break spaces stay", "<p>&nbsp;</p><p>a&nbsp; b", "\u00A0|a\u00A0 b|"},
        {"pre", "<pre>\n a\n\n  b\n</pre>c", " a||  b|c|"},
        {"white-space in a style", "<p style='white-space: pre'>a  b</p>", "a  b|"},
        {"pre-line", "<p style='white-space: pre-line'>a  b\nc</p>", "a b/c|"},
        {"textarea", "x<textarea>\na &amp; <b>\n c</textarea>", "x|a & <b>| c|"},
    });
}

TEST(HtmlReader, EndsLinesWhereABrowserDoes) {
    Check({
        {"blocks in blocks", "<div>a<div><p>b</p></div>c</div>d", "a|b|c|d|"},
        {"a line", "a<br>b", "a/b|"},
        {"the last line break of a block is not shown", "<p>a<br></p><p>b", "a|b|"},
        {"but two are one", "<p>a<br><br></p>b", "a/|b|"},
        {"a block of a line break alone", "<div>a</div><div><br></div><div>b</div>", "a||b|"},
        {"a rule", "a<hr>b", "a||b|"},
        {"empty blocks show nothing", "<div><p></p></div><p> </p>a", "a|"},
        {"display", "<span style='display:block'>a</span><p style='display:inline'>b</p>c",
         "a|bc|"},
    });
}

TEST(HtmlReader, PutsWrongNestingRight) {
    Check({
        {"crossed formats", "<b>1<i>2</b>3</i>4", "[b:1][bi:2][i:3]4|"},
        {"a format goes on behind its paragraph", "<p><b>a<p>b</b>c", "[b:a|b]c|"},
        {"a format ends inside a block", "<b>1<p>2</b>3</p>4", "[b:1|2]3|4|"},
        {"a format does not leave its cell", "<table><td><b>a<td>b</table>c", "[b:a]!b!|c|"},
        {"paragraphs close by themselves", "<p>a<p>b<div>c", "a|b|c|"},
        {"items and terms", "<dl><dt>a<dd>b<dt>c</dl>", "a|b|c|"},
        {"a second link ends the first", "<a href=x>a<a>b", "[u1#15597568:a]b|"},
        {"end tags of nothing", "a</b></table></div>b</p>c", "ab|c|"},
        {"an end tag does not leave its cell", "<div><table><td>a</div>b</table>c", "ab!|c|"},
        {"cells without a table are text", "<td>a</td><tr>b", "ab|"},
        {"a body that begins late", "<title>t</title>a<html><body>b<body>c", "abc|"},
        {"HTML ends a drawing", "<svg><text>a<p>b</svg>c", "a|bc|"},
        {"an XHTML element without content",
         "<?xml version='1.0'?><html><title/><script src='a'/><p><a id='x'/>b</p></html>", "b|"},
        {"in HTML the same slash means nothing", "<b/>a", "[b:a|]"},
        {"a tag cut off", "a<b title='x", "a|"},
        {"no tags", "a < b <3 <> </ x>c", "a < b <3 <> c|"},
    });
}

TEST(HtmlReader, ReadsReferences) {
    Check({
        {"named", "&lt;&eacute;&hearts;&NotEqualTilde;&nbsp;", "<\u00E9\u2665\u2242\u0338\u00A0|"},
        {"old ones need no semicolon", "&copy2024 &notit; &amp", "\u00A92024 \u00ACit; &|"},
        {"numbers", "&#65;&#x1F600;&#150;&#0;&#xD800;&#9999999999;",
         "A\U0001F600\u2013\uFFFD\uFFFD\uFFFD|"},
        {"none", "a & b &; &# &#x; &unknown; AT&T", "a & b &; &# &#x; &unknown; AT&T|"},
        {"in what an input holds", "<input value='a &amp; b'>", "a & b|"},
    });
}

TEST(HtmlReader, LabelsItems) {
    Check({
        {"bullets by level", "<ul><li>a<ul><li>b<ul><li>c</ul></ul><li>d</ul>",
         "\u2022>a|\u25E6>b|\u25AA>c|\u2022>d|"},
        {"types, starts and values",
         "<ol type=a start=26><li>a<li>b</ol><ol type=I><li>c<li value=9>d<li>e</ol>",
         "z.>a|aa.>b|I.>c|IX.>d|X.>e|"},
        {"down", "<ol reversed><li>a<li>b</ol><ol reversed start=9><li>c<li>d</ol>",
         "2.>a|1.>b|9.>c|8.>d|"},
        {"by style",
         "<style>.n{list-style:none}</style><ul class=n><li>a</ul>"
         "<ul style='list-style-type:lower-roman'><li>b<li>c</ul>",
         "a|i.>b|ii.>c|"},
        {"a paragraph inside takes the label", "<ol><li><p>a</p><p>b</p><li></ol>c",
         "1.>a|b|2.>|c|"},
        {"in a cell", "<table><td><ol><li>a<li>b</ol></table>", "1.>a/2.>b!|"},
    });
}

TEST(HtmlReader, MakesARowAParagraph) {
    Check({
        {"rows", "<table><caption>c</caption><tr><th>a<td>b<tr><td><td>d</table>",
         "c|[b:a]!b!|!d!|"},
        {"paragraphs in a cell", "<table><td> <p>a</p><p>b<br>c<br></p> <td>d</table>",
         "a/b/c!d!|"},
        {"a table in a cell", "<table><td>a<table><tr><td>b<td>c<tr><td>d</table>e<td>f</table>",
         "a/b>c/d/e!f!|"},
        {"sections and implied rows", "<table><thead><th>a<tbody><td>b</table>", "[b:a]!|b!|"},
        {"white space between shows nothing", "<table> <tr> <td> a </td> </tr> </table> b",
         "a!|b|"},
        {"text beside the cells", "a<table>b<tr><td>c</table>d<table></table>e", "ab|c!|d|e|"},
        {"a wide cell keeps one mark", "<table><tr><td colspan=2>a<td>b</table>", "a!b!|"},
    });
}

TEST(HtmlReader, ShowsFormats) {
    Check({
        {"elements",
         "<b>b</b><em>i</em><ins>u</ins><del>s</del>x<sup>2</sup><sub>3</sub><mark>m</mark>",
         "[b:b][i:i][u1:u][s:s]x[^:2][_:3][@65535:m|]"},
        {"style attributes",
         "<span style='color:#f00;background:#00ff00;font-weight:700;text-decoration:underline "
         "line-through'>a</span>",
         "[bu1s#255@65280:a|]"},
        {"rules by strength, not by order",
         "<style>#i{color:blue} p.c{color:lime} .c{color:red} p{font-style:italic}</style>"
         "<p class='x c'>a<p class=c id=i>b<i class=c>c",
         "[i#65280:a|][i#16711680:b][i#255:c|]"},
        {"rules for paper and comments are not for the screen",
         "<style><!-- @media print{p{color:red}} /* p{color:red} */ @import 'x';"
         "@media screen{p{font-weight:bold}} --></style><p>a",
         "[b:a|]"},
        {"font", "<font color=navy>a</font><font color='#ff0000'>b</font>",
         "[#8388608:a][#255:b|]"},
        {"capitals and none",
         "<p style='text-transform:uppercase'>a\u00E9</p><p style='text-transform:lowercase'>AB",
         "A\u00C9|ab|"},
    });
}

TEST(HtmlReader, LeavesOutWhatIsNotShown) {
    Check({
        {"by element",
         "<head><title>t</title></head><script>s<p></script><style>p{}</style><noscript>n</"
         "noscript>"
         "<template>t</template><iframe>i</iframe><!-- c --><?p?><![CDATA[d]]>a",
         "a|"},
        {"by attribute and style",
         "<p hidden>a<b>b</b></p><p style='display: none'>c<p style='visibility:hidden'>d<p>e",
         "e|"},
        {"by rule", "<style>.x,#y,i{display:none}</style><p class='a x'>1<p id=y>2<p><i>3</i>4",
         "4|"},
        {"hidden cells", "<table><td>a<td style='display:none'>b<td>c</table>", "a!c!|"},
        {"pictures, but not missing ones", "<img src=x alt=a><img alt=b>", "b|"},
        {"choices",
         "<select><option>a<option selected>b</select><select><option>c<option>d</select>"
         "<select multiple><option>e<option>f</select>",
         "bce f|"},
        {"fields",
         "<input type=hidden value=a><input type=submit><input type=checkbox value=b> <input "
         "type=reset> <input type=reset value=c> <input type=reset value=''>d",
         "Submit Reset c d|"},
        {"lists of choices that show all, and a choice outside of them",
         "<select size=2><option>a<option>b</select><option>c</option>d<q>e</q>",
         "a b|c|d\u201Ce\u201D|"},
        {"what a browser draws itself",
         "<progress>a</progress><dialog>b</dialog><dialog open>c</dialog><img srcset=x alt=d>"
         "<math><annotation>e</annotation><mi>f</mi></math>",
         "c|f|"},
        {"drawings",
         "<svg><title>a</title><defs><text>b</text></defs><text>c</text>d<foreignObject>e</"
         "foreignObject></svg>",
         "c|e|"},
    });
}

TEST(HtmlReader, SetsRubyApart) {
    Check({{"with marks", "<ruby>\u6F22<rp>(</rp><rt>k</rt><rp>)</rp></ruby>", "\u6F22(k)|"},
           {"without", "<ruby>\u6F22<rt>k</ruby>", "\u6F22(k)|"}});
}

TEST(HtmlReader, DecodesAsThePageSays) {
    Check({
        {"nothing said", "<p>caf\xE9", "caf\u00E9|"},
        {"meta", "<meta charset=windows-1251><p>\xC0\xC1", "\u0410\u0411|"},
        {"the long meta",
         "<meta http-equiv='Content-Type' content='text/html; charset=Shift_JIS'>\x93\xFA\x96\x7B",
         "\u65E5\u672C|"},
        {"an old name means the larger encoding", "<meta charset='iso-8859-1'>\x80", "\u20AC|"},
        {"XML's own words", "<?xml version='1.0' encoding='ISO-8859-2'?><p>\xB1</p>", "\u0105|"},
        {"UTF-8", "<meta charset=utf-8><p>\u00E9\xFF", "\u00E9\uFFFD|"},
        {"a mark wins", "\xEF\xBB\xBF<meta charset=latin1>\u00E9", "\u00E9|"},
        {"UTF-16", std::string_view("\xFF\xFE<\0p\0>\0a\0", 10), "a|"},
    });
}

TEST(HtmlReader, TakesLooksOfParagraphsAndFonts) {
    const auto paragraphs = [](std::string_view page) { return Told(page, ParagraphLooks); };
    CheckRows(
        paragraphs,
        {{"told by its style",
          "<p align=center style='margin-left:10pt;text-indent:1em'>a<p dir=rtl>b",
          "C 200 0 240 0 240 0|L 0 0 0 0 240 0<|"},
         {"blocks", "<h6>a</h6><blockquote>b</blockquote><center>c</center><dl><dt>d<dd>e</dl>",
          "L 0 0 0 0 240 0|L 600 0 0 0 0 0|C 0 0 0 0 0 0|L 0 0 0 0 0 0|L 600 0 0 0 0 0|"},
         {"lists", "<ul><li>a<ol><li>b<p>c</ol></ul>",
          "L 600 0 -360 0 0 0|L 1200 0 -360 0 0 0|L 1200 0 0 0 240 0|"},
         {"a rule in a cell is none, one behind it is",
          "<center><table><td>a<hr>b</table><hr></center>", "L 0 0 0 0 0 0|C 0 0 0 0 0 0|"}});
    const auto fonts = [](std::string_view page) { return Told(page, FontLooks); };
    CheckRows(fonts,
              {{"headings", "<h1>a<h2>b<h3>c<h4>d<h5>e<h6>f",
                "Times New Roman 48|Times New Roman 36|Times New Roman 28|"
                "Times New Roman 24|Times New Roman 20|Times New Roman 16|"},
               {"small, large and fixed", "<small>a</small><big>b</big><pre>c<tt>d</tt></pre>",
                "Times New Roman 20|Times New Roman 28|Courier New 20|"}});
}

std::string Repeated(std::string_view piece, std::size_t times) {
    std::string text;
    for (std::size_t i = 0; i < times; ++i)
        text += piece;
    return text;
}

// Each of these took a tree-building parser quadratic time or its whole stack.
TEST(HtmlReader, EndsSoonOnHostilePages) {
    constexpr std::size_t kMany = 20'000;
    for (const std::string_view piece :
         {"<div>", "<b>", "<p><b id=x>", "<table><tr><td>", "<svg><g>", "<ul><li>", "<a href=x>",
          "<select><option>", "<ol reversed>", "</p>", "<button><p>", "&a1b2;", "<ruby><rt>",
          "<style>p{", "<!--", "<table>", "<i><table>", "<x y='"}) {
        SCOPED_TRACE(piece);
        const std::string shown = ShownHtml(Repeated(piece, kMany) + "end");
        EXPECT_LT(shown.size(), 4U * kMany * piece.size());
        EXPECT_EQ(shown.find("error"), std::string::npos);
    }
    EXPECT_NE(ShownHtml(Repeated("<div><b>", kMany) + "end").find("end"), std::string::npos);
    const std::string deep = Repeated("<div>", 1000) + "a" + Repeated("</div>", 1000) + "<p>b";
    EXPECT_EQ(ShownHtml(deep), "a|b|");
}

TEST(HtmlReader, StopsWhenTold) {
    class Cancel : public ReadMonitor {
      public:
        bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override { return false; }
    } monitor;
    const auto sink = MakePlainSink();
    EXPECT_EQ(ReadHtml(Repeated("<p>text", 50'000), "UTF-8", *sink, monitor).error,
              ReadError::Cancelled);
}

}  // namespace
}  // namespace zorvane::html_reader_test
