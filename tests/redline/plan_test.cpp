#include "redline/plan.h"

#include <random>

#include <gtest/gtest.h>

#include "common/base/side.h"

namespace zorvane::plan_test {
namespace {

// A container of paragraphs "a", "b", ... and tables "1", "2", ...; like names are partners.
std::vector<StoryBlock> BlocksOf(const std::string& names) {
    std::vector<StoryBlock> blocks;
    for (const char name : names) {
        const bool table = name >= '0' && name <= '9';
        std::u16string text(6, static_cast<char16_t>(name));
        BlockReading().AddBlock({{}, table, BlockText(text + u" " + text), {}}, blocks);
    }
    return blocks;
}

// What one side reads of a plan: blocks by their ends and tables.
std::string Seen(const std::vector<PlanToken>& tokens, const std::vector<StoryBlock>& blocks,
                 TrackMark gone) {
    std::string seen;
    for (const PlanToken& token : tokens) {
        if (token.mark == gone || token.kind == TokenKind::End)
            continue;
        const std::size_t index = gone == TrackMark::Delete ? token.modified : token.original;
        seen += static_cast<char>(blocks[index].text.View().front());
    }
    return seen;
}

TEST(Plan, GivesBothSidesBackWithSoundEndsWhateverStandsBesideTables) {
    std::mt19937 random(7);
    constexpr int kPairs = 3000;
    const auto story = [&random] {
        std::string names;
        for (std::size_t i = random() % 7; i > 0; --i)
            names += "abcd12"[random() % 6];
        return names + "abx"[random() % 3];
    };
    for (int i = 0; i < kPairs; ++i) {
        const std::string original = story();
        const std::string modified = story();
        SCOPED_TRACE(original + " " + modified);
        const std::vector<StoryBlock> old_blocks = BlocksOf(original);
        const std::vector<StoryBlock> new_blocks = BlocksOf(modified);
        const std::optional<Plan> plan =
            MakePlan(AlignBlocks(old_blocks, new_blocks, nullptr), old_blocks, new_blocks);
        ASSERT_TRUE(plan.has_value());
        EXPECT_TRUE(EndsAreSound(plan->tokens));
        EXPECT_EQ(Seen(plan->tokens, new_blocks, TrackMark::Delete), modified);
        EXPECT_EQ(Seen(plan->tokens, old_blocks, TrackMark::Insert), original);
    }
}

// As "=a" for text and tables, "+." for ends.
std::string Shown(const Plan& plan, const PerSide<std::vector<StoryBlock>>& blocks) {
    std::string shown;
    for (const PlanToken& token : plan.tokens) {
        const bool deleted = token.mark == TrackMark::Delete;
        const StoryBlock& block =
            deleted ? blocks.original[token.original] : blocks.modified[token.modified];
        shown += "=-+"[static_cast<int>(token.mark)];
        shown += token.kind == TokenKind::End ? '.' : static_cast<char>(block.text.View().front());
    }
    return shown;
}

TEST(Plan, MarksTheEndBeforeWhereSomeReadersJoinNothing) {
    const struct {
        const char *original, *modified, *shown;
        std::size_t note = 9;  // the block of the Modified that holds one
    } rows[] = {
        {"ax", "abx", "=a=.+b+.=x=."},
        {"ax", "ab1x", "=a+.+b=.+1=x=."},
        {"abc12x", "ax", "=a-.-b-.-c=.-1-2=x=."},
        {"ab1x", "acx", "=a=.-b-.-1+c+.=x=."},
        {"ax", "abx", "=a+.+b=.=x=.", 1},
        {"ax", "abx", "=a=.+b+.=x=.", 0},
        {"ax", "abcx", "=a=.+b+.+c+.=x=.", 1},
        {"abx", "acx", "=a=.-b-.+c+.=x=."},
        {"abx", "acx", "=a=.-b+c=.=x=.", 1},
        {"abx", "acdx", "=a=.-b-.+c+.+d+.=x=.", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.original) + " " + row.modified);
        PerSide<std::vector<StoryBlock>> blocks{BlocksOf(row.original), BlocksOf(row.modified)};
        if (row.note < blocks.modified.size())
            blocks.modified[row.note].atoms.push_back({AtomKind::Note, {}});
        const std::optional<Plan> plan =
            MakePlan(AlignBlocks(blocks.original, blocks.modified, nullptr), blocks.original,
                     blocks.modified);
        ASSERT_TRUE(plan.has_value());
        EXPECT_EQ(Shown(*plan, blocks), row.shown);
    }
}

}  // namespace
}  // namespace zorvane::plan_test
