#include "compare/ui/command_buttons.h"

#include <utility>

#include <QAction>

namespace zorvane {

namespace {

constexpr const char* kCommand = "command";
constexpr const char* kElsewhere = "commandsElsewhere";

// One set serves all windows, and follows the one in front; the others' buttons rest.
bool IsElsewhere(const QWidget& widget) {
    for (const QWidget* part = &widget; part != nullptr; part = part->parentWidget()) {
        if (part->property(kElsewhere).toBool())
            return true;
    }
    return false;
}

}  // namespace

void SetCommandsElsewhere(QWidget& part, CommandSet& commands, bool elsewhere) {
    part.setProperty(kElsewhere, elsewhere);
    if (elsewhere)
        return;
    for (QAbstractButton* button : part.findChildren<QAbstractButton*>()) {
        const QByteArray id = button->property(kCommand).toString().toUtf8();
        const QAction* action = commands.Action({id.data(), static_cast<std::size_t>(id.size())});
        if (action == nullptr)
            continue;
        button->setEnabled(action->isEnabled());
        if (action->isCheckable())
            button->setChecked(action->isChecked());
    }
}

void LinkButton(QAbstractButton& button, CommandSet& commands, std::string_view id) {
    QAction* action = commands.Action(id);
    Q_ASSERT(action != nullptr);
    button.setCheckable(action->isCheckable());
    button.setProperty(kCommand, QString::fromUtf8(id.data(), static_cast<qsizetype>(id.size())));
    const auto follow = [&button, action] {
        button.setToolTip(action->toolTip());
        button.setAccessibleDescription(action->statusTip());
        if (IsElsewhere(button))
            return;
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

void AddCommandTo(QMenu& menu, CommandSet& commands, std::string_view id, const QString& words,
                  std::function<void()> run) {
    const QAction* command = commands.Action(id);
    if (!run)
        run = [&commands, id] { commands.Run(id); };
    QAction* action = menu.addAction(command->icon(), words, &menu, std::move(run));
    action->setEnabled(command->isEnabled());
    // The key is the command's; here it is only told.
    if (!action->text().contains(QStringLiteral("(F")))
        action->setText(action->text() + u'\t' +
                        command->shortcut().toString(QKeySequence::NativeText));
}

}  // namespace zorvane
