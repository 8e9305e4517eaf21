// Rows under edits of real documents.
#include "compare/view/rows_follower.h"

#include <map>
#include <random>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/document/rich_document.h"
#include "compare/view/copy_over.h"
#include "tests/compare/view/rows_notation.h"
#include "tests/support/comparison_notation.h"

namespace zorvane::rows_follower_test {
namespace {

// Two documents, compared, each followed.
class FollowedPair {
  public:
    FollowedPair(std::string_view original, std::string_view modified)
        : comparison_(Compared(original, modified)) {
        rows.Assign(comparison_);
        documents.original.SetText(ParagraphsOf(original));
        documents.modified.SetText(ParagraphsOf(modified));
        for (const Side side : kBothSides) {
            blocks_[side].Reset();
            documents[side].AddObserver(followers_[side]);
            documents[side].AddObserver(blocks_[side]);
        }
    }
    ~FollowedPair() {
        for (const Side side : kBothSides) {
            documents[side].RemoveObserver(followers_[side]);
            documents[side].RemoveObserver(blocks_[side]);
        }
    }
    FollowedPair(const FollowedPair&) = delete;
    FollowedPair& operator=(const FollowedPair&) = delete;

    bool Copy(std::int32_t record, Side from) {
        return CopyOver(
            rows,
            {{&documents.original, &documents.modified}, {&blocks_.original, &blocks_.modified}},
            record, from);
    }

    PerSide<RichDocument> documents;
    ParagraphRows rows;

  private:
    Comparison comparison_;
    PerSide<BlockIndex> blocks_{BlockIndex(documents.original), BlockIndex(documents.modified)};
    PerSide<RowsFollower> followers_{
        RowsFollower(rows, Side::Original, documents.original, blocks_.original),
        RowsFollower(rows, Side::Modified, documents.modified, blocks_.modified)};
};

struct TypedRow {
    const char* name;
    std::int32_t first;
    std::int32_t length;
    const char* text;
    const char* after;
    const char* undone;
};
// "aa|bb|cc|dd" with breaks of two units: the paragraphs begin at 0, 4, 8, 12.
const TypedRow kTypedRows[] = {
    {"a letter in a word", 5, 0, "x", "1=1 1e1 2=2", "1=1 1e1 2=2"},
    {"a break in a word", 5, 0, "\n", "1=1 2e1 2=2", "1=1 1e1 2=2"},
    {"a break at the end", 6, 0, "\n", "2=2 1e0 2=2", "4=4"},
    {"a break at the start", 4, 0, "\n", "1=1 1e0 3=3", "4=4"},
    {"a break removed", 6, 2, "", "1=1 1e2 1=1", "1=1 2e2 1=1"},
    {"whole paragraphs go, from start to start", 4, 8, "", "1=1 0e2 1=1", "1=1 2e2 1=1"},
    {"whole paragraphs go, from end to end", 2, 8, "", "1=1 0e2 1=1", "1=1 2e2 1=1"},
    {"from a start into a word", 4, 5, "", "1=1 0e1 1e1 1=1", "1=1 2e2 1=1"},
    {"from a word to an end", 5, 5, "", "1=1 1e1 0e1 1=1", "1=1 2e2 1=1"},
    {"from a word into another", 1, 8, "x", "1e3 1=1", "3e3 1=1"},
    {"a paragraph exchanged", 4, 2, "new", "1=1 1e1 2=2", "1=1 1e1 2=2"},
    {"two exchanged for three", 4, 6, "x\ny\nz", "1=1 3e2 1=1", "1=1 2e2 1=1"},
    {"with the last break", 4, 8, "x\ny\nz\n", "1=1 3e2 1=1", "1=1 2e2 1=1"},
    {"put in behind the last", 14, 0, "\nx\ny", "4=4 2e0", "4=4"},
    {"put in front of the first", 0, 0, "x\n", "1e0 4=4", "4=4"},
    {"a word and a break at the end", 6, 0, "x\ny", "1=1 1e1 1e0 2=2", "1=1 1e1 2=2"},
    {"the break behind and half of the next for a break", 6, 3, "\n", "2=2 1e1 1=1", "2=2 1e1 1=1"},
    {"half of one and the break for a break", 5, 3, "\n", "1=1 1e1 2=2", "1=1 1e1 2=2"},
    {"a break for two", 6, 2, "\n\n", "2=2 1e0 2=2", "4=4"},
    {"everything goes", 0, 14, "", "1e4", "4e4"},
};
TEST(RowsFollower, KnowsWhatAnEditLeavesUntouched) {
    for (const TypedRow& row : kTypedRows) {
        SCOPED_TRACE(row.name);
        FollowedPair pair("aa / bb / cc / dd", "aa / bb / cc / dd");
        pair.documents.original.Replace({CharPos{row.first}, row.length}, ToUtf16(row.text));
        EXPECT_EQ(Notation(pair.rows), row.after);
        ASSERT_TRUE(pair.documents.original.Undo());
        EXPECT_EQ(Notation(pair.rows), row.undone);
    }
}

// Whatever differs, all of it copied over makes the other text, and each copy is one step to undo.
TEST(CopyOver, MakesTheOtherText) {
    const char* const texts[] = {
        "first here",
        "first here / only left / also left / last here",
        "first here / last here",
        "in front / first here / only left changed / last here / behind / and more behind",
        "last here and / only left or right / first here",
        "new / / words / first here / / of all kinds",
    };
    for (const char* original : texts) {
        for (const char* modified : texts) {
            for (const Side from : kBothSides) {
                SCOPED_TRACE(std::string(original) + " | " + modified);
                FollowedPair pair(original, modified);
                RichDocument& target = pair.documents[OtherSide(from)];
                const std::u16string old = target.Text();
                int copied = 0;
                while (pair.Copy(copied, from))
                    ++copied;
                EXPECT_EQ(target.Text(), pair.documents[from].Text());
                for (; copied > 0; --copied)
                    EXPECT_TRUE(target.Undo());
                EXPECT_EQ(target.Text(), old);
                EXPECT_FALSE(target.CanUndo());
            }
        }
    }
}

TEST(RowsFollower, ALoadAndABatchAreTakenWhole) {
    FollowedPair pair("aa / bb / cc / dd", "aa / bb / cc / dd");
    {
        const EditBatch batch(pair.documents.original);
        pair.documents.original.Replace({CharPos{12}, 2}, u"x");
        pair.documents.original.Replace({CharPos{4}, 2}, u"y");
    }
    EXPECT_EQ(Notation(pair.rows), "1=1 3e3");
    pair.documents.modified.SetText(u"x\r\ny");
    EXPECT_EQ(Notation(pair.rows), "4e2");
}

// Each paragraph begins and ends with a sign of its own, so that no edit makes one anew. Wherever
// both of an equal pair still stand whole, they stand in one row, and as equal.
TEST(RowsFollower, KeepsPairsUnderRandomEdits) {
    std::mt19937 random(11);
    const auto below = [&](std::int32_t end) {
        return static_cast<std::int32_t>(random() % static_cast<unsigned>(end));
    };
    for (int round = 0; round < 6; ++round) {
        SCOPED_TRACE(round);
        PerSide<std::string> texts;
        for (int i = 0; i < 120; ++i) {
            const std::string sign = ToUtf8(std::u16string(1, static_cast<char16_t>(0x4E00 + i)));
            const std::string name = sign + " is a paragraph of its own " + sign;
            const int kind = below(8);
            texts.original += (i == 0 ? "" : " / ") + name;
            if (kind != 0 || i == 0)
                texts.modified += (i == 0 ? "" : " / ") + name + (kind == 1 ? " changed" : "");
        }
        FollowedPair pair(texts.original, texts.modified);
        std::map<std::u16string, int> seen;  // one that was touched may become whole again
        for (int step = 0; step < 60; ++step) {
            const Side side = below(2) == 0 ? Side::Original : Side::Modified;
            RichDocument& document = pair.documents[side];
            const std::u16string_view typed[] = {u"", u"z", u"\r\n", u"z\r\nz", u"\r\nz\r\n"};
            const std::u16string_view text = typed[below(5)];
            const CharPos first{below(document.Length() + 1)};
            document.Replace({first, below(3) == 0 ? below(80) : 0}, text);
            PerSide<std::map<std::u16string, ParagraphNumber>> whole;
            for (const Side each : kBothSides) {
                BlockIndex blocks(pair.documents[each]);
                ASSERT_EQ(pair.rows.Paragraphs(each), blocks.ParagraphCount());
                for (std::int32_t i = 0; i < blocks.BlockCount(); ++i) {
                    const Block block = blocks.At(i);
                    const std::u16string whole_text =
                        pair.documents[each].Text({block.first, block.length});
                    if (whole_text.size() > 20 &&
                        whole_text[0] == whole_text[whole_text.size() - 3])
                        whole[each][whole_text] = block.paragraph;
                }
            }
            for (const auto& [paragraph, number] : whole.original) {
                const auto other = whole.modified.find(paragraph);
                if (other == whole.modified.end())
                    continue;
                const bool was_there = step == 0 || seen[paragraph] == step - 1;
                seen[paragraph] = was_there ? step : -2;
                if (!was_there)
                    continue;
                const ParagraphRow row = pair.rows.Row(pair.rows.RowOf(Side::Original, number));
                ASSERT_EQ(row.kind, RowKind::Equal) << ToUtf8(paragraph) << " step " << step;
                ASSERT_EQ(row.paragraphs.modified.first, other->second);
            }
        }
    }
}

}  // namespace
}  // namespace zorvane::rows_follower_test
