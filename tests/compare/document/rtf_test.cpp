#include <filesystem>
#include <random>

#include <gtest/gtest.h>

#include "common/platform/files.h"
#include "compare/document/rtf_reader.h"
#include "compare/document/rtf_writer.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane::rtf_test {
namespace {

struct ReadRow {
    const char* name;
    std::string rtf;
    const char* text;
};
const ReadRow kReadRows[] = {
    {"nothing", "", ""},
    {"an empty document", "{\\rtf1}", ""},
    {"paragraphs", "{\\rtf1 a\\par b\\par}", "a|b|"},
    {"raw line ends are nothing", "{\\rtf1 a\r\nb\n}", "ab"},
    {"escapes", "{\\rtf1 \\{\\\\\\}\\~\\-\\_}", "{\\}\u00A0\u00AD\u2011"},
    {"a code page", "{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0}", "Пр"},
    {"code pages of old", "{\\rtf1\\pca\\'d0}{\\rtf1\\pc\\'9b}{\\rtf1\\mac\\'8a}", "ð|¢|ä"},
    {"a font's charset", "{\\rtf1{\\fonttbl{\\f0 A;}{\\f1\\fcharset161 B;}}\\f1\\'e1\\f0\\'e1}",
     "αá"},
    {"two bytes a character", "{\\rtf1{\\fonttbl{\\f0\\fcharset128 M;}}\\f0\\'93\\'fa\\'96\\'7b}",
     "日本"},
    {"the second byte is a letter", "{\\rtf1{\\fonttbl{\\f0\\fcharset128 M;}}\\f0\\'83A}", "ア"},
    {"unicode and what stands in for it", "{\\rtf1\\u8364?x\\uc2\\u8364\\'80ab\\uc0\\u8364 y}",
     "€x€b€y"},
    {"a negative unicode number", "{\\rtf1\\u-4051?}", "\uF02D"},
    {"a pair of surrogates", "{\\rtf1\\u-10179?\\u-8704?}", "😀"},
    {"control characters by number", "{\\rtf1 a\\u28 ?\\u13 ?\\u9 ?b}", "a>b"},
    {"a group ends what stands in", "{\\rtf1{\\uc3\\u65 }bcd}", "Abcd"},
    {"bold, italic and plain", "{\\rtf1\\b a\\i b\\plain c}", "[b:a][bi:b]c"},
    {"a group keeps its format", "{\\rtf1 a{\\b b}c}", "a[b:b]c"},
    {"underlines", "{\\rtf1\\ul a\\uldb b\\ulwave c\\ulnone d}", "[u1:a][u3:b][u8:c]d"},
    {"raised and lowered", "{\\rtf1 x{\\super 2}{\\sub 3}{\\up6 4}\\nosupersub 5}",
     "x[^:2][_:3][^:4]5"},
    {"colours",
     "{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}\\cf1 a\\highlight2 "
     "b\\cf0 c}",
     "[#255:a][#255@16711680:b][@16711680:c]"},
    {"hidden text stays out", "{\\rtf1 a{\\v secret}b}", "ab"},
    {"deleted text stays out", "{\\rtf1 a{\\deleted gone}b}", "ab"},
    {"a line inside a paragraph", "{\\rtf1 a\\line b}", "a/b"},
    {"a table", "{\\rtf1\\trowd\\intbl a\\cell b\\par c\\cell\\row\\pard d}", "a!b/c!|d"},
    {"a list number", "{\\rtf1{\\pntext 1.\\tab}{\\*\\pn\\pnlvlbody{\\pntxta .}}item}", "1.>item"},
    {"a spoiled list number", "{\\rtf1{\\pzntext 1.\\tab}{\\*\\pzn{\\pzntxta .}}item}", "item"},
    {"a list number of a later kind", "{\\rtf1{\\listtext\\'b7\\tab}item}", "·>item"},
    {"a field by its result", "{\\rtf1{\\field{\\*\\fldinst PAGE}{\\fldrslt 7}}}", "7"},
    {"a footnote at its place", "{\\rtf1 body{\\footnote note\\par}.}", "body [note: note] ."},
    {"a picture", "{\\rtf1 a{\\pict\\pngblip 89504e47}b}", "ab"},
    {"raw bytes", std::string("{\\rtf1 a\\bin3 }{\\b}", 19), "ab"},
    {"unknown groups", "{\\rtf1{\\*\\whatever x{y}}a{\\frob b}}", "ab"},
    {"a star that begins no group", "{\\rtf1{\\~\\*\\whatever x}{a\\*\\whatever y}}", "\u00A0xay"},
    {"headers and footers", "{\\rtf1{\\header h}{\\footerf f}a}", "a"},
    {"the text of a box", "{\\rtf1{\\shp{\\*\\shpinst{\\sp{\\sn n}{\\sv v}}{\\shptxt in}}}out}",
     "out|in"},
    {"the text of a box, written twice",
     "{\\rtf1 a{\\shp{\\*\\shpinst{\\shptxt in\\par}}{\\shprslt{\\*\\do{\\dptxbxtext in\\par}}}}"
     "b\\par c}",
     "ab|in|c"},
    {"boxes in a cell",
     "{\\rtf1\\trowd\\intbl a{\\shp{\\*\\shpinst{\\shptxt\\pard x\\par y}}}\\cell "
     "b\\cell\\row\\pard c}",
     "a!b!|x|y|c"},
    {"a hidden box", "{\\rtf1 a{\\v{\\shp{\\*\\shpinst{\\shptxt\\plain x}}}}b}", "ab"},
    {"a box in a box", "{\\rtf1 a{\\*\\do{\\dptxbxtext b{\\*\\do{\\dptxbxtext c}}d\\par}}}",
     "a|b|c|d|"},
    {"a note between two words", "{\\rtf1 a{\\footnote\\pard\\plain  n\\par m}b}",
     "a [note: n m] b"},
    {"a note between blanks and at the end", "{\\rtf1 a {\\footnote n} b{\\footnote n}\\par c}",
     "a [note: n] b [note: n]|c"},
    {"a note in cells", "{\\rtf1\\trowd\\intbl{\\footnote n}\\cell a{\\footnote n}\\cell\\row}",
     "[note: n]!a [note: n]!|"},
    {"a note of deleted text", "{\\rtf1 a{\\deleted b{\\footnote\\plain n}}c}", "ac"},
    {"an empty note", "{\\rtf1 a{\\footnote\\pard }b}", "ab"},
    {"a row hidden but for the ends of its cells",
     "{\\rtf1 x\\par\\trowd\\intbl{\\v a}\\cell{\\v b}\\cell\\row\\trowd{\\v c}\\cell "
     "d\\cell\\row\\trowd"
     "\\cell\\cell\\row}",
     "x|!d!|!!|"},
    {"a hidden row", "{\\rtf1\\trowd\\intbl\\v a\\cell b\\cell\\v0\\row\\trowd c\\cell\\row}",
     "c!|"},
    {"two texts for two kinds of reader", "{\\rtf1{\\upr{old}{\\*\\ud{new}}}}", "new"},
    {"two documents in a row", "{\\rtf1 a}{\\rtf1\\b b}", "a|[b:b]"},
    {"symbols", "{\\rtf1{\\fonttbl{\\f0\\fcharset2 S;}}\\f0\\'b7\\emdash\\bullet}", "•—•"},
    {"cut off in a word", "{\\rtf1 a\\parx", "a"},
    {"cut off in a byte", "{\\rtf1 a\\'4", "a"},
    {"too many ends", "{\\rtf1 a}}}} b", "a b"},
    {"a control word of absurd length", "{\\rtf1 a\\" + std::string(32, 'x') + " b}", "ab"},
    {"a number out of range", "{\\rtf1 \\fs99999999999999 a}", "a"},
};
TEST(RtfReader, ReadsTheForms) {
    for (const ReadRow& row : kReadRows) {
        SCOPED_TRACE(row.name);
        const RichText read = ReadRtf(row.rtf);
        EXPECT_EQ(Notation(read), row.text);
    }
}

TEST(RtfReader, ReadsParagraphFormats) {
    const RichText read = ReadRtf(
        "{\\rtf1\\pard\\qc\\li360\\fi-180\\sb120\\sa60\\sl480\\slmult1\\tx720\\tqr\\tx1440 "
        "a\\par\\pard b}");
    ASSERT_EQ(read.paragraph_runs.size(), 2U);
    const ParagraphFormat& format = read.paragraph_runs[0].format;
    EXPECT_EQ(format.alignment, Alignment::Center);
    EXPECT_EQ(format.left_indent, 360);
    EXPECT_EQ(format.first_line_indent, -180);
    EXPECT_EQ(format.space_before, 120);
    EXPECT_EQ(format.space_after, 60);
    EXPECT_EQ(format.line_spacing, 480);
    EXPECT_TRUE(format.line_spacing_multiple);
    EXPECT_EQ(format.tabs, (std::vector<TabStop>{{720, TabKind::Left}, {1440, TabKind::Right}}));
    EXPECT_EQ(read.paragraph_runs[1].format, ParagraphFormat{});
}

TEST(RtfReader, TakesTheDefaultFont) {
    const RichText read = ReadRtf("{\\rtf1\\deff1{\\fonttbl{\\f0 A;}{\\f1\\fcharset0 B C;}}x}");
    ASSERT_EQ(read.char_runs.size(), 1U);
    EXPECT_EQ(read.char_runs[0].format.font.view(), "B C");
}

TEST(RtfReader, HostileNestingEndsQuickly) {
    EXPECT_EQ(ReadRtf("{\\rtf1 " + std::string(3'000'000, '{') + "a").text, u"a");
    EXPECT_EQ(ReadRtf("{\\rtf1 " + std::string(3'000'000, '}') + "a").text, u"a");
}

TEST(RtfReader, TellsRtfByItsBeginning) {
    EXPECT_TRUE(LooksLikeRtf("{\\rtf1"));
    EXPECT_TRUE(LooksLikeRtf("\xEF\xBB\xBF \r\n{\\rtf"));
    EXPECT_FALSE(LooksLikeRtf("{\\rt"));
    EXPECT_FALSE(LooksLikeRtf("x{\\rtf1"));
    EXPECT_FALSE(LooksLikeRtf(""));
}

TEST(RtfWriter, WritesSevenBitsOnly) {
    CharFormat format;
    format.font = FontName("Größe Ü");
    const std::string rtf = WriteRtf(RichText::Plain(u"ä €\u2028😀{}\\", format));
    for (const char character : rtf)
        EXPECT_LT(static_cast<unsigned char>(character), 0x80);
}

CharFormat RandomFormat(std::mt19937& random) {
    CharFormat format;
    const auto below = [&](unsigned limit) {
        return static_cast<std::int32_t>(static_cast<unsigned>(random()) % limit);
    };
    constexpr const char* kFonts[] = {"Courier", "Liberation Serif", "ＭＳ ゴシック", "A {b} \\c"};
    format.font = FontName(kFonts[below(4)]);
    format.half_points = 1 + below(200);
    if (below(2) == 0)
        format.fore_color = Color{below(1U << 24)};
    if (below(3) == 0)
        format.back_color = Color{below(1U << 24)};
    format.underline = static_cast<Underline>(below(18));
    format.baseline = static_cast<Baseline>(below(3));
    format.bold = below(2) == 0;
    format.italic = below(2) == 0;
    format.strikeout = below(2) == 0;
    return format;
}

ParagraphFormat RandomParagraph(std::mt19937& random) {
    ParagraphFormat format;
    const auto below = [&](unsigned limit) {
        return static_cast<std::int32_t>(static_cast<unsigned>(random()) % limit);
    };
    format.alignment = static_cast<Alignment>(below(4));
    format.right_to_left = below(4) == 0;
    format.left_indent = below(3) * 360;
    format.first_line_indent = below(3) * -180;
    format.space_after = below(2) * 120;
    for (std::int32_t tab = below(3); tab > 0; --tab)
        format.tabs.push_back({tab * 500, static_cast<TabKind>(below(5))});
    return format;
}

TEST(RtfProperty, WhatIsWrittenReadsBackTheSame) {
    std::mt19937 random(11);
    constexpr char16_t kUnits[] = u"ab {}\\\t\x0b\x07ä€\u05e9\u3042\U0001F600";
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        RichText text;
        const int paragraphs = static_cast<int>(random() % 6);
        for (int paragraph = 0; paragraph < paragraphs; ++paragraph) {
            RichText line;
            for (unsigned run = 0; run < random() % 4; ++run) {
                std::u16string units;
                for (unsigned i = 0; i < 1 + random() % 5; ++i) {
                    const std::size_t at = random() % (std::size(kUnits) - 2);
                    units += at < std::size(kUnits) - 3 ? std::u16string(1, kUnits[at])
                                                        : std::u16string(u"\U0001F600");
                }
                RichText piece;
                piece.text = units;
                piece.char_runs.push_back({piece.Length(), RandomFormat(random)});
                line.Append(piece);
            }
            if (paragraph + 1 < paragraphs) {
                RichText end;
                end.text = u"\r\n";
                end.char_runs.push_back({2, RandomFormat(random)});
                line.Append(end);
            }
            if (!line.Empty())
                line.paragraph_runs = {{line.Length(), RandomParagraph(random)}};
            text.Append(line);
        }
        const RichText read = ReadRtf(WriteRtf(text));
        ASSERT_EQ(Notation(read), Notation(text));
        ASSERT_EQ(read.char_runs.size(), text.char_runs.size());
        for (std::size_t run = 0; run < text.char_runs.size(); ++run) {
            const CharFormat& got = read.char_runs[run].format;
            const CharFormat& put = text.char_runs[run].format;
            ASSERT_EQ(got.font.view(), put.font.view());
            ASSERT_EQ(got.half_points, put.half_points);
            ASSERT_EQ(got.underline, put.underline);
        }
        ASSERT_EQ(read.paragraph_runs.size(), text.paragraph_runs.size());
        ASSERT_EQ(read, text);
    }
}

TEST(RtfCorpus, EveryDocumentReadsAndRoundsTrips) {
    const std::filesystem::path folder = std::string(ZORVANE_CORPUS) + "/rtf";
    if (!std::filesystem::exists(folder))
        GTEST_SKIP() << "no documents";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        SCOPED_TRACE(entry.path().filename());
        const Result<std::string> bytes = ReadWholeFile(entry.path().string());
        ASSERT_TRUE(bytes.ok());
        const RichText text = ReadRtf(bytes.value());
        EXPECT_GT(text.Length(), 10);
        EXPECT_EQ(ReadRtf(WriteRtf(text)).text, text.text);
        for (std::size_t cut = 0; cut < bytes.value().size(); cut += 97)
            ReadRtf(bytes.value().substr(0, cut));
    }
}

}  // namespace
}  // namespace zorvane::rtf_test
