// What all dialogs do.
#include "common/ui/dialog.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {
namespace {

/// A dialog with one field, which must not be empty.
class NameDialog : public Dialog {
  public:
    NameDialog() : Dialog(QStringLiteral("Name"), measures::kNarrowDialog, nullptr) {
        AddColumn()->AddAbove(QStringLiteral("Name"), &field);
        SetButtons(QStringLiteral("OK"), QStringLiteral("Cancel"));
        SetFirstFocus(&field);
    }
    QLineEdit field;

  protected:
    bool Check() override {
        if (field.text().isEmpty())
            ShowError(&field, QStringLiteral("A name is needed"));
        return !field.text().isEmpty();
    }
};

TEST(Dialog, EnterPressesTheButtonThatHasTheFocus) {
    Dialog dialog(QStringLiteral("Options"), measures::kNarrowDialog, nullptr);
    dialog.SetButtons(QStringLiteral("Apply"), QStringLiteral("Cancel"));
    dialog.show();
    dialog.setResult(QDialog::Accepted);
    QTest::keyClick(dialog.CancelButton(), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    QWidget window;
    Button alone(QStringLiteral("Choose File..."), ButtonLook::Plain, QString(), &window);
    Button* third = dialog.AddThirdButton(QStringLiteral("Restore"));
    struct Row {
        const char* name;
        Qt::Key key;
        Qt::KeyboardModifier modifier;
        bool held;
        int pressed;
    };
    for (const Row& row : {Row{"Enter", Qt::Key_Return, Qt::NoModifier, false, 1},
                           Row{"of the keypad", Qt::Key_Enter, Qt::KeypadModifier, false, 1},
                           Row{"with Ctrl", Qt::Key_Return, Qt::ControlModifier, false, 0},
                           Row{"held", Qt::Key_Return, Qt::NoModifier, true, 0}}) {
        for (Button* button : {&alone, third}) {
            SCOPED_TRACE(row.name);
            dialog.show();
            int pressed = 0;
            QObject context;
            QObject::connect(button, &QPushButton::clicked, &context, [&] { ++pressed; });
            QKeyEvent key(QEvent::KeyPress, row.key, row.modifier, QString(), row.held);
            QApplication::sendEvent(button, &key);
            EXPECT_EQ(pressed, row.pressed);
            EXPECT_TRUE(dialog.isVisible()) << "another button was pressed, too";
        }
    }
}

TEST(Dialog, StaysOpenWithTheWrongFieldTold) {
    NameDialog dialog;
    dialog.show();
    EXPECT_EQ(dialog.focusWidget(), &dialog.field);
    const auto* error = dialog.findChild<QLabel*>(QStringLiteral(".error"));
    ASSERT_NE(error, nullptr);
    EXPECT_FALSE(error->isVisible());
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(error->isVisible());
    EXPECT_EQ(error->text(), QStringLiteral("A name is needed"));
    EXPECT_TRUE(dialog.field.property(kWrongProperty).toBool());
    dialog.field.setText(QStringLiteral("Anna"));
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.field.property(kWrongProperty).toBool());
}

TEST(Dialog, PutsCancelBeforeTheFilledButtonAndTheThirdLeft) {
    NameDialog dialog;
    const Button* third = dialog.AddThirdButton(QStringLiteral("Restore"));
    dialog.show();
    EXPECT_LT(third->x(), dialog.CancelButton()->x());
    EXPECT_LT(dialog.CancelButton()->x(), dialog.AcceptButton()->x());
    EXPECT_TRUE(dialog.AcceptButton()->isDefault());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST(Dialog, IsWiderThanItsKindOnlyWhereWordsNeedIt) {
    Dialog usual(QStringLiteral("T"), measures::kNarrowDialog, nullptr);
    usual.SetButtons(QStringLiteral("OK"), QStringLiteral("Cancel"));
    usual.show();
    EXPECT_EQ(usual.width(), measures::kNarrowDialog);
    Dialog long_words(QStringLiteral("T"), measures::kNarrowDialog, nullptr);
    long_words.SetButtons(QStringLiteral("Alle Einstellungen übernehmen"),
                          QStringLiteral("Nichts davon übernehmen"));
    long_words.show();
    EXPECT_GT(long_words.width(), measures::kNarrowDialog);
    EXPECT_GE(long_words.CancelButton()->x(), measures::kDialogEdge);
}

}  // namespace
}  // namespace zorvane
