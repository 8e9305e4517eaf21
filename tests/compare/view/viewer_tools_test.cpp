// What a viewer's user does beside the compare, through the viewer.
#include "compare/view/viewer_tools.h"

#include <gtest/gtest.h>

#include "compare/compare_selected_text.h"
#include "tests/support/printers.h"
#include "tests/support/viewer_fixture.h"

namespace zorvane::viewer_tools_test {
namespace {

using ViewerToolsTest = ViewerTest;

const char* const kThreeOld = "a oak\nb\nc oak\nd\ne oak";
const char* const kThreeNew = "1 oak\nb\n2 oak\nd\n3 oak";

TEST_F(ViewerToolsTest, GoesToANumber) {
    viewer.tbShowDifferenceUnknown();
    EXPECT_EQ(window.messages, (std::vector<std::string>{"No differences to go to"}));
    ASSERT_TRUE(Compare(kThreeOld, kThreeNew, View::SideBySide));
    viewer.ShowDifferenceFirst();
    for (const std::int32_t number : {-1, 0, 4, 3}) {
        window.number = number;
        viewer.tbShowDifferenceUnknown();
        EXPECT_EQ(viewer.mlCurrentDifference(), number == 3 ? 3 : 1) << number;
    }
    EXPECT_EQ(window.messages.size(), 1U);
}

TEST_F(ViewerToolsTest, ShowsADifferenceInEveryEditor) {
    ASSERT_TRUE(Compare(kThreeOld, kThreeNew, View::SideBySide));
    window.revealed.clear();
    viewer.ShowDifferenceNext();
    using enum ShownEditor;
    EXPECT_EQ(window.revealed,
              (std::vector<ShownEditor>{Original, Modified, OriginalDiffFinal, ModifiedDiffFinal}));
    EXPECT_EQ(window.focus, Original);
    ASSERT_TRUE(Compare(kThreeOld, kThreeNew, View::AllInOne));
    window.revealed.clear();
    window.focus = Changes;
    viewer.SelectListItem(1);
    EXPECT_EQ(window.revealed, (std::vector<ShownEditor>{Original, Modified, AllInOneDiff}));
    EXPECT_EQ(window.focus, Changes) << "the list keeps it";
}

// A window answers a filter that the viewer sets as if its button had been pressed.
TEST_F(ViewerToolsTest, AFilterThatComesBackIsNoChoice) {
    window.on_filter = [this](ViewFilter) { viewer.ShowFilter(ViewFilter::Deletions); };
    ASSERT_TRUE(Compare("a\nb oak\nc", "a\nx oak\nc\nd", View::SideBySide));
    viewer.cmdChangeViewFormat_Click();
    EXPECT_EQ(window.focus, ShownEditor::Changes) << "nothing was chosen";
    viewer.ShowFilter(ViewFilter::Additions);
    EXPECT_EQ(window.focus, ShownEditor::Additions);
    EXPECT_EQ(window.status[StatusPanel::Main], "1: Number of additions");
}

TEST_F(ViewerToolsTest, TheScrollLocksAreTwoSwitches) {
    ViewerTools& tools = viewer.Tools();
    EXPECT_EQ(tools.Scrolls().TextSynchType(), 1) << "of a fresh settings file";
    tools.mnuScrollLockVertical_Click();
    EXPECT_EQ(tools.Scrolls().TextSynchType(), 0);
    tools.mnuScrollLockVertical_Click();
    tools.mnuScrollLockHorizontal_Click();
    EXPECT_EQ(tools.Scrolls().TextSynchType(), 3);
    EXPECT_EQ(window.scroll_locks, std::make_pair(true, true));
    tools.mnuScrollLockVertical_Click();
    EXPECT_EQ(tools.Scrolls().TextSynchType(), 2);
    EXPECT_EQ(window.scroll_locks, std::make_pair(false, true));
    EXPECT_TRUE(tools.Scrolls().Aligned());
    tools.AlignParagraphs(false);
    EXPECT_FALSE(tools.Scrolls().Aligned() || window.aligned);
    viewer.SaveIniFile();
    frmCompareFiles again(process, request, window);
    again.Setup("1_CompareFile", true);
    EXPECT_EQ(again.Tools().Scrolls().TextSynchType(), 2) << "kept with the viewer";
}

TEST_F(ViewerToolsTest, TellsTheCaret) {
    viewer.Editors().rtbModified.editor.SetText(u"one\r\ntwo three");
    viewer.Editors().rtbModified.editor.Select({CharPos{9}, 2});
    viewer.Tools().RefreshStatusBarItems(ShownEditor::Modified);
    EXPECT_EQ(window.status[StatusPanel::Caret], "Row: 2   Column: 4");
    viewer.Tools().RefreshStatusBarItems(ShownEditor::Additions);
    EXPECT_EQ(window.status[StatusPanel::Caret], "Row: 1   Column: 0");
}

TEST_F(ViewerToolsTest, ChangesTheLineOfWhatIsShown) {
    ASSERT_TRUE(Compare("a\nb\nc\nd", "a\nb\nc\nd", View::SideBySide));
    ViewerEditors& editors = viewer.Editors();
    const auto places = [&] {
        std::vector<std::int32_t> found;
        for (const ShownDocument* entry :
             {&editors.rtbOriginal, &editors.rtbModified, &editors.rtbOriginalDiffFinal,
              &editors.rtbModifiedDiffFinal, &editors.rtbAIODiff})
            found.push_back(entry->editor.Selection().first.value);
        return found;
    };
    editors.rtbAIODiff.editor.SetText(u"a\r\nb");
    for (ShownDocument* entry : {&editors.rtbOriginal, &editors.rtbModified,
                                 &editors.rtbOriginalDiffFinal, &editors.rtbModifiedDiffFinal})
        entry->editor.Select({CharPos{3}, 0});
    viewer.Tools().ChangeCurrentLine(false, View::SideBySide);
    EXPECT_EQ(places(), (std::vector<std::int32_t>{6, 6, 6, 6, 0}));
    viewer.Tools().ChangeCurrentLine(false, View::AllInOne);
    EXPECT_EQ(places(), (std::vector<std::int32_t>{9, 9, 6, 6, 3}));
    viewer.Tools().ChangeCurrentLine(true, View::SideBySide);
    EXPECT_EQ(places(), (std::vector<std::int32_t>{6, 6, 3, 3, 3}));
}

TEST_F(ViewerToolsTest, FindsInTheEditorInUse) {
    ASSERT_TRUE(Compare(kThreeOld, kThreeNew, View::SideBySide));
    viewer.Tools().ShowFindReplace(ShownEditor::ModifiedDiffFinal);
    ASSERT_NE(window.find, nullptr);
    window.find->Text1 = "OAK";
    Editor& editor = viewer.Editors().rtbModifiedDiffFinal.editor;
    editor.Select({CharPos{0}, 0});
    EXPECT_TRUE(window.find->Command1_Click());
    EXPECT_EQ(editor.Selection(), (TextRange{CharPos{2}, 3}));
    window.find->Text1 = "none";
    EXPECT_FALSE(window.find->Command1_Click());
    EXPECT_EQ(window.messages, (std::vector<std::string>{"Nothing found"}));
}

TEST_F(ViewerToolsTest, ComparesWhatIsSelected) {
    ASSERT_TRUE(Compare("{\\rtf1 one {\\b two} three}", "{\\rtf1 one {\\b 2} three}",
                        View::SideBySide, "rtf"));
    viewer.Options().bIgnoreCase.SetData(true);
    viewer.Editors().rtbOriginal.editor.Select({CharPos{4}, 9});
    viewer.Editors().rtbModified.editor.Select({CharPos{4}, 7});
    RecordingWindow other_window;
    frmCompareFiles other(process, request, other_window);
    other.Setup("2_CompareFile", true);
    CompareSelectedText(viewer, [] { return nullptr; });
    CompareSelectedText(viewer, [&] { return &other; });
    EXPECT_EQ(Notation(other.Editors().rtbOriginal.editor.Rich()), "[b:two] three");
    EXPECT_EQ(Readable(other.Editors().rtbModified.editor.Text()), "2 three");
    EXPECT_TRUE(other.Options().bIgnoreCase.Data());
    EXPECT_EQ(other.Options().sSectionName, "2_CompareFile") << "settings of its own";
    EXPECT_GT(other.Differences().Count(), 0) << "it was compared";
    EXPECT_EQ(Readable(viewer.Editors().rtbOriginal.editor.Text()), "one two three");
}

TEST_F(ViewerToolsTest, RowsFollowTheRun) {
    ASSERT_TRUE(Compare("a\nb\nc oak", "a\nc elm oak", View::SideBySide));
    EXPECT_EQ(viewer.Tools().EditorRows().Rows(), 3);
    EXPECT_EQ(viewer.Tools().EditorRows().Row(1).kind, RowKind::OneSided);
}

}  // namespace
}  // namespace zorvane::viewer_tools_test
