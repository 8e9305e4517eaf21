// What the slides of both kinds of decks hold beside their words.
#include <string>

#include <gtest/gtest.h>

#include "compare/document/beside_compare.h"
#include "load/readers/slides/slide_reader.h"
#include "tests/support/deck_file.h"
#include "tests/support/shown_beside.h"

namespace zorvane::slide_beside_test {
namespace {

struct Parts {
    std::string picture = "one";
    std::string target = "http://x/";
    std::string notes = "say this";
    std::string comment = "why?";
};

constexpr std::string_view kWords =
    "<p:sp><p:txBody><a:p><a:r><a:t>words</a:t></a:r></a:p></p:txBody></p:sp>";

std::string MakeDeck(const Parts& parts) {
    Deck deck;
    deck.AddSlide(std::string(kWords));
    deck.AddSlide(
        std::string(kWords) +
            "<p:pic><p:nvPicPr><p:cNvPr id=\"4\" descr=\"Logo\"/></p:nvPicPr><p:blipFill><a:blip "
            "r:embed=\"r1\"/></p:blipFill></p:pic><p:sp><p:spPr><a:prstGeom prst=\"star5\"/>"
            "</p:spPr></p:sp><p:sp><p:nvSpPr><p:nvPr><p:ph/></p:nvPr></p:nvSpPr></p:sp><p:sp>"
            "<p:txBody><a:p><a:r><a:rPr><a:hlinkClick r:id=\"r2\"/></a:rPr><a:t>link</a:t></a:r>"
            "</a:p></p:txBody></p:sp><p:graphicFrame><p:oleObj progId=\"Sheet\" r:id=\"r3\">"
            "<p:pic><a:blip r:embed=\"r1\"/></p:pic></p:oleObj></p:graphicFrame>",
        Deck::Relation("r1", "image", "../media/a.png") +
            "<Relationship Id=\"r2\" Type=\"http://x/hyperlink\" TargetMode=\"External\" "
            "Target=\"" +
            parts.target + "\"/>" + Deck::Relation("r3", "package", "../embeddings/b.xlsx") +
            Deck::Relation("r4", "comments", "../comments/c.xml") +
            Deck::Relation("r5", "notesSlide", "../notesSlides/n.xml"));
    deck.AddSlide(
        "<mc:AlternateContent><mc:Choice Requires=\"p14\"><p:contentPart/></mc:Choice>"
        "<mc:Fallback><p:pic><p:blipFill><a:blip r:embed=\"r1\"/></p:blipFill></p:pic>"
        "</mc:Fallback></mc:AlternateContent>",
        Deck::Relation("r1", "image", "../media/scan.png"));
    deck.Add("ppt/media/a.png", parts.picture);
    deck.Add("ppt/media/scan.png", parts.picture + " scanned");
    deck.Add("ppt/embeddings/b.xlsx", "book");
    deck.Add("ppt/comments/c.xml",
             "<p:cmLst><p:cm><p:text>" + parts.comment + "</p:text></p:cm></p:cmLst>");
    deck.Add("ppt/notesSlides/n.xml",
             "<p:notes><p:cSld><p:spTree><p:sp><p:nvSpPr><p:nvPr><p:ph type=\"body\"/></p:nvPr>"
             "</p:nvSpPr><p:txBody><a:p><a:r><a:t>" +
                 parts.notes +
                 "</a:t></a:r></a:p></p:txBody></p:sp></p:spTree></p:cSld></p:notes>");
    return deck.Finish();
}

std::vector<BesideItem> ItemsOf(const Parts& parts, const SlideOptions& options = {}) {
    const std::string bytes = MakeDeck(parts);
    const auto package = Package::Open(bytes);
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadSlides(*package, options, sink, monitor);
    });
}

TEST(SlideBeside, TellsEachThingWithItsSlide) {
    constexpr std::string_view kSecond =
        "pictures 0 slide 2: Logo; drawings 0 slide 2: star5; links 0 slide 2: http://x/; objects "
        "0 slide 2: Sheet; comments 0 slide 2: why?; ";
    constexpr std::string_view kThird = "pictures 0 slide 3: scan.png; pages 0 slide 3: picture; ";
    EXPECT_EQ(ShownItems(ItemsOf({})),
              std::string(kSecond) + "hidden 0 slide 2: notes: say this; " + std::string(kThird));
    SlideOptions options;
    options.notes = true;
    EXPECT_EQ(ShownItems(ItemsOf({}, options)), std::string(kSecond) + std::string(kThird));
    options.first = options.last = 1;
    EXPECT_EQ(ShownItems(ItemsOf({}, options)), "");
}

TEST(SlideBeside, SeesEachThingThatChangesAndNothingElse) {
    const auto told = [&](const Parts& other) {
        return BesideSentence(CompareBeside(ItemsOf({}), ItemsOf(other), {}));
    };
    CheckChanges(
        Parts{}, told,
        {{&Parts::picture, "two",
          "2 pictures replaced (slide 2, slide 3), 1 page without text replaced (slide 3)."},
         {&Parts::target, "http://y/", "1 link target changed (slide 2)."},
         {&Parts::comment, "because", "1 comment changed (slide 2)."},
         {&Parts::notes, "say that", "1 hidden text changed (slide 2)."}});
}

TEST(SlideBeside, TellsOnceWhatLayoutAndMasterShow) {
    const auto shown = [](bool hides_master) {
        Deck deck;
        const std::string attributes = hides_master ? "showMasterSp=\"0\"" : "";
        deck.AddSlide(std::string(kWords), "", attributes);
        deck.AddSlide(std::string(kWords), "", attributes);
        deck.layout_shapes = "<p:pic><p:blipFill><a:blip r:embed=\"r1\"/></p:blipFill></p:pic>";
        deck.master_shapes =
            "<p:sp><p:spPr><a:prstGeom prst=\"star5\"/></p:spPr></p:sp>"
            "<p:sp><p:nvSpPr><p:nvPr><p:ph/></p:nvPr></p:nvSpPr></p:sp>";
        const std::string bytes = deck.Finish();
        const auto package = Package::Open(bytes);
        return ShownItems(BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
            return ReadSlides(*package, {}, sink, monitor);
        }));
    };
    EXPECT_EQ(shown(false),
              "pictures 0 behind the slides: master.xml; drawings 0 behind the slides: star5; ");
    EXPECT_EQ(shown(true), "");
}

std::vector<BesideItem> OpenItems(const std::string& page, std::string_view picture = "one") {
    const std::string bytes = MakeZip(ZipParts{
        {"content.xml", "<office:document-content><office:body><office:presentation><draw:page/>" +
                            page +
                            "</office:presentation></office:body></office:document-content>"},
        {"styles.xml",
         "<office:document-styles><office:master-styles><style:master-page style:name=\"M\">"
         "<draw:frame><draw:image xlink:href=\"Pictures/a.png\"/></draw:frame><draw:frame "
         "presentation:class=\"title\"><draw:text-box/></draw:frame><presentation:notes>"
         "<draw:circle/></presentation:notes></style:master-page></office:master-styles>"
         "</office:document-styles>"},
        {"Pictures/a.png", std::string(picture)},
        {"meta.xml", "<m><office:meta><dc:title>Talk</dc:title></office:meta></m>"}});
    const auto package = Package::Open(bytes);
    return BesideItemsOf([&](DocumentSink& sink, ReadMonitor& monitor) {
        return ReadOpenDocumentSlides(*package, {}, sink, monitor);
    });
}

TEST(SlideBeside, OpenDocumentTellsTheSame) {
    const std::string page =
        "<draw:page><draw:frame><draw:image xlink:href=\"Pictures/a.png\"/></draw:frame>"
        "<draw:g><draw:frame><draw:text-box><text:p>a<text:a xlink:href=\"http://x/\">b</text:a>"
        "</text:p></draw:text-box></draw:frame><draw:circle><svg:title>Dot</svg:title>"
        "</draw:circle></draw:g><presentation:notes><draw:frame presentation:class=\"notes\">"
        "<draw:text-box><text:p>say</text:p></draw:text-box></draw:frame></presentation:notes>"
        "</draw:page>";
    EXPECT_EQ(ShownItems(OpenItems(page)),
              "metadata 0 title: Talk; pictures 0 slide 2: a.png; drawings 0 slide 2: Dot; links 0 "
              "slide 2: http://x/; hidden 0 slide 2: notes: say; ");
    EXPECT_EQ(BesideSentence(CompareBeside(OpenItems(page), OpenItems(page, "two"), {})),
              "Beside the words: 1 picture replaced (slide 2).");
    const std::string two = "<draw:page draw:master-page-name=\"M\"/>";
    EXPECT_EQ(ShownItems(OpenItems(two + two)),
              "metadata 0 title: Talk; pictures 0 behind the slides: a.png; ");
}

}  // namespace
}  // namespace zorvane::slide_beside_test
