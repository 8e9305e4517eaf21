#include "folders/file_commands.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "common/platform/copy_file.h"
#include "common/platform/trash.h"
#include "tests/support/folder_process.h"

namespace zorvane {
namespace {

namespace fs = std::filesystem;
constexpr FolderColumn kOriginal = FolderColumn::Original;
constexpr FolderColumn kModified = FolderColumn::Modified;

class FileCommandsTest : public testing::Test, protected FolderViewerSetup {
  protected:
    FileCommandsTest() {
        trees.WriteBoth("pair", "old", "new one");
        trees.Write(Side::Original, "left", "1");
        trees.Write(Side::Modified, "sub/right", "1");
        RunWhole();
        commands.SetRecycle([this](const std::string& path) {
            return MoveToTrash(path, fakes.folder.Path("data home"));
        });
    }
    bool Exists(Side side, const char* name) const { return fs::exists(trees.Path(side, name)); }
    CellInk Ink(std::int32_t row, FolderColumn column) {
        return viewer.Rows().Row(row)[column].ink;
    }
    FileCommands& commands = viewer.Commands();
};

TEST_F(FileCommandsTest, NothingIsDeletedWithoutAYes) {
    const std::int32_t pair = RowOf("pair");
    commands.RecycleDelete(pair, kOriginal);
    commands.PermanentDelete(pair, kModified);
    commands.DeleteSelected({0, kOriginal, viewer.RowCount() - 1, kModified});
    commands.CopyToFolder(pair, kOriginal);
    EXPECT_EQ(window.questions.size(), 4U);
    EXPECT_TRUE(Exists(Side::Original, "pair") && Exists(Side::Modified, "pair"));
    EXPECT_EQ(trees.Folder().Read("b/pair"), "new one");
    EXPECT_TRUE(window.changed.empty());
}

TEST_F(FileCommandsTest, ADeletedFileIsGreyAndTheOtherStandsAlone) {
    window.answer = true;
    const std::int32_t pair = RowOf("pair");
    commands.RecycleDelete(pair, kOriginal);
    EXPECT_FALSE(Exists(Side::Original, "pair"));
    EXPECT_EQ(fakes.folder.Read("data home/Trash/files/pair"), "old");
    EXPECT_NE(fakes.folder.Read("data home/Trash/info/pair.trashinfo").find("/a/pair\n"),
              std::string::npos);
    EXPECT_EQ(Ink(pair, kOriginal), CellInk::Gone);
    EXPECT_EQ(Ink(pair, kModified), CellInk::OnlyModified);
    EXPECT_EQ(window.questions.back(),
              "Recycle Bin Confirmation|Are you sure you want to send to the Recycle Bin \n\n" +
                  trees.Path(Side::Original, "pair"));
    commands.RecycleDelete(pair, kOriginal);
    EXPECT_EQ(window.messages.back(),
              "Error|" + trees.Path(Side::Original, "pair") + ":\n\nFile does not exist");
    commands.PermanentDelete(pair, kModified);
    EXPECT_FALSE(Exists(Side::Modified, "pair"));
    EXPECT_EQ(Ink(pair, kModified), CellInk::Gone);
}

TEST_F(FileCommandsTest, TheDeleteKeyTakesTheColumnsOfTheSelection) {
    window.answer = true;
    const std::int32_t last = viewer.RowCount() - 1;
    commands.DeleteSelected({0, FolderColumn::Size, last, FolderColumn::Size});
    EXPECT_TRUE(window.questions.empty());
    commands.DeleteSelected({last, kModified, 0, kModified});
    EXPECT_TRUE(Exists(Side::Original, "pair") && Exists(Side::Original, "left"));
    EXPECT_FALSE(Exists(Side::Modified, "pair") || Exists(Side::Modified, "sub/right"));
    EXPECT_TRUE(Exists(Side::Modified, "sub"));  // a row that is no file does nothing
    commands.DeleteSelected({0, kOriginal, last, kModified});
    EXPECT_FALSE(Exists(Side::Original, "pair") || Exists(Side::Original, "left"));
    EXPECT_EQ(window.questions.size(), 2U);
}

TEST_F(FileCommandsTest, ACopyIsWholeAndKeepsTimeAndMode) {
    chmod(trees.Path(Side::Modified, "sub/right").c_str(), 0640);
    const std::int32_t right = RowOf("sub/right");
    commands.CopyToFolder(right, kModified);
    EXPECT_TRUE(window.questions.empty());  // nothing is overwritten
    struct stat copy {};
    ASSERT_EQ(stat(trees.Path(Side::Original, "sub/right").c_str(), &copy), 0);
    EXPECT_EQ(copy.st_mtim.tv_sec, 1700000000);
    EXPECT_EQ(copy.st_mode & 0777U, 0640U);
    EXPECT_EQ(viewer.Rows().Row(right)[kOriginal].text, "       right");
    EXPECT_EQ(viewer.Rows().Row(right)[kOriginal].picture, CellPicture::File);
    EXPECT_EQ(Ink(right, kModified), CellInk::Plain);

    window.answer = true;
    const std::int32_t pair = RowOf("pair");
    chmod(trees.Path(Side::Modified, "pair").c_str(), 0444);
    commands.CopyToFolder(pair, kOriginal);
    EXPECT_EQ(trees.Folder().Read("b/pair"), "new one");
    EXPECT_TRUE(window.messages.back().starts_with("Error|An error occured: "))
        << window.messages.back();
    commands.CopyToFolder(pair, kModified);
    EXPECT_EQ(trees.Folder().Read("a/pair"), "new one");
    EXPECT_EQ(std::distance(fs::directory_iterator(trees.Root(Side::Original)), {}), 3);
}

TEST_F(FileCommandsTest, OpensPairsAndFiles) {
    commands.CompareSelectedFiles(RowOf("pair"), true);
    const std::string both =
        trees.Path(Side::Original, "pair") + " " + trees.Path(Side::Modified, "pair");
    EXPECT_EQ(window.compared.back(), "new " + both);
    viewer.OpenRow(RowOf("pair"));
    EXPECT_EQ(window.compared.back(), "first " + both);
    commands.CompareSelectedFiles(RowOf("left"), false);
    commands.CompareSelectedFiles(RowOf("sub/"), false);
    commands.CompareSelectedFiles(-1, false);
    EXPECT_EQ(window.compared.size(), 2U);
    EXPECT_EQ(window.messages.size(), 1U);
    commands.Launch(RowOf("pair"), FolderColumn::Date);
    EXPECT_EQ(fakes.shell().calls.back(), "open " + trees.Path(Side::Modified, "pair"));
}

TEST(Trash, KeepsFilesOfOneNameApart) {
    const TempFolder folder;
    for (const char* bytes : {"first", "second"}) {
        const std::string path = folder.Write("a name", bytes);
        ASSERT_TRUE(MoveToTrash(path, folder.Path("home")).ok());
    }
    EXPECT_EQ(folder.Read("home/Trash/files/a name"), "first");
    EXPECT_EQ(folder.Read("home/Trash/files/a name.2"), "second");
    EXPECT_NE(folder.Read("home/Trash/info/a name.2.trashinfo").find("/a%20name\nDeletionDate=20"),
              std::string::npos);
    EXPECT_FALSE(MoveToTrash(folder.Path("none"), folder.Path("home")).ok());
}

TEST(CopyFile, LeavesTheOldOneWhenItFails) {
    const TempFolder folder;
    folder.Write("to", "old");
    EXPECT_FALSE(CopyFileKeeping(folder.Path("none"), folder.Path("to")).ok());
    EXPECT_FALSE(CopyFileKeeping("/dev/null", folder.Path("to")).ok());
    EXPECT_EQ(folder.Read("to"), "old");
    EXPECT_TRUE(CopyFileKeeping(folder.Path("to"), folder.Path("new/deep/to")).ok());
    EXPECT_EQ(folder.Read("new/deep/to"), "old");
}

}  // namespace
}  // namespace zorvane
