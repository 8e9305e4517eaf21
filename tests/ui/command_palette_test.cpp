#include "common/ui/command_palette.h"

#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

#include "common/ui/fuzzy_match.h"

namespace zorvane {
namespace {

TEST(FuzzyMatch, FindsLettersInTheirOrder) {
    struct Row {
        const char* pattern;
        const char* text;
        std::vector<int> places;
        bool fits = true;
    };
    const Row rows[] = {
        {"fold", "Unfold All", {2, 3, 4, 5}},
        {"FOLD", "New Compare Folders", {12, 13, 14, 15}},
        {"ncf", "New Compare Folders", {0, 4, 12}},
        {"sf", "Show Find Text In Files", {0, 5}},
        {"com fol", "New Compare Folders", {4, 5, 6, 12, 13, 14}},
        {"dlof", "Fold", {}, false},
        {"foldx", "Fold", {}, false},
        {"", "Fold", {}},
        {"nxe", "Next Pane Exit", {0, 2, 10}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pattern);
        const auto match = MatchFuzzy(QString::fromUtf8(row.pattern), QString::fromUtf8(row.text));
        ASSERT_EQ(match.has_value(), row.fits);
        if (match) {
            EXPECT_EQ(match->places, row.places);
        }
    }
}

std::vector<CommandEntry> SomeEntries() {
    return {{.id = "new", .name = "New Compare Folders"},
            {.id = "copy", .name = "Fold and Copy", .reason = "Nothing is selected"},
            {.id = "unfold", .name = "Unfold All"},
            {.id = "fold", .name = "Fold Unchanged"},
            {.id = "scattered", .name = "Follow the Old"}};
}

std::vector<std::string> IdsOf(const QString& pattern, const QStringList& last_used = {}) {
    const std::vector<CommandEntry> entries = SomeEntries();
    std::vector<std::string> ids;
    for (const PaletteHit& hit : PaletteHits(entries, pattern, last_used))
        ids.emplace_back(entries[hit.entry].id);
    return ids;
}

TEST(PaletteHits, PutTheBestFirstAndWhatCanNotBeRunLast) {
    using Ids = std::vector<std::string>;
    EXPECT_EQ(IdsOf("fold"), (Ids{"fold", "new", "unfold", "copy", "scattered"}));
    EXPECT_EQ(IdsOf("", {"unfold", "fold"}), (Ids{"unfold", "fold", "new", "scattered", "copy"}));
    EXPECT_EQ(IdsOf("fold", {"new"}), (Ids{"new", "fold", "unfold", "copy", "scattered"}));
    EXPECT_EQ(IdsOf("unfold all", {"fold"}), Ids{"unfold"});
    EXPECT_EQ(IdsOf("Fold and copy "), Ids{"copy"}) << "its reason, and not what is like it";
    EXPECT_EQ(IdsOf("fold unchanged", {"new"}).front(), "fold") << "whatever was used last";
    EXPECT_EQ(IdsOf("zzz"), Ids{});
}

constexpr Command kCommands[] = {
    {"open", "&Open...", "&File", 10, "Ctrl+O", "open", "Open it"},
    {"fold", "&Fold", "&View", 10, "", "fold", "Fold it"},
    {"never", "&Fall", "&View", 10, "", "", "Not bound"},
};

TEST(CommandPalette, RunsByKeysAloneAndGivesTheFocusBack) {
    QWidget window;
    window.resize(1000, 700);
    QLineEdit pane(&window);
    int opened = 0;
    QWidget* focus_at_run = nullptr;
    CommandSet commands({kCommands}, UiText(), window);
    commands.Bind("open", {.run = [&] { ++opened; }});
    commands.Bind("fold", {.run = [&] { focus_at_run = window.focusWidget(); }});
    CommandPalette palette(commands, UiText(), window);
    window.show();
    pane.setFocus();

    palette.Open();
    EXPECT_TRUE(palette.isVisible());
    EXPECT_EQ(palette.List().model()->rowCount(), 3);
    QTest::keyClicks(&palette.Line(), "f");
    EXPECT_EQ(palette.List().model()->rowCount(), 2);
    QTest::keyClick(&palette.Line(), Qt::Key_Return);
    EXPECT_FALSE(palette.isVisible());
    EXPECT_EQ(focus_at_run, &pane);
    EXPECT_EQ(palette.LastUsed(), QStringList{"fold"});

    palette.Open();
    EXPECT_EQ(palette.List().currentIndex().data(), "Fold") << "the last used one is first";
    QTest::keyClick(&palette.Line(), Qt::Key_Down);
    QTest::keyClick(&palette.Line(), Qt::Key_Return);
    EXPECT_EQ(opened, 1);

    palette.Open();
    QTest::keyClicks(&palette.Line(), "fall");
    EXPECT_FALSE(palette.List().currentIndex().data(Qt::ToolTipRole).toString().isEmpty());
    QTest::keyClick(&palette.Line(), Qt::Key_Return);
    EXPECT_TRUE(palette.isVisible()) << "what can not be run stays";
    QTest::keyClick(&palette.Line(), Qt::Key_Escape);
    EXPECT_FALSE(palette.isVisible());
    EXPECT_EQ(window.focusWidget(), &pane);
}

}  // namespace
}  // namespace zorvane
