// The window of Find Text In Files over the whole program: does what a person types, clicks and
// presses reach the search, and does it mean the hit that the person sees?
#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

#include <QHeaderView>
#include <QMenu>

#include <gtest/gtest.h>

#include "tests/support/endless_documents.h"
#include "tests/ui/dialogs_world.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

class FindPageTest : public DialogsTest {
  protected:
    FindPageTest() {
        Put("a.txt", "one\nalpha beta\nBETA \"x\"\tend\n");
        Put("b.md", "betas\n\nbeta\n");
        Put("below/c.txt", "beta\n");
    }
    std::string In(const std::string& name) const { return fakes.folder.Path() + "/tree/" + name; }
    void Put(const std::string& name, const std::string& text) const {
        fs::create_directories(fs::path(In(name)).parent_path());
        std::ofstream(In(name), std::ios::binary) << text;
    }
    FindPage& Open(WindowWorld& world) const {
        world.window.Commands().Run("window.new_find");
        FindPage& page = *world.window.ActiveFind();
        FindEntries entries = page.Entries();
        entries.cbSearchFor = "beta";
        entries.cbDirectory = In("");
        page.SetEntries(entries);
        return page;
    }
    static void Search(FindPage& page) {
        page.Find();
        EXPECT_TRUE(WindowWorld::Until([&] {
            return !page.Viewer()->CanAbort() && !page.Viewer()->Busy() &&
                   page.Hits().rowCount() == page.Viewer()->Engine().HitCount();
        }));
    }
    /// "a.txt:2:7" of each row.
    static std::string Rows(FindPage& page) {
        std::string rows;
        for (int row = 0; row < page.Hits().rowCount(); ++row) {
            const auto cell = [&](int column) {
                return FromQt(page.Hits().Cell(row, column).text);
            };
            rows += (rows.empty() ? "" : " ") + fs::path(cell(1)).filename().string() + ":" +
                    cell(2) + ":" + cell(3);
        }
        return rows;
    }
    /// As a person who works in a part of the window.
    static void WorkIn(WindowWorld& world, QWidget& part) {
        world.window.activateWindow();
        ASSERT_TRUE(WindowWorld::Until([&] {
            part.setFocus();
            return part.hasFocus();
        }));
        QCoreApplication::processEvents();  // what commands can do now
    }
    static void Choose(FindPage& page, int row) {
        page.HitGrid().setCurrentIndex(page.Hits().index(row, 1));
    }
    static std::u16string Lines(FindPage& page) { return page.Pane().View().Document().Text(); }
};

TEST_F(FindPageTest, PassesEachEntryOnToTheSearch) {
    struct EntryRow {
        const char* name;
        std::function<void(FindEntries&)> change;
        const char* rows;
    };
    const EntryRow rows[] = {
        {"as it comes", [](FindEntries&) {}, "a.txt:2:7 a.txt:3:1 b.md:1:1 b.md:3:1 c.txt:1:1"},
        {"case", [](FindEntries& entries) { entries.cbCaseSensitive = true; },
         "a.txt:2:7 b.md:1:1 b.md:3:1 c.txt:1:1"},
        {"words", [](FindEntries& entries) { entries.cbWholeWordOnly = true; },
         "a.txt:2:7 a.txt:3:1 b.md:3:1 c.txt:1:1"},
        {"no subfolders", [](FindEntries& entries) { entries.cbLookInSubfolders = false; },
         "a.txt:2:7 a.txt:3:1 b.md:1:1 b.md:3:1"},
        {"types", [](FindEntries& entries) { entries.cbFileExt = "*.md"; }, "b.md:1:1 b.md:3:1"},
        {"text", [](FindEntries& entries) { entries.cbSearchFor = "alpha"; }, "a.txt:2:1"},
        {"folder", [](FindEntries& entries) { entries.cbDirectory += "below"; }, "c.txt:1:1"},
        {"expression",
         [](FindEntries& entries) {
             entries.cbRegularExpression = true;
             entries.cbSearchFor = "^beta$";
         },
         "b.md:3:1 c.txt:1:1"},
    };
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    const FindEntries begin = page.Entries();
    for (const EntryRow& row : rows) {
        SCOPED_TRACE(row.name);
        FindEntries entries = begin;
        row.change(entries);
        page.SetEntries(entries);
        Search(page);
        EXPECT_EQ(Rows(page), row.rows);
        EXPECT_EQ(page.Status().Panel(1).toInt(), page.Hits().rowCount());
    }
}

TEST_F(FindPageTest, TurnsASwitchOverByClickAndByCommand) {
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    for (std::size_t number = 0; number < kFindSwitches; ++number) {
        const FindSwitch& entry = FindSwitches()[number];
        SCOPED_TRACE(entry.words);
        const bool before = page.Entries().*entry.value;
        QTest::mouseClick(&page.Boxes().Switch(number), Qt::LeftButton, {},
                          QPoint(8, page.Boxes().Switch(number).height() / 2));
        EXPECT_NE(page.Entries().*entry.value, before);
        QCoreApplication::processEvents();
        EXPECT_EQ(world.window.Commands().Action(entry.command)->isChecked(), !before);
        EXPECT_TRUE(world.window.Commands().Run(entry.command));
        EXPECT_EQ(page.Entries().*entry.value, before);
    }
}

TEST_F(FindPageTest, ShowsTheLinesOfTheHitThatIsChosen) {
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    WorkIn(world, page.Boxes().SearchFor());
    QTest::keyClick(world.window.windowHandle(), Qt::Key_Return);  // wherever the focus is
    ASSERT_TRUE(WindowWorld::Until([&] { return page.Hits().rowCount() == 5; }));
    EXPECT_NE(page.Pane().Message(), QString()) << "nothing is read before a person asks";
    EXPECT_EQ(world.window.windowTitle(), QStringLiteral("beta – Zorvane"));
    Choose(page, 1);
    WorkIn(world, page.HitGrid());
    QTest::keyClick(&page.HitGrid(), Qt::Key_Return);
    page.Viewer()->FinishReading();
    EXPECT_EQ(page.Pane().Message(), QString());
    EXPECT_EQ(Lines(page), u"\"one\"\r\n\"alpha beta\"\r\n\"BETA \"\"x\"\"\" &   \"end\"");
    RichDocument& shown = page.Pane().View().Document();
    EXPECT_FALSE(shown.FormatAt(shown.FirstCharOfLine(1)).bold);
    EXPECT_TRUE(shown.FormatAt(shown.FirstCharOfLine(2)).bold);
    EXPECT_TRUE(world.window.windowTitle().startsWith(QStringLiteral("FILE: ")));
    EXPECT_TRUE(world.window.windowTitle().contains(QStringLiteral("LINE: 3 COL: 1 ITEM: BETA")));
    world.window.Commands().Run("go.next");
    page.Viewer()->FinishReading();
    EXPECT_EQ(page.CurrentHit(), 2);
    EXPECT_EQ(Lines(page), u"\"betas\"\r\n\"\"\r\n\"beta\"");
    world.window.Commands().Run("go.previous");
    EXPECT_EQ(page.CurrentHit(), 1);
    fs::remove(In("below/c.txt"));
    Choose(page, 4);
    page.ShowCurrent();
    page.Viewer()->FinishReading();
    EXPECT_TRUE(page.Pane().Message().contains(QStringLiteral("c.txt")));
}

TEST_F(FindPageTest, TellsWhichEntryIsWrong) {
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    const FindEntries good = page.Entries();
    struct WrongRow {
        std::string FindEntries::*entry;
        const char* text;
        QWidget* focus;
    };
    const WrongRow rows[] = {
        {&FindEntries::cbSearchFor, "", &page.Boxes().SearchFor()},
        {&FindEntries::cbDirectory, "/nowhere at all", &page.Boxes().Folder()},
    };
    world.window.activateWindow();
    for (const WrongRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_FALSE(page.ErrorGrid().isVisibleTo(&page));
        FindEntries entries = good;
        entries.*row.entry = row.text;
        page.SetEntries(entries);
        Search(page);
        EXPECT_TRUE(WindowWorld::Until([&] { return page.Errors().rowCount() == 1; }));
        EXPECT_TRUE(page.ErrorGrid().isVisibleTo(&page));
        EXPECT_TRUE(WindowWorld::Until([&] { return row.focus->hasFocus(); }));
        page.SetEntries(good);
        Search(page);
    }
    EXPECT_EQ(page.Errors().rowCount(), 0);
}

TEST_F(FindPageTest, PutsSymbolsWhereTheyBelong) {
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    WorkIn(world, *page.Boxes().SearchFor().lineEdit());
    const auto open = [&] {
        world.window.Commands().Run("find.signs");
        EXPECT_TRUE(WindowWorld::Until([&] { return page.Picker().hasFocus(); }));
    };
    open();
    QTest::keyClick(&page.Picker(), Qt::Key_Escape);
    EXPECT_TRUE(page.Picker().isHidden());
    EXPECT_EQ(page.Entries().cbSearchFor, "beta");
    EXPECT_FALSE(page.Entries().cbRegularExpression);
    open();
    for (int step = 0; step < 3; ++step)
        QTest::keyClick(&page.Picker(), Qt::Key_Down);
    QTest::keyClick(&page.Picker(), Qt::Key_Return);
    EXPECT_TRUE(page.Picker().isHidden());
    open();
    const QRect row = page.Picker().visualItemRect(page.Picker().item(4));
    QTest::mouseClick(page.Picker().viewport(), Qt::LeftButton, {}, row.center());
    EXPECT_EQ(page.Entries().cbSearchFor, "^beta$");
    EXPECT_TRUE(page.Entries().cbRegularExpression);
    EXPECT_TRUE(page.Viewer()->Engine().RegularExpression());
    EXPECT_EQ(page.Boxes().SearchFor().lineEdit()->cursorPosition(), 6);
    open();
    page.HitGrid().setFocus();
    EXPECT_TRUE(WindowWorld::Until([&] { return page.Picker().isHidden(); }));
}

TEST_F(FindPageTest, ComparesTheFilesOfTwoHitsInTheirOrder) {
    for (const bool marked : {true, false}) {
        SCOPED_TRACE(marked ? "marked" : "chosen");
        WindowWorld world(fakes, theme);
        FindPage& page = Open(world);
        Search(page);
        const auto take = [&](int row, bool more) {
            const auto how =
                more && !marked ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect;
            page.HitGrid().selectionModel()->setCurrentIndex(page.Hits().index(row, 0),
                                                             how | QItemSelectionModel::Rows);
            if (marked)
                world.window.Commands().Run("find.mark");
        };
        take(4, false);
        take(2, true);
        EXPECT_EQ(page.Hits().Cell(2, 0).icon.isEmpty(), !marked);
        EXPECT_TRUE(world.window.Commands().Run("find.compare"));
        ASSERT_NE(world.window.ActivePage(), nullptr);
        EXPECT_EQ(world.Viewer().FileNames()[0], In("b.md"));
        EXPECT_EQ(world.Viewer().FileNames()[1], In("below/c.txt"));
    }
}

TEST_F(FindPageTest, OpensFilesByTheirBytesWhateverTheirName) {
    const std::string odd = "odd \xFF\xFE name.txt";
    Put(odd, "gamma\n");
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    FindEntries entries = page.Entries();
    entries.cbSearchFor = "gamma";
    page.SetEntries(entries);
    Search(page);
    Choose(page, 0);
    EXPECT_TRUE(world.window.Commands().Run("find.open"));
    EXPECT_EQ(fakes.shell().calls.back(), "open " + In(odd));
    page.ShowCurrent();
    page.Viewer()->FinishReading();
    EXPECT_EQ(Lines(page), u"\"gamma\"");
    Put("p.txt", "gamma\n");
    Search(page);
    Choose(page, 0);
    page.HitGrid().selectAll();
    EXPECT_TRUE(world.window.Commands().Run("find.compare"));
    EXPECT_EQ(world.Viewer().FileNames()[0], In(odd));
    EXPECT_TRUE(WindowWorld::Until([&] { return world.Viewer().ShownComparison() != nullptr; }));
}

TEST_F(FindPageTest, StopsByEscWhereverTheFocusIs) {
    Put("z/endless.doc", "");
    EndlessDocuments documents;
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    page.Viewer()->SetDocuments(&documents);
    FindEntries entries = page.Entries();
    entries.cbSupportOfficeDocs = true;
    page.SetEntries(entries);
    page.ShowOptions(0);
    QWidget* option = page.findChild<FindOptionsPage*>()->findChild<QAbstractButton*>();
    for (QWidget* focus : {static_cast<QWidget*>(page.Boxes().SearchFor().lineEdit()),
                           static_cast<QWidget*>(&page.HitGrid()), option}) {
        page.Find();
        ASSERT_TRUE(WindowWorld::Until([&] { return page.Hits().rowCount() == 5; }));
        EXPECT_FALSE(world.window.Commands().Action("compare.run")->isEnabled());
        WorkIn(world, *focus);
        QTest::keyClick(focus, Qt::Key_Escape);
        EXPECT_FALSE(page.Viewer()->CanAbort());
        EXPECT_EQ(page.Status().Panel(2), QStringLiteral("Scan Aborted"));
        EXPECT_TRUE(WindowWorld::Until([&] { return !page.Viewer()->Busy(); }));
        EXPECT_EQ(page.Hits().rowCount(), 5) << "what was found stays";
        EXPECT_TRUE(page.OptionsUnfolded());
    }
    page.Viewer()->SetDocuments(nullptr);
}

class LockedDocument : public DocumentTexts {
  public:
    bool IsDocument(std::string_view name) override { return name.ends_with(".md"); }
    void UsePasswords(const std::vector<std::string>& passwords) override { known = passwords; }
    Text TextOf(const std::string&, const std::function<bool()>&) override {
        if (known != std::vector<std::string>{"key"})
            return {nullptr, "is protected", {}, true};
        return {std::make_shared<std::string>("beta"), "", {}};
    }
    std::vector<std::string> known;
};

TEST_F(FindPageTest, AsksForThePasswordOfProtectedDocuments) {
    LockedDocument documents;
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    page.Viewer()->SetDocuments(&documents);
    FindEntries entries = page.Entries();
    entries.cbSupportOfficeDocs = true;
    page.SetEntries(entries);
    Search(page);
    ASSERT_TRUE(page.Passwords().isVisible());
    EXPECT_EQ(page.Passwords().Words(), QStringLiteral("Protected by a password: 1"));
    QTest::keyClicks(&page.Passwords().Field(), QStringLiteral("key"));
    QTest::keyClick(&page.Passwords().Field(), Qt::Key_Return);
    EXPECT_TRUE(WindowWorld::Until([&] { return Rows(page).ends_with("b.md:1:1 c.txt:1:1"); }));
    EXPECT_TRUE(WindowWorld::Until([&] { return page.Passwords().isHidden(); }));
    EXPECT_EQ(page.Passwords().Field().text(), QString());
}

TEST_F(FindPageTest, ComesBackTheNextDay) {
    int file_width = 0;
    {
        WindowWorld world(fakes, theme);
        world.window.resize(1000, 900);
        FindPage& page = Open(world);
        Search(page);
        page.HitGrid().horizontalHeader()->resizeSection(1, page.HitGrid().columnWidth(1) + 80);
        file_width = page.HitGrid().columnWidth(1);
        page.Viewer()->Settings().cbDontStreamResults = true;
        page.Secondary().setSizes({300, 100});
        Q_EMIT page.Secondary().splitterMoved(300, 1);
        world.frame.CloseFrame();
    }
    WindowWorld world(fakes, theme);
    FindPage* page = world.window.ActiveFind();
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->Entries().cbSearchFor, "beta");
    EXPECT_EQ(page->Entries().cbDirectory, In(""));
    EXPECT_EQ(page->Entries().cbFileExt, "*.*");
    EXPECT_TRUE(page->Viewer()->Settings().cbDontStreamResults);
    EXPECT_TRUE(WindowWorld::Until(
        [&] { return std::abs(page->HitGrid().columnWidth(1) - file_width) < 30; }));
    const QList<int> sizes = page->Secondary().sizes();
    EXPECT_NEAR(static_cast<double>(sizes[0]) / (sizes[0] + sizes[1]), 0.75, 0.05);
}

TEST_F(FindPageTest, OffersAWayOutWhereNothingIsFound) {
    WindowWorld world(fakes, theme);
    FindPage& page = Open(world);
    FindEntries entries = page.Entries();
    entries.cbSearchFor = "ALPHA";
    entries.cbCaseSensitive = true;
    page.SetEntries(entries);
    Search(page);
    ASSERT_NE(page.NothingFound(), nullptr);
    for (QAbstractButton* button : page.NothingFound()->findChildren<QAbstractButton*>()) {
        if (button->text() == QStringLiteral("Match Any Case")) {
            button->click();
            break;
        }
    }
    EXPECT_TRUE(WindowWorld::Until([&] { return page.Hits().rowCount() == 1; }));
    EXPECT_FALSE(page.Entries().cbCaseSensitive);
    EXPECT_TRUE(WindowWorld::Until([&] { return page.NothingFound() == nullptr; }));
}

TEST_F(FindPageTest, HasWordsOfItsOwnForSharedCommands) {
    WindowWorld world(fakes, theme);
    const QAction* run = world.window.Commands().Action("compare.run");
    const QString before = run->text();
    FindPage& page = Open(world);
    QCoreApplication::processEvents();
    EXPECT_EQ(run->text(), QStringLiteral("Fin&d"));
    world.frame.CloseViewer(*page.Viewer());
    EXPECT_TRUE(WindowWorld::Until([&] { return run->text() == before; }));
}

}  // namespace
}  // namespace zorvane
