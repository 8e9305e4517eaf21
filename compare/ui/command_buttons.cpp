#include "compare/ui/command_buttons.h"

#include <QAction>

namespace zorvane {

void LinkButton(QAbstractButton& button, CommandSet& commands, std::string_view id) {
    QAction* action = commands.Action(id);
    Q_ASSERT(action != nullptr);
    button.setCheckable(action->isCheckable());
    const auto follow = [&button, action] {
        button.setToolTip(action->toolTip());
        button.setAccessibleDescription(action->statusTip());
        button.setEnabled(action->isEnabled());
        if (action->isCheckable())
            button.setChecked(action->isChecked());
    };
    follow();
    QObject::connect(action, &QAction::changed, &button, follow);
    QObject::connect(&button, &QAbstractButton::clicked, action, [&commands, id] {
        commands.Run(id);
        commands.Refresh();  // a refused click leaves the button as the command is
    });
}

IconButton* MakeCommandIcon(CommandSet& commands, std::string_view id, const char* icon,
                            QWidget* parent) {
    const QAction* action = commands.Action(id);
    Q_ASSERT(action != nullptr);
    auto* button = new IconButton(QString::fromLatin1(icon), WithoutMnemonic(action->text()),
                                  action->shortcut().toString(QKeySequence::NativeText),
                                  action->statusTip(), parent);
    LinkButton(*button, commands, id);
    QObject::connect(action, &QAction::changed, button, [button, action] {
        button->setAccessibleName(WithoutMnemonic(action->text()));
    });
    return button;
}

Button* MakeCommandButton(CommandSet& commands, std::string_view id, const QString& caption,
                          ButtonLook look, const char* icon, QWidget* parent) {
    auto* button = new Button(caption, look, QString::fromLatin1(icon), parent);
    LinkButton(*button, commands, id);
    button->setAccessibleName(caption);
    return button;
}

}  // namespace zorvane
