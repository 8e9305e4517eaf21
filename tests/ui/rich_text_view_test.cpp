#include "compare/ui/rich_text_view.h"

#include <algorithm>
#include <random>

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>

#include <gtest/gtest.h>

#include "common/ui/qt_text.h"
#include "compare/ui/clipboard_formats.h"
#include "tests/ui/view_world.h"

namespace zorvane {
namespace {

void Mouse(ShownView& shown, QEvent::Type type, QPointF at,
           Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const bool moves = type == QEvent::MouseMove;
    QMouseEvent event(
        type, at, shown.view.viewport()->mapToGlobal(at), moves ? Qt::NoButton : Qt::LeftButton,
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, modifiers);
    QApplication::sendEvent(shown.view.viewport(), &event);
}

void Click(ShownView& shown, CharPos place, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QPointF at = shown.view.CaretRectOf(place).center() + QPointF(0.5, 0);
    Mouse(shown, QEvent::MouseButtonPress, at, modifiers);
    Mouse(shown, QEvent::MouseButtonRelease, at, modifiers);
}

std::u16string Selected(const ShownView& shown) {
    return shown.document.SelectedText();
}

// ---- keys ----

struct KeyRow {
    const char* name;
    std::u16string text;
    std::int32_t from;
    int key;
    Qt::KeyboardModifiers modifiers;
    std::int32_t to;
};
const KeyRow kKeyRows[] = {
    {"a break is one step", u"ab\r\ncd", 2, Qt::Key_Right, Qt::NoModifier, 4},
    {"and one step back", u"ab\r\ncd", 4, Qt::Key_Left, Qt::NoModifier, 2},
    {"the text's begin holds", u"ab", 0, Qt::Key_Left, Qt::NoModifier, 0},
    {"the text's end holds", u"ab", 2, Qt::Key_Right, Qt::NoModifier, 2},
    {"to the empty last paragraph", u"ab\r\n", 0, Qt::Key_Down, Qt::NoModifier, 4},
    {"down keeps the column", u"word\r\nword", 2, Qt::Key_Down, Qt::NoModifier, 8},
    {"up keeps the column", u"word\r\nword", 8, Qt::Key_Up, Qt::NoModifier, 2},
    {"up in the first line goes to its begin", u"word", 2, Qt::Key_Up, Qt::NoModifier, 0},
    {"to the next word", u"one two", 0, Qt::Key_Right, Qt::ControlModifier, 4},
    {"to this word's begin", u"one two", 6, Qt::Key_Left, Qt::ControlModifier, 4},
    {"words end at paragraphs", u"one\r\ntwo", 3, Qt::Key_Right, Qt::ControlModifier, 5},
    {"to the line's begin", u"one\r\ntwo", 7, Qt::Key_Home, Qt::NoModifier, 5},
    {"to the line's end", u"one\r\ntwo", 5, Qt::Key_End, Qt::NoModifier, 8},
    {"to the text's end", u"one\r\ntwo", 0, Qt::Key_End, Qt::ControlModifier, 8},
    {"to the text's begin", u"one\r\ntwo", 8, Qt::Key_Home, Qt::ControlModifier, 0},
    {"to the next paragraph", u"one\r\ntwo", 1, Qt::Key_Down, Qt::ControlModifier, 5},
    {"to this paragraph's begin", u"one\r\ntwo", 7, Qt::Key_Up, Qt::ControlModifier, 5},
    {"over the end of a cell", u"ab\acd\a", 2, Qt::Key_Right, Qt::NoModifier, 3},
    {"a letter of two units is one step", u"\U0001F600b", 0, Qt::Key_Right, Qt::NoModifier, 2},
    {"a text that runs to the left", u"\u05d0\u05d1\u05d2", 0, Qt::Key_Left, Qt::NoModifier, 1},
    {"and out of it", u"\u05d0\u05d1\r\n\u05d2", 2, Qt::Key_Left, Qt::NoModifier, 4},
};

TEST(RichTextView, MovesTheCaretAsPeopleExpect) {
    for (const KeyRow& row : kKeyRows) {
        SCOPED_TRACE(row.name);
        ShownView shown(row.text);
        shown.document.MoveCaret(CharPos{row.from});
        shown.Key(row.key, row.modifiers);
        EXPECT_EQ(shown.Caret().value, row.to);
        EXPECT_EQ(shown.document.Selection().length, 0);
        // The same with Shift selects.
        shown.document.MoveCaret(CharPos{row.from});
        if (row.modifiers == Qt::NoModifier) {
            shown.Key(row.key, Qt::ShiftModifier);
            EXPECT_EQ(shown.document.Caret().Anchor().value, row.from);
            EXPECT_EQ(shown.Caret().value, row.to);
        }
    }
}

// Each step goes a little farther in the same direction, until the text's end.
TEST(RichTextView, StepsThroughHebrewAndEnglishByTheEye) {
    const std::u16string text =
        u"English and \u05e2\u05d1\u05e8\u05d9\u05ea \u05d8\u05d5\u05d1\u05d4 and 12 more";
    ShownView shown(text, 900);
    double x = shown.view.CaretRectOf(CharPos{0}).x();
    int steps = 0;
    while (shown.Caret().value < static_cast<std::int32_t>(text.size()) && steps < 100) {
        shown.Key(Qt::Key_Right);
        const double next = shown.view.CaretRectOf(shown.Caret()).x();
        EXPECT_GE(next, x - 0.01) << "step " << steps;
        x = next;
        ++steps;
    }
    EXPECT_EQ(shown.Caret().value, static_cast<std::int32_t>(text.size()));
}

TEST(RichTextView, ComesBackToItsColumnBehindAShortLine) {
    ShownView shown(u"a long first line\r\nx\r\na long third line");
    shown.document.MoveCaret(CharPos{10});
    shown.Key(Qt::Key_Down);
    EXPECT_EQ(shown.Caret().value, 20);
    shown.Key(Qt::Key_Down);
    EXPECT_EQ(shown.Caret().value, 32);
}

// ---- editing ----

TEST(RichTextView, TypesAndTakesBack) {
    ShownView shown(u"ab");
    shown.document.MoveCaret(CharPos{1});
    shown.Type(QStringLiteral("x"));
    shown.Key(Qt::Key_Return);
    EXPECT_EQ(shown.document.Text(), u"ax\r\nb");
    shown.Key(Qt::Key_Backspace);
    shown.Key(Qt::Key_Delete);
    EXPECT_EQ(shown.document.Text(), u"ax");
    while (shown.document.CanUndo())
        shown.Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown.document.Text(), u"ab");
    shown.Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown.document.Text(), u"axb");
    // A mnemonic that nothing has; with Ctrl the third letter of some keyboards.
    QKeyEvent mnemonic(QEvent::KeyPress, Qt::Key_D, Qt::AltModifier, QStringLiteral("d"));
    QApplication::sendEvent(&shown.view, &mnemonic);
    EXPECT_EQ(shown.document.Text(), u"axb");
    QKeyEvent third(QEvent::KeyPress, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier,
                    QStringLiteral("@"));
    QApplication::sendEvent(&shown.view, &third);
    EXPECT_EQ(shown.document.Length(), 4);
}

TEST(RichTextView, ChangesNothingWhenItIsToBeReadOnly) {
    ShownView shown(u"some text");
    shown.view.SetReadOnly(true);
    shown.document.Select({CharPos{0}, 4});
    shown.Type(QStringLiteral("x"));
    for (const int key : {Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Delete})
        shown.Key(key);
    for (const int key : {Qt::Key_X, Qt::Key_V, Qt::Key_Z})
        shown.Key(key, Qt::ControlModifier);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("x"));
    QApplication::sendEvent(&shown.view, &commit);
    EXPECT_EQ(shown.document.Text(), u"some text");
    shown.Key(Qt::Key_Right);
    EXPECT_EQ(shown.Caret().value, 4);
}

// ---- mouse ----

TEST(RichTextView, SelectsByTheMouse) {
    ShownView shown(u"one two three\r\nfour five");
    Click(shown, CharPos{5});
    EXPECT_EQ(shown.Caret().value, 5);
    Click(shown, CharPos{9}, Qt::ShiftModifier);
    EXPECT_EQ(Selected(shown), u"wo t");
    const QPointF at = shown.view.CaretRectOf(CharPos{5}).center();
    Click(shown, CharPos{5});
    Mouse(shown, QEvent::MouseButtonDblClick, at);
    EXPECT_EQ(Selected(shown), u"two");
    // Drawn on, whole words are taken.
    Mouse(shown, QEvent::MouseMove, shown.view.CaretRectOf(CharPos{10}).center());
    EXPECT_EQ(Selected(shown), u"two three");
    Mouse(shown, QEvent::MouseMove, shown.view.CaretRectOf(CharPos{1}).center());
    EXPECT_EQ(Selected(shown), u"one two");
    Mouse(shown, QEvent::MouseButtonRelease, at);
    Mouse(shown, QEvent::MouseButtonDblClick, at);
    Mouse(shown, QEvent::MouseButtonRelease, at);
    Mouse(shown, QEvent::MouseButtonPress, at);
    EXPECT_EQ(Selected(shown), u"one two three\r\n");
    Mouse(shown, QEvent::MouseButtonRelease, at);
}

// ---- input methods ----

TEST(RichTextView, KeepsComposedTextOutOfTheDocument) {
    ShownView shown(u"abc");
    shown.document.MoveCaret(CharPos{1});
    const auto compose = [&](const QString& text) {
        QInputMethodEvent event(text, {});
        QApplication::sendEvent(&shown.view, &event);
    };
    const double before = shown.view.CaretRectOf(CharPos{2}).x();
    compose(QStringLiteral("\u304b"));
    compose(QStringLiteral("\u304b\u306a"));
    EXPECT_EQ(shown.document.Text(), u"abc");
    EXPECT_FALSE(shown.document.CanUndo());
    EXPECT_GT(shown.view.CaretRectOf(CharPos{2}).x(), before + 5);
    const QRectF asked = shown.view.inputMethodQuery(Qt::ImCursorRectangle).toRectF();
    EXPECT_NEAR(asked.y(), shown.view.CaretRectOf(CharPos{1}).y() + shown.view.viewport()->y(),
                0.01);
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("\u4eee\u540d"));
    QApplication::sendEvent(&shown.view, &commit);
    EXPECT_EQ(shown.document.Text(), u"a\u4eee\u540dbc");
    EXPECT_EQ(shown.Caret().value, 3);
    // A click elsewhere and a lost focus end composing.
    compose(QStringLiteral("\u304b"));
    Click(shown, CharPos{0});
    EXPECT_FALSE(shown.view.Page().Layouts().HasPreedit());
    EXPECT_EQ(shown.document.Text(), u"a\u4eee\u540dbc");
}

TEST(RichTextView, TellsInputMethodsLittleOfALongText) {
    ShownView shown(std::u16string(100000, u'a'));
    shown.document.MoveCaret(CharPos{50000});
    EXPECT_EQ(shown.view.inputMethodQuery(Qt::ImSurroundingText).toString().size(), 2000);
    EXPECT_EQ(shown.view.inputMethodQuery(Qt::ImCursorPosition).toInt(), 1000);
    shown.document.MoveCaret(CharPos{3});
    EXPECT_EQ(shown.view.inputMethodQuery(Qt::ImCursorPosition).toInt(), 3);
}

// ---- clipboard, drag and drop ----

RichText Formatted() {
    RichText text;
    CharFormat plain;
    CharFormat bold;
    bold.bold = true;
    bold.font = FontName("Liberation Serif");
    bold.half_points = 28;
    bold.fore_color = Color{0xFF};
    text.AppendPlain(u"plain ", plain);
    text.AppendPlain(u"b\u00f6ld", bold);
    text.AppendPlain(u"\r\n\u05e9\u05dc\u05d5\u05dd", plain);
    return text;
}

TEST(RichTextView, CarriesFormatsThroughTheClipboard) {
    ShownView from(Formatted());
    from.Key(Qt::Key_A, Qt::ControlModifier);
    from.Key(Qt::Key_C, Qt::ControlModifier);
    ShownView to(u"[]");
    to.document.MoveCaret(CharPos{1});
    to.Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(to.document.Text().starts_with(u"[plain b\u00f6ld\r\n\u05e9\u05dc\u05d5\u05dd"));
    EXPECT_EQ(to.document.FormatAt(CharPos{8}), Formatted().char_runs[1].format);
    ShownView plain(u"[]");
    plain.document.MoveCaret(CharPos{1});
    plain.Key(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(plain.document.FormatAt(CharPos{8}).bold);
    EXPECT_EQ(QGuiApplication::clipboard()->text().left(12),
              QStringLiteral("plain b\u00f6ld\n\u05e9"));
}

TEST(RichTextView, PastesWhatItCanOfBrokenFormats) {
    ShownView shown(u"");
    auto broken = std::make_unique<QMimeData>();
    broken->setData(QStringLiteral("text/rtf"), QByteArray("{\\rtf1 \\b word{\\*\\x \\'z"));
    broken->setText(QStringLiteral("plain"));
    QGuiApplication::clipboard()->setMimeData(broken.release());
    shown.view.Paste();
    EXPECT_TRUE(shown.document.Text().starts_with(u"word"));
    shown.document.SetText(u"");
    auto none = std::make_unique<QMimeData>();
    none->setData(QStringLiteral("text/rtf"), QByteArray("no such thing"));
    none->setText(QStringLiteral("plain"));
    QGuiApplication::clipboard()->setMimeData(none.release());
    shown.view.Paste();
    EXPECT_EQ(shown.document.Text(), u"plain");
}

TEST(RichTextView, TakesDroppedTextAtThePointer) {
    ShownView shown(u"one three");
    QMimeData mime;
    mime.setText(QStringLiteral("two "));
    const QPointF at = shown.view.CaretRectOf(CharPos{4}).center();
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(shown.view.viewport(), &enter);
    QDropEvent drop(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(shown.view.viewport(), &drop);
    EXPECT_EQ(shown.document.Text(), u"one two three");
    shown.document.Undo();
    EXPECT_EQ(shown.document.Text(), u"one three");
}

// ---- marks and hits ----

TEST(RichTextView, LooksForHitsInWhatIsInSightOnly) {
    std::u16string text;
    for (int at = 0; at < 5000; ++at)
        text += u"a hit in a line\r\n";
    ShownView shown(text);
    std::int64_t looked = 0;
    shown.view.SetFinder(
        [&](std::u16string_view block) {
            looked += static_cast<std::int64_t>(block.size());
            return std::vector<TextRange>{{CharPos{2}, 3}};
        },
        {CharPos{2}, 3});
    const QImage marked = shown.view.viewport()->grab().toImage();
    EXPECT_GT(looked, 0);
    EXPECT_LT(looked, 4000);
    const QPoint hit = shown.view.CaretRectOf(CharPos{2}).topLeft().toPoint() + QPoint(4, 2);
    EXPECT_EQ(marked.pixelColor(hit), ViewColors::Light().this_hit);
    const QPoint other = shown.view.CaretRectOf(CharPos{19}).topLeft().toPoint() + QPoint(4, 2);
    EXPECT_EQ(marked.pixelColor(other), ViewColors::Light().hit);
}

// What is scrolled by moving pixels is what would be painted anew. The window's own pixels are
// taken, since a grabbed widget is painted for that.
TEST(RichTextView, PaintsTheSameScrolledAndAnew) {
    std::u16string text;
    for (int at = 0; at < 200; ++at)
        text += Wide("paragraph " + std::to_string(at) + "\r\n");
    ShownView shown(text);
    const auto pixels = [](RichTextView& view) {
        QApplication::processEvents();
        return view.screen()->grabWindow(view.winId()).toImage().copy(view.viewport()->geometry());
    };
    for (const double step : {60.0, 13.0, -40.0, 7.0, 200.0}) {
        shown.view.ScrollByPixels(step);
        const QImage scrolled = pixels(shown.view);
        shown.view.viewport()->update();
        const QImage anew = pixels(shown.view);
        ASSERT_FALSE(scrolled.isNull());
        EXPECT_EQ(scrolled, anew) << "step " << step;
        shown.view.ScrollByPixels(1);
        EXPECT_NE(pixels(shown.view), anew);
    }
}

TEST(ViewColors, MakeADocumentsOwnColoursReadable) {
    const QColor papers[] = {ViewColors::Light().paper, ViewColors::Dark().paper,
                             ViewColors::Dark().changed.row};
    for (const QColor& paper : papers) {
        for (const QColor& color : {QColor(Qt::black), QColor(Qt::white), QColor(Qt::yellow),
                                    QColor(31, 56, 100), QColor(Qt::red)})
            EXPECT_GE(ContrastOf(ReadableOn(color, paper), paper), 4.5);
    }
    EXPECT_EQ(ReadableOn(Qt::black, Qt::white), QColor(Qt::black));
    for (const ViewColors& colors : {ViewColors::Light(), ViewColors::Dark()}) {
        for (const MarkKind kind :
             {MarkKind::Changed, MarkKind::Deleted, MarkKind::Added, MarkKind::Moved}) {
            const MarkColors& mark = colors.Of(kind);
            EXPECT_GE(ContrastOf(mark.text, mark.word), 4.5);
            EXPECT_GE(ContrastOf(mark.text, mark.row), 4.5);
            EXPECT_GE(ContrastOf(colors.muted, mark.row), 4.5);
        }
        EXPECT_GE(ContrastOf(colors.text2, colors.hatch_ground), 4.5);
        EXPECT_GE(ContrastOf(colors.selection_text, colors.selection), 4.5);
        EXPECT_GE(ContrastOf(colors.text, colors.hit), 4.5);
        EXPECT_GE(ContrastOf(colors.this_hit_text, colors.this_hit), 4.5);
    }
}

}  // namespace
}  // namespace zorvane
