// The dialogs by keys and clicks: does what they hold reach the options and the settings file, is
// a wrong value refused, and does Esc change nothing?
#include "common/ui/look_style.h"
#include "compare/ui/advanced_options_dialog.h"
#include "compare/ui/compare_dialogs.h"
#include "compare/ui/report_options_dialog.h"
#include "compare/ui/type_dialogs.h"
#include "tests/ui/dialogs_world.h"

namespace zorvane {
namespace {

TEST_F(DialogsTest, OptionsOfAFileTypeFollowTheSideThatOneWorksIn) {
    WindowWorld world(fakes, theme);
    EXPECT_FALSE(world.window.Commands().Run("file.type_options")) << "no file was chosen";
    world.Page().TakeFile(Side::Original, ToQt(original));
    world.Page().TakeFile(Side::Modified, ToQt(modified));
    world.Page().SetLayout(PaneLayout::EditorsAndResult);
    WorkIn(world, Side::Original);
    EXPECT_TRUE(InDialog<PdfOptionsDialog>(world, "file.type_options", [](PdfOptionsDialog&) {}));
    WorkIn(world, Side::Modified);
    EXPECT_TRUE(InDialog<TextOptionsDialog>(world, "file.type_options", [](TextOptionsDialog&) {}));
    EXPECT_TRUE(InDialog<SheetOptionsDialog>(world, "types.sheets", [](SheetOptionsDialog&) {}));
    world.Page().TakeFile(Side::Modified, QStringLiteral("/no/type.rtf"));
    WorkIn(world, Side::Modified);
    world.window.Commands().Run("file.type_options");
    EXPECT_TRUE(world.Page().Look().OptionsUnfolded) << "without a type: the compare options";
}

TEST_F(DialogsTest, ThePaletteOpensOverTheFindDialogAndGivesItBack) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(modified, modified));
    world.window.Commands().Run("edit.find");
    auto* find = world.window.findChild<FindReplaceDialog*>();
    ASSERT_NE(find, nullptr);
    ASSERT_TRUE(WindowWorld::Until([&] { return find->isActiveWindow(); }));
    for (const Qt::Key leave : {Qt::Key_Escape, Qt::Key_Return}) {
        find->activateWindow();
        QTest::keyClicks(find->focusWidget(), QStringLiteral("Alp"));
        QTest::keyClick(find, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        CommandPalette& palette = world.window.Palette();
        ASSERT_TRUE(palette.isVisible());
        EXPECT_FALSE(find->isVisible()) << "it would cover the list";
        QTest::keyClicks(&palette.Line(), QStringLiteral("next pane"));
        QTest::keyClick(&palette.Line(), leave);
        EXPECT_FALSE(palette.isVisible());
        EXPECT_TRUE(find->isVisible());
        EXPECT_TRUE(world.Viewer().Tools().FindReplace().IsOpen()) << "it goes on";
    }
    QTest::keyClick(find, Qt::Key_Escape);
    EXPECT_FALSE(world.Viewer().Tools().FindReplace().IsOpen());
}

TEST_F(DialogsTest, F3FindsOnWhileTheFindDialogHasTheKeys) {
    const std::string file = Write("three.txt", "Alpha\r\nbeta\r\nalpha\r\nALPHA\r\n");
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(file, file));
    world.window.Commands().Run("edit.find");
    auto* find = world.window.findChild<FindReplaceDialog*>();
    ASSERT_TRUE(find != nullptr && WindowWorld::Until([&] { return find->isActiveWindow(); }));
    QTest::keyClicks(find->focusWidget(), QStringLiteral("alpha"));
    const auto hit = [&](Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(find, Qt::Key_F3, modifiers);
        return world.Viewer().Editors().rtbOriginal.editor.Selection().first.value;
    };
    const std::int32_t first = hit(Qt::NoModifier);
    EXPECT_GT(hit(Qt::NoModifier), first);
    EXPECT_EQ(hit(Qt::ShiftModifier), first);
}

TEST_F(DialogsTest, PdfOptionsComeBackTheNextDay) {
    {
        WindowWorld world(fakes, theme);
        ASSERT_TRUE(InDialog<PdfOptionsDialog>(world, "types.pdf", [](PdfOptionsDialog& dialog) {
            EXPECT_FALSE(ButtonOf(dialog, "&Detect Header")->isEnabled());
            Click(dialog, "Preserve Layout Using Spaces and Tabs");
            EXPECT_TRUE(ButtonOf(dialog, "&Detect Header")->isEnabled());
            Click(dialog, "&Detect Header");
            Click(dialog, "&Specify Pages to compare");
            const auto pages = dialog.findChildren<OptionalNumberBox*>();
            ASSERT_EQ(pages.size(), 4);
            pages[1]->setValue(12);
            EXPECT_EQ(pages[3]->value(), 12) << "tied to the original's";
            EXPECT_FALSE(pages[3]->isEnabled());
            Click(dialog, "Same pages in both files");
            pages[3]->setValue(9);
            QTest::keyClicks(LineOf(dialog, "User Password"), QStringLiteral("secret"));
            EXPECT_EQ(LineOf(dialog, "User Password")->echoMode(), QLineEdit::Password);
            QTest::keyClick(&dialog, Qt::Key_Return);
        }));
        world.frame.CloseFrame();
    }
    WindowWorld again(fakes, theme);
    const CompareFilesSettings& settings = again.Viewer().Settings();
    EXPECT_EQ(settings.lBCLConversionMethod, 1);
    EXPECT_TRUE(settings.bBCLDetectHeader);
    EXPECT_TRUE(settings.bBCLUsingPageRange);
    EXPECT_EQ(settings.lBCLPageTo, 12);
    EXPECT_EQ(settings.lBCLPageToModified, 9);
    EXPECT_EQ(settings.sBCLPasswordUser, "secret");
}

TEST_F(DialogsTest, AMissingPageIsRefusedWithTheFocusOnIt) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(InDialog<PdfOptionsDialog>(world, "types.pdf", [](PdfOptionsDialog& dialog) {
        Click(dialog, "&Specify Pages to compare");
        const auto pages = dialog.findChildren<OptionalNumberBox*>();
        pages[1]->clear();
        Click(dialog, "Apply");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(ErrorIn(dialog), QStringLiteral("Please enter a page number"));
        EXPECT_TRUE(pages[1]->property(kWrongProperty).toBool());
        EXPECT_EQ(pages[1]->value(), 1);
        EXPECT_EQ(dialog.focusWidget(), pages[1]);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    }));
    EXPECT_FALSE(world.Viewer().Settings().bBCLUsingPageRange);
}

TEST_F(DialogsTest, EscChangesNothing) {
    WindowWorld world(fakes, theme);
    const clsCompareFileOptions options = world.Viewer().Options();
    const CompareFilesSettings settings = world.Viewer().Settings();
    const std::vector<std::string> extensions = world.Viewer().TextFileExtensions().Items();
    for (const char* id : {"types.text", "types.word", "types.pdf", "types.sheets", "types.slides",
                           "types.html", "compare.advanced", "report.options", "view.font"}) {
        SCOPED_TRACE(id);
        EXPECT_TRUE(InDialog<Dialog>(world, id, [](Dialog& dialog) {
            for (QAbstractButton* box : dialog.findChildren<QAbstractButton*>())
                if (box->isCheckable())
                    box->setChecked(!box->isChecked());
            for (QLineEdit* line : dialog.findChildren<QLineEdit*>())
                line->setText(QStringLiteral("7"));
            QTest::keyClick(&dialog, Qt::Key_Escape);
            EXPECT_FALSE(dialog.isVisible());
        }));
        EXPECT_TRUE(world.Viewer().Options() == options);
        EXPECT_TRUE(world.Viewer().Settings() == settings);
        EXPECT_EQ(world.Viewer().TextFileExtensions().Items(), extensions);
    }
}

TEST_F(DialogsTest, EachFieldOfADialogIsAnOptionOfItsOwn) {
    WindowWorld world(fakes, theme);
    const auto type = [](Dialog& dialog) {
        for (QLineEdit* line : dialog.findChildren<QLineEdit*>())
            if (!line->objectName().isEmpty() && !line->objectName().startsWith("qt_"))
                line->setText(line->objectName());
        dialog.accept();
    };
    ASSERT_TRUE(InDialog<WordOptionsDialog>(world, "types.word", type));
    ASSERT_TRUE(InDialog<SheetOptionsDialog>(world, "types.sheets", type));
    const clsCompareFileOptions& options = world.Viewer().Options();
    for (const clsVarString* option :
         {&options.sDOCPassword_TO_Original, &options.sDOCPasswordTemplate_TO_Original,
          &options.sDOCPassword_TO_Modified, &options.sDOCPasswordTemplate_TO_Modified,
          &options.sExcelSheetNumberMaster, &options.sExcelRowsMaster, &options.sExcelColsMaster,
          &options.sExcelSheetNumberSource, &options.sExcelRowsSource, &options.sExcelColsSource,
          &options.sExcelPasswordOriginal, &options.sExcelPasswordModified,
          &options.sExcelPasswordOriginal_TW, &options.sExcelPasswordModified_TW})
        EXPECT_EQ(option->Data(), option->Name());
    EXPECT_TRUE(options.sDOCPassword_TOTW_Original.Data().empty());
}

TEST_F(DialogsTest, SheetsRestoreTheirDefaultsAndNothingElse) {
    WindowWorld world(fakes, theme);
    world.Viewer().Options().bIgnoreCase.SetData(true);
    world.Viewer().Options().lPadLength.SetData(0);
    world.Viewer().Options().sExcelRowsSource.SetData("3-5");
    ASSERT_TRUE(InDialog<SheetOptionsDialog>(world, "types.sheets", [](SheetOptionsDialog& dialog) {
        Click(dialog, "Restore Defaults");
        Click(dialog, "Apply");
    }));
    EXPECT_EQ(world.Viewer().Options().lPadLength.Data(), 20);
    EXPECT_EQ(world.Viewer().Options().sExcelRowsSource.Data(), "1");
    EXPECT_TRUE(world.Viewer().Options().bExcelQuickTextExtraction.Data());
    EXPECT_TRUE(world.Viewer().Options().bIgnoreCase.Data());
    world.window.Commands().Run("compare.defaults");
    EXPECT_FALSE(world.Viewer().Options().bIgnoreCase.Data());
    EXPECT_TRUE(world.Viewer().Options().bReloadOnRefresh.Data());
}

TEST_F(DialogsTest, TextExtensionsAreAddedByEnterAndKept) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(InDialog<TextOptionsDialog>(world, "types.text", [](TextOptionsDialog& dialog) {
        QLineEdit* line = LineOf(dialog, "extension");
        QTest::keyClicks(line, QStringLiteral("c++"));
        QTest::keyClick(line, Qt::Key_Return);
        EXPECT_FALSE(ErrorIn(dialog).isEmpty());
        EXPECT_TRUE(dialog.isVisible());
        line->clear();
        QTest::keyClicks(line, QStringLiteral("md"));
        QTest::keyClick(line, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()) << "Enter adds first";
        Click(dialog, "Apply");
    }));
    EXPECT_EQ(world.Viewer().TextFileExtensions().Items().back(), "md");
}

TEST_F(DialogsTest, SlidesThatAreLeftOutStayWhatTheyWere) {
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(InDialog<SlideOptionsDialog>(world, "types.slides", [](SlideOptionsDialog& dialog) {
        const auto slides = dialog.findChildren<OptionalNumberBox*>();
        EXPECT_FALSE(slides[0]->isEnabled());
        Click(dialog, "Specify Which Slides to Compare");
        EXPECT_TRUE(slides[0]->isEnabled());
        slides[0]->setValue(4);
        slides[3]->clear();
        EXPECT_FALSE(ButtonOf(dialog, "&ONLY Include notes")->isEnabled());
        Click(dialog, "Include &NOTES");
        Click(dialog, "&ONLY Include notes");
        Click(dialog, "Apply");
    }));
    const CompareFilesSettings& settings = world.Viewer().Settings();
    EXPECT_FALSE(settings.bConvertAllSlides);
    EXPECT_EQ(settings.lFromSlideOriginal, 4);
    EXPECT_EQ(settings.lToSlideModified, 2);
    EXPECT_TRUE(settings.bIncludeNotes && settings.bIncludeNotesOnly);
}

TEST_F(DialogsTest, AnExpressionThatCannotBeUsedIsRefused) {
    WindowWorld world(fakes, theme);
    const auto act = [](AdvancedOptionsDialog& dialog) {
        QLineEdit* line = LineOf(dialog, "expression");
        EXPECT_FALSE(dialog.findChild<QSpinBox*>(QStringLiteral("lines"))->isEnabled());
        Click(dialog, "Use Line Bracket");
        EXPECT_TRUE(dialog.findChild<QSpinBox*>(QStringLiteral("lines"))->isEnabled());
        dialog.findChild<QSpinBox*>(QStringLiteral("lines"))->setValue(40);
        line->setText(QStringLiteral("Page (\\d+"));
        Click(dialog, "Done");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(ErrorIn(dialog).isEmpty());
        line->setText(QStringLiteral("Page \\d+"));
        Click(dialog, "Done");
        EXPECT_FALSE(dialog.isVisible());
    };
    ASSERT_TRUE(InDialog<AdvancedOptionsDialog>(world, "compare.advanced", act));
    EXPECT_EQ(world.Viewer().Options().sIgnoreRegularExpression.Data(), "Page \\d+");
    EXPECT_TRUE(world.Viewer().Options().bUseLineBracket.Data());
    EXPECT_EQ(world.Viewer().Options().lLineBracket.Data(), 40);
    EXPECT_TRUE(world.Viewer().IsStale());
}

TEST_F(DialogsTest, ReportOptionsOpenOnTheTypeAndNeedAPath) {
    WindowWorld world(fakes, theme);
    world.Viewer().Settings().mlReportDefaultFileType_MD = 1;
    world.Viewer().Settings().msgReportFileTXT_MD = "/reports\\Z\\a.txt";
    const auto act = [](ReportOptionsDialog& dialog) {
        EXPECT_EQ(dialog.Tabs().currentIndex(), 1);
        EXPECT_EQ(LineOf(dialog, "path.TXT")->text(), QStringLiteral("/reports/Z/a.txt"));
        Click(dialog, "Side By Side");
        LineOf(dialog, "path.CSV")->clear();
        Click(dialog, "Apply");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(dialog.Tabs().currentIndex(), 3) << "where the wrong field stands";
        LineOf(dialog, "path.CSV")->setText(QStringLiteral("/reports/[YMD].csv"));
        Click(dialog, "Show Additions Summary");
        Click(dialog, "Tracked Changes");
        Click(dialog, "Apply");
        EXPECT_FALSE(dialog.isVisible());
    };
    ASSERT_TRUE(InDialog<ReportOptionsDialog>(world, "report.options", act));
    const CompareFilesSettings& settings = world.Viewer().Settings();
    EXPECT_EQ(settings.msgReportFileCSV_MD, "/reports/[YMD].csv");
    EXPECT_EQ(settings.msgReportFileTXT_MD, "/reports\\Z\\a.txt") << "nobody changed it";
    EXPECT_EQ(settings.mlReportDefaultStyle_MD, 2);
    EXPECT_FALSE(settings.bReportDOC_Additions);
    EXPECT_TRUE(settings.bReportDOC_Tracked);
    EXPECT_TRUE(settings.bReportDOC_ShowDeletions);
}

TEST_F(DialogsTest, TheNextRunLoadsUnchangedFilesByTheirNewOptions) {
    const std::string one = Write("a.csv", "Alpha,1\r\n");
    const std::string two = Write("b.csv", "Beta,2\r\n");
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(world.Compare(one, two));
    const auto width = [&] {
        return world.Page().Editors().View(Side::Original).Document().Text().find(u',');
    };
    EXPECT_EQ(width(), 20u);
    ASSERT_TRUE(InDialog<SheetOptionsDialog>(world, "file.type_options", [](auto& dialog) {
        dialog.template findChild<QSpinBox*>()->setValue(7);
        Click(dialog, "Apply");
    }));
    EXPECT_TRUE(world.Viewer().IsStale());
    world.Page().Compare();
    ASSERT_TRUE(WindowWorld::Until([&] { return !world.Viewer().Busy(); }));
    EXPECT_EQ(width(), 7u);
}

TEST_F(DialogsTest, WhatALoadWasAllowedToChangeIsShown) {
    const std::string page = Write("a.htm", "<p>Alpha</p>");
    WindowWorld world(fakes, theme);
    int asked = 0;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        ++asked;
        auto* button = dialog->findChild<QPushButton*>();
        for (auto* other : dialog->findChildren<QPushButton*>())
            if (WithoutMnemonic(other->text()) == QStringLiteral("Yes"))
                button = other;
        button->click();
    });
    answer.start(10);
    world.Page().TakeFile(Side::Original, ToQt(page));
    world.Page().TakeFile(Side::Modified, ToQt(modified));
    world.Page().Compare();
    ASSERT_TRUE(WindowWorld::Until([&] { return !world.Viewer().Busy(); }));
    EXPECT_GE(asked, 2) << "the question and that the options were updated";
    EXPECT_TRUE(world.Viewer().Options().bRemoveFormatting.Data());
    EXPECT_TRUE(ButtonOf(world.Page(), "Remove Formatting")->isChecked());
}

}  // namespace
}  // namespace zorvane
