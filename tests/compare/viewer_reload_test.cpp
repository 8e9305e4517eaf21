// Sides that are loaded again: by hand, and since a file changed on the disk.
#include <chrono>
#include <filesystem>

#include <gtest/gtest.h>

#include "tests/compare/viewer_files.h"

namespace zorvane::viewer_reload_test {
namespace {

using namespace std::chrono_literals;

TEST_F(FilesOfViewer, AReloadAsksAboutTheEditsThatItWouldLose) {
    constexpr std::int32_t kEdits = 0;
    constexpr std::int32_t kFiles = 1;
    constexpr std::int32_t kCancel = 2;
    constexpr const char* kBoth = "Original and Modified have";
    struct Row {
        const char* name;
        std::string_view edited;   // sides, as the begins of their files' names
        std::string_view changed;  // on the disk
        bool optimize;
        std::int32_t answer;
        const char* question;  // its begin; empty: none is asked
        std::u16string_view original;
        std::u16string_view modified;
        bool fresh;
    };
    const Row rows[] = {
        {"nothing edited", "", "om", true, kEdits, "", u"A", u"B", true},
        {"not read again", "om", "", true, kEdits, "", u"xa", u"xb", true},
        {"the other one changed", "o", "m", true, kEdits, "", u"xa", u"B", true},
        {"edits of the left", "o", "om", true, kEdits, "Original has", u"xa", u"B", true},
        {"edits of the right", "m", "om", true, kEdits, "Modified has", u"A", u"xb", true},
        {"one of two", "om", "o", true, kEdits, "Original has", u"xa", u"xb", true},
        {"both", "om", "om", true, kEdits, kBoth, u"xa", u"xb", true},
        {"always read again", "om", "", false, kEdits, kBoth, u"xa", u"xb", true},
        {"files", "om", "om", true, kFiles, kBoth, u"A", u"B", true},
        {"neither", "m", "om", true, kCancel, "Modified has", u"a", u"xb", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        viewer.Telling().manner.bSilent = false;
        viewer.Options().bReloadOnRefresh.SetData(true);
        viewer.Options().bOptimizeFileLoading.SetData(true);
        ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
        viewer.Options().bOptimizeFileLoading.SetData(row.optimize);
        for (const Side side : kBothSides) {
            const bool left = side == Side::Original;
            const char letter = left ? 'o' : 'm';
            if (row.edited.find(letter) != std::string_view::npos)
                Edit(side, u"x");
            if (row.changed.find(letter) != std::string_view::npos)
                fakes.folder.Write(left ? "o.txt" : "m.txt", left ? "A\n\n" : "B\n\n");
        }
        window.files.asked.clear();
        window.files.answer = row.answer;
        viewer.Refresh();
        const std::string asked = window.files.asked.empty() ? "" : window.files.asked.front().text;
        EXPECT_TRUE(*row.question == 0 ? asked.empty() : asked.starts_with(row.question)) << asked;
        EXPECT_LE(window.files.asked.size(), 1U);
        const auto first_line = [this](Side side) {
            const std::u16string text = Text(side).Text();
            return text.substr(0, text.find(u'\r'));
        };
        EXPECT_EQ(first_line(Side::Original), row.original);
        EXPECT_EQ(first_line(Side::Modified), row.modified);
        EXPECT_EQ(!viewer.IsStale(), row.fresh);
        // What was compared is what stands there.
        EXPECT_TRUE(!row.fresh || Left().find(ToUtf8(row.original)) != std::string::npos) << Left();
        // What was kept can still be lost.
        EXPECT_EQ(Text(Side::Original).IsModified(), row.original == u"xa");
    }
}

// Nobody is there to answer, and one side alone is asked about where one is loaded.
TEST_F(FilesOfViewer, AReloadAsksNobodyButTheUserOfItsSide) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    viewer.Options().bOptimizeFileLoading.SetData(false);
    Edit(Side::Original, u"x");
    viewer.Refresh();
    EXPECT_TRUE(window.files.asked.empty()) << "a silent viewer asks nothing";
    Edit(Side::Original, u"x");
    viewer.LoadAgain(Side::Modified);
    EXPECT_TRUE(window.files.asked.empty()) << "that side has no edits";
    viewer.LoadAgain(Side::Original);
    EXPECT_EQ(window.files.asked.size(), 1U);
    EXPECT_EQ(Text(Side::Original).Text(), u"xa\r\n");
}

TEST_F(FilesOfViewer, AFileThatSomebodyChangesIsLoadedAgain) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    LookAtDisk();
    EXPECT_TRUE(window.files.asked.empty());
    fakes.folder.Write("m.txt", "longer than it was\n");
    LookAtDisk();
    ASSERT_EQ(window.files.asked.size(), 1U) << "kept, and told once";
    EXPECT_EQ(Text(Side::Modified).Text(), u"b\r\n");
    Edit(Side::Original, u"edited ");
    Edit(Side::Modified, u"lost ");
    fakes.folder.Write("m.txt", "longer still than it was\n");
    window.files.answer = 0;
    LookAtDisk();
    ASSERT_EQ(window.files.asked.size(), 2U);
    EXPECT_NE(window.files.asked[1].text.find("would be lost"), std::string::npos);
    EXPECT_EQ(Text(Side::Modified).Text(), u"longer still than it was\r\n");
    EXPECT_FALSE(Text(Side::Modified).IsModified());
    EXPECT_EQ(Text(Side::Original).Text(), u"edited a\r\n");
    EXPECT_TRUE(Text(Side::Original).IsModified());
    EXPECT_EQ(window.status[StatusPanel::Main], "Diff View not fresh");
    EXPECT_TRUE(viewer.IsStale());
    EXPECT_EQ(viewer.LastRun(), RunEnd::Finished);
    std::filesystem::remove(fakes.folder.Path("m.txt"));
    LookAtDisk();
    EXPECT_EQ(window.files.asked.size(), 3U);
    EXPECT_TRUE(window.messages.empty()) << "what is gone is not loaded again";
    EXPECT_EQ(Text(Side::Modified).Text(), u"longer still than it was\r\n");
    viewer.RunCompare(false);
    EXPECT_NE(Right().find("longer still than it was"), std::string::npos);
    EXPECT_FALSE(viewer.IsStale());
}

// Both sides come in one run, and what the user selected meanwhile for the next run stays.
TEST_F(FilesOfViewer, BothSidesAreLoadedAgainBesideTheWindow) {
    ASSERT_TRUE(Compare("a\n", "b\n", View::SideBySide));
    viewer.RunInBackground(true);
    fakes.folder.Write("o.txt", "original anew\n");
    fakes.folder.Write("m.txt", "modified anew\n");
    const std::string next = fakes.folder.Write("next.txt", "next\n");
    viewer.Options().sFileOriginal.SetData(next);
    window.files.answer = 0;
    LookAtDisk();
    EXPECT_EQ(window.files.asked.size(), 2U);
    WaitForEnd();
    EXPECT_EQ(Text(Side::Original).Text(), u"original anew\r\n");
    EXPECT_EQ(Text(Side::Modified).Text(), u"modified anew\r\n");
    EXPECT_EQ(viewer.Options().sFileOriginal.Data(), next);
    LookAtDisk();
    EXPECT_EQ(window.files.asked.size(), 2U) << "what was loaded is watched as it was then";
}

// At whatever moment of a run the file changes: what is shown is what stands there, or it is told.
TEST_F(FilesOfViewer, AChangeDuringARunIsShownOrTold) {
    viewer.PumpEvery(0ms);
    int moments = 0;
    for (bool changed = true; changed; ++moments) {
        SCOPED_TRACE(moments);
        ASSERT_LT(moments, 2000);
        changed = false;
        int pumps = 0;
        window.files.asked.clear();
        window.on_pump = [&] {
            if (pumps++ != moments)
                return;
            changed = true;
            fakes.folder.Write("o.txt", "changed meanwhile\n");
        };
        ASSERT_TRUE(Compare("a" + std::to_string(moments) + "\n", "b\n", View::SideBySide));
        window.on_pump = nullptr;
        LookAtDisk();
        const bool shown = Text(Side::Original).Text() == u"changed meanwhile\r\n";
        EXPECT_TRUE(!changed || shown || window.files.asked.size() == 1);
    }
    EXPECT_GT(moments, 5);
}

// Each refusal has its own code and words.
}  // namespace
}  // namespace zorvane::viewer_reload_test
