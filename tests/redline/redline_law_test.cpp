// Small pairs with one kind of change each: the law holds, and as little is marked as can be.
#include "tests/redline/redline_pair.h"

namespace zorvane::redline_law_test {
namespace {

struct LawRow {
    const char* name;
    PairFile original;
    PairFile modified;
    RedlineCounts counts;    ///< insertions, deletions, marks of ends, rows, notes, properties
    std::int64_t twice = 0;  ///< rows that are deleted and inserted
    const char* holds = "";  ///< what the document's part has
};

const std::string kLong = "The committee decides about the large hall";
const std::string kTail = " and the lamp is cleaned every morning before the ferry leaves.";
const std::string kKept = Paragraph("Bread is baked on Monday in the old oven of the village.");
const std::string kOther = Paragraph("Oil lanterns are stored upright before winter begins.");
const std::string kMore = Paragraph("The members meet twice a year in the long hall.") +
                          Paragraph("Sails are dried on the upper floor after rain.");
const std::string kBold = "<w:b/>";
const std::string kField =
    "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText>PAGE #</w:instrText></w:r>"
    "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
const std::string kContents =
    Paragraph(
        "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText>TOC</w:instrText></w:r>"
        "<w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>" +
        TextRun("Chapter")) +
    Paragraph("<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>");
const std::string kStyle = "<w:style w:type=\"paragraph\" w:styleId=\"S\"><w:name w:val=\"S\"/>";

std::string With(std::string text, const std::string& what, const std::string& by) {
    return text.replace(text.find(what), what.size(), by);
}
std::string Box(const std::string& text) {
    return "<w:r><w:pict><w:txbxContent>" + Paragraph(text) + "</w:txbxContent></w:pict></w:r>";
}
std::string Link(const std::string& text) {
    return "<w:hyperlink r:id=\"rl\">" + TextRun(text) + "</w:hyperlink>";
}

const std::string kBlip = "<a:blip r:embed=\"rp\"/>";
// A picture in the line of that width.
std::string Inline(const std::string& width, const std::string& frame, const std::string& cut) {
    return "<wp:inline><wp:extent cx=\"" + width + "\" cy=\"9\"/><a:frame" + frame +
           "/><a:graphic><a:graphicData><pic:pic><pic:blipFill>" + kBlip + cut +
           "</pic:blipFill></pic:pic></a:graphicData></a:graphic></wp:inline>";
}
PairFile Pictured(const std::string& drawing, const std::string& bytes = "one") {
    PairFile file;
    file.body = Paragraph(TextRun(kLong) + "<w:r><w:drawing>" + drawing + "</w:drawing></w:r>");
    file.picture = bytes;
    return file;
}

PairFile Diagram(const std::string& drawing) {
    PairFile file = Pictured("<dgm:relIds r:dm=\"rm\"/>");
    file.diagram = drawing;
    return file;
}

std::vector<LawRow> Rows() {
    const std::string two_rows = Row({"Oak", "12"}) + Row({"Elm", "7"});
    const std::string notes = Note("1", "First note.") + Note("2", "Second note.");
    const std::string said = Paragraph(TextRun(kLong) + NoteReference("1") + TextRun(kTail));
    return {
        {"nothing", {kKept}, {kKept}, {}},
        {"a word", {Paragraph(kLong)}, {Paragraph(With(kLong, "large", "small"))}, {1, 1}},
        {"a word over runs, with their looks",
         {Paragraph(TextRun("The committee de", kBold) + TextRun("cides about the hall"))},
         {Paragraph("The committee votes about the hall")},
         {1, 1}},
        {"a paragraph more", {kKept}, {kKept + kOther}, {1, 0, 1}},
        {"a paragraph less in front", {kOther + kKept}, {kKept}, {0, 1, 1}},
        {"another paragraph at the end",
         {kKept + Paragraph("Zebra", "<w:jc w:val=\"center\"/>")},
         {kKept + kOther},
         {1, 1, 0, 0, 0, 1}},
        {"moved",
         {kOther + kKept + kMore + Paragraph("Ends.")},
         {kKept + kMore + kOther + Paragraph("Ends.")},
         {0, 0, 2, 0, 0, 0, 1}},
        {"moved with a link, whose end LibreOffice leaves unless it is deleted",
         {Paragraph(TextRun(kLong) + Link("there")) + kKept + kMore + Paragraph("Ends.")},
         {kKept + kMore + Paragraph(TextRun(kLong) + Link("there")) + Paragraph("Ends.")},
         {0, 0, 2, 0, 0, 0, 1},
         0,
         "<w:rPr><w:del "},
        {"split", {Paragraph(kLong + kTail)}, {Paragraph(kLong) + Paragraph(kTail)}, {0, 0, 1}},
        {"joined", {Paragraph(kLong) + Paragraph(kTail)}, {Paragraph(kLong + kTail)}, {0, 0, 1}},
        {"the only cell, wholly",
         {kKept + Table(Row({"Oak"})) + kOther},
         {kKept + Table(Row({"Elm"})) + kOther},
         {1, 1}},
        {"one cell",
         {Table(two_rows) + kKept},
         {Table(With(two_rows, "12", "14")) + kKept},
         {1, 1}},
        {"a row",
         {Table(two_rows) + kKept},
         {Table(two_rows + Row({"Ash", "9"})) + kKept},
         {2, 0, 2, 1}},
        {"a cell of a table at the end, where nothing is put behind it",
         {kKept + Table(two_rows)},
         {kKept + Table(With(two_rows, "12", "14"))},
         {1, 1},
         0,
         "</w:tbl><w:sectPr"},
        {"a table more at the end",
         {kKept},
         {kKept + Table(two_rows)},
         {5, 1, 5, 2},
         0,
         "</w:tbl><w:p"},
        {"a row less", {Table(two_rows) + kKept}, {Table(Row({"Elm", "7"})) + kKept}, {0, 2, 2, 1}},
        {"another number of cells",
         {Table(two_rows) + kKept},
         {Table(Row({"Oak"}) + Row({"Elm", "7"})) + kKept},
         {1, 2, 3, 2},
         1},
        {"a column more",
         {Table(two_rows) + kKept},
         {Table(Row({"Oak", "12", "a"}) + Row({"Elm", "7", "b"})) + kKept},
         {6, 4, 10, 4},
         2},
        {"a column less beside a row that has it no more",
         {Table(two_rows + Row({"Ash"})) + kKept},
         {Table(Row({"Oak"}) + Row({"Elm"}) + Row({"Ash"})) + kKept},
         {2, 4, 6, 4},
         2},
        {"cells that are merged now",
         {Table(two_rows) + kKept},
         {Table(With(two_rows, "<w:tcPr/>", "<w:tcPr><w:vMerge w:val=\"restart\"/></w:tcPr>")) +
          kKept},
         {2, 2, 4, 2},
         1},
        {"a table more, in front of the last paragraph",
         {kOther + kKept},
         {kOther + Table(two_rows) + kKept},
         {4, 0, 4, 2}},
        {"a paragraph between tables",
         {Table(two_rows) + kOther + Table(two_rows) + kKept},
         {Table(two_rows) + Table(two_rows) + kKept},
         {4, 5, 9, 4}},
        {"a paragraph in front of a table that stays",
         {kKept + Table(two_rows) + kKept},
         {kKept + kOther + Table(two_rows) + kKept},
         {1, 0, 1}},
        {"a note's text",
         {said, {}, {}, notes},
         {said, {}, {}, With(notes, "First", "Other")},
         {1, 1, 0, 0, 1}},
        {"a note more", {Paragraph(kLong + kTail)}, {said, {}, {}, notes}, {2, 0, 0, 0, 1}},
        {"a note less", {said, {}, {}, notes}, {Paragraph(kLong + kTail)}, {0, 2, 0, 0, 1}},
        {"a header's text",
         {kKept, {}, {}, {}, kOther},
         {kKept, {}, {}, {}, With(kOther, "Oil", "New")},
         {1, 1}},
        {"a header more", {kKept}, {kKept, {}, {}, {}, kOther}, {1}},
        {"a header less", {kKept, {}, {}, {}, kOther}, {kKept}, {0, 1}},
        {"in a text box",
         {Paragraph(TextRun(kLong) + Box(kTail))},
         {Paragraph(TextRun(kLong) + Box(With(kTail, "lamp", "tide")))},
         {1, 1}},
        {"a picture", Pictured(kBlip, "one"), Pictured(kBlip, "other"), {1, 1}},
        {"a picture less that the package still has",
         Pictured(kBlip),
         {Paragraph(kLong), {}, {}, {}, {}, "one"},
         {0, 1},
         0,
         kBlip.c_str()},
        {"a picture as two programs write it",
         Pictured(Inline("9", "", ""), "one"),
         Pictured(Inline("9", " noChangeAspect=\"1\"", ""), "one"),
         {}},
        {"a picture's size", Pictured(Inline("9", "", "")), Pictured(Inline("8", "", "")), {1, 1}},
        {"a picture's cut",
         Pictured(Inline("9", "", "")),
         Pictured(Inline("9", "", "<a:srcRect l=\"1\"/>")),
         {1, 1}},
        {"a diagram that only its drawing tells", Diagram("<a/>"), Diagram("<b/>"), {1, 1}},
        {"a word of a link",
         {Paragraph(Link(kLong))},
         {Paragraph(Link(With(kLong, "large", "small")))},
         {1, 1}},
        {"what a link leads to",
         {Paragraph(Link(kLong) + TextRun(kTail))},
         {Paragraph(Link(kLong) + TextRun(kTail)), {}, {}, {}, {}, {}, "http://example.com/"},
         {1, 1}},
        {"a field's code",
         {Paragraph(TextRun(kLong) + kField)},
         {Paragraph(TextRun(kLong) + With(kField, "#", "!"))},
         {1, 1}},
        {"contents over paragraphs more",
         {kKept + kOther},
         {kKept + kContents + kOther},
         {2, 0, 2}},
        {"contents in front of an empty paragraph",
         {kKept + Paragraph("") + kOther},
         {kKept + kContents + kOther},
         {2, 0, 1}},
        {"contents at the end", {kKept}, {kKept + kContents}, {2, 0, 2}},
        {"a simple field goes",
         {Paragraph(TextRun(kLong) + "<w:fldSimple w:instr=\"DATE\">" + TextRun("today") +
                    "</w:fldSimple>")},
         {Paragraph(kLong)},
         {0, 1}},
        {"a field that another program spells otherwise",
         {Paragraph(TextRun(kLong) +
                    "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText>DATE"
                    "</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>" +
                    TextRun("today") + "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>")},
         {Paragraph(TextRun(kLong) + "<w:fldSimple w:instr=\"DATE\">" + TextRun("today") +
                    "</w:fldSimple>")},
         {},
         0,
         "<w:fldSimple"},
        {"a style of the deleted text",
         {Paragraph("Zebra", "<w:pStyle w:val=\"S\"/>") + kKept,
          kStyle + "<w:rPr><w:b/></w:rPr></w:style>"},
         {kKept, kStyle + "<w:rPr><w:i/></w:rPr></w:style>"},
         {0, 1, 1}},
        {"a list of the deleted text",
         {Paragraph("Zebra", "<w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"1\"/></w:numPr>") +
              kKept,
          {},
          "<w:abstractNum w:abstractNumId=\"0\"><w:lvl w:ilvl=\"0\"/></w:abstractNum><w:num "
          "w:numId=\"1\"><w:abstractNumId w:val=\"0\"/></w:num>"},
         {kKept,
          {},
          "<w:abstractNum w:abstractNumId=\"0\"><w:lvl w:ilvl=\"1\"/></w:abstractNum><w:num "
          "w:numId=\"1\"><w:abstractNumId w:val=\"0\"/></w:num>"},
         {0, 1, 1}},
    };
}

TEST(RedlineLaw, HoldsForEachKindOfChangeWithFewMarks) {
    for (const LawRow& row : Rows()) {
        SCOPED_TRACE(row.name);
        const std::string original = MakePairFile(row.original);
        const std::string modified = MakePairFile(row.modified);
        const WrittenRedline written = RedlineOf(original, modified);
        EXPECT_EQ(LawBreach(original, modified, written.bytes), "");
        const RedlineCounts& got = written.counts;
        EXPECT_EQ(got, row.counts)
            << got.insertions << " " << got.deletions << " " << got.paragraph_marks << " "
            << got.rows << " " << got.notes << " " << got.properties;
        EXPECT_EQ(written.untracked[UntrackedCount::RowsTwice], row.twice);
        EXPECT_NE(PartOf(written.bytes, "word/document.xml").find(row.holds), std::string::npos);
    }
}

TEST(RedlineLaw, DeletedItemsCountInTheListThatTheyWereIn) {
    struct Row {
        const char* name;
        const char* lists;  // of a deleted item and a kept one, and of the kept one in the Modified
        const char* level;  // of the Modified's lists; the Original's are of level 0
        const char* written;
    };
    const auto item = [](const std::string& text, char list) {
        return Paragraph(text, "<w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"" +
                                   std::string(1, list) + "\"/></w:numPr>");
    };
    const auto lists = [](const std::string& level) {
        std::string all = "<w:abstractNum w:abstractNumId=\"0\"><w:lvl w:ilvl=\"" + level +
                          "\"/></w:abstractNum>";
        for (const char* id : {"1", "2", "3"})
            all +=
                "<w:num w:numId=\"" + std::string(id) + "\"><w:abstractNumId w:val=\"0\"/></w:num>";
        return all;
    };
    for (const Row& row : {Row{"one list, two ids", "113", "0", "33"},
                           Row{"its id is another list there", "121", "0", "41"},
                           Row{"no list of its form", "113", "1", "43"}}) {
        SCOPED_TRACE(row.name);
        const std::string original =
            MakePairFile({item("Zebra", row.lists[0]) + item(kLong, row.lists[1]), {}, lists("0")});
        const std::string modified =
            MakePairFile({item(kLong, row.lists[2]), {}, lists(row.level)});
        const std::string redline = RedlineOf(original, modified).bytes;
        EXPECT_EQ(LawBreach(original, modified, redline), "");
        const std::string text = PartOf(redline, "word/document.xml");
        constexpr std::string_view kId = "numId w:val=\"";
        std::string written;
        for (std::size_t at = 0; (at = text.find(kId, at)) != std::string::npos;)
            written += text[at += kId.size()];
        EXPECT_EQ(written, row.written);
    }
}

TEST(RedlineLaw, TakesTrackedInputsAsAccepted) {
    const std::string original = MakePairFile({kKept});
    const std::string modified = MakePairFile(
        {Paragraph(TextRun("Bread is ") + "<w:ins w:id=\"7\" w:author=\"a\">" + TextRun("never ") +
                   "</w:ins><w:del w:id=\"8\" w:author=\"a\"><w:r><w:delText>x</w:delText></w:r>"
                   "</w:del>" +
                   TextRun("baked on Monday in the old oven of the village."))});
    const WrittenRedline written = RedlineOf(original, modified);
    EXPECT_EQ(written.resolved_before, 2);
    EXPECT_EQ(written.counts, (RedlineCounts{1}));
    EXPECT_EQ(LawBreach(original, modified, written.bytes), "");
    WrittenRedline refused;
    RedlineRequest request;
    request.keep_tracked = true;
    EXPECT_EQ(WriteDocxRedline({original, modified}, request, nullptr, refused).error,
              ReadError::NotTracked);
}

TEST(RedlineLaw, TakesSignaturesOutThatDoNotFit) {
    const auto written = [](bool is_signed) {
        PairFile modified{kKept};
        modified.is_signed = is_signed;
        return RedlineOf(MakePairFile({kKept + kOther}), MakePairFile(modified));
    };
    const WrittenRedline redline = written(true);
    EXPECT_EQ(redline.untracked[UntrackedCount::Signatures], 1);
    EXPECT_EQ(Package::Open(redline.bytes)->Names(), Package::Open(written(false).bytes)->Names());
    EXPECT_EQ(PartOf(redline.bytes, "[Content_Types].xml").find("signature"), std::string::npos);
}

TEST(RedlineLaw, RefusesOnlyNamesThatMeanSomethingElse) {
    struct Row {
        const char* name;
        const char* address;  // what the Original declares instead
        const char* by;
        std::string content;
        bool written;
    };
    const std::string formula = Paragraph("<m:oMath/>") + kOther;
    const char* const transitional = "http://schemas.openxmlformats.org/wordprocessingml/2006/main";
    for (const Row& row : {Row{"unused", "\"m\"", "\"n\"", kOther, true},
                           Row{"used", "\"m\"", "\"n\"", formula, false},
                           Row{"the strict form", transitional,
                               "http://purl.oclc.org/ooxml/wordprocessingml/main", kOther, true}}) {
        SCOPED_TRACE(row.name);
        const std::string original =
            WithPart(MakePairFile({kKept + row.content}), "word/document.xml", row.address, row.by);
        WrittenRedline written;
        EXPECT_EQ(WriteDocxRedline({original, MakePairFile({kKept})}, {}, nullptr, written).ok(),
                  row.written);
    }
}

TEST(RedlineLaw, WritesTheSameBytesForTheSamePair) {
    const std::string original = MakePairFile({kKept});
    const std::string modified = MakePairFile({kKept + kOther});
    RedlineRequest request;
    request.author = "A & B";
    request.date = "2001-02-03T04:05:06Z";
    request.id_prefix = 42;
    const WrittenRedline first = RedlineOf(original, modified, request);
    EXPECT_EQ(first.bytes, RedlineOf(original, modified, request).bytes);
    EXPECT_NE(PartOf(first.bytes, "word/document.xml")
                  .find("w:id=\"4200001\" w:author=\"A &amp; B\" w:date=\"2001-02-03T04:05:06Z\""),
              std::string::npos);
}

}  // namespace
}  // namespace zorvane::redline_law_test
