#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include "common/ui/bars.h"
#include "common/ui/buttons.h"
#include "common/ui/cards.h"
#include "common/ui/check_boxes.h"
#include "common/ui/combo_boxes.h"
#include "common/ui/file_box.h"
#include "common/ui/look_style.h"
#include "common/ui/mark_style_row.h"
#include "common/ui/measures.h"
#include "common/ui/mnemonics.h"
#include "common/ui/progress_card.h"
#include "common/ui/question.h"
#include "common/ui/toolkit_texts.h"
#include "common/ui/window_placing.h"

namespace zorvane {
namespace {

TEST(DifferenceBox, AsksOnlyForRowsThatAreLookedAt) {
    constexpr int kRows = 50'000;
    int asked = 0;
    QWidget window;
    window.resize(900, 200);
    auto* box = new DifferenceBox(QStringLiteral("Differences"), &window);
    box->resize(400, 32);
    box->SetRows(
        kRows,
        [&](int row) {
            ++asked;
            return ListRow{.text = QStringLiteral("[%1]").arg(row + 1)};
        },
        QString());
    box->SetCurrent(40'000);
    window.show();
    EXPECT_FALSE(box->grab().isNull());
    box->showPopup();
    QApplication::processEvents();
    box->hidePopup();
    EXPECT_LT(asked, 1'000);
    EXPECT_EQ(box->currentText(), QStringLiteral("[40001]"));

    box->SetRows(0, {}, QStringLiteral("No differences"));
    EXPECT_FALSE(box->isEnabled());
    EXPECT_EQ(box->count(), 0);
    EXPECT_FALSE(box->grab().isNull());
}

TEST(DifferenceBox, TellsWhatThePersonChoseAndNotWhatTheProgramSet) {
    DifferenceBox box(QStringLiteral("Differences"));
    box.SetRows(
        3, [](int row) { return ListRow{.text = QString::number(row)}; }, QString());
    QList<int> chosen;
    QObject::connect(&box, &DifferenceBox::Chosen, [&](int row) { chosen.append(row); });
    box.SetCurrent(2);
    EXPECT_TRUE(chosen.isEmpty());
    QTest::keyClick(&box, Qt::Key_Up);
    EXPECT_EQ(chosen, QList<int>{1});
}

TEST(ElidedPath, KeepsTheNameAsLongAsItCan) {
    const QFontMetrics metrics{QFont()};
    const QString path = QStringLiteral("/home/anna/contracts/2026/draft 3.docx");
    const auto width = [&](const char* text) {
        return metrics.horizontalAdvance(QString::fromUtf8(text));
    };
    EXPECT_EQ(ElidedPath(path, metrics, width("/home/anna/contracts/2026/draft 3.docx")), path);
    EXPECT_EQ(ElidedPath(path, metrics, width("…/contracts/2026/draft 3.docx")),
              QString::fromUtf8("…/contracts/2026/draft 3.docx"));
    EXPECT_EQ(ElidedPath(path, metrics, width("…/contracts/2026/draft 3.docx") - 1),
              QString::fromUtf8("…/2026/draft 3.docx"));
    const QString narrow = ElidedPath(path, metrics, width("draft 3.do"));
    EXPECT_LE(metrics.horizontalAdvance(narrow), width("draft 3.do"));
    EXPECT_TRUE(narrow.startsWith(u'd') && narrow.endsWith(u'x')) << narrow.toStdString();
    EXPECT_EQ(
        ElidedPath(QStringLiteral("C:\\a very long folder\\b.doc"), metrics, width("…\\b.doc")),
        QString::fromUtf8("…\\b.doc"));
}

TEST(FileBox, GivesBackThePathThatItShowsCut) {
    FileBox box(QStringLiteral("Original"), QStringLiteral("file"));
    box.resize(120, 32);
    QStringList chosen;
    QObject::connect(&box, &FileBox::PathChosen, [&](const QString& path) { chosen << path; });
    box.SetRecent({"/a/one.txt", "/b/two.txt"});
    EXPECT_EQ(box.Path(), QString()) << "the list of the last ones is no choice";
    box.SetPath(QStringLiteral("/a/very/long/way/to/the/document.docx"));
    box.SetRecent({"/a/one.txt"});
    EXPECT_EQ(box.Path(), QStringLiteral("/a/very/long/way/to/the/document.docx"));
    EXPECT_TRUE(chosen.isEmpty());
    box.lineEdit()->setText(QStringLiteral("/typed.txt"));
    QTest::keyClick(box.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(chosen, QStringList{"/typed.txt"});
}

int TabStops(const QWidget& widget) {
    int stops = 0;
    for (const QWidget* child : widget.findChildren<QWidget*>())
        stops += (child->focusPolicy() & Qt::TabFocus) != 0 ? 1 : 0;
    return stops;
}

TEST(ToolBar, IsOneStopInWhichArrowsMove) {
    QWidget window;
    auto* bar = new ToolBar(QStringLiteral("Bar"), &window);
    auto* first = new Button(QStringLiteral("Compare"));
    auto* group = new SegmentedGroup(QStringLiteral("Layout"));
    group->Add(1, QStringLiteral("A"), QString(), QString());
    group->Add(2, QStringLiteral("B"), QString(), QString());
    auto* last = new Button(QStringLiteral("Options"));
    bar->Add(first);
    bar->Add(group);
    bar->Add(last);
    window.show();
    EXPECT_EQ(TabStops(*bar), 1);
    first->setFocus();
    const auto press = [&](int key) {
        QTest::keyClick(window.focusWidget(), static_cast<Qt::Key>(key));
        return window.focusWidget();
    };
    EXPECT_EQ(press(Qt::Key_Right), group->Segment(1));
    EXPECT_EQ(group->Current(), 1);
    group->Segment(2)->setEnabled(false);
    EXPECT_EQ(press(Qt::Key_Right), last) << "what is greyed is passed over";
    EXPECT_EQ(press(Qt::Key_Right), last);
    EXPECT_EQ(press(Qt::Key_Home), first);
    EXPECT_EQ(TabStops(*bar), 1);
    first->setEnabled(false);
    EXPECT_EQ(TabStops(*bar), 1);
    EXPECT_TRUE(group->Segment(1)->focusPolicy() & Qt::TabFocus)
        << "a bar whose stop is greyed can still be reached";
}

TEST(SegmentedGroup, IsToldAsRadioButtonsWithTheirCounts) {
    SegmentedGroup group(QStringLiteral("Show"));
    group.Add(7, QStringLiteral("Changes"), QString(), QString());
    group.Add(9, QStringLiteral("Additions"), QString(), QString());
    group.SetCount(7, 8);
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(group.Segment(7));
    EXPECT_EQ(told->role(), QAccessible::RadioButton);
    EXPECT_EQ(told->text(QAccessible::Name), QStringLiteral("Changes, 8"));
    QList<int> chosen;
    QObject::connect(&group, &SegmentedGroup::Chosen, [&](int id) { chosen.append(id); });
    group.SetCurrent(9);
    EXPECT_TRUE(chosen.isEmpty());
    QTest::mouseClick(group.Segment(7), Qt::LeftButton);
    EXPECT_EQ(chosen, QList<int>{7});
}

TEST(WrappingCheckBox, GrowsInHeightWhereWidthIsShort) {
    const QString caption = QStringLiteral("Die Zahl der Änderungen auch innerhalb der Absätze");
    WrappingCheckBox box(caption);
    const int wide = box.sizeHint().width();
    EXPECT_EQ(box.heightForWidth(wide), box.sizeHint().height());
    EXPECT_GT(box.heightForWidth(wide / 2), box.heightForWidth(wide));
    EXPECT_LT(box.minimumSizeHint().width(), wide);
    box.resize(wide, 28);
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(wide - 4, 14));
    EXPECT_TRUE(box.isChecked()) << "the caption is part of it";
}

TEST(ToolkitTexts, FollowTheLanguage) {
    const QString texts = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!QFile::exists(texts + QStringLiteral("/qtbase_de.qm")))
        GTEST_SKIP() << "the toolkit's own texts are not installed (qt6-translations-l10n)";
    const auto cancel = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel"); };
    ShowToolkitIn("German");
    EXPECT_EQ(cancel(), QStringLiteral("Abbrechen"));
    ShowToolkitIn("Japanese");
    EXPECT_EQ(cancel(), QStringLiteral("キャンセル"));
    ShowToolkitIn("English");
    EXPECT_EQ(cancel(), QStringLiteral("Cancel"));
}

struct MnemonicRow {
    const char* caption;
    const char* shown;
};
constexpr MnemonicRow kMnemonics[] = {
    {"Whole words", "&Whole words"},
    {"&Case", "&Case"},
    {"Connect", "C&onnect"},
    {"&Copy", "Co&py"},
    {"When && where", "W&hen && where"},
    {"&Zoom", "Zoo&m"},
    {"表記", "表記(&A)"},
    {"...", "..."},
    {"&Keep it", "Keep &it"},
};
TEST(Mnemonics, AreGivenOnceEach) {
    Dialog dialog(QStringLiteral("Options"), measures::kNarrowDialog, nullptr);
    std::vector<WrappingCheckBox*> boxes;
    for (const MnemonicRow& row : kMnemonics) {
        boxes.push_back(new WrappingCheckBox(QString::fromUtf8(row.caption), &dialog));
        dialog.AddWide(boxes.back());
    }
    dialog.SetButtons(QStringLiteral("Apply"), QStringLiteral("&Keep"));
    dialog.setModal(true);
    dialog.show();
    for (std::size_t at = 0; at < boxes.size(); ++at)
        EXPECT_EQ(boxes[at]->text(), QString::fromUtf8(kMnemonics[at].shown));
    EXPECT_EQ(dialog.AcceptButton()->text(), QStringLiteral("Apply")) << "Enter does";
    auto* field = new QLineEdit(&dialog);
    FormColumn column(&dialog);
    EXPECT_EQ(column.AddAbove(QStringLiteral("Number"), field)->text(), QStringLiteral("Number"));
    ShareMnemonics(dialog);
    EXPECT_EQ(field->parentWidget()->findChildren<QLabel*>().front()->text(),
              QStringLiteral("&Number"));
}

TEST(Question, AnswersByEnterAndEscAndNeverDeletesByEnter) {
    struct Row {
        const char* name;
        bool deletes;
        Qt::Key key;
        int answer;
    };
    const Row rows[] = {
        {"Enter takes the usual one", false, Qt::Key_Return, 2},
        {"Esc is the way out", false, Qt::Key_Escape, 0},
        {"Enter does not delete", true, Qt::Key_Return, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QuestionDialog dialog({.title = "Delete",
                               .text = "Delete it?",
                               .choices = {"No", "To the Bin", "Delete"},
                               .usual = 2,
                               .escape = 0,
                               .deletes = row.deletes},
                              nullptr);
        dialog.show();
        QTest::keyClick(dialog.focusWidget(), row.key);
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(dialog.Answer(), row.answer);
    }
}

TEST(WindowPlacing, AQuestionStandsOverTheWindowWhereTheDesktopPutsIt) {
    QWidget window;
    WindowPlacing::Watch(window);
    window.setGeometry(0, 0, 300, 200);
    window.show();
    const QRect place(400, 350, 300, 200);
    QTimer::singleShot(50, &window, [&] {
        window.setGeometry(place);
        EXPECT_FALSE(window.close()) << "the question would go with it";
    });
    QRect asked;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (QWidget* question = QApplication::activeModalWidget()) {
            asked = question->geometry();
            question->close();
        }
    });
    answer.start(10);
    Ask({.title = "Start", .text = "Go on?", .choices = {"OK"}}, &window);
    EXPECT_TRUE(place.contains(asked.center())) << asked.x() << "," << asked.y();
}

TEST(WindowPlacing, AStoredPlaceIsWhollyOnAScreen) {
    struct Row {
        const char* name;
        QRect stored;
        QRect expected;
    };
    const QRect screens[] = {{0, 30, 1000, 770}, {1000, 0, 800, 600}};
    const Row rows[] = {
        {"fits", {100, 100, 500, 400}, {100, 100, 500, 400}},
        {"larger than the screen", {-50, 0, 3000, 2000}, {0, 30, 1000, 770}},
        {"under the panel", {10, 0, 500, 400}, {10, 30, 500, 400}},
        {"over the lower right edge", {1500, 400, 500, 400}, {1300, 200, 500, 400}},
        {"of a screen that has gone", {5000, -900, 500, 400}, {500, 30, 500, 400}},
        {"on the one that shows most of it", {900, 100, 500, 400}, {1000, 100, 500, 400}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(WhollyOnAScreen(row.stored, {screens[0], screens[1]}), row.expected);
    }
}

TEST(ProgressCard, AppearsLateAndNeverGoesBack) {
    QWidget window;
    window.resize(800, 600);
    ProgressCard card(UiText(), &window);
    window.show();
    const auto shown = [&] {
        QStringList texts;
        for (const QLabel* label : card.findChildren<QLabel*>())
            texts.append(label->text());
        return texts;
    };
    card.Begin(QStringLiteral("Comparing"));
    EXPECT_FALSE(card.isVisible());
    card.SetProgress(40, QStringLiteral("Document"));
    card.SetProgress(30, QStringLiteral("Document"));
    EXPECT_TRUE(shown().contains(QStringLiteral("40 %")));
    card.End();
    card.Begin(QStringLiteral("Comparing"));
    EXPECT_TRUE(shown().contains(QStringLiteral("0 %"))) << "a new run starts anew";
    card.End();
}

TEST(MarkStyleRow, TellsWhatThePersonPressed) {
    MarkStyleRow row(LookMark::Deleted, QStringLiteral("Deleted"), UiText());
    int changes = 0;
    QObject::connect(&row, &MarkStyleRow::Changed, [&] { ++changes; });
    MarkChoice choice{.colors = DefaultColors(LookMark::Deleted), .strike = true};
    row.SetChoice(choice);
    EXPECT_EQ(changes, 0);
    const QList<FaceToggle*> toggles = row.findChildren<FaceToggle*>();
    ASSERT_EQ(toggles.size(), 4);
    EXPECT_TRUE(toggles[3]->isChecked());
    QTest::mouseClick(toggles[0], Qt::LeftButton);
    choice.bold = true;
    EXPECT_EQ(row.Choice(), choice);
    EXPECT_EQ(changes, 1);
}

TEST(StatusBar, ShowsAndTellsItsPanelsByNumber) {
    StatusBar bar(3);
    bar.SetPanel(2, QStringLiteral("Ready. Click here to Abort."));
    bar.SetPanel(3, QStringLiteral("00:00:01"));
    bar.resize(600, 28);
    bar.show();
    EXPECT_EQ(bar.Panel(2), QStringLiteral("Ready. Click here to Abort."));
    const int height = bar.sizeHint().height();
    bar.SetPanel(1, QStringLiteral("Failed.\n\nChange the password."));
    EXPECT_EQ(bar.sizeHint().height(), height) << "one line, whatever is told";
    QList<int> clicked;
    QObject::connect(&bar, &StatusBar::PanelClicked, [&](int number) { clicked.append(number); });
    QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, QPoint(600 - 20, 14));
    EXPECT_EQ(clicked, QList<int>{3});
}

}  // namespace
}  // namespace zorvane
