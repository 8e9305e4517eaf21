// The windows over the whole program: does a click or a key reach the viewer, and is what the
// viewer tells shown?
#include <fstream>

#include <QDir>

#include <gtest/gtest.h>

#include "app/ui/rescued_edits.h"
#include "common/base/text_encoding.h"
#include "tests/ui/window_world.h"

namespace zorvane {
namespace {

class MainWindowTest : public ::testing::Test {
  protected:
    MainWindowTest() : theme(*qobject_cast<QApplication*>(QCoreApplication::instance())) {
        original = Write("one.txt", "Alpha\r\nBeta two\r\nGamma\r\nDelta\r\n");
        modified = Write("two.txt", "Alpha\r\nBeta three\r\nGamma\r\nEpsilon is new here\r\n");
    }
    std::string Write(const std::string& name, const std::string& text) {
        const std::string path = fakes.folder.Path() + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    static std::string TextOf(RichTextView& view) { return ToUtf8(view.Document().Text()); }

    FakePlatform fakes;
    Theme theme;
    std::string original;
    std::string modified;
};

TEST_F(MainWindowTest, StartsWithAnEmptyPageAndWaitsForBothFiles) {
    WindowWorld world(fakes, theme);
    EXPECT_TRUE(world.Page().ShowsStart());
    EXPECT_EQ(world.Viewer().FileNames(), (std::vector<std::string>{"", ""})) << "none was chosen";
    EXPECT_FALSE(world.window.Commands().Run("compare.run"));
    world.Page().TakeFile(Side::Original, ToQt(original));
    EXPECT_FALSE(world.window.Commands().Run("compare.run")) << "one side is missing";
    world.Page().TakeFile(Side::Modified, ToQt(modified));
    EXPECT_TRUE(world.window.Commands().Run("compare.run"));
    ASSERT_TRUE(WindowWorld::Until([&] { return world.Viewer().ShownComparison() != nullptr; }));
    EXPECT_FALSE(world.Page().ShowsStart());
}

TEST_F(MainWindowTest, OpensOneFileAsTheOriginal) {
    WindowWorld world(fakes, theme);
    const QString here = QDir::currentPath();
    QDir::setCurrent(ToQt(fakes.folder.Path()));
    world.window.OpenFiles({"one.txt"});
    QDir::setCurrent(here);
    EXPECT_EQ(world.Viewer().FileNames()[0], original) << "whole, for the days to come";
    world.Page().TakeFile(Side::Modified, ToQt(modified));
    world.Page().Compare();
    ASSERT_TRUE(WindowWorld::Until([&] { return world.Viewer().ShownComparison() != nullptr; }));
}

TEST_F(MainWindowTest, ShowsWhatWasComparedAndWalksIt) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(original, modified));
    CompareFilesPage& page = world.Page();
    const std::int32_t count = world.Viewer().Differences().Count();
    ASSERT_GE(count, 2);
    EXPECT_EQ(page.Bar().List().count(), count);
    EXPECT_EQ(TextOf(page.Pane().View(Side::Modified)),
              TextOf(page.Editors().View(Side::Modified)));
    world.window.Commands().Run("go.first");
    EXPECT_EQ(page.Pane().Current(), 0);
    world.window.Commands().Run("go.next");
    EXPECT_EQ(page.Pane().Current(), 1);
    EXPECT_EQ(page.Bar().List().currentIndex(), 1);
    EXPECT_EQ(world.window.windowTitle(), QStringLiteral("one.txt vs. two.txt – Zorvane"));
}

TEST_F(MainWindowTest, CopiesADifferenceOverAsOneUndo) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(original, modified));
    RichTextView& left = world.Page().Editors().View(Side::Original);
    const std::string before = TextOf(left);
    world.window.Commands().Run("go.first");
    EXPECT_TRUE(world.window.Commands().Run("compare.copy_to_original"));
    EXPECT_NE(TextOf(left).find("Beta three"), std::string::npos);
    EXPECT_TRUE(world.Viewer().IsStale());
    left.setFocus();
    world.Page().Editors().View(Side::Original).Undo();
    EXPECT_EQ(TextOf(left), before);
}

TEST_F(MainWindowTest, ComparesEditsWithoutLosingThem) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(original, modified));
    RichTextView& left = world.Page().Editors().View(Side::Original);
    left.setFocus();
    QTest::keyClicks(left.viewport(), QStringLiteral("X"));
    left.Document().Type(u"New words ");
    world.Viewer().RunCompare(true);
    ASSERT_TRUE(WindowWorld::Until([&] { return !world.Viewer().Busy(); }));
    EXPECT_FALSE(world.Viewer().IsStale());
    EXPECT_NE(TextOf(world.Page().Pane().View(Side::Original)).find("New words"),
              std::string::npos);
}

TEST_F(MainWindowTest, SwitchesViewsFiltersAndLayouts) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(original, modified));
    CommandSet& commands = world.window.Commands();
    commands.Run("view.all_in_one");
    ASSERT_TRUE(WindowWorld::Until([&] { return !world.Viewer().Busy(); }));
    EXPECT_TRUE(world.Page().Pane().AllInOne());
    EXPECT_NE(TextOf(world.Page().Pane().MergedView()).find("three"), std::string::npos);
    commands.Run("view.show_changes");
    EXPECT_FALSE(world.Page().Pane().isVisible());
    commands.Run("view.show_all");
    EXPECT_TRUE(world.Page().Pane().isVisible());
    commands.Run("view.result");
    EXPECT_FALSE(world.Page().Editors().isVisible());
    commands.Run("view.both");
    EXPECT_TRUE(world.Page().Editors().isVisible());
}

TEST_F(MainWindowTest, TellsThatAnOptionMadeTheResultOld) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(original, modified));
    world.Viewer().Options().bIgnoreCase.SetData(true);
    world.Page().OptionChanged();
    EXPECT_TRUE(world.Viewer().IsStale());
    world.Page().Compare();
    ASSERT_TRUE(WindowWorld::Until([&] { return !world.Viewer().Busy(); }));
    EXPECT_FALSE(world.Viewer().IsStale());
}

TEST_F(MainWindowTest, SwapsTheSidesAndTheirFiles) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(original, modified));
    const std::string left = TextOf(world.Page().Editors().View(Side::Original));
    world.window.Commands().Run("compare.swap");
    ASSERT_TRUE(WindowWorld::Until([&] { return !world.Viewer().Busy(); }));
    EXPECT_EQ(TextOf(world.Page().Editors().View(Side::Modified)), left);
    EXPECT_EQ(world.Viewer().FileNames()[1], original);
}

TEST_F(MainWindowTest, ComesBackAsItWasLeft) {
    {
        WindowWorld world(fakes, theme);
        ASSERT_TRUE(world.Compare(original, modified));
        world.Page().SetZoom(150);
        world.Page().SetFolded(true);
        world.frame.CreateNewCompareFilesForm();
        world.frame.CloseFrame();
        EXPECT_EQ(world.frame.NumberOpenScreens(), 0);
    }
    WindowWorld again(fakes, theme);
    EXPECT_EQ(again.frame.NumberOpenScreens(), 2);
    again.frame.Activate(*again.frame.frmGetCFNumber(1));
    EXPECT_EQ(again.Page().Look().ZoomPercent, 150);
    EXPECT_TRUE(again.Page().Look().FoldUnchanged);
    EXPECT_EQ(again.Viewer().FileNames()[0], original);
}

TEST_F(MainWindowTest, ClosesWhileARunGoesOn) {
    std::string big;
    for (int line = 0; line < 60'000; ++line)
        big += "Paragraph number " + std::to_string(line * 7919 % 60'000) + "\r\n";
    const std::string one = Write("big1.txt", big);
    const std::string two = Write("big2.txt", big.substr(big.size() / 3));
    WindowWorld world(fakes, theme);
    world.window.OpenPair(one, two);
    EXPECT_TRUE(world.Viewer().Busy());
    world.frame.CloseFrame();
    EXPECT_TRUE(WindowWorld::Until([&] { return world.frame.NumberOpenScreens() == 0; }));
}

// What is written when the display goes is told of at the next start, and only then.
TEST_F(MainWindowTest, KeepsUnsavedEditsOfALostDisplay) {
    for (const int round : {1, 2}) {
        SCOPED_TRACE(round);
        WindowWorld world(fakes, theme);
        ASSERT_TRUE(world.Compare(original, modified));
        QTest::keyClicks(&world.Page().Editors().View(Side::Modified), QStringLiteral("mine "));
        world.window.RescueEdits();
    }
    WindowWorld world(fakes, theme);
    const RescuedEdits rescued(world.process.gsDataFolder);
    EXPECT_EQ(rescued.TakeUntold(),
              (std::vector<std::string>{"two-modified 2.rtf", "two-modified.rtf"}));
    EXPECT_TRUE(rescued.TakeUntold().empty());
    RichDocument kept;
    ASSERT_TRUE(kept.LoadFile(rescued.Folder() + "/two-modified 2.rtf", FileFormat::RichText).ok());
    EXPECT_NE(ToUtf8(kept.Text()).find("mine "), std::string::npos);
}

TEST_F(MainWindowTest, LaysWindowsOutAndBack) {
    WindowWorld world(fakes, theme);
    world.frame.CreateNewCompareFilesForm();
    ASSERT_TRUE(world.window.Commands().Run("window.tile"));
    QTest::qWait(1);
    CompareFilesPage* front = world.window.ActivePage();
    ASSERT_NE(front, nullptr);
    world.window.Commands().Run("window.next");
    EXPECT_NE(world.window.ActivePage(), front);
    world.window.Commands().Run("window.close");
    EXPECT_EQ(world.frame.NumberOpenScreens(), 1);
    EXPECT_EQ(world.window.ActivePage(), front);
}

}  // namespace
}  // namespace zorvane
