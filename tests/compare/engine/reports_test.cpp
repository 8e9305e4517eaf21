#include <algorithm>
#include <sstream>

#include "common/base/text_encoding.h"
#include "compare/engine/vestrel_x.h"
#include "tests/support/compared_pair.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

// ---- text ----

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::stringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        EXPECT_TRUE(line.ends_with('\r')) << line;
        line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

TEST(TextReport, ShowsRecordsInOrder) {
    const ComparedPair pair({"a b", "gone\x1B\x1F ~\x7F\u009F\u00A0", "d"},
                            {"a\tc", "d", "more\amost"});
    ReportModel model = pair.Model();
    model.title = "Title";
    model.names.original = "a\xFF";
    const std::vector<std::string> expected = {"Title",
                                               "=====",
                                               "",
                                               "Original: a\uFFFD",
                                               "Modified: new.txt",
                                               "",
                                               "3 differences: 1 change, 1 addition, 1 deletion.",
                                               "",
                                               "<<<1>>> Change at paragraph 1",
                                               "- [-a b-]",
                                               "+ {+a  c+}",
                                               "",
                                               "<<<2>>> Deletion of 1 paragraph at paragraph 2",
                                               "- gone\uFFFD\uFFFD ~\uFFFD\uFFFD\u00A0",
                                               "",
                                               "<<<3>>> Addition of 1 paragraph behind paragraph 3",
                                               "+ more  most"};
    EXPECT_EQ(LinesOf(WriteTextReport(model)), expected);
}

TEST(TextReport, WrapsAtEightyColumns) {
    const std::string exact(78, 'x');
    std::string words;
    for (int i = 0; i < 30; ++i)
        words += "word" + std::to_string(i) + " ";
    std::string han;
    for (int i = 0; i < 60; ++i)
        han += "文";
    const ComparedPair pair({}, {exact, exact + "y", words, han});
    const std::vector<std::string> lines = LinesOf(WriteTextReport(pair.Model()));
    const auto added = std::find_if(lines.begin(), lines.end(),
                                    [](const std::string& line) { return line.starts_with("+"); });
    ASSERT_GE(lines.end() - added, 8);
    EXPECT_EQ(added[0], "+ " + exact);
    EXPECT_EQ(added[1], "+ " + exact);
    EXPECT_EQ(added[2], "  y");
    EXPECT_TRUE(added[3].ends_with("word11")) << added[3];
    EXPECT_TRUE(added[4].starts_with("  word12 ")) << added[4];
    EXPECT_EQ(added[lines.end() - added - 2].size(), 2U + 39U * 3U);  // two columns each
    EXPECT_EQ(added[lines.end() - added - 1].size(), 2U + 21U * 3U);
}

TEST(TextReport, TakesAHugeParagraphInLinearTime) {
    const ComparedPair pair({}, {std::string(2'000'000, 'x')});
    EXPECT_GT(WriteTextReport(pair.Model()).size(), 2'000'000U);
}

// ---- comma-delimited ----

// Reads by RFC 4180.
std::vector<TextLines> CsvRows(const std::string& text) {
    std::vector<TextLines> rows(1);
    std::string field;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (character == '"' && quoted && text.compare(at, 2, "\"\"") == 0) {
            field += text[at++];
        } else if (character == '"') {
            quoted = !quoted;
        } else if (!quoted && (character == ',' || character == '\n')) {
            rows.back().push_back(std::exchange(field, ""));
            if (character == '\n')
                rows.emplace_back();
        } else if (quoted || character != '\r') {
            field += character;
        }
    }
    rows.pop_back();
    return rows;
}

TEST(CsvReport, IsReadBackByASpreadsheet) {
    const ComparedPair pair({"a \"b\", c", "=1+1", "same"}, {"x\v\x01", "same", "-5", "@y\a"});
    const std::string bytes = WriteCsvReport(pair.Model());
    ASSERT_TRUE(bytes.starts_with("\xEF\xBB\xBF"));
    const std::vector<TextLines> expected = {
        {"Number", "Type", "Original first", "Original last", "Modified first", "Modified last",
         "Original text", "Modified text", "Moved with"},
        {"1", "Deletion", "1", "2", "0", "0", "a \"b\", c\n=1+1", "", ""},
        {"2", "Addition", "2", "2", "1", "1", "", "x\n\uFFFD", ""},
        {"3", "Addition", "3", "3", "3", "4", "", "'-5\n@y\t", ""}};
    EXPECT_EQ(CsvRows(bytes.substr(3)), expected);
    const ComparedPair deleted({"=cmd", "b"}, {"b"});
    EXPECT_EQ(CsvRows(WriteCsvReport(deleted.Model())).at(1),
              (TextLines{"1", "Deletion", "1", "1", "0", "0", "'=cmd", "", ""}));
}

// ---- the engine's call ----

TEST(CreateEngineReport, TellsWhatWentWrong) {
    const TempFolder folder;
    VestrelX engine;
    engine.putMasterFile(folder.Write("m", "a\r\n"));
    engine.putSourceFile(folder.Write("s", "b\r\n"));
    ASSERT_TRUE(engine.Compare().ok());
    const std::string target = folder.Path("report");
    const auto result = [&](const std::string& file, ReportType type = ReportType::Text) {
        return engine.CreateEngineReport(file, type, 0);
    };
    EXPECT_EQ(result(target), ReportResult::Ok);
    EXPECT_NE(folder.Read("report").find("- a\r\n"), std::string::npos);
    DocumentLook bold;
    bold.words.push_back({.begin = 0, .bold = true});
    engine.putDocumentLooks({bold, bold});
    EXPECT_EQ(result(target, ReportType::Html), ReportResult::Ok);
    EXPECT_NE(folder.Read("report").find(" rich"), std::string::npos);
    EXPECT_EQ(result(target, ReportType::Document), ReportResult::TargetNotCreated);
    EXPECT_EQ(result(folder.Path("none/report")), ReportResult::TargetNotCreated);
    EXPECT_EQ(result(folder.Path()), ReportResult::TargetNotCreated);
    EXPECT_EQ(result("/dev/full"), ReportResult::TargetNotCreated);
    engine.putSourceFile(folder.Path("gone"));
    EXPECT_EQ(result(target), ReportResult::SourceNotLoaded);
    engine.putMasterFile(folder.Path("gone"));
    EXPECT_EQ(result(target), ReportResult::MasterNotLoaded);
}

}  // namespace
}  // namespace zorvane
