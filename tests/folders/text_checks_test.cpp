#include "folders/text_checks.h"

#include <gtest/gtest.h>

#include "compare/viewer_window.h"
#include "folders/report_names.h"
#include "load/conversion_service.h"
#include "tests/support/folder_process.h"

namespace zorvane {
namespace {

class Unstoppable : public RunWatcher {
  public:
    bool KeepGoing() override { return true; }
};

TEST(TextChecks, GiveOnManyThreadsWhatEachPairGivesAlone) {
    FakePlatform fakes;
    ProcessState process(fakes.platform);
    const FolderTrees trees;
    TextCheckOptions how = ReadTextCheckOptions(process);
    how.options.bIgnoreCase.SetData(true);
    std::vector<TextPair> pairs;
    for (int pair = 0; pair < 40; ++pair) {
        const std::string name = std::to_string(pair) + ".txt";
        std::string original = "First\r\nthe second line of it\r\nthird\r\n";
        std::string modified = "FIRST\r\nthe second line of it\r\nthird\r\n";
        for (int line = 0; line < pair % 4; ++line)
            modified += "added " + std::to_string(line) + "\r\n";
        if (pair % 3 == 0)
            modified.replace(modified.find("second"), 6, "2nd");
        if (pair % 5 != 4)
            trees.WriteBoth(name, original, modified);
        pairs.push_back({{trees.Path(Side::Original, name), trees.Path(Side::Modified, name)},
                         trees.Folder().Path("reports/" + std::to_string(pair) + ".htm"),
                         ReportType::Html});
    }
    TextChecks checks(process, how, 4);
    for (std::size_t pair = 0; pair < pairs.size(); ++pair)
        checks.Add(static_cast<std::int32_t>(pair), pairs[pair]);
    ConversionService service(process.platform);
    Unstoppable watcher;
    for (std::size_t pair = 0; pair < pairs.size(); ++pair) {
        SCOPED_TRACE(pair);
        const TextCheck found = checks.Wait(static_cast<std::int32_t>(pair));
        EXPECT_EQ(found, CheckText(process, how, pairs[pair], service, watcher));
        if (pair % 5 == 4) {
            EXPECT_EQ(found.end, TextCheckEnd::Failed);
            EXPECT_NE(found.reason.find(pairs[pair].files.modified), std::string::npos)
                << found.reason;
            continue;
        }
        EXPECT_EQ(found.end, TextCheckEnd::Compared);
        EXPECT_EQ(found.changed, pair % 3 == 0 ? 1 : 0);
        EXPECT_EQ(found.added, pair % 4 == 0 ? 0 : 1);  // one record of one to three paragraphs
        EXPECT_EQ(found.deleted, 0);
        const bool differs = found.Differences() > 0;
        EXPECT_EQ(found.report, differs ? pairs[pair].report : "");
        EXPECT_EQ(std::filesystem::exists(pairs[pair].report), differs);
    }
}

TEST(TextChecks, WritesEachTypeOfReport) {
    FakePlatform fakes;
    ProcessState process(fakes.platform);
    const FolderTrees trees;
    trees.WriteBoth("x.txt", "one two three four\r\n", "one two three 4\r\n");
    const TextCheckOptions how = ReadTextCheckOptions(process);
    ConversionService service(process.platform);
    Unstoppable watcher;
    struct TypeRow {
        ReportType type;
        const char* begins;
    };
    for (const TypeRow& row :
         {TypeRow{ReportType::Html, "<!DOCTYPE"}, TypeRow{ReportType::Document, "{\\rtf"}}) {
        const std::string name = "r" + ReportExtensionOf(row.type);
        const TextPair pair{
            {trees.Path(Side::Original, "x.txt"), trees.Path(Side::Modified, "x.txt")},
            trees.Folder().Path(name),
            row.type};
        const TextCheck check = CheckText(process, how, pair, service, watcher);
        EXPECT_EQ(check.reason, "");
        EXPECT_TRUE(trees.Folder().Read(name).starts_with(row.begins)) << name;
    }
    const TextPair lost{{trees.Path(Side::Original, "x.txt"), trees.Path(Side::Modified, "x.txt")},
                        trees.Path(Side::Original, "x.txt/no/r.htm"),
                        ReportType::Html};
    const TextCheck check = CheckText(process, how, lost, service, watcher);
    EXPECT_EQ(check.end, TextCheckEnd::Compared);
    EXPECT_EQ(check.changed, 1);
    EXPECT_NE(check.reason, "");
    EXPECT_EQ(check.report, "");
}

TEST(TextChecks, AnAbortLeavesNobodyWaiting) {
    FakePlatform fakes;
    ProcessState process(fakes.platform);
    const FolderTrees trees;
    std::string large;
    for (int line = 0; line < 20000; ++line)
        large += "line " + std::to_string(line * 7919 % 20011) + " with some words\r\n";
    trees.WriteBoth("x.txt", large, "new\r\n" + large);
    TextPair x;
    x.files = {trees.Path(Side::Original, "x.txt"), trees.Path(Side::Modified, "x.txt")};
    TextChecks checks(process, ReadTextCheckOptions(process), 1);
    for (int pair = 0; pair < 50; ++pair)
        checks.Add(pair, x);
    checks.Abort();
    EXPECT_EQ(checks.Wait(49).end, TextCheckEnd::Aborted);
    checks.Wait(0);
    EXPECT_FALSE(checks.Wanted(50));
}

TEST(ReportNames, LieAsTheFilesDo) {
    struct NameRow {
        const char* types;
        const char* file;
        const char* expected;
    };
    const NameRow rows[] = {
        {"*.*", "/old/sub/a.txt", "/reports/sub/a_txt.htm"},
        {"*.*", "/old/makefile", "/reports/makefile_.htm"},
        {"*.txt *.doc", "/old/sub/deep/a.txt", "/reports/sub/deep/a.htm"},
        {"", "/old/a.b.c", "/reports/a.b_c.htm"},
    };
    for (const NameRow& row : rows) {
        for (const char* slash : {"", "/"})
            EXPECT_EQ(ReportFileName({std::string("/reports") + slash, std::string("/old") + slash,
                                      row.types, ".htm"},
                                     row.file),
                      row.expected);
    }
}

}  // namespace
}  // namespace zorvane
