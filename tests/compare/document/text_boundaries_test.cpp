#include "compare/document/text_boundaries.h"

#include <gtest/gtest.h>

#include "compare/document/memory_editor.h"
#include "tests/support/printers.h"

namespace zorvane::text_boundaries_test {
namespace {

struct PlaceRow {
    const char* name;
    const char16_t* text;
    TextUnit unit;
    std::vector<std::int32_t> places;  // from the begin of the text to its end
};
const PlaceRow kForwardRows[] = {
    {"letters and breaks", u"ab\r\nc\v", TextUnit::Character, {0, 1, 2, 4, 5, 6}},
    {"an accent belongs to its letter", u"e\x301x", TextUnit::Character, {0, 2, 3}},
    {"beyond the first plane", u"\xD83D\xDE00x", TextUnit::Character, {0, 2, 3}},
    {"a flag", u"\xD83C\xDDE9\xD83C\xDDEAx", TextUnit::Character, {0, 4, 5}},
    {"words with their blanks", u"one, two  three", TextUnit::Word, {0, 3, 5, 10, 15}},
    {"words and breaks", u" a\r\n\r\nb", TextUnit::Word, {0, 1, 2, 4, 6, 7}},
    {"signs inside a word", u"can't 3.5 x", TextUnit::Word, {0, 6, 10, 11}},
    {"lines", u"ab c\r\nd\ve", TextUnit::Line, {0, 4, 6, 7, 8, 9}},
};
TEST(TextBoundaries, GoForward) {
    for (const PlaceRow& row : kForwardRows) {
        SCOPED_TRACE(row.name);
        MemoryEditor editor;
        editor.SetText(row.text);
        std::vector<std::int32_t> places{0};
        for (CharPos at, next; (next = PlaceForward(editor, at, row.unit)) != at; at = next)
            places.push_back(next.value);
        EXPECT_EQ(places, row.places);
    }
}

const PlaceRow kBackRows[] = {
    {"letters and breaks", u"ab\r\nc\v", TextUnit::Character, {6, 5, 4, 2, 1, 0}},
    {"an accent belongs to its letter", u"e\x301x", TextUnit::Character, {3, 2, 0}},
    {"words with the blanks in front of the place",
     u"one, two  three",
     TextUnit::Word,
     {15, 10, 5, 3, 0}},
    {"words and breaks", u"b \r\n\r\n a", TextUnit::Word, {8, 7, 6, 4, 2, 0}},
    {"lines", u"ab c\r\nd\ve", TextUnit::Line, {9, 8, 7, 6, 4, 0}},
};
TEST(TextBoundaries, GoBack) {
    for (const PlaceRow& row : kBackRows) {
        SCOPED_TRACE(row.name);
        MemoryEditor editor;
        editor.SetText(row.text);
        CharPos at{editor.Length()};
        std::vector<std::int32_t> places{at.value};
        for (CharPos next; (next = PlaceBack(editor, at, row.unit)) != at; at = next)
            places.push_back(next.value);
        EXPECT_EQ(places, row.places);
    }
}

TEST(TextBoundaries, GoOnInWordsLongerThanTheyLook) {
    MemoryEditor editor;
    editor.SetText(std::u16string(5000, u'x') + u" y");
    CharPos at;
    for (int steps = 0; at < CharPos{5001} && steps < 20; ++steps)
        at = PlaceForward(editor, at, TextUnit::Word);
    EXPECT_EQ(at, CharPos{5001});
    EXPECT_LT(PlaceBack(editor, at - 1, TextUnit::Word), CharPos{4800});
}

TEST(TextBoundaries, FindTheWordAtAPlace) {
    MemoryEditor editor;
    editor.SetText(u"one, two\r\n\r\nx");
    const auto at = [&](std::int32_t place) { return WordAt(editor, CharPos{place}); };
    EXPECT_EQ(at(1), (TextRange{CharPos{0}, 3}));
    EXPECT_EQ(at(3), (TextRange{CharPos{3}, 1}));
    EXPECT_EQ(at(5), (TextRange{CharPos{5}, 3}));
    EXPECT_EQ(at(8), (TextRange{CharPos{5}, 3})) << "in front of the break";
    EXPECT_EQ(at(10), (TextRange{CharPos{10}, 0})) << "an empty paragraph";
    EXPECT_EQ(at(99), (TextRange{CharPos{12}, 1}));
}

}  // namespace
}  // namespace zorvane::text_boundaries_test
