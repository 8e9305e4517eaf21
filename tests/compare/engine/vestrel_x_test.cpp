#include "compare/engine/vestrel_x.h"

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/printers.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

using Lines = std::vector<std::string>;
using Records = std::vector<DifferenceRecord>;

std::string FileOf(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

Lines Split(const std::string& text) {
    Lines lines;
    for (const char character : text)
        lines.emplace_back(1, character);
    return lines;
}

Records Compared(VestrelX& engine, const Lines& master, const Lines& source) {
    EXPECT_TRUE(engine.CompareText(FileOf(master), FileOf(source)).ok());
    return engine.Records();
}

// The source that the records make of the master; fails the test when they overlap or go back.
Lines Applied(const Records& records, const Lines& master, const Lines& source) {
    Lines made;
    std::int32_t at = 0;
    for (const DifferenceRecord& record : records) {
        const bool addition = record.type == DifferenceType::Addition;
        const std::int32_t begin = addition ? record.paragraphs.original.first.value
                                            : record.paragraphs.original.first.value - 1;
        EXPECT_GE(begin, at);
        for (; at < begin; ++at)
            made.push_back(master[static_cast<std::size_t>(at)]);
        at += record.Count(Side::Original);
        const auto size = static_cast<std::int32_t>(made.size());
        if (record.type == DifferenceType::Deletion) {
            EXPECT_EQ(record.paragraphs.modified.first.value, size);
            EXPECT_EQ(record.paragraphs.modified.last.value, size);
            continue;
        }
        EXPECT_EQ(record.paragraphs.modified.first.value, size + 1);
        for (std::int32_t line = record.paragraphs.modified.first.value;
             line <= record.paragraphs.modified.last.value; ++line)
            made.push_back(source[static_cast<std::size_t>(line - 1)]);
    }
    for (; at < static_cast<std::int32_t>(master.size()); ++at)
        made.push_back(master[static_cast<std::size_t>(at)]);
    return made;
}

std::size_t ChangedLines(const Records& records) {
    std::size_t count = 0;
    for (const DifferenceRecord& record : records)
        count +=
            static_cast<std::size_t>(record.Count(Side::Original) + record.Count(Side::Modified));
    return count;
}

// The reference: the textbook table.
std::size_t FewestChangedLines(const Lines& master, const Lines& source) {
    std::vector<std::vector<std::size_t>> common(master.size() + 1,
                                                 std::vector<std::size_t>(source.size() + 1, 0));
    for (std::size_t i = 1; i <= master.size(); ++i) {
        for (std::size_t j = 1; j <= source.size(); ++j)
            common[i][j] = master[i - 1] == source[j - 1]
                               ? common[i - 1][j - 1] + 1
                               : std::max(common[i - 1][j], common[i][j - 1]);
    }
    return master.size() + source.size() - 2 * common[master.size()][source.size()];
}

struct RecordRow {
    const char* name;
    const char* master;  // a letter is a line
    const char* source;
    Records records;
};
constexpr auto kA = DifferenceType::Addition;
constexpr auto kC = DifferenceType::Change;
constexpr auto kD = DifferenceType::Deletion;
const RecordRow kRecordRows[] = {
    {"nothing against nothing", "", "", {}},
    {"the same", "abc", "abc", {}},
    {"from nothing", "", "abc", {{kA, {{0, 0}, {1, 3}}}}},
    {"to nothing", "abc", "", {{kD, {{1, 3}, {0, 0}}}}},
    {"all other", "ab", "xyz", {{kD, {{1, 2}, {0, 0}}}, {kA, {{2, 2}, {1, 3}}}}},
    {"added at the end", "ab", "abc", {{kA, {{2, 2}, {3, 3}}}}},
    {"deleted at the front", "abc", "bc", {{kD, {{1, 1}, {0, 0}}}}},
    {"another in the middle", "abc", "axc", {{kD, {{2, 2}, {1, 1}}}, {kA, {{2, 2}, {2, 2}}}}},
    {"unlike neighbours stay whole",
     "abcd",
     "axyd",
     {{kD, {{2, 3}, {1, 1}}}, {kA, {{3, 3}, {2, 3}}}}},
    {"three apart",
     "abcdefg",
     "bcxdefgh",
     {{kD, {{1, 1}, {0, 0}}}, {kA, {{3, 3}, {3, 3}}}, {kA, {{7, 7}, {8, 8}}}}},
    {"a block slides down", "abb", "abbb", {{kA, {{3, 3}, {4, 4}}}}},
    {"a slid block joins the next", "axaxb", "axb", {{kD, {{3, 4}, {2, 2}}}}},
};
TEST(VestrelX, BuildsRecords) {
    VestrelX engine;
    for (const RecordRow& row : kRecordRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Compared(engine, Split(row.master), Split(row.source)), row.records);
    }
}

struct SplitRow {
    const char* name;
    std::string text;
    std::int32_t count;
};
TEST(VestrelX, CountsLinesAtPairsOnly) {
    const SplitRow rows[] = {
        {"nothing", "", 0},
        {"no end", "a", 1},
        {"an end begins no line", "a\r\n", 1},
        {"an empty last line", "a\r\n\r\n", 2},
        {"lone breaks are content", "a\nb\rc\r\nd", 2},
        {"a lone feed is a line of its own", "\n\r\n \r\n", 2},
        {"feed first", "\n", 1},
        {"return at the end", "a\r", 1},
    };
    VestrelX engine;
    for (const SplitRow& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(engine.CompareText(row.text, "").ok());
        EXPECT_EQ(engine.Compared().Paragraphs(Side::Original), row.count);
        EXPECT_EQ(engine.getDifferenceCount(), row.count == 0 ? 0 : 1);
    }
}

TEST(VestrelX, TakesAPrefixForNoEqual) {
    const char* const rows[][2] = {
        {"abc", "abcd"}, {"abcd", "abc"}, {"a\r\nb", "a\r\nbc\r\nd\r\n"}, {"a", "a\r"}};
    VestrelX engine;
    for (const auto& [master, source] : rows) {
        SCOPED_TRACE(master);
        ASSERT_TRUE(engine.CompareText(master, source).ok());
        EXPECT_GT(engine.getDifferenceCount(), 0);
    }
    ASSERT_TRUE(engine.CompareText("a\r\nb", "a\r\nb\r\n").ok());
    EXPECT_EQ(engine.getDifferenceCount(), 0);  // a missing line end is no difference
}

struct SwitchRow {
    const char* name;
    std::function<void(VestrelX&)> set;
    Lines master;
    Lines source;
    Records records;
};
TEST(VestrelX, LeavesOutWhatIsIgnored) {
    const auto expression = [](const char* text) {
        return [text](VestrelX& engine) {
            engine.putFilterExpression(text);
            engine.putFilterEnabled(true);
        };
    };
    const SwitchRow rows[] = {
        {"case counts", [](VestrelX&) {}, {"Ab"}, {"aB"}, {{kC, {{1, 1}, {1, 1}}}}},
        {"case", [](VestrelX& e) { e.putIgnoreCase(true); }, {"Äbc"}, {"äBC"}, {}},
        {"blanks", [](VestrelX& e) { e.putIgnoreWhitespace(true); }, {" a  b"}, {"a\tb "}, {}},
        {"blanks are not letters",
         [](VestrelX& e) { e.putIgnoreWhitespace(true); },
         {"alder b"},
         {"alder c"},
         {{kC, {{1, 1}, {1, 1}}}}},
        {"a run of any characters", expression("T*P"), {"the TIP"}, {"the T2343sdP"}, {}},
        {"a run behind a full stop", expression("v1\\.*;"), {"v1.2; a"}, {"v1.35; a"}, {}},
        {"a set", expression("[hb]at"), {"a hat"}, {"a bat"}, {}},
        {"not in a set", expression("[^b]at"), {"a hat"}, {"a bat"}, {{kC, {{1, 1}, {1, 1}}}}},
        {"only in front", expression("^[hc]at"), {"hat, hat"}, {"cat, hat"}, {}},
        {"not behind the front",
         expression("^[hc]at"),
         {"a hat"},
         {"a cat"},
         {{kC, {{1, 1}, {1, 1}}}}},
        {"several", expression("[0-9]+@@colou?r"), {"1 color"}, {"22 colour"}, {}},
        {"not enabled",
         [](VestrelX& e) { e.putFilterExpression("x"); },
         {"x"},
         {""},
         {{kD, {{1, 1}, {0, 0}}}, {kA, {{1, 1}, {1, 1}}}}},
        {"a star in a set", expression("[*]"), {"a*"}, {"a"}, {}},
        {"an escaped star", expression("\\*b"), {"a*b"}, {"a"}, {}},
        {"a run to the end", expression("#*"), {"a # x"}, {"a # yz"}, {}},
        {"an expression that matches nothing at all", expression("x?"), {"ab"}, {"ab"}, {}},
        {"broken UTF-8",
         expression("b"),
         {"a\xFF"
          "b"},
         {"a\xFF"},
         {}},
    };
    for (const SwitchRow& row : rows) {
        SCOPED_TRACE(row.name);
        VestrelX engine;
        row.set(engine);
        EXPECT_EQ(Compared(engine, row.master, row.source), row.records);
    }
}

TEST(VestrelX, NamesABadExpression) {
    VestrelX engine;
    engine.putFilterExpression("good@@[bad");
    engine.putFilterEnabled(true);
    const Status status = engine.CompareText("a\r\n", "b\r\n");
    ASSERT_FALSE(status.ok());
    EXPECT_NE(status.failure().reason.find("[bad"), std::string::npos) << status.failure().reason;
    EXPECT_EQ(engine.getDifferenceCount(), 0);
    EXPECT_FALSE(VestrelX::CheckFilterExpression("(").ok());
    EXPECT_TRUE(VestrelX::CheckFilterExpression("").ok());
}

TEST(VestrelX, HostileExpressionEnds) {
    VestrelX engine;
    engine.putFilterExpression("(a+)+$");
    engine.putFilterEnabled(true);
    const Lines line = {std::string(5000, 'a') + "b"};
    EXPECT_EQ(Compared(engine, line, {"c"}),
              (Records{{kD, {{1, 1}, {0, 0}}}, {kA, {{1, 1}, {1, 1}}}}));
}

TEST(VestrelX, LooksNoFurtherThanTheBracket) {
    Lines master = Split("abcdefgh");
    Lines source = Split("uvwxyzabcdefgh");
    VestrelX engine;
    EXPECT_EQ(Compared(engine, master, source), (Records{{kA, {{0, 0}, {1, 6}}}}));
    engine.putUseLineBracket(true);
    engine.putLineBracket(6);
    EXPECT_EQ(Compared(engine, master, source), (Records{{kA, {{0, 0}, {1, 6}}}}));
    engine.putLineBracket(5);
    EXPECT_EQ(Compared(engine, master, source),
              (Records{{kD, {{1, 8}, {0, 0}}}, {kA, {{8, 8}, {1, 14}}}}));
    engine.putUseLineBracket(false);
    EXPECT_EQ(Compared(engine, master, source), (Records{{kA, {{0, 0}, {1, 6}}}}));
}

TEST(VestrelX, GivesRecordsByIndex) {
    VestrelX engine;
    EXPECT_EQ(engine.getDifferenceCount(), 0);
    Compared(engine, Split("abc"), Split("axc"));
    EXPECT_EQ(engine.GetDifference(RecordIndex{0}), (DifferenceRecord{kD, {{2, 2}, {1, 1}}}));
    EXPECT_EQ(engine.GetDifference(RecordIndex{1}), (DifferenceRecord{kA, {{2, 2}, {2, 2}}}));
    EXPECT_FALSE(engine.GetDifference(RecordIndex{2}).has_value());
    EXPECT_FALSE(engine.GetDifference(RecordIndex{-1}).has_value());
}

TEST(VestrelX, ReadsItsFilesAnew) {
    const TempFolder folder;
    VestrelX engine;
    engine.putMasterFile(folder.Write("m", "a\r\nb\r\n"));
    engine.putSourceFile(folder.Write("s", "a\r\nb\r\n"));
    ASSERT_TRUE(engine.Compare().ok());
    EXPECT_EQ(engine.getDifferenceCount(), 0);
    folder.Write("s", "a\r\n");
    ASSERT_TRUE(engine.Compare().ok());
    EXPECT_EQ(engine.getDifferenceCount(), 1);
    engine.putSourceFile(folder.Path("gone"));
    const Status status = engine.Compare();
    ASSERT_FALSE(status.ok());
    EXPECT_NE(status.failure().reason.find("gone"), std::string::npos);
    EXPECT_EQ(engine.getDifferenceCount(), 0);
}

// ---- properties, with fixed seeds ----

Lines RandomLines(std::mt19937& random, std::size_t count, unsigned kinds) {
    Lines lines;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned kind = static_cast<unsigned>(random()) % kinds;
        lines.push_back(kind == 0 ? "" : "line " + std::to_string(kind));
    }
    return lines;
}

Lines Edited(std::mt19937& random, const Lines& lines, unsigned per_mille) {
    Lines out;
    for (const std::string& line : lines) {
        const bool edit = static_cast<unsigned>(random()) % 1000 < per_mille;
        const unsigned kind = static_cast<unsigned>(random()) % 3;
        if (edit && kind == 0)
            continue;
        if (edit && kind == 1)
            out.push_back("new " + std::to_string(random() % 50));
        out.push_back(edit && kind == 2 ? line + "!" : line);
    }
    return out;
}

TEST(VestrelXProperty, SmallPairsApply) {
    std::mt19937 random(1);
    VestrelX engine;
    for (unsigned pair = 0; pair < 500; ++pair) {
        SCOPED_TRACE(pair);
        const Lines master = RandomLines(random, random() % 40, 1 + pair % 12);
        const Lines source = pair % 2 == 0 ? Edited(random, master, 200)
                                           : RandomLines(random, random() % 40, 1 + pair % 12);
        EXPECT_EQ(Applied(Compared(engine, master, source), master, source), source);
    }
}

// Where all lines differ, edits in place leave one shortest answer, and pairing by likeness must
// not find a longer one. Where lines are copies of each other it may, for the sake of a better
// pair, but rarely.
TEST(VestrelXProperty, EditsInPlaceAreAboutAsShortAsCanBe) {
    std::mt19937 random(2);
    VestrelX engine;
    std::size_t found = 0;
    std::size_t fewest = 0;
    for (unsigned pair = 0; pair < 500; ++pair) {
        SCOPED_TRACE(pair);
        const bool unlike = pair % 2 == 0;
        const Lines master = RandomLines(random, random() % 40, unlike ? 1U << 30 : 2 + pair % 12);
        const Lines source = Edited(random, master, 200);
        const std::size_t changed = ChangedLines(Compared(engine, master, source));
        const std::size_t least = FewestChangedLines(master, source);
        if (unlike) {
            EXPECT_EQ(changed, least);
            continue;
        }
        found += changed;
        fewest += least;
    }
    EXPECT_LE(found * 100, fewest * 110) << found << " instead of " << fewest;
}

struct LargeRow {
    const char* name;
    std::function<Lines(std::mt19937&)> master;
    std::function<Lines(std::mt19937&, const Lines&)> source;
};
TEST(VestrelXProperty, LargePairsApplyAndRepeat) {
    constexpr std::size_t kCount = 20000;
    const auto few = [](std::mt19937& random) { return RandomLines(random, kCount, 4); };
    const auto many = [](std::mt19937& random) { return RandomLines(random, kCount, 1U << 30); };
    const auto some = [](std::mt19937& random) { return RandomLines(random, kCount, 3000); };
    const LargeRow rows[] = {
        {"few kinds, edited", few, [](auto& r, auto& m) { return Edited(r, m, 100); }},
        {"few kinds, unrelated", few, [&](auto& r, auto&) { return few(r); }},
        {"some kinds, edited", some, [](auto& r, auto& m) { return Edited(r, m, 300); }},
        {"unrelated", many, [&](auto& r, auto&) { return many(r); }},
        {"reversed", many, [](auto&, auto& m) { return Lines(m.rbegin(), m.rend()); }},
        {"shuffled", many,
         [](auto& r, auto& m) {
             Lines out = m;
             std::shuffle(out.begin(), out.end(), r);
             return out;
         }},
        {"shuffled, some kinds", some,
         [](auto& r, auto& m) {
             Lines out = m;
             std::shuffle(out.begin(), out.end(), r);
             return out;
         }},
        {"halves exchanged", many,
         [](auto&, auto& m) {
             Lines out(m.begin() + kCount / 2, m.end());
             out.insert(out.end(), m.begin(), m.begin() + kCount / 2);
             return out;
         }},
    };
    std::mt19937 random(7);
    for (const LargeRow& row : rows) {
        SCOPED_TRACE(row.name);
        const Lines master = row.master(random);
        const Lines source = row.source(random, master);
        VestrelX engine;
        const Records records = Compared(engine, master, source);
        EXPECT_EQ(Applied(records, master, source), source);
        EXPECT_EQ(Compared(engine, master, source), records);
        engine.putCompareFaster(true);
        EXPECT_EQ(Applied(Compared(engine, master, source), master, source), source);
        engine.putLargerSections(true);
        engine.putUseLineBracket(true);
        EXPECT_EQ(Applied(Compared(engine, master, source), master, source), source);
    }
}

}  // namespace
}  // namespace zorvane
