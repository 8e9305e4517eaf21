#include "compare/ui/rich_text_accessible.h"

#include <memory>

#include <gtest/gtest.h>

#include "tests/ui/view_world.h"

namespace zorvane {
namespace {

struct UnitRow {
    const char* name;
    QAccessible::TextBoundaryType boundary;
    int offset;
    const char* before;
    const char* at;
    const char* after;
};
const UnitRow kUnits[] = {
    {"word", QAccessible::WordBoundary, 5, " ", "two", "."},
    {"first word", QAccessible::WordBoundary, 0, "", "one", " "},
    {"letter", QAccessible::CharBoundary, 4, " ", "t", "w"},
    {"paragraph", QAccessible::ParagraphBoundary, 13, "one two. It\r\n", "three\r\n", "four"},
    {"line", QAccessible::LineBoundary, 14, "one two. It\r\n", "three\r\n", "four"},
    {"sentence", QAccessible::SentenceBoundary, 2, "", "one two. ", "It\r\n"},
    {"the text's end", QAccessible::ParagraphBoundary, 24, "three\r\n", "four", ""},
};

TEST(RichTextAccessible, TellsUnitsOfTheText) {
    ShownView shown(u"one two. It\r\nthree\r\nfour");
    const RichTextAccessible reader(shown.view);
    for (const UnitRow& row : kUnits) {
        SCOPED_TRACE(row.name);
        int start = 0;
        int end = 0;
        EXPECT_EQ(reader.textBeforeOffset(row.offset, row.boundary, &start, &end).toStdString(),
                  row.before);
        EXPECT_EQ(reader.textAfterOffset(row.offset, row.boundary, &start, &end).toStdString(),
                  row.after);
        EXPECT_EQ(reader.textAtOffset(row.offset, row.boundary, &start, &end).toStdString(),
                  row.at);
        EXPECT_EQ(reader.text(start, end).toStdString(), row.at);
    }
}

// By the count of what is copied, since time tells of the machine.
TEST(RichTextAccessible, CopiesOneParagraphForAWordOfALongText) {
    std::u16string text;
    for (int at = 0; at < 50000; ++at)
        text += u"a paragraph of some words\r\n";
    ShownView shown(text);
    const RichTextAccessible reader(shown.view);
    const std::int64_t before = RichTextAccessible::UnitsCopied();
    for (int at = 0; at < 100; ++at) {
        int start = 0;
        int end = 0;
        const int offset = at * 13000 + 5;
        reader.textAtOffset(offset, QAccessible::WordBoundary, &start, &end);
        EXPECT_LE(start, offset);
        EXPECT_GT(end, offset);
        reader.textBeforeOffset(offset, QAccessible::SentenceBoundary, &start, &end);
        reader.textAfterOffset(offset, QAccessible::LineBoundary, &start, &end);
        reader.attributes(offset, &start, &end);
    }
    EXPECT_LT(RichTextAccessible::UnitsCopied() - before, 100 * 400);
    EXPECT_EQ(reader.characterCount(), shown.document.Length());
}

TEST(RichTextAccessible, IsWhatQtFindsForTheView) {
    ShownView shown(u"some text");
    QAccessibleInterface* found = QAccessible::queryAccessibleInterface(&shown.view);
    ASSERT_NE(found, nullptr);
    ASSERT_NE(found->textInterface(), nullptr);
    found->textInterface()->setCursorPosition(4);
    EXPECT_EQ(shown.Caret().value, 4);
    ASSERT_NE(found->editableTextInterface(), nullptr);
    found->editableTextInterface()->insertText(4, QStringLiteral(" new"));
    EXPECT_EQ(shown.document.Text(), u"some new text");
    shown.view.SetReadOnly(true);
    EXPECT_EQ(found->editableTextInterface(), nullptr);
    EXPECT_TRUE(found->state().readOnly);
}

TEST(RichTextAccessible, GoesFromPlacesToPointsAndBack) {
    ShownView shown(u"some text\r\nand more of it");
    const RichTextAccessible reader(shown.view);
    for (const int offset : {0, 4, 13, 20}) {
        const QRect rect = reader.characterRect(offset);
        EXPECT_GT(rect.width(), 2);
        EXPECT_EQ(reader.offsetAtPoint(rect.center() - QPoint(2, 0)), offset);
    }
    EXPECT_EQ(reader.offsetAtPoint({-500, -500}), -1);
}

TEST(RichTextAccessible, TellsADifferenceInWords) {
    ShownPair shown(RichText::Plain(u"same\r\nthirty days"),
                    RichText::Plain(u"same\r\nforty days"));
    PaneTexts texts = PaneTexts::English();
    texts.difference = [](std::int32_t record) {
        return QStringLiteral("change %1 of 1: deleted thirty").arg(record + 1);
    };
    shown.pane.SetTexts(texts);
    const RichTextAccessible reader(shown.pane.View(Side::Original));
    int start = 0;
    int end = 0;
    EXPECT_FALSE(reader.attributes(1, &start, &end).contains(QStringLiteral("difference")));
    EXPECT_TRUE(reader.attributes(8, &start, &end)
                    .contains(QStringLiteral("difference:change 1 of 1\\: deleted thirty;")));
}

TEST(RichTextAccessible, TellsWhatStandsBesideTheText) {
    std::u16string same;
    for (int at = 0; at < 14; ++at)
        same += u"the same on both sides\r\n";
    ShownPair shown(
        RichText::Plain(u"thirty days are enough\r\n" + same + u"this is the end of it"),
        RichText::Plain(u"forty days are enough\r\n" + same + u"that is the end of it"));
    PaneTexts texts = PaneTexts::English();
    texts.difference = [](std::int32_t record) {
        return QStringLiteral("change %1").arg(record + 1);
    };
    shown.pane.SetTexts(texts);
    shown.pane.SetFolded(true);
    QAccessibleInterface* reader =
        QAccessible::queryAccessibleInterface(&shown.pane.View(Side::Modified));
    const auto names = [reader] {
        QStringList found;
        for (int at = 0; at < reader->childCount(); ++at) {
            QAccessibleInterface* child = reader->child(at);
            EXPECT_EQ(reader->indexOfChild(child), at);
            if (child->object() == nullptr)
                found << child->text(QAccessible::Name);
        }
        return found;
    };
    const QStringList folded = names();
    ASSERT_EQ(folded.size(), 3);
    EXPECT_EQ(folded[0], QStringLiteral("change 1"));
    EXPECT_TRUE(folded[1].endsWith(QStringLiteral(" unchanged paragraphs, folded")));
    EXPECT_EQ(folded[2], QStringLiteral("change 2"));
    QAccessibleInterface* fold = reader->child(reader->childCount() - 2);
    EXPECT_EQ(fold->role(), QAccessible::Button);
    EXPECT_GT(fold->rect().height(), 10);
    EXPECT_EQ(fold->parent(), reader);
    fold->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(names(), (QStringList{QStringLiteral("change 1"), QStringLiteral("change 2")}));
}

TEST(OverviewAccessible, IsASliderOverTheParagraphs) {
    std::u16string text;
    for (int at = 0; at < 200; ++at)
        text += u"a paragraph\r\n";
    ShownPair shown(RichText::Plain(text + u"the one end of it"),
                    RichText::Plain(text + u"the two end of it"));
    QAccessibleInterface* slider = QAccessible::queryAccessibleInterface(&shown.pane.Overview());
    EXPECT_EQ(slider->role(), QAccessible::Slider);
    EXPECT_EQ(slider->text(QAccessible::Name), QStringLiteral("Overview, 1 differences"));
    ASSERT_NE(slider->valueInterface(), nullptr);
    EXPECT_EQ(slider->valueInterface()->currentValue(), 1);
    EXPECT_EQ(slider->valueInterface()->maximumValue(), 201);
    slider->valueInterface()->setCurrentValue(150);
    const int first = slider->valueInterface()->currentValue().toInt();
    EXPECT_GT(first, 100);
    EXPECT_TRUE(slider->text(QAccessible::Value)
                    .startsWith(QStringLiteral("paragraphs %1 to ").arg(first)));
}

}  // namespace
}  // namespace zorvane
