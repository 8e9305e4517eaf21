// What workbooks of both kinds hold beside the text of their cells.
#include "load/readers/beside/sheet_beside.h"

#include <string>

#include <gtest/gtest.h>

#include "compare/document/beside_compare.h"
#include "tests/support/shown_beside.h"
#include "tests/support/zip_file.h"

namespace zorvane::sheet_beside_test {
namespace {

std::vector<BesideItem> ItemsOf(const std::string& bytes,
                                const std::vector<std::size_t>& chosen = {0}) {
    std::unique_ptr<Workbook> book;
    EXPECT_TRUE(OpenWorkbook(bytes, "", book).ok());
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReportSheetBeside(bytes, "", *book, chosen, sink, monitor);
    });
}

struct Parts {
    std::string comments = "<comment ref=\"B3\"><text><r><t>check</t></r></text></comment>";
    std::string target = "http://x/";
    std::string picture = "one";
    std::string chart = "<c:chart><c:v>1</c:v></c:chart>";
    std::string hidden = "7";
    std::string title = "Plan";
};

std::string MakeBook(const Parts& parts) {
    const auto relations = [](std::string_view all) {
        return "<Relationships>" + std::string(all) + "</Relationships>";
    };
    const auto relation = [](std::string_view id, std::string_view type, std::string_view target,
                             std::string_view more = "") {
        return "<Relationship Id=\"" + std::string(id) + "\" Type=\"x/" + std::string(type) +
               "\" Target=\"" + std::string(target) + "\" " + std::string(more) + "/>";
    };
    return MakeZip(ZipParts{
        {"_rels/.rels", relations(relation("r", "officeDocument", "xl/workbook.xml"))},
        {"xl/workbook.xml",
         "<workbook><sheets><sheet name=\"A\" r:id=\"r1\"/><sheet name=\"H\" state=\"hidden\" "
         "r:id=\"r2\"/></sheets></workbook>"},
        {"xl/_rels/workbook.xml.rels",
         relations(relation("r1", "worksheet", "a.xml") + relation("r2", "worksheet", "b.xml"))},
        {"xl/a.xml",
         "<worksheet><sheetData><row r=\"1\"><c r=\"A1\"><v>1</v></c></row></sheetData>"
         "<hyperlinks><hyperlink ref=\"A1\" r:id=\"r1\" location=\"p&amp;q\"/></hyperlinks>"
         "</worksheet>"},
        {"xl/b.xml", "<worksheet><sheetData><row><c><v>" + parts.hidden +
                         "</v></c></row></sheetData></worksheet>"},
        {"xl/_rels/a.xml.rels",
         relations(relation("r1", "hyperlink", parts.target, "TargetMode=\"External\"") +
                   relation("r2", "comments", "comments1.xml") +
                   relation("r3", "drawing", "drawings/d.xml"))},
        {"xl/comments1.xml",
         "<comments><commentList>" + parts.comments + "</commentList></comments>"},
        {"xl/drawings/d.xml",
         "<xdr:wsDr><mc:AlternateContent><mc:Choice Requires=\"a14\"><xdr:twoCellAnchor>"
         "<xdr:from><xdr:col>27</xdr:col><xdr:row>4</xdr:row>"
         "</xdr:from><xdr:pic><a:blip r:embed=\"r1\"/></xdr:pic></xdr:twoCellAnchor>"
         "</mc:Choice><mc:Fallback/></mc:AlternateContent>"
         "<xdr:twoCellAnchor><xdr:from><xdr:col>0</xdr:col><xdr:row>0</xdr:row></xdr:from>"
         "<mc:AlternateContent><mc:Choice Requires=\"cx1\"><xdr:graphicFrame><c:chart r:id=\"r2\"/>"
         "</xdr:graphicFrame></mc:Choice><mc:Fallback><xdr:sp/></mc:Fallback></mc:AlternateContent>"
         "</xdr:twoCellAnchor>"
         "<xdr:absoluteAnchor><xdr:sp><xdr:txBody><a:p><a:t>note</a:t></a:p></xdr:txBody></xdr:sp>"
         "</xdr:absoluteAnchor></xdr:wsDr>"},
        {"xl/drawings/_rels/d.xml.rels", relations(relation("r1", "image", "../media/i.png") +
                                                   relation("r2", "chart", "../charts/c.xml"))},
        {"xl/media/i.png", parts.picture},
        {"xl/charts/c.xml", parts.chart},
        {"docProps/core.xml", "<p><dc:title>" + parts.title + "</dc:title></p>"}});
}

TEST(SheetBeside, TellsEachThingWithItsCell) {
    EXPECT_EQ(ShownItems(ItemsOf(MakeBook({}))),
              "metadata 0 title: Plan; comments 0 A!B3: check; pictures 0 A!AB5: i.png; charts 0 "
              "A!A1: c.xml; drawings 0 A: note; links 0 A!A1: http://x/#p&q; hidden 0 H: hidden "
              "sheet; ");
    EXPECT_EQ(ShownItems(ItemsOf(MakeBook({}), {1})), "metadata 0 title: Plan; ")
        << "of the sheets that are compared only";
}

TEST(SheetBeside, SeesEachThingThatChangesAndNothingElse) {
    const auto told = [](const Parts& other) {
        return BesideSentence(CompareBeside(ItemsOf(MakeBook({})), ItemsOf(MakeBook(other)), {}));
    };
    CheckChanges(Parts{}, told,
                 {{&Parts::comments, "<comment ref=\"B3\"><text><t>done</t></text></comment>",
                   "1 comment changed (A!B3)."},
                  {&Parts::comments, "<comment ref=\"B4\"><text><t>check</t></text></comment>", ""},
                  {&Parts::comments, "", "1 comment removed (A!B3)."},
                  {&Parts::target, "http://y/", "1 link target changed (A!A1)."},
                  {&Parts::picture, "two", "1 picture replaced (A!AB5)."},
                  {&Parts::chart, "<c:chart><c:v>2</c:v></c:chart>", "1 chart replaced (A!A1)."},
                  {&Parts::hidden, "8", "1 hidden text changed (H)."},
                  {&Parts::title, "Plans", "1 document property changed (title)."}});
}

std::string MakeOpenBook(std::string_view rows) {
    return MakeZip(ZipParts{
        {"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
        {"content.xml",
         "<office:document-content><office:body><office:spreadsheet><table:table "
         "table:name=\"S\">" +
             std::string(rows) +
             "</table:table><table:table table:name=\"T\"><table:table-row><table:table-cell>"
             "<office:annotation><text:p>other</text:p></office:annotation></table:table-cell>"
             "</table:table-row></table:table></office:spreadsheet></office:body>"
             "</office:document-content>"},
        {"Pictures/a.png", "one"},
        {"Object 1/content.xml", "<c><text:p>1</text:p></c>"}});
}

TEST(SheetBeside, OpenDocumentTellsTheSame) {
    EXPECT_EQ(
        ShownItems(ItemsOf(MakeOpenBook(
            "<table:table-row table:number-rows-repeated=\"2\"><table:table-cell/>"
            "</table:table-row><table:table-row><table:table-cell "
            "table:number-columns-repeated=\"3\"/><table:table-cell><office:annotation><text:p>"
            "check</text:p></office:annotation><text:p>x<text:a xlink:href=\"http://x/?a&amp;b\">y"
            "</text:a></text:p></table:table-cell><table:covered-table-cell/><table:table-cell>"
            "<draw:frame><draw:object xlink:href=\"./Object 1\"/><draw:image "
            "xlink:href=\"./ObjectReplacements/Object 1\"/></draw:frame><draw:frame><draw:image "
            "xlink:href=\"Pictures/a.png\"/></draw:frame></table:table-cell></table:table-row>"))),
        "comments 0 S!D3: check; links 0 S!D3: http://x/?a&b; charts 0 S!F3: Object 1; pictures 0 "
        "S!F3: a.png; ");
}

}  // namespace
}  // namespace zorvane::sheet_beside_test
