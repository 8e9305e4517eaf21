// Who follows whom, by the modes and by the rows, and that nothing echoes.
#include "compare/view/scroll_link.h"

#include <algorithm>
#include <deque>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/compared_pair.h"

namespace zorvane::scroll_link_test {
namespace {

constexpr std::int32_t kPage = 10;

// A view of paragraphs of one line each; tells of each of its moves, as a real one does.
class FakeView : public ScrollTarget {
  public:
    FakeView(ScrollLink& link, ShownEditor editor, std::int32_t lines)
        : link_(link), editor_(editor), lines_(lines) {
        link.Hook(editor, *this);
    }

    std::int32_t FirstVisibleLine() const override { return line_; }
    std::int32_t Position(ScrollAxis axis) const override {
        return axis == ScrollAxis::Vertical ? line_ : column_;
    }
    void Scroll(const ScrollMessage& message) override {
        ++moves;
        std::int32_t& place = message.axis == ScrollAxis::Vertical ? line_ : column_;
        const std::int32_t end = message.axis == ScrollAxis::Vertical ? lines_ - 1 : 500;
        const std::int32_t steps[] = {-1, 1, -kPage, kPage};
        const auto code = static_cast<std::size_t>(message.code);
        if (code < 4)
            place += steps[code];
        else if (message.code == ScrollCode::Begin || message.code == ScrollCode::End)
            place = message.code == ScrollCode::Begin ? 0 : end;
        else
            place = message.thumb;
        place = std::clamp(place, 0, end);
        link_.OnLinkedEditorScrolled(editor_);
    }
    TopPlace Top() const override { return {ParagraphNumber{line_ + 1}, part_}; }
    void SetTop(const TopPlace& place) override {
        line_ = place.paragraph.value - 1;
        part_ = place.part;
        link_.OnLinkedEditorScrolled(editor_);
    }

    /// As a user does: by the bar, which tells in advance; or by the wheel.
    void Press(ScrollAxis axis, ScrollCode code, std::int32_t thumb = 0) {
        link_.HandleLinkedEditorMessage({axis, code, thumb}, editor_);
        if (code != ScrollCode::EndScroll)
            Scroll({axis, code, thumb});
    }
    void Wheel(std::int32_t lines) {
        line_ = std::clamp(line_ + lines, 0, lines_ - 1);
        link_.OnLinkedEditorScrolled(editor_);
    }
    void ScrollTo(std::int32_t line, double part) {
        part_ = part;
        line_ = line;
        link_.OnLinkedEditorScrolled(editor_);
    }

    int moves = 0;

  private:
    ScrollLink& link_;
    ShownEditor editor_;
    std::int32_t lines_;
    std::int32_t line_ = 0;
    std::int32_t column_ = 0;
    double part_ = 0;
};

class ScrollLinkTest : public ::testing::Test {
  protected:
    ScrollLinkTest() {
        for (std::int32_t number = 1; number <= 5; ++number)
            views.emplace_back(link, static_cast<ShownEditor>(number), 100);
        link.SetAligned(false);
        for (FakeView& view : views)
            view.Scroll({ScrollAxis::Vertical, ScrollCode::ThumbPosition, 40});
        for (FakeView& view : views)
            view.Scroll({ScrollAxis::Horizontal, ScrollCode::ThumbPosition, 50});
        link.TakeBase();
    }
    std::vector<std::int32_t> Places(ScrollAxis axis) const {
        std::vector<std::int32_t> places;
        for (const FakeView& view : views)
            places.push_back(view.Position(axis));
        return places;
    }

    bool busy = false;
    ScrollLink link{[this] { return busy; }};
    std::deque<FakeView> views;
};

constexpr auto kV = ScrollAxis::Vertical;
constexpr auto kH = ScrollAxis::Horizontal;

struct ModeRow {
    const char* name;
    ScrollAxis axis;
    std::int32_t by_wheel;  // 0: by the bar
    ScrollCode code;
    std::int32_t thumb;
    std::int32_t own;     // how far the editor itself goes
    std::int32_t others;  // and the others, where the mode links them
};
const ModeRow kModeRows[] = {
    {"a line on", kV, 0, ScrollCode::LineForward, 0, 1, 1},
    {"a line back", kV, 0, ScrollCode::LineBack, 0, -1, -1},
    {"a page on", kV, 0, ScrollCode::PageForward, 0, kPage, kPage},
    {"a page back", kV, 0, ScrollCode::PageBack, 0, -kPage, -kPage},
    {"to the end", kV, 0, ScrollCode::End, 0, 59, 59},
    {"a line by the wheel", kV, 1, {}, 0, 1, 1},
    {"a line back by the wheel", kV, -1, {}, 0, -1, -1},
    {"three lines are a page", kV, 3, {}, 0, 3, kPage},
    {"two lines back are a page", kV, -2, {}, 0, -2, -kPage},
    {"across a step on", kH, 0, ScrollCode::LineForward, 0, 1, 1},
    {"across a page back", kH, 0, ScrollCode::PageBack, 0, -kPage, -kPage},
    {"a step with the thumb's place", kH, 0, ScrollCode::LineForward, 57, 1, 7},
    {"a step up with the thumb's place", kV, 0, ScrollCode::LineBack, 30, -1, -10},
};
TEST_F(ScrollLinkTest, EveryOtherEditorMakesTheStep) {
    for (const ModeRow& row : kModeRows) {
        for (std::int32_t mode = -1; mode <= 4; ++mode) {
            for (std::size_t source = 0; source < 5; ++source) {
                SCOPED_TRACE(row.name + std::string(", mode ") + std::to_string(mode));
                SCOPED_TRACE(source);
                link.SetSynchType(0);
                for (FakeView& view : views) {
                    view.Scroll({kV, ScrollCode::ThumbPosition, 40});
                    view.Scroll({kH, ScrollCode::ThumbPosition, 50});
                    view.moves = 0;
                }
                link.SetSynchType(mode);
                if (row.by_wheel != 0)
                    views[source].Wheel(row.by_wheel);
                else
                    views[source].Press(row.axis, row.code, row.thumb);
                const bool linked = mode == 3 || mode == (row.axis == kV ? 1 : 2);
                const std::int32_t start = row.axis == kV ? 40 : 50;
                std::vector<std::int32_t> expected(5, start + (linked ? row.others : 0));
                expected[source] = start + row.own;
                EXPECT_EQ(Places(row.axis), expected);
                EXPECT_EQ(Places(row.axis == kV ? kH : kV),
                          std::vector<std::int32_t>(5, row.axis == kV ? 50 : 40));
                for (std::size_t i = 0; i < 5; ++i)
                    EXPECT_LE(views[i].moves, 1) << "an echo";
            }
        }
    }
}

TEST_F(ScrollLinkTest, ADragMovesTheOthersWhenItEnds) {
    link.SetSynchType(3);
    for (std::int32_t place = 41; place <= 55; ++place)
        views[2].Press(kV, ScrollCode::ThumbTrack, place);
    views[2].Press(kV, ScrollCode::ThumbPosition, 56);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{40, 40, 56, 40, 40}));
    views[2].Press(kV, ScrollCode::EndScroll);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{50, 50, 56, 50, 50})) << "by a page";
    views[0].Press(kH, ScrollCode::ThumbTrack, 80);
    EXPECT_EQ(Places(kH), (std::vector<std::int32_t>{80, 50, 50, 50, 50}));
    views[0].Press(kH, ScrollCode::EndScroll);
    EXPECT_EQ(Places(kH), (std::vector<std::int32_t>{80, 80, 80, 80, 80}));
    views[0].Press(kV, ScrollCode::EndScroll);
    EXPECT_EQ(views[1].Position(kV), 50) << "an end without a drag is nothing";
}

TEST_F(ScrollLinkTest, TheProgrammesOwnMovesAreNoScrolling) {
    link.SetSynchType(3);
    busy = true;
    views[0].Wheel(5);
    views[1].Press(kV, ScrollCode::PageForward);
    views[1].Press(kH, ScrollCode::PageForward);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{45, 50, 40, 40, 40}));
    busy = false;
    link.TakeBase();
    views[0].Wheel(1);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{46, 51, 41, 41, 41})) << "no jump";
}

TEST_F(ScrollLinkTest, AStepAtTheEndDoesNotSwallowTheNextMove) {
    link.SetSynchType(1);
    views[0].Press(kV, ScrollCode::End);
    views[0].Press(kV, ScrollCode::LineForward);  // it cannot go on
    views[0].Wheel(-1);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{98, 98, 98, 98, 98}));
}

TEST_F(ScrollLinkTest, AnUnhookedEditorIsLeftAlone) {
    link.SetSynchType(1);
    link.Unhook(ShownEditor::Modified);
    views[1].Wheel(1);
    views[0].Wheel(1);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{41, 41, 41, 41, 41}));
    link.Hook(ShownEditor::Additions, views[1]);
    views[0].Wheel(1);
    EXPECT_EQ(views[1].Position(kV), 41) << "the summaries are not linked";
    views[2].Wheel(3);
    link.OnPointerPressed(ShownEditor::Original);
    views[0].Wheel(1);
    EXPECT_EQ(views[4].Position(kV), 53);
}

// 4 equal pairs, a split one, two equal pairs, 5 deleted, the rest equal.
class AlignedTest : public ScrollLinkTest {
  protected:
    AlignedTest() : pair(Texts(false), Texts(true)) {
        rows.Assign(pair.comparison());
        link.SetRows(&rows, &rows);
        link.SetAligned(true);
    }
    static TextLines Texts(bool modified) {
        TextLines texts;
        for (int i = 0; i < 90; ++i) {
            const std::string text = "paragraph number " + std::to_string(i * 7919) + " stays";
            if (i == 4 && modified) {
                texts.insert(texts.end(),
                             {"this is one half of the whole.", "And the other half of it."});
                continue;
            }
            if (i >= 7 && i < 12 && modified)
                continue;
            texts.push_back(i == 4 ? "this is one half of the whole. And the other half of it."
                                   : text);
        }
        return texts;
    }

    ComparedPair pair;
    ParagraphRows rows;
};

struct OppositeRow {
    Side side;
    TopPlace place;
    TopPlace opposite;
};
TEST_F(AlignedTest, TellsWhatStandsOpposite) {
    const auto at = [](std::int32_t number, double part = 0) {
        return TopPlace{ParagraphNumber{number}, part};
    };
    const OppositeRow table[] = {
        {Side::Original, at(1), at(1)},
        {Side::Original, at(4, 0.25), at(4, 0.25)},
        {Side::Original, at(5, 0.25), at(5, 0.5)},
        {Side::Original, at(5, 0.75), at(6, 0.5)},
        {Side::Modified, at(6, 0.5), at(5, 0.75)},
        {Side::Modified, at(6, 1), at(5, 1)},
        {Side::Original, at(6), at(7)},
        {Side::Original, at(8), at(9)},
        {Side::Original, at(12, 0.5), at(9)},
        {Side::Original, at(13, 0.5), at(9, 0.5)},
        {Side::Modified, at(9), at(13)},
        {Side::Modified, at(86), at(90)},
        {Side::Modified, at(99), at(90, 1)},
    };
    for (const OppositeRow& row : table)
        EXPECT_EQ(OppositeOf(rows, row.side, row.place), row.opposite)
            << row.place.paragraph.value << " " << row.place.part;
    const ComparedPair longer({"stays as it is"}, {"stays as it is", "new and last"});
    rows.Assign(longer.comparison());
    EXPECT_EQ(OppositeOf(rows, Side::Modified, at(2)), at(1, 1)) << "behind the last";
}

TEST_F(AlignedTest, PairsStayOppositeWhateverTheMode) {
    std::mt19937 random(5);
    for (std::int32_t mode = 0; mode <= 3; ++mode) {
        link.SetSynchType(mode);
        for (int step = 0; step < 200; ++step) {
            const std::size_t source = random() % 4;
            views[source].ScrollTo(static_cast<std::int32_t>(random() % 85), 0.25);
            const std::size_t partner = source ^ 1U;
            const Side side = source % 2 == 0 ? Side::Original : Side::Modified;
            ASSERT_EQ(views[partner].Top(), OppositeOf(rows, side, views[source].Top()));
            const std::size_t far = (source + 2) % 4;
            if (mode == 1 || mode == 3) {
                ASSERT_EQ(views[far ^ 1U].Top(), OppositeOf(rows, side, views[far].Top()))
                    << "the other pair went by its one side";
            }
        }
    }
}

TEST_F(AlignedTest, TheOtherPairAndTheMergedViewGoByTheMode) {
    for (FakeView& view : views)
        view.ScrollTo(0, 0);
    link.SetSynchType(1);
    views[0].Press(kV, ScrollCode::PageForward);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{10, 8, 10, 8, 10}));
    link.SetSynchType(0);
    views[3].Wheel(1);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{10, 8, 13, 9, 10}));
    link.SetSynchType(1);
    views[4].Wheel(-1);
    EXPECT_EQ(Places(kV), (std::vector<std::int32_t>{9, 8, 12, 8, 9}));
}

}  // namespace
}  // namespace zorvane::scroll_link_test
