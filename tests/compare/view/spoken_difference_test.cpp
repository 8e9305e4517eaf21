// Differences in words.
#include "compare/view/spoken_difference.h"

#include <gtest/gtest.h>

#include "tests/support/comparison_notation.h"

namespace zorvane::spoken_difference_test {
namespace {

std::string English(std::string_view text) {
    return std::string(text);
}

struct SpokenRow {
    const char* name;
    const char* original;
    const char* modified;
    std::vector<std::string> spoken;
};
const SpokenRow kSpokenRows[] = {
    {"a word",
     "The tenant gives thirty days of notice.",
     "The tenant gives forty-five days of notice.",
     {"change 1 of 1: deleted thirty, inserted forty-five"}},
    {"several places",
     "The rent of 4,200 is due within thirty days after a written invoice came.",
     "The rent of 4,850 is due within thirty days after a correct written invoice.",
     {"change 1 of 1: deleted 4,200, inserted 4,850; inserted correct; deleted invoice came., "
      "inserted invoice."}},
    {"whole paragraphs",
     "This one goes away. / Here stays a paragraph. / And here one more.",
     "Here stays a paragraph. / And here one more. / Brand new text. / And a second one.",
     {"change 1 of 2: paragraph deleted: This one goes away.",
      "change 2 of 2: 2 paragraphs inserted: Brand new text. And a second one."}},
    {"an empty paragraph",
     "Here stays a paragraph. / And here one more.",
     "Here stays a paragraph. /  / And here one more.",
     {"change 1 of 1: paragraph inserted: empty"}},
    {"a break",
     "one two three. Four five six.",
     "one two three. / Four five six.",
     {"change 1 of 1: deleted blank, inserted paragraph break"}},
    {"moved",
     "The deposit of three monthly rents is due before the keys change hands. / The parties named "
     "above agree on every one of the terms that follow below this line. / Whatever else was said "
     "between them before today has no bearing on this contract.",
     "The parties named above agree on every one of the terms that follow below this line. / "
     "Whatever else was said between them before today has no bearing on this contract. / The "
     "deposit of three monthly rents is due before the keys change hands.",
     {"change 1 of 2: moved to paragraph 3: The deposit of three monthly rents is due before the "
      "keys change hands.",
      "change 2 of 2: moved from paragraph 1: The deposit of three monthly rents is due before the "
      "keys change hands."}},
};
TEST(SpokenDifference, TellsWhatChanged) {
    for (const SpokenRow& row : kSpokenRows) {
        SCOPED_TRACE(row.name);
        const Comparison comparison = Compared(row.original, row.modified);
        std::vector<std::string> spoken;
        for (std::int32_t i = 0; i < static_cast<std::int32_t>(comparison.records.size()); ++i)
            spoken.push_back(SpokenDifference(comparison, i, English));
        EXPECT_EQ(spoken, row.spoken);
        EXPECT_EQ(SpokenDifference(comparison, static_cast<std::int32_t>(spoken.size()), English),
                  "");
        EXPECT_EQ(SpokenDifference(comparison, -1, English), "");
    }
}

TEST(SpokenDifference, CutsBetweenWords) {
    const Comparison comparison =
        Compared("keeps its words", "keeps its words / \xF0\x9F\x98\x80 a long tale of many words");
    const auto cut = [&](std::size_t longest) {
        const std::string spoken = SpokenDifference(comparison, 0, English, {.longest = longest});
        return spoken.substr(spoken.rfind(": ") + 2);
    };
    EXPECT_EQ(cut(11), "\xF0\x9F\x98\x80 a long...");
    EXPECT_EQ(cut(9), "\xF0\x9F\x98\x80 a long...");
    EXPECT_EQ(cut(8), "\xF0\x9F\x98\x80 a...");
    EXPECT_EQ(cut(1), "...") << "no half character";
    EXPECT_EQ(cut(28), "\xF0\x9F\x98\x80 a long tale of many words");
    EXPECT_EQ(cut(27), "\xF0\x9F\x98\x80 a long tale of many...");
}

TEST(SpokenDifference, TellsThePlaceAndHowMuchMoreThereIs) {
    const Comparison comparison = Compared("same / one blue house with a red door and green roof",
                                           "same / one pink house with a grey door and white roof");
    EXPECT_EQ(
        SpokenDifference(comparison, 0, English, {.with_place = true, .most_places = 2}),
        "change 1 of 1, paragraph 2: deleted blue, inserted pink; deleted red, inserted grey; "
        "1 more");
    EXPECT_EQ(SpokenDifference(comparison, 0,
                               [](std::string_view text) { return "<" + std::string(text) + ">"; },
                               {.most_places = 1}),
              "<change> 1 <of> 1: <deleted> blue, <inserted> pink; 2 <more>");
}

}  // namespace
}  // namespace zorvane::spoken_difference_test
