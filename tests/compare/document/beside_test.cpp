#include "compare/document/beside.h"

#include <gtest/gtest.h>

#include "compare/document/rtf_body.h"
#include "compare/document/rtf_reader.h"

namespace zorvane {

std::ostream& operator<<(std::ostream& out, const BesideItem& item) {
    return out << NameOf(item.kind).option << " @" << item.paragraph << " \"" << item.text << "\" "
               << item.digest;
}

namespace beside_test {
namespace {

TEST(Beside, NamesAreInTheOrderOfTheKinds) {
    std::set<std::string_view> options;
    for (std::size_t i = 0; i < kBesideKinds; ++i) {
        EXPECT_EQ(static_cast<std::size_t>(BesideKindNames()[i].kind), i);
        options.insert(BesideKindNames()[i].option);
    }
    EXPECT_EQ(options.size(), kBesideKinds);
}

TEST(Beside, ReadsListsOfKinds) {
    using Kinds = std::set<BesideKind>;
    EXPECT_EQ(ParseBesideKinds("links").value(), Kinds{BesideKind::Link});
    EXPECT_EQ(ParseBesideKinds(" Pictures, formatting ,").value(),
              (Kinds{BesideKind::Picture, BesideKind::Formatting}));
    EXPECT_EQ(ParseBesideKinds("all").value().size(), kBesideKinds);
    EXPECT_FALSE(ParseBesideKinds("").ok());
    const auto wrong = ParseBesideKinds("links,colours");
    ASSERT_FALSE(wrong.ok());
    EXPECT_EQ(wrong.failure().reason.find("\"colours\" is none of: all, pictures"), 0U);
}

TEST(Beside, TextsAreOneBoundedLine) {
    EXPECT_EQ(BesideText(" a\r\n\tb\x01 c "), "a b c");
    const std::string cut = BesideText(std::string(197, 'x') + "\xC3\xA4\xC3\xA4\xC3\xA4");
    EXPECT_EQ(cut, std::string(197, 'x') + "\xE2\x80\xA6");
    EXPECT_EQ(BesideText(std::string(200, 'x')), std::string(200, 'x'));
}

TEST(Beside, TravelsAsPrintableText) {
    const std::vector<BesideItem> items = {
        {BesideKind::Link, 12, "a {b}\\par \xC3\xA4 100%25", BesideDigest("x")},
        {BesideKind::Metadata, 0, "title: \xE2\x80\x9Cy\xE2\x80\x9D", BesideDigest("")},
        {BesideKind::Picture, kBesideHere, "", BesideDigest("z")}};
    const std::string bytes = EncodeBesideList(items);
    EXPECT_EQ(bytes.find_first_of("\\{}\r\t"), std::string::npos);
    EXPECT_EQ(DecodeBesideList(bytes), items);
}

TEST(Beside, PassesOverWhatIsNoItem) {
    const std::string digest = BesideDigest("x");
    for (const std::string& line :
         {std::string(), std::string("links"), "links 1 " + digest.substr(1) + " a",
          "links -2 " + digest + " a", "formatting 1 " + digest + " a", "links x " + digest + " a",
          "links 99999999999 " + digest + " a", "Links 1 " + digest + " a",
          "links 1 " + digest.substr(1) + "G a"}) {
        SCOPED_TRACE(line);
        EXPECT_EQ(DecodeBeside(line), std::nullopt);
    }
    EXPECT_EQ(DecodeBeside("links 1 " + digest + " %ff%zz%4")->text, "");
    EXPECT_EQ(DecodeBeside("links 1 " + digest + " " + std::string(100000, 'a'))->text.size(),
              kBesideTextBytes);
    std::string many;
    for (std::size_t i = 0; i < 3 * kMostBesideItems; ++i)
        many += "links 1 " + digest + " a\n";
    EXPECT_LE(DecodeBesideList(many).size(), kMostBesideItems + kBesideKinds);
}

TEST(Beside, ManyItemsAreOneNumberThatStillTellsAChange) {
    const auto fill = [](std::string_view last) {
        BesideList list;
        for (std::size_t i = 0; i < kMostBesideItems + 2; ++i)
            list.Add(MakeBeside(BesideKind::Link, "same"));
        list.Add(MakeBeside(BesideKind::Link, last));
        list.Add(MakeBeside(BesideKind::Picture, "p"));
        return list.Take();
    };
    const std::vector<BesideItem> items = fill("a");
    ASSERT_EQ(items.size(), kMostBesideItems + 2);
    EXPECT_EQ(items[kMostBesideItems].text, "others: 1");
    EXPECT_EQ(items[kMostBesideItems].kind, BesideKind::Picture);
    EXPECT_EQ(items[kMostBesideItems + 1].text, "others: 3");
    EXPECT_EQ(items[kMostBesideItems + 1].paragraph, 0);
    EXPECT_EQ(items, fill("a"));
    EXPECT_NE(items, fill("b"));
}

std::vector<BesideItem> BesideOf(std::string_view rtf, std::string_view text) {
    std::vector<BesideItem> items;
    EXPECT_EQ(ReadRtf(rtf, items).text, ReadRtf(rtf).text);
    std::string shown;
    for (const char16_t unit : ReadRtf(rtf).text) {
        if (unit != u'\n')
            shown += unit == u'\r' ? '|' : static_cast<char>(unit);
    }
    EXPECT_EQ(shown, text);
    return items;
}

TEST(Beside, RichTextCarriesItemsUnseen) {
    RtfBody body;
    body.Text("a");
    body.Beside(MakeBeside(BesideKind::Link, "http://x/\\{}"));
    body.Units(u"\r");
    body.Beside(*MakeMetadata("title", "T"));
    body.Beside(MakeBeside(BesideKind::Picture, "logo", "bytes"));
    body.Text("b");
    EXPECT_EQ(BesideOf(body.Finish(), "a|b"),
              (std::vector<BesideItem>{
                  {BesideKind::Link, 1, "http://x/\\{}", BesideDigest("http://x/\\{}")},
                  {BesideKind::Metadata, 0, "title: T", BesideDigest("title: T")},
                  {BesideKind::Picture, 2, "logo", BesideDigest("bytes")}}));
}

struct RtfRow {
    const char* name;
    std::string_view rtf;  ///< inside of the document
    std::string_view text;
    std::vector<BesideItem> items;
};

BesideItem At(std::int32_t paragraph, BesideKind kind, std::string_view text,
              std::string_view content) {
    return {kind, paragraph, std::string(text), BesideDigest(content)};
}
BesideItem At(std::int32_t paragraph, BesideKind kind, std::string_view text) {
    return At(paragraph, kind, text, text);
}

TEST(Beside, RichTextFormulasDifferByTheirStructure) {
    const auto formula = [](std::string_view structure) {
        const auto items = BesideOf("{\\rtf1 a{\\*\\moMath" + std::string(structure) + "}b}", "ab");
        EXPECT_EQ(items.size(), 1U);
        return items.at(0);
    };
    const BesideItem power = formula("{\\msSup{\\me{\\mr\\i x}}{\\msup{\\mr 2}}}");
    EXPECT_EQ(power.text, "x2");
    EXPECT_EQ(power, formula("{\\msSup{\\me{\\mr\\i\\f5 x}}{\\msup{\\mr 2}}}"));
    EXPECT_NE(power.digest, formula("{\\msSub{\\me{\\mr x}}{\\msub{\\mr 2}}}").digest);
    EXPECT_NE(power.digest, formula("{\\msSup{\\me{\\mr y}}{\\msup{\\mr 2}}}").digest);
    EXPECT_NE(formula("{\\mr\\u945?}").digest, formula("{\\mr\\u946?}").digest);
}

TEST(Beside, WhatIsLongerThanItsTextIsStillTold) {
    const std::string start(500, 'x');
    for (const char* group : {"{\\*\\annotation ", "{\\v ", "{\\*\\fldinst ", "{\\deleted "}) {
        SCOPED_TRACE(group);
        const auto item = [&](const char* end) {
            return BesideOf("{\\rtf1 " + (group + start) + end + "}a}", "a").at(0);
        };
        EXPECT_EQ(item("a"), item("a"));
        EXPECT_EQ(item("a").text, item("b").text);
        EXPECT_NE(item("a").digest, item("b").digest);
    }
}

TEST(Beside, RichTextOfOthersTellsWhatItLeavesOut) {
    const RtfRow rows[] = {
        {"nothing", "a\\par b", "a|b", {}},
        {"a picture of digits in lines",
         "a\\par {\\pict\\pngblip\\picw10{\\*\\blipuid 00ff}\n61\r\n62 6A}b",
         "a|b",
         {At(2, BesideKind::Picture, "PNG picture", "abj")}},
        {"a picture of bytes that look like groups",
         "{\\pict\\jpegblip\\bin4 }{\\\\}a",
         "a",
         {At(1, BesideKind::Picture, "JPEG picture", "}{\\\\")}},
        {"a picture in both forms counts once",
         "{\\*\\shppict{\\pict\\pngblip 61}}{\\nonshppict{\\pict\\wmetafile8 62}}a",
         "a",
         {At(1, BesideKind::Picture, "PNG picture", "a")}},
        {"links and fields",
         "{\\field{\\*\\fldinst{HYPERLINK \"http://x/a\" \\\\l \"b\" }}{\\fldrslt t}}"
         "{\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}{\\field{\\*\\fldinst PAGEREF _Toc1}{\\fldrslt "
         "2}}",
         "t12",
         {At(1, BesideKind::Link, "http://x/a#b"), At(1, BesideKind::Field, "PAGE")}},
        {"hidden and deleted text, by paragraph",
         "a{\\v b\\u228?}\\par c{\\deleted d}{\\v e\\'e4}",
         "a|c",
         {At(1, BesideKind::HiddenText, "b\xC3\xA4"), At(2, BesideKind::HiddenText, "e\xC3\xA4"),
          At(2, BesideKind::TrackedChange, "deleted: d")}},
        {"a comment with its author",
         "a{\\*\\atnid 1}{\\*\\atnauthor Ann}{\\*\\annotation{\\*\\atndate 5}\\chatn  why?}",
         "a",
         {At(1, BesideKind::Comment, "Ann: why?")}},
        {"an object with its class",
         "{\\object\\objemb{\\*\\objclass Sheet.1}{\\*\\objdata 6162}{\\result r}}",
         "r",
         {At(1, BesideKind::Object, "Sheet.1", "ab")}},
        {"what the document says of itself",
         "{\\info{\\title Plan}{\\author \\'c4nn}{\\creatim\\yr2020}}{\\header Draft\\par}a",
         "a",
         {At(0, BesideKind::Metadata, "title: Plan"),
          At(0, BesideKind::Metadata, "author: \xC3\x84nn"),
          At(0, BesideKind::Metadata, "header: Draft")}},
        {"in heads and feet",
         "{\\headerf Draft{\\*\\shppict{\\pict\\pngblip 61}}{\\nonshppict{\\pict\\wmetafile8 62}}}"
         "{\\footerr{\\field{\\*\\fldinst{HYPERLINK \"http://x/\"}}{\\fldrslt "
         "t}}{\\object{\\*\\objclass "
         "S}{\\*\\objdata 62}}}a{\\pict 63}",
         "a",
         {At(0, BesideKind::Metadata, "header: Draft"),
          At(0, BesideKind::Picture, "header: PNG picture", "a"),
          At(0, BesideKind::Metadata, "footer: t"),
          At(0, BesideKind::Link, "footer: http://x/", "http://x/"),
          At(0, BesideKind::Object, "footer: S", "b"), At(1, BesideKind::Picture, "picture", "c")}},
        {"in a box, whose paragraphs come behind the one that anchors it",
         "a{\\shp{\\*\\shpinst{\\shptxt x\\par y{\\*\\annotation n}{\\v h}}}}"
         "{\\shp{\\*\\shpinst{\\shptxt z{\\*\\annotation o}\\par}}}\\par b{\\*\\annotation m}",
         "a|x|y|z|b",
         {At(3, BesideKind::Comment, "n"), At(3, BesideKind::HiddenText, "h"),
          At(4, BesideKind::Comment, "o"), At(5, BesideKind::Comment, "m")}},
        {"notes and boxes of hidden and deleted text",
         "a{\\v b{\\footnote\\plain n}{\\shp{\\*\\shpinst{\\shptxt\\plain o}}}}"
         "{\\deleted c{\\footnote m}}",
         "a",
         {At(1, BesideKind::HiddenText, "bno"), At(1, BesideKind::TrackedChange, "deleted: cm")}},
        {"in a row that is hidden as a whole",
         "\\trowd\\intbl{\\v s}\\cell\\row\\pard b{\\v t}",
         "b",
         {At(1, BesideKind::HiddenText, "s"), At(1, BesideKind::HiddenText, "t")}},
        {"cut off in a picture",
         "a{\\pict\\pngblip 6",
         "a",
         {At(1, BesideKind::Picture, "PNG picture", ""),
          At(0, BesideKind::DamagedPart, "end: the text is cut off", "end")}},
    };
    for (const RtfRow& row : rows) {
        SCOPED_TRACE(row.name);
        const bool whole = std::string_view(row.name).find("cut off") != 0;
        EXPECT_EQ(BesideOf("{\\rtf1\\ansi " + std::string(row.rtf) + (whole ? "}" : ""), row.text),
                  row.items);
    }
}

}  // namespace
}  // namespace beside_test
}  // namespace zorvane
