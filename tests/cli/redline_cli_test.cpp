// Tracked changes as users ask for them.
#include <filesystem>

#include "tests/support/shell_run.h"
#include "tests/support/word_file.h"

namespace zorvane {
namespace {

class RedlineCliTest : public ::testing::Test {
  protected:
    RedlineCliTest() {
        folder_.Write("old.docx", Document("The ferry leaves at nine."));
        folder_.Write("new.docx", Document("The ferry leaves at ten."));
        folder_.Write("new.rtf", "{\\rtf1 The ferry leaves at ten.\\par}");
        folder_.Write("tracked.docx",
                      MakeWordFile({"<w:p><w:ins w:id=\"1\" w:author=\"a\"><w:r><w:t>The ferry "
                                    "leaves.</w:t></w:r></w:ins></w:p>"}));
    }
    static std::string Document(const std::string& text) {
        return MakeWordFile({"<w:p><w:r><w:t>" + text + "</w:t></w:r></w:p>"});
    }
    ShellRun Run(const std::string& arguments, const std::string& variables = {}) {
        return RunShell(folder_, "cd '" + folder_.Path() + "' && " + variables +
                                     " '" ZORVANE_PROGRAM "' compare " + arguments + " >out 2>err");
    }
    bool Exists(const std::string& name) { return std::filesystem::exists(folder_.Path(name)); }

    TempFolder folder_;
};

TEST_F(RedlineCliTest, WritesVerifiedRedlinesOfAnyPair) {
    folder_.Write("rows.rtf",
                  "{\\rtf1\\trowd\\cellx99 The ferry\\cell\\row\\pard leaves at ten.\\par}");
    folder_.Write("last.rtf",
                  "{\\rtf1 Times\\par\\trowd\\cellx99\\cellx200 at\\cell ten\\cell\\row}");
    folder_.Write("times.csv", "ferry,time\nislander,at ten\n");
    folder_.Write("list.md", "Times\n\n1. at ten\n2. at noon\n");
    folder_.Write(
        "list.rtf",
        "{\\rtf1 Times\\par{\\pntext\\b 1.\\tab}{\\*\\pn\\pndec{\\pntxta.}}at \\{ten\\}\\par}");
    folder_.Write("drawn.docx", MakeWordFile({"<w:p><w:r><w:drawing/></w:r></w:p>"}));
    struct Row {
        const char* original;
        const char* modified;
        const char* redline;
        const char* told = "insertions ";
    };
    for (const Row& row :
         {Row{"old.docx", "new.docx", "red.docx"}, Row{"old.docx", "new.rtf", "red.docx"},
          Row{"old.docx", "new.docx", "red.odt"}, Row{"rows.rtf", "new.rtf", "red.odt"},
          Row{"new.rtf", "last.rtf", "red.docx"}, Row{"new.rtf", "last.rtf", "red.odt"},
          Row{"new.rtf", "times.csv", "red.docx"}, Row{"old.docx", "times.csv", "red.odt"},
          Row{"old.docx", "list.md", "red.odt"}, Row{"drawn.docx", "list.md", "red.docx"},
          // As text it would have four.
          Row{"list.md", "list.rtf", "red.docx", "reject = original: 3 paragraphs"},
          Row{"old.docx", "list.rtf", "red.odt"}}) {
        SCOPED_TRACE(std::string(row.modified) + " " + row.redline);
        const std::string redline(row.redline);
        const ShellRun run = Run(std::string(row.original) + " " + row.modified + " -o " + redline);
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.output.find("tracked redline: verified\n"), std::string::npos) << run.error;
        EXPECT_NE(run.output.find(row.told), std::string::npos) << run.output;
        // Our readers take tracked changes as accepted.
        EXPECT_EQ(Run(redline + " " + row.modified).status, 0);
        // It is one of the two packages that the next one is written from.
        EXPECT_EQ(Run("old.docx " + redline + " -o next" + redline).status, 1);
        std::filesystem::remove(folder_.Path(redline));
    }
}

TEST_F(RedlineCliTest, PassesOptionsOn) {
    EXPECT_EQ(Run("old.docx new.docx -q -o a.docx", "SOURCE_DATE_EPOCH=1000000000").status, 1);
    EXPECT_EQ(Run("old.docx new.docx -q --revision-date 2001-09-09T01:46:40 --report-type tracked "
                  "-o b.out")
                  .status,
              1);
    EXPECT_FALSE(folder_.Read("a.docx").empty());
    EXPECT_EQ(folder_.Read("a.docx"), folder_.Read("b.out"));
    for (const char* const option : {"--author Robin", "--revision-ids 7"}) {
        EXPECT_EQ(Run("old.docx new.docx -q -o c.docx " + std::string(option),
                      "SOURCE_DATE_EPOCH=1000000000")
                      .status,
                  1);
        EXPECT_NE(folder_.Read("a.docx"), folder_.Read("c.docx")) << option;
    }
    EXPECT_NE(Run("old.docx new.docx --no-verify -o d.docx").output.find("not verified"),
              std::string::npos);
    const std::string json = Run("old.docx new.docx --json - -o e.docx -o e.odt").output;
    const std::size_t first = json.find("{\"verified\":true,\"original_sha256\":\"");
    EXPECT_EQ(json.front(), '{');
    EXPECT_NE(json.find("{\"verified\":true,", first + 1), std::string::npos) << json;
    EXPECT_NE(json.find("\"marks\":{\"insertions\":1,\"deletions\":1,", first), std::string::npos);
    EXPECT_NE(json.find("\"accepted\":{\"paragraphs\":1,\"tables\":0,"), std::string::npos) << json;
    EXPECT_TRUE(json.ends_with("\"accepted_before\":0}\n]}\n")) << json;
}

TEST_F(RedlineCliTest, WritesNothingWhereItCannot) {
    struct Row {
        const char* arguments;
        const char* said;
    };
    for (const Row& row : {Row{"old.docx tracked.docx --keep-tracked -o red.docx", "hold tracked"},
                           Row{"old.docx new.docx --revision-date today -o red.docx", "no date of"},
                           Row{"old.docx new.docx -o none/red.docx", "none/red.docx"},
                           Row{"old.docx new.docx -o new.docx", "new.docx"}}) {
        SCOPED_TRACE(row.arguments);
        const std::string before = folder_.Read("new.docx");
        const ShellRun run = Run(row.arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_NE(run.error.find(row.said), std::string::npos) << run.error;
        EXPECT_FALSE(Exists("red.docx"));
        EXPECT_EQ(folder_.Read("new.docx"), before);
    }
}

}  // namespace
}  // namespace zorvane
