// The windows in each language that comes along: nothing they show is missing in its file, and no
// menu has a mnemonic twice.
#include <filesystem>
#include <fstream>
#include <map>

#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "tests/support/compound_bytes.h"
#include "tests/ui/window_world.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;

std::string ReadWhole(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct LanguageRow {
    const char* language;
    const char* caption;  ///< of the Compare button
};
constexpr LanguageRow kLanguages[] = {{"German", "Vergleichen"}, {"Japanese", "比較"}};

class WindowLanguageTest : public ::testing::TestWithParam<LanguageRow> {
  protected:
    WindowLanguageTest() : theme(*qobject_cast<QApplication*>(QCoreApplication::instance())) {
        const fs::path home = fs::path(fakes.folder.Path()) / "26" / "Tarnwick, Inc" / "Zorvane";
        fs::create_directories(home / "Languages");
        const std::string name = std::string(GetParam().language) + "-Zorvane.txt";
        file = home / "Languages" / name;
        fs::copy_file(fs::path(ZORVANE_LANGUAGES) / name, file);
        std::ofstream(home / "Zorvane.INI")
            << "[Language]\r\nLanguage_Code=" << GetParam().language << "\r\n";
        before = ReadWhole(file);
    }
    std::string Write(const std::string& name, const std::string& text) const {
        const std::string path = fakes.folder.Path() + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    FakePlatform fakes;
    Theme theme;
    fs::path file;
    std::string before;
};

// A text that the translator did not know would stand at the file's end.
TEST_P(WindowLanguageTest, AsksForNothingThatItsFileLacks) {
    const std::string one = Write("one.txt", "Alpha\r\nBeta two\r\nGamma\r\nDelta\r\n");
    const std::string two = Write("two.txt", "Alpha\r\nBeta three\r\nGamma\r\nEpsilon\r\nNew\r\n");
    WindowWorld world(fakes, theme);
    ASSERT_EQ(world.process.translator.gsLanguage, GetParam().language);
    ASSERT_TRUE(world.Compare(one, two));
    CommandSet& commands = world.window.Commands();
    for (const char* id : {"go.next", "go.read", "view.panel", "view.fold", "view.all_in_one",
                           "view.show_changes", "view.show_all", "compare.copy_to_modified"})
        commands.Run(id);
    world.Page().SetOptionsUnfolded(true);
    world.Viewer().Options().bIgnoreCase.SetData(true);
    world.Page().OptionChanged();
    world.Page().Compare();
    ASSERT_TRUE(WindowWorld::Until([&] { return !world.Viewer().Busy(); }));
    world.window.Commands().Run("window.new_find");
    FindPage& find = *world.window.ActiveFind();
    find.Find();
    find.Boxes().SearchFor().SetPath(QStringLiteral("Alpha"));
    find.Boxes().Folder().SetPath(ToQt(fakes.folder.Path()));
    find.Find();
    ASSERT_TRUE(WindowWorld::Until([&] { return find.Hits().rowCount() > 0; }));
    world.window.Commands().Run("go.next");
    find.MakeMenu();
    find.MarkCurrent();
    find.Hits().data(find.Hits().index(0, 0), Qt::AccessibleTextRole);
    world.window.Palette().Open();
    QTest::qWait(1);
    EXPECT_EQ(ReadWhole(file).substr(before.size()), "");
    EXPECT_EQ(ReadWhole(file).size(), before.size());
    bool found = false;
    for (const auto* button : world.window.findChildren<QAbstractButton*>())
        found = found || button->text() == QString::fromUtf8(GetParam().caption);
    EXPECT_TRUE(found) << "the Compare button is in the language";
}

// Encrypted so that no password opens it.
std::string ProtectedDocument() {
    std::string info("\3\0\2\0\x24\0\0\0\x20\0\0\0", 12);
    info.append(8, '\0').append("\x0E\x66\0\0\4\x80\0\0", 8).append(16, '\0');
    info.append("\x10\0\0\0", 4).append(32, 's').append("\x14\0\0\0", 4).append(32, 'h');
    CompoundWriter file;
    file.Add("EncryptionInfo", info);
    file.Add("EncryptedPackage", std::string("\5\0\0\0\0\0\0\0", 8) + std::string(16, 'p'));
    return file.Finish();
}

// The page knows a missing password by the words of the reader's reason.
TEST_P(WindowLanguageTest, AsksForThePasswordOfAProtectedDocument) {
    fs::create_directories(fakes.folder.Path("program"));
    fs::create_symlink(ZORVANE_CONVERTER, fakes.folder.Path("program/zorvane-convert"));
    WindowWorld world(fakes, theme);
    world.window.OpenPair(Write("a.docx", ProtectedDocument()), Write("b.txt", "One\r\n"));
    const CardGround& ground = world.Page().Editors().Ground(Side::Original);
    ASSERT_TRUE(WindowWorld::Until([&] { return ground.Shown() != nullptr; }));
    EXPECT_NE(ground.Shown()->findChild<QLineEdit*>(), nullptr) << "a field for the password";
    EXPECT_EQ(ReadWhole(file).substr(before.size()), "");
}

void ExpectMnemonicsOnce(const QString& title, const QList<QAction*>& actions) {
    std::map<QChar, QString> seen;
    for (const QAction* action : actions) {
        if (action->isSeparator())
            continue;
        const QChar letter = MnemonicOf(action->text());
        EXPECT_FALSE(letter.isNull()) << FromQt(action->text()) << " has none";
        EXPECT_NE(letter, QChar(u'Z')) << FromQt(action->text()) << ": Alt+Z wraps lines";
        const auto [other, is_new] = seen.try_emplace(letter, action->text());
        EXPECT_TRUE(is_new) << FromQt(title) << ": " << FromQt(action->text()) << " and "
                            << FromQt(other->second);
        if (action->menu() != nullptr)
            ExpectMnemonicsOnce(action->text(), action->menu()->actions());
    }
}

TEST_P(WindowLanguageTest, HasEachMnemonicOnceInAMenu) {
    WindowWorld world(fakes, theme);
    ExpectMnemonicsOnce(QStringLiteral("menu bar"), world.window.menuBar()->actions());
    // Some commands are called otherwise there.
    world.window.Commands().Run("window.new_find");
    world.window.Commands().Refresh();
    ExpectMnemonicsOnce(QStringLiteral("find"), world.window.menuBar()->actions());
}

INSTANTIATE_TEST_SUITE_P(Languages, WindowLanguageTest, ::testing::ValuesIn(kLanguages),
                         [](const auto& row) { return std::string(row.param.language); });

}  // namespace
}  // namespace zorvane
