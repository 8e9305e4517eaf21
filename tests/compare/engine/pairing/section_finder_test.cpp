// Words and letters inside a changed pair.
#include "compare/engine/pairing/section_finder.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/comparison_notation.h"
#include "tests/support/found_sections.h"

namespace zorvane {
namespace {

// ---- tokens ----

std::string TokensOf(std::u16string_view text, const TokenSwitches& switches = {}) {
    TokenizedText tokens;
    StopCheck never(nullptr);
    tokens.Cut(text, switches, never);
    std::string out;
    std::int32_t at = 0;
    for (std::int32_t i = 0; i < tokens.Count(); ++i) {
        const SectionToken& token = tokens.Tokens()[static_cast<std::size_t>(i)];
        EXPECT_EQ(token.begin, at) << "tokens lie end to end";
        at = token.end;
        out += "<" + WithPilcrows(tokens.Key(i)) + ">" + WithPilcrows(tokens.Separator(i));
    }
    EXPECT_EQ(at, static_cast<std::int32_t>(text.size()));
    return out;
}

struct TokenRow {
    const char* name;
    std::u16string text;
    const char* tokens;
    const char* without_blanks;
};
TEST(TokenizedText, IsWordsWithTheirSeparators) {
    const TokenRow rows[] = {
        {"nothing", u"", "", ""},
        {"words", u"one two", "<one> <two>", "<one> <two>"},
        {"a blank alone is its own key", u"a  b", "<a> < > <b>", "<a>  <b>"},
        {"padding is one token", u"a    b", "<a> <   >   <b>", "<a>    <b>"},
        {"a break is one separator", u"a\r\nb", "<a>¶<b>", "<a>¶<b>"},
        {"a blank and a break", u"a \r\nb", "<a> <¶>¶<b>", "<a> ¶<b>"},
        {"cell mark and line break", u"a\ab\vc", "<a>\a<b>\v<c>", "<a>\a<b>\v<c>"},
        {"a tab parts words only where blanks are ignored", u"a\tb", "<a\tb>", "<a>\t<b>"},
        {"a no-break space too", u"a\u00A0b", "<a\u00A0b>", "<a>\u00A0<b>"},
        {"in front", u" a", "< > <a>", "<a>"},
    };
    for (const TokenRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(TokensOf(row.text), row.tokens);
        EXPECT_EQ(TokensOf(row.text, {.ignore_whitespace = true}), row.without_blanks);
    }
}

TEST(TokenizedText, KeysAreFiltered) {
    LineFilter filter;
    ASSERT_TRUE(filter.Set({true, false, true}, "[0-9]+").ok());
    EXPECT_EQ(TokensOf(u"The 12 B4", {.filter = &filter}), "<the> <> <b>");
    TokenizedText tokens;
    StopCheck never(nullptr);
    tokens.Cut(u"The 12 B4 ", {.filter = &filter}, never);
    EXPECT_FALSE(tokens.IsNothing(0));
    EXPECT_TRUE(tokens.IsNothing(1));
}

// ---- sections ----

std::string Marked(std::u16string_view original, std::u16string_view modified,
                   const SectionSwitches& switches = {}) {
    return MarkedText(original, modified, FoundSections(original, modified, switches).sections);
}

struct SectionRow {
    const char* name;
    std::u16string original;
    std::u16string modified;
    const char* marked;
};
TEST(SectionFinder, MarksWordsAsAReaderWould) {
    const SectionRow rows[] = {
        {"the same", u"a b", u"a b", ""},
        {"nothing to something", u"", u"a b", "{+a b+}"},
        {"a word equals itself whatever follows", u"one two", u"one two three",
         "one two{+ three+}"},
        {"the last word, in front of a break", u"one two\r\nend", u"one 2\r\nend",
         "one [-two-]{+2+}¶end"},
        {"a trailing blank", u"one two", u"one two ", "one two{+ +}"},
        {"a no-break space", u"five apples here", u"five\u00A0apples here",
         "[-five apples -]{+five\u00A0apples +}here"},
        {"a second blank", u"one two", u"one  two", "one {+ +}two"},
        {"a paragraph end that came", u"one two", u"one\r\ntwo", "one[- -]{+¶+}two"},
        {"a paragraph end that went", u"one\r\ntwo", u"one two", "one[-¶-]{+ +}two"},
        {"a blank paragraph between", u"one\r\ntwo", u"one\r\n\r\ntwo", "one¶{+¶+}two"},
        {"a line break is no paragraph end", u"one\vtwo", u"one\r\ntwo", "one[-\v-]{+¶+}two"},
        {"a lone small word does not stay", u"wolves run of forests", u"sheep graze of meadows",
         "[-wolves run of forests-]{+sheep graze of meadows+}"},
        {"a rare word stays", u"wolves run anticonstitutionally forests",
         u"sheep graze anticonstitutionally meadows",
         "[-wolves run -]{+sheep graze +}anticonstitutionally [-forests-]{+meadows+}"},
        {"a clause slides to its comma", u"He came, he saw, he won.",
         u"He came, he sat, he saw, he won.", "He came, {+he sat, +}he saw, he won."},
    };
    for (const SectionRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string marked = Marked(row.original, row.modified);
        EXPECT_EQ(row.original == row.modified ? "" : marked, row.marked);
    }
}

TEST(SectionFinder, LargerSectionsJoinNearChunks) {
    const std::u16string original = u"the red boat passed two houses of our small town";
    const std::u16string modified = u"the red ship passed two churches of our small town";
    EXPECT_EQ(Marked(original, modified),
              "the red [-boat -]{+ship +}passed two [-houses -]{+churches +}of our small town");
    EXPECT_EQ(Marked(original, modified, {.tokens = {}, .larger = true}),
              "the red [-boat passed two houses -]{+ship passed two churches +}of our small town");
}

TEST(SectionFinder, ManyWordsAreSearchedTheCheaperWay) {
    std::mt19937 random(41);
    std::u16string original;
    for (int i = 0; i < 3000; ++i)
        original += u"word" + ToUtf16(std::to_string(random() % 2000)) + u" ";
    std::u16string modified = original;
    for (std::size_t at = 400; at < modified.size(); at += 4000)
        modified.insert(modified.find(u' ', at) + 1, u"inserted ");
    const Comparison found = FoundSections(original, modified);
    EXPECT_EQ(found.sections.size(), (modified.size() - original.size()) / 9);
    for (const SectionDetail& section : found.sections)
        EXPECT_EQ(modified.substr(static_cast<std::size_t>(section.places.modified.begin),
                                  static_cast<std::size_t>(section.places.modified.Length())),
                  u"inserted ");
}

// ---- letters ----

std::string MarkedLetters(std::u16string_view original, std::u16string_view modified,
                          const LetterSwitches& switches = {}) {
    LetterFinder finder;
    std::vector<FoundLetters> found;
    finder.Find(original, modified, switches, found);
    std::vector<DetailRecord> details;
    for (const FoundLetters& letters : found)
        found_sections::SetPlaces(letters.first, letters.second, details.emplace_back());
    return MarkedText(original, modified, details);
}

struct LetterRow {
    const char* name;
    std::u16string original;
    std::u16string modified;
    LetterSwitches switches;
    const char* marked;
};
TEST(LetterFinder, MarksWhatAReaderTakesForALetter) {
    const LetterRow rows[] = {
        {"in the middle", u"horse", u"house", {}, "ho[-r-]{+u+}se"},
        {"at the end", u"tool", u"tools", {}, "tool{+s+}"},
        {"at the front", u"ark", u"bark", {}, "{+b+}ark"},
        {"two single letters do not part a change", u"abxycd", u"abuyvd", {}, "ab[-xyc-]{+uyv+}d"},
        {"four do", u"aXbcdeYf", u"aUbcdeVf", {}, "a[-X-]{+U+}bcde[-Y-]{+V+}f"},
        {"surrogates share a half",
         u"\U0001F600",
         u"\U0001F601",
         {},
         "[-\U0001F600-]{+\U0001F601+}"},
        {"a combining mark goes with its letter",
         u"cafe\u0301s",
         u"cafes",
         {},
         "caf[-e\u0301-]{+e+}s"},
        {"a break is one letter", u"one\r\n", u"one\n", {}, "one[-¶-]{+¶+}"},
        {"case", u"HOUSe", u"house", {.ignore_case = true}, "HOUSe"},
        {"case counts", u"House", u"house", {}, "[-H-]{+h+}ouse"},
        {"blanks", u"a b", u"a\u00A0b", {.ignore_whitespace = true}, "a b"},
        {"blanks count", u"a b", u"a\u00A0b", {}, "a[- -]{+\u00A0+}b"},
    };
    for (const LetterRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(MarkedLetters(row.original, row.modified, row.switches), row.marked);
    }
}

TEST(LetterFinder, LongWordsAreSearchedTheCheaperWay) {
    std::mt19937 random(42);
    std::u16string original;
    for (int i = 0; i < 2000; ++i)
        original += static_cast<char16_t>(u'a' + random() % 26);
    std::u16string modified = u"1" + original + u"\U0001F600";
    modified.insert(1000, u"2\u0301");
    EXPECT_EQ(MarkedLetters(original, modified), "{+1+}" + ToUtf8(original.substr(0, 999)) +
                                                     "{+2\u0301+}" + ToUtf8(original.substr(999)) +
                                                     "{+\U0001F600+}");
}

}  // namespace
}  // namespace zorvane
