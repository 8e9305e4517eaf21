#include "compare/engine/middle_snake.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

using Ids = std::span<const std::uint32_t>;

// The length of a shortest edit path, by the whole table.
std::int32_t Distance(Ids original, Ids modified) {
    std::vector<std::int32_t> row(modified.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j)
        row[j] = static_cast<std::int32_t>(j);
    for (const std::uint32_t id : original) {
        std::int32_t slanted = row[0]++;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const std::int32_t above = row[j];
            row[j] = modified[j - 1] == id ? slanted : 1 + std::min(above, row[j - 1]);
            slanted = above;
        }
    }
    return row.back();
}

// 1 to 14 of few letters, so that many ways are equally long.
std::vector<std::uint32_t> RandomIds(std::mt19937& random) {
    std::vector<std::uint32_t> ids(1 + random() % 14);
    for (std::uint32_t& id : ids)
        id = random() % 4;
    return ids;
}

TEST(MiddleSnake, FindsAPointOfAShortestPathWithinItsLimit) {
    std::mt19937 random(17);
    MiddleSnake snake;  // one for all: what an earlier search left behind does not count
    for (int round = 0; round < 4000; ++round) {
        const std::vector<std::uint32_t> original = RandomIds(random);
        const std::vector<std::uint32_t> modified = RandomIds(random);
        if (original.front() == modified.front() || original.back() == modified.back())
            continue;
        SCOPED_TRACE(round);
        const std::int32_t distance = Distance(original, modified);
        const auto limit = static_cast<std::int32_t>(1 + random() % 10);
        const auto found = snake.Find(original, modified, limit, WhenTooExpensive::GiveUp);
        ASSERT_EQ(found.has_value(), distance <= 2 * limit);
        const auto place =
            found ? found : snake.Find(original, modified, limit, WhenTooExpensive::TakeBest);
        ASSERT_TRUE(place.has_value());
        const auto x = static_cast<std::size_t>(place->original);
        const auto y = static_cast<std::size_t>(place->modified);
        const std::int32_t before = Distance(Ids(original).first(x), Ids(modified).first(y));
        const std::int32_t behind = Distance(Ids(original).subspan(x), Ids(modified).subspan(y));
        if (found) {
            EXPECT_EQ(before + behind, distance);
            EXPECT_LE(std::max(before, behind), (distance + 1) / 2) << "it halves";
        } else {
            EXPECT_EQ(std::min(before, behind), limit) << "as far as a search went, and no further";
        }
    }
}

}  // namespace
}  // namespace zorvane
