#include "compare/ui/command_buttons.h"

#include <QAction>

namespace zorvane {

void LinkButton(QAbstractButton& button, CommandSet& commands, std::string_view id) {
    QAction* action = commands.Action(id);
    Q_ASSERT(action != nullptr);
    button.setCheckable(action->isCheckable());
    button.setToolTip(action->toolTip());
    button.setAccessibleDescription(action->statusTip());
    const auto follow = [&button, action] {
        button.setEnabled(action->isEnabled());
        if (action->isCheckable())
            button.setChecked(action->isChecked());
    };
    follow();
    QObject::connect(action, &QAction::changed, &button, follow);
    const auto run = [&commands, id] {
        commands.Run(id);
        commands.Refresh();  // a refused click leaves the button as the command is
    };
    if (!action->isCheckable()) {
        QObject::connect(&button, &QAbstractButton::clicked, action, run);
        return;
    }
    // A screen reader turns a button over without a click.
    QObject::connect(&button, &QAbstractButton::toggled, action, [action, run](bool on) {
        if (on != action->isChecked())
            run();
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
