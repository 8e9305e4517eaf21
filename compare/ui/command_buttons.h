// Buttons that run a command of the window's set.
#pragma once

#include <functional>
#include <string_view>

#include <QAbstractButton>
#include <QMenu>

#include "common/ui/buttons.h"
#include "common/ui/command_table.h"

namespace zorvane {

/// The button runs the command, and is greyed and pressed in as the command is.
void LinkButton(QAbstractButton& button, CommandSet& commands, std::string_view id);
/// The buttons of this part of the screen rest while the commands are those of another window;
/// false brings them up to date.
void SetCommandsElsewhere(QWidget& part, CommandSet& commands, bool elsewhere);
/// With the name, key and tip of the command.
IconButton* MakeCommandIcon(CommandSet& commands, std::string_view id, const char* icon,
                            QWidget* parent);
/// `caption` stands on it instead of the command's menu text.
Button* MakeCommandButton(CommandSet& commands, std::string_view id, const QString& caption,
                          ButtonLook look, const char* icon, QWidget* parent);

/// A row of a menu at a place: shows the command's icon, its key and whether it can be run, under
/// words of its own. `run`: what it does where that is not the command itself.
void AddCommandTo(QMenu& menu, CommandSet& commands, std::string_view id, const QString& words,
                  std::function<void()> run = {});

}  // namespace zorvane
