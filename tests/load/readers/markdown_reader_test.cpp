#include <string>

#include <gtest/gtest.h>

#include "load/readers/word_readers.h"
#include "tests/support/shown_document.h"
#include "tests/support/text_rows.h"

namespace zorvane::markdown_reader_test {
namespace {

std::string ShownMarkdown(std::string_view text) {
    return Shown([text](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadMarkdown(text, sink, monitor);
    });
}

void Check(std::initializer_list<TextRow> rows) {
    CheckRows(ShownMarkdown, rows);
}

TEST(MarkdownReader, ReadsBlocks) {
    Check({
        {"nothing", "", ""},
        {"paragraphs", "a\nb\n\n\nc\r\nd", "a b|c d|"},
        {"headings", "# a #\n## b#\nc\n=\nd\n---\n#e", "[b:a|][b:b#|][b:c|][b:d|]#e|"},
        {"rules", "a\n\n* * *\n\nb", "a||b|"},
        {"code", "    a\n\n      b *c*\n\nd", "a||  b *c*|d|"},
        {"fences", "```cpp\na <b>\n\n~~~\n```\n~~~~\nc\n", "a <b>||~~~|c|"},
        {"quotes", "> a\nb\n> > c\n\nd", "a b|c|d|"},
        {"HTML", "<div>a\n*b*</div>\n\n<!-- x\n\ny -->\nc <b>d</b><br>e", "a *b*|c [b:d]/e|"},
        {"levels of headings", "###### a\n####### b\n\n#\nc\n    ---\n# d ##",
         "[b:a|]####### b|c ---|[b:d|]"},
        {"no rules", "--\n\n* - *\n\n_ _ _\na\n=-", "--|\u2022>\u25E6>\u25AA>||a =-|"},
        {"tabs", "\ta\n\n  \tb\n\n- c\n\n\td\n \t e", "a||b|\u2022>c|d e|"},
        {"the ends of code", "    a\n\n\n\nb\n\n   ```\n   c\n     d\n e\n    ```\n   ````\nf",
         "a|b|c|  d|e| ```|f|"},
        {"no fence", "``` a`b\nc", "``` a`b c|"},
        {"a quote and what goes on with it", "> ```\n> a\nb\n\n>c\n# d\n> \ne", "a|b|c|[b:d|]e|"},
        {"HTML over blank lines",
         "<pre>\na\n\nb</pre>\n*c*\n\n<script>\n\nd</script>\n*e*\n<?f?>\n</p>g",
         "a||b|[i:c|e|]g|"},
        {"no definitions", "a\n[b]: x\n\n    [c]: y\n\n[]: z\n\n[d]:\n\n[e[]: x",
         "a [b]: x|[c]: y|[]: z|[d]:|[e[]: x|"},
        {"definitions are not shown", "[a]: http://x 'y'\n\nb [a] [c]", "b [u1#15597568:a] [c]|"},
    });
}

TEST(MarkdownReader, ReadsLists) {
    Check({
        {"bullets", "- a\n- b\n  c\n\n  d\n* e", "\u2022>a|\u2022>b c|d|\u2022>e|"},
        {"nested", "1. a\n   - b\n     1) c\n2. d", "1.>a|\u25E6>b|1.>c|2.>d|"},
        {"a start", "7. a\n8. b", "7.>a|8.>b|"},
        {"an item with code", "-     a\n\n- b\n\n      c", "\u2022>a|\u2022>b|c|"},
        {"tasks", "- [ ] a\n- [x] b", "\u2022>\u2610 a|\u2022>\u2611 b|"},
        {"numbers", "123456789) a\n\n1234567890. b\n\n-c\n1.d",
         "123456789.>a|1234567890. b|-c 1.d|"},
        {"other marks begin other lists", "- a\n+ b\n* c\n-\n- [y] d",
         "\u2022>a|\u2022>b|\u2022>c|\u2022>|\u2022>[y] d|"},
        {"a number does not begin a list inside a paragraph", "in\n1986. a", "in 1986. a|"},
        {"text behind goes on, behind a blank line not", "- a\nb\n\nc", "\u2022>a b|c|"},
    });
}

TEST(MarkdownReader, ReadsTables) {
    Check({
        {"a table", "| a | b |\n|:--|--:|\n| c `|` | d\\|e |\n| f |\n\ng",
         "[b:a]![b:b]!|c `!`!|f!!|g|"},
        {"without outer bars", "a|b\n-|-\n*c*|d", "[b:a]![b:b]!|[i:c]!d!|"},
        {"no tables", "a | b\nc | d\n\na|b\n-|-|-\n\nc\n-|", "a | b c | d|a|b -|-|-|c -||"},
        {"what ends a table, and a bar that is none of the table's", "a|b\n:-:|-\nc|d\\|\n# e",
         "[b:a]![b:b]!|c!d|!|[b:e|]"},
    });
}

TEST(MarkdownReader, ReadsInlineMarks) {
    Check({
        {"emphasis", "*a* _b_ **c** __d__ ***e*** ~~f~~ g",
         "[i:a] [i:b] [b:c] [b:d] [bi:e] [s:f] g|"},
        {"nested", "**a *b* c** *d **e** f* g", "[b:a ][bi:b][b: c] [i:d ][bi:e][i: f] g|"},
        {"none", "2 * 3 * 4 snake_case_name ** a** ~b~ x",
         "2 * 3 * 4 snake_case_name ** a** ~b~ x|"},
        {"beside signs", "(_a_), \"_b_\" c_(d)_ **(e)**f ~~ g~~ ~~~h~~~",
         "([i:a]), \"[i:b]\" c_(d)_ **(e)**f ~~ g~~ ~~~h~~~|"},
        {"inside words", "a*b*c a_b_c d", "a[i:b]c a_b_c d|"},
        {"unpaired", "**a* b", "*[i:a] b|"},
        {"code", "a `*b*  <c>` ``d ` e`` `f", "a *b*  <c> d ` e `f|"},
        {"links", "[a *b*](http://x \"t\") [c][r] [r] <http://y> d\n\n[R]: /z",
         "[u1#15597568:a ][iu1#15597568:b] [u1#15597568:c] [u1#15597568:r] "
         "[u1#15597568:http://y] d|"},
        {"addresses", "[a](<b c> 'd')[e](f(g)h)[i](j\\)k)[l]( m (n) )[o]()p [q](<r\ns>)",
         "[u1#15597568:aeilo]p [q]()|"},
        {"links in links, and pictures in them",
         "[a [b](c) d](e) [![f](g)](h) [r][] ![s][r]\n\n[r]: x",
         "[a [u1#15597568:b] d](e) [u1#15597568:f] [u1#15597568:r] s|"},
        {"blanks of code", "`` ` `` ` ` `a\nb` `  c  `", "`   a b  c |"},
        {"no links", "[a] (b) [c](d e [f", "[a] (b) [c](d e [f|"},
        {"pictures", "a ![alt *t*](x.png) b", "a alt [i:t] b|"},
        {"escapes and references", "\\*a\\* \\<b> &copy; &lt; 1 < 2 & c",
         "*a* <b> \u00A9 < 1 < 2 & c|"},
        {"tags and what looks like them",
         "<b title='>' a=1>c</b> <br/><x@y, z> <a@b.c> <1> </b> <b c,d> <>",
         "[b:c]/<x@y, z> [u1#15597568:a@b.c] <1> <b c,d> <>|"},
        {"lines", "a  \nb\\\nc\nd", "a/b/c d|"},
        {"notes", "a[^1] b\n\n[^1]: the *note*\n    goes on\n",
         "a [note: the [i:note] goes on] b|"},
    });
}

std::string Repeated(std::string_view piece, std::size_t times) {
    std::string text;
    for (std::size_t i = 0; i < times; ++i)
        text += piece;
    return text;
}

TEST(MarkdownReader, ShowsNoPictureAsItsBytes) {
    const std::string data = "data:image/png;base64," + Repeated("QUJD", 40'000);
    const std::string link = "[u1#15597568:b|]";
    const std::string picture = "![a](" + data + ") [b](<" + data + "> \"" + data + "\")";
    EXPECT_EQ(ShownMarkdown(picture), "a " + link);
    EXPECT_EQ(ShownMarkdown("[b][p]\n\n[p]: " + data), link);
    EXPECT_EQ(ShownMarkdown("a <img src='" + data + "'> b <!--" + data + "--> c"), "a b c|");
    // More pictures than what may be looked through in vain.
    EXPECT_EQ(ShownMarkdown(Repeated("![a](" + data + ")", 100) + "[b](x)"),
              Repeated("a", 100) + link);
}

TEST(MarkdownReader, ShowsTheSettingsInFrontOfTheText) {
    Check({
        {"between rules", "---\ntitle: *A*\ntags:\n  - x\n---\nb", "title: *A*|tags:|  - x|b|"},
        {"of the other kind", "+++\na = 1\n+++\n\nb", "a = 1|b|"},
        {"another end, and none", "---\na: 1\n...\nb", "a: 1|b|"},
        {"a rule and text", "---\ntext\n", "|text|"},
    });
}

TEST(MarkdownReader, EndsSoonOnHostileText) {
    constexpr std::size_t kMany = 8'000;
    for (const std::string_view piece :
         {"[", "![",   "[a](", "*",  "**a ", "_a ",  "*a_b ", "`",  "``` ", "> ",     "- ", "1. ",
          "<", "<!--", "|",    "a|", "\\",   "[^1]", "&",     "~~", "]",    "![a](b", "<a "}) {
        SCOPED_TRACE(piece);
        EXPECT_EQ(ShownMarkdown(Repeated(piece, kMany)).find("error"), std::string::npos);
    }
    const std::string deep = Repeated("> ", 200'000);  // more than a stack holds
    EXPECT_EQ(ShownMarkdown(deep).find("error"), std::string::npos);
    // Notes that name notes, and short rows of a wide table.
    std::string notes = "[^0]\n\n";
    for (int i = 0; i < 50; ++i)
        notes += "[^" + std::to_string(i) +
                 "]: " + Repeated("[^" + std::to_string(i + 1) + "]", 100) + "\n\n";
    EXPECT_LT(ShownMarkdown(notes).size(), 1U << 25);
    const std::string wide = Repeated("a|", 200) + "\n" + Repeated("-|", 200) + "\n";
    EXPECT_LT(ShownMarkdown(wide + Repeated("b\n", kMany)).size(), 1U << 20);
}

}  // namespace
}  // namespace zorvane::markdown_reader_test
