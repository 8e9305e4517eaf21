#include "compare/document/document_look_of.h"

#include <gtest/gtest.h>

#include "compare/document/heading_places.h"

namespace zorvane::document_look_of_test {
namespace {

CharFormat Sized(std::int32_t points, bool bold = false, bool italic = false) {
    CharFormat format;
    format.half_points = points * 2;
    format.bold = bold;
    format.italic = italic;
    return format;
}

// Runs of characters, in one paragraph format.
RichText Text(std::initializer_list<std::pair<std::u16string_view, CharFormat>> runs) {
    RichText text;
    for (const auto& [words, format] : runs)
        text.AppendPlain(words, format);
    return text;
}

const std::u16string kProse = u"prose that is long enough to be most of the text by far\r\n";

TEST(DocumentLook, FindsBoldAndItalicWords) {
    const DocumentLook look = LookOf(Text({{u"a ", Sized(11)},
                                           {u"b ", Sized(11, true)},
                                           {u"c ", Sized(12, true)},
                                           {u"d", Sized(11, false, true)},
                                           {u" e", Sized(11)}}));
    const std::vector<WordsLook> expected = {{2, true, false}, {6, false, true}, {7, false, false}};
    EXPECT_EQ(look.words, expected);
}

TEST(DocumentLook, OneFormatHasNone) {
    EXPECT_TRUE(LookOf(Text({{kProse, Sized(11, true)}})).Plain());
    EXPECT_TRUE(LookOf({}).Plain());
}

struct HeadingRow {
    const char* name;
    std::int32_t points;
    std::u16string text;
    int level;
};
TEST(DocumentLook, TellsHeadingsByTheirSize) {
    const HeadingRow rows[] = {
        {"a title", 28, u"Title", 1},
        {"a heading", 16, u"Heading", 2},
        {"a small heading", 13, u"Heading", 3},
        {"nearly the body", 11, u"Words", 0},
        {"small print", 8, u"Words", 0},
        {"a whole paragraph in large letters", 16, std::u16string(300, u'x'), 0},
        {"nothing", 28, u"", 0},
    };
    for (const HeadingRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::u16string body = kProse + kProse + kProse + kProse + kProse + kProse + kProse;
        const DocumentLook look = LookOf(Text({{body, Sized(11)},
                                               {row.text + u"\r\n", Sized(row.points)},
                                               {u"end", Sized(11, false, true)}}));
        const int level = look.paragraphs.empty() ? 0 : look.paragraphs[0].heading;
        EXPECT_EQ(level, row.level);
        if (row.level > 0) {
            EXPECT_EQ(look.paragraphs[0].number, 8);
        }
    }
    const DocumentLook initial =
        LookOf(Text({{u"O", Sized(40)}, {u"nce upon a time\r\n" + kProse, Sized(11)}}));
    EXPECT_TRUE(initial.paragraphs.empty()) << "one large letter";
}

TEST(DocumentLook, TakesAlignmentAndIndentsOfParagraphs) {
    RichText text = Text({{u"a\r\nbb\r\nc\r\nd\r\ne", Sized(11)}});
    ParagraphFormat centred;
    centred.alignment = Alignment::Center;
    ParagraphFormat right;
    right.alignment = Alignment::Right;
    ParagraphFormat item;
    item.left_indent = 600;
    item.first_line_indent = -360;
    ParagraphFormat deep;
    deep.left_indent = 100'000;
    text.paragraph_runs = {{3, centred}, {4, right}, {3, item}, {3, deep}, {1, {}}};
    const DocumentLook look = LookOf(text);
    const std::vector<ParagraphLook> expected = {{.number = 1, .alignment = LookAlignment::Center},
                                                 {.number = 2, .alignment = LookAlignment::Right},
                                                 {.number = 3, .indent = 1, .hanging = true},
                                                 {.number = 4, .indent = 8}};
    EXPECT_EQ(look.paragraphs, expected);
}

struct HeadingPlacesRow {
    const char* name;
    RichText text;
    std::vector<CharPos> places;
};
TEST(HeadingPlaces, AreShortParagraphsThatStandOut) {
    const CharFormat body = Sized(11);
    const CharFormat bold = Sized(11, true);
    const std::u16string far(241, u'x');
    const HeadingPlacesRow rows[] = {
        {"larger, its break in the body's letters",
         Text({{u"Term", Sized(12)}, {u"\r\n" + kProse, body}}),
         {CharPos{0}}},
        {"bold ones together, a blank one between",
         Text({{kProse, body}, {u"A\r\n \r\nB\r\n", bold}, {kProse, body}}),
         {CharPos{57}, CharPos{63}}},
        {"a bold word", Text({{u"the ", body}, {u"Client", bold}, {u"\r\n" + kProse, body}}), {}},
        {"bold to the end of a paragraph and on",
         Text({{u"the ", body}, {u"Client\r\nFees\r\nA", bold}, {u" b\r\n" + kProse, body}}),
         {CharPos{12}}},
        {"at the end", Text({{kProse, body}, {u"End", bold}}), {CharPos{57}}},
        {"too long",
         Text({{far, bold}, {u"\r\n" + kProse + kProse + kProse + kProse + kProse, body}}),
         {}},
        {"all bold", Text({{kProse, bold}, {u"a", body}}), {}},
        {"one format", Text({{kProse, bold}}), {}},
        {"nothing", {}, {}},
    };
    for (const HeadingPlacesRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(HeadingPlaces(row.text), row.places);
    }
}

}  // namespace
}  // namespace zorvane::document_look_of_test
