#include <algorithm>
#include <sstream>

#include "common/base/text_encoding.h"
#include "tests/support/compared_pair.h"
#include "tests/support/html_page.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

constexpr std::int32_t kAllInOne = 1;
constexpr std::int32_t kSideBySide = 2;

HtmlNode Parsed(const std::string& page) {
    EXPECT_TRUE(IsValidUtf8(page));
    HtmlParser parser(page);
    HtmlNode root = parser.Run();
    EXPECT_EQ(parser.Fault(), "");
    return root;
}

// The cells of each row: numbers in `b`, text in `div`.
std::vector<std::vector<HtmlNode>> RowsOf(const HtmlNode& page) {
    std::vector<std::vector<HtmlNode>> rows;
    page.ForEach([&](const HtmlNode& node) {
        if (node.name == "div" && node.Has("\"r\""))
            rows.push_back(node.children);
    });
    return rows;
}

struct Column {
    std::vector<std::string> numbers;  // without their signs
    std::string text;
};
void Take(const HtmlNode& number, const std::string& text, Column& column) {
    const std::string shown = number.Text();
    if (!shown.empty())
        column.numbers.push_back(shown.substr(shown.find_last_of("+- ") + 1));
    column.text += text;
}

Column Expected(const Paragraphs& paragraphs) {
    Column column;
    for (const std::string& paragraph : paragraphs) {
        column.numbers.push_back(std::to_string(column.numbers.size() + 1));
        column.text += paragraph;
    }
    return column;
}

std::string WithoutBreakMarks(std::string text) {
    const std::string mark = "\u00B6";
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark))
        text.erase(at, mark.size());
    return text;
}

TEST(HtmlReportProperty, ShowsEveryParagraphOnceWithItsNumber) {
    std::mt19937 random(3);
    for (unsigned round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        const Paragraphs original = RandomParagraphs(random, random() % 50);
        const Paragraphs modified = EditedParagraphs(random, original);
        const Ignored ignored = round % 3 == 1 ? Ignored::EmptyLines : Ignored::Nothing;
        const ComparedPair pair(original, modified, ignored);
        const bool one = round % 2 == 0;
        const HtmlNode page =
            Parsed(WriteHtmlReport(pair.Model(round % 4 < 2), one ? kAllInOne : kSideBySide));
        Column left;
        Column right;
        for (const std::vector<HtmlNode>& cells : RowsOf(page)) {
            ASSERT_EQ(cells.size(), one ? 3U : 4U);
            const HtmlNode& last = cells.back();
            Take(cells[0], WithoutBreakMarks(one ? last.Text("ins") : cells[1].Text()), left);
            Take(cells[one ? 1 : 2], WithoutBreakMarks(last.Text(one ? "del" : "-")), right);
        }
        EXPECT_EQ(left.numbers, Expected(original).numbers);
        EXPECT_EQ(right.numbers, Expected(modified).numbers);
        EXPECT_EQ(left.text, Expected(original).text);
        EXPECT_EQ(right.text, Expected(modified).text);
    }
}

std::string RowText(const std::vector<HtmlNode>& cells) {
    std::string text;
    for (const HtmlNode& cell : cells)
        text += (text.empty() ? "" : "|") + (cell.Text().empty() ? "." : cell.Text());
    return text;
}

struct LayoutRow {
    const char* name;
    Paragraphs original;
    Paragraphs modified;
    std::int32_t style;
    Ignored ignored;
    std::vector<std::string> rows;
};
TEST(HtmlReport, LaysOutDifferences) {
    const LayoutRow rows[] = {
        {"an added paragraph inside a change, merged",
         {"heat in May", "keys 2"},
         {"heat in June", "no pets", "keys 3"},
         kAllInOne,
         Ignored::Nothing,
         {"- 1|+ 1|heat in MayJune", ".|+ 2|no pets", "- 2|+ 3|keys 23"}},
        {"the same side by side",
         {"heat in May", "keys 2"},
         {"heat in June", "no pets", "keys 3"},
         kSideBySide,
         Ignored::Nothing,
         {"- 1|heat in May|+ 1|heat in June", ".|.|+ 2|no pets", "- 2|keys 2|+ 3|keys 3"}},
        {"two paragraphs joined",
         {"one two", "three"},
         {"one two three"},
         kAllInOne,
         Ignored::Nothing,
         {"- 1|+ 1|one two\u00B6", "- 2|.| three"}},
        {"ignored empty paragraphs stand alone",
         {"a", "b", "c"},
         {"", "a", "", "", "b", "x"},
         kSideBySide,
         Ignored::EmptyLines,
         {".|.|1|.", "1|a|2|a", ".|.|3|.", ".|.|4|.", "2|b|5|b", "- 3|c|+ 6|x"}},
        {"a deletion and an addition",
         {"a", "b", "c"},
         {"b", "c", "d"},
         kSideBySide,
         Ignored::Nothing,
         {"- 1|a|.|.", "2|b|1|b", "3|c|2|c", ".|.|+ 3|d"}},
        {"unchanged text merged is the original's",
         {"A", "b"},
         {"a", "c"},
         kAllInOne,
         Ignored::Case,
         {"1|1|A", "- 2|+ 2|bc"}},
    };
    for (const LayoutRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ComparedPair pair(row.original, row.modified, row.ignored);
        std::vector<std::string> shown;
        for (const auto& cells : RowsOf(Parsed(WriteHtmlReport(pair.Model(), row.style)))) {
            if (cells.front().name == "b")
                shown.push_back(RowText(cells));
        }
        EXPECT_EQ(shown, row.rows);
    }
}

TEST(HtmlReport, FoldsLongUnchangedStretches) {
    const auto summaries = [](std::size_t before, std::size_t between) {
        Paragraphs original(before, "same");
        original.emplace_back("one");
        original.insert(original.end(), between, "same");
        original.emplace_back("two");
        Paragraphs modified = original;
        modified[before] = "1";
        modified.back() = "2";
        const ComparedPair pair(original, modified);
        std::string all;
        Parsed(WriteHtmlReport(pair.Model(), kSideBySide)).ForEach([&](const HtmlNode& node) {
            if (node.name == "details" && node.Has("fold"))
                all += node.children.front().Text() + ";";
        });
        return all;
    };
    EXPECT_EQ(summaries(6, 9), "");
    EXPECT_EQ(summaries(7, 9), "4 unchanged paragraphs (1 to 4);");
    EXPECT_EQ(summaries(6, 10), "4 unchanged paragraphs (11 to 14);");
}

TEST(HtmlReport, ListsAndLinksDifferences) {
    const std::string long_text = std::string(59, 'x') + "\xF0\x9F\x98\x80";  // its pair at the cut
    const ComparedPair pair({"a", "b", "c d"}, {"a", long_text, "b", "c e"});
    const HtmlNode page = Parsed(WriteHtmlReport(pair.Model(), kSideBySide));
    EXPECT_NE(page.Text().find(std::string(59, 'x') + "..."), std::string::npos);
    std::vector<std::string> targets;
    std::vector<std::string> places;
    page.ForEach([&](const HtmlNode& node) {
        if (node.name == "a")
            targets.push_back(node.attributes);
        if (node.name == "section")
            places.push_back(node.attributes);
    });
    EXPECT_EQ(places,
              (std::vector<std::string>{" class=\"d\" id=\"d1\"", " class=\"d\" id=\"d2\""}));
    EXPECT_EQ(targets, (std::vector<std::string>{" href=\"#d1\"", " href=\"#d2\"", " href=\"#d2\"",
                                                 " href=\"#d1\""}));
}

TEST(HtmlReport, TakesHostileText) {
    const Paragraphs hostile = {"</div></main><script>alert(1)</script>",
                                "&lt; \" ' \x01\x1B\x7F\a\v",
                                "\xC2\x85\xEF\xBF\xBE\xEF\xBF\xBF end",
                                "\xFF\xC2",
                                "cut \xF0\x9F",
                                std::string(58, 'x') + " \xF0\x9F\x98\x80\xF0\x9F\x98\x80"};
    const ComparedPair pair(hostile, {"other"});
    ComparisonModel model = pair.Model();
    model.title = "</title><script>";
    model.original_name = "a<b>\n\xFF";
    for (const std::int32_t style : {kAllInOne, kSideBySide}) {
        const HtmlNode page = Parsed(WriteHtmlReport(model, style));
        int scripts = 0;
        page.ForEach([&](const HtmlNode& node) { scripts += node.name == "script" ? 1 : 0; });
        EXPECT_EQ(scripts, 1);
        EXPECT_NE(page.Text().find("alert(1)"), std::string::npos);
        EXPECT_NE(page.Text().find("\uFFFD\uFFFD\uFFFD end"), std::string::npos);
    }
}

TEST(HtmlReport, UsesTheMarksOfTheUser) {
    const ComparedPair pair({"a b"}, {"a c"});
    ComparisonModel model = pair.Model();
    model.look.addition = {0x0000FF, 0x00FFFF, false, true, false, false};  // red on yellow
    model.look.change_modified = {0xFF0000, 0xFFFFFF, true, false, true, true};
    const std::string page = WriteHtmlReport(model, kSideBySide);
    EXPECT_NE(page.find("ins.a{color:#ff0000;text-decoration:none;font-style:italic;"
                        "background:#ffff00}"),
              std::string::npos);
    EXPECT_NE(page.find("ins.w{color:#ff0000;"), std::string::npos);
    EXPECT_NE(page.find("ins.c{color:#0000ff;text-decoration:underline double line-through;"
                        "font-weight:700;"),
              std::string::npos);
    model.look.similar_sub_paragraph_marks = true;
    EXPECT_NE(WriteHtmlReport(model, kSideBySide).find("ins.w{color:#0000ff;"), std::string::npos);
}

TEST(HtmlReport, TellsTheCounts) {
    const ComparedPair pair({"a b", "c", "gone", "d"}, {"a c", "c", "d", "more", "most"});
    ComparisonModel model = pair.Model();
    const std::string summary = "3 differences: 1 change, 1 addition, 1 deletion.";
    const std::string words = "Words inside changed paragraphs: 1 change, 0 additions";
    const std::string full = WriteHtmlReport(model, kSideBySide);
    EXPECT_NE(full.find(summary), std::string::npos);
    EXPECT_NE(full.find(words), std::string::npos);
    model.high_detail = false;
    EXPECT_EQ(WriteHtmlReport(model, kSideBySide).find(words), std::string::npos);
    const ComparedPair same({"a"}, {"a"});
    const std::string none = Parsed(WriteHtmlReport(same.Model(), kAllInOne)).Text();
    EXPECT_NE(none.find("No differences."), std::string::npos);
}

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
    const ComparedPair pair({"a b", "gone\x1B", "d"}, {"a\tc", "d", "more\amost"});
    ComparisonModel model = pair.Model();
    model.title = "Title";
    model.original_name = "a\xFF";
    const std::vector<std::string> expected = {"Title",
                                               "=====",
                                               "",
                                               "Original: a\uFFFD",
                                               "Modified: new.txt",
                                               "",
                                               "2 differences: 1 change, 1 addition, 0 deletions.",
                                               "",
                                               "<<<1>>> Change of 2 paragraphs to 1 at paragraph 1",
                                               "- [-a b-]",
                                               "- [-gone\uFFFD-]",
                                               "+ {+a  c+}",
                                               "",
                                               "<<<2>>> Addition of 1 paragraph behind paragraph 3",
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
std::vector<Paragraphs> CsvRows(const std::string& text) {
    std::vector<Paragraphs> rows(1);
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
    const std::vector<Paragraphs> expected = {
        {"Number", "Type", "Original first", "Original last", "Modified first", "Modified last",
         "Original text", "Modified text"},
        {"1", "Change", "1", "2", "1", "1", "a \"b\", c\n=1+1", "x\n\uFFFD"},
        {"2", "Addition", "3", "3", "3", "4", "", "'-5\n@y\t"}};
    EXPECT_EQ(CsvRows(bytes.substr(3)), expected);
    const ComparedPair deleted({"=cmd", "b"}, {"b"});
    EXPECT_EQ(CsvRows(WriteCsvReport(deleted.Model())).at(1),
              (Paragraphs{"1", "Deletion", "1", "1", "0", "0", "'=cmd", ""}));
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
    EXPECT_NE(folder.Read("report").find("- [-a-]"), std::string::npos);
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
