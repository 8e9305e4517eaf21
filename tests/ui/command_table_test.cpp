#include "common/ui/command_table.h"

#include <map>
#include <set>

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QWidget>

#include <gtest/gtest.h>

#include "app/ui/frame_commands.h"
#include "common/ui/icons.h"
#include "compare/ui/compare_commands.h"
#include "folders/ui/folder_commands.h"

namespace zorvane {
namespace {

using Table = std::span<const Command>;

std::vector<Command> WindowCommands() {
    std::vector<Command> all;
    for (const Table table : {FrameCommands(), CompareCommands(), FolderCommands()})
        all.insert(all.end(), table.begin(), table.end());
    return all;
}

TEST(Commands, HaveKeysOfTheirOwnAndNoneIsMisspelt) {
    std::map<std::pair<KeyScope, QString>, std::string_view> owner;
    for (const Command& command : WindowCommands()) {
        const QList<QKeySequence> keys = KeysOf(command.keys);
        EXPECT_EQ(keys.isEmpty(), command.keys.empty()) << command.id;
        for (const QKeySequence& key : keys) {
            EXPECT_FALSE(key.isEmpty()) << command.id;
            EXPECT_EQ(key.count(), 1) << command.id << ": a chord of several keys";
            EXPECT_NE(key[0].key(), Qt::Key_unknown) << command.id;
            const auto [at, fresh] =
                owner.emplace(std::pair(command.scope, key.toString()), command.id);
            EXPECT_TRUE(fresh) << key.toString().toStdString() << ": " << at->second << " and "
                               << command.id;
        }
    }
}

TEST(Commands, EachHaveAMenuATipAnIconThatExistsAndAnIdOfTheirOwn) {
    std::set<std::string_view> ids;
    for (const Command& command : WindowCommands()) {
        SCOPED_TRACE(command.id);
        EXPECT_TRUE(ids.insert(command.id).second);
        EXPECT_FALSE(command.tip.empty());
        EXPECT_NE(command.tip.back(), '.');
        EXPECT_FALSE(command.menu.empty());
        const std::string_view top = command.menu.substr(0, command.menu.find('|'));
        EXPECT_EQ(std::count(MenuOrder().begin(), MenuOrder().end(), top), 1) << top;
        EXPECT_TRUE(command.icon.empty() || HasIcon(ToQt(command.icon)));
    }
}

// What stands beside each other in one menu, by mnemonic.
TEST(Commands, HaveMnemonicsOfTheirOwnWithinEachMenuAndNoneOnZ) {
    std::map<std::pair<std::string, QChar>, std::string> owner;
    const auto claim = [&](std::string_view menu, std::string_view text) {
        const QChar letter = MnemonicOf(ToQt(text));
        EXPECT_FALSE(letter.isNull()) << text;
        EXPECT_NE(letter, QChar(u'Z')) << text;
        const auto [at, fresh] =
            owner.emplace(std::pair(std::string(menu), letter), std::string(text));
        EXPECT_TRUE(fresh || at->second == text) << menu << ": " << at->second << " and " << text;
    };
    for (const std::string_view menu : MenuOrder())
        claim("", menu);
    for (const Command& command : WindowCommands()) {
        claim(command.menu, command.text);
        if (const std::size_t bar = command.menu.rfind('|'); bar != std::string_view::npos)
            claim(command.menu.substr(0, bar), command.menu.substr(bar + 1));
    }
}

TEST(Commands, KeepTheKeysThatPeopleKnow) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"compare.run", "F5"},  {"report.make", "F2"},   {"compare.swap", "F9"},
        {"go.next", "F8"},      {"go.previous", "F7"},   {"help.contents", "F1"},
        {"view.wrap", "Alt+Z"}, {"edit.find", "Ctrl+F"}, {"help.palette", "Ctrl+Shift+P"},
    };
    for (const Command& command : WindowCommands())
        for (const auto& [id, key] : rows)
            if (command.id == id) {
                EXPECT_EQ(command.keys.substr(0, command.keys.find(';')), key) << id;
            }
}

constexpr Command kSmall[] = {
    {"one", "&One...", "&File", 20, "Ctrl+1", "open", "The first"},
    {"two", "&Two", "&File|&More", 10, "", "", "The second"},
    {"on", "&On", "&File", 10, "", "", "On or off", CommandKind::Check},
    {"three", "T&hree", "&Help", 10, "", "", "The third"},
};
constexpr std::string_view kSmallMenus[] = {"&Help", "&File"};

TEST(CommandSet, MakesMenusByTheirOrderAndGroups) {
    QWidget window;
    QMenuBar bar;
    CommandSet commands({kSmall}, UiText([](std::string_view text) {
                            return text == "&File" ? "&Datei" : std::string(text);
                        }),
                        window);
    commands.FillMenuBar(bar, kSmallMenus);
    ASSERT_EQ(bar.actions().size(), 2);
    EXPECT_EQ(bar.actions()[0]->text(), QStringLiteral("&Help"));
    EXPECT_EQ(bar.actions()[1]->text(), QStringLiteral("&Datei"));
    QStringList texts;
    for (const QAction* action : commands.Menu("&File")->actions())
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    EXPECT_EQ(texts, (QStringList{"&More", "&On", "-", "&One..."}));
    EXPECT_EQ(commands.Menu("&File|&More")->actions().size(), 1);
}

TEST(CommandSet, RunsWhatCanBeRunAndSaysWhyNot) {
    QWidget window;
    CommandSet commands({kSmall}, UiText(), window);
    EXPECT_FALSE(commands.Action("one")->isEnabled()) << "nothing is bound to it";
    EXPECT_FALSE(commands.Run("one"));
    int runs = 0;
    bool on = false;
    bool busy = false;
    commands.Bind("one",
                  {.run = [&] { ++runs; }, .why_not = [&] { return busy ? "A run is on" : ""; }});
    commands.Bind("on", {.run = [&] { on = !on; }, .is_on = [&] { return on; }});
    commands.Action("one")->trigger();
    EXPECT_EQ(runs, 1);
    commands.Action("on")->trigger();
    EXPECT_TRUE(on);
    EXPECT_TRUE(commands.Action("on")->isChecked());

    busy = true;
    commands.Refresh();
    EXPECT_FALSE(commands.Action("one")->isEnabled());
    EXPECT_FALSE(commands.Run("one"));
    EXPECT_EQ(runs, 1);
    const CommandEntry entry = commands.Entries()[0];
    EXPECT_EQ(entry.reason, QStringLiteral("A run is on"));
    EXPECT_EQ(entry.name, QStringLiteral("One"));
    EXPECT_EQ(entry.menu, QStringLiteral("File"));
}

TEST(UiText, TakesMnemonicsOut) {
    const std::pair<const char*, const char*> rows[] = {
        {"&Find Next", "Find Next"},
        {"Find && &Replace", "Find & Replace"},
        {"検索(&F)...", "検索..."},
        {"plain", "plain"},
        {"R&&D", "R&D"},
    };
    for (const auto& [text, plain] : rows)
        EXPECT_EQ(WithoutMnemonic(QString::fromUtf8(text)), QString::fromUtf8(plain)) << text;
    EXPECT_EQ(MnemonicOf(QStringLiteral("A && &b")), QChar(u'B'));
    EXPECT_TRUE(MnemonicOf(QStringLiteral("R&&D")).isNull());
}

TEST(CommandSet, SharesACommandAmongWindowsOfSeveralKinds) {
    QWidget window;
    CommandSet commands({kSmall}, UiText(), window);
    bool second_kind = false;
    std::string ran;
    const auto bind = [&](const char* name, bool greyed) {
        return CommandBinding{
            .run = [&ran, name] { ran += name; },
            .why_not = [greyed]() -> std::string_view { return greyed ? "Not here" : ""; }};
    };
    commands.Bind("one", bind("first ", false));
    commands.BindWhere([&] { return second_kind; }, "one", bind("second ", false));
    commands.BindWhere([&] { return second_kind; }, "two", bind("two ", false));
    EXPECT_TRUE(commands.Run("one"));
    EXPECT_FALSE(commands.Run("two")) << "only the second kind has it";
    second_kind = true;
    EXPECT_TRUE(commands.Run("one"));
    EXPECT_TRUE(commands.Run("two"));
    EXPECT_EQ(ran, "first second two ");
}

}  // namespace
}  // namespace zorvane
