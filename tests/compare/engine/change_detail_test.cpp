#include "compare/engine/change_detail.h"

#include <ostream>

#include "common/base/text_encoding.h"
#include "tests/support/compared_pair.h"

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

struct MergeRow {
    const char* name;
    std::u16string original;
    std::u16string modified;
    bool letters;
    const char* merged;
};
TEST(ChangeDetail, MergesBothTexts) {
    const MergeRow rows[] = {
        {"the blank behind a changed word stays", u"a b c", u"a x c", false, "a [<b][>x] c"},
        {"the last word equals itself whatever follows", u"a b", u"a b c", false, "a b[+ c]"},
        {"an added word", u"a c", u"a b c", false, "a [+b ]c"},
        {"the first word goes", u"a b", u"b", false, "[-a ]b"},
        {"two changed paragraphs keep their break", u"one two\r\nthree", u"one 2\r\n3", false,
         "one [<two][>2]\r\n[<three][>3]"},
        {"a paragraph goes with one break", u"p\r\nq\r\nr x", u"p\r\nr y", false,
         "p\r\n[-q\r\n]r [<x][>y]"},
        {"a lone return at the end", u"a\r", u"b\r", false, "[<a][>b]\r"},
        {"letters", u"a horse", u"a house", true, "a ho[<r][>u]se"},
        {"a letter less at the end", u"cars x", u"car x", true, "car[-s] x"},
        {"a letter more in front", u"ark x", u"bark x", true, "[+b]ark x"},
        {"the last letter", u"cat", u"car", true, "ca[<t][>r]"},
    };
    for (const MergeRow& row : rows) {
        SCOPED_TRACE(row.name);
        ChangeDetail detail({.by_character = row.letters});
        detail.Find(row.original, row.modified);
        EXPECT_EQ(Notation(detail.MergedPieces()), row.merged);
    }
}

struct SwitchRow {
    const char* name;
    DetailSwitches switches;
    std::u16string original;
    std::u16string modified;
    const char* merged;
};
TEST(ChangeDetail, LeavesOutWhatIsIgnored) {
    const SwitchRow rows[] = {
        {"case, and the original's spelling stays",
         {.ignore_case = true},
         u"The cat",
         u"the dog",
         "The [<cat][>dog]"},
        {"blanks", {.ignore_whitespace = true}, u"a\tb c", u"ab d", "a\tb [<c][>d]"},
        {"an expression",
         {.use_expressions = true, .expressions = "[0-9]"},
         u"5 a",
         u"6 b",
         "5 [<a][>b]"},
        {"an expression that is not to be used",
         {.expressions = "[0-9]"},
         u"5 a",
         u"6 a",
         "[<5][>6] a"},
    };
    for (const SwitchRow& row : rows) {
        SCOPED_TRACE(row.name);
        ChangeDetail detail(row.switches);
        detail.Find(row.original, row.modified);
        EXPECT_EQ(Notation(detail.MergedPieces()), row.merged);
    }
}

TEST(ChangeDetail, CountsOverAllChanges) {
    ChangeDetail detail({.by_character = true});
    detail.Find(u"a horse b", u"a house c b");
    detail.Find(u"a b c", u"a c");
    EXPECT_EQ(detail.SectionCounts().changes, 1);
    EXPECT_EQ(detail.SectionCounts().deletions, 1);
    EXPECT_EQ(detail.SectionCounts().additions, 0);
    EXPECT_EQ(detail.CharacterCounts().changes, 1);
    EXPECT_EQ(detail.CharacterCounts().additions, 1);  // "c "
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

std::u16string JoinedParagraphs(const Paragraphs& paragraphs) {
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

TEST(ChangeDetailProperty, PiecesHoldBothTexts) {
    std::mt19937 random(11);
    for (unsigned round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        const Paragraphs paragraphs = RandomParagraphs(random, 1 + round % 6);
        const std::u16string original = JoinedParagraphs(paragraphs);
        const std::u16string modified =
            JoinedParagraphs(round % 3 == 0 ? RandomParagraphs(random, 1 + random() % 5)
                                            : EditedParagraphs(random, paragraphs));
        ChangeDetail detail({.by_character = round % 2 == 0});
        detail.Find(original, modified);
        const std::vector<Piece> merged = detail.MergedPieces();
        EXPECT_EQ(Joined(detail.OriginalPieces(), Any), original);
        EXPECT_EQ(Joined(detail.ModifiedPieces(), Any), modified);
        EXPECT_EQ(Joined(merged, OfOriginal), original);
        EXPECT_EQ(Joined(merged, OfModified), modified);
        EXPECT_EQ(SplitPieces(detail.OriginalPieces()).size(), Breaks(original) + 1);
        EXPECT_EQ(SplitPieces(detail.ModifiedPieces()).size(), Breaks(modified) + 1);
        for (const Piece& piece : merged) {
            EXPECT_FALSE(piece.text.front() >= 0xDC00 && piece.text.front() < 0xE000);
            EXPECT_FALSE(piece.text.back() >= 0xD800 && piece.text.back() < 0xDC00);
        }
    }
}

TEST(SplitPieces, FindsABreakThatAMarkCuts) {
    const std::vector<Piece> pieces = {
        {PieceKind::Same, u"a\r"}, {PieceKind::Added, u"\nb\r"}, {PieceKind::Same, u"\nc\r\n"}};
    const std::vector<PieceParagraph> paragraphs = SplitPieces(pieces);
    ASSERT_EQ(paragraphs.size(), 4U);
    EXPECT_EQ(Notation(paragraphs[0].pieces), "a");
    EXPECT_TRUE(paragraphs[0].BreakStandsOut());
    EXPECT_EQ(Notation(paragraphs[1].pieces), "[+b]");
    EXPECT_FALSE(paragraphs[1].BreakStandsOut());
    EXPECT_EQ(Notation(paragraphs[2].pieces), "c");
    EXPECT_TRUE(paragraphs[3].pieces.empty());
}

struct PairRow {
    const char* name;
    Paragraphs original;
    Paragraphs modified;
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
        ChangeDetail detail({});
        const std::u16string original = JoinedParagraphs(row.original);
        const std::u16string modified = JoinedParagraphs(row.modified);
        detail.Find(original, modified);
        EXPECT_EQ(PairParagraphs(SplitPieces(detail.MergedPieces()),
                                 static_cast<std::int32_t>(row.original.size()),
                                 static_cast<std::int32_t>(row.modified.size())),
                  row.pairs)
            << Notation(detail.MergedPieces());
    }
}

}  // namespace
}  // namespace zorvane
