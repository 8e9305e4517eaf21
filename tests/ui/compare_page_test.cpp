// The page of a Compare Files viewer: what stands in place of a result, what a person hears of the
// files, and what gives way where room is short.
#include <fstream>

#include <QFileInfo>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/ui/print_preview.h"
#include "load/password_wanted.h"
#include "tests/ui/window_world.h"

namespace zorvane {
namespace {

class ComparePageTest : public ::testing::Test {
  protected:
    ComparePageTest() : theme(*qobject_cast<QApplication*>(QCoreApplication::instance())) {}
    std::string Write(const std::string& name, const std::string& text) {
        const std::string path = fakes.folder.Path() + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    static QStringList WordsOf(const QWidget* part) {
        QStringList words;
        for (const QLabel* label : part->findChildren<QLabel*>())
            words.append(label->text());
        for (const QPushButton* button : part->findChildren<QPushButton*>())
            words.append(button->text());
        return words;
    }
    static QPushButton* ButtonOf(const QWidget& part, const QString& words) {
        for (QPushButton* button : part.findChildren<QPushButton*>()) {
            if (button->accessibleName() == words || button->text() == words)
                return button;
        }
        return nullptr;
    }
    static bool Idle(WindowWorld& world) {
        return WindowWorld::Until([&] { return !world.Viewer().Busy(); });
    }

    FakePlatform fakes;
    Theme theme;
};

struct VerdictRow {
    const char* name;
    const char* original;
    const char* modified;
    bool ignore_case;
    const char* title;
};
constexpr VerdictRow kVerdicts[] = {
    {"same bytes", "One\r\nTwo\r\n", "One\r\nTwo\r\n", false, "The files are identical."},
    {"other line ends", "One\r\nTwo\r\n", "One\nTwo\n", false, "No differences in the words"},
    {"case is left out", "One\r\nTwo\r\n", "One\r\nTWO\r\n", true, "No differences in the words"},
    {"nothing in either", "", "", false, "Both documents are empty."},
};

TEST_F(ComparePageTest, SaysWhatIsEqualWhereNothingDiffers) {
    for (const VerdictRow& row : kVerdicts) {
        SCOPED_TRACE(row.name);
        WindowWorld world(fakes, theme);
        world.Viewer().Options().bIgnoreCase.SetData(row.ignore_case);
        ASSERT_TRUE(world.Compare(Write("a.txt", row.original), Write("b.txt", row.modified)));
        ASSERT_NE(world.Page().ShownCard(), nullptr);
        EXPECT_TRUE(world.Page().ShownCard()->isVisible());
        EXPECT_TRUE(WordsOf(world.Page().ShownCard()).contains(QLatin1String(row.title)));
        world.Viewer().Options().bIgnoreCase.SetData(false);
    }
}

TEST_F(ComparePageTest, CountsWhatWasLeftOutAtOnePress) {
    WindowWorld world(fakes, theme);
    world.Viewer().Options().bIgnoreCase.SetData(true);
    ASSERT_TRUE(world.Compare(Write("a.txt", "One two\r\n"), Write("b.txt", "One TWO\r\n")));
    ASSERT_NE(world.Page().ShownCard(), nullptr);
    QPushButton* count = ButtonOf(*world.Page().ShownCard(), QStringLiteral("Count Them"));
    ASSERT_NE(count, nullptr);
    count->click();
    ASSERT_TRUE(Idle(world));
    EXPECT_EQ(world.Page().ShownCard(), nullptr);
    EXPECT_TRUE(world.Page().Pane().isVisible());
    EXPECT_EQ(world.Viewer().Differences().Count(), 1);
}

TEST_F(ComparePageTest, ShowsADifferenceAtOneHeightInBothEditors) {
    WindowWorld world(fakes, theme);
    world.window.resize(1440, 900);
    PerSide<std::string> texts;
    for (int line = 0; line < 200; ++line) {
        const std::string same = "Paragraph " + std::to_string(line) + "\r\n";
        std::string tall = "The rents of";
        for (int word = 0; word < line; ++word)
            tall += " all";
        texts.original += line % 4 == 3 ? same + same + "The rent\r\n" : same;
        texts.modified += line % 4 == 3 ? tall + "\r\n" : same;
    }
    ASSERT_TRUE(world.Compare(Write("a.txt", texts.original), Write("b.txt", texts.modified)));
    for (int step = 0; step < 16; ++step) {
        world.window.Commands().Run("go.next");
        PerSide<double> heights;
        for (const Side side : kBothSides) {
            RichTextView& view = world.Page().Editors().View(side);
            heights[side] = view.Page().CaretRect(view.Document().Selection().first).top();
            EXPECT_GE(heights[side], 0) << step;
            const CharPos end = view.Document().Selection().end() - 2;
            EXPECT_LE(view.Page().CaretRect(end).bottom(), view.Page().WindowHeight()) << step;
        }
        EXPECT_NEAR(heights.original, heights.modified, 1) << step;
    }
}

TEST_F(ComparePageTest, SwitchesNumberingOffAndOn) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(Write("a.txt", "1. The rent\r\nSame\r\n"),
                              Write("b.txt", "2. The rent\r\nSame\r\n")));
    EXPECT_EQ(world.Viewer().Differences().Count(), 1);
    ASSERT_TRUE(world.window.Commands().Run("compare.count_numbering"));
    ASSERT_TRUE(Idle(world));
    EXPECT_EQ(world.Viewer().Differences().Count(), 0);
    ASSERT_TRUE(world.window.Commands().Run("compare.count_numbering"));
    ASSERT_TRUE(Idle(world));
    EXPECT_EQ(world.Viewer().Differences().Count(), 1);
}

TEST_F(ComparePageTest, TellsOfAFileThatIsNotThereInItsPane) {
    WindowWorld world(fakes, theme);
    world.window.resize(1440, 900);
    const std::string there = Write("a.txt", "One\r\n");
    const std::string gone = fakes.folder.Path() + "/gone.txt";
    world.window.OpenPair(there, gone);
    ASSERT_TRUE(Idle(world));
    const CardGround& ground = world.Page().Editors().Ground(Side::Modified);
    ASSERT_NE(ground.Shown(), nullptr);
    EXPECT_TRUE(WordsOf(ground.Shown()).join(u' ').contains(QStringLiteral("gone.txt")));
    EXPECT_EQ(world.Page().Editors().Ground(Side::Original).Shown(), nullptr);
    Write("gone.txt", "Two\r\n");
    ButtonOf(*ground.Shown(), QStringLiteral("Try Again"))->click();
    ASSERT_TRUE(Idle(world));
    EXPECT_EQ(ground.Shown(), nullptr);
    EXPECT_GT(world.Viewer().Differences().Count(), 0);
}

// Given for the window's life alone: what the settings say of passwords is the person's.
TEST_F(ComparePageTest, AsksForThePasswordOfAProtectedDocumentAndForgetsIt) {
    WindowWorld world(fakes, theme);
    world.window.resize(1440, 900);
    world.Viewer().Settings().bWarnedAboutXLSWordWrapAlready = true;
    clsCompareFileOptions& options = world.Viewer().Options();
    options.sDOCPassword_TO_Modified.SetData("stored");
    options.sExcelPasswordOriginal.SetData("kept");
    world.Page().TakeFile(Side::Original, ToQt(fakes.folder.Path() + "/a.xlsx"));
    world.Page().TakeFile(Side::Modified, ToQt(fakes.folder.Path() + "/b.docx"));
    const auto answer = [&](Side side, const QString& password) {
        const std::string reason = "b.docx: " + std::string(kPasswordWanted) + "; give it";
        ASSERT_TRUE(world.Page().ShowUnreadable(side, {"File is password protected", reason}));
        const Card* card = world.Page().Editors().Ground(side).Shown();
        ASSERT_NE(card, nullptr);
        auto* field = card->findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(world.Page().Editors().Ground(side).Shown(), card) << "nothing was typed";
        QTest::keyClicks(field, password);
        QTest::keyClick(field, Qt::Key_Return);
        QTest::qWait(1);
        ASSERT_TRUE(Idle(world));
    };
    answer(Side::Modified, QStringLiteral("given"));
    EXPECT_EQ(options.sDOCPassword_TO_Modified.Data(), "given");
    answer(Side::Modified, QStringLiteral("better"));
    EXPECT_EQ(options.sDOCPassword_TO_Modified.Data(), "better");
    answer(Side::Original, QStringLiteral("other"));
    EXPECT_EQ(options.sExcelPasswordOriginal.Data(), "other");
    EXPECT_EQ(options.sDOCPassword_TO_Original.Data(), "");
    options.sExcelPasswordOriginal.SetData("chosen");
    world.Page().CloseDialogs();
    EXPECT_EQ(options.sDOCPassword_TO_Modified.Data(), "stored");
    EXPECT_EQ(options.sExcelPasswordOriginal.Data(), "chosen") << "changed in the options since";
}

TEST_F(ComparePageTest, KeepsTheOldResultOverAFileThatVanished) {
    WindowWorld world(fakes, theme);
    world.window.resize(1440, 900);
    ASSERT_TRUE(world.Compare(Write("a.txt", "One\r\n"), Write("b.txt", "Two\r\n")));
    world.Page().TakeFile(Side::Original, ToQt(fakes.folder.Path() + "/never.txt"));
    world.Page().Compare();
    ASSERT_TRUE(Idle(world));
    EXPECT_NE(world.Page().Editors().Ground(Side::Original).Shown(), nullptr);
    EXPECT_TRUE(world.Page().ResultLine().isVisible());
    EXPECT_GT(world.Viewer().Differences().Count(), 0);
}

TEST_F(ComparePageTest, TellsOfAFileThatAnotherProgramChanged) {
    WindowWorld world(fakes, theme);
    world.window.resize(1440, 900);
    ASSERT_TRUE(world.Compare(Write("a.txt", "One\r\n"), Write("b.txt", "Two\r\n")));
    MessageBar& line = world.Page().Editors().Line(Side::Modified);
    EXPECT_TRUE(line.isHidden());
    Write("b.txt", "Two and three\r\n");
    fakes.clock().step = 400;  // the next looks are seconds apart
    ASSERT_TRUE(WindowWorld::Until([&] { return !line.isHidden(); }));
    EXPECT_TRUE(world.Page().Editors().Line(Side::Original).isHidden());
    ButtonOf(line, QStringLiteral("Load Again"))->click();
    ASSERT_TRUE(Idle(world));
    EXPECT_TRUE(line.isHidden());
    EXPECT_EQ(ToUtf8(world.Page().Editors().View(Side::Modified).Document().Text()),
              "Two and three\r\n");
}

TEST_F(ComparePageTest, ListsEqualChangesBesideTheWordsAsOneEntryWithItsPlaces) {
    const BesideNote link{
        "links", "link target", "changed", {ParagraphNumber{4}, ParagraphNumber{5}}, "a", "b"};
    const BesideNote other{
        "links", "link target", "changed", {ParagraphNumber{9}, ParagraphNumber{0}}, "c", ""};
    const BesideNote picture{
        "pictures", "picture", "replaced", {ParagraphNumber{3}, ParagraphNumber{3}}};
    BesideEntries list(UiText(), nullptr);
    std::vector<std::pair<Side, int>> went;
    list.place_chosen = [&](Side side, ParagraphNumber paragraph) {
        went.emplace_back(side, paragraph.value);
    };
    list.SetEntries(EntriesOf({&link, &picture, &other}));
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.item(0)->text(), QStringLiteral("Link target changed"));
    list.setCurrentRow(0);
    for (int press = 0; press < 3; ++press)
        QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(went, (std::vector<std::pair<Side, int>>{
                        {Side::Modified, 5}, {Side::Original, 9}, {Side::Modified, 5}}));
}

TEST_F(ComparePageTest, GivesWayWhereRoomIsShortAndComesBack) {
    WindowWorld world(fakes, theme);
    world.window.showNormal();
    world.window.resize(1440, 900);
    ASSERT_TRUE(world.Compare(Write("a.txt", "One\r\n"), Write("b.txt", "Two\r\n")));
    EXPECT_EQ(world.Page().LayoutNow(), PaneLayout::EditorsAndResult);
    world.window.activateWindow();
    QTest::qWait(1);
    world.Page().Editors().View(Side::Original).setFocus();
    world.window.resize(1000, 700);
    QTest::qWait(1);
    EXPECT_EQ(world.Page().LayoutNow(), PaneLayout::Result);
    EXPECT_EQ(world.Page().FocusedView(), &world.Page().Pane().View(Side::Original));
    EXPECT_EQ(QApplication::focusWidget(), world.Page().FocusedView())
        << QApplication::focusWidget()->metaObject()->className();
    EXPECT_FALSE(world.Page().Editors().isVisible());
    world.window.Commands().Run("view.both");
    EXPECT_TRUE(world.Page().Editors().isVisible()) << "by hand it is as one wishes";
    world.window.resize(1440, 900);
    QTest::qWait(1);
    world.window.resize(800, 440);
    QTest::qWait(1);
    EXPECT_TRUE(world.Page().Head().isVisible());
    EXPECT_EQ(world.Page().Head().mapTo(&world.Page(), QPoint()).y(),
              world.Page().Files().mapTo(&world.Page(), QPoint()).y());
    world.window.resize(1440, 900);
    QTest::qWait(1);
    EXPECT_TRUE(world.Page().Editors().isVisible());
}

TEST_F(ComparePageTest, BringsViewColumnsAndPanelBackTheNextDay) {
    const std::string one = Write("a.txt", "One\r\n");
    const std::string two = Write("b.txt", "Two\r\n");
    int before = 0;
    {
        WindowWorld world(fakes, theme);
        ASSERT_TRUE(world.Compare(one, two));
        world.window.Commands().Run("view.all_in_one");
        ASSERT_TRUE(Idle(world));
        world.window.showNormal();
        world.window.resize(1440, 900);
        world.Page().Editors().ratio_wanted(0.3);
        world.Page().SetPanel(true);
        before = world.Page().Editors().height();
        world.frame.CloseFrame();
    }
    WindowWorld again(fakes, theme);
    again.window.showNormal();
    again.window.resize(1440, 900);
    EXPECT_TRUE(again.Page().Pane().AllInOne());
    ASSERT_TRUE(again.Compare(one, two));
    EXPECT_TRUE(again.Page().Pane().MergedView().isVisible());
    EXPECT_TRUE(again.Page().Panel().isVisible());
    QTest::qWait(1);
    EXPECT_NEAR(again.Page().Editors().height(), before, 4);
    EXPECT_LT(again.Page().Editors().View(Side::Original).width(),
              again.Page().Editors().View(Side::Modified).width() / 2);
}

TEST_F(ComparePageTest, LeavesTheButtonsOfTheOtherWindowAlone) {
    WindowWorld world(fakes, theme);
    world.window.showNormal();
    world.window.resize(1440, 900);
    ASSERT_TRUE(world.Compare(Write("a.txt", "One\r\n"), Write("b.txt", "Two\r\n")));
    CompareFilesPage& compared = world.Page();
    const auto* compare = compared.Bar().findChild<QPushButton*>();
    ASSERT_NE(compare, nullptr);
    EXPECT_TRUE(WindowWorld::Until([&] { return compare->isEnabled(); }));
    ASSERT_TRUE(world.window.Commands().Run("window.tile"));
    world.frame.CreateNewCompareFilesForm();
    ASSERT_TRUE(world.window.Commands().Run("window.tile"));
    QTest::qWait(1);
    ASSERT_NE(world.window.ActivePage(), &compared);
    world.window.Commands().Refresh();
    EXPECT_TRUE(compare->isEnabled()) << "the empty window has nothing to compare, this one has";
    world.frame.CreateNewCompareFilesForm();
    world.frame.CreateNewCompareFilesForm();
    world.frame.CreateNewCompareFilesForm();
    ASSERT_TRUE(world.window.Commands().Run("window.tile"));
    QTest::qWait(1);
    EXPECT_EQ(world.window.width(), 1440) << "three beside each other have room";
}

// ---- paper ----

TEST_F(ComparePageTest, PrintsToAPdfFile) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(Write("a.txt", "One\r\n"), Write("b.txt", "Two\r\n")));
    const QString file = ToQt(fakes.folder.Path() + "/paper.pdf");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    world.Page().PrintOn(printer);
    EXPECT_GT(QFileInfo(file).size(), 500);
}

TEST_F(ComparePageTest, OffersToPrintWhatThePersonSelectedAndNotWhatTheWalkDid) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(
        world.Compare(Write("a.txt", "One\r\nSame\r\n"), Write("b.txt", "Two\r\nSame\r\n")));
    RichTextView& original = world.Page().Editors().View(Side::Original);
    ASSERT_GT(original.Document().Selection().length, 0) << "the first difference";
    const auto offered = [&] {
        QString what;
        QTimer::singleShot(0, [&] {
            if (auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget())) {
                const bool selection = dialog->testOption(QAbstractPrintDialog::PrintSelection);
                what =
                    dialog->windowTitle() + (selection ? QStringLiteral(": selection") : QString());
                dialog->reject();
            }
        });
        world.window.Commands().Run("file.print");
        return what;
    };
    EXPECT_EQ(offered(), QStringLiteral("Print – Original: a.txt"));
    original.Document().Select({CharPos{0}, 2});
    EXPECT_EQ(offered(), QStringLiteral("Print – Original: a.txt: selection"));
    world.window.Commands().Run("view.result");
    EXPECT_EQ(offered(), QStringLiteral("Print – Result, original side"));
}

TEST_F(ComparePageTest, MakesThePagesOfAPreviewOnce) {
    WindowWorld world(fakes, theme);
    std::string lines;
    for (int line = 0; line < 200; ++line)
        lines += "Paragraph " + std::to_string(line) + "\r\n";
    ASSERT_TRUE(world.Compare(Write("a.txt", lines), Write("b.txt", "Two\r\n")));
    QPrinter printer(QPrinter::HighResolution);
    int painted = 0;
    PreviewSteps steps;
    steps.paint = [&](QPrinter& paper) {
        ++painted;
        world.Page().PrintOn(paper);
    };
    PrintPreviewDialog dialog(UiText(), steps, printer, nullptr);
    dialog.show();
    ASSERT_TRUE(WindowWorld::Until([&] { return painted > 0; }));
    EXPECT_GE(dialog.Pages(), 3);
}

}  // namespace
}  // namespace zorvane
