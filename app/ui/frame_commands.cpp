#include "app/ui/frame_commands.h"

namespace zorvane {

namespace {

using enum CommandKind;

constexpr std::string_view kMenuOrder[] = {"&File", "&Edit",   "&View", "&Compare",
                                           "&Go",   "&Window", "&Help"};

// clang-format off
constexpr Command kCommands[] = {
    {"window.new_compare_files", "New Compare &Files", "&File|&New", 11, "Ctrl+N", "compare", "Open one more window for two documents"},
    {"window.new_compare_folders", "New Compare Fol&ders", "&File|&New", 11, "Ctrl+Shift+D", "folders", "Open one more window for two folders"},
    {"window.new_find", "New Find &Text In Files", "&File|&New", 11, "Ctrl+Shift+F", "find-in-files", "Open one more window for a search"},
    {"window.close", "&Close", "&File", 90, "Ctrl+W", "close", "Close the window in front"},
    {"app.quit", "E&xit", "&File", 90, "Ctrl+Q", "", "Close all windows and end"},

    {"app.language", "&Language...", "&View", 80, "", "", "Language of menus, buttons and messages"},
    {"app.full_screen", "Full S&creen", "&View", 80, "F11", "", "Use the whole screen", Check},

    {"go.next_pane", "Ne&xt Pane", "&Go", 80, "F6", "", "Move the focus to the next part of the window"},
    {"go.previous_pane", "Pre&vious Pane", "&Go", 80, "Shift+F6", "", "Move the focus to the part before"},
    {"go.menus", "&Menus", "&Go", 80, "F10", "", "Move the focus to the menus"},

    {"window.show_compare_files", "Show Compare &Files", "&Window", 10, "Ctrl+Alt+1", "compare", "Bring the first Compare Files window to the front"},
    {"window.show_compare_folders", "Show Compare Fol&ders", "&Window", 10, "Ctrl+Alt+2", "folders", "Bring the first Compare Folders window to the front"},
    {"window.show_find", "Show Find &Text In Files", "&Window", 10, "Ctrl+Alt+3", "find-in-files", "Bring the first Find window to the front"},
    {"window.next", "&Next Window", "&Window", 20, "Ctrl+Tab; Ctrl+PgDown", "", "Go to the next window"},
    {"window.previous", "&Previous Window", "&Window", 20, "Ctrl+Shift+Tab; Ctrl+PgUp", "", "Go to the window before"},
    {"window.cascade", "&Cascade", "&Window", 30, "", "", "Lay the windows over each other, each a little lower"},
    {"window.tile", "T&ile", "&Window", 30, "", "", "Lay the windows beside each other"},

    {"help.contents", "&Help", "&Help", 10, "F1", "help", "Read how it is done"},
    {"help.what_is_this", "&What Is This?", "&Help", 10, "Shift+F1", "help", "Click on something to hear what it is for"},
    {"help.palette", "&Command Palette...", "&Help", 10, "Ctrl+Shift+P", "palette", "Find any command by typing", CommandKind::Push, KeyScope::Program},
    {"help.example", "Open the &Example", "&Help", 20, "", "example", "Compare two short contracts that come along"},
    {"help.online", "Help On &Line", "&Help", 30, "", "", "Read the help on the web"},
    {"help.home_page", "Product Home &Page", "&Help", 30, "", "launch", "Open the home page"},
    {"help.updates", "Product &Updates", "&Help", 30, "", "launch", "See whether there is a newer version"},
    {"help.about", "&About", "&Help", 40, "", "", "Version and licence"},
};
// clang-format on

}  // namespace

std::span<const Command> FrameCommands() {
    return kCommands;
}

std::span<const std::string_view> MenuOrder() {
    return kMenuOrder;
}

}  // namespace zorvane
