#include "compare/document/undo_list.h"

#include <gtest/gtest.h>

#include "tests/support/printers.h"

namespace zorvane::undo_list_test {
namespace {

// A text whose edits go to an undo list, without an editor.
struct Text {
    explicit Text(const UndoList::Limits& limits) : list(limits) {}

    void Put(std::int32_t first, std::int32_t length, std::u16string_view put,
             EditKind kind = EditKind::Other) {
        EditStep step{EditStep::Part::Text, CharPos{first}, length, RichText::Plain(put), {}};
        Swap(step);
        list.Add(std::move(step), kind, put, {}, {});
    }
    void Swap(EditStep& step) {
        const auto first = static_cast<std::size_t>(step.first.value);
        const auto length = static_cast<std::size_t>(step.length);
        const RichText old = RichText::Plain(text.substr(first, length));
        text.replace(first, length, step.old.text);
        step.length = step.old.Length();
        step.old = old;
    }
    std::optional<UndoList::Change> Undo() {
        return list.Undo([this](EditStep& step) { Swap(step); });
    }
    std::optional<UndoList::Change> Redo() {
        return list.Redo([this](EditStep& step) { Swap(step); });
    }
    int UndoAll() {
        int entries = 0;
        while (Undo())
            ++entries;
        return entries;
    }

    std::u16string text;
    UndoList list;
};

TEST(UndoList, ForgetsTheOldestEntries) {
    Text text({3, 1 << 20});
    for (const char16_t* letter : {u"a", u"b", u"c"})
        text.Put(0, 0, letter);
    EXPECT_FALSE(text.list.HasForgotten());
    text.Put(0, 0, u"d");
    EXPECT_TRUE(text.list.HasForgotten());
    EXPECT_EQ(text.UndoAll(), 3);
    EXPECT_EQ(text.text, u"a");
    EXPECT_TRUE(text.list.IsModified()) << "the clean point was forgotten";
    text.list.Clear();
    EXPECT_FALSE(text.list.HasForgotten());
    EXPECT_TRUE(text.list.IsModified()) << "a list that is emptied saves nothing";
}

TEST(UndoList, KnowsTheCleanPointWhenOlderEntriesAreForgotten) {
    Text text({3, 1 << 20});
    text.Put(0, 0, u"a");
    text.list.SetCleanPoint();
    for (const char16_t* letter : {u"b", u"c"})
        text.Put(0, 0, letter);
    text.Put(0, 0, u"d");
    EXPECT_EQ(text.UndoAll(), 3);
    EXPECT_FALSE(text.list.IsModified());
    text.Redo();
    EXPECT_TRUE(text.list.IsModified());
}

TEST(UndoList, KeepsWhatFitsIntoItsMemory) {
    constexpr std::size_t kSmall = 4000;
    Text text({1000, kSmall});
    const std::u16string large(10'000, u'x');
    text.Put(0, 0, large);
    text.Put(0, 10'000, u"");
    EXPECT_GT(text.list.Bytes(), 20'000U);
    EXPECT_EQ(text.UndoAll(), 1) << "the last can always be taken back";
    EXPECT_EQ(text.text, large);
    for (int letter = 0; letter < 50; ++letter)
        text.Put(0, 0, u"y");
    EXPECT_LE(text.list.Bytes(), kSmall);
    EXPECT_GT(text.UndoAll(), 5);
    text.list.Clear();
    EXPECT_EQ(text.list.Bytes(), 0U);
}

// What is counted goes up and down with what is kept, joined, undone and done again.
TEST(UndoList, CountsItsMemoryAlike) {
    Text text({});
    text.Put(0, 0, u"a", EditKind::Typing);
    const std::size_t one = text.list.Bytes();
    text.Put(1, 0, u"b", EditKind::Typing);
    EXPECT_EQ(text.list.Bytes(), one) << "joined letters take no room";
    {
        text.list.BeginBatch();
        text.Put(0, 2, u"");
        text.Put(0, 0, u"xyz");
        text.list.EndBatch();
    }
    const std::size_t all = text.list.Bytes();
    text.Undo();
    text.Redo();
    text.Undo();
    EXPECT_GT(text.list.Bytes(), one);
    text.Redo();
    EXPECT_NEAR(static_cast<double>(text.list.Bytes()), static_cast<double>(all), 64);
    text.UndoAll();
    text.Put(0, 0, u"c");
    EXPECT_EQ(text.list.Bytes(), one);
}

TEST(UndoList, TellsTheWholeRangeOfABatch) {
    Text text({});
    text.Put(0, 0, u"0123456789");
    text.list.BeginBatch();
    text.Put(8, 1, u"");     // 012345679
    text.Put(2, 1, u"abc");  // 01abc345679
    text.list.EndBatch();
    EXPECT_EQ(text.Undo()->range, (TextRange{CharPos{2}, 7}));
    EXPECT_EQ(text.text, u"0123456789");
    EXPECT_EQ(text.Redo()->range, (TextRange{CharPos{2}, 8}));
    EXPECT_EQ(text.text, u"01abc345679");
}

TEST(UndoList, AnUndoInsideABatchEndsItsEntry) {
    Text text({});
    text.Put(0, 0, u"a");
    text.list.BeginBatch();
    text.Put(1, 0, u"b");
    text.Undo();
    text.Put(1, 0, u"c");
    text.list.EndBatch();
    EXPECT_EQ(text.text, u"ac");
    text.Undo();
    EXPECT_EQ(text.text, u"a");
    EXPECT_EQ(text.UndoAll(), 1);
}

TEST(UndoList, ABatchOfNothingIsNothing) {
    Text text({});
    text.list.BeginBatch();
    text.list.EndBatch();
    EXPECT_FALSE(text.Undo());
    text.Put(0, 0, u"a");
    text.Undo();
    text.list.BeginBatch();
    text.list.EndBatch();
    EXPECT_TRUE(text.Redo()) << "and takes no redo away";
    EXPECT_FALSE(text.Redo());
}

}  // namespace
}  // namespace zorvane::undo_list_test
