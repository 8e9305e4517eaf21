// Which paragraphs stand opposite each other, as compared and after edits.
#include "compare/view/paragraph_rows.h"

#include <algorithm>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

#include "tests/compare/view/rows_notation.h"
#include "tests/support/compared_pair.h"
#include "tests/support/printers.h"

namespace zorvane::paragraph_rows_test {
namespace {

// Every paragraph in one row, in order, and row and paragraph each from the other.
void ExpectWhole(const ParagraphRows& rows, const PerSide<std::int32_t>& paragraphs) {
    PerSide<std::int32_t> at{0, 0};
    for (std::int32_t index = 0; index < rows.Rows(); ++index) {
        const ParagraphRow row = rows.Row(index);
        const ParagraphRow run = rows.RunAt(index);
        ASSERT_EQ(row.rows, (RowSpan{index, 1}));
        ASSERT_TRUE(run.rows.first <= index && index < run.rows.end());
        ASSERT_EQ(row.kind, run.kind);
        ASSERT_GT(row.paragraphs.original.count + row.paragraphs.modified.count, 0);
        for (const Side side : kBothSides) {
            const ParagraphSpan& span = row.paragraphs[side];
            ASSERT_EQ(span.first.value, at[side] + 1) << "row " << index;
            for (std::int32_t i = 0; i < span.count; ++i)
                ASSERT_EQ(rows.RowOf(side, span.first + i), index);
            at[side] += span.count;
        }
    }
    for (const Side side : kBothSides) {
        EXPECT_EQ(at[side], paragraphs[side]);
        EXPECT_EQ(rows.Paragraphs(side), paragraphs[side]);
    }
}

// The partners that the comparison itself tells, but for what moved.
void ExpectPartners(const ParagraphRows& rows, const Comparison& comparison) {
    std::vector<std::int32_t> partners = comparison.Partners();
    for (const Move& move : comparison.moves) {
        const DifferenceRecord& from = comparison.Record(move.deletion);
        for (std::int32_t i = from.paragraphs.original.first.value;
             i <= from.paragraphs.original.last.value; ++i)
            partners[static_cast<std::size_t>(i) - 1] = 0;
    }
    for (std::int32_t i = 1; i <= rows.Paragraphs(Side::Original); ++i) {
        const ParagraphRow row = rows.Row(rows.RowOf(Side::Original, ParagraphNumber{i}));
        const ParagraphSpan& opposite = row.paragraphs.modified;
        ASSERT_EQ(opposite.count == 0 ? 0 : opposite.first.value,
                  partners[static_cast<std::size_t>(i) - 1])
            << "paragraph " << i;
    }
}

void ExpectRecords(const ParagraphRows& rows, const Comparison& comparison) {
    for (std::size_t i = 0; i < comparison.records.size(); ++i) {
        const DifferenceRecord& record = comparison.records[i];
        const RowSpan span = rows.RowsOfRecord(static_cast<std::int32_t>(i));
        PerSide<std::int32_t> counts{0, 0};
        for (std::int32_t row = span.first; row < span.end(); ++row) {
            for (const Side side : kBothSides)
                counts[side] += rows.Row(row).paragraphs[side].count;
        }
        for (const Side side : kBothSides) {
            EXPECT_EQ(counts[side], record.Count(side)) << "record " << i;
            if (counts[side] > 0) {
                EXPECT_EQ(rows.Row(span.first).paragraphs[side].first.value,
                          record.paragraphs[side].first.value);
            }
        }
    }
}

TEST(ParagraphRows, HoldEveryParagraphOfRandomComparisons) {
    std::mt19937 random(31);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        const TextLines original = RandomParagraphs(random, random() % 40);
        const TextLines modified = EditedParagraphs(random, original);
        const ComparedPair pair(original, modified, {.ignore_empty_lines = round % 3 == 0});
        ParagraphRows rows;
        rows.Assign(pair.comparison());
        ExpectWhole(rows, {static_cast<std::int32_t>(original.size()),
                           static_cast<std::int32_t>(modified.size())});
        ExpectPartners(rows, pair.comparison());
        ExpectRecords(rows, pair.comparison());
    }
}

// Many records, so that they fill more than one chunk.
TEST(ParagraphRows, CostByTheDifferences) {
    Comparison comparison;
    const auto text = std::make_shared<const std::u16string>([] {
        std::u16string breaks;
        for (int i = 1; i < 20000; ++i)
            breaks += u"\r\n";
        return breaks;
    }());
    comparison.SetEditorTexts({text, text});
    for (std::int32_t i = 10; i < 20000; i += 10)
        comparison.records.push_back({DifferenceType::Change, {{i, i}, {i, i}}});
    ParagraphRows rows;
    rows.Assign(comparison);
    ExpectWhole(rows, {20000, 20000});
    ExpectRecords(rows, comparison);
    EXPECT_EQ(rows.Runs(), comparison.records.size() * 2 + 1);
}

struct EditRow {
    const char* name;
    const char* before;
    Side side;
    std::vector<ParagraphEdit> edits;
    const char* after;
};

// Rows out of their notation.
ParagraphRows RowsOf(const std::string& notation) {
    std::vector<RowPiece> pieces;
    PerSide<std::u16string> texts;
    Comparison comparison;
    PerSide<std::int32_t> at{0, 0};
    for (std::size_t i = 0; i < notation.size(); i += 4) {  // "2=2 ", one figure each
        const PerSide<std::int32_t> counts{notation[i] - '0', notation[i + 2] - '0'};
        for (const Side side : kBothSides) {
            for (std::int32_t k = 0; k < counts[side]; ++k)
                texts[side] += at[side]++ == 0 ? u"x" : u"\r\nx";
        }
        if (notation[i + 1] == '=')
            continue;
        comparison.records.push_back(
            {counts.original == 0   ? DifferenceType::Addition
             : counts.modified == 0 ? DifferenceType::Deletion
                                    : DifferenceType::Change,
             {{at.original - counts.original + (counts.original > 0 ? 1 : 0), at.original},
              {at.modified - counts.modified + (counts.modified > 0 ? 1 : 0), at.modified}}});
    }
    comparison.SetEditorTexts({std::make_shared<const std::u16string>(texts.original),
                               std::make_shared<const std::u16string>(texts.modified)});
    ParagraphRows rows;
    rows.Assign(comparison);
    return rows;
}

ParagraphEdit Edit(std::int32_t first, std::int32_t removed, std::int32_t inserted) {
    return {ParagraphNumber{first}, removed, inserted};
}
ParagraphEdit Behind(std::int32_t first, std::int32_t inserted) {
    return {ParagraphNumber{first + 1}, 0, inserted, false};
}

using enum Side;
const EditRow kEditRows[] = {
    {"a letter", "5=5", Modified, {Edit(3, 1, 1)}, "2=2 1e1 2=2"},
    {"a letter in the neighbour", "5=5", Modified, {Edit(3, 1, 1), Edit(4, 1, 1)}, "2=2 2e2 1=1"},
    {"the same letter twice", "2=2", Original, {Edit(1, 1, 1), Edit(1, 1, 1)}, "1e1 1=1"},
    {"in a changed one", "1=1 3~3", Original, {Edit(3, 1, 1)}, "1=1 1~1#0 1e1#0 1~1#0"},
    {"a paragraph parted", "3=3", Original, {Edit(2, 1, 2)}, "1=1 2e1 1=1"},
    {"and joined again", "3=3", Original, {Edit(2, 1, 2), Edit(2, 2, 1)}, "1=1 1e1 1=1"},
    {"two joined", "4=4", Modified, {Edit(2, 2, 1)}, "1=1 2e1 1=1"},
    {"and parted again", "4=4", Modified, {Edit(2, 2, 1), Edit(2, 1, 2)}, "1=1 2e2 1=1"},
    {"new ones between", "4=4", Original, {Edit(3, 0, 2)}, "2=2 2e0 2=2"},
    {"and more behind them", "4=4", Original, {Edit(3, 0, 2), Edit(5, 0, 1)}, "2=2 3e0 2=2"},
    {"in front of all", "2=2", Modified, {Edit(1, 0, 1)}, "0e1 2=2"},
    {"behind all", "2=2", Modified, {Behind(2, 1)}, "2=2 0e1"},
    {"some go", "9=9", Modified, {Edit(3, 4, 0)}, "2=2 4e0 3=3"},
    {"and come back", "9=9", Modified, {Edit(3, 4, 0), Edit(3, 0, 4)}, "2=2 4e4 3=3"},
    {"go one by one", "9=9", Modified, {Edit(3, 1, 0), Edit(3, 1, 0)}, "2=2 2e0 5=5"},
    {"a deletion copied over", "1=1 2-0 1=1", Modified, {Edit(2, 0, 2)}, "1=1 2e2#0 1=1"},
    {"an addition copied over", "1=1 0-3 1=1", Original, {Behind(1, 3)}, "1=1 3e3#0 1=1"},
    {"an addition taken out", "1=1 0-3 1=1", Modified, {Edit(2, 3, 0)}, "2=2"},
    {"a change of two copied over", "1=1 2~1 1=1", Modified, {Edit(2, 1, 2)}, "1=1 2e2#0 1=1"},
    {"of two gaps the first", "1=1 2-0 1-0 1=1", Modified, {Behind(1, 1)}, "1=1 2e1#0 1-0#1 1=1"},
    {"of two gaps the last", "1=1 2-0 1-0 1=1", Modified, {Edit(2, 0, 1)}, "1=1 2-0#0 1e1#1 1=1"},
    {"between paragraphs of one row", "1=1 1~3 1=1", Modified, {Edit(3, 0, 1)}, "1=1 1e4#0 1=1"},
    {"in the last row of several", "2~4 1=1", Modified, {Edit(4, 1, 1)}, "1~1#0 1e3#0 1=1"},
    {"inside an addition", "1=1 0-4", Modified, {Edit(4, 0, 1)}, "1=1 0-2#0 0e1 0-2#0"},
    {"across a deletion", "2=2 1-0 2=2", Modified, {Edit(2, 2, 2)}, "1=1 1e1 1-0#0 1e1 1=1"},
    {"more than there are", "2=2", Original, {Edit(9, 0, 1)}, "2=2 1e0"},
};
TEST(ParagraphRows, FollowEdits) {
    for (const EditRow& row : kEditRows) {
        SCOPED_TRACE(row.name);
        ParagraphRows rows = RowsOf(row.before);
        PerSide<std::int32_t> counts{rows.Paragraphs(Side::Original),
                                     rows.Paragraphs(Side::Modified)};
        for (const ParagraphEdit& edit : row.edits) {
            rows.Apply(row.side, edit);
            counts[row.side] += edit.inserted - edit.removed;
        }
        EXPECT_EQ(Notation(rows), row.after);
        ExpectWhole(rows, counts);
    }
}

TEST(ParagraphRows, ResetKeepsThePairsWhereItCan) {
    ParagraphRows rows = RowsOf("2=2 1-0 2=2");
    rows.Reset(Side::Original, 5);
    EXPECT_EQ(Notation(rows), "2e2 1e0#0 2e2");
    rows.Reset(Side::Modified, 2);
    EXPECT_EQ(Notation(rows), "5e2");
    EXPECT_EQ(rows.RowsOfRecord(0).count, 0);
}

// Both texts as lists of paragraphs with names, and what each was paired with.
class Reference {
  public:
    Reference(const ParagraphRows& rows, std::int32_t original, std::int32_t modified) {
        names_.original.resize(static_cast<std::size_t>(original));
        names_.modified.resize(static_cast<std::size_t>(modified));
        std::iota(names_.original.begin(), names_.original.end(), 0);
        std::iota(names_.modified.begin(), names_.modified.end(), 0);
        for (std::int32_t i = 0; i < rows.Rows(); ++i) {
            const ParagraphRow row = rows.Row(i);
            if (row.kind == RowKind::Equal)
                pairs_.push_back({row.paragraphs.original.first.value - 1,
                                  row.paragraphs.modified.first.value - 1});
        }
    }

    std::int32_t Count(Side side) const { return static_cast<std::int32_t>(names_[side].size()); }

    void Apply(Side side, const ParagraphEdit& edit) {
        std::vector<std::int32_t>& names = names_[side];
        const auto from = names.begin() + (edit.first.value - 1);
        const auto behind = names.erase(from, from + edit.removed);
        names.insert(behind, static_cast<std::size_t>(edit.inserted), -1);
    }

    // An equal pair that nobody touched still stands in a row of its own.
    void ExpectKept(const ParagraphRows& rows) const {
        PerSide<std::vector<std::int32_t>> numbers{std::vector<std::int32_t>(2000, 0),
                                                   std::vector<std::int32_t>(2000, 0)};
        for (const Side side : kBothSides) {
            for (std::size_t i = 0; i < names_[side].size(); ++i) {
                if (names_[side][i] >= 0)
                    numbers[side][static_cast<std::size_t>(names_[side][i])] =
                        static_cast<std::int32_t>(i) + 1;
            }
        }
        for (const PerSide<std::int32_t>& pair : pairs_) {
            const std::int32_t left = numbers.original[static_cast<std::size_t>(pair.original)];
            const std::int32_t right = numbers.modified[static_cast<std::size_t>(pair.modified)];
            if (left == 0 || right == 0)
                continue;
            const ParagraphRow row = rows.Row(rows.RowOf(Side::Original, ParagraphNumber{left}));
            ASSERT_EQ(row.kind, RowKind::Equal);
            ASSERT_EQ(row.paragraphs.original, (ParagraphSpan{ParagraphNumber{left}, 1}));
            ASSERT_EQ(row.paragraphs.modified, (ParagraphSpan{ParagraphNumber{right}, 1}));
        }
    }

  private:
    PerSide<std::vector<std::int32_t>> names_;
    std::vector<PerSide<std::int32_t>> pairs_;
};

TEST(ParagraphRows, KeepWhatNobodyTouched) {
    std::mt19937 random(77);
    const auto below = [&](std::int32_t end) {
        return static_cast<std::int32_t>(random() % static_cast<unsigned>(end));
    };
    for (int round = 0; round < 20; ++round) {
        SCOPED_TRACE(round);
        const TextLines original = RandomParagraphs(random, 1500);  // more than one chunk
        const ComparedPair pair(original, EditedParagraphs(random, original),
                                {.ignore_empty_lines = round % 2 == 0, .find_sections = false});
        ParagraphRows rows;
        rows.Assign(pair.comparison());
        Reference reference(rows, rows.Paragraphs(Side::Original), rows.Paragraphs(Side::Modified));
        for (int step = 0; step < 150; ++step) {
            const Side side = below(2) == 0 ? Side::Original : Side::Modified;
            const std::int32_t first = 1 + below(reference.Count(side));
            const std::int32_t most = std::min(1 + below(5), reference.Count(side) - first);
            ParagraphEdit edit{ParagraphNumber{first}, below(most + 1), below(4), below(2) == 0};
            rows.Apply(side, edit);
            reference.Apply(side, edit);
            if (step % 10 == 0)
                ExpectWhole(rows,
                            {reference.Count(Side::Original), reference.Count(Side::Modified)});
            reference.ExpectKept(rows);
            ASSERT_FALSE(::testing::Test::HasFatalFailure()) << "step " << step;
        }
    }
}

struct FoldRow {
    const char* rows;
    FoldRule rule;
    std::vector<RowSpan> folds;
};
const FoldRow kFoldRows[] = {
    {"9=9", {}, {{0, 9}}},
    {"3=3", {}, {}},
    {"6=6 1~1 6=6", {}, {{0, 5}, {8, 5}}},
    {"5=5 1~1 6=6 1~1 4=4", {}, {{0, 4}, {7, 4}}},
    {"5=5 1~1 5=5 1~1 5=5", {}, {{0, 4}, {13, 4}}},
    {"5=5 1~1 9=9", {2, 0, 1, {}}, {{0, 5}, {8, 7}}},
    {"1~1 2=2 1~1", {3, 3, 0, {}}, {}},
    {"1~1", {}, {}},
    {"6=6 6=6 1~1 9=9", {1, 1, 4, {0, 4, 17}}, {{0, 4}, {5, 6}, {14, 8}}},  // none above the end
    {"6=6 6=6 1~1", {1, 1, 4, {4, 9}}, {{0, 9}}},    // what is left below it is too short
    {"6=6 6=6 1~1", {1, 1, 4, {4, 11}}, {{0, 11}}},  // in sight as it is
};
TEST(FoldableRows, LeaveTheContextOfDifferences) {
    for (const FoldRow& row : kFoldRows) {
        SCOPED_TRACE(row.rows);
        const ParagraphRows rows = RowsOf(row.rows);
        EXPECT_EQ(FoldableRows(rows, row.rule), row.folds);
    }
}

TEST(FoldableRows, GoAcrossWhatWasNotLookedAt) {
    const ComparedPair pair({"a", "", "b", "c", "d", "e"}, {"a", "b", "", "", "c", "d", "e"},
                            {.ignore_empty_lines = true});
    ParagraphRows rows;
    rows.Assign(pair.comparison());
    EXPECT_EQ(Notation(rows), "1=1 1i0 1=1 0i2 3=3");
    EXPECT_EQ(FoldableRows(rows, {}), (std::vector<RowSpan>{{0, 8}}));
    rows.Apply(Side::Original, Edit(1, 1, 1));
    EXPECT_EQ(FoldableRows(rows, {}), (std::vector<RowSpan>{{2, 6}})) << "an edit is a difference";
}

}  // namespace
}  // namespace zorvane::paragraph_rows_test
