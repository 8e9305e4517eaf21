// What dialogs for paths begin with and give back, and how the system is named.
#include "common/picked_paths.h"

#include <gtest/gtest.h>

#include "common/platform/system_name.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

TEST(PickedPaths, AFolderBeginsWithoutTokensWildcardsAndItsLastSeparator) {
    FakePlatform fakes;
    SpecialFolders& folders = *fakes.platform.folders;
    EXPECT_EQ(sFolderDialogStart(folders, "/data/reports/"), "/data/reports");
    EXPECT_EQ(sFolderDialogStart(folders, "C:\\Data\\*.d*c"), "C:\\Data\\A.dAc");
    EXPECT_EQ(sFolderDialogStart(folders, "/"), "/");
    EXPECT_EQ(sFolderDialogStart(folders, ""), "");
    const std::string data = sFolderDialogStart(folders, "%APPDATA%/x/");
    EXPECT_EQ(data, fakes.folder.Path() + "/26/x");
}

TEST(PickedPaths, AChosenFolderEndsInASeparator) {
    EXPECT_EQ(sFolderDialogResult("/data/reports"), "/data/reports/");
    EXPECT_EQ(sFolderDialogResult("/data/"), "/data/");
    EXPECT_EQ(sFolderDialogResult("C:\\Data"), "C:\\Data\\");
    EXPECT_EQ(sFolderDialogResult("C:\\"), "C:\\");
    EXPECT_EQ(sFolderDialogResult(""), "");
    EXPECT_EQ(sFolderDialogResult(std::string_view("/data\0rest", 10)), "/data/");
}

TEST(PickedPaths, ATitleThatSavesIsToldByItsWord) {
    EXPECT_TRUE(bIsSaveTitle("SAVE report", "Save"));
    EXPECT_TRUE(bIsSaveTitle("Bericht speichern", "Speichern"));
    EXPECT_FALSE(bIsSaveTitle("Open Original", "Save"));
    EXPECT_FALSE(bIsSaveTitle("Open Original", ""));
}

TEST(SystemName, ReadsTheDistributionsOwnName) {
    EXPECT_EQ(DistributionName("NAME=\"Debian GNU/Linux\"\nPRETTY_NAME=\"Debian GNU/Linux 12 "
                               "(bookworm)\"\nID=debian\n"),
              "Debian GNU/Linux 12 (bookworm)");
    EXPECT_EQ(DistributionName("NAME=Void\n"), "Void");
    EXPECT_EQ(DistributionName("PRETTY_NAME=\"A \\\"B\\\"\"\n"), "A \"B\"");
    EXPECT_EQ(DistributionName("PRETTY_NAMES=x\nPRETTY_NAME=\n"), "");
    EXPECT_NE(OperatingSystemName().find("Linux"), std::string::npos);
}

}  // namespace
}  // namespace zorvane
