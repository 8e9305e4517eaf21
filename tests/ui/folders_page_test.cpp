// The window of Compare Folders over the whole program: does a click or a key reach the viewer, and
// does it mean the record that the person sees?
#include <filesystem>
#include <fstream>

#include <QHeaderView>
#include <QMenu>

#include <gtest/gtest.h>

#include "common/ui/dropped_files.h"
#include "tests/ui/dialogs_world.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

class FoldersPageTest : public DialogsTest {
  protected:
    FoldersPageTest() {
        for (const char* side : {"old", "new"}) {
            Write(side, "a/changed 1.txt", side);
            Write(side, "a/same 1.txt", "as it was");
            Write(side, "b/same 2.txt", "as it was");
            Write(side, "b/z changed.txt", side + std::string(" is longer"));
        }
        Write("old", "a/gone.txt", "x");
        Write("new", "b/come.txt", "y");
    }
    fs::path In(const std::string& side, const std::string& name) const {
        return fs::path(fakes.folder.Path()) / side / name;
    }
    void Write(const std::string& side, const std::string& name, const std::string& text) const {
        const fs::path path = In(side, name);
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
        fs::last_write_time(path, fs::file_time_type(std::chrono::hours(24 * 365)));
    }
    CompareFoldersPage& Run(WindowWorld& world) const {
        world.window.OpenFiles({In("old", "").string(), In("new", "").string()});
        CompareFoldersPage& page = *world.window.ActiveFolders();
        EXPECT_TRUE(WindowWorld::Until([&] { return page.Viewer()->CanReport(); }));
        return page;
    }
    /// Rows are put in order beside the window.
    static void WaitForOrder(CompareFoldersPage& page) {
        EXPECT_TRUE(WindowWorld::Until([&] { return !page.Table().MakesOrder(); }));
    }
    /// What stands in the first column, or in the second where that is empty.
    static std::string Names(CompareFoldersPage& page) {
        WaitForOrder(page);
        QStringList names;
        for (int row = 0; row < page.Table().rowCount(); ++row) {
            const QString left = page.Table().CellText(row, FolderColumn::Original);
            names.append(left.isEmpty() ? page.Table().CellText(row, FolderColumn::Modified)
                                        : left);
        }
        return FromQt(names.join(QStringLiteral("|")));
    }
    /// As a person who works in the grid: keys mean its files.
    static void WorkInGrid(WindowWorld& world, CompareFoldersPage& page) {
        world.window.activateWindow();
        ASSERT_TRUE(WindowWorld::Until([&] {
            page.Grid().setFocus();
            return page.Grid().hasFocus();
        }));
        QCoreApplication::processEvents();  // what commands can do now
    }
    static double ShareOfOriginal(CompareFoldersPage& page) {
        const double left = page.Grid().columnWidth(0);
        return left / (left + page.Grid().columnWidth(1));
    }
    static void Choose(CompareFoldersPage& page, const std::string& name, FolderColumn column) {
        const int at = static_cast<int>(column);
        page.Grid().setCurrentIndex(page.Table().index(RowOf(page, name, column), at));
        ASSERT_EQ(page.Grid().currentIndex().data().toString(), ToQt(name));
    }
    /// -1: there is none.
    static int RowOf(CompareFoldersPage& page, const std::string& name, FolderColumn column) {
        int row = page.Table().rowCount() - 1;
        while (row >= 0 && page.Table().CellText(row, column) != ToQt(name))
            --row;
        return row;
    }
    static QAbstractButton* Box(QWidget& page, const char* words) {
        for (QAbstractButton* found : page.findChildren<QAbstractButton*>())
            if (WithoutMnemonic(found->text()) == QString::fromLatin1(words))
                return found;
        return nullptr;
    }
};

TEST_F(FoldersPageTest, ShowsRowsCountsAndEachKindUnderItsFolder) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    EXPECT_EQ(Names(page),
              "a|changed 1.txt|gone.txt|same 1.txt|"
              "b|come.txt|same 2.txt|z changed.txt");
    EXPECT_EQ(world.window.windowTitle(), QStringLiteral("old vs. new – Zorvane"));
    const std::pair<const char*, const char*> rows[] = {
        {"view.show_changes", "a|changed 1.txt|b|z changed.txt"},
        {"view.show_deletions", "a|gone.txt"},
        {"view.show_additions", "b|come.txt"},
        {"folders.show_same", "a|same 1.txt|b|same 2.txt"},
    };
    int files = 0;
    for (const auto& [command, names] : rows) {
        EXPECT_TRUE(world.window.Commands().Run(command));
        EXPECT_EQ(Names(page), names) << command;
        files += page.Table().Order().Files(page.Table().Order().Filter());
    }
    EXPECT_EQ(files, page.Table().Order().Files(FolderFilter::All));
    EXPECT_TRUE(page.Bar().Filters().Segment(static_cast<int>(FolderFilter::Same))->isChecked());
}

TEST_F(FoldersPageTest, EnterEndsTheFirstFolderAndComparesWithTheSecond) {
    WindowWorld world(fakes, theme);
    EXPECT_TRUE(world.window.Commands().Run("window.new_compare_folders"));
    CompareFoldersPage& page = *world.window.ActiveFolders();
    world.window.activateWindow();
    for (const Side side : kBothSides) {
        EXPECT_FALSE(page.Viewer()->Busy());
        QLineEdit& edit = *page.Boxes().Box(side).lineEdit();
        ASSERT_TRUE(WindowWorld::Until([&] {
            if (side == Side::Original)
                edit.setFocus();
            return edit.hasFocus();
        })) << "the second one gets it by itself";
        edit.selectAll();
        QTest::keyClicks(&edit, ToQt(In(side == Side::Original ? "old" : "new", "").string()));
        QTest::keyClick(&edit, Qt::Key_Return);
    }
    EXPECT_TRUE(WindowWorld::Until([&] { return page.Viewer()->RowCount() == 8; }));
}

TEST_F(FoldersPageTest, TakesThePlaceOfAnEmptyWindowForFilesOnly) {
    for (const bool has_file : {false, true}) {
        WindowWorld world(fakes, theme);
        if (has_file)
            world.window.OpenFiles({original});
        Run(world);
        EXPECT_EQ(world.frame.NumberOpenScreens(), has_file ? 2 : 1);
    }
}

TEST_F(FoldersPageTest, SortsFilesAndGoesBackToTheOrderOfRecords) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    const std::string before = Names(page);
    Choose(page, "same 1.txt", FolderColumn::Original);
    const std::int32_t record = page.Cell().row;
    const auto click = [&](FolderColumn column) {
        Q_EMIT page.Grid().horizontalHeader()->sectionClicked(static_cast<int>(column));
    };
    click(FolderColumn::Original);
    EXPECT_EQ(Names(page), "changed 1.txt|gone.txt|same 1.txt|same 2.txt|z changed.txt|come.txt");
    click(FolderColumn::Original);
    EXPECT_EQ(Names(page).substr(0, 24), "come.txt|z changed.txt|s");
    EXPECT_EQ(page.Cell().row, record) << "the chosen file stays chosen";
    EXPECT_EQ(page.Grid().currentIndex().data().toString(), QStringLiteral("same 1.txt"));
    click(FolderColumn::Original);
    EXPECT_EQ(Names(page), before);
}

TEST_F(FoldersPageTest, ASortIsStoppedAtEachQuestion) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    FolderOrder order(page.Viewer()->VestrelX1().Folders());
    order.Clear(false);
    order.Take(page.Viewer()->RowCount());
    int questions = 0;
    EXPECT_TRUE(order.Show(FolderFilter::All, {true}, [&] { return ++questions < 0; }));
    EXPECT_EQ(questions, 2) << "while rows are chosen, and while they are sorted";
    for (int stopped = 1; stopped <= questions; ++stopped) {
        int asked = 0;
        EXPECT_FALSE(order.Show(FolderFilter::All, {true}, [&] { return ++asked == stopped; }));
    }
}

TEST_F(FoldersPageTest, WalksFromDifferenceToDifference) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    std::string walked;
    for (int step = 0; step < 5; ++step) {
        world.window.Commands().Run("go.next");
        const int row = page.Grid().currentIndex().row();
        walked += FromQt(page.Table().CellText(row, FolderColumn::Original) + u'|');
    }
    EXPECT_EQ(walked, "changed 1.txt|gone.txt||z changed.txt|z changed.txt|");
    world.window.Commands().Run("go.previous");
    EXPECT_EQ(page.Table().CellText(page.Grid().currentIndex().row(), FolderColumn::Modified),
              QStringLiteral("come.txt"));
}

TEST_F(FoldersPageTest, ComparesThePairOfARowByEnterAndInANewWindow) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    Choose(page, "changed 1.txt", FolderColumn::Original);
    WorkInGrid(world, page);
    QTest::keyClick(&page.Grid(), Qt::Key_Return);
    ASSERT_NE(world.window.ActivePage(), nullptr) << "the files are in front";
    EXPECT_EQ(world.Viewer().FileNames()[1], In("new", "a/changed 1.txt").string());
    EXPECT_TRUE(WindowWorld::Until([&] { return world.Viewer().ShownComparison() != nullptr; }));
    const std::int32_t open = world.frame.NumberOpenScreens();
    world.frame.Activate(*page.Viewer());
    EXPECT_TRUE(world.window.Commands().Run("folders.compare_new"));
    EXPECT_EQ(world.frame.NumberOpenScreens(), open + 1);
}

TEST_F(FoldersPageTest, DeletesWhatIsChosenAndNothingThatAFilterHides) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    world.window.Commands().Run("view.show_changes");
    WaitForOrder(page);
    const QModelIndex first = page.Table().index(0, 0);
    const QModelIndex last = page.Table().index(page.Table().rowCount() - 1, 0);
    page.Grid().selectionModel()->select(QItemSelection(first, last),
                                         QItemSelectionModel::ClearAndSelect);
    EXPECT_TRUE(InDialog<QDialog>(world, "folders.delete", [](QDialog& asked) { asked.reject(); }));
    EXPECT_TRUE(fs::exists(In("old", "a/changed 1.txt"))) << "the person did not agree";
    EXPECT_TRUE(
        InDialog<QDialog>(world, "folders.delete", [](QDialog& asked) { Click(asked, "Yes"); }));
    EXPECT_FALSE(fs::exists(In("old", "a/changed 1.txt")));
    EXPECT_FALSE(fs::exists(In("old", "b/z changed.txt")));
    for (const char* kept : {"a/gone.txt", "a/same 1.txt", "b/same 2.txt"})
        EXPECT_TRUE(fs::exists(In("old", kept))) << kept;
    EXPECT_TRUE(fs::exists(In("new", "a/changed 1.txt"))) << "only one column was chosen";
    EXPECT_EQ(page.Table().Row(1).cells[FolderColumn::Original].ink, CellInk::Gone);
}

TEST_F(FoldersPageTest, CopiesAFileToTheSideThatHasItNot) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    Choose(page, "come.txt", FolderColumn::Modified);
    WorkInGrid(world, page);
    QTest::keyClick(&page.Grid(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(fs::exists(In("old", "b/come.txt")));
    EXPECT_EQ(page.Grid().currentIndex().siblingAtColumn(0).data().toString(),
              QStringLiteral("come.txt"));
}

TEST_F(FoldersPageTest, ComesBackTheNextDayAndSwaps) {
    double share = 0;
    {
        WindowWorld world(fakes, theme);
        CompareFoldersPage& page = Run(world);
        world.window.Commands().Run("folders.legend");
        page.Grid().horizontalHeader()->resizeSection(0, page.Grid().columnWidth(0) + 90);
        share = ShareOfOriginal(page);
        EXPECT_GT(share, 0.55);
        world.frame.CloseFrame();
    }
    WindowWorld world(fakes, theme);
    CompareFoldersPage* page = world.window.ActiveFolders();
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(FromQt(page->Boxes().Box(Side::Original).Path()), In("old", "").string());
    EXPECT_TRUE(page->Legend().isHidden());
    EXPECT_TRUE(
        WindowWorld::Until([&] { return std::abs(ShareOfOriginal(*page) - share) < 0.02; }));
    EXPECT_TRUE(world.window.Commands().Run("compare.swap"));
    ASSERT_TRUE(WindowWorld::Until([&] { return page->Viewer()->CanReport(); }));
    EXPECT_EQ(FromQt(page->Boxes().Box(Side::Modified).Path()), In("old", "").string());
    world.window.Commands().Run("view.show_additions");
    EXPECT_EQ(Names(*page), "a|gone.txt");
}

TEST_F(FoldersPageTest, KeepsEachByteOfADroppedName) {
    const std::string odd = fakes.folder.Path() + "/odd \xE9\xFF \xC3\xA4%20";
    fs::copy(In("old", ""), odd, fs::copy_options::recursive);
    QMimeData data;
    const QByteArray name = QByteArray(odd.data(), static_cast<qsizetype>(odd.size()));
    data.setUrls({QUrl::fromEncoded("file://" + name.toPercentEncoding("/"))});
    {
        WindowWorld world(fakes, theme);
        CompareFoldersPage& page = Run(world);
        page.DropFolders(Side::Original, DroppedFiles(data));
        page.Compare();
        ASSERT_TRUE(WindowWorld::Until([&] { return page.Viewer()->CanReport(); }));
        EXPECT_EQ(page.Viewer()->Options().sFolderOriginal.Data(), odd);
        EXPECT_EQ(page.Table().Order().Files(FolderFilter::All), 6);
        world.frame.CloseFrame();
    }
    WindowWorld world(fakes, theme);
    CompareFoldersPage* page = world.window.ActiveFolders();
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(FromQt(page->Boxes().Box(Side::Original).Path()), odd);
    EXPECT_TRUE(page->Viewer()->RecentFolders(Side::Original).bItemExistsInMRU(odd, false));
}

TEST_F(FoldersPageTest, TellsOfErrorsAndOfFoldersThatAreNotThere) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    EXPECT_TRUE(page.Errors().isHidden());
    page.ErrorsChanged();
    page.Errors().ShowErrors({"Errors", "Error: one", "Error: two"});
    EXPECT_FALSE(page.Errors().isHidden());
    EXPECT_EQ(page.Errors().Count(), 2);
    page.TakeFolder(Side::Modified, QStringLiteral("/nowhere/at all"));
    QString told;
    EXPECT_TRUE(InDialog<QDialog>(world, "compare.run", [&](QDialog& shown) {
        for (const QLabel* label : shown.findChildren<QLabel*>())
            told += label->text();
    }));
    EXPECT_TRUE(told.contains(QStringLiteral("/nowhere/at all"))) << FromQt(told);
    EXPECT_FALSE(page.Viewer()->Busy());
}

TEST_F(FoldersPageTest, ANarrowWindowOffersTheKindsInAMenu) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    FoldersBar& bar = page.Bar();
    world.window.resize(1200, 700);
    ASSERT_TRUE(WindowWorld::Until([&] { return bar.KindsButton().isHidden(); }));
    const double points = page.Grid().font().pointSizeF();
    EXPECT_TRUE(world.window.Commands().Run("view.zoom_in"));
    EXPECT_GT(page.Grid().font().pointSizeF(), points);
    EXPECT_TRUE(world.window.Commands().Run("view.zoom_reset"));
    EXPECT_EQ(page.Grid().font().pointSizeF(), points);
    page.Grid().horizontalHeader()->resizeSection(0, page.Grid().columnWidth(0) + 60);
    const QWidget& half = *page.Boxes().Box(Side::Modified).parentWidget();
    EXPECT_TRUE(WindowWorld::Until([&] {
        return std::abs(half.x() - page.Grid().columnViewportPosition(1)) < 20;
    })) << half.x()
        << " is not above " << page.Grid().columnViewportPosition(1);
    world.window.resize(760, 700);
    ASSERT_TRUE(WindowWorld::Until([&] { return bar.Filters().isHidden(); }));
    EXPECT_EQ(bar.KindsButton().Caption(), QStringLiteral("All 6"));
    EXPECT_EQ(bar.FilterFocus(), &bar.KindsButton());
    const std::unique_ptr<QMenu> menu(bar.MakeKindsMenu());
    ASSERT_EQ(menu->actions().size(), 5);
    menu->actions()[3]->trigger();
    EXPECT_EQ(Names(page), "b|come.txt");
    EXPECT_EQ(bar.KindsButton().Caption(), QStringLiteral("Modified only 1"));
    EXPECT_TRUE(std::unique_ptr<QMenu>(bar.MakeKindsMenu())->actions()[3]->isChecked());
}

TEST_F(FoldersPageTest, EditsTheOptionsOfTextsAndOfReports) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    page.Viewer()->ClickContentCompareText(true);
    page.ShowTextOptions(PairOptionsDialog::Tab::Report);
    PairOptionsDialog* dialog = page.TextOptions();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(dialog->Pages().Tabs().currentIndex(), 1);
    page.ShowTextOptions(PairOptionsDialog::Tab::Compare);
    EXPECT_EQ(page.TextOptions(), dialog);
    EXPECT_EQ(dialog->Pages().Tabs().currentIndex(), 0);
    Box(*dialog, "Ignore Case")->click();
    for (const QAbstractButton* button : dialog->findChildren<Button*>())
        EXPECT_TRUE(button->isEnabled()) << FromQt(button->text());
    EXPECT_TRUE(InDialog<QDialog>(dialog->Commands(), "types.word", [](QDialog&) {}));
    dialog->close();
    ASSERT_TRUE(WindowWorld::Until([&] { return page.TextOptions() == nullptr; }));
    Write("old", "a/changed 1.txt", "WORDS");
    Write("new", "a/changed 1.txt", "words");
    page.Compare();
    ASSERT_TRUE(WindowWorld::Until([&] { return page.Viewer()->CanReport(); }));
    EXPECT_EQ(page.Table().CellText(1, FolderColumn::Contents), QString());
}

TEST_F(FoldersPageTest, TellsWhereARenamedFileStands) {
    Write("old", "a/first name.txt", "a text with another name");
    Write("new", "b/second name.txt", "a text with another name");
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    ASSERT_TRUE(WindowWorld::Until([&] { return !page.Viewer()->LooksForRenamed(); }));
    const int at = RowOf(page, "first name.txt", FolderColumn::Original);
    ASSERT_GE(at, 0);
    EXPECT_EQ(page.Table().CellText(at, FolderColumn::Modified),
              QStringLiteral("\u2192 b/second name.txt"));
    EXPECT_TRUE(page.Table().Spoken(at).endsWith(QStringLiteral("second name.txt")));
}

TEST_F(FoldersPageTest, ChecksTextsAndGreysWhatDependsOnThem) {
    WindowWorld world(fakes, theme);
    CompareFoldersPage& page = Run(world);
    QAbstractButton* reports = Box(page, "Create Report");
    ASSERT_NE(reports, nullptr);
    EXPECT_FALSE(reports->isEnabled());
    Box(page, "Compare the Text of Files That Differ")->click();
    EXPECT_TRUE(reports->isEnabled());
    page.Compare();
    ASSERT_TRUE(WindowWorld::Until([&] { return page.Viewer()->CanReport(); }));
    EXPECT_EQ(page.Table().CellText(1, FolderColumn::Contents), QStringLiteral("0C, 1A, 1D"));
    Box(page, "Different in Both")->click();
    EXPECT_FALSE(Box(page, "Compare the Text of Files That Differ")->isEnabled());
    EXPECT_FALSE(reports->isEnabled());
}

}  // namespace
}  // namespace zorvane
