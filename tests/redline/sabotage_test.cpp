// A redline that was broken on its way, in each way that a fault of the writer could break it: the
// check has to see every one of them. The last ones leave all text as it is.
#include "tests/redline/redline_pair.h"

namespace zorvane::sabotage_test {
namespace {

const std::string kStyleNamed = "<w:style w:type=\"paragraph\" w:styleId=\"";

const std::string kField =
    "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText>DATE</w:instrText></w:r>"
    "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
const std::string kBox =
    "<w:r><w:fldChar w:fldCharType=\"begin\"><w:ffData><w:checkBox><w:default w:val=\"1\"/>"
    "</w:checkBox></w:ffData></w:fldChar></w:r><w:r><w:instrText>FORMCHECKBOX</w:instrText></w:r>"
    "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";

std::string Body(bool modified, const std::string& width) {
    const std::string nested = "<w:tc><w:tcPr/>" + Table(Row({"3"})) + "<w:p/></w:tc>";
    const std::string word = modified ? "tide" : "weather";
    const std::string place = modified ? "quay" : "pier";
    const std::string wanders = Paragraph("Visitors sign the book at the gate.");
    return (modified ? "" : wanders) +
           Paragraph("Rules of the harbour club", "<w:pStyle w:val=\"H\"/>") +
           Paragraph(TextRun("The keeper notes the ") + TextRun(word, modified ? "" : "<w:b/>") +
                     TextRun(" each morning.") + NoteReference("1")) +
           (modified ? ""
                     : Paragraph(TextRun("Dogs stay on the leash.") + kField + kBox,
                                 "<w:pStyle w:val=\"S\"/>")) +
           Paragraph("Boats are painted white each spring by the members of the club.") +
           (modified ? wanders : "") +
           Paragraph("Ropes are coiled and hung up behind the door of the shed.") +
           (modified ? Paragraph("Sails are dried after rain.",
                                 "<w:numPr><w:ilvl w:val=\"0\"/>"
                                 "<w:numId w:val=\"1\"/></w:numPr>")
                     : "") +
           Table(Row({"Oak", modified ? "14" : "12"}) + Row({"Elm", "7"}) +
                 (modified ? "<w:tr>" + Cell("Fir") + nested + "</w:tr>" : Row({"Ash", "9"}))) +
           Paragraph(TextRun("See ") + "<w:hyperlink r:id=\"rl\">" + TextRun("the " + place) +
                     "</w:hyperlink>" + TextRun(" and the map. ") + kField +
                     "<w:r><w:drawing><wp:extent cx=\"" + width +
                     "\"/><a:blip r:embed=\"rp\"/>"
                     "<a:moveTo/></w:drawing></w:r>"
                     "<w:r><w:drawing><wp:docPr id=\"900001\"/><dgm:relIds r:dm=\"rm\"/>"
                     "</w:drawing></w:r>") +
           Paragraph(TextRun("The end of ") + "<w:r><w:pict><w:txbxContent>" +
                     Paragraph(modified ? "boxed new" : "boxed old") +
                     "</w:txbxContent></w:pict></w:r>");
}

std::string Input(bool modified, const std::string& width = "9") {
    PairFile file;
    file.body = Body(modified, width);
    file.styles = "<w:docDefaults/>" + kStyleNamed + "H\"><w:rPr><w:b/></w:rPr></w:style>" +
                  kStyleNamed +
                  (modified ? "S\"><w:rPr><w:b/></w:rPr></w:style>"
                            : "S\"><w:pPr><w:numPr><w:numId w:val=\"1\"/></w:numPr></w:pPr>"
                              "<w:rPr><w:i/></w:rPr></w:style>");
    file.numbering =
        "<w:abstractNum w:abstractNumId=\"0\"><w:lvl w:ilvl=\"0\"/></w:abstractNum>"
        "<w:num w:numId=\"1\"><w:abstractNumId w:val=\"0\"/>" +
        std::string(modified ? ""
                             : "<w:lvlOverride w:ilvl=\"0\"><w:startOverride w:val=\"3\"/>"
                               "</w:lvlOverride>") +
        "</w:num>";
    file.footnotes = Note("1", modified ? "Since this year." : "Since last year.");
    file.header = Paragraph(modified ? "Second edition" : "First edition");
    file.picture = "picture";
    file.diagram = modified ? "<new/>" : "<old/>";
    file.is_signed = true;
    return MakePairFile(file);
}

struct Sabotage {
    const char* name;
    const char* part;
    const char* what;  ///< its first place is replaced
    const char* by;
};

constexpr const char* kText = "word/document.xml";
constexpr const char* kRelations = "word/_rels/document.xml.rels";
constexpr Sabotage kRows[] = {
    {"a kept letter", kText, "Boats are", "Boots are"},
    {"a kept blank", kText, "Boats are", "Boatsare"},
    {"a deleted word", kText, "weather</w:delText>", "wether</w:delText>"},
    {"an inserted word", kText, ">tide<", ">tides<"},
    {"a deletion that is none", kText, "<w:delText xml:space=\"preserve\">weather</w:delText>",
     "<w:t xml:space=\"preserve\">weather</w:t>"},
    {"an insertion outside of its mark", kText,
     "<w:t xml:space=\"preserve\">tide</w:t></w:r></w:ins>",
     "</w:r></w:ins><w:r><w:t>tide</w:t></w:r>"},
    {"a mark of an end is lost", kText, "<w:rPr><w:del ", "<w:rPr><w:gone "},
    {"a mark of an end too many", kText, "<w:pStyle w:val=\"H\"/>",
     "<w:pStyle w:val=\"H\"/><w:rPr><w:del w:id=\"999\" w:author=\"a\"/></w:rPr>"},
    {"a mark in front of a table", kText, "</w:numPr>",
     "</w:numPr><w:rPr><w:ins w:id=\"999\" w:author=\"a\"/></w:rPr>"},
    {"an id twice", kText, "w:id=\"5\"", "w:id=\"4\""},
    {"a drawing's id twice", kText, "docPr id=\"900002\"", "docPr id=\"900001\""},
    {"a signature", "_rels/.rels", "Id=\"r1\"",
     "Id=\"r2\" Type=\"digital-signature/origin\" Target=\"s.xml\"/><Relationship Id=\"r1\""},
    {"half a move without its end", kText, "w:moveFromRangeEnd", "w:bookmarkEnd"},
    {"half a move", kText, "w:moveToRangeStart", "w:bookmarkStart"},
    {"a change without an author", kText, "w:author=\"Zorvane\"", "w:who=\"Zorvane\""},
    {"a cell is lost", kText,
     "<w:tc><w:tcPr/><w:p><w:r><w:t xml:space=\"preserve\">7</w:t></w:r></w:p></w:tc>", ""},
    {"a row without its mark", kText, "<w:trPr><w:del", "<w:trPr><w:gone"},
    {"a row with the other mark", kText, "<w:trPr><w:ins", "<w:trPr><w:del"},
    {"a row inside of a marked one", kText, "</w:tblGrid><w:tr><w:trPr><w:ins",
     "</w:tblGrid><w:tr><w:trPr><w:gone"},
    {"a table is lost", kText, "</w:tbl>",
     "</w:tbl><w:tbl><w:tr><w:tc><w:p/></w:tc></w:tr></w:tbl>"},
    {"the wrong note", kText, "<w:footnoteReference w:id=\"1\"/>",
     "<w:footnoteReference w:id=\"2\"/>"},
    {"the note's text", "word/footnotes.xml", "this", "that"},
    {"the header's text", "word/header1.xml", "edition", "addition"},
    {"no header", kText, "<w:headerReference", "<w:lostReference"},
    {"a text box's text", kText, "boxed ", "Boxed "},
    {"a picture", "word/media/image1.png", "picture", "pictore"},
    {"how something is drawn", kText, "<a:moveTo", "<a:lineTo"},
    {"a deleted diagram's drawing", "word/diagrams/data12.xml", "rIdOld2", "rd"},
    {"a deleted field's code as one that stays", kText, "<w:delInstrText>DATE</w:delInstrText>",
     "<w:instrText>DATE</w:instrText>"},
    {"a field's code", kText, "<w:instrText>DATE", "<w:instrText>TIME"},
    {"what a link leads to", kRelations, "http://example.org/", "http://example.com/"},
    {"a relationship", kText, "r:embed=\"rp\"", "r:embed=\"rq\""},
    {"a part that nobody had to change", "docProps/app.xml", "Properties", "Property"},
    {"a type of content", "[Content_Types].xml", "png", "gif"},
    {"a type of another kind", "[Content_Types].xml", "image/png", "application/xml"},
    {"what all text looks like", "word/styles.xml", "<w:docDefaults/>", ""},
    {"a list", "word/numbering.xml", "w:numId=\"1\"", "w:numId=\"2\""},
    {"broken XML", kText, "</w:body>", "</w:bo>"},
    {"a deleted style is missing", "word/styles.xml", "SOriginal", "SOther"},
    {"a deleted style has another look", "word/styles.xml", "<w:i/>", "<w:u/>"},
    {"a deleted style is of another list", "word/styles.xml", "<w:numId w:val=\"2\"",
     "<w:numId w:val=\"1\""},
    {"a deleted list begins elsewhere", "word/numbering.xml", "startOverride w:val=\"3\"",
     "startOverride w:val=\"4\""},
    {"a deleted box is not ticked", kText, "<w:default w:val=\"1\"", "<w:default w:val=\"0\""},
    {"a kept look", kText, "<w:pStyle w:val=\"H\"/>", "<w:pStyle w:val=\"SOriginal\"/>"},
    {"a deleted word's bold", kText, "<w:rPr><w:b/></w:rPr><w:delText", "<w:rPr/><w:delText"},
    {"an end inside a marked row", kText, "<w:tcPr/><w:p><w:pPr><w:rPr><w:ins ",
     "<w:tcPr/><w:p><w:pPr><w:rPr><w:gone "},
};

TEST(RedlineCheck, SeesEveryWayInWhichAWriterCouldFail) {
    const std::string original = Input(false);
    const std::string modified = Input(true);
    const std::string redline = RedlineOf(original, modified).bytes;
    ASSERT_EQ(LawBreach(original, modified, redline), "") << PartOf(redline, kText);
    for (const Sabotage& row : kRows) {
        SCOPED_TRACE(row.name);
        const std::string breach =
            LawBreach(original, modified, WithPart(redline, row.part, row.what, row.by));
        EXPECT_NE(breach, "");
        EXPECT_EQ(breach.ends_with("is no XML"), row.name == std::string_view("broken XML"))
            << "seen for a reason that says nothing";
    }
}

TEST(RedlineCheck, RefusesAnotherPairsRedline) {
    const std::string original = Input(false);
    const std::string modified = Input(true);
    const std::string redline = RedlineOf(original, modified).bytes;
    EXPECT_NE(LawBreach(modified, original, redline), "");
    EXPECT_NE(LawBreach(original, modified, modified), "");
    EXPECT_NE(LawBreach(Input(false, "8"), modified, redline), "") << "a picture that stays";
    EXPECT_NE(LawBreach(original, modified, "no package"), "");
}

}  // namespace
}  // namespace zorvane::sabotage_test
