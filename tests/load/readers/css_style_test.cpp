#include "load/readers/web/css_style.h"

#include <string>

#include <gtest/gtest.h>

namespace zorvane::css_style_test {
namespace {

TEST(CssStyle, ReadsColors) {
    struct Row {
        std::string_view text;
        std::int32_t color;  // -1: none
    };
    for (const Row& row : {
             Row{"red", 0x0000FF},
             Row{" Navy ", 0x800000},
             Row{"aliceblue", 0xFFF8F0},
             Row{"yellowgreen", 0x32CD9A},
             Row{"rebeccapurple", 0x993366},
             Row{"#123456", 0x563412},
             Row{"#ABC", 0xCCBBAA},
             Row{"#abcd", 0xCCBBAA},
             Row{"#12345678", 0x563412},
             Row{"rgb(1, 2, 3)", 0x030201},
             Row{"rgba(255 0 0 / 50%)", 0x0000FF},
             Row{"RGB(100%,0%,50%)", 0x8000FF},
             Row{"rgb(300,-5,0)", 0x0000FF},
             Row{"", -1},
             Row{"#", -1},
             Row{"#12", -1},
             Row{"#12345g", -1},
             Row{"rgb(1,2)", -1},
             Row{"aliceblu", -1},
             Row{"zzz", -1},
             Row{"inherit", -1},
         }) {
        SCOPED_TRACE(row.text);
        const std::optional<Color> color = ParseColor(row.text);
        EXPECT_EQ(color ? color->value : -1, row.color);
    }
}

TEST(CssStyle, ReadsLengths) {
    struct Row {
        std::string_view text;
        std::int32_t twips;  // of a font of 200 twips and a page of 1000; -1: none
    };
    for (const Row& row : {
             Row{"10px", 150},    Row{"12pt", 240},   Row{"1in", 1440},    Row{"2.54cm", 1440},
             Row{"25.4mm", 1440}, Row{"1pc", 240},    Row{"2em", 400},     Row{"1rem", 240},
             Row{"2ex", 200},     Row{"50%", 500},    Row{"10", 150},      Row{"+1pt", 20},
             Row{"-1pt", -20},    Row{".5in", 720},   Row{"1e3in", 31680}, Row{"-9e99in", -31680},
             Row{"", -1},         Row{"px", -1},      Row{"1zoll", -1},    Row{"auto", -1},
             Row{"nan", -1},      Row{"1e999px", -1},
         }) {
        SCOPED_TRACE(row.text);
        const std::optional<CssLength> length = ParseLength(row.text);
        EXPECT_EQ(length ? length->Twips(200, 1000) : -1, row.twips);
    }
}

CssStyle Declared(std::string_view text) {
    CssStyle style;
    ParseDeclarations(text, style);
    return style;
}

TEST(CssStyle, ReadsDeclarations) {
    const CssStyle style = Declared(
        "COLOR : Red ;background: url(x.png) no-repeat #00f; font-weight:600;font-style:oblique;"
        "text-align:END;direction:rtl;margin:1pt 2pt;text-indent:3pt!important;"
        "text-transform:uppercase;vertical-align:super;visibility:hidden;white-space:pre-line;"
        "list-style:square inside;display:list-item;unknown:x;broken");
    EXPECT_EQ(style.color, Color{0x0000FF});
    EXPECT_EQ(style.background, std::optional<Color>(Color{0xFF0000}));
    EXPECT_EQ(style.bold, true);
    EXPECT_EQ(style.italic, true);
    EXPECT_EQ(style.alignment, Alignment::Right);
    EXPECT_EQ(style.right_to_left, true);
    EXPECT_EQ(style.left->Twips(0, 0), 40);
    EXPECT_EQ(style.text_indent->Twips(0, 0), 60);
    EXPECT_EQ(style.transform, CssTransform::Upper);
    EXPECT_EQ(style.baseline, Baseline::Superscript);
    EXPECT_EQ(style.hidden, true);
    EXPECT_EQ(style.space, CssSpace::PreLine);
    EXPECT_EQ(style.display, CssDisplay::ListItem);
    EXPECT_EQ(style.list->bullet, "\u25AA");
    EXPECT_FALSE(style.font || style.font_size || style.underline);
}

TEST(CssStyle, LaterDeclarationsWinAndBrokenOnesChangeNothing) {
    EXPECT_EQ(Declared("color:red;color:blue").color, Color{0xFF0000});
    EXPECT_EQ(Declared("color:red;color:bleu").color, Color{0x0000FF});
    EXPECT_EQ(Declared("font-weight:300").bold, false);
    EXPECT_FALSE(Declared("font-weight:heavy").bold);
    EXPECT_EQ(Declared("text-decoration:underline").underline, true);
    EXPECT_EQ(Declared("text-decoration:none").strikeout, false);
    const CssStyle clear = Declared("background:transparent");
    ASSERT_TRUE(clear.background.has_value());
    EXPECT_FALSE(clear.background->has_value());
    EXPECT_EQ(Declared("margin:1pt 2pt 3pt 4pt").left->Twips(0, 0), 80);
    EXPECT_FALSE(Declared("margin:0 auto").left);
}

TEST(CssStyle, ReadsFonts) {
    struct Row {
        std::string_view text;
        std::string_view font;  // empty: none
        std::int32_t twips;     // 0: none
    };
    for (const Row& row : {
             Row{"font-family: 'My Font', serif", "My Font", 0},
             Row{"font-family: \"A\"", "A", 0},
             Row{"font-family: Monospace", "Courier New", 0},
             Row{"font-family: inherit", "", 0},
             Row{"font: italic bold 12pt/30px Georgia, serif", "Georgia", 240},
             Row{"font: 80% Arial", "Arial", 160},
             Row{"font-size: x-large", "", 360},
             Row{"font-size: smaller", "", 167},
             Row{"font-size: 2em", "", 400},
         }) {
        SCOPED_TRACE(row.text);
        const CssStyle style = Declared(row.text);
        EXPECT_EQ(style.font ? style.font->view() : "", row.font);
        EXPECT_EQ(style.font_size ? style.font_size->Twips(200, 200) : 0, row.twips);
    }
    EXPECT_EQ(Declared("font: italic bold 12pt/30px Georgia").bold, true);
    EXPECT_EQ(Declared("font: italic bold 12pt/30px Georgia").italic, true);
}

std::string ColorsOf(const CssSheet& sheet, std::string_view tag, std::string_view classes,
                     std::string_view id) {
    std::string colors;
    sheet.Match(tag, classes, id, [&colors](const CssStyle& style) {
        if (style.color)
            colors += std::to_string(style.color->value) + " ";
    });
    return colors;
}

TEST(CssSheet, MatchesSimpleSelectorsTheStrongestLast) {
    CssSheet sheet;
    sheet.Add(
        "#i{color:#070000} p.c{color:#060000} .c{color:#030000} p{color:#020000} *{color:#010000}"
        ".d{color:#040000} a:link, .e, p .f, p>b, [x]{color:#050000}");
    EXPECT_EQ(ColorsOf(sheet, "p", "d c", "i"), "1 2 3 4 6 7 ");
    EXPECT_EQ(ColorsOf(sheet, "b", " c  d ", ""), "1 3 4 ");
    EXPECT_EQ(ColorsOf(sheet, "a", " :link", "x"), "1 5 ");
    EXPECT_EQ(ColorsOf(sheet, "a", "", "x"), "1 ");
    EXPECT_EQ(ColorsOf(sheet, "q", "e f", ""), "1 5 ");
}

TEST(CssSheet, PassesOverWhatIsNotForAScreen) {
    CssSheet sheet;
    sheet.Add(
        "/* p{color:#010000} */ @import 'x.css'; @charset \"utf-8\";"
        "@media print {p{color:#020000} b{color:#020000}}"
        "@media screen and (color) {p{color:#030000}}"
        "@media (max-width: 600px) {p{color:#040000}}"
        "@font-face {font-family: x} @supports (a:b) {p{color:#050000}}"
        "p{color:#060000");
    EXPECT_EQ(ColorsOf(sheet, "p", "", ""), "3 5 6 ");
    EXPECT_EQ(ColorsOf(sheet, "b", "", ""), "");
}

TEST(CssSheet, IsBounded) {
    CssSheet sheet;
    std::string css;
    for (int i = 0; i < 100'000; ++i)
        css += ".a{color:red}";
    sheet.Add(css);
    EXPECT_LT(ColorsOf(sheet, "p", "a a a", "").size(), 1000U);
    sheet.Add(std::string(100'000, '{'));
    sheet.Add(std::string(100'000, '}'));
}

}  // namespace
}  // namespace zorvane::css_style_test
