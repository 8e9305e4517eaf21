// `zorvane folders` and /D as users start them.
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "tests/support/folder_trees.h"
#include "tests/support/schema_check.h"
#include "tests/support/shell_run.h"

namespace zorvane {
namespace {

class FoldersCliTest : public ::testing::Test {
  protected:
    // In the folder that holds "a" and "b".
    ShellRun Run(const std::string& command) {
        const TempFolder& folder = trees.Folder();
        std::filesystem::create_directories(folder.Path("home"));
        const std::string line = "cd '" + folder.Path() + "' && env -i PATH=\"$PATH\" HOME='" +
                                 folder.Path("home") + "' LANG=C.UTF-8 sh -c '" + command +
                                 "' >out 2>err";
        return RunShell(folder, line);
    }
    ShellRun Folders(const std::string& more) {
        return Run("\"" ZORVANE_PROGRAM "\" folders a b " + more);
    }
    FolderTrees trees;
};

TEST_F(FoldersCliTest, ListsTellsAndEndsAsItFound) {
    trees.WriteBoth("same", "1", "1");
    EXPECT_EQ(Folders("-r").output, "");
    EXPECT_EQ(Folders("-r").status, 0);
    trees.SetTime(Side::Modified, "same", 5);
    EXPECT_EQ(Folders("-r").status, 0);
    EXPECT_EQ(Folders("-r --dates").output, "t  same\n");
    EXPECT_EQ(Folders("-r --dates -q").status, 1);
    trees.WriteBoth("sub/x.txt", "one two\n", "one 2\n");
    EXPECT_EQ(Folders("").status, 0) << "without -r a subfolder is not looked into";
    const ShellRun changed = Folders("-r");
    EXPECT_EQ(changed.output, "M  sub/x.txt\n");
    EXPECT_EQ(changed.error, "");
    EXPECT_EQ(changed.status, 1);
    EXPECT_EQ(Folders("-r --stat").output, "1 changed, 1 the same\n");
    EXPECT_EQ(Folders("-r -q").output, "");
    EXPECT_EQ(Folders("-r --types \"*.doc\"").status, 0);
    EXPECT_EQ(Folders("-r --color always").output, "\x1B[33mM  sub/x.txt\x1B[0m\n");
}

TEST_F(FoldersCliTest, ComparesWordsAndWritesWhatWasAskedFor) {
    trees.WriteBoth("sub/x.txt", "one two three\n", "one 2 three\n");
    trees.WriteBoth("ends.txt", "one\r\ntwo\r\n", "one\ntwo\n");
    trees.WriteBoth("broken.docx", "PK\x03\x04 no document", "PK\x03\x04 none either");
    trees.WriteBoth("picture", {"\x89P\0\r.", 5}, {"\x89P\0\n.", 5});
    trees.Write(Side::Original, "old \xE9", "bytes of a name that is no UTF-8");
    trees.Write(Side::Original, "old name", "some bytes");
    trees.Write(Side::Modified, "new name", "some bytes");
    const ShellRun run = Folders("-r --reports made/reports -o table --json j");
    EXPECT_EQ(run.status, 1) << run.error;
    EXPECT_NE(run.output.find("M  sub/x.txt  1 changed\n"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("m  ends.txt  same words\n"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("M  picture\n"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("R  old name -> new name\n"), std::string::npos) << run.output;
    const TempFolder& folder = trees.Folder();
    EXPECT_TRUE(folder.Read("made/reports/sub/x_txt.htm").starts_with("<!DOCTYPE"));
    EXPECT_FALSE(std::filesystem::exists(folder.Path("made/reports/ends_txt.htm")));
    EXPECT_NE(folder.Read("table").find("\tends.txt\ta/\tb/\t1\t0\t0\t1\t0\t0\r\n"),
              std::string::npos);
    const nlohmann::json json = nlohmann::json::parse(folder.Read("j"));
    EXPECT_EQ(SchemaCheck("zorvane-folders-1").Fault(json), "");
    EXPECT_EQ(json["counts"]["same-words"], 1);
    EXPECT_EQ(json["renamed"][0]["to"], "new name");
    for (const auto& record : json["records"]) {
        if (record["path"] == "sub/x.txt") {
            EXPECT_EQ(record["text"]["changes"], 1);
            EXPECT_EQ(record["text"]["report"], "made/reports/sub/x_txt.htm");
        }
        if (record["path"] == "broken.docx") {
            EXPECT_EQ(record["verdict"], "changed");
            EXPECT_EQ(record["text"]["compared"], false);
            EXPECT_NE(record["text"]["reason"].get<std::string>().find("broken.docx"),
                      std::string::npos);
        }
    }
    // What was found is kept for the next run, failures apart.
    EXPECT_NE(Run("\"" ZORVANE_PROGRAM "\" cache").output.find(": 2 entries"), std::string::npos);
    std::filesystem::remove(folder.Path("made/reports/sub/x_txt.htm"));
    EXPECT_EQ(Folders("-r --reports made/reports --json again").status, 1);
    EXPECT_EQ(folder.Read("again"), folder.Read("j"));
    EXPECT_TRUE(folder.Read("made/reports/sub/x_txt.htm").starts_with("<!DOCTYPE"));
    EXPECT_EQ(Run("\"" ZORVANE_PROGRAM "\" cache --clear").status, 0);
    EXPECT_EQ(Folders("-r --text --no-cache -q").status, 1);
    EXPECT_NE(Run("\"" ZORVANE_PROGRAM "\" cache").output.find(": 0 entries"), std::string::npos);
    EXPECT_EQ(Folders("-r --text --types *.TXT --json -").status, 1);
}

TEST_F(FoldersCliTest, SaysWhatItCannotDo) {
    trees.Write(Side::Original, "file", "1");
    struct FolderTroubleRow {
        const char* command;
        const char* words;
    };
    for (const FolderTroubleRow& row :
         {FolderTroubleRow{"folders a none", "none: there is no such folder"},
          {"folders a a/file", "a/file: this is a file"},
          {"folders a b -o b/t", "--output: b/t: this lies in a folder"},
          {"folders a b -o no/t", "no/t"},
          {"folders a", "MODIFIED"}}) {
        const ShellRun run = Run(std::string("\"" ZORVANE_PROGRAM "\" ") + row.command);
        EXPECT_EQ(run.status, 2) << row.command;
        EXPECT_NE(run.error.find(row.words), std::string::npos) << run.error;
    }
}

TEST_F(FoldersCliTest, NeedsFewOpenFiles) {
    std::string deep = "d";
    for (int depth = 0; depth < 60; ++depth) {
        trees.WriteBoth(deep + "/file", "1", depth == 59 ? "2" : "1");
        deep += "/d";
    }
    const ShellRun run = Run("ulimit -n 40; \"" ZORVANE_PROGRAM "\" folders a b -r");
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(run.output, "M  " + deep.substr(0, deep.size() - 1) + "file\n");
}

TEST_F(FoldersCliTest, ServesAsATwoFolderToolOfGit) {
    if (std::system("git --version > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "there is no git to ask";
    const ShellRun run = Run(
        "git init -q r && cd r && git config user.email x && git config user.name x && "
        "mkdir sub && echo one > sub/a.txt && echo same > b && git add . && git commit -qm 1 && "
        "echo two > sub/a.txt && git mv b sub/c && "
        "git config difftool.z.cmd \"\\\"" ZORVANE_PROGRAM
        "\\\" folders -r \\\"\\$LOCAL\\\" \\\"\\$REMOTE\\\"\" && "
        "git difftool --dir-diff --no-prompt -t z HEAD");
    EXPECT_EQ(run.output, "R  b -> sub/c\nM  sub/a.txt\n") << run.error;
}

}  // namespace
}  // namespace zorvane
