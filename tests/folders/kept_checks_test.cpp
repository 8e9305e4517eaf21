#include "folders/kept_checks.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "tests/support/folder_process.h"

namespace zorvane {
namespace {

// Two files, and a check whose making is counted.
class KeptChecksTest : public ::testing::Test {
  protected:
    KeptChecksTest() {
        trees.WriteBoth("x.txt", "one two", "one 2");
        pair_ = {{trees.Path(Side::Original, "x.txt"), trees.Path(Side::Modified, "x.txt")},
                 trees.Folder().Path("r.htm"),
                 ReportType::Html};
    }
    TextCache Cache() const { return TextCache(trees.Folder().Path("cache")); }
    // True when the check was made anew; what it gives is looked at.
    bool Made() {
        KeptChecks checks(process, Cache(), how_);
        bool made = false;
        const TextCheck check = checks.Check(pair_, [&] {
            made = true;
            if (while_made_)
                while_made_();
            if (!pair_.report.empty() && result_.Differences() > 0)
                trees.Folder().Write("r.htm", "the report");
            return Result();
        });
        EXPECT_EQ(check, Result());
        EXPECT_EQ(checks.Hits(), made ? 0 : 1);
        return made;
    }
    TextCheck Result() const {
        TextCheck result = result_;
        if (result.end == TextCheckEnd::Compared && result.Differences() > 0)
            result.report = pair_.report;
        return result;
    }
    FakePlatform fakes;
    ProcessState process{fakes.platform};
    FolderTrees trees;
    TextCheckOptions how_ = ReadTextCheckOptions(process);
    TextPair pair_;
    TextCheck result_{TextCheckEnd::Compared, 1, 2, 3, 4, "", ""};
    std::function<void()> while_made_;
};

TEST_F(KeptChecksTest, AreMadeAnewWhereAnythingDiffersThatTheyDependOn) {
    struct ChangeRow {
        const char* name;
        std::function<void()> change;
    };
    const ChangeRow rows[] = {
        {"original", [&] { trees.Write(Side::Original, "x.txt", "One two"); }},
        {"modified", [&] { trees.Write(Side::Modified, "x.txt", "one 3"); }},
        {"the sides", [&] { std::swap(pair_.files.original, pair_.files.modified); }},
        {"option", [&] { how_.options.bIgnoreCase.SetData(true); }},
        {"setting", [&] { how_.settings.bReportHTMLShowHighDetailSummary ^= true; }},
        {"moves", [&] { how_.find_moves = false; }},
        {"what is text", [&] { how_.TextFileExtensions.AddUniqueItemToCollection("xyz"); }},
        {"title of the report", [&] { how_.title = "T"; }},
        {"type of the report", [&] { pair_.report_type = ReportType::Text; }},
        {"date in the report", [&] { trees.SetTime(Side::Original, "x.txt", 86400 * 40); }},
        {"name in the report",
         [&] {
             trees.Write(Side::Original, "y.txt", "One two");
             pair_.files.original = trees.Path(Side::Original, "y.txt");
         }},
        {"no report", [&] { pair_.report.clear(); }},
        {"type of a file",
         [&] {
             trees.Write(Side::Original, "y.htm", "One two");
             pair_.files.original = trees.Path(Side::Original, "y.htm");
         }},
    };
    EXPECT_TRUE(Made());
    EXPECT_FALSE(Made());
    for (const ChangeRow& row : rows) {
        SCOPED_TRACE(row.name);
        row.change();
        result_.changed += 1;  // a kept one would be told from it
        EXPECT_TRUE(Made());
        EXPECT_FALSE(Made());
    }
    // Without a report neither a name nor a date matters.
    trees.SetTime(Side::Original, "y.htm", 86400 * 50);
    EXPECT_FALSE(Made());
    trees.Write(Side::Original, "z.HTM", "One two");
    pair_.files.original = trees.Path(Side::Original, "z.HTM");
    EXPECT_FALSE(Made());
}

TEST_F(KeptChecksTest, PutTheReportWhereItIsMissingOrAnother) {
    EXPECT_TRUE(Made());
    const TempFolder& folder = trees.Folder();
    const auto written = std::filesystem::last_write_time(pair_.report);
    EXPECT_FALSE(Made());
    EXPECT_EQ(std::filesystem::last_write_time(pair_.report), written) << "it stood there";
    folder.Write("r.htm", "of somebody else's");
    EXPECT_FALSE(Made());
    EXPECT_EQ(folder.Read("r.htm"), "the report");
    std::filesystem::remove(pair_.report);
    EXPECT_FALSE(Made());
    EXPECT_EQ(folder.Read("r.htm"), "the report");
    std::filesystem::remove(pair_.report);
    std::filesystem::create_directory(pair_.report);  // nothing can be put there
    bool made = false;
    KeptChecks(process, Cache(), how_).Check(pair_, [&] {
        made = true;
        return TextCheck();
    });
    EXPECT_TRUE(made) << "the making tells why it cannot be written";
}

TEST_F(KeptChecksTest, HoldNothingThatMayBeWrong) {
    pair_.report.clear();
    while_made_ = [&] { trees.Write(Side::Original, "x.txt", "other words"); };
    EXPECT_TRUE(Made());
    while_made_ = nullptr;
    trees.Write(Side::Original, "x.txt", "one two");
    EXPECT_TRUE(Made()) << "what was compared may be what stood there meanwhile";
    EXPECT_FALSE(Made());
    how_.options.sDOCPassword_TO_Original.SetData("secret");
    EXPECT_TRUE(Made());
    EXPECT_TRUE(Made());
    how_.options.sDOCPassword_TO_Original.SetData("");
    how_.title = "T";
    result_.end = TextCheckEnd::Failed;
    EXPECT_TRUE(Made());
    EXPECT_TRUE(Made());
}

}  // namespace
}  // namespace zorvane
