#include "compare/document/text_selection.h"

#include <gtest/gtest.h>

#include "compare/document/memory_editor.h"
#include "tests/support/printers.h"

namespace zorvane::text_selection_test {
namespace {

struct MoveRow {
    const char* name;
    std::int32_t anchor;
    std::int32_t caret;
    TextRange edit;
    const char16_t* put;
    std::int32_t anchor_then;
    std::int32_t caret_then;
};
// In "0123", a break, "6789".
const MoveRow kMoveRows[] = {
    {"in front", 2, 7, {CharPos{0}, 1}, u"abc", 4, 9},
    {"behind", 2, 7, {CharPos{8}, 1}, u"", 2, 7},
    {"inside", 2, 7, {CharPos{3}, 0}, u"ab", 2, 9},
    {"over an end", 2, 7, {CharPos{6}, 3}, u"", 2, 6},
    {"over an end, and more comes", 2, 7, {CharPos{6}, 3}, u"abcde", 2, 7},
    {"over all of it", 2, 7, {CharPos{0}, 10}, u"a", 1, 1},
    {"at the caret, which stays", 7, 7, {CharPos{7}, 0}, u"ab", 7, 7},
    {"at the begin of a selection", 2, 7, {CharPos{2}, 0}, u"ab", 4, 9},
    {"at its end", 2, 7, {CharPos{7}, 0}, u"ab", 2, 7},
    {"turned round: at its begin", 7, 2, {CharPos{2}, 0}, u"ab", 9, 4},
    {"turned round: at its end", 7, 2, {CharPos{7}, 0}, u"ab", 7, 2},
    {"ends at the caret", 7, 7, {CharPos{6}, 1}, u"abc", 9, 9},
    {"takes the text away", 10, 12, {CharPos{4}, 6}, u"", 4, 6},
};
TEST(TextSelection, MovesWithEditsOfOthers) {
    for (const MoveRow& row : kMoveRows) {
        SCOPED_TRACE(row.name);
        MemoryEditor editor;
        editor.SetText(u"0123\r\n6789");
        TextSelection selection(editor);
        selection.Select(CharPos{row.anchor}, CharPos{row.caret});
        const TextRange put = editor.Replace(row.edit, row.put);
        selection.Replaced(row.edit.first, row.edit.length, put.length);
        EXPECT_EQ(selection.Anchor(), CharPos{row.anchor_then});
        EXPECT_EQ(selection.Caret(), CharPos{row.caret_then});
    }
}

TEST(TextSelection, IsAlwaysClipped) {
    MemoryEditor editor;
    editor.SetText(u"ab\r\nc");
    TextSelection selection(editor);
    selection.MoveTo(CharPos{3});
    EXPECT_EQ(selection.Caret(), CharPos{2}) << "never inside a break";
    selection.MoveTo(CharPos{99});
    EXPECT_EQ(selection.Caret(), CharPos{5}) << "a caret stands in the text";
    selection.Select(CharPos{3}, CharPos{99});
    EXPECT_EQ(selection.Range(), TextRange::Between(CharPos{2}, CharPos{7}))
        << "a selection takes the break behind it";
    selection.ExtendTo(CharPos{-1});
    EXPECT_EQ(selection.Range(), TextRange::Between(CharPos{0}, CharPos{2}));
    EXPECT_EQ(selection.Anchor(), CharPos{2});
    editor.SetText(u"\r\n");
    selection.Reset();
    EXPECT_EQ(selection.Range(), TextRange::Between(CharPos{0}, CharPos{2}));
}

TEST(TextSelection, ForgetsTheWantedXWithAMove) {
    MemoryEditor editor;
    editor.SetText(u"abc");
    TextSelection selection(editor);
    selection.MoveTo(CharPos{1});
    selection.SetWantedX(40.5);
    selection.Replaced(CharPos{2}, 1, 0);
    EXPECT_EQ(selection.WantedX(), 40.5) << "an edit behind the caret is none of it";
    selection.Replaced(CharPos{0}, 0, 0);
    EXPECT_EQ(selection.WantedX(), 40.5);
    selection.Replaced(CharPos{0}, 1, 0);
    EXPECT_EQ(selection.WantedX(), std::nullopt);
}

}  // namespace
}  // namespace zorvane::text_selection_test
