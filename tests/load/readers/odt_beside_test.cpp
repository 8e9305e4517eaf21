#include <string>

#include <gtest/gtest.h>

#include "compare/document/beside_compare.h"
#include "load/readers/word_readers.h"
#include "tests/support/shown_beside.h"
#include "tests/support/zip_file.h"

namespace zorvane::odt_beside_test {
namespace {

struct Parts {
    std::string body;
    std::string picture = "one";
    std::string chart = "<chart:chart><text:p>12</text:p></chart:chart>";
    std::string formula = "<msup><mi>x</mi><mn>2</mn></msup>";
    std::string title = "Plan";
};

std::vector<BesideItem> ItemsOf(const Parts& parts) {
    const std::string bytes = MakeZip(
        {{"content.xml",
          "<office:document-content><office:automatic-styles><style:style style:name=\"H\" "
          "style:family=\"text\"><style:text-properties text:display=\"none\"/></style:style>"
          "</office:automatic-styles><office:body><office:text>" +
              parts.body + "</office:text></office:body></office:document-content>"},
         {"meta.xml", "<office:document-meta><office:meta><dc:title>" + parts.title +
                          "</dc:title><meta:initial-creator>Ann</meta:initial-creator>"
                          "<dc:creator>Bob</dc:creator><dc:date>2020</dc:date>"
                          "<meta:user-defined meta:name=\"Client\">C</meta:user-defined>"
                          "</office:meta></office:document-meta>"},
         {"Pictures/one.png", parts.picture},
         {"Object 1/content.xml", "<office:document-content><office:body><office:chart>" +
                                      parts.chart +
                                      "</office:chart></office:body>"
                                      "</office:document-content>"},
         {"Object 2/content.xml", "<math>" + parts.formula + "</math>"}});
    const auto package = Package::Open(bytes);
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadOpenDocument(*package, sink, monitor);
    });
}

std::string P(std::string_view content) {
    return "<text:p>" + std::string(content) + "</text:p>";
}

constexpr std::string_view kPicture =
    "<draw:frame draw:name=\"i\"><draw:image xlink:href=\"Pictures/one.png\"/></draw:frame>";
constexpr std::string_view kChart =
    "<draw:frame><draw:object xlink:href=\"./Object 1\"/><draw:image xlink:href=\"r\"/>"
    "</draw:frame>";
constexpr std::string_view kFormula =
    "<draw:frame><draw:object xlink:href=\"./Object 2\"/></draw:frame>";

struct Row {
    const char* name;
    std::string body;
    std::string_view shown;
};

TEST(OdtBeside, TellsEachThingAtItsParagraph) {
    const std::string picture(kPicture);
    const Row rows[] = {
        {"nothing but words", P("a"), ""},
        {"links", P("a") + P("<text:a xlink:href=\"http://x/\">b</text:a>"), "links 2 http://x/; "},
        {"a picture at its paragraph, not behind it", P("a" + picture) + P("b"),
         "pictures 1 one.png; "},
        {"a picture at the page", picture + P("a"), "pictures 1 one.png; "},
        {"a picture in a text box is the box's own",
         P("a<draw:frame><draw:text-box>" + P("b" + picture) + "</draw:text-box></draw:frame>") +
             P("c"),
         "pictures 2 one.png; "},
        {"in a table's row, which is one paragraph",
         P("a") + "<table:table><table:table-row><table:table-cell>" + P("x") + P(picture) +
             "</table:table-cell></table:table-row></table:table>",
         "pictures 2 one.png; "},
        {"a chart without its likeness and a formula",
         P(std::string(kChart)) + P(std::string(kFormula)), "charts 1 chart; formulas 2 x^2; "},
        {"a shape by its words, none for one that shows text",
         P("<draw:rect svg:width=\"1cm\"><svg:desc>Box</svg:desc></draw:rect><draw:rect>" +
           P("text") + "</draw:rect>"),
         "drawings 1 Box; "},
        {"a comment",
         P("a<office:annotation><dc:creator>Ann</dc:creator><dc:date>2020</dc:date>" + P("why?") +
           "</office:annotation>b"),
         "comments 1 Ann: why?; "},
        {"tracked changes at their places",
         "<text:tracked-changes><text:changed-region text:id=\"c1\"><text:deletion>"
         "<office:change-info><dc:creator>A</dc:creator></office:change-info>" +
             P("gone") +
             "</text:deletion></text:changed-region><text:changed-region text:id=\"c2\">"
             "<text:insertion/></text:changed-region></text:tracked-changes>" +
             P("a") +
             P("<text:change text:change-id=\"c1\"/>b<text:change-start "
               "text:change-id=\"c2\"/>c<text:change-end text:change-id=\"c2\"/>"),
         "tracked 2 deleted: gone; tracked 2 inserted; "},
        {"hidden text by its style, hidden sections and rows",
         P("a<text:span text:style-name=\"H\">b</text:span>") +
             "<text:section text:display=\"none\">" + P("c") +
             "</text:section><table:table><table:table-row table:visibility=\"collapse\">"
             "<table:table-cell>" +
             P("d") + "</table:table-cell></table:table-row></table:table>",
         "hidden 1 b; hidden 1 section: c; hidden 1 row: d; "},
        {"fields, not by what they show",
         P("<text:page-number>3</text:page-number><text:user-field-get text:name=\"n\">v"
           "</text:user-field-get>"),
         "fields 1 page-number; fields 1 user-field-get n; "},
        {"in a note",
         P("a<text:note><text:note-body>" + P("<text:a xlink:href=\"http://n/\">b</text:a>") +
           "</text:note-body></text:note>"),
         "links 1 http://n/; "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Parts parts;
        parts.body = row.body;
        const std::string items = ShownItems(ItemsOf(parts));
        constexpr std::string_view kOwn =
            "metadata 0 title: Plan; metadata 0 author: Ann; metadata 0 Client: C; ";
        ASSERT_EQ(items.substr(0, kOwn.size()), kOwn);
        std::string shown = items.substr(kOwn.size());
        // What stands behind the last paragraph is numbered as the next one.
        for (std::size_t at = shown.find("hidden 2 "); at != std::string::npos;
             at = shown.find("hidden 2 "))
            shown.replace(at, 9, "hidden 1 ");
        EXPECT_EQ(shown, row.shown);
    }
}

TEST(OdtBeside, SeesEachThingThatChangesAndNothingElse) {
    Parts parts;
    parts.body =
        P("a" + std::string(kPicture)) + P(std::string(kChart)) + P(std::string(kFormula) + "b");
    const auto told = [&](const Parts& other) {
        return BesideSentence(CompareBeside(ItemsOf(parts), ItemsOf(other), {1, 2, 3}));
    };
    CheckChanges(
        parts, told,
        {{&Parts::picture, "two", "1 picture replaced (paragraph 1)."},
         {&Parts::chart, "<chart:chart><text:p>13</text:p></chart:chart>",
          "1 chart replaced (paragraph 2)."},
         {&Parts::formula, "<msub><mi>x</mi><mn>2</mn></msub>", "1 formula changed (paragraph 3)."},
         {&Parts::title, "Plans", "1 document property changed (title)."}});
}

}  // namespace
}  // namespace zorvane::odt_beside_test
