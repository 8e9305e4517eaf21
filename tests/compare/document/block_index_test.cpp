#include "compare/document/block_index.h"

#include <gtest/gtest.h>

#include "tests/support/printers.h"
#include "tests/support/random_edits.h"

namespace zorvane::block_index_test {
namespace {

std::string Told(const Block& block) {
    return std::to_string(block.number) + ": " + std::to_string(block.first.value) + "+" +
           std::to_string(block.length) + " p" + std::to_string(block.paragraph.value) +
           (block.continues ? "c" : "") + " y" + std::to_string(static_cast<int>(block.y)) + "+" +
           std::to_string(static_cast<int>(block.height)) + (block.exact ? "!" : "");
}

std::vector<std::string> Told(const BlockIndex& index) {
    std::vector<std::string> told;
    for (std::int32_t block = 0; block < index.BlockCount(); ++block)
        told.push_back(Told(index.At(block)));
    return told;
}

constexpr BlockRules kTenHigh{100, 10, 4};

struct CutRow {
    const char* name;
    const char16_t* text;
    std::vector<std::string> blocks;
};
const CutRow kCutRows[] = {
    {"nothing", u"", {"0: 0+0 p1 y0+10"}},
    {"no break", u"ab", {"0: 0+2 p1 y0+10"}},
    {"a break at the end", u"ab\r\n", {"0: 0+4 p1 y0+10", "1: 4+0 p2 y10+10"}},
    {"rows are estimated",
     u"12345\r\n\r\nb",
     {"0: 0+7 p1 y0+20", "1: 7+2 p2 y20+10", "2: 9+1 p3 y30+10"}},
    {"a line in a paragraph is no block", u"a\vb", {"0: 0+3 p1 y0+10"}},
};
TEST(BlockIndex, CutsAtBreaks) {
    for (const CutRow& row : kCutRows) {
        SCOPED_TRACE(row.name);
        MemoryEditor editor;
        editor.SetText(row.text);
        EXPECT_EQ(Told(BlockIndex(editor, kTenHigh)), row.blocks);
    }
}

TEST(BlockIndex, CutsLongParagraphsIntoEqualSlices) {
    MemoryEditor editor;
    // 10 units; a slice must not end between the two of a character.
    editor.SetText(
        u"1234\xD83D\xDE00"
        u"7890\r\nx");
    const BlockIndex index(editor, {5, 10, 0});
    EXPECT_EQ(Told(index), (std::vector<std::string>{"0: 0+4 p1 y0+10", "1: 4+8 p1c y10+10",
                                                     "2: 12+1 p2 y20+10"}));
    EXPECT_EQ(index.ParagraphCount(), 2);
    EXPECT_EQ(index.OfParagraph(ParagraphNumber{2}).number, 2);
}

TEST(BlockIndex, LooksUpFromEachToEach) {
    MemoryEditor editor;
    editor.SetText(u"ab\r\n\r\nc");
    BlockIndex index(editor, kTenHigh);
    index.SetHeight(1, 0);
    index.SetHeight(2, 25.5F);
    EXPECT_EQ(index.Height(), 35.5);
    EXPECT_EQ(Told(index.OfChar(CharPos{3})), "0: 0+4 p1 y0+10");
    EXPECT_EQ(Told(index.OfChar(CharPos{4})), "1: 4+2 p2 y10+0!");
    EXPECT_EQ(index.OfChar(CharPos{9}).number, 2) << "the break behind the text";
    EXPECT_EQ(index.OfChar(CharPos{-1}).number, 0);
    EXPECT_EQ(index.AtY(-5).number, 0);
    EXPECT_EQ(index.AtY(9.9).number, 0);
    EXPECT_EQ(index.AtY(10).number, 2) << "one without height is nowhere";
    EXPECT_EQ(index.AtY(1e9).number, 2);
    EXPECT_EQ(index.At(99).number, 2);
    EXPECT_EQ(index.OfParagraph(ParagraphNumber{0}).number, 0);
    EXPECT_EQ(index.OfParagraph(ParagraphNumber{9}).number, 2);
}

TEST(BlockIndex, KeepsHeightsThatStillHold) {
    RichDocument document;
    document.SetText(u"a\r\nb\r\nc\r\nd");
    BlockIndex index(document, kTenHigh);
    document.AddObserver(index);
    for (std::int32_t block = 0; block < 4; ++block)
        index.SetHeight(block, 12.5F);
    document.Replace({CharPos{4}, 0}, u"xyz");
    EXPECT_EQ(Told(index.At(1)), "1: 3+6 p2 y12+12") << "the height of before is the best guess";
    EXPECT_TRUE(index.At(0).exact && index.At(2).exact);
    document.Replace({CharPos{9}, 0}, u"\r\n");
    EXPECT_EQ(index.Height(), 12.5 * 3 + 20);
    CharFormatChange bold;
    bold.bold = true;
    document.Format({CharPos{0}, 1}, bold);
    EXPECT_FALSE(index.At(0).exact);
    EXPECT_TRUE(index.At(4).exact);
    document.Format({CharPos{0}, document.Length()}, bold);
    EXPECT_FALSE(index.At(4).exact);
    document.RemoveObserver(index);
}

TEST(BlockIndex, SumsHeightsBeyondWhatFloatsHold) {
    MemoryEditor editor;
    std::u16string text;
    for (int paragraph = 0; paragraph < 3000; ++paragraph)
        text += u"\r\n";
    editor.SetText(text);
    const BlockIndex index(editor, {100, 1e6F + 0.125F, 0});
    EXPECT_EQ(index.At(2999).y, 2999 * (1e6 + 0.125));
}

// Typing in one place leaves no crumbs of slices.
TEST(BlockIndex, SlicesStayFew) {
    RichDocument document;
    document.SetText(std::u16string(1000, u'x'));
    BlockIndex index(document, {100, 10, 0});
    document.AddObserver(index);
    document.MoveCaret(CharPos{450});
    for (int letter = 0; letter < 1000; ++letter)
        document.Type(u"y");
    EXPECT_LE(index.BlockCount(), 45);
    for (int letter = 0; letter < 1900; ++letter)
        document.DeleteBack(TextUnit::Character);
    for (int letter = 0; letter < 1900; ++letter)
        document.DeleteForward(TextUnit::Character);
    EXPECT_LE(index.BlockCount(), 2);
    document.RemoveObserver(index);
}

class IndexTwins {
  public:
    IndexTwins(std::u16string_view text, std::int32_t longest, unsigned seed)
        : rules{longest, 10, 4}, edits(document, seed) {
        document.SetText(text);
        index.SetRules(rules);
        document.AddObserver(index);
    }

    // Paragraph by paragraph as one made anew; slices fill their paragraphs.
    void ExpectAlike() {
        const BlockIndex anew(document, rules);
        ASSERT_EQ(index.ParagraphCount(), anew.ParagraphCount());
        CharPos first{0};
        double y = 0;
        std::int32_t paragraph = 0;
        for (std::int32_t number = 0; number < index.BlockCount(); ++number) {
            const Block block = index.At(number);
            ASSERT_EQ(block.number, number);
            ASSERT_EQ(block.first, first);
            ASSERT_DOUBLE_EQ(block.y, y);
            paragraph += block.continues ? 0 : 1;
            ASSERT_EQ(block.paragraph.value, paragraph);
            if (!block.continues) {
                ASSERT_EQ(first, anew.OfParagraph(block.paragraph).first);
            }
            ASSERT_LE(block.length, rules.longest_block + 3);
            ASSERT_TRUE(block.length > 0 || number + 1 == index.BlockCount());
            first = first + block.length;
            y += static_cast<double>(block.height);
        }
        ASSERT_EQ(first.value, document.Length());
        ASSERT_DOUBLE_EQ(index.Height(), y);
        LookUp();
    }
    void LookUp() {
        const Block block = index.At(edits.Below(index.BlockCount()));
        if (block.length > 0) {
            const CharPos inside = block.first + edits.Below(block.length);
            ASSERT_EQ(index.OfChar(inside).number, block.number);
        }
        if (block.height > 0) {
            ASSERT_EQ(index.AtY(block.y + 0.25).number, block.number);
        }
        ASSERT_EQ(index.OfParagraph(block.paragraph).paragraph, block.paragraph);
        ASSERT_FALSE(index.OfParagraph(block.paragraph).continues);
    }

    BlockRules rules;
    RichDocument document;
    RandomEdits edits;
    BlockIndex index{document};
};

void EditAtRandom(IndexTwins& twins, int steps) {
    for (int step = 0; step < steps; ++step) {
        if (twins.edits.Below(8) == 0)
            twins.document.Undo();
        else if (twins.edits.Below(6) == 0)
            twins.edits.Batch();
        else
            twins.edits.One();
        twins.index.SetHeight(twins.edits.Below(30), static_cast<float>(twins.edits.Below(50)));
        ASSERT_NO_FATAL_FAILURE(twins.ExpectAlike()) << "step " << step;
    }
}

TEST(BlockIndexProperty, AgreesWithAnIndexMadeAnew) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        IndexTwins twins(u"one two\r\nthree\vfour\r\n", seed % 2 == 0 ? 1000 : 7, seed);
        ASSERT_NO_FATAL_FAILURE(EditAtRandom(twins, 80));
    }
}

// Long enough that chunks are cut and joined.
TEST(BlockIndexProperty, AgreesInManyChunks) {
    std::u16string text;
    for (int paragraph = 0; paragraph < 1500; ++paragraph)
        text += u"ab\r\n";
    for (unsigned seed = 0; seed < 3; ++seed) {
        SCOPED_TRACE(seed);
        IndexTwins twins(text, 7, seed);
        for (int step = 0; step < 8; ++step) {
            const std::int32_t length = twins.edits.Below(2400);
            twins.document.Replace({twins.edits.Place(), length},
                                   twins.edits.Below(2) == 0 ? text.substr(0, 2000) : u"");
            ASSERT_NO_FATAL_FAILURE(twins.ExpectAlike());
            ASSERT_NO_FATAL_FAILURE(EditAtRandom(twins, 1));
        }
    }
}

}  // namespace
}  // namespace zorvane::block_index_test
