#include <algorithm>

#include "compare/engine/report_counts.h"
#include "tests/support/compared_pair.h"
#include "tests/support/html_rows.h"

namespace zorvane {
namespace {

// ---- layout ----

const std::string kMoved =
    "Notices are given in writing and reach the other party two days after they were posted.";
const std::string kFirst =
    "This Agreement begins on the first of March and continues for twelve months after that day.";
const std::string kSecond =
    "The Supplier maintains the machines listed in the annex and keeps a record of each visit.";
const std::string kEdited =
    "Notices are given in writing and reach the other party three days after they were posted.";

struct LayoutRow {
    const char* name;
    TextLines original;
    TextLines modified;
    std::int32_t style;
    CompareOptions options;
    std::vector<std::string> rows;
};
TEST(HtmlReport, LaysOutDifferences) {
    const LayoutRow rows[] = {
        {"a change, merged",
         {"heat in May is due", "b"},
         {"heat in June is due", "b"},
         kAllInOne,
         {},
         {"1|1≠|heat in [-May-]{+June+} is due", "2|2|b"}},
        {"side by side the right cell holds the old words too, for narrow screens",
         {"heat in May is due"},
         {"heat in June is due"},
         kSideBySide,
         {},
         {"1≠|heat in [-May-] is due|1≠|heat in [-May-]{+June+} is due"}},
        {"a mark ends with its last word",
         {"of an invoice"},
         {"of a correct an invoice"},
         kAllInOne,
         {},
         {"1|1≠|of {+a correct+}·an invoice"}},
        {"two paragraphs joined, merged",
         {"one two three four", "five six seven eight"},
         {"one two three four five six seven eight"},
         kAllInOne,
         {},
         {"1|1≠|one two three four[-\u00B6-]", "2||five six seven eight"}},
        {"two paragraphs joined, side by side",
         {"one two three four", "five six seven eight"},
         {"one two three four five six seven eight"},
         kSideBySide,
         {},
         {"1≠|one two three four[-\u00B6-]||",
          "2≠|five six seven eight|1≠|one two three four{+ +}five six seven eight"}},
        {"ignored empty paragraphs stand alone",
         {"a", "b", "c"},
         {"", "a", "", "", "b", "x"},
         kSideBySide,
         {.ignore_empty_lines = true},
         {"||1|", "1|a|2|a", "||3|", "||4|", "2|b|5|b", "3−|[-c-]|//only in Original",
          "//only in Modified|6+|{+x+}"}},
        {"a deletion and two additions",
         {"a", "b", "c"},
         {"b", "c", "d", "e"},
         kSideBySide,
         {},
         {"1−|[-a-]|//only in Original", "2|b|1|b", "3|c|2|c",
          "//only in Modified, 2 paragraphs|3+|{+d+}", "//|4+|{+e+}"}},
        {"the same, merged",
         {"a", "b", "c"},
         {"b", "c", "d", "e"},
         kAllInOne,
         {},
         {"1|−|[-a-]", "2|1|b", "3|2|c", "|3+|{+d+}", "|4+|{+e+}"}},
        {"unchanged text merged is the original's",
         {"A", "b"},
         {"a", "c"},
         kAllInOne,
         {.ignore_case = true},
         {"1|1|A", "2|−|[-b-]", "|2+|{+c+}"}},
        {"side by side each side keeps its spelling, in the merged cell too",
         {"The Rent is five pounds"},
         {"the rent is six pounds"},
         kSideBySide,
         {.ignore_case = true},
         {"1≠|The Rent is [-five-] pounds|1≠|the rent is [-five-]{+six+} pounds"}},
        {"a move without a change",
         {kMoved, kFirst, kSecond},
         {kFirst, kSecond, kMoved},
         kSideBySide,
         {},
         {"1↕|~" + kMoved + "~|//<moved to paragraph 3>", "2|" + kFirst + "|1|" + kFirst,
          "3|" + kSecond + "|2|" + kSecond, "//<moved from paragraph 1>|3↕|~" + kMoved + "~"}},
        {"a move shows at the new place what was changed on the way",
         {kMoved, kFirst, kSecond},
         {kFirst, kSecond, kEdited},
         kAllInOne,
         {},
         {"1|↕|~" + kMoved + "~", "2|1|" + kFirst, "3|2|" + kSecond,
          "|3↕|~Notices are given in writing and reach the other party "
          "~[-two-]{+three+}~ days after they were posted.~"}},
        {"a no-break space is told by its code",
         {"two words here and more"},
         {"two\u00A0words here and more"},
         kAllInOne,
         {},
         {"1|1≠|[-two words-]{+two\\u00a0words+} here and more"}},
        {"cells of a table",
         {"Costs\a1,200\a", "b"},
         {"Costs\a1,300\a", "b"},
         kAllInOne,
         {},
         {"1|1≠|Costs;[-1,200-]{+1,300+};", "2|2|b"}},
    };
    for (const LayoutRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ComparedPair pair(row.original, row.modified, row.options);
        std::vector<std::string> shown = RowTexts(WriteHtmlReport(pair.Model(), row.style));
        std::erase_if(shown, [](const std::string& text) { return text.starts_with("||<moved"); });
        EXPECT_EQ(shown, row.rows);
    }
}

TEST(HtmlReport, FoldsLongUnchangedStretches) {
    const auto folds = [](std::size_t before, std::size_t between, UnchangedText unchanged,
                          const TextLines& ahead = {}) {
        TextLines original(before, "same words");
        original.emplace_back("one thing to say");
        original.insert(original.end(), between, "same words");
        original.emplace_back("two things to say");
        TextLines modified = original;
        modified[before] = "1 thing to say";
        modified.back() = "2 things to say";
        modified.insert(modified.begin(), ahead.begin(), ahead.end());
        const ComparedPair pair(original, modified, {.ignore_empty_lines = true});
        ReportModel model = pair.Model();
        model.unchanged = unchanged;
        std::string all;
        const HtmlNode page = ParsedPage(WriteHtmlReport(model, kSideBySide));
        page.ForEach([&](const HtmlNode& node) {
            if (node.name == "details" && node.Has("fold"))
                all += node.children.front().Text() + ";";
            if (node.name == "p" && node.Has("fold"))
                all += node.Text() + ".";
        });
        return all + std::to_string(RowsOf(page).size());
    };
    using enum UnchangedText;
    EXPECT_EQ(folds(6, 9, Fitting), "17");
    EXPECT_EQ(folds(7, 9, Fitting), "4 unchanged paragraphs (1 to 4);18");
    EXPECT_EQ(folds(6, 10, Fitting), "4 unchanged paragraphs (11 to 14);18");
    EXPECT_EQ(folds(7, 10, All), "19");
    EXPECT_EQ(folds(4, 6, None), "1 unchanged paragraph (1), left out of this page.11");
    EXPECT_EQ(folds(7, 6, Folded), "4 unchanged paragraphs (1 to 4);15");
    EXPECT_EQ(folds(7, 6, Folded, {""}), "5 unchanged paragraphs;16") << "ignored, and on one side";
}

TEST(HtmlReport, LeavesOutWhatWouldMakeThePageTooLarge) {
    TextLines original(30'000, std::string(100, 'x'));
    original.emplace_back("the end of it");
    TextLines modified = original;
    modified.back() = "the start of it";
    const ComparedPair pair(original, modified);
    ReportModel model = pair.Model();
    const std::string fitting = WriteHtmlReport(model, kSideBySide);
    EXPECT_LT(fitting.size(), 30'000U);
    EXPECT_NE(fitting.find("29997 unchanged paragraphs (1 to 29997), left out of this page"),
              std::string::npos);
    model.unchanged = UnchangedText::Folded;
    EXPECT_GT(WriteHtmlReport(model, kSideBySide).size(), 6'000'000U);
    // All in one it is half as much, which fits.
    model.unchanged = UnchangedText::Fitting;
    EXPECT_GT(WriteHtmlReport(model, kAllInOne).size(), 3'000'000U);
}

// ---- links ----

std::vector<std::string> LinksOf(const HtmlNode& page) {
    std::vector<std::string> links;
    page.ForEach([&](const HtmlNode& node) {
        if (node.name == "a")
            links.push_back(node.attributes.substr(8) + " " + node.Text());
    });
    return links;
}

TEST(HtmlReport, ListsAndLinksDifferences) {
    const std::string long_text = std::string(59, 'x') + "\xF0\x9F\x98\x80";  // its pair at the cut
    const ComparedPair pair({"a", "b", "c d"}, {"a", long_text, "b", "c e"});
    ASSERT_EQ(pair.comparison().records.size(), 2U);
    const HtmlNode page = ParsedPage(WriteHtmlReport(pair.Model(), kSideBySide));
    EXPECT_NE(page.Text().find(std::string(59, 'x') + "..."), std::string::npos);
    std::vector<std::string> places;
    page.ForEach([&](const HtmlNode& node) {
        if (node.name == "section")
            places.push_back(node.attributes);
    });
    EXPECT_EQ(places,
              (std::vector<std::string>{" class=\"d\" id=\"d1\"", " class=\"d\" id=\"d2\""}));
    EXPECT_EQ(LinksOf(page),
              (std::vector<std::string>{"d1\" Addition of 1 paragraph behind paragraph 1",
                                        "d2\" Change at paragraph 3", "d2\" down next",
                                        "d1\" up previous"}));
}

TEST(HtmlReport, LinksBothEndsOfAMove) {
    const ComparedPair pair({kMoved, kFirst, kSecond}, {kFirst, kSecond, kEdited});
    for (const std::int32_t style : {kAllInOne, kSideBySide}) {
        const auto links = LinksOf(ParsedPage(WriteHtmlReport(pair.Model(), style)));
        EXPECT_EQ(std::count(links.begin(), links.end(), "d2\" moved to paragraph 3"), 1);
        EXPECT_EQ(std::count(links.begin(), links.end(), "d1\" moved from paragraph 1"), 1);
    }
}

// ---- the head ----

TEST(HtmlReport, TellsTheCounts) {
    const ComparedPair pair({"a b c", "keep", "all of this is gone", "d"},
                            {"a x y c", "keep", "d", "more of it", "文字だ"});
    ReportModel model = pair.Model();
    const ReportCounts counts = CountForReaders(pair.comparison());
    EXPECT_EQ(counts.paragraphs_changed, 1);
    EXPECT_EQ(counts.paragraphs_added, 2);
    EXPECT_EQ(counts.paragraphs_deleted, 1);
    EXPECT_EQ(counts.words_added, 2 + 3 + 3);
    EXPECT_EQ(counts.words_deleted, 1 + 5);
    const std::string words = "Words inside changed paragraphs: 1 change.";
    const std::string head = ParsedPage(WriteHtmlReport(model, kSideBySide)).Text();
    for (const std::string& told :
         {std::string("3 differences."), std::string("1 paragraph changed"),
          std::string("2 paragraphs added"), std::string("1 paragraph deleted"),
          std::string("8 words added"), std::string("6 words deleted"), words})
        EXPECT_NE(head.find(told), std::string::npos) << told;
    EXPECT_EQ(head.find("paragraph moved"), std::string::npos);
    const ComparedPair new_clause({"a"}, {"a", "a new clause"});
    const std::string added = ParsedPage(WriteHtmlReport(new_clause.Model(), kAllInOne)).Text();
    EXPECT_NE(added.find("3 words added"), std::string::npos);
    EXPECT_EQ(added.find("Words inside"), std::string::npos);
    EXPECT_EQ(added.find("0 additions"), std::string::npos);
    model.high_detail = false;
    EXPECT_EQ(WriteHtmlReport(model, kSideBySide).find(words), std::string::npos);
    const ComparedPair same({"a"}, {"a"});
    EXPECT_NE(ParsedPage(WriteHtmlReport(same.Model(), kAllInOne)).Text().find("No differences."),
              std::string::npos);
}

TEST(HtmlReport, CountsAMoveOnceAndItsInnerWords) {
    const ComparedPair pair({kMoved, kFirst, kSecond}, {kFirst, kSecond, kEdited});
    const ReportCounts expected{.paragraphs_moved = 1, .words_added = 1, .words_deleted = 1};
    EXPECT_EQ(CountForReaders(pair.comparison()), expected);
    const std::string head = ParsedPage(WriteHtmlReport(pair.Model(), kAllInOne)).Text();
    EXPECT_NE(head.find("1 difference."), std::string::npos);
    EXPECT_NE(head.find("1 paragraph moved"), std::string::npos);
}

TEST(HtmlReport, ShowsDatesAndWhatLiesBesideTheWords) {
    const ComparedPair pair({"a"}, {"a"});
    Comparison comparison = pair.comparison();
    ReportModel model{comparison};
    model.names = pair.Model().names;
    const std::string plain = WriteHtmlReport(model, kSideBySide);
    EXPECT_EQ(plain.find("class=\"beside\""), std::string::npos);
    model.dates = {"2026-03-01 14:05", ""};
    comparison.beside_sentence = "Beside the words: 1 picture <replaced>.";
    comparison.beside = {
        {"pictures", "picture & frame", "replaced", {{}, ParagraphNumber{3}}, "old", "new"}};
    for (const std::int32_t style : {kAllInOne, kSideBySide}) {
        const HtmlNode page = ParsedPage(WriteHtmlReport(model, style));
        std::string section;
        std::vector<std::string> titles;
        page.ForEach([&](const HtmlNode& node) {
            if (node.Has("\"beside\""))
                section = node.Text();
            if (node.name == "small")
                titles.push_back(node.Text());
        });
        EXPECT_EQ(section,
                  "Beside the words: 1 picture <replaced>.\npicture & frame replaced, paragraph 3: "
                  "old \u2192 new\n");
        EXPECT_EQ(titles, (std::vector<std::string>{"Original", "2026-03-01 14:05", "Modified"}));
    }
}

TEST(HtmlReport, TakesHostileText) {
    const TextLines hostile = {"</div></main><script>alert(1)</script>",
                               "&lt; \" ' \x01\x1B\x7F\a\v",
                               "\xC2\x85\xEF\xBF\xBE\xEF\xBF\xBF end",
                               "\xFF\xC2",
                               "cut \xF0\x9F",
                               std::string(58, 'x') + " \xF0\x9F\x98\x80\xF0\x9F\x98\x80"};
    const ComparedPair pair(hostile, {"other"});
    ReportModel model = pair.Model();
    model.title = "</title><script>";
    model.names.original = "a<b>\n\xFF";
    for (const std::int32_t style : {kAllInOne, kSideBySide}) {
        const HtmlNode page = ParsedPage(WriteHtmlReport(model, style));
        int scripts = 0;
        page.ForEach([&](const HtmlNode& node) { scripts += node.name == "script" ? 1 : 0; });
        EXPECT_EQ(scripts, 1);
        EXPECT_NE(page.Text().find("alert(1)"), std::string::npos);
        EXPECT_NE(page.Text().find("\u2401\u241B\u2421"), std::string::npos);
        EXPECT_NE(page.Text().find("\uFFFD\uFFFD\uFFFD end"), std::string::npos);
    }
}

// ---- writing ----

TEST(HtmlReport, IsHandedOnInPartsAndStopsAtAFailure) {
    TextLines original;
    for (int i = 0; i < 12'000; ++i)
        original.push_back("paragraph number " + std::to_string(i) + " of a long text");
    TextLines modified = original;
    for (std::size_t i = 0; i < modified.size(); i += 2)
        modified[i] += " indeed";
    const ComparedPair pair(original, modified);
    std::string page;
    std::size_t largest = 0;
    const auto take = [&](std::string_view part) {
        largest = std::max(largest, part.size());
        page += part;
        return Status::Ok();
    };
    EXPECT_TRUE(WriteHtmlReport(pair.Model(), kSideBySide, take).ok());
    EXPECT_EQ(page, WriteHtmlReport(pair.Model(), kSideBySide));
    EXPECT_GT(page.size(), 2'000'000U);
    EXPECT_LT(largest, 600'000U);
    int calls = 0;
    const Status full = WriteHtmlReport(pair.Model(), kSideBySide, [&](std::string_view) {
        ++calls;
        return Status(Failure{"the disk is full"});
    });
    EXPECT_EQ(calls, 1);
    ASSERT_FALSE(full.ok());
    EXPECT_EQ(full.failure().reason, "the disk is full");
}

}  // namespace
}  // namespace zorvane
