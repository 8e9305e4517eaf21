#include "find/engine/line_finder.h"

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

bool NeverStops() {
    return false;
}

std::unique_ptr<LineFinder> Made(const FindRules& rules) {
    Result<std::unique_ptr<LineFinder>> finder = LineFinder::Make(rules);
    EXPECT_TRUE(finder.ok()) << rules.text;
    return finder.ok() ? std::move(finder).value() : nullptr;
}

// Each hit as "line:item"; lines count from 1.
std::vector<std::string> HitsOf(const LineFinder& finder, std::string_view text) {
    std::vector<std::string> hits;
    MatchScratch scratch;
    finder.Find(
        text, scratch,
        [&](const LineHit& hit) {
            const std::int64_t line = CountLineEnds(text.substr(0, hit.line_begin)) + 1;
            hits.push_back(std::to_string(line) + ":" +
                           (hit.failed ? "?"
                                       : std::string(text.substr(
                                             hit.match.begin, hit.match.end - hit.match.begin))));
            return true;
        },
        NeverStops);
    return hits;
}

std::string Joined(const std::vector<std::string>& hits) {
    std::string joined;
    for (const std::string& hit : hits)
        joined += (joined.empty() ? "" : " ") + hit;
    return joined;
}

struct Row {
    const char* name;
    FindRules rules;
    std::string text;
    const char* hits;
};

constexpr FindSyntax kSimple = FindSyntax::Simple;
constexpr FindSyntax kFull = FindSyntax::Full;
constexpr FindSyntax kLiteral = FindSyntax::Literal;

const Row kRows[] = {
    {"one hit a line, the first", {"ab"}, "xabab\nab\n", "1:ab 2:ab"},
    {"last line without an end", {"ab"}, "x\nab", "2:ab"},
    {"case folds", {"aB"}, "AB\nab\nAb", "1:AB 2:ab 3:Ab"},
    {"case matters", {"aB", kLiteral, WordRule::Any, true}, "AB\naB\n", "2:aB"},
    {"beyond ASCII without case", {"\xC3\xA4h"}, "\xC3\x84H\n", "1:\xC3\x84H"},
    {"letters with another capital there",
     {"ks"},
     "K\xC5\xBF\n\xE2\x84\xAAs\nkz",
     "1:K\xC5\xBF 2:\xE2\x84\xAAs"},
    {"signs are no signs of an expression", {"a.*(b"}, "axb\na.*(b", "2:a.*(b"},
    {"signs beyond ASCII too", {"\xC3\xA4.*"}, "\xC3\xA4x\n\xC3\x84.*", "2:\xC3\x84.*"},
    {"a word", {"cat", kLiteral, WordRule::Letters}, "cats\na cat.\ncat\n_cat\n", "2:cat 3:cat"},
    {"a later one on the line", {"cat", kLiteral, WordRule::Letters}, "cats cat\n", "1:cat"},
    {"a letter beyond ASCII beside it",
     {"na", kLiteral, WordRule::Letters},
     "na\xC3\xAFve\n\xE2\x80\x9Cna\xE2\x80\x9D\n",
     "2:na"},
    {"between blanks",
     {"cat", kLiteral, WordRule::Blanks},
     "a cat.\nthe\tcat sat\ncat",
     "2:cat 3:cat"},
    {"an expression as a word", {"c.t", kFull, WordRule::Letters}, "cats cut\nscat\n", "1:cut"},
    {"a star behind a letter is any run",
     {"T*P", kSimple},
     "TIP\nTOOP\nTP\nT\n",
     "1:TIP 2:TOOP 3:TP"},
    {"a question mark is one or none", {"T?P", kSimple}, "TIP\nTOOP\nTP\n", "1:TIP 3:TP"},
    {"behind a class they repeat", {"x[ab]*y", kSimple}, "xaby\nxcy\nxy", "1:xaby 3:xy"},
    {"a class, and one that is not", {"[hb]at", kSimple}, "hat\ncat\nbat", "1:hat 3:bat"},
    {"negated", {"[^b]at", kSimple}, "bat\ncat\n\nat\n", "2:cat"},
    {"at the begin", {"^at", kSimple}, "at\nbat\n", "1:at"},
    {"at the end, in front of CR too", {"at$", kSimple}, "at\r\natx\r\nbat", "1:at 3:at"},
    {"the next is plain", {"a\\*b", kSimple}, "a*b\naxb", "1:a*b"},
    {"two stars are one", {"a**b", kSimple}, "axxb", "1:axxb"},
    {"repeats in a full one", {"ab*c", kFull}, "ac\nabbc\naxc", "1:ac 2:abbc"},
    {"alternatives need no common text", {"cat|dog", kFull}, "a dog\n", "1:dog"},
    {"an optional letter is not required", {"colou?r", kFull}, "color\ncolour", "1:color 2:colour"},
    {"none of it", {"xb{0}c", kFull}, "xc\nxbc", "1:xc"},
    {"a brace of its own", {"a{b", kFull}, "a{b", "1:a{b"},
    {"flags inside", {"(?-i)abC", kFull}, "abc\nabC", "2:abC"},
    {"quoted", {"\\Qa.b\\E+", kFull}, "axb\na.bbb", "2:a.bbb"},
    {"blank is no line end", {"a\\sb", kFull}, "a\nb\na b", "3:a b"},
    {"no letter is no line end", {"a\\Wb", kFull}, "a\nb\na-b", "3:a-b"},
    {"nor in a class", {"a[\\W]b", kFull}, "a\nb\na-b", "3:a-b"},
    {"nor a negated class", {"a[^x]*b", kFull}, "a\nb\na-b", "3:a-b"},
    {"a hyphen in a negated class", {"[^-a]b", kFull}, "-b\nab\n b\nXb", "3: b 4:Xb"},
    {"the end of all is each line's", {"b\\z", kFull}, "ab\nb", "1:b 2:b"},
    {"empty matches, empty lines too", {"x*", kFull}, "a\n\nxx\n", "1: 2: 3:xx"},
    {"empty lines", {"^$", kFull}, "a\n\r\n\nb\n", "2: 3:"},
    {"no place between CR and LF", {"\\B", kFull}, "a\r\nbc\n", "2:"},
    {"a return inside a line", {"^b", kFull}, "a\rb\nb\r\n", "2:b"},
    {"more groups than places", {"(a)(b)(c)", kFull}, "abc", "1:abc"},
    {"look behind", {"(?<=a)b", kFull}, "cb\nab", "2:b"},
    {"bytes that are no UTF-8 part matches",
     {"a.b", kFull},
     "a\xFF"
     "b\na b",
     "2:a b"},
};

TEST(LineFinder, FindsWhatTheRulesSay) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        if (std::unique_ptr<LineFinder> finder = Made(row.rules)) {
            EXPECT_EQ(Joined(HitsOf(*finder, row.text)), row.hits);
            if (finder->Matcher() == nullptr)
                continue;
            finder->Matcher()->BeSteady();
            EXPECT_EQ(Joined(HitsOf(*finder, row.text)), row.hits) << "by the steady library";
        }
    }
}

TEST(LineFinder, RefusesWhatNobodyCanFind) {
    for (const FindRules& rules :
         {FindRules{}, FindRules{"a\nb"}, FindRules{"a\\nb", kFull}, FindRules{"[\n]", kSimple},
          FindRules{"(a", kFull}, FindRules{"[]", kSimple}, FindRules{"a\\", kFull}}) {
        EXPECT_FALSE(LineFinder::Make(rules).ok()) << rules.text;
    }
}

// What each line says when it is asked alone is the reference for slices, required texts and both
// libraries.
std::string AskedAlone(const LineFinder& finder, const std::string& text) {
    std::vector<std::string> hits;
    int number = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        ++number;
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        for (const std::string& hit : HitsOf(finder, text.substr(begin, end - begin)))
            hits.push_back(std::to_string(number) + hit.substr(1));
        begin = end + 1;
    }
    return Joined(hits);
}

std::string RandomText(std::mt19937& random, std::size_t size, std::string_view letters) {
    std::string text;
    while (text.size() < size)
        text += letters[random() % letters.size()];
    return text;
}

TEST(LineFinder, AgreesWithLinesAskedAlone) {
    std::mt19937 random(7);
    const char* const expressions[] = {"a+b",       "[^a]b$",   "^(a|b)*c",  "ab?c",    "a.*b.*c",
                                       "\\bab\\b",  "b\\s*c",   "[^ab]+$",   "(ab)+c?", "a\\W",
                                       "c(?:a|b)c", "ca{2,3}b", "b[a-c ]*c", "ab"};
    for (int round = 0; round < 24; ++round) {
        const std::string text = RandomText(random, 200 + random() % 40000, "aaabbbc \n\n\r");
        for (const char* expression : expressions) {
            SCOPED_TRACE(expression);
            for (const WordRule word : {WordRule::Any, WordRule::Letters}) {
                const auto finder = Made({expression, kFull, word, random() % 2 == 0});
                if (text.size() < 4000) {
                    ASSERT_EQ(Joined(HitsOf(*finder, text)), AskedAlone(*finder, text));
                }
                const std::vector<std::string> quick = HitsOf(*finder, text);
                finder->Matcher()->BeSteady();
                ASSERT_EQ(quick, HitsOf(*finder, text));
            }
        }
        if (round >= 12)
            continue;
        const std::string needle = RandomText(random, 1 + random() % 4, "aAbc");
        const auto literal = Made({needle});
        ASSERT_EQ(HitsOf(*literal, text), HitsOf(*Made({needle, kFull}), text)) << needle;
    }
}

TEST(ByteFinder, FindsAtEachPlaceAndLength) {
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        const std::string text = RandomText(random, random() % 120, "abAB");
        const std::string needle = RandomText(random, 1 + random() % 5, "abAB");
        for (const LetterCase letter_case : {LetterCase::Matters, LetterCase::AsciiFolds}) {
            const ByteFinder finder(needle, letter_case);
            const char* const end = text.data() + text.size();
            ASSERT_EQ(finder.Find(text.data(), end), finder.FindPlainly(text.data(), end));
        }
        const ByteFinder finder(needle);
        const char* const found = finder.Find(text.data(), text.data() + text.size());
        const std::size_t right = text.find(needle);
        ASSERT_EQ(
            found == nullptr ? std::string::npos : static_cast<std::size_t>(found - text.data()),
            right);
    }
}

// Each holds a line that the fast library cannot finish.
TEST(LineFinder, LosesNoHitOnHostileLines) {
    const std::string many_a(900, 'a');
    std::string text;
    for (int line = 0; line < 100; ++line)
        text += many_a + (line % 10 == 0 ? "\n" : "!\n");
    EXPECT_EQ(HitsOf(*Made({"(a+)+$", kFull}), text).size(), 10U);
    EXPECT_EQ(HitsOf(*Made({"(a|b|c|d)*e$", kFull}), text + "aae\n"),
              HitsOf(*Made({"aae"}), text + "aae\n"));
    EXPECT_EQ(HitsOf(*Made({"a.*b.*c.*d.*e$", kFull}), text + "abcde\n"),
              HitsOf(*Made({"abcde"}), text + "abcde\n"));
}

TEST(LineFinder, TellsOnceWhatNobodyCanDecide) {
    const std::string hard = std::string(40, 'a') + "!\n";
    const auto finder = Made({"(?=a)(a+)+\\1$", kFull});
    EXPECT_EQ(Joined(HitsOf(*finder, hard + "aa\n" + hard)), "1:? 2:aa");
}

TEST(LineFinder, StopsWhenAsked) {
    const std::string text(1 << 20, '\n');
    for (const FindRules& rules : {FindRules{"^", kFull}, FindRules{"\\v", kFull}}) {
        int asked = 0;
        MatchScratch scratch;
        Made(rules)->Find(
            text, scratch, [](const LineHit&) { return true; }, [&asked] { return ++asked == 2; });
        EXPECT_EQ(asked, 2) << rules.text;
    }
}

TEST(LineFinder, ColoursEachMatchOfALine) {
    MatchScratch scratch;
    using Spans = std::vector<MatchSpan>;
    EXPECT_EQ(Made({"ab"})->AllIn("xabAB", scratch), (Spans{{1, 3}, {3, 5}}));
    EXPECT_EQ(Made({"a*", kFull})->AllIn("baab", scratch), (Spans{{1, 3}}));
}

// The lines that a grep names, where there is one that knows such expressions.
TEST(LineFinder, AgreesWithGrep) {
    const TempFolder folder;
    std::mt19937 random(11);
    const std::string text = RandomText(random, 60000, "aaabbbcdeXY09._- \n\n") + "\n";
    folder.Write("text", text);
    struct GrepRow {
        const char* switches;
        FindRules rules;
    };
    const GrepRow rows[] = {
        {"-nF", {"ab.", kLiteral, WordRule::Any, true}},
        {"-nFi", {"xY"}},
        {"-nFw", {"ab", kLiteral, WordRule::Letters, true}},
        {"-nE", {"(ab|ba)+c$", kFull, WordRule::Any, true}},
        {"-nEi", {"[^a-c]{2,}x", kFull}},
        {"-nE", {"^[ab]+[0-9]", kFull, WordRule::Any, true}},
    };
    for (const GrepRow& row : rows) {
        SCOPED_TRACE(row.rules.text);
        const std::string command = std::string("LC_ALL=C grep ") + row.switches + " -- '" +
                                    row.rules.text + "' " + folder.Path("text") +
                                    " 2>/dev/null | cut -d: -f1";
        FILE* const pipe = popen(command.c_str(), "r");
        ASSERT_NE(pipe, nullptr);
        std::vector<std::string> lines;
        for (char line[64]; fgets(line, sizeof line, pipe) != nullptr;)
            lines.push_back(std::string(line).substr(0, std::string_view(line).find('\n')));
        pclose(pipe);
        if (lines.empty())
            GTEST_SKIP() << "there is no grep";
        std::vector<std::string> ours = HitsOf(*Made(row.rules), text);
        for (std::string& hit : ours)
            hit.resize(hit.find(':'));
        EXPECT_EQ(ours, lines);
    }
}

}  // namespace
}  // namespace zorvane
