// The choice of the language, and windows that follow it.
#include <filesystem>

#include <QMenu>
#include <QTabBar>

#include "common/ui/language_dialog.h"
#include "tests/ui/dialogs_world.h"

namespace zorvane {
namespace {

using LanguageChange = DialogsTest;

TEST_F(LanguageChange, ANewLanguageIsShownInAllWindowsAtOnceAndBack) {
    const std::string folder = fakes.folder.Path() + "/26/Tarnwick, Inc/Zorvane/Languages";
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/German-Zorvane.txt")
        << "\"&File\",\"&Datei\"\n\"Compare\",\"Vergleichen\"\n\"Ignore Case\",\"Gross und "
           "klein\"\n"
           "\"Find:\",\"Suchen:\"\n"
           "\"Drop the original here\",\"Das Original hierher\"\n\"Compare Options\",\"Optionen\"\n"
           "\"Choose both documents first\",\"Erst beide waehlen\"\n";
    WindowWorld world(fakes, theme);
    world.frame.CreateNewCompareFilesForm();
    const auto shows = [&](const char* text) {
        int count = 0;
        for (const QLabel* label : world.window.findChildren<QLabel*>())
            count += label->text() == QString::fromLatin1(text);
        for (const QAbstractButton* button : world.window.findChildren<QAbstractButton*>())
            count += button->text() == QString::fromLatin1(text);
        for (const QTabBar* tabs : world.window.findChildren<QTabBar*>())
            for (int at = 0; at < tabs->count(); ++at)
                count += tabs->tabText(at) == QString::fromLatin1(text);
        return count;
    };
    const auto choose = [&](int row) {
        return InDialog<LanguageDialog>(world, "app.language", [row](LanguageDialog& dialog) {
            dialog.findChild<ListBox*>()->setCurrentRow(row);
            dialog.accept();
        });
    };
    // It stays open beside the windows, with mnemonics in each language.
    world.window.Commands().Run("edit.find");
    EXPECT_EQ(shows("F&ind:"), 1);
    ASSERT_TRUE(choose(1));
    EXPECT_EQ(shows("&Suchen:"), 1);
    for (const char* german : {"Gross und klein", "Das Original hierher", "Optionen"})
        EXPECT_EQ(shows(german), 2) << german;
    EXPECT_GE(shows("Vergleichen"), 2);
    EXPECT_EQ(shows("Ignore Case"), 0);
    EXPECT_EQ(world.window.Commands().Menu("&File")->title(), QStringLiteral("&Datei"));
    EXPECT_EQ(world.process.settings->Read("Language", "Language_Code", "", 128), "German");
    ASSERT_TRUE(choose(0));
    for (const char* english : {"Ignore Case", "Drop the original here", "Compare Options"})
        EXPECT_EQ(shows(english), 2) << english;
    EXPECT_EQ(shows("Gross und klein"), 0);
    EXPECT_EQ(shows("F&ind:"), 1);
}

TEST_F(LanguageChange, TheLanguageDialogOffersAFileToEditWhereThereIsOne) {
    const std::string folder = fakes.folder.Path() + "/26/Tarnwick, Inc/Zorvane/Languages";
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/German-Zorvane.txt") << "\"a\",\"b\"\n";
    WindowWorld world(fakes, theme);
    ASSERT_TRUE(InDialog<LanguageDialog>(world, "app.language", [](LanguageDialog& dialog) {
        EXPECT_FALSE(ButtonOf(dialog, "Edit Language File")->isEnabled()) << "English";
        dialog.findChild<ListBox*>()->setCurrentRow(1);
        Click(dialog, "Edit Language File");
        QTest::keyClick(&dialog, Qt::Key_F1);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    }));
    const std::vector<std::string>& calls = fakes.shell().calls;
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_TRUE(calls[0].starts_with("edit ") && calls[0].ends_with("German-Zorvane.txt"));
    EXPECT_TRUE(calls[1].starts_with("open "));
    EXPECT_EQ(world.process.translator.gsLanguage, "English");
}

}  // namespace
}  // namespace zorvane
