// Redlines of OpenDocument texts: the law for each kind of change, and a check that sees faults.
#include "load/readers/container/xml_part.h"
#include "redline/odt_resolve.h"
#include "tests/redline/odt_pair.h"

namespace zorvane::odt_redline_test {
namespace {

const std::string kLong = "The committee decides about the large hall";
const std::string kTail = " and the lamp is cleaned every morning before the ferry leaves.";
const std::string kKept = OdtParagraph("Bread is baked on Monday in the old oven of the village.");
const std::string kOther = OdtParagraph("Oil lanterns are stored upright before winter begins.");
const std::string kBold = OdtStyle("T1", "text", "fo:font-weight=\"bold\"");
const std::string kItalic = OdtStyle("T1", "text", "fo:font-style=\"italic\"");
const std::string kList = "<text:list text:style-name=\"L1\"><text:list-item>";
const std::string kListEnd = "</text:list-item></text:list>";

struct OdtLaw {
    const char* name;
    OdtFile original;
    OdtFile modified;
    RedlineCounts counts;    ///< insertions, deletions, ends, rows, notes
    std::int64_t twice = 0;  ///< rows or tables that are deleted and inserted
};

std::string With(std::string text, const std::string& what, const std::string& by) {
    return text.replace(text.find(what), what.size(), by);
}
std::string Picture() {
    return OdtParagraph(
        "<draw:frame draw:name=\"a\"><draw:image xlink:href=\"Pictures/p.png\"/>"
        "</draw:frame>");
}
std::string Box(const std::string& text) {
    return "<draw:frame><draw:text-box>" + OdtParagraph(text) + "</draw:text-box></draw:frame>";
}
std::string Link(const std::string& address) {
    return OdtParagraph("See <text:a xlink:href=\"" + address + "\">the page</text:a> of it");
}

std::vector<OdtLaw> Rows() {
    const std::string rows = OdtRow({"Oak", "12"}) + OdtRow({"Elm", "7"});
    const std::string said = OdtParagraph(kLong + OdtNote("First note.") + kTail);
    return {
        {"nothing", {kKept}, {With(kKept, " is ", " <text:s text:c=\"0\"/>is\n ")}, {}},
        {"a word", {OdtParagraph(kLong)}, {OdtParagraph(With(kLong, "large", "small"))}, {1, 1}},
        {"a word of another look that one name means",
         {OdtParagraph(kLong + OdtSpan(" old", "T1") + kTail), {}, kBold},
         {OdtParagraph(kLong + OdtSpan(" now", "T1") + kTail), {}, kItalic},
         {1, 1}},
        {"blanks at the ends of what is deleted",
         {OdtParagraph("one<text:s text:c=\"3\"/>two " + OdtSpan(" three ", "T1") + "four")},
         {OdtParagraph("one four")},
         {0, 1}},
        {"a paragraph more", {kKept}, {kKept + kOther}, {1, 0, 1}},
        {"a paragraph less in front", {kOther + kKept}, {kKept}, {0, 1, 1}},
        {"all others", {kOther}, {kKept}, {1, 1}},
        {"split",
         {OdtParagraph(kLong + kTail)},
         {OdtParagraph(kLong) + OdtParagraph(kTail)},
         {1, 1, 1}},
        {"joined",
         {OdtParagraph(kLong) + OdtParagraph("and the lamp")},
         {OdtParagraph(kLong + "and the lamp")},
         {1, 2, 1}},
        {"a list's item",
         {kList + kKept + "</text:list-item><text:list-item>" + kOther + kListEnd + kKept},
         {kList + kKept + kListEnd + kKept},
         {0, 1, 1}},
        {"the only cell, wholly",
         {kKept + OdtTable(OdtRow({"Oak"}), 1) + kOther},
         {kKept + OdtTable(OdtRow({"Elm"}), 1) + kOther},
         {1, 1}},
        {"one cell", {OdtTable(rows) + kKept}, {OdtTable(With(rows, "12", "14")) + kKept}, {1, 1}},
        {"a row", {OdtTable(rows)}, {OdtTable(rows + OdtRow({"Ash", "9"}))}, {2, 0, 0, 1}},
        {"a row less, of empty cells",
         {OdtTable(OdtRow({"", ""}) + rows)},
         {OdtTable(rows)},
         {0, 2, 0, 1}},
        {"a column", {OdtTable(rows)}, {OdtTable(OdtRow({"Oak", "1", "2"}), 3)}, {3, 4, 0, 3}, 1},
        {"cells that are merged now",
         {OdtTable(rows)},
         {OdtTable(With(rows, "-cell>", "-cell table:number-rows-spanned=\"2\">"))},
         {2, 2, 0, 2},
         1},
        {"a table less in front", {OdtTable(rows) + kKept}, {kKept}, {0, 4, 0, 2}},
        {"a table less in what is one list now",
         {kList + kKept + kListEnd + OdtTable(rows) + kList + "\n" + kOther + kListEnd},
         {kList + kKept + "</text:list-item><text:list-item>\n" + kOther + kListEnd},
         {0, 4, 0, 2}},
        {"a table more at the end", {kKept}, {kKept + OdtTable(rows)}, {4, 0, 0, 2}},
        {"a table less between paragraphs that go",
         {kOther + OdtTable(rows) + kOther + kKept},
         {kKept},
         {0, 1, 2}},
        {"a note's text", {said}, {With(said, "First", "Other")}, {1, 1, 0, 0, 1}},
        {"a note less", {said}, {OdtParagraph(kLong + kTail)}, {0, 1}},
        {"in a text box",
         {OdtParagraph(kLong + Box(kTail))},
         {OdtParagraph(kLong + Box(With(kTail, "lamp", "tide")))},
         {1, 1}},
        {"a picture of the same name",
         {Picture() + kKept, {}, {}, "old"},
         {Picture() + kKept, {}, {}, "new"},
         {1, 1}},
        {"a link's target", {Link("http://a.b/")}, {Link("http://c.d/")}, {1, 1}},
        {"a header's text", {kKept, kOther}, {kKept, With(kOther, "Oil", "New")}, {1, 1}},
        {"a header less", {kKept, kOther}, {kKept}, {0, 1}},
        {"a header more", {kKept}, {kKept, kOther}, {1}},
    };
}

TEST(OdtRedline, GivesBothDocumentsBackAndMarksLittle) {
    for (const OdtLaw& row : Rows()) {
        SCOPED_TRACE(row.name);
        const std::string original = MakeOdtFile(row.original);
        const std::string modified = MakeOdtFile(row.modified);
        const WrittenRedline written = OdtRedlineOf(original, modified);
        EXPECT_EQ(OdtLawBreach(original, modified, written), "")
            << PartOf(written.bytes, "content.xml");
        EXPECT_EQ(written.counts.insertions, row.counts.insertions);
        EXPECT_EQ(written.counts.deletions, row.counts.deletions);
        EXPECT_EQ(written.counts.paragraph_marks, row.counts.paragraph_marks);
        EXPECT_EQ(written.counts.rows, row.counts.rows);
        EXPECT_EQ(written.counts.notes, row.counts.notes);
        EXPECT_EQ(written.untracked[UntrackedCount::RowsTwice] +
                      written.untracked[UntrackedCount::TablesTwice],
                  row.twice);
    }
}

// Each of these stood in files that a faulty writer made.
TEST(OdtRedline, IsRefusedByTheCheckWhereItIsBroken) {
    const std::string rows = OdtRow({"Oak", "12"}) + OdtRow({"Elm", "7"});
    const std::string tail = kTail + "<text:bookmark-ref text:ref-name=\"a\">1</text:bookmark-ref>";
    const std::string original = MakeOdtFile(
        {OdtParagraph(kLong + OdtSpan(" old", "T1") + OdtNote("First.") + tail) + kOther + kKept +
             OdtTable(rows + OdtRow({"Ash", "9"})) + Picture() + Link("http://a.b/"),
         kOther, kBold, "old"});
    const std::string modified =
        MakeOdtFile({OdtParagraph(kLong + OdtSpan(" now", "T1") + OdtNote("Other.") + tail) +
                         kKept + OdtTable(rows) + kOther + Picture() + Link("http://c.d/"),
                     kKept, kItalic, "new"});
    const WrittenRedline written = OdtRedlineOf(original, modified);
    ASSERT_EQ(OdtLawBreach(original, modified, written), "")
        << PartOf(written.bytes, "content.xml");
    struct Sabotage {
        const char* part;
        const char* what;
        const char* by;
    };
    for (const Sabotage& row : {
             Sabotage{"content.xml", "old", "odd"},
             {"content.xml", "now", "new"},
             {"content.xml", "First", "Second"},
             {"content.xml", "Ash", ""},
             {"content.xml", "<text:change ", "<text:s "},
             {"content.xml", "<text:change-end ", "<text:s "},
             {"content.xml", "text:id=\"ct2\"", "text:id=\"ct1\""},
             {"content.xml", "xml:id=\"ct2\"", "xml:id=\"ct1\""},
             {"content.xml", "<text:change-start ", "<text:change-end "},
             {"content.xml", "<dc:creator>Zorvane</dc:creator>", ""},
             {"content.xml", "text:ref-name=\"a\"", "text:ref-name=\"b\""},
             {"content.xml", "text:style-name=\"T1Original\"", "text:style-name=\"T1\""},
             {"content.xml", "text:style-name=\"T1Original\"", "text:style-name=\"T9\""},
             {"content.xml", "text-changes-only=\"false\"", "text-changes-only=\"true\""},
             {"content.xml", "http://a.b/", "http://a.c/"},
             {"content.xml", "http://c.d/", "http://c.e/"},
             {"content.xml", "Pictures/pOriginal2.png", "Pictures/p.png"},
             {"content.xml", "</office:text>", "</office:test>"},
             {"styles.xml", "Oil", "Old"},
             {"styles.xml", "Bread", "Broad"},
             {"META-INF/manifest.xml", "Pictures/pOriginal2.png", "Pictures/q.png"},
             {"Pictures/p.png", "new", "old"},
         }) {
        SCOPED_TRACE(row.what);
        WrittenRedline broken = written;
        broken.bytes = WithPart(written.bytes, row.part, row.what, row.by);
        const std::string breach = OdtLawBreach(original, modified, broken);
        EXPECT_NE(breach, "");
    }
}

TEST(OdtRedline, TakesSignaturesOutThatDoNotFit) {
    const std::string original = MakeOdtFile({kKept + kOther});
    OdtFile modified{kKept};
    const std::string unsigned_bytes = OdtRedlineOf(original, MakeOdtFile(modified)).bytes;
    modified.signatures = "<list><ds:Signature/><ds:Signature/></list>";
    const WrittenRedline written = OdtRedlineOf(original, MakeOdtFile(modified));
    EXPECT_EQ(written.bytes, unsigned_bytes);
    EXPECT_EQ(written.untracked[UntrackedCount::Signatures], 2);
}

TEST(OdtRedline, TakesTrackedInputsAsAccepted) {
    const std::string tracked = MakeOdtFile(
        {"<text:tracked-changes><text:changed-region xml:id=\"ct1\"><text:deletion><text:p>gone "
         "</text:p></text:deletion></text:changed-region><text:changed-region xml:id=\"ct2\">"
         "<text:insertion/></text:changed-region></text:tracked-changes>" +
         OdtParagraph("<text:change text:change-id=\"ct1\"/>Oil <text:change-start "
                      "text:change-id=\"ct2\"/>lamps<text:change-end text:change-id=\"ct2\"/>")});
    const std::string modified = MakeOdtFile({OdtParagraph("Oil lanterns")});
    const WrittenRedline written = OdtRedlineOf(tracked, modified);
    EXPECT_EQ(written.resolved_before, 2);
    EXPECT_EQ(OdtLawBreach(tracked, modified, written), "");
    EXPECT_EQ(PartOf(written.bytes, "content.xml").find("gone"), std::string::npos);
}

}  // namespace
}  // namespace zorvane::odt_redline_test
