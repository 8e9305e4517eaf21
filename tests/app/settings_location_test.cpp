#include "app/settings_location.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "common/installed_data.h"
#include "common/process_state.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

class SettingsLocationTest : public ::testing::Test {
  protected:
    SettingsLocationTest() : process(fakes.platform) {}
    void Put(const std::string& name, const std::string& bytes = "\"x\",\"y\"\r\n") const {
        std::filesystem::create_directories(
            std::filesystem::path(fakes.folder.Path(name)).parent_path());
        fakes.folder.Write(name, bytes);
    }
    bool Has(const std::string& name) const {
        return std::filesystem::exists(fakes.folder.Path(name));
    }
    static constexpr const char* kUser = "26/Tarnwick, Inc/Zorvane";

    FakePlatform fakes;
    ProcessState process;
};

struct SettingsPlaceRow {
    const char* name;
    const char* file;
};
TEST_F(SettingsLocationTest, FindsWhatIsInstalledFromEitherFolder) {
    // Later rows win, since what is really installed does.
    for (const SettingsPlaceRow& row :
         {SettingsPlaceRow{"beside the program", "program/help/Zorvane.html"},
          {"only built", "program/share/zorvane/help/Zorvane.html"},
          {"installed", "share/zorvane/help/Zorvane.html"}}) {
        SCOPED_TRACE(row.name);
        Put(row.file);
        EXPECT_EQ(InstalledData(*process.platform.folders, "help/Zorvane.html"),
                  fakes.folder.Path(row.file));
    }
    EXPECT_EQ(InstalledData(*process.platform.folders, "none"),
              fakes.folder.Path("share/zorvane/none"));
}

TEST_F(SettingsLocationTest, CopiesTheLanguagesOnceAndLeavesWhatIsThere) {
    Put("share/zorvane/Languages/German-Zorvane.txt");
    std::filesystem::permissions(fakes.folder.Path("share/zorvane/Languages/German-Zorvane.txt"),
                                 std::filesystem::perms::owner_read);
    const std::string copy = std::string(kUser) + "/Languages/German-Zorvane.txt";
    InstallUserData(process);
    ASSERT_TRUE(Has(copy));
    EXPECT_NE(std::filesystem::status(fakes.folder.Path(copy)).permissions() &
                  std::filesystem::perms::owner_write,
              std::filesystem::perms::none)
        << "it grows while the program runs";
    // An update brings new files, and the user's stay as they are.
    const std::string grown = "\"x\",\"z\"\r\n\"asked\"\r\n";
    Put(copy, grown);
    std::filesystem::remove(fakes.folder.Path("share/zorvane/Languages/German-Zorvane.txt"));
    Put("share/zorvane/Languages/German-Zorvane.txt", "\"x\",\"new\"\r\n");
    Put("share/zorvane/Languages/Dutch-Zorvane.txt");
    InstallUserData(process);
    EXPECT_EQ(fakes.folder.Read(copy), grown);
    EXPECT_FALSE(Has(std::string(kUser) + "/Languages/Dutch-Zorvane.txt"));
    std::filesystem::remove_all(fakes.folder.Path(std::string(kUser) + "/Languages"));
    InstallUserData(process);
    EXPECT_FALSE(Has(copy)) << "a second start copies nothing";
}

TEST_F(SettingsLocationTest, LeavesLanguagesOfTheUserAlone) {
    Put("share/zorvane/Languages/German-Zorvane.txt");
    Put(std::string(kUser) + "/Languages/Dutch-Zorvane.txt");
    InstallUserData(process);
    EXPECT_FALSE(Has(std::string(kUser) + "/Languages/German-Zorvane.txt"));
}

TEST_F(SettingsLocationTest, WithoutInstalledLanguagesTheStartGoesOn) {
    InstallUserData(process);
    EXPECT_EQ(process.platform.registry->Get("Settings", "bInstalled", ""), "TRUE");
}

struct HelpRow {
    const char* language;
    const char* help;
    const char* quick_start;
};
TEST_F(SettingsLocationTest, HelpFollowsTheLanguage) {
    Put("share/zorvane/Zorvane_QuickStart_English.rtf");
    Put("share/zorvane/Zorvane_QuickStart_Japanese.rtf");
    Put("share/zorvane/help/Zorvane-German.html");
    for (const HelpRow& row :
         {HelpRow{"English", "Zorvane.html", "Zorvane_QuickStart_English.rtf"},
          {"German", "Zorvane-German.html", "Zorvane_QuickStart_English.rtf"},
          {"Japanese", "Zorvane-Japanese.html", "Zorvane_QuickStart_Japanese.rtf"}}) {
        SCOPED_TRACE(row.language);
        process.translator.gsLanguage = row.language;
        SetupHelpFiles(process);
        EXPECT_EQ(process.sHelpFile, fakes.folder.Path("share/zorvane/help/") + row.help);
        EXPECT_EQ(process.sQuickStartFile, fakes.folder.Path("share/zorvane/") + row.quick_start);
    }
}

TEST_F(SettingsLocationTest, ALockedFileIsToldAndStillRead) {
    const std::string file = std::string(kUser) + "/Zorvane.INI";
    Put(file, "[S]\r\nk=v\r\n");
    const int held = open((fakes.folder.Path(file) + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    testing::internal::CaptureStderr();
    LocateSettingsFile(process, std::chrono::milliseconds(20));
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_NE(told.find("Settings cannot be saved, another program keeps them locked: "),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("Zorvane.INI"), std::string::npos);
    EXPECT_EQ(process.settings->Read("S", "k", ""), "v");
    process.settings->Write("S", "k", "w");
    EXPECT_FALSE(process.settings->Flush().ok()) << "at once: it has waited before";
    close(held);
    EXPECT_TRUE(process.settings->Flush().ok());
    EXPECT_EQ(fakes.folder.Read(file), "[S]\r\nk=w\r\n");
}

}  // namespace
}  // namespace zorvane
