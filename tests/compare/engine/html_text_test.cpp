// How the HTML report paints: its palette, the user's marks, the documents' own look.
#include "compare/engine/html_palette.h"
#include "compare/engine/html_style.h"
#include "tests/support/compared_pair.h"
#include "tests/support/html_rows.h"

namespace zorvane {
namespace {

struct ColorPair {
    const char* text;
    const char* ground;
    double least;
};
TEST(HtmlPalette, CanBeRead) {
    std::vector<ColorPair> pairs = {
        {"text", "paper", 4.5},  {"text", "window", 4.5}, {"text2", "window", 4.5},
        {"text2", "paper", 4.5}, {"text2", "hatch", 4.5}, {"muted", "paper", 4.5},
        {"edge", "paper", 3.0},
    };
    const char* kinds[][3] = {{"changed", "changed-word", "changed-row"},
                              {"deleted", "deleted-word", "deleted-row"},
                              {"added", "added-word", "added-row"},
                              {"moved", "moved-word", "moved-row"}};
    for (const auto& [color, word, row] : kinds) {
        for (const char* ground : {word, row})
            pairs.push_back({color, ground, kLeastContrast});
        for (const char* text : {"text", "text2", "muted"})
            pairs.push_back({text, row, kLeastContrast});
    }
    // Words deleted and added stand on the ground of a changed row too.
    for (const char* color : {"deleted", "added"})
        pairs.push_back({color, "changed-row", kLeastContrast});
    for (const ColorPair& pair : pairs) {
        SCOPED_TRACE(std::string(pair.text) + " on " + pair.ground);
        for (const auto theme : {&ColorToken::light, &ColorToken::dark})
            EXPECT_GE(ContrastOf(RgbOfHex(TokenNamed(pair.text).*theme),
                                 RgbOfHex(TokenNamed(pair.ground).*theme)),
                      pair.least);
    }
}

TEST(HtmlPalette, KnowsContrast) {
    EXPECT_NEAR(ContrastOf({0, 0, 0}, {255, 255, 255}), 21.0, 0.01);
    EXPECT_NEAR(ContrastOf({255, 255, 255}, {118, 118, 118}), 4.54, 0.01);
    EXPECT_NEAR(ContrastOf({255, 0, 0}, {255, 0, 0}), 1.0, 0.001);
}

TEST(HtmlPalette, MovesAColorOnlyAsFarAsItMust) {
    const Rgb white{255, 255, 255};
    EXPECT_EQ(ReadableOn({0, 0, 255}, white), (Rgb{0, 0, 255}));
    for (const Rgb ground : {white, Rgb{0, 0, 0}, Rgb{255, 255, 0}, Rgb{128, 128, 128}}) {
        for (const Rgb color : {Rgb{255, 255, 0}, Rgb{255, 0, 0}, Rgb{0, 0, 128}, ground}) {
            const Rgb readable = ReadableOn(color, ground);
            EXPECT_GE(ContrastOf(readable, ground), kLeastContrast);
            EXPECT_LE(ContrastOf(readable, ground), std::max(ContrastOf(color, ground), 5.5));
        }
    }
}

TEST(HtmlStyle, PaintsDefaultsInThePaletteAndChosenColorsAsChosen) {
    const auto has = [](const ReportLook& look, const std::string& rule) {
        return HtmlStyle(look, 9).find(rule) != std::string::npos;
    };
    ReportLook look;
    EXPECT_TRUE(has(look,
                    "ins.a{color:var(--added);background:transparent;"
                    "text-decoration-line:underline;font-weight:400"));
    EXPECT_TRUE(has(look,
                    "del.a{color:var(--deleted);background:transparent;"
                    "text-decoration-line:line-through;font-weight:400"));
    EXPECT_TRUE(has(look,
                    "del.w{color:var(--deleted);background:var(--deleted-word);"
                    "text-decoration-line:line-through;font-weight:600}"));
    EXPECT_TRUE(has(look,
                    "ins.c{color:var(--changed);background:var(--changed-word);"
                    "text-decoration-line:underline;font-weight:600}"));
    EXPECT_FALSE(has(look, "dark){ins"));
    look.addition = {.ForeColor = 0x0000FF, .BackColor = 0x00FFFF, .bItalic = true};  // on yellow
    EXPECT_TRUE(has(look, "ins.a{color:" + HexOf(ReadableOn({255, 0, 0}, {255, 255, 0})) +
                              ";background:#ffff00;text-decoration-line:none;font-weight:400;"
                              "font-style:italic}"));
    EXPECT_TRUE(has(look, "del.a{color:var(--deleted)"));
    look.change_modified = {
        .ForeColor = 0x800000, .bBold = true, .bUnderline = true, .bStrikeout = true};  // dark blue
    EXPECT_TRUE(has(look,
                    "ins.c{color:#000080;background:var(--changed-word);"
                    "text-decoration-line:underline line-through;font-weight:600}"));
    EXPECT_FALSE(has(look, "{ins.a{color:#000080"));
    // On a dark ground the same hue is lighter.
    const std::string style = HtmlStyle(look, 9);
    const std::size_t dark = style.rfind("@media screen and (prefers-color-scheme:dark){ins");
    ASSERT_NE(dark, std::string::npos);
    EXPECT_NE(style.find("ins.c{color:#", dark), std::string::npos);
    EXPECT_EQ(style.find("ins.c{color:#000080", dark), std::string::npos);
    look.similar_sub_paragraph_marks = true;
    EXPECT_TRUE(has(look, "ins.w{color:#000080;"));
    EXPECT_TRUE(has(look, "del.w{color:#000080;"));
}

TEST(HtmlStyle, GivesNumbersTheirRoom) {
    EXPECT_NE(HtmlStyle({}, 9).find("--g:54px"), std::string::npos);
    EXPECT_NE(HtmlStyle({}, 1'234'567).find("--g:79px"), std::string::npos);
}

// ---- the documents' own look ----

class OwnLook : public testing::Test {
  protected:
    // Editors know positions; paragraphs are parted by CR LF.
    static Comparison Compared(std::u16string original, std::u16string modified) {
        Result<Comparison> result =
            CompareTexts({std::make_shared<const std::u16string>(std::move(original)),
                          std::make_shared<const std::u16string>(std::move(modified))},
                         {}, nullptr);
        EXPECT_TRUE(result.ok());
        return std::move(result).value();
    }
};

TEST_F(OwnLook, WordsKeepTheirsInsideMarks) {
    const Comparison comparison =
        Compared(u"Title\r\nthe old rent is due", u"Title\r\nthe new rent is due");
    // "old rent" and "new rent" are bold, "due" of the modified is italic.
    const PerSide<DocumentLook> looks{
        {{{11, true, false}, {19, false, false}}, {}},
        {{{11, true, false}, {19, false, false}, {23, false, true}}, {}}};
    ReportModel model{.comparison = comparison};
    model.document_looks = {&looks.original, &looks.modified};
    EXPECT_EQ(RowTexts(WriteHtmlReport(model, kAllInOne)),
              (std::vector<std::string>{"1|1|Title", "2|2≠|the [-*old*-]{+*new*+}* rent* is due"}));
    EXPECT_EQ(RowTexts(WriteHtmlReport(model, kSideBySide))[1],
              "2≠|the [-*old*-]* rent* is due|2≠|the [-*old*-]{+*new*+}* rent* is /due/");
}

TEST_F(OwnLook, ParagraphsHaveTheirs) {
    const Comparison comparison =
        Compared(u"Title\r\nmid\r\n1.\tone\r\nplain", u"Title\r\nmid\r\n1.\tone\r\nplain");
    const DocumentLook look{{},
                            {{.number = 1, .heading = 1},
                             {.number = 2, .indent = 1, .alignment = LookAlignment::Center},
                             {.number = 3, .indent = 2, .hanging = true},
                             {.number = 4, .hanging = true, .alignment = LookAlignment::Right}}};
    ReportModel model{.comparison = comparison};
    model.document_looks = {&look, nullptr};
    std::vector<std::string> cells;
    for (const HtmlNode& row : RowsOf(ParsedPage(WriteHtmlReport(model, kSideBySide)))) {
        cells.push_back(row.children.at(1).attributes);
        EXPECT_EQ(row.children.at(3).attributes, "");
    }
    EXPECT_EQ(cells,
              (std::vector<std::string>{" class=\"h1\"", " class=\"ac in\" style=\"--i:1\"",
                                        " class=\"hang in\" style=\"--i:2\"", " class=\"ar\""}));
    EXPECT_NE(WriteHtmlReport(model, kSideBySide).find("box two rich"), std::string::npos);
}

TEST_F(OwnLook, ParagraphsOfOneSideKeepTheirs) {
    const Comparison comparison = Compared(u"Title\r\nrest of it", u"rest of it\r\nEnd");
    const PerSide<DocumentLook> looks{{{}, {{.number = 1, .heading = 1}}},
                                      {{}, {{.number = 2, .heading = 2}}}};
    ReportModel model{.comparison = comparison};
    model.document_looks = {&looks.original, &looks.modified};
    std::string cells;
    for (const HtmlNode& row : RowsOf(ParsedPage(WriteHtmlReport(model, kAllInOne))))
        cells += row.children.back().attributes + ";";
    EXPECT_EQ(cells, " class=\"h1\";; class=\"h2\";");
}

TEST(HtmlTables, RowsShareTheirColumns) {
    const ComparedPair pair({"text", "Item\aA longer description of it\a", "X\ashort\a12\a",
                             "Y\aa rather long text that goes on\a7\a", "text"},
                            {"text"});
    std::vector<std::string> columns;
    for (const HtmlNode& row : RowsOf(ParsedPage(WriteHtmlReport(pair.Model(), kAllInOne)))) {
        const HtmlNode& cell = row.children.back();
        columns.push_back(cell.attributes);
    }
    const std::string three =
        " class=\"t\" style=\"grid-template-columns:minmax(min(5em,30%),6fr) "
        "minmax(min(5em,30%),31fr) "
        "minmax(min(5em,30%),6fr)\"";
    ASSERT_EQ(columns.size(), 5U);
    EXPECT_EQ(columns[1],
              " class=\"t\" style=\"grid-template-columns:minmax(min(5em,47%),6fr) "
              "minmax(min(5em,47%),26fr)\"");
    EXPECT_EQ(columns[2], three);
    EXPECT_EQ(columns[3], three);
    EXPECT_EQ(columns[4], "");
}

}  // namespace
}  // namespace zorvane
