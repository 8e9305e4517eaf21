// Folder compare by the fixed names of the engine.
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "compare/engine/vestrel_x.h"
#include "tests/support/folder_trees.h"

namespace zorvane {
namespace {

class NotedEvents : public FolderCompareEvents {
  public:
    void OnFolderCompareStarted() override { ++started; }
    void OnFolderCompareError(std::int32_t code, const std::string& message) override {
        errors.push_back(std::to_string(code) + " " + message);
    }
    int started = 0;
    std::vector<std::string> errors;
};

TEST(VestrelXFolders, GivesRecordsByTheirFixedNames) {
    const FolderTrees trees;
    trees.WriteBoth("x", "1", "22");
    trees.Write(Side::Original, "sub/only", "1");
    NotedEvents events;
    VestrelX engine;
    engine.putMasterFolder(trees.Root(Side::Original));
    engine.putSourceFolder(trees.Root(Side::Modified) + "/");
    engine.putFileTypes("*.*");
    engine.putFolderEvents(&events);
    EXPECT_EQ(engine.getRecordCount(), 0);
    engine.StartFolderCompare();
    engine.Folders().Join();
    EXPECT_FALSE(engine.getBusy());
    ASSERT_EQ(engine.getRecordCount(), 3);
    const std::string a = trees.Root(Side::Original) + "/";
    const std::string b = trees.Root(Side::Modified) + "/";
    EXPECT_EQ(engine.GetFolderRecord(0), (FolderRecord{0, "x", a, b, 1, 0, 0, -1, 0, 1}));
    EXPECT_EQ(engine.GetFolderRecord(1),
              (FolderRecord{1, "", a + "sub/", b + "sub/", 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(engine.GetFolderRecord(2),
              (FolderRecord{2, "only", a + "sub/", b + "sub/", 1, 0, 1, 0, 0, 0}));
    EXPECT_EQ(engine.GetFolderRecord(3), std::nullopt);
    EXPECT_EQ(engine.GetFolderRecord(-1), std::nullopt);
    engine.putShowOnlyInMaster(false);
    engine.StartFolderCompare();
    engine.Folders().Join();
    EXPECT_EQ(engine.getRecordCount(), 1);
    engine.putMasterFolder(a + "none");
    engine.StartFolderCompare();
    engine.ReleaseEngine();
    EXPECT_EQ(engine.getRecordCount(), 0);
    EXPECT_EQ(events.started, 3);
    EXPECT_EQ(events.errors,
              (std::vector<std::string>{"2 " + a + "none: No such file or directory"}));
}

}  // namespace
}  // namespace zorvane
