// How paragraphs and words find their partners.
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/comparison_notation.h"

namespace zorvane {
namespace {

struct GoldenRow {
    const char* name;
    const char* original;
    const char* modified;
    const char* expected;
};

const GoldenRow kGolden[] = {
    {"a new paragraph is no change of its neighbour",
     "Rules / Guests sign the book when they arrive. / Dogs stay on the leash in the garden.",
     "Rules / Visitors pay two coins at the door. / Guests sign the red book when they arrive. / "
     "Dogs stay on a leash in the garden.",
     "a Visitors pay two coins at the door. | c Guests sign the {+red +}book when they arrive. | "
     "c Dogs stay on [-the -]{+a +}leash in the garden."},
    {"a rewritten paragraph is not woven",
     "The mill grinds rye and barley for the three villages of the valley.",
     "Visitors may rent one of the boats of the club for half a day.",
     "d The mill grinds rye and barley for the three villages of the valley. | "
     "a Visitors may rent one of the boats of the club for half a day."},
    {"one paragraph became two",
     "The lamp is cleaned every morning before the ferry leaves. The keeper notes the weather and "
     "the height of the tide.",
     "The lamp is cleaned every morning before the ferry leaves. / The keeper notes the weather "
     "and the height of the tide.",
     "c The lamp is cleaned every morning before the ferry leaves.[- -]{+¶+}The keeper notes the "
     "weather and the height of the tide."},
    {"two paragraphs became one",
     "Bread is baked on Monday and Thursday in the old oven. / Cakes are baked on Saturday by the "
     "apprentices.",
     "Bread is baked on Monday and Thursday in the new oven. Cakes are baked on Saturday by the "
     "apprentices.",
     "c Bread is baked on Monday and Thursday in the [-old -]{+new +}oven.[-¶-]{+ +}Cakes are "
     "baked on Saturday by the apprentices."},
    {"a moved paragraph, edited on the way",
     "Oil lanterns must be emptied, dried and stored upright before the winter begins. / The boat "
     "house is locked at sunset by the warden of the week. / Ropes are coiled and hung on the "
     "pegs behind the door.",
     "The boat house is locked at sunset by the warden of the week. / Ropes are coiled and hung on "
     "the pegs behind the door. / Oil lanterns must be emptied, cleaned and stored upright before "
     "the winter begins.",
     "d> Oil lanterns must be emptied, dried and stored upright before the winter begins. | "
     "a> Oil lanterns must be emptied, [-dried -]{+cleaned +}and stored upright before the winter "
     "begins."},
    {"a short copy never moves",
     "See also the map. / The boat house is locked at sunset by the warden of the week. / Ropes "
     "are coiled and hung on the pegs behind the door.",
     "The boat house is locked at sunset by the warden of the week. / Ropes are coiled and hung on "
     "the pegs behind the door. / See also the map.",
     "d See also the map. | a See also the map."},
    {"a text that stands twice on one side never moves",
     "The warden counts the boats twice a day and writes the number down. / The boat house is "
     "locked at sunset by the warden of the week. / Ropes are coiled and hung on the pegs behind "
     "the door. / Sails are dried on the upper floor of the shed after rain.",
     "The boat house is locked at sunset by the warden of the week. / Ropes are coiled and hung on "
     "the pegs behind the door. / The warden counts the boats twice a day and writes the number "
     "down. / Sails are dried on the upper floor of the shed after rain. / The warden counts the "
     "boats twice a day and writes the number down.",
     "d The warden counts the boats twice a day and writes the number down. | "
     "a The warden counts the boats twice a day and writes the number down. | "
     "a The warden counts the boats twice a day and writes the number down."},
    {"nor one that stands twice in the shorter document: never moves",
     "The boat house is locked at sunset by the warden of the week. / Ropes are coiled and hung on "
     "the pegs behind the door. / The warden counts the boats twice a day and writes the number "
     "down. / Sails are dried on the upper floor of the shed after rain. / The warden counts the "
     "boats twice a day and writes the number down.",
     "The warden counts the boats twice a day and writes the number down. / The boat house is "
     "locked at sunset by the warden of the week. / Ropes are coiled and hung on the pegs behind "
     "the door. / Sails are dried on the upper floor of the shed after rain. / Visitors may rent a "
     "boat for half a day between the first of May and the last Sunday of September each year. / "
     "Children under twelve wear a vest on the water and are never alone in a boat of the club.",
     "a The warden counts the boats twice a day and writes the number down. | "
     "d The warden counts the boats twice a day and writes the number down. | "
     "d The warden counts the boats twice a day and writes the number down. | "
     "a Visitors may rent a boat for half a day between the first of May and the last Sunday of "
     "September each year.¶Children under twelve wear a vest on the water and are never alone in a "
     "boat of the club."},
    {"a light equal line does not split a changed block",
     "start of all things / walnut chestnut hazel / } / lemon cherry quince / end of all things",
     "start of all things / copper silver bronze / } / marble granite basalt / end of all things",
     "d walnut chestnut hazel¶}¶lemon cherry quince | "
     "a copper silver bronze¶}¶marble granite basalt"},
    {"many small words in common do not make partners",
     "The warden of the club is to see to it that the key of the shed is on the hook by the door "
     "at "
     "the end of the day.",
     "The mayor of the town is to say in all of the news that the road to the mill is in need of a "
     "new bed for the sum of it.",
     "d The warden of the club is to see to it that the key of the shed is on the hook by the door "
     "at the end of the day. | a The mayor of the town is to say in all of the news that the road "
     "to the mill is in need of a new bed for the sum of it."},
    {"rows of a table", "| Oak | 12 | 340.00 | / | Elm | 7 | 120.00 | / | Ash | 9 | 210.00 |",
     "| Oak | 12 | 355.00 | / | Fir | 3 | 80.00 | / | Elm | 7 | 120.00 | / | Ash | 8 | 210.00 |",
     "c | Oak | 12 | [-340.00 -]{+355.00 +}| | a | Fir | 3 | 80.00 | | "
     "c | Ash | [-9 -]{+8 +}| 210.00 |"},
    {"small words between changed ones go with them",
     "The committee decides about the use of the large hall in June.",
     "The committee votes on the sale of the small barn in June.",
     "c The committee [-decides about the use of the large hall -]{+votes on the sale of the small "
     "barn +}in June."},
    {"a sentence is added whole", "Keep the door shut. Feed the cat.",
     "Keep the door shut. Keep the window open. Feed the cat.",
     "c Keep the door shut. {+Keep the window open. +}Feed the cat."},
    {"a lone heading is no anchor",
     "General / Boats are painted white each spring by the members of the club. / Notes / Sails "
     "are dried on the upper floor of the shed after rain.",
     "General / Notes / Boats are painted blue each spring by the members of the club. / General / "
     "Sails are dried on the upper floor of the old shed after rain.",
     "a Notes | c Boats are painted [-white -]{+blue +}each spring by the members of the club. | "
     "d Notes | a General | c Sails are dried on the upper floor of the {+old +}shed after rain."},
};

#define KEEPER \
    "The keeper of the lighthouse trims the wick and fills the lamp with oil each evening."
#define STAIRS \
    "Visitors may climb the stairs on Sundays if the keeper has time and the weather is fair."
#define BELL \
    "The bell on the pier is rung in fog, three strokes each minute, until the ferry has landed."
#define NETS \
    "Nets are mended in the long room over the smithy, where the light is good and the floor dry."

const GoldenRow kSplitsAndJoins[] = {
    {"one became three",
     "The harbour is closed in winter. Boats are kept in the shed until March. Ropes are dried "
     "before storage.",
     "The harbour is closed in winter. / Boats are kept in the shed until March. / Ropes are dried "
     "before storage.",
     "c The harbour is closed in winter.[- -]{+¶+}Boats are kept in the shed until March.[- "
     "-]{+¶+}Ropes are dried before storage."},
    {"one half was edited",
     "The harbour is closed in winter. Boats are kept in the shed until March.",
     "The harbour is closed in winter. / Boats are kept in the barn until March.",
     "c The harbour is closed in winter.[- -]{+¶+}Boats are kept in the [-shed -]{+barn +}until "
     "March."},
    {"the blank paragraph between two halves goes with them",
     "The harbour is closed in winter from November on. /  / Boats are kept in the shed until "
     "March.",
     "The harbour is closed in winter from November on. Boats are kept in the shed until March.",
     "c The harbour is closed in winter from November on.[-¶¶-]{+ +}Boats are kept in the shed "
     "until March."},
    {"an unlike neighbour is not taken in",
     "The harbour is closed in winter from November on. / Bread is baked on Monday and Thursday.",
     "The harbour is closed in the winter from November on.",
     "c The harbour is closed in {+the +}winter from November on. | d Bread is baked on Monday and "
     "Thursday."},
    {"hard-wrapped text that flowed on",
     "The harbour is closed in winter and the boats are / kept in the old shed behind the church "
     "until the / ice has gone and the keeper has looked at the ropes / and the sails.",
     "The harbour is closed in winter and all of the small / white boats are kept in the old shed "
     "behind the / church until the ice has gone and the keeper has / looked at the ropes and the "
     "sails.",
     "c The harbour is closed in winter and [-the -]{+all of the small¶white +}boats are[-¶-]{+ "
     "+}kept in the old shed behind the[- -]{+¶+}church until the[-¶-]{+ +}ice has gone and the "
     "keeper has[- -]{+¶+}looked at the ropes[-¶-]{+ +}and the sails."},
};

const GoldenRow kMoves[] = {
    {"a run of paragraphs", KEEPER " / " STAIRS " / " BELL " / " NETS,
     BELL " / " NETS " / " KEEPER " / " STAIRS, "d> " KEEPER "¶" STAIRS " | a> " KEEPER "¶" STAIRS},
    {"the blank one between goes with them, edited",
     KEEPER " /  / " STAIRS " /  / " BELL " / " NETS " / x",
     BELL
     " / " NETS " / x / " KEEPER " /  / "
     "Visitors may climb the stairs on Mondays if the keeper has time and the weather is fair.",
     "d> " KEEPER "¶¶" STAIRS " | d  | a> " KEEPER
     "¶¶Visitors may climb the stairs on [-Sundays -]{+Mondays +}if the keeper has time and the "
     "weather is fair."},
    {"short ones beside it go with it", "Lamps / " KEEPER " / See also the map. / " BELL " / " NETS,
     BELL " / " NETS " / Lamps / " KEEPER " / See also the map.",
     "d> Lamps¶" KEEPER "¶See also the map. | a> Lamps¶" KEEPER "¶See also the map."},
    {"not those behind it in one document alone", KEEPER " / See also the map. / " BELL " / " NETS,
     BELL " / " KEEPER " / " NETS " / See also the map.",
     "d> " KEEPER " | d See also the map. | a> " KEEPER " | a See also the map."},
    {"in whichever", KEEPER " / " BELL " / See also the map. / " NETS,
     BELL " / " NETS " / " KEEPER " / See also the map.",
     "d> " KEEPER " | d See also the map. | a> " KEEPER " | a See also the map."},
    {"nor those before it", "Lamps / " BELL " / " KEEPER " / " NETS,
     BELL " / " NETS " / Lamps / " KEEPER, "d Lamps | d> " KEEPER " | a Lamps | a> " KEEPER},
    {"what stands twice has not moved", KEEPER " / " KEEPER " / " BELL " / " NETS,
     BELL " / " NETS " / " KEEPER, "d " KEEPER "¶" KEEPER " | a " KEEPER},
    {"two that are as like it",
     "The keeper of the lighthouse trims the wick and fills the lamp "
     "with tar each evening. / The keeper of the lighthouse trims the wick and fills the lamp with "
     "fat each evening. / " BELL " / " NETS,
     BELL " / " NETS " / " KEEPER,
     "d The keeper of the lighthouse trims the wick and fills the lamp with tar each evening.¶The "
     "keeper of the lighthouse trims the wick and fills the lamp with fat each evening. | "
     "a " KEEPER},
    {"rewritten on the way", KEEPER " / " BELL " / " NETS,
     BELL " / " NETS " / The keeper of the shed trims the hedge and fills the cart with hay each "
          "evening.",
     "d " KEEPER " | a The keeper of the shed trims the hedge and fills the cart with hay each "
     "evening."},
};

const GoldenRow kGenres[] = {
    {"a trailing blank", "one two / three", "one two  / three", "c one two{+ +}"},
    {"a no-break space", "five apples lie here", "five\u00A0apples lie here",
     "c [-five apples -]{+five\u00A0apples +}lie here"},
    {"Chinese", "东京的春天很美丽，樱花开满了公园。 / 冬天下雪。",
     "东京的秋天很美丽，红叶开满了公园。 / 冬天下雪。",
     "c [-东京的春天很美丽，樱花开满了公园。-]{+东京的秋天很美丽，红叶开满了公园。+}"},
    {"unlike Chinese", "东京的春天很美丽，樱花开满了公园。", "我们昨天坐火车去北京看朋友。",
     "d 东京的春天很美丽，樱花开满了公园。 | a 我们昨天坐火车去北京看朋友。"},
    {"comma-delimited rows", "id,name,town / 1,Anna,Bergen / 2,Ole,Oslo / 3,Kari,Molde",
     "id,name,town / 1,Anna,Bergen / 4,Per,Hamar / 2,Ole,Tromso / 3,Kari,Molde",
     "a 4,Per,Hamar | c [-2,Ole,Oslo-]{+2,Ole,Tromso+}"},
    {"code",
     "int main() { /   int total = 0; /   for (auto value : values) { /     total += value; "
     "/   } /   return total; / }",
     "int main() { /   long total = 0; /   if (values.empty()) { /     return -1; /   } /   for "
     "(auto "
     "value : values) { /     total += value; /   } /   return total; / }",
     "c   [-int -]{+long +}total = 0; | a   if (values.empty()) {¶    return -1;¶  }"},
    {"a heading renewed in part", "Chapter One / The harbour is closed.",
     "Chapter Two / The harbour is closed.", "c Chapter [-One-]{+Two+}"},
    {"a date", "12 March 2023 / Dear friends,", "14 March 2024 / Dear friends,",
     "c [-12 -]{+14 +}March [-2023-]{+2024+}"},
    {"a lone number", "Sum / 340.00", "Sum / 355.00", "c [-340.00-]{+355.00+}"},
    {"a mistyped word", "Introduction / one", "Intoduction / one",
     "c [-Introduction-]{+Intoduction+}"},
};

TEST(Pairing, PairsAsAReaderPairs) {
    for (const auto& rows :
         {std::span<const GoldenRow>(kGolden), std::span<const GoldenRow>(kSplitsAndJoins),
          std::span<const GoldenRow>(kMoves), std::span<const GoldenRow>(kGenres)}) {
        for (const GoldenRow& row : rows) {
            SCOPED_TRACE(row.name);
            EXPECT_EQ(NotationOf(Compared(row.original, row.modified)), row.expected);
        }
    }
}

// A text without its blanks has no words left to find partners by.
TEST(Pairing, CopiesNeverMoveWhicheverSideHasThem) {
    std::int32_t rows = 0;
    for (const GoldenRow& row : kGolden) {
        if (std::string_view(row.name).find("never moves") == std::string_view::npos)
            continue;
        SCOPED_TRACE(row.name);
        ++rows;
        EXPECT_TRUE(Compared(row.original, row.modified).moves.empty());
        EXPECT_TRUE(Compared(row.modified, row.original).moves.empty());
    }
    EXPECT_EQ(rows, 3);
}

TEST(Pairing, EachPairMovesWhatTheBracketExpects) {
    CompareOptions options;
    options.bracket = 1;
    EXPECT_EQ(NotationOf(Compared("oak wood is hard / elm wood is tough / ash wood is light",
                                  "new one / oak wood is hard / new two / elm wood is tough / new "
                                  "three / ash wood is light",
                                  options)),
              "a new one | a new two | a new three");
}

TEST(Pairing, IgnoredBlanksLeaveTheWords) {
    const char* original =
        "Guests sign the book when they arrive at the lodge in the evening. / Dogs stay on the "
        "leash "
        "in the garden and near the water.";
    const char* modified =
        "Visitors pay two coins at the door. / Guests write in the red book when they come to the "
        "lodge in the night. / Dogs stay on a leash in the yard and near the lake.";
    const std::string expected = NotationOf(Compared(original, modified));
    EXPECT_EQ(NotationOf(Compared(original, modified, {.ignore_whitespace = true})), expected);
    EXPECT_EQ(NotationOf(Compared(original, modified,
                                  {.ignore_whitespace = true, .expressions = "[0-9]"})),
              expected);
}

struct BlankRow {
    const char16_t* text;
    bool blank;
};
TEST(IsBlankParagraph, IsNothingButBlanksAndPadding) {
    const BlankRow rows[] = {
        {u"", true},        {u" \t", true},           {u"\u00A0\u3000", true}, {u"\a\v", true},
        {u" , , ", true},   {u"  ;  ;", true},        {u" | |", true},         {u",", false},
        {u",,,", false},    {u" ,,", false},          {u" , x", false},        {u"-", false},
        {u"\u200B", false}, {u"\u2000\u200A,", true}, {u"0", false},           {u"\r", true},
    };
    for (const BlankRow& row : rows) {
        SCOPED_TRACE(ToUtf8(row.text));
        EXPECT_EQ(IsBlankParagraph(row.text), row.blank);
    }
}

TEST(Comparison, KnowsWhatWasNotLookedAt) {
    const Comparison all = Compared(" / a / , ", "a");
    EXPECT_FALSE(all.IsIgnored(Side::Original, 1));
    const Comparison comparison =
        Compared(" / a /    ,  / b", "a / b / ", {.ignore_empty_lines = true});
    EXPECT_TRUE(comparison.Same());
    std::string flags;
    for (const Side side : kBothSides) {
        for (std::int32_t number = 1; number <= comparison.Paragraphs(side); ++number)
            flags += comparison.IsIgnored(side, number) ? '-' : '+';
        flags += ' ';
    }
    EXPECT_EQ(flags, "-+-+ ++- ");
}

}  // namespace
}  // namespace zorvane
