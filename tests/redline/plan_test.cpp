#include "redline/plan.h"

#include <random>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

// A container of paragraphs "a", "b", ... and tables "1", "2", ...; like names are partners.
std::vector<StoryBlock> BlocksOf(const std::string& names) {
    std::vector<StoryBlock> blocks;
    for (const char name : names) {
        const bool table = name >= '0' && name <= '9';
        std::u16string text(6, static_cast<char16_t>(name));
        blocks.push_back({{}, table, text + u" " + text, {}});
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
        seen += static_cast<char>(blocks[index].text.front());
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

}  // namespace
}  // namespace zorvane
