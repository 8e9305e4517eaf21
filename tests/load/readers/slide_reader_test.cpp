#include "load/readers/slides/slide_reader.h"

#include <random>

#include <gtest/gtest.h>

#include "tests/support/deck_file.h"
#include "tests/support/slide_reading.h"

namespace zorvane::slide_reader_test {
namespace {

std::string OneSlide(const std::string& shapes, const SlideOptions& options = {}) {
    Deck deck;
    deck.AddSlide(shapes);
    return SlideText(ReadSlides, deck.Finish(), options);
}

std::string Body(const std::string& paragraphs) {
    return Deck::Shape("type=\"body\" idx=\"1\"", paragraphs);
}

std::string Group(const std::string& transform, const std::string& shapes) {
    return "<p:grpSp><p:nvGrpSpPr><p:cNvPr id=\"3\" name=\"\"/></p:nvGrpSpPr><p:grpSpPr><a:xfrm>" +
           transform + "</a:xfrm></p:grpSpPr>" + shapes + "</p:grpSp>";
}

struct SlideRow {
    const char* name;
    std::string shapes;
    const char* text;
};

TEST(SlideReader, ReadsShapesInReadingOrder) {
    const std::string title = Deck::Shape("type=\"title\"", Deck::Paragraph("title"), 0, 9000000);
    const std::string plain = "<a:off x=\"0\" y=\"0\"/><a:ext cx=\"1\" cy=\"1\"/>";
    const SlideRow rows[] = {
        {"title before all", Deck::Text("free") + title, "title\nfree\n"},
        {"margins last",
         Deck::Shape("type=\"ftr\" idx=\"3\"", Deck::Paragraph("foot"), 0, 0) +
             Deck::Text("free", 0, 5000000) + title,
         "title\nfree\nfoot\n"},
        {"several titles are headings",
         Deck::Shape("type=\"title\"", Deck::Paragraph("second"), 0, 9000000) +
             Deck::Text("text", 0, 5000000) +
             Deck::Shape("type=\"title\"", Deck::Paragraph("first")),
         "first\ntext\nsecond\n"},
        {"rows from the top, in a row from the left",
         Deck::Text("right", 5000000, 3000100) + Deck::Text("below", 0, 6000000) +
             Deck::Text("left", 0, 3000000) + Deck::Text("top", 5000000, 0),
         "top\nleft\nright\nbelow\n"},
        {"columns of headings over their text",
         Deck::Text("h2", 4000000, 0) + Deck::Text("h1", 0, 0) + Deck::Text("t1", 0, 1000000) +
             Deck::Text("t2", 4000000, 1000000),
         "h1\nt1\nh2\nt2\n"},
        {"two rows of cards, each a heading over its text",
         Deck::Text("t4", 8000000, 5000000) + Deck::Text("h1", 0, 0) +
             Deck::Text("t1", 0, 1000000) + Deck::Text("h2", 8000000, 0) +
             Deck::Text("t2", 8000000, 1000000) + Deck::Text("h3", 0, 4000000) +
             Deck::Text("h4", 8000000, 4000000) + Deck::Text("t3", 0, 5000000),
         "h1\nt1\nh2\nt2\nh3\nt3\nh4\nt4\n"},
        {"overlapping shapes by rows",
         Deck::Text("c", 100000, 700000) + Deck::Text("b", 400000, 100000) +
             Deck::Text("a", 0, 200000),
         "a\nb\nc\n"},
        {"same place keeps the order of the file", Deck::Text("1") + Deck::Text("2"), "1\n2\n"},
        {"a group is one",
         Deck::Text("between", 0, 1000000) +
             Group(plain, Deck::Text("low", 0, 9000000) + Deck::Text("high", 0, 0)) +
             Deck::Text("last", 0, 9900000),
         "high\nlow\nbetween\nlast\n"},
        {"a group's scale counts for its rows",
         Group("<a:off x=\"0\" y=\"0\"/><a:ext cx=\"1000000\" cy=\"1000000\"/><a:chOff x=\"0\" "
               "y=\"0\"/><a:chExt cx=\"10\" cy=\"10\"/>",
               Deck::Text("low", 0, 9) + Deck::Text("high", 5, 0)),
         "high\nlow\n"},
        {"a hidden shape is not seen",
         "<p:sp><p:nvSpPr><p:cNvPr id=\"1\" hidden=\"1\"/></p:nvSpPr><p:txBody>" +
             Deck::Paragraph("x") + "</p:txBody></p:sp>" + Deck::Text("y"),
         "y\n"},
        {"first choice understood, no second branch",
         "<mc:AlternateContent><mc:Choice Requires=\"zz\">" + Deck::Text("no") +
             "</mc:Choice><mc:Choice Requires=\"a14 p15\">" + Deck::Text("yes") +
             "</mc:Choice><mc:Fallback>" + Deck::Text("old") +
             "</mc:Fallback></mc:AlternateContent>",
         "yes\n"},
        {"fallback for what is not understood",
         "<mc:AlternateContent><mc:Choice Requires=\"a14 zz\">" + Deck::Text("no") +
             "</mc:Choice><mc:Fallback>" + Deck::Text("old") +
             "</mc:Fallback></mc:AlternateContent>",
         "old\n"},
        {"an empty placeholder shows nothing", title + Deck::Shape("idx=\"1\"", "<a:p/><a:p/>"),
         "title\n"},
        {"nothing", "", ""},
    };
    for (const SlideRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(OneSlide(row.shapes), row.text);
    }
}

TEST(SlideReader, PlaceholdersLieWhereTheirLayoutSays) {
    Deck deck;
    deck.layout_shapes = Deck::Shape("type=\"body\" idx=\"4\"", "<a:p/>", 0, 5000000);
    deck.master_shapes = Deck::Shape("type=\"body\" idx=\"1\"", "<a:p/>", 0, 0);
    deck.AddSlide("<p:sp><p:nvSpPr><p:nvPr><p:ph idx=\"4\"/></p:nvPr></p:nvSpPr><p:txBody>" +
                  Deck::Paragraph("body") + "</p:txBody></p:sp>" + Deck::Text("above", 0, 2000000));
    EXPECT_EQ(SlideText(ReadSlides, deck.Finish()), "above\n*\tbody\n");
}

TEST(SlideReader, ReadsTextBodies) {
    const std::string number = "<a:pPr><a:buAutoNum type=\"arabicPeriod\"/></a:pPr>";
    const std::string none = "<a:pPr><a:buNone/></a:pPr>";
    const std::string level = "<a:pPr lvl=\"1\"/>";
    const auto p = [](const std::string& text, const std::string& properties = "") {
        return Deck::Paragraph(text, properties);
    };
    const SlideRow rows[] = {
        {"runs, break, field, tab",
         Deck::Shape("",
                     "<a:p><a:r><a:t>a\tb</a:t></a:r><a:br/><a:fld type=\"datetime1\"><a:t>1 "
                     "May</a:t></a:fld><a:endParaRPr/></a:p>"),
         "a\tb\n1 May\n"},
        {"a blank alone in a run is kept",
         Deck::Shape("",
                     "<a:p><a:r><a:t>a</a:t></a:r><a:r><a:t> </a:t></a:r><a:r><a:t>b</a:t>"
                     "</a:r></a:p>"),
         "a b\n"},
        {"line ends and marks in the text do no harm",
         Deck::Text("a\nb\x07"
                    "c"),
         "a bc\n"},
        {"bullets by level, none where told", Body(p("a") + p("b", level) + p("c", none)),
         "*\ta\n-\tb\nc\n"},
        {"slide number is the true one",
         Deck::Shape("type=\"sldNum\"",
                     "<a:p><a:fld type=\"slidenum\"><a:t>99</a:t></a:fld></a:p>"),
         "1\n"},
        {"formula by its letters",
         Deck::Shape("",
                     "<a:p><mc:AlternateContent><mc:Choice Requires=\"a14\"><a14:m><m:oMath>"
                     "<m:r><m:t>x=2</m:t></m:r></m:oMath></a14:m></mc:Choice><mc:Fallback>"
                     "<a:r><a:t> </a:t></a:r></mc:Fallback></mc:AlternateContent></a:p>"),
         "x=2\n"},
        {"table: a row a paragraph, merged cells empty",
         "<p:graphicFrame><a:graphic><a:graphicData><a:tbl><a:tr h=\"1\"><a:tc gridSpan=\"2\">"
         "<a:txBody>" +
             p("a") + p("b") + "</a:txBody></a:tc><a:tc hMerge=\"1\"><a:txBody>" + p("not seen") +
             "</a:txBody></a:tc></a:tr><a:tr><a:tc vMerge=\"1\"/><a:tc><a:txBody>" +
             p("c", number) +
             "</a:txBody></a:tc></a:tr></a:tbl></a:graphicData></a:graphic>"
             "</p:graphicFrame>",
         "a\nb\t\n\t1. c\n"},
    };
    for (const SlideRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(OneSlide(row.shapes), row.text);
    }
}

TEST(SlideReader, TakesSlidesByTheListAndTheRange) {
    Deck deck;
    for (const char* text : {"one", "two", "three"})
        deck.AddSlide(Deck::Text(text), "", text[0] == 't' ? "show=\"0\"" : "");
    const std::string file = deck.Finish();
    const struct {
        int first;
        int last;
        const char* text;
    } rows[] = {{0, 0, "one\ntwo\nthree\n"},
                {2, 3, "two\nthree\n"},
                {3, 2, "two\nthree\n"},
                {2, 2, "two\n"},
                {2, 99, "two\nthree\n"},
                {4, 9, ""},
                {0, 1, "one\n"},
                {-5, 2, "one\ntwo\n"}};
    for (const auto& row : rows) {
        SlideOptions options;
        options.first = row.first;
        options.last = row.last;
        EXPECT_EQ(SlideText(ReadSlides, file, options), row.text) << row.first << ' ' << row.last;
    }
}

std::string DeckWithNotes() {
    Deck deck;
    const std::string notes = Deck::Relation("rN", "notesSlide", "../notesSlides/notes1.xml");
    deck.AddSlide(Deck::Text("a") + Deck::Shape("", "<a:p/>") + Deck::Text("b", 0, 9999999), notes);
    deck.AddSlide(Deck::Text("c"));
    deck.Add("ppt/notesSlides/notes1.xml",
             Deck::Page("p:notes",
                        Deck::Shape("type=\"sldNum\"", Deck::Paragraph("7")) +
                            Deck::Shape("type=\"body\" idx=\"1\"", Deck::Paragraph("said")),
                        ""));
    // Notes and slide refer to each other.
    deck.Add("ppt/notesSlides/_rels/notes1.xml.rels",
             Deck::Relations(Deck::Relation("r1", "slide", "../slides/slide1.xml")));
    return deck.Finish();
}

TEST(SlideReader, AddsNotesAndNumbersWhenAsked) {
    const std::string file = DeckWithNotes();
    const struct {
        bool numbers;
        bool notes;
        bool only;
        const char* text;
    } rows[] = {
        {false, false, false, "a\nb\nc\n"},
        {false, true, false, "a\nb\nsaid\nc\n"},
        {false, true, true, "said\n"},
        {false, false, true, "said\n"},
        {true, false, false, "Slide 1\nShape 1:\na\nShape 2:\nb\nSlide 2\nShape 1:\nc\n"},
        {true, true, true, "Slide 1\nsaid\nSlide 2\n"},
        {true, true, false,
         "Slide 1\nShape 1:\na\nShape 2:\nb\nNotes:\nsaid\nSlide 2\nShape 1:\nc\n"},
    };
    for (const auto& row : rows) {
        const SlideOptions options{0, 0, row.numbers, row.notes, row.only};
        EXPECT_EQ(SlideText(ReadSlides, file, options), row.text);
    }
}

TEST(SlideReader, BackgroundTextComesOnceBehindTheSlides) {
    Deck deck;
    deck.layout_shapes =
        Deck::Shape("type=\"title\"", Deck::Paragraph("Click here")) + Deck::Text("Layout logo");
    deck.master_shapes =
        Deck::Text("Confidential") +
        Deck::Shape("",
                    "<a:p><a:r><a:t>p. </a:t></a:r><a:fld type=\"slidenum\"><a:t>#</a:t>"
                    "</a:fld></a:p>");
    deck.AddSlide(Deck::Text("one"));
    deck.AddSlide(Deck::Text("two"));
    EXPECT_EQ(SlideText(ReadSlides, deck.Finish()),
              "one\np. 1\ntwo\np. 2\nLayout logo\nConfidential\n");
    Deck bare;
    bare.master_shapes = Deck::Text("Confidential");
    bare.AddSlide(Deck::Text("one"), "", "showMasterSp=\"0\"");
    EXPECT_EQ(SlideText(ReadSlides, bare.Finish()), "one\n");
}

std::string Frame(const std::string& content) {
    return "<p:graphicFrame><a:graphic><a:graphicData>" + content +
           "</a:graphicData></a:graphic></p:graphicFrame>";
}

TEST(SlideReader, ReadsDiagramsByTheirDrawingOrTheirPoints) {
    const std::string points = "<dgm:ptLst><dgm:pt><dgm:t>" + Deck::Paragraph("point") +
                               "</dgm:t></dgm:pt><dgm:pt "
                               "type=\"pres\"><dgm:t>" +
                               Deck::Paragraph("not seen") + "</dgm:t></dgm:pt></dgm:ptLst>";
    const std::string reference =
        "<a:extLst><a:ext><dsp:dataModelExt relId=\"rD\"/></a:ext></a:extLst>";
    for (const bool with_drawing : {false, true}) {
        Deck deck;
        deck.AddSlide(Frame("<dgm:relIds r:dm=\"rM\"/>"),
                      Deck::Relation("rM", "diagramData", "../diagrams/data.xml") +
                          Deck::Relation("rD", "diagramDrawing", "../diagrams/drawing.xml"));
        deck.Add("ppt/diagrams/data.xml",
                 "<dgm:dataModel>" + points + reference + "</dgm:dataModel>");
        if (with_drawing)
            deck.Add("ppt/diagrams/drawing.xml",
                     "<dsp:drawing><dsp:spTree><dsp:sp><dsp:txBody>" + Deck::Paragraph("drawn") +
                         "</dsp:txBody></dsp:sp></dsp:spTree></dsp:drawing>");
        EXPECT_EQ(SlideText(ReadSlides, deck.Finish()), with_drawing ? "drawn\n" : "point\n");
    }
}

TEST(SlideReader, ReadsTheWordsOfCharts) {
    const auto cache = [](const std::string& texts) {
        return "<c:strRef><c:f>Sheet1!A1</c:f><c:strCache>" + texts + "</c:strCache></c:strRef>";
    };
    const auto point = [](const std::string& text) {
        return "<c:pt idx=\"0\"><c:v>" + text + "</c:v></c:pt>";
    };
    const auto series = [&](const std::string& name) {
        return "<c:ser><c:tx>" + cache(point(name)) + "</c:tx><c:cat>" +
               cache(point("East") + point("West")) + "</c:cat></c:ser>";
    };
    const auto numbers = [&](const std::string& format, const std::string& value) {
        return "<c:numRef><c:numCache><c:formatCode>" + format + "</c:formatCode>" + point(value) +
               "</c:numCache></c:numRef>";
    };
    const auto title = [](const std::string& text) {
        return "<c:title><c:tx><c:rich>" + Deck::Paragraph(text) + "</c:rich></c:tx></c:title>";
    };
    const auto bars = [&](const std::string& all) {
        return "<c:barChart>" + all + "</c:barChart>";
    };
    const auto plot = [](const std::string& all) { return "<c:plotArea>" + all + "</c:plotArea>"; };
    const SlideRow rows[] = {
        {"legend names the series",
         title("Sales") +
             plot(bars(series("2020") + series("2021")) + "<c:valAx>" + title("Euro") +
                  "</c:valAx>") +
             "<c:legend/>",
         "Sales\n2020\n2021\nEast\nWest\nEuro\n"},
        {"no legend, no names", title("Sales") + plot(bars(series("2020") + series("2021"))),
         "Sales\nEast\nWest\n"},
        {"the only series is the title", plot(bars(series("2020"))), "2020\nEast\nWest\n"},
        {"unless that is turned off",
         "<c:autoTitleDeleted val=\"1\"/>" + plot(bars(series("2020"))), "East\nWest\n"},
        {"a pie's legend names its slices",
         title("T") + plot("<c:pieChart>" + series("2020") + "</c:pieChart>") + "<c:legend/>",
         "T\nEast\nWest\n"},
        {"numbers as categories, values where points are labelled",
         plot(bars("<c:ser><c:dLbls><c:showVal val=\"1\"/></c:dLbls><c:cat>" +
                   numbers("yyyy", "43831") + "</c:cat><c:val>" + numbers("0.0", "7.25") +
                   "</c:val></c:ser><c:ser><c:val>" + numbers("0", "9") + "</c:val></c:ser>")),
         "2020\n7.3\n"},
    };
    for (const SlideRow& row : rows) {
        SCOPED_TRACE(row.name);
        Deck deck;
        deck.AddSlide(Frame("<c:chart r:id=\"rC\"/>"),
                      Deck::Relation("rC", "chart", "../charts/chart1.xml"));
        deck.Add("ppt/charts/chart1.xml",
                 "<c:chartSpace><c:chart>" + row.shapes + "</c:chart></c:chartSpace>");
        EXPECT_EQ(SlideText(ReadSlides, deck.Finish()), row.text);
    }
}

TEST(SlideReader, TellsProgressAndStops) {
    Deck deck;
    for (int i = 0; i < 4; ++i)
        deck.AddSlide(Deck::Text("x"));
    const std::string file = deck.Finish();
    const std::unique_ptr<Package> package = Package::Open(file);
    const auto sink = MakePlainSink();
    RecordingMonitor monitor;
    SlideOptions options;
    options.first = 2;
    options.last = 4;
    EXPECT_TRUE(ReadSlides(*package, options, *sink, monitor).ok());
    EXPECT_EQ(monitor.calls,
              (std::vector<std::pair<std::int64_t, std::int64_t>>{{0, 3}, {1, 3}, {2, 3}}));
    monitor.calls.clear();
    monitor.stop_at = 2;
    EXPECT_EQ(ReadSlides(*package, options, *sink, monitor).error, ReadError::Cancelled);
}

TEST(SlideReader, TellsWhatIsBroken) {
    Deck broken;
    broken.AddSlide("<a:unclosed>");
    EXPECT_TRUE(SlideText(ReadSlides, broken.Finish()).starts_with("error 3: slide 1: broken XML"));
    EXPECT_EQ(SlideText(ReadSlides, MakeZip({{"word/document.xml", "<w:document/>"}})),
              "error 2: the file holds no slides");
    // The list names a slide that is not there.
    Deck deck;
    deck.AddSlide(Deck::Text("x"), "");
    std::string lost = deck.Finish();
    for (std::size_t at = lost.find("slides/slide1.xml"); at != std::string::npos;
         at = lost.find("slides/slide1.xml", at + 1))
        lost.replace(at, 17, "slides/slide9.xml");
    EXPECT_EQ(SlideText(ReadSlides, lost),
              "error 3: slide 1: cannot read the part ppt/slides/slide1.xml");
}

TEST(SlideReader, HostileDecksEnd) {
    std::string deep;
    for (int i = 0; i < 20'000; ++i)
        deep += "<p:grpSp>";
    deep += Deck::Text("x");
    for (int i = 0; i < 20'000; ++i)
        deep += "</p:grpSp>";
    EXPECT_EQ(OneSlide(deep), "");
    // Many entries for one slide, each a copy: it is read once.
    Deck deck;
    deck.AddSlide(Deck::Text("once"));
    deck.deck_attributes = "><p:sldIdLst>";
    std::string many;
    for (int i = 0; i < 50'000; ++i)
        many += "<p:sldId id=\"1\" r:id=\"r999\"/>";
    deck.deck_attributes += many + "</p:sldIdLst";
    EXPECT_EQ(SlideText(ReadSlides, deck.Finish()), "once\n");
}

TEST(SlideReader, CorruptedDecksEnd) {
    std::mt19937 random(3);
    const std::string file = DeckWithNotes();
    for (int round = 0; round < 400; ++round) {
        std::string copy = file.substr(0, round % 4 == 0 ? random() % file.size() : file.size());
        for (int i = 0; i < 8 && !copy.empty(); ++i)
            copy[random() % copy.size()] = static_cast<char>(random() & 0xFF);
        SlideText(ReadSlides, copy, {0, 0, true, true, false});
    }
}

}  // namespace
}  // namespace zorvane::slide_reader_test
