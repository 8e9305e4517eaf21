#include "compare/engine/pieces.h"

#include <ostream>

#include "common/base/text_encoding.h"
#include "compare/engine/line_filter.h"
#include "tests/support/compared_pair.h"
#include "tests/support/found_sections.h"

namespace zorvane {

void PrintTo(const ParagraphPair& pair, std::ostream* out) {
    *out << pair.original << "|" << pair.modified;
}
static bool operator==(const ParagraphPair& left, const ParagraphPair& right) {
    return left.original == right.original && left.modified == right.modified;
}

namespace {

std::string Notation(const std::vector<Piece>& pieces) {
    std::string out;
    for (const Piece& piece : pieces) {
        const std::string text = ToUtf8(piece.text);
        switch (piece.kind) {
            case PieceKind::Same:
                out += text;
                break;
            case PieceKind::Deleted:
                out += "[-" + text + "]";
                break;
            case PieceKind::Added:
                out += "[+" + text + "]";
                break;
            case PieceKind::ChangedOld:
                out += "[<" + text + "]";
                break;
            case PieceKind::ChangedNew:
                out += "[>" + text + "]";
                break;
        }
    }
    return out;
}

const LineFilter* IgnoreCase() {
    static const LineFilter filter = [] {
        LineFilter made;
        EXPECT_TRUE(made.Set({true, false, false}, "").ok());
        return made;
    }();
    return &filter;
}

std::vector<Piece> Merged(std::u16string_view original, std::u16string_view modified,
                          bool letters = false) {
    const Comparison found =
        FoundSections(original, modified, {.tokens = {}, .by_character = letters});
    return MergedPieces(found, {original, modified, found.sections});
}

struct MergeRow {
    const char* name;
    std::u16string original;
    std::u16string modified;
    bool letters;
    const char* merged;
};
TEST(MergedPieces, HoldBothTexts) {
    const MergeRow rows[] = {
        {"the blank behind a changed word stays", u"ant bee cow", u"ant fox cow", false,
         "ant [<bee][>fox] cow"},
        {"and so does a cell mark", u"ant\abee\acow\a", u"ant\afox\acow\a", false,
         "ant\a[<bee][>fox]\acow\a"},
        {"and a line break", u"ant\vbee\vcow", u"ant\vfox\vcow", false, "ant\v[<bee][>fox]\vcow"},
        {"the last word equals itself whatever follows", u"a b", u"a b c", false, "a b[+ c]"},
        {"an added word", u"a c", u"a b c", false, "a [+b ]c"},
        {"the first word goes", u"a b", u"b", false, "[-a ]b"},
        {"two changed paragraphs keep their break", u"one two\r\nthree", u"one 2\r\nthrice", false,
         "one [<two\r\nthree][>2\r\nthrice]"},
        {"a paragraph goes with one break", u"pear\r\nquince\r\nreddish x", u"pear\r\nreddish y",
         false, "pear\r\n[-quince\r\n]reddish [<x][>y]"},
        {"a blank gives way to a break", u"one two", u"one\r\ntwo", false, "one[+\r\n]two"},
        {"a break gives way to a blank", u"one\r\ntwo", u"one two", false, "one[-\r\n]two"},
        {"letters", u"a horse", u"a house", true, "a ho[<r][>u]se"},
        {"a letter less at the end", u"cars x", u"car x", true, "car[-s] x"},
        {"a letter more in front", u"ark x", u"bark x", true, "[+b]ark x"},
        {"the last letter", u"cat", u"car", true, "ca[<t][>r]"},
    };
    for (const MergeRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Notation(Merged(row.original, row.modified, row.letters)), row.merged);
    }
}

TEST(MergedPieces, ShowTheOriginalsSpellingWhereNothingChanged) {
    const std::u16string original = u"The cat sleeps";
    const std::u16string modified = u"the dog sleeps";
    const Comparison found = FoundSections(
        original, modified, {.tokens = {.ignore_case = true, .filter = IgnoreCase()}});
    const ChangeText change{original, modified, found.sections};
    EXPECT_EQ(Notation(MergedPieces(found, change)), "The [<cat][>dog] sleeps");
    EXPECT_EQ(Notation(SidePieces(found, change, Side::Modified)), "the [>dog] sleeps");
}

std::u16string Joined(const std::vector<Piece>& pieces, bool (*wanted)(PieceKind)) {
    std::u16string text;
    for (const Piece& piece : pieces)
        text += wanted(piece.kind) ? piece.text : u"";
    return text;
}

bool Any(PieceKind /*kind*/) {
    return true;
}
bool OfOriginal(PieceKind kind) {
    return IsOriginalPiece(kind);
}
bool OfModified(PieceKind kind) {
    return IsModifiedPiece(kind);
}

std::u16string JoinedParagraphs(const TextLines& paragraphs) {
    std::string text;
    for (const std::string& paragraph : paragraphs)
        text += (text.empty() ? "" : "\r\n") + paragraph;
    return ToUtf16(text);
}

std::size_t Breaks(std::u16string_view text) {
    std::size_t count = 0;
    for (const char16_t unit : text)
        count += unit == u'\n' ? 1U : 0U;
    return count;
}

// What the break takes the place of is left out of the merged text, and nothing else.
std::u16string WithoutBlanks(std::u16string text) {
    std::erase(text, u' ');
    return text;
}

TEST(PiecesProperty, HoldBothTexts) {
    std::mt19937 random(11);
    for (unsigned round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        const TextLines paragraphs = RandomParagraphs(random, 1 + round % 6);
        const std::u16string original = JoinedParagraphs(paragraphs);
        const std::u16string modified =
            JoinedParagraphs(round % 3 == 0 ? RandomParagraphs(random, 1 + random() % 5)
                                            : EditedParagraphs(random, paragraphs));
        const Comparison found =
            FoundSections(original, modified, {.tokens = {}, .by_character = round % 2 == 0});
        const ChangeText change{original, modified, found.sections};
        const std::vector<Piece> merged = MergedPieces(found, change);
        const std::vector<Piece> left = SidePieces(found, change, Side::Original);
        const std::vector<Piece> right = SidePieces(found, change, Side::Modified);
        EXPECT_EQ(Joined(left, Any), original);
        EXPECT_EQ(Joined(right, Any), modified);
        EXPECT_EQ(WithoutBlanks(Joined(merged, OfOriginal)), WithoutBlanks(original));
        EXPECT_EQ(WithoutBlanks(Joined(merged, OfModified)), WithoutBlanks(modified));
        EXPECT_EQ(SplitPieces(left).size(), Breaks(original) + 1);
        EXPECT_EQ(SplitPieces(right).size(), Breaks(modified) + 1);
        for (const Piece& piece : merged) {
            EXPECT_FALSE(piece.text.front() >= 0xDC00 && piece.text.front() < 0xE000);
            EXPECT_FALSE(piece.text.back() >= 0xD800 && piece.text.back() < 0xDC00);
            EXPECT_FALSE(piece.text.front() == u'\n' || piece.text.back() == u'\r');
        }
    }
}

TEST(SplitPieces, CutsAtBreaks) {
    const std::vector<Piece> pieces = {{PieceKind::Same, u"a"},
                                       {PieceKind::Added, u"\r\nb\r\n"},
                                       {PieceKind::Same, u"c\rd\n\r\n"}};
    const std::vector<PieceParagraph> paragraphs = SplitPieces(pieces);
    ASSERT_EQ(paragraphs.size(), 4U);
    EXPECT_EQ(Notation(paragraphs[0].pieces), "a");
    EXPECT_TRUE(paragraphs[0].BreakStandsOut());
    EXPECT_EQ(Notation(paragraphs[1].pieces), "[+b]");
    EXPECT_FALSE(paragraphs[1].BreakStandsOut());
    EXPECT_EQ(Notation(paragraphs[2].pieces), "c\rd\n");
    EXPECT_FALSE(paragraphs[2].BreakStandsOut());
    EXPECT_TRUE(paragraphs[3].pieces.empty());
}

struct PairRow {
    const char* name;
    TextLines original;
    TextLines modified;
    std::vector<ParagraphPair> pairs;
};
TEST(PairParagraphs, PutsWhatBelongsTogetherBesideEachOther) {
    const PairRow rows[] = {
        {"one and one", {"a"}, {"b"}, {{0, 0}}},
        {"added in the middle",
         {"roof and wall", "rent 5"},
         {"roof and x wall", "pets", "rent 6"},
         {{0, 0}, {-1, 1}, {1, 2}}},
        {"as many, but others",
         {"pets", "roof and wall"},
         {"roof and x wall", "new"},
         {{0, -1}, {1, 0}, {-1, 1}}},
        {"nothing shared goes by order", {"a", "b"}, {"x", "y", "z"}, {{0, 0}, {1, 1}, {-1, 2}}},
        {"what is too little to belong together",
         {"five words and nothing more", "keys"},
         {"something else", "and so it goes on forever", "keys"},
         {{0, 0}, {-1, 1}, {1, 2}}},
        {"one becomes two",
         {"roof and wall rent five"},
         {"roof and wall", "rent five"},
         {{0, 0}, {-1, 1}}},
    };
    for (const PairRow& row : rows) {
        SCOPED_TRACE(row.name);
        const std::vector<Piece> merged =
            Merged(JoinedParagraphs(row.original), JoinedParagraphs(row.modified));
        EXPECT_EQ(
            PairParagraphs(SplitPieces(merged), static_cast<std::int32_t>(row.original.size()),
                           static_cast<std::int32_t>(row.modified.size())),
            row.pairs)
            << Notation(merged);
    }
}

}  // namespace
}  // namespace zorvane
