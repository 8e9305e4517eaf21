#include <string>

#include <gtest/gtest.h>

#include "load/readers/word_readers.h"
#include "tests/support/shown_document.h"
#include "tests/support/text_rows.h"
#include "tests/support/word_file.h"

namespace zorvane::docx_reader_test {
namespace {

std::string ShownWord(const WordFile& file, std::string (*tell)(const RichText&) = Notation) {
    const std::string bytes = MakeWordFile(file);
    const auto package = Package::Open(bytes);
    const auto read = [&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadWordPackage(*package, sink, monitor);
    };
    return Shown(read, tell);
}

void Check(std::initializer_list<TextRow> rows, WordFile file = {},
           std::string (*tell)(const RichText&) = Notation) {
    const auto shown = [&](std::string_view body) {
        file.body = body;
        return ShownWord(file, tell);
    };
    CheckRows(shown, rows);
}

TEST(DocxReader, ReadsTheTextOfRuns) {
    Check({
        {"nothing", "", ""},
        {"an empty paragraph", "<w:p/>", "|"},
        {"runs and kept blanks",
         "<w:p><w:r><w:t>a</w:t></w:r><w:r><w:t xml:space=\"preserve\"> </w:t></w:r>"
         "<w:r><w:t>b&amp;\n</w:t></w:r></w:p>",
         "a b& |"},
        {"tabs, lines, no page breaks",
         "<w:p><w:r><w:t>a</w:t><w:tab/><w:t>b</w:t><w:br/><w:t>c</w:t><w:br w:type=\"page\"/>"
         "</w:r></w:p>",
         "a>b/c|"},
        {"hyphens and symbols",
         "<w:p><w:r><w:noBreakHyphen/><w:softHyphen/><w:sym w:font=\"Symbol\" w:char=\"F061\"/>"
         "<w:sym w:font=\"Wingdings\" w:char=\"F0FC\"/></w:r></w:p>",
         "\xE2\x80\x91\xC2\xAD\xCE\xB1\xE2\x9C\x93|"},
        {"links and content controls",
         "<w:p><w:hyperlink><w:r><w:t>a</w:t></w:r></w:hyperlink><w:sdt><w:sdtContent><w:r><w:t>"
         "b</w:t></w:r></w:sdtContent></w:sdt></w:p>",
         "ab|"},
        {"a content control around paragraphs",
         "<w:sdt><w:sdtContent><w:p><w:r><w:t>a</w:t></w:r></w:p></w:sdtContent></w:sdt>", "a|"},
        {"ruby",
         "<w:p><w:ruby><w:rt><w:r><w:t>k</w:t></w:r></w:rt><w:rubyBase><w:r><w:t>K</w:t>"
         "</w:r></w:rubyBase></w:ruby></w:p>",
         "K(k)|"},
        {"formulas",
         "<w:p><m:oMath><m:r><m:t>x=1</m:t></m:r></m:oMath></w:p><m:oMathPara><m:r><m:t>y</m:t>"
         "</m:r></m:oMathPara>",
         "x=1|y|"},
        {"other tabs and lines, no ends of columns, no signs",
         "<w:p><w:r><w:ptab/><w:cr/><w:br w:type=\"textWrapping\"/><w:br w:type=\"column\"/>"
         "<w:sym w:char=\"1F\"/><w:sym w:char=\"41\"/></w:r></w:p>",
         ">//A|"},
    });
}

TEST(DocxReader, ShowsFieldsByTheirResult) {
    constexpr std::string_view kBegin = "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r>";
    constexpr std::string_view kSeparate = "<w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>";
    constexpr std::string_view kEnd = "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
    const auto run = [](std::string_view text) {
        return "<w:r><w:t>" + std::string(text) + "</w:t></w:r>";
    };
    const std::string begin(kBegin);
    const std::string nested = "<w:p>" + begin + run("instruction") + begin + run("inner") +
                               std::string(kSeparate) + run("unseen") + std::string(kEnd) +
                               std::string(kSeparate) + run("seen") + std::string(kEnd) +
                               run("after") + "</w:p>";
    Check(
        {{"a field in the instruction of another", nested, "seenafter|"},
         {"a simple field", "<w:p><w:fldSimple><w:r><w:t>3</w:t></w:r></w:fldSimple></w:p>", "3|"},
         {"a checked box",
          "<w:p><w:r><w:fldChar w:fldCharType=\"begin\"><w:ffData><w:checkBox><w:checked/>"
          "</w:checkBox></w:ffData></w:fldChar></w:r></w:p>",
          "\xE2\x98\x92|"},
         {"one by its default, one that is not",
          "<w:p><w:r><w:fldChar w:fldCharType=\"begin\"><w:ffData><w:checkBox><w:default/>"
          "</w:checkBox></w:ffData></w:fldChar><w:fldChar w:fldCharType=\"end\"/><w:fldChar "
          "w:fldCharType=\"begin\"><w:ffData><w:checkBox><w:default/><w:checked w:val=\"0\"/>"
          "</w:checkBox></w:ffData></w:fldChar></w:r></w:p>",
          "\xE2\x98\x92\xE2\x98\x90|"},
         {"ends of no field",
          "<w:p>" + std::string(kEnd) + std::string(kSeparate) + run("a") + "</w:p>", "a|"}});
}

TEST(DocxReader, ReadsTrackedChangesAsAccepted) {
    Check({
        {"insertion and deletion",
         "<w:p><w:ins><w:r><w:t>new</w:t></w:r></w:ins><w:del><w:r><w:delText>old</w:delText></w:r>"
         "</w:del></w:p>",
         "new|"},
        {"a move",
         "<w:p><w:moveFrom><w:r><w:t>x</w:t></w:r></w:moveFrom></w:p><w:p><w:moveTo><w:r><w:t>x"
         "</w:t></w:r></w:moveTo></w:p>",
         "|x|"},
        {"a deleted paragraph mark joins",
         "<w:p><w:pPr><w:rPr><w:del/></w:rPr></w:pPr><w:r><w:t>a</w:t></w:r></w:p><w:p><w:r><w:t>b"
         "</w:t></w:r></w:p>",
         "ab|"},
        {"a deleted mark joins no table",
         "<w:p><w:pPr><w:rPr><w:del/></w:rPr></w:pPr><w:r><w:t>a</w:t></w:r></w:p><w:tbl><w:tr>"
         "<w:tc><w:p><w:r><w:t>b</w:t></w:r></w:p></w:tc></w:tr></w:tbl>",
         "a|b!|"},
        {"the mark of a moved paragraph joins, and in a cell one joins within it",
         "<w:p><w:pPr><w:rPr><w:moveFrom/></w:rPr></w:pPr><w:r><w:t>a</w:t></w:r></w:p><w:p><w:r>"
         "<w:t>b</w:t></w:r></w:p><w:tbl><w:tr><w:tc><w:p><w:pPr><w:rPr><w:del/></w:rPr></w:pPr>"
         "<w:r><w:t>c</w:t></w:r></w:p><w:p><w:r><w:t>d</w:t></w:r></w:p></w:tc></w:tr></w:tbl>",
         "ab|cd!|"},
        {"a deleted row",
         "<w:tbl><w:tr><w:trPr><w:del/></w:trPr><w:tc><w:p/></w:tc></w:tr></w:tbl>", ""},
    });
}

TEST(DocxReader, LeavesHiddenTextOutAndNotesIn) {
    WordFile parts;
    parts.styles =
        "<w:style w:type=\"character\" w:styleId=\"H\"><w:rPr><w:vanish/></w:rPr></w:style>";
    parts.footnotes =
        "<w:footnote w:id=\"0\" w:type=\"separator\"><w:p><w:r><w:t>-</w:t></w:r></w:p>"
        "</w:footnote><w:footnote w:id=\"2\"><w:p><w:r><w:footnoteRef/><w:t>note</w:t></w:r></w:p>"
        "<w:p><w:r><w:t>more</w:t></w:r></w:p></w:footnote>";
    parts.endnotes =
        "<w:endnote w:id=\"0\" w:type=\"separator\"><w:p><w:r><w:t>-</w:t></w:r></w:p></w:endnote>"
        "<w:endnote w:id=\"2\" w:type=\"normal\"><w:p><w:r><w:t>end</w:t></w:r></w:p></w:endnote>";
    Check(
        {{"hidden by its run", "<w:p><w:r><w:rPr><w:vanish/></w:rPr><w:t>x</w:t></w:r></w:p>", "|"},
         {"hidden by its style",
          "<w:p><w:r><w:rPr><w:rStyle w:val=\"H\"/></w:rPr><w:t>x</w:t></w:r></w:p>", "|"},
         {"hidden with its mark leaves no line",
          "<w:p><w:pPr><w:rPr><w:vanish/></w:rPr></w:pPr></w:p><w:p><w:r><w:t>b</w:t></w:r></w:p>",
          "b|"},
         {"a footnote at its place",
          "<w:p><w:r><w:t>a</w:t><w:footnoteReference w:id=\"2\"/><w:t>b</w:t></w:r></w:p>",
          "a [note: note more] b|"},
         {"an endnote, and one that is no note",
          "<w:p><w:r><w:t>a</w:t><w:endnoteReference w:id=\"2\"/><w:endnoteReference "
          "w:id=\"0\"/></w:r></w:p>",
          "a [note: end]|"},
         {"a mark that is none of its own, and a note in an instruction",
          "<w:p><w:r><w:footnoteReference w:id=\"2\" w:customMarkFollows=\"false\"/><w:t>a</w:t>"
          "<w:fldChar w:fldCharType=\"begin\"/><w:footnoteReference w:id=\"2\"/></w:r></w:p>",
          "[note: note more] a|"},
         {"a reference to nothing",
          "<w:p><w:r><w:t>a</w:t><w:footnoteReference w:id=\"7\"/></w:r></w:p>", "a|"}},
        parts);
}

TEST(DocxReader, MakesARowAParagraph) {
    constexpr std::string_view kCell = "<w:tc><w:p><w:r><w:t>c</w:t></w:r></w:p></w:tc>";
    const std::string cell(kCell);
    Check({
        {"cells and lines in them",
         "<w:tbl><w:tr><w:tc><w:p><w:r><w:t>a</w:t></w:r></w:p><w:p><w:r><w:t>b</w:t></w:r></w:p>"
         "</w:tc>" +
             cell + "</w:tr><w:tr>" + cell + "</w:tr></w:tbl>",
         "a/b!c!|c!|"},
        {"cells that run on downward",
         "<w:tbl><w:tr><w:tc><w:tcPr><w:vMerge/></w:tcPr><w:p><w:r><w:t>x</w:t></w:r></w:p></"
         "w:tc>" +
             cell + "</w:tr></w:tbl>",
         "!c!|"},
        {"the cell that they begin in, and rows and cells in other elements",
         "<w:tbl><w:sdt><w:sdtContent><w:tr><w:tc><w:tcPr><w:vMerge w:val=\"restart\"/></w:tcPr>"
         "<w:p><w:r><w:t>x</w:t></w:r></w:p></w:tc><w:customXml>" +
             cell +
             "</w:customXml></w:tr></w:sdtContent></w:sdt><mc:AlternateContent><mc:Choice "
             "Requires=\"w14\"><w:tr>" +
             cell + "</w:tr></mc:Choice></mc:AlternateContent></w:tbl>",
         "x!c!|c!|"},
        {"a table in a cell",
         "<w:tbl><w:tr><w:tc><w:tbl><w:tr>" + cell + cell +
             "</w:tr></w:tbl><w:p/></w:tc></w:tr></w:tbl>",
         "c>c>/!|"},
    });
}

TEST(DocxReader, ReadsTextBoxesBehindTheirParagraphOnce) {
    constexpr std::string_view kBox =
        "<w:txbxContent><w:p><w:r><w:t>box</w:t></w:r></w:p></w:txbxContent>";
    const std::string box(kBox);
    Check({{"both forms of one box",
            "<w:p><w:r><w:t>a</w:t><mc:AlternateContent><mc:Choice><w:drawing>" + box +
                "</w:drawing></mc:Choice><mc:Fallback><w:pict>" + box +
                "</w:pict></mc:Fallback></mc:AlternateContent><w:t>b</w:t></w:r></w:p>",
            "ab|box|"},
           {"a form that is not read, beside one that is",
            "<w:p><w:r><mc:AlternateContent><mc:Choice Requires=\"w14 w16se\"><w16se:symEx/>"
            "</mc:Choice><mc:Fallback><w:t>:)</w:t></mc:Fallback></mc:AlternateContent></w:r>"
            "<mc:AlternateContent><mc:Choice Requires=\"zz\"><w:r><w:t> alone</w:t></w:r>"
            "</mc:Choice></mc:AlternateContent></w:p>",
            ":) alone|"}});
}

std::string Words(std::string_view text) {
    return "<w:r><w:t xml:space=\"preserve\">" + std::string(text) + "</w:t></w:r>";
}
std::string Cell(const std::string& content) {
    return "<w:tc>" + content + "</w:tc>";
}

TEST(DocxReader, KeepsANoteApartFromTheWordsAroundItsMark) {
    WordFile parts;
    parts.footnotes = "<w:footnote w:id=\"1\"><w:p><w:r><w:footnoteRef/></w:r>" + Words(" See") +
                      Words(" it.") + "<w:r><w:br/></w:r>" + Words("Or not.") +
                      "</w:p></w:footnote><w:footnote w:id=\"2\"><w:p/>" + "</w:footnote>";
    const std::string mark = "<w:r><w:footnoteReference w:id=\"1\"/></w:r>";
    const std::string own_mark =
        "<w:r><w:footnoteReference w:customMarkFollows=\"1\" w:id=\"1\"/><w:t>*</w:t></w:r>";
    const std::string note = "[note: See it. Or not.]";
    const auto paragraph = [](const std::string& content) { return "<w:p>" + content + "</w:p>"; };
    const std::string between_words = paragraph(Words("a") + mark + Words("b"));
    const std::string before_sign = paragraph(Words("a") + mark + Words(", b"));
    const std::string between_blanks = paragraph(Words("a ") + mark + Words(" b"));
    const std::string alone = paragraph(mark) + paragraph(Words("b"));
    const std::string two = paragraph(Words("a") + mark + mark);
    const std::string tab = paragraph(Words("a") + mark + "<w:r><w:tab/></w:r>");
    const std::string line = paragraph(mark + "<w:r><w:br/></w:r>" + mark);
    const std::string own = paragraph(Words("a") + own_mark + Words(" b"));
    const std::string empty =
        paragraph(Words("a") + "<w:r><w:footnoteReference w:id=\"2\"/></w:r>" + Words("b"));
    const std::string cell = "<w:tbl><w:tr>" + Cell(paragraph(Words("a") + mark)) +
                             Cell(paragraph(mark)) + "</w:tr></w:tbl>";
    Check({{"between two words", between_words, "a " + note + " b|"},
           {"in front of a sign", before_sign, "a " + note + " , b|"},
           {"blanks are not doubled", between_blanks, "a " + note + " b|"},
           {"at both ends of a paragraph", alone, note + "|b|"},
           {"two notes", two, "a " + note + " " + note + "|"},
           {"a tab parts no words", tab, "a " + note + " >|"},
           {"a line does", line, note + "/" + note + "|"},
           {"behind a mark of its author", own, "a* " + note + " b|"},
           {"nothing in it", empty, "ab|"},
           {"in cells", cell, "a " + note + "!" + note + "!|"}},
          parts);
}

TEST(DocxReader, ReadsABoxInACellBehindItsRow) {
    const auto box = [](const char* text) {
        return "<w:r><w:pict><w:txbxContent><w:p>" + Words(text) +
               "</w:p></w:txbxContent></w:pict></w:r>";
    };
    const std::string in_cell = "<w:tbl><w:tr>" + Cell("<w:p>" + Words("a") + box("x") + "</w:p>") +
                                Cell("<w:p>" + box("y") + Words("b") + "</w:p>") + "</w:tr><w:tr>" +
                                Cell("<w:p/>") + "</w:tr></w:tbl>";
    const std::string at_the_end =
        "<w:p><w:pPr><w:rPr><w:del/></w:rPr></w:pPr>" + Words("a") + box("x") + "</w:p>";
    Check({{"in a cell", in_cell, "a!b!|x|y|!|"},
           {"in a last paragraph without an end", at_the_end, "a|x|"}});
}

TEST(DocxReader, LeavesHiddenRowsOut) {
    const std::string vanish = "<w:rPr><w:vanish/></w:rPr>";
    const std::string hidden = "<w:p><w:pPr>" + vanish + "</w:pPr><w:r>" + vanish +
                               "<w:t>x</w:t></w:r><w:bookmarkStart/></w:p>";
    const std::string seen = "<w:p>" + Words("a") + "</w:p>";
    const std::string half_hidden = "<w:p><w:pPr>" + vanish + "</w:pPr>" + Words("b") + "</w:p>";
    const auto row = [](const char* properties, const std::string& cells) {
        return "<w:tr><w:trPr>" + std::string(properties) + "</w:trPr>" + cells + "</w:tr>";
    };
    const std::string by_property = "<w:tbl>" + row("<w:hidden/>", Cell(seen)) +
                                    row("<w:hidden w:val=\"0\"/>", Cell(seen)) + "</w:tbl>";
    const std::string by_text = "<w:tbl>" + row("", Cell(hidden) + Cell(hidden)) +
                                row("", Cell(hidden) + Cell(seen)) + row("", Cell("<w:p/>")) +
                                row("", Cell(half_hidden)) + "</w:tbl>";
    const std::string nested =
        "<w:tbl>" + row("", Cell(seen + "<w:tbl>" + row("<w:hidden/>", Cell(seen)) + "</w:tbl>")) +
        "</w:tbl>";
    Check({{"by its property", by_property, "a!|"},
           {"by all that is in it", by_text, "!a!|!|b!|"},
           {"in a table in a cell", nested, "a!|"}});
}

constexpr std::string_view kLevels =
    "<w:lvl w:ilvl=\"0\"><w:start w:val=\"1\"/><w:numFmt w:val=\"decimal\"/><w:lvlText "
    "w:val=\"%1.\"/></w:lvl><w:lvl w:ilvl=\"1\"><w:start w:val=\"1\"/><w:numFmt "
    "w:val=\"lowerRoman\"/><w:lvlText w:val=\"%1.%2)\"/></w:lvl>";

std::string Item(const char* list, const char* level, const char* text) {
    return std::string("<w:p><w:pPr><w:numPr><w:ilvl w:val=\"") + level + "\"/><w:numId w:val=\"" +
           list + "\"/></w:numPr></w:pPr><w:r><w:t>" + text + "</w:t></w:r></w:p>";
}

TEST(DocxReader, CountsLists) {
    WordFile parts;
    parts.numbering =
        "<w:abstractNum w:abstractNumId=\"0\">" + std::string(kLevels) +
        "<w:lvl w:ilvl=\"9\"><w:lvlText w:val=\"a level that there is not\"/></w:lvl>"
        "</w:abstractNum><w:abstractNum w:abstractNumId=\"1\"><w:lvl w:ilvl=\"0\"><w:numFmt "
        "w:val=\"bullet\"/><w:lvlText w:val=\"\xEF\x82\xB7\"/><w:rPr><w:rFonts "
        "w:ascii=\"Symbol\"/></w:rPr></w:lvl></w:abstractNum><w:num w:numId=\"1\"><w:abstractNumId "
        "w:val=\"0\"/></w:num><w:num w:numId=\"2\"><w:abstractNumId w:val=\"0\"/><w:lvlOverride "
        "w:ilvl=\"0\"><w:startOverride w:val=\"7\"/></w:lvlOverride></w:num><w:num "
        "w:numId=\"3\"><w:abstractNumId w:val=\"1\"/></w:num><w:abstractNum "
        "w:abstractNumId=\"2\"><w:numStyleLink w:val=\"S\"/></w:abstractNum><w:abstractNum "
        "w:abstractNumId=\"3\"><w:styleLink w:val=\"S\"/><w:lvl w:ilvl=\"0\"><w:lvlText "
        "w:val=\"§%1%\"/></w:lvl></w:abstractNum><w:num w:numId=\"4\"><w:abstractNumId "
        "w:val=\"2\"/><w:lvlOverride w:ilvl=\"1\"><w:lvl><w:start w:val=\"2\"/><w:numFmt "
        "w:val=\"upperLetter\"/><w:lvlText w:val=\"%2\"/></w:lvl></w:lvlOverride></w:num>";
    parts.styles =
        "<w:style w:styleId=\"L\"><w:pPr><w:numPr><w:numId w:val=\"1\"/></w:numPr></w:pPr>"
        "</w:style>";
    Check({{"levels start again below an upper one",
            Item("1", "0", "a") + Item("1", "1", "b") + Item("1", "1", "c") + Item("1", "0", "d") +
                Item("1", "1", "e"),
            "1.>a|1.i)>b|1.ii)>c|2.>d|2.i)>e|"},
           {"a list that starts over",
            Item("1", "0", "a") + Item("2", "0", "b") + Item("2", "0", "c"), "1.>a|7.>b|8.>c|"},
           {"a level whose upper one never came", Item("1", "1", "x"), "1.i)>x|"},
           {"bullets of a symbol font", Item("3", "0", "x"), "\xE2\x80\xA2>x|"},
           {"levels of a list style, and of a list's own",
            Item("4", "0", "a") + Item("4", "1", "b") + Item("4", "0", "c"), "§0%>a|B>b|§1%>c|"},
           {"by the style of its paragraph; none where nothing but a section ends",
            "<w:p><w:pPr><w:pStyle w:val=\"L\"/></w:pPr></w:p><w:p><w:pPr><w:pStyle "
            "w:val=\"L\"/><w:sectPr/></w:pPr></w:p>" +
                Item("1", "0", "c"),
            "1.>||3.>c|"},
           {"no such list", Item("9", "0", "x") + Item("0", "0", "y"), "x|y|"}},
          parts);
}

TEST(DocxReader, ReadsHeadersOnceBehindTheBody) {
    WordFile parts;
    parts.header = "<w:p><w:r><w:t>head</w:t></w:r></w:p>";
    constexpr std::string_view kSection =
        "<w:sectPr><w:headerReference w:type=\"default\" r:id=\"rh\"/></w:sectPr>";
    const std::string section(kSection);
    Check(
        {{"two sections with one header",
          "<w:p><w:pPr>" + section + "</w:pPr><w:r><w:t>a</w:t></w:r></w:p>" + section, "a|head|"},
         {"that of a first page that is told apart, and a footer with its text",
          "<w:p/><w:sectPr><w:titlePg/><w:footerReference r:id=\"rh\"/><w:headerReference "
          "w:type=\"first\" r:id=\"rh\"/><w:footerReference r:id=\"none\"/></w:sectPr>",
          "|head|"},
         {"a first page's header that is not shown",
          "<w:p/><w:sectPr><w:headerReference w:type=\"first\" r:id=\"rh\"/></w:sectPr>", "|"}},
        parts);
}

TEST(DocxReader, ReadsEvenPagesHeadersWhereTheyDiffer) {
    WordFile parts;
    parts.header = "<w:p><w:r><w:t>even</w:t></w:r></w:p>";
    parts.settings = "<w:evenAndOddHeaders/>";
    Check({{"even", "<w:p/><w:sectPr><w:headerReference w:type=\"even\" r:id=\"rh\"/></w:sectPr>",
            "|even|"}},
          parts);
}

TEST(DocxReader, TellsOfAPartWithTextThatCannotBeRead) {
    WordFile notes;
    notes.footnotes = "<w:footnote>";
    EXPECT_TRUE(ShownWord(notes).starts_with("error 3: broken XML"));
    WordFile header;
    header.body = "<w:sectPr><w:headerReference w:type=\"default\" r:id=\"rh\"/></w:sectPr>";
    header.header = "<w:p>";
    EXPECT_TRUE(ShownWord(header).starts_with("error 3: broken XML"));
}

TEST(DocxReader, EndsOnHostileInput) {
    std::string deep;
    for (int i = 0; i < 5000; ++i)
        deep += "<w:sdt>";
    for (int i = 0; i < 5000; ++i)
        deep += "</w:sdt>";
    WordFile nested;
    nested.body = deep;
    EXPECT_EQ(ShownWord(nested), "error 3: the document is nested too deeply");
    const std::string broken = MakeZip({{"word/document.xml", "<w:document><w:body>"}});
    const auto package = Package::Open(broken);
    const auto sink = MakePlainSink();
    SilentMonitor monitor;
    EXPECT_EQ(ReadWordPackage(*package, *sink, monitor).error, ReadError::Damaged);
    const std::string empty = MakeZip({{"a", "b"}});
    EXPECT_EQ(ReadWordPackage(*Package::Open(empty), *sink, monitor).error, ReadError::WrongFormat);
}

}  // namespace
}  // namespace zorvane::docx_reader_test
