#include <string>

#include <gtest/gtest.h>

#include "compare/document/beside_compare.h"
#include "load/readers/word_readers.h"
#include "tests/support/shown_beside.h"
#include "tests/support/word_file.h"

namespace zorvane::docx_beside_test {
namespace {

constexpr std::string_view kRelations =
    "<Relationships><Relationship Id=\"r1\" Type=\"http://x/hyperlink\" TargetMode=\"External\" "
    "Target=\"http://a.example/\"/><Relationship Id=\"r2\" Type=\"http://x/image\" "
    "Target=\"media/one.png\"/><Relationship Id=\"r3\" Type=\"http://x/image\" "
    "Target=\"media/two.png\"/><Relationship Id=\"r4\" Type=\"http://x/chart\" "
    "Target=\"charts/chart1.xml\"/><Relationship Id=\"r5\" Type=\"http://x/oleObject\" "
    "Target=\"embeddings/book.xlsx\"/><Relationship Id=\"r6\" Type=\"http://x/comments\" "
    "Target=\"comments.xml\"/><Relationship Id=\"r7\" Type=\"http://x/footer\" "
    "Target=\"footer1.xml\"/></Relationships>";

/// A document whose parts can be exchanged one by one.
struct Parts {
    std::string body;
    std::string link = "http://a.example/";
    std::string picture = "first picture";
    std::string chart = "<c:chart><c:v>12</c:v></c:chart>";
    std::string object = "book";
    std::string comment = "why?";
    std::string title = "Plan";
};

std::string Replaced(std::string text, std::string_view what, std::string_view with) {
    const std::size_t at = text.find(what);
    return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

std::vector<BesideItem> ItemsOf(const Parts& parts) {
    const std::string bytes =
        MakeZip({{"_rels/.rels",
                  "<Relationships><Relationship Id=\"r1\" Type=\"http://x/officeDocument\" "
                  "Target=\"word/document.xml\"/></Relationships>"},
                 {"word/_rels/document.xml.rels",
                  Replaced(std::string(kRelations), "http://a.example/", parts.link)},
                 {"word/document.xml", WordPart("document", "<w:body>" + parts.body + "</w:body>")},
                 {"word/styles.xml",
                  WordPart("styles",
                           "<w:style w:type=\"character\" w:styleId=\"H\"><w:rPr><w:vanish/>"
                           "</w:rPr></w:style>")},
                 {"word/footer1.xml",
                  WordPart("ftr",
                           "<w:p><w:hyperlink r:id=\"r1\"><w:r><w:t>foot</w:t></w:r></w:hyperlink>"
                           "</w:p>")},
                 {"word/_rels/footer1.xml.rels",
                  "<Relationships><Relationship Id=\"r1\" Type=\"http://x/hyperlink\" "
                  "TargetMode=\"External\" Target=\"http://foot.example/\"/></Relationships>"},
                 {"word/media/one.png", parts.picture},
                 {"word/media/two.png", "second picture"},
                 {"word/charts/chart1.xml", parts.chart},
                 {"word/embeddings/book.xlsx", parts.object},
                 {"word/comments.xml",
                  WordPart("comments", "<w:comment w:id=\"7\" w:author=\"Ann\"><w:p><w:r><w:t>" +
                                           parts.comment + "</w:t></w:r></w:p></w:comment>")},
                 {"docProps/core.xml", "<cp:coreProperties><dc:title>" + parts.title +
                                           "</dc:title><dcterms:modified>2020</dcterms:modified>"
                                           "<cp:lastModifiedBy>Bob</cp:lastModifiedBy>"
                                           "</cp:coreProperties>"}});
    const auto package = Package::Open(bytes);
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadWordPackage(*package, sink, monitor);
    });
}

std::string Text(std::string_view text) {
    return "<w:r><w:t>" + std::string(text) + "</w:t></w:r>";
}
std::string InParagraph(std::string_view content) {
    return "<w:p>" + std::string(content) + "</w:p>";
}
std::string Picture(std::string_view relation, std::string_view name) {
    return "<w:r><w:drawing><wp:inline><wp:docPr id=\"1\" descr=\"" + std::string(name) +
           "\"/><a:graphic><a:graphicData><pic:pic><pic:blipFill><a:blip r:embed=\"" +
           std::string(relation) +
           "\"/></pic:blipFill></pic:pic></a:graphicData></a:graphic></wp:inline></w:drawing>"
           "</w:r>";
}

struct Row {
    const char* name;
    std::string body;
    std::string_view shown;
};

TEST(DocxBeside, TellsEachThingAtItsParagraph) {
    const std::string code = "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText>";
    const std::string result =
        "</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>" + Text("r") +
        "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
    const Row rows[] = {
        {"nothing but words", InParagraph(Text("a")), ""},
        {"links to an address and to a place; not those of a table of contents",
         InParagraph(Text("a")) +
             InParagraph("<w:hyperlink r:id=\"r1\">" + Text("b") +
                         "</w:hyperlink><w:hyperlink w:anchor=\"here\">" + Text("c") +
                         "</w:hyperlink><w:hyperlink w:anchor=\"_Toc1\"/>"),
         "links 2 http://a.example/; links 2 #here; "},
        {"pictures, old and new",
         InParagraph(Picture("r2", "Logo")) +
             InParagraph("<w:r><w:pict><v:shape><v:imagedata r:id=\"r3\"/></v:shape></w:pict>"
                         "</w:r>"),
         "pictures 1 Logo; pictures 2 two.png; "},
        {"of two forms of one thing one",
         InParagraph("<w:r><mc:AlternateContent><mc:Choice>" + Picture("r2", "Logo") +
                     "</mc:Choice><mc:Fallback>" + Picture("r3", "Old") +
                     "</mc:Fallback></mc:AlternateContent></w:r>"),
         "pictures 1 Logo; "},
        {"a chart and a shape",
         InParagraph("<w:r><w:drawing><wp:inline><a:graphic><c:chart r:id=\"r4\"/></a:graphic>"
                     "</wp:inline></w:drawing></w:r><w:r><w:drawing><wps:wsp><wps:spPr>"
                     "<a:prstGeom prst=\"star5\"/></wps:spPr></wps:wsp></w:drawing></w:r>"),
         "charts 1 chart; drawings 1 star5; "},
        {"a text box is text, the picture inside is none of its anchor's",
         InParagraph(Text("a") + "<w:r><w:drawing><wps:wsp><wps:spPr/><wps:txbx><w:txbxContent>" +
                     InParagraph(Text("box") + Picture("r2", "Inside")) +
                     "</w:txbxContent></wps:txbx></wps:wsp></w:drawing></w:r>"),
         "pictures 2 Inside; "},
        {"a formula by its structure",
         InParagraph("<m:oMath><m:sSup><m:e><m:r><m:t>x</m:t></m:r></m:e><m:sup><m:r><m:t>2"
                     "</m:t></m:r></m:sup></m:sSup></m:oMath>"),
         "formulas 1 x^2; "},
        {"an object without its likeness",
         InParagraph("<w:r><w:object><v:shape><v:imagedata r:id=\"r2\"/></v:shape><o:OLEObject "
                     "ProgID=\"Sheet.12\" r:id=\"r5\"/></w:object></w:r>"),
         "objects 1 Sheet.12; "},
        {"a comment", InParagraph(Text("a") + "<w:r><w:commentReference w:id=\"7\"/></w:r>"),
         "comments 1 Ann: why?; "},
        {"tracked changes",
         InParagraph("<w:ins>" + Text("new") +
                     "</w:ins><w:del><w:r><w:delText>old </w:delText>"
                     "</w:r></w:del><w:moveFrom><w:r><w:t>gone</w:t></w:r></w:moveFrom>"),
         "tracked 1 inserted: new; tracked 1 deleted: old gone; "},
        {"a deleted row",
         "<w:tbl><w:tr><w:trPr><w:del/></w:trPr><w:tc>" + InParagraph(Text("x")) +
             "</w:tc></w:tr></w:tbl>" + InParagraph(Text("a")),
         "tracked 1 deleted row: x; "},
        {"a row that is hidden since all text in it is",
         "<w:tbl><w:tr><w:tc><w:p><w:pPr><w:rPr><w:vanish/></w:rPr></w:pPr><w:r><w:rPr><w:vanish/>"
         "</w:rPr><w:t>x</w:t></w:r></w:p></w:tc></w:tr></w:tbl>" +
             InParagraph(Text("a")),
         "hidden 1 row: x; "},
        {"hidden text, by itself and by its style",
         InParagraph(Text("a") + "<w:r><w:rPr><w:vanish/></w:rPr><w:t>b</w:t></w:r>") +
             InParagraph("<w:r><w:rPr><w:rStyle w:val=\"H\"/></w:rPr><w:t>c</w:t></w:r>"),
         "hidden 1 b; hidden 2 c; "},
        {"fields",
         InParagraph(code + " PAGE " + result + "<w:fldSimple w:instr=\" DATE \\@ y \">" +
                     Text("5") + "</w:fldSimple>") +
             InParagraph(code + " HYPERLINK \"http://b.example/\" " + result),
         "fields 1 PAGE; fields 1 DATE \\@ y; links 2 http://b.example/; "},
        {"a footer's relations are its own",
         InParagraph("<w:hyperlink r:id=\"r1\">" + Text("a") + "</w:hyperlink>") +
             "<w:sectPr><w:footerReference w:type=\"default\" r:id=\"r7\"/></w:sectPr>",
         "links 1 http://a.example/; links 2 http://foot.example/; "},
        {"in a table's row, which is one paragraph",
         InParagraph(Text("a")) + "<w:tbl><w:tr><w:tc>" + InParagraph(Text("x")) +
             InParagraph(Picture("r2", "Logo")) + "</w:tc></w:tr></w:tbl>",
         "pictures 2 Logo; "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Parts parts;
        parts.body = row.body;
        EXPECT_EQ(ShownItems(ItemsOf(parts)), "metadata 0 title: Plan; " + std::string(row.shown));
    }
}

TEST(DocxBeside, SeesEachThingThatChangesAndNothingElse) {
    Parts parts;
    parts.body = InParagraph("<w:hyperlink r:id=\"r1\">" + Text("b") + "</w:hyperlink>") +
                 InParagraph(Picture("r2", "Logo")) +
                 InParagraph("<w:r><w:drawing><c:chart r:id=\"r4\"/></w:drawing></w:r>") +
                 InParagraph(
                     "<w:r><w:object><o:OLEObject ProgID=\"S\" r:id=\"r5\"/></w:object>"
                     "</w:r><w:r><w:commentReference w:id=\"7\"/></w:r>");
    const auto told = [&](const Parts& other) {
        return BesideSentence(CompareBeside(ItemsOf(parts), ItemsOf(other), {1, 2, 3, 4}));
    };
    CheckChanges(
        parts, told,
        {{&Parts::link, "http://b.example/", "1 link target changed (paragraph 1)."},
         {&Parts::picture, "another", "1 picture replaced (paragraph 2)."},
         {&Parts::chart, "<c:chart><c:v>13</c:v></c:chart>", "1 chart replaced (paragraph 3)."},
         // The same chart, written by another program.
         {&Parts::chart, "<c:chart xmlns:c=\"c\"><c:id x=\"5\"/><c:v>12</c:v></c:chart>", ""},
         {&Parts::object, "other", "1 embedded object replaced (paragraph 4)."},
         {&Parts::comment, "why not?", "1 comment changed (paragraph 4)."},
         {&Parts::title, "Plans", "1 document property changed (title)."}});
}

}  // namespace
}  // namespace zorvane::docx_beside_test
