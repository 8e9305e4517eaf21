#include "compare/document/beside_compare.h"

#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "compare/document/format_compare.h"
#include "compare/document/rtf_reader.h"

namespace zorvane::beside_compare_test {
namespace {

/// Of "link 3 a, picture 4 p"; in "comment 0 B3: x" of a sheet "x" alone is compared.
std::vector<BesideItem> Items(const std::string& notation) {
    using enum BesideKind;
    const std::map<std::string, BesideKind> kinds = {
        {"link", Link}, {"picture", Picture}, {"metadata", Metadata}, {"comment", Comment}};
    std::vector<BesideItem> items;
    std::istringstream parts(notation);
    std::string kind;
    std::int32_t paragraph = 0;
    for (std::string text; parts >> kind >> paragraph && std::getline(parts >> std::ws, text, ',');)
        items.push_back({kinds.at(kind), paragraph, text,
                         BesideDigest(kind == "comment" ? text.substr(text.find(": ")) : text)});
    return items;
}

std::string Shown(const std::vector<BesideDifference>& differences) {
    std::string text;
    for (const BesideDifference& difference : differences) {
        text += std::string(NameOf(difference.kind).option) + " " +
                std::string(VerbOf(difference.kind, difference.change)) + " " +
                std::to_string(difference.paragraphs.original.value) + ">" +
                std::to_string(difference.paragraphs.modified.value) + " " + difference.old_text +
                ">" + difference.new_text + ";";
    }
    return text;
}

struct Row {
    const char* name;
    const char* original;
    const char* modified;
    ParagraphPartners partners;
    std::string_view shown;
};

TEST(BesideCompare, TellsWhatChanged) {
    const ParagraphPartners straight = {1, 2, 3, 4};
    const ParagraphPartners second_deleted = {1, 0, 2, 3};
    const ParagraphPartners second_added = {1, 3, 4, 5};
    const ParagraphPartners none;
    const Row rows[] = {
        {"nothing", "", "", straight, ""},
        {"the same", "link 1 a, link 1 b", "link 1 a, link 1 b", straight, ""},
        {"the same behind a new paragraph", "link 2 a, picture 4 p", "link 3 a, picture 5 p",
         second_added, ""},
        {"another target", "link 3 a", "link 3 b", straight, "links changed 3>3 a>b;"},
        {"only the second of a paragraph", "link 1 a, link 1 b", "link 1 a, link 1 c", straight,
         "links changed 1>1 b>c;"},
        {"the order in a paragraph is that of its words", "link 1 a, link 1 b",
         "link 1 b, link 1 a", straight, ""},
        {"added and removed", "picture 1 p", "link 2 a", straight,
         "pictures removed 1>0 p>;links added 0>2 >a;"},
        {"twice the same, once gone", "picture 1 p, picture 1 p", "picture 1 p", straight,
         "pictures removed 1>0 p>;"},
        {"two paragraphs' links exchanged", "link 1 a, link 2 b", "link 1 b, link 2 a", straight,
         "links changed 1>1 a>b;links changed 2>2 b>a;"},
        {"two neighbours' pictures exchanged", "picture 1 a, picture 2 b",
         "picture 1 b, picture 2 a", straight,
         "pictures replaced 1>1 a>b;pictures replaced 2>2 b>a;"},
        {"a picture that went to the next paragraph", "picture 2 p", "picture 3 p", straight, ""},
        {"a picture that went farther", "picture 1 p", "picture 4 p", straight,
         "pictures moved 1>4 p>p;"},
        {"a link that went to the next paragraph", "link 2 a", "link 3 a", straight,
         "links moved 2>3 a>a;"},
        {"out of a paragraph that was deleted", "picture 2 p", "picture 3 p", second_deleted, ""},
        {"gone with its paragraph", "picture 2 p, link 2 a", "", second_deleted,
         "pictures removed 2>0 p>;"},
        {"come with its paragraph", "", "picture 2 p, link 2 a", second_added,
         "pictures added 0>2 >p;"},
        {"another title", "metadata 0 author: A, metadata 0 title: T",
         "metadata 0 title: U, metadata 0 author: A", straight,
         "metadata changed 0>0 title: T>title: U;"},
        {"cells that a new row pushed down", "comment 0 S!B3: x, comment 0 S!B4: y",
         "comment 0 S!B4: x, comment 0 S!B5: y", none, ""},
        {"cells that changed places", "comment 0 S!B3: x, comment 0 S!B4: y",
         "comment 0 S!B3: y, comment 0 S!B4: x", none, "comments moved 0>0 S!B3: x>S!B4: x;"},
        {"the second of two equal ones is gone", "comment 0 S!B3: x, comment 0 S!B4: x",
         "comment 0 S!B3: x", none, "comments removed 0>0 S!B4: x>;"},
        {"the first of two equal ones is gone", "comment 0 S!B3: x, comment 0 S!B4: x",
         "comment 0 S!B4: x", none, "comments removed 0>0 S!B3: x>;"},
        {"more pairs are better than one in place",
         "comment 0 S!B1: y, comment 0 S!B2: z, comment 0 S!B3: x",
         "comment 0 S!B3: x, comment 0 S!B4: y, comment 0 S!B5: z", none,
         "comments moved 0>0 S!B3: x>S!B3: x;"},
        {"a cell's comment changed", "comment 0 S!B3: x, comment 0 S!B4: y",
         "comment 0 S!B3: z, comment 0 S!B4: y", none, "comments changed 0>0 S!B3: x>S!B3: z;"},
        {"numbers beyond the text", "link 9 a", "link 9 b", straight, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Shown(CompareBeside(Items(row.original), Items(row.modified), row.partners)),
                  row.shown);
    }
}

TEST(BesideCompare, FollowsManyThingsThroughTwoChanges) {
    std::string original;
    std::string modified = "comment 0 A1: new,";
    constexpr int kItems = 2500;
    for (int item = 1; item <= kItems; ++item) {
        const std::string text = std::to_string(item);
        original += "comment 0 A" + text + ": " + text + ",";
        modified += "comment 0 A" + std::to_string(item + 1) + ": " +
                    (item == kItems - 1 ? "other" : text) + ",";
    }
    EXPECT_EQ(Shown(CompareBeside(Items(original), Items(modified), {})),
              "comments removed 0>0 A2499: 2499>;comments added 0>0 >A1: new;comments added 0>0 "
              ">A2500: other;");
}

TEST(BesideCompare, SaysItInOneSentence) {
    EXPECT_EQ(BesideSentence({}), "");
    const auto change = [](BesideKind kind, BesideChange what, std::int32_t original,
                           std::int32_t modified) {
        return BesideDifference{
            kind, what, {ParagraphNumber{original}, ParagraphNumber{modified}}, "", ""};
    };
    EXPECT_EQ(BesideSentence({change(BesideKind::Picture, BesideChange::Changed, 2, 3),
                              change(BesideKind::Link, BesideChange::Changed, 9, 12),
                              change(BesideKind::Link, BesideChange::Changed, 9, 40),
                              change(BesideKind::Link, BesideChange::Removed, 7, 0),
                              change(BesideKind::Formatting, BesideChange::Changed, 1, 1)}),
              "Beside the words: 1 picture replaced (paragraph 3), 2 link targets changed (12, "
              "40), 1 link target removed (paragraph 7 of the original), formatting changed in 1 "
              "paragraph (paragraph 1).");
    std::vector<BesideDifference> many;
    for (std::int32_t i = 1; i <= 9; ++i)
        many.push_back(change(BesideKind::Formatting, BesideChange::Changed, i, i));
    EXPECT_EQ(BesideSentence(many),
              "Beside the words: formatting changed in 9 paragraphs (1, 2, 3, 4, 5, 6 and 3 "
              "more).");
    EXPECT_EQ(BesideSentence(
                  {{BesideKind::Metadata, BesideChange::Changed, {}, "title: a", "title: b"},
                   {BesideKind::PageWithoutText, BesideChange::Added, {}, "", "page 3: picture"}}),
              "Beside the words: 1 document property changed (title), 1 page without text added "
              "(page 3).");
}

struct FormatRow {
    const char* name;
    std::string_view original;
    std::string_view modified;
    FormatDepth depth;
    std::string_view shown;
};

TEST(FormatCompare, TellsOneDifferenceForAParagraph) {
    const FormatRow rows[] = {
        {"the same", "a {\\b b}\\par c", "a {\\b b}\\par c", FormatDepth::Full, ""},
        {"bold to struck through", "a {\\b price} c", "a {\\strike price} c", FormatDepth::Marks,
         "1>1 \u201Cprice\u201D bold, not struck through>\u201Cprice\u201D not bold, struck "
         "through"},
        {"superscript to subscript", "x{\\super 2}", "x{\\sub 2}", FormatDepth::Marks,
         "1>1 \u201C2\u201D superscript>\u201C2\u201D subscript"},
        {"superscript lost", "x\\par x{\\super 2}", "x\\par x2", FormatDepth::Marks,
         "2>2 \u201C2\u201D superscript>\u201C2\u201D on the line"},
        {"in a changed paragraph, what both have", "one {\\i two} three four",
         "zero two {\\b three} four", FormatDepth::Marks,
         "1>1 \u201Ctwo three\u201D italic, not bold>\u201Ctwo three\u201D not italic, bold"},
        {"a word that stood there twice", "two {\\b two}", "two", FormatDepth::Marks, ""},
        {"a word that came a second time", "two", "two {\\b two}", FormatDepth::Marks, ""},
        {"a blank has no looks", "a{\\b  }b", "a b", FormatDepth::Full, ""},
        {"an empty line has no looks", "\\qc\\b\\par", "\\pard\\par", FormatDepth::Full, ""},
        {"alignment", "\\qc a", "\\qr a", FormatDepth::Marks, "1>1 centred>right aligned"},
        {"colour and size are for files of one kind", "\\fs20 a", "{\\cf1\\fs24 a}",
         FormatDepth::Marks, ""},
        {"size", "\\fs20 a", "\\fs25 a", FormatDepth::Full,
         "1>1 \u201Ca\u201D 10 pt>\u201Ca\u201D 12.5 pt"},
        {"colour", "\\cf1 a", "\\cf2 a", FormatDepth::Full,
         "1>1 \u201Ca\u201D colour #ff0000>\u201Ca\u201D colour #0000ff"},
        {"black is the automatic colour", "\\cf3 a", "a", FormatDepth::Full, ""},
        {"indent of a deeper list level", "\\li360 a", "\\li720 a", FormatDepth::Full,
         "1>1 indent 18 pt>indent 36 pt"},
        {"kind of underline", "\\ul a", "\\uldb a", FormatDepth::Full,
         "1>1 \u201Ca\u201D underline 1>\u201Ca\u201D underline 3"},
        {"kind of underline across kinds of files", "\\ul a", "\\uldb a", FormatDepth::Marks, ""},
        {"a side without formatting", "{\\b a}", "a", FormatDepth::None, ""},
    };
    const auto read = [](std::string_view content) {
        return ReadRtf(
            "{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;"
            "\\red0\\green0\\blue0;}" +
            std::string(content) + "}");
    };
    for (const FormatRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::string shown;
        for (const BesideDifference& difference :
             CompareFormatting(read(row.original), read(row.modified), {1, 2}, row.depth)) {
            EXPECT_EQ(difference.kind, BesideKind::Formatting);
            shown += std::to_string(difference.paragraphs.original.value) + ">" +
                     std::to_string(difference.paragraphs.modified.value) + " " +
                     difference.old_text + ">" + difference.new_text;
        }
        EXPECT_EQ(shown, row.shown);
    }
}

TEST(FormatCompare, FollowsThePairsOfParagraphs) {
    const RichText original = ReadRtf("{\\rtf1 a\\par {\\b b}\\par c}");
    const RichText modified = ReadRtf("{\\rtf1 new\\par a\\par b\\par {\\i c}}");
    const auto found = CompareFormatting(original, modified, {2, 3, 0}, FormatDepth::Full);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].paragraphs.original.value, 2);
    EXPECT_EQ(found[0].paragraphs.modified.value, 3);
}

}  // namespace
}  // namespace zorvane::beside_compare_test
