// The program with its windows, and a hand that works in the dialogs that it opens.
#pragma once

#include <fstream>
#include <functional>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include "tests/ui/window_world.h"

namespace zorvane {

class DialogsTest : public ::testing::Test {
  protected:
    DialogsTest() : theme(*qobject_cast<QApplication*>(QCoreApplication::instance())) {
        original = Write("one.pdf", "no PDF");
        modified = Write("two.txt", "Alpha\r\n");
    }
    std::string Write(const std::string& name, const std::string& text) {
        const std::string path = fakes.folder.Path() + "/" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    /// Runs a command, and `act` on the dialog that it opens. False when none of that kind came.
    template <class Shown>
    static bool InDialog(WindowWorld& world, const char* id,
                         const std::function<void(Shown&)>& act) {
        return InDialog<Shown>(world.window.Commands(), id, act);
    }
    template <class Shown>
    static bool InDialog(CommandSet& commands, const char* id,
                         const std::function<void(Shown&)>& act) {
        bool came = false;
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, [&] {
            QWidget* shown = QApplication::activeModalWidget();
            if (shown == nullptr)
                return;  // a question waits until the window has its place
            hand.stop();
            auto* dialog = dynamic_cast<Shown*>(shown);
            came = dialog != nullptr;
            if (came)
                act(*dialog);
            if (auto* left = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                left->reject();
        });
        hand.start(1);
        commands.Run(id);
        return came;
    }
    static void WorkIn(WindowWorld& world, Side side) {
        RichTextView& view = world.Page().Editors().View(side);
        world.window.activateWindow();
        ASSERT_TRUE(WindowWorld::Until([&] {
            view.setFocus();
            return world.Page().FocusedView() == &view;
        }));
    }
    static QAbstractButton* ButtonOf(QWidget& dialog, const char* caption) {
        for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
            if (WithoutMnemonic(button->text()) == WithoutMnemonic(QString::fromLatin1(caption)))
                return button;
        ADD_FAILURE() << "no button " << caption;
        return nullptr;
    }
    static void Click(QWidget& dialog, const char* caption) {
        if (QAbstractButton* button = ButtonOf(dialog, caption))
            QTest::mouseClick(button, Qt::LeftButton);
    }
    static QLineEdit* LineOf(QWidget& dialog, const char* name) {
        return dialog.findChild<QLineEdit*>(QString::fromLatin1(name));
    }
    /// What stands below a wrong field.
    static QString ErrorIn(const QWidget& dialog) {
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            if (label->property("look").toString() == QStringLiteral("error") && label->isVisible())
                return label->text();
        return {};
    }

    FakePlatform fakes;
    Theme theme;
    std::string original;
    std::string modified;
};

}  // namespace zorvane
