// Who may read what the program writes of private documents.
#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

class PrivateCliTest : public ::testing::Test {
  protected:
    PrivateCliTest() {
        folder_.Write("old.txt", "one\ntwo words\n");
        folder_.Write("new.txt", "one\n2 words\n");
        chmod(folder_.Path("old.txt").c_str(), 0644);
        chmod(folder_.Path("new.txt").c_str(), 0600);
    }
    // The status of a line of the shell, in which "zorvane" is the program.
    int Run(const std::string& line) {
        const std::string command =
            "cd '" + folder_.Path() +
            "' && umask 022 && zorvane() { '" ZORVANE_PROGRAM "' \"$@\"; } && " + line;
        const int status = std::system(command.c_str());
        EXPECT_TRUE(WIFEXITED(status));
        return WEXITSTATUS(status);
    }
    unsigned ModeOf(const std::string& name) {
        struct stat facts {};
        return stat(folder_.Path(name).c_str(), &facts) == 0 ? facts.st_mode & 0777U : 0U;
    }

    TempFolder folder_;
};

TEST_F(PrivateCliTest, ReportsAreAsPrivateAsTheDocuments) {
    for (const char* const inputs : {"old.txt new.txt", "new.txt old.txt"}) {
        SCOPED_TRACE(inputs);
        folder_.Write("was.html", "public");
        chmod(folder_.Path("was.html").c_str(), 0644);
        EXPECT_EQ(Run(std::string("zorvane compare -q ") + inputs +
                      " -o r.html -o r.txt -o r.csv -o r.doc -o was.html --json r.json"),
                  1);
        for (const char* const file : {"r.html", "r.txt", "r.csv", "r.doc", "r.json", "was.html"}) {
            EXPECT_EQ(ModeOf(file), 0600U) << file;
            std::filesystem::remove(folder_.Path(file));
        }
    }
    EXPECT_EQ(Run("zorvane compare -q old.txt old.txt -o r.html --json r.json"), 0);
    EXPECT_EQ(ModeOf("r.html"), 0644U);
    EXPECT_EQ(ModeOf("r.json"), 0644U);
}

TEST_F(PrivateCliTest, TextsAreAsPrivateAsTheDocument) {
    struct Row {
        const char* line;
        unsigned mode;
    };
    for (const Row& row :
         {Row{"zorvane text new.txt -o t", 0600U}, Row{"zorvane text old.txt -o t", 0644U},
          Row{"zorvane text - -o t <new.txt", 0600U},
          Row{"cat new.txt | zorvane text - -o t", 0644U}}) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(Run(row.line), 0);
        EXPECT_EQ(ModeOf("t"), row.mode);
        std::filesystem::remove(folder_.Path("t"));
    }
}

}  // namespace
}  // namespace zorvane
